#include "api/Errors.h"
#include "api/Records.h"
#include "tst_records.h"

#include <QTest>
#include <QtConcurrent/QtConcurrentRun>

#include <cmath>

using namespace API;

Q_DECLARE_METATYPE(API::STntModel)

namespace {

const QString hash = QStringLiteral("8c212779b4abde7c6bc608063a0d008b7e40ce32");

QByteArray withTorrent(const QByteArray &fields)
{
    return "{\"rid\":7,\"torrents\":{\"" + hash.toLatin1() + "\":{" + fields + "}}}";
}

// Every key qBittorrent 5.1 sends for one torrent of a full update.
const QByteArray fullTorrent51 = R"({"added_on":1718000000,"amount_left":0,"auto_tmm":false,"availability":-1,)"
    R"("category":"iso","comment":"","completed":4071620608,"completion_on":1718000600,)"
    R"("content_path":"/srv/dl/debian-12.5.0-amd64-DVD-1.iso","dl_limit":-1,"dlspeed":0,"download_path":"",)"
    R"("downloaded":4071620608,"downloaded_session":0,"eta":8640000,"f_l_piece_prio":false,"force_start":false,)"
    R"("has_metadata":true,"inactive_seeding_time_limit":-2,)"
    R"("infohash_v1":"8c212779b4abde7c6bc608063a0d008b7e40ce32","infohash_v2":"","last_activity":1718003000,)"
    R"("magnet_uri":"magnet:?xt=urn:btih:8c212779b4abde7c6bc608063a0d008b7e40ce32&dn=debian",)"
    R"("max_inactive_seeding_time":-1,"max_ratio":-1,"max_seeding_time":-1,"name":"Débian 12 ☃ DVD",)"
    R"("num_complete":120,"num_incomplete":3,"num_leechs":0,"num_seeds":0,"popularity":0,"priority":0,)"
    R"("private":false,"progress":1,"ratio":0.25,"ratio_limit":-2,"reannounce":1740,)"
    R"("root_path":"/srv/dl/debian-12.5.0-amd64-DVD-1.iso","save_path":"/srv/dl/","seeding_time":3600,)"
    R"("seeding_time_limit":-2,"seen_complete":-1,"seq_dl":false,"size":4071620608,"state":"stoppedUP",)"
    R"("super_seeding":false,"tags":"linux, keep","time_active":4200,"total_size":4071620608,)"
    R"("tracker":"http://bttracker.debian.org:6969/announce","trackers_count":1,"up_limit":-1,)"
    R"("uploaded":1017905152,"uploaded_session":0,"upspeed":0})";

STntModel expectedFullTorrent51()
{
    STntModel t;
    t.addedOn = Date(1718000000);
    t.amountLeft = 0;
    t.autoTmm = false;
    t.availability = -1.0;
    t.category = QStringLiteral("iso");
    t.completed = 4071620608;
    t.completionOn = Date(1718000600);
    t.contentPath = QStringLiteral("/srv/dl/debian-12.5.0-amd64-DVD-1.iso");
    t.dlLimit = -1;
    t.dlspeed = 0;
    t.downloaded = 4071620608;
    t.downloadedSession = 0;
    t.eta = 8640000.0;
    t.fLPiecePrio = false;
    t.forceStart = false;
    t.infohashV1 = hash;
    t.infohashV2 = QString();
    t.lastActivity = Date(1718003000);
    t.magnetUri = QStringLiteral("magnet:?xt=urn:btih:8c212779b4abde7c6bc608063a0d008b7e40ce32&dn=debian");
    t.maxRatio = -1.0;
    t.maxSeedingTime = -1;
    t.name = QString::fromUtf8("Débian 12 ☃ DVD");
    t.numComplete = 120;
    t.numIncomplete = 3;
    t.numLeechs = 0;
    t.numSeeds = 0;
    t.priority = 0;
    t.progress = 1.0;
    t.ratio = 0.25;
    t.ratioLimit = -2.0;
    t.savePath = QStringLiteral("/srv/dl/");
    t.seedingTime = 3600;
    t.seedingTimeLimit = -2;
    t.seenComplete = Date(-1);
    t.seqDl = false;
    t.size = 4071620608;
    t.state = TntModelState::stoppedUP;
    t.superSeeding = false;
    t.tags = QStringLiteral("linux, keep");
    t.timeActive = 4200;
    t.totalSize = 4071620608;
    t.tracker = QStringLiteral("http://bttracker.debian.org:6969/announce");
    t.upLimit = -1;
    t.uploaded = 1017905152;
    t.uploadedSession = 0;
    t.upspeed = 0;
    return t;
}

QString decodeFailure(const std::function<void()> &decode)
{
    try {
        decode();
    } catch (const ResponseDecodingError &error) {
        if (error.description() != QStringLiteral("Could not decode JSON data"))
            return QStringLiteral("wrong description: ") + error.description();
        return error.failureReason();
    }
    return {};
}

} // namespace

