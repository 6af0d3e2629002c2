#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/AppContext.h"
#include "support/Await.h"
#include "support/ConnectedServer.h"
#include "support/FakeServer.h"
#include "support/TorrentFactory.h"
#include "ui/RssModels.h"
#include "ui/RssRuleForm.h"
#include "ui/RssRulesDialog.h"
#include "ui/RssWindow.h"
#include "ui/TntAddingFlow.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>

using Flavor = QbtServer::Flavor;
using QuilloTest::wait;
namespace Rss = API::Endpoint::Rss;

namespace {

const QString matching = QStringLiteral("Quillo Test S01E01");
const QString other = QStringLiteral("Other Show S02E05");

const API::RssItem *child(const API::RssItem &folder, const QString &name)
{
    for (const API::RssItem &item : folder.children) {
        if (item.name == name)
            return &item;
    }
    return nullptr;
}

const API::RssArticle *article(const API::RssItem &feed, const QString &title)
{
    for (const API::RssArticle &candidate : feed.feed->articles) {
        if (candidate.title == title)
            return &candidate;
    }
    return nullptr;
}

const API::RssRule *rule(const QList<API::RssRule> &rules, const QString &name)
{
    const auto found = std::find_if(rules.cbegin(), rules.cend(), [&name](const API::RssRule &r) { return r.name() == name; });
    return found == rules.cend() ? nullptr : &*found;
}

} // namespace

// RSS on real servers: a feed served from this test's own loopback server, with a torrent behind
// one of its two articles. Fetched by the server, read, marked read, downloaded; a rule that
// matches one article and not the other, by the server's own word; and the RSS window over it all.
class TestRssRealServers : public QObject
{
    Q_OBJECT

public:
    explicit TestRssRealServers(Flavor flavor)
        : m_flavor(flavor)
    {}

private:
    const Flavor m_flavor;
    std::unique_ptr<ConnectedServer> m_server;
    FakeServer m_web;
    TorrentFactory::Torrent m_torrent;
    QString m_feedUrl;

    QString webUrl(const QString &path) const { return QStringLiteral("http://127.0.0.1:%1/%2").arg(m_web.port()).arg(path); }

    QByteArray feedDocument() const
    {
        const auto item = [this](const QString &title, const QString &id, const QString &torrent) {
            return QStringLiteral("<item><title>%1</title><guid>%2</guid><link>%3</link>"
                                  "<pubDate>Wed, 25 Nov 2026 10:00:00 +0000</pubDate>"
                                  "<enclosure url=\"%4\" type=\"application/x-bittorrent\" length=\"1\"/></item>")
                .arg(title, id, webUrl(id), webUrl(torrent));
        };
        return (QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?><rss version=\"2.0\"><channel>"
                               "<title>Quillo feed</title><link>%1</link><description>test</description>")
                    .arg(webUrl({})) +
                item(matching, QStringLiteral("quillo-1"), QStringLiteral("one.torrent")) +
                item(other, QStringLiteral("quillo-2"), QStringLiteral("two.torrent")) +
                QStringLiteral("</channel></rss>"))
            .toUtf8();
    }

    // With QUILLO_RSS_CORPUS set, the answers read are kept there as fuzzing seeds (tests/fuzz/corpus/rss),
    // each led by the byte that picks its decoder.
    void keep(char selector, const char *what, const API::APIEndpoint &endpoint)
    {
        const QString folder = qEnvironmentVariable("QUILLO_RSS_CORPUS");
        if (folder.isEmpty())
            return;
        static const char *const versions[] = {"452", "510", "newest"};
        QFile file(QStringLiteral("%1/%2-%3").arg(folder, QLatin1String(what), QLatin1String(versions[int(m_flavor)])));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(selector + wait(m_server->client().perform(endpoint)));
    }

    API::RssItem feed(const QString &name)
    {
        const API::RssItem root = wait(m_server->client().rssItems());
        const API::RssItem *folder = child(root, QStringLiteral("Quillo"));
        const API::RssItem *found = folder ? child(*folder, name) : nullptr;
        return found ? *found : API::RssItem{};
    }

