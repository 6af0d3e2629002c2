#include "api/PreferenceTable.h"

#include <algorithm>
#include <limits>

namespace API {

namespace {

// Cases numbered from 0 in their order.
Enumeration numbered(QString name, const QList<std::pair<QString, QString>> &namesAndTexts)
{
    Enumeration enumeration{std::move(name), {}};
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

const Enumeration btProtocol = numbered(u"BtProtocol"_qs, {{u"tcpUTP"_qs, u"TCP and μTP"_qs},
                                                           {u"tcp"_qs, u"TCP"_qs},
                                                           {u"utp"_qs, u"μTP"_qs}});
const Enumeration diskIOReadWriteMode = numbered(u"DiskIOReadWriteMode"_qs,
                                                 {{u"disableOsCache"_qs, u"Disable OS Cache"_qs},
                                                  {u"enableOsCache"_qs, u"Enable OS Cache"_qs},
                                                  {u"writeThrough"_qs, u"Write-Through"_qs}});
const Enumeration diskIOType = numbered(u"DiskIOType"_qs, {{u"default"_qs, u"Default"_qs},
                                                           {u"memoryMappedFiles"_qs, u"Memory mapped files"_qs},
                                                           {u"posixCompliant"_qs, u"POSIX-compliant"_qs},
                                                           {u"simplePreadPwrite"_qs, u"Simple pread/pwrite"_qs}});
const Enumeration dynDNSService = numbered(u"DynDNSService"_qs, {{u"DynDNS"_qs, u"DynDNS"_qs}, {u"NOIP"_qs, u"No-IP"_qs}});
const Enumeration encryptionMode = numbered(u"EncryptionMode"_qs, {{u"prefer"_qs, u"Allow encryption"_qs},
                                                                   {u"foreceOn"_qs, u"Require encryption"_qs},
                                                                   {u"foreceOff"_qs, u"Disable encryption"_qs}});
const Enumeration maxRatioAction = numbered(u"MaxRatioAction"_qs,
                                            {{u"stopTorrent"_qs, u"Stop torrent"_qs},
                                             {u"removeTorrent"_qs, u"Remove torrent"_qs},
                                             {u"superSeed"_qs, u"Enable super seeding for torrent"_qs},
                                             {u"removeTorrentAndFiles"_qs, u"Remove torrent and its files"_qs}});
const Enumeration schedulerDays = numbered(u"SchedulerDays"_qs, {{u"day"_qs, u"Every Day"_qs},
                                                                 {u"weekday"_qs, u"Weekday"_qs},
                                                                 {u"weekend"_qs, u"Weekend"_qs},
                                                                 {u"monday"_qs, u"Monday"_qs},
                                                                 {u"tuesday"_qs, u"Tuesday"_qs},
                                                                 {u"wednesday"_qs, u"Wednesday"_qs},
                                                                 {u"thursday"_qs, u"Thursday"_qs},
                                                                 {u"friday"_qs, u"Friday"_qs},
                                                                 {u"saturday"_qs, u"Saturday"_qs},
                                                                 {u"sunday"_qs, u"Sunday"_qs}});
const Enumeration uploadChokingAlgorithm = numbered(u"UploadChokingAlgorithm"_qs,
                                                    {{u"roundRobin"_qs, u"Round-robin"_qs},
                                                     {u"fastestUpload"_qs, u"Fastest upload"_qs},
                                                     {u"antiLeech"_qs, u"Anti-leech"_qs}});
const Enumeration uploadSlotsBehavior = numbered(u"UploadSlotsBehavior"_qs,
                                                 {{u"fixedSlots"_qs, u"Fixed slots"_qs},
                                                  {u"uploadRateBased"_qs, u"Upload rate based"_qs}});
const Enumeration utpTcpMixedMode = numbered(u"UtpTcpMixedMode"_qs,
                                             {{u"preferTCP"_qs, u"Prefer TCP"_qs},
                                              {u"peerProportional"_qs, u"Peer proportional (throttles TCP)"_qs}});
const Enumeration proxyType{u"ProxyType"_qs,
                            {{u"disabled"_qs, u"None"_qs, u"None"_qs},
                             {u"http"_qs, u"HTTP"_qs, u"HTTP"_qs},
                             {u"socks4"_qs, u"SOCKS4"_qs, u"SOCKS4"_qs},
                             {u"socks5"_qs, u"SOCKS5"_qs, u"SOCKS5"_qs}}};
// 4.5 numbers its proxy types and folds authentication into them.
const Enumeration numberedProxyType = numbered(u"ProxyType"_qs, {{u"disabled"_qs, u"None"_qs},
                                                                 {u"http"_qs, u"HTTP"_qs},
                                                                 {u"socks5"_qs, u"SOCKS5"_qs},
                                                                 {u"httpPw"_qs, u"HTTP with authentication"_qs},
                                                                 {u"socks5Pw"_qs, u"SOCKS5 with authentication"_qs},
                                                                 {u"socks4"_qs, u"SOCKS4"_qs}});
const Enumeration mailNotificationEncryption{u"MailNotificationEncryption"_qs,
                                             {{u"none"_qs, u"None"_qs, u"None"_qs},
                                              {u"smtps"_qs, u"SMTPS"_qs, u"SMTPS"_qs},
                                              {u"starttls"_qs, u"STARTTLS"_qs, u"STARTTLS"_qs}}};
const Enumeration tntContentLayout{u"TntContentLayout"_qs,
                                   {{u"original"_qs, u"Original"_qs, u"Original"_qs},
                                    {u"subfolder"_qs, u"Subfolder"_qs, u"Create subfolder"_qs},
                                    {u"noSubfolder"_qs, u"NoSubfolder"_qs, u"Don't create subfolder"_qs}}};
const Enumeration tntStopCondition{u"TntStopCondition"_qs,
                                   {{u"none"_qs, u"None"_qs, u"None"_qs},
                                    {u"metaReceived"_qs, u"MetadataReceived"_qs, u"Metadata received"_qs},
                                    {u"filesChecked"_qs, u"FilesChecked"_qs, u"Files checked"_qs}}};

} // namespace Enumerations

QString groupTitle(PreferenceGroup group)
{
    switch (group) {
    case PreferenceGroup::downloads: return u"Downloads"_qs;
    case PreferenceGroup::connection: return u"Connection"_qs;
    case PreferenceGroup::speed: return u"Speed"_qs;
    case PreferenceGroup::bitTorrent: return u"BitTorrent"_qs;
    case PreferenceGroup::rss: return u"RSS"_qs;
    case PreferenceGroup::webUi: return u"Web UI"_qs;
    case PreferenceGroup::advanced: return u"Advanced"_qs;
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
    const auto row = [](QStringView key, T type, G group, QStringView title, std::optional<Range> range = {}) {
        // The server spells this one key its own way; "banned_ips" would be ignored.
        const QString wireKey = key == u"bannedIps" ? u"banned_IPs"_qs : snakeCased(key);
        return PreferenceKey{.key = key.toString(),
                             .wireKey = wireKey,
                             .type = type,
                             .group = group,
                             .title = title.toString(),
                             .range = range};
    };
    const auto oneOf = [&row](QStringView key, G group, QStringView title, QList<const Enumeration *> enumerations) {
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
        row(u"locale", T::string, G::webUi, u"User interface language"),
        row(u"startPausedEnabled", T::boolean, G::downloads, u"Add torrents paused"),
        row(u"addStoppedEnabled", T::boolean, G::downloads, u"Add torrents stopped"),
        row(u"autoDeleteMode", T::integer, G::downloads,
            u"Delete .torrent files afterwards (0: never, 1: if added, 2: always)", Range{0, 2}),
        row(u"preallocateAll", T::boolean, G::downloads, u"Pre-allocate disk space for all files"),
        row(u"incompleteFilesExt", T::boolean, G::downloads, u"Append .!qB extension to incomplete files"),
        row(u"autoTmmEnabled", T::boolean, G::downloads, u"Use Automatic Torrent Management by default"),
        row(u"torrentChangedTmmEnabled", T::boolean, G::downloads, u"Relocate a torrent when its category changes"),
        row(u"savePathChangedTmmEnabled", T::boolean, G::downloads,
            u"Relocate affected torrents when the default save path changes"),
        row(u"categoryChangedTmmEnabled", T::boolean, G::downloads,
            u"Relocate affected torrents when a category's save path changes"),
        row(u"savePath", T::string, G::downloads, u"Default save path"),
        row(u"tempPathEnabled", T::boolean, G::downloads, u"Keep incomplete torrents in another folder"),
        row(u"tempPath", T::string, G::downloads, u"Folder for incomplete torrents"),
        row(u"scanDirs", T::scanDirs, G::downloads, u"Monitored folders"),
        row(u"exportDir", T::string, G::downloads, u"Copy .torrent files to"),
        row(u"exportDirFin", T::string, G::downloads, u"Copy .torrent files for finished downloads to"),
        row(u"mailNotificationEnabled", T::boolean, G::downloads, u"Email notification upon download completion"),
        row(u"mailNotificationSender", T::string, G::downloads, u"Email sender"),
        row(u"mailNotificationEmail", T::string, G::downloads, u"Email recipients"),
        row(u"mailNotificationSmtp", T::string, G::downloads, u"SMTP server"),
        row(u"mailNotificationSslEnabled", T::boolean, G::downloads, u"SMTP server requires a secure connection (SSL)"),
        oneOf(u"mailNotificationEncryptionType", G::downloads, u"SMTP encryption", {&E::mailNotificationEncryption}),
        row(u"mailNotificationAuthEnabled", T::boolean, G::downloads, u"SMTP server requires authentication"),
        row(u"mailNotificationUsername", T::string, G::downloads, u"SMTP username"),
        row(u"mailNotificationPassword", T::string, G::downloads, u"SMTP password"),
        row(u"autorunOnTorrentAddedEnabled", T::boolean, G::downloads, u"Run a program when a torrent is added"),
        row(u"autorunOnTorrentAddedProgram", T::string, G::downloads, u"Program to run when a torrent is added"),
        row(u"autorunEnabled", T::boolean, G::downloads, u"Run a program when a torrent finishes"),
        row(u"autorunProgram", T::string, G::downloads, u"Program to run when a torrent finishes"),
        row(u"queueingEnabled", T::boolean, G::bitTorrent, u"Enable torrent queueing"),
        row(u"maxActiveCheckingTorrents", T::integer, G::bitTorrent, u"Maximum active checking torrents", fromMinusOne),
        row(u"maxActiveDownloads", T::integer, G::bitTorrent, u"Maximum active downloads", fromMinusOne),
        row(u"maxActiveTorrents", T::integer, G::bitTorrent, u"Maximum active torrents", fromMinusOne),
        row(u"maxActiveUploads", T::integer, G::bitTorrent, u"Maximum active uploads", fromMinusOne),
        row(u"dontCountSlowTorrents", T::boolean, G::bitTorrent, u"Do not count slow torrents in these limits"),
        row(u"slowTorrentDlRateThreshold", T::integer, G::bitTorrent,
            u"Download rate threshold for slow torrents (KiB/s)", count),
        row(u"slowTorrentUlRateThreshold", T::integer, G::bitTorrent,
            u"Upload rate threshold for slow torrents (KiB/s)", count),
        row(u"slowTorrentInactiveTimer", T::integer, G::bitTorrent, u"Torrent inactivity timer (seconds)", count),
        row(u"maxRatioEnabled", T::boolean, G::bitTorrent, u"Limit the share ratio"),
        row(u"maxRatio", T::real, G::bitTorrent, u"Share ratio limit"),
        row(u"maxInactiveSeedingTimeEnabled", T::boolean, G::bitTorrent, u"Limit the inactive seeding time"),
        row(u"maxInactiveSeedingTime", T::integer, G::bitTorrent,
            u"Inactive seeding time limit (minutes)", fromMinusOne),
        oneOf(u"maxRatioAct", G::bitTorrent, u"Action when a seeding limit is reached", {&E::maxRatioAction}),
        row(u"listenPort", T::integer, G::connection, u"Port used for incoming connections", port),
        row(u"upnp", T::boolean, G::connection, u"Use UPnP / NAT-PMP port forwarding from my router"),
        row(u"randomPort", T::boolean, G::connection, u"Use a random port for incoming connections"),
        row(u"reannounceWhenAddressChanged", T::boolean, G::advanced,
            u"Reannounce to all trackers when IP or port changed"),
        row(u"dlLimit", T::rate, G::speed, u"Global download rate limit", count),
        row(u"upLimit", T::rate, G::speed, u"Global upload rate limit", count),
        row(u"maxConnec", T::integer, G::connection, u"Global maximum number of connections", fromMinusOne),
        row(u"maxConnecPerTorrent", T::integer, G::connection,
            u"Maximum number of connections per torrent", fromMinusOne),
        row(u"maxUploads", T::integer, G::connection, u"Global maximum number of upload slots", fromMinusOne),
        row(u"maxUploadsPerTorrent", T::integer, G::connection,
            u"Maximum number of upload slots per torrent", fromMinusOne),
        row(u"stopTrackerTimeout", T::integer, G::advanced, u"Stop tracker timeout (seconds; 0: disabled)", count),
        row(u"enablePieceExtentAffinity", T::boolean, G::advanced, u"Use piece extent affinity"),
        oneOf(u"bittorrentProtocol", G::connection, u"Peer connection protocol", {&E::btProtocol}),
        row(u"limitUtpRate", T::boolean, G::speed, u"Apply rate limit to μTP protocol"),
        row(u"limitTcpOverhead", T::boolean, G::speed, u"Apply rate limit to transport overhead"),
        row(u"limitLanPeers", T::boolean, G::speed, u"Apply rate limit to peers on LAN"),
        row(u"altDlLimit", T::rate, G::speed, u"Alternative download rate limit", count),
        row(u"altUpLimit", T::rate, G::speed, u"Alternative upload rate limit", count),
        row(u"schedulerEnabled", T::boolean, G::speed, u"Schedule the use of alternative rate limits"),
        row(u"scheduleFromHour", T::integer, G::speed, u"Alternative rate limits from (hour)", hour),
        row(u"scheduleFromMin", T::integer, G::speed, u"Alternative rate limits from (minute)", minute),
        row(u"scheduleToHour", T::integer, G::speed, u"Alternative rate limits to (hour)", hour),
        row(u"scheduleToMin", T::integer, G::speed, u"Alternative rate limits to (minute)", minute),
        oneOf(u"schedulerDays", G::speed, u"Days to use alternative rate limits", {&E::schedulerDays}),
        row(u"dht", T::boolean, G::bitTorrent, u"Enable DHT (decentralized network) to find more peers"),
        row(u"pex", T::boolean, G::bitTorrent, u"Enable Peer Exchange (PeX) to find more peers"),
        row(u"lsd", T::boolean, G::bitTorrent, u"Enable Local Peer Discovery to find more peers"),
        oneOf(u"encryption", G::bitTorrent, u"Encryption mode", {&E::encryptionMode}),
        row(u"anonymousMode", T::boolean, G::bitTorrent, u"Enable anonymous mode"),
        row(u"appInstanceName", T::string, G::advanced, u"Application instance name"),
        oneOf(u"proxyType", G::connection, u"Proxy type", {&E::proxyType, &E::numberedProxyType}),
        row(u"proxyIp", T::string, G::connection, u"Proxy host"),
        row(u"proxyPort", T::integer, G::connection, u"Proxy port", port),
        row(u"proxyPeerConnections", T::boolean, G::connection, u"Use proxy for peer connections"),
        row(u"proxyAuthEnabled", T::boolean, G::connection, u"Proxy requires authentication"),
        row(u"proxyUsername", T::string, G::connection, u"Proxy username"),
        row(u"pythonExecutablePath", T::string, G::advanced, u"Python executable path"),
        row(u"proxyPassword", T::string, G::connection, u"Proxy password"),
        row(u"proxyHostnameLookup", T::boolean, G::connection, u"Perform hostname lookup via proxy"),
        row(u"proxyBittorrent", T::boolean, G::connection, u"Use proxy for BitTorrent purposes"),
        row(u"proxyMisc", T::boolean, G::connection, u"Use proxy for general purposes"),
        row(u"proxyRss", T::boolean, G::connection, u"Use proxy for RSS purposes"),
        row(u"ipFilterEnabled", T::boolean, G::connection, u"Enable IP filtering"),
        row(u"ipFilterPath", T::string, G::connection, u"IP filter path (.dat, .p2p, .p2b)"),
        row(u"ipFilterTrackers", T::boolean, G::connection, u"Apply IP filter to trackers"),
        row(u"webUiDomainList", T::string, G::webUi, u"Server domains"),
        row(u"webUiAddress", T::string, G::webUi, u"Web UI IP address"),
        row(u"webUiPort", T::integer, G::webUi, u"Web UI port", port),
        row(u"webUiUpnp", T::boolean, G::webUi, u"Use UPnP / NAT-PMP to forward the Web UI port from my router"),
        row(u"webUiUsername", T::string, G::webUi, u"Web UI username"),
        row(u"webUiPassword", T::string, G::webUi, u"Web UI password"),
        row(u"webUiCsrfProtectionEnabled", T::boolean, G::webUi,
            u"Enable Cross-Site Request Forgery (CSRF) protection"),
        row(u"webUiClickjackingProtectionEnabled", T::boolean, G::webUi, u"Enable clickjacking protection"),
        row(u"webUiSecureCookieEnabled", T::boolean, G::webUi,
            u"Enable cookie Secure flag (requires HTTPS or localhost connection)"),
        row(u"webUiMaxAuthFailCount", T::integer, G::webUi, u"Ban client after consecutive failures", count),
        row(u"webUiBanDuration", T::integer, G::webUi, u"Ban duration (seconds)", count),
        row(u"webUiSessionTimeout", T::integer, G::webUi, u"Session timeout (seconds)", count),
        row(u"webUiHostHeaderValidationEnabled", T::boolean, G::webUi, u"Enable Host header validation"),
        row(u"bypassLocalAuth", T::boolean, G::webUi, u"Bypass authentication for clients on localhost"),
        row(u"bypassAuthSubnetWhitelistEnabled", T::boolean, G::webUi,
            u"Bypass authentication for clients in whitelisted IP subnets"),
        row(u"bypassAuthSubnetWhitelist", T::string, G::webUi, u"Whitelisted IP subnets"),
        row(u"alternativeWebuiEnabled", T::boolean, G::webUi, u"Use alternative Web UI"),
        row(u"alternativeWebuiPath", T::string, G::webUi, u"Alternative Web UI files location"),
        row(u"useHttps", T::boolean, G::webUi, u"Use HTTPS instead of HTTP"),
        row(u"sslKey", T::string, G::webUi, u"HTTPS key"),
        row(u"sslCert", T::string, G::webUi, u"HTTPS certificate"),
        row(u"webUiHttpsKeyPath", T::string, G::webUi, u"HTTPS key file"),
        row(u"webUiHttpsCertPath", T::string, G::webUi, u"HTTPS certificate file"),
        row(u"dyndnsEnabled", T::boolean, G::webUi, u"Update my dynamic domain name"),
        oneOf(u"dyndnsService", G::webUi, u"Dynamic DNS service", {&E::dynDNSService}),
        row(u"dyndnsUsername", T::string, G::webUi, u"Dynamic DNS username"),
        row(u"dyndnsPassword", T::string, G::webUi, u"Dynamic DNS password"),
        row(u"dyndnsDomain", T::string, G::webUi, u"Dynamic domain name"),
        row(u"rssRefreshInterval", T::integer, G::rss, u"Feeds refresh interval (minutes)", count),
        row(u"rssFetchDelay", T::integer, G::rss, u"Same host request delay (seconds)", large),
        row(u"rssMaxArticlesPerFeed", T::integer, G::rss, u"Maximum number of articles per feed", count),
        row(u"rssProcessingEnabled", T::boolean, G::rss, u"Enable fetching RSS feeds"),
        row(u"rssAutoDownloadingEnabled", T::boolean, G::rss, u"Enable auto downloading of RSS torrents"),
        row(u"rssDownloadRepackProperEpisodes", T::boolean, G::rss, u"Download REPACK/PROPER episodes"),
        row(u"rssSmartEpisodeFilters", T::string, G::rss, u"Smart episode filters"),
        row(u"addTrackersEnabled", T::boolean, G::bitTorrent, u"Automatically add these trackers to new downloads"),
        row(u"addTrackers", T::string, G::bitTorrent, u"Trackers added to new downloads"),
        row(u"webUiUseCustomHttpHeadersEnabled", T::boolean, G::webUi, u"Add custom HTTP headers"),
        row(u"webUiCustomHttpHeaders", T::string, G::webUi, u"Custom HTTP headers"),
        row(u"maxSeedingTimeEnabled", T::boolean, G::bitTorrent, u"Limit the total seeding time"),
        row(u"maxSeedingTime", T::integer, G::bitTorrent, u"Total seeding time limit (minutes)", fromMinusOne),
        row(u"announceIp", T::string, G::advanced, u"IP address reported to trackers"),
        row(u"announcePort", T::integer, G::advanced, u"Port reported to trackers (0: listening port)", port),
        row(u"announceToAllTiers", T::boolean, G::advanced, u"Always announce to all tiers"),
        row(u"announceToAllTrackers", T::boolean, G::advanced, u"Always announce to all trackers in a tier"),
        row(u"asyncIoThreads", T::integer, G::advanced, u"Asynchronous I/O threads", count),
        row(u"hashingThreads", T::integer, G::advanced, u"Hashing threads", count),
        row(u"bannedIps", T::string, G::connection, u"Manually banned IP addresses"),
        row(u"checkingMemoryUse", T::integer, G::advanced,
            u"Outstanding memory when checking torrents (MiB)", Range{0, 1024}),
        row(u"memoryWorkingSetLimit", T::integer, G::advanced, u"Physical memory (RAM) usage limit (MiB)", count),
        row(u"currentInterfaceAddress", T::string, G::advanced, u"Optional IP address to bind to"),
        row(u"currentNetworkInterface", T::string, G::advanced, u"Network interface"),
        row(u"currentInterfaceName", T::string, G::advanced, u"Network interface name"),
        row(u"diskCache", T::integer, G::advanced, u"Disk cache (MiB; -1: automatic)", fromMinusOne),
        row(u"diskCacheTtl", T::integer, G::advanced, u"Disk cache expiry interval (seconds)", count),
        row(u"embeddedTrackerPort", T::integer, G::advanced, u"Embedded tracker port", port),
        row(u"embeddedTrackerPortForwarding", T::boolean, G::advanced, u"Enable port forwarding for embedded tracker"),
        row(u"enableCoalesceReadWrite", T::boolean, G::advanced, u"Coalesce reads & writes"),
        row(u"enableEmbeddedTracker", T::boolean, G::advanced, u"Enable embedded tracker"),
        row(u"enableMultiConnectionsFromSameIp", T::boolean, G::advanced,
            u"Allow multiple connections from the same IP address"),
        row(u"enableOsCache", T::boolean, G::advanced, u"Enable OS cache"),
        row(u"enableUploadSuggestions", T::boolean, G::advanced, u"Send upload piece suggestions"),
        row(u"filePoolSize", T::integer, G::advanced, u"File pool size", count),
        row(u"outgoingPortsMax", T::integer, G::advanced, u"Highest outgoing port (0: disabled)", port),
        row(u"outgoingPortsMin", T::integer, G::advanced, u"Lowest outgoing port (0: disabled)", port),
        row(u"recheckCompletedTorrents", T::boolean, G::advanced, u"Recheck torrents on completion"),
        row(u"resolvePeerCountries", T::boolean, G::advanced, u"Resolve peer countries"),
        row(u"saveResumeDataInterval", T::integer, G::advanced, u"Save resume data interval (minutes)", count),
        row(u"sendBufferLowWatermark", T::integer, G::advanced, u"Send buffer low watermark (KiB)", count),
        row(u"sendBufferWatermark", T::integer, G::advanced, u"Send buffer watermark (KiB)", count),
        row(u"sendBufferWatermarkFactor", T::integer, G::advanced, u"Send buffer watermark factor (%)", count),
        row(u"socketBacklogSize", T::integer, G::advanced, u"Socket backlog size", count),
        row(u"torrentFileSizeLimit", T::integer, G::advanced, u".torrent file size limit (bytes)", large),
        oneOf(u"uploadChokingAlgorithm", G::advanced, u"Upload choking algorithm", {&E::uploadChokingAlgorithm}),
        oneOf(u"uploadSlotsBehavior", G::advanced, u"Upload slots behavior", {&E::uploadSlotsBehavior}),
        row(u"upnpLeaseDuration", T::integer, G::advanced, u"UPnP lease duration (seconds; 0: permanent lease)", count),
        oneOf(u"utpTcpMixedMode", G::advanced, u"μTP-TCP mixed mode algorithm", {&E::utpTcpMixedMode}),
        row(u"refreshInterval", T::integer, G::advanced, u"Refresh interval (milliseconds)", count),
        row(u"resumeDataStorageType", T::string, G::advanced, u"Resume data storage type"),
        row(u"torrentContentRemoveOption", T::string, G::downloads, u"Torrent content removing mode"),
        oneOf(u"torrentContentLayout", G::downloads, u"Torrent content layout", {&E::tntContentLayout}),
        row(u"addToTopOfQueue", T::boolean, G::downloads, u"Add to top of queue"),
        row(u"mergeTrackers", T::boolean, G::downloads,
            u"Merge trackers into the existing torrent when adding a duplicate"),
        oneOf(u"torrentStopCondition", G::downloads, u"Torrent stop condition", {&E::tntStopCondition}),
        row(u"useSubcategories", T::boolean, G::downloads, u"Enable subcategories"),
        row(u"excludedFileNamesEnabled", T::boolean, G::downloads, u"Skip files with excluded names"),
        row(u"excludedFileNames", T::string, G::downloads, u"Excluded file names"),
        row(u"webUiReverseProxyEnabled", T::boolean, G::webUi, u"Enable reverse proxy support"),
        row(u"webUiReverseProxiesList", T::string, G::webUi, u"Trusted proxies list"),
        row(u"bdecodeDepthLimit", T::integer, G::advanced, u"Bdecode depth limit", count),
        row(u"bdecodeTokenLimit", T::integer, G::advanced, u"Bdecode token limit", count),
        row(u"diskQueueSize", T::integer, G::advanced, u"Disk queue size (bytes)", large),
        oneOf(u"diskIoType", G::advanced, u"Disk IO type", {&E::diskIOType}),
        oneOf(u"diskIoReadMode", G::advanced, u"Disk IO read mode", {&E::diskIOReadWriteMode}),
        oneOf(u"diskIoWriteMode", G::advanced, u"Disk IO write mode", {&E::diskIOReadWriteMode}),
        row(u"connectionSpeed", T::integer, G::advanced, u"Outgoing connections per second", count),
        row(u"socketSendBufferSize", T::integer, G::advanced,
            u"Socket send buffer size (bytes; 0: system default)", count),
        row(u"socketReceiveBufferSize", T::integer, G::advanced,
            u"Socket receive buffer size (bytes; 0: system default)", count),
        row(u"peerTos", T::integer, G::advanced,
            u"Differentiated Services Code Point (DSCP) for connections to peers", Range{0, 255}),
        row(u"idnSupportEnabled", T::boolean, G::advanced, u"Support internationalized domain names (IDN)"),
        row(u"validateHttpsTrackerCertificate", T::boolean, G::advanced, u"Validate HTTPS tracker certificates"),
        row(u"ssrfMitigation", T::boolean, G::advanced, u"Server-side request forgery (SSRF) mitigation"),
        row(u"blockPeersOnPrivilegedPorts", T::boolean, G::advanced,
            u"Disallow connections to peers on privileged ports"),
        row(u"maxConcurrentHttpAnnounces", T::integer, G::advanced, u"Maximum concurrent HTTP announces", count),
        row(u"peerTurnover", T::integer, G::advanced, u"Peer turnover disconnect percentage", percent),
        row(u"peerTurnoverCutoff", T::integer, G::advanced, u"Peer turnover threshold percentage", percent),
        row(u"peerTurnoverInterval", T::integer, G::advanced,
            u"Peer turnover disconnect interval (seconds)", Range{0, 3600}),
        row(u"requestQueueSize", T::integer, G::advanced, u"Maximum outstanding requests to a single peer", count),
        row(u"dhtBootstrapNodes", T::string, G::advanced, u"DHT bootstrap nodes"),
        row(u"i2pInboundQuantity", T::integer, G::advanced, u"I2P inbound quantity", i2pQuantity),
        row(u"i2pOutboundQuantity", T::integer, G::advanced, u"I2P outbound quantity", i2pQuantity),
        row(u"i2pInboundLength", T::integer, G::advanced, u"I2P inbound length", i2pLength),
        row(u"i2pOutboundLength", T::integer, G::advanced, u"I2P outbound length", i2pLength),
        row(u"webUiApiKey", T::string, G::webUi, u"Web UI API key"),
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
