#pragma once

#include "api/APIEndpoint.h"
#include "api/AuthMethod.h"
#include "api/BuildInfo.h"
#include "api/NetworkInterface.h"
#include "api/QBTPreferences.h"
#include "api/Records.h"
#include "api/RssRecords.h"
#include "api/RedirectPolicy.h"
#include "api/ServerAddress.h"
#include "api/WebAPIVersion.h"

#include <QCoroTask>
#include <QNetworkAccessManager>
#include <QObject>
#include <QSet>

#include <chrono>

class QNetworkReply;

namespace API {

// Whether answers from `host` should come gzipped. Compressing and inflating cost a full update about
// 80 ms, which only moving the plain bytes over loopback beats; a local network below a gigabit is
// already slower (docs/PERFORMANCE.md), so every host but this machine asks for gzip.
bool wantsCompression(const QString &host);

// The only code that speaks HTTP to the server. One client per selected connection: it owns the
// network session and its cookie jar, so a new client forgets the previous server's session.
// Lives on the main thread; Qt's network stack does the I/O.
class Client : public QObject
{
    Q_OBJECT

public:
    struct Timeouts
    {
        // The request's own 60 s outranks the session's 45 s: a request idle that long fails.
        std::chrono::milliseconds idle{60'000};
        // No request may take longer than this, however steadily data trickles in.
        std::chrono::milliseconds overall{120'000};
    };

    enum class StatusClass { informational, success, redirection, clientError, serverError, unknown };

    explicit Client(ServerAddress address, QObject *parent = nullptr);
    ~Client() override;

    const ServerAddress &address() const { return m_address; }
    const UserCredentials &credentials() const { return m_credentials; }
    void setCredentials(UserCredentials credentials) { m_credentials = std::move(credentials); }
    void setTimeouts(Timeouts timeouts) { m_timeouts = timeouts; }
    void setRedirectPolicy(RedirectPolicy policy) { m_redirectPolicy = policy; }

    // Sends one request and returns the vetted body, or throws AutorizationError, NetworkError,
    // TntManagmentError or TransportError. A connection without host or port sends nothing and
    // returns an empty body.
    QCoro::Task<QByteArray> perform(APIEndpoint endpoint);
    // As perform(), decoding the body as UTF-8 text (ResponseDecodingError when it is not).
    QCoro::Task<QString> performText(APIEndpoint endpoint);

    QCoro::Task<void> login();
    QCoro::Task<void> logout();
    QCoro::Task<QString> version();
    QCoro::Task<WebAPIVersion> webapiVersion();
    QCoro::Task<BuildInfo> buildInfo();

    // The preferences are read whole and written as the edited keys only; writing nothing edited
    // sends nothing.
    QCoro::Task<QBTPreferences> preferences();
    QCoro::Task<void> setPreferences(QBTPreferences edited);
    QCoro::Task<QList<NetworkInterface>> networkInterfaces();
    QCoro::Task<QList<NetworkAddress>> networkAddresses(QString interfaceValue);

    // The sync and detail reads: the request runs here, the body is decoded on a worker thread so
    // that a large answer never stalls the interface. A body that does not decode throws
    // ResponseDecodingError.
    QCoro::Task<MainData> mainData(qint64 rid);
    QCoro::Task<PeersData> peers(QString hash, qint64 rid);
    QCoro::Task<SGenericProperties> properties(QString hash);
    QCoro::Task<QList<Tracker>> trackers(QString hash);
    QCoro::Task<QList<File>> files(QString hash);
    QCoro::Task<QList<WebSeed>> webSeeds(QString hash);
    QCoro::Task<QList<PieceState>> pieceStates(QString hash);
    QCoro::Task<QList<LogMessage>> logMessages(qint64 lastKnownId);
    QCoro::Task<QList<PeerLogEntry>> peerLog(qint64 lastKnownId);
    QCoro::Task<qint64> startSearch(QString pattern, QStringList plugins, QString category);
    QCoro::Task<SearchResults> searchResults(qint64 id, qint64 offset);
    QCoro::Task<QList<SearchPlugin>> searchPlugins();
    QCoro::Task<RssItem> rssItems();
    QCoro::Task<QList<RssRule>> rssRules();
    QCoro::Task<QMap<QString, QStringList>> rssMatchingArticles(QString ruleName);

    // Aborts every request in flight; their callers get a cancelled TransportError.
    void cancelAll();

    // By the list of known codes; a code outside it is unknown.
    static StatusClass classify(int status);
    static QString userAgent();
    // "qbt/" and "/qbt" are the same base path: "/qbt"; the root is empty.
    static QString normalisedBasePath(const QString &path);
    static QString decodeText(const QByteArray &body); // throws ResponseDecodingError

private:
    QNetworkReply *send(const APIEndpoint &endpoint, const QUrl &url);
    QByteArray vet(QNetworkReply &reply, const APIEndpoint &endpoint) const;
    void checkStatus(int status, const QByteArray &body, const APIEndpoint &endpoint) const;

    ServerAddress m_address;
    UserCredentials m_credentials;
    Timeouts m_timeouts;
    RedirectPolicy m_redirectPolicy;
    QNetworkAccessManager m_network;
    QSet<QNetworkReply *> m_inFlight;
};

} // namespace API
