#include "model/SidebarItem.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using ItemType = SidebarItem::ItemType;
using Category = SidebarItem::Category;

namespace {

// The titles of the items every list has. In English they are also the items' identities, which
// saved selections and the filter compare; only what is shown is translated.
struct SpecialTitle
{
    const char *text;
    const char *comment;
};
constexpr SpecialTitle allText = QT_TRANSLATE_NOOP3("SidebarItem", "All", "State, category, tag or tracker title");
constexpr SpecialTitle uncategorizedText = QT_TRANSLATE_NOOP3("SidebarItem", "Uncategorized", "Category title");
constexpr SpecialTitle untaggedText = QT_TRANSLATE_NOOP3("SidebarItem", "Untagged", "Tag title");
constexpr SpecialTitle trackerlessText = QT_TRANSLATE_NOOP3("SidebarItem", "Trackerless", "Tracker title");

// QJsonObject sorts its keys, so entries are written by hand to keep their field order; values go
// through QJsonDocument for correct escaping.
QByteArray jsonString(const QString &text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

void appendMember(QByteArray &out, const char *key, const QByteArray &value)
{
    if (out.size() > 1)
        out += ',';
    out += '"';
    out += key;
    out += "\":";
    out += value;
}

QByteArray encodeCategory(const Category &category)
{
    QByteArray out("{");
    appendMember(out, "id", jsonString(category.id));
    appendMember(out, "name", jsonString(category.name));
    appendMember(out, "savePath", jsonString(category.savePath));
    return out + '}';
}

QByteArray encodeItem(const SidebarItem &item)
{
    QByteArray out("{");
    appendMember(out, "id", jsonString(item.id));
    appendMember(out, "type", jsonString(itemTypeText(item.type)));
    if (item.state)
        appendMember(out, "state", jsonString(tntModelStateText(*item.state)));
    if (item.category)
        appendMember(out, "category", encodeCategory(*item.category));
    if (item.tag)
        appendMember(out, "tag", jsonString(*item.tag));
    if (item.tracker)
        appendMember(out, "tracker", jsonString(*item.tracker));
    return out + '}';
}

std::optional<QString> optionalString(const QJsonObject &object, QLatin1StringView key)
{
    const QJsonValue value = object.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<SidebarItem> decodeItem(const QJsonObject &object)
{
    SidebarItem item;
    const std::optional<QString> id = optionalString(object, QLatin1StringView("id"));
    const std::optional<ItemType> type = itemTypeFromText(object.value(QLatin1StringView("type")).toString());
    if (!id || !type)
        return std::nullopt;
    item.id = *id;
    item.type = *type;
    if (const std::optional<QString> state = optionalString(object, QLatin1StringView("state"))) {
        item.state = tntModelStateFromText(state->toStdString());
        if (!item.state)
            return std::nullopt;
    }
    if (const QJsonValue category = object.value(QLatin1StringView("category")); category.isObject()) {
        const QJsonObject fields = category.toObject();
        item.category = Category{fields.value(QLatin1StringView("id")).toString(),
                                 fields.value(QLatin1StringView("name")).toString(),
                                 fields.value(QLatin1StringView("savePath")).toString()};
    }
    item.tag = optionalString(object, QLatin1StringView("tag"));
    item.tracker = optionalString(object, QLatin1StringView("tracker"));
    const bool complete = (item.type == ItemType::state && item.state) ||
                          (item.type == ItemType::category && item.category) ||
                          (item.type == ItemType::tag && item.tag) || (item.type == ItemType::tracker && item.tracker);
    return complete ? std::optional(item) : std::nullopt;
}

} // namespace

SidebarItem SidebarItem::forState(TntModel::State state)
{
    SidebarItem item;
    item.id = tntModelStateText(state);
    item.type = ItemType::state;
    item.state = state;
    return item;
}

SidebarItem SidebarItem::forCategory(const Category &category)
{
    SidebarItem item;
    item.id = QStringLiteral("category_") + category.name;
    item.type = ItemType::category;
    item.category = category;
    return item;
}

SidebarItem SidebarItem::forTag(const QString &tag)
{
    SidebarItem item;
    item.id = QStringLiteral("tag_") + tag;
    item.type = ItemType::tag;
    item.tag = tag;
    return item;
}

SidebarItem SidebarItem::forTracker(const QString &host)
{
    SidebarItem item;
    item.id = QStringLiteral("tracker_") + host;
    item.type = ItemType::tracker;
    item.tracker = host;
    return item;
}

const QString &SidebarItem::allTitle()
{
    static const QString title = QString::fromLatin1(allText.text);
    return title;
}

const QString &SidebarItem::uncategorizedTitle()
{
    static const QString title = QString::fromLatin1(uncategorizedText.text);
    return title;
}

const QString &SidebarItem::untaggedTitle()
{
    static const QString title = QString::fromLatin1(untaggedText.text);
    return title;
}

const QString &SidebarItem::trackerlessTitle()
{
    static const QString title = QString::fromLatin1(trackerlessText.text);
    return title;
}

const SidebarItem::Category &SidebarItem::allCategories()
{
    static const Category category{allTitle(), allTitle(), {}};
    return category;
}

const SidebarItem::Category &SidebarItem::noCategory()
{
    static const Category category{uncategorizedTitle(), uncategorizedTitle(), {}};
    return category;
}

const QList<SidebarItem> &SidebarItem::stateItems()
{
    static const QList<SidebarItem> items = [] {
        QList<SidebarItem> made;
        for (int state = 0; state <= static_cast<int>(TntModel::State::error); ++state)
            made.append(forState(static_cast<TntModel::State>(state)));
        return made;
    }();
    return items;
}

QString SidebarItem::title() const
{
    switch (type) {
    case ItemType::state: return TntModel::stateTitle(state.value_or(TntModel::State::unknown));
    case ItemType::category: return category ? category->name : QString();
    case ItemType::tag: return tag.value_or(QString());
    case ItemType::tracker: return tracker.value_or(QString());
    }
    return {};
}

QString SidebarItem::shownTitle() const
{
    const QString plain = title();
    if (type == ItemType::state)
        return plain;
    for (const SpecialTitle &special : {allText, uncategorizedText, untaggedText, trackerlessText}) {
        if (plain == QLatin1String(special.text))
            return QCoreApplication::translate("SidebarItem", special.text, special.comment);
    }
    return plain;
}

bool operator<(const SidebarItem &left, const SidebarItem &right)
{
    return left.type == right.type && left.title() < right.title();
}

QString itemTypeText(ItemType type)
{
    switch (type) {
    case ItemType::state: return QStringLiteral("state");
    case ItemType::category: return QStringLiteral("category");
    case ItemType::tag: return QStringLiteral("tag");
    case ItemType::tracker: return QStringLiteral("tracker");
    }
    return {};
}

std::optional<ItemType> itemTypeFromText(QStringView text)
{
    for (const ItemType type : {ItemType::state, ItemType::category, ItemType::tag, ItemType::tracker}) {
        if (text == itemTypeText(type))
            return type;
    }
    return std::nullopt;
}

size_t qHash(const SidebarItem &item, size_t seed) noexcept
{
    return qHashMulti(seed, item.id, static_cast<int>(item.type));
}

QByteArray encodeSidebarItems(const QSet<SidebarItem> &items)
{
    // Group by type, then by title: the same selection is always stored as the same text.
    QList<SidebarItem> ordered(items.cbegin(), items.cend());
    std::sort(ordered.begin(), ordered.end(), [](const SidebarItem &a, const SidebarItem &b) {
        return a.type != b.type ? a.type < b.type : (a.title() != b.title() ? a.title() < b.title() : a.id < b.id);
    });
    QByteArray out("[");
    for (const SidebarItem &item : std::as_const(ordered)) {
        if (out.size() > 1)
            out += ',';
        out += encodeItem(item);
    }
    return out + ']';
}

QSet<SidebarItem> decodeSidebarItems(const QByteArray &json)
{
    QSet<SidebarItem> items;
    const QJsonArray array = QJsonDocument::fromJson(json).array();
    for (const QJsonValue &value : array) {
        if (const std::optional<SidebarItem> item = decodeItem(value.toObject()))
            items.insert(*item);
    }
    return items;
}
