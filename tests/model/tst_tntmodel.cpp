#include "model/TntCollection.h"

#include <QSignalSpy>
#include <QTest>

using State = TntModel::State;

Q_DECLARE_METATYPE(TntModel::State)

namespace {

API::STntModel record(const QString &name, State state, double progress = 0.5)
{
    API::STntModel tnt;
    tnt.name = name;
    tnt.state = state;
    tnt.progress = progress;
    tnt.totalSize = 1000;
    tnt.dlspeed = 0;
    return tnt;
}

QHash<QString, API::STntModel> full(std::initializer_list<std::pair<QString, API::STntModel>> entries)
{
    QHash<QString, API::STntModel> tnts;
    for (const auto &[hash, tnt] : entries)
        tnts.insert(hash, tnt);
    return tnts;
}

} // namespace

class TestTntModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stateTitlesAndFilters_data()
    {
        QTest::addColumn<State>("state");
        QTest::addColumn<QString>("title");
        QTest::addColumn<State>("group");
        QTest::newRow("stoppedUP") << State::stoppedUP << QStringLiteral("Completed") << State::complited;
        QTest::newRow("pausedUP") << State::pausedUP << QStringLiteral("Completed") << State::complited;
        QTest::newRow("stoppedDL") << State::stoppedDL << QStringLiteral("Stopped") << State::stopped;
        QTest::newRow("forcedMetaDL") << State::forcedMetaDL << QStringLiteral("[F] Metadata loading") << State::downloading;
        QTest::newRow("forcedUP") << State::forcedUP << QStringLiteral("[F] Seeding") << State::uploading;
        QTest::newRow("uploading") << State::uploading << QStringLiteral("Seeding") << State::uploading;
        QTest::newRow("stalledDL") << State::stalledDL << QStringLiteral("Stalled") << State::stalled;
        QTest::newRow("checkingResumeData") << State::checkingResumeData << QStringLiteral("Checking") << State::checking;
        QTest::newRow("missingFiles") << State::missingFiles << QStringLiteral("Missing files") << State::error;
        QTest::newRow("unknown") << State::unknown << QStringLiteral("Unknown") << State::error;
        // No group names it: only "All" and its own entry show it.
        QTest::newRow("allocating") << State::allocating << QStringLiteral("Allocating disk space") << State::all;
    }

    void stateTitlesAndFilters()
    {
        QFETCH(State, state);
        QFETCH(QString, title);
        QFETCH(State, group);
        QCOMPARE(TntModel::stateTitle(state), title);
        QVERIFY(TntModel::matches(state, State::all));
        QVERIFY(TntModel::matches(state, group));
        QVERIFY(TntModel::matches(state, state));
        // The first ten cases are groups: a state belongs to at most one of them besides "all".
        int groups = 0;
        for (int filter = 1; filter < 10; ++filter)
            groups += TntModel::matches(state, static_cast<State>(filter)) ? 1 : 0;
        QCOMPARE(groups, group == State::all ? 0 : 1);
    }

    void updateWritesOnlyWhatChanged()
    {
        TntModel model(QStringLiteral("h"), record(QStringLiteral("A"), State::downloading));
        API::STntModel delta;
        delta.dlspeed = 100;
        QCOMPARE(model.update(delta), TntModel::Fields(TntModel::Dlspeed));
        delta.dlspeed = 301;
        QCOMPARE(model.update(delta), TntModel::Fields(TntModel::Dlspeed));
        QCOMPARE(model.dlspeed(), 201); // smoothed: ceil((100 + 301) / 2)

        API::STntModel same;
        same.name = QStringLiteral("A");
        QCOMPARE(model.update(same), TntModel::Fields(0));
        // A magnet's total size is known only once its metadata arrives.
        API::STntModel sized;
        sized.totalSize = 5;
        QCOMPARE(model.update(sized), TntModel::Fields(TntModel::TotalSize));
        QCOMPARE(model.totalSize(), 5);
    }

    // Where the server keeps a file, from the file list's name and the torrent's content path.
    void remotePathOfAFile_data()
    {
        QTest::addColumn<QString>("savePath");
        QTest::addColumn<QString>("contentPath");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("a single file") << u"/dl"_qs << u"/dl/a.iso"_qs << u"a.iso"_qs << u"/dl/a.iso"_qs;
        QTest::newRow("in its root folder") << u"/dl/"_qs << u"/dl/Album"_qs << u"Album/cd1/a.flac"_qs
                                            << u"/dl/Album/cd1/a.flac"_qs;
        QTest::newRow("a folder of it") << u"/dl"_qs << u"/dl/Album"_qs << u"Album/cd1"_qs << u"/dl/Album/cd1"_qs;
        QTest::newRow("no root folder") << u"/dl/Album"_qs << u"/dl/Album"_qs << u"Album/a.flac"_qs
                                        << u"/dl/Album/Album/a.flac"_qs;
        QTest::newRow("still in the incomplete folder")
            << u"/dl"_qs << u"/incomplete/Album"_qs << u"Album/a.flac"_qs << u"/incomplete/Album/a.flac"_qs;
        QTest::newRow("a server on Windows") << u"D:\\dl"_qs << u"D:\\dl\\Album"_qs << u"Album/cd1/a.flac"_qs
                                             << u"D:\\dl\\Album\\cd1\\a.flac"_qs;
    }

    void remotePathOfAFile()
    {
        QFETCH(QString, savePath);
        QFETCH(QString, contentPath);
        QFETCH(QString, name);
        QFETCH(QString, expected);
        const TntModel model(u"a"_qs, {.contentPath = contentPath, .savePath = savePath});
        QCOMPARE(model.remotePathOf(name), expected);
    }

    void datesChangeOnlyWhenTheyDiffer_data()
    {
        QTest::addColumn<double>("before");
        QTest::addColumn<double>("after");
        QTest::addColumn<bool>("changes");
        QTest::newRow("never stays never") << -1.0 << -1.0 << false;
        QTest::newRow("never to a time") << -1.0 << 1718000000.0 << true;
        QTest::newRow("below a millisecond") << 1718000000.0004 << 1718000000.0001 << true;
    }

    void datesChangeOnlyWhenTheyDiffer()
    {
        QFETCH(double, before);
        QFETCH(double, after);
        QFETCH(bool, changes);
        API::STntModel created = record(QStringLiteral("A"), State::uploading);
        created.completionOn = API::Date(before);
        TntModel model(QStringLiteral("h"), created);
        API::STntModel delta;
        delta.completionOn = API::Date(after);
        QCOMPARE(model.update(delta), changes ? TntModel::Fields(TntModel::CompletionOn) : TntModel::Fields(0));
        QCOMPARE(model.completionOn().secondsSinceEpoch(), after);
    }

    void mergeAnnouncesEachAnswerOnce()
    {
        TntCollection collection;
        collection.replaceAll(TntCollection::build(
            full({{QStringLiteral("a"), record(QStringLiteral("A"), State::downloading)},
                  {QStringLiteral("b"), record(QStringLiteral("B"), State::stalledUP, 1)},
                  {QStringLiteral("c"), record(QStringLiteral("C"), State::downloading)}}),
            5));
        QCOMPARE(collection.size(), 3);

        QSignalSpy changed(&collection, &TntCollection::rowsChanged);
        QSignalSpy inserting(&collection, &TntCollection::aboutToInsert);
        API::STntModel finished;
        finished.state = State::stalledUP;
        finished.progress = 1;
        API::STntModel renamed;
        renamed.name = QStringLiteral("B2");
        collection.merge(full({{QStringLiteral("a"), finished},
                               {QStringLiteral("b"), renamed},
                               {QStringLiteral("d"), record(QStringLiteral("D"), State::metaDL)}}),
                         {}, 5);

        QCOMPARE(changed.size(), 1);
        const auto rows = changed.first().first().value<QList<TntCollection::RowChange>>();
        QCOMPARE(rows.size(), 2);
        QVERIFY(rows[0].row < rows[1].row);
        QCOMPARE(changed.first().at(1).value<TntModel::Fields>(),
                 TntModel::Fields(TntModel::StateField | TntModel::Progress | TntModel::Name));
        QCOMPARE(inserting.size(), 1);
        QCOMPARE(collection.size(), 4);
        QCOMPARE(collection.find(QStringLiteral("d"))->name(), QStringLiteral("D"));
    }

    // A few runs of rows leave one by one, the later first; many scattered rows leave in one pass
    // announced as a reset. Either way the order of the rest and the index follow.
    void removedTorrentsLeaveAndTheIndexFollows_data()
    {
        QTest::addColumn<QList<qsizetype>>("removedRows");
        QTest::addColumn<QList<qsizetype>>("announcedFirstRows"); // empty: a reset
        QTest::newRow("two runs") << QList<qsizetype>{1, 2, 3, 7} << QList<qsizetype>{7, 1};
        QList<qsizetype> everyOther;
        for (qsizetype row = 0; row < 100; row += 2)
            everyOther << row;
        QTest::newRow("fifty scattered") << everyOther << QList<qsizetype>{};
    }

    void removedTorrentsLeaveAndTheIndexFollows()
    {
        QFETCH(QList<qsizetype>, removedRows);
        QFETCH(QList<qsizetype>, announcedFirstRows);
        TntCollection collection;
        QHash<QString, API::STntModel> tnts;
        for (int i = 0; i < 100; ++i)
            tnts.insert(QString::number(i), record(QString::number(i), State::uploading));
        collection.replaceAll(TntCollection::build(tnts, 5));
        QSignalSpy removing(&collection, &TntCollection::aboutToRemove);
        QSignalSpy resets(&collection, &TntCollection::aboutToReset);

        QStringList gone;
        QStringList kept;
        for (qsizetype row = 0; row < collection.size(); ++row)
            (removedRows.contains(row) ? gone : kept) << collection.at(row).id();
        collection.merge({}, gone + QStringList{u"never there"_qs}, 5);

        QList<qsizetype> announced;
        for (const QList<QVariant> &signal : std::as_const(removing))
            announced << signal.at(0).value<qsizetype>();
        QCOMPARE(announced, announcedFirstRows);
        QCOMPARE(resets.size(), announcedFirstRows.isEmpty() ? 1 : 0);
        QStringList left;
        for (qsizetype row = 0; row < collection.size(); ++row) {
            left << collection.at(row).id();
            QCOMPARE(collection.rowOf(collection.at(row).id()), row);
        }
        QCOMPARE(left, kept);
        for (const QString &hash : std::as_const(gone))
            QCOMPARE(collection.rowOf(hash), -1);
    }

    // An answer that left the server before the torrent was removed here never brings it back as
    // a blank row; once the server confirms the removal, the hash is free again.
    void lateAnswerOfARemovedTorrent()
    {
        TntCollection collection;
        collection.replaceAll(TntCollection::build(full({{QStringLiteral("a"), record(QStringLiteral("A"), State::uploading)},
                                                        {QStringLiteral("b"), record(QStringLiteral("B"), State::uploading)}}),
                                                   5));
        collection.removeHere(TntTargets::only({QStringLiteral("a")}));
        API::STntModel late;
        late.dlspeed = 5;
        collection.merge({{QStringLiteral("a"), late}}, {}, 5);
        QCOMPARE(collection.size(), 1);
        QCOMPARE(collection.rowOf(QStringLiteral("a")), -1);

        collection.merge({}, {QStringLiteral("a")}, 5);
        collection.merge({{QStringLiteral("a"), record(QStringLiteral("A again"), State::metaDL)}}, {}, 5);
        QCOMPARE(collection.find(QStringLiteral("a"))->name(), QStringLiteral("A again"));
    }

    void fullUpdate_data()
    {
        QTest::addColumn<bool>("merged");
        QTest::newRow("replacing every row") << false;
        QTest::newRow("merged over the shown rows") << true;
    }

    void fullUpdate()
    {
        QFETCH(bool, merged);
        const auto after = full({{QStringLiteral("a"), record(QStringLiteral("A"), State::uploading, 1)},
                                 {QStringLiteral("c"), record(QStringLiteral("C2"), State::uploading)},
                                 {QStringLiteral("d"), record(QStringLiteral("D"), State::metaDL)}});
        const auto apply = [&](TntCollection &collection) {
            if (merged)
                collection.mergeFull(after, 5);
            else
                collection.replaceAll(TntCollection::build(after, 5));
        };
        TntCollection collection;
        collection.replaceAll(TntCollection::build(full({{QStringLiteral("a"), record(QStringLiteral("A"), State::downloading)},
                                                        {QStringLiteral("b"), record(QStringLiteral("B"), State::uploading)},
                                                        {QStringLiteral("c"), record(QStringLiteral("C"), State::uploading)}}),
                                                   5));
        QSignalSpy resets(&collection, &TntCollection::aboutToReset);
        apply(collection);
        QCOMPARE(resets.size(), merged ? 0 : 1);
        QCOMPARE(collection.size(), 3);
        QCOMPARE(collection.rowOf(QStringLiteral("b")), -1); // not listed: gone
        QCOMPARE(collection.find(QStringLiteral("c"))->name(), QStringLiteral("C2"));
        QVERIFY(collection.find(QStringLiteral("d")));
    }

};

QTEST_GUILESS_MAIN(TestTntModel)
#include "tst_tntmodel.moc"
