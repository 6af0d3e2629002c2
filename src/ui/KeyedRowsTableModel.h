#pragma once

#include "model/KeyedRows.h"

#include <QAbstractTableModel>

#include <utility>

// A table over keyed rows, row for row: their announcements become the item model's, and changed
// fields reach the view as dataChanged over the rows and the columns that show them, one signal per
// run of neighbouring rows; when most rows changed, one signal over all of them.
class KeyedRowsTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;

    // The first and last column showing one of `fields`; last < first when none does.
    std::pair<int, int> columnSpan(quint64 fields) const;

protected:
    KeyedRowsTableModel(const KeyedRowsSignals &rows, int columnCount, QObject *parent);

    // Which of a row's fields `column` shows.
    virtual quint64 fieldsShownIn(int column) const = 0;

private:
    void announceChanges(const QList<KeyedRowsSignals::RowChange> &changes, quint64 fields);

    const KeyedRowsSignals &m_rows;
    int m_columnCount;
};
