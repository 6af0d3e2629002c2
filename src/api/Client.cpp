#include "api/Client.h"

#include "api/AppInfo.h"
#include "api/Endpoint.h"
#include "api/Errors.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QCoroNetworkReply>
#include <QHostAddress>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QNetworkReply>
#include <QPointer>
#include <QSslError>
#include <QStringDecoder>
#include <QTimer>
#include <QtConcurrent/QtConcurrentRun>

#include <exception>
#include <optional>

Q_LOGGING_CATEGORY(lcClient, "API.Client")

namespace API {

namespace {

// Why a reply ended without an HTTP answer of its own, when we ended it.
enum class EndedBy { none, idleTimeout, overallTimeout, redirectRefused };
constexpr const char *endedByProperty = "quillo.endedBy";
constexpr const char *refusedTargetProperty = "quillo.refusedTarget";
constexpr const char *refusedCertificateProperty = "quillo.refusedCertificate";
constexpr const char *certificateVerdictProperty = "quillo.certificateVerdict";

void endReply(QNetworkReply *reply, EndedBy reason)
{
    reply->setProperty(endedByProperty, static_cast<int>(reason));
    reply->abort();
}

// QFuture carries only QException types across threads; the outcome carries any exception.
template <typename T> struct DecodeOutcome
{
    std::optional<T> value;
    std::exception_ptr error;
};

// A plain function, not a coroutine: GCC 12 mishandles a coroutine parameter moved into a lambda.
template <typename T> QFuture<DecodeOutcome<T>> decodeOnWorker(const QByteArray &body, T (*decode)(const QByteArray &))
{
    return QtConcurrent::run(
        [decode](const QByteArray &bytes) {
            DecodeOutcome<T> outcome;
            try {
                outcome.value = decode(bytes);
            } catch (...) {
                outcome.error = std::current_exception();
            }
            return outcome;
        },
        body);
}

template <typename T> T takeOutcome(DecodeOutcome<T> outcome)
{
    if (outcome.error)
        std::rethrow_exception(outcome.error);
    return std::move(*outcome.value);
}

} // namespace

bool wantsCompression(const QString &host)
{
    QString name = host.trimmed().toLower();
    if (name.startsWith(u'[') && name.endsWith(u']'))
        name = name.mid(1, name.size() - 2);
    if (name.endsWith(u'.'))
        name.chop(1);
    if (name == u"localhost" || name.endsWith(u".localhost"))
        return false;

    QHostAddress address;
    if (!address.setAddress(name))
        return true;
    bool isMapped = false;
    const quint32 mapped = address.toIPv4Address(&isMapped);
    if (isMapped)
        address = QHostAddress(mapped);
    return !address.isLoopback();
}

Client::Client(ServerAddress address, QObject *parent)
    : QObject(parent)
    , m_address(std::move(address))
{
    m_network.setCache(nullptr);
}

Client::~Client()
{
    cancelAll();
}

Client::StatusClass Client::classify(int status)
{
    const auto in = [status](int low, int high) { return status >= low && status <= high; };
    if (in(100, 102))
        return StatusClass::informational;
    if (in(200, 208) || status == 226)
        return StatusClass::success;
    if (in(300, 308))
        return StatusClass::redirection;
    if (in(400, 418) || in(421, 424) || status == 426 || status == 428 || status == 429 || status == 431 ||
        status == 444 || status == 451 || in(495, 497) || status == 499)
        return StatusClass::clientError;
    if (in(500, 508) || status == 510 || status == 511)
        return StatusClass::serverError;
    return StatusClass::unknown;
}

QString Client::normalisedBasePath(const QString &path)
{
    QString base = path.trimmed();
    while (base.endsWith(u'/'))
        base.chop(1);
    if (!base.isEmpty() && !base.startsWith(u'/'))
        base.prepend(u'/');
    return base;
}

QString Client::userAgent()
{
    return QString::fromUtf16(AppInfo::name) + QStringLiteral(" v.") + QString::fromUtf16(AppInfo::version) +
           QStringLiteral(" (") + QString::fromUtf16(AppInfo::buildNumber) + QStringLiteral(")");
}

QString Client::decodeText(const QByteArray &body)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(body);
    if (decoder.hasError())
        throw ResponseDecodingError();
    return text;
}

