#pragma once

#include "model/RoundPoller.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <chrono>

class Connector;
class RssFeeds;
class Sync;

// Reads the server's feeds with their articles in a loop of its own that runs only while a window
// shows them and the connection polls. A new session forgets what the last one read.
class RssLoader : public QObject
{
    Q_OBJECT

public:
    // Feeds refresh on the server every 30 minutes by default: a few seconds late is soon enough
    // for what it fetched, and for what another client changed.
    static constexpr std::chrono::milliseconds interval{5'000};

    RssLoader(Connector &connector, Sync &sync, RssFeeds &feeds, QObject *parent = nullptr);
    ~RssLoader() override;

    bool isPolling() const { return m_reads.isPolling(); }
    // A read at once, as after a change made here, and the loop on from it.
    void readNow();

private:
    QCoro::Task<> read(QPointer<Poller> round);

    Connector &m_connector;
    RssFeeds &m_feeds;
    const Sync &m_sync;
    RoundPoller m_reads;
};
