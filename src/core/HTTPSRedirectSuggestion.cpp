#include "core/HTTPSRedirectSuggestion.h"

#include "api/Client.h"
#include "api/Errors.h"

#include <QCoreApplication>
#include <QCoroNetworkReply>
#include <QLoggingCategory>
#include <QNetworkAccessManager>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QNetworkReply>
#include <QTimer>

#include <memory>

Q_LOGGING_CATEGORY(lcHTTPSRedirectSuggestion, "HTTPSRedirectSuggestion")

namespace {

// The probe talks to an address the user has not confirmed: nothing it hears may reach a later
// request, and nothing the user's session holds may reach it.
class DiscardingCookieJar : public QNetworkCookieJar
{
public:
    QList<QNetworkCookie> cookiesForUrl(const QUrl &) const override { return {}; }
    bool setCookiesFromUrl(const QList<QNetworkCookie> &, const QUrl &) override { return false; }
};

struct Answer
{
    std::optional<int> status;
    QByteArray location;
};

// Paths of suggestions are stored percent-encoded: parse them as such, so that "%20" stays one space.
QUrl makeURL(const QString &scheme, const ClientConfiguration &configuration, const QString &path)
{
    if (configuration.host.isEmpty() || !configuration.port || *configuration.port <= 0)
        return {};
    QUrl url;
    url.setScheme(scheme);
    url.setHost(configuration.host);
    url.setPort(*configuration.port);
    url.setPath(path, QUrl::TolerantMode);
    return url.isValid() ? url : QUrl();
}

QCoro::Task<Answer> fetch(QNetworkAccessManager &network, QUrl url, HTTPSRedirectSuggestion::ProbeSettings settings)
{
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::UserAgentHeader, API::Client::userAgent());
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setTransferTimeout(static_cast<int>(settings.idle.count()));

    std::unique_ptr<QNetworkReply, void (*)(QNetworkReply *)> reply(network.get(request),
                                                                    [](QNetworkReply *r) { r->deleteLater(); });
    // The secure check proves that TLS works at the new address, not that this system trusts its
    // certificate: a self-signed one is put to the user when the connection opens there. The
    // check carries nothing of the user's.
    QObject::connect(reply.get(), &QNetworkReply::sslErrors, reply.get(), [raw = reply.get()] { raw->ignoreSslErrors(); });
    QTimer::singleShot(settings.overall, reply.get(), &QNetworkReply::abort);
    co_await reply.get();

    Answer answer;
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (status.isValid())
        answer.status = status.toInt();
    answer.location = reply->rawHeader("Location");
    co_return answer;
}

} // namespace

// Qt 6.4 reports SslHandshakeFailedError ("wrong version number") when a plain HTTP server answers
// the TLS hello with an HTTP error, as nginx and other front ends do. qBittorrent itself just closes
// the connection (RemoteHostClosedError), but it never redirects either, and a server that stays
// silent ends in a timeout: neither is worth a probe. An untrusted certificate is a CertificateError,
// which the user is asked about instead.
bool HTTPSRedirectSuggestion::triggersProbe(const ClientConfiguration &configuration, const std::exception &error)
{
    if (!configuration.useHTTPS)
        return false;
    const auto *transport = dynamic_cast<const API::TransportError *>(&error);
    return transport && transport->code() == QNetworkReply::SslHandshakeFailedError;
}

QUrl HTTPSRedirectSuggestion::probeURL(const ClientConfiguration &source)
{
    return makeURL(QStringLiteral("http"), source, API::Client::normalisedBasePath(source.path) + u'/');
}

std::optional<ClientConfiguration> HTTPSRedirectSuggestion::suggestedConfiguration(const ClientConfiguration &source,
                                                                                   int status,
                                                                                   const QByteArray &location)
{
    if (status != 301 && status != 302 && status != 307 && status != 308)
        return std::nullopt;
    const QUrl base = probeURL(source);
    if (location.isEmpty() || !base.isValid())
        return std::nullopt;
    const QUrl target = base.resolved(QUrl::fromEncoded(location));
    if (!target.isValid() || target.scheme().compare(u"https", Qt::CaseInsensitive) != 0 ||
        target.host().compare(source.host, Qt::CaseInsensitive) != 0)
        return std::nullopt;

    ClientConfiguration suggested = source;
    suggested.port = target.port(443);
    QString path = target.path(QUrl::FullyEncoded);
    while (path.endsWith(u'/'))
        path.chop(1);
    suggested.path = path;
    if (suggested == source)
        return std::nullopt;
    return suggested;
}

