#include "support/FakeServer.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSslSocket>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTimer>

namespace {

constexpr const char *bufferProperty = "fakeServer.buffer";

QByteArray reasonPhrase(int status)
{
    switch (status) {
    case 200: return "OK";
    case 204: return "No Content";
    case 301: return "Moved Permanently";
    case 302: return "Found";
    case 307: return "Temporary Redirect";
    case 400: return "Bad Request";
    case 401: return "Unauthorized";
    case 403: return "Forbidden";
    case 404: return "Not Found";
    case 409: return "Conflict";
    case 415: return "Unsupported Media Type";
    case 500: return "Internal Server Error";
    case 503: return "Service Unavailable";
    default: return "Status";
    }
}

} // namespace

QByteArray FakeServer::Request::header(const QByteArray &name) const
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

bool FakeServer::Request::hasHeader(const QByteArray &name) const
{
    return std::any_of(headers.cbegin(), headers.cend(),
                       [&name](const auto &pair) { return pair.first.compare(name, Qt::CaseInsensitive) == 0; });
}

FakeServer::Response FakeServer::Response::text(int status, const QByteArray &body)
{
    return {.status = status, .body = body, .headers = {{"Content-Type", "text/plain; charset=UTF-8"}}};
}

FakeServer::Response FakeServer::Response::json(const QByteArray &body)
{
    return {.status = 200, .body = body, .headers = {{"Content-Type", "application/json"}}};
}

FakeServer::Response FakeServer::Response::redirect(int status, const QByteArray &location)
{
    Response response{.status = status};
    if (!location.isEmpty())
        response.headers.append({"Location", location});
    return response;
}

FakeServer::Response FakeServer::Response::dropConnection()
{
    return {.kind = Kind::drop};
}

FakeServer::Response FakeServer::Response::stallForever()
{
    return {.kind = Kind::stall};
}

FakeServer::Response FakeServer::Response::rawBytes(const QByteArray &bytes)
{
    return {.kind = Kind::raw, .body = bytes};
}

FakeServer::FakeServer(QObject *parent)
    : QObject(parent)
    , m_handler([](const Request &) { return Response::text(200, "Ok."); })
{
    listen();
}

FakeServer::FakeServer(const Tls &tls, QObject *parent)
    : QObject(parent)
    , m_handler([](const Request &) { return Response::text(200, "Ok."); })
{
    m_server.tls = tls;
    listen();
}

void FakeServer::listen()
{
    connect(&m_server, &QTcpServer::newConnection, this, &FakeServer::accept);
    if (!m_server.listen(QHostAddress::LocalHost, 0))
        qFatal("FakeServer: cannot listen on loopback: %s", qPrintable(m_server.errorString()));
}

void FakeServer::setTls(std::optional<Tls> tls)
{
    m_server.tls = std::move(tls);
    for (QTcpSocket *socket : findChildren<QTcpSocket *>(Qt::FindDirectChildrenOnly))
        socket->abort();
}

void FakeServer::Listener::incomingConnection(qintptr descriptor)
{
    if (!tls) {
        QTcpServer::incomingConnection(descriptor);
        return;
    }
    auto *socket = new QSslSocket(this);
    if (!socket->setSocketDescriptor(descriptor)) {
        delete socket;
        return;
    }
    socket->setLocalCertificate(tls->certificate);
    socket->setPrivateKey(tls->key);
    addPendingConnection(socket);
    socket->startServerEncryption();
}

