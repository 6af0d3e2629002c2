#include "ui/TntFilterProxy.h"

#include "ui/TntTableModel.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace {

using Column = TntTableModel::Column;

// A change to any other field leaves a torrent in or out of the view as it was.
constexpr TntModel::Fields filteredFields = SidebarFilter::fieldsRead | TntModel::Name;

constexpr quint64 signBit = 1ull << 63;

quint64 orderedBits(qint64 value)
{
    return static_cast<quint64>(value) ^ signBit;
}

quint64 orderedBits(double value)
{
    const auto bits = std::bit_cast<quint64>(value + 0.0); // -0 becomes 0, which it equals
    return (bits & signBit) ? ~bits : bits | signBit;
}

// Orders source rows by their keys.
struct ByKey
{
    const quint64 *keys;
    bool operator()(int a, int b) const { return keys[a] < keys[b]; }
};

// Orders source rows by their name keys, in the chosen direction.
struct ByName
{
    const QCollatorSortKey *keys;
    bool descending;
    bool operator()(int a, int b) const
    {
        return (descending ? keys[b].compare(keys[a]) : keys[a].compare(keys[b])) < 0;
    }
};

bool hasKey(Column column)
{
    return column != TntTableModel::NameColumn && column != TntTableModel::CategoryColumn
        && column != TntTableModel::TagsColumn;
}

// Orders like TntTableModel::lessThan, for the columns where hasKey.
quint64 keyOf(Column column, const TntModel &tnt)
{
    switch (column) {
    case TntTableModel::SizeColumn: return orderedBits(tnt.size());
    case TntTableModel::ProgressColumn: return orderedBits(tnt.progress());
    case TntTableModel::StatusColumn: return orderedBits(qint64{static_cast<int>(tnt.state())});
    case TntTableModel::DownSpeedColumn: return orderedBits(tnt.dlspeed());
    case TntTableModel::UpSpeedColumn: return orderedBits(tnt.upspeed());
    case TntTableModel::SeedsColumn: return orderedBits(tnt.numSeeds());
    case TntTableModel::PeersColumn: return orderedBits(tnt.numLeechs());
    case TntTableModel::EtaColumn: return orderedBits(tnt.eta());
    case TntTableModel::RatioColumn: return orderedBits(tnt.ratio());
    case TntTableModel::AddedOnColumn: return orderedBits(tnt.addedOn().secondsSinceEpoch());
    case TntTableModel::CompletedOnColumn: return orderedBits(tnt.completionOn().secondsSinceEpoch());
    case TntTableModel::SeenCompleteColumn: return orderedBits(tnt.seenComplete().secondsSinceEpoch());
    case TntTableModel::NameColumn:
    case TntTableModel::CategoryColumn:
    case TntTableModel::TagsColumn:
    case TntTableModel::ColumnCount: break;
    }
    return 0;
}

} // namespace

TntFilterProxy::TntFilterProxy(TntCollection &collection, QObject *parent)
    : QAbstractProxyModel(parent)
    , m_table(new TntTableModel(collection, this))
{
    QAbstractProxyModel::setSourceModel(m_table);
    connect(m_table, &QAbstractItemModel::modelAboutToBeReset, this, [this] { beginResetModel(); });
    connect(m_table, &QAbstractItemModel::modelReset, this, [this] {
        rebuild();
        endResetModel();
    });
    connect(m_table, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex &, int first, int last) { takeInserted(first, last); });
    // The rows leave the view while the table still has them.
    connect(m_table, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this](const QModelIndex &, int first, int last) {
        std::vector<int> places;
        for (int row = first; row <= last; ++row) {
            if (const int place = m_order.placeOf(row); place >= 0)
                places.push_back(place);
        }
        removePlaces(std::move(places));
    });
    connect(m_table, &QAbstractItemModel::rowsRemoved, this, [this](const QModelIndex &, int first, int last) {
        m_order.sourceRowsRemoved(first, last - first + 1);
        if (m_nameRanksValid)
            m_nameRanks.erase(m_nameRanks.begin() + first, m_nameRanks.begin() + last + 1);
        if (m_keyed == Keys::numbers)
            m_keys.erase(m_keys.begin() + first, m_keys.begin() + last + 1);
        else if (m_keyed == Keys::names)
            m_nameKeys.erase(m_nameKeys.begin() + first, m_nameKeys.begin() + last + 1);
    });
    // The table model's dataChanged comes in ranges, one per stretch of rows: the collection's
    // signal carries the whole answer at once.
    connect(&collection, &TntCollection::rowsChanged, this, &TntFilterProxy::takeChanges);
    rebuild();
}

