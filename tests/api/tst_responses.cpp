#include "api/Client.h"
#include "api/ClientError.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "support/Await.h"
#include "support/FakeServer.h"

#include <QCoroTask>
#include <QPointer>
#include <QTest>
#include <QTimer>

using namespace API;
using namespace std::chrono_literals;
namespace E = API::Endpoint;
using Response = FakeServer::Response;

Q_DECLARE_METATYPE(API::APIEndpoint)
Q_DECLARE_METATYPE(API::AuthMethod)
Q_DECLARE_METATYPE(API::UserCredentials)
Q_DECLARE_METATYPE(FakeServer::Response)

namespace {

struct Failure
{
    QString description;
    QString failureReason;
};

// Runs the request and returns what the user would read, or an empty failure on success.
Failure failureOf(QCoro::Task<> task)
{
    try {
        QuilloTest::wait(std::move(task));
    } catch (...) {
        const ClientError error(QStringLiteral("title"), std::current_exception());
        return {error.description(), error.failureReason()};
    }
    return {};
}

QCoro::Task<> performIgnoringBody(Client &client, APIEndpoint endpoint)
{
    co_await client.perform(std::move(endpoint));
}

enum class Ending { byServer, overallLimit, cancelAll, clientDestroyed };
enum class Read { version, buildInfo, mainData };

QCoro::Task<> typedRead(Client &client, Read read)
{
    if (read == Read::version)
        co_await client.version();
    else if (read == Read::buildInfo)
        co_await client.buildInfo();
    else
        co_await client.mainData(0);
}

const QStringList oneHash{QStringLiteral("h1")};
const QString notAuthorized = QStringLiteral("You are not authorized!");
const QString authRequired = QStringLiteral("Authorization required.");
const QString redirectReason = QStringLiteral("For security, Quillo doesn't follow redirects to another host or "
                                              "from HTTPS to HTTP. Check the connection address.");

} // namespace

Q_DECLARE_METATYPE(Ending)
Q_DECLARE_METATYPE(Read)

