#include "api/Client.h"
#include "api/Errors.h"
#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "support/Await.h"
#include "support/Detached.h"
#include "support/FakeServer.h"
#include "support/ScriptedQbt.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QLoggingCategory>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using API::AuthMethod;
using API::UserCredentials;
using QuilloTest::wait;
using Response = FakeServer::Response;
using QuilloTest::admin;
using QuilloTest::apiKey;
using QuilloTest::ScriptedQbt;

Q_DECLARE_METATYPE(API::AuthMethod)

namespace {

QStringList capturedLog;

void captureLog(QtMsgType, const QMessageLogContext &, const QString &message)
{
    capturedLog << message;
}

// Runs an action on the next turn of the event loop after a given log line: the step that follows
// that line has begun by then, and has not ended.
QString awaitedLine;
std::function<void()> afterAwaitedLine;

void watchLog(QtMsgType, const QMessageLogContext &, const QString &message)
{
    if (afterAwaitedLine && message == awaitedLine)
        QMetaObject::invokeMethod(qApp, std::exchange(afterAwaitedLine, {}), Qt::QueuedConnection);
}

} // namespace

// The connection lifecycle against a scripted server and a real Secret Service.
class TestAppContext : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<FakeServer> m_server;
    ScriptedQbt m_qbt;
    std::unique_ptr<UserDefaults> m_defaults;
    KeychainStore m_keychainStore;
    KeychainStore *m_keychain = &m_keychainStore;
    std::unique_ptr<AppContext> m_context;

    QString iniPath() const { return m_dir.filePath(QStringLiteral("Quillo.ini")); }

    // A saved connection to the scripted server, with `credentials` in the keychain when given.
    QUuid addConnection(AuthMethod method, const std::optional<UserCredentials> &credentials = std::nullopt)
    {
        ClientConfiguration configuration = m_server->configuration(method);
        configuration.name = QStringLiteral("Scripted");
        if (credentials)
            wait(m_keychain->save(configuration, *credentials));
        m_context->addConfiguration(configuration);
        return configuration.id;
    }

    QString alert() const
    {
        const auto &error = m_context->clientError();
        return error ? error->title() + u'|' + error->description() + u'|' + error->failureReason() : QString();
    }

