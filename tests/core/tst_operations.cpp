#include "core/AppContext.h"
#include "support/Await.h"
#include "support/ScriptedTorrents.h"

#include <QSignalSpy>
#include <QTest>

#include <functional>

using QuilloTest::wait;
using Operation = std::function<QCoro::Task<>(AppContext &)>;

Q_DECLARE_METATYPE(Operation)

namespace {

using Set = QSet<QString>;

Operation op(QCoro::Task<> (AppContext::*method)(Set), Set hashes)
{
    return [method, hashes](AppContext &context) { return (context.*method)(hashes); };
}

} // namespace

// The torrent operations against a scripted server: which request each sends, what it changes here
// at once, and that a failure changes nothing and names the operation.
class TestOperations : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptedTorrents> m_fixture;
    AppContext *m_context = nullptr;

    void connectTo(const QByteArray &apiVersion)
    {
        m_fixture = std::make_unique<ScriptedTorrents>(apiVersion);
        m_context = m_fixture->context.get();
    }

    QString states() const
    {
        QStringList parts;
        for (const char *hash : {"aaa", "bbb", "ccc"})
            parts << tntModelStateText(m_fixture->tnt(hash).state());
        return parts.join(u' ');
    }

    QByteArray sent() const { return m_fixture->lastRequest(); }

