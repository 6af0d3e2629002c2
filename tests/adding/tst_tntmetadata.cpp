#include "adding/TntMetadata.h"
#include "api/Errors.h"
#include "support/Files.h"
#include "support/TorrentFactory.h"

#include <QCryptographicHash>
#include <QTemporaryDir>
#include <QTest>

namespace {

using File = TntMetadata::Info::File;

QString sha1(const QByteArray &bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex());
}

// JSON written with single quotes, to keep the rows readable.
QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

} // namespace

class TestTntMetadata : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void singleFile()
    {
        const QByteArray info("d6:lengthi5e4:name5:a.bin12:piece lengthi16384e6:pieces20:aaaaaaaaaaaaaaaaaaaae");
        TntMetadata expected{.comment = QString(), .createdBy = TntMetadata::notAvailable(), .creationDate = API::Date(-1),
                             .hash = sha1(info), .infohashV1 = sha1(info)};
        expected.info = TntMetadata::Info{.name = u"a.bin"_qs, .length = 5, .pieceLength = 16384};
        QCOMPARE(TntMetadata::fromTorrentData("d8:announce9:http://x/4:info" + info + "e"), expected);
    }

    void filledFields()
    {
        const auto metadata = TntMetadata::fromTorrentData(
            "d7:comment6:caf\xc3\xa9!10:created by4:mk 113:creation datei1700000000e"
            "4:infod5:filesld6:lengthi3e4:pathl3:cd16:a.flaceed6:lengthi4e4:pathl1:\xff" "5:b.txteed4:pathl1:ceee"
            "4:name5:Album7:privatei1eee trailing");
        QVERIFY(metadata);
        const QList<File> files{{u"Album/cd1/a.flac"_qs, 3, {}}, {u"Album/b.txt"_qs, 4, {}}, {u"Album/c"_qs, 0, {}}};
        QCOMPARE(metadata->info->files, files);
        QCOMPARE(metadata->info->isPrivate, true);
        QCOMPARE(metadata->comment, u"café!"_qs);
        QCOMPARE(metadata->createdBy, u"mk 1"_qs);
        QCOMPARE(metadata->creationDate.secondsSinceEpoch(), 1700000000.0);
    }

    void privateFlag_data()
    {
        QTest::addColumn<QByteArray>("entry");
        QTest::addColumn<bool>("isPrivate");
        QTest::newRow("1") << QByteArray("7:privatei1e") << true;
        QTest::newRow("2") << QByteArray("7:privatei2e") << false;
        QTest::newRow("absent") << QByteArray() << false;
    }

    void privateFlag()
    {
        QFETCH(QByteArray, entry);
        QFETCH(bool, isPrivate);
        QCOMPARE(TntMetadata::fromTorrentData("d4:infod4:name1:a" + entry + "ee")->info->isPrivate, isPrivate);
    }

    void hashOfARealTorrent()
    {
        QTemporaryDir folder;
        const auto torrent = TorrentFactory::multiFile(folder.path(), u"Real"_qs, {{u"a/b.bin"_qs, 40000}, {u"c.bin"_qs, 9}});
        const auto metadata = TntMetadata::fromTorrentData(torrent.bytes + "trailing");
        QCOMPARE(metadata->hash, torrent.infoHash);
        QCOMPARE(metadata->info->files,
                 (QList<File>{{u"Real/a/b.bin"_qs, 40000, {}}, {u"Real/c.bin"_qs, 9, {}}}));
    }

    void noMetadata_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("not bencode") << QByteArray("<html>");
        QTest::newRow("not a dictionary") << QByteArray("l4:infoe");
    }

    void noMetadata()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!TntMetadata::fromTorrentData(bytes));
        QTemporaryDir folder;
        const QString path = QuilloTest::writeFile(folder.path(), u"bad.torrent"_qs, bytes);
        QTest::ignoreMessage(QtInfoMsg, qPrintable(u"Failed to initialize tnt metadata from file://"_qs + path));
        QVERIFY(!TntMetadata::fromFile(path));
    }

    void fromJson()
    {
        const auto metadata = TntMetadata::fromJson(
            json("{'comment':'c','created_by':'qBittorrent','creation_date':1700000000,'hash':'h','infohash_v1':'h1',"
            "'info':{'files':[{'path':'A/x','length':7,'priority':0}],'name':'A','length':7,'piece_length':16384,"
            "'pieces_num':1,'private':true},'trackers':[{'url':'udp://t','tier':2}],'webseeds':['http://w']}"));
        QCOMPARE(metadata.createdBy, u"qBittorrent"_qs);
        QCOMPARE(metadata.creationDate.secondsSinceEpoch(), 1700000000.0);
        QCOMPARE(metadata.infohashV1, u"h1"_qs);
        QCOMPARE(metadata.infohashV2, QString(40, u'x'));
        const TntMetadata::Info info{{{u"A/x"_qs, 7, 0}}, u"A"_qs, 7, 16384, 1, true};
        QCOMPARE(*metadata.info, info);
        QCOMPARE(metadata.trackers, (QList<TntMetadata::Tracker>{{u"udp://t"_qs, 2}}));
        QCOMPARE(metadata.webseeds, QStringList{u"http://w"_qs});
    }

    void jsonOfWrongType_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("text as number") << json("{'comment':1}");
        QTest::newRow("fraction as integer") << json("{'creationDate':1.5}");
        QTest::newRow("flag as number") << json("{'info':{'private':1}}");
        QTest::newRow("file not an object") << json("{'info':{'files':['a']}}");
        QTest::newRow("not JSON") << QByteArray("{");
    }

    void jsonOfWrongType()
    {
        QFETCH(QByteArray, json);
        QVERIFY_THROWS_EXCEPTION(API::ResponseDecodingError, TntMetadata::fromJson(json));
    }
};

QTEST_GUILESS_MAIN(TestTntMetadata)
#include "tst_tntmetadata.moc"
