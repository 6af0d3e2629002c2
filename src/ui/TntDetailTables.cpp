#include "ui/TntDetailTables.h"

#include "ui/TntTableModel.h"

#include <algorithm>

namespace {

using PeerField = TntModel::Peer::Field;

int toInt(qsizetype value)
{
    return static_cast<int>(value);
}

// The server's -1 is a count it does not know.
QVariant count(qint64 value)
{
    return value < 0 ? QVariant(QString()) : QVariant(value);
}

QVariant alignedRight(int column, std::initializer_list<int> textColumns)
{
    if (std::find(textColumns.begin(), textColumns.end(), column) != textColumns.end())
        return {};
    return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
}

} // namespace

TntTrackerTableModel::TntTrackerTableModel(TntDetailContext &details, QObject *parent)
    : QAbstractTableModel(parent)
    , m_details(details)
{
    m_trackers = details.trackers();
    connect(&details, &TntDetailContext::trackersChanged, this, &TntTrackerTableModel::refresh);
}

bool TntTrackerTableModel::isTracker(const QString &url)
{
    return !url.startsWith(QStringLiteral("** ["));
}

void TntTrackerTableModel::refresh()
{
    const QList<API::Tracker> &next = m_details.trackers();
    const bool sameRows = std::equal(next.cbegin(), next.cend(), m_trackers.cbegin(), m_trackers.cend(),
                                     [](const API::Tracker &a, const API::Tracker &b) { return a.url == b.url; });
    if (!sameRows) {
        beginResetModel();
        m_trackers = next;
        endResetModel();
        return;
    }
    m_trackers = next;
    if (!m_trackers.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

int TntTrackerTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : toInt(m_trackers.size());
}

int TntTrackerTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant TntTrackerTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const API::Tracker &tracker = m_trackers[index.row()];
    if (role == Qt::TextAlignmentRole)
        return alignedRight(index.column(), {UrlColumn, StatusColumn, MessageColumn});
    if (role == Qt::ToolTipRole && index.column() == MessageColumn)
        return tracker.msg;
    if (role != Qt::DisplayRole && role != SortRole)
        return {};
    const bool sorting = role == SortRole;
    switch (index.column()) {
    case UrlColumn: return tracker.url;
    case TierColumn: return count(tracker.tier);
    case StatusColumn:
        return sorting ? QVariant(static_cast<int>(tracker.status)) : TntModel::Tracker::statusText(tracker.status);
    case PeersColumn: return count(tracker.numPeers);
    case SeedsColumn: return count(tracker.numSeeds);
    case LeechesColumn: return count(tracker.numLeeches);
    case DownloadedColumn: return count(tracker.numDownloaded);
    case MessageColumn: return tracker.msg;
    default: return {};
    }
}

QVariant TntTrackerTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const char *const titles[ColumnCount] = {"URL",   "Tier",    "Status",     "Peers",
                                                    "Seeds", "Leeches", "Downloaded", "Message"};
    return section >= 0 && section < ColumnCount ? QString::fromLatin1(titles[section]) : QVariant();
}

TntPeerTableModel::TntPeerTableModel(TntDetailContext &details, QObject *parent)
    : KeyedRowsTableModel(details.peers(), ColumnCount, parent)
    , m_peers(details.peers())
{
}

quint64 TntPeerTableModel::fieldsShownIn(int column) const
{
    static const TntModel::Peer::Fields fields[ColumnCount] = {
        PeerField::Ip,
        PeerField::Port,
        PeerField::Country | PeerField::CountryCode,
        PeerField::Connection,
        PeerField::Flags | PeerField::FlagsDesc,
        PeerField::Client | PeerField::PeerIdClient,
        PeerField::ProgressField,
        PeerField::DlSpeed,
        PeerField::UpSpeed,
        PeerField::DownloadedField,
        PeerField::UploadedField,
        PeerField::Relevance,
        PeerField::Files,
    };
    return fields[column];
}

QVariant TntPeerTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const TntModel::Peer &peer = m_peers.at(index.row());
    switch (role) {
    case AddressRole: return peer.address();
    case Qt::TextAlignmentRole:
        return alignedRight(index.column(), {IpColumn, CountryColumn, ConnectionColumn, FlagsColumn, ClientColumn, FilesColumn});
    case Qt::ToolTipRole:
        if (index.column() == FlagsColumn)
            return peer.flagsDesc();
        if (index.column() == ClientColumn)
            return peer.peerIdClient();
        return {};
    case Qt::DisplayRole:
    case SortRole: break;
    default: return {};
    }
    const bool sorting = role == SortRole;
    switch (index.column()) {
    case IpColumn: return peer.ip().isEmpty() ? peer.id() : peer.ip();
    case PortColumn: return peer.port();
    case CountryColumn: return peer.country();
    case ConnectionColumn: return peer.connection();
    case FlagsColumn: return peer.flags();
    case ClientColumn: return peer.client();
    case ProgressColumn: return sorting ? QVariant(peer.progress()) : TntFormat::percent(peer.progress());
    case DownSpeedColumn: return sorting ? QVariant(peer.dlSpeed()) : TntFormat::rate(peer.dlSpeed());
    case UpSpeedColumn: return sorting ? QVariant(peer.upSpeed()) : TntFormat::rate(peer.upSpeed());
    case DownloadedColumn: return sorting ? QVariant(peer.downloaded()) : TntFormat::size(peer.downloaded());
    case UploadedColumn: return sorting ? QVariant(peer.uploaded()) : TntFormat::size(peer.uploaded());
    case RelevanceColumn: return sorting ? QVariant(peer.relevance()) : TntFormat::percent(peer.relevance());
    case FilesColumn: return peer.files();
    default: return {};
    }
}

QVariant TntPeerTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const char *const titles[ColumnCount] = {"IP",          "Port",       "Country",  "Connection", "Flags",
                                                    "Client",      "Progress",   "Down Speed", "Up Speed",
                                                    "Downloaded",  "Uploaded",   "Relevance", "Files"};
    return section >= 0 && section < ColumnCount ? QString::fromLatin1(titles[section]) : QVariant();
}
