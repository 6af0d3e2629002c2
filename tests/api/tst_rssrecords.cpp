#include "api/Errors.h"
#include "api/RssRecords.h"
#include "tst_rssrecords.h"

#include <QJsonDocument>
#include <QTest>

using namespace API;

namespace {

// As qBittorrent 5.1 writes a folder holding a feed with one article read and one not: keys in
// sorted order, `isRead` only on the article once marked.
const QByteArray nested = R"({"News":{"Linux":{"articles":[)"
    R"({"date":"Wed, 25 Nov 2026 10:00:00 +0000","description":"d","id":"a1","isRead":true,"link":"http://127.0.0.1/a1",)"
    R"("title":"One","torrentURL":"http://127.0.0.1/one.torrent"},)"
    R"({"date":"","id":"a2","title":"Two"}],)"
    R"("hasError":false,"isLoading":false,"lastBuildDate":"","title":"Linux feed","uid":"{0b0c}","url":"http://127.0.0.1/f"}},)"
    R"("uid":{"uid":"{1}","url":"http://127.0.0.1/u"}})";

QJsonObject object(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

RssRule rule(const QByteArray &json)
{
    return RssRule(QStringLiteral("r"), object(json));
}

enum class Decoder { items, rules, matches };

void decode(Decoder decoder, const QByteArray &json)
{
    switch (decoder) {
    case Decoder::items: decodeRssItems(json); break;
    case Decoder::rules: decodeRssRules(json); break;
    case Decoder::matches: decodeRssMatchingArticles(json); break;
    }
}

} // namespace

Q_DECLARE_METATYPE(API::RssItem)
Q_DECLARE_METATYPE(Decoder)

void TestRssRecords::items_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<RssItem>("expected");

    RssItem root;
    RssItem news{QStringLiteral("News"), QStringLiteral("News"), std::nullopt, {}};
    RssFeed linux{QStringLiteral("{0b0c}"), QStringLiteral("http://127.0.0.1/f"), QStringLiteral("Linux feed"), {},
                  false, false, {}};
    linux.articles << RssArticle{QStringLiteral("a1"), QStringLiteral("Wed, 25 Nov 2026 10:00:00 +0000"),
                                 QStringLiteral("One"), {}, QStringLiteral("d"),
                                 QStringLiteral("http://127.0.0.1/one.torrent"), QStringLiteral("http://127.0.0.1/a1"),
                                 true}
                   << RssArticle{QStringLiteral("a2"), {}, QStringLiteral("Two"), {}, {}, {}, {}, false};
    news.children << RssItem{QStringLiteral("Linux"), QStringLiteral("News\\Linux"), linux, {}};
    // A feed named "uid" is an object, never taken for the key of a feed.
    RssFeed named{QStringLiteral("{1}"), QStringLiteral("http://127.0.0.1/u"), {}, {}, false, false, {}};
    root.children << news << RssItem{QStringLiteral("uid"), QStringLiteral("uid"), named, {}};
    QTest::newRow("nested, with data") << nested << root;
    QTest::newRow("no feeds") << QByteArray("{}") << RssItem{};
    RssItem empty;
    empty.children << RssItem{QStringLiteral("Empty"), QStringLiteral("Empty"), std::nullopt, {}};
    QTest::newRow("an empty folder") << QByteArray(R"({"Empty":{}})") << empty;
    // 5.2 adds a refresh interval; keys a client does not know are checked, then passed over.
    RssItem newer;
    newer.children << RssItem{QStringLiteral("F"), QStringLiteral("F"),
                              RssFeed{QStringLiteral("u"), QStringLiteral("x"), {}, {}, false, false, {}}, {}};
    QTest::newRow("unknown feed key")
        << QByteArray(R"({"F":{"refreshInterval":60,"future":[true,null],"uid":"u","url":"x"}})") << newer;
}

void TestRssRecords::items()
{
    QFETCH(QByteArray, json);
    QFETCH(RssItem, expected);
    const RssItem decoded = decodeRssItems(json);
    QCOMPARE(decoded, expected);
}

