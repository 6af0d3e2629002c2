#include "adding/TntAdder.h"
#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "support/Await.h"
#include "support/Files.h"
#include "support/QbtServer.h"
#include "support/TorrentFactory.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using QuilloTest::wait;
using Flavor = QbtServer::Flavor;
namespace T = API::Endpoint::TntManagement;

using QuilloTest::writeFile;

namespace {

bool eventually(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(20'000);
    while (!deadline.hasExpired()) {
        if (condition())
            return true;
        QTest::qWait(100);
    }
    return condition();
}

} // namespace

// A .torrent file from disk added through Quillo's own upload with options, against a real 4.5 and
// 5.1 server: the torrent arrives with exactly those settings; a file that is not a torrent does not.
class TestAddingRealServers : public QObject
{
    Q_OBJECT

public:
    explicit TestAddingRealServers(Flavor flavor)
        : m_flavor(flavor)
    {
    }

private:
    QJsonObject torrents()
    {
        const QByteArray body = wait(m_client->perform(API::Endpoint::Sync::maindata(0)));
        return QJsonDocument::fromJson(body).object().value(u"torrents").toObject();
    }

    const Flavor m_flavor;
    std::unique_ptr<QbtServer> m_server;
    std::unique_ptr<API::Client> m_client;
    API::WebAPIVersion m_apiVersion;
    QTemporaryDir m_files;

private Q_SLOTS:
    void initTestCase()
    {
        QbtServer::StartResult started = QbtServer::start(m_flavor);
        QUILLO_REQUIRE_SERVER(started);
        m_server = std::move(started.server);
        m_client = std::make_unique<API::Client>(m_server->configuration());
        m_client->setCredentials(m_server->credentials());
        wait(m_client->login());
        m_apiVersion = wait(m_client->webapiVersion());
    }

    void cleanupTestCase()
    {
        m_client.reset();
        m_server.reset();
    }

    void addedWithItsOptions()
    {
        const QbtServer::DataDir data = m_server->makeDataDir();
        const auto torrent = TorrentFactory::multiFile(data.localPath, u"Album & Co é"_qs,
                                                       {{u"cd1/a.flac"_qs, 40'000}, {u"b.txt"_qs, 9}});
        wait(m_client->perform(T::createCategory(u"Music"_qs, QString())));

        API::TntAddingOptions options;
        options.tnts = QStringList{writeFile(m_files.path(), u"album é.torrent"_qs, torrent.bytes)};
        options.savepath = data.serverPath;
        options.category = u"Music"_qs;
        options.tags = u"lossless,2024"_qs;
        options.setAddStopped(true, m_apiVersion);
        wait(TntAdder::add(*m_client, options));

        QJsonObject added;
        QVERIFY(eventually([&] {
            added = torrents().value(torrent.infoHash).toObject();
            return !added.isEmpty();
        }));
        QCOMPARE(added.value(u"name").toString(), torrent.name);
        QCOMPARE(added.value(u"category").toString(), u"Music"_qs);
        QCOMPARE(added.value(u"tags").toString(), u"2024, lossless"_qs);
        QCOMPARE(QDir::cleanPath(added.value(u"save_path").toString()), QDir::cleanPath(data.serverPath));
        // Checking its resume data first, then stopped under the generation's own word.
        const QString stoppedWord = m_flavor != Flavor::Bookworm45 ? u"stopped"_qs : u"paused"_qs;
        QVERIFY2(eventually([&] {
                     return torrents().value(torrent.infoHash).toObject().value(u"state").toString().startsWith(stoppedWord);
                 }),
                 qPrintable(torrents().value(torrent.infoHash).toObject().value(u"state").toString()));
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
        const QbtServer::DataDir data = m_server->makeDataDir();
        const auto torrent = TorrentFactory::singleFile(data.localPath, QString::fromLatin1(QTest::currentDataTag()), 20'000);
        API::TntAddingOptions options;
        options.tnts = QStringList{writeFile(m_files.path(), fileName, torrent.bytes)};
        options.savepath = data.serverPath;
        wait(TntAdder::add(*m_client, options));
        QVERIFY(eventually([&] { return torrents().contains(torrent.infoHash); }));
    }

    void notATorrentIsNotSent()
    {
        const QStringList before = torrents().keys();
        API::TntAddingOptions options;
        options.tnts = QStringList{writeFile(m_files.path(), u"page.torrent"_qs, "<html><body>Not found</body></html>")};
        QTest::ignoreMessage(QtInfoMsg, qPrintable(u"Failed to initialize tnt metadata from "_qs
                                                   + QUrl::fromLocalFile(options.tnts->constFirst()).toString()
                                                   + u": The file's format is invalid."_qs));
        try {
            wait(TntAdder::add(*m_client, options));
            QFAIL("a page was added as a torrent");
        } catch (const API::TntManagmentError &error) {
            QCOMPARE(error.description(), u"Failed to add torrent!"_qs);
            QCOMPARE(error.failureReason(), u"\"page.torrent\" is not a valid torrent file."_qs);
        }
        QCOMPARE(torrents().keys(), before);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    int failures = 0;
    for (const Flavor flavor : QbtServer::flavors()) {
        TestAddingRealServers test(flavor);
        failures += QTest::qExec(&test, argc, argv);
    }
    return failures;
}

#include "tst_adding_realservers.moc"
