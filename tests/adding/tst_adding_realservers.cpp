#include "adding/TntAdder.h"
#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "support/Await.h"
#include "support/ConnectedServer.h"
#include "support/Files.h"
#include "support/TorrentFactory.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using QuilloTest::eventually;
using QuilloTest::wait;
using QuilloTest::writeFile;
using Flavor = QbtServer::Flavor;

// A .torrent file from disk added through Quillo's own upload with options, against real servers:
// the torrent arrives with exactly those settings; a file that is not a torrent does not.
class TestAddingRealServers : public QObject
{
    Q_OBJECT

public:
    explicit TestAddingRealServers(Flavor flavor)
        : m_flavor(flavor)
    {
    }

private:
    QJsonObject torrent(const QString &hash) { return m_server->torrent(hash); }
    QStringList hashes()
    {
        const QByteArray body = wait(client().perform(API::Endpoint::Sync::maindata(0)));
        return QJsonDocument::fromJson(body).object().value(u"torrents").toObject().keys();
    }
    API::Client &client() { return m_server->client(); }

    const Flavor m_flavor;
    std::unique_ptr<ConnectedServer> m_server;

private Q_SLOTS:
    // Logged in by the client alone: no context is needed.
    void initTestCase() { QUILLO_CONNECT(m_server, m_flavor, {.localHostAuth = true}); }
    void cleanupTestCase() { m_server.reset(); }

    void addedWithItsOptions()
    {
        const QbtServer::DataDir data = m_server->server().makeDataDir();
        const auto torrent = TorrentFactory::multiFile(data.localPath, u"Album & Co é"_qs,
                                                       {{u"cd1/a.flac"_qs, 40'000}, {u"b.txt"_qs, 9}});
        wait(client().perform(API::Endpoint::TntManagement::createCategory(u"Music"_qs, QString())));

        API::TntAddingOptions options;
        options.tnts = QStringList{writeFile(m_server->scratchDir(), u"album é.torrent"_qs, torrent.bytes)};
        options.savepath = data.serverPath;
        options.category = u"Music"_qs;
        options.tags = u"lossless,2024"_qs;
        options.setAddStopped(true, m_server->apiVersion());
        wait(TntAdder::add(client(), options));

        QJsonObject added;
        QVERIFY(eventually([&] {
            added = this->torrent(torrent.infoHash);
            return !added.isEmpty();
        }));
        QCOMPARE(added.value(u"name").toString(), torrent.name);
        QCOMPARE(added.value(u"category").toString(), u"Music"_qs);
        QCOMPARE(added.value(u"tags").toString(), u"2024, lossless"_qs);
        QCOMPARE(QDir::cleanPath(added.value(u"save_path").toString()), QDir::cleanPath(data.serverPath));
        // Checking its resume data first, then stopped under the generation's own word.
        const QString stoppedWord = m_flavor != Flavor::Bookworm45 ? u"stopped"_qs : u"paused"_qs;
        QVERIFY2(eventually([&] { return this->torrent(torrent.infoHash).value(u"state").toString().startsWith(stoppedWord); }),
                 qPrintable(this->torrent(torrent.infoHash).value(u"state").toString()));
    }

    void fileNameThatCouldBreakTheHeader_data()
    {
        QTest::addColumn<QString>("fileName");
        // Unescaped, the quote would end the name and make the part another field.
        QTest::newRow("quotes") << u"x\"; name=\"savepath.torrent"_qs;
        QTest::newRow("line breaks") << u"a\r\nX-Header: b\r\n\r\nc\n.torrent"_qs;
    }

    // A file name is the user's, whatever it holds: the upload still carries the torrent.
    void fileNameThatCouldBreakTheHeader()
    {
        QFETCH(QString, fileName);
        const QbtServer::DataDir data = m_server->server().makeDataDir();
        const auto torrent = TorrentFactory::singleFile(data.localPath, QString::fromLatin1(QTest::currentDataTag()), 20'000);
        API::TntAddingOptions options;
        options.tnts = QStringList{writeFile(m_server->scratchDir(), fileName, torrent.bytes)};
        options.savepath = data.serverPath;
        wait(TntAdder::add(client(), options));
        QVERIFY(eventually([&] { return !this->torrent(torrent.infoHash).isEmpty(); }));
    }

    void notATorrentIsNotSent()
    {
        const QStringList before = hashes();
        API::TntAddingOptions options;
        options.tnts = QStringList{writeFile(m_server->scratchDir(), u"page.torrent"_qs, "<html><body>Not found</body></html>")};
        QTest::ignoreMessage(QtInfoMsg, qPrintable(u"Failed to initialize tnt metadata from "_qs
                                                   + QUrl::fromLocalFile(options.tnts->constFirst()).toString()
                                                   + u": The file's format is invalid."_qs));
        try {
            wait(TntAdder::add(client(), options));
            QFAIL("a page was added as a torrent");
        } catch (const API::TntManagmentError &error) {
            QCOMPARE(error.description(), u"Failed to add torrent!"_qs);
            QCOMPARE(error.failureReason(), u"\"page.torrent\" is not a valid torrent file."_qs);
        }
        QCOMPARE(hashes(), before);
    }
};

QUILLO_PER_FLAVOR_MAIN(TestAddingRealServers)

#include "tst_adding_realservers.moc"
