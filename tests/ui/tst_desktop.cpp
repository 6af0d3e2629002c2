#include "support/ScriptedTorrents.h"
#include "support/Widgets.h"
#include "ui/CommandLine.h"
#include "ui/MainWindow.h"
#include "ui/ThemedIcon.h"
#include "ui/TrayIcon.h"
#include "ui/UpdatePresenter.h"

#include <qpa/qwindowsysteminterface.h>

#include <QDir>
#include <QApplication>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>

namespace {

QByteArray withRates()
{
    QByteArray answer = ScriptedTorrents::mainData();
    answer.replace(
        R"("connection_status":"connected")",
        R"("connection_status":"connected","dl_info_speed":3072,"up_info_speed":0,"use_alt_speed_limits":true)");
    return answer;
}

// The colour of a picture's most opaque pixel: its ink.
QColor inkOf(const QIcon &icon, QIcon::Mode mode)
{
    const QImage image = icon.pixmap(QSize(32, 32), mode).toImage().convertToFormat(QImage::Format_ARGB32);
    QColor ink(Qt::transparent);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() > ink.alpha())
                ink = pixel;
        }
    }
    return ink;
}

} // namespace

// What a desktop user meets outside the window: the command line and the tray icon.
class TestDesktop : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptedTorrents> m_server;
    std::unique_ptr<MainWindow> m_window;

