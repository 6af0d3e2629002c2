#include "model/SidebarCounts.h"
#include "model/SidebarFilter.h"
#include "model/TntCollection.h"
#include "model/TrackerIndex.h"

#include <QTest>

using State = TntModel::State;
using Items = QList<SidebarItem>;

namespace {

API::STntModel tnt(const QString &name, State state, const QString &category, const QString &tags)
{
    API::STntModel record;
    record.name = name;
    record.state = state;
    record.category = category;
    record.tags = tags;
    record.size = 1024;
    return record;
}

SidebarItem category(const QString &name)
{
    return SidebarItem::forCategory({name, name, {}});
}

} // namespace

// One torrent per edge: the filter over them by the group rules, and the badge counts against it.
class TestSidebarFilter : public QObject
{
    Q_OBJECT

    TntCollection m_collection;
    TrackerIndex m_trackers;

private Q_SLOTS:
    void initTestCase()
    {
        m_collection.replaceAll(TntCollection::build(
            {{u"dl"_qs, tnt(u"Ubuntu ISO"_qs, State::forcedMetaDL, u"linux"_qs, u"iso, big"_qs)},
             {u"st"_qs, tnt(u"Stalled Thing"_qs, State::stalledDL, u"linux"_qs, u""_qs)},
             {u"up"_qs, tnt(u"Café Music"_qs, State::forcedUP, u"music"_qs, u"big"_qs)},
             {u"al"_qs, tnt(u"Allocating"_qs, State::allocating, QString(), u"iso,big"_qs)},
             {u"mi"_qs, tnt(u"Missing"_qs, State::missingFiles, QString(), u"big, iso"_qs)}},
            5));
        m_trackers.apply(true,
                         {{u"http://tracker.example.org/announce"_qs, {u"dl"_qs, u"up"_qs}},
                          {u"udp://tracker.example.org:6969"_qs, {u"st"_qs}},
                          {u"https://other.net/a"_qs, {u"up"_qs}}},
                         {});
    }

    void admits_data()
    {
        QTest::addColumn<Items>("selection");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("admitted");

        const auto state = SidebarItem::forState;
        const QStringList everything{u"al"_qs, u"dl"_qs, u"mi"_qs, u"st"_qs, u"up"_qs};
        QTest::newRow("nothing selected") << Items{} << QString() << everything;
        QTest::newRow("only the All entries") << Items{state(State::all), SidebarItem::forTag(SidebarItem::allTitle()),
                                                       SidebarItem::forCategory(SidebarItem::allCategories())}
                                              << QString() << everything;
        QTest::newRow("states unite") << Items{state(State::downloading), state(State::stalled)} << QString()
                                      << QStringList{u"dl"_qs, u"st"_qs};
        QTest::newRow("a category narrows the union")
            << Items{state(State::downloading), state(State::stalled), state(State::uploading), category(u"music"_qs)}
            << QString() << QStringList{u"up"_qs};
        QTest::newRow("allocating under no state entry")
            << Items{state(State::downloading), state(State::uploading), state(State::stopped), state(State::complited),
                     state(State::queued), state(State::stalled), state(State::checking), state(State::moving),
                     state(State::error)}
            << QString() << QStringList{u"dl"_qs, u"mi"_qs, u"st"_qs, u"up"_qs};
        QTest::newRow("uncategorized") << Items{SidebarItem::forCategory(SidebarItem::noCategory())} << QString()
                                       << QStringList{u"al"_qs, u"mi"_qs};
        QTest::newRow("untagged") << Items{SidebarItem::forTag(SidebarItem::untaggedTitle())} << QString()
                                  << QStringList{u"st"_qs};
        QTest::newRow("second tag, bare comma not split") << Items{SidebarItem::forTag(u"big"_qs)} << QString()
                                                          << QStringList{u"dl"_qs, u"mi"_qs, u"up"_qs};
        QTest::newRow("name folds case and accents") << Items{SidebarItem::forTag(u"big"_qs)} << u"CAFE"_qs
                                                     << QStringList{u"up"_qs};
        QTest::newRow("name within categories") << Items{category(u"linux"_qs), category(u"music"_qs)} << u"u"_qs
                                                << QStringList{u"dl"_qs, u"up"_qs};
        QTest::newRow("tracker and tag intersect")
            << Items{SidebarItem::forTracker(u"tracker.example.org"_qs), SidebarItem::forTag(u"iso"_qs)} << QString()
            << QStringList{u"dl"_qs};
        QTest::newRow("a vanished category admits nothing") << Items{category(u"gone"_qs)} << QString() << QStringList{};
    }