void TestRecords::keyConversion_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("converted");
    QTest::newRow("two parts") << QByteArray("dl_info_speed") << QByteArray("dlInfoSpeed");
    QTest::newRow("one-letter parts") << QByteArray("f_l_piece_prio") << QByteArray("fLPiecePrio");
    QTest::newRow("digit") << QByteArray("infohash_v1") << QByteArray("infohashV1");
    QTest::newRow("already camel") << QByteArray("savePath") << QByteArray("savePath");
    QTest::newRow("single word") << QByteArray("dlspeed") << QByteArray("dlspeed");
    QTest::newRow("upper case parts") << QByteArray("DL_SPEED") << QByteArray("dlSpeed");
    QTest::newRow("camel part lowered") << QByteArray("save_pathName") << QByteArray("savePathname");
    QTest::newRow("outer underscores kept") << QByteArray("__num_seeds_") << QByteArray("__numSeeds_");
    QTest::newRow("repeated underscores") << QByteArray("num__seeds") << QByteArray("numSeeds");
    QTest::newRow("only underscores") << QByteArray("___") << QByteArray("___");
    QTest::newRow("one leading underscore") << QByteArray("_rid") << QByteArray("_rid");
}

void TestRecords::keyConversion()
{
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, converted);
    QCOMPARE(convertFromSnakeCase(std::string_view(key.constData(), std::size_t(key.size()))), converted);
}

