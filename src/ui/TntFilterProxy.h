#pragma once

#include "model/NameFilter.h"
#include "model/SidebarFilter.h"
#include "model/TntCollection.h"
#include "ui/RowOrder.h"

#include <QAbstractProxyModel>
#include <QCollator>

#include <vector>

class TntTableModel;

// The torrent table as the view shows it: sorted on raw values, keeping the rows that the sidebar's
// filter admits and whose name contains the typed text, ignoring case and accents ("ulysses" finds
// "Ülysses"). Driven by the collection's one change per answer: the changed rows are filtered
// again and re-sorted together, and the view gets one layout change however many rows moved
// (QSortFilterProxyModel re-sorts every changed range on its own, each costing a walk of all rows).
class TntFilterProxy : public QAbstractProxyModel
{
    Q_OBJECT

public:
    // The proxy makes and owns the table model over `collection`, its source.
    explicit TntFilterProxy(TntCollection &collection, QObject *parent = nullptr);

    void setNameFilter(const QString &text);
    // Filters again even when the filter is the same: what it admits may have changed.
    void setSidebarFilter(const SidebarFilter &filter);

    // Names in the user's language order with numbers as numbers ("Part 2" before "Part 10"), the
    // other columns by their raw values. Stable: equal values keep the order they had, so sorting
    // by one column and then another orders by the second, then the first.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    QModelIndex mapToSource(const QModelIndex &proxyIndex) const override;
    QModelIndex mapFromSource(const QModelIndex &sourceIndex) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    using QAbstractProxyModel::setSourceModel; // the table made here, nothing else

    enum class Keys { none, numbers, names };

    bool admits(int sourceRow) const;
    // By the torrents themselves: for text columns, and rows in the source's order when unsorted.
    bool precedes(int sourceRow, int otherSourceRow) const;
    // Calls `use` with the order of source rows for the sort column: by its kept keys where it has
    // them, else through the torrents.
    template<typename Use>
    decltype(auto) withOrder(const Use &use) const;
    void sortRows(std::vector<int> &rows) const;
    // `rows` in the order of their names' ranks, equal names keeping their order.
    std::vector<int> byNameRank(const std::vector<int> &rows);
    quint64 keyAt(int sourceRow) const;
    void makeKeys();
    void rebuild();
    void refilter();
    void takeChanges(const QList<TntCollection::RowChange> &changes, TntModel::Fields fields);
    void takeInserted(int first, int last);
    void removePlaces(std::vector<int> places);
    // Appends the rows and sorts them in with `resortPlaces`, in one layout change.
    void insertAndResort(const std::vector<int> &sourceRows, std::vector<int> resortPlaces);
    // The same rows in a new order: one layout change, persistent indexes following their rows.
    void reorder(std::vector<int> rows);

    TntTableModel *m_table;
    RowOrder m_order;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    // When the sort column holds numbers: its value for every source row as an integer that orders
    // like it in the chosen direction, so that the searches of a busy answer compare within one
    // compact array instead of reading torrents spread over the heap (a large library does not fit
    // in cache). Empty when the column holds text.
    std::vector<quint64> m_keys;
    // When the sort column is the name: every source row's collation key, copied (a shared pointer
    // each) so that a comparison reads the keys without first reading the torrents they belong to.
    std::vector<QCollatorSortKey> m_nameKeys;
    Keys m_keyed = Keys::none;
    // Every source row's place among the names of all rows, equal names sharing one, kept from one
    // sort by name to the next while no name changes and no row arrives: sorting by name again, in
    // the other direction or back from another column, is then a walk of the rows instead of
    // thousands of collations. Removed rows leave the others' ranks in order.
    std::vector<quint32> m_nameRanks;
    bool m_nameRanksValid = false;
    NameFilter m_name;
    SidebarFilter m_sidebar;
};
