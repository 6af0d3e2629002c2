#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/AppContext.h"
#include "support/Await.h"
#include "support/ConnectedServer.h"
#include "support/TorrentFactory.h"
#include "ui/ServerLogModels.h"
#include "ui/ServerLogWindow.h"

#include <QDateTime>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>

using Flavor = QbtServer::Flavor;
using QuilloTest::wait;

namespace {

QList<qint64> idsOf(const auto &lines)
{
    QList<qint64> ids;
    for (const auto &line : lines)
        ids << line.id;
    return ids;
}

bool ascending(const QList<qint64> &ids)
{
    return std::adjacent_find(ids.cbegin(), ids.cend(), [](qint64 a, qint64 b) { return a >= b; }) == ids.cend();
}

} // namespace

// The server's logs on real servers: read whole, then on from the last id as the server logs more;
// and the log window showing them. A refused peer is made by banning an address and asking the
// server to connect to it.
class TestServerLogRealServers : public QObject
{
    Q_OBJECT

public:
    explicit TestServerLogRealServers(Flavor flavor)
        : m_flavor(flavor)
    {}

private:
    const Flavor m_flavor;
    std::unique_ptr<ConnectedServer> m_server;

private Q_SLOTS:
    void initTestCase() { QUILLO_CONNECT(m_server, m_flavor); }
    void cleanupTestCase() { m_server.reset(); }

    void readsOnFromTheLastId()
    {
        API::Client &client = m_server->client();
        const QList<API::LogMessage> start = wait(client.logMessages(-1));
        QVERIFY(!start.isEmpty());
        QCOMPARE(start.first().id, 0);
        QVERIFY(ascending(idsOf(start)));
        // Seconds, on every version (the server's own comment says milliseconds).
        const double now = double(QDateTime::currentSecsSinceEpoch());
        QVERIFY2(std::abs(start.last().timestamp.secondsSinceEpoch() - now) < 3600,
                 qPrintable(QString::number(start.last().timestamp.secondsSinceEpoch())));
        QVERIFY(std::any_of(start.cbegin(), start.cend(),
                            [](const API::LogMessage &line) { return line.message.contains(u"qBittorrent v"); }));

        const qint64 last = start.last().id;
        QVERIFY(wait(client.logMessages(last)).isEmpty());
        const QString hash = QStringLiteral("00000000000000000000000000000000000000a7");
        // A magnet no peer will answer: the server lists it and logs its addition.
        const QByteArray magnet = "magnet:?xt=urn:btih:" + hash.toLatin1() + "&dn=log";
        wait(client.perform(API::Endpoint::TntManagement::add(TorrentFactory::multipartBody({{"urls", magnet}}))));
        QList<API::LogMessage> added;
        QTRY_VERIFY_WITH_TIMEOUT(!(added = wait(client.logMessages(last))).isEmpty(), 10'000);
        QCOMPARE(added.first().id, last + 1);
        QVERIFY(ascending(idsOf(added)));

        QVERIFY(wait(client.peerLog(-1)).isEmpty());
        wait(client.perform(API::Endpoint::TransferInfo::banPeers({QStringLiteral("127.0.0.2:6881")})));
        wait(client.perform(API::Endpoint::TntManagement::addPeers({hash}, {QStringLiteral("127.0.0.2:6881")})));
        QList<API::PeerLogEntry> refused;
        QTRY_VERIFY_WITH_TIMEOUT(!(refused = wait(client.peerLog(-1))).isEmpty(), 10'000);
        QCOMPARE(refused.first(), (API::PeerLogEntry{0, QStringLiteral("127.0.0.2"), refused.first().timestamp, true,
                                                     QStringLiteral("IP filter")}));
        QVERIFY(std::abs(refused.first().timestamp.secondsSinceEpoch() - now) < 3600);
        QVERIFY(wait(client.peerLog(refused.last().id)).isEmpty());
    }

    // The window over the app's own connection shows what the server logged, both logs.
    void window()
    {
        ServerLogWindow &window = m_server->show<ServerLogWindow>();
        const int logged = int(wait(m_server->client().logMessages(-1)).size());
        QTRY_VERIFY_WITH_TIMEOUT(window.messageView()->model()->rowCount() >= logged, 10'000);
        window.tabs()->setCurrentIndex(1);
        QTRY_COMPARE_WITH_TIMEOUT(
            window.peerView()->model()->index(0, PeerLogTableModel::IpColumn).data().toString(),
            QStringLiteral("127.0.0.2"), 10'000);
        QVERIFY(m_server->context().isReadingServerLog());
        window.hide();
        QVERIFY(!m_server->context().isReadingServerLog());
        QVERIFY(!m_server->context().clientError());
    }
};

QUILLO_PER_FLAVOR_MAIN(TestServerLogRealServers)

#include "tst_serverlog_realservers.moc"
