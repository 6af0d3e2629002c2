#pragma once

#include <QCoroTask>
#include <QNetworkAccessManager>
#include <QString>

#include <chrono>
#include <optional>

// Asks a port on this computer whether qBittorrent answers there, and logs in to check a password.
// It has its own network access with no cookies or cache, so it never touches an open connection.
class ProbeSession
{
public:
    enum class Answer {
        qbittorrent, // 200 with a version text
        refusing,    // 401 or 403: qBittorrent, not letting this client in
        otherServer, // any other HTTP answer
        none,        // refused, reset or silent: nothing serves this port
    };
    enum class Login { accepted, rejected, noAnswer };

    struct Timeouts
    {
        std::chrono::milliseconds idle{2'000};
        std::chrono::milliseconds overall{3'000};
    };

    ProbeSession();
    ProbeSession(const ProbeSession &) = delete;
    ProbeSession &operator=(const ProbeSession &) = delete;
    // Ends the requests under way, so that nothing awaiting them is left suspended.
    ~ProbeSession();

    static QString host() { return QStringLiteral("localhost"); }
    QCoro::Task<Answer> probe(int port);
    QCoro::Task<Login> logIn(int port, QString username, QString password);
    // Logs in and asks qBittorrent to quit; false when it did not take the request.
    QCoro::Task<bool> shutDown(int port, QString username, QString password);

    struct Reply; // an answer as the session reads it

private:
    QCoro::Task<Reply> postLogin(int port, const QString &username, const QString &password);

    Timeouts m_timeouts;
    QNetworkAccessManager m_network;
};
