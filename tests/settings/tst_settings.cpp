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

    void fallsBackToRegisteredDefaults_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("fresh install") << QByteArray();
        QTest::newRow("hand-edited values") << QByteArray("[General]\nrefreshInterval=fast\nanimateDockIcon=maybe\n");
    }

    void fallsBackToRegisteredDefaults()
    {
        QFETCH(QByteArray, file);
        if (!file.isEmpty()) {
            QFile ini(iniPath());
            QVERIFY(ini.open(QIODevice::WriteOnly));
            ini.write(file);
        }
        UserDefaults defaults(iniPath());
        const AppSettings settings(defaults);
        QCOMPARE(settings.refreshInterval(), 2000);
        QVERIFY(settings.animateDockIcon());
        QCOMPARE(settings.selectedSound(), QStringLiteral("Funk"));
        // Registered values are read, never written.
        QCOMPARE(defaults.contains(K::refreshInterval), !file.isEmpty());
    }

    void storedUpdateInterval_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<UpdateInterval>("read");
        QTest::newRow("disabled") << QVariant(0) << UpdateInterval::disabled;
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
