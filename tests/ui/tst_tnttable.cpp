#include "model/TrackerIndex.h"
#include "ui/TntFilterProxy.h"
#include "ui/TntTableModel.h"

#include <QAbstractItemModelTester>
#include <QItemSelectionModel>
#include <QSignalSpy>
#include <QTest>

#include <random>

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

// Few distinct values, so that many rows tie; states that move torrents in and out of "Downloading".
API::STntModel shuffled(std::mt19937 &random, bool complete)
{
    API::STntModel tnt;
    const auto pick = [&random](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    if (complete) {
        tnt.name = QStringLiteral("Part %1").arg(pick(40));
        tnt.size = 1024 * pick(8);
    }
    if (complete || pick(2))
        tnt.dlspeed = 1000 * pick(4);
    if (complete || pick(4) == 0)
        tnt.state = pick(2) ? State::downloading : State::uploading;
    if (!complete && pick(8) == 0)
        tnt.name = QStringLiteral("Part %1").arg(pick(40));
    if (complete || pick(4) == 0)
        tnt.ratio = pick(5) - 2.5; // both signs
    return tnt;
}

QStringList shownHashes(const QAbstractItemModel &model)
{
    QStringList hashes;
    for (int row = 0; row < model.rowCount(); ++row)
        hashes << model.index(row, 0).data(TntTableModel::HashRole).toString();
    return hashes;
}

QSet<QString> selectedHashes(const QItemSelectionModel &selection)
{
    QSet<QString> hashes;
    for (const QModelIndex &row : selection.selectedRows())
        hashes << row.data(TntTableModel::HashRole).toString();
    return hashes;
}

QStringList without(QStringList hashes, const QSet<QString> &left)
{
    hashes.removeIf([&left](const QString &hash) { return left.contains(hash); });
    return hashes;
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
            delta.insert(collection.at(row).id(), API::STntModel{.name = QStringLiteral("renamed %1").arg(row)});
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
            most.insert(collection.at(row).id(), API::STntModel{.name = QStringLiteral("x%1").arg(row)});
        for (qsizetype row = 1; row < 6; row += 2)
            most.insert(collection.at(row).id(), API::STntModel{.name = QStringLiteral("y%1").arg(row)});
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

    void proxyFollowsEveryKindOfChange_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<bool>("descending");
        QTest::addColumn<bool>("downloadingOnly");
        QTest::addColumn<QString>("name");
        QTest::newRow("by rate") << int(TntTableModel::DownSpeedColumn) << true << false << QString();
        QTest::newRow("by name") << int(TntTableModel::NameColumn) << false << false << QString();
        QTest::newRow("by name, descending, downloading") << int(TntTableModel::NameColumn) << true << true << QString();
        QTest::newRow("by status, downloading") << int(TntTableModel::StatusColumn) << false << true << QString();
        QTest::newRow("by ratio, descending") << int(TntTableModel::RatioColumn) << true << false << QString();
        QTest::newRow("by size, name filtered") << int(TntTableModel::SizeColumn) << true << false << u"1"_qs;
        QTest::newRow("unsorted, both filters") << -1 << false << true << u"2"_qs;
    }

    // Random answers against the rules: exactly the admitted torrents, in order, rows that did not
    // change in their order, the selection on the same torrents.
    void proxyFollowsEveryKindOfChange()
    {
        QFETCH(int, column);
        QFETCH(bool, descending);
        QFETCH(bool, downloadingOnly);
        QFETCH(QString, name);
        TntCollection collection;
        TntFilterProxy proxy(collection);
        QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QItemSelectionModel selection(&proxy);
        TrackerIndex trackers;
        const SidebarFilter sidebar = downloadingOnly ? SidebarFilter({SidebarItem::forState(State::downloading)}, trackers)
                                                      : SidebarFilter();
        proxy.setSidebarFilter(sidebar);
        proxy.setNameFilter(name);
        proxy.sort(column, descending ? Qt::DescendingOrder : Qt::AscendingOrder);

        std::mt19937 random(7);
        int added = 0;
        const auto newTorrents = [&](int count) {
            QHash<QString, API::STntModel> tnts;
            for (int i = 0; i < count; ++i, ++added)
                tnts.insert(QStringLiteral("t%1").arg(added), shuffled(random, true));
            return tnts;
        };
        collection.replaceAll(TntCollection::build(newTorrents(300), 5));
        for (int round = 0; round < 30; ++round) {
            for (int pick = 0; pick < 5 && proxy.rowCount() > 0; ++pick)
                selection.select(proxy.index(int(random() % unsigned(proxy.rowCount())), 0),
                                 QItemSelectionModel::Select | QItemSelectionModel::Rows);
            const QStringList before = shownHashes(proxy);
            const QSet<QString> selected = selectedHashes(selection);

            // Every other answer brings no torrent, so what the proxy keeps between sorts is used.
            QHash<QString, API::STntModel> delta = newTorrents(round % 2 ? 0 : 3);
            QStringList removed;
            for (int i = 0; i < 40; ++i) {
                const QString hash = collection.at(qsizetype(random() % quint32(collection.size()))).id();
                if (i < 3)
                    removed << hash;
                else
                    delta.insert(hash, shuffled(random, false));
            }
            collection.merge(delta, removed, 5);
            const QSet<QString> gone(removed.begin(), removed.end());

            const QStringList after = shownHashes(proxy);
            QStringList admitted;
            for (const TntModel *tnt : admittedTnts(collection, sidebar, NameFilter(name)))
                admitted << tnt->id();
            QCOMPARE(QSet(after.begin(), after.end()), QSet(admitted.begin(), admitted.end()));
            if (column < 0)
                QCOMPARE(after, admitted);
            const auto inOrder = [&](const QStringList &shown) {
                for (qsizetype row = 1; row < shown.size() && column >= 0; ++row) {
                    const TntModel &previous = *collection.find(shown[row - 1]), &next = *collection.find(shown[row]);
                    if (TntTableModel::lessThan(TntTableModel::Column(column), descending ? previous : next,
                                                descending ? next : previous))
                        return false;
                }
                return true;
            };
            QVERIFY(inOrder(after));
            const QSet<QString> touched(delta.keyBegin(), delta.keyEnd());
            QCOMPARE(without(after, touched), without(before, touched + gone));
            QCOMPARE(selectedHashes(selection), (selected & QSet(after.begin(), after.end())) - gone);
            // Clicked twice, to the other direction and back: sorted anew from what the proxy kept.
            proxy.sort(column, descending ? Qt::AscendingOrder : Qt::DescendingOrder);
            proxy.sort(column, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
            QVERIFY(inOrder(shownHashes(proxy)));
        }
    }

    void aBusyAnswerReachesTheViewInAFewSignals_data()
    {
        QTest::addColumn<bool>("downloadingOnly");
        QTest::addColumn<bool>("toDownloading"); // else to uploading
        QTest::addColumn<int>("layouts");
        QTest::addColumn<int>("removals");
        QTest::addColumn<int>("insertions");
        // A third of the torrents, scattered, get a rate that moves them to the top and a state.
        QTest::newRow("rates move rows") << false << true << 1 << 0 << 0;
        QTest::newRow("scattered rows leave") << true << false << 1 << 1 << 0;
        QTest::newRow("scattered rows enter") << true << true << 1 << 0 << 1;
    }

    void aBusyAnswerReachesTheViewInAFewSignals()
    {
        QFETCH(bool, downloadingOnly);
        QFETCH(bool, toDownloading);
        QFETCH(int, layouts);
        QFETCH(int, removals);
        QFETCH(int, insertions);
        TntCollection collection;
        TntFilterProxy proxy(collection);
        TrackerIndex trackers;
        if (downloadingOnly)
            proxy.setSidebarFilter(SidebarFilter({SidebarItem::forState(State::downloading)}, trackers));
        proxy.sort(TntTableModel::DownSpeedColumn, Qt::DescendingOrder);
        QHash<QString, API::STntModel> tnts = torrents(300);
        for (int i = 0; i < 300; ++i)
            tnts[QStringLiteral("t%1").arg(i)].state = i % 2 ? State::downloading : State::uploading;
        collection.replaceAll(TntCollection::build(tnts, 5));
        QSignalSpy layout(&proxy, &QAbstractItemModel::layoutChanged);
        QSignalSpy removed(&proxy, &QAbstractItemModel::rowsRemoved);
        QSignalSpy inserted(&proxy, &QAbstractItemModel::rowsInserted);

        QHash<QString, API::STntModel> delta;
        for (int i = toDownloading ? 0 : 1; i < 300; i += 6) { // the other state, every third of them
            API::STntModel change;
            change.dlspeed = 1000 + i;
            change.state = toDownloading ? State::downloading : State::uploading;
            delta.insert(QStringLiteral("t%1").arg(i), change);
        }
        collection.merge(delta, {}, 5);
        QCOMPARE(layout.size(), layouts);
        QCOMPARE(removed.size(), removals);
        QCOMPARE(inserted.size(), insertions);
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
