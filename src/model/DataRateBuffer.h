#pragma once

#include <QtGlobal>

#include <memory>

// A sliding window of rate samples whose average is kept in constant time per sample. Every
// torrent holds two, and most torrents of a large library are idle: the ring is allocated with the
// first sample it keeps and freed when a zero empties it, so an idle torrent's buffers hold 24 bytes
// each and nothing on the heap.
class DataRateBuffer
{
public:
    static constexpr int defaultCapacity = 5;
    static constexpr int maxCapacity = 255;

    // A zero or negative sample empties the window: a stalled transfer shows 0 at once.
    void add(qint64 sample);
    // Clamped to [0, maxCapacity].
    void setCapacity(int capacity);

    qint64 runningSum() const { return m_runningSum; }
    int count() const { return m_count; }
    int capacity() const { return m_capacity; }

    // What a view shows after the latest sample `latest`: the window's average rounded up, or the
    // raw sample when the window is shorter than two.
    qint64 shownRate(qint64 latest) const;

private:
    void dropOldest();
    void empty();

    std::unique_ptr<qint64[]> m_samples; // ring of m_capacity slots while the window holds samples
    qint64 m_runningSum = 0;
    quint8 m_head = 0; // index of the oldest sample
    quint8 m_count = 0;
    quint8 m_capacity = defaultCapacity;
};
