#pragma once

#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/FakeServer.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QWidget>

#include <memory>

// A fresh context over a throwaway settings file, and a server that wants the login form with
// admin / secret unless `bypass` is on.
struct ConnectionFixture
{
    QTemporaryDir dir;
    FakeServer server;
    bool bypass = false;
    UserDefaults defaults{dir.filePath(QStringLiteral("Quillo.ini"))};
    KeychainStore &keychain;
    std::unique_ptr<AppContext> context;

    explicit ConnectionFixture(KeychainStore &store)
        : keychain(store)
        , context(std::make_unique<AppContext>(defaults, keychain))
    {
        server.setHandler([this](const FakeServer::Request &request) {
            using Response = FakeServer::Response;
            if (request.target.endsWith("/auth/login")) {
                if (request.body != "username=admin&password=secret")
                    return Response::text(200, "Fails.");
                Response ok = Response::text(200, "Ok.");
                ok.headers.append({QByteArray("Set-Cookie"), QByteArray("SID=s1; HttpOnly; path=/")});
                return ok;
            }
            if (!bypass && !request.header("Cookie").contains("SID=s1"))
                return Response::text(403, "Forbidden");
            if (request.target.endsWith("/app/version"))
                return Response::text(200, "v4.5.2");
            if (request.target.endsWith("/app/webapiVersion"))
                return Response::text(200, "2.8.19");
            if (request.target.endsWith("/sync/maindata"))
                return Response::json(R"({"rid":1,"full_update":true,"server_state":{"connection_status":"connected"}})");
            if (request.target.endsWith("/app/buildInfo"))
                return Response::json(
                    R"({"qt":"6.4.2","libtorrent":"2.0.8.0","boost":"1.74.0","openssl":"3.0.9","bitness":64})");
            return Response::text(200, "");
        });
    }

    ~ConnectionFixture()
    {
        // Dialogs and alerts left open by a failed check must not outlive the context they use.
        for (QWidget *widget : QApplication::topLevelWidgets())
            delete widget;
        context.reset();
    }

    ClientConfiguration add(const QString &name, API::AuthMethod method = API::AuthMethod::cookieLogin,
                            quint16 port = 0)
    {
        ClientConfiguration configuration = server.configuration(method);
        configuration.name = name;
        if (port)
            configuration.port = port;
        context->addConfiguration(configuration);
        return configuration;
    }
};
