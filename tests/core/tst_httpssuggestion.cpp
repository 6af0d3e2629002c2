#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/HTTPSRedirectSuggestion.h"
#include "support/Await.h"
#include "support/FakeServer.h"

#include <QtTest>

Q_DECLARE_METATYPE(FakeServer::Response)

using Response = FakeServer::Response;
using Suggestion = HTTPSRedirectSuggestion;

class TestHTTPSSuggestion : public QObject
{
    Q_OBJECT

    std::optional<FakeServer::Tls> m_tls;

private Q_SLOTS:
    void initTestCase()
    {
        QString whyNot;
        m_tls = FakeServer::selfSignedTls(&whyNot);
        QVERIFY2(m_tls, qPrintable(whyNot));
    }

    void suggestedConfiguration_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("location");
        QTest::addColumn<int>("port"); // 0: no suggestion
        QTest::addColumn<QString>("path");

        QTest::newRow("302, slashes trimmed") << 302 << QByteArray("https://nas.example:8443/qbt//") << 8443 << "/qbt";
        QTest::newRow("301, host case") << 301 << QByteArray("https://NAS.EXAMPLE:9443/a%20b/") << 9443 << "/a%20b";
        QTest::newRow("307 without port") << 307 << QByteArray("https://nas.example/webui") << 443 << "/webui";
        QTest::newRow("308 to the root") << 308 << QByteArray("HTTPS://nas.example:8443/") << 8443 << "";
        QTest::newRow("another host") << 302 << QByteArray("https://other.example:8443/") << 0 << "";
        QTest::newRow("200") << 200 << QByteArray("https://nas.example:8443/") << 0 << "";
        QTest::newRow("no Location") << 302 << QByteArray() << 0 << "";
        QTest::newRow("http scheme") << 302 << QByteArray("http://nas.example:8443/") << 0 << "";
        QTest::newRow("relative, so http") << 302 << QByteArray("/elsewhere/") << 0 << "";
        QTest::newRow("the source itself") << 302 << QByteArray("https://nas.example:8080/qbt/") << 0 << "";
    }

    void suggestedConfiguration()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, location);
        QFETCH(int, port);
        QFETCH(QString, path);

        ClientConfiguration source;
        source.host = QStringLiteral("Nas.Example");
        source.port = 8080;
        source.path = QStringLiteral("/qbt");
        source.useHTTPS = true;
        source.authMethod = API::AuthMethod::basic;
        const auto suggested = Suggestion::suggestedConfiguration(source, status, location);

        QCOMPARE(suggested.has_value(), port != 0);
        if (suggested) {
            ClientConfiguration expected = source;
            expected.port = port;
            expected.path = path;
            QCOMPARE(*suggested, expected);
        }
    }

    void probe_data()
    {
        QTest::addColumn<int>("redirectStatus");
        QTest::addColumn<Response>("check");
        QTest::addColumn<bool>("suggests");

        // The secure end's certificate is self-signed and trusted nowhere: the check passes all
        // the same, and the user is asked about the certificate once the connection opens there.
        QTest::newRow("403 passes") << 302 << Response::text(403, "Forbidden") << true;
        QTest::newRow("200 passes") << 307 << Response::text(200, "v4.5.2") << true;
        QTest::newRow("500 fails") << 302 << Response::text(500, {}) << false;
        QTest::newRow("unknown status fails") << 302 << Response::text(299, {}) << false;
        QTest::newRow("dropped check fails") << 302 << Response::dropConnection() << false;
        QTest::newRow("silent check fails") << 302 << Response::stallForever() << false;
        QTest::newRow("303 is not checked") << 303 << Response::text(200, {}) << false;
    }

    void probe()
    {
        QFETCH(int, redirectStatus);
        QFETCH(Response, check);
        QFETCH(bool, suggests);

        FakeServer secure(*m_tls);
        secure.answerAll(check);
        FakeServer plain;
        Response redirect =
            Response::redirect(redirectStatus, "https://127.0.0.1:" + QByteArray::number(secure.port()) + "/qbt//");
        redirect.headers.append(qMakePair(QByteArray("Set-Cookie"), QByteArray("SID=from-probe; path=/")));
        plain.answerAll(redirect);
        ClientConfiguration source = plain.configuration(API::AuthMethod::basic);
        source.useHTTPS = true;
        source.path = QStringLiteral("/base");
        Suggestion::ProbeSettings settings;
        settings.idle = std::chrono::milliseconds(500);

        const QString newAddress = QStringLiteral("https://127.0.0.1:%1/qbt").arg(secure.port());
        if (suggests) {
            QTest::ignoreMessage(QtInfoMsg,
                                 qPrintable(QStringLiteral("TLS handshake with https://127.0.0.1:%1/base failed, "
                                                           "the server redirects to %2. Error: refused")
                                                .arg(plain.port())
                                                .arg(newAddress)));
        }
        const auto suggestion = QuilloTest::wait(
            Suggestion::probe(source, Suggestion::Origin::connectionCheck, QStringLiteral("refused"), settings));

        QCOMPARE(suggestion.has_value(), suggests);
        QCOMPARE(plain.requests().size(), 1);
        QCOMPARE(plain.requests().first().target, QByteArray("/base/"));
        // Qt resends a GET whose connection dropped, so a dropped check may arrive more than once.
        QCOMPARE(secure.requests().isEmpty(), redirectStatus == 303);
        for (const auto &request : secure.requests())
            QCOMPARE(request.target, QByteArray("/qbt/api/v2/app/version"));
        for (const auto &request : plain.requests() + secure.requests()) {
            QVERIFY(!request.hasHeader("Cookie"));
            QVERIFY(!request.hasHeader("Authorization"));
        }
        if (suggestion) {
            QCOMPARE(suggestion->source, source);
            QCOMPARE(Suggestion::displayAddress(suggestion->suggested), newAddress);
        }
    }

    void trigger_data()
    {
        QTest::addColumn<bool>("tlsServer");
        QTest::addColumn<bool>("useHTTPS");
        QTest::addColumn<Response>("answer");
        QTest::addColumn<bool>("judgedAsHTTPS");
        QTest::addColumn<bool>("triggers");

        const Response ok = Response::text(200, "v4.5.2");
        QTest::newRow("https to a plain server") << false << true << ok << true << true;
        QTest::newRow("same failure, plain connection") << false << true << ok << false << false;
        QTest::newRow("https, dropped") << true << true << Response::dropConnection() << true << false;
        QTest::newRow("https, silent") << true << true << Response::stallForever() << true << false;
        QTest::newRow("https, 500") << true << true << Response::text(500, {}) << true << false;
        QTest::newRow("http, dropped") << false << false << Response::dropConnection() << false << false;
    }

    void trigger()
    {
        QFETCH(bool, tlsServer);
        QFETCH(bool, useHTTPS);
        QFETCH(Response, answer);
        QFETCH(bool, judgedAsHTTPS);
        QFETCH(bool, triggers);

        // The client verifies with the process default: trust the test certificate only meanwhile.
        const QSslConfiguration previous = QSslConfiguration::defaultConfiguration();
        QSslConfiguration::setDefaultConfiguration(FakeServer::trusting(*m_tls));
        const auto restore = qScopeGuard([&previous] { QSslConfiguration::setDefaultConfiguration(previous); });

        auto server = tlsServer ? std::make_unique<FakeServer>(*m_tls) : std::make_unique<FakeServer>();
        server->answerAll(answer);
        ClientConfiguration configuration = server->configuration(API::AuthMethod::none);
        configuration.useHTTPS = useHTTPS;
        API::Client client(configuration);
        client.setTimeouts({.idle = std::chrono::milliseconds(500), .overall = std::chrono::milliseconds(5'000)});
        configuration.useHTTPS = judgedAsHTTPS;
        try {
            QuilloTest::wait(client.perform(API::Endpoint::Application::version()));
            QFAIL("the request succeeded");
        } catch (const std::exception &error) {
            QCOMPARE(Suggestion::triggersProbe(configuration, error), triggers);
        }
    }

    void dialogAndAcceptance()
    {
        ClientConfiguration saved;
        saved.host = QStringLiteral("nas.example");
        saved.port = 8080;
        saved.useHTTPS = true;
        Suggestion suggestion{.origin = Suggestion::Origin::currentConnection, .source = saved, .suggested = saved};
        suggestion.suggested.port = 443;
        suggestion.suggested.path = QStringLiteral("/qbt");

        QCOMPARE(
            suggestion.dialogMessage(),
            QStringLiteral("Quillo couldn't establish a secure connection to https://nas.example:8080.\n\nThe server "
                           "answers on this port over plain HTTP and redirects to https://nas.example:443/qbt.\n\n"
                           "The new address passed the secure connection check."));
        QCOMPARE(suggestion.acceptButtonTitle(), QStringLiteral("Use https://nas.example:443/qbt"));

        // The saved record may have changed meanwhile: only the address moves.
        saved.name = QStringLiteral("Renamed");
        ClientConfiguration expected = saved;
        expected.port = 443;
        expected.path = QStringLiteral("/qbt");
        QCOMPARE(suggestion.acceptedConfiguration(saved), expected);
    }
};

QTEST_GUILESS_MAIN(TestHTTPSSuggestion)
#include "tst_httpssuggestion.moc"
