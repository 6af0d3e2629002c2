#include "core/InstanceChannel.h"

#include "api/AppInfo.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcInstanceChannel, "InstanceChannel")

namespace {

constexpr int connectTimeoutMs = 1000;
constexpr int writeTimeoutMs = 3000;

} // namespace

InstanceChannel::InstanceChannel(QString name, QObject *parent)
    : QObject(parent)
    , m_name(std::move(name))
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &InstanceChannel::accept);
}

QString InstanceChannel::defaultName()
{
    // The socket lives in a folder shared by every user: the name keeps each user's apart.
    return QString::fromUtf16(AppInfo::id) + u'-' + qEnvironmentVariable("USER", QStringLiteral("user"));
}

bool InstanceChannel::sendToRunning(const QStringList &sources, const QString &name)
{
    QLocalSocket socket;
    socket.connectToServer(name);
    if (!socket.waitForConnected(connectTimeoutMs))
        return false;
    socket.write(QJsonDocument(QJsonArray::fromStringList(sources)).toJson(QJsonDocument::Compact));
    if (!socket.waitForBytesWritten(writeTimeoutMs))
        return false;
    socket.disconnectFromServer();
    return socket.state() == QLocalSocket::UnconnectedState || socket.waitForDisconnected(writeTimeoutMs);
}

bool InstanceChannel::listen()
{
    if (m_server.listen(m_name))
        return true;
    // A socket left by an instance that crashed: nobody answered on it, so it can go.
    QLocalServer::removeServer(m_name);
    if (m_server.listen(m_name))
        return true;
    qCWarning(lcInstanceChannel, "Cannot listen as %s: %s", qUtf8Printable(m_name),
              qUtf8Printable(m_server.errorString()));
    return false;
}

void InstanceChannel::accept()
{
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        // The message is whole once the sender has gone, which it may already have.
        if (socket->state() == QLocalSocket::UnconnectedState)
            read(socket);
        else
            connect(socket, &QLocalSocket::disconnected, this, [this, socket] { read(socket); });
    }
}

void InstanceChannel::read(QLocalSocket *socket)
{
    const QJsonDocument message = QJsonDocument::fromJson(socket->readAll());
    socket->deleteLater();
    if (!message.isArray()) {
        qCWarning(lcInstanceChannel, "Ignored a message that is not a list of sources");
        return;
    }
    QStringList sources;
    const QJsonArray array = message.array();
    for (const QJsonValue &value : array)
        sources << value.toString();
    Q_EMIT received(sources);
}
