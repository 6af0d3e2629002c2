#include "model/AnswerPace.h"
#include "model/GlobalTransferInfo.h"
#include "model/Poller.h"
#include "settings/AppSettings.h"

#include <QCoroTimer>
#include <QHash>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

// A job that takes a little while, and records how many of its kind run at once.
struct Probe
{
    int started = 0;
    int running = 0;
    QHash<QString, int> runningByName;
    int mostAtOnce = 0; // of one name: jobs of one loop must never overlap
    QStringList order;

    // The coroutine is a plain function: its arguments live in its frame, unlike the captures of
    // a coroutine lambda, which live in a closure the caller may already have dropped.
    static QCoro::Task<> run(Probe *probe, QString name)
    {
        ++probe->started;
        ++probe->running;
        probe->mostAtOnce = std::max(probe->mostAtOnce, ++probe->runningByName[name]);
        probe->order << name;
        QTimer timer;
        timer.start(5ms);
        co_await timer;
        --probe->running;
        --probe->runningByName[name];
    }

    Poller::Job job(const QString &name)
    {
        return [this, name] { return run(this, name); };
    }
};

// A loop of its own that must run a few rounds: by then anything the poller under test would
// wrongly run at once has run too, however slow the machine.
void letAnotherLoopRun()
{
    Probe sentinel;
    Poller poller;
    poller.start(0ms, {sentinel.job(QStringLiteral("sentinel"))});
    QTRY_VERIFY(sentinel.started >= 3);
    poller.stop();
    QTRY_COMPARE(sentinel.running, 0);
}

} // namespace