void TestRecords::torrentFields_data()
{
    QTest::addColumn<QByteArray>("fields");
    QTest::addColumn<STntModel>("expected");
    STntModel t;
    t.dlspeed = 5;
    QTest::newRow("a delta with a single field") << QByteArray(R"("dlspeed":5)") << t;
    t = {};
    t.completionOn = Date(-1);
    QTest::newRow("completion_on -1 is a second before 1970") << QByteArray(R"("completion_on":-1)") << t;
    t = {};
    t.addedOn = Date(1.5);
    QTest::newRow("fractional date") << QByteArray(R"("added_on":1.5)") << t;
    t = {};
    t.lastActivity = Date(1718000000.0004);
    QTest::newRow("date finer than a millisecond") << QByteArray(R"("last_activity":1718000000.0004)") << t;
    t = {};
    t.progress = 1.0;
    t.ratio = 0.0;
    t.eta = 100.0;
    QTest::newRow("integer literals into doubles") << QByteArray(R"("progress":1,"ratio":0,"eta":100)") << t;
    t = {};
    t.name = QString::fromUtf8("日本語 Ünïcödé 🎵");
    QTest::newRow("non-ASCII name") << QByteArray(R"("name":"日本語 Ünïcödé \ud83c\udfb5")") << t;
    t = {};
    QTest::newRow("null leaves a field empty") << QByteArray(R"("tracker":null,"ratio":null)") << t;
    t.infohashV1 = hash;
    t.infohashV2 = QStringLiteral("ab");
    QTest::newRow("info-hashes") << QByteArray(R"("infohash_v1":")" + hash.toLatin1() + R"(","infohash_v2":"ab")")
                                 << t;
    t = {};
    t.name = QStringLiteral("a \"q\" b");
    t.category = QStringLiteral("c");
    QTest::newRow("whitespace and escapes") << QByteArray("\"name\" : \"a \\\"q\\\" b\" ,\n \"category\"\t:\t\"c\"  ") << t;
    t = {};
    t.name = QStringLiteral("n");
    t.savePath = QStringLiteral("/");
    QTest::newRow("escaped keys") << QByteArray(R"("na\u006de":"n","save\u005fpath":"\/")") << t;
    t = {};
    t.numSeeds = 3;
    t.fLPiecePrio = true;
    QTest::newRow("unusual spellings convert") << QByteArray(R"("Num_Seeds":3,"F_L_piece_prio":true)") << t;
    t = {};
    QTest::newRow("keys that convert to nothing known")
        << QByteArray(R"("dl_speed":1,"_dlspeed":2,"numSeeds_":3,"has_metadata":{"x":[1,"y"]})") << t;
    t.state = TntModelState::stoppedUP;
    QTest::newRow("5.x state word") << QByteArray(R"("state":"stoppedUP")") << t;
    t.state = TntModelState::forcedMetaDL;
    QTest::newRow("later fields win") << QByteArray(R"("state":"stoppedUP","state":"forcedMetaDL")") << t;
    QTest::newRow("full 5.1 torrent") << fullTorrent51.mid(1, fullTorrent51.size() - 2) << expectedFullTorrent51();
}

void TestRecords::torrentFields()
{
    QFETCH(QByteArray, fields);
    QFETCH(STntModel, expected);
    const MainData data = decodeMainData(withTorrent(fields));
    QCOMPARE(data.rid, 7);
    QCOMPARE(data.tnts.size(), 1);
    QVERIFY(data.tnts.contains(hash));
    QVERIFY(data.tnts.value(hash) == expected);
}

void TestRecords::datesAsDateTimes_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QDateTime>("expected");
    const auto ms = [](qint64 msecs) { return QDateTime::fromMSecsSinceEpoch(msecs, Qt::UTC); };
    QTest::newRow("epoch") << 0.0 << QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC);
    QTest::newRow("-1 is a second before 1970") << -1.0 << QDateTime(QDate(1969, 12, 31), QTime(23, 59, 59), Qt::UTC);
    QTest::newRow("fraction") << 1.5 << ms(1500);
    QTest::newRow("negative fraction") << -1.25 << ms(-1250);
    QTest::newRow("nearest millisecond") << 1718000000.1236 << ms(1718000000124);
    QTest::newRow("nearest millisecond below") << 1718000000.1234 << ms(1718000000123);
    QTest::newRow("year 10000") << 253402300800.0 << QDateTime(QDate(10000, 1, 1), QTime(0, 0), Qt::UTC);
    QTest::newRow("beyond any calendar") << 1e300 << QDateTime();
    QTest::newRow("not a number") << std::nan("") << QDateTime();
}

void TestRecords::datesAsDateTimes()
{
    QFETCH(double, seconds);
    QFETCH(QDateTime, expected);
    const QDateTime shown = Date(seconds).toDateTime();
    QCOMPARE(shown.isValid(), expected.isValid());
    if (!expected.isValid())
        return;
    QCOMPARE(shown, expected);
    QCOMPARE(shown.timeSpec(), Qt::UTC);
    QCOMPARE(Date::fromDateTime(shown).toDateTime(), shown);
}

