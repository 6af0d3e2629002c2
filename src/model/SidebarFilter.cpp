#include "model/SidebarFilter.h"

#include "model/TntCollection.h"
#include "model/TrackerIndex.h"

#include <algorithm>

using ItemType = SidebarItem::ItemType;

SidebarFilter::SidebarFilter(const QSet<SidebarItem> &selection, const TrackerIndex &trackers)
    : m_trackerIndex(&trackers)
{
    for (const SidebarItem &item : selection) {
        switch (item.type) {
        case ItemType::state:
            if (item.state && *item.state != TntModel::State::all) {
                for (int state = 0; state < tntModelStateCount; ++state) {
                    if (TntModel::matches(static_cast<TntModel::State>(state), *item.state))
                        m_states.set(static_cast<std::size_t>(state));
                }
            }
            break;
        case ItemType::category:
        case ItemType::tag:
        case ItemType::tracker:
            if (const std::optional<QString> label = labelOf(item))
                (item.type == ItemType::category ? m_categories : item.type == ItemType::tag ? m_tags : m_trackers).append(*label);
            break;
        }
    }
}

std::optional<QString> SidebarFilter::labelOf(const SidebarItem &item)
{
    switch (item.type) {
    case ItemType::state: break;
    case ItemType::category:
        if (!item.category || *item.category == SidebarItem::allCategories())
            return std::nullopt;
        return *item.category == SidebarItem::noCategory() ? QString() : item.category->name;
    case ItemType::tag:
        if (!item.tag || *item.tag == SidebarItem::allTitle())
            return std::nullopt;
        return *item.tag == SidebarItem::untaggedTitle() ? QString() : *item.tag;
    case ItemType::tracker:
        if (!item.tracker || *item.tracker == SidebarItem::allTitle())
            return std::nullopt;
        return *item.tracker == SidebarItem::trackerlessTitle() ? QString() : *item.tracker;
    }
    return std::nullopt;
}

bool SidebarFilter::admits(const TntModel &tnt) const
{
    if (m_states.any() && !m_states.test(static_cast<std::size_t>(tnt.state())))
        return false;
    if (!m_categories.isEmpty() && !m_categories.contains(tnt.category()))
        return false;
    if (!m_tags.isEmpty() && !hasTagIn(tnt.tags(), m_tags))
        return false;
    if (!m_trackers.isEmpty()) {
        const QStringList &hosts = m_trackerIndex->hostsOf(tnt.id());
        if (hosts.isEmpty())
            return m_trackers.contains(QString());
        return std::any_of(hosts.cbegin(), hosts.cend(), [this](const QString &host) { return m_trackers.contains(host); });
    }
    return true;
}

bool SidebarFilter::hasTagIn(QStringView tags, const QStringList &wanted)
{
    qsizetype start = 0;
    while (true) {
        const qsizetype separator = tags.indexOf(u", ", start);
        const QStringView piece = tags.mid(start, separator < 0 ? -1 : separator - start);
        for (const QString &tag : wanted) {
            if (piece == tag)
                return true;
        }
        if (separator < 0)
            return false;
        start = separator + 2;
    }
}

QList<const TntModel *> admittedTnts(const TntCollection &collection, const SidebarFilter &filter, const NameFilter &name)
{
    QList<const TntModel *> admitted;
    for (qsizetype row = 0; row < collection.size(); ++row) {
        const TntModel &tnt = collection.at(row);
        if (filter.admits(tnt) && name.matches(tnt.name()))
            admitted.append(&tnt);
    }
    return admitted;
}