void Client::cancelAll()
{
    // abort() finishes the reply at once, which removes it from the set: iterate over a copy.
    const auto replies = m_inFlight;
    for (QNetworkReply *reply : replies)
        reply->abort();
}

QNetworkReply *Client::send(const APIEndpoint &endpoint, const QUrl &url)
{
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::UserAgentHeader, userAgent());
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    // Qt asks for gzip unless told otherwise; an explicit encoding also stops it inflating.
    if (!wantsCompression(url.host()))
        request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, m_redirectPolicy.followsSameHost
                                                                       ? QNetworkRequest::UserVerifiedRedirectPolicy
                                                                       : QNetworkRequest::ManualRedirectPolicy);
    if (!endpoint.contentType.isEmpty())
        request.setHeader(QNetworkRequest::ContentTypeHeader, endpoint.contentType);

    switch (m_address.authMethod) {
    case AuthMethod::none:
    case AuthMethod::cookieLogin: break;
    case AuthMethod::basic:
        if (!m_credentials.username.isEmpty() && !m_credentials.password.isEmpty()) {
            const QByteArray pair = (m_credentials.username + u':' + m_credentials.password).toUtf8();
            request.setRawHeader("Authorization", "Basic " + pair.toBase64());
        }
        break;
    case AuthMethod::apiKey:
        if (!m_credentials.apiKey.isEmpty())
            request.setRawHeader("Authorization", "Bearer " + m_credentials.apiKey.toUtf8());
        break;
    }

    QNetworkReply *reply = m_network.sendCustomRequest(request, methodWord(endpoint.method), endpoint.body);
    m_inFlight.insert(reply);
    connect(reply, &QNetworkReply::finished, this, [this, reply] { m_inFlight.remove(reply); });

    auto *idle = new QTimer(reply);
    idle->setSingleShot(true);
    idle->callOnTimeout(reply, [reply] { endReply(reply, EndedBy::idleTimeout); });
    idle->start(m_timeouts.idle);
    const auto stillAlive = [idle](qint64, qint64) { idle->start(); };
    connect(reply, &QNetworkReply::downloadProgress, idle, stillAlive);
    connect(reply, &QNetworkReply::uploadProgress, idle, stillAlive);
    QTimer::singleShot(m_timeouts.overall, reply, [reply] { endReply(reply, EndedBy::overallTimeout); });

    connect(reply, &QNetworkReply::sslErrors, reply, [this, reply](const QList<QSslError> &errors) {
        QSslCertificate presented = reply->sslConfiguration().peerCertificate();
        for (const QSslError &error : errors) {
            if (presented.isNull())
                presented = error.certificate();
        }
        // The pin is the whole of the trust: the certificate the user saw and accepted, whatever
        // the system thinks of its name or issuer.
        if (!m_address.trustedCertificate.isEmpty() &&
            ServerCertificate::sha256Of(presented) == m_address.trustedCertificate) {
            reply->ignoreSslErrors();
            return;
        }
        QStringList verdict;
        for (const QSslError &error : errors)
            verdict.append(error.errorString());
        reply->setProperty(refusedCertificateProperty, QVariant::fromValue(presented));
        reply->setProperty(certificateVerdictProperty, verdict.join(QStringLiteral("; ")));
    });

    if (m_redirectPolicy.followsSameHost) {
        // Each hop is judged against the one before it.
        connect(reply, &QNetworkReply::redirected, reply, [this, reply, from = url](const QUrl &target) mutable {
            const QUrl resolved = from.resolved(target);
            if (m_redirectPolicy.allows(from, resolved)) {
                from = resolved;
                Q_EMIT reply->redirectAllowed();
            } else {
                reply->setProperty(refusedTargetProperty, resolved);
                endReply(reply, EndedBy::redirectRefused);
            }
        });
    }
    return reply;
}

