#pragma once

#include <QCoroTask>
#include <QList>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>

class AnswerPace;
class AppSettings;
class GlobalTransferInfo;

// Runs a list of jobs one after another, then pauses, and again, until stopped or destroyed. The
// pause runs from the end of one round to the start of the next: a slow answer stretches the cycle
// instead of piling requests up.
class Poller : public QObject
{
    Q_OBJECT

public:
    // A job reports its own failures; one that throws anyway is logged and the round goes on.
    using Job = std::function<QCoro::Task<>()>;

    explicit Poller(QObject *parent = nullptr);
    ~Poller() override;

    // The first round runs at once, or after one pause when the jobs have just been run by hand.
    enum class FirstRound { now, afterPause };

    // Ends the loop under way, if any, and starts a new one.
    void start(std::chrono::milliseconds interval, QList<Job> jobs, FirstRound first = FirstRound::now);
    void stop();
    bool isRunning() const { return m_running; }

    // Takes effect after the pause under way; the loop is not restarted.
    void setPollingInterval(std::chrono::milliseconds interval) { m_interval = interval; }
    std::chrono::milliseconds pollingInterval() const { return m_interval; }

    // A server answering in t spends at most an eighth of its time on Quillo when the pause after
    // the answer is at least 7t. A 4.x server spends about a second of CPU on every answer, empty or
    // not: at three answer times it still spent half as much as at a fixed 1.5 s pause.
    static constexpr int pausePerAnswerTime = 7;

    // The pause for the given state: the setting, the server's own interval, or the setting
    // stretched to the server's answer time, as the refresh mode says; plus the setting's increase
    // while the application is in the background.
    static std::chrono::milliseconds intervalFor(const AppSettings &settings, const GlobalTransferInfo &transfer,
                                                 const AnswerPace &pace, bool background);

private:
    struct Pause;
    static QCoro::Task<> loop(QPointer<Poller> self, quint64 generation, bool pauseFirst);

    QList<Job> m_jobs;
    std::chrono::milliseconds m_interval{0};
    quint64 m_generation = 0; // a loop whose generation is not current has been stopped
    bool m_running = false;
    std::shared_ptr<Pause> m_pause; // the pause under way, which stop() ends at once
};
