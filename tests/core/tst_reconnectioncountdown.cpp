#include "api/Errors.h"
#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "core/ReconnectionCountdown.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/FakeServer.h"

#include <QTemporaryDir>
#include <QTest>

using Response = FakeServer::Response;

// The automatic reconnection against a server that lets the client in without a login.
class TestReconnectionCountdown : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    KeychainStore m_keychain;
    std::unique_ptr<FakeServer> m_server;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<AppContext> m_context;

    void connectToServer()
    {
        ClientConfiguration configuration = m_server->configuration(API::AuthMethod::none);
        m_context->addConfiguration(configuration);
        QuilloTest::wait(m_context->selectConfiguration(configuration.id));
        QVERIFY(m_context->isAuthorized());
    }

    void lose(int times)
    {
        for (int i = 0; i < times; ++i)
            m_context->reportSyncFailure(QStringLiteral("Sync"),
                                         std::make_exception_ptr(API::TransportError(
                                             QNetworkReply::RemoteHostClosedError, QStringLiteral("closed"))));
    }

    int probes() const
    {
        return static_cast<int>(std::count_if(m_server->requests().cbegin(), m_server->requests().cend(),
                                              [](const auto &r) { return r.target.endsWith("/app/version"); }));
    }

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<FakeServer>();
        m_server->setHandler([](const FakeServer::Request &request) {
            if (request.target.endsWith("/app/webapiVersion"))
                return Response::text(200, "2.8.19");
            if (request.target.endsWith("/app/buildInfo"))
                return Response::json(
                    R"({"qt":"6.4.2","libtorrent":"2.0.8","boost":"1.74","openssl":"3","bitness":64})");
            return Response::text(200, "v4.5.2");
        });
        QFile::remove(m_dir.filePath(QStringLiteral("Quillo.ini")));
        m_defaults = std::make_unique<UserDefaults>(m_dir.filePath(QStringLiteral("Quillo.ini")));
        m_context = std::make_unique<AppContext>(*m_defaults, m_keychain);
    }

    void cleanup()
    {
        m_context.reset();
        m_server.reset();
    }

    void waitsTenSecondsPerLoss_data()
    {
        QTest::addColumn<int>("losses");
        QTest::addColumn<bool>("running");
        QTest::addColumn<int>("secondsLeft");
        QTest::addColumn<bool>("stopped");

        QTest::newRow("none") << 0 << false << 0 << false;
        QTest::newRow("first") << 1 << true << 10 << false;
        QTest::newRow("third") << 3 << true << 30 << false;
        QTest::newRow("fifth") << 5 << true << 50 << false;
        QTest::newRow("sixth") << 6 << false << 0 << true;
    }

    void waitsTenSecondsPerLoss()
    {
        QFETCH(int, losses);
        // A tick that never comes while the test reads the state.
        ReconnectionCountdown countdown(*m_context, std::chrono::hours(1));
        lose(losses);
        QTEST(countdown.isRunning(), "running");
        QTEST(countdown.secondsLeft(), "secondsLeft");
        QTEST(countdown.isStopped(), "stopped");
    }

    void reconnectsWhenTheCountdownEnds()
    {
        connectToServer();
        ReconnectionCountdown countdown(*m_context, std::chrono::milliseconds(2));
        QList<int> shown;
        connect(&countdown, &ReconnectionCountdown::changed, this, [&] {
            if (m_context->connectionLossCount() > 0)
                shown << countdown.secondsLeft();
        });
        const int probesBefore = probes();
        lose(1);

        QTRY_COMPARE(m_context->connectionLossCount(), 0);
        QCOMPARE(probes(), probesBefore + 1);
        QVERIFY(m_context->isPolling());
        QCOMPARE(shown.first(), 10);
        QCOMPARE(shown.last(), 0);
        QVERIFY(std::is_sorted(shown.rbegin(), shown.rend()));
        QVERIFY(!countdown.isRunning());
    }

    void aFailedAttemptWaitsLonger()
    {
        connectToServer();
        ReconnectionCountdown countdown(*m_context, std::chrono::hours(1));
        lose(1);
        m_server->answerAll(Response::dropConnection());
        countdown.reconnectNow();

        QTRY_VERIFY(!m_context->isReconnecting());
        QCOMPARE(m_context->connectionLossCount(), 2);
        QVERIFY(countdown.isRunning());
        QCOMPARE(countdown.secondsLeft(), 20);
    }
};

QTEST_MAIN(TestReconnectionCountdown)
#include "tst_reconnectioncountdown.moc"
