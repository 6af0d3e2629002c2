#include "api/Client.h"
#include "api/ClientError.h"
#include "api/Endpoint.h"
#include "core/AppContext.h"
#include "core/ReconnectionCountdown.h"
#include "support/Await.h"
#include "support/ConnectedServer.h"
#include "support/NginxProxy.h"
#include "support/TorrentFactory.h"

#include <QFile>
#include <QTest>

using QuilloTest::wait;
namespace E = API::Endpoint;

// A real qBittorrent 5.1 behind a real nginx under "/qbt/", set up as qBittorrent's guide asks
// (Host of the upstream, X-Forwarded-Host, the proxy trusted): everything a user does works through
// it, and a server gone behind it, which nginx answers with 502, reads as a lost connection.
class TestReverseProxy : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ConnectedServer> m_server;
    std::unique_ptr<NginxProxy> m_nginx;
    QString m_hash;

    AppContext &context() { return m_server->context(); }

private Q_SLOTS:
    void initTestCase()
    {
        ConnectedServer::StartResult started =
            ConnectedServer::start(QbtServer::Flavor::Trixie51, {.trustedReverseProxies = QStringLiteral("127.0.0.1")});
        QUILLO_REQUIRE_SERVER(started);
        m_server = std::move(started.server);
        NginxProxy::StartResult nginx = NginxProxy::start(m_server->server().webPort(), QStringLiteral("/qbt/"));
        QVERIFY2(nginx.proxy, qPrintable(nginx.failure));
        m_nginx = std::move(nginx.proxy);
        m_server->connect(API::AuthMethod::cookieLogin, m_server->server().credentials(),
                          {.port = m_nginx->port(), .path = QStringLiteral("/qbt")});
        QVERIFY2(m_server->ready(), qPrintable(m_server->alert() + u'\n' + m_nginx->errorLog()));
    }

    void cleanupTestCase()
    {
        m_server.reset();
        m_nginx.reset();
    }

    void addingPollingAndDetails()
    {
        QVERIFY(context().isPolling());
        const qint64 firstRid = context().rid();
        QTRY_VERIFY_WITH_TIMEOUT(context().rid() > firstRid, 10'000);

        const QbtServer::DataDir data = m_server->server().makeDataDir();
        const QString tracker = QStringLiteral("http://127.0.0.1:1/announce");
        const auto made = TorrentFactory::multiFile(data.localPath, QStringLiteral("Proxied"),
                                                    {{QStringLiteral("a.bin"), 20'000}, {QStringLiteral("sub/b.bin"), 30'000}},
                                                    {.announceUrls = {tracker}});
        const QString file = m_server->scratchDir() + QStringLiteral("/proxied.torrent");
        QFile written(file);
        QVERIFY(written.open(QIODevice::WriteOnly) && written.write(made.bytes) == made.bytes.size());
        written.close();
        API::TntAddingOptions options;
        options.tnts = QStringList{file};
        options.savepath = data.serverPath;
        QVERIFY2(wait(context().addTnts(options, true)), qPrintable(m_server->alert()));
        QTRY_VERIFY_WITH_TIMEOUT(context().tntCollection().find(made.infoHash)
                                     && context().tntCollection().find(made.infoHash)->progress() == 1.0,
                                 20'000);
        m_hash = made.infoHash;

        TntDetailContext &details = context().tntDetails();
        details.setShown(true);
        context().setSelectedTnts({made.infoHash});
        details.setTab(TntDetailContext::Tab::general);
        QTRY_VERIFY_WITH_TIMEOUT(details.properties(), 10'000);
        QCOMPARE(details.properties()->values().pieceSize, 16 * 1024);
        details.setTab(TntDetailContext::Tab::trackers);
        QTRY_VERIFY_WITH_TIMEOUT(std::any_of(details.trackers().cbegin(), details.trackers().cend(),
                                             [&](const API::Tracker &listed) { return listed.url == tracker; }),
                                 10'000);
        details.setTab(TntDetailContext::Tab::content);
        QTRY_COMPARE_WITH_TIMEOUT(details.files().size(), 2, 10'000);
        QCOMPARE(details.files().at(1).name, QStringLiteral("Proxied/sub/b.bin"));
        QCOMPARE(m_server->alert(), QString());
    }

    void serverGoneBehindTheProxy()
    {
        ReconnectionCountdown countdown(context(), std::chrono::hours(1));
        m_server->server().stop();
        // nginx answers for it: 502 Bad Gateway.
        try {
            wait(context().client()->perform(E::Application::version()));
            QFAIL("the request through a proxy without its server succeeded");
        } catch (...) {
            const API::ClientError error(QStringLiteral("title"), std::current_exception());
            QCOMPARE(error.description(), QStringLiteral("Connection error!"));
        }
        QTRY_COMPARE_WITH_TIMEOUT(context().connectionLossCount(), 1, 10'000);
        QVERIFY(!context().isPolling());
        QVERIFY(countdown.isRunning());
        QCOMPARE(context().connectionError(), QStringLiteral("Connection error!"));
        QVERIFY2(!m_server->alert().contains(u"decode", Qt::CaseInsensitive), qPrintable(m_server->alert()));

        // Back behind the proxy with the sessions forgotten: one reconnection logs in again.
        QCOMPARE(m_server->server().restart(), QString());
        countdown.reconnectNow();
        QTRY_VERIFY_WITH_TIMEOUT(context().isPolling() && context().connectionLossCount() == 0, 20'000);
        QTRY_VERIFY_WITH_TIMEOUT(context().tntCollection().find(m_hash), 20'000);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    TestReverseProxy test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_reverseproxy_realservers.moc"
