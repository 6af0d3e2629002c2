#include "settings/AppSettings.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using K = UserDefaultsKey;

class TestSettings : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString iniPath() const { return m_dir.filePath(QStringLiteral("Quillo.ini")); }

private Q_SLOTS:
    void init() { QFile::remove(iniPath()); }

    void freshInstallReadsRegisteredDefaults()
    {
        UserDefaults defaults(iniPath());
        const AppSettings settings(defaults);
        QCOMPARE(settings.refreshInterval(), 2000);
        QCOMPARE(settings.intervalIncreaseValue(), 1000);
        QCOMPARE(settings.avgCoefficient(), 5);
        QVERIFY(settings.showTntAddingWindow());
        QVERIFY(!settings.autoDeleteTntFile());
        QVERIFY(settings.animateDockIcon());
        QCOMPARE(settings.selectedSound(), QStringLiteral("Funk"));
        QCOMPARE(settings.updateCheckInterval(), UpdateInterval::weak);
        // Registered values are read, never written.
        QVERIFY(!defaults.contains(K::refreshInterval));
        QCOMPARE(defaults.integerValue(K::refreshInterval), 2000);
    }

    void storedUpdateInterval_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<UpdateInterval>("read");
        QTest::newRow("disabled") << QVariant(0) << UpdateInterval::disabled;
        QTest::newRow("day") << QVariant(1) << UpdateInterval::day;
        QTest::newRow("mounce") << QVariant(3) << UpdateInterval::mounce;
        QTest::newRow("out of range") << QVariant(7) << UpdateInterval::weak;
        QTest::newRow("negative") << QVariant(-1) << UpdateInterval::weak;
        QTest::newRow("not a number") << QVariant(QStringLiteral("daily")) << UpdateInterval::weak;
    }

    void storedUpdateInterval()
    {
        QFETCH(QVariant, stored);
        QFETCH(UpdateInterval, read);
        UserDefaults defaults(iniPath());
        defaults.setValue(K::updateCheckInterval, stored);
        QCOMPARE(AppSettings(defaults).updateCheckInterval(), read);
    }

    void changesAreWrittenThroughAndSurviveARestart()
    {
        {
            UserDefaults defaults(iniPath());
            AppSettings settings(defaults);
            settings.setRefreshInterval(5000);
            settings.setShowTntAddingWindow(false);
            settings.setSelectedSound(QStringLiteral("Glass"));
            settings.setUpdateCheckInterval(UpdateInterval::day);
        }
        UserDefaults reopened(iniPath());
        const AppSettings settings(reopened);
        QCOMPARE(settings.refreshInterval(), 5000);
        QVERIFY(!settings.showTntAddingWindow());
        QCOMPARE(settings.selectedSound(), QStringLiteral("Glass"));
        QCOMPARE(settings.updateCheckInterval(), UpdateInterval::day);
    }

    void handEditedValuesFallBack()
    {
        QFile file(iniPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[General]\nrefreshInterval=fast\nanimateDockIcon=maybe\n");
        file.close();
        UserDefaults defaults(iniPath());
        const AppSettings settings(defaults);
        QCOMPARE(settings.refreshInterval(), 2000);
        QVERIFY(settings.animateDockIcon());
    }

    void averagingWindowChangeIsAnnounced()
    {
        UserDefaults defaults(iniPath());
        AppSettings settings(defaults);
        QSignalSpy announced(&settings, &AppSettings::dataTransferRateAvgCoefficientDidChange);
        settings.setAvgCoefficient(5); // unchanged: nothing to announce
        settings.setAvgCoefficient(10);
        QCOMPARE(announced.size(), 1);
        QCOMPARE(announced.first().first().toInt(), 10);
        QCOMPARE(defaults.integerValue(K::dataTransferRateAvgCoefficient), 10);
    }
};

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
