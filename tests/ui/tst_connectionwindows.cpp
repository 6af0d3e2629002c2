#include "ConnectionFixture.h"
#include "api/Errors.h"
#include "core/ReconnectionCountdown.h"
#include "ui/ClientErrorPresenter.h"
#include "ui/LoginPrompt.h"
#include "ui/MainWindow.h"
#include "ui/ReconnectionOverlay.h"
#include "ui/ServerMenu.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

using API::AuthMethod;

namespace {

QStringList entries(const QMenu &menu)
{
    QStringList texts;
    for (const QAction *action : menu.actions()) {
        if (!action->text().isEmpty()) // sections are separators with a title
            texts << action->text();
    }
    return texts;
}

QAction *entry(const QMenu &menu, const QString &text)
{
    for (QAction *action : menu.actions()) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

QStringList buttonTexts(const QMessageBox &box)
{
    QStringList texts;
    for (const QAbstractButton *button : box.buttons())
        texts << button->text();
    texts.sort();
    return texts;
}

void loseConnection(AppContext &context, int times, const QString &message)
{
    for (int i = 0; i < times; ++i)
        context.reportSyncFailure(QStringLiteral("Sync"), std::make_exception_ptr(API::TransportError(
                                                              QNetworkReply::ConnectionRefusedError, message)));
}

} // namespace

class TestConnectionWindows : public QObject
{
    Q_OBJECT

    KeychainStore m_keychain;

private Q_SLOTS:
    // A login connection without stored credentials: selecting it asks for them.
    static LoginPrompt *askForLogin(ConnectionFixture &fixture, MainWindow &window)
    {
        const ClientConfiguration nas = fixture.add(QStringLiteral("Home NAS"));
        window.show();
        QuilloTest::wait(fixture.context->selectConfiguration(nas.id));
        return window.loginPrompt();
    }

    void loginPromptLogsIn()
    {
        ConnectionFixture fixture(m_keychain);
        MainWindow window(*fixture.context);
        LoginPrompt *prompt = askForLogin(fixture, window);
        QVERIFY(prompt && prompt->isVisible());
        QCOMPARE(prompt->autoLoginHelpLabel()->text(),
                 QStringLiteral("If you enable the Login automatically option, credentials will be safely stored in "
                                "the keychain. This allows you to connect to Home NAS without entering credentials "
                                "on any device."));
        QVERIFY(!prompt->apiKeyField());
        QVERIFY(!prompt->logInButton()->isEnabled());

        prompt->autoLoginToggle()->setChecked(false);
        QTest::keyClicks(prompt->usernameField(), QStringLiteral("admin"));
        QTest::keyClicks(prompt->passwordField(), QStringLiteral("secret"));
        QTest::mouseClick(prompt->logInButton(), Qt::LeftButton);
        QTRY_VERIFY(fixture.context->isPolling()); // connected, nothing left in flight
        QVERIFY(!window.loginPrompt() || !window.loginPrompt()->isVisible());
        QVERIFY(!fixture.context->clientConfiguration()->autoLogin);
    }

    void cancellingTheLoginLeavesTheConnectionSelected()
    {
        ConnectionFixture fixture(m_keychain);
        MainWindow window(*fixture.context);
        QTest::mouseClick(askForLogin(fixture, window)->cancelButton(), Qt::LeftButton);

        QTRY_VERIFY(!window.loginPrompt());
        QVERIFY(!fixture.context->isLoginPromptPresented());
        QCOMPARE(fixture.context->clientConfiguration()->name, QStringLiteral("Home NAS"));
        QVERIFY(!fixture.context->isAuthorized());
        QVERIFY(!fixture.context->clientError());
        QVERIFY(!window.errorPresenter()->alert());
        QCOMPARE(window.logInOutAction()->text(), QStringLiteral("Log In"));
        // With nothing stored, nothing was tried before the prompt.
        QVERIFY(std::none_of(fixture.server.requests().cbegin(), fixture.server.requests().cend(),
                             [](const auto &request) { return request.target.endsWith("/auth/login"); }));
    }

    void refusedLoginAlertsAndAsksAgain()
    {
        ConnectionFixture fixture(m_keychain);
        MainWindow window(*fixture.context);
        LoginPrompt *prompt = askForLogin(fixture, window);
        QTest::keyClicks(prompt->usernameField(), QStringLiteral("admin"));
        QTest::keyClicks(prompt->passwordField(), QStringLiteral("wrong"));
        QTest::mouseClick(prompt->logInButton(), Qt::LeftButton);

        QTRY_VERIFY(window.errorPresenter()->alert());
        const QMessageBox *alert = window.errorPresenter()->alert();
        const API::ClientError error = *fixture.context->clientError();
        QCOMPARE(alert->windowTitle(), QStringLiteral("Quillo"));
        QCOMPARE(alert->text(), QStringLiteral("Failed to login."));
        QCOMPARE(alert->informativeText(), error.description() + u'\n' + error.failureReason());
        QTRY_VERIFY(window.loginPrompt() && window.loginPrompt()->isVisible());
        alert->button(QMessageBox::Ok)->click();
        QVERIFY(!fixture.context->clientError());
    }