QCoro::Task<QByteArray> Client::perform(APIEndpoint endpoint)
{
    const ServerAddress &address = m_address;
    if (!address.isComplete())
        co_return QByteArray();

    const QString scheme = address.useHTTPS ? QStringLiteral("https") : QStringLiteral("http");
    const QString path = normalisedBasePath(address.path) + QStringLiteral("/api/v2/") + endpoint.path();
    QUrl url;
    url.setScheme(scheme);
    url.setHost(address.host);
    url.setPort(*address.port);
    url.setPath(path);
    if (!url.isValid() || url.host().isEmpty())
        throw NetworkError::urlBuildError(scheme, address.host, address.port, path);

    QPointer<Client> self(this);
    std::unique_ptr<QNetworkReply, void (*)(QNetworkReply *)> reply(send(endpoint, url),
                                                                    [](QNetworkReply *r) { r->deleteLater(); });
    co_await reply.get();
    if (!self)
        throw TransportError(QNetworkReply::OperationCanceledError,
                             QCoreApplication::translate("Client", "The connection was closed."));
    co_return vet(*reply, endpoint);
}

QByteArray Client::vet(QNetworkReply &reply, const APIEndpoint &endpoint) const
{
    const auto endedBy = static_cast<EndedBy>(reply.property(endedByProperty).toInt());
    if (endedBy == EndedBy::redirectRefused) {
        const QUrl target = reply.property(refusedTargetProperty).toUrl();
        qCCritical(lcClient, "Redirect from %s to %s is blocked.", qUtf8Printable(reply.request().url().toString()),
                   qUtf8Printable(target.toString()));
        throw NetworkError::redirectBlocked(target);
    }
    if (endedBy == EndedBy::idleTimeout || endedBy == EndedBy::overallTimeout)
        throw TransportError(QNetworkReply::TimeoutError,
                             QCoreApplication::translate("Client", "The request timed out."), true);
    if (const QVariant refused = reply.property(refusedCertificateProperty); refused.isValid()) {
        const QUrl url = reply.request().url();
        throw CertificateError(ServerCertificate::of(refused.value<QSslCertificate>()), m_address.trustedCertificate,
                               url.host() + u':' + QString::number(url.port()),
                               reply.property(certificateVerdictProperty).toString());
    }

    const QVariant statusAttribute = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!statusAttribute.isValid()) {
        if (reply.error() != QNetworkReply::NoError)
            throw TransportError(reply.error(), reply.errorString());
        throw NetworkError::invalideResponse(reply.url());
    }

    const int status = statusAttribute.toInt();
    const QByteArray body = reply.readAll();
    // A connection reset in the middle of an answer can end the reply without an error, with less
    // than the server announced: a lost connection, not an answer to decode. (An inflated body has
    // a length of its own.)
    if (const QVariant announced = reply.header(QNetworkRequest::ContentLengthHeader);
        announced.isValid() && !reply.hasRawHeader("Content-Encoding") && body.size() < announced.toLongLong())
        throw TransportError(
            QNetworkReply::RemoteHostClosedError,
            QCoreApplication::translate("Client", "The connection closed in the middle of the answer."));
    switch (classify(status)) {
    case StatusClass::redirection: {
        const QByteArray location = reply.rawHeader("Location");
        std::optional<QUrl> target;
        if (!location.isEmpty())
            target = reply.url().resolved(QUrl::fromEncoded(location));
        qCCritical(lcClient, "Redirect from %s to %s is blocked.", qUtf8Printable(reply.url().toString()),
                   target ? qUtf8Printable(target->toString()) : "nil");
        throw NetworkError::redirectBlocked(target);
    }
    case StatusClass::serverError: throw NetworkError::connectionError();
    default: break;
    }
    checkStatus(status, body, endpoint);
    return body;
}

