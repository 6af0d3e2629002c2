#include "api/Client.h"
#include "api/ClientError.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "support/Await.h"
#include "support/QbtServer.h"
#include "support/TorrentFactory.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <functional>

using namespace API;
using QuilloTest::wait;
namespace E = API::Endpoint;
namespace T = API::Endpoint::TntManagement;
using Flavor = QbtServer::Flavor;

namespace {

QJsonObject objectOf(const QByteArray &body)
{
    return QJsonDocument::fromJson(body).object();
}

QJsonArray arrayOf(const QByteArray &body)
{
    return QJsonDocument::fromJson(body).array();
}

// Polls until the server shows the expected state: most actions take effect within a tick.
bool eventually(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(15'000);
    while (!deadline.hasExpired()) {
        if (condition())
            return true;
        QTest::qWait(100);
    }
    return condition();
}

// What a user would read for the failure of `task`; empty when it succeeded.
QString failureText(QCoro::Task<QByteArray> task)
{
    try {
        wait(std::move(task));
    } catch (...) {
        const ClientError error(QStringLiteral("title"), std::current_exception());
        return error.description() + QStringLiteral(" | ") + error.failureReason();
    }
    return {};
}

} // namespace

// Every action of the torrent group, and the application, sync, transfer and auth groups, against
// a real server: each request is accepted and the server's state shows its effect.
class TestEndpoints : public QObject
{
    Q_OBJECT

public:
    explicit TestEndpoints(Flavor flavor)
        : m_flavor(flavor)
    {
    }

private:
    QByteArray call(const APIEndpoint &endpoint) { return wait(m_client->perform(endpoint)); }

    QJsonObject torrent(const QString &hash)
    {
        return objectOf(call(E::Sync::maindata(0))).value(u"torrents").toObject().value(hash).toObject();
    }

    bool torrentShows(const QString &hash, const QString &key, const QJsonValue &value)
    {
        return eventually([&] { return torrent(hash).value(key) == value; });
    }

    bool isModern() const { return m_flavor == Flavor::Trixie51; }

