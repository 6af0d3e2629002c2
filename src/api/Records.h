#pragma once

#include "api/Date.h"
#include "api/TntState.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <bit>
#include <cstring>
#include <optional>
#include <type_traits>
#include <utility>

// The JSON answers of the sync and detail endpoints as plain values. They are decoded once (on any
// thread), merged into the models and dropped. Optional scalars are std::optional (Maybe in the
// torrent record); an optional collection is empty when the server left it out. Integers are
// 64-bit; dates are UTC instants.
namespace API {

enum class ConnectionStatus { connected, firewalled, disconnected };

// std::optional's interface in less room: a QString is absent when null (a present one is never
// null), a double or a date when it holds a NaN that neither JSON nor arithmetic produces, anything
// else keeps its bytes and a flag, unaligned. A torrent record shrinks from 824 to 536 bytes: fewer
// pages for the decoder of 50,000 torrents to fault in and fill.
template<typename U>
constexpr bool isStdOptional = false;
template<typename U>
constexpr bool isStdOptional<std::optional<U>> = true;

template<typename T>
class Maybe
{
    template<typename U>
    static constexpr bool isValue = !std::is_same_v<std::remove_cvref_t<U>, Maybe>
        && !std::is_same_v<std::remove_cvref_t<U>, std::nullopt_t> && !isStdOptional<std::remove_cvref_t<U>>;

public:
    using value_type = T;

    Maybe() = default;
    Maybe(std::nullopt_t) { }
    template<typename U = T>
        requires isValue<U> && std::is_constructible_v<T, U &&>
    Maybe(U &&value) { set(T(std::forward<U>(value))); }
    template<typename U = T>
        requires isValue<U> && std::is_constructible_v<T, U &&>
    Maybe &operator=(U &&value)
    {
        set(T(std::forward<U>(value)));
        return *this;
    }
    Maybe &operator=(std::nullopt_t)
    {
        reset();
        return *this;
    }

    bool has_value() const { return m_storage.present(); }
    explicit operator bool() const { return has_value(); }
    // By value but for QString: the other kinds' bytes may sit at any address.
    decltype(auto) operator*() const { return m_storage.get(); }
    auto operator->() const
    {
        if constexpr (std::is_same_v<T, QString>) {
            return &m_storage.get();
        } else {
            struct Arrow
            {
                T value;
                const T *operator->() const { return &value; }
            };
            return Arrow{m_storage.get()};
        }
    }
    decltype(auto) value() const
    {
        if (!has_value())
            throw std::bad_optional_access();
        return m_storage.get();
    }
    template<typename U>
    T value_or(U &&fallback) const
    {
        return has_value() ? T(m_storage.get()) : T(std::forward<U>(fallback));
    }
    void reset() { m_storage = {}; }
    operator std::optional<T>() const { return has_value() ? std::optional<T>(m_storage.get()) : std::nullopt; }

    friend bool operator==(const Maybe &a, const Maybe &b)
    {
        return a.has_value() == b.has_value() && (!a.has_value() || a.m_storage.get() == b.m_storage.get());
    }
    friend bool operator==(const Maybe &a, std::nullopt_t) { return !a.has_value(); }
    template<typename U>
    friend bool operator==(const Maybe &a, const std::optional<U> &b)
    {
        return a.has_value() == b.has_value() && (!a.has_value() || a.m_storage.get() == *b);
    }
    template<typename U>
    friend bool operator==(const std::optional<U> &a, const Maybe &b)
    {
        return b == a;
    }
    template<typename U>
        requires isValue<U>
    friend bool operator==(const Maybe &a, const U &b)
    {
        return a.has_value() && a.m_storage.get() == b;
    }

private:
    struct InBytes
    {
        unsigned char bytes[sizeof(T)] = {};
        bool flag = false;
        bool present() const { return flag; }
        T get() const { return std::bit_cast<T>(bytes); }
        void set(const T &value)
        {
            std::memcpy(bytes, &value, sizeof value);
            flag = true;
        }
    };
    // A quiet NaN with a payload: no JSON number, and no arithmetic on numbers, gives it.
    struct InNaN
    {
        static constexpr quint64 absent = 0x7ff8'0000'dead'0001ull;
        std::array<unsigned char, 8> bytes = std::bit_cast<std::array<unsigned char, 8>>(absent);
        bool present() const { return std::bit_cast<quint64>(bytes) != absent; }
        T get() const { return std::bit_cast<T>(bytes); }
        void set(const T &value) { std::memcpy(bytes.data(), &value, sizeof value); }
    };
    struct InQString
    {
        QString text;
        bool present() const { return !text.isNull(); }
        const QString &get() const { return text; }
        void set(QString value) { text = value.isNull() ? QStringLiteral("") : std::move(value); }
    };
    using Storage = std::conditional_t<std::is_same_v<T, QString>, InQString,
        std::conditional_t<std::is_same_v<T, double> || std::is_same_v<T, Date>, InNaN, InBytes>>;

    void set(T value) { m_storage.set(std::move(value)); }

    Storage m_storage;
};

struct STntModel
{
    Maybe<Date> addedOn;
    Maybe<qint64> amountLeft;
    Maybe<bool> autoTmm;
    Maybe<double> availability;
    Maybe<QString> category;
    Maybe<qint64> completed;
    Maybe<Date> completionOn;
    Maybe<QString> contentPath;
    Maybe<qint64> dlLimit;
    Maybe<qint64> dlspeed;
    Maybe<qint64> downloaded;
    Maybe<qint64> downloadedSession;
    Maybe<double> eta;
    Maybe<bool> fLPiecePrio;
    Maybe<bool> forceStart;
    Maybe<QString> infohashV1;
    Maybe<QString> infohashV2;
    Maybe<Date> lastActivity;
    Maybe<QString> magnetUri;
    Maybe<double> maxRatio;
    Maybe<qint64> maxSeedingTime;
    Maybe<QString> name;
    Maybe<qint64> numComplete;
    Maybe<qint64> numIncomplete;
    Maybe<qint64> numLeechs;
    Maybe<qint64> numSeeds;
    Maybe<qint64> priority;
    Maybe<double> progress;
    Maybe<double> ratio;
    Maybe<double> ratioLimit;
    Maybe<QString> savePath;
    Maybe<qint64> seedingTime;
    Maybe<qint64> seedingTimeLimit;
    Maybe<Date> seenComplete;
    Maybe<bool> seqDl;
    Maybe<qint64> size;
    Maybe<TntModelState> state;
    Maybe<bool> superSeeding;
    Maybe<QString> tags;
    Maybe<qint64> timeActive;
    Maybe<qint64> totalSize;
    Maybe<QString> tracker;
    Maybe<qint64> upLimit;
    Maybe<qint64> uploaded;
    Maybe<qint64> uploadedSession;
    Maybe<qint64> upspeed;

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

struct WebSeed
{
    QString url;

    friend bool operator==(const WebSeed &, const WebSeed &) = default;
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
Key decodeKey(const QByteArray &json);
QByteArray encodeKey(const Key &key);

// The key conversion every answer goes through: "dl_info_speed" → "dlInfoSpeed",
// "f_l_piece_prio" → "fLPiecePrio"; a key without inner underscores stays as it is.
QByteArray convertFromSnakeCase(std::string_view key);

} // namespace API

// The hash moves records by their bytes when it grows.
Q_DECLARE_TYPEINFO(API::STntModel, Q_RELOCATABLE_TYPE);
