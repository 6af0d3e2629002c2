#pragma once

#include "api/Records.h"
#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/FakeServer.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

// A context connected through the bypass to a scripted server with three torrents that differ
// where the torrent operations look: done ("aaa"), all but done ("bbb"), just begun ("ccc"), or
// with the torrents of `syncAnswer`. Every other request gets `operationStatus` with an empty body.
struct ScriptedTorrents
{
    QTemporaryDir dir;
    KeychainStore keychain;
    FakeServer server;
    UserDefaults defaults{dir.filePath(QStringLiteral("Quillo.ini"))};
    std::unique_ptr<AppContext> context;
    QByteArray apiVersion;
    QByteArray syncAnswer; // what every poll gets
    int operationStatus = 200;

    static QByteArray mainData()
    {
        return R"({"rid":1,"full_update":true,
            "torrents":{
              "aaa":{"name":"Done","progress":1.0,"state":"stoppedUP","category":"","tags":"x",
                     "save_path":"/data","magnet_uri":"magnet:?xt=urn:btih:aaa","size":2048},
              "bbb":{"name":"Nearly","progress":0.9999,"state":"stoppedDL","category":"films","tags":"",
                     "save_path":"/data","magnet_uri":"magnet:?xt=urn:btih:bbb","size":1024},
              "ccc":{"name":"Begun","progress":0.1,"state":"queuedDL","category":"","tags":"x, y",
                     "save_path":"/other","magnet_uri":"magnet:?xt=urn:btih:ccc","size":512}},
            "categories":{"films":{"name":"films","savePath":"/films"}},
            "tags":["x","y"],
            "server_state":{"connection_status":"connected"}})";
    }

    explicit ScriptedTorrents(QByteArray version = "2.11.0", QByteArray answer = mainData())
        : apiVersion(std::move(version))
        , syncAnswer(std::move(answer))
    {
        using Response = FakeServer::Response;
        server.setHandler([this](const FakeServer::Request &request) {
            if (request.target.endsWith("/app/webapiVersion"))
                return Response::text(200, apiVersion);
            if (request.target.endsWith("/app/version"))
                return Response::text(200, "v5.0.0");
            if (request.target.contains("/sync/maindata"))
                return Response::json(syncAnswer);
            if (request.target.endsWith("/app/buildInfo"))
                return Response::json(
                    R"({"qt":"6.7.2","libtorrent":"2.0.10.0","boost":"1.83","openssl":"3.0","bitness":64})");
            return Response::text(operationStatus, "");
        });
        context = std::make_unique<AppContext>(defaults, keychain);
        const ClientConfiguration configuration = server.configuration(API::AuthMethod::none);
        context->addConfiguration(configuration);
        QuilloTest::wait(context->selectConfiguration(configuration.id));
        QTRY_COMPARE(context->tntCollection().size(), API::decodeMainData(syncAnswer).tnts.size());
        server.clearRequests();
    }

    ~ScriptedTorrents() { context.reset(); }

    // The newest request other than a poll: path, "?", form body.
    // The last request the user's action sent: polls and the detail pane's reads are left out.
    QByteArray lastRequest() const
    {
        static const QByteArrayList reads{"/sync/", "/torrents/properties", "/torrents/trackers", "/torrents/webseeds",
                                          "/torrents/files", "/torrents/pieceStates"};
        const auto isRead = [](const FakeServer::Request &r) {
            return std::any_of(reads.cbegin(), reads.cend(), [&r](const QByteArray &read) { return r.target.contains(read); });
        };
        const auto &requests = server.requests();
        const auto found = std::find_if(requests.crbegin(), requests.crend(), [&isRead](const auto &r) { return !isRead(r); });
        return found == requests.crend() ? QByteArray() : found->target + '?' + found->body;
    }

    const TntModel &tnt(const char *hash) const { return *context->tntCollection().find(QString::fromLatin1(hash)); }
};
