#pragma once

#include "model/TntModel.h"

#include <QByteArray>
#include <QHashFunctions>
#include <QMetaType>
#include <QSet>
#include <QString>

#include <optional>

// One filter entry of the sidebar. The type names its group; exactly one of state, category, tag
// and tracker is set, matching the type. A tracker entry's value is a host: every announce URL of
// that host falls under it.
struct SidebarItem
{
    enum class ItemType { state, category, tag, tracker };

    // A category as the sidebar knows it: the server's name and save path under a stable id.
    struct Category
    {
        QString id;
        QString name;
        QString savePath;

        friend bool operator==(const Category &, const Category &) = default;
    };

    QString id;
    ItemType type = ItemType::state;
    std::optional<TntModel::State> state;
    std::optional<Category> category;
    std::optional<QString> tag;
    std::optional<QString> tracker;

    static SidebarItem forState(TntModel::State state);
    static SidebarItem forCategory(const Category &category);
    static SidebarItem forTag(const QString &tag);
    static SidebarItem forTracker(const QString &host);

    // Localized once per process; the fixed entries are built from them.
    static const QString &allTitle();
    static const QString &uncategorizedTitle();
    static const QString &untaggedTitle();
    static const QString &trackerlessTitle();
    static const Category &allCategories();
    static const Category &noCategory();

    // The ten state entries in display order.
    static const QList<SidebarItem> &stateItems();

    QString title() const;
    // The title in the user's language: the lists' own items ("All", "Untagged") are translated.
    QString shownTitle() const;

    // Ordered by title within a type; entries of different types are unordered.
    friend bool operator<(const SidebarItem &left, const SidebarItem &right);
    friend bool operator==(const SidebarItem &, const SidebarItem &) = default;
};

QString itemTypeText(SidebarItem::ItemType type);
std::optional<SidebarItem::ItemType> itemTypeFromText(QStringView text);

size_t qHash(const SidebarItem &item, size_t seed = 0) noexcept;

// The stored form of a selection: a JSON array of entries whose keys keep the entry's field order.
QByteArray encodeSidebarItems(const QSet<SidebarItem> &items);
// Entries that cannot be read (an unknown type or state, a missing value) are left out.
QSet<SidebarItem> decodeSidebarItems(const QByteArray &json);

Q_DECLARE_METATYPE(SidebarItem)
