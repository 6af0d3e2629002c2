#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "support/Await.h"
#include "support/FakeServer.h"

#include <QCoroTask>
#include <QRegularExpression>
#include <QTest>

using namespace API;
namespace E = API::Endpoint;

Q_DECLARE_METATYPE(API::APIEndpoint)
Q_DECLARE_METATYPE(API::AuthMethod)
Q_DECLARE_METATYPE(API::UserCredentials)

namespace {

const QStringList oneHash{QStringLiteral("h1")};
constexpr WebAPIVersion api2_11_4{2, 11, 4};
constexpr WebAPIVersion api2_15_1{2, 15, 1};

} // namespace

// What reaches the wire: method word, path, headers and form bodies, byte for byte.
class TestRequests : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void requestBytes_data()
    {
        QTest::addColumn<QString>("basePath");
        QTest::addColumn<APIEndpoint>("endpoint");
        QTest::addColumn<QByteArray>("requestLine");
        QTest::addColumn<QByteArray>("contentType");
        QTest::addColumn<QByteArray>("body");

        const QByteArray form = "application/x-www-form-urlencoded";
        const auto row = [](const char *name, const QString &basePath, const APIEndpoint &endpoint,
                            const QByteArray &requestLine, const QByteArray &contentType, const QByteArray &body) {
            QTest::newRow(name) << basePath << endpoint << requestLine << contentType << body;
        };

        row("login encodes reserved characters", {},
            E::Auth::login({QStringLiteral("ad min"), QStringLiteral("p&ss=w+rd é%"), {}}),
            "POST /api/v2/auth/login", form, "username=ad%20min&password=p%26ss%3Dw%2Brd%20%C3%A9%25");
        row("logout has no body", {}, E::Auth::logout(), "POST /api/v2/auth/logout", {}, {});
        row("base path", QStringLiteral("/qbt/"), E::Application::version(), "GET /qbt/api/v2/app/version", {}, {});
        row("base path without slash", QStringLiteral("qbt"), E::Application::buildInfo(),
            "GET /qbt/api/v2/app/buildInfo", {}, {});
        row("preferences json", {}, E::Application::setPreferences(R"({"a":1})"),
            "POST /api/v2/app/setPreferences", form, "json=%7B%22a%22%3A1%7D");
        row("empty hash set", {}, E::TntManagement::start({}), "POST /api/v2/torrents/start", form, "hashes=");
        row("share limits before 2.15", {}, E::TntManagement::setShareLimits(oneHash, 2, -2, -1, api2_11_4),
            "POST /api/v2/torrents/setShareLimits", form,
            "hashes=h1&ratioLimit=2.0&seedingTimeLimit=-2&inactiveSeedingTimeLimit=-1");
        row("share limits from 2.15", {}, E::TntManagement::setShareLimits(oneHash, 1.5, 60, 30, api2_15_1),
            "POST /api/v2/torrents/setShareLimits", form,
            "hashes=h1&ratioLimit=1.5&seedingTimeLimit=60&inactiveSeedingTimeLimit=30&shareLimitAction=Default"
            "&shareLimitsMode=Default");
        row("edit tracker before 2.15", {},
            E::TntManagement::editTracker(QStringLiteral("h1"), QStringLiteral("http://a/x"), QStringLiteral("http://b/y"), api2_11_4),
            "POST /api/v2/torrents/editTracker", form, "hash=h1&origUrl=http%3A//a/x&newUrl=http%3A//b/y");
        row("edit tracker from 2.15", {},
            E::TntManagement::editTracker(QStringLiteral("h1"), QStringLiteral("http://a/x"), QStringLiteral("http://b/y"), api2_15_1),
            "POST /api/v2/torrents/editTracker", form, "hash=h1&url=http%3A//a/x&newUrl=http%3A//b/y");
        row("web seeds joined with a bar", {},
            E::TntManagement::removeWebSeeds(QStringLiteral("h1"), {QStringLiteral("http://a/x"), QStringLiteral("http://b/y?q=1")}),
            "POST /api/v2/torrents/removeWebSeeds", form, "hash=h1&urls=http%3A//a/x%7Chttp%3A//b/y?q%3D1");
        row("web seed edited", {},
            E::TntManagement::editWebSeed(QStringLiteral("h1"), QStringLiteral("http://a/x"), QStringLiteral("http://b/y")),
            "POST /api/v2/torrents/editWebSeed", form, "hash=h1&origUrl=http%3A//a/x&newUrl=http%3A//b/y");
        row("metadata source", {}, E::TntManagement::fetchMetadata(QStringLiteral("magnet:?xt=urn:btih:abc&dn=x")),
            "POST /api/v2/torrents/fetchMetadata", form, "source=magnet%3A?xt%3Durn%3Abtih%3Aabc%26dn%3Dx");
        row("upload", {}, E::TntManagement::add({"XyZ", "--XyZ\r\n...--XyZ--\r\n"}), "POST /api/v2/torrents/add",
            "multipart/form-data; boundary=XyZ", "--XyZ\r\n...--XyZ--\r\n");
        row("metadata upload", {}, E::TntManagement::parseMetadata({"b0", "--b0--\r\n"}),
            "POST /api/v2/torrents/parseMetadata", "multipart/form-data; boundary=b0", "--b0--\r\n");
        row("api key rotation", {}, E::Application::rotateAPIKey(), "POST /api/v2/app/rotateAPIKey", {}, {});
        row("ban peers", {}, E::TransferInfo::banPeers({QStringLiteral("1.2.3.4:80"), QStringLiteral("[::1]:6881")}),
            "POST /api/v2/transfer/banPeers", form, "peers=1.2.3.4%3A80%7C%5B%3A%3A1%5D%3A6881");
    }

    void requestBytes()
    {
        QFETCH(QString, basePath);
        QFETCH(APIEndpoint, endpoint);
        QFETCH(QByteArray, requestLine);
        QFETCH(QByteArray, contentType);
        QFETCH(QByteArray, body);

        FakeServer server;
        ClientConfiguration configuration = server.configuration();
        configuration.path = basePath;
        Client client(configuration);
        QuilloTest::wait(client.perform(endpoint));

        QCOMPARE(server.requests().size(), 1);
        const FakeServer::Request &request = server.requests().constFirst();
        QCOMPARE(request.method + ' ' + request.target, requestLine);
        QCOMPARE(request.header("Content-Type"), contentType);
        QCOMPARE(request.body, body);
        QCOMPARE(request.header("User-Agent"), Client::userAgent().toUtf8());
        QVERIFY(!request.hasHeader("Authorization"));
        // Inflating a loopback answer costs more than carrying it; Qt would ask for gzip.
        QCOMPARE(request.header("Accept-Encoding"), QByteArray("identity"));
    }

    void userAgentNamesVersionAndBuild()
    {
        QVERIFY(QRegularExpression(QStringLiteral(R"(^Quillo v\.\d+\.\d+\.\d+ \(\d+\)$)")).match(Client::userAgent()).hasMatch());
    }

    void authorizationHeader_data()
    {
        QTest::addColumn<AuthMethod>("method");
        QTest::addColumn<UserCredentials>("credentials");
        QTest::addColumn<QByteArray>("header");
        const UserCredentials full{QStringLiteral("admin"), QStringLiteral("pä:ss"), QStringLiteral("qbt_key")};
        QTest::newRow("none") << AuthMethod::none << full << QByteArray();
        QTest::newRow("cookie login uses the cookie") << AuthMethod::cookieLogin << full << QByteArray();
        QTest::newRow("basic") << AuthMethod::basic << full
                               << QByteArray("Basic " + QByteArray("admin:p\xc3\xa4:ss").toBase64());
        QTest::newRow("basic without password") << AuthMethod::basic
                                                << UserCredentials{QStringLiteral("admin"), {}, {}} << QByteArray();
        QTest::newRow("basic without user") << AuthMethod::basic << UserCredentials{{}, QStringLiteral("pw"), {}}
                                            << QByteArray();
        QTest::newRow("api key") << AuthMethod::apiKey << full << QByteArray("Bearer qbt_key");
        QTest::newRow("api key missing") << AuthMethod::apiKey << UserCredentials{QStringLiteral("a"), QStringLiteral("b"), {}}
                                         << QByteArray();
    }

    void authorizationHeader()
    {
        QFETCH(AuthMethod, method);
        QFETCH(UserCredentials, credentials);
        QFETCH(QByteArray, header);

        FakeServer server;
        Client client(server.configuration(method));
        client.setCredentials(credentials);
        QuilloTest::wait(client.perform(E::Application::version()));
        QCOMPARE(server.requests().constFirst().hasHeader("Authorization"), !header.isEmpty());
        QCOMPARE(server.requests().constFirst().header("Authorization"), header);
    }

    void incompleteAddressSendsNothing_data()
    {
        QTest::addColumn<QString>("host");
        QTest::addColumn<std::optional<int>>("port");
        QTest::newRow("empty host") << QString() << std::optional<int>(8080);
        QTest::newRow("port zero") << QStringLiteral("127.0.0.1") << std::optional<int>(0);
        QTest::newRow("no port") << QStringLiteral("127.0.0.1") << std::optional<int>();
    }

    void incompleteAddressSendsNothing()
    {
        QFETCH(QString, host);
        QFETCH(std::optional<int>, port);
        FakeServer server;
        ClientConfiguration configuration = server.configuration();
        configuration.host = host;
        configuration.port = port;
        Client client(configuration);
        QCOMPARE(QuilloTest::wait(client.perform(E::Sync::maindata(0))), QByteArray());
        QCOMPARE(QuilloTest::wait(client.perform(E::Auth::login({}))), QByteArray());
        QVERIFY(server.requests().isEmpty());
    }

    void unbuildableUrlNamesItsParts()
    {
        ClientConfiguration configuration;
        configuration.host = QStringLiteral("my nas");
        configuration.port = 8080;
        configuration.path = QStringLiteral("/qbt");
        Client client(configuration);
        try {
            QuilloTest::wait(client.perform(E::Application::version()));
            QFAIL("an address with a space must not build");
        } catch (const NetworkError &error) {
            QCOMPARE(error.kind(), NetworkError::Case::urlBuildError);
            QCOMPARE(error.description(), QStringLiteral("Unable to build url!"));
            QCOMPARE(error.failureReason(),
                     QStringLiteral("scheme: http\nhost: my nas\nport: 8080\npath: /qbt/api/v2/app/version"));
        }
    }

    void sessionCookieIsKeptPerClient()
    {
        FakeServer server;
        server.setHandler([](const FakeServer::Request &request) {
            auto response = FakeServer::Response::text(200, "Ok.");
            if (request.target.endsWith("/auth/login"))
                response.headers.append({QByteArray("Set-Cookie"), QByteArray("SID=s3cr3t; HttpOnly; path=/")});
            return response;
        });
        Client first(server.configuration());
        QuilloTest::wait(first.login());
        QuilloTest::wait(first.perform(E::Sync::maindata(0)));
        QCOMPARE(server.requests().at(1).header("Cookie"), QByteArray("SID=s3cr3t"));

        Client second(server.configuration());
        QuilloTest::wait(second.perform(E::Sync::maindata(0)));
        QVERIFY(!server.requests().at(2).hasHeader("Cookie"));
    }
};

QTEST_GUILESS_MAIN(TestRequests)
#include "tst_requests.moc"
