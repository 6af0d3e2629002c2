#include "api/PreferenceTable.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>

namespace API {

namespace {

// Kept in English here; the settings window translates titles and texts as it shows them.
QString shown(const char *text)
{
    return QString::fromUtf8(text);
}

struct TextWithComment
{
    const char *source;
    const char *comment;
};

QString shown(TextWithComment text)
{
    return QString::fromUtf8(text.source);
}

// Cases numbered from 0 in their order.
Enumeration numbered(QString name, const QList<std::pair<QString, QString>> &namesAndTexts,
                     const char *comment = nullptr)
{
    Enumeration enumeration{std::move(name), {}, comment};
    for (const auto &[caseName, text] : namesAndTexts)
        enumeration.cases.append({caseName, QJsonValue(enumeration.cases.size()), text});
    return enumeration;
}

} // namespace

std::optional<qsizetype> Enumeration::indexOf(const QJsonValue &raw) const
{
    const auto found = std::find_if(cases.cbegin(), cases.cend(), [&raw](const EnumCase &c) { return c.raw == raw; });
    if (found == cases.cend())
        return std::nullopt;
    return found - cases.cbegin();
}

namespace Enumerations {

const Enumeration btProtocol =
    numbered(u"BtProtocol"_qs, {{u"tcpUTP"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "TCP and μTP"))},
                                {u"tcp"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "TCP"))},
                                {u"utp"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "μTP"))}});
const Enumeration diskIOReadWriteMode = numbered(
    u"DiskIOReadWriteMode"_qs,
    {{u"disableOsCache"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Disable OS Cache", "Disk I/O read/write mode"))},
     {u"enableOsCache"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Enable OS Cache", "Disk I/O read/write mode"))},
     {u"writeThrough"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Write-Through", "Disk I/O read/write mode"))}},
    "Disk I/O read/write mode");
const Enumeration diskIOType = numbered(
    u"DiskIOType"_qs,
    {{u"default"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Default", "Disk I/O type"))},
     {u"memoryMappedFiles"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Memory mapped files", "Disk I/O type"))},
     {u"posixCompliant"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "POSIX-compliant", "Disk I/O type"))},
     {u"simplePreadPwrite"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Simple pread/pwrite", "Disk I/O type"))}},
    "Disk I/O type");
const Enumeration dynDNSService =
    numbered(u"DynDNSService"_qs, {{u"DynDNS"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "DynDNS"))},
                                   {u"NOIP"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "No-IP"))}});
const Enumeration encryptionMode = numbered(
    u"EncryptionMode"_qs,
    {{u"prefer"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Allow encryption", "qBittorrent encriition state"))},
     {u"foreceOn"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Require encryption", "qBittorrent encriition state"))},
     {u"foreceOff"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Disable encryption", "qBittorrent encriition state"))}},
    "qBittorrent encriition state");
const Enumeration maxRatioAction = numbered(
    u"MaxRatioAction"_qs,
    {{u"stopTorrent"_qs,
      shown(QT_TRANSLATE_NOOP3("Preferences", "Stop torrent", "Action when reaching maximum ratio"))},
     {u"removeTorrent"_qs,
      shown(QT_TRANSLATE_NOOP3("Preferences", "Remove torrent", "Action when reaching maximum ratio"))},
     {u"superSeed"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Enable super seeding for torrent",
                                                "Action when reaching maximum ratio"))},
     {u"removeTorrentAndFiles"_qs,
      shown(QT_TRANSLATE_NOOP3("Preferences", "Remove torrent and its files", "Action when reaching maximum ratio"))}},
    "Action when reaching maximum ratio");
const Enumeration schedulerDays =
    numbered(u"SchedulerDays"_qs, {{u"day"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Every Day"))},
                                   {u"weekday"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Weekday"))},
                                   {u"weekend"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Weekend"))},
                                   {u"monday"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Monday"))},
                                   {u"tuesday"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Tuesday"))},
                                   {u"wednesday"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Wednesday"))},
                                   {u"thursday"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Thursday"))},
                                   {u"friday"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Friday"))},
                                   {u"saturday"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Saturday"))},
                                   {u"sunday"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Sunday"))}});
const Enumeration uploadChokingAlgorithm = numbered(
    u"UploadChokingAlgorithm"_qs,
    {{u"roundRobin"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Round-robin", "Upload choking algorithm"))},
     {u"fastestUpload"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Fastest upload", "Upload choking algorithm"))},
     {u"antiLeech"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Anti-leech", "Upload choking algorithm"))}},
    "Upload choking algorithm");
const Enumeration uploadSlotsBehavior = numbered(
    u"UploadSlotsBehavior"_qs,
    {{u"fixedSlots"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Fixed slots", "Upload slots behavior"))},
     {u"uploadRateBased"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Upload rate based", "Upload slots behavior"))}},
    "Upload slots behavior");
const Enumeration utpTcpMixedMode = numbered(
    u"UtpTcpMixedMode"_qs,
    {{u"preferTCP"_qs, shown(QT_TRANSLATE_NOOP3("Preferences", "Prefer TCP", "qBittorrent utp/tcp mixed mode"))},
     {u"peerProportional"_qs,
      shown(QT_TRANSLATE_NOOP3("Preferences", "Peer proportional (throttles TCP)", "qBittorrent utp/tcp mixed mode"))}},
    "qBittorrent utp/tcp mixed mode");
const Enumeration proxyType{u"ProxyType"_qs,
                            {{u"disabled"_qs, u"None"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "None"))},
                             {u"http"_qs, u"HTTP"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "HTTP"))},
                             {u"socks4"_qs, u"SOCKS4"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "SOCKS4"))},
                             {u"socks5"_qs, u"SOCKS5"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "SOCKS5"))}}};
// 4.5 numbers its proxy types and folds authentication into them.
const Enumeration numberedProxyType =
    numbered(u"ProxyType"_qs, {{u"disabled"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "None"))},
                               {u"http"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "HTTP"))},
                               {u"socks5"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "SOCKS5"))},
                               {u"httpPw"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "HTTP with authentication"))},
                               {u"socks5Pw"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "SOCKS5 with authentication"))},
                               {u"socks4"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "SOCKS4"))}});
const Enumeration mailNotificationEncryption{
    u"MailNotificationEncryption"_qs,
    {{u"none"_qs, u"None"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "None"))},
     {u"smtps"_qs, u"SMTPS"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "SMTPS"))},
     {u"starttls"_qs, u"STARTTLS"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "STARTTLS"))}}};
