#pragma once

#include "api/WebAPIVersion.h"

#include <QStringView>

namespace API {

// What a server can do, named by feature: the one place that knows which WebUI API version brought
// which change, so that no call site compares version numbers.
class ServerFeatures
{
public:
    ServerFeatures() = default;
    // Implicit: endpoint builders take features, and a version says them all.
    ServerFeatures(WebAPIVersion version) // NOLINT(google-explicit-constructor)
        : m_version(version)
    {}

    const WebAPIVersion &version() const { return m_version; }

    // qBittorrent 5 (API 2.11) starts and stops torrents; older servers resume and pause, and the
    // add form says "stopped" instead of "paused".
    bool usesStartStop() const { return m_version >= WebAPIVersion{2, 11, 0}; }
    // torrents/fetchMetadata exists, and torrents/add reads `filePriorities` along with links.
    bool fetchesMetadata() const { return m_version >= metadataAndPriorities; }
    bool takesFilePrioritiesOnAdd() const { return m_version >= metadataAndPriorities; }
    // editTracker names the old URL "url" from API 2.15 on, "origUrl" before.
    QStringView trackerUrlKey() const { return m_version >= WebAPIVersion{2, 15, 0} ? u"url" : u"origUrl"; }
    // Share limits include a limit of inactive seeding time (qBittorrent 4.6).
    bool limitsInactiveSeedingTime() const { return m_version >= WebAPIVersion{2, 9, 2}; }
    // torrents/export hands out a torrent's .torrent file (API 2.8.11).
    bool exportsTntFiles() const { return m_version >= WebAPIVersion{2, 8, 11}; }
    // setShareLimits answers 400 without `shareLimitAction` and `shareLimitsMode` from API 2.15 on.
    bool requiresShareLimitAction() const { return m_version >= WebAPIVersion{2, 15, 0}; }
    // Web seeds are added, edited and removed from API 2.11.3 (qBittorrent 5.1); older servers only list them.
    bool editsWebSeeds() const { return m_version >= WebAPIVersion{2, 11, 3}; }
    // rss/setFeedURL changes a feed's address in place (qBittorrent 4.6); older servers need the feed
    // removed and added again, which loses its articles.
    bool editsRssFeedURL() const { return m_version >= WebAPIVersion{2, 9, 0}; }

private:
    static constexpr WebAPIVersion metadataAndPriorities{2, 15, 0};

    WebAPIVersion m_version;
};

} // namespace API
