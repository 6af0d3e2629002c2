#pragma once

#include "api/APIEndpoint.h"
#include "api/AuthMethod.h"
#include "api/ServerFeatures.h"

#include <QJsonObject>
#include <QStringList>

#include <optional>

// The catalogue of every request Quillo sends, one function per server action. Where the server
// disagrees with a naive reading of its documentation, the server is followed (see each comment).
namespace API::Endpoint {

namespace Auth {
APIEndpoint login(const UserCredentials &credentials);
APIEndpoint logout();
} // namespace Auth

namespace Application {
APIEndpoint setPreferences(const QByteArray &preferencesJson);
APIEndpoint networkInterfaceAddressList(const QString &interfaceName);
APIEndpoint version();
APIEndpoint webapiVersion();
APIEndpoint buildInfo();
APIEndpoint shutdown(); // POST: a GET gets 405
APIEndpoint preferences();
APIEndpoint defaultSavePath();
APIEndpoint networkInterfaceList();
APIEndpoint rotateAPIKey();
APIEndpoint deleteAPIKey();
} // namespace Application

namespace Sync {
APIEndpoint maindata(qint64 rid);
APIEndpoint torrentPeers(const QString &hash, qint64 rid);
} // namespace Sync

namespace TntManagement {
APIEndpoint pause(const QStringList &hashes);
APIEndpoint stop(const QStringList &hashes);
APIEndpoint resume(const QStringList &hashes);
APIEndpoint start(const QStringList &hashes);
APIEndpoint setForceStart(const QStringList &hashes, bool value);
APIEndpoint recheck(const QStringList &hashes);
APIEndpoint reannounce(const QStringList &hashes);
APIEndpoint add(const MultipartBody &upload);
APIEndpoint fetchMetadata(const QString &source, const std::optional<QString> &downloader = std::nullopt);
APIEndpoint parseMetadata(const MultipartBody &upload);
APIEndpoint deleteTnts(const QStringList &hashes, bool deleteFiles); // the server's "delete"
APIEndpoint trackers(const QString &hash);
APIEndpoint addTrackers(const QString &hash, const QStringList &urls);
// The old URL is "origUrl" before API 2.15 and "url" from it on; "oldUrl" gets 400 everywhere.
APIEndpoint editTracker(const QString &hash, const QString &origUrl, const QString &newUrl,
                        const ServerFeatures &features);
// URLs joined with "|": a line-feed-joined list removes nothing.
APIEndpoint removeTrackers(const QString &hash, const QStringList &urls);
APIEndpoint properties(const QString &hash);
APIEndpoint webseeds(const QString &hash);
// ServerFeatures::editsWebSeeds(): older servers answer 404. URLs are joined with "|".
APIEndpoint addWebSeeds(const QString &hash, const QStringList &urls);
APIEndpoint editWebSeed(const QString &hash, const QString &origUrl, const QString &newUrl);
APIEndpoint removeWebSeeds(const QString &hash, const QStringList &urls);
APIEndpoint files(const QString &hash);
APIEndpoint pieceStates(const QString &hash);
// The .torrent the server keeps for it (qBittorrent 4.5 on: ServerFeatures::exportsTntFiles).
APIEndpoint exportTnt(const QString &hash);
APIEndpoint addPeers(const QStringList &hashes, const QStringList &peers);
APIEndpoint increasePrio(const QStringList &hashes);
APIEndpoint decreasePrio(const QStringList &hashes);
APIEndpoint topPrio(const QStringList &hashes);
APIEndpoint bottomPrio(const QStringList &hashes);
APIEndpoint filePrio(const QString &hash, const QList<int> &fileIndexes, int priority);
// Per-torrent limits need the hashes: without them the server answers 400.
APIEndpoint setDownloadLimit(const QStringList &hashes, qint64 limit);
APIEndpoint setUploadLimit(const QStringList &hashes, qint64 limit);
// API 2.15 and later also require "shareLimitAction".
APIEndpoint setShareLimits(const QStringList &hashes, double ratioLimit, qint64 seedingTimeLimit,
                           qint64 inactiveSeedingTimeLimit, const ServerFeatures &features);
APIEndpoint setLocation(const QStringList &hashes, const QString &location);
APIEndpoint rename(const QString &hash, const QString &name);
APIEndpoint renameFile(const QString &hash, const QString &oldPath, const QString &newPath);
APIEndpoint renameFolder(const QString &hash, const QString &oldPath, const QString &newPath);
APIEndpoint setCategory(const QStringList &hashes, const QString &category);
APIEndpoint createCategory(const QString &name, const QString &savePath);
APIEndpoint editCategory(const QString &name, const QString &savePath);
APIEndpoint removeCategories(const QStringList &names);
APIEndpoint addTags(const QStringList &hashes, const QStringList &tags);
APIEndpoint removeTags(const QStringList &hashes, const QStringList &tags);
APIEndpoint createTags(const QStringList &tags);
APIEndpoint deleteTags(const QStringList &tags);
APIEndpoint setAutoManagement(const QStringList &hashes, bool enable);
APIEndpoint toggleSequentialDownload(const QStringList &hashes);
APIEndpoint toggleFirstLastPiecePrio(const QStringList &hashes);
APIEndpoint setSuperSeeding(const QStringList &hashes, bool value);
// Reads of per-torrent limits are POSTed with the hashes; the answer maps hash to limit.
APIEndpoint downloadLimit(const QStringList &hashes);
APIEndpoint uploadLimit(const QStringList &hashes);
} // namespace TntManagement

namespace TransferInfo {
APIEndpoint banPeers(const QStringList &peers); // "ip:port" or "[v6]:port"
APIEndpoint speedLimitsMode();
APIEndpoint toggleSpeedLimitsMode();
// The global limits, bytes per second, 0 for none.
APIEndpoint downloadLimit();
APIEndpoint uploadLimit();
APIEndpoint setDownloadLimit(qint64 limit);
APIEndpoint setUploadLimit(qint64 limit);
} // namespace TransferInfo

// The lines after `lastKnownId` (-1: the whole log the server keeps). Every level is asked for and
// filtered here: reading goes on after the last id, so a level left out by the server would be
// lost for good, and showing it again would mean reading the whole log again.
namespace Log {
APIEndpoint main(qint64 lastKnownId);
APIEndpoint peers(qint64 lastKnownId);
} // namespace Log

// Search jobs and their plugins. Jobs are numbered by the server and keep their results until
// deleted; up to 5.2 they live in the WebUI session that started them (another session gets 404),
// 5.3 keeps them for every session and stores them across restarts. A running
// job counts against the server's five concurrent searches (a sixth start gets 409).
namespace Search {
// `plugins`: "enabled", "all" or plugin names; `category`: "all" or a category id.
APIEndpoint start(const QString &pattern, const QStringList &plugins, const QString &category);
APIEndpoint stop(qint64 id);
// The results from `offset` on; the server answers 409 for an offset past its count.
APIEndpoint results(qint64 id, qint64 offset);
APIEndpoint deleteSearch(qint64 id); // the server's "delete"
APIEndpoint plugins();
// URLs the server downloads, or paths of .py files on the server's own machine.
APIEndpoint installPlugin(const QStringList &sources);
APIEndpoint uninstallPlugin(const QStringList &names);
APIEndpoint enablePlugin(const QStringList &names, bool enable);
APIEndpoint updatePlugins();
} // namespace Search
// Items are named by their paths (see RssItem); a path or name the server refuses answers 409 with
// its reason.
namespace Rss {
APIEndpoint items(); // with the articles
APIEndpoint addFeed(const QString &url, const QString &path);
APIEndpoint addFolder(const QString &path);
APIEndpoint setFeedURL(const QString &path, const QString &url); // where ServerFeatures::editsRssFeedURL
APIEndpoint removeItem(const QString &path);
APIEndpoint moveItem(const QString &itemPath, const QString &destPath);
APIEndpoint refreshItem(const QString &itemPath);
// The whole item without an article id.
APIEndpoint markAsRead(const QString &itemPath, const QString &articleId = {});
APIEndpoint rules();
APIEndpoint setRule(const QString &name, const QJsonObject &definition);
APIEndpoint renameRule(const QString &name, const QString &newName);
APIEndpoint removeRule(const QString &name);
APIEndpoint matchingArticles(const QString &ruleName);
} // namespace Rss

} // namespace API::Endpoint
