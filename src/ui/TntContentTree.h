#pragma once

#include "ui/TntContentModel.h"

#include <QTreeView>

// The content of a torrent to add, with a menu that sets the priority of the selected rows.
class TntContentTree : public QTreeView
{
    Q_OBJECT

public:
    explicit TntContentTree(QWidget *parent = nullptr);

    TntContentModel *contentModel() const { return m_model; }
    void setNodes(FileTreeBuilder::Nodes nodes);

private:
    void setPriorityOfSelection(TntContentModel::Priority priority);
    void showMenu(const QPoint &position);

    TntContentModel *m_model;
};
