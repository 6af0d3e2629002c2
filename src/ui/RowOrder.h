#pragma once

#include <functional>
#include <vector>

// The source rows a sorted, filtered view shows, in the view's order, and the way back from a
// source row to its place. Rows whose sort value changed are re-sorted together in one pass, so a
// busy answer costs one walk of the order however many rows it moves.
class RowOrder
{
public:
    // Whether source row `a` goes before source row `b`.
    using Precedes = std::function<bool(int a, int b)>;

    int size() const { return static_cast<int>(m_rows.size()); }
    const std::vector<int> &rows() const { return m_rows; }
    int sourceRow(int place) const { return m_rows[static_cast<std::size_t>(place)]; }
    // -1 when the view does not show the row.
    int placeOf(int sourceRow) const;

    void assign(std::vector<int> rows, int sourceCount);
    // The same rows in another order.
    void reorder(std::vector<int> rows);
    void append(const std::vector<int> &sourceRows);
    void erase(int firstPlace, int count);
    // The source gained or lost `count` rows at `first`: the rows after them are renumbered. Lost
    // rows must have been erased first.
    void sourceRowsInserted(int first, int count);
    void sourceRowsRemoved(int first, int count);

    // The order with the rows at `places` taken out, sorted among themselves and merged back, each
    // after the rows it does not precede. The other rows, and moved rows that are equal, keep their
    // order. O(n + k log n) for k places.
    std::vector<int> resorted(std::vector<int> places, const Precedes &precedes) const;
    // The order with the rows at `places` (ascending) moved to the end, keeping their order.
    std::vector<int> gatheredAtEnd(const std::vector<int> &places) const;

private:
    // The rows not at `places` (ascending), and those at them, each in their order.
    void split(const std::vector<int> &places, std::vector<int> &kept, std::vector<int> &taken) const;

    std::vector<int> m_rows;
    mutable std::vector<int> m_places; // by source row, rebuilt on demand after a change
    mutable bool m_placesStale = false;
    int m_sourceCount = 0;
};
