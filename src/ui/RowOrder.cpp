#include "ui/RowOrder.h"

#include <algorithm>
#include <cstring>

namespace {

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

constexpr std::size_t block = 64;

// Where two orders first differ, `count` when nowhere. memcmp checks a block of rows in a few
// instructions, where a loop takes several per row.
std::size_t firstDifference(const int *a, const int *b, std::size_t count)
{
    std::size_t place = 0;
    while (place + block <= count && std::memcmp(a + place, b + place, sizeof(int) * block) == 0)
        place += block;
    while (place < count && a[place] == b[place])
        ++place;
    return place;
}

// Just after where two orders last differ, 0 when nowhere.
std::size_t lastDifference(const int *a, const int *b, std::size_t count)
{
    std::size_t end = count;
    while (end >= block && std::memcmp(a + end - block, b + end - block, sizeof(int) * block) == 0)
        end -= block;
    while (end > 0 && a[end - 1] == b[end - 1])
        --end;
    return end;
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
    const std::size_t begin = firstDifference(m_rows.data(), rows.data(), m_rows.size());
    if (begin == m_rows.size())
        return;
    const std::size_t end = lastDifference(m_rows.data(), rows.data(), m_rows.size());
    m_rows = std::move(rows);
    if (!m_placesStale) {
        for (std::size_t place = begin; place < end; ++place)
            m_places[at(m_rows[place])] = static_cast<int>(place);
    }
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

std::vector<int> RowOrder::merged(const std::vector<int> &kept, const std::vector<int> &moved,
                                  const std::vector<int> &after) const
{
    std::vector<int> rows;
    rows.reserve(m_rows.size());
    auto next = kept.cbegin();
    for (std::size_t i = 0; i < moved.size(); ++i) {
        rows.insert(rows.end(), next, kept.cbegin() + after[i]);
        rows.push_back(moved[i]);
        next = kept.cbegin() + after[i];
    }
    rows.insert(rows.end(), next, kept.cend());
    return rows;
}

std::vector<int> RowOrder::gatheredAtEnd(const std::vector<int> &places) const
{
    std::vector<int> kept;
    std::vector<int> gathered;
    split(places, kept, gathered);
    kept.insert(kept.end(), gathered.begin(), gathered.end());
    return kept;
}
