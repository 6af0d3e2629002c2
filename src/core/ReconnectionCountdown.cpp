#include "core/ReconnectionCountdown.h"

#include "core/AppContext.h"
#include "support/Detached.h"

#include <algorithm>

ReconnectionCountdown::ReconnectionCountdown(AppContext &context, std::chrono::milliseconds tick, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_tick(tick)
{
    m_timer.setInterval(m_tick);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &ReconnectionCountdown::tick);
    connect(&m_context, &AppContext::connectionStateChanged, this, &ReconnectionCountdown::follow);
    follow();
}

bool ReconnectionCountdown::isStopped() const
{
    return m_lossCount > AppContext::maxAutoReconnectAttempts;
}

void ReconnectionCountdown::follow()
{
    const int lossCount = m_context.connectionLossCount();
    // Only a new loss starts a countdown: a failed attempt that leaves the count as it was (the
    // server refused the client) would otherwise retry, and alert, forever.
    if (lossCount == m_lossCount)
        return;
    m_lossCount = lossCount;
    if (lossCount >= 1 && lossCount <= AppContext::maxAutoReconnectAttempts)
        start(lossCount * 10);
    else
        stop();
}

void ReconnectionCountdown::start(int seconds)
{
    m_duration = seconds;
    m_secondsLeft = seconds;
    m_clock.start();
    m_timer.start();
    Q_EMIT changed();
}

void ReconnectionCountdown::stop()
{
    m_timer.stop();
    m_secondsLeft = 0;
    Q_EMIT changed();
}

void ReconnectionCountdown::tick()
{
    // Counted from the clock, not from the ticks: a late or skipped timer event loses nothing.
    const auto elapsedTicks = std::chrono::milliseconds(m_clock.elapsed()) / m_tick;
    const int left = std::max(0, m_duration - static_cast<int>(elapsedTicks));
    if (left == m_secondsLeft)
        return;
    m_secondsLeft = left;
    if (left == 0) {
        m_timer.stop();
        Q_EMIT changed();
        detached(m_context.reconnect());
        return;
    }
    Q_EMIT changed();
}

void ReconnectionCountdown::reconnectNow()
{
    m_timer.stop();
    m_secondsLeft = 0;
    Q_EMIT changed();
    detached(m_context.reconnect());
}