QModelIndex TntFilterProxy::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

QModelIndex TntFilterProxy::parent(const QModelIndex &) const
{
    return {};
}

int TntFilterProxy::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_order.size();
}

int TntFilterProxy::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : TntTableModel::ColumnCount;
}

bool TntFilterProxy::hasChildren(const QModelIndex &parent) const
{
    return rowCount(parent) > 0;
}

QModelIndex TntFilterProxy::mapToSource(const QModelIndex &proxyIndex) const
{
    if (!proxyIndex.isValid())
        return {};
    return m_table->index(m_order.sourceRow(proxyIndex.row()), proxyIndex.column());
}

QModelIndex TntFilterProxy::mapFromSource(const QModelIndex &sourceIndex) const
{
    if (!sourceIndex.isValid())
        return {};
    const int place = m_order.placeOf(sourceIndex.row());
    return place < 0 ? QModelIndex() : createIndex(place, sourceIndex.column());
}

QVariant TntFilterProxy::headerData(int section, Qt::Orientation orientation, int role) const
{
    // Columns are the table's own: their titles are there even when no row is shown.
    if (orientation == Qt::Horizontal)
        return m_table->headerData(section, orientation, role);
    return QAbstractProxyModel::headerData(section, orientation, role);
}

bool TntFilterProxy::admits(int sourceRow) const
{
    const TntModel &tnt = m_table->tntAt(sourceRow);
    return m_sidebar.admits(tnt) && m_name.matches(tnt.name());
}

bool TntFilterProxy::precedes(int sourceRow, int otherSourceRow) const
{
    if (m_sortColumn < 0)
        return sourceRow < otherSourceRow;
    const auto column = static_cast<Column>(m_sortColumn);
    const TntModel &tnt = m_table->tntAt(sourceRow);
    const TntModel &other = m_table->tntAt(otherSourceRow);
    return m_sortOrder == Qt::AscendingOrder ? TntTableModel::lessThan(column, tnt, other)
                                             : TntTableModel::lessThan(column, other, tnt);
}

template<typename Use>
decltype(auto) TntFilterProxy::withOrder(const Use &use) const
{
    switch (m_keyed) {
    case Keys::numbers: return use(ByKey{m_keys.data()});
    case Keys::names: return use(ByName{m_nameKeys.data(), m_sortOrder == Qt::DescendingOrder});
    case Keys::none: break;
    }
    return use([this](int a, int b) { return precedes(a, b); });
}

void TntFilterProxy::sortRows(std::vector<int> &rows) const
{
    if (m_sortColumn < 0)
        std::sort(rows.begin(), rows.end());
    else
        withOrder([&rows](const auto &precedes) { std::stable_sort(rows.begin(), rows.end(), precedes); });
}

quint64 TntFilterProxy::keyAt(int sourceRow) const
{
    const quint64 key = keyOf(static_cast<Column>(m_sortColumn), m_table->tntAt(sourceRow));
    return m_sortOrder == Qt::DescendingOrder ? ~key : key;
}

void TntFilterProxy::makeKeys()
{
    m_keys.clear();
    m_nameKeys.clear();
    if (m_sortColumn == TntTableModel::NameColumn)
        m_keyed = Keys::names;
    else if (m_sortColumn >= 0 && hasKey(static_cast<Column>(m_sortColumn)))
        m_keyed = Keys::numbers;
    else
        m_keyed = Keys::none;
    const int count = m_table->rowCount();
    if (m_keyed == Keys::numbers) {
        m_keys.reserve(static_cast<std::size_t>(count));
        for (int row = 0; row < count; ++row)
            m_keys.push_back(keyAt(row));
    } else if (m_keyed == Keys::names) {
        m_nameKeys.reserve(static_cast<std::size_t>(count));
        for (int row = 0; row < count; ++row)
            m_nameKeys.push_back(m_table->tntAt(row).nameSortKey());
    }
}

