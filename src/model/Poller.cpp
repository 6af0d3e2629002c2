#include "model/Poller.h"

#include "support/Detached.h"
#include "support/CheckedMath.h"
#include "model/AnswerPace.h"
#include "model/GlobalTransferInfo.h"
#include "settings/AppSettings.h"

#include <QLoggingCategory>
#include <QPointer>
#include <QTimer>

#include <coroutine>

Q_LOGGING_CATEGORY(lcPoller, "Poller")

// A pause resumes its loop exactly once: when its timer fires, or at once when the poller stops or
// is destroyed. (Awaiting a signal of the poller would leave the loop suspended for ever when the
// poller is deleted before the queued wake-up arrives.)
struct Poller::Pause
{
    std::coroutine_handle<> waiting;

    static void end(const std::shared_ptr<Pause> &pause)
    {
        if (auto handle = std::exchange(pause->waiting, {}))
            handle.resume();
    }

    struct Awaiter
    {
        std::shared_ptr<Pause> pause;
        bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> handle) noexcept { pause->waiting = handle; }
        void await_resume() const noexcept {}
    };
};

Poller::Poller(QObject *parent)
    : QObject(parent)
{
}

Poller::~Poller()
{
    stop();
}

void Poller::start(std::chrono::milliseconds interval, QList<Job> jobs, FirstRound first)
{
    stop();
    m_jobs = std::move(jobs);
    m_interval = interval;
    m_running = true;
    detached(loop(QPointer<Poller>(this), m_generation, first == FirstRound::afterPause));
}

void Poller::stop()
{
    ++m_generation;
    m_running = false;
    if (auto pause = std::exchange(m_pause, {}))
        Pause::end(pause);
}

QCoro::Task<> Poller::loop(QPointer<Poller> self, quint64 generation, bool pauseFirst)
{
    // No lambda over the parameters: g++ 12 lets such a lambda see the caller's copies, which are
    // gone after the first suspension.
    for (bool runJobs = !pauseFirst; self && self->m_generation == generation; runJobs = true) {
        const QList<Job> jobs = runJobs ? self->m_jobs : QList<Job>();
        for (const Job &job : jobs) {
            if (!self || self->m_generation != generation)
                co_return;
            try {
                co_await job();
            } catch (const std::exception &error) {
                qCWarning(lcPoller, "A polling job failed: %s", error.what());
            }
        }
        if (!self || self->m_generation != generation)
            co_return;
        // QTimer runs on the monotonic clock. The interval is read afresh for every pause.
        auto pause = std::make_shared<Pause>();
        self->m_pause = pause;
        QTimer::singleShot(self->m_interval, self.data(), [pause] { Pause::end(pause); });
        // A named awaiter: g++ 12 destroys a braced temporary in a co_await expression twice.
        Pause::Awaiter awaiter{pause};
        co_await awaiter;
    }
}

std::chrono::milliseconds Poller::intervalFor(const AppSettings &settings, const GlobalTransferInfo &transfer,
                                              const AnswerPace &pace, bool background)
{
    // A server that names no interval of its own (0) leaves it to the setting; one that names an
    // absurd one is held to the setting's bounds.
    const qint64 serverInterval = transfer.refreshInterval();
    qint64 wanted = settings.refreshInterval();
    if (settings.refreshMode() == RefreshMode::server && serverInterval != 0)
        wanted = serverInterval;
    else if (settings.refreshMode() == RefreshMode::adaptive)
        wanted = std::max<qint64>(wanted, pace.smoothed().count() * pausePerAnswerTime);
    const int base = AppSettings::refreshIntervalBounds.clamp(wanted);
    const int increase = background ? settings.intervalIncreaseValue() : 0;
    return std::chrono::milliseconds(CheckedMath::add(base, increase));
}
