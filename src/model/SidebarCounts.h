#pragma once

#include "model/SidebarItem.h"

#include <QHash>

#include <array>

class TntCollection;
class TrackerIndex;

// How many torrents each sidebar entry admits on its own, for the badges: all entries counted in
// one pass over the collection, so that it costs the same as one filter run whatever the number
// of categories, tags and trackers.
class SidebarCounts
{
public:
    SidebarCounts() = default;
    SidebarCounts(const TntCollection &collection, const TrackerIndex &trackers);

    // The length of the filter's result for a selection of `item` alone and no name text.
    qsizetype count(const SidebarItem &item) const;

private:
    static constexpr std::size_t stateEntryCount = static_cast<std::size_t>(TntModel::State::error) + 1;

    qsizetype m_total = 0;
    std::array<qsizetype, stateEntryCount> m_states{};
    QHash<QString, qsizetype> m_categories; // "" for uncategorized
    QHash<QString, qsizetype> m_tags;       // "" for untagged
    QHash<QString, qsizetype> m_hosts;      // "" for trackerless
};
