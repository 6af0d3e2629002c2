#include "model/ServerLog.h"

ServerLog::ServerLog(qsizetype capacity, QObject *parent)
    : QObject(parent)
    , m_messages(capacity)
    , m_peers(capacity)
{
}

void ServerLog::setShown(bool shown)
{
    if (shown == m_shown)
        return;
    m_shown = shown;
    Q_EMIT shownChanged(shown);
}

void ServerLog::reset()
{
    m_messages.reset();
    m_peers.reset();
}
