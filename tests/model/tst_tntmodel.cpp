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
        same.totalSize = 5; // fixed at creation
        QCOMPARE(model.update(same), TntModel::Fields(0));
        QCOMPARE(model.totalSize(), 1000);
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
        QSignalSpy completed(&collection, &TntCollection::downloadsCompleted);
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
        QCOMPARE(completed.size(), 1);
        QCOMPARE(completed.first().first().toStringList(), QStringList{u"a"_qs});
    }

    void removedTorrentsLeaveAndTheIndexFollows()
    {
        TntCollection collection;
        QHash<QString, API::STntModel> tnts;
        for (int i = 0; i < 10; ++i)
            tnts.insert(QString::number(i), record(QString::number(i), State::uploading));
        collection.replaceAll(TntCollection::build(tnts, 5));
        QSignalSpy removing(&collection, &TntCollection::aboutToRemove);

        QStringList gone;
        for (const qsizetype row : {1, 2, 3, 7})
            gone << collection.at(row).id();
        collection.merge({}, gone + QStringList{u"never there"_qs}, 5);

        QCOMPARE(collection.size(), 6);
        QCOMPARE(removing.size(), 2); // two contiguous ranges, the later one first
        QCOMPARE(removing.at(0).at(0).value<qsizetype>(), 7);
        QCOMPARE(removing.at(1).at(0).value<qsizetype>(), 1);
        QCOMPARE(removing.at(1).at(1).value<qsizetype>(), 3);
        for (qsizetype row = 0; row < collection.size(); ++row)
            QCOMPARE(collection.rowOf(collection.at(row).id()), row);
        for (const QString &hash : gone)
            QCOMPARE(collection.rowOf(hash), -1);
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
        QSignalSpy completed(&collection, &TntCollection::downloadsCompleted);
        apply(collection);
        QCOMPARE(resets.size(), merged ? 0 : 1);
        QCOMPARE(collection.size(), 3);
        QCOMPARE(collection.rowOf(QStringLiteral("b")), -1); // not listed: gone
        QCOMPARE(collection.find(QStringLiteral("c"))->name(), QStringLiteral("C2"));
        QVERIFY(collection.find(QStringLiteral("d")));
        QCOMPARE(completed.size(), 1); // finished while the full update was on its way

        // The first sync knows nothing before it: nothing has just finished.
        TntCollection fresh;
        QSignalSpy none(&fresh, &TntCollection::downloadsCompleted);
        apply(fresh);
        QCOMPARE(none.size(), 0);
    }

    void completionMeansFinishingADownload_data()
    {
        QTest::addColumn<State>("before");
        QTest::addColumn<State>("after");
        QTest::addColumn<bool>("completion");
        QTest::newRow("downloading to seeding") << State::downloading << State::uploading << true;
        QTest::newRow("stalled to stopped complete") << State::stalledDL << State::stoppedUP << true;
        QTest::newRow("recheck of a complete torrent") << State::checkingUP << State::uploading << false;
        QTest::newRow("resumed seed") << State::pausedUP << State::uploading << false;
        QTest::newRow("stopped download") << State::downloading << State::stoppedDL << false;
    }

    void completionMeansFinishingADownload()
    {
        QFETCH(State, before);
        QFETCH(State, after);
        QFETCH(bool, completion);
        QCOMPARE(isDownloadCompletion(before, after), completion);
    }
};

QTEST_GUILESS_MAIN(TestTntModel)
#include "tst_tntmodel.moc"
