// Runs Quillo against a throwaway qBittorrent 4.5 server on loopback that holds a few sample
// torrents made on the spot, with a throwaway settings folder holding one connection to it.
// Closing Quillo stops the server and removes everything. Usage: quillo-demo <quillo executable>

#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/ConnectionStore.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/FakeServer.h"
#include "support/QbtServer.h"
#include "support/TorrentFactory.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

namespace {

namespace T = API::Endpoint::TntManagement;
using TorrentFactory::File;

// How much of a sample's data is on disk when it is added: all of it (it seeds), some (the server's
// check finds those pieces and it waits for the rest), or none.
enum class OnDisk { all, some, none };

struct Sample
{
    QString name;
    QList<File> files;
    OnDisk onDisk;
    QString category;
    QStringList tags;
};

const QList<Sample> samples{
    {QStringLiteral("Open Movie Collection"),
     {{QStringLiteral("Sintel/sintel.mkv"), 3'200'000}, {QStringLiteral("Big Buck Bunny/bbb.mkv"), 2'400'000},
      {QStringLiteral("README.txt"), 2'000}},
     OnDisk::all, QStringLiteral("Movies"), {QStringLiteral("open-licence")}},
    {QStringLiteral("Debian 12 netinst (sample)"), {{QStringLiteral("debian-12-netinst.iso"), 4'000'000}}, OnDisk::all,
     QStringLiteral("Linux"), {}},
    {QStringLiteral("Public Domain Audiobooks — Ülysses"),
     {{QStringLiteral("01 Telemachus.ogg"), 900'000}, {QStringLiteral("02 Nestor.ogg"), 700'000}}, OnDisk::all,
     QStringLiteral("Audio"), {QStringLiteral("books"), QStringLiteral("open-licence")}},
    {QStringLiteral("Photo Archive 2024"), {{QStringLiteral("photos.tar"), 1'500'000}}, OnDisk::all, {}, {}},
    {QStringLiteral("Fedora Workstation (sample)"), {{QStringLiteral("Fedora-Workstation.iso"), 5'000'000}}, OnDisk::some,
     QStringLiteral("Linux"), {}},
    {QStringLiteral("Creative Commons Music"),
     {{QStringLiteral("album/track1.flac"), 1'200'000}, {QStringLiteral("album/track2.flac"), 1'100'000}}, OnDisk::none,
     QStringLiteral("Audio"), {QStringLiteral("music")}},
};

// Zeroes a few stretches of the file, so that the pieces there fail the server's check.
void spoilParts(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite))
        qFatal("Cannot open %s", qUtf8Printable(path));
    for (const auto &[from, length] : {std::pair<qint64, qint64>{900'000, 400'000}, {2'000'000, 1'200'000},
                                       {3'600'000, 150'000}, {4'300'000, 700'000}}) {
        file.seek(from);
        file.write(QByteArray(static_cast<qsizetype>(std::min(length, file.size() - from)), '\0'));
    }
}

void addSamples(QbtServer &server)
{
    API::Client client(server.configuration());
    QuilloTest::wait(client.perform(T::createCategory(QStringLiteral("Movies"), {})));
    QuilloTest::wait(client.perform(T::createCategory(QStringLiteral("Linux"), {})));
    QuilloTest::wait(client.perform(T::createCategory(QStringLiteral("Audio"), {})));
    for (const Sample &sample : samples) {
        const QbtServer::DataDir dir = server.makeDataDir();
        const auto torrent = TorrentFactory::multiFile(dir.localPath, sample.name, sample.files,
                                                       {.announceUrls = {QStringLiteral("http://127.0.0.1:1/announce")}});
        if (sample.onDisk == OnDisk::none) // it waits for peers that never come
            QDir(torrent.contentPath).removeRecursively();
        else if (sample.onDisk == OnDisk::some)
            spoilParts(torrent.contentPath + u'/' + sample.files.first().path);
        QList<TorrentFactory::FormPart> parts{TorrentFactory::torrentPart(torrent), {"savepath", dir.serverPath.toUtf8()}};
        if (!sample.category.isEmpty())
            parts.append({"category", sample.category.toUtf8()});
        if (!sample.tags.isEmpty())
            parts.append({"tags", sample.tags.join(u',').toUtf8()});
        QuilloTest::wait(client.perform(T::add(TorrentFactory::multipartBody(parts))));
    }
}

// A feed of sample releases that the server reads from this process, each with a torrent it can
// download, and one download rule.
void serveFeed(QbtServer &server, FakeServer &feed)
{
    QHash<QByteArray, QByteArray> files;
    const QString base = QStringLiteral("http://127.0.0.1:%1/").arg(feed.port());
    QString items;
    const QStringList releases{QStringLiteral("Debian 13 netinst (sample)"), QStringLiteral("Open Movie Collection, part 2"),
                               QStringLiteral("Fedora Workstation 43 (sample)")};
    for (qsizetype i = 0; i < releases.size(); ++i) {
        const QbtServer::DataDir dir = server.makeDataDir();
        const auto torrent = TorrentFactory::singleFile(dir.localPath, releases[i], 300'000 + 100'000 * i);
        const QByteArray path = "/release-" + QByteArray::number(i) + ".torrent";
        files.insert(path, torrent.bytes);
        items += QStringLiteral("<item><title>%1</title><link>%2release-%3</link><guid>release-%3</guid>"
                                "<pubDate>%4 Nov 2026 10:00:00 +0000</pubDate>"
                                "<enclosure url=\"%2release-%3.torrent\" type=\"application/x-bittorrent\" length=\"%5\"/>"
                                "</item>")
                     .arg(releases[i], base)
                     .arg(i)
                     .arg(23 + i)
                     .arg(torrent.bytes.size());
    }
    files.insert("/releases.xml", QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?><rss version=\"2.0\"><channel>"
                                                 "<title>Sample Releases</title><link>%1</link>"
                                                 "<description>Releases for the Quillo demo</description>%2</channel></rss>")
                                      .arg(base, items)
                                      .toUtf8());
    feed.setHandler([files](const FakeServer::Request &request) {
        const auto found = files.constFind(request.target);
        return found == files.cend() ? FakeServer::Response::text(404, "") : FakeServer::Response::text(200, *found);
    });

