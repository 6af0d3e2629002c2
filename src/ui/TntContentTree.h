#pragma once

#include "adding/FileTreeBuilder.h"

#include <QList>
#include <QTreeWidget>

// A torrent's content before it is added: folders and files with check boxes and priorities. A
// folder checks or unchecks everything below it and shows mixed when its files differ; an unchecked
// file is not downloaded.
class TntContentTree : public QTreeWidget
{
    Q_OBJECT

public:
    enum Column { nameColumn, sizeColumn, priorityColumn };
    // The server's file priorities other than "do not download".
    enum Priority { normal = 1, high = 6, maximal = 7 };

    explicit TntContentTree(QWidget *parent = nullptr);

    void setNodes(const FileTreeBuilder::Nodes &nodes);
    // One priority per file of the torrent, in index order; 0 for an unchecked file.
    QList<int> filePriorities(qsizetype fileCount) const;
    // Files checked, the priority given, for every file under the selected rows.
    void setPriorityOfSelection(Priority priority);

private:
    void showMenu(const QPoint &position);
};
