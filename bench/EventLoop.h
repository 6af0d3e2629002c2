#pragma once

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <functional>

namespace Bench {

// Runs the event loop until `done` (checked every 10 ms) or the time is up.
inline bool runUntil(const std::function<bool()> &done, std::chrono::milliseconds limit)
{
    QEventLoop loop;
    QTimer check;
    QObject::connect(&check, &QTimer::timeout, &loop, [&] {
        if (done())
            loop.quit();
    });
    check.start(10);
    QTimer::singleShot(limit, &loop, &QEventLoop::quit);
    loop.exec();
    return done();
}

// One timer and nothing else: waking every 10 ms to check a condition costs about half a percent
// of a core, which would count in the CPU time measured over the window.
inline void run(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace Bench
