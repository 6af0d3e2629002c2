#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "daemon/DaemonCommand.h"
#include "daemon/LocalDaemonCredentials.h"
#include "daemon/LocalDaemonInstaller.h"
#include "daemon/ProbeSession.h"
#include "daemon/TerminalRunner.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/FakeServer.h"
#include "support/Files.h"
#include "support/QbtServer.h"
#include "support/RecordingRunner.h"

#include <QProcess>
#include <QStandardPaths>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

using QuilloTest::RecordingRunner;
using QuilloTest::wait;
using Answer = ProbeSession::Answer;
using Login = ProbeSession::Login;
using Response = FakeServer::Response;
using Kind = LocalDaemonInstaller::Phase::Kind;

Q_DECLARE_METATYPE(ProbeSession::Answer)
Q_DECLARE_METATYPE(ProbeSession::Login)

namespace {

// A port nothing listens on: it was free a moment ago.
int unusedPort()
{
    QTcpServer server;
    return server.listen(QHostAddress::LocalHost, 0) ? server.serverPort() : 0;
}

} // namespace

class TestLocalDaemon : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private Q_SLOTS:
    void passwordDraw()
    {
        const auto first = LocalDaemonCredentials::generate();
        const auto second = LocalDaemonCredentials::generate();
        QVERIFY(first && second);
        QCOMPARE(first->password.size(), LocalDaemonCredentials::passwordLength);
        for (const QChar character : first->password + second->password)
            QVERIFY2(LocalDaemonCredentials::alphabet().contains(character), qPrintable(first->password));
        QVERIFY(first->password != second->password);
        QVERIFY(first->passwordHash.startsWith(u"@ByteArray(") && first->passwordHash.endsWith(u')'));
        QVERIFY(first->passwordHash != second->passwordHash);
    }

    // The real proof of the hash's form: qBittorrent lets the generated password in, and only it.
    void hashAcceptedByQbittorrent_data()
    {
        QTest::addColumn<bool>("rightPassword");
        QTest::addColumn<Login>("expected");
        QTest::newRow("generated password") << true << Login::accepted;
        QTest::newRow("another password") << false << Login::rejected;
    }

    void hashAcceptedByQbittorrent()
    {
        QFETCH(bool, rightPassword);
        QFETCH(Login, expected);
        const auto credentials = LocalDaemonCredentials::generate();
        QVERIFY(credentials);
        auto started = QbtServer::start(QbtServer::Flavor::Bookworm45, {.passwordHash = credentials->passwordHash});
        QUILLO_REQUIRE_SERVER(started);
        const QString password = rightPassword ? credentials->password : LocalDaemonCredentials::generate()->password;
        ProbeSession probe;
        QCOMPARE(wait(probe.logIn(started.server->webPort(), QStringLiteral("admin"), password)), expected);
    }

    // Uninstalling stops the daemon through its own API while the password is still known.
    void shutDownStopsQbittorrent()
    {
        auto started = QbtServer::start(QbtServer::Flavor::Bookworm45);
        QUILLO_REQUIRE_SERVER(started);
        const API::UserCredentials admin = started.server->credentials();
        ProbeSession probe;
        QVERIFY(wait(probe.shutDown(started.server->webPort(), admin.username, admin.password)));
        QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo::exists(QStringLiteral("/proc/%1").arg(started.server->processId()))
                                     || started.server->processId() == 0,
                                 20'000);
    }

    // Run through bash for real: every element arrives as it was, whatever quotes it holds.
    void commandQuoting_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("hash");
        QTest::newRow("plain") << QStringLiteral("scripts") << QStringLiteral("@ByteArray(c2FsdA==:a2V5)");
        QTest::newRow("single quotes") << QStringLiteral("it's Quillo's") << QStringLiteral("@ByteArray('a:'b')");
        QTest::newRow("shell words") << QStringLiteral("$HOME `id` \\n; \"x\"") << QStringLiteral("a'\\''b $(id)");
    }

    void commandQuoting()
    {
        QFETCH(QString, folder);
        QFETCH(QString, hash);
        QVERIFY(QDir(m_dir.path()).mkpath(folder));
        const QString script = QuilloTest::writeFile(m_dir.path() + u'/' + folder, QStringLiteral("args.sh"),
                                                     "printf '%s\\n' \"$0\" \"$@\"\n");
        QString command = DaemonCommand::install(script, 8085, hash);
        QVERIFY(command.startsWith(u"clear; "));
        QProcess bash;
        bash.setProcessEnvironment(QProcessEnvironment());
        bash.start(QStringLiteral("/bin/bash"), {QStringLiteral("-c"), command});
        QVERIFY(bash.waitForFinished());
        const QStringList expected = {script,       QStringLiteral("install"),         QStringLiteral("--arch"),
                                      DaemonCommand::processor(), QStringLiteral("--port"), QStringLiteral("8085"),
                                      QStringLiteral("--username"), QStringLiteral("quillo"),
                                      QStringLiteral("--password-hash"), hash};
        QCOMPARE(QString::fromUtf8(bash.readAllStandardOutput()), expected.join(u'\n') + u'\n');
    }

    // What answers on a port tells whether qBittorrent, something else or nothing is there.
    void probe_data()
    {
        QTest::addColumn<std::optional<Response>>("response"); // none: nothing listens
        QTest::addColumn<Answer>("expected");
        QTest::newRow("qBittorrent's version") << std::optional(Response::text(200, "v4.5.2")) << Answer::qbittorrent;
        QTest::newRow("401") << std::optional(Response::text(401, "Unauthorized")) << Answer::refusing;
        QTest::newRow("403") << std::optional(Response::text(403, "Forbidden")) << Answer::refusing;
        QTest::newRow("another server's page") << std::optional(Response::text(200, "<html>")) << Answer::otherServer;
        QTest::newRow("another server's 404") << std::optional(Response::text(404, "Not Found")) << Answer::otherServer;
        QTest::newRow("silent listener") << std::optional(Response::stallForever()) << Answer::none;
        QTest::newRow("nothing") << std::optional<Response>() << Answer::none;
    }

    void probe()
    {
        QFETCH(std::optional<Response>, response);
        QFETCH(Answer, expected);
        FakeServer server;
        server.setHandler([response](const FakeServer::Request &) { return *response; });
        const int port = response ? server.port() : unusedPort();
        ProbeSession probe;
        QCOMPARE(wait(probe.probe(port)), expected);
    }

    // Each failure before the connection: its text, whether the script was started, and no
    // connection or password left behind.
    void failures_data()
    {
        QTest::addColumn<bool>("scriptThere");
        QTest::addColumn<QString>("heldBy"); // "", "qBittorrent" or "silence"
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("runs");
        QTest::newRow("script missing") << false << QString()
                                        << QStringLiteral("The installer script is missing from the installation.") << 0;
        const QString range = QStringLiteral("No free port found in range @PORT@–@PORT@. ");
        QTest::newRow("port answered by qBittorrent") << true << QStringLiteral("qBittorrent") << range << 0;
        QTest::newRow("port held by a silent listener") << true << QStringLiteral("silence") << range << 0;
        QTest::newRow("daemon never answers")
            << true << QString() << QStringLiteral("qBittorrent didn't respond. Check the terminal window for errors.") << 1;
    }

    void failures()
    {
        QFETCH(bool, scriptThere);
        QFETCH(QString, heldBy);
        QFETCH(QString, message);
        QFETCH(int, runs);
        FakeServer busy;
        busy.setHandler([heldBy](const FakeServer::Request &) {
            return heldBy == u"silence" ? Response::stallForever() : Response::text(200, "v4.5.2");
        });
        const int port = heldBy.isEmpty() ? unusedPort() : busy.port();
        UserDefaults defaults(m_dir.filePath(QStringLiteral("failures.ini")));
        KeychainStore keychain;
        AppContext context(defaults, keychain);
        RecordingRunner runner;
        const QString script = scriptThere ? QuilloTest::writeFile(m_dir.path(), QStringLiteral("qbt-daemon.sh"), "")
                                           : m_dir.filePath(QStringLiteral("absent.sh"));
        LocalDaemonInstaller installer(context, runner, script);
        installer.setPortRange(port, port);
        installer.setPollInterval(std::chrono::milliseconds(1));
        int lastAttempt = 0;
        connect(&installer, &LocalDaemonInstaller::phaseChanged, this,
                [&] { lastAttempt = std::max(lastAttempt, installer.phase().attempt); });
        installer.install();
        QTRY_COMPARE_WITH_TIMEOUT(installer.phase().kind, Kind::failed, 30'000);
        message.replace(QStringLiteral("@PORT@"), QString::number(port));
        QVERIFY2(installer.phase().message.startsWith(message), qPrintable(installer.phase().message));
        QCOMPARE(runner.commands.size(), runs);
        QCOMPARE(lastAttempt, runs ? LocalDaemonInstaller::maxPollAttempts : 0);
        QVERIFY(context.clientConfigurations().isEmpty());
    }

    // With a user systemd (a stand-in systemctl here), the daemon starts through a unit that
    // systemd reads as meant, even from a folder whose name holds a blank and a percent sign.
    void systemdUnit()
    {
        QTemporaryDir root;
        const QString bin = root.filePath(QStringLiteral("bin"));
        QVERIFY(QDir().mkpath(bin) && QDir().mkpath(root.filePath(QStringLiteral("home"))));
        const QString calls = root.filePath(QStringLiteral("systemctl-calls"));
        const QString systemctl = QuilloTest::writeFile(bin, QStringLiteral("systemctl"),
                                                        "#!/bin/sh\necho \"$*\" >>\"$CALLS\"\n");
        QFile::setPermissions(systemctl, QFile::ReadOwner | QFile::ExeOwner);
        QProcessEnvironment environment;
        environment.insert(QStringLiteral("PATH"), bin + QStringLiteral(":/usr/bin:/bin"));
        environment.insert(QStringLiteral("HOME"), root.filePath(QStringLiteral("home")));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), root.filePath(QStringLiteral("data 100%")));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), root.filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("CALLS"), calls);
        const auto script = [&](const QStringList &arguments) {
            QProcess bash;
            bash.setProcessEnvironment(environment);
            bash.start(QStringLiteral("/bin/bash"), QStringList{QStringLiteral(QUILLO_DAEMON_SCRIPT)} + arguments);
            return bash.waitForFinished() && bash.exitCode() == 0;
        };
        const auto called = [&] {
            QFile file(calls);
            return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        };
        const QString unit = root.filePath(QStringLiteral("config/systemd/user/quillo-qbittorrent.service"));

        QVERIFY(script({QStringLiteral("install"), QStringLiteral("--arch"), QStringLiteral("x86_64"),
                        QStringLiteral("--port"), QStringLiteral("8080"), QStringLiteral("--username"),
                        QStringLiteral("quillo"), QStringLiteral("--password-hash"), QStringLiteral("@ByteArray(a:b)")}));
        QVERIFY(QFile::exists(unit));
        QVERIFY(!QFile::exists(root.filePath(QStringLiteral("config/autostart/quillo-qbittorrent.desktop"))));
        QVERIFY2(called().contains(u"--user enable --now quillo-qbittorrent.service"), qPrintable(called()));
        if (const QString analyze = QStandardPaths::findExecutable(QStringLiteral("systemd-analyze")); !analyze.isEmpty()) {
            QProcess verify;
            verify.setProcessChannelMode(QProcess::MergedChannels);
            verify.start(analyze, {QStringLiteral("verify"), unit});
            QVERIFY(verify.waitForFinished());
            const QByteArray said = verify.readAll();
            QVERIFY2(verify.exitCode() == 0 && said.isEmpty(), said.constData());
        }

        QVERIFY(script({QStringLiteral("uninstall")}));
        QVERIFY(!QFile::exists(unit));
        QVERIFY(called().contains(u"--user disable quillo-qbittorrent.service"));
    }

    // A reinstall whose daemon refuses the new password keeps the connection and its old password.
    void reinstallRejected()
    {
        FakeServer daemon;
        daemon.setHandler([](const FakeServer::Request &request) {
            return Response::text(200, request.target.endsWith("/auth/login") ? "Fails." : "v4.5.2");
        });
        UserDefaults defaults(m_dir.filePath(QStringLiteral("rejected.ini")));
        KeychainStore keychain;
        AppContext context(defaults, keychain);
        ClientConfiguration local;
        local.name = LocalDaemonInstaller::connectionName();
        local.host = ProbeSession::host();
        local.port = daemon.port();
        local.isLocal = true;
        const API::UserCredentials old{.username = QStringLiteral("quillo"), .password = QStringLiteral("old")};
        QVERIFY(wait(keychain.save(local, old)));
        context.addConfiguration(local);
        RecordingRunner runner;
        LocalDaemonInstaller installer(context, runner,
                                       QuilloTest::writeFile(m_dir.path(), QStringLiteral("qbt-daemon.sh"), ""));
        installer.setPollInterval(std::chrono::milliseconds(1));

        installer.install();
        QTRY_COMPARE_WITH_TIMEOUT(installer.phase().kind, Kind::failed, 30'000);
        QCOMPARE(installer.phase().message,
                 QStringLiteral("qBittorrent didn't accept the new password. Check the terminal window for errors."));
        QCOMPARE(installer.port(), local.port);
        QVERIFY(runner.commands.first().contains(QStringLiteral("'--port' '%1'").arg(daemon.port())));
        QCOMPARE(context.clientConfigurations().size(), 1);
        QCOMPARE(wait(keychain.read(local))->password, old.password);
        QVERIFY(!installer.isRestartPending());
    }

    // No terminal: the user is asked to paste the command; one found runs it with bash.
    void terminal()
    {
        QTemporaryDir bin;
        TerminalRunner none({bin.path()});
        QCOMPARE(none.run(QStringLiteral("true")), CommandRunner::Result::automationDenied);

        // gnome-terminal runs what follows "--".
        const QString ran = bin.filePath(QStringLiteral("ran"));
        const QString fake = QuilloTest::writeFile(bin.path(), QStringLiteral("gnome-terminal"),
                                                   "#!/bin/sh\n[ \"$1\" = -- ] && shift && exec \"$@\" </dev/null\n");
        QFile::setPermissions(fake, QFile::ReadOwner | QFile::ExeOwner);
        TerminalRunner found({bin.path()});
        QCOMPARE(found.run(QStringLiteral("echo it ran >'%1'").arg(ran)), CommandRunner::Result::launched);
        QTRY_VERIFY(QFile::exists(ran));
    }
};

QTEST_GUILESS_MAIN(TestLocalDaemon)
#include "tst_localdaemon.moc"
