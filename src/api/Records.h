#pragma once

#include "api/Date.h"
#include "api/Maybe.h"
#include "api/TntFields.h"
#include "api/TntState.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// The JSON answers of the sync and detail endpoints as plain values. They are decoded once (on any
// thread), merged into the models and dropped. Optional scalars are std::optional (Maybe in the
// torrent record); an optional collection is empty when the server left it out. Integers are
// 64-bit; dates are UTC instants.
namespace API {

enum class ConnectionStatus { connected, firewalled, disconnected };

struct STntModel
{
#define QUILLO_WIRE_FIELD(member, Bit, Type, decoding, role) Maybe<Type> member;
    QUILLO_TNT_FIELDS(QUILLO_WIRE_FIELD)
#undef QUILLO_WIRE_FIELD

    friend bool operator==(const STntModel &, const STntModel &) = default;
};

struct SGlobalTransferInfo
{
    std::optional<qint64> alltimeDl;
    std::optional<qint64> dlInfoSpeed;
    std::optional<qint64> dlInfoData;
    std::optional<qint64> upInfoSpeed;
    std::optional<qint64> alltimeUl;
    std::optional<qint64> upInfoData;
    std::optional<qint64> dlRateLimit;
    std::optional<qint64> upRateLimit;
    std::optional<qint64> dhtNodes;
    std::optional<ConnectionStatus> connectionStatus;
    std::optional<bool> queueing;
    std::optional<bool> useAltSpeedLimits;
    std::optional<qint64> refreshInterval;
    std::optional<qint64> freeSpaceOnDisk;
    std::optional<QString> globalRatio;
    // For the statistics window; the cache figures are percentages as texts.
    std::optional<qint64> totalWastedSession;
    std::optional<qint64> totalPeerConnections;
    std::optional<QString> readCacheHits;
    std::optional<qint64> totalBuffersSize;
    std::optional<QString> writeCacheOverload;
    std::optional<QString> readCacheOverload;
    std::optional<qint64> queuedIoJobs;
    std::optional<qint64> averageTimeQueue;
    std::optional<qint64> totalQueuedSize;

    friend bool operator==(const SGlobalTransferInfo &, const SGlobalTransferInfo &) = default;
};

struct Category
{
    std::optional<QString> name;
    std::optional<QString> savePath;

    friend bool operator==(const Category &, const Category &) = default;
};

struct MainData
{
    qint64 rid = 0;
    std::optional<bool> fullUpdate;
    QHash<QString, STntModel> tnts;
    QStringList tntsRemoved;
    QHash<QString, Category> categories;
    QStringList categoriesRemoved;
    QStringList tags;
    QStringList tagsRemoved;
    std::optional<SGlobalTransferInfo> serverState;
    // Tracker URL → hashes of the torrents using it (qBittorrent 5.0 and later).
    QHash<QString, QStringList> trackers;
    QStringList trackersRemoved;
};

struct Peer
{
    std::optional<QString> client;
    std::optional<QString> connection;
    std::optional<QString> country;
    std::optional<QString> countryCode;
    std::optional<qint64> dlSpeed;
    std::optional<qint64> downloaded;
    std::optional<QString> files;
    std::optional<QString> flags;
    std::optional<QString> flagsDesc;
    std::optional<QString> ip;
    std::optional<QString> peerIdClient;
    std::optional<qint64> port;
    std::optional<double> progress;
    std::optional<double> relevance;
    std::optional<qint64> upSpeed;
    std::optional<qint64> uploaded;

    QString debugDescription() const;

    friend bool operator==(const Peer &, const Peer &) = default;
};

struct PeersData
{
    qint64 rid = 0;
    std::optional<bool> fullUpdate;
    std::optional<bool> showFlags;
    // Keyed by the peer's address and port exactly as the server writes them.
    QHash<QString, Peer> peers;
    QStringList peersRemoved;
};

struct SGenericProperties
{
    QString savePath;
    Date creationDate;
    qint64 pieceSize = 0;
    QString comment;
    qint64 totalWasted = 0;
    qint64 totalUploaded = 0;
    qint64 totalUploadedSession = 0;
    qint64 totalDownloaded = 0;
    qint64 totalDownloadedSession = 0;
    qint64 upLimit = 0;
    qint64 dlLimit = 0;
    double timeElapsed = 0;
    double seedingTime = 0;
    qint64 nbConnections = 0;
    qint64 nbConnectionsLimit = 0;
    double shareRatio = 0;
    Date additionDate;
    Date completionDate;
    QString createdBy;
    qint64 dlSpeedAvg = 0;
    qint64 dlSpeed = 0;
    double eta = 0;
    QString infohashV1;
    std::optional<QString> infohashV2;
    Date lastSeen;
    qint64 peers = 0;
    qint64 peersTotal = 0;
    qint64 piecesHave = 0;
    qint64 piecesNum = 0;
    double reannounce = 0;
    qint64 seeds = 0;
    qint64 seedsTotal = 0;
    qint64 totalSize = 0;
    qint64 upSpeedAvg = 0;
    qint64 upSpeed = 0;

