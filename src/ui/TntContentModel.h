#pragma once

#include "adding/FileTreeBuilder.h"

#include <QAbstractItemModel>

#include <array>
#include <vector>

// A torrent's content over the file tree as built: folders and files with check boxes and
// priorities, before the torrent is added or, in the detail pane, as the server has it (with what
// is done of it). A folder checks or unchecks every file below it and is partly checked when they
// differ. Folders keep counts of their files by priority, so that no change and no paint walks a
// large tree more than once. In the detail pane a row's name can be edited: the row shows the new
// name at once, and the rename is announced for the server.
class TntContentModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    // The columns after the priority are the detail pane's.
    enum Column { nameColumn, sizeColumn, priorityColumn, progressColumn, remainingColumn, availabilityColumn,
                  columnCount_ };
    // The server's file priorities; an unchecked file is `skipped`.
    enum Priority : int { skipped = 0, normal = 1, high = 6, maximal = 7 };
    enum class Mode { adding, details };

    explicit TntContentModel(QObject *parent = nullptr);
    TntContentModel(Mode mode, QObject *parent);

    // "Mixed" for any value that is no priority: a folder whose files differ.
    static QString priorityTitle(int priority);

    // Files checked and prioritised as the nodes say.
    void setNodes(FileTreeBuilder::Nodes nodes);
    // A new build of the same content: when it has the same folders and files, the rows stay (and
    // with them what is expanded and selected) and only those whose values changed are announced.
    void refreshNodes(FileTreeBuilder::Nodes nodes);
    // One priority per file of the torrent, in index order.
    QList<int> filePriorities(qsizetype fileCount) const;
    bool hasChosenFiles() const;
    Mode mode() const { return m_mode; }
    // The file or folder a row shows; null for an invalid index.
    const TntFileNode *nodeAt(const QModelIndex &index) const
    {
        return index.isValid() ? m_entries[std::size_t(index.internalId())].node : nullptr;
    }
    // Every file below each row checked with `priority`, or unchecked for `skipped`: one
    // prioritiesEdited for all the rows, however many files they hold.
    void setPriority(const QModelIndexList &rows, Priority priority);
    // The row at `path` renamed to `name`, with the paths of everything below it; false when no
    // row has that path (the content was built again meanwhile). Undoes a rename the server refused.
    bool renamePath(const QString &path, const QString &name);
    // Why `name` cannot be the new name of the row at `index`; empty when it can.
    QString renameProblem(const QModelIndex &index, const QString &name) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    // The user gave these files this priority (0 unchecks them): only files whose priority changed,
    // one signal per priority.
    void prioritiesEdited(int priority, const QSet<int> &fileIndexes);
    // A row was renamed here: the file, or the folder with everything in it, is to be renamed on the server.
    void renamed(const QString &oldPath, const QString &newPath, bool folder);
    // A name typed into a row was not taken, for this reason.
    void renameRefused(const QString &reason);

private:
    static constexpr qsizetype none = -1;

    struct Entry
    {
        TntFileNode *node = nullptr; // a rename changes it in place
        qsizetype parent = none;
        int row = 0;
        std::vector<qsizetype> children; // folders only
        std::array<qint64, 4> counts{}; // folders: files below by priority class
        Priority chosen = normal; // files: the priority when checked
        bool checked = true; // files
    };

    qsizetype add(TntFileNode &node, qsizetype parent, int row);
    void seed(Entry &file);
    void recount();
    // Runs `edit` on every file below each entry, then tells the views and the listeners what changed.
    template<typename Edit>
    void editFiles(const std::vector<qsizetype> &entries, const Edit &edit);
    void rename(qsizetype entry, const QString &name);
    bool setName(const QModelIndex &index, const QString &name);
    const std::vector<qsizetype> &childrenOf(qsizetype entry) const;
    Priority effective(const Entry &file) const { return file.checked ? file.chosen : skipped; }
    Priority shownPriority(const Entry &entry) const; // a folder's when its files agree; -1 when not
    void setFile(qsizetype file, bool checked, Priority chosen);
    template<typename Visit>
    void forEachFile(qsizetype entry, const Visit &visit);
    void announce(qsizetype entry);
    void announceBelow(qsizetype folder);
    QModelIndex indexOf(qsizetype entry, int column) const;

    Mode m_mode = Mode::adding;
    FileTreeBuilder::Nodes m_nodes;
    std::vector<Entry> m_entries;
    std::vector<qsizetype> m_roots;
};
