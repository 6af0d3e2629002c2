// Renaming rows of TntContentModel.
#include "ui/TntContentModel.h"

QString TntContentModel::renameProblem(const QModelIndex &index, const QString &name) const
{
    if (name.trimmed().isEmpty())
        return QCoreApplication::translate("TntContentModel", "A name cannot be empty.");
    if (name.contains(u'/'))
        return QCoreApplication::translate("TntContentModel", "A name cannot contain \"/\".");
    const Entry &entry = m_entries[std::size_t(index.internalId())];
    for (const qsizetype sibling : childrenOf(entry.parent)) {
        if (sibling != qsizetype(index.internalId()) && m_entries[std::size_t(sibling)].node->name == name)
            return QCoreApplication::translate("TntContentModel", "\"%1\" is already there.").arg(name);
    }
    return {};
}

bool TntContentModel::setName(const QModelIndex &index, const QString &name)
{
    const auto entry = static_cast<qsizetype>(index.internalId());
    const TntFileNode &node = *m_entries[std::size_t(entry)].node;
    if (node.name == name)
        return false;
    if (const QString problem = renameProblem(index, name); !problem.isEmpty()) {
        Q_EMIT renameRefused(problem);
        return false;
    }
    const QString oldPath = node.path;
    rename(entry, name);
    Q_EMIT renamed(oldPath, node.path, node.children.has_value());
    return true;
}

bool TntContentModel::renamePath(const QString &path, const QString &name)
{
    const auto found = std::find_if(m_entries.cbegin(), m_entries.cend(),
                                    [&path](const Entry &entry) { return entry.node->path == path; });
    if (found == m_entries.cend())
        return false;
    rename(found - m_entries.cbegin(), name);
    return true;
}

void TntContentModel::rename(qsizetype entry, const QString &name)
{
    TntFileNode &node = *m_entries[std::size_t(entry)].node;
    const QString oldPath = node.path;
    node.name = name;
    node.path = oldPath.left(oldPath.lastIndexOf(u'/') + 1) + name;
    // What is below keeps its place under the new path; only the renamed row reads differently.
    for (std::size_t at = std::size_t(entry) + 1; at < m_entries.size(); ++at) {
        TntFileNode &below = *m_entries[at].node;
        if (!below.path.startsWith(oldPath + u'/'))
            break;
        below.path = node.path + below.path.mid(oldPath.size());
    }
    Q_EMIT dataChanged(indexOf(entry, nameColumn), indexOf(entry, nameColumn));
}
