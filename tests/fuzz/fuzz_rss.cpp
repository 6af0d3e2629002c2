// The RSS answers read in sequence, each answer's first byte choosing its decoder ('i' the feeds,
// 'r' the download rules, 'm' a rule's matching articles): a decode either succeeds or throws
// ResponseDecodingError; anything else is a bug. Feeds decoded are taken as the RSS window takes
// them: every item is found again under its path, and marking one read leaves it no unread article.
// Every rule decoded, its values set to what they are, is the definition it was: what the user
// leaves alone goes back unchanged.
#include "Answers.h"

#include "api/Errors.h"
#include "api/RssRecords.h"
#include "model/RssFeeds.h"

#include <cstdlib>

namespace {

void check(bool condition)
{
    if (!condition)
        std::abort();
}

void walk(const RssFeeds &feeds, const API::RssItem &item, const QString &parentPath, int &items)
{
    ++items;
    if (!parentPath.isNull() || !item.path.isEmpty())
        check(item.path == API::rssPath(parentPath, item.name));
    check(feeds.item(item.path) != nullptr);
    if (item.feed)
        check(item.children.isEmpty());
    int unread = 0;
    for (const API::RssItem *feed : item.feeds()) {
        check(feed->feed.has_value());
        unread += feed->unreadCount();
    }
    check(unread == item.unreadCount());
    for (const API::RssItem &child : item.children)
        walk(feeds, child, item.path, items);
}

void takeFeeds(RssFeeds &feeds, API::RssItem root)
{
    feeds.setRoot(std::move(root));
    int items = 0;
    walk(feeds, feeds.root(), QString(), items);
    // Duplicate names under one folder make a path ambiguous; the first is the one found.
    const API::RssItem *last = &feeds.root();
    while (!last->children.isEmpty())
        last = &last->children.last();
    const QString path = last->path;
    feeds.markRead(path);
    if (const API::RssItem *marked = feeds.item(path))
        check(marked->unreadCount() == 0);
}

void takeRules(const QList<API::RssRule> &rules)
{
    for (const API::RssRule &read : rules) {
        API::RssRule rule = read;
        rule.setEnabled(rule.isEnabled());
        rule.setUsesRegex(rule.usesRegex());
        rule.setUsesSmartFilter(rule.usesSmartFilter());
        rule.setMustContain(rule.mustContain());
        rule.setMustNotContain(rule.mustNotContain());
        rule.setEpisodeFilter(rule.episodeFilter());
        rule.setAffectedFeeds(rule.affectedFeeds());
        rule.setCategory(rule.category());
        rule.setSavePath(rule.savePath());
        rule.setAddStopped(rule.addStopped());
        check(rule.definition() == read.definition());
        rule.setAddStopped(true);
        check(rule.addStopped() == true);
        rule.setAddStopped(std::nullopt);
        check(!rule.addStopped());
        rule.setCategory(QStringLiteral("c"));
        check(rule.category() == QStringLiteral("c"));
        rule.setSavePath(QStringLiteral("/p"));
        check(rule.savePath() == QStringLiteral("/p"));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    RssFeeds feeds;
    for (const QByteArray &answer : answersOf(data, size)) {
        if (answer.isEmpty())
            continue;
        try {
            switch (answer.front()) {
            case 'i': takeFeeds(feeds, API::decodeRssItems(answer.sliced(1))); break;
            case 'r': takeRules(API::decodeRssRules(answer.sliced(1))); break;
            case 'm': API::decodeRssMatchingArticles(answer.sliced(1)); break;
            default: break;
            }
        } catch (const API::ResponseDecodingError &) {
        }
    }
    return 0;
}
