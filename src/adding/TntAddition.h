#pragma once

#include "api/ServerFeatures.h"
#include "api/TntAddingOptions.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <chrono>
#include <exception>
#include <functional>

namespace API {
class Client;
}
class TntCollection;

// Adding torrents, to the end: the upload, and for a torrent whose files are chosen or a magnet
// from the add window, waiting until the server lists it, so that its files can be set and a magnet
// the server lost can be added again.
class TntAddition : public QObject
{
    Q_OBJECT

public:
    // The server a request goes to, lent by the open session; everything ends quietly once
    // `session` is gone. No session: the connection is down.
    struct Server
    {
        QPointer<QObject> session;
        API::Client *client = nullptr;
        API::ServerFeatures features;
    };

    struct Request
    {
        API::TntAddingOptions options;
        bool start = true;
        // With the torrent's hash, `filePriorities` (per file, in index order) reach every server:
        // sent along with a link where the server reads them; otherwise the torrent is added
        // stopped, given them once it appears, and then started if `start` asks.
        QString hash;
        QList<int> filePriorities;
    };

    // `poll` asks for a sync now; `start` starts a listed torrent.
    TntAddition(TntCollection &tnts, std::function<void()> poll, std::function<QCoro::Task<>(QString)> start,
                QObject *parent = nullptr);

    // False when the server refused or the connection went; failures are reported through `failed`.
    QCoro::Task<bool> add(Server server, Request request);

Q_SIGNALS:
    // A cancelled request is among them: a log out or a lost connection tell the user themselves.
    void failed(const QString &title, const std::exception_ptr &error);

private:
    QCoro::Task<bool> upload(Server server, API::TntAddingOptions options);
    // Whether the torrent is listed by the time given; false too when the session went.
    QCoro::Task<bool> isListedWithin(Server server, QString hash, std::chrono::milliseconds within);
    // The same, a minute at most, and a torrent that never comes is reported.
    QCoro::Task<bool> awaitTnt(Server server, QString hash);
    QCoro::Task<bool> addMagnetMakingSureItIsListed(Server server, API::TntAddingOptions options, QString hash);
    QCoro::Task<bool> setFilePriorities(Server server, QString hash, QList<int> priorities);

    TntCollection &m_tnts;
    std::function<void()> m_poll;
    std::function<QCoro::Task<>(QString)> m_start;
};
