#pragma once

#include <QObject>

#include <chrono>
#include <deque>

// The download and upload rates of the last minutes, one sample per poll, for the transfer graph.
// Bounded twice: by age, and by count for a very short polling interval.
class RateHistory : public QObject
{
    Q_OBJECT

public:
    using Clock = std::chrono::steady_clock;

    struct Sample
    {
        Clock::time_point at;
        qint64 down = 0; // bytes per second
        qint64 up = 0;
        bool alternative = false; // the alternative speed limits were on

        friend bool operator==(const Sample &, const Sample &) = default;
    };

    static constexpr std::chrono::minutes defaultSpan{5};
    static constexpr std::size_t maxSamples = 3000;

    explicit RateHistory(std::chrono::milliseconds span = defaultSpan, QObject *parent = nullptr);

    std::chrono::milliseconds span() const { return m_span; }
    const std::deque<Sample> &samples() const { return m_samples; }

    // A sample older than the newest one kept is ignored: the graph runs one way.
    void add(const Sample &sample);
    void clear();

Q_SIGNALS:
    void changed();

private:
    std::chrono::milliseconds m_span;
    std::deque<Sample> m_samples;
};
