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
    return {
        .addedOn = Date(1718000000), .amountLeft = 0, .autoTmm = false, .availability = -1.0,
        .category = QStringLiteral("iso"), .completed = 4071620608, .completionOn = Date(1718000600),
        .contentPath = QStringLiteral("/srv/dl/debian-12.5.0-amd64-DVD-1.iso"), .dlLimit = -1, .dlspeed = 0,
        .downloaded = 4071620608, .downloadedSession = 0, .eta = 8640000.0, .fLPiecePrio = false, .forceStart = false,
        .inactiveSeedingTimeLimit = -2, .infohashV1 = hash, .infohashV2 = QString(), .lastActivity = Date(1718003000),
        .magnetUri = QStringLiteral("magnet:?xt=urn:btih:8c212779b4abde7c6bc608063a0d008b7e40ce32&dn=debian"),
        .maxRatio = -1.0, .maxSeedingTime = -1, .name = QString::fromUtf8("Débian 12 ☃ DVD"), .numComplete = 120,
        .numIncomplete = 3, .numLeechs = 0, .numSeeds = 0, .priority = 0, .progress = 1.0, .ratio = 0.25,
        .ratioLimit = -2.0, .savePath = QStringLiteral("/srv/dl/"), .seedingTime = 3600, .seedingTimeLimit = -2,
        .seenComplete = Date(-1), .seqDl = false, .size = 4071620608, .state = TntModelState::stoppedUP,
        .superSeeding = false, .tags = QStringLiteral("linux, keep"), .timeActive = 4200, .totalSize = 4071620608,
        .tracker = QStringLiteral("http://bttracker.debian.org:6969/announce"), .upLimit = -1, .uploaded = 1017905152,
        .uploadedSession = 0, .upspeed = 0
    };
}

enum class Decoder {
    mainData, peers, properties, trackers, files, webSeeds, pieceStates, logMessages, peerLog, searchPlugins,
    searchResults, searchStart
};

// The reason a decoder gives for refusing `json`; empty when it decoded.
QString decodeFailure(Decoder decoder, const QByteArray &json)
{
    try {
        switch (decoder) {
        case Decoder::mainData: decodeMainData(json); break;
        case Decoder::peers: decodePeersData(json); break;
        case Decoder::properties: decodeGenericProperties(json); break;
        case Decoder::trackers: decodeTrackers(json); break;
        case Decoder::files: decodeFiles(json); break;
        case Decoder::webSeeds: decodeWebSeeds(json); break;
        case Decoder::pieceStates: decodePieceStates(json); break;
        case Decoder::logMessages: decodeLogMessages(json); break;
        case Decoder::peerLog: decodePeerLog(json); break;
        case Decoder::searchPlugins: decodeSearchPlugins(json); break;
        case Decoder::searchResults: decodeSearchResults(json); break;
        case Decoder::searchStart: decodeSearchStart(json); break;
        }
    } catch (const ResponseDecodingError &error) {
        if (error.description() != QStringLiteral("Could not decode JSON data"))
            return QStringLiteral("wrong description: ") + error.description();
        return error.failureReason();
    }
    return {};
}

const QByteArray trackerWithoutMsg =
    R"([{"url":"u","status":0,"tier":0,"num_peers":0,"num_seeds":0,"num_leeches":0,"num_downloaded":0)";

const QByteArray properties =
    R"({"addition_date":1718000000,"comment":"c","completion_date":-1,"created_by":"mktorrent",)"
    R"("creation_date":1700000000,"dl_limit":-1,"dl_speed":0,"dl_speed_avg":12,"eta":8640000,)"
    R"("infohash_v1":"8c21","infohash_v2":"","is_private":false,"last_seen":1718000001,"nb_connections":0,)"
    R"("nb_connections_limit":100,"peers":0,"peers_total":3,"piece_size":4194304,"pieces_have":971,)"
    R"("pieces_num":971,"reannounce":0,"save_path":"/srv/","seeding_time":60,"seeds":0,"seeds_total":9,)"
    R"("share_ratio":0.5,"time_elapsed":120,"total_downloaded":1,"total_downloaded_session":2,)"
    R"("total_size":4071620608,"total_uploaded":3,"total_uploaded_session":4,"total_wasted":5,)"
    R"("up_limit":-1,"up_speed":0,"up_speed_avg":6})";

