#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "api/Records.h"
#include "support/Await.h"
#include "support/QbtServer.h"
#include "support/TorrentFactory.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QTest>

#include <functional>

using namespace API;
using QuilloTest::wait;
namespace T = API::Endpoint::TntManagement;
using Flavor = QbtServer::Flavor;

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

// The fields of a torrent that both servers send in a full update; a key that no longer matches its
// field leaves it empty.
QStringList emptyFields(const STntModel &t)
{
    QStringList empty;
    const auto check = [&](const char *name, const auto &field) {
        if (!field.has_value())
            empty << QLatin1String(name);
    };
    check("addedOn", t.addedOn);
    check("amountLeft", t.amountLeft);
    check("autoTmm", t.autoTmm);
    check("availability", t.availability);
    check("category", t.category);
    check("completed", t.completed);
    check("completionOn", t.completionOn);
    check("contentPath", t.contentPath);
    check("dlLimit", t.dlLimit);
    check("dlspeed", t.dlspeed);
    check("downloaded", t.downloaded);
    check("downloadedSession", t.downloadedSession);
    check("eta", t.eta);
    check("fLPiecePrio", t.fLPiecePrio);
    check("forceStart", t.forceStart);
    check("infohashV1", t.infohashV1);
    check("infohashV2", t.infohashV2);
    check("lastActivity", t.lastActivity);
    check("magnetUri", t.magnetUri);
    check("maxRatio", t.maxRatio);
    check("maxSeedingTime", t.maxSeedingTime);
    check("name", t.name);
    check("numComplete", t.numComplete);
    check("numIncomplete", t.numIncomplete);
    check("numLeechs", t.numLeechs);
    check("numSeeds", t.numSeeds);
    check("priority", t.priority);
    check("progress", t.progress);
    check("ratio", t.ratio);
    check("ratioLimit", t.ratioLimit);
    check("savePath", t.savePath);
    check("seedingTime", t.seedingTime);
    check("seedingTimeLimit", t.seedingTimeLimit);
    check("seenComplete", t.seenComplete);
    check("seqDl", t.seqDl);
    check("size", t.size);
    check("state", t.state);
    check("superSeeding", t.superSeeding);
    check("tags", t.tags);
    check("timeActive", t.timeActive);
    check("totalSize", t.totalSize);
    check("tracker", t.tracker);
    check("upLimit", t.upLimit);
    check("uploaded", t.uploaded);
    check("uploadedSession", t.uploadedSession);
    check("upspeed", t.upspeed);
    return empty;
}

} // namespace

// Real answers of both servers through the client's typed reads: every record decodes, and what
// the records say matches what the test put on the server.
class TestRecordsRealServers : public QObject
{
    Q_OBJECT

public:
    explicit TestRecordsRealServers(Flavor flavor)
        : m_flavor(flavor)
    {
    }

private:
    bool isModern() const { return m_flavor == Flavor::Trixie51; }

