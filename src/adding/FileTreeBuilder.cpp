#include "adding/FileTreeBuilder.h"

#include "support/CheckedMath.h"

#include <QCoroFuture>
#include <QHash>
#include <QMimeDatabase>
#include <QVarLengthArray>
#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>
#include <vector>

namespace {

using Nodes = FileTreeBuilder::Nodes;

// No file system holds a longer path; refusing them also keeps a crafted torrent with thousands
// of path components from costing time quadratic in its length.
constexpr qsizetype longestPath = 4096;

// The path as a location: without empty components, or nothing when none remain.
std::optional<QString> locationPath(const QString &path)
{
    if (path.isEmpty() || path.size() > longestPath)
        return std::nullopt;
    if (!path.startsWith(u'/') && !path.endsWith(u'/') && !path.contains(u"//"))
        return path;
    const QStringList parts = path.split(u'/', Qt::SkipEmptyParts);
    if (parts.isEmpty())
        return std::nullopt;
    return parts.join(u'/');
}

class TypeByExtension
{
public:
    QString of(const QString &fileName)
    {
        const qsizetype dot = fileName.lastIndexOf(u'.');
        if (dot <= 0 || dot == fileName.size() - 1)
            return m_genericType;
        const QString extension = fileName.mid(dot + 1);
        auto known = m_types.constFind(extension);
        if (known == m_types.cend())
            known = m_types.insert(extension, m_database.mimeTypeForFile(QStringLiteral("x.") + extension, QMimeDatabase::MatchExtension).name());
        return *known;
    }

private:
    const QString m_genericType = QStringLiteral("application/octet-stream");
    QMimeDatabase m_database;
    QHash<QString, QString> m_types;
};

struct Folder
{
    std::shared_ptr<TntFileNode> node;
    qsizetype parent = -1;
    qint64 totalCount = 0;
    qint64 selectedSize = 0;
    qint64 size = 0;
    qint64 remaining = 0;
    double availability = 0;
};

class TreeAssembly
{
public:
    void place(const API::File &file)
    {
        const auto path = locationPath(file.name);
        if (!path)
            return;
        const qsizetype slash = path->lastIndexOf(u'/');
        const qsizetype folder = folderFor(QStringView(*path).left(std::max<qsizetype>(slash, 0)));
        const bool wanted = file.priority != 0;
        QString name = path->mid(slash + 1);
        QString type = m_types.of(name);
        const qint64 remaining = wanted ? CheckedMath::toInt64(static_cast<double>(file.size) * (1 - file.progress)) : 0;
        append(std::make_shared<TntFileNode>(TntFileNode{.utType = std::move(type),
                                                         .index = file.index,
                                                         .name = std::move(name),
                                                         .path = *path,
                                                         .size = file.size,
                                                         .progress = file.progress,
                                                         .priority = file.priority,
                                                         .pieceRange = file.pieceRange,
                                                         .availability = file.availability,
                                                         .isSelected = wanted,
                                                         .hasSelectedFiles = wanted,
                                                         .remaining = remaining}),
               folder);

        for (qsizetype at = folder; at >= 0; at = m_folders[static_cast<std::size_t>(at)].parent) {
            Folder &sums = m_folders[static_cast<std::size_t>(at)];
            sums.size = CheckedMath::add(sums.size, file.size);
            sums.availability += file.availability;
            ++sums.totalCount;
            if (wanted) {
                sums.selectedSize = CheckedMath::add(sums.selectedSize, file.size);
                sums.remaining = CheckedMath::add(sums.remaining, remaining);
            }
        }
    }

    Nodes finish()
    {
        for (const Folder &sums : m_folders) {
            TntFileNode &folder = *sums.node;
            folder.size = sums.size;
            folder.remaining = sums.remaining;
            folder.availability = sums.availability / static_cast<double>(sums.totalCount);
            // Skipped files count in the divisor: a finished file beside a skipped one of the
            // same size reads as half done.
            if (sums.size > 0)
                folder.progress = std::min(1.0, static_cast<double>(sums.selectedSize - sums.remaining)
                                                    / static_cast<double>(sums.size));
        }
        return std::move(m_roots);
    }

private:
    // The folder at `path`, made with any missing folders above it; -1 for the top level.
    qsizetype folderFor(QStringView path)
    {
        if (path.isEmpty())
            return -1;
        // Files come grouped by folder: most share the previous file's.
        if (path == m_lastFolderPath)
            return m_lastFolder;

        QVarLengthArray<qsizetype, 8> missingEnds;
        qsizetype found = -1;
        for (qsizetype end = path.size(); end > 0; end = std::max<qsizetype>(path.lastIndexOf(u'/', end - 1), 0)) {
            const auto known = m_folderIndex.constFind(path.left(end).toString());
            if (known != m_folderIndex.cend()) {
                found = *known;
                break;
            }
            missingEnds.append(end);
        }
        for (qsizetype i = missingEnds.size(); i-- > 0;) {
            const QString prefix = path.left(missingEnds[i]).toString();
            auto node = std::make_shared<TntFileNode>(TntFileNode{.utType = m_folderType,
                                                                  .name = prefix.mid(prefix.lastIndexOf(u'/') + 1),
                                                                  .path = prefix,
                                                                  .children = Nodes()});
            append(node, found);
            m_folders.push_back({.node = std::move(node), .parent = found});
            found = static_cast<qsizetype>(m_folders.size()) - 1;
            m_folderIndex.insert(prefix, found);
        }
        m_lastFolderPath = path.toString();
        m_lastFolder = found;
        return found;
    }

    void append(std::shared_ptr<TntFileNode> node, qsizetype folder)
    {
        if (folder < 0) {
            m_roots.append(std::move(node));
            return;
        }
        const std::shared_ptr<TntFileNode> &parent = m_folders[static_cast<std::size_t>(folder)].node;
        node->parent = parent;
        parent->children->append(std::move(node));
    }

    const QString m_folderType = QStringLiteral("inode/directory");
    TypeByExtension m_types;
    Nodes m_roots;
    std::vector<Folder> m_folders;
    QHash<QString, qsizetype> m_folderIndex;
    QString m_lastFolderPath;
    qsizetype m_lastFolder = -1;
};

} // namespace

FileTreeBuilder::FileTreeBuilder()
{
    m_queue.setObjectName(QStringLiteral("app.quillo.fileTreeBuilder"));
    m_queue.setMaxThreadCount(1);
}

QCoro::Task<FileTreeBuilder::Nodes> FileTreeBuilder::build(QList<API::File> files)
{
    QFuture<Nodes> tree = QtConcurrent::run(&m_queue, &FileTreeBuilder::buildTree, std::move(files));
    co_return co_await tree;
}

FileTreeBuilder::Nodes FileTreeBuilder::buildTree(const QList<API::File> &files)
{
    TreeAssembly tree;
    for (const API::File &file : files)
        tree.place(file);
    return tree.finish();
}