    void serverMenuListsConnections()
    {
        ConnectionFixture fixture(m_keychain);
        fixture.bypass = true;
        const ClientConfiguration nas = fixture.add(QStringLiteral("NAS & Co"), AuthMethod::none);
        fixture.add(QStringLiteral("Attic"), AuthMethod::none, 1);
        ServerMenu menu(*fixture.context);
        QCOMPARE(menu.title(), QStringLiteral("No Connection"));
        QCOMPARE(entries(menu),
                 QStringList({QStringLiteral("Servers"), QStringLiteral("NAS && Co — Not Connected"),
                              QStringLiteral("Attic — Not Connected"), QStringLiteral("This Computer"),
                              QStringLiteral("Install on This Computer…"), QStringLiteral("Add Connection…"),
                              QStringLiteral("Delete All Connections…"),
                              QStringLiteral("Alt-click a connection to delete it.")}));
        const QAction *install = entry(menu, QStringLiteral("Install on This Computer…"));
        QVERIFY(!install->isEnabled());
        QVERIFY(!install->toolTip().isEmpty());
        QVERIFY(!entry(menu, QStringLiteral("Alt-click a connection to delete it."))->isEnabled());

        QuilloTest::wait(fixture.context->selectConfiguration(nas.id));
        QTRY_VERIFY(entry(menu, QStringLiteral("NAS && Co — Connected")));
        QCOMPARE(menu.title(), QStringLiteral("NAS && Co"));
        QVERIFY(entry(menu, QStringLiteral("Attic — Not Connected")));
    }

    void serverMenuChoosesOrDeletes_data()
    {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<bool>("deletes");
        QTest::newRow("click") << Qt::KeyboardModifiers() << false;
        QTest::newRow("alt-click") << Qt::KeyboardModifiers(Qt::AltModifier) << true;
    }

    void serverMenuChoosesOrDeletes()
    {
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(bool, deletes);
        ConnectionFixture fixture(m_keychain);
        fixture.bypass = true;
        fixture.add(QStringLiteral("NAS"), AuthMethod::none);
        const ClientConfiguration attic = fixture.add(QStringLiteral("Attic"), AuthMethod::none);
        ServerMenu menu(*fixture.context);
        menu.popup(QPoint(10, 10));
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        QAction *atticEntry = entry(menu, QStringLiteral("Attic — Not Connected"));
        QTest::mouseClick(&menu, Qt::LeftButton, modifiers, menu.actionGeometry(atticEntry).center());

        if (deletes) {
            QTRY_COMPARE(fixture.context->clientConfigurations().size(), 1);
            QCOMPARE(fixture.context->clientConfigurations().first().name, QStringLiteral("NAS"));
            QVERIFY(!fixture.context->clientConfiguration());
        } else {
            QTRY_VERIFY(fixture.context->isPolling()); // connected, nothing left in flight
            QCOMPARE(fixture.context->clientConfiguration()->id, attic.id);
            QCOMPARE(fixture.context->clientConfigurations().size(), 2);
        }
    }

    void deleteAllAsksFirst_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<int>("remaining");
        QTest::newRow("cancel") << "Cancel" << 2;
        QTest::newRow("delete") << "Delete All" << 0;
    }

    void deleteAllAsksFirst()
    {
        QFETCH(QString, answer);
        QFETCH(int, remaining);
        ConnectionFixture fixture(m_keychain);
        fixture.add(QStringLiteral("NAS"));
        fixture.add(QStringLiteral("Attic"));
        MainWindow window(*fixture.context);
        entry(*window.serverMenu(), QStringLiteral("Delete All Connections…"))->trigger();

        auto *box = window.findChild<QMessageBox *>();
        QVERIFY(box);
        QCOMPARE(box->text(), QStringLiteral("Delete all remote connections?"));
        QCOMPARE(buttonTexts(*box), QStringList({QStringLiteral("Cancel"), QStringLiteral("Delete All")}));
        for (QAbstractButton *button : box->buttons()) {
            if (button->text() == answer)
                button->click();
        }
        QTRY_COMPARE(fixture.context->clientConfigurations().size(), remaining);
    }

