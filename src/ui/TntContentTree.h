#pragma once

#include "ui/TntContentModel.h"

#include <QTreeView>

class UserDefaults;

// The content of a torrent to add, with a menu that sets the priority of the selected rows. Its
// columns keep their widths and order across windows ("tntAddingTableConfiguration").
class TntContentTree : public QTreeView
{
    Q_OBJECT

public:
    explicit TntContentTree(UserDefaults &defaults, QWidget *parent = nullptr);

    TntContentModel *contentModel() const { return m_model; }
    void setNodes(FileTreeBuilder::Nodes nodes);

private:
    void setPriorityOfSelection(TntContentModel::Priority priority);
    void showMenu(const QPoint &position);
    void saveColumns();

    UserDefaults &m_defaults;
    TntContentModel *m_model;
};
