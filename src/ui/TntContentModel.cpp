#include "ui/TntContentModel.h"

#include "api/TntState.h"
#include "ui/TntTableModel.h"

#include <QCoreApplication>

#include <algorithm>
#include <map>

namespace {

constexpr std::array<TntContentModel::Priority, 4> classes{TntContentModel::skipped, TntContentModel::normal,
                                                           TntContentModel::high, TntContentModel::maximal};

std::size_t classOf(TntContentModel::Priority priority)
{
    return static_cast<std::size_t>(std::find(classes.cbegin(), classes.cend(), priority) - classes.cbegin());
}

// What a file takes when checked: the server's priority, and normal for one it has no case for.
TntContentModel::Priority chosenFor(double priority)
{
    switch (tntModelFilePriorityFromValue(priority).value_or(TntModelFilePriority::normal)) {
    case TntModelFilePriority::high: return TntContentModel::high;
    case TntModelFilePriority::maximal: return TntContentModel::maximal;
    default: return TntContentModel::normal;
    }
}

// The nodes in the order the model lays its entries out: each folder before what is in it.
void preorder(const FileTreeBuilder::Nodes &nodes, std::vector<TntFileNode *> &flat)
{
    for (const auto &node : nodes) {
        flat.push_back(node.get());
        if (node->children)
            preorder(*node->children, flat);
    }
}

bool sameValues(const TntFileNode &a, const TntFileNode &b)
{
    return a.size == b.size && a.progress == b.progress && a.priority == b.priority &&
           a.availability == b.availability && a.remaining == b.remaining;
}

} // namespace

QString TntContentModel::priorityTitle(int priority)
{
    switch (priority) {
    case TntContentModel::skipped: return QCoreApplication::translate("TntContentModel", "Do not download");
    case TntContentModel::normal: return QCoreApplication::translate("TntContentModel", "Normal");
    case TntContentModel::high: return QCoreApplication::translate("TntContentModel", "High");
    case TntContentModel::maximal: return QCoreApplication::translate("TntContentModel", "Maximum");
    default: return QCoreApplication::translate("TntContentModel", "Mixed");
    }
}

TntContentModel::TntContentModel(QObject *parent)
    : TntContentModel(Mode::adding, parent)
{}

TntContentModel::TntContentModel(Mode mode, QObject *parent)
    : QAbstractItemModel(parent)
    , m_mode(mode)
{}

void TntContentModel::setNodes(FileTreeBuilder::Nodes nodes)
{
    beginResetModel();
    m_nodes = std::move(nodes);
    m_entries.clear();
    m_roots.clear();
    for (qsizetype row = 0; row < m_nodes.size(); ++row)
        m_roots.push_back(add(*m_nodes[row], none, static_cast<int>(row)));
    recount();
    endResetModel();
}

void TntContentModel::refreshNodes(FileTreeBuilder::Nodes nodes)
{
    std::vector<TntFileNode *> flat;
    flat.reserve(m_entries.size());
    preorder(nodes, flat);
    const bool sameContent =
        flat.size() == m_entries.size() &&
        std::equal(flat.cbegin(), flat.cend(), m_entries.cbegin(), [](const TntFileNode *now, const Entry &entry) {
            return now->path == entry.node->path && now->index == entry.node->index &&
                   now->children.has_value() == entry.node->children.has_value();
        });
    if (!sameContent) {
        setNodes(std::move(nodes));
        return;
    }
    // A changed file changes how its folders read too.
    std::vector<bool> changed(m_entries.size());
    const auto mark = [this, &changed](qsizetype entry) {
        for (qsizetype at = entry; at != none && !changed[std::size_t(at)]; at = m_entries[std::size_t(at)].parent)
            changed[std::size_t(at)] = true;
    };
    for (std::size_t at = 0; at < m_entries.size(); ++at) {
        Entry &entry = m_entries[at];
        const bool differs = !sameValues(*entry.node, *flat[at]);
        entry.node = flat[at];
        const Priority before = effective(entry);
        if (!entry.node->children)
            seed(entry);
        if (differs || effective(entry) != before)
            mark(qsizetype(at));
    }
    m_nodes = std::move(nodes);
    recount();

    // Neighbouring rows of one folder are announced together.
    qsizetype first = none;
    qsizetype last = none;
    const auto flush = [this, &first, &last] {
        if (first != none)
            Q_EMIT dataChanged(indexOf(first, nameColumn), indexOf(last, columnCount() - 1));
        first = none;
    };
    for (std::size_t at = 0; at < m_entries.size(); ++at) {
        if (!changed[at])
            continue;
        const Entry &entry = m_entries[at];
        if (first != none &&
            (entry.parent != m_entries[std::size_t(last)].parent || entry.row != m_entries[std::size_t(last)].row + 1))
            flush();
        if (first == none)
            first = qsizetype(at);
        last = qsizetype(at);
    }
    flush();
}

