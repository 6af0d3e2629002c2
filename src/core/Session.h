#pragma once

#include "api/BuildInfo.h"
#include "api/ServerFeatures.h"
#include "core/ClientConfiguration.h"

#include <QObject>

namespace API {
class Client;
}

// One opened connection: its client, and what the server said of itself. It lives from choosing a
// connection until it is left, logged out of, deleted or opened again; whatever was begun for it
// holds a QPointer to it and ends quietly once that is null. The client is a child, so it is gone
// (and its requests cancelled) only after every such pointer already reads null.
class Session : public QObject
{
    Q_OBJECT

public:
    explicit Session(const ClientConfiguration &configuration, QObject *parent = nullptr);
    ~Session() override;

    API::Client &client() const { return *m_client; }
    API::AuthMethod authMethod() const;

    // Whether the server lets this client in: by the bypass, a login or a header that was accepted.
    bool isAuthorized() const { return m_isAuthorized; }
    void setAuthorized() { m_isAuthorized = true; }

    const QString &qbtVersion() const { return m_qbtVersion; }
    const API::WebAPIVersion &webAPIVersion() const { return m_features.version(); }
    const API::ServerFeatures &features() const { return m_features; }
    const API::BuildInfo &buildInfo() const { return m_buildInfo; }
    void setVersions(QString qbtVersion, API::WebAPIVersion webAPIVersion);
    void setBuildInfo(API::BuildInfo buildInfo) { m_buildInfo = std::move(buildInfo); }

private:
    API::Client *m_client;
    bool m_isAuthorized = false;
    QString m_qbtVersion;
    API::ServerFeatures m_features;
    API::BuildInfo m_buildInfo;
};
