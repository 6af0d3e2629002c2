#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "support/Await.h"
#include "support/QbtServer.h"
#include "support/TorrentFactory.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QTest>

#include <map>

using Flavor = QbtServer::Flavor;
using TorrentFactory::File;

namespace {

QJsonObject jsonObject(const QByteArray &body)
{
    return QJsonDocument::fromJson(body).object();
}

} // namespace

class tst_RealServers : public QObject
{
    Q_OBJECT

private:
    // One server per flavour for the whole run: each test uses its own client and data folder.
    QbtServer::StartResult &serverFor(Flavor flavor)
    {
        auto found = m_servers.find(flavor);
        if (found == m_servers.end())
            found = m_servers.emplace(flavor, QbtServer::start(flavor)).first;
        return found->second;
    }

    static void addFlavourColumns()
    {
        QTest::addColumn<Flavor>("flavor");
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("apiVersion");
    }

    static void addFlavourRows()
    {
        QTest::newRow("4.5") << Flavor::Bookworm45 << QStringLiteral("v4.5.2") << QStringLiteral("2.8.19");
        QTest::newRow("5.1") << Flavor::Trixie51 << QStringLiteral("v5.1.0") << QStringLiteral("2.11.4");
    }

    std::map<Flavor, QbtServer::StartResult> m_servers;

private Q_SLOTS:
    void cleanupTestCase() { m_servers.clear(); }

    void staysOnLoopback_data()
    {
        QTest::addColumn<Flavor>("flavor");
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
        for (const Flavor flavor : {Flavor::Bookworm45, Flavor::Trixie51}) {
            for (const auto &[key, expected] : settings) {
                QTest::addRow("%s %s", flavor == Flavor::Bookworm45 ? "4.5" : "5.1", key)
                    << flavor << QString::fromLatin1(key) << expected;
            }
        }
    }

    // The configuration file must be read as meant by both versions, or a server reaches outside.
    void staysOnLoopback()
    {
        QFETCH(Flavor, flavor);
        QFETCH(QString, key);
        QFETCH(QJsonValue, expected);
        QbtServer::StartResult &started = serverFor(flavor);
        QUILLO_REQUIRE_SERVER(started);

        API::Client client(started.server->configuration());
        client.setCredentials(started.server->credentials());
        QuilloTest::wait(client.login());
        const QJsonObject preferences = jsonObject(QuilloTest::wait(client.perform(API::Endpoint::Application::preferences())));
        QVERIFY2(preferences.contains(key), qPrintable(key));
        QCOMPARE(preferences.value(key), expected);
    }

    void seedsAddedTorrent_data()
    {
        QTest::addColumn<Flavor>("flavor");
        QTest::addColumn<bool>("singleFile");
        QTest::addColumn<QList<File>>("files");
        QTest::addColumn<TorrentFactory::Options>("options");

        // Both http: libtorrent moves a udp tracker ahead of an http one on the same host.
        const QStringList trackers{QStringLiteral("http://127.0.0.1:1/announce"),
                                   QStringLiteral("http://127.0.0.1:2/second")};
        for (const Flavor flavor : {Flavor::Bookworm45, Flavor::Trixie51}) {
            const char *v = flavor == Flavor::Bookworm45 ? "4.5" : "5.1";
            QTest::addRow("%s single file, short last piece", v)
                << flavor << true << QList<File>{{{}, 3 * 16384 + 1234}} << TorrentFactory::Options{};
            QTest::addRow("%s single file, one whole piece", v)
                << flavor << true << QList<File>{{{}, 16384}} << TorrentFactory::Options{{trackers.first()}};
            QTest::addRow("%s files across piece boundaries", v)
                << flavor << false
                << QList<File>{{QStringLiteral("a.bin"), 40000},
                               {QStringLiteral("sub/b.bin"), 16384},
                               {QStringLiteral("empty.dat"), 0},
                               {QStringLiteral("sub/deeper/c é.txt"), 777}}
                << TorrentFactory::Options{};
            QTest::addRow("%s private, two trackers, bigger pieces", v)
                << flavor << false
                << QList<File>{{QStringLiteral("x.bin"), 70000}, {QStringLiteral("y.bin"), 5}}
                << TorrentFactory::Options{trackers, true, 32 * 1024};
        }
    }