private Q_SLOTS:
    void cleanup() { m_fixture.reset(); }

    void requestAndLocalState_data()
    {
        QTest::addColumn<QByteArray>("apiVersion");
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QString>("states"); // of aaa, bbb, ccc afterwards

        const QByteArray v2_10 = "2.10.4", v2_11 = "2.11.0";
        const QString before = QStringLiteral("stoppedUP stoppedDL queuedDL");
        QTest::newRow("start, older server")
            << v2_10 << op(&AppContext::startTnts, {QStringLiteral("bbb")})
            << QByteArray("/api/v2/torrents/resume?hashes=bbb") << QStringLiteral("stoppedUP stalledDL queuedDL");
        QTest::newRow("start everything")
            << v2_11 << op(&AppContext::startTnts, {}) << QByteArray("/api/v2/torrents/start?hashes=all")
            << QStringLiteral("stalledUP stalledDL stalledDL");
        QTest::newRow("stop, older server")
            << v2_10 << op(&AppContext::stopTnts, {QStringLiteral("aaa"), QStringLiteral("ccc")})
            << QByteArray("/api/v2/torrents/pause?hashes=aaa%7Cccc") << QStringLiteral("pausedUP stoppedDL pausedDL");
        QTest::newRow("stop") << v2_11 << op(&AppContext::stopTnts, {QStringLiteral("ccc")})
                              << QByteArray("/api/v2/torrents/stop?hashes=ccc")
                              << QStringLiteral("stoppedUP stoppedDL stoppedDL");
        QTest::newRow("force start") << v2_11 << Operation([](AppContext &c) {
            return c.setForceStart({QStringLiteral("aaa"), QStringLiteral("bbb")}, true);
        }) << QByteArray("/api/v2/torrents/setForceStart?hashes=aaa%7Cbbb&value=true")
                                     << QStringLiteral("forcedUP forcedDL queuedDL");
        QTest::newRow("force start everything")
            << v2_11 << Operation([](AppContext &c) { return c.setForceStart({}, true); })
            << QByteArray("/api/v2/torrents/setForceStart?hashes=all&value=true") << before;
        QTest::newRow("recheck waits for the poll") << v2_11 << op(&AppContext::recheckTnts, {QStringLiteral("aaa")})
                                                    << QByteArray("/api/v2/torrents/recheck?hashes=aaa") << before;
        QTest::newRow("priority of nothing selected")
            << v2_11 << Operation([](AppContext &c) { return c.minimumPriority(); })
            << QByteArray("/api/v2/torrents/bottomPrio?hashes=all") << before;
        QTest::newRow("unknown hash") << v2_11 << op(&AppContext::startTnts, {QStringLiteral("zzz")})
                                      << QByteArray("/api/v2/torrents/start?hashes=zzz") << before;
        QTest::newRow("category of no torrent is not all")
            << v2_11 << Operation([](AppContext &c) { return c.setCategory({}, QStringLiteral("films")); })
            << QByteArray() << before;
    }

    void requestAndLocalState()
    {
        QFETCH(QByteArray, apiVersion);
        QFETCH(Operation, operation);
        QFETCH(QByteArray, request);
        QFETCH(QString, states);
        connectTo(apiVersion);
        wait(operation(*m_context));
        QCOMPARE(sent(), request);
        QCOMPARE(this->states(), states);
        QVERIFY(!m_context->clientError());
    }

    void failureChangesNothing_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("title");
        const Set one{QStringLiteral("bbb")};
        QTest::newRow("start") << op(&AppContext::startTnts, one) << QStringLiteral("Failed to start torrents.");
        QTest::newRow("stop") << op(&AppContext::stopTnts, one) << QStringLiteral("Failed to stop torrents.");
        QTest::newRow("remove") << Operation([one](AppContext &c) { return c.removeTnts(one, true); })
                                << QStringLiteral("Failed to delete torrents.");
        QTest::newRow("reannounce") << op(&AppContext::reannounceTnts, one)
                                    << QStringLiteral("Failed to reannounce torrents.");
        QTest::newRow("remove trackers") << Operation([](AppContext &c) {
            return c.removeTrackers(QStringLiteral("bbb"), {QStringLiteral("http://t/a")});
        }) << QStringLiteral("Failed to remove trackers.");
        QTest::newRow("add trackers") << Operation([](AppContext &c) {
            return c.addTrackers(QStringLiteral("bbb"), {QStringLiteral("http://t/a")});
        }) << QStringLiteral("Failed to add trackers.");
        QTest::newRow("category") << Operation([one](AppContext &c) { return c.setCategory(one, QString()); })
                                  << QStringLiteral("Failed to set torrent category.");
        QTest::newRow("tags") << Operation([one](AppContext &c) { return c.addTags(one, {QStringLiteral("z")}); })
                              << QStringLiteral("Failed to add tags.");
        QTest::newRow("priority") << Operation([](AppContext &c) { return c.maximumPriority(); })
                                  << QStringLiteral("Failed to set maximum torrent priority.");
        QTest::newRow("speed limits") << Operation([](AppContext &c) { return c.toggleSpeedLimitsMode(); })
                                      << QStringLiteral("Failed to toggle speed limits mode.");
    }

    void failureChangesNothing()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, title);
        connectTo("2.11.0");
        m_fixture->operationStatus = 500;
        QSignalSpy trackersEdited(m_context, &AppContext::trackersEdited);
        wait(operation(*m_context));
        QVERIFY(m_context->clientError());
        QCOMPARE(m_context->clientError()->title(), title);
        QCOMPARE(states(), QStringLiteral("stoppedUP stoppedDL queuedDL"));
        QCOMPARE(m_context->tntCollection().find(QStringLiteral("bbb"))->category(), QStringLiteral("films"));
        QCOMPARE(m_context->tntCollection().find(QStringLiteral("bbb"))->tags(), QString());
        QCOMPARE(trackersEdited.size(), 0);
    }

    void commandWhileLoggedOut()
    {
        connectTo("2.11.0");
        wait(m_context->logOut());
        m_fixture->server.clearRequests();
        wait(m_context->stopTnts({QStringLiteral("aaa")}));
        QCOMPARE(m_context->clientError()->title(), QStringLiteral("Failed to stop torrents."));
        QCOMPARE(m_context->clientError()->description(), QStringLiteral("Quillo is not connected to qBt!"));
        QCOMPARE(m_context->clientError()->failureReason(),
                 QStringLiteral("Click on the lock icon in the top right corner to connect."));
        QCOMPARE(sent(), QByteArray());
        QCOMPARE(m_context->tntCollection().size(), 0); // logging out put away what the server had shown
    }

    // Categories and tags change here as the next poll would change them.
    void labelsChangeAtOnce()
    {
        connectTo("2.11.0");
        const TntModel &nearly = *m_context->tntCollection().find(QStringLiteral("bbb"));
        const TntModel &begun = *m_context->tntCollection().find(QStringLiteral("ccc"));
        wait(m_context->createCategory(QStringLiteral("music"), QStringLiteral("/music")));
        wait(m_context->setCategory({QStringLiteral("bbb")}, QStringLiteral("music")));
        wait(m_context->removeCategories({QStringLiteral("films")}));
        QCOMPARE(m_context->categories().keys(), QStringList{QStringLiteral("music")});
        QCOMPARE(m_context->categories().value(QStringLiteral("music")).savePath, QStringLiteral("/music"));
        QCOMPARE(nearly.category(), QStringLiteral("music"));

        wait(m_context->addTags({QStringLiteral("bbb"), QStringLiteral("ccc")},
                                {QStringLiteral("Z"), QStringLiteral("a")}));
        QCOMPARE(nearly.tags(), QStringLiteral("a, Z"));
        QCOMPARE(begun.tags(), QStringLiteral("a, x, y, Z"));
        wait(m_context->removeTags({QStringLiteral("ccc")}, {QStringLiteral("x"), QStringLiteral("Z")}));
        QCOMPARE(begun.tags(), QStringLiteral("a, y"));

        QSignalSpy labels(m_context, &AppContext::labelsChanged);
        wait(m_context->createTags({QStringLiteral("new")}));
        wait(m_context->deleteTags({QStringLiteral("x")}));
        QCOMPARE(m_context->tags(), (QStringList{QStringLiteral("y"), QStringLiteral("new")}));
        QCOMPARE(labels.size(), 2);
    }

    void trackerEditsAskForTheListAgain()
    {
        connectTo("2.11.0");
        QSignalSpy trackersEdited(m_context, &AppContext::trackersEdited);
        wait(m_context->editTracker(QStringLiteral("aaa"), QStringLiteral("http://t/a"), QStringLiteral("http://t/b")));
        QCOMPARE(trackersEdited.size(), 1);
        QCOMPARE(trackersEdited.first().first().toString(), QStringLiteral("aaa"));
        QCOMPARE(sent(), QByteArray("/api/v2/torrents/editTracker?hash=aaa&origUrl=http%3A//t/a&newUrl=http%3A//t/b"));
    }
};

QTEST_GUILESS_MAIN(TestOperations)
#include "tst_operations.moc"
