#include "model/GlobalTransferInfo.h"
#include "model/RateHistory.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTest>

using Samples = QList<qint64>;
using Seconds = QList<int>;

class TestTransferInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // The child of overflowStopsTheProgram: sums past 64 bits, which must never return.
        if (qEnvironmentVariableIsSet("QUILLO_OVERFLOW_CHILD")) {
            DataRateBuffer buffer;
            buffer.add(std::numeric_limits<qint64>::max());
            buffer.add(1);
            std::exit(0); // reached only if the overflow went unnoticed
        }
    }

    void overflowStopsTheProgram()
    {
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QUILLO_OVERFLOW_CHILD"), QStringLiteral("1"));
        child.setProcessEnvironment(environment);
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(QCoreApplication::applicationFilePath(), {});
        QVERIFY(child.waitForFinished(30'000));
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        QVERIFY(child.readAll().contains("64-bit overflow"));
    }

    void smoothedRate_data()
    {
        QTest::addColumn<int>("window");
        QTest::addColumn<Samples>("samples");
        QTest::addColumn<Samples>("shown");
        QTest::newRow("average rounded up") << 5 << Samples{100, 200, 301} << Samples{100, 150, 201};
        QTest::newRow("window slides") << 2 << Samples{100, 200, 400} << Samples{100, 150, 300};
        QTest::newRow("zero resets at once") << 5 << Samples{100, 200, 0, 50} << Samples{100, 150, 0, 50};
        QTest::newRow("negative resets too") << 5 << Samples{100, -1, 7} << Samples{100, 0, 7};
        QTest::newRow("window of one is raw") << 1 << Samples{100, 300, 5} << Samples{100, 300, 5};
        QTest::newRow("window of zero is raw") << 0 << Samples{100, 300} << Samples{100, 300};
    }

    void smoothedRate()
    {
        QFETCH(int, window);
        QFETCH(Samples, samples);
        QFETCH(Samples, shown);
        GlobalTransferInfo info;
        info.setAveragingWindow(window);
        Samples seen;
        for (const qint64 sample : samples) {
            API::SGlobalTransferInfo delta;
            delta.dlInfoSpeed = sample;
            info.update(delta);
            seen << info.dlInfoSpeed();
        }
        QCOMPARE(seen, shown);
    }

    void shrinkingTheWindowKeepsTheNewest()
    {
        DataRateBuffer buffer;
        for (const qint64 sample : {10, 20, 30, 40, 50})
            buffer.add(sample);
        buffer.setCapacity(2);
        QCOMPARE(buffer.count(), 2);
        QCOMPARE(buffer.runningSum(), 90);
        buffer.add(60);
        QCOMPARE(buffer.runningSum(), 110);
        QCOMPARE(buffer.shownRate(60), 55);
        buffer.setCapacity(4); // growing keeps what is there and the ring order
        buffer.add(70);
        buffer.add(80);
        QCOMPARE(buffer.runningSum(), 50 + 60 + 70 + 80);
        buffer.add(90);
        QCOMPARE(buffer.runningSum(), 60 + 70 + 80 + 90);
    }

    void deltaChangesOnlyWhatItCarries()
    {
        GlobalTransferInfo info;
        API::SGlobalTransferInfo full;
        full.dlInfoSpeed = 1000;
        full.upInfoSpeed = 10;
        full.connectionStatus = API::ConnectionStatus::connected;
        full.refreshInterval = 1500;
        full.globalRatio = QStringLiteral("1.25");
        full.dhtNodes = 0;
        QSignalSpy changed(&info, &GlobalTransferInfo::changed);
        QCOMPARE(info.update(full), GlobalTransferInfo::Fields(GlobalTransferInfo::DlInfoSpeed | GlobalTransferInfo::UpInfoSpeed
                                                                | GlobalTransferInfo::ConnectionStatusField
                                                                | GlobalTransferInfo::RefreshInterval | GlobalTransferInfo::GlobalRatio));
        API::SGlobalTransferInfo delta;
        delta.alltimeDl = 5;
        QCOMPARE(info.update(delta), GlobalTransferInfo::Fields(GlobalTransferInfo::AlltimeDl));
        QCOMPARE(info.dlInfoSpeed(), 1000); // no sample, no change
        QCOMPARE(info.update(delta), GlobalTransferInfo::Fields());
        QCOMPARE(changed.size(), 2);

        info.reset();
        QCOMPARE(info.alltimeDl(), 0);
        QCOMPARE(info.dlInfoSpeed(), 0);
        QCOMPARE(info.globalRatio(), QStringLiteral("0"));
        QCOMPARE(info.connectionStatus(), API::ConnectionStatus::connected);
        QCOMPARE(info.refreshInterval(), 1500);
    }

    // The history keeps the samples of its span back from the newest, at most maxSamples of them,
    // and never runs backwards.
    void rateHistoryBounds_data()
    {
        QTest::addColumn<int>("spanSeconds");
        QTest::addColumn<Seconds>("added");
        QTest::addColumn<Seconds>("kept");
        QTest::newRow("within the span") << 60 << Seconds{0, 30, 60} << Seconds{0, 30, 60};
        QTest::newRow("older than the span dropped") << 60 << Seconds{0, 30, 61, 95} << Seconds{61, 95};
        QTest::newRow("one long gap leaves the newest") << 60 << Seconds{0, 10, 500} << Seconds{500};
        QTest::newRow("an older sample ignored") << 60 << Seconds{10, 20, 15, 25} << Seconds{10, 20, 25};
        QTest::newRow("same instant kept") << 60 << Seconds{10, 10} << Seconds{10, 10};
    }

    void rateHistoryBounds()
    {
        QFETCH(int, spanSeconds);
        QFETCH(Seconds, added);
        QFETCH(Seconds, kept);
        RateHistory history{std::chrono::seconds(spanSeconds)};
        const auto start = RateHistory::Clock::time_point{};
        for (const int second : added)
            history.add({start + std::chrono::seconds(second), second, 2 * second, false});
        Seconds seen;
        for (const RateHistory::Sample &sample : history.samples()) {
            QCOMPARE(sample.up, 2 * sample.down);
            seen << static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(sample.at - start).count());
        }
        QCOMPARE(seen, kept);
    }

    void rateHistoryCountIsBounded()
    {
        RateHistory history{std::chrono::hours(1)};
        const auto start = RateHistory::Clock::time_point{};
        const auto added = static_cast<qint64>(RateHistory::maxSamples) + 10;
        for (qint64 at = 0; at < added; ++at)
            history.add({start + std::chrono::milliseconds(at), at, 0, false});
        QCOMPARE(history.samples().size(), RateHistory::maxSamples);
        QCOMPARE(history.samples().front().down, qint64{10});
        QCOMPARE(history.samples().back().down, added - 1);
    }
};

QTEST_GUILESS_MAIN(TestTransferInfo)
#include "tst_transferinfo.moc"
