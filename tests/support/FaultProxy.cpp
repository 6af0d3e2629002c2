#include "support/FaultProxy.h"

#include <QTcpSocket>

#include <sys/socket.h>

struct FaultProxy::Link
{
    QTcpSocket *client = nullptr;
    QTcpSocket *upstream = nullptr; // none while held, or for a black hole
    bool sink = false;              // reads what the client sends and throws it away
    bool upstreamClosed = false;
    qint64 carriedDown = 0;
};

namespace {

// Closing with a zero linger sends RST: the peer reads a reset, not an orderly end.
void resetHard(QTcpSocket *socket)
{
    if (const qintptr fd = socket->socketDescriptor(); fd != -1) {
        const linger none{1, 0};
        ::setsockopt(static_cast<int>(fd), SOL_SOCKET, SO_LINGER, &none, sizeof none);
    }
    socket->abort();
}

} // namespace

FaultProxy::FaultProxy(quint16 upstreamPort, QObject *parent)
    : QObject(parent)
    , m_upstreamPort(upstreamPort)
{
    connect(&m_server, &QTcpServer::pendingConnectionAvailable, this, &FaultProxy::accept);
    m_trickle.setTimerType(Qt::PreciseTimer);
    connect(&m_trickle, &QTimer::timeout, this, &FaultProxy::trickle);
}

FaultProxy::~FaultProxy()
{
    const QList<Link *> links = m_links;
    for (Link *link : links)
        drop(link, false);
}

QString FaultProxy::listen()
{
    if (!m_server.listen(QHostAddress::LocalHost, m_port))
        return m_server.errorString();
    m_port = m_server.serverPort();
    return {};
}

void FaultProxy::setMode(Mode mode)
{
    const bool thawing = freezes();
    const Mode before = m_mode;
    m_mode = mode;
    if (mode == Mode::refuse)
        m_server.close();
    else if (before == Mode::refuse)
        listen();
    if (mode == Mode::refuse || mode == Mode::reset) {
        const QList<Link *> links = m_links;
        for (Link *link : links)
            drop(link, true);
    }
    if (mode == Mode::cut) {
        for (Link *link : std::as_const(m_links))
            link->carriedDown = 0; // what they carried before does not count
    }
    if (limits()) {
        m_trickle.start(mode == Mode::slow ? 1000 : 10);
        m_sinceTrickle.start();
    } else
        m_trickle.stop();
    if (!thawing || freezes())
        return;
    const QList<Link *> links = m_links;
    for (Link *link : links) {
        if (link->sink) {
            drop(link, true); // what it swallowed is lost: the stream cannot go on
            continue;
        }
        if (!link->upstream) {
            connectUpstream(link);
            continue;
        }
        forwardUp(*link);
        forwardDown(*link, -1);
    }
}

void FaultProxy::accept()
{
    while (QTcpSocket *client = m_server.nextPendingConnection()) {
        if (m_mode == Mode::reset) {
            resetHard(client);
            client->deleteLater();
            continue;
        }
        auto *link = new Link{client};
        m_links.append(link);
        client->setParent(this);
        connect(client, &QTcpSocket::disconnected, this, [this, link] { drop(link, false); });
        if (m_mode == Mode::blackHole) {
            link->sink = true;
            connect(client, &QTcpSocket::readyRead, this, [client] { client->readAll(); });
            continue;
        }
        connect(client, &QTcpSocket::readyRead, this, [this, link] { forwardUp(*link); });
        if (m_mode == Mode::hold)
            continue;
        connectUpstream(link);
    }
}

void FaultProxy::connectUpstream(Link *link)
{
    link->upstream = new QTcpSocket(this);
    connect(link->upstream, &QTcpSocket::connected, this, [this, link] { forwardUp(*link); });
    connect(link->upstream, &QTcpSocket::readyRead, this, [this, link] { forwardDown(*link, -1); });
    connect(link->upstream, &QTcpSocket::disconnected, this, [this, link] {
        link->upstreamClosed = true;
        forwardDown(*link, -1);
    });
    connect(link->upstream, &QTcpSocket::errorOccurred, this, [this, link](QAbstractSocket::SocketError error) {
        // The server is gone: the client sees its connection reset, as it would without us.
        if (error == QAbstractSocket::ConnectionRefusedError)
            drop(link, true);
    });
    link->upstream->connectToHost(QHostAddress::LocalHost, m_upstreamPort);
}

void FaultProxy::forwardUp(Link &link)
{
    if (freezes() || !link.upstream || link.upstream->state() != QAbstractSocket::ConnectedState)
        return;
    link.upstream->write(link.client->readAll());
}

void FaultProxy::forwardDown(Link &link, qint64 limit)
{
    if (freezes() || !link.upstream || (limits() && limit < 0))
        return;
    QByteArray bytes = limit < 0 ? link.upstream->readAll() : link.upstream->read(limit);
    if (m_mode == Mode::cut && link.carriedDown + bytes.size() >= m_cutAfter) {
        link.client->write(bytes.left(m_cutAfter - link.carriedDown));
        link.client->flush();
        ++m_cuts;
        m_mode = Mode::pass;
        drop(&link, true);
        return;
    }
    link.carriedDown += bytes.size();
    link.client->write(bytes);
    if (link.upstreamClosed && link.upstream->bytesAvailable() == 0)
        link.client->disconnectFromHost();
}

void FaultProxy::trickle()
{
    // A late tick carries what the time since the last one allows.
    const qint64 slice = m_mode == Mode::slow ? m_bytesPerSecond : m_bytesPerSecond * m_sinceTrickle.restart() / 1000;
    const QList<Link *> links = m_links;
    for (Link *link : links) {
        if (link->upstream && link->upstream->bytesAvailable() > 0)
            forwardDown(*link, slice);
    }
}

void FaultProxy::drop(Link *link, bool hard)
{
    if (!m_links.removeOne(link))
        return;
    // No signal of theirs may reach a link that is gone.
    for (QTcpSocket *socket : {link->client, link->upstream}) {
        if (!socket)
            continue;
        socket->disconnect(this);
        if (hard)
            resetHard(socket);
        else
            socket->abort();
        socket->deleteLater();
    }
    delete link;
}