// A plugin and a page of results as qBittorrent 4.5.2 sends them (captured; 4.x names no engine
// and no date), and a result as 5.x writes it.
const QByteArray plugin452 =
    R"([{"enabled":true,"fullName":"Quillo Test","name":"quillotest","supportedCategories":[{"id":"all",)"
    R"("name":"All categories"},{"id":"movies","name":"Movies"}],"url":"http://127.0.0.1","version":"1.0"}])";
const QByteArray result452 =
    R"({"descrLink":"http://127.0.0.1/c/1","fileName":"c 1","fileSize":3145728,"fileUrl":"magnet:?xt=urn:btih:02",)"
    R"("nbLeechers":1,"nbSeeders":3,"siteUrl":"http://127.0.0.1"})";
const QByteArray result5 =
    R"({"descrLink":"","engineName":"Quillo Test","fileName":"ü","fileSize":-1,"fileUrl":"http://t/1.torrent",)"
    R"("nbLeechers":-1,"nbSeeders":-1,"pubDate":1718000000,"siteUrl":"http://127.0.0.1"})";

QByteArray resultsPage(const QByteArray &result, const char *status = "Running", int total = 1)
{
    return R"({"results":[)" + result + R"(],"status":")" + status + R"(","total":)" + QByteArray::number(total) + '}';
}

} // namespace

Q_DECLARE_METATYPE(Decoder)
Q_DECLARE_METATYPE(API::LogMessage)

void TestRecords::keyConversion_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("converted");
    QTest::newRow("one-letter parts") << QByteArray("f_l_piece_prio") << QByteArray("fLPiecePrio");
    QTest::newRow("already camel") << QByteArray("savePath") << QByteArray("savePath");
    QTest::newRow("upper case parts") << QByteArray("DL_SPEED") << QByteArray("dlSpeed");
    QTest::newRow("camel part lowered") << QByteArray("save_pathName") << QByteArray("savePathname");
    QTest::newRow("outer underscores kept") << QByteArray("__num_seeds_") << QByteArray("__numSeeds_");
    QTest::newRow("repeated underscores") << QByteArray("num__seeds") << QByteArray("numSeeds");
    QTest::newRow("only underscores") << QByteArray("___") << QByteArray("___");
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
    t.completionOn = Date(-1);
    QTest::newRow("completion_on -1 is a second before 1970") << QByteArray(R"("completion_on":-1)") << t;
    t = {};
    t.lastActivity = Date(1718000000.0004);
    QTest::newRow("date finer than a millisecond") << QByteArray(R"("last_activity":1718000000.0004)") << t;
    t = {};
    t.seenComplete = Date(-1e13);
    QTest::newRow("date beyond the calendar") << QByteArray(R"("seen_complete":-1e13)") << t;
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
    // A newer server's state must not fail the whole answer.
    t.name = QStringLiteral("n");
    t.state = TntModelState::unknown;
    QTest::newRow("unknown state word") << QByteArray(R"("state":"seeding","name":"n")") << t;
    QTest::newRow("state word in another case") << QByteArray(R"("state":"StoppedUP","name":"n")") << t;
    t = {};
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
    QCOMPARE(data.tnts.keys(), QList<QString>{hash});
    QVERIFY(data.tnts.value(hash) == expected);
}

void TestRecords::datesAsDateTimes_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QDateTime>("expected");
    const auto ms = [](qint64 msecs) { return QDateTime::fromMSecsSinceEpoch(msecs, Qt::UTC); };
    QTest::newRow("-1 is a second before 1970") << -1.0 << QDateTime(QDate(1969, 12, 31), QTime(23, 59, 59), Qt::UTC);
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

void TestRecords::nullCollectionsAreEmpty()
{
    const MainData data = decodeMainData(R"({"rid":1,"torrents":null,"torrents_removed":null,"categories":null,)"
        R"("categories_removed":null,"tags":null,"tags_removed":null,"server_state":null,"trackers":null,)"
        R"("trackers_removed":null})");
    QCOMPARE(data.rid, 1);
    QVERIFY(data.tnts.isEmpty() && data.tntsRemoved.isEmpty() && data.categories.isEmpty());
    QVERIFY(data.categoriesRemoved.isEmpty() && data.tags.isEmpty() && data.tagsRemoved.isEmpty());
    QVERIFY(!data.serverState && data.trackers.isEmpty() && data.trackersRemoved.isEmpty());
    const PeersData peers = decodePeersData(R"({"rid":2,"peers":null,"peers_removed":null})");
    QVERIFY(peers.peers.isEmpty() && peers.peersRemoved.isEmpty());
}

