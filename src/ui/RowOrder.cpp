#include "ui/RowOrder.h"

#include <algorithm>

namespace {

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

int RowOrder::placeOf(int sourceRow) const
{
    if (m_placesStale) {
        m_places.assign(at(m_sourceCount), -1);
        for (int place = 0; place < size(); ++place)
            m_places[at(m_rows[at(place)])] = place;
        m_placesStale = false;
    }
    return m_places[at(sourceRow)];
}

void RowOrder::assign(std::vector<int> rows, int sourceCount)
{
    m_rows = std::move(rows);
    m_sourceCount = sourceCount;
    m_placesStale = true;
}

void RowOrder::reorder(std::vector<int> rows)
{
    m_rows = std::move(rows);
    m_placesStale = true;
}

void RowOrder::append(const std::vector<int> &sourceRows)
{
    m_rows.insert(m_rows.end(), sourceRows.begin(), sourceRows.end());
    m_placesStale = true;
}

void RowOrder::erase(int firstPlace, int count)
{
    m_rows.erase(m_rows.begin() + firstPlace, m_rows.begin() + firstPlace + count);
    m_placesStale = true;
}

void RowOrder::sourceRowsInserted(int first, int count)
{
    // Rows arrive at the end of the collection: nothing to renumber then.
    if (first < m_sourceCount) {
        for (int &row : m_rows)
            row += row >= first ? count : 0;
    }
    m_sourceCount += count;
    m_placesStale = true;
}

void RowOrder::sourceRowsRemoved(int first, int count)
{
    for (int &row : m_rows)
        row -= row >= first ? count : 0;
    m_sourceCount -= count;
    m_placesStale = true;
}

void RowOrder::split(const std::vector<int> &places, std::vector<int> &kept, std::vector<int> &taken) const
{
    kept.reserve(m_rows.size() - places.size());
    taken.reserve(places.size());
    auto from = m_rows.cbegin();
    for (const int place : places) {
        kept.insert(kept.end(), from, m_rows.cbegin() + place);
        taken.push_back(m_rows[at(place)]);
        from = m_rows.cbegin() + place + 1;
    }
    kept.insert(kept.end(), from, m_rows.cend());
}

std::vector<int> RowOrder::resorted(std::vector<int> places, const Precedes &precedes) const
{
    std::sort(places.begin(), places.end());
    std::vector<int> kept;
    std::vector<int> moved;
    split(places, kept, moved);
    std::stable_sort(moved.begin(), moved.end(), precedes);

    // Where each moved row goes: after the kept rows it does not precede. The searches advance side
    // by side, one halving at a time, so that the processor overlaps their reads of torrents
    // spread over memory instead of waiting for each in turn: a large library does not fit in
    // cache (measured at 50,000 torrents: 440 → 250 µs for 500 rows).
    std::vector<int> after(moved.size(), 0);
    int span = static_cast<int>(kept.size());
    while (span > 1) {
        const int half = span / 2;
        for (std::size_t i = 0; i < moved.size(); ++i)
            after[i] += precedes(moved[i], kept[at(after[i] + half)]) ? 0 : half;
        span -= half;
    }
    std::vector<int> merged;
    merged.reserve(m_rows.size());
    auto next = kept.cbegin();
    for (std::size_t i = 0; i < moved.size(); ++i) {
        const int place = after[i] + (!kept.empty() && !precedes(moved[i], kept[at(after[i])]) ? 1 : 0);
        merged.insert(merged.end(), next, kept.cbegin() + place);
        merged.push_back(moved[i]);
        next = kept.cbegin() + place;
    }
    merged.insert(merged.end(), next, kept.cend());
    return merged;
}

std::vector<int> RowOrder::gatheredAtEnd(const std::vector<int> &places) const
{
    std::vector<int> kept;
    std::vector<int> gathered;
    split(places, kept, gathered);
    kept.insert(kept.end(), gathered.begin(), gathered.end());
    return kept;
}
