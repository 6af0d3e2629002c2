#include "api/RssRecords.h"
#include "model/RssFeeds.h"
#include "tst_rsswindow.h"
#include "ui/RssModels.h"
#include "ui/RssRuleForm.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QComboBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLineEdit>
#include <QSpinBox>
#include <QListWidget>
#include <QTest>

namespace {

QJsonObject object(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

const RssRuleForm::Choices serverChoices{{{QStringLiteral("Linux"), QStringLiteral("http://127.0.0.1/linux")},
                                          {QStringLiteral("BSD"), QStringLiteral("http://127.0.0.1/bsd")}},
                                         {QStringLiteral("iso"), QStringLiteral("tv")},
                                         {QStringLiteral("b")}};

// As qBittorrent 5.3 writes a rule (tags, limits and certificates are keys the form does not show),
// with a key of a server yet to come.
const QByteArray rule53 =
    R"({"addPaused":null,"affectedFeeds":["http://127.0.0.1/bsd","http://gone/feed"],"assignedCategory":"",)"
    R"("enabled":true,"episodeFilter":"1x2-;","ignoreDays":0,"lastMatch":"","mustContain":"Debian","mustNotContain":"",)"
    R"("previouslyMatchedEpisodes":["1x2"],"priority":0,"savePath":"","smartFilter":true,"torrentContentLayout":null,)"
    R"("torrentParams":{"category":"iso","download_limit":-1,"download_path":"","inactive_seeding_time_limit":-2,)"
    R"("operating_mode":"AutoManaged","ratio_limit":-2,"save_path":"/srv/iso","seed_mode":false,)"
    R"("seeding_time_limit":-2,"share_limit_action":"Default","share_limits_mode":"Default","ssl_certificate":"",)"
    R"("ssl_dh_params":"","ssl_private_key":"","stopped":true,"tags":["a"],"upload_limit":-1},"useRegex":true,)"
    R"("future":{"nested":[1,null]}})";

} // namespace

void TestRssWindow::ruleFormRoundTrip_data()
{
    QTest::addColumn<QByteArray>("definition");
    QTest::newRow("5.3") << rule53;
    QTest::newRow("4.5 flat keys") << QByteArray(
        R"({"addPaused":false,"affectedFeeds":["http://127.0.0.1/linux"],"assignedCategory":"tv","enabled":false,)"
        R"("episodeFilter":"","ignoreDays":0,"lastMatch":"Wed, 25 Nov 2026 10:00:00 +0000","mustContain":"",)"
        R"("mustNotContain":"720p","previouslyMatchedEpisodes":[],"savePath":"/tv","smartFilter":false,)"
        R"("torrentContentLayout":"Subfolder","useRegex":false})");
    QTest::newRow("one feed as text, most keys missing")
        << QByteArray(R"({"affectedFeeds":"http://127.0.0.1/linux","addPaused":null})");
    QTest::newRow("empty") << QByteArray("{}");
}

// Shown and read back untouched, a rule is the definition it came as, to the last unknown key.
void TestRssWindow::ruleFormRoundTrip()
{
    QFETCH(QByteArray, definition);
    RssRuleForm form;
    const API::RssRule rule(QStringLiteral("Rule"), object(definition));
    form.setRule(rule, serverChoices);
    QVERIFY(!form.isEdited());
    QCOMPARE(form.rule().definition(), rule.definition());
    QCOMPARE(form.rule().name(), rule.name());
}

// Edits through the widgets reach the keys the server reads, and only those.
void TestRssWindow::ruleFormEdits()
{
    RssRuleForm form;
    const API::RssRule rule(QStringLiteral("Rule"), object(rule53));
    form.setRule(rule, serverChoices);
    // The server's feeds, then the rule's URL no feed has any more: kept, and checked; the same for
    // tags.
    QCOMPARE(form.feedList()->count(), 3);
    QCOMPARE(form.feedList()->item(2)->checkState(), Qt::Checked);
    QCOMPARE(form.tagList()->count(), 2);
    QCOMPARE(form.tagList()->item(1)->checkState(), Qt::Checked);
    QCOMPARE(form.addStoppedBox()->checkState(), Qt::Checked);
    QCOMPARE(form.contentLayoutBox()->currentIndex(), 0);

    form.addStoppedBox()->setCheckState(Qt::PartiallyChecked);
    form.feedList()->item(0)->setCheckState(Qt::Checked);
    form.tagList()->item(0)->setCheckState(Qt::Checked);
    form.categoryBox()->setCurrentText(QStringLiteral("tv"));
    form.ignoreDaysBox()->setValue(7);
    form.contentLayoutBox()->setCurrentIndex(3);
    QVERIFY(form.isEdited());
    QJsonObject expected = rule.definition();
    QJsonObject params = expected.value(u"torrentParams").toObject();
    params.remove(QStringLiteral("stopped"));
    params.insert(QStringLiteral("category"), QStringLiteral("tv"));
    params.insert(QStringLiteral("content_layout"), QStringLiteral("NoSubfolder"));
    params.insert(QStringLiteral("tags"), QJsonArray{QStringLiteral("a"), QStringLiteral("b")});
    expected.insert(QStringLiteral("torrentParams"), params);
    expected.insert(QStringLiteral("torrentContentLayout"), QStringLiteral("NoSubfolder"));
    expected.insert(QStringLiteral("addPaused"), QJsonValue::Null);
    expected.insert(QStringLiteral("assignedCategory"), QStringLiteral("tv"));
    expected.insert(QStringLiteral("ignoreDays"), 7);
    expected.insert(QStringLiteral("affectedFeeds"),
                    QJsonArray{QStringLiteral("http://127.0.0.1/bsd"), QStringLiteral("http://gone/feed"),
                               QStringLiteral("http://127.0.0.1/linux")});
    QCOMPARE(form.rule().definition(), expected);

    // A rule of flat keys (4.x) has no tags to set and keeps its layout in the flat key alone.
    form.setRule(API::RssRule(QStringLiteral("Flat"), object(R"({"torrentContentLayout":"Subfolder"})")), serverChoices);
    QCOMPARE(form.contentLayoutBox()->currentIndex(), 2);
    QVERIFY(!form.tagList()->isEnabled());
    form.tagList()->item(0)->setCheckState(Qt::Checked);
    form.contentLayoutBox()->setCurrentIndex(0);
    QCOMPARE(form.rule().definition(), object(R"({"torrentContentLayout":null})"));
}

// Folders within folders show as a tree in the server's order; a folder's articles are its feeds',
// and its count theirs.
void TestRssWindow::treeShowsNesting()
{
    RssFeeds feeds;
    RssTreeModel tree(feeds);
    QAbstractItemModelTester treeTester(&tree, QAbstractItemModelTester::FailureReportingMode::QtTest);
    RssArticleModel articles(feeds);
    QAbstractItemModelTester articleTester(&articles, QAbstractItemModelTester::FailureReportingMode::QtTest);
    feeds.setRoot(API::decodeRssItems(
        R"({"News":{"Linux":{"Debian":{"articles":[{"date":"","id":"1","title":"bookworm"},)"
        R"({"date":"","id":"2","isRead":true,"title":"trixie"}],"uid":"a","url":"http://127.0.0.1/d"}},)"
        R"("BSD":{"articles":[{"date":"","id":"3","title":"14.1"}],"uid":"b","url":"http://127.0.0.1/b"}},)"
        R"("Empty":{}})"));
    QCOMPARE(tree.rowCount(), 2);
    const QModelIndex news = tree.index(0, 0);
    QCOMPARE(news.data().toString(), QStringLiteral("News (2)"));
    QCOMPARE(tree.rowCount(news), 2);
    const QModelIndex linux = tree.index(0, 0, news);
    QCOMPARE(linux.data(RssTreeModel::PathRole).toString(), QStringLiteral("News\\Linux"));
    const QModelIndex debian = tree.index(0, 0, linux);
    QCOMPARE(debian.data().toString(), QStringLiteral("Debian (1)"));
    QCOMPARE(debian.data(RssTreeModel::PathRole).toString(), QStringLiteral("News\\Linux\\Debian"));
    QCOMPARE(tree.parent(debian), linux);
    QCOMPARE(tree.indexOf(QStringLiteral("News\\Linux\\Debian")), debian);
    QCOMPARE(tree.index(1, 0).data().toString(), QStringLiteral("Empty"));

    articles.setItemPath(QStringLiteral("News"));
    QCOMPARE(articles.rowCount(), 3);
    QVERIFY(articles.index(0, 0).data(Qt::FontRole).value<QFont>().bold());
    QVERIFY(!articles.index(1, 0).data(Qt::FontRole).value<QFont>().bold());

    feeds.markRead(QStringLiteral("News\\Linux"));
    QCOMPARE(tree.index(0, 0).data().toString(), QStringLiteral("News (1)"));
    QCOMPARE(articles.rowCount(), 3);
    QVERIFY(!articles.index(0, 0).data(Qt::FontRole).value<QFont>().bold());
}

QTEST_MAIN(TestRssWindow)