    namespace Rss = API::Endpoint::Rss;
    API::Client client(server.configuration());
    QuilloTest::wait(client.perform(API::Endpoint::Application::setPreferences("{\"rss_processing_enabled\":true}")));
    QuilloTest::wait(client.perform(Rss::addFolder(QStringLiteral("Linux"))));
    QuilloTest::wait(client.perform(Rss::addFeed(base + QStringLiteral("releases.xml"), QStringLiteral("Linux\\Sample Releases"))));
    QuilloTest::wait(client.perform(Rss::setRule(
        QStringLiteral("Debian releases"),
        QJsonObject{{QStringLiteral("enabled"), false},
                    {QStringLiteral("mustContain"), QStringLiteral("Debian")},
                    {QStringLiteral("affectedFeeds"), QJsonArray{base + QStringLiteral("releases.xml")}},
                    {QStringLiteral("assignedCategory"), QStringLiteral("Linux")}})));
}

// The search plugin the tests use: it answers from its own list, without a network, where the
// server has Python.
void installSearchPlugin(QbtServer &server)
{
    API::Client client(server.configuration());
    QuilloTest::wait(client.perform(API::Endpoint::Search::installPlugin({QStringLiteral(QUILLO_SEARCH_PLUGIN)})));
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        qCritical("usage: quillo-demo <quillo executable> [arguments for Quillo]");
        return 2;
    }

    QbtServer::StartResult started = QbtServer::start(QbtServer::Flavor::Bookworm45, {.localHostAuth = false});
    if (!started.server) {
        qCritical("The demo server did not start: %s", qUtf8Printable(started.failure));
        return 1;
    }
    QbtServer &server = *started.server;
    FakeServer feed;
    try {
        addSamples(server);
        serveFeed(server, feed);
        installSearchPlugin(server);
    } catch (const std::exception &error) {
        qCritical("Could not add the sample torrents, feed and search plugin: %s", error.what());
        return 1;
    }

    QTemporaryDir configHome;
    {
        UserDefaults defaults(configHome.filePath(QStringLiteral("Quillo/Quillo.ini")));
        ClientConfiguration demo = server.configuration();
        demo.name = QStringLiteral("Demo qBittorrent");
        demo.authMethod = API::AuthMethod::none;
        demo.isCurrent = true;
        ConnectionStore(defaults).save({demo});
    }

    QProcess quillo;
    quillo.setProcessChannelMode(QProcess::ForwardedChannels);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), configHome.path());
    quillo.setProcessEnvironment(environment);
    quillo.start(QString::fromLocal8Bit(argv[1]), QCoreApplication::arguments().mid(2));
    if (!quillo.waitForStarted()) {
        qCritical("Could not start Quillo: %s", qUtf8Printable(quillo.errorString()));
        return 1;
    }
    qInfo("Demo server on http://127.0.0.1:%d (pid %lld); close Quillo to stop it.", server.webPort(),
          static_cast<long long>(server.processId()));
    // The feed is served from this event loop.
    QObject::connect(&quillo, &QProcess::finished, &app, [](int code) { QCoreApplication::exit(code); });
    return QCoreApplication::exec();
}