qsizetype TntContentModel::add(TntFileNode &node, qsizetype parent, int row)
{
    const auto entry = static_cast<qsizetype>(m_entries.size());
    m_entries.push_back(Entry{.node = &node, .parent = parent, .row = row});
    if (!node.children) {
        seed(m_entries.back());
        return entry;
    }
    std::vector<qsizetype> children;
    children.reserve(std::size_t(node.children->size()));
    for (qsizetype childRow = 0; childRow < node.children->size(); ++childRow)
        children.push_back(add(*node.children->at(childRow), entry, static_cast<int>(childRow)));
    m_entries[std::size_t(entry)].children = std::move(children);
    return entry;
}

void TntContentModel::seed(Entry &file)
{
    // A skipped file keeps the priority it had when checked.
    file.checked = file.node->priority != 0;
    if (file.checked)
        file.chosen = chosenFor(file.node->priority);
}

void TntContentModel::recount()
{
    for (Entry &entry : m_entries)
        entry.counts.fill(0);
    for (const Entry &entry : m_entries) {
        if (entry.node->children)
            continue;
        const std::size_t priorityClass = classOf(effective(entry));
        for (qsizetype folder = entry.parent; folder != none; folder = m_entries[std::size_t(folder)].parent)
            ++m_entries[std::size_t(folder)].counts[priorityClass];
    }
}

const std::vector<qsizetype> &TntContentModel::childrenOf(qsizetype entry) const
{
    return entry == none ? m_roots : m_entries[std::size_t(entry)].children;
}

QList<int> TntContentModel::filePriorities(qsizetype fileCount) const
{
    QList<int> priorities(fileCount, normal);
    for (const Entry &entry : m_entries) {
        if (!entry.node->children && entry.node->index >= 0 && entry.node->index < fileCount)
            priorities[entry.node->index] = effective(entry);
    }
    return priorities;
}

bool TntContentModel::hasChosenFiles() const
{
    return std::any_of(m_roots.cbegin(), m_roots.cend(), [this](qsizetype root) {
        const Entry &entry = m_entries[std::size_t(root)];
        const std::size_t skippedClass = classOf(skipped);
        if (!entry.node->children)
            return entry.checked;
        for (std::size_t c = 0; c < entry.counts.size(); ++c) {
            if (c != skippedClass && entry.counts[c] > 0)
                return true;
        }
        return false;
    });
}

TntContentModel::Priority TntContentModel::shownPriority(const Entry &entry) const
{
    if (!entry.node->children)
        return effective(entry);
    const auto present = [](qint64 count) { return count > 0; };
    if (std::count_if(entry.counts.cbegin(), entry.counts.cend(), present) != 1)
        return Priority(-1);
    return classes[std::size_t(std::find_if(entry.counts.cbegin(), entry.counts.cend(), present) -
                               entry.counts.cbegin())];
}

void TntContentModel::setFile(qsizetype file, bool checked, Priority chosen)
{
    Entry &entry = m_entries[std::size_t(file)];
    const std::size_t before = classOf(effective(entry));
    entry.checked = checked;
    entry.chosen = chosen;
    const std::size_t after = classOf(effective(entry));
    if (before == after)
        return;
    for (qsizetype folder = entry.parent; folder != none; folder = m_entries[std::size_t(folder)].parent) {
        --m_entries[std::size_t(folder)].counts[before];
        ++m_entries[std::size_t(folder)].counts[after];
    }
}

template <typename Visit> void TntContentModel::forEachFile(qsizetype entry, const Visit &visit)
{
    const Entry &current = m_entries[std::size_t(entry)];
    if (!current.node->children) {
        visit(entry);
        return;
    }
    for (const qsizetype child : current.children)
        forEachFile(child, visit);
}

template <typename Edit> void TntContentModel::editFiles(const std::vector<qsizetype> &entries, const Edit &edit)
{
    std::map<int, QSet<int>> edited;
    for (const qsizetype entry : entries) {
        forEachFile(entry, [this, &edit, &edited](qsizetype file) {
            const Entry &current = m_entries[std::size_t(file)];
            const Priority before = effective(current);
            edit(file);
            if (effective(current) != before && current.node->index >= 0)
                edited[effective(current)].insert(static_cast<int>(current.node->index));
        });
        announce(entry);
    }
    for (const auto &[priority, files] : edited)
        Q_EMIT prioritiesEdited(priority, files);
}

