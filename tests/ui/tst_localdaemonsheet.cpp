#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "settings/UserDefaults.h"
#include "support/Files.h"
#include "support/RecordingRunner.h"
#include "support/Widgets.h"
#include "ui/LocalDaemonFlow.h"
#include "ui/LocalDaemonSheet.h"
#include "ui/MainWindow.h"
#include "ui/WelcomeView.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

using QuilloTest::RecordingRunner;
using Kind = LocalDaemonInstaller::Phase::Kind;
using Result = CommandRunner::Result;

Q_DECLARE_METATYPE(CommandRunner::Result)

// The installer's sheet offscreen, over installers that never reach a real terminal.
class TestLocalDaemonSheet : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<UserDefaults> m_defaults;
    KeychainStore m_keychain;
    std::unique_ptr<AppContext> m_context;

    static int unusedPort()
    {
        QTcpServer server;
        return server.listen(QHostAddress::LocalHost, 0) ? server.serverPort() : 0;
    }

private Q_SLOTS:
    void initTestCase()
    {
        // No installed script is ever found: a click cannot start a real installation.
        qputenv("XDG_DATA_DIRS", m_dir.path().toUtf8());
        qputenv("XDG_DATA_HOME", m_dir.path().toUtf8());
    }

    void init()
    {
        m_defaults = std::make_unique<UserDefaults>(m_dir.filePath(QStringLiteral("Quillo.ini")));
        m_context = std::make_unique<AppContext>(*m_defaults, m_keychain);
    }

    void cleanup()
    {
        m_context.reset();
        m_defaults.reset();
    }

    // Each phase as the user reads it, and what "Try Again" and "Cancel" do there.
    void phases_data()
    {
        QTest::addColumn<bool>("scriptThere");
        QTest::addColumn<Result>("run");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("detail");
        QTest::addColumn<bool>("canTryAgain");
        QTest::newRow("waiting") << true << Result::launched << QStringLiteral("Waiting for qBittorrent to start…")
                                 << QStringLiteral("Attempt 1 of 40.") << false;
        QTest::newRow("no terminal") << true << Result::automationDenied
                                     << QStringLiteral("Quillo couldn't find a terminal to run the installation")
                                     << QStringLiteral("Open a terminal, paste the command with Ctrl+Shift+V and press "
                                                       "Return. Quillo connects to qBittorrent as soon as it starts.")
                                     << true;
        QTest::newRow("terminal failed") << true << Result::failed << QStringLiteral("qBittorrent wasn't installed")
                                         << QStringLiteral("Quillo couldn't open a terminal.") << true;
        QTest::newRow("script missing") << false << Result::launched << QStringLiteral("qBittorrent wasn't installed")
                                        << QStringLiteral("The installer script is missing from the installation.")
                                        << true;
    }

    void phases()
    {
        QFETCH(bool, scriptThere);
        QFETCH(Result, run);
        QFETCH(QString, status);
        QFETCH(QString, detail);
        QFETCH(bool, canTryAgain);
        QWidget window;
        auto *runner = new RecordingRunner(run);
        const QString script = scriptThere ? QuilloTest::writeFile(m_dir.path(), QStringLiteral("qbt-daemon.sh"), "")
                                           : m_dir.filePath(QStringLiteral("absent.sh"));
        LocalDaemonFlow flow(*m_context, &window, std::unique_ptr<CommandRunner>(runner), script);
        const int port = unusedPort();
        flow.installer().setPortRange(port, port);
        flow.installer().setPollInterval(std::chrono::minutes(1));
        LocalDaemonSheet *sheet = flow.install();
        QTRY_COMPARE(sheet->statusLabel()->text(), status);
        QVERIFY2(sheet->detailLabel()->text().contains(detail), qPrintable(sheet->detailLabel()->text()));
        QCOMPARE(sheet->tryAgainButton()->isVisible(), canTryAgain);
        if (run == Result::automationDenied)
            QCOMPARE(QApplication::clipboard()->text(), flow.installer().command());

        const qsizetype runs = runner->commands.size();
        if (canTryAgain) {
            sheet->tryAgainButton()->click();
            QTRY_COMPARE(runner->commands.size(), scriptThere ? runs + 1 : 0);
            QTRY_COMPARE(sheet->statusLabel()->text(), status);
        }
        sheet->cancelButton()->click();
        QTRY_VERIFY(!sheet->isVisible());
        QCOMPARE(flow.installer().phase().kind, Kind::idle);
    }

    // Removing asks first; the connection and its password go unless no terminal could be opened.
    void uninstall_data()
    {
        QTest::addColumn<Result>("run");
        QTest::addColumn<QString>("message"); // empty: none, the removal ran
        QTest::addColumn<bool>("connectionKept");
        QTest::newRow("removed") << Result::launched << QString() << false;
        QTest::newRow("no terminal") << Result::automationDenied << QStringLiteral("qBittorrent is stopped, but not removed")
                                     << false;
        QTest::newRow("terminal failed")
            << Result::failed << QStringLiteral("Quillo couldn't open a terminal. qBittorrent wasn't uninstalled.") << true;
    }

    void uninstall()
    {
        QFETCH(Result, run);
        QFETCH(QString, message);
        QFETCH(bool, connectionKept);
        ClientConfiguration local;
        local.name = QStringLiteral("This Computer");
        local.host = QStringLiteral("localhost");
        local.port = unusedPort();
        local.isLocal = true;
        m_context->addConfiguration(local);
        QWidget window;
        auto *runner = new RecordingRunner(run);
        const QString script = QuilloTest::writeFile(m_dir.path(), QStringLiteral("qbt-daemon.sh"), "");
        LocalDaemonFlow flow(*m_context, &window, std::unique_ptr<CommandRunner>(runner), script);

        QMessageBox *confirmation = flow.confirmUninstall();
        QCOMPARE(confirmation->text(), QStringLiteral("Uninstall qBittorrent from This Computer"));
        QVERIFY(confirmation->informativeText().contains(
            u"Downloaded files and qBittorrent settings are kept for a future installation."));
        QuilloTest::button(*confirmation, QStringLiteral("Delete"))->click();
        QTRY_COMPARE(runner->commands.size(), 1);
        QVERIFY(runner->commands.first().endsWith(u" 'uninstall'"));
        QTRY_COMPARE(m_context->clientConfigurations().isEmpty(), !connectionKept);
        const auto shown = [&window] {
            const auto boxes = window.findChildren<QMessageBox *>();
            return boxes.isEmpty() ? QString() : boxes.last()->text();
        };
        QTRY_COMPARE(shown(), message);
        if (run == Result::automationDenied)
            QCOMPARE(QApplication::clipboard()->text(), runner->commands.first());
    }

    // The welcome view's second choice opens the installer's sheet.
    void welcomeInstalls()
    {
        MainWindow window(*m_context);
        window.show();
        QPushButton *install = window.welcomeView()->installLocallyButton();
        QVERIFY(install->isEnabled());
        install->click();
        QTRY_VERIFY(window.findChild<LocalDaemonSheet *>() && window.findChild<LocalDaemonSheet *>()->isVisible());
        QTRY_COMPARE(window.localDaemon()->installer().phase().message,
                     QStringLiteral("The installer script is missing from the installation."));
    }
};

QTEST_MAIN(TestLocalDaemonSheet)
#include "tst_localdaemonsheet.moc"
