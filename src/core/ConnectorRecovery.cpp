#include "core/Connector.h"

#include "api/Client.h"
#include "api/Errors.h"
#include "core/ErrorReporter.h"
#include "core/Sync.h"
#include "support/Captured.h"
#include "support/Detached.h"

#include <QCoreApplication>
#include <QLoggingCategory>

// The connector's other half: what a failed request, a lost connection or an expired session
// needs, from the first failure to the reconnection the overlay's countdown asks for.

Q_DECLARE_LOGGING_CATEGORY(lcConnector)

using API::AuthMethod;
using API::UserCredentials;

namespace {

// What a request that found no server says of it: no answer at all, or a 5xx, which is what a
// reverse proxy answers for a server behind it that is down. None for any other failure, and for a
// request we cancelled ourselves.
std::optional<QString> lossOf(const std::exception_ptr &error)
{
    if (const auto transport = thrown<API::TransportError>(error))
        return transport->isCancelled() ? std::nullopt : std::optional(transport->description());
    if (const auto network = thrown<API::NetworkError>(error);
        network && network->kind() == API::NetworkError::Case::connectionError)
        return network->description();
    return std::nullopt;
}

} // namespace

void Connector::reportPollFailure(const QString &title, const std::exception_ptr &failure)
{
    // An expired session ends polling too: see reportSyncFailure.
    if (thrown<API::TransportError>(failure) || lossOf(failure) || thrown<API::AutorizationError>(failure) ||
        thrown<API::CertificateError>(failure))
        reportSyncFailure(QStringLiteral("Sync"), failure);
    else
        m_errors.reportOnce(title, failure);
}

void Connector::reportSyncFailure(const QString &operation, const std::exception_ptr &error)
{
    if (askAboutCertificate(error))
        return;
    if (const auto transport = thrown<API::TransportError>(error); transport && transport->isCancelled())
        return;
    if (const std::optional<QString> lost = lossOf(error)) {
        qCWarning(lcConnector, "%s Connection lost: %s", qUtf8Printable(operation), whatOf(error).constData());
        m_connectionError = *lost;
        m_sync.stopPolling();
        ++m_connectionLossCount;
        Q_EMIT stateChanged();
        return;
    }
    if (const auto refused = thrown<API::AutorizationError>(error)) {
        // The server no longer knows this client (it restarted, or the session timed out): every
        // later poll would be refused too. A cookie session is renewed at once, unless the last
        // renewal was just now, which would make a loop of logins against a server that keeps refusing.
        qCWarning(lcConnector, "%s Error: %s", qUtf8Printable(operation), refused->what());
        m_sync.stopPolling();
        constexpr qint64 renewalPause = 60'000;
        if (m_session && m_session->authMethod() == AuthMethod::cookieLogin &&
            (!m_lastSessionRenewal.isValid() || m_lastSessionRenewal.hasExpired(renewalPause))) {
            m_lastSessionRenewal.start();
            detached(reconnect());
            return;
        }
        m_connectionError = refused->description();
        ++m_connectionLossCount;
        Q_EMIT stateChanged();
        return;
    }
    qCWarning(lcConnector, "%s Error: %s", qUtf8Printable(operation), whatOf(error).constData());
}

QCoro::Task<> Connector::checkConnection()
{
    const QPointer<Session> session = m_session.get();
    if (!session || !session->isAuthorized() || m_isReconnecting)
        co_return;
    qCInfo(lcConnector, "Checking the connection...");
    QCoro::Task<Captured<void>> asking = captured(askVersion(session->client()));
    const Captured<void> answer = co_await std::move(asking);
    if (!session)
        co_return;
    if (answer) {
        m_sync.forcePoll(); // what changed meanwhile shows at once
        co_return;
    }
    offerSecureAddressAfter(answer.error, HTTPSRedirectSuggestion::Origin::connectionCheck);
    reportSyncFailure(QStringLiteral("Connection check"), answer.error);
}

QCoro::Task<> Connector::reconnect()
{
    const QPointer<Session> session = m_session.get();
    if (!session || m_isReconnecting)
        co_return;
    qCInfo(lcConnector, "Reconnecting...");
    m_isReconnecting = true;
    Q_EMIT stateChanged();
    QCoro::Task<Captured<void>> asking = captured(askVersion(session->client()));
    const Captured<void> answer = co_await std::move(asking);
    if (!session)
        co_return;
    m_isReconnecting = false;
    if (askAboutCertificate(answer.error)) {
        Q_EMIT stateChanged();
        co_return;
    }
    if (answer) {
        qCInfo(lcConnector, "Session is still valid.");
        m_connectionLossCount = 0;
        m_connectionError.clear();
        Q_EMIT stateChanged();
        QCoro::Task<> first = syncAndStartPolling(session);
        co_await std::move(first);
        co_return;
    }
    if (thrown<API::AutorizationError>(answer.error) && session->authMethod() == AuthMethod::cookieLogin) {
        qCInfo(lcConnector, "Session expired. Logging in again...");
        std::optional<UserCredentials> known = session->client().credentials();
        if (known->isMissing(AuthMethod::cookieLogin))
            known.reset();
        QCoro::Task<> opening = open(std::move(known));
        co_await std::move(opening);
        co_return;
    }
    if (lossOf(answer.error)) {
        qCWarning(lcConnector, "Reconnection failed: connection is still lost.");
        ++m_connectionLossCount; // the next countdown is longer
    } else {
        qCWarning(lcConnector, "Reconnection failed: authorization required.");
    }
    Q_EMIT stateChanged();
    // The countdown tries again and again while the server stays away: the alert shown says so.
    m_errors.reportOnce(QCoreApplication::translate("ConnectorRecovery", "Failed to reconnect."), answer.error);
}
