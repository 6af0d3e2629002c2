#include "api/Endpoint.h"
#include "core/AppContext.h"
#include "support/Await.h"
#include "support/ConnectedServer.h"
#include "support/TorrentFactory.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTest>

#include <functional>

using Flavor = QbtServer::Flavor;
using QuilloTest::eventually;
using QuilloTest::wait;
using State = TntModel::State;
using Operation = std::function<QCoro::Task<>(AppContext &, const QString &hash)>;

Q_DECLARE_METATYPE(Operation)

// The app's torrent operations against real servers, whose words differ: 4.5 resumes and pauses,
// 5.1 and later start and stop. Each must change the real torrent; the table shows the expected
// state at once and the server's own after the next poll.
class TestTntOperations : public QObject
{
    Q_OBJECT

public:
    explicit TestTntOperations(Flavor flavor)
        : m_flavor(flavor)
    {}

private:
    const Flavor m_flavor;
    std::unique_ptr<ConnectedServer> m_server;
    QbtServer::DataDir m_data;
    TorrentFactory::Torrent m_changed; // what each row of operationsReachTheServer changes in turn

    AppContext &context() { return m_server->context(); }
    const TntModel *tnt(const QString &hash) { return context().tntCollection().find(hash); }

    // A seeded torrent the server has checked and holds complete.
    TorrentFactory::Torrent addSeeded(const QString &name)
    {
        const auto made = TorrentFactory::singleFile(m_data.localPath, name, 48'000);
        wait(context().client()->perform(API::Endpoint::TntManagement::add(TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(made), {"savepath", m_data.serverPath.toUtf8()}}))));
        [&] { QTRY_VERIFY_WITH_TIMEOUT(tnt(made.infoHash) && tnt(made.infoHash)->progress() == 1.0, 20'000); }();
        return made;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QUILLO_CONNECT(m_server, m_flavor);
        m_data = m_server->server().makeDataDir();
        m_changed = addSeeded(QStringLiteral("changed.bin"));
        wait(context().createCategory(QStringLiteral("Linux & BSD"), QString()));
    }

    void cleanupTestCase() { m_server.reset(); }

    void init() { context().dismissClientError(); }

    void stopAndStart()
    {
        const auto made = addSeeded(QStringLiteral("stopped.bin"));
        wait(context().stopTnts({made.infoHash}));
        const State stopped = m_flavor == Flavor::Bookworm45 ? State::pausedUP : State::stoppedUP;
        QCOMPARE(tnt(made.infoHash)->state(), stopped); // at once, before any poll
        context().forcePoll();
        QTest::qWait(1500);
        QCOMPARE(tnt(made.infoHash)->state(), stopped); // and the server agrees

        wait(context().startTnts({made.infoHash}));
        QTRY_VERIFY_WITH_TIMEOUT(TntModel::matches(tnt(made.infoHash)->state(), State::uploading) ||
                                     tnt(made.infoHash)->state() == State::stalledUP,
                                 10'000);
        QCOMPARE(m_server->alert(), QString());
    }

    void operationsReachTheServer_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QJsonObject>("shown"); // the fields the server lists for the torrent afterwards
        QTest::addColumn<QString>("arrived");   // a file that must then be there, under the data folder
        const auto row = [](const char *name, const Operation &operation, const QJsonObject &shown,
                            const QString &arrived = {}) { QTest::newRow(name) << operation << shown << arrived; };
        // In this order: each row changes what the one before set.
        row("force start", [](AppContext &c, const QString &h) { return c.setForceStart({h}, true); },
            {{u"force_start"_qs, true}});
        row("no force start", [](AppContext &c, const QString &h) { return c.setForceStart({h}, false); },
            {{u"force_start"_qs, false}});
        row("super seeding", [](AppContext &c, const QString &h) { return c.setSuperSeeding({h}, true); },
            {{u"super_seeding"_qs, true}});
        row("no super seeding", [](AppContext &c, const QString &h) { return c.setSuperSeeding({h}, false); },
            {{u"super_seeding"_qs, false}});
        row("automatic management", [](AppContext &c, const QString &h) { return c.setAutoManagement({h}, true); },
            {{u"auto_tmm"_qs, true}});
        row("manual management", [](AppContext &c, const QString &h) { return c.setAutoManagement({h}, false); },
            {{u"auto_tmm"_qs, false}});
        const Operation sequential = [](AppContext &c, const QString &h) { return c.toggleSequentialDownload({h}); };
        row("sequential", sequential, {{u"seq_dl"_qs, true}});
        row("not sequential", sequential, {{u"seq_dl"_qs, false}});
        const Operation firstLast = [](AppContext &c, const QString &h) { return c.toggleFirstLastPiecePrio({h}); };
        row("first and last pieces first", firstLast, {{u"f_l_piece_prio"_qs, true}});
        row("pieces in order", firstLast, {{u"f_l_piece_prio"_qs, false}});
        row("tags added",
            [](AppContext &c, const QString &h) { return c.addTags({h}, {u"keep"_qs, u"drop"_qs}); },
            {{u"tags"_qs, u"drop, keep"_qs}});
        row("tag removed", [](AppContext &c, const QString &h) { return c.removeTags({h}, {u"drop"_qs}); },
            {{u"tags"_qs, u"keep"_qs}});
        row("category", [](AppContext &c, const QString &h) { return c.setCategory({h}, u"Linux & BSD"_qs); },
            {{u"category"_qs, u"Linux & BSD"_qs}});
        row("renamed", [](AppContext &c, const QString &h) { return c.renameTnt(h, u"A & B + C = D é"_qs); },
            {{u"name"_qs, u"A & B + C = D é"_qs}});
        const QString moved = m_data.serverPath + QStringLiteral("/moved here & there");
        row("moved", [moved](AppContext &c, const QString &h) { return c.setLocation({h}, moved); },
            {{u"save_path"_qs, moved}}, QStringLiteral("moved here & there/changed.bin"));
    }

    void operationsReachTheServer()
    {
        QFETCH(Operation, operation);
        QFETCH(QJsonObject, shown);
        QFETCH(QString, arrived);
        wait(operation(context(), m_changed.infoHash));
        QCOMPARE(m_server->alert(), QString());
        QJsonObject now;
        const bool showing = eventually([&] {
            now = m_server->torrent(m_changed.infoHash);
            for (auto it = shown.begin(); it != shown.end(); ++it) {
                if (now.value(it.key()) != it.value())
                    return false;
            }
            return true;
        });
        QVERIFY2(showing, QJsonDocument(now).toJson(QJsonDocument::Compact).constData());
        if (!arrived.isEmpty())
            QVERIFY(eventually([&] { return QFileInfo::exists(m_data.localPath + u'/' + arrived); }));
    }

    void altSpeedFollowsTheServer()
    {
        const bool limited = context().serverState().useAltSpeedLimits();
        wait(context().toggleSpeedLimitsMode());
        QTRY_COMPARE_WITH_TIMEOUT(context().serverState().useAltSpeedLimits(), !limited, 10'000);
        wait(context().toggleSpeedLimitsMode());
        QTRY_COMPARE_WITH_TIMEOUT(context().serverState().useAltSpeedLimits(), limited, 10'000);
    }

    // Limits set through the context are what the server then reads back, 0 being none.
    void limitsReadBack_data()
    {
        QTest::addColumn<bool>("global");
        QTest::addColumn<TransferLimits::Direction>("direction");
        QTest::newRow("torrent download") << false << TransferLimits::Direction::down;
        QTest::newRow("torrent upload") << false << TransferLimits::Direction::up;
        QTest::newRow("global download") << true << TransferLimits::Direction::down;
        QTest::newRow("global upload") << true << TransferLimits::Direction::up;
    }

    void limitsReadBack()
    {
        QFETCH(bool, global);
        QFETCH(TransferLimits::Direction, direction);
        TransferLimits &limits = context().limits();
        const QString hash = m_changed.infoHash;
        for (const qint64 limit : {qint64(300 * 1024), qint64(0)}) {
            wait(global ? limits.setGlobalLimit(direction, limit)
                        : limits.setTntLimit(TntTargets::only({hash}), direction, limit));
            const std::optional<qint64> read =
                wait(global ? limits.globalLimit(direction) : limits.tntLimit({hash}, direction));
            QCOMPARE(read, std::optional(limit));
        }
        QCOMPARE(m_server->alert(), QString());
    }

    void removalStays_data()
    {
        QTest::addColumn<bool>("deleteFiles");
        QTest::newRow("from the list") << false;
        QTest::newRow("everywhere") << true;
    }

    void removalStays()
    {
        QFETCH(bool, deleteFiles);
        const auto made = addSeeded(QStringLiteral("remove-%1.bin").arg(deleteFiles));
        wait(context().removeTnts({made.infoHash}, deleteFiles));
        QVERIFY(!tnt(made.infoHash)); // gone from the table at once
        QVERIFY(eventually([&] { return QFileInfo::exists(made.contentPath) != deleteFiles; }));
        QVERIFY(m_server->torrent(made.infoHash).isEmpty());
        context().forcePoll();
        QTest::qWait(1000);
        QVERIFY(!tnt(made.infoHash)); // and it stays gone
        QCOMPARE(m_server->alert(), QString());
    }

    void priorityWithoutQueueingGivesTheServersReason()
    {
        wait(context().client()->perform(API::Endpoint::Application::setPreferences(R"({"queueing_enabled":false})")));
        context().setSelectedTnts({m_changed.infoHash});
        wait(context().increasePriority());
        QCOMPARE(m_server->alert(), QStringLiteral("Failed to increase torrent priority.|Torrent queueing is disabled!|"
                                                   "Torrent queueing must be enabled"));
    }

    // The last: the server is gone after it, and the connection ends here without an alert.
    void shutDownEndsTheServer()
    {
        context().dismissClientError();
        wait(context().shutDownServer());
        QTRY_VERIFY_WITH_TIMEOUT(!m_server->server().isRunning(), 20'000);
        QVERIFY(!context().isAuthorized());
        QTest::qWait(1000);
        QCOMPARE(m_server->alert(), QString());
        QCOMPARE(context().connectionLossCount(), 0);
    }
};

QUILLO_PER_FLAVOR_MAIN(TestTntOperations)

#include "tst_tntoperations.moc"
