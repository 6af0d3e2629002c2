#include "ui/KeyedRowsTableModel.h"

namespace {

int toInt(qsizetype value)
{
    return static_cast<int>(value);
}

} // namespace

KeyedRowsTableModel::KeyedRowsTableModel(const KeyedRowsSignals &rows, int columnCount, QObject *parent)
    : QAbstractTableModel(parent)
    , m_rows(rows)
    , m_columnCount(columnCount)
{
    connect(&rows, &KeyedRowsSignals::aboutToReset, this, [this] { beginResetModel(); });
    connect(&rows, &KeyedRowsSignals::didReset, this, [this] { endResetModel(); });
    connect(&rows, &KeyedRowsSignals::aboutToInsert, this,
            [this](qsizetype first, qsizetype last) { beginInsertRows({}, toInt(first), toInt(last)); });
    connect(&rows, &KeyedRowsSignals::didInsert, this, [this] { endInsertRows(); });
    connect(&rows, &KeyedRowsSignals::aboutToRemove, this,
            [this](qsizetype first, qsizetype last) { beginRemoveRows({}, toInt(first), toInt(last)); });
    connect(&rows, &KeyedRowsSignals::didRemove, this, [this] { endRemoveRows(); });
    connect(&rows, &KeyedRowsSignals::rowsChanged, this, &KeyedRowsTableModel::announceChanges);
}

int KeyedRowsTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : toInt(m_rows.size());
}

int KeyedRowsTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_columnCount;
}

std::pair<int, int> KeyedRowsTableModel::columnSpan(quint64 fields) const
{
    int first = m_columnCount;
    int last = -1;
    for (int column = 0; column < m_columnCount; ++column) {
        if (fieldsShownIn(column) & fields) {
            first = std::min(first, column);
            last = column;
        }
    }
    return {first, last};
}

void KeyedRowsTableModel::announceChanges(const QList<KeyedRowsSignals::RowChange> &changes, quint64 fields)
{
    const auto [firstColumn, lastColumn] = columnSpan(fields);
    if (lastColumn < firstColumn)
        return;
    // Above half the rows, runs cost more than one signal over everything.
    if (changes.size() * 2 > m_rows.size()) {
        Q_EMIT dataChanged(index(toInt(changes.first().row), firstColumn),
                           index(toInt(changes.last().row), lastColumn));
        return;
    }
    qsizetype begin = 0;
    while (begin < changes.size()) {
        qsizetype end = begin + 1;
        while (end < changes.size() && changes[end].row == changes[end - 1].row + 1)
            ++end;
        Q_EMIT dataChanged(index(toInt(changes[begin].row), firstColumn),
                           index(toInt(changes[end - 1].row), lastColumn));
        begin = end;
    }
}
