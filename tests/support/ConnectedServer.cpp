#include "support/ConnectedServer.h"

#include "api/Endpoint.h"
#include "core/AppContext.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"

#include <QFile>
#include <QJsonDocument>

using QuilloTest::wait;

ConnectedServer::StartResult ConnectedServer::start(QbtServer::Flavor flavor, QbtServer::Options options)
{
    QbtServer::StartResult started = QbtServer::start(flavor, options);
    if (!started.server)
        return {nullptr, started.failure, started.skipAlways};
    std::unique_ptr<ConnectedServer> connected(new ConnectedServer(std::move(started.server)));
    if (!options.localHostAuth)
        connected->connect(API::AuthMethod::none, std::nullopt);
    return {std::move(connected), {}, false};
}

ConnectedServer::ConnectedServer(std::unique_ptr<QbtServer> server)
    : m_server(std::move(server))
    , m_client(std::make_unique<API::Client>(m_server->configuration()))
{
    m_client->setCredentials(m_server->credentials());
    wait(m_client->login());
    m_apiVersion = wait(m_client->webapiVersion());
}

ConnectedServer::~ConnectedServer()
{
    disconnect();
    m_client.reset();
    m_server.reset();
}

void ConnectedServer::connect(API::AuthMethod method, const std::optional<API::UserCredentials> &stored,
                              const Route &via)
{
    disconnect();
    const QString settings = m_files.filePath(QStringLiteral("Quillo.ini"));
    QFile::remove(settings);
    m_defaults = std::make_unique<UserDefaults>(settings);
    m_context = std::make_unique<AppContext>(*m_defaults, m_keychain);
    ClientConfiguration configuration = m_server->configuration();
    configuration.authMethod = method;
    if (via.port != 0) {
        configuration.port = via.port;
        configuration.path = via.path;
    }
    if (stored)
        wait(m_keychain.save(configuration, *stored));
    else if (method != API::AuthMethod::none) // only a login asks the keychain
        wait(m_keychain.remove(configuration));
    m_context->addConfiguration(configuration);
    wait(m_context->selectConfiguration(configuration.id));
}

void ConnectedServer::reopen(const std::function<void()> &whileClosed)
{
    m_window.reset();
    m_context.reset();
    whileClosed();
    m_context = std::make_unique<AppContext>(*m_defaults, m_keychain);
    for (const ClientConfiguration &configuration : m_context->clientConfigurations()) {
        if (configuration.isCurrent)
            wait(m_context->selectConfiguration(configuration.id));
    }
}

void ConnectedServer::disconnect()
{
    m_window.reset();
    m_context.reset();
    m_defaults.reset();
}

QString ConnectedServer::alert() const
{
    if (!m_context || !m_context->clientError())
        return {};
    const API::ClientError &error = *m_context->clientError();
    return error.title() + u'|' + error.description() + u'|' + error.failureReason();
}

bool ConnectedServer::ready() const
{
    return !m_context || m_context->isAuthorized();
}

QJsonObject ConnectedServer::torrent(const QString &hash)
{
    const QByteArray body = wait(m_client->perform(API::Endpoint::Sync::maindata(0)));
    return QJsonDocument::fromJson(body).object().value(u"torrents").toObject().value(hash).toObject();
}
