#include "model/RssFeeds.h"

namespace {

template<typename Item>
Item *find(Item &root, const QString &path)
{
    Item *found = &root;
    if (path.isEmpty())
        return found;
    for (const QString &name : path.split(API::rssPathSeparator)) {
        const auto child = std::find_if(found->children.begin(), found->children.end(),
                                        [&name](const API::RssItem &item) { return item.name == name; });
        if (child == found->children.end())
            return nullptr;
        found = &*child;
    }
    return found;
}

void markArticles(API::RssItem &item, const QString &articleId)
{
    if (item.feed) {
        for (API::RssArticle &article : item.feed->articles) {
            if (articleId.isEmpty() || article.id == articleId)
                article.isRead = true;
        }
    }
    for (API::RssItem &child : item.children)
        markArticles(child, articleId);
}

} // namespace

RssFeeds::RssFeeds(QObject *parent)
    : QObject(parent)
{
}

void RssFeeds::setRoot(API::RssItem root)
{
    if (root == m_root)
        return;
    Q_EMIT aboutToChange();
    m_root = std::move(root);
    Q_EMIT changed();
}

const API::RssItem *RssFeeds::item(const QString &path) const
{
    return find(m_root, path);
}

void RssFeeds::markRead(const QString &itemPath, const QString &articleId)
{
    API::RssItem root = m_root;
    API::RssItem *target = find(root, itemPath);
    if (!target)
        return;
    markArticles(*target, articleId);
    setRoot(std::move(root));
}

void RssFeeds::setShown(bool shown)
{
    if (shown == m_shown)
        return;
    m_shown = shown;
    Q_EMIT shownChanged(shown);
}