// 50,000 torrents hold one copy of a save path, not 50,000; the models copy the records' strings.
void TestRecords::repeatedStringsShared()
{
    const QByteArray fields = R"("category":"iso","save_path":"/srv/dl/","tags":"a, b","tracker":"udp://t:1")";
    const MainData data = decodeMainData(R"({"rid":1,"torrents":{")" + hash.toLatin1() + R"(":{"infohash_v1":")"
                                         + hash.toLatin1() + "\"," + fields + R"(},"b":{)" + fields + "}}}");
    const STntModel first = data.tnts.value(hash);
    const STntModel second = data.tnts.value(QStringLiteral("b"));
    for (const auto field : {&STntModel::category, &STntModel::savePath, &STntModel::tags, &STntModel::tracker})
        QCOMPARE((first.*field)->constData(), (second.*field)->constData());
    QCOMPARE(first.infohashV1->constData(), data.tnts.constFind(hash).key().constData());
}

void TestRecords::failures_data()
{
    QTest::addColumn<Decoder>("decoder");
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("reason");
    const QString at = QStringLiteral("torrents.") + hash + QLatin1Char('.');
    const auto torrentRow = [&at](const char *name, const QByteArray &fields, const char *reason) {
        QTest::newRow(name) << Decoder::mainData << withTorrent(fields) << at + QString::fromUtf8(reason);
    };
    const auto row = [](const char *name, Decoder decoder, const QByteArray &json, const char *reason) {
        QTest::newRow(name) << decoder << json << QString::fromUtf8(reason);
    };
    torrentRow("string in a number", R"("dlspeed":"5")", "dlspeed: expected an integer");
    torrentRow("fraction in an integer", R"("num_seeds":1.5)", "num_seeds: expected an integer");
    torrentRow("integer overflow", R"("size":9223372036854775808)", "size: expected an integer");
    torrentRow("number in a string", R"("name":5)", "name: expected a string");
    torrentRow("number in a boolean", R"("seq_dl":0)", "seq_dl: expected a boolean");
    torrentRow("string in a date", R"("added_on":"2024")", "added_on: expected a number");
    row("torrent not an object", Decoder::mainData, withTorrent("").replace("{}", "[]"),
        qPrintable(QStringLiteral("torrents.") + hash + QStringLiteral(": expected an object")));
    row("unknown connection status", Decoder::mainData, R"({"rid":1,"server_state":{"connection_status":"online"}})",
        "server_state.connection_status: unknown connection status \"online\"");
    row("number in a tag list", Decoder::mainData, R"({"rid":1,"tags":["a",2]})", "tags[1]: expected a string");
    row("missing rid", Decoder::mainData, R"({"torrents":{}})", "rid: missing");
    row("not an object", Decoder::mainData, "[1]", "expected an object");
    row("peer port as text", Decoder::peers, R"({"rid":1,"peers":{"a:1":{"port":"1"}}})",
        "peers.a:1.port: expected an integer");
    row("tracker without msg", Decoder::trackers, trackerWithoutMsg + "}]", "[0].msg: missing");
    row("tracker with null msg", Decoder::trackers, trackerWithoutMsg + R"(,"msg":null}])", "[0].msg: expected a string");
    row("tracker status 5", Decoder::trackers, QByteArray(trackerWithoutMsg).replace("\"status\":0", "\"status\":5") + R"(,"msg":""}])",
        "[0].status: unknown tracker status 5");
    row("tracker status as text", Decoder::trackers, QByteArray(trackerWithoutMsg).replace("\"status\":0", "\"status\":\"2\"") + R"(,"msg":""}])",
        "[0].status: expected an integer");
    row("fractional piece", Decoder::files,
        R"([{"availability":1,"index":0,"name":"a","piece_range":[0,1.5],"priority":1,"progress":1,"size":1}])",
        "[0].piece_range[1]: expected an integer");
    row("trackers not a list", Decoder::trackers, "{}", "expected an array");
    row("null piece range", Decoder::files,
        R"([{"availability":1,"index":0,"name":"a","piece_range":null,"priority":1,"progress":1,"size":1}])",
        "[0].piece_range: expected an array");
    row("file priority as text", Decoder::files,
        R"([{"availability":1,"index":0,"name":"a","piece_range":[0,1],"priority":"1","progress":1,"size":1}])",
        "[0].priority: expected a number");
    row("properties without comment", Decoder::properties, QByteArray(properties).replace(R"("comment":"c",)", ""),
        "comment: missing");
    row("web seed without url", Decoder::webSeeds, "[{}]", "[0].url: missing");
    row("piece state 3", Decoder::pieceStates, "[2,2,3]", "[2]: unknown piece state 3");
    row("negative piece state", Decoder::pieceStates, "[-1]", "[0]: unknown piece state -1");
    row("piece state as text", Decoder::pieceStates, R"([0,"1"])", "[1]: expected an integer");
    row("fractional piece state", Decoder::pieceStates, "[1.0]", "[0]: expected an integer");
    row("null piece state", Decoder::pieceStates, "[null]", "[0]: expected an integer");
    row("piece states not a list", Decoder::pieceStates, R"({"0":2})", "expected an array");
    row("log line without type", Decoder::logMessages, R"([{"id":0,"message":"m","timestamp":1}])", "[0].type: missing");
    row("log type as text", Decoder::logMessages, R"([{"id":0,"message":"m","timestamp":1,"type":"2"}])",
        "[0].type: expected an integer");
    row("log timestamp as text", Decoder::logMessages, R"([{"id":0,"message":"m","timestamp":"1","type":1}])",
        "[0].timestamp: expected a number");
    row("log not a list", Decoder::logMessages, "{}", "expected an array");
    row("peer line without reason", Decoder::peerLog, R"([{"blocked":true,"id":0,"ip":"a","timestamp":1}])",
        "[0].reason: missing");
    row("blocked as number", Decoder::peerLog, R"([{"blocked":1,"id":0,"ip":"a","reason":"","timestamp":1}])",
        "[0].blocked: expected a boolean");
    row("plugin without categories", Decoder::searchPlugins,
        QByteArray(plugin452).replace(R"("supportedCategories")", R"("categories")"), "[0].supported_categories: missing");
    // qBittorrent before 4.1 listed categories as words: no server this client speaks to.
    row("categories as words", Decoder::searchPlugins,
        R"([{"enabled":true,"fullName":"f","name":"n","supportedCategories":["all"],"url":"u","version":"1"}])",
        "[0].supportedCategories[0]: expected an object");
    row("enabled as text", Decoder::searchPlugins, QByteArray(plugin452).replace("true", "\"true\""),
        "[0].enabled: expected a boolean");
    row("unknown search status", Decoder::searchResults, resultsPage(result452, "Paused"),
        "status: unknown search status \"Paused\"");
    row("size as text", Decoder::searchResults, resultsPage(QByteArray(result452).replace("3145728", "\"3 MB\"")),
        "results[0].fileSize: expected an integer");
    row("result without link", Decoder::searchResults,
        resultsPage(QByteArray(result452).replace(R"("fileUrl":"magnet:?xt=urn:btih:02",)", "")),
        "results[0].file_url: missing");
    row("date as text", Decoder::searchResults, resultsPage(QByteArray(result5).replace("1718000000", "\"today\"")),
        "results[0].pubDate: expected a number");
    row("results without total", Decoder::searchResults, R"({"results":[],"status":"Stopped"})", "total: missing");
    row("start without id", Decoder::searchStart, "{}", "id: missing");
    row("id as text", Decoder::searchStart, R"({"id":"7"})", "id: expected an integer");
}

