#include "core/Sync.h"

#include "api/Client.h"
#include "core/Session.h"
#include "model/GlobalTransferInfo.h"
#include "model/ServerLabels.h"
#include "model/TntCollection.h"
#include "model/TntSnapshot.h"
#include "model/TrackerIndex.h"
#include "settings/AppSettings.h"
#include "support/Captured.h"
#include "support/Detached.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QThreadPool>
#include <QTimer>
#include <QtConcurrent/QtConcurrentRun>

#ifdef __GLIBC__
#include <malloc.h>
#endif

Q_LOGGING_CATEGORY(lcSync, "AppContext")

namespace {

// A full update leaves tens of megabytes free but resident in the allocator's heaps, scattered
// between the models: the answer's body, its decoded records (freed on the worker that built them)
// and the models replaced. They go back to the system once the table is painted: run at once, the
// trim holds the heaps' locks while the first paint allocates (+3 ms to it at 10,000).
void releaseFreedMemorySoon(QObject *context)
{
#ifdef __GLIBC__
    QTimer::singleShot(std::chrono::seconds(1), context,
                       [] { QThreadPool::globalInstance()->start([] { malloc_trim(0); }); });
#else
    Q_UNUSED(context);
#endif
}

// Full updates are built off the main thread; only the swap happens on it.
QFuture<std::shared_ptr<TntCollection::Models>> buildOnWorker(QHash<QString, API::STntModel> tnts, int window)
{
    return QtConcurrent::run([tnts = std::move(tnts), window] {
        return std::make_shared<TntCollection::Models>(TntCollection::build(tnts, window));
    });
}

} // namespace

