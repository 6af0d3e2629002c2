#pragma once

#include "model/Poller.h"

#include <QCoroTask>
#include <QPointer>

#include <chrono>
#include <functional>
#include <memory>

// A read repeated while it is wanted (a window shows what it reads, the connection polls, a job
// runs), from a fresh Poller every time it starts again: answers asked for in the last rounds find
// their round gone instead of landing in a new session's or a reset model's.
class RoundPoller
{
public:
    using Read = std::function<QCoro::Task<>(QPointer<Poller> round)>;

    RoundPoller(std::chrono::milliseconds interval, std::function<bool()> wanted, Read read);
    ~RoundPoller();

    bool isPolling() const { return m_poller != nullptr; }
    // Starts or stops as `wanted` now says.
    void follow();
    // Leaves the round under way, and reads again at once if wanted.
    void restart();

private:
    std::chrono::milliseconds m_interval;
    std::function<bool()> m_wanted;
    Read m_read;
    std::unique_ptr<Poller> m_poller;
};
