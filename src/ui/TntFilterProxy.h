#pragma once

#include "model/NameFilter.h"
#include "model/SidebarFilter.h"

#include <QSortFilterProxyModel>

class TntTableModel;

// Sorts the torrent table on raw values and keeps the rows that the sidebar's filter admits and
// whose name contains the typed text, ignoring case and accents ("ulysses" finds "Ülysses").
class TntFilterProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit TntFilterProxy(QObject *parent = nullptr);

    void setSourceModel(QAbstractItemModel *model) override;
    void setNameFilter(const QString &text);
    // Filters again even when the filter is the same: what it admits may have changed.
    void setSidebarFilter(const SidebarFilter &filter);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    // Names in the user's language order with numbers as numbers ("Part 2" before "Part 10"); the
    // other columns by their raw values.
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

private:
    // The source as a torrent table (null for any other model): comparisons read torrents directly.
    const TntTableModel *m_table = nullptr;
    NameFilter m_name;
    SidebarFilter m_sidebar;
};
