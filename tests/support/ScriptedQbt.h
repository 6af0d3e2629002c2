#pragma once

#include "api/AuthMethod.h"
#include "support/FakeServer.h"

namespace QuilloTest {

inline const API::UserCredentials admin{QStringLiteral("admin"), QStringLiteral("s3cret&=pässword"), {}};
inline const QString apiKey = QStringLiteral("qbt_0123456789abcdef");

// A server that behaves like qBittorrent where the connection lifecycle looks: it answers the version, web API
// version and build info; everything but login needs a session cookie, a correct Authorization
// header, or the bypass.
struct ScriptedQbt
{
    bool bypass = false;
    int loginStatus = 200; // 204 as qBittorrent 5.2 answers
    int logins = 0;
    QByteArray session = "abc"; // a new one when the server restarts

    using Response = FakeServer::Response;

    Response answer(const FakeServer::Request &request)
    {
        const QByteArray target = request.target;
        if (target.endsWith("/auth/login")) {
            ++logins;
            const bool right = request.body == "username=admin&password=s3cret%26%3Dp%C3%A4ssword";
            if (!right)
                return Response::text(200, "Fails.");
            Response ok = Response::text(loginStatus, loginStatus == 204 ? "" : "Ok.");
            ok.headers.append({QByteArray("Set-Cookie"), "SID=" + session + "; HttpOnly; path=/"});
            return ok;
        }
        const QByteArray authorization = request.header("Authorization");
        const bool basicRight = authorization == "Basic " + QByteArray("admin:s3cret&=pässword").toBase64();
        const bool keyRight = authorization == "Bearer " + apiKey.toUtf8();
        const bool cookieRight = request.header("Cookie").contains("SID=" + session);
        if (!bypass && !basicRight && !keyRight && !cookieRight) {
            if (authorization.startsWith("Basic "))
                return Response::text(401, "");
            return Response::text(403, "Forbidden");
        }
        if (target.endsWith("/app/version"))
            return Response::text(200, "v5.2.0");
        if (target.endsWith("/app/webapiVersion"))
            return Response::text(200, "2.15.1");
        if (target.endsWith("/sync/maindata"))
            return Response::json(R"({"rid":1,"full_update":true,"server_state":{"connection_status":"connected",)"
                                  R"("refresh_interval":1500}})");
        if (target.endsWith("/app/buildInfo"))
            return Response::json(R"({"qt":"6.9.1","libtorrent":"2.0.11.0","boost":"1.88.0","openssl":"3.5.0","bitness":64})");
        return Response::text(200, "");
    }
};

} // namespace QuilloTest