private Q_SLOTS:
    void initTestCase()
    {
        QUILLO_CONNECT(m_server, m_flavor);
        m_torrent = TorrentFactory::singleFile(m_server->scratchDir(), QStringLiteral("rss-one.bin"), 64 * 1024);
        m_web.setHandler([this](const FakeServer::Request &request) {
            if (request.target == "/feed.xml")
                return FakeServer::Response{.body = feedDocument(), .headers = {{"Content-Type", "application/rss+xml"}}};
            if (request.target == "/one.torrent")
                return FakeServer::Response{.body = m_torrent.bytes,
                                            .headers = {{"Content-Type", "application/x-bittorrent"}}};
            return FakeServer::Response::text(404, "Not Found");
        });
        m_feedUrl = webUrl(QStringLiteral("feed.xml"));
    }

    void cleanupTestCase() { m_server.reset(); }

    // Off by default on every version: the server still keeps and lists feeds and folders, and the
    // window says why no article comes.
    void processingOff()
    {
        API::Client &client = m_server->client();
        wait(client.perform(Rss::addFolder(QStringLiteral("Off"))));
        QVERIFY(child(wait(client.rssItems()), QStringLiteral("Off")));
        QWidget host;
        TntAddingFlow adding(m_server->context(), &host);
        RssWindow window(m_server->context(), adding, &host);
        window.show();
        QTRY_VERIFY_WITH_TIMEOUT(window.notice()->isVisible(), 10'000);
        QVERIFY(window.notice()->text().contains(QStringLiteral("processing is off")));
        QTRY_COMPARE_WITH_TIMEOUT(window.feedView()->model()->rowCount(), 1, 10'000);
        window.hide();
        wait(client.perform(Rss::removeItem(QStringLiteral("Off"))));
        wait(client.perform(API::Endpoint::Application::setPreferences("{\"rss_processing_enabled\":true}")));
    }

    void feedsAndArticles()
    {
        API::Client &client = m_server->client();
        wait(client.perform(Rss::addFolder(QStringLiteral("Quillo"))));
        wait(client.perform(Rss::addFeed(m_feedUrl, QStringLiteral("Quillo\\Test"))));
        wait(client.perform(Rss::refreshItem(QStringLiteral("Quillo\\Test"))));
        API::RssItem test;
        QTRY_VERIFY_WITH_TIMEOUT((test = feed(QStringLiteral("Test"))).feed && test.feed->articles.size() == 2, 30'000);
        QCOMPARE(test.path, QStringLiteral("Quillo\\Test"));
        QCOMPARE(test.feed->url, m_feedUrl);
        QCOMPARE(test.feed->title, QStringLiteral("Quillo feed"));
        const API::RssArticle *one = article(test, matching);
        QVERIFY(one);
        QCOMPARE(one->torrentURL, webUrl(QStringLiteral("one.torrent")));
        QCOMPARE(one->link, webUrl(QStringLiteral("quillo-1")));
        QCOMPARE(test.unreadCount(), 2);

        wait(client.perform(Rss::markAsRead(test.path, one->id)));
        test = feed(QStringLiteral("Test"));
        QVERIFY(article(test, matching)->isRead);
        QCOMPARE(test.unreadCount(), 1);
        keep('i', "items", Rss::items());

        // A failure says what the server said.
        try {
            wait(client.perform(Rss::addFolder(QStringLiteral("Quillo"))));
            QFAIL("a second folder of the same name was accepted");
        } catch (const API::RefusalError &error) {
            QVERIFY2(!error.failureReason().isEmpty(), qPrintable(error.description()));
        }

        wait(client.perform(Rss::moveItem(test.path, QStringLiteral("Quillo\\Renamed"))));
        QTRY_VERIFY_WITH_TIMEOUT(feed(QStringLiteral("Renamed")).feed, 10'000);
        QVERIFY(!feed(QStringLiteral("Test")).feed);
        QCOMPARE(feed(QStringLiteral("Renamed")).unreadCount(), 1);

        if (API::ServerFeatures(m_server->apiVersion()).editsRssFeedURL()) {
            const QString moved = m_feedUrl + QStringLiteral("?again");
            wait(client.perform(Rss::setFeedURL(QStringLiteral("Quillo\\Renamed"), moved)));
            QCOMPARE(feed(QStringLiteral("Renamed")).feed->url, moved);
            wait(client.perform(Rss::setFeedURL(QStringLiteral("Quillo\\Renamed"), m_feedUrl)));
            QCOMPARE(feed(QStringLiteral("Renamed")).feed->url, m_feedUrl);
        }
    }

    // The server says which articles a saved rule matches: one, not the other. A rule read and
    // written back unchanged reads back the same, and an edit to "Add stopped" reaches the server
    // whichever form of the rule it reads.
    void rules()
    {
        API::Client &client = m_server->client();
        const QString name = QStringLiteral("Quillo rule");
        QJsonObject definition{{QStringLiteral("enabled"), true},
                               {QStringLiteral("mustContain"), QStringLiteral("Quillo Test")},
                               {QStringLiteral("affectedFeeds"), QJsonArray{m_feedUrl}}};
        wait(client.perform(Rss::setRule(name, definition)));
        const QMap<QString, QStringList> matches = wait(client.rssMatchingArticles(name));
        QCOMPARE(matches, (QMap<QString, QStringList>{{QStringLiteral("Renamed"), {matching}}}));

        const QList<API::RssRule> read = wait(client.rssRules());
        const API::RssRule *saved = rule(read, name);
        QVERIFY(saved);
        qInfo("%s", QJsonDocument(saved->definition()).toJson(QJsonDocument::Compact).constData());
        QCOMPARE(saved->affectedFeeds(), QStringList{m_feedUrl});
        QCOMPARE(saved->mustContain(), QStringLiteral("Quillo Test"));
        QCOMPARE(saved->addStopped(), std::nullopt);
        keep('m', "matches", Rss::matchingArticles(name));

        wait(client.perform(Rss::setRule(name, saved->definition())));
        QCOMPARE(rule(wait(client.rssRules()), name)->definition(), saved->definition());

        API::RssRule edited = *saved;
        edited.setAddStopped(true);
        edited.setMustNotContain(QStringLiteral("S01E01"));
        edited.setContentLayout(API::TntContentLayout::subfolder);
        edited.setTags({QStringLiteral("rss"), QStringLiteral("quillo")});
        wait(client.perform(Rss::setRule(name, edited.definition())));
        const API::RssRule after = *rule(wait(client.rssRules()), name);
        QCOMPARE(after.addStopped(), std::optional<bool>(true));
        QCOMPARE(after.contentLayout(), std::optional(API::TntContentLayout::subfolder));
        // 5.x rules carry tags (kept sorted by the server); 4.x rules have none to carry.
        QCOMPARE(after.canAssignTags(), m_flavor != Flavor::Bookworm45);
        const QStringList tags = after.canAssignTags() ? QStringList{QStringLiteral("quillo"), QStringLiteral("rss")} : QStringList();
        QCOMPARE(after.tags(), tags);
        edited = after;
        edited.setContentLayout(std::nullopt);
        wait(client.perform(Rss::setRule(name, edited.definition())));
        QCOMPARE(rule(wait(client.rssRules()), name)->contentLayout(), std::nullopt);
        keep('r', "rules", Rss::rules());
        QVERIFY(wait(client.rssMatchingArticles(name)).isEmpty());

        wait(client.perform(Rss::renameRule(name, QStringLiteral("Renamed rule"))));
        const QList<API::RssRule> renamed = wait(client.rssRules());
        QVERIFY(!rule(renamed, name));
        QVERIFY(rule(renamed, QStringLiteral("Renamed rule")));
        wait(client.perform(Rss::removeRule(QStringLiteral("Renamed rule"))));
        QVERIFY(wait(client.rssRules()).isEmpty());
    }

    // The window over the app's own connection: the nested tree with its unread count, an article
    // chosen is read on the server, and Download adds its torrent.
    void window()
    {
        AppContext &context = m_server->context();
        context.settings().setShowTntAddingWindow(false);
        QWidget host;
        TntAddingFlow adding(context, &host);
        RssWindow window(context, adding, &host);
        window.show();
        QVERIFY(context.isReadingRss());
        QAbstractItemModel *tree = window.feedView()->model();
        // The last reading shows until the next one comes.
        QTRY_COMPARE_WITH_TIMEOUT(tree->index(0, 0).data().toString(), QStringLiteral("Quillo (1)"), 10'000);
        QCOMPARE(tree->rowCount(), 1);
        const QModelIndex folder = tree->index(0, 0);
        QCOMPARE(tree->rowCount(folder), 1);
        const QModelIndex renamed = tree->index(0, 0, folder);
        QCOMPARE(renamed.data().toString(), QStringLiteral("Renamed (1)"));
        QVERIFY(!window.notice()->isVisible());

        window.feedView()->setCurrentIndex(renamed);
        QAbstractItemModel *articles = window.articleView()->model();
        QCOMPARE(articles->rowCount(), 2);
        int otherRow = -1;
        int matchingRow = -1;
        for (int row = 0; row < 2; ++row)
            (articles->index(row, 0).data().toString() == other ? otherRow : matchingRow) = row;
        QVERIFY(otherRow >= 0 && matchingRow >= 0);
        window.articleView()->setCurrentIndex(articles->index(otherRow, 0));
        QTRY_COMPARE_WITH_TIMEOUT(feed(QStringLiteral("Renamed")).unreadCount(), 0, 10'000);
        QTRY_COMPARE_WITH_TIMEOUT(tree->index(0, 0).data().toString(), QStringLiteral("Quillo"), 10'000);

        window.articleView()->setCurrentIndex(articles->index(matchingRow, 0));
        QVERIFY(window.downloadButton()->isEnabled());
        window.downloadButton()->click();
        QTRY_VERIFY_WITH_TIMEOUT(!m_server->torrent(m_torrent.infoHash).isEmpty(), 30'000);

        // The rules dialog: a rule the server has, edited in the form and saved, with the server's
        // matches for it as saved.
        const QString name = QStringLiteral("Dialog rule");
        wait(m_server->client().perform(Rss::setRule(
            name, QJsonObject{{QStringLiteral("enabled"), true}, {QStringLiteral("mustContain"), QStringLiteral("Other")}})));
        RssRulesDialog *rules = window.showRules();
        QTRY_COMPARE_WITH_TIMEOUT(rules->ruleList()->count(), 1, 10'000);
        rules->ruleList()->setCurrentRow(0);
        QCOMPARE(rules->form()->mustContainField()->text(), QStringLiteral("Other"));
        QCOMPARE(rules->form()->feedList()->count(), 1);
        rules->form()->feedList()->item(0)->setCheckState(Qt::Checked);
        rules->form()->addStoppedBox()->setCheckState(Qt::Checked);
        QVERIFY(rules->saveButton()->isEnabled());
        rules->saveButton()->click();
        QTRY_VERIFY_WITH_TIMEOUT(rule(wait(m_server->client().rssRules()), name)->addStopped() == true, 10'000);
        QCOMPARE(rule(wait(m_server->client().rssRules()), name)->affectedFeeds(), QStringList{m_feedUrl});
        QTRY_COMPARE_WITH_TIMEOUT(rules->matches()->topLevelItemCount(), 1, 10'000);
        QCOMPARE(rules->matches()->topLevelItem(0)->text(0), QStringLiteral("Renamed"));
        QCOMPARE(rules->matches()->topLevelItem(0)->child(0)->text(0), other);
        rules->close();
        wait(m_server->client().perform(Rss::removeRule(name)));

        window.hide();
        QVERIFY(!context.isReadingRss());
        QVERIFY2(!context.clientError(), qPrintable(m_server->alert()));
        wait(m_server->client().perform(Rss::removeItem(QStringLiteral("Quillo"))));
        QVERIFY(wait(m_server->client().rssItems()).children.isEmpty());
    }
};

QUILLO_PER_FLAVOR_MAIN(TestRssRealServers)

#include "tst_rss_realservers.moc"