void TestRecords::failures()
{
    QFETCH(Decoder, decoder);
    QFETCH(QByteArray, json);
    QFETCH(QString, reason);
    QCOMPARE(decodeFailure(decoder, json), reason);
}

// Whatever the cut, a body that is not whole JSON never decodes.
void TestRecords::malformedBodies_data()
{
    QTest::addColumn<QByteArray>("json");
    const QByteArray whole = withTorrent(fullTorrent51.mid(1, fullTorrent51.size() - 2));
    for (const qsizetype cut : {qsizetype(0), whole.size() / 2, whole.size() - 1})
        QTest::addRow("truncated at %lld", static_cast<long long>(cut)) << whole.left(cut);
    QTest::newRow("cut inside a multi-byte character") << withTorrent(R"("name":"é")").replace("\xc3\xa9", "\xc3");
    QTest::newRow("trailing content") << QByteArray(R"({"rid":1} {"rid":2})");
    QTest::newRow("lone surrogate") << QByteArray(R"({"rid":1,"tags":["\ud800"]})");
    QTest::newRow("bad literal deep under an unknown key") << QByteArray(R"({"rid":1,"x":{"y":[1,{"z":nul}]}})");
    QTest::newRow("bad number under an unknown key") << withTorrent(R"("popularity":1.2.3)");
    QTest::newRow("bad escape under an unknown key") << withTorrent(R"("comment":"\q")");
    QTest::newRow("mismatched brackets under an unknown key") << QByteArray(R"({"rid":1,"x":[1,2}})");
    QTest::newRow("missing value under an unknown key") << QByteArray(R"({"rid":1,"x":})");
    QTest::newRow("nested 500 deep under an unknown key")
        << QByteArray(R"({"rid":1,"x":)") + QByteArray(500, '[') + QByteArray(500, ']') + '}';
    QTest::newRow("raw control character in a string") << withTorrent("\"name\":\"a\x01b\"");
}

