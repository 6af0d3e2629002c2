#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "support/Await.h"
#include "support/QbtServer.h"
#include "support/TorrentFactory.h"

#include <QTemporaryDir>
#include <QTest>

using API::AuthMethod;
using API::UserCredentials;
using QuilloTest::wait;
using Flavor = QbtServer::Flavor;

namespace {

QStringList capturedLog;

void captureLog(QtMsgType, const QMessageLogContext &, const QString &message)
{
    capturedLog << message;
}

} // namespace

// Connecting, logging in and out, losing and regaining a real server, with a real Secret Service.
class TestConnectionLifecycle : public QObject
{
    Q_OBJECT

public:
    explicit TestConnectionLifecycle(Flavor flavor)
        : m_flavor(flavor)
    {
    }

private:
    const Flavor m_flavor;
    QTemporaryDir m_dir;
    KeychainStore m_keychain;
    std::unique_ptr<QbtServer> m_server;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<AppContext> m_context;

    QUuid addConnection(const QbtServer &server, AuthMethod method, const std::optional<UserCredentials> &stored)
    {
        ClientConfiguration configuration = server.configuration();
        configuration.authMethod = method;
        if (stored)
            wait(m_keychain.save(configuration, *stored));
        else
            wait(m_keychain.remove(configuration));
        m_context->addConfiguration(configuration);
        return configuration.id;
    }

    QString alert() const
    {
        const auto &error = m_context->clientError();
        return error ? error->title() + u'|' + error->description() : QString();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QbtServer::StartResult started = QbtServer::start(m_flavor);
        QUILLO_REQUIRE_SERVER(started);
        m_server = std::move(started.server);
        QVERIFY2(!qEnvironmentVariableIsEmpty("QUILLO_TEST_KEYRING_FILE"), "run through with-secret-service");
    }

    void init()
    {
        QFile::remove(m_dir.filePath(QStringLiteral("Quillo.ini")));
        m_defaults = std::make_unique<UserDefaults>(m_dir.filePath(QStringLiteral("Quillo.ini")));
        m_context = std::make_unique<AppContext>(*m_defaults, m_keychain);
        capturedLog.clear();
    }

    void cleanup()
    {
        m_context.reset();
        m_defaults.reset();
    }

    void storedPasswordConnectsWithoutPrompt()
    {
        wait(m_context->selectConfiguration(addConnection(*m_server, AuthMethod::cookieLogin, m_server->credentials())));
        QCOMPARE(alert(), QString());
        QVERIFY(m_context->isAuthorized());
        QVERIFY(m_context->isPolling());
        QVERIFY(!m_context->isLoginPromptPresented());
        QCOMPARE(m_context->qbtVersion(), m_flavor == Flavor::Trixie51 ? QStringLiteral("v5.1.0") : QStringLiteral("v4.5.2"));
        QCOMPARE(m_context->qbtBuildInfo().bitness, 64);
    }

    void wrongStoredPasswordAsksAgain()
    {
        const UserCredentials wrong{QStringLiteral("admin"), QStringLiteral("not it"), {}};
        wait(m_context->selectConfiguration(addConnection(*m_server, AuthMethod::cookieLogin, wrong)));
        QCOMPARE(alert(), QStringLiteral("Failed to login.|You are not authorized!"));
        QVERIFY(m_context->isLoginPromptPresented());
        QVERIFY(!m_context->isAuthorized());

        m_context->dismissClientError();
        wait(m_context->logIn(m_server->credentials(), true));
        QVERIFY(m_context->isAuthorized());
        QCOMPARE(wait(m_keychain.read(*m_context->clientConfiguration())), std::optional(m_server->credentials()));
    }

    void bypassNeedsNoCredentials()
    {
        QbtServer::StartResult started = QbtServer::start(m_flavor, {.localHostAuth = false});
        QUILLO_REQUIRE_SERVER(started);
        wait(m_context->selectConfiguration(addConnection(*started.server, AuthMethod::none, std::nullopt)));
        QCOMPARE(alert(), QString());
        QVERIFY(m_context->isAuthorized());
        wait(m_context->client()->perform(API::Endpoint::Sync::maindata(0)));
        m_context.reset(); // before its server goes
    }

    void logOutEndsTheSession()
    {
        wait(m_context->selectConfiguration(addConnection(*m_server, AuthMethod::cookieLogin, m_server->credentials())));
        wait(m_context->logOut());
        QVERIFY(!m_context->isAuthorized());
        QVERIFY(!m_context->isPolling());
        QVERIFY_THROWS_EXCEPTION(API::AutorizationError,
                                 wait(m_context->client()->perform(API::Endpoint::Sync::maindata(0))));
    }