private Q_SLOTS:
    void initTestCase()
    {
        // The private bus stands in for the system bus too, where logind announces sleep and waking.
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS"));
    }

    void init()
    {
        QFile::remove(iniPath());
        m_qbt = {};
        m_server = std::make_unique<FakeServer>();
        m_server->setHandler([this](const FakeServer::Request &request) { return m_qbt.answer(request); });
        m_defaults = std::make_unique<UserDefaults>(iniPath());
        m_context = std::make_unique<AppContext>(*m_defaults, *m_keychain);
    }

    void cleanup()
    {
        m_context.reset();
        m_defaults.reset();
        m_server.reset();
    }

    // Login is configured, but the server lets the client in: no login request is sent.
    void bypassConnectsWithoutLogin()
    {
        m_qbt.bypass = true;
        QSignalSpy polling(m_context.get(), &AppContext::pollingStarted);
        wait(m_context->selectConfiguration(addConnection(AuthMethod::cookieLogin)));
        QVERIFY(m_context->isAuthorized());
        QCOMPARE(polling.size(), 1);
        QCOMPARE(m_qbt.logins, 0);
        QCOMPARE(m_context->qbtVersion(), QStringLiteral("v5.2.0"));
        QCOMPARE(m_context->webAPIVersion().toString(), QStringLiteral("2.15.1"));
        QCOMPARE(m_context->qbtBuildInfo().libtorrent, QStringLiteral("2.0.11.0"));
        QCOMPARE(alert(), QString());
    }

    // The server restarted between two polls: its next answer is a refusal, not a lost connection.
    void expiredSessionLogsInAgain()
    {
        wait(m_context->selectConfiguration(addConnection(AuthMethod::cookieLogin, admin)));
        QCOMPARE(m_qbt.logins, 1);
        QSignalSpy polling(m_context.get(), &AppContext::pollingStarted);
        m_qbt.session = "restarted";
        m_context->forcePoll();
        QTRY_COMPARE(polling.size(), 1);
        QCOMPARE(m_qbt.logins, 2);
        QVERIFY(m_context->isAuthorized());
        QCOMPARE(m_context->connectionLossCount(), 0);
        QCOMPARE(alert(), QString());

        // Refused again right after logging in: no loop of logins, the loss is shown instead.
        m_qbt.session = "again";
        m_context->forcePoll();
        QTRY_COMPARE(m_context->connectionLossCount(), 1);
        QCOMPARE(m_qbt.logins, 2);
        QVERIFY(!m_context->isPolling());
        QCOMPARE(m_context->connectionError(), QStringLiteral("You are not authorized!"));
    }

    // Behind a reverse proxy, a server that is down is answered for with 502 to 504: a lost
    // connection like one that gets no answer, which the countdown reconnects, not an alert per poll.
    void gatewayErrorIsALoss()
    {
        m_qbt.bypass = true;
        wait(m_context->selectConfiguration(addConnection(AuthMethod::none)));
        QVERIFY(m_context->isPolling());
        m_server->answerAll(Response::text(502, "<html><center><h1>502 Bad Gateway</h1></center></html>"));
        m_context->forcePoll();
        QTRY_COMPARE(m_context->connectionLossCount(), 1);
        QVERIFY(!m_context->isPolling());
        QCOMPARE(m_context->connectionError(), QStringLiteral("Connection error!"));
        QCOMPARE(alert(), QString());
        wait(m_context->reconnect());
        QCOMPARE(m_context->connectionLossCount(), 2); // still lost: the next countdown is longer
    }

    // Every attempt of the countdown fails while the server stays away: one alert for the outage,
    // not one per attempt piling up behind the overlay.
    void failedReconnectionsAlertOnce()
    {
        m_qbt.bypass = true;
        wait(m_context->selectConfiguration(addConnection(AuthMethod::none)));
        m_server->answerAll(Response::dropConnection());
        m_context->forcePoll();
        QTRY_COMPARE(m_context->connectionLossCount(), 1);
        QSignalSpy alerts(m_context.get(), &AppContext::clientErrorChanged);
        for (int attempt = 2; attempt <= 4; ++attempt) {
            wait(m_context->reconnect());
            QCOMPARE(m_context->connectionLossCount(), attempt);
        }
        QCOMPARE(alerts.size(), 1);
        QCOMPARE(m_context->clientError()->title(), QStringLiteral("Failed to reconnect."));
    }

    // The server's own interval is known before the loop starts, and settings reach the loop under way.
    void pollingInterval()
    {
        m_context->settings().setRefreshMode(RefreshMode::server);
        m_context->settings().setIntervalIncreaseValue(1000);
        wait(m_context->selectConfiguration(addConnection(AuthMethod::cookieLogin, admin)));
        QVERIFY(m_context->isPolling());
        QCOMPARE(m_context->pollingInterval(), std::chrono::milliseconds(1500));
        m_context->setAppState(AppContext::AppState::background);
        QCOMPARE(m_context->pollingInterval(), std::chrono::milliseconds(2500));
        m_context->settings().setRefreshMode(RefreshMode::fixed);
        QCOMPARE(m_context->pollingInterval(), std::chrono::milliseconds(3000));
    }

    // The pause after a main-data answer, adapting to how long the server takes to answer: never
    // below the setting, at once seven times a slow answer, back to the setting a few quick
    // answers later.
    void pauseAdaptsToTheAnswerTime_data()
    {
        QTest::addColumn<QList<int>>("answerMs");
        QTest::addColumn<int>("least");
        QTest::addColumn<int>("most");
        const int setting = 2000;
        const int slow = 900 * Poller::pausePerAnswerTime;
        const int longest = AppSettings::refreshIntervalBounds.maximum;
        QTest::newRow("quick") << QList<int>{10, 10} << setting << setting;
        QTest::newRow("slow at once") << QList<int>{10, 900} << slow << longest;
        QTest::newRow("one quick answer between slow ones") << QList<int>{900, 10} << setting + 1 << longest;
        QTest::newRow("quick again") << QList<int>{900, 900, 10, 10, 10, 10, 10} << setting << setting;
    }

    void pauseAdaptsToTheAnswerTime()
    {
        QFETCH(QList<int>, answerMs);
        QFETCH(int, least);
        QFETCH(int, most);
        auto delay = std::make_shared<int>(10);
        m_server->setHandler([this, delay](const FakeServer::Request &request) {
            Response response = m_qbt.answer(request);
            if (request.target.endsWith("/sync/maindata"))
                response.delay = std::chrono::milliseconds(*delay);
            return response;
        });
        m_qbt.bypass = true;
        // The loop's first pause is a minute long: only the polls forced here are answered.
        m_context->settings().setRefreshMode(RefreshMode::fixed);
        m_context->settings().setRefreshInterval(60'000);
        wait(m_context->selectConfiguration(addConnection(AuthMethod::none)));
        m_context->settings().setRefreshInterval(2000);
        m_context->settings().setRefreshMode(RefreshMode::adaptive);
        for (const int ms : answerMs) {
            *delay = ms;
            QSignalSpy answered(&m_context->answerPace(), &AnswerPace::changed);
            m_context->forcePoll();
            QTRY_COMPARE(answered.size(), 1);
            QVERIFY(m_context->answerPace().last() >= std::chrono::milliseconds(ms));
        }
        const qint64 pause = m_context->pollingInterval().count();
        QVERIFY2(pause >= least && pause <= most, qPrintable(QString::number(pause)));
    }

    void storedCredentials_data()
    {
        QTest::addColumn<AuthMethod>("method");
        QTest::addColumn<UserCredentials>("stored");
        QTest::addColumn<int>("loginStatus");
        QTest::addColumn<QString>("expectedAlert");
        QTest::addColumn<bool>("prompt");
        const UserCredentials wrong{QStringLiteral("admin"), QStringLiteral("wrong"), {}};
        QTest::newRow("login answered 204") << AuthMethod::cookieLogin << admin << 204 << QString() << false;
        QTest::newRow("basic") << AuthMethod::basic << admin << 200 << QString() << false;
        QTest::newRow("basic refused")
            << AuthMethod::basic << wrong << 200
            << QStringLiteral("Failed to login.|Invalid username or password!|Invalid username or password!") << true;
        QTest::newRow("api key") << AuthMethod::apiKey << UserCredentials{{}, {}, apiKey} << 200 << QString() << false;
        QTest::newRow("api key revoked")
            << AuthMethod::apiKey << UserCredentials{{}, {}, QStringLiteral("qbt_revoked")} << 200
            << QStringLiteral("Failed to login.|Invalid API key!|The API key is invalid or has been revoked. "
                              "API keys are supported by qBittorrent 5.2 and later.")
            << true;
        // Nothing to ask for: the server wants a login the connection does not make.
        QTest::newRow("none, but the server wants a login")
            << AuthMethod::none << UserCredentials{} << 200
            << QStringLiteral("Failed to login.|You are not authorized!|Authorization required.") << false;
    }

    void storedCredentials()
    {
        QFETCH(AuthMethod, method);
        QFETCH(UserCredentials, stored);
        QFETCH(int, loginStatus);
        QFETCH(QString, expectedAlert);
        m_qbt.loginStatus = loginStatus;
        wait(m_context->selectConfiguration(addConnection(method, stored)));
        QCOMPARE(alert(), expectedAlert);
        QCOMPARE(m_context->isAuthorized(), expectedAlert.isEmpty());
        QCOMPARE(m_context->isPolling(), expectedAlert.isEmpty());
        // Refused credentials bring the prompt back; nothing saved is touched.
        QTEST(m_context->isLoginPromptPresented(), "prompt");
        QCOMPARE(m_context->clientConfigurations().size(), 1);
        QCOMPARE(wait(m_keychain->read(m_context->clientConfigurations().constFirst())), std::optional(stored));
    }

    void promptAnswerIsKeptOnlyWithAutoLogin()
    {
        // Every log line of the whole flow, with debug output on, including a refused password.
        capturedLog.clear();
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=true"));
        const auto previous = qInstallMessageHandler(captureLog);
        const QUuid id = addConnection(AuthMethod::cookieLogin);
        // A twin that differs only in logging in by itself: the login's choice must not be refused as a copy.
        ClientConfiguration twin = m_server->configuration(AuthMethod::cookieLogin);
        twin.name = QStringLiteral("Scripted");
        twin.autoLogin = !m_context->clientConfigurations().constFirst().autoLogin;
        m_context->addConfiguration(twin);
        wait(m_context->selectConfiguration(id));
        wait(m_context->logIn({admin.username, QStringLiteral("wrong&secret"), {}}, true));
        wait(m_context->logIn(admin, true));
        QVERIFY(m_context->isAuthorized());
        QCOMPARE(wait(m_keychain->read(*m_context->clientConfiguration())), std::optional(admin));

        wait(m_context->logIn(admin, false));
        QVERIFY(!m_context->clientConfiguration()->autoLogin);
        QCOMPARE(wait(m_keychain->read(*m_context->clientConfiguration())), std::optional<UserCredentials>());

        qInstallMessageHandler(previous);
        QLoggingCategory::setFilterRules({});

        // Neither the settings file nor any log line ever holds a password.
        m_defaults->sync();
        QFile settings(iniPath());
        QVERIFY(settings.open(QIODevice::ReadOnly));
        const QByteArray stored = settings.readAll();
        QVERIFY(!stored.contains(admin.password.toUtf8()));
        QVERIFY(!stored.contains("wrong&secret"));
        QVERIFY(capturedLog.size() > 5);
        for (const QString &line : std::as_const(capturedLog)) {
            QVERIFY2(!line.contains(admin.password) && !line.contains(u"wrong&secret"), qPrintable(line));
            QVERIFY2(!line.contains(u"s3cret"), qPrintable(line)); // nor its encoded form
        }
    }

    void secureAddressIsOfferedAndTaken()
    {
        QString whyNot;
        const auto tls = FakeServer::selfSignedTls(&whyNot);
        QVERIFY2(tls, qPrintable(whyNot));
        FakeServer secure(*tls);
        secure.setHandler([this](const FakeServer::Request &request) { return m_qbt.answer(request); });
        // The saved address: a plain-HTTP port that redirects to the secure one.
        m_server->answerAll(Response::redirect(301, "https://127.0.0.1:" + QByteArray::number(secure.port()) + "/"));
        ClientConfiguration configuration = m_server->configuration(AuthMethod::none);
        configuration.useHTTPS = true;
        m_context->addConfiguration(configuration);

        wait(m_context->selectConfiguration(configuration.id));
        QCOMPARE(m_context->clientError()->title(), QStringLiteral("Failed to check authorization bypass."));
        QTRY_VERIFY(m_context->httpsRedirectSuggestion().has_value());
        const HTTPSRedirectSuggestion suggestion = *m_context->httpsRedirectSuggestion();
        QCOMPARE(suggestion.suggested.port, std::optional<int>(secure.port()));
        QCOMPARE(suggestion.dialogTitle(), QStringLiteral("Use a secure connection address?"));

        wait(m_context->acceptHTTPSRedirectSuggestion());
        QVERIFY(!m_context->httpsRedirectSuggestion());
        const ClientConfiguration saved = m_context->clientConfigurations().constFirst();
        QCOMPARE(saved.id, configuration.id);
        QCOMPARE(saved.port, std::optional<int>(secure.port()));
        QVERIFY(saved.useHTTPS);
        // The moved connection is what the settings hold, and what was tried next.
        QCOMPARE(AppContext(*m_defaults, *m_keychain).clientConfigurations().constFirst().port, saved.port);
        QCOMPARE(m_context->clientConfiguration()->port, saved.port);
    }

    void removingAConnectionForgetsItsCredentials()
    {
        const QUuid id = addConnection(AuthMethod::basic, admin);
        wait(m_context->selectConfiguration(id));
        const ClientConfiguration removed = *m_context->clientConfiguration();
        wait(m_context->removeConfiguration(id));
        QVERIFY(!m_context->clientConfiguration());
        QVERIFY(m_context->clientConfigurations().isEmpty());
        QCOMPARE(wait(m_keychain->read(removed)), std::optional<UserCredentials>());
        QVERIFY(AppContext(*m_defaults, *m_keychain).clientConfigurations().isEmpty());
    }

    // Waking from sleep checks the open connection at once, not at the next poll: here the NAS's
    // HTTPS port has meanwhile turned to plain HTTP that redirects, and its secure address is
    // offered under the check's own origin.
    void wakingChecksTheConnection()
    {
        QString whyNot;
        const auto tls = FakeServer::selfSignedTls(&whyNot);
        QVERIFY2(tls, qPrintable(whyNot));
        const QSslConfiguration systemTrust = QSslConfiguration::defaultConfiguration();
        QSslConfiguration::setDefaultConfiguration(FakeServer::trusting(*tls));
        m_context->settings().setRefreshInterval(60'000); // no poll can find out first
        m_server->setTls(tls);
        ClientConfiguration nas = m_server->configuration(AuthMethod::basic);
        nas.useHTTPS = true;
        wait(m_keychain->save(nas, admin));
        m_context->addConfiguration(nas);
        wait(m_context->selectConfiguration(nas.id));
        QVERIFY(m_context->isPolling());

        FakeServer moved(*tls);
        moved.setHandler([this](const FakeServer::Request &request) { return m_qbt.answer(request); });
        m_server->setTls(std::nullopt);
        m_server->answerAll(Response::redirect(301, "https://127.0.0.1:" + QByteArray::number(moved.port()) + "/"));
        QDBusConnection logind = QDBusConnection::connectToBus(
            QString::fromLocal8Bit(qgetenv("DBUS_SESSION_BUS_ADDRESS")), QStringLiteral("logind"));
        QVERIFY(logind.registerService(QStringLiteral("org.freedesktop.login1")));
        QDBusMessage woke = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/login1"),
                                                       QStringLiteral("org.freedesktop.login1.Manager"),
                                                       QStringLiteral("PrepareForSleep"));
        woke << false;
        QVERIFY(logind.send(woke));
        QTRY_VERIFY(m_context->httpsRedirectSuggestion().has_value());
        QCOMPARE(m_context->httpsRedirectSuggestion()->origin, HTTPSRedirectSuggestion::Origin::connectionCheck);
        QCOMPARE(m_context->httpsRedirectSuggestion()->suggested.port, std::optional<int>(moved.port()));
        QCOMPARE(m_context->connectionLossCount(), 1);
        QVERIFY(!m_context->isPolling());
        logind.unregisterService(QStringLiteral("org.freedesktop.login1"));
        QDBusConnection::disconnectFromBus(QStringLiteral("logind"));
        QSslConfiguration::setDefaultConfiguration(systemTrust);
        wait(m_keychain->remove(nas));
    }

    // The connection being opened is deleted while its password is in the keychain's hands.
    void removedWhileItsPasswordIsInTheKeychain_data()
    {
        QTest::addColumn<bool>("stored");
        QTest::addColumn<QString>("lineBefore");
        QTest::newRow("read") << true << QStringLiteral("Authorization bypass disabled");
        QTest::newRow("saved") << false << QStringLiteral("Loggin in success.");
    }

    void removedWhileItsPasswordIsInTheKeychain()
    {
        QFETCH(bool, stored);
        QFETCH(QString, lineBefore);
        const QUuid id = addConnection(AuthMethod::cookieLogin, stored ? std::optional(admin) : std::nullopt);
        if (!stored)
            wait(m_context->selectConfiguration(id));
        awaitedLine = lineBefore;
        afterAwaitedLine = [this, id] { detached(m_context->removeConfiguration(id)); };
        const auto previous = qInstallMessageHandler(watchLog);
        wait(stored ? m_context->selectConfiguration(id) : m_context->logIn(admin, true));
        qInstallMessageHandler(previous);
        QVERIFY(!afterAwaitedLine);
        QVERIFY(!m_context->clientConfiguration());
        QVERIFY(!m_context->client());
        QVERIFY(!m_context->isAuthorized());
        QVERIFY(!m_context->isPolling());
        QCOMPARE(m_context->progressMessage(), AppContext::ProgressMessage::none);
        QCOMPARE(alert(), QString());
    }

    // Nothing of a connection left while it connects or reconnects reaches the one chosen next.
    void anotherChosenWhileConnecting_data()
    {
        QTest::addColumn<bool>("reconnecting");
        QTest::newRow("connecting") << false;
        QTest::newRow("reconnecting") << true;
    }

    void anotherChosenWhileConnecting()
    {
        QFETCH(bool, reconnecting);
        const auto stall = std::make_shared<bool>(!reconnecting);
        m_server->setHandler([this, stall](const FakeServer::Request &request) {
            return *stall ? Response::stallForever() : m_qbt.answer(request);
        });
        FakeServer healthy;
        ScriptedQbt healthyQbt;
        healthy.setHandler([&healthyQbt](const FakeServer::Request &request) { return healthyQbt.answer(request); });
        ClientConfiguration next = healthy.configuration(AuthMethod::cookieLogin);
        next.name = QStringLiteral("Next");
        wait(m_keychain->save(next, admin));
        m_context->addConfiguration(next);

        const QUuid first = addConnection(AuthMethod::cookieLogin, admin);
        std::optional<QCoro::Task<>> left;
        if (reconnecting) {
            wait(m_context->selectConfiguration(first));
            m_server->clearRequests();
            *stall = true;
            left = m_context->reconnect();
            QVERIFY(m_context->isReconnecting());
        } else {
            left = m_context->selectConfiguration(first);
        }
        QTRY_VERIFY(!m_server->requests().isEmpty());
        wait(m_context->selectConfiguration(next.id));
        wait(std::move(*left));
        QCOMPARE(alert(), QString());
        QVERIFY(m_context->isAuthorized());
        QVERIFY(m_context->isPolling());
        QVERIFY(!m_context->isReconnecting());
        QCOMPARE(m_context->connectionLossCount(), 0);
        QCOMPARE(m_context->clientConfiguration()->id, next.id);
    }

    // Logging out ends the session: nothing polls or sends, and logging in again needs only the
    // connection that stays chosen.
    void logOutEndsTheSession()
    {
        const QUuid id = addConnection(AuthMethod::cookieLogin, admin);
        wait(m_context->selectConfiguration(id));
        wait(m_context->logOut());
        QVERIFY(!m_context->isPolling());
        QVERIFY(!m_context->isAuthorized());
        QVERIFY(!m_context->client());
        QCOMPARE(m_context->clientConfiguration()->id, id);
        m_server->clearRequests();
        wait(m_context->startTnts({}));
        QVERIFY(m_server->requests().isEmpty());
        QCOMPARE(m_context->clientError()->title(), QStringLiteral("Failed to start torrents."));

        wait(m_context->selectConfiguration(id));
        QVERIFY(m_context->isPolling());
        QCOMPARE(m_qbt.logins, 2);
    }
};

QTEST_GUILESS_MAIN(TestAppContext)
#include "tst_appcontext.moc"
