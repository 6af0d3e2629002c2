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

// A valid info dictionary of one 5-byte file, with `entries` (bencoded, in key order) added.
QByteArray infoWith(const QByteArray &entries = {})
{
    return "d6:lengthi5e4:name1:a12:piece lengthi16384e6:pieces20:aaaaaaaaaaaaaaaaaaaa" + entries + "e";
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
                             .hash = sha1(info), .infohashV1 = sha1(info), .infohashV2 = TntMetadata::notAvailable()};
        expected.info = TntMetadata::Info{.name = u"a.bin"_qs, .length = 5, .pieceLength = 16384};
        QCOMPARE(TntMetadata::fromTorrentData("d8:announce9:http://x/4:info" + info + "e"), expected);
    }

    void filledFields()
    {
        const auto metadata = TntMetadata::fromTorrentData(
            "d7:comment6:caf\xc3\xa9!10:created by4:mk 113:creation datei1700000000e"
            "4:infod5:filesld6:lengthi3e4:pathl3:cd16:a.flaceed6:lengthi4e4:pathl1:\xff" "5:b.txteed6:lengthi0e4:pathl1:ceee"
            "4:name5:Album12:piece lengthi16384e6:pieces20:aaaaaaaaaaaaaaaaaaaa7:privatei1eee trailing");
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
        QCOMPARE(TntMetadata::fromTorrentData("d4:info" + infoWith(entry) + "e")->info->isPrivate, isPrivate);
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

    // What libtorrent writes, read as libtorrent reads it: the id a server lists it under, and the
    // files as the server numbers them, without pad files; a symbolic link has no size.
    void madeByLibtorrent_data()
    {
        QTest::addColumn<TorrentFactory::Version>("version");
        QTest::addColumn<QStringList>("entries");
        const QStringList files{u"a/x.bin=40000"_qs, u"b.txt=9"_qs, u"c.bin=20000"_qs, u"d/e/f.bin=1"_qs, u"link->b.txt"_qs};
        QTest::newRow("v1") << TorrentFactory::Version::v1 << files;
        QTest::newRow("v2") << TorrentFactory::Version::v2 << files;
        QTest::newRow("hybrid, pad files between") << TorrentFactory::Version::hybrid << files;
        QTest::newRow("v2, one file") << TorrentFactory::Version::v2 << QStringList{u"one.bin=70000"_qs};
        QTest::newRow("hybrid, one file") << TorrentFactory::Version::hybrid << QStringList{u"one.bin=70000"_qs};
    }

    void madeByLibtorrent()
    {
        QFETCH(TorrentFactory::Version, version);
        QFETCH(QStringList, entries);
        QTemporaryDir folder;
        const auto made = TorrentFactory::madeByLibtorrent(version, folder.path(), u"Made"_qs, entries);
        const auto metadata = TntMetadata::fromTorrentData(made.bytes);
        QVERIFY(metadata);
        QCOMPARE(metadata->hash, made.id);
        QCOMPARE(metadata->infohashV1, made.v1.isEmpty() ? TntMetadata::notAvailable() : made.v1);
        QCOMPARE(metadata->infohashV2, made.v2.isEmpty() ? TntMetadata::notAvailable() : made.v2);
        QCOMPARE(metadata->info->name, u"Made"_qs);
        QList<File> expected;
        qint64 total = 0;
        for (const TorrentFactory::File &file : made.files) {
            expected.append({file.path, file.size, {}});
            total += file.size;
        }
        // libtorrent names the file of a single-file torrent without a folder; such a torrent has
        // its length and no file list.
        if (made.files.size() == 1 && !made.files.constFirst().path.contains(u'/'))
            expected.clear();
        QCOMPARE(metadata->info->files, expected);
        QCOMPARE(metadata->info->length, total);
    }

    // Files every libtorrent-based server refuses are refused when read, saying why.
    void refused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("reason");
        const QString invalid = u"The file's format is invalid."_qs;
        const QByteArray pieces = "12:piece lengthi16384e6:pieces20:aaaaaaaaaaaaaaaaaaaa";
        const auto torrent = [](const QByteArray &info) { return "d4:info" + info + "e"; };
        QTest::newRow("not bencode") << QByteArray("<html>") << invalid;
        QTest::newRow("not a dictionary") << QByteArray("l4:infoe") << invalid;
        QTest::newRow("no info") << QByteArray("d7:comment1:xe") << u"The file holds no torrent information."_qs;
        QTest::newRow("no name") << torrent("d6:lengthi5e" + pieces + "e") << u"The torrent has no name."_qs;
        QTest::newRow("empty name") << torrent("d6:lengthi5e4:name0:" + pieces + "e") << u"The torrent has no name."_qs;
        QTest::newRow("negative length") << torrent("d6:lengthi-425e4:name1:a" + pieces + "e")
                                         << u"The torrent has a file of negative size."_qs;
        QTest::newRow("negative file") << torrent("d5:filesld6:lengthi9e4:pathl1:beed6:lengthi-1e4:pathl1:ceee4:name1:a" + pieces + "e")
                                       << u"The torrent has a file of negative size."_qs;
        QTest::newRow("zero length") << torrent("d6:lengthi0e4:name1:a" + pieces + "e") << u"The torrent's size is zero."_qs;
        QTest::newRow("no piece length") << torrent("d6:lengthi5e4:name1:a6:pieces20:aaaaaaaaaaaaaaaaaaaae")
                                         << u"The torrent has no valid piece length."_qs;
        QTest::newRow("zero piece length") << torrent("d6:lengthi5e4:name1:a12:piece lengthi0e6:pieces20:aaaaaaaaaaaaaaaaaaaae")
                                           << u"The torrent has no valid piece length."_qs;
        QTest::newRow("no pieces") << torrent("d6:lengthi5e4:name1:a12:piece lengthi16384ee") << u"The torrent has no valid pieces."_qs;
        QTest::newRow("cut piece") << torrent("d6:lengthi5e4:name1:a12:piece lengthi16384e6:pieces19:aaaaaaaaaaaaaaaaaaae")
                                   << u"The torrent has no valid pieces."_qs;
        QTest::newRow("no files") << torrent("d5:filesle4:name1:a" + pieces + "e") << u"The torrent has no files."_qs;
        QTest::newRow("neither files nor length") << torrent("d4:name1:a" + pieces + "e") << u"The torrent has no files."_qs;
        QTest::newRow("pad files only") << torrent("d5:filesld4:attr1:p6:lengthi9e4:pathl4:.pad1:9eee4:name1:a" + pieces + "e")
                                        << u"The torrent has no files."_qs;
        QTest::newRow("v2 without a file tree") << torrent("d12:meta versioni2e4:name1:a12:piece lengthi16384ee")
                                                << u"The torrent has no files."_qs;
        // Two files of 9e18 bytes: their sum does not fit in 64 bits.
        QTest::newRow("sizes overflow") << torrent("d5:filesld6:lengthi9000000000000000000e4:pathl1:beed6:lengthi9000000000000000000e"
                                                   "4:pathl1:ceee4:name1:a" + pieces + "e")
                                        << invalid;
        QTest::newRow("v2 sizes overflow")
            << torrent("d9:file treed1:bd0:d6:lengthi9000000000000000000eee1:cd0:d6:lengthi9000000000000000000eeee"
                       "12:meta versioni2e4:name1:a12:piece lengthi16384ee")
            << invalid;
    }

    void refused()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, reason);
        QString refusal;
        QVERIFY(!TntMetadata::fromTorrentData(bytes, &refusal));
        QCOMPARE(refusal, reason);
        QTemporaryDir folder;
        const QString path = QuilloTest::writeFile(folder.path(), u"bad.torrent"_qs, bytes);
        QTest::ignoreMessage(QtInfoMsg, qPrintable(u"Failed to initialize tnt metadata from file://"_qs + path + u": "_qs + reason));
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
        QString files;
        for (int i = 0; i < 1100; ++i)
            files += u"{'path':'A/x','length':9000000000000000},"_qs;
        files.chop(1);
        QTest::newRow("sizes overflow") << json(qPrintable(u"{'info':{'files':["_qs + files + u"]}}"_qs));
        QTest::newRow("negative size") << json("{'info':{'files':[{'path':'A/x','length':-1}]}}");
    }

    void jsonOfWrongType()
    {
        QFETCH(QByteArray, json);
        QVERIFY_THROWS_EXCEPTION(API::ResponseDecodingError, TntMetadata::fromJson(json));
    }
};

QTEST_GUILESS_MAIN(TestTntMetadata)
#include "tst_tntmetadata.moc"
