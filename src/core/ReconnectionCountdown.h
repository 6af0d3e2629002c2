#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>

class AppContext;

// The automatic reconnection after a lost connection: the n-th loss in a row waits n x 10 ticks
// (a tick is a second outside tests), then asks the context to reconnect. Beyond
// AppContext::maxAutoReconnectAttempts it stops and waits for the user.
class ReconnectionCountdown : public QObject
{
    Q_OBJECT

public:
    explicit ReconnectionCountdown(AppContext &context, std::chrono::milliseconds tick = std::chrono::seconds(1),
                                   QObject *parent = nullptr);

    bool isRunning() const { return m_timer.isActive(); }
    // Too many losses in a row: only the user reconnects now.
    bool isStopped() const;
    int secondsLeft() const { return m_secondsLeft; }

    void reconnectNow();

Q_SIGNALS:
    void changed();

private:
    void follow();
    void start(int seconds);
    void stop();
    void tick();

    AppContext &m_context;
    std::chrono::milliseconds m_tick;
    QTimer m_timer;
    // Monotonic: the countdown must not jump when the wall clock is set or the machine sleeps.
    QElapsedTimer m_clock;
    int m_lossCount = 0;
    int m_duration = 0;
    int m_secondsLeft = 0;
};
