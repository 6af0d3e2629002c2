#include "api/Endpoint.h"
#include "core/AppContext.h"
#include "support/Await.h"
#include "support/ConnectedServer.h"
#include "support/NotificationService.h"
#include "support/TorrentFactory.h"

#include <QFile>
#include <QTest>

using Flavor = QbtServer::Flavor;
using QuilloTest::wait;
namespace T = API::Endpoint::TntManagement;

// What finished while Quillo was closed, told once it starts again, on each real server.
class TestSnapshotRealServers : public QObject
{
    Q_OBJECT

public:
    explicit TestSnapshotRealServers(Flavor flavor)
        : m_flavor(flavor)
    {
    }

private:
    const Flavor m_flavor;

    // Added stopped, without its data: 4.5 says pausedDL, 5.x stoppedDL.
    static bool downloading(TntModel::State state)
    {
        return state == TntModel::State::pausedDL || state == TntModel::State::stoppedDL;
    }

private Q_SLOTS:
    void finishedWhileAway()
    {
        std::unique_ptr<ConnectedServer> server;
        QUILLO_CONNECT(server, m_flavor);
        // Two torrents whose data is elsewhere, stopped, and one complete.
        const QbtServer::DataDir data = server->server().makeDataDir();
        const QbtServer::DataDir empty = server->server().makeDataDir();
        const auto first = TorrentFactory::singleFile(data.localPath, u"first.bin"_qs, 40'000);
        const auto second = TorrentFactory::singleFile(data.localPath, u"second.bin"_qs, 40'000);
        const auto complete = TorrentFactory::singleFile(data.localPath, u"complete.bin"_qs, 40'000);
        for (const auto &[made, dir] : {std::pair(first, empty), std::pair(second, empty), std::pair(complete, data)}) {
            wait(server->client().perform(T::add(TorrentFactory::multipartBody(
                {TorrentFactory::torrentPart(made), {"savepath", dir.serverPath.toUtf8()}, {"paused", "true"},
                 {"stopped", "true"}}))));
        }
        // A stopped torrent is not checked when added: its data is found by a recheck, once the server
        // has it (adding ends after the answer).
        QTRY_VERIFY_WITH_TIMEOUT(!server->torrent(complete.infoHash).isEmpty(), 20'000);
        wait(server->client().perform(T::recheck({complete.infoHash})));
        const TntCollection &before = server->context().tntCollection();
        const auto shown = [&before] {
            QStringList states;
            for (qsizetype row = 0; row < before.size(); ++row)
                states << before.at(row).name() + u' ' + tntModelStateText(before.at(row).state()) + u' '
                        + QString::number(before.at(row).progress());
            return states.join(u", ");
        };
        QTRY_VERIFY2_WITH_TIMEOUT(before.size() == 3 && before.find(first.infoHash)
                                      && downloading(before.find(first.infoHash)->state())
                                      && downloading(before.find(second.infoHash)->state())
                                      && before.find(complete.infoHash)->progress() == 1.0,
                                  qPrintable(shown()), 20'000);

        NotificationService service;
        QVERIFY(service.publish());
        server->reopen([&] {
            // The data arrives while Quillo is closed, and the server finds it complete.
            for (const auto &made : {first, second})
                QVERIFY(QFile::copy(made.contentPath, empty.localPath + u'/' + made.name));
            wait(server->client().perform(T::recheck({first.infoHash, second.infoHash})));
            QTRY_VERIFY_WITH_TIMEOUT(server->torrent(first.infoHash).value(u"progress").toDouble() == 1.0
                                         && server->torrent(second.infoHash).value(u"progress").toDouble() == 1.0
                                         && !server->torrent(first.infoHash).value(u"state").toString().startsWith(u"checking")
                                         && !server->torrent(second.infoHash).value(u"state").toString().startsWith(u"checking"),
                                     20'000);
        });
        QTRY_COMPARE(service.received.size(), 1);
        QCOMPARE(service.received.first().summary, u"2 downloads completed while Quillo was closed"_qs);
        QCOMPARE(service.received.first().body, u"\"first.bin\"\n\"second.bin\""_qs);
        QVERIFY(server->context().isCurrent());
        QTest::qWait(300); // a storm of single notifications would come with the same answer
        QCOMPARE(service.received.size(), 1);
        service.withdraw();
    }
};

QUILLO_PER_FLAVOR_MAIN(TestSnapshotRealServers)
#include "tst_snapshot_realservers.moc"