void TestRecords::mainDataCollections()
{
    const MainData data = decodeMainData(R"({"rid":12,"full_update":true,)"
        R"("torrents_removed":["aa","bb"],)"
        R"("categories":{"iso":{"name":"iso","savePath":"/srv/iso"},"tv":{"save_path":"/srv/tv"}},)"
        R"("categories_removed":["old"],"tags":["keep","Ünï"],"tags_removed":["gone"],)"
        R"("server_state":{"connection_status":"firewalled","dl_info_speed":10,"global_ratio":"-",)"
                        R"("free_space_on_disk":-1,"use_alt_speed_limits":true,"last_external_address_v4":""},)"
        R"("trackers":{"udp://t.example:80":["aa","cc"]},"trackers_removed":["http://gone/announce"]})");
    QCOMPARE(data.rid, 12);
    QCOMPARE(data.fullUpdate, std::optional<bool>(true));
    QCOMPARE(data.tntsRemoved, QStringList({QStringLiteral("aa"), QStringLiteral("bb")}));
    QCOMPARE(data.categories.size(), 2);
    QVERIFY((data.categories.value(QStringLiteral("iso"))
             == Category{QStringLiteral("iso"), QStringLiteral("/srv/iso")}));
    QVERIFY((data.categories.value(QStringLiteral("tv")) == Category{std::nullopt, QStringLiteral("/srv/tv")}));
    QCOMPARE(data.categoriesRemoved, QStringList{QStringLiteral("old")});
    QCOMPARE(data.tags, QStringList({QStringLiteral("keep"), QString::fromUtf8("Ünï")}));
    QCOMPARE(data.tagsRemoved, QStringList{QStringLiteral("gone")});
    QVERIFY(data.serverState);
    SGlobalTransferInfo state;
    state.connectionStatus = ConnectionStatus::firewalled;
    state.dlInfoSpeed = 10;
    state.globalRatio = QStringLiteral("-");
    state.freeSpaceOnDisk = -1;
    state.useAltSpeedLimits = true;
    QVERIFY(*data.serverState == state);
    QCOMPARE(data.trackers.size(), 1);
    QCOMPARE(data.trackers.value(QStringLiteral("udp://t.example:80")),
             QStringList({QStringLiteral("aa"), QStringLiteral("cc")}));
    QCOMPARE(data.trackersRemoved, QStringList{QStringLiteral("http://gone/announce")});
    QVERIFY(data.tnts.isEmpty());
}

void TestRecords::mainDataFailures_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("reason");
    const QString at = QStringLiteral("torrents.") + hash + QLatin1Char('.');
    QTest::newRow("string in an optional number") << withTorrent(R"("dlspeed":"5")") << at + QStringLiteral("dlspeed: expected an integer");
    QTest::newRow("fraction in an integer") << withTorrent(R"("num_seeds":1.5)") << at + QStringLiteral("num_seeds: expected an integer");
    QTest::newRow("integer overflow") << withTorrent(R"("size":9223372036854775808)") << at + QStringLiteral("size: expected an integer");
    QTest::newRow("number in a string") << withTorrent(R"("name":5)") << at + QStringLiteral("name: expected a string");
    QTest::newRow("number in a boolean") << withTorrent(R"("seq_dl":0)") << at + QStringLiteral("seq_dl: expected a boolean");
    QTest::newRow("string in a date") << withTorrent(R"("added_on":"2024")") << at + QStringLiteral("added_on: expected a number");
    QTest::newRow("date out of range") << withTorrent(R"("seen_complete":-1e13)") << at + QStringLiteral("seen_complete: date out of range");
    QTest::newRow("unknown state word") << withTorrent(R"("state":"seeding")") << at + QStringLiteral("state: unknown state \"seeding\"");
    QTest::newRow("state word in another case") << withTorrent(R"("state":"StoppedUP")") << at + QStringLiteral("state: unknown state \"StoppedUP\"");
    QTest::newRow("torrent not an object") << withTorrent("").replace("{}", "[]") << QStringLiteral("torrents.") + hash + QStringLiteral(": expected an object");
    QTest::newRow("unknown connection status") << QByteArray(R"({"rid":1,"server_state":{"connection_status":"online"}})")
                                               << QStringLiteral("server_state.connection_status: unknown connection status \"online\"");
    QTest::newRow("number in a tag list") << QByteArray(R"({"rid":1,"tags":["a",2]})") << QStringLiteral("tags[1]: expected a string");
    QTest::newRow("missing rid") << QByteArray(R"({"torrents":{}})") << QStringLiteral("rid: missing");
    QTest::newRow("null rid") << QByteArray(R"({"rid":null})") << QStringLiteral("rid: expected an integer");
    QTest::newRow("not an object") << QByteArray("[1]") << QStringLiteral("expected an object");
}

