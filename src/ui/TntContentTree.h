#pragma once

#include "ui/TntContentModel.h"

#include <QTreeView>

class UserDefaults;

// The content of a torrent, to add or in the detail pane, with a menu that sets the priority of the
// selected rows (and, in the detail pane, renames one in place: F2). Its columns keep their widths
// and order across windows ("tntAddingTableConfiguration", "tntContentTableConfiguration").
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
    // Only rows whose name holds `text` (in any case), what is in a folder that does, and the
    // folders above them; every row for an empty text.
    void setNameFilter(const QString &text);
    const QString &nameFilter() const { return m_nameFilter; }

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
    // Hides the rows below `parent` that the filter leaves out; true when one of them shows.
    bool filterRows(const QModelIndex &parent, bool folderMatches);
    void refuseName(const QString &reason);

    TntContentModel *m_model;
    QString m_nameFilter;
};