std::vector<int> TntFilterProxy::byNameRank(const std::vector<int> &rows)
{
    const auto count = static_cast<std::size_t>(m_table->rowCount());
    if (!m_nameRanksValid) {
        std::vector<int> all(count);
        for (std::size_t row = 0; row < count; ++row)
            all[row] = static_cast<int>(row);
        std::stable_sort(all.begin(), all.end(), ByName{m_nameKeys.data(), false});
        m_nameRanks.assign(count, 0);
        quint32 rank = 0;
        for (std::size_t i = 1; i < count; ++i) {
            const auto row = static_cast<std::size_t>(all[i]);
            rank += m_nameKeys[static_cast<std::size_t>(all[i - 1])].compare(m_nameKeys[row]) != 0;
            m_nameRanks[row] = rank;
        }
        m_nameRanksValid = true;
    }
    // A counting sort, stable: each rank's rows in the order they had, the ranks in the direction.
    std::vector<int> starts(count, 0);
    for (const int row : rows)
        ++starts[m_nameRanks[static_cast<std::size_t>(row)]];
    int next = 0;
    const auto place = [&starts, &next](std::size_t rank) { next += std::exchange(starts[rank], next); };
    if (m_sortOrder == Qt::DescendingOrder) {
        for (std::size_t rank = count; rank-- > 0;)
            place(rank);
    } else {
        for (std::size_t rank = 0; rank < count; ++rank)
            place(rank);
    }
    std::vector<int> sorted(rows.size());
    for (const int row : rows)
        sorted[static_cast<std::size_t>(starts[m_nameRanks[static_cast<std::size_t>(row)]]++)] = row;
    return sorted;
}

void TntFilterProxy::sort(int column, Qt::SortOrder order)
{
    m_sortColumn = column >= 0 && column < TntTableModel::ColumnCount ? column : -1;
    m_sortOrder = order;
    makeKeys();
    if (m_keyed == Keys::names) {
        reorder(byNameRank(m_order.rows()));
        return;
    }
    std::vector<int> rows = m_order.rows();
    sortRows(rows);
    reorder(std::move(rows));
}

void TntFilterProxy::setNameFilter(const QString &text)
{
    NameFilter name(text);
    if (name == m_name)
        return;
    m_name = std::move(name);
    refilter();
}

void TntFilterProxy::setSidebarFilter(const SidebarFilter &filter)
{
    m_sidebar = filter;
    refilter();
}

void TntFilterProxy::rebuild()
{
    m_nameRanksValid = false;
    makeKeys();
    const int count = m_table->rowCount();
    std::vector<int> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row) {
        if (admits(row))
            rows.push_back(row);
    }
    sortRows(rows);
    m_order.assign(std::move(rows), count);
}

void TntFilterProxy::refilter()
{
    const int count = m_table->rowCount();
    std::vector<bool> admitted(static_cast<std::size_t>(count));
    std::vector<int> entering;
    for (int row = 0; row < count; ++row) {
        admitted[static_cast<std::size_t>(row)] = admits(row);
        if (admitted[static_cast<std::size_t>(row)] && m_order.placeOf(row) < 0)
            entering.push_back(row);
    }
    std::vector<int> leaving;
    for (int place = 0; place < m_order.size(); ++place) {
        if (!admitted[static_cast<std::size_t>(m_order.sourceRow(place))])
            leaving.push_back(place);
    }
    removePlaces(std::move(leaving));
    insertAndResort(entering, {});
}