QUrl HTTPSRedirectSuggestion::secureCheckURL(const ClientConfiguration &suggested)
{
    return makeURL(QStringLiteral("https"), suggested,
                   API::Client::normalisedBasePath(suggested.path) + QStringLiteral("/api/v2/app/version"));
}

// Any answer proves that TLS works there, even one that asks for a login.
bool HTTPSRedirectSuggestion::passesSecureCheck(std::optional<int> status)
{
    if (!status)
        return false;
    using Class = API::Client::StatusClass;
    const Class kind = API::Client::classify(*status);
    return kind != Class::serverError && kind != Class::unknown;
}

QCoro::Task<std::optional<HTTPSRedirectSuggestion>> HTTPSRedirectSuggestion::probe(ClientConfiguration source,
                                                                                   Origin origin, QString error)
{
    return probe(std::move(source), origin, std::move(error), ProbeSettings{});
}

QCoro::Task<std::optional<HTTPSRedirectSuggestion>>
HTTPSRedirectSuggestion::probe(ClientConfiguration source, Origin origin, QString error, ProbeSettings settings)
{
    QNetworkAccessManager network;
    network.setCookieJar(new DiscardingCookieJar);
    network.setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);

    const QUrl plain = probeURL(source);
    if (!plain.isValid())
        co_return std::nullopt;
    const Answer redirect = co_await fetch(network, plain, settings);
    if (!redirect.status)
        co_return std::nullopt;
    std::optional<ClientConfiguration> suggested = suggestedConfiguration(source, *redirect.status, redirect.location);
    if (!suggested)
        co_return std::nullopt;
    const QUrl secure = secureCheckURL(*suggested);
    if (!secure.isValid())
        co_return std::nullopt;
    const Answer check = co_await fetch(network, secure, settings);
    if (!passesSecureCheck(check.status))
        co_return std::nullopt;

    qCInfo(lcHTTPSRedirectSuggestion, "TLS handshake with %s failed, the server redirects to %s. Error: %s",
           qUtf8Printable(displayAddress(source)), qUtf8Printable(displayAddress(*suggested)), qUtf8Printable(error));
    co_return HTTPSRedirectSuggestion{
        .origin = origin, .source = std::move(source), .suggested = std::move(*suggested)};
}

QString HTTPSRedirectSuggestion::displayAddress(const ClientConfiguration &configuration)
{
    QString host = configuration.host;
    if (host.contains(u':') && !host.startsWith(u'['))
        host = u'[' + host + u']';
    QString address = (configuration.useHTTPS ? QStringLiteral("https://") : QStringLiteral("http://")) + host;
    if (configuration.port)
        address += u':' + QString::number(*configuration.port);
    return address + API::Client::normalisedBasePath(configuration.path);
}

QString HTTPSRedirectSuggestion::dialogTitle()
{
    return QCoreApplication::translate("HTTPSRedirectSuggestion", "Use a secure connection address?");
}

QString HTTPSRedirectSuggestion::dialogMessage() const
{
    return QCoreApplication::translate("HTTPSRedirectSuggestion",
                                       "Quillo couldn't establish a secure connection to %1.\n\nThe server answers on "
                                       "this port over plain HTTP and redirects to %2.\n\nThe new address passed the "
                                       "secure connection check.")
        .arg(displayAddress(source), displayAddress(suggested));
}

QString HTTPSRedirectSuggestion::acceptButtonTitle() const
{
    return QCoreApplication::translate("HTTPSRedirectSuggestion", "Use %1").arg(displayAddress(suggested));
}

QString HTTPSRedirectSuggestion::cancelButtonTitle()
{
    return QCoreApplication::translate("HTTPSRedirectSuggestion", "Cancel");
}

ClientConfiguration HTTPSRedirectSuggestion::acceptedConfiguration(const ClientConfiguration &saved) const
{
    ClientConfiguration accepted = saved;
    accepted.port = suggested.port;
    accepted.path = suggested.path;
    accepted.trustedCertificate.clear(); // trusted for the old port; the new one is asked about anew
    return accepted;
}

void HTTPSRedirectSuggestion::logAddressChange(const ClientConfiguration &from, const ClientConfiguration &to)
{
    qCInfo(lcHTTPSRedirectSuggestion, "Connection address changed from %s to %s.", qUtf8Printable(displayAddress(from)),
           qUtf8Printable(displayAddress(to)));
}
