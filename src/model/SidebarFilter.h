#pragma once

#include "model/NameFilter.h"
#include "model/SidebarItem.h"

#include <QList>
#include <QStringList>

#include <bitset>

class TntCollection;
class TrackerIndex;

// The sidebar's selection as a test of one torrent: the selected entries of a group combine by
// union, the groups by intersection; a group with nothing selected, or only its "All" entry,
// admits every torrent. Built once per selection, so testing a row allocates nothing.
class SidebarFilter
{
public:
    // Admits every torrent.
    SidebarFilter() = default;
    // `trackers` must outlive the filter; it is read at each test, so the filter follows the map.
    SidebarFilter(const QSet<SidebarItem> &selection, const TrackerIndex &trackers);

    bool admits(const TntModel &tnt) const;
    // The torrent fields `admits` reads: a change to any other cannot move a torrent in or out.
    static constexpr TntModel::Fields fieldsRead = TntModel::StateField | TntModel::Category | TntModel::Tags;
    bool restrictsTrackers() const { return !m_trackers.isEmpty(); }

    // What a category, tag or tracker entry stands for: the name, tag or host; "" for its "none"
    // entry; nothing for its "All" entry, which restricts nothing.
    static std::optional<QString> labelOf(const SidebarItem &item);

    // Whether one of the pieces of a torrent's tag text, split at ", " only, is in `wanted`. An
    // empty text is one empty piece.
    static bool hasTagIn(QStringView tags, const QStringList &wanted);

private:
    std::bitset<tntModelStateCount> m_states; // none: any state
    QStringList m_categories;                 // "" for uncategorized
    QStringList m_tags;                       // "" for untagged
    QStringList m_trackers;                   // hosts; "" for trackerless
    const TrackerIndex *m_trackerIndex = nullptr;
};

// The torrents of `collection` that `filter` and `name` admit, in the collection's order.
QList<const TntModel *> admittedTnts(const TntCollection &collection, const SidebarFilter &filter,
                                     const NameFilter &name = {});
