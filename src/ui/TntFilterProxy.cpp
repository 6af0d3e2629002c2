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

QString TntFilterProxy::searchKey(const QString &text)
{
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString key;
    key.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        if (c.category() != QChar::Mark_NonSpacing)
            key.append(c);
    }
    return key.toCaseFolded();
}

void TntFilterProxy::setNameFilter(const QString &text)
{
    const QString needle = searchKey(text.trimmed());
    if (needle == m_needle)
        return;
    m_needle = needle;
    invalidateFilter();
}

bool TntFilterProxy::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    if (m_needle.isEmpty())
        return true;
    const QModelIndex name = sourceModel()->index(sourceRow, TntTableModel::NameColumn, sourceParent);
    return searchKey(name.data(Qt::DisplayRole).toString()).contains(m_needle);
}