    void overlayShowsTheLoss_data()
    {
        QTest::addColumn<int>("losses");
        QTest::addColumn<QString>("error");
        QTest::addColumn<QString>("errorText");
        QTest::addColumn<QString>("countdown");
        const auto row = [](const char *name, int losses, const char *error, const char *errorText, const char *countdown) {
            QTest::newRow(name) << losses << QString::fromUtf8(error) << QString::fromUtf8(errorText)
                                << QString::fromUtf8(countdown);
        };
        // Ten seconds more for every loss, up to the fifth; then it stops trying.
        row("first", 1, "Connection refused", "Connection refused", "Reconnecting in 10 s");
        row("third, no text", 3, "", "An unknown error has occurred", "Reconnecting in 30 s");
        row("fifth", 5, "Host unreachable", "Host unreachable", "Reconnecting in 50 s");
        row("sixth", 6, "Host unreachable", "Host unreachable", "Automatic reconnection stopped");
    }

    void overlayShowsTheLoss()
    {
        QFETCH(int, losses);
        QFETCH(QString, error);
        ConnectionFixture fixture(m_keychain);
        QWidget area;
        // Long ticks: nothing may count down while the texts are read.
        ReconnectionCountdown countdown(*fixture.context, std::chrono::hours(1));
        ReconnectionOverlay overlay(*fixture.context, countdown, &area);
        area.show();
        QVERIFY(!overlay.isVisible());

        loseConnection(*fixture.context, losses, error);
        QVERIFY(overlay.isVisible());
        QTEST(overlay.errorLabel()->text(), "errorText");
        QTEST(overlay.countdownLabel()->text(), "countdown");
    }

    void overlayReconnectsNow_data()
    {
        QTest::addColumn<bool>("serverBack");
        QTest::newRow("server back") << true;
        QTest::newRow("server still gone") << false;
    }

    void overlayReconnectsNow()
    {
        QFETCH(bool, serverBack);
        ConnectionFixture fixture(m_keychain);
        fixture.bypass = true;
        QuilloTest::wait(fixture.context->selectConfiguration(fixture.add(QStringLiteral("NAS"), AuthMethod::none).id));
        QWidget area;
        ReconnectionCountdown countdown(*fixture.context, std::chrono::hours(1));
        ReconnectionOverlay overlay(*fixture.context, countdown, &area);
        area.show();
        loseConnection(*fixture.context, 1, QStringLiteral("Connection refused"));
        if (!serverBack)
            fixture.server.answerAll(FakeServer::Response::dropConnection());

        QTest::mouseClick(overlay.reconnectButton(), Qt::LeftButton);
        QCOMPARE(overlay.reconnectButton()->text(), QStringLiteral("Reconnecting…"));
        QVERIFY(!overlay.reconnectButton()->isEnabled());
        QTRY_VERIFY(!fixture.context->isReconnecting());
        QCOMPARE(fixture.context->connectionLossCount(), serverBack ? 0 : 2);
        QCOMPARE(overlay.isVisible(), !serverBack);
        if (!serverBack) // a failed attempt counts as another loss, and waits longer
            QCOMPARE(overlay.countdownLabel()->text(), QStringLiteral("Reconnecting in 20 s"));
    }

    void countdownEndsInAReconnection()
    {
        ConnectionFixture fixture(m_keychain);
        fixture.bypass = true;
        QuilloTest::wait(fixture.context->selectConfiguration(fixture.add(QStringLiteral("NAS"), AuthMethod::none).id));
        ReconnectionCountdown countdown(*fixture.context, std::chrono::milliseconds(2));
        QList<int> shown;
        connect(&countdown, &ReconnectionCountdown::changed, this, [&] {
            if (fixture.context->connectionLossCount() > 0)
                shown << countdown.secondsLeft();
        });
        const auto probes = [&] {
            return std::count_if(fixture.server.requests().cbegin(), fixture.server.requests().cend(),
                                 [](const auto &request) { return request.target.endsWith("/app/version"); });
        };
        const auto probesBefore = probes();
        loseConnection(*fixture.context, 1, QStringLiteral("Connection refused"));

        QTRY_COMPARE(fixture.context->connectionLossCount(), 0);
        QCOMPARE(probes(), probesBefore + 1);
        QVERIFY(fixture.context->isPolling());
        QCOMPARE(shown.first(), 10);
        QCOMPARE(shown.last(), 0);
        QVERIFY(std::is_sorted(shown.rbegin(), shown.rend()));
        QVERIFY(!countdown.isRunning());
    }
};

QTEST_MAIN(TestConnectionWindows)
#include "tst_connectionwindows.moc"
