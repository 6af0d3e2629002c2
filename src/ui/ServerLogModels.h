#pragma once

#include "api/Records.h"
#include "ui/KeyedRowsTableModel.h"

#include <QSortFilterProxyModel>

template<typename Entry>
class LogLines;

// The two logs of the log window as tables, a line a row, oldest first.
class LogMessageTableModel : public KeyedRowsTableModel
{
    Q_OBJECT

public:
    enum Column { TimeColumn, MessageColumn, ColumnCount };
    // The line's API::LogLevel as its int.
    static constexpr int LevelRole = Qt::UserRole + 1;

    explicit LogMessageTableModel(const LogLines<API::LogMessage> &lines, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    static QString levelName(API::LogLevel level);

private:
    // Lines never change once read.
    quint64 fieldsShownIn(int) const override { return 0; }

    const LogLines<API::LogMessage> &m_lines;
};

class PeerLogTableModel : public KeyedRowsTableModel
{
    Q_OBJECT

public:
    enum Column { TimeColumn, IpColumn, ReasonColumn, ColumnCount };

    explicit PeerLogTableModel(const LogLines<API::PeerLogEntry> &lines, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    quint64 fieldsShownIn(int) const override { return 0; }

    const LogLines<API::PeerLogEntry> &m_lines;
};

// The levels shown, by the server's bits: every line is kept, so showing a level again shows its
// lines at once.
class LogLevelFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    static constexpr int allLevels = 0xf;

    explicit LogLevelFilter(QObject *parent = nullptr);

    int levels() const { return m_levels; }
    void setLevels(int levels);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;

private:
    int m_levels = allLevels;
};

// A log line's time as the window shows it: the local date and the time to the second.
QString logTime(API::Date when);
