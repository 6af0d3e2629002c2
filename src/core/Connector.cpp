#include "core/Connector.h"

#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "core/ConnectionList.h"
#include "core/ErrorReporter.h"
#include "core/HTTPSRedirectSuggestion.h"
#include "core/KeychainStore.h"
#include "core/Sync.h"
#include "support/Captured.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTimer>

Q_LOGGING_CATEGORY(lcConnector, "AppContext")

using API::AuthMethod;
using API::UserCredentials;

QCoro::Task<> Connector::askVersion(API::Client &client)
{
    QCoro::Task<QByteArray> request = client.perform(API::Endpoint::Application::version());
    co_await std::move(request);
}

Connector::Connector(ConnectionList &connections, KeychainStore &keychain, Sync &sync, ErrorReporter &errors,
                     QObject *parent)
    : QObject(parent)
    , m_connections(connections)
    , m_keychain(keychain)
    , m_sync(sync)
    , m_errors(errors)
{
    QObject::connect(&m_sync, &Sync::failed, this, &Connector::reportPollFailure);
}

Connector::~Connector()
{
    // What was begun for the session resumes now and finds it gone, while everything else is here.
    abandon();
}

void Connector::replaceSession(std::unique_ptr<Session> session)
{
    m_sync.follow(session.get());
    // The old session goes now: whatever was begun for it resumes, finds it gone and ends quietly.
    m_session = std::move(session);
    m_connectionLossCount = 0;
    m_connectionError.clear();
    m_isReconnecting = false;
    presentLoginPrompt(false);
    Q_EMIT sessionChanged();
}

void Connector::close()
{
    replaceSession(nullptr);
    m_progressMessage = ProgressMessage::none;
    Q_EMIT stateChanged();
}

void Connector::presentLoginPrompt(bool presented)
{
    if (m_isLoginPromptPresented == presented)
        return;
    m_isLoginPromptPresented = presented;
    Q_EMIT loginPromptChanged();
}

void Connector::setProgress(ProgressMessage message)
{
    m_progressMessage = message;
    Q_EMIT stateChanged();
}

QCoro::Task<> Connector::open(std::optional<UserCredentials> credentials)
{
    if (!m_connections.selected())
        co_return;
    replaceSession(std::make_unique<Session>(*m_connections.selected()));
    const QPointer<Session> session = m_session.get();
    setProgress(ProgressMessage::connecting);

    // The bypass check comes first: a server that lets this client in needs no credentials at all.
    QCoro::Task<std::optional<bool>> bypass = checkAuthorizationBypass(session);
    const std::optional<bool> bypassed = co_await std::move(bypass);
    if (!session)
        co_return;
    if (!bypassed) {
        setProgress(ProgressMessage::none);
        co_return;
    }
    if (!*bypassed) {
        const ClientConfiguration configuration = *m_connections.selected();
        const AuthMethod method = configuration.authMethod;
        if (method == AuthMethod::none) {
            m_errors.report(
                QCoreApplication::translate("Connector", "Failed to login."),
                std::make_exception_ptr(API::AutorizationError(API::AutorizationError::Case::unauthorized)));
            setProgress(ProgressMessage::none);
            co_return;
        }
        if (!credentials && configuration.autoLogin) {
            QCoro::Task<std::optional<UserCredentials>> reading = m_keychain.read(configuration);
            credentials = co_await std::move(reading);
            if (!session)
                co_return;
            // The prompt follows: the password typed there logs in whatever the keyring's state.
            reportKeychainFailure(
                QCoreApplication::translate("Connector", "Quillo couldn't read the saved password from the keyring."));
            if (credentials && credentials->isMissing(method))
                credentials.reset();
        }
        if (!credentials) {
            qCInfo(lcConnector, "Saved credentials not found. Showing login view.");
            m_progressMessage = ProgressMessage::none;
            presentLoginPrompt(true);
            Q_EMIT stateChanged();
            co_return;
        }
        qCInfo(lcConnector, "Found saved credentials for %s. Logging in...", qUtf8Printable(API::rawText(method)));
        session->client().setCredentials(*credentials);
        QCoro::Task<bool> login = authenticate(session);
        const bool authenticated = co_await std::move(login);
        if (!session)
            co_return;
        if (!authenticated) {
            setProgress(ProgressMessage::none);
            co_return;
        }
    }
    session->setAuthorized();
    QCoro::Task<> finishing = finishConnecting(session);
    co_await std::move(finishing);
}

