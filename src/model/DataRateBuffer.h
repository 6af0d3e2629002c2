#pragma once

#include <QVarLengthArray>

// A sliding window of rate samples whose average is kept in constant time per sample. Every
// torrent holds two, so the samples of the usual window sizes live inline: no allocation per torrent.
class DataRateBuffer
{
public:
    static constexpr int defaultCapacity = 5;

    // A zero or negative sample empties the window: a stalled transfer shows 0 at once.
    void add(qint64 sample);
    void setCapacity(int capacity);

    qint64 runningSum() const { return m_runningSum; }
    int count() const { return m_count; }
    int capacity() const { return m_capacity; }

    // What a view shows after the latest sample `latest`: the window's average rounded up, or the
    // raw sample when the window is shorter than two.
    qint64 shownRate(qint64 latest) const;

private:
    void dropOldest();

    QVarLengthArray<qint64, 8> m_samples; // ring storage, m_capacity slots once used
    int m_head = 0;                       // index of the oldest sample
    int m_count = 0;
    int m_capacity = defaultCapacity;
    qint64 m_runningSum = 0;
};
