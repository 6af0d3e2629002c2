#pragma once

#include "model/TntDetailContext.h"
#include "ui/KeyedRowsTableModel.h"

// The detail pane's tables over the detail context: display texts for people, raw values under
// SortRole for sorting.

// The torrent's trackers. A new answer with the same trackers in the same order changes the rows'
// values only, so that a selection survives the refresh of every poll.
class TntTrackerTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        UrlColumn,
        TierColumn,
        StatusColumn,
        PeersColumn,
        SeedsColumn,
        LeechesColumn,
        DownloadedColumn,
        MessageColumn,
        ColumnCount
    };
    enum Role { SortRole = Qt::UserRole + 1 };

    explicit TntTrackerTableModel(TntDetailContext &details, QObject *parent = nullptr);

    // The server lists the torrent's other peer sources as "** [DHT] **", "** [PeX] **" and
    // "** [LSD] **": no tracker, nothing to edit, copy or remove.
    static bool isTracker(const QString &url);
    const API::Tracker &trackerAt(int row) const { return m_trackers[row]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void refresh();

    TntDetailContext &m_details;
    QList<API::Tracker> m_trackers;
};

// The torrent's peers, row for row the detail context's list.
class TntPeerTableModel : public KeyedRowsTableModel
{
    Q_OBJECT

public:
    enum Column {
        IpColumn,
        PortColumn,
        CountryColumn,
        ConnectionColumn,
        FlagsColumn,
        ClientColumn,
        ProgressColumn,
        DownSpeedColumn,
        UpSpeedColumn,
        DownloadedColumn,
        UploadedColumn,
        RelevanceColumn,
        FilesColumn,
        ColumnCount
    };
    enum Role {
        SortRole = Qt::UserRole + 1,
        AddressRole, // "ip:port" or "[v6]:port", as banning and copying want it
    };

    explicit TntPeerTableModel(TntDetailContext &details, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    quint64 fieldsShownIn(int column) const override;

    const TntDetailContext::Peers &m_peers;
};
