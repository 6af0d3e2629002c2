#include "api/ClientError.h"
#include "api/ServerCertificate.h"
#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/ConnectedServer.h"
#include "support/FakeServer.h"

#include <QCryptographicHash>
#include <QSslCertificate>
#include <QTemporaryDir>
#include <QTest>

using API::AuthMethod;
using API::ServerCertificate;
using QuilloTest::wait;
using Flavor = QbtServer::Flavor;

Q_DECLARE_METATYPE(API::UserCredentials)

namespace {

QString sha256Of(const QbtServer::Tls &tls)
{
    return QString::fromLatin1(QSslCertificate(tls.certificate).digest(QCryptographicHash::Sha256).toHex());
}

QString alertOf(const AppContext &context)
{
    if (!context.clientError())
        return {};
    const API::ClientError &error = *context.clientError();
    return error.title() + u'|' + error.description() + u'|' + error.failureReason();
}

const API::UserCredentials wrongPassword{QStringLiteral("admin"), QStringLiteral("wrong"), {}};

} // namespace

// Certificates and addresses on real servers: a self-signed HTTPS Web UI is asked about once and
// recognised after, a replaced certificate is refused naming both, and the Host header check and
// the ban after failed logins read as what they are, not as a wrong password.
class TestTrustRealServers : public QObject
{
    Q_OBJECT

public:
    explicit TestTrustRealServers(Flavor flavor)
        : m_flavor(flavor)
    {
    }

private:
    Flavor m_flavor;
    // One store for the run: GLib keeps per-thread data that an ending worker thread leaves behind.
    KeychainStore m_keychain;
    QTemporaryDir m_dir;
    int m_settingsFiles = 0;

    std::unique_ptr<UserDefaults> freshDefaults()
    {
        return std::make_unique<UserDefaults>(m_dir.filePath(QStringLiteral("Quillo-%1.ini").arg(++m_settingsFiles)));
    }

