#include "model/DataRateBuffer.h"

#include "support/CheckedMath.h"

#include <algorithm>
#include <cmath>

void DataRateBuffer::empty()
{
    m_samples.reset();
    m_count = 0;
    m_head = 0;
    m_runningSum = 0;
}

void DataRateBuffer::add(qint64 sample)
{
    if (sample <= 0) {
        empty();
        return;
    }
    if (m_capacity == 0)
        return;
    if (!m_samples)
        m_samples = std::make_unique_for_overwrite<qint64[]>(m_capacity);
    if (m_count == m_capacity)
        dropOldest();
    m_samples[static_cast<std::size_t>((m_head + m_count) % m_capacity)] = sample;
    ++m_count;
    m_runningSum = CheckedMath::add(m_runningSum, sample);
}

void DataRateBuffer::dropOldest()
{
    m_runningSum = CheckedMath::subtract(m_runningSum, m_samples[m_head]);
    m_head = static_cast<quint8>((m_head + 1) % m_capacity);
    --m_count;
}

void DataRateBuffer::setCapacity(int capacity)
{
    const auto bounded = static_cast<quint8>(std::clamp(capacity, 0, maxCapacity));
    if (bounded == m_capacity)
        return;
    while (m_count > bounded)
        dropOldest();
    // Re-lay the kept samples from slot 0 so the ring fits the new size.
    std::unique_ptr<qint64[]> kept;
    if (m_count > 0) {
        kept = std::make_unique_for_overwrite<qint64[]>(bounded);
        for (std::size_t i = 0; i < m_count; ++i)
            kept[i] = m_samples[(std::size_t{m_head} + i) % std::size_t{m_capacity}];
    }
    m_samples = std::move(kept);
    m_head = 0;
    m_capacity = bounded;
}

qint64 DataRateBuffer::shownRate(qint64 latest) const
{
    if (m_capacity < 2)
        return latest;
    if (m_count == 0)
        return 0;
    return CheckedMath::toInt64(std::ceil(static_cast<double>(m_runningSum) / m_count));
}
