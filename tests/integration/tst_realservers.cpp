#include "api/Client.h"
#include "api/ClientError.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "api/Records.h"
#include "core/AppContext.h"
#include "core/ReconnectionCountdown.h"
#include "support/Await.h"
#include "support/ConnectedServer.h"
#include "support/TorrentFactory.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QTest>

using namespace API;
using QuilloTest::eventually;
using QuilloTest::wait;
namespace E = API::Endpoint;
namespace T = API::Endpoint::TntManagement;
using Flavor = QbtServer::Flavor;
using Torrent = TorrentFactory::Torrent;

Q_DECLARE_METATYPE(API::APIEndpoint)

namespace {

QJsonObject objectOf(const QByteArray &body)
{
    return QJsonDocument::fromJson(body).object();
}

QJsonArray arrayOf(const QByteArray &body)
{
    return QJsonDocument::fromJson(body).array();
}

QStringList capturedLog;

void captureLog(QtMsgType, const QMessageLogContext &, const QString &message)
{
    capturedLog << message;
}

// What a user would read for the failure of `endpoint`, "description | reason"; empty when it succeeded.
QString failureOf(Client &client, const APIEndpoint &endpoint)
{
    try {
        wait(client.perform(endpoint));
    } catch (...) {
        const ClientError error(QStringLiteral("title"), std::current_exception());
        return error.description() + QStringLiteral(" | ") + error.failureReason();
    }
    return {};
}

// The keys of a torrent that fill no field when decoded one at a time: a key the client spells
// otherwise than the server shows up here.
QStringList undecodedKeys(const QJsonObject &torrent)
{
    QStringList undecoded;
    for (auto it = torrent.begin(); it != torrent.end(); ++it) {
        const QJsonObject one{{u"rid"_qs, 1},
                              {u"torrents"_qs, QJsonObject{{u"h"_qs, QJsonObject{{it.key(), it.value()}}}}}};
        if (decodeMainData(QJsonDocument(one).toJson()).tnts.value(u"h"_qs) == STntModel{})
            undecoded << it.key();
    }
    return undecoded;
}

} // namespace

// A real qBittorrent 4.5 and 5.1, each started once: their answers decode through the client's typed
// reads, every action the client sends is accepted and takes effect, refusals read as meant, and the
// context connects, logs in and out, follows the torrents and survives a restart (with a real Secret
// Service).
class TestRealServers : public QObject
{
    Q_OBJECT

public:
    explicit TestRealServers(Flavor flavor)
        : m_flavor(flavor)
    {}

private:
    bool isModern() const { return m_flavor == Flavor::Trixie51; }
    QbtServer &server() { return m_server->server(); }
    Client &client() { return m_server->client(); }
    AppContext &context() { return m_server->context(); }
    QByteArray call(const APIEndpoint &endpoint) { return wait(client().perform(endpoint)); }
    QString failure(const APIEndpoint &endpoint) { return failureOf(client(), endpoint); }
    QJsonObject torrent(const QString &hash) { return m_server->torrent(hash); }

    bool torrentShows(const QString &hash, const QString &key, const QJsonValue &value)
    {
        return eventually([&] { return torrent(hash).value(key) == value; });
    }