Sync::Sync(AppSettings &settings, TntCollection &tnts, GlobalTransferInfo &transfer, ServerLabels &labels,
           TrackerIndex &trackers, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_tnts(tnts)
    , m_transfer(transfer)
    , m_labels(labels)
    , m_trackers(trackers)
{}

Sync::~Sync() = default;

void Sync::follow(Session *session)
{
    qCInfo(lcSync, "Resetting app state");
    if (m_current)
        Q_EMIT aboutToForget();
    stopPolling();
    m_session = session;
    m_rid = 0;
    ++m_followed;
    const bool wasShowing = m_current || m_showingSnapshot;
    m_current = false;
    m_showingSnapshot = false;
    m_pace.reset();
    m_tnts.clear();
    m_transfer.reset();
    m_labels.clear();
    m_trackers.clear();
    if (wasShowing)
        Q_EMIT currentChanged();
}

QCoro::Task<bool> Sync::showSnapshot(QByteArray bytes)
{
    struct Decoded
    {
        API::MainData data;
        TntCollection::Models models;
    };
    const QPointer<Sync> self = this;
    const quint64 followed = m_followed;
    auto decoding = QtConcurrent::run([bytes = std::move(bytes), window = m_settings.avgCoefficient()] {
        std::optional<API::MainData> data = TntSnapshot::decode(bytes);
        if (!data)
            return std::shared_ptr<Decoded>();
        auto decoded = std::make_shared<Decoded>();
        decoded->models = TntCollection::build(data->tnts, window);
        data->tnts.clear();
        decoded->data = std::move(*data);
        return decoded;
    });
    const std::shared_ptr<Decoded> decoded = co_await decoding;
    if (!decoded)
        co_return false;
    if (!self || m_followed != followed || m_current || m_tnts.size() > 0)
        co_return true;
    m_tnts.replaceAll(std::move(decoded->models));
    releaseFreedMemorySoon(this);
    m_trackers.apply(true, decoded->data.trackers, {});
    m_labels.apply(decoded->data);
    m_showingSnapshot = true;
    Q_EMIT currentChanged();
    co_return true;
}

void Sync::startPolling(Poller::FirstRound first)
{
    if (!m_session || !m_session->isAuthorized())
        return;
    qCInfo(lcSync, "Start polling");
    // A fresh poller every time: answers asked for by the last one are dropped with it.
    m_poller = std::make_unique<Poller>();
    QList<Poller::Job> jobs{[this, round = QPointer<Poller>(m_poller.get())] { return syncMainData(round); }};
    jobs.append(m_roundJobs);
    m_poller->start(Poller::intervalFor(m_settings, m_transfer, m_pace, m_appState == AppState::background), jobs,
                    first);
    Q_EMIT pollingStarted();
}

void Sync::stopPolling()
{
    if (!m_poller)
        return;
    qCInfo(lcSync, "Stop polling");
    m_poller.reset();
    Q_EMIT pollingStopped();
}

std::chrono::milliseconds Sync::pollingInterval() const
{
    return m_poller ? m_poller->pollingInterval() : std::chrono::milliseconds(0);
}

QCoro::Task<> Sync::syncOnce()
{
    return syncMainData(m_poller.get());
}

void Sync::forcePoll()
{
    if (!m_session || !m_session->isAuthorized())
        return;
    qCInfo(lcSync, "Force poll");
    detached(syncOnce());
}

void Sync::setPollingInterval(bool background)
{
    const auto interval = Poller::intervalFor(m_settings, m_transfer, m_pace, background);
    qCInfo(lcSync, "Set polling interval to %lld", static_cast<long long>(interval.count()));
    if (m_poller)
        m_poller->setPollingInterval(interval);
}

void Sync::setAppState(AppState state)
{
    if (m_appState == state)
        return;
    m_appState = state;
    qCInfo(lcSync, "App did become %s", state == AppState::background ? "background" : "foreground");
    setPollingInterval(state == AppState::background);
}

QCoro::Task<> Sync::syncMainData(QPointer<Poller> round)
{
    const QPointer<Session> session = m_session;
    if (!session)
        co_return;
    const bool inRound = !round.isNull();
    const auto current = [&] { return session && (!inRound || round); };
    QElapsedTimer answerTime;
    answerTime.start();
    QCoro::Task<Captured<API::MainData>> request = captured(session->client().mainData(m_rid));
    Captured<API::MainData> answer = co_await std::move(request);
    if (!current())
        co_return;
    if (!answer) {
        Q_EMIT failed(QCoreApplication::translate("Sync", "Failed to get main data."), answer.error);
        co_return;
    }
    m_pace.record(std::chrono::milliseconds(answerTime.elapsed()));
    const bool background = m_appState == AppState::background;
    // Every answer moves the pace; only a change of the pause is worth a line in the log.
    if (m_settings.refreshMode() == RefreshMode::adaptive &&
        Poller::intervalFor(m_settings, m_transfer, m_pace, background) != pollingInterval())
        setPollingInterval(background);
    API::MainData &data = *answer.value;
    m_rid = data.rid;
    if (m_showingSnapshot)
        Q_EMIT catchingUp();
    const bool full = data.fullUpdate.value_or(false);
    if (full && m_tnts.size() > 0) {
        m_tnts.mergeFull(data.tnts, m_settings.avgCoefficient());
    } else if (full) {
        auto built = buildOnWorker(std::move(data.tnts), m_settings.avgCoefficient());
        const std::shared_ptr<TntCollection::Models> models = co_await built;
        if (!current())
            co_return;
        m_tnts.replaceAll(std::move(*models));
    } else {
        m_tnts.merge(data.tnts, data.tntsRemoved, m_settings.avgCoefficient());
    }
    if (full)
        releaseFreedMemorySoon(this);
    // Before the labels: their announcement is when a remembered sidebar selection is checked.
    m_trackers.apply(full, data.trackers, data.trackersRemoved);
    m_labels.apply(data);
    if (data.serverState) {
        const qint64 serverInterval = m_transfer.refreshInterval();
        m_transfer.update(*data.serverState);
        if (m_settings.refreshMode() == RefreshMode::server && m_transfer.refreshInterval() != serverInterval)
            setPollingInterval(m_appState == AppState::background);
    }
    if (!m_current) {
        m_current = true;
        m_showingSnapshot = false;
        Q_EMIT currentChanged();
    }
    Q_EMIT mainDataMerged();
}
