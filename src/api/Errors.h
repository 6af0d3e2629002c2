#pragma once

#include "api/Error.h"
#include "api/ServerCertificate.h"

#include <QNetworkReply>
#include <QUrl>

#include <optional>

namespace API {

class AutorizationError : public Error
{
public:
    // `addressRejected`: the server refuses every request sent to this address (its Host header
    // check), whoever asks.
    enum class Case { unauthorized, forbidden, badCredentials, invalidAPIKey, addressRejected };

    // `serverText`, when the server explained a ban in its own words, becomes the failure reason;
    // `host` names the refused address.
    explicit AutorizationError(Case kind, const QString &serverText = {}, const QString &host = {});
    Case kind() const noexcept { return m_case; }

private:
    Case m_case;
};

// The server's certificate is not one this connection can accept: the system does not trust it and
// it is not the certificate trusted for this connection before. Nothing was sent to that server.
class CertificateError : public Error
{
public:
    enum class Case {
        untrusted, // nothing was trusted for this connection yet
        changed,   // another certificate was
    };

    // `trusted` is the SHA-256 the connection trusts, empty when none; `systemVerdict` why the system
    // does not trust the certificate, in its own words.
    CertificateError(ServerCertificate presented, QString trusted, const QString &address,
                     const QString &systemVerdict);

    Case kind() const noexcept { return m_trusted.isEmpty() ? Case::untrusted : Case::changed; }
    const ServerCertificate &presented() const noexcept { return m_presented; }
    const QString &trusted() const noexcept { return m_trusted; }

private:
    ServerCertificate m_presented;
    QString m_trusted;
};

class NetworkError : public Error
{
public:
    enum class Case { invalideResponse, urlBuildError, redirectBlocked, unknown, connectionError, disconnected };

    static NetworkError invalideResponse(const std::optional<QUrl> &url);
    static NetworkError urlBuildError(const QString &scheme, const QString &host, std::optional<int> port,
                                      const QString &path);
    static NetworkError redirectBlocked(const std::optional<QUrl> &target);
    static NetworkError unknown(const Error &wrapped);
    static NetworkError connectionError();
    static NetworkError disconnected();

    Case kind() const noexcept { return m_case; }
    // The blocked redirect's destination, when the server named one.
    const std::optional<QUrl> &redirectTarget() const noexcept { return m_target; }

private:
    NetworkError(Case kind, QString description, QString failureReason, std::optional<QUrl> target = {});

    Case m_case;
    std::optional<QUrl> m_target;
};

class ResponseDecodingError : public Error
{
public:
    // Without a reason the body was not UTF-8 text; with one, the JSON did not decode.
    explicit ResponseDecodingError(std::optional<QString> decoderError = std::nullopt);
    const std::optional<QString> &decoderError() const noexcept { return m_decoderError; }

private:
    std::optional<QString> m_decoderError;
};

// A change of the server's own settings that it refused, in its own words ("WebUI username must be
// at least 3 characters long").
class RefusalError : public Error
{
public:
    explicit RefusalError(const QString &serverText);
};

// A search request the server would not carry out: 409 when it cannot (no Python, too many searches
// at once, an offset past the results), 404 for a job it does not know (deleted, or the server
// started again), 400 for a missing parameter.
class SearchError : public Error
{
public:
    enum class Case { refused, notFound, badRequest };

    SearchError(Case kind, const QString &serverText);
    Case kind() const noexcept { return m_case; }

private:
    Case m_case;
};

class TntManagmentError : public Error
{
public:
    enum class Case {
        writeAccessDenied,
        failedCreateDirectory,
        hashNotFound,
        queueingDisabled,
        missingParameter,
        fileIdNotValid,
        metadataNotDownloaded,
        invalideFile,
        addingRejected,
        invalidSource,
        badNewURL,
        trackerAlreadyExistOrNotFound,
    };

    // `path` is the folder of the two path cases. `serverMessage`, when the server explained
    // itself, becomes the failure reason; `description` replaces the case's own heading where
    // the operation has a more telling one ("Failed to create category!").
    explicit TntManagmentError(Case kind, const QString &path = {}, const QString &serverMessage = {},
                               const QString &description = {});
    Case kind() const noexcept { return m_case; }

private:
    Case m_case;
};

// No HTTP answer at all: the connection failed, timed out or was cancelled by us. Kept apart from
// NetworkError so that the connection logic can tell a cancelled request from a lost server.
class TransportError : public Error
{
public:
    TransportError(QNetworkReply::NetworkError code, const QString &message, bool timedOut = false);

    QNetworkReply::NetworkError code() const noexcept { return m_code; }
    bool isCancelled() const noexcept { return m_code == QNetworkReply::OperationCanceledError && !m_timedOut; }
    bool isTimeout() const noexcept { return m_timedOut || m_code == QNetworkReply::TimeoutError; }

private:
    QNetworkReply::NetworkError m_code;
    bool m_timedOut;
};

} // namespace API