    // A torrent over data written into a fresh folder; without its data it stays downloading.
    Torrent addTorrent(const QString &name, bool withData)
    {
        const QbtServer::DataDir dir = server().makeDataDir();
        auto made = TorrentFactory::multiFile(
            dir.localPath, name, {{QStringLiteral("a/first.bin"), 40'000}, {QStringLiteral("zweite ü.bin"), 20'000}},
            {.announceUrls = {QStringLiteral("http://127.0.0.1:1/announce")}});
        if (!withData)
            QDir(made.contentPath).removeRecursively();
        const auto upload = TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(made),
             {"savepath", dir.serverPath.toUtf8()},
             {isModern() ? QByteArray("stopped") : QByteArray("paused"), withData ? "false" : "true"}});
        const QString answer = Client::decodeText(call(T::add(upload)));
        if (answer != u"Ok.")
            qWarning("add answered %s", qPrintable(answer));
        return made;
    }

    const Flavor m_flavor;
    std::unique_ptr<ConnectedServer> m_server; // its context connects in each test that asks for one
    WebAPIVersion m_apiVersion;
    Torrent m_seeding;
    Torrent m_queuedA; // without data, so first and second in the download queue
    Torrent m_queuedB;
    QStringList m_seedingHashes;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(!qEnvironmentVariableIsEmpty("QUILLO_TEST_KEYRING_FILE"), "run through with-secret-service");
        QUILLO_CONNECT(m_server, m_flavor, {.localHostAuth = true});
        m_apiVersion = m_server->apiVersion();

        m_seeding = addTorrent(QStringLiteral("Seeding & Co = 100% é ☃"), true);
        m_queuedA = addTorrent(QStringLiteral("Queued A"), false);
        m_queuedB = addTorrent(QStringLiteral("Queued B"), false);
        m_seedingHashes = {m_seeding.infoHash};
        QVERIFY2(eventually([&] {
                     const STntModel t = wait(client().mainData(0)).tnts.value(m_seeding.infoHash);
                     return t.progress == 1.0 && t.state && *t.state != TntModelState::checkingUP &&
                            *t.state != TntModelState::checkingResumeData;
                 }),
                 "the seeded torrent never completed its check");
    }

    void cleanup() { m_server->disconnect(); }

    void cleanupTestCase() { m_server.reset(); }

    void applicationReads()
    {
        QCOMPARE(wait(client().version()), isModern() ? QStringLiteral("v5.1.0") : QStringLiteral("v4.5.2"));
        QCOMPARE(m_apiVersion.toString(), isModern() ? QStringLiteral("2.11.4") : QStringLiteral("2.8.19"));
        const BuildInfo build = wait(client().buildInfo());
        QVERIFY(build.qt.startsWith(isModern() ? u"6." : u"5."));
        QVERIFY(!build.libtorrent.isEmpty());
        QCOMPARE(build.bitness, 64);
        QCOMPARE(Client::decodeText(call(E::Application::defaultSavePath())), server().defaultSavePath());
        QVERIFY(!arrayOf(call(E::Application::networkInterfaceList())).isEmpty());
        QVERIFY(
            arrayOf(call(E::Application::networkInterfaceAddressList(QStringLiteral("lo")))).contains(u"127.0.0.1"_qs));
    }

    void staysOnLoopback_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QJsonValue>("expected");
        const std::pair<const char *, QJsonValue> settings[] = {
            {"dht", false},
            {"lsd", false},
            {"pex", false},
            {"upnp", false},
            {"resolve_peer_countries", false},
            {"anonymous_mode", true},
            {"web_ui_address", QStringLiteral("127.0.0.1")},
            {"current_network_interface", QStringLiteral("lo")},
            {"current_interface_address", QStringLiteral("127.0.0.1")},
        };
        for (const auto &[key, expected] : settings)
            QTest::newRow(key) << QString::fromLatin1(key) << expected;
    }

    // The configuration file must be read as meant by both versions, or a server reaches outside.
    void staysOnLoopback()
    {
        QFETCH(QString, key);
        const QJsonObject preferences = objectOf(call(E::Application::preferences()));
        QVERIFY2(preferences.contains(key), qPrintable(key));
        QTEST(preferences.value(key), "expected");
    }

    void preferencesWrite()
    {
        call(E::Application::setPreferences(
            R"({"max_connec": 321, "web_ui_domain_list": "a&b=c", "queueing_enabled": false})"));
        const QJsonObject preferences = objectOf(call(E::Application::preferences()));
        QCOMPARE(preferences.value(u"max_connec").toInt(), 321);
        QCOMPARE(preferences.value(u"web_ui_domain_list").toString(), QStringLiteral("a&b=c"));
        QCOMPARE(failure(T::topPrio({m_queuedB.infoHash})).section(u'|', 0, 0).trimmed(),
                 QStringLiteral("Torrent queueing is disabled!"));
        call(E::Application::setPreferences(R"({"queueing_enabled": true})"));
    }

    void fullUpdate()
    {
        const MainData data = wait(client().mainData(0));
        QCOMPARE(data.fullUpdate, std::optional(true));
        QVERIFY(data.rid > 0);
        QVERIFY(data.tntsRemoved.isEmpty());
        QVERIFY(data.serverState && data.serverState->connectionStatus && data.serverState->dlInfoData &&
                data.serverState->globalRatio);
        // The statistics window's figures come with it.
        QVERIFY(data.serverState->totalPeerConnections && data.serverState->queuedIoJobs &&
                data.serverState->totalQueuedSize && data.serverState->readCacheHits);
        if (isModern())
            QVERIFY(data.trackers.contains(u"http://127.0.0.1:1/announce"_qs));

        const STntModel t = data.tnts.value(m_seeding.infoHash);
        QCOMPARE(t.name, std::optional(m_seeding.name));
        QCOMPARE(t.infohashV1, std::optional(m_seeding.infoHash));
        QCOMPARE(t.infohashV2, std::optional(QString()));
        QCOMPARE(t.totalSize, std::optional(m_seeding.totalSize));
        QCOMPARE(t.amountLeft, std::optional<qint64>(0));
        QVERIFY(t.magnetUri.value_or(QString()).contains(m_seeding.infoHash));
        QVERIFY(t.contentPath.value_or(QString()).endsWith(m_seeding.name));
        QVERIFY(t.addedOn);
        const qint64 age = t.addedOn->toDateTime().secsTo(QDateTime::currentDateTimeUtc());
        QVERIFY2(age >= 0 && age < 600, qPrintable(QString::number(age)));

        // Every field of the record has a key of its own; the rest is what the client has no use for.
        const QJsonObject raw = torrent(m_seeding.infoHash);
        const QStringList undecoded = undecodedKeys(raw);
        const QString unused = isModern()
                                   ? QStringLiteral("comment download_path has_metadata max_inactive_seeding_time "
                                                    "popularity private reannounce root_path trackers_count")
                                   : QStringLiteral("download_path trackers_count");
        QCOMPARE(undecoded.join(u' '), unused);
        // 4.5 has no inactive seeding time limit.
        QCOMPARE(raw.size() - undecoded.size(), isModern() ? 47 : 46);
    }

    // A delta carries only what changed: a renamed torrent a few fields, an added one all, a deleted
    // one its hash.
    void deltas()
    {
        qint64 rid = wait(client().mainData(0)).rid;
        const QString renamed = QStringLiteral("Umbenannt ✓");
        call(T::rename(m_seeding.infoHash, renamed));
        const Torrent added = addTorrent(QStringLiteral("Kommt und geht"), false);
        std::optional<STntModel> changed;
        std::optional<STntModel> seen;
        bool removed = false;
        bool onlyDeltas = true;
        const auto poll = [&] {
            const MainData delta = wait(client().mainData(rid));
            onlyDeltas = onlyDeltas && delta.fullUpdate != true && delta.rid > rid;
            rid = delta.rid;
            if (delta.tnts.value(m_seeding.infoHash).name)
                changed = delta.tnts.value(m_seeding.infoHash);
            if (!seen && delta.tnts.contains(added.infoHash))
                seen = delta.tnts.value(added.infoHash);
            removed = removed || delta.tntsRemoved.contains(added.infoHash);
        };
        QVERIFY(eventually([&] {
            poll();
            return changed && seen;
        }));
        QCOMPARE(changed->name, std::optional(renamed));
        QVERIFY(!changed->totalSize && !changed->addedOn);
        QCOMPARE(seen->name, std::optional(added.name));
        QCOMPARE(seen->totalSize, std::optional(added.totalSize));

        call(T::deleteTnts({added.infoHash}, true));
        QVERIFY(eventually([&] {
            poll();
            return removed;
        }));
        QVERIFY(onlyDeltas);
        QVERIFY(!wait(client().mainData(0)).tnts.contains(added.infoHash));
    }

    void peers()
    {
        const PeersData full = wait(client().peers(m_seeding.infoHash, 0));
        QCOMPARE(full.fullUpdate, std::optional(true));
        QVERIFY(full.rid > 0);
        const PeersData delta = wait(client().peers(m_seeding.infoHash, full.rid));
        QVERIFY(delta.rid >= full.rid);
        QVERIFY(delta.fullUpdate != true);

        call(T::addPeers(m_seedingHashes, {QStringLiteral("127.0.0.1:%1").arg(server().peerPort() + 1)}));
        call(E::TransferInfo::banPeers({QStringLiteral("127.0.0.9:6881")}));
        QVERIFY(eventually([&] {
            return objectOf(call(E::Application::preferences())).value(u"banned_IPs").toString().contains(u"127.0.0.9");
        }));
    }

    void details()
    {
        const SGenericProperties p = wait(client().properties(m_seeding.infoHash));
        QCOMPARE(p.totalSize, m_seeding.totalSize);
        QCOMPARE(p.pieceSize, 16 * 1024);
        QCOMPARE(p.piecesNum, (m_seeding.totalSize + 16'383) / 16'384);
        QCOMPARE(p.piecesHave, p.piecesNum);
        QCOMPARE(p.infohashV1, m_seeding.infoHash);
        QVERIFY(p.savePath.size() > 1);
        const std::optional<Date> added = wait(client().mainData(0)).tnts.value(m_seeding.infoHash).addedOn;
        QVERIFY(added);
        QCOMPARE(p.additionDate.secondsSinceEpoch(), added->secondsSinceEpoch());
        QCOMPARE(arrayOf(call(T::pieceStates(m_seeding.infoHash))).size(), p.piecesNum);

        const QList<File> files = wait(client().files(m_seeding.infoHash));
        QCOMPARE(files.size(), 2);
        QCOMPARE(files[0].name, m_seeding.name + QStringLiteral("/a/first.bin"));
        QCOMPARE(files[1].name, m_seeding.name + QStringLiteral("/zweite ü.bin"));
        QCOMPARE(files[0].size, 40'000);
        QCOMPARE(files[1].index, 1);
        QCOMPARE(files[1].progress, 1.0);
        QCOMPARE(tntModelFilePriorityFromValue(files[0].priority), std::optional(TntModelFilePriority::normal));
        // 40,000 bytes end in the third 16 KiB piece, where the second file begins.
        QCOMPARE(files[0].pieceRange, (QList<qint64>{0, 2}));
        QCOMPARE(files[1].pieceRange, (QList<qint64>{2, 3}));
        QCOMPARE(wait(client().webSeeds(m_seeding.infoHash)), QList<WebSeed>());
    }

    void refusals_data()
    {
        QTest::addColumn<APIEndpoint>("endpoint");
        QTest::addColumn<QString>("shown"); // its start: some reasons are the server's own words
        const QStringList seeding = m_seedingHashes;
        const QString queued = m_queuedB.infoHash;
        // A folder below a file can never be made.
        const QbtServer::DataDir dir = server().makeDataDir();
        QFile blocker(dir.localPath + QStringLiteral("/file"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        const auto row = [](const char *name, const APIEndpoint &endpoint, const char *shown) {
            QTest::newRow(name) << endpoint << QString::fromUtf8(shown);
        };
        row("unknown torrent", T::properties(QString(40, u'0')),
            "Torrent not found! | The torrent is no longer on the server.");
        row("no valid peer", T::addPeers(seeding, {QStringLiteral("not a peer")}),
            "Failed to add peers! | No valid peers were specified");
        row("no such file", T::filePrio(queued, {9}, 1), "Invalid file! | File ID is not valid");
        row("blank name", T::rename(queued, QStringLiteral(" ")), "Invalid torrent name! | ");
        row("no such category", T::setCategory({queued}, QStringLiteral("No such one")), "Category does not exist! | ");
        row("no such tracker",
            T::editTracker(seeding.first(), QStringLiteral("http://127.0.0.1:9/gone"),
                           QStringLiteral("http://127.0.0.1:8/new"), m_apiVersion),
            "Failed to edit tracker! | ");
        row("folder below a file", T::setLocation({queued}, dir.serverPath + QStringLiteral("/file/sub")),
            "An error occurred while setting the torrent location! | Cannot make save path");
    }

    void refusals()
    {
        QFETCH(APIEndpoint, endpoint);
        QFETCH(QString, shown);
        QCOMPARE(failure(endpoint).left(shown.size()), shown);
    }

    // Both are accepted and leave the torrent complete. (Stopping and starting is in contextFollowsTorrents.)
    // A recheck finds data overwritten behind the server's back: the torrent is no longer complete.
    void reannounceAndRecheck()
    {
        call(T::reannounce(m_seedingHashes));
        const Torrent checked = addTorrent(QStringLiteral("Rechecked"), true);
        QVERIFY(torrentShows(checked.infoHash, QStringLiteral("progress"), 1.0));
        QFile data(checked.contentPath + QStringLiteral("/a/first.bin"));
        QVERIFY(data.open(QIODevice::WriteOnly) && data.write(QByteArray(40'000, 'x')) == 40'000);
        data.close();
        call(T::recheck({checked.infoHash}));
        QVERIFY(eventually([&] {
            const QJsonObject info = torrent(checked.infoHash);
            return info.value(u"progress").toDouble() < 1.0 && !info.value(u"state").toString().startsWith(u"checking");
        }));
        call(T::deleteTnts({checked.infoHash}, false));
    }

    void actionsShowInTheTorrent_data()
    {
        QTest::addColumn<APIEndpoint>("action");
        QTest::addColumn<QString>("hash");
        QTest::addColumn<QJsonObject>("shown"); // the fields the torrent shows afterwards
        const QString seeding = m_seeding.infoHash;
        const QString b = m_queuedB.infoHash;
        const auto row = [](const char *name, const APIEndpoint &action, const QString &hash,
                            const QJsonObject &shown) { QTest::newRow(name) << action << hash << shown; };
        // In this order: each row changes what the one before set. (Switches, tags, name and location
        // are set through the app's own operations, on every flavor, in tst_tntoperations.)
        row("queue top", T::topPrio({b}), b, {{u"priority"_qs, 1}});
        row("queue bottom", T::bottomPrio({b}), b, {{u"priority"_qs, 2}});
        row("queue up", T::increasePrio({b}), b, {{u"priority"_qs, 1}});
        row("queue down", T::decreasePrio({b}), b, {{u"priority"_qs, 2}});
        row("share limits", T::setShareLimits({seeding}, 2, 90, 30, m_apiVersion), seeding,
            {{u"ratio_limit"_qs, 2}, {u"seeding_time_limit"_qs, 90}});
    }

    void actionsShowInTheTorrent()
    {
        QFETCH(APIEndpoint, action);
        QFETCH(QString, hash);
        QFETCH(QJsonObject, shown);
        call(action);
        QJsonObject now;
        const bool showing = eventually([&] {
            now = torrent(hash);
            for (auto it = shown.begin(); it != shown.end(); ++it) {
                if (now.value(it.key()) != it.value())
                    return false;
            }
            return true;
        });
        QVERIFY2(showing, QJsonDocument(now).toJson(QJsonDocument::Compact).constData());
    }

    void trackers()
    {
        const auto urls = [&] {
            QStringList found;
            for (const Tracker &tracker : wait(client().trackers(m_seeding.infoHash)))
                found << tracker.url;
            return found;
        };
        // DHT, PeX and LSD come first, on tier -1.
        QCOMPARE(wait(client().trackers(m_seeding.infoHash)).first().tier, -1);
        const QString second = QStringLiteral("http://127.0.0.1:2/announce?key=a&b=c");
        const QString third = QStringLiteral("udp://127.0.0.1:3");
        call(T::addTrackers(m_seeding.infoHash, {second, third}));
        QVERIFY(eventually([&] { return urls().contains(second) && urls().contains(third); }));

        const QString edited = QStringLiteral("http://127.0.0.1:4/announce");
        call(T::editTracker(m_seeding.infoHash, second, edited, m_apiVersion));
        QVERIFY(eventually([&] { return urls().contains(edited) && !urls().contains(second); }));

        call(T::removeTrackers(m_seeding.infoHash, {edited, third}));
        QVERIFY(eventually([&] { return !urls().contains(edited) && !urls().contains(third); }));
        QVERIFY2(urls().contains(u"http://127.0.0.1:1/announce"_qs), qPrintable(urls().join(u' ')));
    }

    void filePriorities()
    {
        const QString hash = m_queuedA.infoHash;
        call(T::filePrio(hash, {1}, 0));
        QVERIFY(eventually([&] { return wait(client().files(hash)).at(1).priority == 0; }));
        call(T::filePrio(hash, {0, 1}, 7));
        QVERIFY(eventually([&] { return wait(client().files(hash)).at(1).priority == 7; }));
    }

    void limits()
    {
        call(T::setDownloadLimit(m_seedingHashes, 300'000));
        call(T::setUploadLimit(m_seedingHashes, 200'000));
        QCOMPARE(objectOf(call(T::downloadLimit(m_seedingHashes))).value(m_seeding.infoHash).toInteger(), 300'000);
        QCOMPARE(objectOf(call(T::uploadLimit(m_seedingHashes))).value(m_seeding.infoHash).toInteger(), 200'000);

        call(E::TransferInfo::setDownloadLimit(1'048'576));
        call(E::TransferInfo::setUploadLimit(524'288));
        QCOMPARE(Client::decodeText(call(E::TransferInfo::downloadLimit())), QStringLiteral("1048576"));
        QCOMPARE(Client::decodeText(call(E::TransferInfo::uploadLimit())), QStringLiteral("524288"));
        call(E::TransferInfo::setDownloadLimit(0));
        call(E::TransferInfo::setUploadLimit(0));

        QCOMPARE(Client::decodeText(call(E::TransferInfo::speedLimitsMode())), QStringLiteral("0"));
        call(E::TransferInfo::toggleSpeedLimitsMode());
        QVERIFY(eventually([&] { return Client::decodeText(call(E::TransferInfo::speedLimitsMode())) == u"1"; }));
        call(E::TransferInfo::toggleSpeedLimitsMode());
    }

    void fileAndFolderNames()
    {
        const QString hash = m_queuedB.infoHash;
        const auto names = [&] {
            QStringList found;
            for (const File &file : wait(client().files(hash)))
                found << file.name;
            return found;
        };
        const QString root = m_queuedB.name;
        call(T::renameFile(hash, root + QStringLiteral("/zweite ü.bin"), root + QStringLiteral("/zweite #2.bin")));
        QVERIFY(eventually([&] { return names().contains(root + QStringLiteral("/zweite #2.bin")); }));
        call(T::renameFolder(hash, root + QStringLiteral("/a"), root + QStringLiteral("/b&c")));
        QVERIFY(eventually([&] { return names().contains(root + QStringLiteral("/b&c/first.bin")); }));
    }

    void categories()
    {
        const QString category = QStringLiteral("Films & TV");
        const QbtServer::DataDir dir = server().makeDataDir();
        const auto categoriesNow = [&] { return wait(client().mainData(0)).categories; };

        call(T::createCategory(category, dir.serverPath));
        QVERIFY(eventually([&] { return categoriesNow().contains(category); }));
        QCOMPARE(failure(T::createCategory(category, dir.serverPath)).section(u'|', 0, 0).trimmed(),
                 QStringLiteral("Failed to create category!"));

        const QString editedPath = dir.serverPath + QStringLiteral("/edited");
        call(T::editCategory(category, editedPath));
        QVERIFY(eventually([&] { return categoriesNow().value(category).savePath == editedPath; }));

        call(T::setCategory({m_queuedA.infoHash}, category));
        QVERIFY(torrentShows(m_queuedA.infoHash, QStringLiteral("category"), category));
        call(T::removeCategories({category, QStringLiteral("unknown")}));
        QVERIFY(eventually([&] { return !categoriesNow().contains(category); }));
        QVERIFY(torrentShows(m_queuedA.infoHash, QStringLiteral("category"), QString()));
    }

    void tags()
    {
        const auto tagsNow = [&] { return wait(client().mainData(0)).tags; };
        call(T::createTags({QStringLiteral("alpha"), QStringLiteral("beta")}));
        QVERIFY(eventually([&] { return tagsNow().contains(u"alpha"_qs) && tagsNow().contains(u"beta"_qs); }));
        call(T::addTags(m_seedingHashes, {QStringLiteral("alpha")}));
        QVERIFY(torrentShows(m_seeding.infoHash, QStringLiteral("tags"), QStringLiteral("alpha")));
        call(T::deleteTags({QStringLiteral("alpha"), QStringLiteral("beta"), QStringLiteral("gamma")}));
        QVERIFY(eventually([&] { return tagsNow().isEmpty(); }));
        QVERIFY(torrentShows(m_seeding.infoHash, QStringLiteral("tags"), QString()));
    }

    void contextConnectsWithAStoredPasswordAndLogsOut()
    {
        m_server->connect(AuthMethod::cookieLogin, server().credentials());
        QCOMPARE(m_server->alert(), QString());
        QVERIFY(context().isAuthorized());
        QVERIFY(context().isPolling());
        QVERIFY(!context().isLoginPromptPresented());
        QCOMPARE(context().qbtVersion(), isModern() ? QStringLiteral("v5.1.0") : QStringLiteral("v4.5.2"));
        QCOMPARE(context().qbtBuildInfo().bitness, 64);

        QTRY_VERIFY(context().tntCollection().size() > 0);
        wait(context().logOut());
        QVERIFY(!context().isAuthorized());
        QVERIFY(!context().isPolling());
        QCOMPARE(context().tntCollection().size(), 0);
        QVERIFY(!context().client()); // the session ended with its client
    }

    void contextAsksAgainForAWrongPassword()
    {
        m_server->connect(AuthMethod::cookieLogin,
                          UserCredentials{QStringLiteral("admin"), QStringLiteral("not it"), {}});
        QCOMPARE(m_server->alert(), QStringLiteral("Failed to login.|You are not authorized!|Authorization required."));
        QVERIFY(context().isLoginPromptPresented());
        QVERIFY(!context().isAuthorized());

        context().dismissClientError();
        wait(context().logIn(server().credentials(), true));
        QVERIFY(context().isAuthorized());
        QCOMPARE(wait(m_server->keychain().read(*context().clientConfiguration())),
                 std::optional(server().credentials()));
    }

    void contextNeedsNoCredentialsWithTheBypass()
    {
        std::unique_ptr<ConnectedServer> bypassed;
        QUILLO_CONNECT(bypassed, m_flavor);
        QCOMPARE(bypassed->alert(), QString());
        wait(bypassed->context().client()->perform(E::Sync::maindata(0)));
    }

    void contextFollowsTorrents()
    {
        m_server->connect(AuthMethod::cookieLogin, server().credentials());
        const QbtServer::DataDir dir = server().makeDataDir();
        const auto made = TorrentFactory::singleFile(dir.localPath, QStringLiteral("synced.bin"), 40'000);
        wait(context().client()->perform(T::add(TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(made), {"savepath", dir.serverPath.toUtf8()}}))));
        const auto shown = [&] { return context().tntCollection().find(made.infoHash); };
        QTRY_VERIFY_WITH_TIMEOUT(shown(), 10'000);
        QTRY_COMPARE_WITH_TIMEOUT(shown()->progress(), 1.0, 15'000);
        QCOMPARE(shown()->name(), QStringLiteral("synced.bin"));

        // Stopped through the API by someone else: the Status column follows within an interval.
        const QStringList hashes{made.infoHash};
        call(isModern() ? T::stop(hashes) : T::pause(hashes));
        QTRY_COMPARE_WITH_TIMEOUT(TntModel::stateTitle(shown()->state()), QStringLiteral("Completed"), 10'000);
        call(isModern() ? T::start(hashes) : T::resume(hashes));
        QTRY_VERIFY_WITH_TIMEOUT(TntModel::matches(shown()->state(), TntModel::State::uploading) ||
                                     shown()->state() == TntModel::State::stalledUP,
                                 10'000);
        QVERIFY(context().serverState().refreshInterval() > 0); // the server state arrived too

        // Removed by another client: it leaves at the next poll.
        call(T::deleteTnts(hashes, true));
        QTRY_VERIFY_WITH_TIMEOUT(!shown(), 10'000);
    }

    void seedsAddedTorrent_data()
    {
        QTest::addColumn<bool>("singleFile");
        QTest::addColumn<QList<TorrentFactory::File>>("files");
        QTest::addColumn<TorrentFactory::Options>("options");
        // Both http: libtorrent moves a udp tracker ahead of an http one on the same host.
        const QStringList trackers{QStringLiteral("http://127.0.0.1:1/announce"),
                                   QStringLiteral("http://127.0.0.1:2/second")};
        QTest::newRow("single file, short last piece")
            << true << QList<TorrentFactory::File>{{{}, 3 * 16384 + 1234}} << TorrentFactory::Options{};
        QTest::newRow("single file, one whole piece")
            << true << QList<TorrentFactory::File>{{{}, 16384}} << TorrentFactory::Options{{trackers.first()}};
        QTest::newRow("files across piece boundaries")
            << false
            << QList<TorrentFactory::File>{{QStringLiteral("a.bin"), 40000},
                                           {QStringLiteral("sub/b.bin"), 16384},
                                           {QStringLiteral("empty.dat"), 0},
                                           {QStringLiteral("sub/deeper/c é.txt"), 777}}
            << TorrentFactory::Options{};
        QTest::newRow("private, two trackers, bigger pieces")
            << false << QList<TorrentFactory::File>{{QStringLiteral("x.bin"), 70000}, {QStringLiteral("y.bin"), 5}}
            << TorrentFactory::Options{trackers, true, 32 * 1024};
    }

    // The server checks the data against the made torrent before it seeds: a wrong piece hash,
    // size or layout never reaches progress 1, and a wrong info-hash differs from the server's.
    void seedsAddedTorrent()
    {
        QFETCH(bool, singleFile);
        QFETCH(QList<TorrentFactory::File>, files);
        QFETCH(TorrentFactory::Options, options);
        const QbtServer::DataDir data = server().makeDataDir();
        QVERIFY(!data.localPath.isEmpty());
        QString name = QStringLiteral("made-") + QString::fromUtf8(QTest::currentDataTag());
        for (QChar &c : name) {
            if (!c.isLetterOrNumber() && c != u'.')
                c = u'-';
        }
        const Torrent torrent = singleFile
                                    ? TorrentFactory::singleFile(data.localPath, name, files.constFirst().size, options)
                                    : TorrentFactory::multiFile(data.localPath, name, files, options);
        // A torrent the server cannot read is refused with 415.
        QCOMPARE(Client::decodeText(call(T::add(TorrentFactory::multipartBody({TorrentFactory::torrentPart(torrent),
                                                                               {"savepath", data.serverPath.toUtf8()},
                                                                               {"skip_checking", "false"}})))),
                 QStringLiteral("Ok."));

        // Found by name, so a wrong info-hash shows as a mismatch rather than a torrent never listed.
        // A download state after the check means pieces failed it.
        const QList<TntModelState> failed{TntModelState::error,     TntModelState::missingFiles,
                                          TntModelState::stalledDL, TntModelState::downloading,
                                          TntModelState::pausedDL,  TntModelState::stoppedDL};
        QString listedHash;
        STntModel listed;
        eventually([&] {
            const MainData all = wait(client().mainData(0));
            for (auto it = all.tnts.begin(); it != all.tnts.end(); ++it) {
                if (it->name == torrent.name) {
                    listedHash = it.key();
                    listed = it.value();
                }
            }
            return listed.progress == 1.0 || (listed.state && failed.contains(*listed.state));
        });
        QVERIFY2(listed.name, qPrintable(torrent.name + QStringLiteral(" was never listed")));
        QCOMPARE(listedHash, torrent.infoHash);
        QVERIFY2(listed.progress == 1.0, qPrintable(tntModelStateText(listed.state.value_or(TntModelState::unknown))));
        QCOMPARE(listed.totalSize, std::optional(torrent.totalSize));
        QCOMPARE(QDir::cleanPath(listed.savePath.value_or(QString())), data.serverPath);

        // Each URL of the file is its own tier; entries such as "** [DHT] **" are the server's own.
        QMap<QString, qint64> expectedTiers;
        for (qsizetype i = 0; i < options.announceUrls.size(); ++i)
            expectedTiers.insert(options.announceUrls.at(i), i);
        QMap<QString, qint64> tiers;
        bool sharedOnlyWithTrackers = false;
        for (const Tracker &tracker : wait(client().trackers(torrent.infoHash))) {
            if (tracker.url == u"** [DHT] **")
                sharedOnlyWithTrackers = tracker.msg == u"This torrent is private";
            else if (!tracker.url.startsWith(u"** ["))
                tiers.insert(tracker.url, tracker.tier);
        }
        QCOMPARE(tiers, expectedTiers);
        QCOMPARE(sharedOnlyWithTrackers, options.isPrivate);
    }

    void logoutEndsTheSession()
    {
        wait(client().logout());
        QCOMPARE(failure(E::Sync::maindata(0)), QStringLiteral("You are not authorized! | Authorization required."));
        wait(client().logout()); // a gone session logs out quietly
        wait(client().login());
        QVERIFY(!torrent(m_queuedB.infoHash).isEmpty());
    }

    void contextSurvivesAServerRestart()
    {
        m_server->connect(AuthMethod::cookieLogin, server().credentials());
        QVERIFY(context().isPolling());

        // A loss that was not one: the session is still valid.
        context().reportSyncFailure(
            QStringLiteral("Sync"),
            std::make_exception_ptr(TransportError(QNetworkReply::RemoteHostClosedError, QStringLiteral("closed"))));
        wait(context().reconnect());
        QCOMPARE(context().connectionLossCount(), 0);

        ReconnectionCountdown countdown(context());
        server().stop();
        QTRY_COMPARE_WITH_TIMEOUT(context().connectionLossCount(), 1, 10'000); // the poller notices
        QTest::qWait(100);
        QCOMPARE(context().connectionLossCount(), 1); // and then stops
        QVERIFY(!context().isPolling());
        QVERIFY(!context().connectionError().isEmpty());
        QVERIFY(countdown.isRunning());
        QCOMPARE(countdown.secondsLeft(), 10);

        QCOMPARE(server().restart(), QString());
        capturedLog.clear();
        const auto previous = qInstallMessageHandler(captureLog);
        countdown.reconnectNow();
        QTRY_VERIFY_WITH_TIMEOUT(context().isPolling(), 20'000);
        qInstallMessageHandler(previous);
        QVERIFY2(capturedLog.contains(u"Session expired. Logging in again..."_qs), qPrintable(capturedLog.join(u'\n')));
        QCOMPARE(m_server->alert(), QString());
        QCOMPARE(context().connectionLossCount(), 0);
        QVERIFY(context().isAuthorized());
        QVERIFY(context().isPolling());
        wait(context().client()->perform(E::Sync::maindata(0)));
    }

    void shutdownStopsTheServer()
    {
        wait(client().login()); // the restart forgot the session
        call(E::Application::shutdown());
        QVERIFY(eventually([&] {
            Client probe(server().configuration());
            return !failureOf(probe, E::Application::version()).startsWith(u"You are not authorized");
        }));
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    return QuilloTest::runPerFlavor<TestRealServers>(argc, argv, {Flavor::Bookworm45, Flavor::Trixie51});
}

#include "tst_realservers.moc"