// Every group treats 401 and 403 as authorisation failures (every action but login needs a session);
// the torrent group adds 404 and its per-action rules, a change of the application's settings any
// other 4xx. Any other status passes through as data.
void Client::checkStatus(int status, const QByteArray &body, const APIEndpoint &endpoint) const
{
    const bool isTorrentAction = endpoint.group == APIEndpoint::Group::tntManagement;
    if (isTorrentAction) {
        const QString serverText = QString::fromUtf8(body).trimmed();
        if (const StatusRule *rule = endpoint.ruleFor(status, serverText))
            throw TntManagmentError(rule->kind, endpoint.subjectPath, serverText, rule->description);
    }
    using C = AutorizationError::Case;
    const AuthMethod method = m_address.authMethod;
    const bool isLogin = endpoint.group == APIEndpoint::Group::auth && endpoint.name == u"login";
    switch (status) {
    case 401: {
        const bool sentBasic = method == AuthMethod::basic && !m_credentials.isMissing(AuthMethod::basic);
        // qBittorrent's Host header check answers its bare status text to everything; the only other
        // 401s it sends answer credentials (a login on 5.2+, a Basic header).
        if (!sentBasic && !isLogin && body.trimmed() == "Unauthorized")
            throw AutorizationError(C::addressRejected, {}, m_address.host);
        if (sentBasic)
            throw AutorizationError(C::badCredentials);
        throw AutorizationError(C::unauthorized);
    }
    case 403:
        // A banned address is refused before any session check, with the reason in the body. A
        // login is refused with 403 for nothing else, so a server speaking another language is
        // understood too.
        if (body.contains("banned") || (isLogin && !body.trimmed().isEmpty() && body.trimmed() != "Forbidden"))
            throw AutorizationError(C::forbidden, QString::fromUtf8(body).trimmed());
        if (method == AuthMethod::apiKey && !m_credentials.apiKey.isEmpty())
            throw AutorizationError(C::invalidAPIKey);
        throw AutorizationError(C::unauthorized);
    case 404:
        if (isTorrentAction)
            throw TntManagmentError(TntManagmentError::Case::hashNotFound);
        break;
    default: break;
    }
    if (endpoint.group == APIEndpoint::Group::search && status >= 400 && status < 500) {
        using S = SearchError::Case;
        const S kind = status == 404 ? S::notFound : status == 409 ? S::refused : S::badRequest;
        throw SearchError(kind, QString::fromUtf8(body).trimmed());
    }
    // A change of the server's settings it will not take: newer servers say why with a 400. The RSS
    // group says why it refuses a path or a name with a 409.
    const bool explains = endpoint.group == APIEndpoint::Group::application || endpoint.group == APIEndpoint::Group::rss;
    if (explains && endpoint.method == HttpMethod::post && status >= 400 && status < 500)
        throw RefusalError(QString::fromUtf8(body).trimmed());
}

QCoro::Task<QString> Client::performText(APIEndpoint endpoint)
{
    co_return decodeText(co_await perform(std::move(endpoint)));
}

QCoro::Task<void> Client::login()
{
    const QString answer = co_await performText(Endpoint::Auth::login(m_credentials));
    if (answer.contains(u"fails", Qt::CaseInsensitive))
        throw AutorizationError(AutorizationError::Case::unauthorized);
}

QCoro::Task<void> Client::logout()
{
    try {
        co_await perform(Endpoint::Auth::logout());
    } catch (const AutorizationError &) {
        qCInfo(lcClient, "Logout: the session is already gone.");
    }
}

QCoro::Task<QString> Client::version()
{
    co_return co_await performText(Endpoint::Application::version());
}

QCoro::Task<WebAPIVersion> Client::webapiVersion()
{
    const QString text = co_await performText(Endpoint::Application::webapiVersion());
    const auto version = WebAPIVersion::parse(text);
    if (!version)
        throw ResponseDecodingError(QCoreApplication::translate("Client", "\"%1\" is not a version number.").arg(text));
    co_return *version;
}

QCoro::Task<BuildInfo> Client::buildInfo()
{
    co_return BuildInfo::decode(co_await perform(Endpoint::Application::buildInfo()));
}

QCoro::Task<QBTPreferences> Client::preferences()
{
    co_return QBTPreferences::decode(co_await perform(Endpoint::Application::preferences()));
}

QCoro::Task<void> Client::setPreferences(QBTPreferences edited)
{
    const QJsonObject changes = edited.changes();
    if (changes.isEmpty())
        co_return;
    co_await perform(Endpoint::Application::setPreferences(QJsonDocument(changes).toJson(QJsonDocument::Compact)));
}

QCoro::Task<QList<NetworkInterface>> Client::networkInterfaces()
{
    co_return NetworkInterface::decodeList(co_await perform(Endpoint::Application::networkInterfaceList()));
}

