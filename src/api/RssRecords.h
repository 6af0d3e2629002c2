#pragma once

#include "api/AddingChoices.h"

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

namespace API {

// An article as the server keeps it. Only the id and the date are always sent; an article never
// marked read carries no `isRead`. The date is RFC 2822 text, empty when the feed gave none.
struct RssArticle
{
    QString id;
    QString date;
    QString title;
    QString author;
    QString description;
    QString torrentURL;
    QString link;
    bool isRead = false;

    friend bool operator==(const RssArticle &, const RssArticle &) = default;
};

struct RssFeed
{
    QString uid;
    QString url;
    QString title;
    QString lastBuildDate;
    bool isLoading = false;
    bool hasError = false;
    QList<RssArticle> articles;

    friend bool operator==(const RssFeed &, const RssFeed &) = default;
};

// A feed or a folder of the server's tree, under its path: the names from the root joined by "\",
// the separator every rss/ endpoint takes.
struct RssItem
{
    QString name;
    QString path;
    std::optional<RssFeed> feed; // none for a folder
    QList<RssItem> children;

    bool isFolder() const { return !feed; }
    int unreadCount() const;
    // The feeds at or below this item, depth first in the server's order.
    QList<const RssItem *> feeds() const;

    friend bool operator==(const RssItem &, const RssItem &) = default;
};

inline constexpr QChar rssPathSeparator = u'\\';
QString rssPath(const QString &parentPath, const QString &name);

// An auto-downloading rule: its definition as the server sent it, unknown keys included, so that
// writing it back changes only what was edited. The server reads `torrentParams` when a rule has
// it (5.0 and later write it) and the older flat keys otherwise; edits write both.
class RssRule
{
public:
    RssRule() = default;
    RssRule(QString name, QJsonObject definition)
        : m_name(std::move(name))
        , m_definition(std::move(definition))
    {}

    const QString &name() const { return m_name; }
    const QJsonObject &definition() const { return m_definition; }

    bool isEnabled() const { return m_definition.value(u"enabled").toBool(true); }
    void setEnabled(bool on) { setValue(u"enabled", on, isEnabled()); }
    bool usesRegex() const { return m_definition.value(u"useRegex").toBool(); }
    void setUsesRegex(bool on) { setValue(u"useRegex", on, usesRegex()); }
    bool usesSmartFilter() const { return m_definition.value(u"smartFilter").toBool(); }
    void setUsesSmartFilter(bool on) { setValue(u"smartFilter", on, usesSmartFilter()); }
    QString mustContain() const { return m_definition.value(u"mustContain").toString(); }
    void setMustContain(const QString &text) { setValue(u"mustContain", text, mustContain()); }
    QString mustNotContain() const { return m_definition.value(u"mustNotContain").toString(); }
    void setMustNotContain(const QString &text) { setValue(u"mustNotContain", text, mustNotContain()); }
    QString episodeFilter() const { return m_definition.value(u"episodeFilter").toString(); }
    void setEpisodeFilter(const QString &text) { setValue(u"episodeFilter", text, episodeFilter()); }
    // After a match, the rule matches nothing for this many days; 0: it keeps matching.
    int ignoreDays() const { return m_definition.value(u"ignoreDays").toInt(); }
    void setIgnoreDays(int days) { setValue(u"ignoreDays", days, ignoreDays()); }
    // Feed URLs; the server also reads a single URL given as text.
    QStringList affectedFeeds() const;
    void setAffectedFeeds(const QStringList &urls);

    QString category() const;
    void setCategory(const QString &category);
    QString savePath() const;
    void setSavePath(const QString &path);
    // None: the server's own setting.
    std::optional<bool> addStopped() const;
    void setAddStopped(std::optional<bool> stopped);
    // None: the server's own setting.
    std::optional<TntContentLayout> contentLayout() const;
    void setContentLayout(std::optional<TntContentLayout> layout);
    // Only the rules of servers that write `torrentParams` carry tags; elsewhere setting them does
    // nothing.
    bool canAssignTags() const { return hasTorrentParams(); }
    QStringList tags() const;
    void setTags(const QStringList &tags);

private:
    bool hasTorrentParams() const { return m_definition.value(u"torrentParams").isObject(); }
    QJsonValue torrentParam(QStringView key) const;
    void setTorrentParam(const QString &key, const QJsonValue &value);
    template<typename T>
    void setValue(QStringView key, const T &value, const T &current)
    {
        if (value != current)
            m_definition.insert(key.toString(), value);
    }

    QString m_name;
    QJsonObject m_definition;
};

// Each decoder takes the whole answer body and throws ResponseDecodingError naming the offending
// key. They keep no state and may run on any thread.
// rss/items?withData=true: the root folder, its path empty.
RssItem decodeRssItems(const QByteArray &json);
// rss/rules, by name in the server's order.
QList<RssRule> decodeRssRules(const QByteArray &json);
// rss/matchingArticles: the titles matching, by feed name.
QMap<QString, QStringList> decodeRssMatchingArticles(const QByteArray &json);

} // namespace API
