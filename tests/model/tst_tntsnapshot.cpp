#include "model/ServerLabels.h"
#include "model/TntCollection.h"
#include "model/TntSnapshot.h"
#include "model/TrackerIndex.h"

#include <QTest>

#include <cmath>

namespace {

// Every kind of value a field takes: absent, negative, fractional, non-ASCII, repeated and unique.
QHash<QString, API::STntModel> library(int size)
{
    static const QStringList paths{u"/srv/films"_qs, u"/srv/música"_qs, u"D:\\Downloads"_qs, QString()};
    QHash<QString, API::STntModel> tnts;
    tnts.reserve(size);
    for (int i = 0; i < size; ++i) {
        API::STntModel tnt;
        tnt.name = (i % 20 == 0 ? u"映画 "_qs : u"Torrent "_qs) + QString::number(i);
        if (!paths[i % 4].isNull())
            tnt.savePath = paths[i % 4];
        tnt.category = i % 3 == 0 ? QString() : u"Films"_qs;
        tnt.tags = i % 5 == 0 ? u"a, b"_qs : u""_qs;
        tnt.state = static_cast<TntModelState>(i % tntModelStateCount);
        tnt.progress = (i % 101) / 100.0;
        tnt.size = qint64(i) * 1'000'003;
        tnt.dlLimit = i % 2 ? -1 : i;
        tnt.ratioLimit = -2.0;
        tnt.addedOn = API::Date(1.7e9 + i + 0.25);
        tnt.autoTmm = i % 2 == 0;
        tnt.dlspeed = 12345; // a rate: stale once kept, so not kept
        tnts.insert(QString::number(i, 16).rightJustified(40, u'0'), tnt);
    }
    return tnts;
}

} // namespace

class TestTntSnapshot : public QObject
{
    Q_OBJECT

    API::MainData m_labels;
    TntCollection m_tnts;
    ServerLabels m_serverLabels;
    TrackerIndex m_trackers;

private Q_SLOTS:
    void initTestCase()
    {
        m_tnts.replaceAll(TntCollection::build(library(50'000), 5));
        m_labels.fullUpdate = true;
        m_labels.categories.insert(u"Films"_qs, {u"Films"_qs, u"/srv/films"_qs});
        m_labels.categories.insert(u"Empty"_qs, {u"Empty"_qs, std::nullopt});
        m_labels.tags = {u"a"_qs, u"b"_qs};
        m_serverLabels.apply(m_labels);
        m_trackers.apply(true, {{u"http://t.example/announce"_qs, {m_tnts.at(0).id(), m_tnts.at(1).id()}}}, {});
    }

    // 50,000 torrents written and read back equal, field by field.
    void roundTrip()
    {
        const std::optional<API::MainData> read =
            TntSnapshot::decode(TntSnapshot::encode(m_tnts, m_serverLabels, m_trackers));
        QVERIFY(read);
        QVERIFY(read->fullUpdate.value_or(false));
        QCOMPARE(read->tnts.size(), m_tnts.size());
        TntCollection again;
        again.replaceAll(TntCollection::build(read->tnts, 5));
        for (qsizetype row = 0; row < m_tnts.size(); ++row) {
            const TntModel &before = m_tnts.at(row);
            const TntModel *after = again.find(before.id());
            QVERIFY(after);
#define QUILLO_SAME_kept(member)                                                                           \
    if (!(before.member() == after->member()))                                                             \
        QFAIL(qPrintable(before.id() + u' ' + QStringLiteral(#member)));
#define QUILLO_SAME_rate(member) QVERIFY(after->member() == 0);
#define QUILLO_SAME_wire(member)
#define QUILLO_SAME(member, Bit, Type, decoding, role) QUILLO_SAME_##role(member)
            QUILLO_TNT_FIELDS(QUILLO_SAME)
        }
        QCOMPARE(read->categories, m_labels.categories);
        QCOMPARE(read->tags, m_labels.tags);
        QCOMPARE(read->trackers, m_trackers.urls());
    }

    // A file cut anywhere, or changed in any byte, is no snapshot.
    void damageIsRefused()
    {
        TntCollection few;
        few.replaceAll(TntCollection::build(library(3), 5));
        const QByteArray bytes = TntSnapshot::encode(few, m_serverLabels, m_trackers);
        QVERIFY(TntSnapshot::decode(bytes));
        for (qsizetype size = 0; size < bytes.size(); ++size)
            QVERIFY2(!TntSnapshot::decode(bytes.first(size)), qPrintable(QString::number(size)));
        for (qsizetype at = 0; at < bytes.size(); ++at) {
            QByteArray changed = bytes;
            changed[at] = static_cast<char>(changed[at] ^ 0x01);
            QVERIFY2(!TntSnapshot::decode(changed), qPrintable(QString::number(at)));
        }
        QVERIFY(!TntSnapshot::decode(bytes + 'x'));
    }
};

QTEST_GUILESS_MAIN(TestTntSnapshot)
#include "tst_tntsnapshot.moc"
