#pragma once

#include "api/ServerAddress.h"

#include <QDateTime>
#include <QUuid>

#include <optional>

// One saved connection to a qBittorrent server.
struct ClientConfiguration
{
    QUuid id = QUuid::createUuid();
    QString name;
    QString host;
    std::optional<int> port;
    QString path; // base path of the WebUI behind a reverse proxy; empty for the root
    bool useHTTPS = false;
    bool isCurrent = false;
    QDateTime addedDate = QDateTime::currentDateTimeUtc();
    bool autoLogin = true;
    API::AuthMethod authMethod = API::AuthMethod::cookieLogin;
    bool isLocal = false;
    // SHA-256 (hex) of the self-signed or otherwise untrusted certificate the user chose to trust for
    // this address; empty for none. Not a secret: it is what the server shows everyone.
    QString trustedCertificate;

    // Where requests go. Implicit, so that a saved connection can open a client; the request layer
    // never sees the saved record itself.
    operator API::ServerAddress() const // NOLINT(google-explicit-constructor)
    {
        return {.host = host, .port = port, .path = path, .useHTTPS = useHTTPS, .authMethod = authMethod,
                .trustedCertificate = trustedCertificate};
    }

    // Identity, creation time and the trusted certificate do not make two connections different.
    friend bool operator==(const ClientConfiguration &a, const ClientConfiguration &b)
    {
        return a.name == b.name && a.host == b.host && a.port == b.port && a.path == b.path
            && a.useHTTPS == b.useHTTPS && a.isCurrent == b.isCurrent && a.autoLogin == b.autoLogin
            && a.authMethod == b.authMethod && a.isLocal == b.isLocal;
    }
};
