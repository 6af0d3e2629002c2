#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "support/Await.h"
#include "support/FakeServer.h"

#include <QTest>

using namespace API;
using Response = FakeServer::Response;

// The client's typed reads and the request layer's compression decision.
class TestTypedReads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Decoded on a worker thread, a refusal still reaches the caller. (Every typed read takes this
    // path; tst_realservers has each of them decode a real server's answer.)
    void undecodableBodiesFail_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("reason");
        QTest::newRow("rid as text") << QByteArray("{\"rid\":\"1\"}") << QStringLiteral("rid: expected an integer");
        QTest::newRow("empty body") << QByteArray() << QString();
    }

    void undecodableBodiesFail()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, reason);
        FakeServer server;
        server.answerAll(Response::json(body));
        Client client(server.configuration());
        try {
            QuilloTest::wait(client.mainData(0));
            QFAIL("the body decoded");
        } catch (const ResponseDecodingError &error) {
            QCOMPARE(error.description(), QStringLiteral("Could not decode JSON data"));
            if (!reason.isEmpty())
                QCOMPARE(error.failureReason(), reason);
        }
    }

    void compressionDecision_data()
    {
        QTest::addColumn<QString>("host");
        QTest::addColumn<bool>("compressed");
        QTest::newRow("IPv4 loopback") << QStringLiteral("127.0.0.1") << false;
        QTest::newRow("other IPv4 loopback") << QStringLiteral("127.8.9.10") << false;
        QTest::newRow("IPv6 loopback") << QStringLiteral("::1") << false;
        QTest::newRow("IPv6 loopback in brackets") << QStringLiteral("[::1]") << false;
        QTest::newRow("localhost") << QStringLiteral("localhost") << false;
        QTest::newRow("localhost, upper case") << QStringLiteral("LocalHost") << false;
        QTest::newRow("name under localhost") << QStringLiteral("qbt.localhost") << false;
        QTest::newRow("mDNS name") << QStringLiteral("nas.local") << false;
        QTest::newRow("10/8") << QStringLiteral("10.20.30.40") << false;
        QTest::newRow("172.16/12 low end") << QStringLiteral("172.16.0.1") << false;
        QTest::newRow("172.16/12 high end") << QStringLiteral("172.31.255.254") << false;
        QTest::newRow("below 172.16/12") << QStringLiteral("172.15.255.254") << true;
        QTest::newRow("above 172.16/12") << QStringLiteral("172.32.0.1") << true;
        QTest::newRow("192.168/16") << QStringLiteral("192.168.1.20") << false;
        QTest::newRow("next to 192.168/16") << QStringLiteral("192.169.1.20") << true;
        QTest::newRow("IPv4 link-local") << QStringLiteral("169.254.10.1") << false;
        QTest::newRow("IPv6 unique local fd00::") << QStringLiteral("fd00::1") << false;
        QTest::newRow("IPv6 unique local fc00::") << QStringLiteral("fc00::17") << false;
        QTest::newRow("IPv6 link-local") << QStringLiteral("fe80::1") << false;
        QTest::newRow("IPv4-mapped private") << QStringLiteral("::ffff:192.168.0.9") << false;
        QTest::newRow("IPv4-mapped public") << QStringLiteral("::ffff:8.8.8.8") << true;
        QTest::newRow("public IPv4") << QStringLiteral("8.8.8.8") << true;
        QTest::newRow("public IPv6") << QStringLiteral("2001:4860::8888") << true;
        QTest::newRow("carrier-grade NAT, a VPN across the internet") << QStringLiteral("100.64.1.2") << true;
        QTest::newRow("public name") << QStringLiteral("seedbox.example.com") << true;
        QTest::newRow("name containing localhost") << QStringLiteral("localhost.example.com") << true;
        QTest::newRow("name that looks like an address") << QStringLiteral("10.0.0.1.example.com") << true;
    }

    void compressionDecision()
    {
        QFETCH(QString, host);
        QFETCH(bool, compressed);
        QCOMPARE(wantsCompression(host), compressed);
    }

    // Qt's default would ask a loopback server for gzip.
    void loopbackRequestsAskForPlainBytes()
    {
        FakeServer server;
        Client client(server.configuration());
        QuilloTest::wait(client.performText(Endpoint::Application::version()));
        QCOMPARE(server.requests().size(), 1);
        QCOMPARE(server.requests().first().header("Accept-Encoding"), QByteArray("identity"));
    }
};

QTEST_GUILESS_MAIN(TestTypedReads)

#include "tst_typedreads.moc"
