#pragma once

#include "ui/TntContentModel.h"

#include <QTreeView>

class UserDefaults;

// The content of a torrent, to add or in the detail pane, with a menu that sets the priority of the
// selected rows. Its columns keep their widths and order across windows
// ("tntAddingTableConfiguration", "tntContentTableConfiguration").
class TntContentTree : public QTreeView
{
    Q_OBJECT

public:
    explicit TntContentTree(UserDefaults &defaults, QWidget *parent = nullptr,
                            TntContentModel::Mode mode = TntContentModel::Mode::adding);

    TntContentModel *contentModel() const { return m_model; }
    void setNodes(FileTreeBuilder::Nodes nodes);
    // The same content built again: rows stay where they can (TntContentModel::refreshNodes).
    void refreshNodes(FileTreeBuilder::Nodes nodes);

private:
    void setPriorityOfSelection(TntContentModel::Priority priority);
    void showMenu(const QPoint &position);
    // A single folder at the top is the torrent's own: show what is in it.
    void expandSingleRoot();

    TntContentModel *m_model;
};
