#pragma once

#include "ui/KeyedRowsTableModel.h"

class SearchJob;

// A search's results as a table, a hit a row in the order they came. Sizes and counts sort on
// their numbers (SortRole), not on the texts shown; a count the site did not give (-1) shows empty
// and sorts below zero.
class SearchResultsModel : public KeyedRowsTableModel
{
    Q_OBJECT

public:
    enum Column { NameColumn, SizeColumn, SeedersColumn, LeechersColumn, EngineColumn, PublishedColumn, ColumnCount };
    static constexpr int SortRole = Qt::UserRole + 1;

    explicit SearchResultsModel(const SearchJob &job, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    // Results never change once read.
    quint64 fieldsShownIn(int) const override { return 0; }

    const SearchJob &m_job;
};