void TestRecords::mainDataFailures()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, reason);
    QCOMPARE(decodeFailure([&] { decodeMainData(json); }), reason);
}

// Whatever the cut, a body that is not whole JSON never decodes.
void TestRecords::malformedBodies_data()
{
    QTest::addColumn<QByteArray>("json");
    const QByteArray whole = withTorrent(fullTorrent51.mid(1, fullTorrent51.size() - 2));
    for (const qsizetype cut : {qsizetype(0), qsizetype(1), qsizetype(9), whole.size() / 2, whole.size() - 3,
                                whole.size() - 1})
        QTest::addRow("truncated at %lld", static_cast<long long>(cut)) << whole.left(cut);
    QTest::newRow("cut inside a multi-byte character") << withTorrent(R"("name":"é")").replace("\xc3\xa9", "\xc3");
    QTest::newRow("trailing content") << QByteArray(R"({"rid":1} {"rid":2})");
    QTest::newRow("trailing bracket") << QByteArray(R"({"rid":1}})");
    QTest::newRow("lone surrogate") << QByteArray(R"({"rid":1,"tags":["\ud800"]})");
    QTest::newRow("bad literal under an unknown key") << QByteArray(R"({"rid":1,"x":tru})");
    QTest::newRow("bad literal deep under an unknown key") << QByteArray(R"({"rid":1,"x":{"y":[1,{"z":nul}]}})");
    QTest::newRow("bad number under an unknown key") << withTorrent(R"("popularity":1.2.3)");
    QTest::newRow("bad escape under an unknown key") << withTorrent(R"("comment":"\q")");
    QTest::newRow("mismatched brackets under an unknown key") << QByteArray(R"({"rid":1,"x":[1,2}})");
    QTest::newRow("raw control character in a string") << withTorrent("\"name\":\"a\x01b\"");
    QTest::newRow("raw line feed in a key") << withTorrent("\"na\nme\":\"a\"");
    QTest::newRow("missing value under an unknown key") << QByteArray(R"({"rid":1,"x":})");
}

void TestRecords::malformedBodies()
{
    QFETCH(QByteArray, json);
    QVERIFY(!decodeFailure([&] { decodeMainData(json); }).isEmpty());
}