void TestRecords::malformedBodies()
{
    QFETCH(QByteArray, json);
    QVERIFY(!decodeFailure(Decoder::mainData, json).isEmpty());
}

// A body cut anywhere, or with content after it, never decodes as a page of results.
void TestRecords::malformedSearchBodies()
{
    const QByteArray whole = resultsPage(result452 + ',' + result5, "Stopped", 2);
    QVERIFY(decodeFailure(Decoder::searchResults, whole).isEmpty());
    for (qsizetype cut = 0; cut < whole.size(); ++cut)
        QVERIFY2(!decodeFailure(Decoder::searchResults, whole.left(cut)).isEmpty(), whole.left(cut).constData());
    QVERIFY(!decodeFailure(Decoder::searchResults, whole + "{}").isEmpty());
}

void TestRecords::searchRecords()
{
    const QList<SearchPlugin> plugins = decodeSearchPlugins(plugin452);
    QCOMPARE(plugins, (QList<SearchPlugin>{{QStringLiteral("quillotest"), QStringLiteral("1.0"),
                                            QStringLiteral("Quillo Test"), QStringLiteral("http://127.0.0.1"),
                                            {{QStringLiteral("all"), QStringLiteral("All categories")},
                                             {QStringLiteral("movies"), QStringLiteral("Movies")}},
                                            true}}));
    const SearchResults page = decodeSearchResults(resultsPage(result452 + ',' + result5, "Stopped", 9));
    QCOMPARE(page.status, SearchStatus::stopped);
    QCOMPARE(page.total, 9);
    QCOMPARE(page.results.size(), 2);
    QVERIFY((page.results[0] == SearchResult{QStringLiteral("c 1"), QStringLiteral("magnet:?xt=urn:btih:02"), 3145728,
                                             3, 1, QStringLiteral("http://127.0.0.1"),
                                             QStringLiteral("http://127.0.0.1/c/1"), std::nullopt, std::nullopt}));
    QVERIFY((page.results[1] == SearchResult{QString::fromUtf8("ü"), QStringLiteral("http://t/1.torrent"), -1, -1, -1,
                                             QStringLiteral("http://127.0.0.1"), QString(), QStringLiteral("Quillo Test"),
                                             Date(1718000000)}));
    QCOMPARE(decodeSearchResults(R"({"results":[],"status":"Running","total":0})").status, SearchStatus::running);
    QCOMPARE(decodeSearchStart(R"({"id":1539190639})").id, 1539190639);
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
}