    void torrentsAppearAndLeave()
    {
        wait(m_context->selectConfiguration(addConnection(*m_server, AuthMethod::cookieLogin, m_server->credentials())));
        const QbtServer::DataDir dir = m_server->makeDataDir();
        const auto made = TorrentFactory::singleFile(dir.localPath, QStringLiteral("synced.bin"), 40'000);
        wait(m_context->client()->perform(API::Endpoint::TntManagement::add(TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(made), {"savepath", dir.serverPath.toUtf8()}}))));
        QTRY_VERIFY_WITH_TIMEOUT(m_context->tntCollection().find(made.infoHash), 10'000);
        QTRY_COMPARE_WITH_TIMEOUT(m_context->tntCollection().find(made.infoHash)->progress(), 1.0, 15'000);
        QCOMPARE(m_context->tntCollection().find(made.infoHash)->name(), QStringLiteral("synced.bin"));

        // Stopped through the API by someone else: the Status column follows within an interval.
        const bool modern = m_flavor == Flavor::Trixie51;
        const QStringList hashes{made.infoHash};
        wait(m_context->client()->perform(modern ? API::Endpoint::TntManagement::stop(hashes)
                                                 : API::Endpoint::TntManagement::pause(hashes)));
        QTRY_COMPARE_WITH_TIMEOUT(TntModel::stateTitle(m_context->tntCollection().find(made.infoHash)->state()),
                                  QStringLiteral("Completed"), 10'000);
        wait(m_context->client()->perform(modern ? API::Endpoint::TntManagement::start(hashes)
                                                 : API::Endpoint::TntManagement::resume(hashes)));
        QTRY_VERIFY_WITH_TIMEOUT(TntModel::matches(m_context->tntCollection().find(made.infoHash)->state(),
                                                   TntModel::State::uploading)
                                     || m_context->tntCollection().find(made.infoHash)->state() == TntModel::State::stalledUP,
                                 10'000);
        QVERIFY(m_context->serverState().refreshInterval() > 0); // the server state arrived too

        // Removed by another client: it leaves at the next poll.
        API::Client other(m_server->configuration());
        other.setCredentials(m_server->credentials());
        wait(other.login());
        wait(other.perform(API::Endpoint::TntManagement::deleteTnts({made.infoHash}, true)));
        QTRY_VERIFY_WITH_TIMEOUT(!m_context->tntCollection().find(made.infoHash), 10'000);
    }

    void survivesAServerRestart()
    {
        wait(m_context->selectConfiguration(addConnection(*m_server, AuthMethod::cookieLogin, m_server->credentials())));
        QVERIFY(m_context->isPolling());

        // A loss that was not one: the session is still valid.
        m_context->reportSyncFailure(QStringLiteral("Sync"), std::make_exception_ptr(API::TransportError(
                                                                  QNetworkReply::RemoteHostClosedError, QStringLiteral("closed"))));
        wait(m_context->reconnect());
        QCOMPARE(m_context->connectionLossCount(), 0);

        m_server->stop();
        QTRY_COMPARE_WITH_TIMEOUT(m_context->connectionLossCount(), 1, 10'000); // the poller notices
        QTest::qWait(100);
        QCOMPARE(m_context->connectionLossCount(), 1); // and then stops
        QVERIFY(!m_context->isPolling());
        QVERIFY(!m_context->connectionError().isEmpty());

        QCOMPARE(m_server->restart(), QString());
        const auto previous = qInstallMessageHandler(captureLog);
        wait(m_context->reconnect());
        qInstallMessageHandler(previous);
        QVERIFY2(capturedLog.contains(u"Session expired. Logging in again..."_qs), qPrintable(capturedLog.join(u'\n')));
        QCOMPARE(alert(), QString());
        QCOMPARE(m_context->connectionLossCount(), 0);
        QVERIFY(m_context->isAuthorized());
        QVERIFY(m_context->isPolling());
        wait(m_context->client()->perform(API::Endpoint::Sync::maindata(0)));
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    int failures = 0;
    for (const Flavor flavor : {Flavor::Bookworm45, Flavor::Trixie51}) {
        TestConnectionLifecycle test(flavor);
        failures += QTest::qExec(&test, argc, argv);
    }
    return failures;
}

#include "tst_connection_lifecycle.moc"