QCoro::Task<std::optional<bool>> Connector::checkAuthorizationBypass(QPointer<Session> session)
{
    qCInfo(lcConnector, "Checking authorization bypass...");
    QCoro::Task<Captured<void>> asking = captured(askVersion(session->client()));
    const Captured<void> answer = co_await std::move(asking);
    if (!session)
        co_return std::nullopt;
    if (answer) {
        qCInfo(lcConnector, "Authorization bypass %s", "enabled");
        co_return true;
    }
    if (askAboutCertificate(answer.error))
        co_return std::nullopt;
    // A banned or rejected address is refused whoever asks: no login can mend it.
    const auto refused = thrown<API::AutorizationError>(answer.error);
    using Refusal = API::AutorizationError::Case;
    if (!refused || refused->kind() == Refusal::addressRejected || refused->kind() == Refusal::forbidden) {
        m_errors.report(QCoreApplication::translate("Connector", "Failed to check authorization bypass."),
                        answer.error);
        offerSecureAddressAfter(answer.error, HTTPSRedirectSuggestion::Origin::currentConnection);
        co_return std::nullopt;
    }
    qCInfo(lcConnector, "Authorization bypass %s", "disabled");
    co_return false;
}

QCoro::Task<bool> Connector::authenticate(QPointer<Session> session)
{
    qCInfo(lcConnector, "Loggin in...");
    API::Client &client = session->client();
    QCoro::Task<> attempt = session->authMethod() == AuthMethod::cookieLogin ? client.login() : askVersion(client);
    QCoro::Task<Captured<void>> trying = captured(std::move(attempt));
    const Captured<void> answer = co_await std::move(trying);
    if (!session)
        co_return false;
    qCInfo(lcConnector, "Loggin in %s.", answer ? "success" : "failed");
    if (!answer) {
        if (askAboutCertificate(answer.error))
            co_return false;
        m_errors.report(QCoreApplication::translate("Connector", "Failed to login."), answer.error);
        // Other credentials may mend a refusal, not a ban or a rejected address.
        using Refusal = API::AutorizationError::Case;
        if (const auto refused = thrown<API::AutorizationError>(answer.error);
            refused && refused->kind() != Refusal::forbidden && refused->kind() != Refusal::addressRejected)
            presentLoginPrompt(true);
        co_return false;
    }
    qCInfo(lcConnector, "Loggin in success.");
    co_return true;
}

QCoro::Task<> Connector::finishConnecting(QPointer<Session> session)
{
    const auto failed = [this](const QString &title, const std::exception_ptr &error) {
        m_errors.report(title, error);
        setProgress(ProgressMessage::none);
    };
    QCoro::Task<Captured<QString>> askingVersion = captured(session->client().version());
    const Captured<QString> version = co_await std::move(askingVersion);
    if (!session)
        co_return;
    if (!version) {
        failed(QCoreApplication::translate("Connector", "Failed to get QBt version."), version.error);
        co_return;
    }
    qCInfo(lcConnector, "qBt version: %s", qUtf8Printable(*version.value));
    QCoro::Task<Captured<API::WebAPIVersion>> askingAPI = captured(session->client().webapiVersion());
    const Captured<API::WebAPIVersion> apiVersion = co_await std::move(askingAPI);
    if (!session)
        co_return;
    if (!apiVersion) {
        failed(QCoreApplication::translate("Connector", "Failed to get web API version."), apiVersion.error);
        co_return;
    }
    session->setVersions(*version.value, *apiVersion.value);
    qCInfo(lcConnector, "Web API version: %s", qUtf8Printable(apiVersion.value->toString()));

    QCoro::Task<Captured<API::BuildInfo>> askingBuild = captured(session->client().buildInfo());
    Captured<API::BuildInfo> buildInfo = co_await std::move(askingBuild);
    if (!session)
        co_return;
    if (buildInfo) // nothing depends on it: a server that cannot say is still usable
        session->setBuildInfo(std::move(*buildInfo.value));
    else
        qCWarning(lcConnector, "Build info unavailable: %s", whatOf(buildInfo.error).constData());
    setProgress(ProgressMessage::none);
    QCoro::Task<> first = syncAndStartPolling(session);
    co_await std::move(first);
}