void TestRecords::detailRecords()
{
    const QList<Tracker> trackers = decodeTrackers(
        R"([{"url":"** [DHT] **","status":2,"tier":-1,"num_peers":0,"num_seeds":0,"num_leeches":0,"num_downloaded":0,)"
        R"("msg":""},{"url":"udp://t:1","status":4,"tier":0,"num_peers":5,"num_seeds":4,"num_leeches":1,)"
        R"("num_downloaded":-1,"msg":"Ünï","next_announce":3}])");
    QCOMPARE(trackers.size(), 2);
    QCOMPARE(trackers[0].tier, -1);
    QVERIFY((trackers[1] == Tracker{QStringLiteral("udp://t:1"), TntModelTrackerStatus::notWorking, 0, 5, 4, 1, -1,
                                    QString::fromUtf8("Ünï")}));

    const QList<File> files = decodeFiles(R"([{"availability":-1,"index":0,"is_seed":true,"name":"d/ä.iso",)"
                                          R"("piece_range":[0,12],"priority":4,"progress":0.5,"size":1024}])");
    QCOMPARE(files.size(), 1);
    QVERIFY((files[0] == File{0, QString::fromUtf8("d/ä.iso"), 1024, 0.5, 4.0, {0, 12}, -1.0}));
    QCOMPARE(tntModelFilePriorityFromValue(files[0].priority), std::nullopt);
    QCOMPARE(tntModelFilePriorityFromValue(7.0), std::optional(TntModelFilePriority::maximal));

    const SGenericProperties p = decodeGenericProperties(properties);
    QCOMPARE(p.infohashV1, QStringLiteral("8c21"));
    QCOMPARE(p.infohashV2, std::optional(QString()));
    QCOMPARE(p.completionDate, Date(-1));
    QCOMPARE(p.timeElapsed, 120.0);
    QCOMPARE(p.totalWasted, 5);
    QCOMPARE(p.upSpeedAvg, 6);
    QCOMPARE(decodeGenericProperties(QByteArray(properties).replace(R"("infohash_v2":"",)", "")).infohashV2, std::nullopt);

    QCOMPARE(decodeWebSeeds(R"([{"url":"http://seed/a"}])"), QList<WebSeed>{WebSeed{QStringLiteral("http://seed/a")}});
    QCOMPARE(decodePieceStates("[0, 1,2 ,2]"),
             (QList<PieceState>{PieceState::missing, PieceState::downloading, PieceState::have, PieceState::have}));
    QCOMPARE(decodePieceStates("[]"), QList<PieceState>{});
    const Key key{QStringLiteral("qbt_Äé\"x")};
    QCOMPARE(decodeKey(encodeKey(key)), key);
}

// Lines as each server version writes them (captured from 4.5.2, 5.1.0 and 5.3.0: timestamps in
// seconds); a level no server has yet reads as normal.
void TestRecords::logRecords_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<LogMessage>("expected");
    QTest::newRow("4.5.2") << QByteArray(R"([{"id":0,"message":"qBittorrent v4.5.2 started","timestamp":1795688475,"type":1}])")
                           << LogMessage{0, QStringLiteral("qBittorrent v4.5.2 started"), Date(1795688475), LogLevel::normal};
    QTest::newRow("5.1.0") << QByteArray(R"([{"id":13,"message":"Couldn't load WebUI translation for selected locale (C).",)"
                                         R"("timestamp":1795688489,"type":4}])")
                           << LogMessage{13, QStringLiteral("Couldn't load WebUI translation for selected locale (C)."),
                                         Date(1795688489), LogLevel::warning};
    QTest::newRow("5.3.0") << QByteArray(R"([{"id":5,"message":"Peer ID: \"-qB5300-\"","timestamp":1795688495,"type":2}])")
                           << LogMessage{5, QStringLiteral("Peer ID: \"-qB5300-\""), Date(1795688495), LogLevel::info};
    QTest::newRow("critical, keys in another order") << QByteArray(R"([{"type":8,"timestamp":1,"message":"é","id":7,"x":[]}])")
                                                     << LogMessage{7, QString::fromUtf8("é"), Date(1), LogLevel::critical};
    for (const int unknown : {0, 3, 16, -1})
        QTest::addRow("unknown type %d", unknown)
            << QStringLiteral(R"([{"id":1,"message":"m","timestamp":2,"type":%1}])").arg(unknown).toUtf8()
            << LogMessage{1, QStringLiteral("m"), Date(2), LogLevel::normal};
}

void TestRecords::logRecords()
{
    QFETCH(QByteArray, json);
    QFETCH(LogMessage, expected);
    QCOMPARE(decodeLogMessages(json), QList<LogMessage>{expected});
}

void TestRecords::peerLogRecords()
{
    QCOMPARE(decodePeerLog("[]"), QList<PeerLogEntry>{});
    const QList<PeerLogEntry> lines = decodePeerLog(
        R"([{"blocked":true,"id":0,"ip":"127.0.0.2","reason":"IP filter","timestamp":1795688486},)"
        R"({"blocked":false,"id":1,"ip":"2001:db8::1","reason":"","timestamp":1795688487}])");
    QCOMPARE(lines, (QList<PeerLogEntry>{
                        {0, QStringLiteral("127.0.0.2"), Date(1795688486), true, QStringLiteral("IP filter")},
                        {1, QStringLiteral("2001:db8::1"), Date(1795688487), false, QString()}}));
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
