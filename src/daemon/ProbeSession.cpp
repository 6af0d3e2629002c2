#include "daemon/ProbeSession.h"

#include "api/Client.h"

#include <QCoroNetworkReply>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QTimer>
#include <QUrl>

#include <memory>

namespace {

class DiscardingCookieJar : public QNetworkCookieJar
{
public:
    QList<QNetworkCookie> cookiesForUrl(const QUrl &) const override { return {}; }
    bool setCookiesFromUrl(const QList<QNetworkCookie> &, const QUrl &) override { return false; }
};


} // namespace

struct ProbeSession::Reply
{
    std::optional<int> status; // none without an HTTP answer
    QByteArray body;
    QByteArray sessionCookie; // "SID=…" of a login
};

namespace {

using Reply = ProbeSession::Reply;

QNetworkRequest request(int port, const QString &path, const ProbeSession::Timeouts &timeouts)
{
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(ProbeSession::host());
    url.setPort(port);
    url.setPath(path);
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::UserAgentHeader, API::Client::userAgent());
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setTransferTimeout(static_cast<int>(timeouts.idle.count()));
    return request;
}

QCoro::Task<Reply> finish(QNetworkReply *started, std::chrono::milliseconds overall)
{
    std::unique_ptr<QNetworkReply, void (*)(QNetworkReply *)> reply(started, [](QNetworkReply *r) { r->deleteLater(); });
    QTimer::singleShot(overall, reply.get(), &QNetworkReply::abort);
    co_await reply.get();
    Reply answer;
    if (const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute); status.isValid()) {
        answer.status = status.toInt();
        answer.body = reply->readAll();
        for (const QNetworkCookie &cookie : QNetworkCookie::parseCookies(reply->rawHeader("Set-Cookie")))
            answer.sessionCookie = cookie.toRawForm(QNetworkCookie::NameAndValueOnly);
    }
    co_return answer;
}

} // namespace

ProbeSession::ProbeSession()
{
    m_network.setCookieJar(new DiscardingCookieJar);
    m_network.setProxy(QNetworkProxy::NoProxy);
}

ProbeSession::~ProbeSession()
{
    for (QNetworkReply *reply : m_network.findChildren<QNetworkReply *>())
        reply->abort();
}

QCoro::Task<ProbeSession::Answer> ProbeSession::probe(int port)
{
    const Reply reply = co_await finish(
        m_network.get(request(port, QStringLiteral("/api/v2/app/version"), m_timeouts)), m_timeouts.overall);
    if (!reply.status)
        co_return Answer::none;
    if (*reply.status == 200 && reply.body.startsWith('v'))
        co_return Answer::qbittorrent;
    if (*reply.status == 401 || *reply.status == 403)
        co_return Answer::refusing;
    co_return Answer::otherServer;
}

QCoro::Task<ProbeSession::Reply> ProbeSession::postLogin(int port, const QString &username, const QString &password)
{
    QNetworkRequest login = request(port, QStringLiteral("/api/v2/auth/login"), m_timeouts);
    login.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/x-www-form-urlencoded"));
    const QByteArray form = "username=" + QUrl::toPercentEncoding(username)
        + "&password=" + QUrl::toPercentEncoding(password);
    co_return co_await finish(m_network.post(login, form), m_timeouts.overall);
}

QCoro::Task<ProbeSession::Login> ProbeSession::logIn(int port, QString username, QString password)
{
    const Reply reply = co_await postLogin(port, username, password);
    if (!reply.status)
        co_return Login::noAnswer;
    // Up to 5.1 a refusal is a 200 with "Fails."; later servers answer with a status instead.
    if (reply.body.trimmed() == "Fails." || *reply.status == 401 || *reply.status == 403)
        co_return Login::rejected;
    co_return *reply.status == 200 || *reply.status == 204 ? Login::accepted : Login::rejected;
}

QCoro::Task<bool> ProbeSession::shutDown(int port, QString username, QString password)
{
    const Reply login = co_await postLogin(port, username, password);
    if (login.sessionCookie.isEmpty())
        co_return false;
    // The jar keeps nothing: the session goes by hand to this one request.
    QNetworkRequest shutdown = request(port, QStringLiteral("/api/v2/app/shutdown"), m_timeouts);
    shutdown.setRawHeader("Cookie", login.sessionCookie);
    const Reply reply = co_await finish(m_network.post(shutdown, QByteArray()), m_timeouts.overall);
    co_return reply.status == 200;
}