void TntFilterProxy::takeChanges(const QList<TntCollection::RowChange> &changes, TntModel::Fields fields)
{
    const TntModel::Fields sortFields =
        m_sortColumn < 0 ? 0 : TntTableModel::columnFields(static_cast<Column>(m_sortColumn));
    // Every row, shown or not: a hidden row may enter with this answer or a later one.
    for (const TntCollection::RowChange &change : changes) {
        if (change.fields & TntModel::Name)
            m_nameRanksValid = false;
        if (!(change.fields & sortFields))
            continue;
        const auto row = static_cast<std::size_t>(change.row);
        if (m_keyed == Keys::numbers)
            m_keys[row] = keyAt(static_cast<int>(change.row));
        else if (m_keyed == Keys::names)
            m_nameKeys[row] = m_table->tntAt(static_cast<int>(change.row)).nameSortKey();
    }
    std::vector<int> leaving; // places
    std::vector<int> entering;
    std::vector<int> moved; // source rows: places shift when rows leave
    for (const TntCollection::RowChange &change : changes) {
        const int row = static_cast<int>(change.row);
        const int place = m_order.placeOf(row);
        const bool admitted = (change.fields & filteredFields) ? admits(row) : place >= 0;
        if (place >= 0 && !admitted)
            leaving.push_back(place);
        else if (place < 0 && admitted)
            entering.push_back(row);
        else if (place >= 0 && (change.fields & sortFields))
            moved.push_back(row);
    }
    removePlaces(std::move(leaving));
    std::vector<int> movedPlaces;
    movedPlaces.reserve(moved.size());
    for (const int row : moved)
        movedPlaces.push_back(m_order.placeOf(row));
    insertAndResort(entering, std::move(movedPlaces));

    // One signal over the span of the changed rows: the view repaints the part of it that it shows.
    const auto [firstColumn, lastColumn] = m_table->columnSpan(fields);
    if (lastColumn < firstColumn)
        return;
    int first = m_order.size();
    int last = -1;
    for (const TntCollection::RowChange &change : changes) {
        if (const int place = m_order.placeOf(static_cast<int>(change.row)); place >= 0) {
            first = std::min(first, place);
            last = std::max(last, place);
        }
    }
    if (last >= 0)
        Q_EMIT dataChanged(index(first, firstColumn), index(last, lastColumn));
}

void TntFilterProxy::takeInserted(int first, int last)
{
    m_nameRanksValid = false;
    m_order.sourceRowsInserted(first, last - first + 1);
    if (m_keyed == Keys::numbers) {
        m_keys.insert(m_keys.begin() + first, static_cast<std::size_t>(last - first + 1), 0);
        for (int row = first; row <= last; ++row)
            m_keys[static_cast<std::size_t>(row)] = keyAt(row);
    } else if (m_keyed == Keys::names) {
        std::vector<QCollatorSortKey> keys;
        keys.reserve(static_cast<std::size_t>(last - first + 1));
        for (int row = first; row <= last; ++row)
            keys.push_back(m_table->tntAt(row).nameSortKey());
        m_nameKeys.insert(m_nameKeys.begin() + first, keys.begin(), keys.end());
    }
    std::vector<int> entering;
    for (int row = first; row <= last; ++row) {
        if (admits(row))
            entering.push_back(row);
    }
    insertAndResort(entering, {});
}

void TntFilterProxy::removePlaces(std::vector<int> places)
{
    if (places.empty())
        return;
    std::sort(places.begin(), places.end());
    const int count = static_cast<int>(places.size());
    int first = places.front();
    // Scattered rows gather at the end first: two signals instead of one per stretch, which is
    // thousands when a filter is typed, each costing the view a walk of its rows.
    if (places.back() - first + 1 != count) {
        reorder(m_order.gatheredAtEnd(places));
        first = m_order.size() - count;
    }
    beginRemoveRows({}, first, first + count - 1);
    m_order.erase(first, count);
    endRemoveRows();
}

void TntFilterProxy::insertAndResort(const std::vector<int> &sourceRows, std::vector<int> resortPlaces)
{
    if (!sourceRows.empty()) {
        const int first = m_order.size();
        const int last = first + static_cast<int>(sourceRows.size()) - 1;
        beginInsertRows({}, first, last);
        m_order.append(sourceRows);
        endInsertRows();
        for (int place = first; place <= last; ++place)
            resortPlaces.push_back(place);
    }
    if (!resortPlaces.empty())
        reorder(withOrder([&](const auto &precedes) { return m_order.resorted(std::move(resortPlaces), precedes); }));
}

void TntFilterProxy::reorder(std::vector<int> rows)
{
    if (rows == m_order.rows())
        return;
    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<int> sourceRows;
    sourceRows.reserve(static_cast<std::size_t>(before.size()));
    for (const QModelIndex &index : before)
        sourceRows.push_back(m_order.sourceRow(index.row()));
    m_order.reorder(std::move(rows));
    QModelIndexList after;
    after.reserve(before.size());
    for (qsizetype i = 0; i < before.size(); ++i)
        after.append(index(m_order.placeOf(sourceRows[static_cast<std::size_t>(i)]), before[i].column()));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}
