#pragma once

#include "model/RoundPoller.h"
#include "model/ServerLog.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <chrono>

namespace API {
class Client;
}
class Connector;
class Session;
class Sync;

// Reads the server's logs on from their last ids, in a loop of its own that runs only while a
// window shows them and the connection polls. Every new poller (a new session, a reconnection)
// starts both logs afresh: a server started again numbers its lines from 0.
class ServerLogLoader : public QObject
{
    Q_OBJECT

public:
    // Log lines are not the torrents: a few seconds late is soon enough.
    static constexpr std::chrono::milliseconds interval{3'000};

    ServerLogLoader(Connector &connector, Sync &sync, ServerLog &log, QObject *parent = nullptr);
    ~ServerLogLoader() override;

    bool isPolling() const { return m_reads.isPolling(); }

private:
    QCoro::Task<> read(QPointer<Poller> round);
    template<typename Entry>
    QCoro::Task<bool> readInto(QPointer<Poller> round, QPointer<Session> session, LogLines<Entry> &lines,
                               const char *failure, QCoro::Task<QList<Entry>> (API::Client::*request)(qint64));

    Connector &m_connector;
    ServerLog &m_log;
    const Sync &m_sync;
    RoundPoller m_reads;
};