// How answers become results or the errors users read.
class TestResponses : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void statusToError_data()
    {
        QTest::addColumn<AuthMethod>("method");
        QTest::addColumn<UserCredentials>("credentials");
        QTest::addColumn<APIEndpoint>("endpoint");
        QTest::addColumn<Response>("response");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("failureReason");

        const UserCredentials password{QStringLiteral("admin"), QStringLiteral("pw"), {}};
        const UserCredentials userOnly{QStringLiteral("admin"), {}, {}};
        const auto row = [](const char *name, AuthMethod method, const UserCredentials &credentials,
                            const APIEndpoint &endpoint, const Response &response, const QString &description,
                            const QString &reason) {
            QTest::newRow(name) << method << credentials << endpoint << response << description << reason;
        };
        const auto text = &Response::text;

        row("success passes the body", AuthMethod::cookieLogin, password, E::Application::version(),
            text(200, "v5.1.0"), {}, {});
        row("unlisted 4xx passes as data", AuthMethod::cookieLogin, password, E::Application::version(),
            text(418, "teapot"), {}, {});
        row("unknown status counts as success", AuthMethod::cookieLogin, password, E::Sync::maindata(0),
            text(299, "{}"), {}, {});
        row("509 is no known server error", AuthMethod::cookieLogin, password, E::Sync::maindata(0), text(509, "{}"),
            {}, {});
        row("401 with basic but no password", AuthMethod::basic, userOnly, E::Sync::maindata(0), text(401, ""),
            notAuthorized, authRequired);
        row("401 with login", AuthMethod::cookieLogin, password, E::Auth::login(password), text(401, ""), notAuthorized,
            authRequired);
        row("403 with api key missing", AuthMethod::apiKey, {}, E::Application::version(), text(403, "Forbidden"),
            notAuthorized, authRequired);
        row("403 for a banned address", AuthMethod::cookieLogin, password, E::Auth::login(password),
            text(403, "Your IP address has been banned after too many failed authentication attempts."),
            QStringLiteral("Forbidden!"),
            QStringLiteral("Your IP address has been banned after too many failed authentication attempts."));
        // qBittorrent's Host header check answers its bare status text; so does a 5.2 login with a
        // wrong password, which carried credentials.
        row("401 to a request without credentials: the address is rejected", AuthMethod::cookieLogin, password,
            E::Application::version(), text(401, "Unauthorized"), QStringLiteral("The server rejects this address!"),
            QStringLiteral("qBittorrent answers every request for \"127.0.0.1\" with \"Unauthorized\": its Web UI "
                           "checks the address a client uses, and this one is not among its server domains (or the "
                           "port differs from the one it listens on, as behind a forwarded port). Add 127.0.0.1 to "
                           "the server domains in the Web UI options, or turn off its Host header validation."));
        row("401 to a 5.2 login", AuthMethod::cookieLogin, password, E::Auth::login(password),
            text(401, "Unauthorized"), notAuthorized, authRequired);
        row("401 to a Basic header", AuthMethod::basic, password, E::Application::version(),
            text(401, "Unauthorized"), QStringLiteral("Invalid username or password!"),
            QStringLiteral("Invalid username or password!"));
        row("403 to a login, in the server's language", AuthMethod::cookieLogin, password, E::Auth::login(password),
            text(403, "Ihre IP-Adresse wurde nach zu vielen fehlgeschlagenen Anmeldeversuchen gesperrt."),
            QStringLiteral("Forbidden!"),
            QStringLiteral("Ihre IP-Adresse wurde nach zu vielen fehlgeschlagenen Anmeldeversuchen gesperrt."));
        row("500", AuthMethod::cookieLogin, password, E::Sync::maindata(0), text(500, "boom"),
            QStringLiteral("Connection error!"), QStringLiteral("Check network or client configuration."));
        row("503", AuthMethod::none, {}, E::TntManagement::start(oneHash), text(503, ""),
            QStringLiteral("Connection error!"), QStringLiteral("Check network or client configuration."));
        row("404 elsewhere passes", AuthMethod::none, {}, E::Application::defaultSavePath(), text(404, "x"), {}, {});
        row("location not writable", AuthMethod::none, {},
            E::TntManagement::setLocation(oneHash, QStringLiteral("/srv/ro")), text(403, "Cannot write to directory"),
            QStringLiteral("You do not have write access to /srv/ro"), QStringLiteral("Cannot write to directory"));
        row("location without session", AuthMethod::cookieLogin, password,
            E::TntManagement::setLocation(oneHash, QStringLiteral("/srv")), text(403, "Forbidden"), notAuthorized,
            authRequired);
        row("file priority without metadata", AuthMethod::none, {},
            E::TntManagement::filePrio(QStringLiteral("h1"), {0}, 1),
            text(409, "Torrent's metadata has not yet downloaded"),
            QStringLiteral("Torrent metadata is not downloaded yet!"),
            QStringLiteral("Torrent's metadata has not yet downloaded"));
        row("edit of a missing category on 5.2", AuthMethod::none, {},
            E::TntManagement::editCategory(QStringLiteral("gone"), {}), text(404, ""),
            QStringLiteral("Failed to edit category!"), QStringLiteral("The server refused the request's parameters."));
        row("invalid torrent file", AuthMethod::none, {}, E::TntManagement::add({"b", "x"}), text(415, ""),
            QStringLiteral("Failed to add torrent!"), QStringLiteral("The torrent file is not valid."));
    }

    void statusToError()
    {
        QFETCH(AuthMethod, method);
        QFETCH(UserCredentials, credentials);
        QFETCH(APIEndpoint, endpoint);
        QFETCH(Response, response);
        QFETCH(QString, description);
        QFETCH(QString, failureReason);

        FakeServer server;
        server.answerAll(response);
        Client client(server.configuration(method));
        client.setCredentials(credentials);
        const Failure failure = failureOf(performIgnoringBody(client, endpoint));
        QCOMPARE(failure.description, description);
        QCOMPARE(failure.failureReason, failureReason);
    }

    void authAnswers_data()
    {
        QTest::addColumn<bool>("logout");
        QTest::addColumn<Response>("response");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("login Ok.") << false << Response::text(200, "Ok.") << true;
        QTest::newRow("login fails in any case") << false << Response::text(200, "LOGIN FAILS") << false;
        QTest::newRow("login any other text") << false << Response::text(200, "Welcome") << true;
        QTest::newRow("login 401 of 5.2") << false << Response::text(401, "") << false;
        QTest::newRow("logout of a gone session, 401") << true << Response::text(401, "") << true;
        QTest::newRow("logout of a gone session, 403") << true << Response::text(403, "Forbidden") << true;
    }

    void authAnswers()
    {
        QFETCH(bool, logout);
        QFETCH(Response, response);
        QFETCH(bool, accepted);
        FakeServer server;
        server.answerAll(response);
        Client client(server.configuration());
        client.setCredentials({QStringLiteral("admin"), QStringLiteral("wrong"), {}});
        const Failure failure = failureOf(logout ? client.logout() : client.login());
        QCOMPARE(failure.description, accepted ? QString() : notAuthorized);
        QCOMPARE(failure.failureReason, accepted ? QString() : authRequired);
    }

    void undecodableBodies_data()
    {
        QTest::addColumn<Read>("read");
        QTest::addColumn<Response>("response");
        QTest::addColumn<QString>("description");
        QTest::addColumn<QString>("failureReason");
        const QString notJson = QStringLiteral("Could not decode JSON data");
        QTest::newRow("text not UTF-8") << Read::version << Response::text(200, "\xff\xfe v4")
                                        << QStringLiteral("Could not decode response data to string!") << QString();
        QTest::newRow("wrong type") << Read::buildInfo << Response::json(R"({"qt":"6.4.2","libtorrent":1})") << notJson
                                    << QStringLiteral("Expected a string for key \"libtorrent\".");
        // Decoded on a worker thread, a refusal still reaches the caller.
        QTest::newRow("main data, rid as text") << Read::mainData << Response::json(R"({"rid":"1"})") << notJson
                                                << QStringLiteral("rid: expected an integer");
    }

    void undecodableBodies()
    {
        QFETCH(Read, read);
        QFETCH(Response, response);
        FakeServer server;
        server.answerAll(response);
        Client client(server.configuration());
        const Failure failure = failureOf(typedRead(client, read));
        QTEST(failure.description, "description");
        QTEST(failure.failureReason, "failureReason");
    }

    void redirectsAreNeverFollowed_data()
    {
        QTest::addColumn<QByteArray>("location");
        QTest::addColumn<QString>("target");
        QTest::newRow("to https on the same host") << QByteArray("https://127.0.0.1:9443/api/v2/app/version")
                                                   << QStringLiteral("https://127.0.0.1:9443/api/v2/app/version");
        QTest::newRow("relative target is resolved") << QByteArray("/login.html") << QStringLiteral("/login.html");
        QTest::newRow("no target") << QByteArray() << QString();
    }

    void redirectsAreNeverFollowed()
    {
        QFETCH(QByteArray, location);
        QFETCH(QString, target);
        FakeServer server;
        server.answerAll(Response::redirect(302, location));
        Client client(server.configuration());
        if (target.startsWith(u'/'))
            target.prepend(QStringLiteral("http://127.0.0.1:%1").arg(server.port()));
        const Failure failure = failureOf(performIgnoringBody(client, E::Application::version()));
        QCOMPARE(failure.description, QStringLiteral("The server redirected the request to another address!"));
        QCOMPARE(failure.failureReason,
                 target.isEmpty() ? redirectReason : redirectReason + QStringLiteral("\n\nRedirect target: ") + target);
        QCOMPARE(server.requests().size(), 1);
    }

    void sameHostPolicyFollowsOnlySameHost()
    {
        FakeServer server;
        const QByteArray base = "http://127.0.0.1:" + QByteArray::number(server.port());
        server.setHandler([&base](const FakeServer::Request &request) {
            if (request.target == "/api/v2/app/version")
                return Response::redirect(307, base + "/moved/api/v2/app/version");
            if (request.target == "/api/v2/app/webapiVersion")
                return Response::redirect(307, "http://localhost.invalid/api/v2/app/webapiVersion");
            return Response::text(200, "v5.1.0");
        });
        Client client(server.configuration());
        client.setRedirectPolicy({.followsSameHost = true});
        QCOMPARE(QuilloTest::wait(client.version()), QStringLiteral("v5.1.0"));
        // Counted by target: the network layer may send a GET again on a busy machine.
        QCOMPARE(server.requests().constLast().target, QByteArray("/moved/api/v2/app/version"));

        const Failure failure = failureOf([&]() -> QCoro::Task<> { co_await client.webapiVersion(); }());
        QCOMPARE(failure.description, QStringLiteral("The server redirected the request to another address!"));
        QVERIFY(failure.failureReason.endsWith(u"Redirect target: http://localhost.invalid/api/v2/app/webapiVersion"));
        QCOMPARE(server.requests().constLast().target, QByteArray("/api/v2/app/webapiVersion"));
    }

    void transportFailures_data()
    {
        QTest::addColumn<Response>("response");
        QTest::addColumn<Ending>("ending");
        QTest::addColumn<bool>("timeout");
        QTest::addColumn<bool>("cancelled");
        QTest::newRow("dropped connection") << Response::dropConnection() << Ending::byServer << false << false;
        QTest::newRow("garbage instead of HTTP") << Response::rawBytes("\x01\x02 not http\r\n\r\n") << Ending::byServer
                                                 << false << false;
        QTest::newRow("answer cut short") << Response::rawBytes("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"rid\":1,\"torrents\":{\"a\":{\"magnet_uri\":\"magnet:?xt")
                                          << Ending::byServer << false << false;
        QTest::newRow("no answer") << Response::stallForever() << Ending::byServer << true << false;
        QTest::newRow("past the overall limit") << Response::stallForever() << Ending::overallLimit << true << false;
        QTest::newRow("cancelled") << Response::stallForever() << Ending::cancelAll << false << true;
        QTest::newRow("client destroyed") << Response::stallForever() << Ending::clientDestroyed << false << true;
    }

    void transportFailures()
    {
        QFETCH(Response, response);
        QFETCH(Ending, ending);
        FakeServer server;
        server.answerAll(response);
        QPointer<Client> client = new Client(server.configuration());
        // Past the overall limit, however long the idle one.
        client->setTimeouts({.idle = ending == Ending::overallLimit ? 1h : 300ms, .overall = 600ms});
        if (ending == Ending::cancelAll)
            QTimer::singleShot(50ms, client, &Client::cancelAll);
        if (ending == Ending::clientDestroyed)
            QTimer::singleShot(50ms, [&client] { delete client; });
        try {
            QuilloTest::wait(client->perform(E::Sync::maindata(0)));
            QFAIL("the request must fail");
        } catch (const TransportError &error) {
            QTEST(error.isTimeout(), "timeout");
            QTEST(error.isCancelled(), "cancelled");
            const ClientError shown(QStringLiteral("Failed to get main data."), std::current_exception());
            QCOMPARE(shown.description(), QStringLiteral("An unexpected error occurred!"));
            QCOMPARE(shown.failureReason(), error.description());
            QVERIFY(!shown.failureReason().isEmpty());
        }
        QCOMPARE(client.isNull(), ending == Ending::clientDestroyed);
        delete client;
    }
};

QTEST_GUILESS_MAIN(TestResponses)
#include "tst_responses.moc"