private Q_SLOTS:
    void commandLine_data()
    {
        QTest::addColumn<QStringList>("message");
        QTest::addColumn<QStringList>("sources");
        QTest::addColumn<QList<bool>>("minimizedFileLink");
        QTest::addColumn<QString>("error");

        const QString magnet = QStringLiteral("magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567");
        const QString file = QUrl::fromLocalFile(QDir::current().filePath(QStringLiteral("a.torrent"))).toString();
        QTest::newRow("torrents") << QStringList{magnet, QStringLiteral("a.torrent")} << QStringList{magnet, file}
                                  << QList<bool>{false, false, false} << QString();
        QTest::newRow("info-hash becomes a magnet")
            << QStringList{magnet.mid(20)} << QStringList{magnet} << QList<bool>{false, false, false} << QString();
        QTest::newRow("options") << QStringList{QStringLiteral("--add-link"), QStringLiteral("--minimized")}
                                 << QStringList() << QList<bool>{true, false, true} << QString();
        QTest::newRow("unknown option") << QStringList{QStringLiteral("--frobnicate")} << QStringList() << QList<bool>()
                                        << QStringLiteral("Unknown option 'frobnicate'.");
    }

    // A second launch's message read as the running Quillo reads it, and made again the same.
    void commandLine()
    {
        QFETCH(QStringList, message);
        QFETCH(QStringList, sources);
        QFETCH(QList<bool>, minimizedFileLink);
        QFETCH(QString, error);

        QString why;
        const std::optional<CommandLine> read = CommandLine::read(message, &why);
        QCOMPARE(why, error);
        QCOMPARE(read.has_value(), error.isEmpty());
        if (!read)
            return;
        QStringList shown;
        for (const QUrl &url : read->sources)
            shown << url.toString();
        QCOMPARE(shown, sources);
        QCOMPARE((QList<bool>{read->minimized, read->addFile, read->addLink}), minimizedFileLink);
        const std::optional<CommandLine> again = CommandLine::read(read->message());
        QVERIFY(again);
        QCOMPARE(again->sources, read->sources);
        QCOMPARE((QList<bool>{again->minimized, again->addFile, again->addLink}), minimizedFileLink);
    }

    void init()
    {
        m_server = std::make_unique<ScriptedTorrents>("2.11.0", withRates());
        m_window = std::make_unique<MainWindow>(*m_server->context);
    }

    void cleanup()
    {
        m_window.reset();
        m_server.reset();
    }

    void trayMenu()
    {
        TrayIcon tray(*m_server->context, *m_window, true);
        tray.start(false);
        QVERIFY(m_window->isVisible());
        QTRY_COMPARE(tray.icon().toolTip(), QStringLiteral("Quillo\n▼ 3.0 KiB/s   ▲ 0 B/s"));
        QAction *altSpeed = QuilloTest::menuItem(tray.menu(), QStringLiteral("Alternative Speed Limits"));
        QVERIFY(altSpeed && altSpeed->isEnabled());
        QVERIFY(altSpeed->isChecked());

        for (const auto &[item, path] :
             {std::pair{"Start All Torrents", "/api/v2/torrents/start?hashes=all"},
              std::pair{"Stop All Torrents", "/api/v2/torrents/stop?hashes=all"},
              std::pair{"Alternative Speed Limits", "/api/v2/transfer/toggleSpeedLimitsMode?"}}) {
            QAction *action = QuilloTest::menuItem(tray.menu(), QString::fromLatin1(item));
            QVERIFY2(action, item);
            action->trigger();
            QTRY_COMPARE(m_server->lastRequest(), QByteArray(path));
        }

        // Show and hide, titled by what the window does now.
        Q_EMIT tray.menu().aboutToShow();
        QAction *hide = QuilloTest::menuItem(tray.menu(), QStringLiteral("Hide Quillo"));
        QVERIFY(hide);
        hide->trigger();
        QVERIFY(!m_window->isVisible());
        Q_EMIT tray.menu().aboutToShow();
        QCOMPARE(hide->text(), QStringLiteral("Show Quillo"));
        hide->trigger();
        QVERIFY(m_window->isVisible());

        QuilloTest::wait(m_server->context->logOut());
        QTRY_COMPARE(tray.icon().toolTip(), QStringLiteral("Quillo\nNot connected"));
        QVERIFY(!altSpeed->isEnabled());
    }

    void closing_data()
    {
        QTest::addColumn<bool>("closeToTray");
        QTest::addColumn<bool>("trayAvailable");
        QTest::addColumn<bool>("byWindowManager");
        QTest::addColumn<bool>("closes");

        QTest::newRow("off") << false << true << true << true;
        QTest::newRow("to the tray") << true << true << true << false;
        QTest::newRow("no tray to close to") << true << false << true << true;
        QTest::newRow("Quit closes it") << true << true << false << true;
    }

    // "Close to tray": the window manager's close hides the window where a tray shows it again.
    void closing()
    {
        QFETCH(bool, closeToTray);
        QFETCH(bool, trayAvailable);
        QFETCH(bool, byWindowManager);
        m_server->defaults.setValue(UserDefaultsKey::closeToTray, closeToTray);
        TrayIcon tray(*m_server->context, *m_window, trayAvailable);
        tray.start(false);
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));

        const bool closed = byWindowManager
                                ? QWindowSystemInterface::handleCloseEvent<QWindowSystemInterface::SynchronousDelivery>(
                                      m_window->windowHandle())
                                : m_window->close();
        QTEST(closed, "closes");
        QVERIFY(!m_window->isVisible());
    }

    void checkForUpdates_data()
    {
        QTest::addColumn<QByteArray>("feed");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("offersPage");
        QTest::addColumn<QMessageBox::Icon>("icon");

        QTest::newRow("newer") << QByteArray("[{\"tag_name\":\"v99.0.0\",\"html_url\":\"https://example.org/v99\"}]")
                               << QStringLiteral("Quillo 99.0.0 is available.") << true << QMessageBox::Information;
        QTest::newRow("up to date") << QByteArray("[{\"tag_name\":\"v0.0.1\"}]")
                                    << QStringLiteral("Quillo is up to date.") << false << QMessageBox::Information;
        QTest::newRow("failed") << QByteArray("<html>")
                                << QStringLiteral("Could not check for updates: the release feed is not valid JSON "
                                                  "(illegal value).")
                                << false << QMessageBox::Warning;
    }

    // Help › Check for Updates tells the outcome over the window.
    void checkForUpdates()
    {
        QFETCH(QByteArray, feed);
        FakeServer releases;
        releases.answerAll(FakeServer::Response::json(feed));
        UpdatePresenter presenter(QUrl(QStringLiteral("http://127.0.0.1:%1/releases").arg(releases.port())), *m_window);
        QSignalSpy shown(&presenter, &UpdatePresenter::shown);
        presenter.check();
        QVERIFY(shown.wait());
        QMessageBox *message = presenter.message();
        QVERIFY(message && message->isVisible());
        QTEST(message->text(), "text");
        QTEST(QuilloTest::button(*message, QStringLiteral("Open Release Page")) != nullptr, "offersPage");
        QTEST(message->icon(), "icon");
    }

    void symbolicIconsFollowThePalette_data()
    {
        QTest::addColumn<QString>("picture");
        QTest::addColumn<QIcon::Mode>("mode");
        QTest::addColumn<bool>("inked"); // drawn in the palette's colour for the mode
        QTest::newRow("sidebar, normal") << "sidebar/folder" << QIcon::Normal << true;
        QTest::newRow("toolbar, disabled") << "actions/start" << QIcon::Disabled << true;
        QTest::newRow("selected row") << "sidebar/tag" << QIcon::Selected << true;
        QTest::newRow("the application's icon keeps its colours")
            << "hicolor/scalable/apps/app.quillo.Quillo" << QIcon::Normal << false;
    }

    // One icon object, two palettes in turn (light, then dark as when the desktop switches while
    // Quillo runs): a monochrome picture is drawn in each one's text colour.
    void symbolicIconsFollowThePalette()
    {
        QFETCH(QString, picture);
        QFETCH(QIcon::Mode, mode);
        QFETCH(bool, inked);
        const QIcon icon = themedIcon({}, picture);
        const QPalette original = QApplication::palette();
        for (const QColor &text : {QColor(0x10, 0x20, 0x30), QColor(0xf0, 0xe0, 0xd0)}) {
            QPalette palette = original;
            palette.setColor(QPalette::Active, QPalette::WindowText, text);
            palette.setColor(QPalette::Disabled, QPalette::WindowText, text.darker(150));
            palette.setColor(QPalette::Active, QPalette::HighlightedText, text.lighter(130));
            QApplication::setPalette(palette);
            const QColor expected = mode == QIcon::Disabled ? text.darker(150)
                                    : mode == QIcon::Selected ? text.lighter(130)
                                                              : text;
            const QColor ink = inkOf(icon, mode);
            QCOMPARE(ink.alpha(), 255);
            QCOMPARE(ink.rgb() == expected.rgb(), inked);
        }
        QApplication::setPalette(original);
    }

    void startMinimized_data()
    {
        QTest::addColumn<bool>("trayAvailable");
        QTest::newRow("in the tray") << true;
        QTest::newRow("no tray: on the task bar") << false;
    }

    void startMinimized()
    {
        QFETCH(bool, trayAvailable);
        TrayIcon tray(*m_server->context, *m_window, trayAvailable);
        tray.start(true);
        QCOMPARE(m_window->isVisible(), !trayAvailable);
        QCOMPARE(m_window->isMinimized(), !trayAvailable);
        tray.showWindow();
        QVERIFY(m_window->isVisible());
        QVERIFY(!m_window->isMinimized());
    }
};

QTEST_MAIN(TestDesktop)
#include "tst_desktop.moc"
