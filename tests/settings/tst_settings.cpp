#include "settings/AppSettings.h"
#include "settings/PathResolution.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

Q_DECLARE_METATYPE(std::optional<QByteArray>)

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

    // A settings file holds whatever a crash or a hand left there: numbers are held to their bounds.
    void storedNumbersAreBounded_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<int>("refresh");
        QTest::addColumn<int>("increase");
        QTest::addColumn<int>("window");
        QTest::newRow("in range") << QByteArray("3000\n2000\n10") << 3000 << 2000 << 10;
        QTest::newRow("zero and negative") << QByteArray("0\n-1\n0") << 500 << 0 << 1;
        QTest::newRow("absurd") << QByteArray("99999999999\n99999999999\n2000000000") << 60'000 << 60'000 << 60;
    }

    void storedNumbersAreBounded()
    {
        QFETCH(QByteArray, stored);
        const QList<QByteArray> values = stored.split('\n');
        QFile ini(iniPath());
        QVERIFY(ini.open(QIODevice::WriteOnly));
        ini.write("[General]\nrefreshInterval=" + values[0] + "\nintervalIncreaseValue=" + values[1]
                  + "\ndataTransferRateAvgCoefficient=" + values[2] + "\n");
        ini.close();
        UserDefaults defaults(iniPath());
        AppSettings settings(defaults);
        QTEST(settings.refreshInterval(), "refresh");
        QTEST(settings.intervalIncreaseValue(), "increase");
        QTEST(settings.avgCoefficient(), "window");
        // A setter is held to the same bounds.
        settings.setAvgCoefficient(values[2].toInt());
        QTEST(settings.avgCoefficient(), "window");
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

    void storedRefreshMode_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QVariant>("followServer");
        QTest::addColumn<RefreshMode>("read");
        QTest::newRow("nothing stored") << QVariant() << QVariant() << RefreshMode::adaptive;
        QTest::newRow("fixed") << QVariant(0) << QVariant(true) << RefreshMode::fixed;
        QTest::newRow("out of range") << QVariant(3) << QVariant() << RefreshMode::adaptive;
        QTest::newRow("not a number") << QVariant(QStringLiteral("server")) << QVariant() << RefreshMode::adaptive;
        // Before there was a mode.
        QTest::newRow("followed the server") << QVariant() << QVariant(true) << RefreshMode::server;
        QTest::newRow("did not follow the server") << QVariant() << QVariant(false) << RefreshMode::adaptive;
    }

    void storedRefreshMode()
    {
        QFETCH(QVariant, stored);
        QFETCH(QVariant, followServer);
        QFETCH(RefreshMode, read);
        UserDefaults defaults(iniPath());
        if (stored.isValid())
            defaults.setValue(K::refreshMode, stored);
        if (followServer.isValid())
            defaults.setValue(K::setRefreshIntervalAuto, followServer);
        QCOMPARE(AppSettings(defaults).refreshMode(), read);
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
            PathMap share{.remotePath = QStringLiteral("/downloads/"), .bookmarkData = QByteArray("/mnt/nas")};
            settings.setPathMapping({share});
            share.remotePath = QStringLiteral("/data/"); // edited in place: the same mapping
            settings.setPathMapping({share});
        }
        UserDefaults reopened(iniPath());
        const AppSettings settings(reopened);
        QCOMPARE(settings.refreshInterval(), 5000);
        QVERIFY(!settings.showTntAddingWindow());
        QCOMPARE(settings.selectedSound(), QStringLiteral("Glass"));
        QCOMPARE(settings.updateCheckInterval(), UpdateInterval::day);
        QCOMPARE(settings.pathMapping().size(), 1);
        QCOMPARE(settings.pathMapping().constFirst().remotePath, QStringLiteral("/data/"));
        QCOMPARE(settings.pathMapping().constFirst().bookmarkData, std::optional(QByteArray("/mnt/nas")));
    }

    void pathMapFromStoredText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("read");
        QTest::addColumn<QString>("remotePath");
        QTest::addColumn<std::optional<QByteArray>>("bookmark");
        const auto row = [](const char *name, const QString &text, bool read, const QString &remote,
                            std::optional<QByteArray> bookmark) {
            QTest::newRow(name) << text << read << remote << bookmark;
        };
        row("remote and bookmark", u"/data/||L21udC9uYXM="_qs, true, u"/data/"_qs, QByteArray("/mnt/nas"));
        row("no bookmark", u"/data/||"_qs, true, u"/data/"_qs, QByteArray());
        row("split at the first separator", u"/a||b||"_qs, true, u"/a"_qs, std::nullopt);
        row("bookmark not base64", u"/data||%%%"_qs, true, u"/data"_qs, std::nullopt);
        row("no separator", u"/data"_qs, false, QString(), std::nullopt);
    }

    void pathMapFromStoredText()
    {
        QFETCH(QString, text);
        const std::optional<PathMap> map = PathMap::fromStoredText(text);
        QTEST(map.has_value(), "read");
        if (!map)
            return;
        QTEST(map->remotePath, "remotePath");
        QTEST(map->bookmarkData, "bookmark");
        QCOMPARE(PathMap::fromStoredText(map->storedText())->remotePath, map->remotePath);
    }

    void pathResolution_data()
    {
        using Maps = QList<std::pair<QString, QString>>; // remote path, local folder under the test's own
        using O = PathResolution::Outcome;
        QTest::addColumn<Maps>("maps");
        QTest::addColumn<QString>("remotePath");
        QTest::addColumn<bool>("serverIsLocal");
        QTest::addColumn<O>("outcome");
        QTest::addColumn<QString>("expected"); // under the test's folder, or as it stands when absolute
        const Maps twoPrefixes{{u"/data"_qs, u"A"_qs}, {u"/data/movies"_qs, u"B"_qs}};
        QTest::newRow("first match wins over a longer later one")
            << twoPrefixes << u"/data/movies/x"_qs << false << O::found << u"A/movies/x"_qs;
        QTest::newRow("a plain text prefix") << Maps{{u"/data"_qs, u"A"_qs}} << u"/database/x"_qs << false << O::found
                                             << u"A/base/x"_qs;
        QTest::newRow("remote path with its slash") << Maps{{u"/downloads/"_qs, u"A"_qs}}
                                                    << u"/downloads/show/ep1.mkv"_qs << false << O::found
                                                    << u"A/show/ep1.mkv"_qs;
        QTest::newRow("the folder itself") << Maps{{u"/downloads"_qs, u"A"_qs}} << u"/downloads/"_qs << false
                                           << O::found << u"A"_qs;
        QTest::newRow("case matters") << Maps{{u"/downloads"_qs, u"A"_qs}} << u"/Downloads/x"_qs << false
                                      << O::notMapped << QString();
        QTest::newRow("a local server's paths are its own")
            << twoPrefixes << u"/data/movies/x"_qs << true << O::found << u"/data/movies/x"_qs;
        QTest::newRow("a share not mounted") << Maps{{u"/data"_qs, u"unmounted"_qs}} << u"/data/x"_qs << false
                                             << O::notMounted << u"unmounted"_qs;
        QTest::newRow("a server on Windows") << Maps{{u"D:\\Downloads"_qs, u"A"_qs}}
                                             << u"D:\\Downloads\\show\\ep1.mkv"_qs << false << O::found
                                             << u"A/show/ep1.mkv"_qs;
    }

    void pathResolution()
    {
        using Maps = QList<std::pair<QString, QString>>;
        QFETCH(Maps, maps);
        QFETCH(QString, remotePath);
        QFETCH(bool, serverIsLocal);
        QFETCH(PathResolution::Outcome, outcome);
        QFETCH(QString, expected);
        QTemporaryDir root;
        QDir(root.path()).mkpath(u"A"_qs);
        QDir(root.path()).mkpath(u"B"_qs);
        QList<PathMap> pathMaps;
        for (const auto &[remote, local] : maps)
            pathMaps.append({.remotePath = remote, .bookmarkData = root.filePath(local).toUtf8()});
        if (outcome == PathResolution::Outcome::notMapped)
            QTest::ignoreMessage(QtCriticalMsg, qPrintable(u"Failed to find path mapping for "_qs + remotePath));
        if (outcome == PathResolution::Outcome::notMounted)
            QTest::ignoreMessage(QtWarningMsg, qPrintable(u"Folder not mounted: "_qs + root.filePath(expected)));

        const PathResolution resolved = PathResolution::resolve(pathMaps, remotePath, serverIsLocal);
        QCOMPARE(resolved.outcome, outcome);
        QCOMPARE(PathResolution::isMapped(pathMaps, remotePath, serverIsLocal), outcome != PathResolution::Outcome::notMapped);
        if (outcome == PathResolution::Outcome::found)
            QCOMPARE(resolved.localPath, expected.startsWith(u'/') ? expected : root.filePath(expected));
        if (outcome == PathResolution::Outcome::notMounted)
            QCOMPARE(resolved.localFolder, root.filePath(expected));
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
