#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "daemon/LocalDaemonInstaller.h"
#include "daemon/LocalDaemonUninstaller.h"
#include "daemon/TerminalRunner.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/Files.h"
#include "support/QbtServer.h"

#include <QDir>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using QuilloTest::wait;
using Kind = LocalDaemonInstaller::Phase::Kind;

namespace {

// Runs the command at once, as a terminal would, in a home of its own. Without a runtime folder
// there is no user systemd: the daemon starts through the XDG autostart entry.
class DirectRunner : public CommandRunner
{
public:
    explicit DirectRunner(const QString &root)
        : m_root(root)
    {
    }

    Result run(const QString &command) override
    {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment environment;
        environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
        environment.insert(QStringLiteral("TERM"), QStringLiteral("dumb"));
        environment.insert(QStringLiteral("HOME"), m_root + QStringLiteral("/home"));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), m_root + QStringLiteral("/data"));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_root + QStringLiteral("/config"));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_root + QStringLiteral("/run"));
        process->setProcessEnvironment(environment);
        process->setProcessChannelMode(QProcess::ForwardedChannels);
        process->start(QStringLiteral("/bin/bash"), {QStringLiteral("-c"), command});
        m_processes.push_back(std::move(process));
        return Result::launched;
    }

    bool allSucceeded()
    {
        for (const auto &process : m_processes) {
            if (process->state() != QProcess::NotRunning)
                process->waitForFinished(60'000);
            if (process->state() != QProcess::NotRunning || process->exitStatus() != QProcess::NormalExit
                || process->exitCode() != 0)
                return false;
        }
        return true;
    }

private:
    QString m_root;
    std::vector<std::unique_ptr<QProcess>> m_processes;
};

// Four ports in a row that nothing listens on a moment ago.
int freeRange()
{
    for (int attempt = 0; attempt < 20; ++attempt) {
        QTcpServer first;
        if (!first.listen(QHostAddress::LocalHost, 0) || first.serverPort() > 65000)
            continue;
        QTcpServer next[3];
        bool all = true;
        for (int i = 0; i < 3; ++i)
            all = all && next[i].listen(QHostAddress::LocalHost, static_cast<quint16>(first.serverPort() + i + 1));
        if (all)
            return first.serverPort();
    }
    return 0;
}

// The test's own recipe: the daemon stays on loopback, whatever qBittorrent's defaults are.
QByteArray safeSettings(int peerPort)
{
    return QByteArrayLiteral("[Preferences]\nConnection\\ResolvePeerCountries=false\n\n[BitTorrent]\n"
                             "Session\\DHTEnabled=false\nSession\\LSDEnabled=false\nSession\\PeXEnabled=false\n"
                             "Session\\Interface=lo\nSession\\InterfaceName=lo\nSession\\InterfaceAddress=127.0.0.1\n"
                             "Session\\AnonymousModeEnabled=true\nSession\\Port=")
        + QByteArray::number(peerPort) + QByteArrayLiteral("\n\n[Network]\nPortForwardingEnabled=false\n");
}

} // namespace

// Installs, reinstalls and removes a real qbittorrent-nox 4.5.2 with the real script, against a
// real Secret Service.
class TestLocalDaemonEndToEnd : public QObject
{
    Q_OBJECT

    QTemporaryDir m_root;

    QString state() const { return m_root.filePath(QStringLiteral("data/quillo/qbittorrent")); }
    QString autostartEntry() const { return m_root.filePath(QStringLiteral("config/autostart/quillo-qbittorrent.desktop")); }

