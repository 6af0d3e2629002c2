#pragma once

#include "api/AuthMethod.h"
#include "api/Errors.h"
#include "core/ClientConfiguration.h"
#include "core/HTTPSRedirectSuggestion.h"
#include "core/Session.h"

#include <QCoroTask>
#include <QElapsedTimer>
#include <QObject>

#include <exception>
#include <memory>
#include <optional>

class ConnectionList;
class ErrorReporter;
class KeychainStore;
class Sync;

// Opens the chosen connection and keeps it open: the bypass check, credentials and login, the
// server's versions, the first sync (Connector.cpp), and what a lost or expired connection needs
// (ConnectorRecovery.cpp). It owns the session; every other part reads it from here.
class Connector : public QObject
{
    Q_OBJECT

public:
    enum class ProgressMessage { none, connecting, removal, empty };

    Connector(ConnectionList &connections, KeychainStore &keychain, Sync &sync, ErrorReporter &errors,
              QObject *parent = nullptr);
    ~Connector() override;

    // The open session; none before a connection is chosen and after it is left or logged out of.
    Session *session() const { return m_session.get(); }
    bool isAuthorized() const { return m_session && m_session->isAuthorized(); }
    ProgressMessage progressMessage() const { return m_progressMessage; }
    bool isLoginPromptPresented() const { return m_isLoginPromptPresented; }
    int connectionLossCount() const { return m_connectionLossCount; }
    const QString &connectionError() const { return m_connectionError; }
    bool isReconnecting() const { return m_isReconnecting; }

    // Opens the chosen connection in a new session; `credentials` skips the keychain lookup.
    QCoro::Task<> open(std::optional<API::UserCredentials> credentials = std::nullopt);
    // The login prompt's answer. With `autoLogin` the credentials are kept in the keychain.
    QCoro::Task<> logIn(API::UserCredentials credentials, bool autoLogin);
    void cancelLogin();
    // Ends the session on the server and here; the connection stays chosen, to log in again.
    QCoro::Task<> logOut();
    QCoro::Task<> reconnect();
    // Asks the open session's server whether it still knows this client, at once rather than at
    // the next poll: after a wake from sleep or a change of network.
    QCoro::Task<> checkConnection();
    // Ends the session and forgets what it showed, quietly: nothing of it reaches the user again.
    void close();
    // Ends the session without announcing anything, for the application's end.
    void abandon() { m_session.reset(); }

    // A request of the sync failed: a cancelled one is not a loss, a refused one renews a cookie
    // session.
    void reportSyncFailure(const QString &operation, const std::exception_ptr &error);
    // A failed poll: a lost connection is a loss, anything else one alert under `title`, not one
    // per round.
    void reportPollFailure(const QString &title, const std::exception_ptr &failure);

Q_SIGNALS:
    void stateChanged();
    void loginPromptChanged();
    // A new session began or the last one ended.
    void sessionChanged();
    // The chosen connection could not be reached over plain HTTP in a way that an HTTPS address
    // of the same server might mend.
    void insecureAddressFailed(const ClientConfiguration &configuration, const QString &error,
                               HTTPSRedirectSuggestion::Origin origin);
    // The server presented a certificate that neither the system nor the connection trusts; the
    // connection stays unconnected until the user decides.
    void certificateRefused(const ClientConfiguration &configuration, const API::CertificateError &refusal);

private:
    void reportKeychainFailure(const QString &title);
    // Any request the server answers only to a client it lets in: a header method is proven by the
    // first request it authorises, and a lost connection by the first that gets no answer.
    static QCoro::Task<> askVersion(API::Client &client);
    void replaceSession(std::unique_ptr<Session> session);
    void presentLoginPrompt(bool presented);
    void setProgress(ProgressMessage message);
    // Whether the server lets this client in as it is; none when the check itself failed.
    QCoro::Task<std::optional<bool>> checkAuthorizationBypass(QPointer<Session> session);
    // Shows the login prompt again when the server refused the credentials.
    QCoro::Task<bool> authenticate(QPointer<Session> session);
    QCoro::Task<> finishConnecting(QPointer<Session> session);
    QCoro::Task<> syncAndStartPolling(QPointer<Session> session);
    // A secure connection met plain HTTP: an HTTPS address of the same server may mend it.
    void offerSecureAddressAfter(const std::exception_ptr &error, HTTPSRedirectSuggestion::Origin origin);
    // A refused certificate is a question for the user, not a failure to report: true when `error`
    // was one, and polling stops until the user answers.
    bool askAboutCertificate(const std::exception_ptr &error);

    ConnectionList &m_connections;
    KeychainStore &m_keychain;
    Sync &m_sync;
    ErrorReporter &m_errors;
    std::unique_ptr<Session> m_session;
    ProgressMessage m_progressMessage = ProgressMessage::none;
    bool m_isLoginPromptPresented = false;
    bool m_isReconnecting = false;
    int m_connectionLossCount = 0;
    QString m_connectionError;
    QElapsedTimer m_lastSessionRenewal; // monotonic
};
