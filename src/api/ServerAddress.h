#pragma once

#include "api/AuthMethod.h"

#include <QString>

#include <optional>

namespace API {

// Where a server is and how it wants to be asked: all the request layer needs of a connection.
struct ServerAddress
{
    QString host;
    std::optional<int> port;
    QString path; // base path of the WebUI behind a reverse proxy; empty for the root
    bool useHTTPS = false;
    AuthMethod authMethod = AuthMethod::cookieLogin;
    // SHA-256 (hex) of the one certificate accepted beyond the system's trust; empty for none.
    QString trustedCertificate;

    // Whether requests can be sent at all: a host and a port other than 0.
    bool isComplete() const { return !host.isEmpty() && port && *port != 0; }

    friend bool operator==(const ServerAddress &, const ServerAddress &) = default;
};

} // namespace API