QCoro::Task<QList<NetworkAddress>> Client::networkAddresses(QString interfaceValue)
{
    co_return NetworkAddress::decodeList(
        co_await perform(Endpoint::Application::networkInterfaceAddressList(interfaceValue)));
}

QCoro::Task<MainData> Client::mainData(qint64 rid)
{
    const QByteArray body = co_await perform(Endpoint::Sync::maindata(rid));
    co_return takeOutcome(co_await decodeOnWorker(body, &decodeMainData));
}

QCoro::Task<PeersData> Client::peers(QString hash, qint64 rid)
{
    const QByteArray body = co_await perform(Endpoint::Sync::torrentPeers(hash, rid));
    co_return takeOutcome(co_await decodeOnWorker(body, &decodePeersData));
}

QCoro::Task<SGenericProperties> Client::properties(QString hash)
{
    const QByteArray body = co_await perform(Endpoint::TntManagement::properties(hash));
    co_return takeOutcome(co_await decodeOnWorker(body, &decodeGenericProperties));
}

QCoro::Task<QList<Tracker>> Client::trackers(QString hash)
{
    const QByteArray body = co_await perform(Endpoint::TntManagement::trackers(hash));
    co_return takeOutcome(co_await decodeOnWorker(body, &decodeTrackers));
}

QCoro::Task<QList<File>> Client::files(QString hash)
{
    const QByteArray body = co_await perform(Endpoint::TntManagement::files(hash));
    co_return takeOutcome(co_await decodeOnWorker(body, &decodeFiles));
}

QCoro::Task<QList<WebSeed>> Client::webSeeds(QString hash)
{
    const QByteArray body = co_await perform(Endpoint::TntManagement::webseeds(hash));
    co_return takeOutcome(co_await decodeOnWorker(body, &decodeWebSeeds));
}

QCoro::Task<QList<PieceState>> Client::pieceStates(QString hash)
{
    const QByteArray body = co_await perform(Endpoint::TntManagement::pieceStates(hash));
    co_return takeOutcome(co_await decodeOnWorker(body, &decodePieceStates));
}

QCoro::Task<QList<LogMessage>> Client::logMessages(qint64 lastKnownId)
{
    const QByteArray body = co_await perform(Endpoint::Log::main(lastKnownId));
    co_return takeOutcome(co_await decodeOnWorker(body, &decodeLogMessages));
}

QCoro::Task<QList<PeerLogEntry>> Client::peerLog(qint64 lastKnownId)
{
    const QByteArray body = co_await perform(Endpoint::Log::peers(lastKnownId));
    co_return takeOutcome(co_await decodeOnWorker(body, &decodePeerLog));
}

QCoro::Task<qint64> Client::startSearch(QString pattern, QStringList plugins, QString category)
{
    const QByteArray body = co_await perform(Endpoint::Search::start(pattern, plugins, category));
    co_return takeOutcome(co_await decodeOnWorker(body, &decodeSearchStart)).id;
}

QCoro::Task<SearchResults> Client::searchResults(qint64 id, qint64 offset)
{
    const QByteArray body = co_await perform(Endpoint::Search::results(id, offset));
    co_return takeOutcome(co_await decodeOnWorker(body, &decodeSearchResults));
}

QCoro::Task<QList<SearchPlugin>> Client::searchPlugins()
{
    const QByteArray body = co_await perform(Endpoint::Search::plugins());
    co_return takeOutcome(co_await decodeOnWorker(body, &decodeSearchPlugins));
}

QCoro::Task<RssItem> Client::rssItems()
{
    const QByteArray body = co_await perform(Endpoint::Rss::items());
    co_return takeOutcome(co_await decodeOnWorker(body, &decodeRssItems));
}

QCoro::Task<QList<RssRule>> Client::rssRules()
{
    const QByteArray body = co_await perform(Endpoint::Rss::rules());
    co_return decodeRssRules(body);
}

QCoro::Task<QMap<QString, QStringList>> Client::rssMatchingArticles(QString ruleName)
{
    const QByteArray body = co_await perform(Endpoint::Rss::matchingArticles(ruleName));
    co_return decodeRssMatchingArticles(body);
}

} // namespace API