const Enumeration tntContentLayout{
    u"TntContentLayout"_qs,
    {{u"original"_qs, u"Original"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Original"))},
     {u"subfolder"_qs, u"Subfolder"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Create subfolder"))},
     {u"noSubfolder"_qs, u"NoSubfolder"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Don't create subfolder"))}}};
const Enumeration tntStopCondition{
    u"TntStopCondition"_qs,
    {{u"none"_qs, u"None"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "None"))},
     {u"metaReceived"_qs, u"MetadataReceived"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Metadata received"))},
     {u"filesChecked"_qs, u"FilesChecked"_qs, shown(QT_TRANSLATE_NOOP("Preferences", "Files checked"))}}};

} // namespace Enumerations

QString groupTitle(PreferenceGroup group)
{
    switch (group) {
    case PreferenceGroup::downloads: return QCoreApplication::translate("Preferences", "Downloads");
    case PreferenceGroup::connection: return QCoreApplication::translate("Preferences", "Connection");
    case PreferenceGroup::speed: return QCoreApplication::translate("Preferences", "Speed");
    case PreferenceGroup::bitTorrent: return QCoreApplication::translate("Preferences", "BitTorrent");
    case PreferenceGroup::rss: return QCoreApplication::translate("Preferences", "RSS");
    case PreferenceGroup::webUi: return QCoreApplication::translate("Preferences", "Web UI");
    case PreferenceGroup::advanced: return QCoreApplication::translate("Preferences", "Advanced");
    }
    Q_UNREACHABLE();
}

QString typeName(PreferenceType type)
{
    switch (type) {
    case PreferenceType::boolean: return u"a Boolean"_qs;
    case PreferenceType::integer: return u"a whole number"_qs;
    case PreferenceType::string: return u"a string"_qs;
    case PreferenceType::real: return u"a number"_qs;
    case PreferenceType::rate: return u"a whole number of bytes per second"_qs;
    case PreferenceType::enumeration: return u"one of its listed values"_qs;
    case PreferenceType::scanDirs: return u"a map of monitored folders"_qs;
    }
    Q_UNREACHABLE();
}

QString snakeCased(QStringView key)
{
    QString wire;
    wire.reserve(key.size() + 8);
    for (const QChar c : key) {
        if (c.isUpper()) {
            wire += u'_';
            wire += c.toLower();
        } else {
            wire += c;
        }
    }
    return wire;
}

const QList<PreferenceKey> &preferenceKeys()
{
    using T = PreferenceType;
    using G = PreferenceGroup;
    namespace E = Enumerations;
    using Range = std::pair<qint64, qint64>;
    // The server reads most numbers as an int.
    constexpr qint64 intMax = std::numeric_limits<qint32>::max();
    constexpr Range port{0, 65535};
    constexpr Range hour{0, 23};
    constexpr Range minute{0, 59};
    constexpr Range percent{0, 100};
    constexpr Range count{0, intMax};
    constexpr Range fromMinusOne{-1, intMax}; // -1: unlimited, or automatic for the disk cache
    constexpr Range large{0, std::numeric_limits<qint64>::max()};
    constexpr Range i2pQuantity{1, 16};
    constexpr Range i2pLength{0, 7};
    const auto row = [](QStringView key, T type, G group, const char *title, std::optional<Range> range = {}) {
        // The server spells this one key its own way; "banned_ips" would be ignored.
        const QString wireKey = key == u"bannedIps" ? u"banned_IPs"_qs : snakeCased(key);
        return PreferenceKey{.key = key.toString(),
                             .wireKey = wireKey,
                             .type = type,
                             .group = group,
                             .title = shown(title),
                             .range = range};
    };
    const auto oneOf = [&row](QStringView key, G group, const char *title, QList<const Enumeration *> enumerations) {
        PreferenceKey preference = row(key, T::enumeration, group, title);
        preference.enumerations = std::move(enumerations);
        return preference;
    };
    const auto pairs = [](QList<PreferenceKey> keys) {
        static constexpr std::pair<const char16_t *, const char16_t *> together[]{
            {u"scheduleFromHour", u"scheduleFromMin"},
            {u"scheduleToHour", u"scheduleToMin"},
            {u"maxRatioEnabled", u"maxRatio"},
            {u"maxSeedingTimeEnabled", u"maxSeedingTime"},
            {u"maxInactiveSeedingTimeEnabled", u"maxInactiveSeedingTime"},
        };
        const auto at = [&keys](QStringView key) {
            return std::find_if(keys.begin(), keys.end(), [key](const PreferenceKey &k) { return k.key == key; });
        };
        for (const auto &[first, second] : together) {
            at(first)->writtenWith = QString::fromUtf16(second);
            at(second)->writtenWith = QString::fromUtf16(first);
        }
        return keys;
    };
    static const QList<PreferenceKey> keys = pairs({
        row(u"locale", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "User interface language")),
        row(u"startPausedEnabled", T::boolean, G::downloads, QT_TRANSLATE_NOOP("Preferences", "Add torrents paused")),
        row(u"addStoppedEnabled", T::boolean, G::downloads, QT_TRANSLATE_NOOP("Preferences", "Add torrents stopped")),
        row(u"autoDeleteMode", T::integer, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Delete .torrent files afterwards (0: never, 1: if added, 2: always)"),
            Range{0, 2}),
        row(u"preallocateAll", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Pre-allocate disk space for all files")),
        row(u"incompleteFilesExt", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Append .!qB extension to incomplete files")),
        row(u"autoTmmEnabled", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Use Automatic Torrent Management by default")),
        row(u"torrentChangedTmmEnabled", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Relocate a torrent when its category changes")),
        row(u"savePathChangedTmmEnabled", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Relocate affected torrents when the default save path changes")),
        row(u"categoryChangedTmmEnabled", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Relocate affected torrents when a category's save path changes")),
        row(u"savePath", T::string, G::downloads, QT_TRANSLATE_NOOP("Preferences", "Default save path")),
        row(u"tempPathEnabled", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Keep incomplete torrents in another folder")),
        row(u"tempPath", T::string, G::downloads, QT_TRANSLATE_NOOP("Preferences", "Folder for incomplete torrents")),
        row(u"scanDirs", T::scanDirs, G::downloads, QT_TRANSLATE_NOOP("Preferences", "Monitored folders")),
        row(u"exportDir", T::string, G::downloads, QT_TRANSLATE_NOOP("Preferences", "Copy .torrent files to")),
        row(u"exportDirFin", T::string, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Copy .torrent files for finished downloads to")),
        row(u"mailNotificationEnabled", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Email notification upon download completion")),
        row(u"mailNotificationSender", T::string, G::downloads, QT_TRANSLATE_NOOP("Preferences", "Email sender")),
        row(u"mailNotificationEmail", T::string, G::downloads, QT_TRANSLATE_NOOP("Preferences", "Email recipients")),
        row(u"mailNotificationSmtp", T::string, G::downloads, QT_TRANSLATE_NOOP("Preferences", "SMTP server")),
        row(u"mailNotificationSslEnabled", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "SMTP server requires a secure connection (SSL)")),
        oneOf(u"mailNotificationEncryptionType", G::downloads, QT_TRANSLATE_NOOP("Preferences", "SMTP encryption"),
              {&E::mailNotificationEncryption}),
        row(u"mailNotificationAuthEnabled", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "SMTP server requires authentication")),
        row(u"mailNotificationUsername", T::string, G::downloads, QT_TRANSLATE_NOOP("Preferences", "SMTP username")),
        row(u"mailNotificationPassword", T::string, G::downloads, QT_TRANSLATE_NOOP("Preferences", "SMTP password")),
        row(u"autorunOnTorrentAddedEnabled", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Run a program when a torrent is added")),
        row(u"autorunOnTorrentAddedProgram", T::string, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Program to run when a torrent is added")),
        row(u"autorunEnabled", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Run a program when a torrent finishes")),
        row(u"autorunProgram", T::string, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Program to run when a torrent finishes")),
        row(u"queueingEnabled", T::boolean, G::bitTorrent, QT_TRANSLATE_NOOP("Preferences", "Enable torrent queueing")),
        row(u"maxActiveCheckingTorrents", T::integer, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Maximum active checking torrents"), fromMinusOne),
        row(u"maxActiveDownloads", T::integer, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Maximum active downloads"), fromMinusOne),
        row(u"maxActiveTorrents", T::integer, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Maximum active torrents"), fromMinusOne),
        row(u"maxActiveUploads", T::integer, G::bitTorrent, QT_TRANSLATE_NOOP("Preferences", "Maximum active uploads"),
            fromMinusOne),
        row(u"dontCountSlowTorrents", T::boolean, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Do not count slow torrents in these limits")),
        row(u"slowTorrentDlRateThreshold", T::integer, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Download rate threshold for slow torrents (KiB/s)"), count),
        row(u"slowTorrentUlRateThreshold", T::integer, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Upload rate threshold for slow torrents (KiB/s)"), count),
        row(u"slowTorrentInactiveTimer", T::integer, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Torrent inactivity timer (seconds)"), count),
        row(u"maxRatioEnabled", T::boolean, G::bitTorrent, QT_TRANSLATE_NOOP("Preferences", "Limit the share ratio")),
        row(u"maxRatio", T::real, G::bitTorrent, QT_TRANSLATE_NOOP("Preferences", "Share ratio limit")),
        row(u"maxInactiveSeedingTimeEnabled", T::boolean, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Limit the inactive seeding time")),
        row(u"maxInactiveSeedingTime", T::integer, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Inactive seeding time limit (minutes)"), fromMinusOne),
        oneOf(u"maxRatioAct", G::bitTorrent, QT_TRANSLATE_NOOP("Preferences", "Action when a seeding limit is reached"),
              {&E::maxRatioAction}),
        row(u"listenPort", T::integer, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Port used for incoming connections"), port),
        row(u"upnp", T::boolean, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Use UPnP / NAT-PMP port forwarding from my router")),
        row(u"randomPort", T::boolean, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Use a random port for incoming connections")),
        row(u"reannounceWhenAddressChanged", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Reannounce to all trackers when IP or port changed")),
        row(u"dlLimit", T::rate, G::speed, QT_TRANSLATE_NOOP("Preferences", "Global download rate limit"), count),
        row(u"upLimit", T::rate, G::speed, QT_TRANSLATE_NOOP("Preferences", "Global upload rate limit"), count),
        row(u"maxConnec", T::integer, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Global maximum number of connections"), fromMinusOne),
        row(u"maxConnecPerTorrent", T::integer, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Maximum number of connections per torrent"), fromMinusOne),
        row(u"maxUploads", T::integer, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Global maximum number of upload slots"), fromMinusOne),
        row(u"maxUploadsPerTorrent", T::integer, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Maximum number of upload slots per torrent"), fromMinusOne),
        row(u"stopTrackerTimeout", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Stop tracker timeout (seconds; 0: disabled)"), count),
        row(u"enablePieceExtentAffinity", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Use piece extent affinity")),
        oneOf(u"bittorrentProtocol", G::connection, QT_TRANSLATE_NOOP("Preferences", "Peer connection protocol"),
              {&E::btProtocol}),
        row(u"limitUtpRate", T::boolean, G::speed,
            QT_TRANSLATE_NOOP("Preferences", "Apply rate limit to μTP protocol")),
        row(u"limitTcpOverhead", T::boolean, G::speed,
            QT_TRANSLATE_NOOP("Preferences", "Apply rate limit to transport overhead")),
        row(u"limitLanPeers", T::boolean, G::speed,
            QT_TRANSLATE_NOOP("Preferences", "Apply rate limit to peers on LAN")),
        row(u"altDlLimit", T::rate, G::speed, QT_TRANSLATE_NOOP("Preferences", "Alternative download rate limit"),
            count),
        row(u"altUpLimit", T::rate, G::speed, QT_TRANSLATE_NOOP("Preferences", "Alternative upload rate limit"), count),
        row(u"schedulerEnabled", T::boolean, G::speed,
            QT_TRANSLATE_NOOP("Preferences", "Schedule the use of alternative rate limits")),
        row(u"scheduleFromHour", T::integer, G::speed,
            QT_TRANSLATE_NOOP("Preferences", "Alternative rate limits from (hour)"), hour),
        row(u"scheduleFromMin", T::integer, G::speed,
            QT_TRANSLATE_NOOP("Preferences", "Alternative rate limits from (minute)"), minute),
        row(u"scheduleToHour", T::integer, G::speed,
            QT_TRANSLATE_NOOP("Preferences", "Alternative rate limits to (hour)"), hour),
        row(u"scheduleToMin", T::integer, G::speed,
            QT_TRANSLATE_NOOP("Preferences", "Alternative rate limits to (minute)"), minute),
        oneOf(u"schedulerDays", G::speed, QT_TRANSLATE_NOOP("Preferences", "Days to use alternative rate limits"),
              {&E::schedulerDays}),
        row(u"dht", T::boolean, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Enable DHT (decentralized network) to find more peers")),
        row(u"pex", T::boolean, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Enable Peer Exchange (PeX) to find more peers")),
        row(u"lsd", T::boolean, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Enable Local Peer Discovery to find more peers")),
        oneOf(u"encryption", G::bitTorrent, QT_TRANSLATE_NOOP("Preferences", "Encryption mode"), {&E::encryptionMode}),
        row(u"anonymousMode", T::boolean, G::bitTorrent, QT_TRANSLATE_NOOP("Preferences", "Enable anonymous mode")),
        row(u"appInstanceName", T::string, G::advanced, QT_TRANSLATE_NOOP("Preferences", "Application instance name")),
        oneOf(u"proxyType", G::connection, QT_TRANSLATE_NOOP("Preferences", "Proxy type"),
              {&E::proxyType, &E::numberedProxyType}),
        row(u"proxyIp", T::string, G::connection, QT_TRANSLATE_NOOP("Preferences", "Proxy host")),
        row(u"proxyPort", T::integer, G::connection, QT_TRANSLATE_NOOP("Preferences", "Proxy port"), port),
        row(u"proxyPeerConnections", T::boolean, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Use proxy for peer connections")),
        row(u"proxyAuthEnabled", T::boolean, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Proxy requires authentication")),
        row(u"proxyUsername", T::string, G::connection, QT_TRANSLATE_NOOP("Preferences", "Proxy username")),
        row(u"pythonExecutablePath", T::string, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Python executable path")),
        row(u"proxyPassword", T::string, G::connection, QT_TRANSLATE_NOOP("Preferences", "Proxy password")),
        row(u"proxyHostnameLookup", T::boolean, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Perform hostname lookup via proxy")),
        row(u"proxyBittorrent", T::boolean, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Use proxy for BitTorrent purposes")),
        row(u"proxyMisc", T::boolean, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Use proxy for general purposes")),
        row(u"proxyRss", T::boolean, G::connection, QT_TRANSLATE_NOOP("Preferences", "Use proxy for RSS purposes")),
        row(u"ipFilterEnabled", T::boolean, G::connection, QT_TRANSLATE_NOOP("Preferences", "Enable IP filtering")),
        row(u"ipFilterPath", T::string, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "IP filter path (.dat, .p2p, .p2b)")),
        row(u"ipFilterTrackers", T::boolean, G::connection,
            QT_TRANSLATE_NOOP("Preferences", "Apply IP filter to trackers")),
        row(u"webUiDomainList", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Server domains")),
        row(u"webUiAddress", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Web UI IP address")),
        row(u"webUiPort", T::integer, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Web UI port"), port),
        row(u"webUiUpnp", T::boolean, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Use UPnP / NAT-PMP to forward the Web UI port from my router")),
        row(u"webUiUsername", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Web UI username")),
        row(u"webUiPassword", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Web UI password")),
        row(u"webUiCsrfProtectionEnabled", T::boolean, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Enable Cross-Site Request Forgery (CSRF) protection")),
        row(u"webUiClickjackingProtectionEnabled", T::boolean, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Enable clickjacking protection")),
        row(u"webUiSecureCookieEnabled", T::boolean, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Enable cookie Secure flag (requires HTTPS or localhost connection)")),
        row(u"webUiMaxAuthFailCount", T::integer, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Ban client after consecutive failures"), count),
        row(u"webUiBanDuration", T::integer, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Ban duration (seconds)"),
            count),
        row(u"webUiSessionTimeout", T::integer, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Session timeout (seconds)"),
            count),
        row(u"webUiHostHeaderValidationEnabled", T::boolean, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Enable Host header validation")),
        row(u"bypassLocalAuth", T::boolean, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Bypass authentication for clients on localhost")),
        row(u"bypassAuthSubnetWhitelistEnabled", T::boolean, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Bypass authentication for clients in whitelisted IP subnets")),
        row(u"bypassAuthSubnetWhitelist", T::string, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Whitelisted IP subnets")),
        row(u"alternativeWebuiEnabled", T::boolean, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Use alternative Web UI")),
        row(u"alternativeWebuiPath", T::string, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Alternative Web UI files location")),
        row(u"useHttps", T::boolean, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Use HTTPS instead of HTTP")),
        row(u"sslKey", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "HTTPS key")),
        row(u"sslCert", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "HTTPS certificate")),
        row(u"webUiHttpsKeyPath", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "HTTPS key file")),
        row(u"webUiHttpsCertPath", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "HTTPS certificate file")),
        row(u"dyndnsEnabled", T::boolean, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Update my dynamic domain name")),
        oneOf(u"dyndnsService", G::webUi, QT_TRANSLATE_NOOP("Preferences", "Dynamic DNS service"), {&E::dynDNSService}),
        row(u"dyndnsUsername", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Dynamic DNS username")),
        row(u"dyndnsPassword", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Dynamic DNS password")),
        row(u"dyndnsDomain", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Dynamic domain name")),
        row(u"rssRefreshInterval", T::integer, G::rss,
            QT_TRANSLATE_NOOP("Preferences", "Feeds refresh interval (minutes)"), count),
        row(u"rssFetchDelay", T::integer, G::rss, QT_TRANSLATE_NOOP("Preferences", "Same host request delay (seconds)"),
            large),
        row(u"rssMaxArticlesPerFeed", T::integer, G::rss,
            QT_TRANSLATE_NOOP("Preferences", "Maximum number of articles per feed"), count),
        row(u"rssProcessingEnabled", T::boolean, G::rss, QT_TRANSLATE_NOOP("Preferences", "Enable fetching RSS feeds")),
        row(u"rssAutoDownloadingEnabled", T::boolean, G::rss,
            QT_TRANSLATE_NOOP("Preferences", "Enable auto downloading of RSS torrents")),
        row(u"rssDownloadRepackProperEpisodes", T::boolean, G::rss,
            QT_TRANSLATE_NOOP("Preferences", "Download REPACK/PROPER episodes")),
        row(u"rssSmartEpisodeFilters", T::string, G::rss, QT_TRANSLATE_NOOP("Preferences", "Smart episode filters")),
        row(u"addTrackersEnabled", T::boolean, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Automatically add these trackers to new downloads")),
        row(u"addTrackers", T::string, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Trackers added to new downloads")),
        row(u"webUiUseCustomHttpHeadersEnabled", T::boolean, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Add custom HTTP headers")),
        row(u"webUiCustomHttpHeaders", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Custom HTTP headers")),
        row(u"maxSeedingTimeEnabled", T::boolean, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Limit the total seeding time")),
        row(u"maxSeedingTime", T::integer, G::bitTorrent,
            QT_TRANSLATE_NOOP("Preferences", "Total seeding time limit (minutes)"), fromMinusOne),
        row(u"announceIp", T::string, G::advanced, QT_TRANSLATE_NOOP("Preferences", "IP address reported to trackers")),
        row(u"announcePort", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Port reported to trackers (0: listening port)"), port),
        row(u"announceToAllTiers", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Always announce to all tiers")),
        row(u"announceToAllTrackers", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Always announce to all trackers in a tier")),
        row(u"asyncIoThreads", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "Asynchronous I/O threads"),
            count),
        row(u"hashingThreads", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "Hashing threads"), count),
        row(u"bannedIps", T::string, G::connection, QT_TRANSLATE_NOOP("Preferences", "Manually banned IP addresses")),
        row(u"checkingMemoryUse", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Outstanding memory when checking torrents (MiB)"), Range{0, 1024}),
        row(u"memoryWorkingSetLimit", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Physical memory (RAM) usage limit (MiB)"), count),
        row(u"currentInterfaceAddress", T::string, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Optional IP address to bind to")),
        row(u"currentNetworkInterface", T::string, G::advanced, QT_TRANSLATE_NOOP("Preferences", "Network interface")),
        row(u"currentInterfaceName", T::string, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Network interface name")),
        row(u"diskCache", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "Disk cache (MiB; -1: automatic)"),
            fromMinusOne),
        row(u"diskCacheTtl", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Disk cache expiry interval (seconds)"), count),
        row(u"embeddedTrackerPort", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "Embedded tracker port"),
            port),
        row(u"embeddedTrackerPortForwarding", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Enable port forwarding for embedded tracker")),
        row(u"enableCoalesceReadWrite", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Coalesce reads & writes")),
        row(u"enableEmbeddedTracker", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Enable embedded tracker")),
        row(u"enableMultiConnectionsFromSameIp", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Allow multiple connections from the same IP address")),
        row(u"enableOsCache", T::boolean, G::advanced, QT_TRANSLATE_NOOP("Preferences", "Enable OS cache")),
        row(u"enableUploadSuggestions", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Send upload piece suggestions")),
        row(u"filePoolSize", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "File pool size"), count),
        row(u"outgoingPortsMax", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Highest outgoing port (0: disabled)"), port),
        row(u"outgoingPortsMin", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Lowest outgoing port (0: disabled)"), port),
        row(u"recheckCompletedTorrents", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Recheck torrents on completion")),
        row(u"resolvePeerCountries", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Resolve peer countries")),
        row(u"saveResumeDataInterval", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Save resume data interval (minutes)"), count),
        row(u"sendBufferLowWatermark", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Send buffer low watermark (KiB)"), count),
        row(u"sendBufferWatermark", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Send buffer watermark (KiB)"), count),
        row(u"sendBufferWatermarkFactor", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Send buffer watermark factor (%)"), count),
        row(u"socketBacklogSize", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "Socket backlog size"),
            count),
        row(u"torrentFileSizeLimit", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", ".torrent file size limit (bytes)"), large),
        oneOf(u"uploadChokingAlgorithm", G::advanced, QT_TRANSLATE_NOOP("Preferences", "Upload choking algorithm"),
              {&E::uploadChokingAlgorithm}),
        oneOf(u"uploadSlotsBehavior", G::advanced, QT_TRANSLATE_NOOP("Preferences", "Upload slots behavior"),
              {&E::uploadSlotsBehavior}),
        row(u"upnpLeaseDuration", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "UPnP lease duration (seconds; 0: permanent lease)"), count),
        oneOf(u"utpTcpMixedMode", G::advanced, QT_TRANSLATE_NOOP("Preferences", "μTP-TCP mixed mode algorithm"),
              {&E::utpTcpMixedMode}),
        row(u"refreshInterval", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Refresh interval (milliseconds)"), count),
        row(u"resumeDataStorageType", T::string, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Resume data storage type")),
        row(u"torrentContentRemoveOption", T::string, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Torrent content removing mode")),
        oneOf(u"torrentContentLayout", G::downloads, QT_TRANSLATE_NOOP("Preferences", "Torrent content layout"),
              {&E::tntContentLayout}),
        row(u"addToTopOfQueue", T::boolean, G::downloads, QT_TRANSLATE_NOOP("Preferences", "Add to top of queue")),
        row(u"mergeTrackers", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Merge trackers into the existing torrent when adding a duplicate")),
        oneOf(u"torrentStopCondition", G::downloads, QT_TRANSLATE_NOOP("Preferences", "Torrent stop condition"),
              {&E::tntStopCondition}),
        row(u"useSubcategories", T::boolean, G::downloads, QT_TRANSLATE_NOOP("Preferences", "Enable subcategories")),
        row(u"excludedFileNamesEnabled", T::boolean, G::downloads,
            QT_TRANSLATE_NOOP("Preferences", "Skip files with excluded names")),
        row(u"excludedFileNames", T::string, G::downloads, QT_TRANSLATE_NOOP("Preferences", "Excluded file names")),
        row(u"webUiReverseProxyEnabled", T::boolean, G::webUi,
            QT_TRANSLATE_NOOP("Preferences", "Enable reverse proxy support")),
        row(u"webUiReverseProxiesList", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Trusted proxies list")),
        row(u"bdecodeDepthLimit", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "Bdecode depth limit"),
            count),
        row(u"bdecodeTokenLimit", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "Bdecode token limit"),
            count),
        row(u"diskQueueSize", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "Disk queue size (bytes)"),
            large),
        oneOf(u"diskIoType", G::advanced, QT_TRANSLATE_NOOP("Preferences", "Disk IO type"), {&E::diskIOType}),
        oneOf(u"diskIoReadMode", G::advanced, QT_TRANSLATE_NOOP("Preferences", "Disk IO read mode"),
              {&E::diskIOReadWriteMode}),
        oneOf(u"diskIoWriteMode", G::advanced, QT_TRANSLATE_NOOP("Preferences", "Disk IO write mode"),
              {&E::diskIOReadWriteMode}),
        row(u"connectionSpeed", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Outgoing connections per second"), count),
        row(u"socketSendBufferSize", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Socket send buffer size (bytes; 0: system default)"), count),
        row(u"socketReceiveBufferSize", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Socket receive buffer size (bytes; 0: system default)"), count),
        row(u"peerTos", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Differentiated Services Code Point (DSCP) for connections to peers"),
            Range{0, 255}),
        row(u"idnSupportEnabled", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Support internationalized domain names (IDN)")),
        row(u"validateHttpsTrackerCertificate", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Validate HTTPS tracker certificates")),
        row(u"ssrfMitigation", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Server-side request forgery (SSRF) mitigation")),
        row(u"blockPeersOnPrivilegedPorts", T::boolean, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Disallow connections to peers on privileged ports")),
        row(u"maxConcurrentHttpAnnounces", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Maximum concurrent HTTP announces"), count),
        row(u"peerTurnover", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Peer turnover disconnect percentage"), percent),
        row(u"peerTurnoverCutoff", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Peer turnover threshold percentage"), percent),
        row(u"peerTurnoverInterval", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Peer turnover disconnect interval (seconds)"), Range{0, 3600}),
        row(u"requestQueueSize", T::integer, G::advanced,
            QT_TRANSLATE_NOOP("Preferences", "Maximum outstanding requests to a single peer"), count),
        row(u"dhtBootstrapNodes", T::string, G::advanced, QT_TRANSLATE_NOOP("Preferences", "DHT bootstrap nodes")),
        row(u"i2pInboundQuantity", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "I2P inbound quantity"),
            i2pQuantity),
        row(u"i2pOutboundQuantity", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "I2P outbound quantity"),
            i2pQuantity),
        row(u"i2pInboundLength", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "I2P inbound length"),
            i2pLength),
        row(u"i2pOutboundLength", T::integer, G::advanced, QT_TRANSLATE_NOOP("Preferences", "I2P outbound length"),
            i2pLength),
        row(u"webUiApiKey", T::string, G::webUi, QT_TRANSLATE_NOOP("Preferences", "Web UI API key")),
    });
    return keys;
}

const PreferenceKey *findPreference(QStringView key)
{
    const QList<PreferenceKey> &keys = preferenceKeys();
    const auto found = std::find_if(keys.cbegin(), keys.cend(), [key](const PreferenceKey &k) { return k.key == key; });
    return found == keys.cend() ? nullptr : &*found;
}

const PreferenceKey *findPreferenceByWireKey(QStringView wireKey)
{
    const QList<PreferenceKey> &keys = preferenceKeys();
    const auto found =
        std::find_if(keys.cbegin(), keys.cend(), [wireKey](const PreferenceKey &k) { return k.wireKey == wireKey; });
    return found == keys.cend() ? nullptr : &*found;
}

} // namespace API