    friend bool operator==(const SGenericProperties &, const SGenericProperties &) = default;
};

struct Tracker
{
    QString url;
    TntModelTrackerStatus status = TntModelTrackerStatus::disabled;
    qint64 tier = 0;
    qint64 numPeers = 0;
    qint64 numSeeds = 0;
    qint64 numLeeches = 0;
    qint64 numDownloaded = 0;
    QString msg;

    friend bool operator==(const Tracker &, const Tracker &) = default;
};

struct File
{
    qint64 index = 0;
    QString name;
    qint64 size = 0;
    double progress = 0;
    // The server's integer priority; see tntModelFilePriorityFromValue.
    double priority = 0;
    QList<qint64> pieceRange;
    double availability = 0;

    friend bool operator==(const File &, const File &) = default;
};

// One piece as the piece states answer gives it.
enum class PieceState : quint8 { missing = 0, downloading = 1, have = 2 };

struct WebSeed
{
    QString url;

    friend bool operator==(const WebSeed &, const WebSeed &) = default;
};

// The level of a line of the server's log, by the server's own bits. A newer server's other value
// reads as normal (and is logged once) rather than failing every read of the log from then on.
enum class LogLevel : quint8 { normal = 0x1, info = 0x2, warning = 0x4, critical = 0x8 };

// A line of the server's execution log. Ids count up from 0 from the server's start.
struct LogMessage
{
    qint64 id = 0;
    QString message;
    Date timestamp;
    LogLevel type = LogLevel::normal;

    friend bool operator==(const LogMessage &, const LogMessage &) = default;
};

// A peer the server refused: blocked by its filter (with the reason) or banned.
struct PeerLogEntry
{
    qint64 id = 0;
    QString ip;
    Date timestamp;
    bool blocked = false;
    QString reason;

    friend bool operator==(const PeerLogEntry &, const PeerLogEntry &) = default;
};

// A search job as the server reports it: running, or stopped (finished, failed or stopped by a
// request; the server does not tell them apart).
enum class SearchStatus : quint8 { running, stopped };

struct SearchCategory
{
    QString id; // "all" or the plugin's word, sent back to start a search
    QString name;

    friend bool operator==(const SearchCategory &, const SearchCategory &) = default;
};

// A search plugin (a nova engine on the server). Every version lists "all" first among the categories.
struct SearchPlugin
{
    QString name;
    QString version;
    QString fullName;
    QString url;
    QList<SearchCategory> supportedCategories;
    bool enabled = false;

    friend bool operator==(const SearchPlugin &, const SearchPlugin &) = default;
};

// One hit of a search. Sizes and counts are -1 where the site does not say; qBittorrent 5 adds
// the engine's name and the publication date, which 4.x does not send.
struct SearchResult
{
    QString fileName;
    QString fileUrl;
    qint64 fileSize = 0;
    qint64 nbSeeders = 0;
    qint64 nbLeechers = 0;
    QString siteUrl;
    QString descrLink;
    std::optional<QString> engineName;
    std::optional<Date> pubDate;

    friend bool operator==(const SearchResult &, const SearchResult &) = default;
};

// A page of a job's results from an offset, with the job's status and its count so far.
struct SearchResults
{
    SearchStatus status = SearchStatus::stopped;
    QList<SearchResult> results;
    qint64 total = 0;
};

struct SearchStart
{
    qint64 id = 0;
};

// The key credential; stored as JSON, so it is encoded as well as decoded.
struct Key
{
    QString apiKey;

    friend bool operator==(const Key &, const Key &) = default;
};

// Each decoder takes the whole answer body and throws ResponseDecodingError naming the offending
// key. They keep no state and may run on any thread.
MainData decodeMainData(const QByteArray &json);
PeersData decodePeersData(const QByteArray &json);
SGenericProperties decodeGenericProperties(const QByteArray &json);
QList<Tracker> decodeTrackers(const QByteArray &json);
QList<File> decodeFiles(const QByteArray &json);
QList<WebSeed> decodeWebSeeds(const QByteArray &json);
QList<PieceState> decodePieceStates(const QByteArray &json);
QList<LogMessage> decodeLogMessages(const QByteArray &json);
QList<PeerLogEntry> decodePeerLog(const QByteArray &json);
Key decodeKey(const QByteArray &json);
QList<SearchPlugin> decodeSearchPlugins(const QByteArray &json);
SearchResults decodeSearchResults(const QByteArray &json);
SearchStart decodeSearchStart(const QByteArray &json);
QByteArray encodeKey(const Key &key);

// The key conversion every answer goes through: "dl_info_speed" → "dlInfoSpeed",
// "f_l_piece_prio" → "fLPiecePrio"; a key without inner underscores stays as it is.
QByteArray convertFromSnakeCase(std::string_view key);

} // namespace API

// The hash moves records by their bytes when it grows.
Q_DECLARE_TYPEINFO(API::STntModel, Q_RELOCATABLE_TYPE);