    // The server checks the data against the made torrent before it seeds: a wrong piece hash,
    // size or layout never reaches progress 1, and a wrong info-hash differs from the server's.
    void seedsAddedTorrent()
    {
        QFETCH(Flavor, flavor);
        QFETCH(bool, singleFile);
        QFETCH(QList<File>, files);
        QFETCH(TorrentFactory::Options, options);
        QbtServer::StartResult &started = serverFor(flavor);
        QUILLO_REQUIRE_SERVER(started);
        QbtServer &server = *started.server;

        const QbtServer::DataDir data = server.makeDataDir();
        QVERIFY(!data.localPath.isEmpty());
        QString name = QStringLiteral("made-") + QString::fromUtf8(QTest::currentDataTag());
        for (QChar &c : name) {
            if (!c.isLetterOrNumber() && c != u'.')
                c = u'-';
        }
        const TorrentFactory::Torrent torrent =
            singleFile ? TorrentFactory::singleFile(data.localPath, name, files.constFirst().size, options)
                       : TorrentFactory::multiFile(data.localPath, name, files, options);

        API::Client client(server.configuration());
        client.setCredentials(server.credentials());
        QuilloTest::wait(client.login());
        const API::MultipartBody body = TorrentFactory::multipartBody({
            TorrentFactory::torrentPart(torrent),
            {"savepath", data.serverPath.toUtf8()},
            {"skip_checking", "false"},
        });
        QByteArray answer; // a torrent the server cannot read is refused with 415
        QVERIFY_THROWS_NO_EXCEPTION(answer = QuilloTest::wait(client.perform(API::Endpoint::TntManagement::add(body))));
        QCOMPARE(answer, QByteArray("Ok."));

        // Found by name, so a wrong info-hash shows as a mismatch rather than a torrent never listed.
        // A download state after the check means pieces failed it; "checkingResumeData" comes first.
        const QStringList settled{QStringLiteral("error"),     QStringLiteral("missingFiles"),
                                  QStringLiteral("stalledDL"), QStringLiteral("downloading"),
                                  QStringLiteral("pausedDL"),  QStringLiteral("stoppedDL")};
        QString listedHash;
        QJsonObject listed;
        const QDeadlineTimer deadline(std::chrono::seconds(60));
        while (!deadline.hasExpired()) {
            const QJsonObject torrents =
                jsonObject(QuilloTest::wait(client.perform(API::Endpoint::Sync::maindata(0)))).value(u"torrents").toObject();
            for (auto it = torrents.begin(); it != torrents.end(); ++it) {
                if (it.value().toObject().value(u"name").toString() == torrent.name) {
                    listedHash = it.key();
                    listed = it.value().toObject();
                }
            }
            if (listed.value(u"progress").toDouble() == 1.0 || settled.contains(listed.value(u"state").toString()))
                break;
            QTest::qWait(200);
        }
        QVERIFY2(!listed.isEmpty(), qPrintable(torrent.name + QStringLiteral(" was never listed")));
        QCOMPARE(listedHash, torrent.infoHash);
        QVERIFY2(listed.value(u"progress").toDouble() == 1.0,
                 qPrintable(QStringLiteral("progress %1, state %2")
                                .arg(listed.value(u"progress").toDouble())
                                .arg(listed.value(u"state").toString())));
        QCOMPARE(listed.value(u"total_size").toInteger(), torrent.totalSize);
        QCOMPARE(QDir::cleanPath(listed.value(u"save_path").toString()), data.serverPath);

        // Each URL of the file is its own tier; entries such as "** [DHT] **" are the server's own.
        QMap<QString, int> expectedTiers;
        for (qsizetype i = 0; i < options.announceUrls.size(); ++i)
            expectedTiers.insert(options.announceUrls.at(i), static_cast<int>(i));
        QMap<QString, int> tiers;
        bool sharedOnlyWithTrackers = false;
        const QJsonArray entries =
            QJsonDocument::fromJson(QuilloTest::wait(client.perform(API::Endpoint::TntManagement::trackers(torrent.infoHash))))
                .array();
        for (const QJsonValue &entry : entries) {
            const QJsonObject tracker = entry.toObject();
            const QString url = tracker.value(u"url").toString();
            if (url == u"** [DHT] **")
                sharedOnlyWithTrackers = tracker.value(u"msg").toString() == u"This torrent is private";
            else if (!url.startsWith(u"** ["))
                tiers.insert(url, tracker.value(u"tier").toInt());
        }
        QCOMPARE(tiers, expectedTiers);
        QCOMPARE(sharedOnlyWithTrackers, options.isPrivate);
    }
};

QTEST_GUILESS_MAIN(tst_RealServers)
#include "tst_realservers.moc"
