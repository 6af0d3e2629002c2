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
    AnswerPace m_pace;
    AppState m_appState = AppState::foreground;
};
