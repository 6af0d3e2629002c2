#include "api/Endpoint.h"

#include <QCoreApplication>
#include <QJsonDocument>

namespace API::Endpoint {

namespace {

using Group = APIEndpoint::Group;
using Case = TntManagmentError::Case;

const QByteArray formContentType = QByteArrayLiteral("application/x-www-form-urlencoded");

APIEndpoint get(Group group, QString name)
{
    return {.group = group, .name = std::move(name), .method = HttpMethod::get};
}

APIEndpoint post(Group group, QString name, const FormBody &form = {}, QList<StatusRule> rules = {})
{
    APIEndpoint endpoint{.group = group, .name = std::move(name), .method = HttpMethod::post};
    if (!form.bytes().isEmpty()) {
        endpoint.body = form.bytes();
        endpoint.contentType = formContentType;
    }
    endpoint.statusRules = std::move(rules);
    return endpoint;
}

APIEndpoint multipart(QString name, const MultipartBody &upload, QList<StatusRule> rules)
{
    return {.group = Group::tntManagement,
            .name = std::move(name),
            .method = HttpMethod::post,
            .body = upload.bytes,
            .contentType = "multipart/form-data; boundary=" + upload.boundary,
            .statusRules = std::move(rules)};
}

APIEndpoint torrents(QString name, const FormBody &form, QList<StatusRule> rules = {})
{
    return post(Group::tntManagement, std::move(name), form, std::move(rules));
}

QString joined(const QStringList &hashes)
{
    return hashes.join(u'|');
}

APIEndpoint forHashes(QString name, const QStringList &hashes, QList<StatusRule> rules = {})
{
    return torrents(std::move(name), FormBody().add(u"hashes", joined(hashes)), std::move(rules));
}

APIEndpoint forHash(QString name, const QString &hash)
{
    return torrents(std::move(name), FormBody().add(u"hash", hash));
}

const QList<StatusRule> queueRules{{409, Case::queueingDisabled, {}}};

} // namespace

namespace Auth {

APIEndpoint login(const UserCredentials &credentials)
{
    return post(Group::auth, QStringLiteral("login"),
                FormBody().add(u"username", credentials.username).add(u"password", credentials.password));
}

APIEndpoint logout()
{
    return post(Group::auth, QStringLiteral("logout"));
}

} // namespace Auth

namespace Application {

APIEndpoint setPreferences(const QByteArray &preferencesJson)
{
    return post(Group::application, QStringLiteral("setPreferences"),
                FormBody().add(u"json", QString::fromUtf8(preferencesJson)));
}

APIEndpoint networkInterfaceAddressList(const QString &interfaceName)
{
    return post(Group::application, QStringLiteral("networkInterfaceAddressList"),
                FormBody().add(u"iface", interfaceName));
}

APIEndpoint version()
{
    return get(Group::application, QStringLiteral("version"));
}
APIEndpoint webapiVersion()
{
    return get(Group::application, QStringLiteral("webapiVersion"));
}
APIEndpoint buildInfo()
{
    return get(Group::application, QStringLiteral("buildInfo"));
}
APIEndpoint shutdown()
{
    return post(Group::application, QStringLiteral("shutdown"));
}
APIEndpoint preferences()
{
    return get(Group::application, QStringLiteral("preferences"));
}
APIEndpoint defaultSavePath()
{
    return get(Group::application, QStringLiteral("defaultSavePath"));
}
APIEndpoint networkInterfaceList()
{
    return get(Group::application, QStringLiteral("networkInterfaceList"));
}
APIEndpoint rotateAPIKey()
{
    return post(Group::application, QStringLiteral("rotateAPIKey"));
}
APIEndpoint deleteAPIKey()
{
    return post(Group::application, QStringLiteral("deleteAPIKey"));
}

} // namespace Application

namespace Sync {

APIEndpoint maindata(qint64 rid)
{
    return post(Group::sync, QStringLiteral("maindata"), FormBody().add(u"rid", rid));
}

APIEndpoint torrentPeers(const QString &hash, qint64 rid)
{
    return post(Group::sync, QStringLiteral("torrentPeers"), FormBody().add(u"hash", hash).add(u"rid", rid));
}

} // namespace Sync

namespace TntManagement {

APIEndpoint pause(const QStringList &hashes)
{
    return forHashes(QStringLiteral("pause"), hashes);
}
APIEndpoint stop(const QStringList &hashes)
{
    return forHashes(QStringLiteral("stop"), hashes);
}
APIEndpoint resume(const QStringList &hashes)
{
    return forHashes(QStringLiteral("resume"), hashes);
}
APIEndpoint start(const QStringList &hashes)
{
    return forHashes(QStringLiteral("start"), hashes);
}

APIEndpoint setForceStart(const QStringList &hashes, bool value)
{
    return torrents(QStringLiteral("setForceStart"), FormBody().add(u"hashes", joined(hashes)).add(u"value", value));
}

APIEndpoint recheck(const QStringList &hashes)
{
    return forHashes(QStringLiteral("recheck"), hashes);
}
APIEndpoint reannounce(const QStringList &hashes)
{
    return forHashes(QStringLiteral("reannounce"), hashes);
}

APIEndpoint add(const MultipartBody &upload)
{
    // Up to 5.1 an unusable file is 415; from 5.2 "nothing was added" is 409.
    return multipart(QStringLiteral("add"), upload,
                     {{415, Case::invalideFile, {}}, {409, Case::addingRejected, {}}, {400, Case::invalideFile, {}}});
}

APIEndpoint fetchMetadata(const QString &source, const std::optional<QString> &downloader)
{
    FormBody form;
    form.add(u"source", source);
    if (downloader)
        form.add(u"downloader", *downloader);
    return torrents(QStringLiteral("fetchMetadata"), form,
                    {{400, Case::invalidSource, {}}, {409, Case::invalidSource, {}}});
}

APIEndpoint parseMetadata(const MultipartBody &upload)
{
    return multipart(QStringLiteral("parseMetadata"), upload,
                     {{400, Case::invalideFile, {}}, {415, Case::invalideFile, {}}});
}

APIEndpoint deleteTnts(const QStringList &hashes, bool deleteFiles)
{
    return torrents(QStringLiteral("delete"),
                    FormBody().add(u"hashes", joined(hashes)).add(u"deleteFiles", deleteFiles));
}

APIEndpoint trackers(const QString &hash)
{
    return forHash(QStringLiteral("trackers"), hash);
}

APIEndpoint addTrackers(const QString &hash, const QStringList &urls)
{
    return torrents(QStringLiteral("addTrackers"), FormBody().add(u"hash", hash).add(u"urls", urls.join(u'\n')));
}

APIEndpoint editTracker(const QString &hash, const QString &origUrl, const QString &newUrl,
                        const ServerFeatures &features)
{
    return torrents(QStringLiteral("editTracker"),
                    FormBody().add(u"hash", hash).add(features.trackerUrlKey(), origUrl).add(u"newUrl", newUrl),
                    {{400, Case::badNewURL, {}}, {409, Case::trackerAlreadyExistOrNotFound, {}}});
}

APIEndpoint removeTrackers(const QString &hash, const QStringList &urls)
{
    return torrents(QStringLiteral("removeTrackers"), FormBody().add(u"hash", hash).add(u"urls", urls.join(u'|')),
                    {{409, Case::trackerAlreadyExistOrNotFound, {}}});
}

APIEndpoint properties(const QString &hash)
{
    return forHash(QStringLiteral("properties"), hash);
}
APIEndpoint webseeds(const QString &hash)
{
    return forHash(QStringLiteral("webseeds"), hash);
}
APIEndpoint files(const QString &hash)
{
    return forHash(QStringLiteral("files"), hash);
}

// The server explains a refused URL in its answer, which becomes the failure's reason.
static const QList<StatusRule> webSeedRules{
    {400, Case::missingParameter, QCoreApplication::translate("Endpoint", "Invalid web seed URL!")},
    {409, Case::missingParameter, QCoreApplication::translate("Endpoint", "Failed to edit web seed!")}};

APIEndpoint addWebSeeds(const QString &hash, const QStringList &urls)
{
    return torrents(QStringLiteral("addWebSeeds"), FormBody().add(u"hash", hash).add(u"urls", urls.join(u'|')),
                    webSeedRules);
}

APIEndpoint editWebSeed(const QString &hash, const QString &origUrl, const QString &newUrl)
{
    return torrents(QStringLiteral("editWebSeed"),
                    FormBody().add(u"hash", hash).add(u"origUrl", origUrl).add(u"newUrl", newUrl), webSeedRules);
}

APIEndpoint removeWebSeeds(const QString &hash, const QStringList &urls)
{
    return torrents(QStringLiteral("removeWebSeeds"), FormBody().add(u"hash", hash).add(u"urls", urls.join(u'|')),
                    webSeedRules);
}
APIEndpoint pieceStates(const QString &hash)
{
    return forHash(QStringLiteral("pieceStates"), hash);
}
APIEndpoint exportTnt(const QString &hash)
{
    return forHash(QStringLiteral("export"), hash);
}

APIEndpoint addPeers(const QStringList &hashes, const QStringList &peers)
{
    return torrents(QStringLiteral("addPeers"),
                    FormBody().add(u"hashes", joined(hashes)).add(u"peers", peers.join(u'|')),
                    {{400, Case::missingParameter, QCoreApplication::translate("Endpoint", "Failed to add peers!")}});
}

APIEndpoint increasePrio(const QStringList &hashes)
{
    return forHashes(QStringLiteral("increasePrio"), hashes, queueRules);
}
APIEndpoint decreasePrio(const QStringList &hashes)
{
    return forHashes(QStringLiteral("decreasePrio"), hashes, queueRules);
}
APIEndpoint topPrio(const QStringList &hashes)
{
    return forHashes(QStringLiteral("topPrio"), hashes, queueRules);
}
APIEndpoint bottomPrio(const QStringList &hashes)
{
    return forHashes(QStringLiteral("bottomPrio"), hashes, queueRules);
}

APIEndpoint filePrio(const QString &hash, const QList<int> &fileIndexes, int priority)
{
    QStringList ids;
    ids.reserve(fileIndexes.size());
    for (const int index : fileIndexes)
        ids << QString::number(index);
    // Both "no metadata yet" and "no such file" are 409; only the server's text tells them apart.
    return torrents(QStringLiteral("filePrio"),
                    FormBody().add(u"hash", hash).add(u"id", ids.join(u'|')).add(u"priority", priority),
                    {{400, Case::missingParameter, {}},
                     {409, Case::metadataNotDownloaded, {}, QStringLiteral("metadata")},
                     {409, Case::fileIdNotValid, {}}});
}

APIEndpoint setDownloadLimit(const QStringList &hashes, qint64 limit)
{
    return torrents(QStringLiteral("setDownloadLimit"), FormBody().add(u"hashes", joined(hashes)).add(u"limit", limit),
                    {{400, Case::missingParameter, {}}});
}

APIEndpoint setUploadLimit(const QStringList &hashes, qint64 limit)
{
    return torrents(QStringLiteral("setUploadLimit"), FormBody().add(u"hashes", joined(hashes)).add(u"limit", limit),
                    {{400, Case::missingParameter, {}}});
}

APIEndpoint setShareLimits(const QStringList &hashes, double ratioLimit, qint64 seedingTimeLimit,
                           qint64 inactiveSeedingTimeLimit, const ServerFeatures &features)
{
    FormBody form;
    form.add(u"hashes", joined(hashes))
        .add(u"ratioLimit", ratioLimit)
        .add(u"seedingTimeLimit", seedingTimeLimit)
        .add(u"inactiveSeedingTimeLimit", inactiveSeedingTimeLimit);
    // 5.3 (API 2.16.2) also answers 400 without shareLimitsMode; "Default" keeps the torrent's mode.
    if (features.requiresShareLimitAction())
        form.add(u"shareLimitAction", QStringLiteral("Default")).add(u"shareLimitsMode", QStringLiteral("Default"));
    return torrents(QStringLiteral("setShareLimits"), form, {{400, Case::missingParameter, {}}});
}

APIEndpoint setLocation(const QStringList &hashes, const QString &location)
{
    // A plain "Forbidden" is a missing session, not a folder the server cannot write to.
    auto endpoint =
        torrents(QStringLiteral("setLocation"), FormBody().add(u"hashes", joined(hashes)).add(u"location", location),
                 {{400, Case::missingParameter,
                   QCoreApplication::translate("Endpoint", "An error occurred while setting the torrent location!")},
                  {409, Case::failedCreateDirectory, {}},
                  {403, Case::writeAccessDenied, {}, QStringLiteral("write")}});
    endpoint.subjectPath = location;
    return endpoint;
}

APIEndpoint rename(const QString &hash, const QString &name)
{
    return torrents(QStringLiteral("rename"), FormBody().add(u"hash", hash).add(u"name", name),
                    {{409, Case::missingParameter, QCoreApplication::translate("Endpoint", "Invalid torrent name!")}});
}

static APIEndpoint renamePath(QString action, const QString &hash, const QString &oldPath, const QString &newPath)
{
    return torrents(std::move(action), FormBody().add(u"hash", hash).add(u"oldPath", oldPath).add(u"newPath", newPath),
                    {{400, Case::missingParameter, QCoreApplication::translate("Endpoint", "Failed to rename!")},
                     {409, Case::missingParameter, QCoreApplication::translate("Endpoint", "Failed to rename!")}});
}

APIEndpoint renameFile(const QString &hash, const QString &oldPath, const QString &newPath)
{
    return renamePath(QStringLiteral("renameFile"), hash, oldPath, newPath);
}

APIEndpoint renameFolder(const QString &hash, const QString &oldPath, const QString &newPath)
{
    return renamePath(QStringLiteral("renameFolder"), hash, oldPath, newPath);
}

APIEndpoint setCategory(const QStringList &hashes, const QString &category)
{
    return torrents(
        QStringLiteral("setCategory"), FormBody().add(u"hashes", joined(hashes)).add(u"category", category),
        {{409, Case::missingParameter, QCoreApplication::translate("Endpoint", "Category does not exist!")}});
}

static APIEndpoint categoryEdit(QString action, const QString &name, const QString &savePath, const QString &failure)
{
    // 5.2 answers 404 for a category that does not exist: it names no torrent.
    return torrents(std::move(action), FormBody().add(u"category", name).add(u"savePath", savePath),
                    {{400, Case::missingParameter, failure},
                     {409, Case::missingParameter, failure},
                     {404, Case::missingParameter, failure}});
}

APIEndpoint createCategory(const QString &name, const QString &savePath)
{
    return categoryEdit(QStringLiteral("createCategory"), name, savePath,
                        QCoreApplication::translate("Endpoint", "Failed to create category!"));
}

APIEndpoint editCategory(const QString &name, const QString &savePath)
{
    return categoryEdit(QStringLiteral("editCategory"), name, savePath,
                        QCoreApplication::translate("Endpoint", "Failed to edit category!"));
}

APIEndpoint removeCategories(const QStringList &names)
{
    return torrents(QStringLiteral("removeCategories"), FormBody().add(u"categories", names.join(u'\n')));
}

static QString joinedTags(const QStringList &tags)
{
    return tags.join(QStringLiteral(", "));
}

APIEndpoint addTags(const QStringList &hashes, const QStringList &tags)
{
    return torrents(QStringLiteral("addTags"),
                    FormBody().add(u"hashes", joined(hashes)).add(u"tags", joinedTags(tags)));
}

APIEndpoint removeTags(const QStringList &hashes, const QStringList &tags)
{
    return torrents(QStringLiteral("removeTags"),
                    FormBody().add(u"hashes", joined(hashes)).add(u"tags", joinedTags(tags)));
}

APIEndpoint createTags(const QStringList &tags)
{
    return torrents(QStringLiteral("createTags"), FormBody().add(u"tags", joinedTags(tags)));
}

APIEndpoint deleteTags(const QStringList &tags)
{
    return torrents(QStringLiteral("deleteTags"), FormBody().add(u"tags", joinedTags(tags)));
}

APIEndpoint setAutoManagement(const QStringList &hashes, bool enable)
{
    return torrents(QStringLiteral("setAutoManagement"),
                    FormBody().add(u"hashes", joined(hashes)).add(u"enable", enable));
}

APIEndpoint toggleSequentialDownload(const QStringList &hashes)
{
    return forHashes(QStringLiteral("toggleSequentialDownload"), hashes);
}

APIEndpoint toggleFirstLastPiecePrio(const QStringList &hashes)
{
    return forHashes(QStringLiteral("toggleFirstLastPiecePrio"), hashes);
}

APIEndpoint setSuperSeeding(const QStringList &hashes, bool value)
{
    return torrents(QStringLiteral("setSuperSeeding"), FormBody().add(u"hashes", joined(hashes)).add(u"value", value));
}

APIEndpoint downloadLimit(const QStringList &hashes)
{
    return forHashes(QStringLiteral("downloadLimit"), hashes);
}
APIEndpoint uploadLimit(const QStringList &hashes)
{
    return forHashes(QStringLiteral("uploadLimit"), hashes);
}

} // namespace TntManagement

namespace TransferInfo {

APIEndpoint banPeers(const QStringList &peers)
{
    return post(Group::transferInfo, QStringLiteral("banPeers"), FormBody().add(u"peers", peers.join(u'|')));
}

APIEndpoint speedLimitsMode()
{
    return get(Group::transferInfo, QStringLiteral("speedLimitsMode"));
}
APIEndpoint toggleSpeedLimitsMode()
{
    return post(Group::transferInfo, QStringLiteral("toggleSpeedLimitsMode"));
}
APIEndpoint downloadLimit()
{
    return get(Group::transferInfo, QStringLiteral("downloadLimit"));
}
APIEndpoint uploadLimit()
{
    return get(Group::transferInfo, QStringLiteral("uploadLimit"));
}

APIEndpoint setDownloadLimit(qint64 limit)
{
    return post(Group::transferInfo, QStringLiteral("setDownloadLimit"), FormBody().add(u"limit", limit));
}

APIEndpoint setUploadLimit(qint64 limit)
{
    return post(Group::transferInfo, QStringLiteral("setUploadLimit"), FormBody().add(u"limit", limit));
}

} // namespace TransferInfo

namespace Log {

APIEndpoint main(qint64 lastKnownId)
{
    return post(Group::log, QStringLiteral("main"), FormBody().add(u"last_known_id", lastKnownId));
}

APIEndpoint peers(qint64 lastKnownId)
{
    return post(Group::log, QStringLiteral("peers"), FormBody().add(u"last_known_id", lastKnownId));
}

} // namespace Log

namespace Search {

APIEndpoint start(const QString &pattern, const QStringList &plugins, const QString &category)
{
    return post(Group::search, QStringLiteral("start"),
                FormBody().add(u"pattern", pattern).add(u"plugins", plugins.join(u'|')).add(u"category", category));
}

APIEndpoint stop(qint64 id)
{
    return post(Group::search, QStringLiteral("stop"), FormBody().add(u"id", id));
}

APIEndpoint results(qint64 id, qint64 offset)
{
    return post(Group::search, QStringLiteral("results"), FormBody().add(u"id", id).add(u"offset", offset));
}

APIEndpoint deleteSearch(qint64 id)
{
    return post(Group::search, QStringLiteral("delete"), FormBody().add(u"id", id));
}

APIEndpoint plugins()
{
    return get(Group::search, QStringLiteral("plugins"));
}

APIEndpoint installPlugin(const QStringList &sources)
{
    return post(Group::search, QStringLiteral("installPlugin"), FormBody().add(u"sources", sources.join(u'|')));
}

APIEndpoint uninstallPlugin(const QStringList &names)
{
    return post(Group::search, QStringLiteral("uninstallPlugin"), FormBody().add(u"names", names.join(u'|')));
}

APIEndpoint enablePlugin(const QStringList &names, bool enable)
{
    return post(Group::search, QStringLiteral("enablePlugin"),
                FormBody().add(u"names", names.join(u'|')).add(u"enable", enable));
}

APIEndpoint updatePlugins()
{
    return post(Group::search, QStringLiteral("updatePlugins"));
}

} // namespace Search
namespace Rss {

APIEndpoint items()
{
    return post(Group::rss, QStringLiteral("items"), FormBody().add(u"withData", true));
}

APIEndpoint addFeed(const QString &url, const QString &path)
{
    return post(Group::rss, QStringLiteral("addFeed"), FormBody().add(u"url", url).add(u"path", path));
}

APIEndpoint addFolder(const QString &path)
{
    return post(Group::rss, QStringLiteral("addFolder"), FormBody().add(u"path", path));
}

APIEndpoint setFeedURL(const QString &path, const QString &url)
{
    return post(Group::rss, QStringLiteral("setFeedURL"), FormBody().add(u"path", path).add(u"url", url));
}

APIEndpoint removeItem(const QString &path)
{
    return post(Group::rss, QStringLiteral("removeItem"), FormBody().add(u"path", path));
}

APIEndpoint moveItem(const QString &itemPath, const QString &destPath)
{
    return post(Group::rss, QStringLiteral("moveItem"),
                FormBody().add(u"itemPath", itemPath).add(u"destPath", destPath));
}

APIEndpoint refreshItem(const QString &itemPath)
{
    return post(Group::rss, QStringLiteral("refreshItem"), FormBody().add(u"itemPath", itemPath));
}

APIEndpoint markAsRead(const QString &itemPath, const QString &articleId)
{
    FormBody form;
    form.add(u"itemPath", itemPath);
    if (!articleId.isEmpty())
        form.add(u"articleId", articleId);
    return post(Group::rss, QStringLiteral("markAsRead"), form);
}

APIEndpoint rules()
{
    return post(Group::rss, QStringLiteral("rules"));
}

APIEndpoint setRule(const QString &name, const QJsonObject &definition)
{
    return post(Group::rss, QStringLiteral("setRule"),
                FormBody()
                    .add(u"ruleName", name)
                    .add(u"ruleDef", QString::fromUtf8(QJsonDocument(definition).toJson(QJsonDocument::Compact))));
}

APIEndpoint renameRule(const QString &name, const QString &newName)
{
    return post(Group::rss, QStringLiteral("renameRule"), FormBody().add(u"ruleName", name).add(u"newRuleName", newName));
}

APIEndpoint removeRule(const QString &name)
{
    return post(Group::rss, QStringLiteral("removeRule"), FormBody().add(u"ruleName", name));
}

APIEndpoint matchingArticles(const QString &ruleName)
{
    return post(Group::rss, QStringLiteral("matchingArticles"), FormBody().add(u"ruleName", ruleName));
}

} // namespace Rss

} // namespace API::Endpoint
