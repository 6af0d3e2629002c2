#include "model/DataRateBuffer.h"

#include "support/CheckedMath.h"

#include <cmath>

void DataRateBuffer::add(qint64 sample)
{
    if (sample <= 0) {
        m_count = 0;
        m_head = 0;
        m_runningSum = 0;
        return;
    }
    if (m_capacity <= 0)
        return;
    if (m_samples.size() < m_capacity)
        m_samples.resize(m_capacity);
    if (m_count == m_capacity)
        dropOldest();
    m_samples[(m_head + m_count) % m_capacity] = sample;
    ++m_count;
    m_runningSum = CheckedMath::add(m_runningSum, sample);
}

void DataRateBuffer::dropOldest()
{
    m_runningSum = CheckedMath::subtract(m_runningSum, m_samples[m_head]);
    m_head = (m_head + 1) % m_capacity;
    --m_count;
}

void DataRateBuffer::setCapacity(int capacity)
{
    capacity = std::max(capacity, 0);
    if (capacity == m_capacity)
        return;
    while (m_count > capacity)
        dropOldest();
    // Re-lay the kept samples from slot 0 so the ring fits the new size.
    QVarLengthArray<qint64, 8> kept;
    kept.resize(std::max(capacity, 1));
    for (int i = 0; i < m_count; ++i)
        kept[i] = m_samples[(m_head + i) % m_capacity];
    m_samples = std::move(kept);
    m_head = 0;
    m_capacity = capacity;
}

qint64 DataRateBuffer::shownRate(qint64 latest) const
{
    if (m_capacity < 2)
        return latest;
    if (m_count == 0)
        return 0;
    return CheckedMath::toInt64(std::ceil(static_cast<double>(m_runningSum) / m_count));
}