void TestRecords::peers()
{
    const PeersData data = decodePeersData(R"({"rid":3,"full_update":true,"show_flags":true,)"
        R"("peers":{"10.0.0.2:6881":{"client":"qBittorrent 5.1.0","connection":"BT","country":"Ägypten",)"
          R"("country_code":"eg","dl_speed":100,"downloaded":2048,"files":"a.iso","flags":"D X","flags_desc":"D = x",)"
          R"("ip":"10.0.0.2","peer_id_client":"-qB5100-","port":6881,"progress":1,"relevance":0.5,"up_speed":0,)"
          R"("uploaded":7,"shadowbanned":false}},)"
        R"("peers_removed":["[::1]:5000"]})");
    QCOMPARE(data.rid, 3);
    QCOMPARE(data.showFlags, std::optional<bool>(true));
    QCOMPARE(data.peersRemoved, QStringList{QStringLiteral("[::1]:5000")});
    QCOMPARE(data.peers.size(), 1);
    const Peer peer = data.peers.value(QStringLiteral("10.0.0.2:6881"));
    QCOMPARE(peer.debugDescription(),
             QString::fromUtf8("\nPeer\n\t- client: qBittorrent 5.1.0\n\t- connection: BT\n\t- country: Ägypten"
                               "\n\t- countryCode: eg\n\t- dlSpeed: 100\n\t- downloaded: 2048\n\t- files: a.iso"
                               "\n\t- flags: D X\n\t- flagsDesc: D = x\n\t- ip: 10.0.0.2\n\t- peerIdClient: -qB5100-"
                               "\n\t- port: 6881\n\t- progress: 1\n\t- relevance: 0.5\n\t- upSpeed: 0\n\t- uploaded: 7"));
    QVERIFY(Peer{}.debugDescription().startsWith(QStringLiteral("\nPeer\n\t- client: nil\n\t- connection: nil")));
    const QByteArray textPort = R"({"rid":1,"peers":{"a:1":{"port":"1"}}})";
    QCOMPARE(decodeFailure([&] { decodePeersData(textPort); }),
             QStringLiteral("peers.a:1.port: expected an integer"));
}

void TestRecords::trackers_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<int>("expected"); // -1: the answer fails
    for (int status = 0; status <= 4; ++status)
        QTest::addRow("status %d", status) << QByteArray::number(status) << status;
    QTest::newRow("status 5") << QByteArray("5") << -1;
    QTest::newRow("status -1") << QByteArray("-1") << -1;
    QTest::newRow("status as text") << QByteArray("\"2\"") << -1;
}

void TestRecords::trackers()
{
    QFETCH(QByteArray, status);
    QFETCH(int, expected);
    const QByteArray json = R"([{"url":"** [DHT] **","status":2,"tier":-1,"num_peers":0,"num_seeds":0,"num_leeches":0,)"
                            R"("num_downloaded":0,"msg":""},{"url":"udp://t:1","status":)" + status
        + R"(,"tier":0,"num_peers":5,"num_seeds":4,"num_leeches":1,"num_downloaded":-1,"msg":"Ünï","next_announce":3})";
    if (expected < 0) {
        QVERIFY(decodeFailure([&] { decodeTrackers(json + ']'); }).startsWith(QStringLiteral("[1].status: ")));
        return;
    }
    const QList<Tracker> trackers = decodeTrackers(json + ']');
    QCOMPARE(trackers.size(), 2);
    QVERIFY((trackers[1] == Tracker{QStringLiteral("udp://t:1"), static_cast<TntModelTrackerStatus>(expected), 0, 5,
                                    4, 1, -1, QString::fromUtf8("Ünï")}));
    QCOMPARE(trackers[0].tier, -1);
}

void TestRecords::detailRecordsRequireEveryField_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("reason");
    QTest::newRow("tracker without msg") << QByteArray(R"([{"url":"u","status":0,"tier":0,"num_peers":0,"num_seeds":0,"num_leeches":0,"num_downloaded":0}])")
                                         << QStringLiteral("[0].msg: missing");
    QTest::newRow("tracker with null msg") << QByteArray(R"([{"url":"u","status":0,"tier":0,"num_peers":0,"num_seeds":0,"num_leeches":0,"num_downloaded":0,"msg":null}])")
                                           << QStringLiteral("[0].msg: expected a string");
}

void TestRecords::detailRecordsRequireEveryField()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, reason);
    QCOMPARE(decodeFailure([&] { decodeTrackers(json); }), reason);
}

