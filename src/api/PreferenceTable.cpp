#include "api/PreferenceTable.h"

#include <algorithm>

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
    const auto row = [](QStringView key, T type, G group, QList<const Enumeration *> enumerations = {}) {
        // The server spells this one key its own way; "banned_ips" would be ignored.
        const QString wireKey = key == u"bannedIps" ? u"banned_IPs"_qs : snakeCased(key);
        return PreferenceKey{key.toString(), wireKey, type, group, std::move(enumerations)};
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
        row(u"locale", T::string, G::webUi),
        row(u"startPausedEnabled", T::boolean, G::downloads),
        row(u"addStoppedEnabled", T::boolean, G::downloads),
        row(u"autoDeleteMode", T::integer, G::downloads),
        row(u"preallocateAll", T::boolean, G::downloads),
        row(u"incompleteFilesExt", T::boolean, G::downloads),
        row(u"autoTmmEnabled", T::boolean, G::downloads),
        row(u"torrentChangedTmmEnabled", T::boolean, G::downloads),
        row(u"savePathChangedTmmEnabled", T::boolean, G::downloads),
        row(u"categoryChangedTmmEnabled", T::boolean, G::downloads),
        row(u"savePath", T::string, G::downloads),
        row(u"tempPathEnabled", T::boolean, G::downloads),
        row(u"tempPath", T::string, G::downloads),
        row(u"scanDirs", T::scanDirs, G::downloads),
        row(u"exportDir", T::string, G::downloads),
        row(u"exportDirFin", T::string, G::downloads),
        row(u"mailNotificationEnabled", T::boolean, G::downloads),
        row(u"mailNotificationSender", T::string, G::downloads),
        row(u"mailNotificationEmail", T::string, G::downloads),
        row(u"mailNotificationSmtp", T::string, G::downloads),
        row(u"mailNotificationSslEnabled", T::boolean, G::downloads),
        row(u"mailNotificationEncryptionType", T::enumeration, G::downloads, {&E::mailNotificationEncryption}),
        row(u"mailNotificationAuthEnabled", T::boolean, G::downloads),
        row(u"mailNotificationUsername", T::string, G::downloads),
        row(u"mailNotificationPassword", T::string, G::downloads),
        row(u"autorunOnTorrentAddedEnabled", T::boolean, G::downloads),
        row(u"autorunOnTorrentAddedProgram", T::string, G::downloads),
        row(u"autorunEnabled", T::boolean, G::downloads),
        row(u"autorunProgram", T::string, G::downloads),
        row(u"queueingEnabled", T::boolean, G::bitTorrent),
        row(u"maxActiveCheckingTorrents", T::integer, G::bitTorrent),
        row(u"maxActiveDownloads", T::integer, G::bitTorrent),
        row(u"maxActiveTorrents", T::integer, G::bitTorrent),
        row(u"maxActiveUploads", T::integer, G::bitTorrent),
        row(u"dontCountSlowTorrents", T::boolean, G::bitTorrent),
        row(u"slowTorrentDlRateThreshold", T::integer, G::bitTorrent),
        row(u"slowTorrentUlRateThreshold", T::integer, G::bitTorrent),
        row(u"slowTorrentInactiveTimer", T::integer, G::bitTorrent),
        row(u"maxRatioEnabled", T::boolean, G::bitTorrent),
        row(u"maxRatio", T::real, G::bitTorrent),
        row(u"maxInactiveSeedingTimeEnabled", T::boolean, G::bitTorrent),
        row(u"maxInactiveSeedingTime", T::integer, G::bitTorrent),
        row(u"maxRatioAct", T::enumeration, G::bitTorrent, {&E::maxRatioAction}),
        row(u"listenPort", T::integer, G::connection),
        row(u"upnp", T::boolean, G::connection),
        row(u"randomPort", T::boolean, G::connection),
        row(u"reannounceWhenAddressChanged", T::boolean, G::advanced),
        row(u"dlLimit", T::rate, G::speed),
        row(u"upLimit", T::rate, G::speed),
        row(u"maxConnec", T::integer, G::connection),
        row(u"maxConnecPerTorrent", T::integer, G::connection),
        row(u"maxUploads", T::integer, G::connection),
        row(u"maxUploadsPerTorrent", T::integer, G::connection),
        row(u"stopTrackerTimeout", T::integer, G::advanced),
        row(u"enablePieceExtentAffinity", T::boolean, G::advanced),
        row(u"bittorrentProtocol", T::enumeration, G::connection, {&E::btProtocol}),
        row(u"limitUtpRate", T::boolean, G::speed),
        row(u"limitTcpOverhead", T::boolean, G::speed),
        row(u"limitLanPeers", T::boolean, G::speed),
        row(u"altDlLimit", T::rate, G::speed),
        row(u"altUpLimit", T::rate, G::speed),
        row(u"schedulerEnabled", T::boolean, G::speed),
        row(u"scheduleFromHour", T::integer, G::speed),
        row(u"scheduleFromMin", T::integer, G::speed),
        row(u"scheduleToHour", T::integer, G::speed),
        row(u"scheduleToMin", T::integer, G::speed),
        row(u"schedulerDays", T::enumeration, G::speed, {&E::schedulerDays}),
        row(u"dht", T::boolean, G::bitTorrent),
        row(u"pex", T::boolean, G::bitTorrent),
        row(u"lsd", T::boolean, G::bitTorrent),
        row(u"encryption", T::enumeration, G::bitTorrent, {&E::encryptionMode}),
        row(u"anonymousMode", T::boolean, G::bitTorrent),
        row(u"appInstanceName", T::string, G::advanced),
        row(u"proxyType", T::enumeration, G::connection, {&E::proxyType, &E::numberedProxyType}),
        row(u"proxyIp", T::string, G::connection),
        row(u"proxyPort", T::integer, G::connection),
        row(u"proxyPeerConnections", T::boolean, G::connection),
        row(u"proxyAuthEnabled", T::boolean, G::connection),
        row(u"proxyUsername", T::string, G::connection),
        row(u"pythonExecutablePath", T::string, G::advanced),
        row(u"proxyPassword", T::string, G::connection),
        row(u"proxyHostnameLookup", T::boolean, G::connection),
        row(u"proxyBittorrent", T::boolean, G::connection),
        row(u"proxyMisc", T::boolean, G::connection),
        row(u"proxyRss", T::boolean, G::connection),
        row(u"ipFilterEnabled", T::boolean, G::connection),
        row(u"ipFilterPath", T::string, G::connection),
        row(u"ipFilterTrackers", T::boolean, G::connection),
        row(u"webUiDomainList", T::string, G::webUi),
        row(u"webUiAddress", T::string, G::webUi),
        row(u"webUiPort", T::integer, G::webUi),
        row(u"webUiUpnp", T::boolean, G::webUi),
        row(u"webUiUsername", T::string, G::webUi),
        row(u"webUiPassword", T::string, G::webUi),
        row(u"webUiCsrfProtectionEnabled", T::boolean, G::webUi),
        row(u"webUiClickjackingProtectionEnabled", T::boolean, G::webUi),
        row(u"webUiSecureCookieEnabled", T::boolean, G::webUi),
        row(u"webUiMaxAuthFailCount", T::integer, G::webUi),
        row(u"webUiBanDuration", T::integer, G::webUi),
        row(u"webUiSessionTimeout", T::integer, G::webUi),
        row(u"webUiHostHeaderValidationEnabled", T::boolean, G::webUi),
        row(u"bypassLocalAuth", T::boolean, G::webUi),
        row(u"bypassAuthSubnetWhitelistEnabled", T::boolean, G::webUi),
        row(u"bypassAuthSubnetWhitelist", T::string, G::webUi),
        row(u"alternativeWebuiEnabled", T::boolean, G::webUi),
        row(u"alternativeWebuiPath", T::string, G::webUi),
        row(u"useHttps", T::boolean, G::webUi),
        row(u"sslKey", T::string, G::webUi),
        row(u"sslCert", T::string, G::webUi),
        row(u"webUiHttpsKeyPath", T::string, G::webUi),
        row(u"webUiHttpsCertPath", T::string, G::webUi),
        row(u"dyndnsEnabled", T::boolean, G::webUi),
        row(u"dyndnsService", T::enumeration, G::webUi, {&E::dynDNSService}),
        row(u"dyndnsUsername", T::string, G::webUi),
        row(u"dyndnsPassword", T::string, G::webUi),
        row(u"dyndnsDomain", T::string, G::webUi),
        row(u"rssRefreshInterval", T::integer, G::rss),
        row(u"rssFetchDelay", T::integer, G::rss),
        row(u"rssMaxArticlesPerFeed", T::integer, G::rss),
        row(u"rssProcessingEnabled", T::boolean, G::rss),
        row(u"rssAutoDownloadingEnabled", T::boolean, G::rss),
        row(u"rssDownloadRepackProperEpisodes", T::boolean, G::rss),
        row(u"rssSmartEpisodeFilters", T::string, G::rss),
        row(u"addTrackersEnabled", T::boolean, G::bitTorrent),
        row(u"addTrackers", T::string, G::bitTorrent),
        row(u"webUiUseCustomHttpHeadersEnabled", T::boolean, G::webUi),
        row(u"webUiCustomHttpHeaders", T::string, G::webUi),
        row(u"maxSeedingTimeEnabled", T::boolean, G::bitTorrent),
        row(u"maxSeedingTime", T::integer, G::bitTorrent),
        row(u"announceIp", T::string, G::advanced),
        row(u"announcePort", T::integer, G::advanced),
        row(u"announceToAllTiers", T::boolean, G::advanced),
        row(u"announceToAllTrackers", T::boolean, G::advanced),
        row(u"asyncIoThreads", T::integer, G::advanced),
        row(u"hashingThreads", T::integer, G::advanced),
        row(u"bannedIps", T::string, G::connection),
        row(u"checkingMemoryUse", T::integer, G::advanced),
        row(u"memoryWorkingSetLimit", T::integer, G::advanced),
        row(u"currentInterfaceAddress", T::string, G::advanced),
        row(u"currentNetworkInterface", T::string, G::advanced),
        row(u"currentInterfaceName", T::string, G::advanced),
        row(u"diskCache", T::integer, G::advanced),
        row(u"diskCacheTtl", T::integer, G::advanced),
        row(u"embeddedTrackerPort", T::integer, G::advanced),
        row(u"embeddedTrackerPortForwarding", T::boolean, G::advanced),
        row(u"enableCoalesceReadWrite", T::boolean, G::advanced),
        row(u"enableEmbeddedTracker", T::boolean, G::advanced),
        row(u"enableMultiConnectionsFromSameIp", T::boolean, G::advanced),
        row(u"enableOsCache", T::boolean, G::advanced),
        row(u"enableUploadSuggestions", T::boolean, G::advanced),
        row(u"filePoolSize", T::integer, G::advanced),
        row(u"outgoingPortsMax", T::integer, G::advanced),
        row(u"outgoingPortsMin", T::integer, G::advanced),
        row(u"recheckCompletedTorrents", T::boolean, G::advanced),
        row(u"resolvePeerCountries", T::boolean, G::advanced),
        row(u"saveResumeDataInterval", T::integer, G::advanced),
        row(u"sendBufferLowWatermark", T::integer, G::advanced),
        row(u"sendBufferWatermark", T::integer, G::advanced),
        row(u"sendBufferWatermarkFactor", T::integer, G::advanced),
        row(u"socketBacklogSize", T::integer, G::advanced),
        row(u"torrentFileSizeLimit", T::integer, G::advanced),
        row(u"uploadChokingAlgorithm", T::enumeration, G::advanced, {&E::uploadChokingAlgorithm}),
        row(u"uploadSlotsBehavior", T::enumeration, G::advanced, {&E::uploadSlotsBehavior}),
        row(u"upnpLeaseDuration", T::integer, G::advanced),
        row(u"utpTcpMixedMode", T::enumeration, G::advanced, {&E::utpTcpMixedMode}),
        row(u"refreshInterval", T::integer, G::advanced),
        row(u"resumeDataStorageType", T::string, G::advanced),
        row(u"torrentContentRemoveOption", T::string, G::downloads),
        row(u"torrentContentLayout", T::enumeration, G::downloads, {&E::tntContentLayout}),
        row(u"addToTopOfQueue", T::boolean, G::downloads),
        row(u"mergeTrackers", T::boolean, G::downloads),
        row(u"torrentStopCondition", T::enumeration, G::downloads, {&E::tntStopCondition}),
        row(u"useSubcategories", T::boolean, G::downloads),
        row(u"excludedFileNamesEnabled", T::boolean, G::downloads),
        row(u"excludedFileNames", T::string, G::downloads),
        row(u"webUiReverseProxyEnabled", T::boolean, G::webUi),
        row(u"webUiReverseProxiesList", T::string, G::webUi),
        row(u"bdecodeDepthLimit", T::integer, G::advanced),
        row(u"bdecodeTokenLimit", T::integer, G::advanced),
        row(u"diskQueueSize", T::integer, G::advanced),
        row(u"diskIoType", T::enumeration, G::advanced, {&E::diskIOType}),
        row(u"diskIoReadMode", T::enumeration, G::advanced, {&E::diskIOReadWriteMode}),
        row(u"diskIoWriteMode", T::enumeration, G::advanced, {&E::diskIOReadWriteMode}),
        row(u"connectionSpeed", T::integer, G::advanced),
        row(u"socketSendBufferSize", T::integer, G::advanced),
        row(u"socketReceiveBufferSize", T::integer, G::advanced),
        row(u"peerTos", T::integer, G::advanced),
        row(u"idnSupportEnabled", T::boolean, G::advanced),
        row(u"validateHttpsTrackerCertificate", T::boolean, G::advanced),
        row(u"ssrfMitigation", T::boolean, G::advanced),
        row(u"blockPeersOnPrivilegedPorts", T::boolean, G::advanced),
        row(u"maxConcurrentHttpAnnounces", T::integer, G::advanced),
        row(u"peerTurnover", T::integer, G::advanced),
        row(u"peerTurnoverCutoff", T::integer, G::advanced),
        row(u"peerTurnoverInterval", T::integer, G::advanced),
        row(u"requestQueueSize", T::integer, G::advanced),
        row(u"dhtBootstrapNodes", T::string, G::advanced),
        row(u"i2pInboundQuantity", T::integer, G::advanced),
        row(u"i2pOutboundQuantity", T::integer, G::advanced),
        row(u"i2pInboundLength", T::integer, G::advanced),
        row(u"i2pOutboundLength", T::integer, G::advanced),
        row(u"webUiApiKey", T::string, G::webUi),
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