    // Adds a torrent over data written into a fresh folder; `withData` false leaves it downloading.
    TorrentFactory::Torrent addTorrent(const QString &name, bool withData)
    {
        const QbtServer::DataDir dir = m_server->makeDataDir();
        auto made = TorrentFactory::multiFile(dir.localPath, name,
                                              {{QStringLiteral("a/first.bin"), 40'000},
                                               {QStringLiteral("second.bin"), 20'000}},
                                              {.announceUrls = {QStringLiteral("http://127.0.0.1:1/announce")}});
        if (!withData)
            QDir(made.contentPath).removeRecursively();
        const auto upload = TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(made), {"savepath", dir.serverPath.toUtf8()},
             {isModern() ? QByteArray("stopped") : QByteArray("paused"), withData ? "false" : "true"}});
        const QString answer = Client::decodeText(call(T::add(upload)));
        if (answer != u"Ok.")
            qWarning("add answered %s", qPrintable(answer));
        return made;
    }

    const Flavor m_flavor;
    std::unique_ptr<QbtServer> m_server;
    std::unique_ptr<Client> m_client;
    WebAPIVersion m_apiVersion;
    TorrentFactory::Torrent m_seeding;
    TorrentFactory::Torrent m_queuedA;
    TorrentFactory::Torrent m_queuedB;
    QString m_seedingHash;
    QStringList m_seedingHashes;

private Q_SLOTS:
    void initTestCase()
    {
        QbtServer::StartResult started = QbtServer::start(m_flavor);
        QUILLO_REQUIRE_SERVER(started);
        m_server = std::move(started.server);
        m_client = std::make_unique<Client>(m_server->configuration());
        m_client->setCredentials(m_server->credentials());
        wait(m_client->login());
        m_apiVersion = wait(m_client->webapiVersion());

        m_seeding = addTorrent(QStringLiteral("Seeding & Co = 100% é"), true);
        m_queuedA = addTorrent(QStringLiteral("Queued A"), false);
        m_queuedB = addTorrent(QStringLiteral("Queued B"), false);
        m_seedingHash = m_seeding.infoHash;
        m_seedingHashes = {m_seedingHash};
        QVERIFY2(eventually([&] { return torrent(m_seedingHash).value(u"progress").toDouble() == 1.0; }),
                 "the seeded torrent never completed its check");
        QCOMPARE(torrent(m_seedingHash).value(u"name").toString(), m_seeding.name);
    }

    void cleanupTestCase()
    {
        m_client.reset();
        m_server.reset();
    }

    void authentication()
    {
        Client stranger(m_server->configuration());
        QCOMPARE(failureText(stranger.perform(E::Sync::maindata(0))),
                 QStringLiteral("You are not authorized! | Authorization required."));
        stranger.setCredentials({QStringLiteral("admin"), QStringLiteral("not the password"), {}});
        try {
            wait(stranger.login());
            QFAIL("a wrong password must not log in");
        } catch (const AutorizationError &error) {
            QCOMPARE(error.description(), QStringLiteral("You are not authorized!"));
        }
    }

    void applicationReads()
    {
        QCOMPARE(wait(m_client->version()), isModern() ? QStringLiteral("v5.1.0") : QStringLiteral("v4.5.2"));
        QCOMPARE(m_apiVersion.toString(), isModern() ? QStringLiteral("2.11.4") : QStringLiteral("2.8.19"));
        const BuildInfo build = wait(m_client->buildInfo());
        QVERIFY(build.qt.startsWith(isModern() ? u"6." : u"5."));
        QCOMPARE(build.bitness, 64);
        QCOMPARE(Client::decodeText(call(E::Application::defaultSavePath())), m_server->defaultSavePath());
        QVERIFY(objectOf(call(E::Application::preferences())).contains(u"save_path"));
        QVERIFY(!arrayOf(call(E::Application::networkInterfaceList())).isEmpty());
        QVERIFY(arrayOf(call(E::Application::networkInterfaceAddressList(QStringLiteral("lo")))).contains(u"127.0.0.1"_qs));
    }

    void preferencesWrite()
    {
        call(E::Application::setPreferences(R"({"max_connec": 321, "web_ui_domain_list": "a&b=c"})"));
        const QJsonObject preferences = objectOf(call(E::Application::preferences()));
        QCOMPARE(preferences.value(u"max_connec").toInt(), 321);
        QCOMPARE(preferences.value(u"web_ui_domain_list").toString(), QStringLiteral("a&b=c"));
    }

    void mainDataRoundTrip()
    {
        const QJsonObject full = objectOf(call(E::Sync::maindata(0)));
        QVERIFY(full.value(u"full_update").toBool());
        QVERIFY(full.value(u"torrents").toObject().contains(m_seedingHash));
        const qint64 rid = full.value(u"rid").toInteger();
        QVERIFY(rid > 0);
        const QJsonObject delta = objectOf(call(E::Sync::maindata(rid)));
        QVERIFY(!delta.contains(u"full_update"));
        QVERIFY(delta.value(u"rid").toInteger() > rid);

        const QJsonObject peers = objectOf(call(E::Sync::torrentPeers(m_seedingHash, 0)));
        QVERIFY(peers.contains(u"rid"));
        QVERIFY(peers.value(u"peers").isObject());
    }

    void stopAndStart()
    {
        // 4.5 knows pause/resume and "pausedUP"; 5.x knows stop/start and "stoppedUP".
        const QString stopped = isModern() ? QStringLiteral("stoppedUP") : QStringLiteral("pausedUP");
        call(isModern() ? T::stop(m_seedingHashes) : T::pause(m_seedingHashes));
        QVERIFY(torrentShows(m_seedingHash, QStringLiteral("state"), stopped));
        call(isModern() ? T::start(m_seedingHashes) : T::resume(m_seedingHashes));
        QVERIFY(eventually([&] { return torrent(m_seedingHash).value(u"state").toString() != stopped; }));

        call(T::setForceStart(m_seedingHashes, true));
        QVERIFY(torrentShows(m_seedingHash, QStringLiteral("force_start"), true));
        call(T::setForceStart(m_seedingHashes, false));
        QVERIFY(torrentShows(m_seedingHash, QStringLiteral("force_start"), false));

        call(T::reannounce(m_seedingHashes));
        call(T::recheck(m_seedingHashes));
        QVERIFY(eventually([&] {
            const QJsonObject info = torrent(m_seedingHash);
            return info.value(u"progress").toDouble() == 1.0 && !info.value(u"state").toString().startsWith(u"checking");
        }));
    }

    void trackers()
    {
        const auto trackerUrls = [&] {
            QStringList urls;
            for (const QJsonValue tracker : arrayOf(call(T::trackers(m_seedingHash))))
                urls << tracker.toObject().value(u"url").toString();
            return urls;
        };
        const QString second = QStringLiteral("http://127.0.0.1:2/announce?key=a&b=c");
        const QString third = QStringLiteral("udp://127.0.0.1:3");
        call(T::addTrackers(m_seedingHash, {second, third}));
        QVERIFY(eventually([&] { return trackerUrls().contains(second) && trackerUrls().contains(third); }));

        const QString edited = QStringLiteral("http://127.0.0.1:4/announce");
        call(T::editTracker(m_seedingHash, second, edited, m_apiVersion));
        QVERIFY(eventually([&] { return trackerUrls().contains(edited) && !trackerUrls().contains(second); }));
        QCOMPARE(failureText(m_client->perform(T::editTracker(m_seedingHash, second, edited, m_apiVersion))).section(u'|', 0, 0).trimmed(),
                 QStringLiteral("Failed to edit tracker!"));

        call(T::removeTrackers(m_seedingHash, {edited, third}));
        QVERIFY(eventually([&] { return !trackerUrls().contains(edited) && !trackerUrls().contains(third); }));
        QVERIFY(trackerUrls().contains(u"http://127.0.0.1:1/announce"_qs));
    }

    void detailReads()
    {
        const QJsonObject properties = objectOf(call(T::properties(m_seedingHash)));
        QCOMPARE(properties.value(u"total_size").toInteger(), m_seeding.totalSize);
        QCOMPARE(arrayOf(call(T::files(m_seedingHash))).size(), 2);
        QVERIFY(arrayOf(call(T::webseeds(m_seedingHash))).isEmpty());
        // One state per 16 KiB piece. Only the count: 5.1 answered all 0 right after the recheck above.
        const QJsonArray pieces = arrayOf(call(T::pieceStates(m_seedingHash)));
        QCOMPARE(pieces.size(), (m_seeding.totalSize + 16'383) / 16'384);

        QCOMPARE(failureText(m_client->perform(T::properties(QString(40, u'0')))),
                 QStringLiteral("Torrent not found! | The torrent is no longer on the server."));
    }

    void peers()
    {
        call(T::addPeers(m_seedingHashes, {QStringLiteral("127.0.0.1:%1").arg(m_server->peerPort() + 1)}));
        QCOMPARE(failureText(m_client->perform(T::addPeers(m_seedingHashes, {QStringLiteral("not a peer")}))),
                 QStringLiteral("Failed to add peers! | No valid peers were specified"));

        call(E::TransferInfo::banPeers({QStringLiteral("127.0.0.9:6881")}));
        QVERIFY(eventually([&] {
            return objectOf(call(E::Application::preferences())).value(u"banned_IPs").toString().contains(u"127.0.0.9");
        }));
    }

    void queue()
    {
        const QString a = m_queuedA.infoHash;
        const QString b = m_queuedB.infoHash;
        QVERIFY(torrentShows(a, QStringLiteral("priority"), 1));
        QVERIFY(torrentShows(b, QStringLiteral("priority"), 2));
        call(T::topPrio({b}));
        QVERIFY(torrentShows(b, QStringLiteral("priority"), 1));
        call(T::bottomPrio({b}));
        QVERIFY(torrentShows(b, QStringLiteral("priority"), 2));
        call(T::increasePrio({b}));
        QVERIFY(torrentShows(b, QStringLiteral("priority"), 1));
        call(T::decreasePrio({b}));
        QVERIFY(torrentShows(b, QStringLiteral("priority"), 2));

        call(E::Application::setPreferences(R"({"queueing_enabled": false})"));
        QCOMPARE(failureText(m_client->perform(T::topPrio({b}))).section(u'|', 0, 0).trimmed(),
                 QStringLiteral("Torrent queueing is disabled!"));
        call(E::Application::setPreferences(R"({"queueing_enabled": true})"));
    }

    void filePriorities()
    {
        const QString hash = m_queuedA.infoHash;
        call(T::filePrio(hash, {1}, 0));
        QVERIFY(eventually([&] { return arrayOf(call(T::files(hash))).at(1).toObject().value(u"priority").toInt() == 0; }));
        call(T::filePrio(hash, {0, 1}, 7));
        QVERIFY(eventually([&] { return arrayOf(call(T::files(hash))).at(1).toObject().value(u"priority").toInt() == 7; }));
        QCOMPARE(failureText(m_client->perform(T::filePrio(hash, {9}, 1))),
                 QStringLiteral("Invalid file! | File ID is not valid"));
    }

    void limits()
    {
        call(T::setDownloadLimit(m_seedingHashes, 300'000));
        call(T::setUploadLimit(m_seedingHashes, 200'000));
        QCOMPARE(objectOf(call(T::downloadLimit(m_seedingHashes))).value(m_seedingHash).toInteger(), 300'000);
        QCOMPARE(objectOf(call(T::uploadLimit(m_seedingHashes))).value(m_seedingHash).toInteger(), 200'000);

        call(T::setShareLimits(m_seedingHashes, 2, 90, 30, m_apiVersion));
        QVERIFY(torrentShows(m_seedingHash, QStringLiteral("ratio_limit"), 2));
        QVERIFY(torrentShows(m_seedingHash, QStringLiteral("seeding_time_limit"), 90));

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

    void locationAndNames()
    {
        const QString hash = m_queuedB.infoHash;
        const QbtServer::DataDir target = m_server->makeDataDir();
        const QString location = target.serverPath + QStringLiteral("/moved here & there");
        call(T::setLocation({hash}, location));
        QVERIFY(torrentShows(hash, QStringLiteral("save_path"), location));

        // A folder below a file can never be made.
        QFile blocker(target.localPath + QStringLiteral("/file"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        QCOMPARE(failureText(m_client->perform(T::setLocation({hash}, target.serverPath + QStringLiteral("/file/sub")))),
                 QStringLiteral("An error occurred while setting the torrent location! | Cannot make save path"));

        const QString name = QStringLiteral("A & B + C = D é");
        call(T::rename(hash, name));
        QVERIFY(torrentShows(hash, QStringLiteral("name"), name));
        QCOMPARE(failureText(m_client->perform(T::rename(hash, QStringLiteral(" ")))).section(u'|', 0, 0).trimmed(),
                 QStringLiteral("Invalid torrent name!"));

        const auto fileNames = [&] {
            QStringList names;
            for (const QJsonValue file : arrayOf(call(T::files(hash))))
                names << file.toObject().value(u"name").toString();
            return names;
        };
        const QString root = m_queuedB.name;
        call(T::renameFile(hash, root + QStringLiteral("/second.bin"), root + QStringLiteral("/zweite #2.bin")));
        QVERIFY(eventually([&] { return fileNames().contains(root + QStringLiteral("/zweite #2.bin")); }));
        call(T::renameFolder(hash, root + QStringLiteral("/a"), root + QStringLiteral("/b&c")));
        QVERIFY(eventually([&] { return fileNames().contains(root + QStringLiteral("/b&c/first.bin")); }));
    }

    void categories()
    {
        const QString category = QStringLiteral("Films & TV");
        const QbtServer::DataDir dir = m_server->makeDataDir();
        const auto categoriesNow = [&] { return objectOf(call(E::Sync::maindata(0))).value(u"categories").toObject(); };

        call(T::createCategory(category, dir.serverPath));
        QVERIFY(eventually([&] { return categoriesNow().contains(category); }));
        QCOMPARE(failureText(m_client->perform(T::createCategory(category, dir.serverPath))).section(u'|', 0, 0).trimmed(),
                 QStringLiteral("Failed to create category!"));

        const QString editedPath = dir.serverPath + QStringLiteral("/edited");
        call(T::editCategory(category, editedPath));
        QVERIFY(eventually([&] {
            return categoriesNow().value(category).toObject().value(u"savePath").toString() == editedPath;
        }));

        call(T::setCategory({m_queuedA.infoHash}, category));
        QVERIFY(torrentShows(m_queuedA.infoHash, QStringLiteral("category"), category));
        QCOMPARE(failureText(m_client->perform(T::setCategory({m_queuedA.infoHash}, QStringLiteral("No such one")))).section(u'|', 0, 0).trimmed(),
                 QStringLiteral("Category does not exist!"));

        call(T::removeCategories({category, QStringLiteral("unknown")}));
        QVERIFY(eventually([&] { return !categoriesNow().contains(category); }));
        QVERIFY(torrentShows(m_queuedA.infoHash, QStringLiteral("category"), QString()));
    }

    void tags()
    {
        const auto tagsNow = [&] {
            QStringList tags;
            for (const QJsonValue tag : objectOf(call(E::Sync::maindata(0))).value(u"tags").toArray())
                tags << tag.toString();
            return tags;
        };
        call(T::createTags({QStringLiteral("alpha"), QStringLiteral("beta")}));
        QVERIFY(eventually([&] { return tagsNow().contains(u"alpha"_qs) && tagsNow().contains(u"beta"_qs); }));

        call(T::addTags(m_seedingHashes, {QStringLiteral("alpha"), QStringLiteral("gamma")}));
        QVERIFY(torrentShows(m_seedingHash, QStringLiteral("tags"), QStringLiteral("alpha, gamma")));
        call(T::removeTags(m_seedingHashes, {QStringLiteral("gamma")}));
        QVERIFY(torrentShows(m_seedingHash, QStringLiteral("tags"), QStringLiteral("alpha")));

        call(T::deleteTags({QStringLiteral("alpha"), QStringLiteral("beta"), QStringLiteral("gamma")}));
        QVERIFY(eventually([&] { return tagsNow().isEmpty(); }));
        QVERIFY(torrentShows(m_seedingHash, QStringLiteral("tags"), QString()));
    }

    void toggles()
    {
        const QString hash = m_queuedA.infoHash;
        const QJsonObject before = torrent(hash);
        call(T::toggleSequentialDownload({hash}));
        QVERIFY(torrentShows(hash, QStringLiteral("seq_dl"), !before.value(u"seq_dl").toBool()));
        call(T::toggleFirstLastPiecePrio({hash}));
        QVERIFY(torrentShows(hash, QStringLiteral("f_l_piece_prio"), !before.value(u"f_l_piece_prio").toBool()));

        call(T::setAutoManagement({hash}, true));
        QVERIFY(torrentShows(hash, QStringLiteral("auto_tmm"), true));
        call(T::setAutoManagement({hash}, false));
        QVERIFY(torrentShows(hash, QStringLiteral("auto_tmm"), false));

        call(T::setSuperSeeding(m_seedingHashes, true));
        QVERIFY(torrentShows(m_seedingHash, QStringLiteral("super_seeding"), true));
        call(T::setSuperSeeding(m_seedingHashes, false));
        QVERIFY(torrentShows(m_seedingHash, QStringLiteral("super_seeding"), false));
    }

    void removal()
    {
        QVERIFY(QFile::exists(m_seeding.contentPath));
        call(T::deleteTnts(m_seedingHashes, true));
        QVERIFY(eventually([&] { return torrent(m_seedingHash).isEmpty(); }));
        QVERIFY(eventually([&] { return !QFile::exists(m_seeding.contentPath); }));

        call(T::deleteTnts({m_queuedA.infoHash}, false));
        QVERIFY(eventually([&] { return torrent(m_queuedA.infoHash).isEmpty(); }));
    }

    void logoutEndsTheSession()
    {
        wait(m_client->logout());
        QCOMPARE(failureText(m_client->perform(E::Sync::maindata(0))),
                 QStringLiteral("You are not authorized! | Authorization required."));
        wait(m_client->logout()); // a gone session logs out quietly
        wait(m_client->login());
        QVERIFY(!torrent(m_queuedB.infoHash).isEmpty());
    }

    void shutdownStopsTheServer()
    {
        call(E::Application::shutdown());
        QVERIFY(eventually([&] {
            Client probe(m_server->configuration());
            return !failureText(probe.perform(E::Application::version())).startsWith(u"You are not authorized");
        }));
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    int failures = 0;
    for (const Flavor flavor : {Flavor::Bookworm45, Flavor::Trixie51}) {
        TestEndpoints test(flavor);
        failures += QTest::qExec(&test, argc, argv);
    }
    return failures;
}

#include "tst_endpoints.moc"
