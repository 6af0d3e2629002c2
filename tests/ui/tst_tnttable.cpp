#include "ui/TntTableModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using State = TntModel::State;

namespace {

QHash<QString, API::STntModel> torrents(int count, const QString &prefix = QStringLiteral("t"))
{
    QHash<QString, API::STntModel> tnts;
    for (int i = 0; i < count; ++i) {
        API::STntModel tnt;
        tnt.name = QStringLiteral("%1%2").arg(prefix).arg(i);
        tnt.state = State::uploading;
        tnt.size = 1024 * (i + 1);
        tnt.progress = 1;
        tnts.insert(QStringLiteral("%1%2").arg(prefix).arg(i), tnt);
    }
    return tnts;
}

API::STntModel renamed(const QString &name)
{
    API::STntModel delta;
    delta.name = name;
    return delta;
}

} // namespace

class TestTntTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void staysConsistentThroughEveryKindOfChange()
    {
        TntCollection collection;
        TntTableModel table(collection);
        QAbstractItemModelTester tester(&table, QAbstractItemModelTester::FailureReportingMode::QtTest);

        collection.replaceAll(TntCollection::build(torrents(20), 5));
        QCOMPARE(table.rowCount(), 20);
        collection.merge(torrents(3, QStringLiteral("new")), {}, 5);
        QCOMPARE(table.rowCount(), 23);
        collection.merge({}, {QStringLiteral("t1"), QStringLiteral("t2"), QStringLiteral("new0"), QStringLiteral("t19")}, 5);
        QCOMPARE(table.rowCount(), 19);
        QVERIFY(!table.match(table.index(0, 0), TntTableModel::HashRole, QStringLiteral("t2"), 1, Qt::MatchExactly).size());
        collection.clear();
        QCOMPARE(table.rowCount(), 0);
    }

    void changesReachOnlyTheirRowsAndColumns()
    {
        TntCollection collection;
        TntTableModel table(collection);
        collection.replaceAll(TntCollection::build(torrents(20), 5));
        QSignalSpy changed(&table, &QAbstractItemModel::dataChanged);

        QHash<QString, API::STntModel> delta;
        for (const qsizetype row : {4, 5, 6, 11})
            delta.insert(collection.at(row).id(), renamed(QStringLiteral("renamed %1").arg(row)));
        collection.merge(delta, {}, 5);

        QCOMPARE(changed.size(), 2); // rows 4-6 and row 11
        const auto first = changed.at(0);
        QCOMPARE(first.at(0).toModelIndex(), table.index(4, TntTableModel::NameColumn));
        QCOMPARE(first.at(1).toModelIndex(), table.index(6, TntTableModel::NameColumn));
        QCOMPARE(changed.at(1).at(0).toModelIndex().row(), 11);
        QCOMPARE(table.index(11, TntTableModel::NameColumn).data().toString(), QStringLiteral("renamed 11"));

        changed.clear();
        QHash<QString, API::STntModel> most;
        for (qsizetype row = 0; row < 15; row += 2) // 8 of 20 rows, scattered
            most.insert(collection.at(row).id(), renamed(QStringLiteral("x%1").arg(row)));
        for (qsizetype row = 1; row < 6; row += 2)
            most.insert(collection.at(row).id(), renamed(QStringLiteral("y%1").arg(row)));
        collection.merge(most, {}, 5);
        QCOMPARE(changed.size(), 1); // 11 of 20 rows: one signal over their span
        QCOMPARE(changed.first().at(0).toModelIndex().row(), 0);
        QCOMPARE(changed.first().at(1).toModelIndex().row(), 14);

        changed.clear();
        API::STntModel unseen;
        unseen.timeActive = 99; // no column shows it
        collection.merge({{collection.at(0).id(), unseen}}, {}, 5);
        QCOMPARE(changed.size(), 0);
    }

    void sortsOnRawValues()
    {
        TntCollection collection;
        TntTableModel table(collection);
        collection.replaceAll(TntCollection::build(torrents(12), 5));
        const QModelIndex small = table.match(table.index(0, 0), TntTableModel::HashRole, QStringLiteral("t1"), 1, Qt::MatchExactly).value(0);
        const QModelIndex large = table.match(table.index(0, 0), TntTableModel::HashRole, QStringLiteral("t10"), 1, Qt::MatchExactly).value(0);
        const auto sizeOf = [&](const QModelIndex &row) {
            return table.index(row.row(), TntTableModel::SizeColumn).data(TntTableModel::SortRole).toLongLong();
        };
        QVERIFY(sizeOf(small) < sizeOf(large)); // "2.0 KiB" sorts after "11.0 KiB" as text
        QCOMPARE(table.index(large.row(), TntTableModel::SizeColumn).data().toString(), QStringLiteral("11.0 KiB"));
    }

    void formats_data()
    {
        QTest::addColumn<QString>("actual");
        QTest::addColumn<QString>("expected");
        QTest::newRow("binary units") << TntFormat::size(1536) << QStringLiteral("1.5 KiB");
        QTest::newRow("rate") << TntFormat::rate(3 * 1024 * 1024) << QStringLiteral("3.0 MiB/s");
        QTest::newRow("no rate") << TntFormat::rate(0) << QString();
        QTest::newRow("infinite eta") << TntFormat::eta(8640000) << QStringLiteral("∞");
        QTest::newRow("eta hours") << TntFormat::eta(3 * 3600 + 125) << QStringLiteral("3h 2m");
        QTest::newRow("eta days") << TntFormat::eta(2 * 86400 + 3600) << QStringLiteral("2d 1h");
        QTest::newRow("never") << TntFormat::date(QDateTime::fromSecsSinceEpoch(-1, Qt::UTC)) << QString();
    }

    void formats()
    {
        QFETCH(QString, actual);
        QFETCH(QString, expected);
        QCOMPARE(actual, expected);
    }
};

QTEST_GUILESS_MAIN(TestTntTable)
#include "tst_tnttable.moc"
