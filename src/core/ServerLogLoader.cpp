#include "core/ServerLogLoader.h"

#include "api/Client.h"
#include "core/Connector.h"
#include "core/Sync.h"
#include "model/ServerLog.h"
#include "support/Captured.h"

#include <QCoreApplication>

ServerLogLoader::ServerLogLoader(Connector &connector, Sync &sync, ServerLog &log, QObject *parent)
    : QObject(parent)
    , m_connector(connector)
    , m_log(log)
    , m_sync(sync)
    , m_reads(interval, [this] { return m_sync.isPolling() && m_log.isShown(); },
              [this](QPointer<Poller> round) { return read(round); })
{
    QObject::connect(&sync, &Sync::pollingStarted, this, [this] {
        m_log.reset();
        m_reads.restart();
    });
    QObject::connect(&sync, &Sync::pollingStopped, this, [this] { m_reads.follow(); });
    // Another server's log, or none: what the last one said goes.
    QObject::connect(&connector, &Connector::sessionChanged, this, [this] {
        m_log.reset();
        m_reads.restart();
    });
    QObject::connect(&m_log, &ServerLog::shownChanged, this, [this] { m_reads.follow(); });
}

ServerLogLoader::~ServerLogLoader() = default;

// One log read on from its last line and merged; false when the round is over or the read failed.
template<typename Entry>
QCoro::Task<bool> ServerLogLoader::readInto(QPointer<Poller> round, QPointer<Session> session,
                                            LogLines<Entry> &lines, const char *failure,
                                            QCoro::Task<QList<Entry>> (API::Client::*request)(qint64))
{
    auto answer = captured((session->client().*request)(lines.lastId()));
    auto entries = co_await std::move(answer);
    if (!round || !session)
        co_return false;
    if (!entries) {
        m_connector.reportPollFailure(QCoreApplication::translate("ServerLogLoader", failure), entries.error);
        co_return false;
    }
    lines.merge(std::move(*entries.value));
    co_return true;
}

QCoro::Task<> ServerLogLoader::read(QPointer<Poller> round)
{
    const QPointer<Session> session = m_connector.session();
    if (!session || !session->isAuthorized())
        co_return;
    if (co_await readInto(round, session, m_log.messages(),
                          QT_TRANSLATE_NOOP("ServerLogLoader", "Failed to get the server's log."),
                          &API::Client::logMessages))
        co_await readInto(round, session, m_log.peers(),
                          QT_TRANSLATE_NOOP("ServerLogLoader", "Failed to get the server's blocked peers."),
                          &API::Client::peerLog);
}