    std::optional<QbtServer::Tls> makeTls()
    {
        QString whyNot;
        auto tls = QbtServer::selfSignedTls(&whyNot);
        if (!tls)
            qWarning("%s", qPrintable(whyNot));
        return tls;
    }

private Q_SLOTS:
    void selfSignedCertificateIsTrustedOnce()
    {
        const auto first = makeTls();
        const auto second = makeTls();
        QVERIFY(first && second);
        auto started = QbtServer::start(m_flavor, {.localHostAuth = false, .tls = first});
        QUILLO_REQUIRE_SERVER(started);
        QbtServer &server = *started.server;
        const auto defaults = freshDefaults();
        ClientConfiguration nas = server.configuration();
        nas.authMethod = AuthMethod::none;
        QVERIFY(nas.useHTTPS);

        {
            AppContext context(*defaults, m_keychain);
            context.addConfiguration(nas);
            wait(context.selectConfiguration(nas.id));
            QTRY_VERIFY(context.certificateQuestion());
            QVERIFY(!context.certificateQuestion()->isChange());
            QCOMPARE(context.certificateQuestion()->presented.sha256, sha256Of(*first));
            QCOMPARE(context.certificateQuestion()->presented.subject, QStringLiteral("CN=127.0.0.1, O=Quillo tests"));
            QVERIFY(!context.clientError()); // a question, not a failure

            context.declineCertificate();
            QCOMPARE(alertOf(context).section(u'|', 0, 1), QStringLiteral("Not connected.|Quillo did not connect to the server."));
            QTRY_VERIFY(!context.client());
            QVERIFY(!context.isAuthorized());
            QCOMPARE(context.clientConfigurations().size(), 1);

            context.dismissClientError();
            wait(context.selectConfiguration(nas.id));
            QTRY_VERIFY(context.certificateQuestion());
            wait(context.trustCertificate());
            QTRY_VERIFY(context.isPolling());
            QCOMPARE(context.clientConfigurations().constFirst().trustedCertificate, sha256Of(*first));
        }

        // The next start of the application connects without asking.
        AppContext later(*defaults, m_keychain);
        wait(later.selectConfiguration(nas.id));
        QTRY_VERIFY(later.isPolling());
        QVERIFY(!later.certificateQuestion());
        QVERIFY(!later.clientError());

        // The server restarts with another certificate under the open session.
        server.replaceTls(*second);
        QCOMPARE(server.restart(), QString());
        QTRY_VERIFY_WITH_TIMEOUT(later.certificateQuestion() || later.connectionLossCount() > 0, 30'000);
        if (!later.certificateQuestion()) // the poll met the server down: the next attempt meets it
            wait(later.reconnect());
        QTRY_VERIFY(later.certificateQuestion());
        const CertificateQuestion changed = *later.certificateQuestion();
        QVERIFY(changed.isChange());
        QCOMPARE(changed.title(), QStringLiteral("The server's certificate has changed!"));
        QVERIFY2(changed.message().contains(QStringLiteral("Trusted SHA-256: %1\nPresented SHA-256: %2")
                                                .arg(ServerCertificate::displayFingerprint(sha256Of(*first)),
                                                     ServerCertificate::displayFingerprint(sha256Of(*second)))),
                 qPrintable(changed.message()));
        QTRY_VERIFY(!later.client());
        QCOMPARE(later.clientConfigurations().constFirst().trustedCertificate, sha256Of(*first));

        wait(later.trustCertificate());
        QTRY_VERIFY(later.isPolling());
        QCOMPARE(later.clientConfigurations().constFirst().trustedCertificate, sha256Of(*second));
    }

    // The saved HTTPS address reaches a port that speaks plain HTTP and redirects to the server's
    // self-signed HTTPS port: the address is offered, and then the certificate is asked about.
    void secureAddressLeadsToTheQuestion()
    {
        const auto tls = makeTls();
        QVERIFY(tls);
        auto started = QbtServer::start(m_flavor, {.localHostAuth = false, .tls = tls});
        QUILLO_REQUIRE_SERVER(started);
        FakeServer front;
        front.answerAll(FakeServer::Response::redirect(
            301, "https://127.0.0.1:" + QByteArray::number(started.server->webPort()) + "/"));
        ClientConfiguration saved = front.configuration(AuthMethod::none);
        saved.useHTTPS = true;
        const auto defaults = freshDefaults();
        AppContext context(*defaults, m_keychain);
        context.addConfiguration(saved);

        wait(context.selectConfiguration(saved.id));
        QTRY_VERIFY(context.httpsRedirectSuggestion());
        QCOMPARE(context.httpsRedirectSuggestion()->suggested.port, std::optional<int>(started.server->webPort()));
        wait(context.acceptHTTPSRedirectSuggestion());
        QTRY_VERIFY(context.certificateQuestion());
        QCOMPARE(context.certificateQuestion()->presented.sha256, sha256Of(*tls));
        wait(context.trustCertificate());
        QTRY_VERIFY(context.isPolling());
        QCOMPARE(context.clientConfigurations().constFirst().port, std::optional<int>(started.server->webPort()));
        QCOMPARE(context.clientConfigurations().constFirst().trustedCertificate, sha256Of(*tls));
    }

    // With Host header validation on, an address outside the server domains is refused with 401
    // to everything; a wrong password is told apart.
    void rejectedAddressIsExplained_data()
    {
        QTest::addColumn<QString>("host");
        QTest::addColumn<API::UserCredentials>("credentials");
        QTest::addColumn<QString>("alert");
        QTest::addColumn<bool>("asksForLogin");

        QTest::newRow("name outside the server domains")
            << QStringLiteral("localhost") << API::UserCredentials{QStringLiteral("admin"), QStringLiteral("adminadmin"), {}}
            << QStringLiteral("Failed to check authorization bypass.|The server rejects this address!|qBittorrent answers "
                              "every request for \"localhost\" with \"Unauthorized\": its Web UI checks the address a "
                              "client uses, and this one is not among its server domains (or the port differs from "
                              "the one it listens on, as behind a forwarded port). Add localhost to the server domains "
                              "in the Web UI options, or turn off its Host header validation.")
            << false;
        QTest::newRow("the server's own address, wrong password")
            << QStringLiteral("127.0.0.1") << wrongPassword
            << QStringLiteral("Failed to login.|You are not authorized!|Authorization required.") << true;
    }

    void rejectedAddressIsExplained()
    {
        QFETCH(QString, host);
        QFETCH(API::UserCredentials, credentials);
        QFETCH(QString, alert);
        QFETCH(bool, asksForLogin);
        auto started = QbtServer::start(
            m_flavor, {.preferences = "WebUI\\HostHeaderValidation=true\nWebUI\\ServerDomains=some.other.name\n"});
        QUILLO_REQUIRE_SERVER(started);
        ClientConfiguration nas = started.server->configuration();
        nas.host = host;
        const auto defaults = freshDefaults();
        AppContext context(*defaults, m_keychain);
        context.addConfiguration(nas);
        wait(m_keychain.save(nas, credentials));

        wait(context.selectConfiguration(nas.id));
        QTRY_VERIFY(context.clientError());
        QCOMPARE(alertOf(context), alert);
        QCOMPARE(context.isLoginPromptPresented(), asksForLogin);
        QVERIFY(!context.isAuthorized());
        wait(m_keychain.remove(nas));
    }

    // After too many failed logins even the right password is refused: the server's reason is shown,
    // and no login prompt invites more attempts.
    void banIsExplained()
    {
        auto started = QbtServer::start(m_flavor,
                                        {.preferences = "WebUI\\MaxAuthenticationFailCount=2\nWebUI\\BanDuration=600\n"});
        QUILLO_REQUIRE_SERVER(started);
        const ClientConfiguration nas = started.server->configuration();
        const auto defaults = freshDefaults();
        AppContext context(*defaults, m_keychain);
        context.addConfiguration(nas);
        wait(m_keychain.save(nas, wrongPassword));

        wait(context.selectConfiguration(nas.id));
        QTRY_VERIFY(context.isLoginPromptPresented());
        QCOMPARE(alertOf(context), QStringLiteral("Failed to login.|You are not authorized!|Authorization required."));
        wait(context.logIn(wrongPassword, false));
        QTRY_VERIFY(context.isLoginPromptPresented());

        wait(context.logIn(started.server->credentials(), false));
        QCOMPARE(alertOf(context),
                 QStringLiteral("Failed to login.|Forbidden!|Your IP address has been banned after too many failed "
                                "authentication attempts."));
        QVERIFY(!context.isLoginPromptPresented());
        QVERIFY(!context.isAuthorized());
    }
};

QUILLO_PER_FLAVOR_MAIN(TestTrustRealServers)

#include "tst_trust_realservers.moc"
