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

Q_SIGNALS:
    // In the detail pane: rows to open (a double-click, Enter) or to reveal, by their paths in the
    // torrent's content. `complete` when every byte of the row is there.
    void openRequested(const QString &path, bool complete);
    void revealRequested(const QStringList &paths);

private:
    void setPriorityOfSelection(TntContentModel::Priority priority);
    QStringList selectedPaths() const;
    void openRow(const QModelIndex &row);
    void showMenu(const QPoint &position);
    // A single folder at the top is the torrent's own: show what is in it.
    void expandSingleRoot();

    TntContentModel *m_model;
};
