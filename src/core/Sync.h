#pragma once

#include "model/AnswerPace.h"
#include "model/Poller.h"

#include <QObject>
#include <QPointer>

#include <exception>
#include <memory>

class AppSettings;
class GlobalTransferInfo;
class ServerLabels;
class Session;
class TntCollection;
class TrackerIndex;

// The server's state kept current: the poller, and each main-data answer merged into the
// torrents, labels, trackers and transfer figures. What fails is handed on through `failed`.
class Sync : public QObject
{
    Q_OBJECT

public:
    enum class AppState { foreground, background };

    Sync(AppSettings &settings, TntCollection &tnts, GlobalTransferInfo &transfer, ServerLabels &labels,
         TrackerIndex &trackers, QObject *parent = nullptr);
    ~Sync() override;

    // Forgets what the previous session showed and follows `session` (none: nothing to follow).
    void follow(Session *session);
    // Jobs run after the main data in every round (the detail pane's).
    void addRoundJob(Poller::Job job) { m_roundJobs.append(std::move(job)); }

    qint64 rid() const { return m_rid; }
    // A main-data answer of the session followed has been merged: what is shown is the server's.
    bool isCurrent() const { return m_current; }
    // What is shown came from a snapshot and waits for the server's first answer.
    bool isShowingSnapshot() const { return m_showingSnapshot; }
    // Shows a snapshot's torrents, categories, tags and trackers until the first answer of the
    // session followed, which merges over them like a later full update so that rows keep their place.
    // An answer merged first wins. False when `bytes` do not decode.
    QCoro::Task<bool> showSnapshot(QByteArray bytes);
    // How long the server takes to answer a main-data poll, from the request to the decoded answer.
    const AnswerPace &answerPace() const { return m_pace; }
    bool isPolling() const { return m_poller != nullptr; }
    std::chrono::milliseconds pollingInterval() const;
    void startPolling(Poller::FirstRound first = Poller::FirstRound::now);
    void stopPolling();
    // One synchronisation outside the loop's rhythm.
    QCoro::Task<> syncOnce();
    void forcePoll();

    AppState appState() const { return m_appState; }
    // The background pause is longer; the loop under way is not restarted.
    void setAppState(AppState state);
    // Stores the interval for the loop under way; it takes effect after the pause under way.
    void setPollingInterval(bool background);

Q_SIGNALS:
    void pollingStarted();
    void pollingStopped();
    // One main-data answer is merged: once per poll round, and once per forced poll.
    void mainDataMerged();
    // What is shown is about to be cleared; emitted only while it is current.
    void aboutToForget();
    // The first answer after a snapshot is about to merge: what it changes happened while away.
    void catchingUp();
    // isCurrent() or isShowingSnapshot() changed.
    void currentChanged();
    void failed(const QString &title, const std::exception_ptr &error);

private:
    // An answer is dropped when its session is gone, or when it was asked for by a loop that has
    // since been stopped.
    QCoro::Task<> syncMainData(QPointer<Poller> round);

    AppSettings &m_settings;
    TntCollection &m_tnts;
    GlobalTransferInfo &m_transfer;
    ServerLabels &m_labels;
    TrackerIndex &m_trackers;
    QPointer<Session> m_session;
    std::unique_ptr<Poller> m_poller;
    QList<Poller::Job> m_roundJobs;
    qint64 m_rid = 0;
    quint64 m_followed = 0; // counts follow() calls: a snapshot decoded for an earlier one is dropped
    bool m_current = false;
    bool m_showingSnapshot = false;
    AnswerPace m_pace;
    AppState m_appState = AppState::foreground;
};
