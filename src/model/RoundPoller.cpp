#include "model/RoundPoller.h"

RoundPoller::RoundPoller(std::chrono::milliseconds interval, std::function<bool()> wanted, Read read)
    : m_interval(interval)
    , m_wanted(std::move(wanted))
    , m_read(std::move(read))
{
}

RoundPoller::~RoundPoller() = default;

void RoundPoller::follow()
{
    if (!m_wanted()) {
        m_poller.reset();
        return;
    }
    if (m_poller)
        return;
    m_poller = std::make_unique<Poller>();
    m_poller->start(m_interval, {[this, round = QPointer<Poller>(m_poller.get())] { return m_read(round); }});
}

void RoundPoller::restart()
{
    m_poller.reset();
    follow();
}