bool Connector::askAboutCertificate(const std::exception_ptr &error)
{
    const auto refusal = thrown<API::CertificateError>(error);
    if (!refusal || !m_connections.selected())
        return false;
    m_sync.stopPolling();
    setProgress(ProgressMessage::none);
    // The session ends once the request that met the certificate has returned: nothing more goes
    // to that server, and a trusted certificate opens a new session.
    QTimer::singleShot(0, this, [this, session = QPointer<Session>(m_session.get())] {
        if (session && session == m_session.get())
            close();
    });
    Q_EMIT certificateRefused(*m_connections.selected(), *refusal);
    return true;
}

void Connector::offerSecureAddressAfter(const std::exception_ptr &error, HTTPSRedirectSuggestion::Origin origin)
{
    const ClientConfiguration &configuration = *m_connections.selected();
    if (const auto transport = thrown<API::TransportError>(error);
        transport && HTTPSRedirectSuggestion::triggersProbe(configuration, *transport))
        Q_EMIT insecureAddressFailed(configuration, transport->description(), origin);
}

// With the automatic interval, the pause comes from the server's answer: one sync comes first.
QCoro::Task<> Connector::syncAndStartPolling(QPointer<Session> session)
{
    qCInfo(lcConnector, "Sync and start polling");
    const int losses = m_connectionLossCount;
    QCoro::Task<> first = m_sync.syncOnce();
    co_await std::move(first);
    if (!session)
        co_return;
    // A lost connection or a renewal of the session under way restarts polling by itself.
    if (m_connectionLossCount != losses || m_isReconnecting || m_sync.isPolling())
        co_return;
    m_sync.startPolling(Poller::FirstRound::afterPause);
}

QCoro::Task<> Connector::logIn(UserCredentials credentials, bool autoLogin)
{
    const QPointer<Session> session = m_session.get();
    if (!session || !m_connections.selected())
        co_return;
    presentLoginPrompt(false);
    setProgress(ProgressMessage::connecting);
    session->client().setCredentials(credentials);
    QCoro::Task<bool> login = authenticate(session);
    const bool authenticated = co_await std::move(login);
    if (!session)
        co_return;
    if (!authenticated) {
        setProgress(ProgressMessage::none);
        co_return;
    }
    m_connections.setAutoLogin(autoLogin);
    const ClientConfiguration configuration = *m_connections.selected();
    if (autoLogin) {
        QCoro::Task<bool> saving = m_keychain.save(configuration, credentials);
        if (!co_await std::move(saving))
            reportKeychainFailure(QCoreApplication::translate(
                "Connector", "Quillo couldn't save the password to the keyring. It will be asked for next time."));
    } else {
        QCoro::Task<bool> removing = m_keychain.remove(configuration);
        co_await std::move(removing);
    }
    if (!session)
        co_return;
    session->setAuthorized();
    QCoro::Task<> finishing = finishConnecting(session);
    co_await std::move(finishing);
}

void Connector::reportKeychainFailure(const QString &title)
{
    if (const auto &failure = m_keychain.lastFailure())
        m_errors.report(title, std::make_exception_ptr(*failure));
}

void Connector::cancelLogin()
{
    qCInfo(lcConnector, "Loggin in cancelled.");
    presentLoginPrompt(false);
    setProgress(ProgressMessage::none);
}

QCoro::Task<> Connector::logOut()
{
    const QPointer<Session> session = m_session.get();
    if (!session)
        co_return;
    qCInfo(lcConnector, "Logging out...");
    m_sync.stopPolling();
    QCoro::Task<Captured<void>> leaving = captured(session->client().logout());
    const Captured<void> answer = co_await std::move(leaving);
    if (!session)
        co_return;
    if (!answer)
        m_errors.report(QCoreApplication::translate("Connector", "Failed to logout."), answer.error);
    // The connection stays chosen, to log in again; what the server showed is no longer current.
    replaceSession(nullptr);
    Q_EMIT stateChanged();
}
