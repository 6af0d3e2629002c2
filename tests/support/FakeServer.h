#pragma once

#include "core/ClientConfiguration.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPair>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QPointer>
#include <QSslKey>
#include <QTcpServer>

#include <chrono>
#include <functional>
#include <optional>

class QTcpSocket;

// A scripted HTTP/1.1 server on 127.0.0.1 for what no real server here does: newer login answers,
// header authentication, redirects, 5xx, missing, dropped or garbled answers. It records every request.
// It speaks plain HTTP unless made with a certificate, and then HTTPS only. A plain one answers a TLS
// hello with 400 and closes, as nginx does.
class FakeServer : public QObject
{
    Q_OBJECT

public:
    using Headers = QList<QPair<QByteArray, QByteArray>>;

    struct Request
    {
        QByteArray method;
        QByteArray target; // path and query as sent
        Headers headers;
        QByteArray body;

        QByteArray header(const QByteArray &name) const; // case-insensitive; empty when absent
        bool hasHeader(const QByteArray &name) const;
    };

    struct Response
    {
        enum class Kind { answer, drop, stall, raw };

        Kind kind = Kind::answer;
        int status = 200;
        QByteArray body;
        Headers headers;
        std::chrono::milliseconds delay{0}; // an answer this long in the making, as a busy server's

        static Response text(int status, const QByteArray &body);
        static Response json(const QByteArray &body);
        static Response redirect(int status, const QByteArray &location);
        static Response dropConnection();
        static Response stallForever();
        static Response rawBytes(const QByteArray &bytes);
    };

    using Handler = std::function<Response(const Request &)>;

    struct Tls
    {
        QSslCertificate certificate;
        QSslKey key;
    };

    explicit FakeServer(QObject *parent = nullptr);
    explicit FakeServer(const Tls &tls, QObject *parent = nullptr);

    // A self-signed certificate for 127.0.0.1, made once per process with the openssl tool; none,
    // with the reason in `whyNot`, when that fails.
    static std::optional<Tls> selfSignedTls(QString *whyNot = nullptr);
    // A client configuration that trusts `tls` and verifies everything else as usual.
    static QSslConfiguration trusting(const Tls &tls);

    quint16 port() const { return m_server.serverPort(); }
    // Speaks HTTPS with `tls`, or plain HTTP without, on the same port from now on; the connections
    // open now are dropped, as a restarted front end does.
    void setTls(std::optional<Tls> tls);
    ClientConfiguration configuration(API::AuthMethod method = API::AuthMethod::cookieLogin) const;

    // Every request gets the handler's answer; by default 200 with the body "Ok.".
    void setHandler(Handler handler) { m_handler = std::move(handler); }
    const Handler &handler() const { return m_handler; }
    void answerAll(const Response &response);
    // Answers the requests stalled so far (stallForever), as a server that was only slow.
    void answerStalled(const Response &response);

    const QList<Request> &requests() const { return m_requests; }
    void clearRequests() { m_requests.clear(); }

private:
    void accept();
    void readFrom(QTcpSocket *socket);
    void respond(QTcpSocket *socket, const Response &response);

    class Listener : public QTcpServer
    {
    public:
        std::optional<Tls> tls;

    protected:
        void incomingConnection(qintptr descriptor) override;
    };

    void listen();

    Listener m_server;
    Handler m_handler;
    QList<Request> m_requests;
    QList<QPointer<QTcpSocket>> m_stalled;
};
