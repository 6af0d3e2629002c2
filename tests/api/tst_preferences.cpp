#include "api/Client.h"
#include "api/ClientError.h"
#include "api/Errors.h"
#include "api/QBTPreferences.h"
#include "support/Await.h"
#include "support/FakeServer.h"

#include <QJsonDocument>
#include <QTest>
#include <QUrlQuery>

using namespace API;
namespace E = API::Enumerations;

Q_DECLARE_METATYPE(API::PreferenceValue)

namespace {

QBTPreferences decoded(const QByteArray &json)
{
    return QBTPreferences::decode(json);
}

QByteArray compact(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

// One of each kind of key, in the server's spelling, as 5.1 sends them.
const QByteArray serverAnswer = R"({"dht":false,"listen_port":6881,"save_path":"/downloads","max_ratio":-1,"max_ratio_enabled":false,
    "schedule_from_hour":8,"schedule_from_min":0,"dl_limit":0,"encryption":0,"proxy_type":"None","scan_dirs":{},"max_connec_per_torrent":100,
    "i2p_inbound_quantity":3,"banned_IPs":"","use_category_paths_in_manual_mode":false})";

} // namespace

class TestPreferences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersOutsideTheirTableFailTheRead_data()
    {
        QTest::addColumn<QString>("wireKey");
        QTest::addColumn<int>("caseCount");
        QTest::newRow("encryption") << u"encryption"_qs << 3;
        QTest::newRow("max ratio action") << u"max_ratio_act"_qs << 4;
        QTest::newRow("protocol") << u"bittorrent_protocol"_qs << 3;
        QTest::newRow("scheduler days") << u"scheduler_days"_qs << 10;
        QTest::newRow("dyndns") << u"dyndns_service"_qs << 2;
        QTest::newRow("choking") << u"upload_choking_algorithm"_qs << 3;
        QTest::newRow("slots") << u"upload_slots_behavior"_qs << 2;
        QTest::newRow("mixed mode") << u"utp_tcp_mixed_mode"_qs << 2;
        QTest::newRow("disk io type") << u"disk_io_type"_qs << 4;
        QTest::newRow("read mode") << u"disk_io_read_mode"_qs << 3;
        QTest::newRow("write mode") << u"disk_io_write_mode"_qs << 3;
        QTest::newRow("4.5 proxy type") << u"proxy_type"_qs << 6;
    }

    void numbersOutsideTheirTableFailTheRead()
    {
        QFETCH(QString, wireKey);
        QFETCH(int, caseCount);
        const auto answer = [&wireKey](int number) { return compact({{wireKey, number}}); };
        QVERIFY(decoded(answer(caseCount - 1)).value(findPreferenceByWireKey(wireKey)->key).has_value());
        for (const int outside : {-1, caseCount}) {
            try {
                decoded(answer(outside));
                QFAIL(qPrintable(u"%1 = %2 was read"_qs.arg(wireKey).arg(outside)));
            } catch (const ResponseDecodingError &error) {
                QVERIFY2(error.failureReason().contains(u'"' + wireKey + u'"'), qPrintable(error.failureReason()));
            }
        }
    }

    void wrongTypesFailTheReadNamingTheKey_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("wireKey");
        QTest::newRow("number for a Boolean") << QByteArray(R"({"dht":1})") << u"dht"_qs;
        QTest::newRow("fraction for an integer") << QByteArray(R"({"listen_port":1.5})") << u"listen_port"_qs;
        QTest::newRow("text for an integer") << QByteArray(R"({"listen_port":"8080"})") << u"listen_port"_qs;
        QTest::newRow("number for a string") << QByteArray(R"({"save_path":3})") << u"save_path"_qs;
        QTest::newRow("text for a double") << QByteArray(R"({"max_ratio":"1"})") << u"max_ratio"_qs;
        QTest::newRow("fraction for a rate") << QByteArray(R"({"dl_limit":0.5})") << u"dl_limit"_qs;
        QTest::newRow("null for a rate") << QByteArray(R"({"up_limit":null})") << u"up_limit"_qs;
        QTest::newRow("list for folders") << QByteArray(R"({"scan_dirs":[]})") << u"scan_dirs"_qs;
        QTest::newRow("folder code 2") << QByteArray(R"({"scan_dirs":{"/w":2}})") << u"scan_dirs"_qs;
        QTest::newRow("folder flag") << QByteArray(R"({"scan_dirs":{"/w":true}})") << u"scan_dirs"_qs;
        QTest::newRow("text for a numbered enumeration") << QByteArray(R"({"encryption":"1"})") << u"encryption"_qs;
        QTest::newRow("number for a worded enumeration")
            << QByteArray(R"({"torrent_content_layout":1})") << u"torrent_content_layout"_qs;
        QTest::newRow("unknown word") << QByteArray(R"({"torrent_stop_condition":"Never"})")
                                      << u"torrent_stop_condition"_qs;
        QTest::newRow("words are case-sensitive") << QByteArray(R"({"proxy_type":"socks5"})") << u"proxy_type"_qs;
        QTest::newRow("unknown encryption word")
            << QByteArray(R"({"mail_notification_encryption_type":"TLS"})") << u"mail_notification_encryption_type"_qs;
    }

    void wrongTypesFailTheReadNamingTheKey()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QString, wireKey);
        QVERIFY_THROWS_EXCEPTION(ResponseDecodingError, decoded(answer));
        try {
            decoded(answer);
        } catch (const ResponseDecodingError &error) {
            QVERIFY2(error.failureReason().contains(u'"' + wireKey + u'"'), qPrintable(error.failureReason()));
        }
    }

    void malformedAnswersFail_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("not JSON") << QByteArray("Forbidden");
        QTest::newRow("a list") << QByteArray("[]");
        QTest::newRow("cut short") << QByteArray(R"({"dht":tr)");
    }

    void malformedAnswersFail()
    {
        QFETCH(QByteArray, answer);
        QVERIFY_THROWS_EXCEPTION(ResponseDecodingError, decoded(answer));
    }

    void valuesDecodeUnderTheirKeys_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("key");
        QTest::addColumn<PreferenceValue>("value");
        const auto row = [](const char *name, const char *answer, const QString &key, PreferenceValue value) {
            QTest::newRow(name) << QByteArray(answer) << key << value;
        };
        row("connections per torrent", R"({"max_connec_per_torrent":100})", u"maxConnecPerTorrent"_qs, qint64{100});
        row("i2p quantity", R"({"i2p_inbound_quantity":3})", u"i2pInboundQuantity"_qs, qint64{3});
        row("banned addresses", R"({"banned_IPs":"10.0.0.1"})", u"bannedIps"_qs, u"10.0.0.1"_qs);
        row("torrent key, tnt field", R"({"torrent_changed_tmm_enabled":true})", u"torrentChangedTmmEnabled"_qs, true);
        row("whole ratio is a double", R"({"max_ratio":2})", u"maxRatio"_qs, 2.0);
        row("big integer", R"({"memory_working_set_limit":9007199254740993})", u"memoryWorkingSetLimit"_qs,
            qint64{9007199254740993});
        row("rate", R"({"alt_up_limit":10240})", u"altUpLimit"_qs, DataRate{10240});
        row("encryption 1", R"({"encryption":1})", u"encryption"_qs, EnumChoice{&E::encryptionMode, 1});
        row("worded proxy", R"({"proxy_type":"SOCKS4"})", u"proxyType"_qs, EnumChoice{&E::proxyType, 2});
        row("numbered proxy", R"({"proxy_type":5})", u"proxyType"_qs, EnumChoice{&E::numberedProxyType, 5});
        row("folders", R"({"scan_dirs":{"/a":0,"/b":1,"/c":"/d"}})", u"scanDirs"_qs,
            QList<ScanDir>{{u"/a"_qs, ScanDir::SavePath::monitoredFolder, {}},
                           {u"/b"_qs, ScanDir::SavePath::defaultSavePath, {}},
                           {u"/c"_qs, ScanDir::SavePath::other, u"/d"_qs}});
    }

    void valuesDecodeUnderTheirKeys()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QString, key);
        QFETCH(PreferenceValue, value);
        const auto read = decoded(answer).value(key);
        QVERIFY(read.has_value());
        QVERIFY(*read == value);
    }

    void shownTexts_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("caseName");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *answer, const QString &key, const QString &caseName, const QString &text) {
            QTest::newRow(qPrintable(caseName)) << QByteArray(answer) << key << caseName << text;
        };
        row(R"({"encryption":1})", u"encryption"_qs, u"foreceOn"_qs, u"Require encryption"_qs);
        row(R"({"encryption":2})", u"encryption"_qs, u"foreceOff"_qs, u"Disable encryption"_qs);
        row(R"({"max_ratio_act":0})", u"maxRatioAct"_qs, u"stopTorrent"_qs, u"Stop torrent"_qs);
        row(R"({"max_ratio_act":1})", u"maxRatioAct"_qs, u"removeTorrent"_qs, u"Remove torrent"_qs);
        row(R"({"max_ratio_act":2})", u"maxRatioAct"_qs, u"superSeed"_qs, u"Enable super seeding for torrent"_qs);
        row(R"({"max_ratio_act":3})", u"maxRatioAct"_qs, u"removeTorrentAndFiles"_qs, u"Remove torrent and its files"_qs);
        row(R"({"scheduler_days":9})", u"schedulerDays"_qs, u"sunday"_qs, u"Sunday"_qs);
        row(R"({"utp_tcp_mixed_mode":1})", u"utpTcpMixedMode"_qs, u"peerProportional"_qs,
            u"Peer proportional (throttles TCP)"_qs);
        row(R"({"disk_io_write_mode":2})", u"diskIoWriteMode"_qs, u"writeThrough"_qs, u"Write-Through"_qs);
        row(R"({"torrent_content_layout":"NoSubfolder"})", u"torrentContentLayout"_qs, u"noSubfolder"_qs,
            u"Don't create subfolder"_qs);
        row(R"({"torrent_stop_condition":"MetadataReceived"})", u"torrentStopCondition"_qs, u"metaReceived"_qs,
            u"Metadata received"_qs);
        row(R"({"mail_notification_encryption_type":"STARTTLS"})", u"mailNotificationEncryptionType"_qs,
            u"starttls"_qs, u"STARTTLS"_qs);
    }

    void shownTexts()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QString, key);
        QFETCH(QString, caseName);
        QFETCH(QString, text);
        const EnumCase &chosen = std::get<EnumChoice>(*decoded(answer).value(key)).selected();
        QCOMPARE(chosen.name, caseName);
        QCOMPARE(chosen.text, text);
    }

    void shownTextsSayTorrent()
    {
        QStringList shown;
        for (const PreferenceKey &key : preferenceKeys()) {
            shown << groupTitle(key.group);
            for (const Enumeration *enumeration : key.enumerations)
                for (const EnumCase &c : enumeration->cases)
                    shown << c.text;
        }
        for (const QString &text : shown)
            QVERIFY2(!text.contains(u"tnt", Qt::CaseInsensitive), qPrintable(text));
    }

    void everyKeyHasItsOwnTitle()
    {
        QMap<PreferenceGroup, QSet<QString>> titles;
        for (const PreferenceKey &key : preferenceKeys()) {
            QVERIFY2(!key.title.trimmed().isEmpty(), qPrintable(key.key));
            QVERIFY2(!key.title.contains(u"tnt", Qt::CaseInsensitive), qPrintable(key.title));
            QVERIFY2(!titles[key.group].contains(key.title), qPrintable(key.title));
            titles[key.group].insert(key.title);
            const bool whole = key.type == PreferenceType::integer || key.type == PreferenceType::rate;
            QVERIFY2(key.range.has_value() == whole, qPrintable(key.key));
        }
    }

    void ranges_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<qint64>("lowest");
        QTest::addColumn<qint64>("highest");
        for (const auto key : {u"listenPort", u"webUiPort", u"proxyPort", u"embeddedTrackerPort", u"announcePort",
                               u"outgoingPortsMin", u"outgoingPortsMax"})
            QTest::newRow(qPrintable(QString::fromUtf16(key))) << QString::fromUtf16(key) << qint64{0} << qint64{65535};
        QTest::newRow("hour") << u"scheduleToHour"_qs << qint64{0} << qint64{23};
        QTest::newRow("minute") << u"scheduleFromMin"_qs << qint64{0} << qint64{59};
        QTest::newRow("-1 is unlimited") << u"maxActiveDownloads"_qs << qint64{-1} << qint64{2147483647};
    }

    void ranges()
    {
        QFETCH(QString, key);
        QFETCH(qint64, lowest);
        QFETCH(qint64, highest);
        const PreferenceKey *preference = findPreference(key);
        QVERIFY(preference && preference->range);
        QCOMPARE(preference->range->first, lowest);
        QCOMPARE(preference->range->second, highest);
    }

    void everyKeyOnceInBothSpellings()
    {
        QSet<QString> keys;
        QSet<QString> wireKeys;
        for (const PreferenceKey &key : preferenceKeys()) {
            keys.insert(key.key);
            wireKeys.insert(key.wireKey);
        }
        QCOMPARE(keys.size(), 202);
        QCOMPARE(wireKeys.size(), 202);
    }

    void editsAreWrittenAsTheServerSpellsThem_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<PreferenceValue>("value");
        QTest::addColumn<QByteArray>("written");
        const auto row = [](const char *name, const QString &key, PreferenceValue value, const char *written) {
            QTest::newRow(name) << key << value << QByteArray(written);
        };
        row("Boolean", u"dht"_qs, true, R"({"dht":true})");
        row("integer", u"listenPort"_qs, qint64{7000}, R"({"listen_port":7000})");
        row("connections per torrent", u"maxConnecPerTorrent"_qs, qint64{50}, R"({"max_connec_per_torrent":50})");
        row("i2p quantity", u"i2pInboundQuantity"_qs, qint64{4}, R"({"i2p_inbound_quantity":4})");
        row("banned addresses", u"bannedIps"_qs, u"10.0.0.1"_qs, R"({"banned_IPs":"10.0.0.1"})");
        row("string", u"savePath"_qs, u"/data & more"_qs, R"({"save_path":"/data & more"})");
        // 4.5 and 5.1 read a limit only with its switch, and all read an hour only with its minute.
        row("double with its switch", u"maxRatio"_qs, 1.5, R"({"max_ratio":1.5,"max_ratio_enabled":false})");
        row("switch with its limit", u"maxRatioEnabled"_qs, true, R"({"max_ratio":-1,"max_ratio_enabled":true})");
        row("hour with its minute", u"scheduleFromHour"_qs, qint64{9}, R"({"schedule_from_hour":9,"schedule_from_min":0})");
        row("rate", u"dlLimit"_qs, DataRate{2048}, R"({"dl_limit":2048})");
        row("numbered enumeration", u"encryption"_qs, EnumChoice{&E::encryptionMode, 2}, R"({"encryption":2})");
        row("worded enumeration", u"proxyType"_qs, EnumChoice{&E::proxyType, 3}, R"({"proxy_type":"SOCKS5"})");
        row("folders", u"scanDirs"_qs,
            QList<ScanDir>{{u"/c"_qs, ScanDir::SavePath::other, u"/d"_qs},
                           {u"/a"_qs, ScanDir::SavePath::monitoredFolder, {}},
                           {u"/b"_qs, ScanDir::SavePath::defaultSavePath, {}}},
            R"({"scan_dirs":{"/a":0,"/b":1,"/c":"/d"}})");
    }

    void editsAreWrittenAsTheServerSpellsThem()
    {
        QFETCH(QString, key);
        QFETCH(PreferenceValue, value);
        QFETCH(QByteArray, written);
        QBTPreferences preferences = decoded(serverAnswer);
        preferences.setValue(key, value);
        QCOMPARE(compact(preferences.changes()), written);
        preferences.acceptChanges(preferences);
        QVERIFY(preferences.changes().isEmpty());
    }

    void onlyWhatDiffersFromTheReadIsWritten()
    {
        QBTPreferences preferences = decoded(serverAnswer);
        QVERIFY(preferences.changes().isEmpty());
        preferences.setValue(u"listenPort", qint64{6881}); // as read
        preferences.setValue(u"dht", true);
        preferences.setValue(u"dht", false); // and back
        preferences.setValue(u"scanDirs", QList<ScanDir>{});
        QVERIFY(preferences.changes().isEmpty());

        preferences.setValue(u"savePath", u"/elsewhere"_qs);
        QCOMPARE(compact(preferences.changes()), QByteArray(R"({"save_path":"/elsewhere"})"));
        const QBTPreferences written = preferences;
        preferences.setValue(u"dht", true); // while the write is under way
        preferences.acceptChanges(written);
        QCOMPARE(compact(preferences.changes()), QByteArray(R"({"dht":true})"));
        QVERIFY(preferences.value(u"savePath") == PreferenceValue(u"/elsewhere"_qs));
    }

    void unknownKeysAreKeptAndNeverSent()
    {
        QBTPreferences preferences = decoded(R"({"dht":false,"future_option":{"depth":[1,2]},"file_log_age":6})");
        QCOMPARE(compact(preferences.unknownKeys()), QByteArray(R"({"file_log_age":6,"future_option":{"depth":[1,2]}})"));
        preferences.setValue(u"dht", true);
        QCOMPARE(compact(preferences.changes()), QByteArray(R"({"dht":true})"));
        QVERIFY_THROWS_EXCEPTION(std::invalid_argument, preferences.setValue(u"fileLogAge", qint64{1}));
    }

    void keysTheServerOmitsStayAbsent()
    {
        // 5.1 sends neither the API key nor the bootstrap nodes; 5.2 dropped use_subcategories.
        QBTPreferences preferences = decoded(serverAnswer);
        for (const auto key : {u"webUiApiKey", u"useSubcategories", u"dhtBootstrapNodes"}) {
            QVERIFY(!preferences.value(key).has_value());
            QVERIFY_THROWS_EXCEPTION(std::invalid_argument, preferences.setValue(key, u"x"_qs));
        }
        QVERIFY(preferences.changes().isEmpty());
    }

    void editsOfTheWrongKindAreRefused_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<PreferenceValue>("value");
        QTest::newRow("unknown key") << u"noSuchKey"_qs << PreferenceValue(true);
        QTest::newRow("integer for a Boolean") << u"dht"_qs << PreferenceValue(qint64{1});
        QTest::newRow("plain integer for a rate") << u"dlLimit"_qs << PreferenceValue(qint64{1});
        QTest::newRow("another enumeration") << u"encryption"_qs << PreferenceValue(EnumChoice{&E::btProtocol, 0});
        QTest::newRow("case past the end") << u"encryption"_qs << PreferenceValue(EnumChoice{&E::encryptionMode, 3});
        QTest::newRow("a folder twice") << u"scanDirs"_qs
                                        << PreferenceValue(QList<ScanDir>{{u"/a"_qs, ScanDir::SavePath::monitoredFolder, {}},
                                                                          {u"/a"_qs, ScanDir::SavePath::defaultSavePath, {}}});
    }

    void editsOfTheWrongKindAreRefused()
    {
        QFETCH(QString, key);
        QFETCH(PreferenceValue, value);
        QBTPreferences preferences = decoded(serverAnswer);
        QVERIFY_THROWS_EXCEPTION(std::invalid_argument, preferences.setValue(key, value));
        QVERIFY(preferences.changes().isEmpty());
    }

    void clientWritesTheChangesAsOneJsonField()
    {
        FakeServer server;
        server.setHandler([](const FakeServer::Request &request) {
            if (request.target.endsWith("/app/preferences"))
                return FakeServer::Response::json(serverAnswer);
            return FakeServer::Response::text(200, "");
        });
        Client client(server.configuration());
        QBTPreferences preferences = QuilloTest::wait(client.preferences());

        QuilloTest::wait(client.setPreferences(preferences)); // nothing edited: nothing sent
        QCOMPARE(server.requests().size(), 1);

        preferences.setValue(u"savePath", u"/a&b=c+d"_qs);
        QuilloTest::wait(client.setPreferences(preferences));
        QCOMPARE(server.requests().size(), 2);
        const FakeServer::Request &write = server.requests().constLast();
        QCOMPARE(write.method + ' ' + write.target, QByteArray("POST /api/v2/app/setPreferences"));
        const QUrlQuery form(QString::fromUtf8(write.body));
        QCOMPARE(form.queryItems(QUrl::FullyDecoded),
                 (QList<QPair<QString, QString>>{{u"json"_qs, uR"({"save_path":"/a&b=c+d"})"_qs}}));
    }

    void failedReadShowsItsTitleAndTheKey()
    {
        FakeServer server;
        server.answerAll(FakeServer::Response::json(R"({"encryption":3})"));
        Client client(server.configuration());
        try {
            QuilloTest::wait(client.preferences());
            QFAIL("a preference outside its table was read");
        } catch (...) {
            const ClientError shown(QBTPreferences::readFailureTitle(), std::current_exception());
            QCOMPARE(shown.title(), u"Failed to get QBt preferences."_qs);
            QCOMPARE(shown.failureReason(), u"The server's \"encryption\" is 3, not one of the EncryptionMode values."_qs);
        }
    }

    void networkPickers()
    {
        const auto interfaces = NetworkInterface::decodeList(R"([{"name":"Loopback","value":"lo"}])");
        QCOMPARE(NetworkInterface::choices(interfaces),
                 (QList<NetworkInterface>{{u"Any interface"_qs, {}}, {u"Loopback"_qs, u"lo"_qs}}));
        const auto addresses = NetworkAddress::decodeList(R"(["127.0.0.1","::1"])");
        QCOMPARE(AddressChoice::choices(addresses),
                 (QList<AddressChoice>{{u"All addresses"_qs, {}},
                                       {u"All IPv4 addresses"_qs, u"0.0.0.0"_qs},
                                       {u"All IPv6 addresses"_qs, u"::"_qs},
                                       {u"127.0.0.1"_qs, u"127.0.0.1"_qs},
                                       {u"::1"_qs, u"::1"_qs}}));
    }

    void malformedNetworkListsFail_data()
    {
        QTest::addColumn<QByteArray>("interfaces");
        QTest::addColumn<QByteArray>("addresses");
        QTest::newRow("objects, not lists") << QByteArray("{}") << QByteArray("{}");
        QTest::newRow("wrong items") << QByteArray(R"(["lo"])") << QByteArray(R"([1])");
        QTest::newRow("missing value") << QByteArray(R"([{"name":"lo"}])") << QByteArray(R"([null])");
    }

    void malformedNetworkListsFail()
    {
        QFETCH(QByteArray, interfaces);
        QFETCH(QByteArray, addresses);
        QVERIFY_THROWS_EXCEPTION(ResponseDecodingError, NetworkInterface::decodeList(interfaces));
        QVERIFY_THROWS_EXCEPTION(ResponseDecodingError, NetworkAddress::decodeList(addresses));
    }
};

QTEST_GUILESS_MAIN(TestPreferences)

#include "tst_preferences.moc"
