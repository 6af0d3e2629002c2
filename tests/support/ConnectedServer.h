#pragma once

#include "api/AuthMethod.h"
#include "api/Client.h"
#include "api/Records.h"
#include "core/KeychainStore.h"
#include "support/QbtServer.h"

#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include <functional>
#include <memory>
#include <optional>

#ifdef QT_WIDGETS_LIB
#include <QApplication>
#endif

class AppContext;
class UserDefaults;

// A real server with what every test against it needs: a client of its own, logged in, that reads
// what the server holds whatever the app does; and, on a server that lets loopback in without a
// login, an app context over fresh settings already connected. Everything goes in reverse order,
// the server last.
class ConnectedServer
{
public:
    struct StartResult // as QbtServer's, for QUILLO_REQUIRE_SERVER
    {
        std::unique_ptr<ConnectedServer> server;
        QString failure;
        bool skipAlways = false;
    };

    // The bypass is the default: the context needs no keychain then.
    static StartResult start(QbtServer::Flavor flavor, QbtServer::Options options = {.localHostAuth = false});

    ~ConnectedServer();
    ConnectedServer(const ConnectedServer &) = delete;
    ConnectedServer &operator=(const ConnectedServer &) = delete;

    QbtServer &server() { return *m_server; }
    API::Client &client() { return *m_client; }
    API::WebAPIVersion apiVersion() const { return m_apiVersion; }
    KeychainStore &keychain() { return m_keychain; }
    // A scratch folder of the test's own, outside every server.
    QString scratchDir() const { return m_files.path(); }

    // Another way to the same server: a proxy's port and the sub-path it serves the server under.
    struct Route
    {
        int port = 0; // 0: straight to the server
        QString path;
    };

    // A fresh context over empty settings, selecting this server with `method` and `stored` in the
    // keychain, or nothing stored. The previous context and its window go first.
    void connect(API::AuthMethod method, const std::optional<API::UserCredentials> &stored, const Route &via);
    void connect(API::AuthMethod method, const std::optional<API::UserCredentials> &stored)
    {
        connect(method, stored, Route());
    }
    void disconnect();
    // Quillo quits, `whileClosed` runs, and Quillo starts again over the same settings and opens the
    // connection it had open.
    void reopen(const std::function<void()> &whileClosed);
    AppContext &context() { return *m_context; }
    UserDefaults &defaults() { return *m_defaults; }
    // "title|description|reason" of the context's alert; empty without one.
    QString alert() const;
    bool ready() const; // connected, when there is a context

    // The torrent as the server itself lists it; empty when it lists none under `hash`.
    QJsonObject torrent(const QString &hash);

    // A window over the context, shown, and closed before the context goes.
    template<typename Window>
    Window &show()
    {
        auto window = std::make_unique<Window>(context());
        Window &shown = *window;
        shown.show();
        m_window = std::move(window);
        return shown;
    }

private:
    explicit ConnectedServer(std::unique_ptr<QbtServer> server);

    std::unique_ptr<QbtServer> m_server;
    QTemporaryDir m_files;
    KeychainStore m_keychain;
    std::unique_ptr<API::Client> m_client;
    API::WebAPIVersion m_apiVersion;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<AppContext> m_context;
    std::unique_ptr<QObject> m_window;
};

// Starts a server into `fixture` (a std::unique_ptr<ConnectedServer>); skips or fails the test as
// QUILLO_REQUIRE_SERVER does when it cannot start, and fails it when the context cannot connect.
#define QUILLO_CONNECT(fixture, ...)                                                                       \
    do {                                                                                                   \
        ConnectedServer::StartResult quilloStarted = ConnectedServer::start(__VA_ARGS__);                  \
        QUILLO_REQUIRE_SERVER(quilloStarted);                                                              \
        (fixture) = std::move(quilloStarted.server);                                                       \
        QVERIFY2((fixture)->ready(), qPrintable((fixture)->alert()));                                      \
    } while (false)

namespace QuilloTest {

// One run of `Test` per flavor, each with a server of its own.
template<typename Test>
int runPerFlavor(int argc, char *argv[], const QList<QbtServer::Flavor> &flavors = QbtServer::flavors())
{
    int failures = 0;
    for (const QbtServer::Flavor flavor : flavors) {
        Test test(flavor);
        failures += QTest::qExec(&test, argc, argv);
    }
    return failures;
}

} // namespace QuilloTest

#ifdef QT_WIDGETS_LIB
#define QUILLO_TEST_APPLICATION QApplication
#else
#define QUILLO_TEST_APPLICATION QCoreApplication
#endif

#define QUILLO_PER_FLAVOR_MAIN(Test)                                                                       \
    int main(int argc, char *argv[])                                                                       \
    {                                                                                                      \
        QUILLO_TEST_APPLICATION app(argc, argv);                                                           \
        return QuilloTest::runPerFlavor<Test>(argc, argv);                                                 \
    }