    TorrentFactory::Torrent addTorrent(const QString &name, bool withData)
    {
        const QbtServer::DataDir dir = m_server->makeDataDir();
        auto made = TorrentFactory::multiFile(dir.localPath, name,
                                              {{QStringLiteral("a/first.bin"), 40'000},
                                               {QStringLiteral("zweite ü.bin"), 20'000}},
                                              {.announceUrls = {QStringLiteral("http://127.0.0.1:1/announce")}});
        if (!withData)
            QDir(made.contentPath).removeRecursively();
        const auto upload = TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(made), {"savepath", dir.serverPath.toUtf8()},
             {isModern() ? QByteArray("stopped") : QByteArray("paused"), withData ? "false" : "true"}});
        const QString answer = Client::decodeText(wait(m_client->perform(T::add(upload))));
        if (answer != u"Ok.")
            qWarning("add answered %s", qPrintable(answer));
        return made;
    }

    STntModel torrentNow(const QString &hash) { return wait(m_client->mainData(0)).tnts.value(hash); }

    const Flavor m_flavor;
    std::unique_ptr<QbtServer> m_server;
    std::unique_ptr<Client> m_client;
    TorrentFactory::Torrent m_seeding;

private Q_SLOTS:
    void initTestCase()
    {
        QbtServer::StartResult started = QbtServer::start(m_flavor);
        QUILLO_REQUIRE_SERVER(started);
        m_server = std::move(started.server);
        m_client = std::make_unique<Client>(m_server->configuration());
        m_client->setCredentials(m_server->credentials());
        wait(m_client->login());

        m_seeding = addTorrent(QStringLiteral("Records é ☃"), true);
        QVERIFY2(eventually([&] {
                     const STntModel t = torrentNow(m_seeding.infoHash);
                     return t.progress == 1.0 && t.state && *t.state != TntModelState::checkingUP
                         && *t.state != TntModelState::checkingResumeData;
                 }),
                 "the seeded torrent never completed its check");
    }

    void cleanupTestCase()
    {
        m_client.reset();
        m_server.reset();
    }

    void versionsAndBuild()
    {
        QCOMPARE(wait(m_client->version()), isModern() ? QStringLiteral("v5.1.0") : QStringLiteral("v4.5.2"));
        const WebAPIVersion api = wait(m_client->webapiVersion());
        QCOMPARE(api.toString(), isModern() ? QStringLiteral("2.11.4") : QStringLiteral("2.8.19"));
        const BuildInfo build = wait(m_client->buildInfo());
        QVERIFY(build.qt.startsWith(isModern() ? u"6." : u"5."));
        QVERIFY(!build.libtorrent.isEmpty());
        QCOMPARE(build.bitness, 64);
    }

    void fullMainData()
    {
        const MainData data = wait(m_client->mainData(0));
        QCOMPARE(data.fullUpdate, std::optional(true));
        QVERIFY(data.rid > 0);
        QVERIFY(data.tntsRemoved.isEmpty());
        QVERIFY(data.serverState);
        QVERIFY(data.serverState->connectionStatus);
        QVERIFY(data.serverState->dlInfoData);
        QVERIFY(data.serverState->globalRatio);

        QVERIFY(data.tnts.contains(m_seeding.infoHash));
        const STntModel t = data.tnts.value(m_seeding.infoHash);
        QCOMPARE(emptyFields(t), QStringList());
        QCOMPARE(*t.name, m_seeding.name);
        QCOMPARE(*t.infohashV1, m_seeding.infoHash);
        QCOMPARE(*t.infohashV2, QString());
        QCOMPARE(*t.totalSize, m_seeding.totalSize);
        QCOMPARE(*t.amountLeft, 0);
        QVERIFY(t.magnetUri->contains(m_seeding.infoHash));
        QVERIFY(t.contentPath->endsWith(m_seeding.name));
        const qint64 age = t.addedOn->toDateTime().secsTo(QDateTime::currentDateTimeUtc());
        QVERIFY2(age >= 0 && age < 600, qPrintable(QString::number(age)));
        if (isModern())
            QVERIFY(data.trackers.contains(u"http://127.0.0.1:1/announce"_qs));
    }

    // A delta carries only what changed: a rename shows up as a torrent with a handful of fields.
    void mainDataDelta()
    {
        qint64 rid = wait(m_client->mainData(0)).rid;
        const QString renamed = QStringLiteral("Umbenannt ✓");
        wait(m_client->perform(T::rename(m_seeding.infoHash, renamed)));
        std::optional<STntModel> changed;
        QVERIFY(eventually([&] {
            const MainData delta = wait(m_client->mainData(rid));
            if (delta.fullUpdate == true)
                return false;
            rid = delta.rid;
            if (delta.tnts.contains(m_seeding.infoHash) && delta.tnts.value(m_seeding.infoHash).name)
                changed = delta.tnts.value(m_seeding.infoHash);
            return changed.has_value();
        }));
        QCOMPARE(*changed->name, renamed);
        QVERIFY(emptyFields(*changed).size() > 30);
    }

    void addedThenRemoved()
    {
        qint64 rid = wait(m_client->mainData(0)).rid;
        const TorrentFactory::Torrent added = addTorrent(QStringLiteral("Kommt und geht"), false);
        std::optional<STntModel> seen;
        QVERIFY(eventually([&] {
            const MainData delta = wait(m_client->mainData(rid));
            rid = delta.rid;
            if (delta.tnts.contains(added.infoHash))
                seen = delta.tnts.value(added.infoHash);
            return seen.has_value();
        }));
        QCOMPARE(seen->name, std::optional(added.name));
        QCOMPARE(seen->totalSize, std::optional(added.totalSize));

        wait(m_client->perform(T::deleteTnts({added.infoHash}, true)));
        bool removed = false;
        QVERIFY(eventually([&] {
            const MainData delta = wait(m_client->mainData(rid));
            rid = delta.rid;
            removed = delta.tntsRemoved.contains(added.infoHash);
            return removed;
        }));
        QVERIFY(!wait(m_client->mainData(0)).tnts.contains(added.infoHash));
    }

    void peers()
    {
        const PeersData full = wait(m_client->peers(m_seeding.infoHash, 0));
        QCOMPARE(full.fullUpdate, std::optional(true));
        QVERIFY(full.rid > 0);
        const PeersData delta = wait(m_client->peers(m_seeding.infoHash, full.rid));
        QVERIFY(delta.rid >= full.rid);
        QCOMPARE(delta.fullUpdate == true, false);
    }

    void properties()
    {
        const SGenericProperties p = wait(m_client->properties(m_seeding.infoHash));
        QCOMPARE(p.totalSize, m_seeding.totalSize);
        QCOMPARE(p.pieceSize, 16 * 1024);
        QCOMPARE(p.piecesNum, (m_seeding.totalSize + 16'383) / 16'384);
        QCOMPARE(p.piecesHave, p.piecesNum);
        QCOMPARE(p.infohashV1, m_seeding.infoHash);
        const qint64 age = p.additionDate.toDateTime().secsTo(QDateTime::currentDateTimeUtc());
        QVERIFY2(age >= 0 && age < 600, qPrintable(QString::number(age)));
        const std::optional<Date> added = wait(m_client->mainData(0)).tnts.value(m_seeding.infoHash).addedOn;
        QVERIFY(added);
        QCOMPARE(p.additionDate.secondsSinceEpoch(), added->secondsSinceEpoch());
        QVERIFY(p.savePath.size() > 1);

        try {
            wait(m_client->properties(QString(40, u'0')));
            QFAIL("an unknown hash has no properties");
        } catch (const TntManagmentError &) {
        }
    }

    void trackers()
    {
        const QList<Tracker> trackers = wait(m_client->trackers(m_seeding.infoHash));
        QStringList urls;
        for (const Tracker &tracker : trackers)
            urls << tracker.url;
        QVERIFY2(urls.contains(u"http://127.0.0.1:1/announce"_qs), qPrintable(urls.join(u' ')));
        // DHT, PeX and LSD come first, on tier -1.
        QCOMPARE(trackers.first().tier, -1);
    }

    void files()
    {
        const QList<File> files = wait(m_client->files(m_seeding.infoHash));
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
    }

    void webSeeds() { QCOMPARE(wait(m_client->webSeeds(m_seeding.infoHash)), QList<WebSeed>()); }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    int failures = 0;
    for (const Flavor flavor : {Flavor::Bookworm45, Flavor::Trixie51}) {
        TestRecordsRealServers test(flavor);
        failures += QTest::qExec(&test, argc, argv);
    }
    return failures;
}

#include "tst_records_realservers.moc"
