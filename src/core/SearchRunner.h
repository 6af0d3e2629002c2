#pragma once

#include "model/RoundPoller.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <chrono>

class Connector;
class SearchJob;

// Drives one search job on the server: starts it, reads its results on from those held while the
// job runs and its window shows, asks it to stop, and deletes it when the job is let go: a running
// job holds one of the server's five concurrent searches, and every job its results, which 5.3 even
// stores across restarts.
class SearchRunner : public QObject
{
    Q_OBJECT

public:
    // Results are cheap for the server to hand out and users watch them arrive.
    static constexpr std::chrono::milliseconds interval{1'000};

    SearchRunner(Connector &connector, SearchJob &job, QObject *parent = nullptr);
    // Deletes the job on the server, in the background.
    ~SearchRunner() override;

    QCoro::Task<> start();
    void stop();
    void setShown(bool shown);
    bool isPolling() const { return m_reads.isPolling(); }

private:
    QCoro::Task<> read(QPointer<Poller> round);
    QCoro::Task<> sendStop();

    Connector &m_connector;
    SearchJob &m_job;
    bool m_shown = false;
    bool m_stopPending = false;
    RoundPoller m_reads;
};