void TntContentModel::setPriority(const QModelIndexList &rows, Priority priority)
{
    std::vector<qsizetype> entries;
    for (const QModelIndex &row : rows) {
        if (row.isValid())
            entries.push_back(static_cast<qsizetype>(row.internalId()));
    }
    editFiles(entries, [this, priority](qsizetype file) {
        if (priority == skipped)
            setFile(file, false, m_entries[std::size_t(file)].chosen);
        else
            setFile(file, true, priority);
    });
}

void TntContentModel::announce(qsizetype entry)
{
    for (qsizetype at = entry; at != none; at = m_entries[std::size_t(at)].parent)
        Q_EMIT dataChanged(indexOf(at, nameColumn), indexOf(at, columnCount() - 1));
    announceBelow(entry);
}

void TntContentModel::announceBelow(qsizetype folder)
{
    const std::vector<qsizetype> &children = m_entries[std::size_t(folder)].children;
    if (children.empty())
        return;
    Q_EMIT dataChanged(indexOf(children.front(), nameColumn), indexOf(children.back(), columnCount() - 1));
    for (const qsizetype child : children)
        announceBelow(child);
}

QModelIndex TntContentModel::indexOf(qsizetype entry, int column) const
{
    return createIndex(m_entries[std::size_t(entry)].row, column, quintptr(entry));
}

QModelIndex TntContentModel::index(int row, int column, const QModelIndex &parent) const
{
    if (column < 0 || column >= columnCount() || row < 0 || (parent.isValid() && parent.column() != 0))
        return {};
    const std::vector<qsizetype> &children = childrenOf(parent.isValid() ? qsizetype(parent.internalId()) : none);
    if (std::size_t(row) >= children.size())
        return {};
    return createIndex(row, column, quintptr(children[std::size_t(row)]));
}

QModelIndex TntContentModel::parent(const QModelIndex &child) const
{
    if (!child.isValid())
        return {};
    const qsizetype parent = m_entries[std::size_t(child.internalId())].parent;
    return parent == none ? QModelIndex() : indexOf(parent, nameColumn);
}

int TntContentModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid() && parent.column() != 0)
        return 0;
    return static_cast<int>(childrenOf(parent.isValid() ? qsizetype(parent.internalId()) : none).size());
}

int TntContentModel::columnCount(const QModelIndex &) const
{
    return m_mode == Mode::adding ? priorityColumn + 1 : columnCount_;
}

QVariant TntContentModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Entry &entry = m_entries[std::size_t(index.internalId())];
    if (role == Qt::CheckStateRole && index.column() == nameColumn) {
        const Priority shown = shownPriority(entry);
        if (shown == skipped)
            return Qt::Unchecked;
        const bool someSkipped = entry.node->children && entry.counts[classOf(skipped)] > 0;
        return someSkipped ? Qt::PartiallyChecked : Qt::Checked;
    }
    if (role == Qt::TextAlignmentRole && index.column() != nameColumn && index.column() != priorityColumn)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
    if (role == Qt::EditRole && index.column() == nameColumn)
        return entry.node->name;
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case nameColumn: return entry.node->name;
    case sizeColumn: return TntFormat::size(entry.node->size);
    case priorityColumn: return priorityTitle(shownPriority(entry));
    case progressColumn: return TntFormat::percent(entry.node->progress);
    case remainingColumn: return TntFormat::size(entry.node->remaining);
    case availabilityColumn:
        return entry.node->availability < 0 ? QCoreApplication::translate("TntContentModel", "N/A")
                                            : TntFormat::percent(entry.node->availability);
    default: return {};
    }
}

bool TntContentModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || index.column() != nameColumn)
        return false;
    if (role == Qt::EditRole)
        return setName(index, value.toString());
    if (role != Qt::CheckStateRole)
        return false;
    const bool check = value.value<Qt::CheckState>() != Qt::Unchecked;
    editFiles({static_cast<qsizetype>(index.internalId())},
              [this, check](qsizetype file) { setFile(file, check, m_entries[std::size_t(file)].chosen); });
    return true;
}

Qt::ItemFlags TntContentModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable;
    return m_mode == Mode::details && index.column() == nameColumn ? flags | Qt::ItemIsEditable : flags;
}

QVariant TntContentModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case nameColumn: return QCoreApplication::translate("TntContentModel", "Name");
    case sizeColumn: return QCoreApplication::translate("TntContentModel", "Size");
    case priorityColumn: return QCoreApplication::translate("TntContentModel", "Priority");
    case progressColumn: return QCoreApplication::translate("TntContentModel", "Progress");
    case remainingColumn: return QCoreApplication::translate("TntContentModel", "Remaining");
    case availabilityColumn: return QCoreApplication::translate("TntContentModel", "Availability");
    default: return {};
    }
}
