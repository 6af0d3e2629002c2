#pragma once

#include <QObject>

#include <chrono>
#include <optional>

// How long the server takes to answer a main-data poll, smoothed for the pause that follows: a
// slower answer counts at once, so that a server under load is spared from the next round on; a
// faster one only moves the figure a quarter of the way, so that one quick answer between slow
// ones does not bring the rhythm back up.
class AnswerPace : public QObject
{
    Q_OBJECT

public:
    using Duration = std::chrono::milliseconds;

    explicit AnswerPace(QObject *parent = nullptr);

    void record(Duration answer);
    void reset();

    std::optional<Duration> last() const { return m_last; }
    Duration smoothed() const { return m_smoothed; }

Q_SIGNALS:
    void changed();

private:
    std::optional<Duration> m_last;
    Duration m_smoothed{0};
};
