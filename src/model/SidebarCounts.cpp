#include "model/SidebarCounts.h"

#include "model/SidebarFilter.h"
#include "model/TntCollection.h"
#include "model/TrackerIndex.h"

#include <QSet>

namespace {

using State = TntModel::State;

// For each torrent state, the state entries that admit it, one bit per entry.
const std::array<quint16, tntModelStateCount> &stateEntries()
{
    static const std::array<quint16, tntModelStateCount> entries = [] {
        std::array<quint16, tntModelStateCount> made{};
        for (int state = 0; state < tntModelStateCount; ++state) {
            for (int entry = 1; entry <= static_cast<int>(State::error); ++entry) {
                if (TntModel::matches(static_cast<State>(state), static_cast<State>(entry)))
                    made[static_cast<std::size_t>(state)] |= static_cast<quint16>(1u << entry);
            }
        }
        return made;
    }();
    return entries;
}

// The tag texts of a collection repeat a lot: each distinct text is split once, and a torrent
// counts once per tag even when its text names the tag twice.
QHash<QString, qsizetype> countTags(const QHash<QString, qsizetype> &byText)
{
    QHash<QString, qsizetype> byTag;
    for (auto it = byText.cbegin(); it != byText.cend(); ++it) {
        const QStringList pieces = it.key().split(QStringLiteral(", "));
        const QSet<QString> tags(pieces.cbegin(), pieces.cend());
        for (const QString &tag : tags)
            byTag[tag] += it.value();
    }
    return byTag;
}

} // namespace

SidebarCounts::SidebarCounts(const TntCollection &collection, const TrackerIndex &trackers)
    : m_total(collection.size())
{
    const auto &entriesOf = stateEntries();
    QHash<QString, qsizetype> tagTexts;
    for (qsizetype row = 0; row < collection.size(); ++row) {
        const TntModel &tnt = collection.at(row);
        const quint16 entries = entriesOf[static_cast<std::size_t>(tnt.state())];
        for (std::size_t entry = 1; entry < stateEntryCount; ++entry) {
            if (entries & (1u << entry))
                ++m_states[entry];
        }
        ++m_categories[tnt.category()];
        ++tagTexts[tnt.tags()];
        const QStringList &hosts = trackers.hostsOf(tnt.id());
        if (hosts.isEmpty())
            ++m_hosts[QString()];
        for (const QString &host : hosts)
            ++m_hosts[host];
    }
    m_states[0] = m_total;
    m_tags = countTags(tagTexts);
}

qsizetype SidebarCounts::count(const SidebarItem &item) const
{
    switch (item.type) {
    case SidebarItem::ItemType::state: {
        const auto entry = static_cast<std::size_t>(item.state.value_or(State::unknown));
        return entry < stateEntryCount ? m_states[entry] : 0;
    }
    case SidebarItem::ItemType::category:
    case SidebarItem::ItemType::tag:
    case SidebarItem::ItemType::tracker:
        break;
    }
    const std::optional<QString> label = SidebarFilter::labelOf(item);
    if (!label)
        return m_total;
    const QHash<QString, qsizetype> &counts = item.type == SidebarItem::ItemType::category ? m_categories
                                              : item.type == SidebarItem::ItemType::tag    ? m_tags
                                                                                           : m_hosts;
    return counts.value(*label);
}
