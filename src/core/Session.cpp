#include "core/Session.h"

#include "api/Client.h"

Session::Session(const ClientConfiguration &configuration, QObject *parent)
    : QObject(parent)
    , m_client(new API::Client(configuration, this))
{}

Session::~Session() = default;

API::AuthMethod Session::authMethod() const
{
    return m_client->address().authMethod;
}

void Session::setVersions(QString qbtVersion, API::WebAPIVersion webAPIVersion)
{
    m_qbtVersion = std::move(qbtVersion);
    m_features = API::ServerFeatures(webAPIVersion);
}
