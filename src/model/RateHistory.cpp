#include "model/RateHistory.h"

RateHistory::RateHistory(std::chrono::milliseconds span, QObject *parent)
    : QObject(parent)
    , m_span(span)
{
}

void RateHistory::add(const Sample &sample)
{
    if (!m_samples.empty() && sample.at < m_samples.back().at)
        return;
    m_samples.push_back(sample);
    while (m_samples.size() > maxSamples || sample.at - m_samples.front().at > m_span)
        m_samples.pop_front();
    Q_EMIT changed();
}

void RateHistory::clear()
{
    if (m_samples.empty())
        return;
    m_samples.clear();
    Q_EMIT changed();
}
