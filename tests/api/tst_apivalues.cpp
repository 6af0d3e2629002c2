#include "api/APIEndpoint.h"
#include "api/AuthMethod.h"
#include "api/Client.h"
#include "api/RedirectPolicy.h"
#include "api/WebAPIVersion.h"

#include <QTest>

using namespace API;

class TestApiValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void webAPIVersionParsing_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("normalised");
        QTest::newRow("full") << QStringLiteral("2.8.19") << true << QStringLiteral("2.8.19");
        QTest::newRow("trailing zero dropped") << QStringLiteral("2.11") << true << QStringLiteral("2.11.0");
        QTest::newRow("line feed") << QStringLiteral("2.11.4\n") << true << QStringLiteral("2.11.4");
        QTest::newRow("empty") << QString() << false << QString();
        QTest::newRow("four parts") << QStringLiteral("1.2.3.4") << false << QString();
        QTest::newRow("word") << QStringLiteral("Forbidden") << false << QString();
        QTest::newRow("negative") << QStringLiteral("2.-1") << false << QString();
        QTest::newRow("empty part") << QStringLiteral("2..1") << false << QString();
    }

    void webAPIVersionParsing()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        QFETCH(QString, normalised);
        const auto version = WebAPIVersion::parse(text);
        QCOMPARE(version.has_value(), valid);
        if (valid)
            QCOMPARE(version->toString(), normalised);
    }

    void webAPIVersionOrdersFieldByField()
    {
        const auto v = [](const char *text) { return *WebAPIVersion::parse(QString::fromLatin1(text)); };
        QVERIFY(v("2.8.19") < v("2.11"));
        QVERIFY(v("2.11.4") < v("2.15"));
        QVERIFY(v("2.15") == v("2.15.0"));
        QVERIFY(v("3") > v("2.99.99"));
    }

    void doubleFormatting_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("negative whole") << -1.0 << QStringLiteral("-1.0");
        QTest::newRow("shortest round trip") << 1.0 / 3.0 << QStringLiteral("0.3333333333333333");
        QTest::newRow("large") << 1e21 << QStringLiteral("1e+21");
    }

    void doubleFormatting()
    {
        QFETCH(double, value);
        QFETCH(QString, text);
        QCOMPARE(FormBody::formatDouble(value), text);
        QCOMPARE(text.toDouble(), value);
    }

    void redirectPolicy_data()
    {
        QTest::addColumn<bool>("followsSameHost");
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<bool>("allowed");
        const auto row = [](const char *name, bool follows, const char *from, const char *to, bool allowed) {
            QTest::newRow(name) << follows << QString::fromLatin1(from) << QString::fromLatin1(to) << allowed;
        };
        row("off refuses everything", false, "http://nas:8080/a", "http://nas:8080/b", false);
        row("same host", true, "http://nas:8080/a", "http://nas:8080/b", true);
        row("host compared without case", true, "http://NAS/a", "http://nas/b", true);
        row("http up to https", true, "http://nas/a", "https://nas/b", true);
        row("https down to http", true, "https://nas/a", "http://nas/b", false);
        row("https to https", true, "https://nas/a", "https://nas:8443/b", true);
        row("other host", true, "http://nas/a", "http://evil.example/b", false);
        row("no host", true, "http://nas/a", "file:///etc/passwd", false);
    }

    void redirectPolicy()
    {
        QFETCH(bool, followsSameHost);
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(bool, allowed);
        QCOMPARE((RedirectPolicy{followsSameHost}.allows(QUrl(from), QUrl(to))), allowed);
    }

    void credentialsCompleteness_data()
    {
        QTest::addColumn<AuthMethod>("method");
        QTest::addColumn<UserCredentials>("credentials");
        QTest::addColumn<bool>("missing");
        const UserCredentials none;
        const UserCredentials userOnly{QStringLiteral("admin"), {}, {}};
        const UserCredentials full{QStringLiteral("admin"), QStringLiteral("secret"), {}};
        const UserCredentials key{{}, {}, QStringLiteral("qbt_key")};
        QTest::newRow("none needs nothing") << AuthMethod::none << none << false;
        QTest::newRow("login without password") << AuthMethod::cookieLogin << userOnly << true;
        QTest::newRow("login complete") << AuthMethod::cookieLogin << full << false;
        QTest::newRow("basic without password") << AuthMethod::basic << userOnly << true;
        QTest::newRow("basic complete") << AuthMethod::basic << full << false;
        QTest::newRow("api key missing") << AuthMethod::apiKey << full << true;
        QTest::newRow("api key present") << AuthMethod::apiKey << key << false;
    }

    void credentialsCompleteness()
    {
        QFETCH(AuthMethod, method);
        QFETCH(UserCredentials, credentials);
        QFETCH(bool, missing);
        QCOMPARE(credentials.isMissing(method), missing);
    }

    // Plain answers are quicker over loopback only: a local network carries them slower than gzip.
    void compressionDecision_data()
    {
        QTest::addColumn<QString>("host");
        QTest::addColumn<bool>("compressed");
        const auto row = [](const char *name, const char *host, bool compressed) {
            QTest::newRow(name) << QString::fromLatin1(host) << compressed;
        };
        row("other IPv4 loopback", "127.8.9.10", false);
        row("IPv6 loopback", "::1", false);
        row("IPv6 loopback in brackets", "[::1]", false);
        row("localhost, upper case", "LocalHost", false);
        row("name under localhost", "qbt.localhost", false);
        row("mDNS name", "nas.local", true);
        row("10/8", "10.20.30.40", true);
        row("192.168/16", "192.168.1.20", true);
        row("IPv6 unique local fd00::", "fd00::1", true);
        row("IPv4-mapped loopback", "::ffff:127.0.0.1", false);
        row("IPv4-mapped private", "::ffff:192.168.0.9", true);
        row("IPv4-mapped public", "::ffff:8.8.8.8", true);
        row("public IPv6", "2001:4860::8888", true);
        row("public name", "seedbox.example.com", true);
        row("name containing localhost", "localhost.example.com", true);
        row("name that looks like an address", "10.0.0.1.example.com", true);
    }

    void compressionDecision()
    {
        QFETCH(QString, host);
        QFETCH(bool, compressed);
        QCOMPARE(wantsCompression(host), compressed);
    }
};

Q_DECLARE_METATYPE(API::AuthMethod)
Q_DECLARE_METATYPE(API::UserCredentials)

QTEST_GUILESS_MAIN(TestApiValues)
#include "tst_apivalues.moc"
