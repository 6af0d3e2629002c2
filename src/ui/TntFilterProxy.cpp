#include "ui/TntFilterProxy.h"

#include "ui/TntTableModel.h"

TntFilterProxy::TntFilterProxy(QObject *parent)
    : QSortFilterProxyModel(parent)
{
    setSortRole(TntTableModel::SortRole);
}

void TntFilterProxy::setSourceModel(QAbstractItemModel *model)
{
    m_table = qobject_cast<const TntTableModel *>(model);
    QSortFilterProxyModel::setSourceModel(model);
}

bool TntFilterProxy::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    if (m_table)
        return TntTableModel::lessThan(static_cast<TntTableModel::Column>(left.column()), m_table->tntAt(left.row()),
                                       m_table->tntAt(right.row()));
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
    if (!m_table)
        return true;
    const TntModel &tnt = m_table->tntAt(sourceRow);
    return m_sidebar.admits(tnt) && m_name.matches(tnt.name());
}
