#pragma once

#include "adding/TntFileNode.h"
#include "api/Records.h"

#include <QCoroTask>
#include <QThreadPool>

// Turns a torrent's flat file list into a folder tree whose folders sum up size, progress and
// availability of the files below them. Builds run one at a time on the builder's own thread, so
// that 100,000 files never stall the interface.
class FileTreeBuilder
{
public:
    using Nodes = QList<std::shared_ptr<TntFileNode>>;

    FileTreeBuilder();

    // Root nodes in input order; a file whose path forms no location is left out.
    QCoro::Task<Nodes> build(QList<API::File> files);

    // The build itself, on the calling thread.
    static Nodes buildTree(const QList<API::File> &files);

private:
    QThreadPool m_queue;
};