void TestRssRecords::malformed_data()
{
    QTest::addColumn<Decoder>("decoder");
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("message"); // part of what the error says

    QTest::newRow("items: an array") << Decoder::items << QByteArray("[]") << QStringLiteral("expected an object");
    QTest::newRow("items: the root a feed")
        << Decoder::items << QByteArray(R"({"uid":"u","url":"x"})") << QStringLiteral("expected a folder");
    QTest::newRow("items: no url") << Decoder::items << QByteArray(R"({"F":{"uid":"u"}})") << QStringLiteral("F.url");
    QTest::newRow("items: no uid") << Decoder::items << QByteArray(R"({"F":{"url":"u"}})") << QStringLiteral("F.uid");
    QTest::newRow("items: uid a number")
        << Decoder::items << QByteArray(R"({"F":{"uid":1,"url":"x"}})") << QStringLiteral("F.uid");
    QTest::newRow("items: an item inside a feed")
        << Decoder::items << QByteArray(R"({"F":{"uid":"u","url":"x","G":{}}})") << QStringLiteral("inside a feed");
    QTest::newRow("items: article without date")
        << Decoder::items << QByteArray(R"({"F":{"uid":"u","url":"x","articles":[{"id":"1"}]}})")
        << QStringLiteral("date");
    QTest::newRow("items: isRead as text")
        << Decoder::items << QByteArray(R"({"F":{"uid":"u","url":"x","articles":[{"id":"1","date":"","isRead":"1"}]}})")
        << QStringLiteral("isRead");
    QTest::newRow("items: folders 40 deep")
        << Decoder::items << QByteArray("{\"a\":").repeated(40) + "{}" + QByteArray(40, '}') << QString();
    QTest::newRow("items: bad literal under an unknown key")
        << Decoder::items << QByteArray(R"({"F":{"uid":"u","url":"x","y":[nul]}})") << QString();
    QTest::newRow("items: a name holding the separator")
        << Decoder::items << QByteArray(R"({"a\\b":{}})") << QStringLiteral("not a name");
    QTest::newRow("items: an empty name") << Decoder::items << QByteArray(R"({"":{}})") << QStringLiteral("not a name");
    QTest::newRow("items: trailing content") << Decoder::items << QByteArray("{} {}") << QStringLiteral("after");
    QTest::newRow("items: truncated") << Decoder::items << nested.left(nested.size() / 2) << QString();
    QTest::newRow("rules: an array") << Decoder::rules << QByteArray("[]") << QStringLiteral("expected an object");
    QTest::newRow("rules: a rule as text")
        << Decoder::rules << QByteArray(R"({"r":"x"})") << QStringLiteral("r: expected an object");
    QTest::newRow("rules: enabled as text")
        << Decoder::rules << QByteArray(R"({"r":{"enabled":"true"}})") << QStringLiteral("r.enabled");
    QTest::newRow("rules: a feed as a number")
        << Decoder::rules << QByteArray(R"({"r":{"affectedFeeds":["a",1]}})") << QStringLiteral("r.affectedFeeds");
    QTest::newRow("rules: stopped as text")
        << Decoder::rules << QByteArray(R"({"r":{"torrentParams":{"stopped":"no"}}})")
        << QStringLiteral("r.torrentParams.stopped");
    QTest::newRow("rules: trailing content") << Decoder::rules << QByteArray(R"({"r":{}} x)") << QString();
    QTest::newRow("matches: titles as text")
        << Decoder::matches << QByteArray(R"({"Feed":"One"})") << QStringLiteral("Feed");
    QTest::newRow("matches: truncated") << Decoder::matches << QByteArray(R"({"Feed":["On)") << QString();
}

void TestRssRecords::malformed()
{
    QFETCH(Decoder, decoder);
    QFETCH(QByteArray, json);
    QFETCH(QString, message);
    try {
        decode(decoder, json);
        QFAIL("decoded");
    } catch (const ResponseDecodingError &error) {
        QVERIFY2(error.description().contains(message) || error.failureReason().contains(message),
                 qPrintable(error.description() + QStringLiteral(" / ") + error.failureReason()));
    }
}