std::optional<FakeServer::Tls> FakeServer::selfSignedTls(QString *whyNot)
{
    static const auto made = []() -> std::pair<std::optional<Tls>, QString> {
        QTemporaryDir dir;
        if (!dir.isValid())
            return {std::nullopt, QStringLiteral("no temporary folder: ") + dir.errorString()};
        const QString keyPath = dir.filePath(QStringLiteral("key.pem"));
        const QString certificatePath = dir.filePath(QStringLiteral("certificate.pem"));
        QProcess openssl;
        openssl.start(QStringLiteral("openssl"),
                      {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                       QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-subj"),
                       QStringLiteral("/CN=127.0.0.1"), QStringLiteral("-addext"),
                       QStringLiteral("subjectAltName=IP:127.0.0.1"), QStringLiteral("-days"), QStringLiteral("1"),
                       QStringLiteral("-keyout"), keyPath, QStringLiteral("-out"), certificatePath});
        if (!openssl.waitForFinished(60'000) || openssl.exitStatus() != QProcess::NormalExit || openssl.exitCode() != 0)
            return {std::nullopt, QStringLiteral("openssl could not make a certificate: ") + openssl.errorString() +
                                      u' ' + QString::fromLocal8Bit(openssl.readAllStandardError())};
        QFile keyFile(keyPath);
        QFile certificateFile(certificatePath);
        if (!keyFile.open(QIODevice::ReadOnly) || !certificateFile.open(QIODevice::ReadOnly))
            return {std::nullopt, QStringLiteral("openssl left no certificate")};
        Tls tls{QSslCertificate(certificateFile.readAll()), QSslKey(keyFile.readAll(), QSsl::Rsa)};
        if (tls.certificate.isNull() || tls.key.isNull())
            return {std::nullopt, QStringLiteral("openssl's certificate or key does not load")};
        return {tls, QString()};
    }();
    if (whyNot)
        *whyNot = made.second;
    return made.first;
}

QSslConfiguration FakeServer::trusting(const Tls &tls)
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.addCaCertificate(tls.certificate);
    return configuration;
}

ClientConfiguration FakeServer::configuration(API::AuthMethod method) const
{
    ClientConfiguration configuration;
    configuration.name = QStringLiteral("Fake");
    configuration.host = QStringLiteral("127.0.0.1");
    configuration.port = port();
    configuration.authMethod = method;
    configuration.useHTTPS = m_server.tls.has_value();
    return configuration;
}

void FakeServer::answerAll(const Response &response)
{
    m_handler = [response](const Request &) { return response; };
}

void FakeServer::answerStalled(const Response &response)
{
    for (const QPointer<QTcpSocket> &socket : std::exchange(m_stalled, {})) {
        if (socket)
            respond(socket, response);
    }
}

void FakeServer::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        socket->setParent(this);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readFrom(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void FakeServer::readFrom(QTcpSocket *socket)
{
    QByteArray buffer = socket->property(bufferProperty).toByteArray() + socket->readAll();
    // 0x16 opens a TLS handshake record: an HTTPS client met a plain server.
    if (!m_server.tls && buffer.startsWith('\x16')) {
        socket->write("HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
        socket->disconnectFromHost();
        return;
    }
    // Keep-alive: one socket may carry several requests; answer each complete one in order.
    for (;;) {
        const qsizetype headerEnd = buffer.indexOf("\r\n\r\n");
        if (headerEnd < 0)
            break;
        const QList<QByteArray> lines = buffer.left(headerEnd).split('\n');
        const QList<QByteArray> requestLine = lines.first().trimmed().split(' ');
        Request request;
        request.method = requestLine.value(0);
        request.target = requestLine.value(1);
        qsizetype contentLength = 0;
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const QByteArray line = lines[i].trimmed();
            const qsizetype colon = line.indexOf(':');
            if (colon <= 0)
                continue;
            const QByteArray key = line.left(colon).trimmed();
            const QByteArray value = line.mid(colon + 1).trimmed();
            request.headers.append({key, value});
            if (key.compare("Content-Length", Qt::CaseInsensitive) == 0)
                contentLength = value.toLongLong();
        }
        const qsizetype bodyStart = headerEnd + 4;
        if (buffer.size() - bodyStart < contentLength)
            break;
        request.body = buffer.mid(bodyStart, contentLength);
        buffer.remove(0, bodyStart + contentLength);
        m_requests.append(request);

        respond(socket, m_handler(request));
    }
    socket->setProperty(bufferProperty, buffer);
}

void FakeServer::respond(QTcpSocket *socket, const Response &response)
{
    if (response.delay > std::chrono::milliseconds(0)) {
        Response now = response;
        now.delay = {};
        QTimer::singleShot(response.delay, socket, [this, socket, now] { respond(socket, now); });
        return;
    }
    switch (response.kind) {
    case Response::Kind::drop: socket->abort(); return;
    case Response::Kind::stall: m_stalled << socket; return;
    case Response::Kind::raw:
        socket->write(response.body);
        socket->disconnectFromHost();
        return;
    case Response::Kind::answer: break;
    }
    QByteArray bytes = "HTTP/1.1 " + QByteArray::number(response.status) + ' ' + reasonPhrase(response.status) + "\r\n";
    for (const auto &[key, value] : response.headers)
        bytes += key + ": " + value + "\r\n";
    bytes += "Content-Length: " + QByteArray::number(response.body.size()) + "\r\n\r\n";
    bytes += response.body;
    socket->write(bytes);
}
