#pragma once

#include "api/Error.h"

#include <QNetworkReply>
#include <QUrl>

#include <optional>

namespace API {

class AutorizationError : public Error
{
public:
    enum class Case { unauthorized, forbidden, badCredentials, invalidAPIKey };

    explicit AutorizationError(Case kind);
    Case kind() const noexcept { return m_case; }

private:
    Case m_case;
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