    void admits()
    {
        QFETCH(Items, selection);
        QFETCH(QString, name);
        QFETCH(QStringList, admitted);
        const QList<const TntModel *> result =
            admittedTnts(m_collection, SidebarFilter(QSet<SidebarItem>(selection.cbegin(), selection.cend()), m_trackers),
                         NameFilter(name));
        QStringList hashes;
        qsizetype lastRow = -1;
        for (const TntModel *model : result) {
            QVERIFY(m_collection.rowOf(model->id()) > lastRow); // the collection's order
            lastRow = m_collection.rowOf(model->id());
            hashes << model->id();
        }
        hashes.sort();
        QCOMPARE(hashes, admitted);
    }

    // Each badge is the filter's result for its entry alone, whatever else is selected or typed.
    void countsAreSingleEntryFilters()
    {
        Items entries = SidebarItem::stateItems();
        entries << SidebarItem::forCategory(SidebarItem::allCategories()) << SidebarItem::forCategory(SidebarItem::noCategory())
                << category(u"linux"_qs) << category(u"music"_qs) << category(u"gone"_qs);
        for (const QString &tag : {SidebarItem::allTitle(), SidebarItem::untaggedTitle(), u"iso"_qs, u"big"_qs, u"iso,big"_qs})
            entries << SidebarItem::forTag(tag);
        for (const QString &host : {SidebarItem::allTitle(), SidebarItem::trackerlessTitle(), u"tracker.example.org"_qs,
                                    u"other.net"_qs})
            entries << SidebarItem::forTracker(host);

        const SidebarCounts counts(m_collection, m_trackers);
        for (const SidebarItem &entry : std::as_const(entries))
            QCOMPARE(counts.count(entry), admittedTnts(m_collection, SidebarFilter({entry}, m_trackers)).size());
        QCOMPARE(counts.count(SidebarItem::forState(State::all)), 5);
    }

    void orderStaysWithinAGroup_data()
    {
        QTest::addColumn<SidebarItem>("left");
        QTest::addColumn<SidebarItem>("right");
        QTest::addColumn<bool>("less");
        QTest::newRow("states by title") << SidebarItem::forState(State::uploading) << SidebarItem::forState(State::stopped)
                                         << true; // "Seeding" < "Stopped"
        QTest::newRow("tags by text") << SidebarItem::forTag(u"B"_qs) << SidebarItem::forTag(u"a"_qs) << true;
        QTest::newRow("categories by name") << category(u"b"_qs) << category(u"a"_qs) << false;
        QTest::newRow("state before category?") << SidebarItem::forState(State::all) << category(u"z"_qs) << false;
        QTest::newRow("category before state?") << category(u"A"_qs) << SidebarItem::forState(State::all) << false;
        QTest::newRow("tag before tracker?") << SidebarItem::forTag(u"a"_qs) << SidebarItem::forTracker(u"b"_qs) << false;
    }

    void orderStaysWithinAGroup()
    {
        QFETCH(SidebarItem, left);
        QFETCH(SidebarItem, right);
        QFETCH(bool, less);
        QCOMPARE(left < right, less);
    }

    void selectionIsStoredWithItsFieldsInOrder()
    {
        const QSet<SidebarItem> selection{SidebarItem::forState(State::complited),
                                          SidebarItem::forCategory({u"films"_qs, u"films"_qs, u"/d \"x\""_qs}),
                                          SidebarItem::forTag(u"é"_qs), SidebarItem::forTracker(u"other.net"_qs)};
        const QByteArray json = encodeSidebarItems(selection);
        QCOMPARE(json, QByteArray("[{\"id\":\"complited\",\"type\":\"state\",\"state\":\"complited\"},"
                                  "{\"id\":\"category_films\",\"type\":\"category\",\"category\":"
                                  "{\"id\":\"films\",\"name\":\"films\",\"savePath\":\"/d \\\"x\\\"\"}},"
                                  "{\"id\":\"tag_\u00e9\",\"type\":\"tag\",\"tag\":\"\u00e9\"},"
                                  "{\"id\":\"tracker_other.net\",\"type\":\"tracker\",\"tracker\":\"other.net\"}]"));
        QCOMPARE(decodeSidebarItems(json), selection);
        QCOMPARE(decodeSidebarItems("[{\"id\":\"x\",\"type\":\"state\",\"state\":\"nonsense\"},"
                                    "{\"id\":\"tag_a\",\"type\":\"tag\"}]"),
                 QSet<SidebarItem>{});
    }
};

QTEST_GUILESS_MAIN(TestSidebarFilter)
#include "tst_sidebarfilter.moc"