// What the editor shows of a rule, from the keys the server reads: `torrentParams` wins over the
// flat keys when present, as on the server.
void TestRssRecords::ruleValues_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("category");
    QTest::addColumn<QString>("savePath");
    QTest::addColumn<int>("stopped"); // -1 the server's setting
    QTest::addColumn<QStringList>("feeds");

    QTest::newRow("4.5 flat keys") << QByteArray(
        R"({"addPaused":true,"affectedFeeds":["http://a"],"assignedCategory":"tv","savePath":"/tv"})")
                                   << QStringLiteral("tv") << QStringLiteral("/tv") << 1
                                   << QStringList{QStringLiteral("http://a")};
    QTest::newRow("5.x torrentParams over flat keys")
        << QByteArray(R"({"addPaused":null,"assignedCategory":"old","savePath":"/old",)"
                      R"("torrentParams":{"category":"tv","save_path":"/tv","stopped":false}})")
        << QStringLiteral("tv") << QStringLiteral("/tv") << 0 << QStringList{};
    QTest::newRow("5.x without stopped") << QByteArray(R"({"addPaused":true,"torrentParams":{"category":""}})")
                                         << QString() << QString() << -1 << QStringList{};
    QTest::newRow("one feed as text") << QByteArray(R"({"affectedFeeds":"http://a","addPaused":null})") << QString()
                                      << QString() << -1 << QStringList{QStringLiteral("http://a")};
}

void TestRssRecords::ruleValues()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, category);
    QFETCH(QString, savePath);
    QFETCH(int, stopped);
    QFETCH(QStringList, feeds);
    const RssRule read = decodeRssRules("{\"r\":" + json + '}').value(0);
    QCOMPARE(read.category(), category);
    QCOMPARE(read.savePath(), savePath);
    QCOMPARE(read.addStopped(), stopped < 0 ? std::nullopt : std::optional<bool>(stopped == 1));
    QCOMPARE(read.affectedFeeds(), feeds);
}

// An edit writes what the server reads: both forms where the rule has `torrentParams`, and a value
// set to what it was changes nothing.
void TestRssRecords::ruleEdits_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QByteArray>("expected");

    const QByteArray modern = R"({"assignedCategory":"a","savePath":"","addPaused":null,)"
                              R"("torrentParams":{"category":"a","save_path":"","x":1}})";
    QTest::newRow("flat category") << QByteArray(R"({"assignedCategory":"a"})") << QStringLiteral("category=tv")
                                   << QByteArray(R"({"assignedCategory":"tv"})");
    QTest::newRow("both categories") << modern << QStringLiteral("category=tv")
                                     << QByteArray(R"({"assignedCategory":"tv","savePath":"","addPaused":null,)"
                                                   R"("torrentParams":{"category":"tv","save_path":"","x":1}})");
    QTest::newRow("save path leaves automatic management")
        << modern << QStringLiteral("savePath=/tv")
        << QByteArray(R"({"assignedCategory":"a","savePath":"/tv","addPaused":null,)"
                      R"("torrentParams":{"category":"a","save_path":"/tv","use_auto_tmm":false,"x":1}})");
    QTest::newRow("stopped") << modern << QStringLiteral("stopped=1")
                             << QByteArray(R"({"assignedCategory":"a","savePath":"","addPaused":true,)"
                                           R"("torrentParams":{"category":"a","save_path":"","stopped":true,"x":1}})");
    QTest::newRow("stopped back to the server's setting")
        << QByteArray(R"({"addPaused":false,"torrentParams":{"stopped":false}})") << QStringLiteral("stopped=")
        << QByteArray(R"({"addPaused":null,"torrentParams":{}})");
    QTest::newRow("same category") << modern << QStringLiteral("category=a") << modern;
    QTest::newRow("same missing text") << QByteArray("{}") << QStringLiteral("mustContain=") << QByteArray("{}");
}

void TestRssRecords::ruleEdits()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, edit);
    QFETCH(QByteArray, expected);
    RssRule edited = rule(json);
    const QString key = edit.section(u'=', 0, 0);
    const QString value = edit.section(u'=', 1);
    if (key == u"category")
        edited.setCategory(value);
    else if (key == u"savePath")
        edited.setSavePath(value);
    else if (key == u"stopped")
        edited.setAddStopped(value.isEmpty() ? std::nullopt : std::optional<bool>(value == u"1"));
    else if (key == u"mustContain")
        edited.setMustContain(value);
    QCOMPARE(edited.definition(), object(expected));
}

QTEST_GUILESS_MAIN(TestRssRecords)