class TestPoller : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void jobsRunInOrderNeverOverlapping()
    {
        Probe probe;
        Poller poller;
        poller.start(0ms, {probe.job(QStringLiteral("maindata")), probe.job(QStringLiteral("peers"))});
        QTRY_VERIFY(probe.started >= 6);
        QCOMPARE(probe.running, 1);
        poller.stop();
        QTRY_COMPARE(probe.running, 0); // a job under way finishes; the probe must outlive it
        QCOMPARE(probe.mostAtOnce, 1);
        QCOMPARE(probe.order.mid(0, 4), (QStringList{u"maindata"_qs, u"peers"_qs, u"maindata"_qs, u"peers"_qs}));
    }

    void startingAgainLeavesOneLoop()
    {
        Probe probe;
        Poller poller;
        poller.start(0ms, {probe.job(QStringLiteral("a"))});
        poller.start(0ms, {probe.job(QStringLiteral("b"))});
        QTRY_VERIFY(probe.started >= 10);
        poller.stop();
        QTRY_COMPARE(probe.running, 0);
        QCOMPARE(probe.mostAtOnce, 1);
        // The first loop's job under way finishes; nothing of that loop starts after the restart.
        QCOMPARE(probe.order.count(u"a"_qs), 1);
    }

    void endedLoopRunsNothingMore_data()
    {
        QTest::addColumn<bool>("destroyed");
        QTest::newRow("stopped") << false;
        QTest::newRow("destroyed") << true;
    }

    void endedLoopRunsNothingMore()
    {
        QFETCH(bool, destroyed);
        Probe probe;
        auto poller = std::make_unique<Poller>();
        poller->start(0ms, {probe.job(QStringLiteral("a"))});
        QTRY_VERIFY(probe.started >= 2);
        if (destroyed)
            poller.reset(); // most likely while a job is running
        else
            poller->stop();
        QTRY_COMPARE(probe.running, 0);
        const int after = probe.started;
        letAnotherLoopRun();
        QCOMPARE(probe.started, after);
        QVERIFY(!poller || !poller->isRunning());
    }

    void newIntervalWaitsForThePauseUnderWay()
    {
        Probe probe;
        Poller poller;
        poller.start(1h, {probe.job(QStringLiteral("a"))});
        QTRY_COMPARE(probe.running, 0); // the first round is over: the hour-long pause has begun
        poller.setPollingInterval(0ms); // the hour-long pause under way is not cut short
        letAnotherLoopRun();
        QCOMPARE(probe.started, 1);
        QCOMPARE(poller.pollingInterval(), 0ms);
        poller.stop();
    }

    // Right after a sync by hand, the loop begins with the pause.
    void firstRoundAfterAPause()
    {
        Probe probe;
        Poller poller;
        poller.start(1h, {probe.job(QStringLiteral("a"))}, Poller::FirstRound::afterPause);
        letAnotherLoopRun();
        QCOMPARE(probe.started, 0);
        poller.start(1h, {probe.job(QStringLiteral("a"))});
        QTRY_COMPARE(probe.started, 1);
        QTRY_COMPARE(probe.running, 0);
    }

    void interval_data()
    {
        using M = RefreshMode;
        QTest::addColumn<RefreshMode>("mode");
        QTest::addColumn<qint64>("server");
        QTest::addColumn<QList<int>>("answers");
        QTest::addColumn<int>("increase");
        QTest::addColumn<bool>("background");
        QTest::addColumn<int>("expected");
        const QList<int> none;
        QTest::newRow("setting, foreground") << M::fixed << qint64(1500) << none << 1000 << false << 2500;
        QTest::newRow("setting, background") << M::fixed << qint64(1500) << none << 1000 << true << 3500;
        QTest::newRow("no increase") << M::fixed << qint64(1500) << none << 0 << true << 2500;
        QTest::newRow("setting, slow server") << M::fixed << qint64(1500) << QList<int>{900} << 0 << false << 2500;
        QTest::newRow("server's own") << M::server << qint64(1500) << none << 1000 << false << 1500;
        QTest::newRow("server's own, background") << M::server << qint64(1500) << none << 1000 << true << 2500;
        // Never back to back, never stalled: what the server says is held to the setting's bounds.
        QTest::newRow("server names none") << M::server << qint64(0) << none << 1000 << false << 2500;
        QTest::newRow("server's negative") << M::server << qint64(-5) << none << 1000 << false << 500;
        QTest::newRow("server's absurd") << M::server << qint64(1) << none << 1000 << false << 500;
        QTest::newRow("server's a month") << M::server << qint64(2'592'000'000) << none << 1000 << true << 61'000;
        // Adapting: seven times the answer time, never below the setting nor above the bounds.
        QTest::newRow("adaptive, no answer yet") << M::adaptive << qint64(1500) << none << 1000 << false << 2500;
        QTest::newRow("adaptive, quick") << M::adaptive << qint64(1500) << QList<int>{10} << 1000 << false << 2500;
        QTest::newRow("adaptive, slow") << M::adaptive << qint64(1500) << QList<int>{900} << 1000 << false << 6300;
        QTest::newRow("adaptive, slow, background") << M::adaptive << qint64(0) << QList<int>{900} << 1000 << true
                                                    << 7300;
        QTest::newRow("adaptive, slower at once") << M::adaptive << qint64(0) << QList<int>{10, 900} << 0 << false
                                                  << 6300;
        // A quicker answer moves the smoothed time a quarter of the way: 1200 - 800 / 4.
        QTest::newRow("adaptive, quick again") << M::adaptive << qint64(0) << QList<int>{1200, 400} << 0 << false
                                               << 7000;
        QTest::newRow("adaptive, quick for a while") << M::adaptive << qint64(0) << QList<int>{900, 100, 100, 100, 100}
                                                     << 0 << false << 2500;
        QTest::newRow("adaptive, a minute") << M::adaptive << qint64(0) << QList<int>{30'000} << 1000 << true
                                            << 61'000;
    }

    void interval()
    {
        QFETCH(RefreshMode, mode);
        QFETCH(qint64, server);
        QFETCH(QList<int>, answers);
        QFETCH(int, increase);
        QFETCH(bool, background);
        QFETCH(int, expected);
        QTemporaryDir dir;
        UserDefaults defaults(dir.filePath(QStringLiteral("Quillo.ini")));
        AppSettings settings(defaults);
        settings.setRefreshInterval(2500);
        settings.setIntervalIncreaseValue(increase);
        settings.setRefreshMode(mode);
        GlobalTransferInfo transfer;
        API::SGlobalTransferInfo state;
        state.refreshInterval = server;
        transfer.update(state);
        AnswerPace pace;
        for (const int ms : answers)
            pace.record(std::chrono::milliseconds(ms));
        QCOMPARE(Poller::intervalFor(settings, transfer, pace, background), std::chrono::milliseconds(expected));
    }
};

QTEST_GUILESS_MAIN(TestPoller)
#include "tst_poller.moc"
