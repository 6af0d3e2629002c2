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
{
    QObject::connect(&sync, &Sync::pollingStarted, this, [this] {
        m_active = true;
        m_poller.reset();
        m_log.reset();
        follow();
    });
    QObject::connect(&sync, &Sync::pollingStopped, this, [this] {
        m_active = false;
        follow();
    });
    // Another server's log, or none: what the last one said goes.
    QObject::connect(&connector, &Connector::sessionChanged, this, [this] {
        m_poller.reset();
        m_log.reset();
        follow();
    });
    QObject::connect(&m_log, &ServerLog::shownChanged, this, &ServerLogLoader::follow);
}

ServerLogLoader::~ServerLogLoader() = default;

void ServerLogLoader::follow()
{
    if (!m_active || !m_log.isShown()) {
        m_poller.reset();
        return;
    }
    if (m_poller)
        return;
    m_poller = std::make_unique<Poller>();
    m_poller->start(interval, {[this, round = QPointer<Poller>(m_poller.get())] { return read(round); }});
}

QCoro::Task<> ServerLogLoader::read(QPointer<Poller> round)
{
    const QPointer<Session> session = m_connector.session();
    if (!session || !session->isAuthorized())
        co_return;
    API::Client &client = session->client();

    auto messages = captured(client.logMessages(m_log.messages().lastId()));
    auto messagesRead = co_await std::move(messages);
    if (!round || !session)
        co_return;
    if (!messagesRead) {
        m_connector.reportPollFailure(QCoreApplication::translate("ServerLogLoader", "Failed to get the server's log."),
                                      messagesRead.error);
        co_return;
    }
    m_log.messages().merge(std::move(*messagesRead.value));

    auto peers = captured(client.peerLog(m_log.peers().lastId()));
    auto peersRead = co_await std::move(peers);
    if (!round || !session)
        co_return;
    if (!peersRead) {
        m_connector.reportPollFailure(
            QCoreApplication::translate("ServerLogLoader", "Failed to get the server's blocked peers."),
            peersRead.error);
        co_return;
    }
    m_log.peers().merge(std::move(*peersRead.value));
}
