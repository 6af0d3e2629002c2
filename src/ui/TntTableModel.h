#pragma once

#include "model/TntCollection.h"
#include "ui/KeyedRowsTableModel.h"

#include <QDeadlineTimer>
#include <QHash>
#include <QTimeZone>

// The torrent table over a TntCollection: one row per torrent, the 15 columns of the table, display
// texts for people and raw values for sorting.
class TntTableModel : public KeyedRowsTableModel
{
    Q_OBJECT

public:
    enum Column {
        NameColumn,
        SizeColumn,
        ProgressColumn,
        StatusColumn,
        DownSpeedColumn,
        UpSpeedColumn,
        SeedsColumn,
        PeersColumn,
        EtaColumn,
        RatioColumn,
        AddedOnColumn,
        CompletedOnColumn,
        SeenCompleteColumn,
        CategoryColumn,
        TagsColumn,
        ColumnCount
    };

    enum Role {
        SortRole = Qt::UserRole + 1, // numbers as numbers, names as text
        HashRole,
        StateRole,    // TntModel::State as int
        ProgressRole, // 0 to 1
    };

    explicit TntTableModel(TntCollection &collection, QObject *parent = nullptr);

    // The identifier a column's width, order and visibility are saved under.
    static QString columnIdentifier(Column column);
    // Which fields of a torrent a column shows.
    static TntModel::Fields columnFields(Column column);

    const TntModel &tntAt(int row) const { return m_collection.at(row); }
    // Orders two torrents by a column's raw value, without going through QVariant: sorting 50,000
    // rows makes close to a million comparisons. No tie-break: equal values keep their order in the
    // view, so rows whose value did not change stay where they are.
    static bool lessThan(Column column, const TntModel &left, const TntModel &right);

    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    quint64 fieldsShownIn(int column) const override { return columnFields(static_cast<Column>(column)); }
    QString dateText(API::Date when) const;

    TntCollection &m_collection;
    // Local time through the C library reads the system's time zone on every call (glibc checks
    // /etc/localtime), a tenth of a screen's paint with three date columns: the zone is read once a
    // minute, so that a change shows, and the texts are kept by instant until then.
    mutable QHash<double, QString> m_dateTexts;
    mutable QTimeZone m_zone;
    mutable QDeadlineTimer m_dateTextsFresh;
};

// Texts shared by the table and the status bar.
namespace TntFormat {
QString size(qint64 bytes);
QString rate(qint64 bytesPerSecond);
QString rateOrZero(qint64 bytesPerSecond); // "0 B/s" where the table leaves a still torrent's rate empty
QString eta(double seconds);
QString duration(double seconds); // "2d 3h", "4h 5m", "6m", "7s"
QString ratio(double ratio);
QString percent(double fraction); // 0.5 is "50.0%"
QString date(const QDateTime &when); // in the system's time zone
QString date(const QDateTime &when, const QTimeZone &zone);
} // namespace TntFormat