void TestRecords::files()
{
    const QList<File> files = decodeFiles(R"([{"availability":-1,"index":0,"is_seed":true,"name":"d/ä.iso",)"
                                          R"("piece_range":[0,12],"priority":4,"progress":0.5,"size":1024}])");
    QCOMPARE(files.size(), 1);
    QVERIFY((files[0] == File{0, QString::fromUtf8("d/ä.iso"), 1024, 0.5, 4.0, {0, 12}, -1.0}));
    QCOMPARE(tntModelFilePriorityFromValue(files[0].priority), std::nullopt);
    QCOMPARE(tntModelFilePriorityFromValue(7.0), std::optional(TntModelFilePriority::maximal));
    const QByteArray fractionalPiece = R"([{"availability":1,"index":0,"name":"a","piece_range":[0,1.5],)"
                                       R"("priority":1,"progress":1,"size":1}])";
    QCOMPARE(decodeFailure([&] { decodeFiles(fractionalPiece); }),
             QStringLiteral("[0].piece_range[1]: expected an integer"));
}

void TestRecords::properties()
{
    const QByteArray json = R"({"addition_date":1718000000,"comment":"c","completion_date":-1,"created_by":"mktorrent",)"
        R"("creation_date":1700000000,"dl_limit":-1,"dl_speed":0,"dl_speed_avg":12,"eta":8640000,)"
        R"("infohash_v1":"8c21","infohash_v2":"","is_private":false,"last_seen":1718000001,"nb_connections":0,)"
        R"("nb_connections_limit":100,"peers":0,"peers_total":3,"piece_size":4194304,"pieces_have":971,)"
        R"("pieces_num":971,"reannounce":0,"save_path":"/srv/","seeding_time":60,"seeds":0,"seeds_total":9,)"
        R"("share_ratio":0.5,"time_elapsed":120,"total_downloaded":1,"total_downloaded_session":2,)"
        R"("total_size":4071620608,"total_uploaded":3,"total_uploaded_session":4,"total_wasted":5,)"
        R"("up_limit":-1,"up_speed":0,"up_speed_avg":6})";
    const SGenericProperties p = decodeGenericProperties(json);
    QCOMPARE(p.infohashV1, QStringLiteral("8c21"));
    QCOMPARE(p.infohashV2, std::optional(QString()));
    QCOMPARE(p.completionDate, Date(-1));
    QCOMPARE(p.timeElapsed, 120.0);
    QCOMPARE(p.totalWasted, 5);
    QCOMPARE(p.upSpeedAvg, 6);
    const QByteArray withoutV2 = QByteArray(json).replace(R"("infohash_v2":"",)", "");
    const QByteArray withoutComment = QByteArray(json).replace(R"("comment":"c",)", "");
    QCOMPARE(decodeGenericProperties(withoutV2).infohashV2, std::nullopt);
    QCOMPARE(decodeFailure([&] { decodeGenericProperties(withoutComment); }),
             QStringLiteral("comment: missing"));
}

void TestRecords::smallRecords()
{
    const QByteArray seeds = R"([{"url":"http://seed/a"}])";
    const QByteArray emptySeed = "[{}]";
    QCOMPARE(decodeWebSeeds(seeds), QList<WebSeed>{WebSeed{QStringLiteral("http://seed/a")}});
    QCOMPARE(decodeFailure([&] { decodeWebSeeds(emptySeed); }), QStringLiteral("[0].url: missing"));
    const Key key{QStringLiteral("qbt_Äé\"x")};
    QCOMPARE(decodeKey(encodeKey(key)), key);
}

// Workers decode at the same time as the main thread and get the same records.
void TestRecords::decodesOnWorkers()
{
    const QByteArray json = withTorrent(fullTorrent51.mid(1, fullTorrent51.size() - 2));
    const QByteArray delta = withTorrent(R"("upspeed":3,"state":"metaDL")");
    auto first = QtConcurrent::run([&] { return decodeMainData(json); });
    auto second = QtConcurrent::run([&] { return decodeMainData(delta); });
    const MainData here = decodeMainData(json);
    QVERIFY(first.result().tnts == here.tnts);
    QCOMPARE(second.result().tnts.value(hash).state, std::optional(TntModelState::metaDL));
}

QTEST_GUILESS_MAIN(TestRecords)
