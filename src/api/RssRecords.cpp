#include "api/RssRecords.h"

#include "api/JsonRecords.h"

#include <QJsonArray>
#include <QJsonDocument>

// The server's RSS tree, rules and matches. Every version from 4.5 on writes the same keys;
// 5.2 adds a feed's `refreshInterval` and 5.0 a rule's `torrentParams`.
namespace API {

int RssItem::unreadCount() const
{
    if (feed)
        return int(std::count_if(feed->articles.cbegin(), feed->articles.cend(),
                                 [](const RssArticle &article) { return !article.isRead; }));
    int count = 0;
    for (const RssItem &child : children)
        count += child.unreadCount();
    return count;
}

QList<const RssItem *> RssItem::feeds() const
{
    if (feed)
        return {this};
    QList<const RssItem *> found;
    for (const RssItem &child : children)
        found << child.feeds();
    return found;
}

QString rssPath(const QString &parentPath, const QString &name)
{
    return parentPath.isEmpty() ? name : parentPath + rssPathSeparator + name;
}

namespace JsonDecoding {

constexpr Field<RssArticle> rssArticleFields[] = {
    required<&RssArticle::id>("id"),
    required<&RssArticle::date>("date"),
    optional<&RssArticle::title>("title"),
    optional<&RssArticle::author>("author"),
    optional<&RssArticle::description>("description"),
    optional<&RssArticle::torrentURL>("torrentURL"),
    optional<&RssArticle::link>("link"),
    optional<&RssArticle::isRead>("isRead"),
};

template<> std::span<const Field<RssArticle>> fieldsOf() { return rssArticleFields; }

namespace {

// Folders nest as deep as users make them; a hostile answer must not take the stack.
constexpr int maxFolderDepth = 32;

// A folder maps names to items, all objects; a feed has `uid` and `url` as text and no object
// value. An item named "uid" is an object, so the two never mix up.
void readItem(od::value &value, const Path &path, RssItem &out, int depth)
{
    if (depth > maxFolderDepth)
        fail(path, simdjson::DEPTH_ERROR);
    RssFeed feed;
    bool isFeed = false;
    bool hasUid = false;
    bool hasUrl = false;
    for (auto member : objectOf(value, path)) {
        od::field &field = inPlace(member, path);
        const std::string_view key = take(field.unescaped_key(), path);
        const Path at{&path, key};
        od::value &item = field.value();
        if (take(item.type(), at) == od::json_type::object) {
            // The server refuses such names: a path holding one would name another item.
            if (key.empty() || key.find('\\') != std::string_view::npos)
                fail(at, QStringLiteral("not a name of an item"));
            RssItem child;
            child.name = toQString(key);
            child.path = rssPath(out.path, child.name);
            readItem(item, at, child, depth + 1);
            out.children << std::move(child);
            continue;
        }
        isFeed = true;
        if (key == "uid") {
            read(item, at, feed.uid);
            hasUid = true;
        } else if (key == "url") {
            read(item, at, feed.url);
            hasUrl = true;
        } else if (key == "title") {
            read(item, at, feed.title);
        } else if (key == "lastBuildDate") {
            read(item, at, feed.lastBuildDate);
        } else if (key == "isLoading") {
            read(item, at, feed.isLoading);
        } else if (key == "hasError") {
            read(item, at, feed.hasError);
        } else if (key == "articles") {
            read(item, at, feed.articles);
        } else {
            validate(item, at);
        }
    }
    if (!isFeed)
        return;
    if (!hasUid)
        fail(Path{&path, "uid"}, QStringLiteral("missing"));
    if (!hasUrl)
        fail(Path{&path, "url"}, QStringLiteral("missing"));
    if (!out.children.isEmpty())
        fail(Path{&path, out.children.first().name.toStdString()}, QStringLiteral("an object inside a feed"));
    out.feed = std::move(feed);
}

RssItem decodeItems(const QByteArray &json)
{
    const auto size = static_cast<std::size_t>(json.size());
    const simdjson::padded_string copy(json.constData(), size);
    const Path root;
    Decoding decoding(copy.data() + size);
    od::parser parser;
    od::document document = take(parser.iterate(copy), root);
    od::value value = take(document.get_value(), root);
    RssItem folder;
    readItem(value, root, folder, 0);
    if (folder.feed)
        fail(root, QStringLiteral("expected a folder"));
    if (document.current_location().error() != simdjson::OUT_OF_BOUNDS)
        fail(root, QStringLiteral("unexpected content after the JSON value"));
    return folder;
}

} // namespace

} // namespace JsonDecoding

RssItem decodeRssItems(const QByteArray &json)
{
    try {
        return JsonDecoding::decodeItems(json);
    } catch (const simdjson::simdjson_error &error) {
        throw ResponseDecodingError(QString::fromUtf8(error.what()));
    }
}

// ---- Rules stay JSON objects, so that keys this client does not know go back as they came; the
// keys it shows are checked for their types here, once.

namespace {

[[noreturn]] void failAt(const QString &path, const QString &what)
{
    throw ResponseDecodingError(path + QStringLiteral(": ") + what);
}

QJsonObject documentObject(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        throw ResponseDecodingError(error.errorString());
    if (!document.isObject())
        throw ResponseDecodingError(QStringLiteral("expected an object"));
    return document.object();
}

bool isStringArray(const QJsonValue &value)
{
    if (!value.isArray())
        return false;
    const QJsonArray array = value.toArray();
    return std::all_of(array.begin(), array.end(), [](const QJsonValue &item) { return item.isString(); });
}

enum class Kind { boolean, text, optionalText, number, textList, textOrList, optionalBoolean, object };

struct RuleKey
{
    QLatin1String key;
    Kind kind;
};

constexpr RuleKey ruleKeys[] = {
    {QLatin1String("enabled"), Kind::boolean},
    {QLatin1String("useRegex"), Kind::boolean},
    {QLatin1String("smartFilter"), Kind::boolean},
    {QLatin1String("mustContain"), Kind::text},
    {QLatin1String("mustNotContain"), Kind::text},
    {QLatin1String("episodeFilter"), Kind::text},
    {QLatin1String("savePath"), Kind::text},
    {QLatin1String("assignedCategory"), Kind::text},
    {QLatin1String("lastMatch"), Kind::text},
    {QLatin1String("ignoreDays"), Kind::number},
    {QLatin1String("priority"), Kind::number},
    {QLatin1String("affectedFeeds"), Kind::textOrList},
    {QLatin1String("previouslyMatchedEpisodes"), Kind::textOrList},
    {QLatin1String("addPaused"), Kind::optionalBoolean},
    {QLatin1String("torrentContentLayout"), Kind::optionalText},
    {QLatin1String("torrentParams"), Kind::object},
};

constexpr RuleKey torrentParamKeys[] = {
    {QLatin1String("category"), Kind::text},
    {QLatin1String("save_path"), Kind::text},
    {QLatin1String("stopped"), Kind::boolean},
    {QLatin1String("use_auto_tmm"), Kind::boolean},
    {QLatin1String("tags"), Kind::textList},
    {QLatin1String("content_layout"), Kind::text},
};

bool hasKind(const QJsonValue &value, Kind kind)
{
    switch (kind) {
    case Kind::boolean: return value.isBool();
    case Kind::text: return value.isString();
    case Kind::optionalText: return value.isString() || value.isNull();
    case Kind::number: return value.isDouble();
    case Kind::textList: return isStringArray(value);
    case Kind::textOrList: return value.isString() || isStringArray(value);
    case Kind::optionalBoolean: return value.isBool() || value.isNull();
    case Kind::object: return value.isObject();
    }
    return false;
}

void checkKeys(const QJsonObject &object, std::span<const RuleKey> keys, const QString &path)
{
    for (const RuleKey &known : keys) {
        const auto it = object.constFind(known.key);
        if (it != object.constEnd() && !hasKind(*it, known.kind))
            failAt(path + u'.' + known.key, QStringLiteral("unexpected type"));
    }
}

} // namespace

QList<RssRule> decodeRssRules(const QByteArray &json)
{
    const QJsonObject rules = documentObject(json);
    QList<RssRule> decoded;
    decoded.reserve(rules.size());
    for (auto it = rules.constBegin(); it != rules.constEnd(); ++it) {
        if (!it->isObject())
            failAt(it.key(), QStringLiteral("expected an object"));
        const QJsonObject definition = it->toObject();
        checkKeys(definition, ruleKeys, it.key());
        checkKeys(definition.value(u"torrentParams").toObject(), torrentParamKeys,
                  it.key() + QStringLiteral(".torrentParams"));
        decoded.append(RssRule(it.key(), definition));
    }
    return decoded;
}

QMap<QString, QStringList> decodeRssMatchingArticles(const QByteArray &json)
{
    const QJsonObject feeds = documentObject(json);
    QMap<QString, QStringList> matches;
    for (auto it = feeds.constBegin(); it != feeds.constEnd(); ++it) {
        if (!isStringArray(*it))
            failAt(it.key(), QStringLiteral("expected an array of titles"));
        QStringList &titles = matches[it.key()];
        for (const QJsonValue title : it->toArray())
            titles << title.toString();
    }
    return matches;
}

// ---- The rule's editable values.

QStringList RssRule::affectedFeeds() const
{
    const QJsonValue value = m_definition.value(u"affectedFeeds");
    if (value.isString())
        return {value.toString()};
    QStringList urls;
    for (const QJsonValue url : value.toArray())
        urls << url.toString();
    return urls;
}

void RssRule::setAffectedFeeds(const QStringList &urls)
{
    if (urls != affectedFeeds())
        m_definition.insert(QStringLiteral("affectedFeeds"), QJsonArray::fromStringList(urls));
}

QJsonValue RssRule::torrentParam(QStringView key) const
{
    return m_definition.value(u"torrentParams").toObject().value(key);
}

void RssRule::setTorrentParam(const QString &key, const QJsonValue &value)
{
    QJsonObject params = m_definition.value(u"torrentParams").toObject();
    if (value.isUndefined())
        params.remove(key);
    else
        params.insert(key, value);
    m_definition.insert(QStringLiteral("torrentParams"), params);
}

QString RssRule::category() const
{
    return hasTorrentParams() ? torrentParam(u"category").toString() : m_definition.value(u"assignedCategory").toString();
}

void RssRule::setCategory(const QString &category)
{
    if (category == this->category())
        return;
    if (hasTorrentParams())
        setTorrentParam(QStringLiteral("category"), category);
    m_definition.insert(QStringLiteral("assignedCategory"), category);
}

QString RssRule::savePath() const
{
    return hasTorrentParams() ? torrentParam(u"save_path").toString() : m_definition.value(u"savePath").toString();
}

// A save path of its own takes the torrent out of automatic management, as the server does when it
// reads the flat keys.
void RssRule::setSavePath(const QString &path)
{
    if (path == savePath())
        return;
    if (hasTorrentParams()) {
        setTorrentParam(QStringLiteral("save_path"), path);
        if (!path.isEmpty())
            setTorrentParam(QStringLiteral("use_auto_tmm"), false);
    }
    m_definition.insert(QStringLiteral("savePath"), path);
}

std::optional<bool> RssRule::addStopped() const
{
    const QJsonValue value = hasTorrentParams() ? torrentParam(u"stopped") : m_definition.value(u"addPaused");
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

void RssRule::setAddStopped(std::optional<bool> stopped)
{
    if (stopped == addStopped())
        return;
    if (hasTorrentParams())
        setTorrentParam(QStringLiteral("stopped"), stopped ? QJsonValue(*stopped) : QJsonValue(QJsonValue::Undefined));
    m_definition.insert(QStringLiteral("addPaused"), stopped ? QJsonValue(*stopped) : QJsonValue(QJsonValue::Null));
}

// The server reads an unknown layout as the original one.
std::optional<TntContentLayout> RssRule::contentLayout() const
{
    const QJsonValue value = hasTorrentParams() ? torrentParam(u"content_layout") : m_definition.value(u"torrentContentLayout");
    if (!value.isString() || value.toString().isEmpty())
        return std::nullopt;
    for (const TntContentLayout layout : {TntContentLayout::subfolder, TntContentLayout::noSubfolder}) {
        if (value.toString() == wireText(layout))
            return layout;
    }
    return TntContentLayout::original;
}

void RssRule::setContentLayout(std::optional<TntContentLayout> layout)
{
    if (layout == contentLayout())
        return;
    if (hasTorrentParams())
        setTorrentParam(QStringLiteral("content_layout"), layout ? QJsonValue(wireText(*layout)) : QJsonValue(QJsonValue::Undefined));
    m_definition.insert(QStringLiteral("torrentContentLayout"), layout ? QJsonValue(wireText(*layout)) : QJsonValue(QJsonValue::Null));
}

QStringList RssRule::tags() const
{
    QStringList tags;
    for (const QJsonValue tag : torrentParam(u"tags").toArray())
        tags << tag.toString();
    return tags;
}

void RssRule::setTags(const QStringList &tags)
{
    if (canAssignTags() && tags != this->tags())
        setTorrentParam(QStringLiteral("tags"), QJsonArray::fromStringList(tags));
}

} // namespace API
