#include "ui/TntFilterProxy.h"

#include "ui/TntTableModel.h"

TntFilterProxy::TntFilterProxy(QObject *parent)
    : QSortFilterProxyModel(parent)
{
    setSortRole(TntTableModel::SortRole);
}

bool TntFilterProxy::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    if (left.column() == TntTableModel::NameColumn) {
        if (const auto *table = qobject_cast<const TntTableModel *>(sourceModel()))
            return table->tntAt(left.row()).nameSortKey().compare(table->tntAt(right.row()).nameSortKey()) < 0;
    }
    return QVariant::compare(left.data(sortRole()), right.data(sortRole())) == QPartialOrdering::Less;
}

void TntFilterProxy::setNameFilter(const QString &text)
{
    NameFilter name(text);
    if (name == m_name)
        return;
    m_name = std::move(name);
    invalidateFilter();
}

void TntFilterProxy::setSidebarFilter(const SidebarFilter &filter)
{
    m_sidebar = filter;
    invalidateFilter();
}

bool TntFilterProxy::filterAcceptsRow(int sourceRow, const QModelIndex &) const
{
    const auto *table = qobject_cast<const TntTableModel *>(sourceModel());
    if (!table)
        return true;
    const TntModel &tnt = table->tntAt(sourceRow);
    return m_sidebar.admits(tnt) && m_name.matches(tnt.name());
}