    qint64 daemonPid() const
    {
        QFile file(state() + QStringLiteral("/qbittorrent-nox.pid"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
    }

    static bool isRunning(qint64 pid) { return pid > 0 && QFileInfo::exists(QStringLiteral("/proc/%1").arg(pid)); }

private Q_SLOTS:
    void cleanup()
    {
        // A daemon left by a failed step is stopped by its own process id.
        if (const qint64 pid = daemonPid(); isRunning(pid))
            ::kill(static_cast<pid_t>(pid), SIGKILL);
    }

    void installReinstallUninstall()
    {
        if (!QFileInfo(QStringLiteral("/usr/bin/qbittorrent-nox")).isExecutable()) {
            if (QbtServer::realServersRequired())
                QFAIL("qbittorrent-nox is missing");
            QSKIP("qbittorrent-nox is missing");
        }
        const int firstPort = freeRange();
        QTcpServer peer;
        QVERIFY(firstPort > 0 && peer.listen(QHostAddress::LocalHost, 0));
        const QString configFolder = state() + QStringLiteral("/profile/qBittorrent/config");
        QVERIFY(QDir().mkpath(configFolder) && QDir().mkpath(m_root.filePath(QStringLiteral("run"))));
        QuilloTest::writeFile(configFolder, QStringLiteral("qBittorrent.conf"), safeSettings(peer.serverPort()));
        peer.close();

        UserDefaults defaults(m_root.filePath(QStringLiteral("Quillo.ini")));
        KeychainStore keychain;
        AppContext context(defaults, keychain);
        DirectRunner runner(m_root.path());
        LocalDaemonInstaller installer(context, runner, QStringLiteral(QUILLO_DAEMON_SCRIPT));
        installer.setPortRange(firstPort, firstPort + 3);
        installer.setPollInterval(std::chrono::milliseconds(200));

        installer.install();
        QTRY_COMPARE_WITH_TIMEOUT(installer.phase().kind, Kind::finished, 60'000);
        QVERIFY(runner.allSucceeded());
        QCOMPARE(context.clientConfigurations().size(), 1);
        const ClientConfiguration local = context.clientConfigurations().first();
        QCOMPARE(local.name, QStringLiteral("This Computer"));
        QCOMPARE(local.host, QStringLiteral("localhost"));
        QVERIFY(local.isLocal && local.port >= firstPort && local.port <= firstPort + 3);
        QVERIFY(context.clientConfiguration() && context.clientConfiguration()->id == local.id);
        QTRY_VERIFY_WITH_TIMEOUT(context.isAuthorized() && context.isPolling(), 30'000);
        const auto firstCredentials = wait(keychain.read(local));
        QVERIFY(firstCredentials && firstCredentials->username == u"quillo");
        QVERIFY(QFile::exists(autostartEntry()));
        QVERIFY(!QFile::exists(m_root.filePath(QStringLiteral("config/systemd/user/quillo-qbittorrent.service"))));
        const qint64 firstDaemon = daemonPid();
        QVERIFY(isRunning(firstDaemon));

        // Reinstall: the same connection and port, a new daemon and password, no polling meanwhile.
        int suspendedRounds = 0;
        bool polledMeanwhile = false;
        connect(&installer, &LocalDaemonInstaller::phaseChanged, this, [&] {
            if (installer.isRestartPending()) {
                ++suspendedRounds;
                polledMeanwhile = polledMeanwhile || context.isPolling();
            }
        });
        installer.install();
        QTRY_COMPARE_WITH_TIMEOUT(installer.phase().kind, Kind::finished, 60'000);
        QVERIFY(runner.allSucceeded());
        QVERIFY(suspendedRounds > 0 && !polledMeanwhile);
        QCOMPARE(context.clientConfigurations().size(), 1);
        QCOMPARE(context.clientConfigurations().first().port, local.port);
        const auto secondCredentials = wait(keychain.read(local));
        QVERIFY(secondCredentials && secondCredentials->password != firstCredentials->password);
        QVERIFY(!isRunning(firstDaemon));
        QVERIFY(isRunning(daemonPid()));
        QTRY_VERIFY_WITH_TIMEOUT(context.isAuthorized() && context.isPolling(), 30'000);

        // Uninstall: nothing left but the downloads and qBittorrent's settings.
        const qint64 secondDaemon = daemonPid();
        LocalDaemonUninstaller uninstaller(context, runner, QStringLiteral(QUILLO_DAEMON_SCRIPT));
        QCOMPARE(wait(uninstaller.uninstall()), LocalDaemonUninstaller::Outcome::removed);
        QVERIFY(runner.allSucceeded());
        QTRY_VERIFY(!isRunning(secondDaemon));
        QVERIFY(context.clientConfigurations().isEmpty() && !context.clientConfiguration());
        QVERIFY(!wait(keychain.read(local)));
        QVERIFY(!QFile::exists(autostartEntry()));
        QVERIFY(!QFile::exists(state() + QStringLiteral("/run-qbittorrent")));
        QVERIFY(QFileInfo(m_root.filePath(QStringLiteral("home/Torrents"))).isDir());
        QFile settings(configFolder + QStringLiteral("/qBittorrent.conf"));
        QVERIFY(settings.open(QIODevice::ReadOnly));
        // The script changes only its own settings: the test's recipe survived both installs.
        QVERIFY(settings.readAll().contains("Session\\DHTEnabled=false"));
    }
};

QTEST_GUILESS_MAIN(TestLocalDaemonEndToEnd)
#include "tst_localdaemon_e2e.moc"
