#include "api/Errors.h"

#include <QCoreApplication>

namespace API {

namespace {

QString autorizationDescription(AutorizationError::Case kind)
{
    switch (kind) {
    case AutorizationError::Case::unauthorized: return QCoreApplication::translate("Errors", "You are not authorized!");
    case AutorizationError::Case::forbidden: return QCoreApplication::translate("Errors", "Forbidden!");
    case AutorizationError::Case::badCredentials:
        return QCoreApplication::translate("Errors", "Invalid username or password!");
    case AutorizationError::Case::invalidAPIKey: return QCoreApplication::translate("Errors", "Invalid API key!");
    case AutorizationError::Case::addressRejected:
        return QCoreApplication::translate("Errors", "The server rejects this address!");
    }
    Q_UNREACHABLE();
}

QString autorizationReason(AutorizationError::Case kind, const QString &host)
{
    switch (kind) {
    case AutorizationError::Case::unauthorized: return QCoreApplication::translate("Errors", "Authorization required.");
    case AutorizationError::Case::forbidden:
        return QCoreApplication::translate(
            "Errors", "Your IP address has been banned after too many failed authentication attempts.");
    case AutorizationError::Case::badCredentials:
        return QCoreApplication::translate("Errors", "Invalid username or password!");
    case AutorizationError::Case::invalidAPIKey:
        return QCoreApplication::translate("Errors", "The API key is invalid or has been revoked. "
                                                     "API keys are supported by qBittorrent 5.2 and later.");
    case AutorizationError::Case::addressRejected:
        return QCoreApplication::translate(
                   "Errors",
                   "qBittorrent answers every request for \"%1\" with \"Unauthorized\": its Web UI checks the "
                   "address a client uses, and this one is not among its server domains (or the port differs "
                   "from the one it listens on, as behind a forwarded port). Add %1 to the server domains in the "
                   "Web UI options, or turn off its Host header validation.")
            .arg(host);
    }
    Q_UNREACHABLE();
}

struct TntTexts
{
    QString description;
    QString reason;
};

TntTexts tntTexts(TntManagmentError::Case kind, const QString &path)
{
    using C = TntManagmentError::Case;
    switch (kind) {
    case C::writeAccessDenied:
        return {QCoreApplication::translate("Errors", "You do not have write access to %1").arg(path),
                QCoreApplication::translate("Errors", "The server cannot write to this folder.")};
    case C::failedCreateDirectory:
        return {QCoreApplication::translate("Errors", "An error occurred while setting the torrent location!"),
                QCoreApplication::translate("Errors", "The server could not create the folder %1.").arg(path)};
    case C::hashNotFound:
        return {QCoreApplication::translate("Errors", "Torrent not found!"),
                QCoreApplication::translate("Errors", "The torrent is no longer on the server.")};
    case C::queueingDisabled:
        return {QCoreApplication::translate("Errors", "Torrent queueing is disabled!"),
                QCoreApplication::translate(
                    "Errors", "Turn on torrent queueing in the server's settings to change queue positions.")};
    case C::missingParameter:
        return {QCoreApplication::translate("Errors", "An unexpected error occurred!"),
                QCoreApplication::translate("Errors", "The server refused the request's parameters.")};
    case C::fileIdNotValid:
        return {QCoreApplication::translate("Errors", "Invalid file!"),
                QCoreApplication::translate("Errors", "The torrent has no file with this index.")};
    case C::metadataNotDownloaded:
        return {
            QCoreApplication::translate("Errors", "Torrent metadata is not downloaded yet!"),
            QCoreApplication::translate("Errors", "Try again when the server has received the torrent's metadata.")};
    case C::invalideFile:
        return {QCoreApplication::translate("Errors", "Failed to add torrent!"),
                QCoreApplication::translate("Errors", "The torrent file is not valid.")};
    case C::addingRejected:
        return {QCoreApplication::translate("Errors", "Failed to add torrent!"),
                QCoreApplication::translate("Errors", "The server added nothing: the torrent may already be there.")};
    case C::invalidSource:
        return {QCoreApplication::translate("Errors", "Invalid torrent source!"),
                QCoreApplication::translate("Errors",
                                            "The link is neither a magnet link, a torrent URL nor an info-hash.")};
    case C::badNewURL:
        return {QCoreApplication::translate("Errors", "Invalid tracker URL!"),
                QCoreApplication::translate("Errors", "The new tracker URL is not valid.")};
    case C::trackerAlreadyExistOrNotFound:
        return {QCoreApplication::translate("Errors", "Failed to edit tracker!"),
                QCoreApplication::translate(
                    "Errors", "The new URL is already a tracker of this torrent, or the old one is gone.")};
    }
    Q_UNREACHABLE();
}

} // namespace

AutorizationError::AutorizationError(Case kind, const QString &serverText, const QString &host)
    : Error(autorizationDescription(kind), serverText.isEmpty() ? autorizationReason(kind, host) : serverText)
    , m_case(kind)
{}

namespace {

QString certificateReason(const ServerCertificate &presented, const QString &trusted, const QString &address,
                          const QString &systemVerdict)
{
    if (trusted.isEmpty())
        return QCoreApplication::translate("Errors",
                                           "%1 presented a certificate that this system does not trust (%2).\n\n%3")
            .arg(address, systemVerdict, presented.details());
    return QCoreApplication::translate("Errors",
                                       "%1 presented another certificate than the one trusted for this connection.\n\n"
                                       "Trusted SHA-256: %2\nPresented SHA-256: %3\n\n"
                                       "A server that got a new certificate looks like this, and so does someone "
                                       "intercepting the connection. Trust the new certificate only if you know that "
                                       "it was replaced.\n\n%4")
        .arg(address, ServerCertificate::displayFingerprint(trusted),
             ServerCertificate::displayFingerprint(presented.sha256), presented.details());
}

} // namespace

CertificateError::CertificateError(ServerCertificate presented, QString trusted, const QString &address,
                                   const QString &systemVerdict)
    : Error(trusted.isEmpty() ? QCoreApplication::translate("Errors", "The server's certificate is not trusted!")
                              : QCoreApplication::translate("Errors", "The server's certificate has changed!"),
            certificateReason(presented, trusted, address, systemVerdict))
    , m_presented(std::move(presented))
    , m_trusted(std::move(trusted))
{}

NetworkError::NetworkError(Case kind, QString description, QString failureReason, std::optional<QUrl> target)
    : Error(std::move(description), std::move(failureReason))
    , m_case(kind)
    , m_target(std::move(target))
{}

NetworkError NetworkError::invalideResponse(const std::optional<QUrl> &url)
{
    return {Case::invalideResponse, QCoreApplication::translate("Errors", "The server returned an invalid response!"),
            url ? QCoreApplication::translate("Errors", "URL: ") + url->toString() : QString()};
}

NetworkError NetworkError::urlBuildError(const QString &scheme, const QString &host, std::optional<int> port,
                                         const QString &path)
{
    const QString portText = port ? QString::number(*port) : QStringLiteral("nil");
    return {Case::urlBuildError, QCoreApplication::translate("Errors", "Unable to build url!"),
            QStringLiteral("scheme: %1\nhost: %2\nport: %3\npath: %4").arg(scheme, host, portText, path)};
}

NetworkError NetworkError::redirectBlocked(const std::optional<QUrl> &target)
{
    QString reason =
        QCoreApplication::translate("Errors", "For security, Quillo doesn't follow redirects to another host or from "
                                              "HTTPS to HTTP. Check the connection address.");
    if (target)
        reason += QCoreApplication::translate("Errors", "\n\nRedirect target: ") + target->toString();
    return {Case::redirectBlocked,
            QCoreApplication::translate("Errors", "The server redirected the request to another address!"), reason,
            target};
}

NetworkError NetworkError::unknown(const Error &wrapped)
{
    return {Case::unknown, QCoreApplication::translate("Errors", "An unexpected error occurred!"),
            wrapped.description()};
}

NetworkError NetworkError::connectionError()
{
    return {Case::connectionError, QCoreApplication::translate("Errors", "Connection error!"),
            QCoreApplication::translate("Errors", "Check network or client configuration.")};
}

NetworkError NetworkError::disconnected()
{
    return {Case::disconnected, QCoreApplication::translate("Errors", "Quillo is not connected to qBt!"),
            QCoreApplication::translate("Errors", "Click on the lock icon in the top right corner to connect.")};
}

ResponseDecodingError::ResponseDecodingError(std::optional<QString> decoderError)
    : Error(decoderError ? QCoreApplication::translate("Errors", "Could not decode JSON data")
                         : QCoreApplication::translate("Errors", "Could not decode response data to string!"),
            decoderError.value_or(QString()))
    , m_decoderError(std::move(decoderError))
{}

TntManagmentError::TntManagmentError(Case kind, const QString &path, const QString &serverMessage,
                                     const QString &description)
    : Error(description.isEmpty() ? tntTexts(kind, path).description : description,
            serverMessage.isEmpty() ? tntTexts(kind, path).reason : serverMessage)
    , m_case(kind)
{}

TransportError::TransportError(QNetworkReply::NetworkError code, const QString &message, bool timedOut)
    : Error(message, timedOut ? QCoreApplication::translate("Errors", "The server did not answer in time.") : QString())
    , m_code(code)
    , m_timedOut(timedOut)
{}

RefusalError::RefusalError(const QString &serverText)
    : Error(QCoreApplication::translate("Errors", "The server refused the change."), serverText)
{}

SearchError::SearchError(Case kind, const QString &serverText)
    : Error(kind == Case::notFound ? QCoreApplication::translate("Errors", "The server no longer knows this search.")
                                   : QCoreApplication::translate("Errors", "The server refused the search request."),
            serverText)
    , m_case(kind)
{}

} // namespace API
