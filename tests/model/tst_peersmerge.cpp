#include "model/TntDetailContext.h"
#include "ui/TntDetailTables.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

namespace {

// Two peers the server has sent in full, with countries resolved.
const QByteArray first = R"({"rid":1,"full_update":true,"show_flags":true,"peers":{
    "1.1.1.1:1":{"client":"A","progress":0.5,"dl_speed":100,"ip":"1.1.1.1","port":1},
    "2.2.2.2:2":{"client":"B","progress":0.1}}})";

// Each peer as "key client progress", in row order.
QStringList rows(const TntDetailContext &details)
{
    QStringList shown;
    for (const auto &peer : details.peers())
        shown << QStringLiteral("%1 %2 %3").arg(peer->id(), peer->client()).arg(peer->progress());
    return shown;
}

} // namespace

// How an answer of the peer sync changes the detail pane's peers, with the table over them checked
// for consistent row signals throughout.
class TestPeersMerge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answerAfterAFullOne_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QStringList>("sameObjects"); // keys whose models must have been kept
        QTest::addColumn<qint64>("rid");
        QTest::addColumn<bool>("showFlags");
        const QString a = QStringLiteral("1.1.1.1:1 A 0.5");
        const QString b = QStringLiteral("2.2.2.2:2 B 0.1");
        const QStringList both{u"1.1.1.1:1"_qs, u"2.2.2.2:2"_qs};
        QTest::newRow("a delta updates in place and appends")
            << QByteArray(R"({"rid":2,"peers":{"2.2.2.2:2":{"progress":0.2},"3.3.3.3:3":{"client":"C"}}})")
            << QStringList{a, u"2.2.2.2:2 B 0.2"_qs, u"3.3.3.3:3 C 0"_qs} << both << qint64(2) << true;
        QTest::newRow("removals come before the peers")
            << QByteArray(R"({"rid":2,"peers_removed":["1.1.1.1:1","9.9.9.9:9"],"peers":{"1.1.1.1:1":{"client":"A2"}}})")
            << QStringList{b, u"1.1.1.1:1 A2 0"_qs} << QStringList{u"2.2.2.2:2"_qs} << qint64(2) << true;
        QTest::newRow("a full update replaces the list")
            << QByteArray(R"({"rid":3,"full_update":true,"show_flags":false,"peers":{"4.4.4.4:4":{"client":"D"}}})")
            << QStringList{u"4.4.4.4:4 D 0"_qs} << QStringList() << qint64(3) << false;
        QTest::newRow("a full update without peers leaves the list")
            << QByteArray(R"({"rid":3,"full_update":true,"peers":{}})") << QStringList{a, b} << both << qint64(3)
            << true;
        QTest::newRow("nothing but removals") << QByteArray(R"({"rid":4,"peers_removed":["2.2.2.2:2"]})")
                                              << QStringList{a} << QStringList{u"1.1.1.1:1"_qs} << qint64(4) << true;
    }

    void answerAfterAFullOne()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QStringList, expected);
        QFETCH(QStringList, sameObjects);
        QFETCH(qint64, rid);
        QFETCH(bool, showFlags);
        TntDetailContext details;
        TntPeerTableModel table(details);
        QAbstractItemModelTester tester(&table, QAbstractItemModelTester::FailureReportingMode::QtTest);
        details.applyPeers(API::decodePeersData(first), 1);
        QHash<QString, const TntModel::Peer *> before;
        for (const auto &peer : details.peers())
            before.insert(peer->id(), peer.get());

        details.applyPeers(API::decodePeersData(answer), 1);
        QCOMPARE(rows(details), expected);
        for (const QString &key : sameObjects)
            QCOMPARE(details.peers().find(key), before.value(key));
        QCOMPARE(details.rid(), rid);
        QCOMPARE(details.showFlags(), showFlags);
        QCOMPARE(table.rowCount(), expected.size());
    }

    // Only what the entry carries changes, the rate through its window, and the answer says so once.
    void aDeltaReportsWhatChanged()
    {
        TntDetailContext details;
        details.applyPeers(API::decodePeersData(first), 2);
        QSignalSpy changed(&details.peers(), &KeyedRowsSignals::rowsChanged);
        details.applyPeers(API::decodePeersData(R"({"rid":2,"peers":{"1.1.1.1:1":{"dl_speed":300,"client":"A"}}})"), 2);
        QCOMPARE(changed.size(), 1);
        const auto changes = changed.first().first().value<QList<KeyedRowsSignals::RowChange>>();
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.first().fields, quint64(TntModel::Peer::DlSpeed));
        const TntModel::Peer &peer = details.peers().at(0);
        QCOMPARE(peer.dlSpeed(), 200); // the average of 100 and 300
        QCOMPARE(peer.progress(), 0.5);
        QCOMPARE(peer.address(), QStringLiteral("1.1.1.1:1"));

        details.applyPeers(API::decodePeersData(R"({"rid":3,"peers":{"1.1.1.1:1":{"client":"A"}}})"), 2);
        QCOMPARE(changed.size(), 1); // nothing changed, nothing said
    }
};

QTEST_GUILESS_MAIN(TestPeersMerge)
#include "tst_peersmerge.moc"
