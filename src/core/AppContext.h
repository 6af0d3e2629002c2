#pragma once

#include "api/APIEndpoint.h"
#include "api/BuildInfo.h"
#include "api/ClientError.h"
#include "api/TntAddingOptions.h"
#include "api/WebAPIVersion.h"
#include "core/ClientConfiguration.h"
#include "core/ConnectionStore.h"
#include "core/HTTPSRedirectSuggestion.h"
#include "model/CompletionNotifier.h"
#include "model/GlobalTransferInfo.h"
#include "model/Poller.h"
#include "model/SidebarItem.h"
#include "model/TntDetailContext.h"
#include "model/TntCollection.h"
#include "model/TrackerIndex.h"
#include "settings/AppSettings.h"

#include <QCoroTask>
#include <QElapsedTimer>
#include <QMap>
#include <QSet>
#include <QObject>

#include <memory>
#include <optional>

namespace API {
class Client;
class TransportError;
} // namespace API
class KeychainStore;

// The one central state of the application: the saved connections, the selected one with its
// client, and the user-facing error and progress state. Lives on the main thread; every operation
// that talks to the server is a coroutine that reports failures through `clientError`.
class AppContext : public QObject
{
    Q_OBJECT

public:
    enum class ProgressMessage { none, connecting, removal, empty };
    enum class AppState { foreground, background };
    static constexpr int maxAutoReconnectAttempts = 5;

    AppContext(UserDefaults &defaults, KeychainStore &keychain, QObject *parent = nullptr);
    ~AppContext() override;

    AppSettings &settings() { return m_settings; }
    KeychainStore &keychain() { return m_keychain; }

    const QList<ClientConfiguration> &clientConfigurations() const { return m_configurations; }
    const std::optional<ClientConfiguration> &clientConfiguration() const { return m_configuration; }
    API::Client *client() const { return m_client.get(); }
    bool isAuthorized() const { return m_isAuthorized; }
    bool isPolling() const { return m_isPolling; }
    std::chrono::milliseconds pollingInterval() const;
    ProgressMessage progressMessage() const { return m_progressMessage; }
    const std::optional<API::ClientError> &clientError() const { return m_clientError; }
    const QString &qbtVersion() const { return m_qbtVersion; }
    const API::WebAPIVersion &webAPIVersion() const { return m_webAPIVersion; }
    const API::BuildInfo &qbtBuildInfo() const { return m_qbtBuildInfo; }
    qint64 rid() const { return m_rid; }
    int connectionLossCount() const { return m_connectionLossCount; }
    // What broke the connection, as the user reads it; empty while connected.
    const QString &connectionError() const { return m_connectionError; }
    bool isReconnecting() const { return m_isReconnecting; }
    bool isLoginPromptPresented() const { return m_isLoginPromptPresented; }
    TntCollection &tntCollection() { return m_tntCollection; }
    const TntCollection &tntCollection() const { return m_tntCollection; }
    GlobalTransferInfo &serverState() { return m_serverState; }
    CompletionNotifier &completionNotifier() { return m_completionNotifier; }
    const QMap<QString, API::Category> &categories() const { return m_categories; }
    const QStringList &tags() const { return m_tags; }
    // The server's tracker map; empty for servers that do not send one.
    TrackerIndex &trackers() { return m_trackers; }
    // The detail pane's torrent. Its peers, and what its visible tab shows, are refreshed with every
    // poll while it has one, and at once when it gets another or the tab changes.
    TntDetailContext &tntDetails() { return m_tntDetails; }
    // The torrents that the sidebar selection and the name text admit, in the collection's order.
    QList<const TntModel *> filterTnts(const QSet<SidebarItem> &selection, const QString &nameText) const;
    AppState appState() const { return m_appState; }
    // The table's selection, by hash; what the torrent operations act on.
    const QSet<QString> &selectedTnts() const { return m_selectedTnts; }
    void setSelectedTnts(QSet<QString> hashes);
    // An offer to move the selected connection to the HTTPS address its port redirects to.
    const std::optional<HTTPSRedirectSuggestion> &httpsRedirectSuggestion() const { return m_httpsRedirectSuggestion; }
    // The secure check's certificate verification; tests trust their own certificate here.
    void setProbeSettings(HTTPSRedirectSuggestion::ProbeSettings settings) { m_probeSettings = std::move(settings); }

    // The saved list. Adding or saving a connection equal to another fails with
    // InternalError::serverConfigurationAlreadyExist and leaves the list as it was.
    void addConfiguration(const ClientConfiguration &configuration);
    void updateConfiguration(const ClientConfiguration &configuration);
    QCoro::Task<> removeConfiguration(QUuid id);
    QCoro::Task<> removeAllConfigurations();

    // Opens a saved connection: new client, credentials, bypass check, log in, version probes, polling.
    QCoro::Task<> selectConfiguration(QUuid id);
    // The login prompt's answer. With `autoLogin` the credentials are kept in the keychain.
    QCoro::Task<> logIn(API::UserCredentials credentials, bool autoLogin);
    void cancelLogin();
    QCoro::Task<> logOut();
    QCoro::Task<> reconnect();

    // One synchronisation at once, outside the poller's rhythm.
    void forcePoll();
    // The background pause is longer; the loop under way is not restarted.
    void setAppState(AppState state);
    // Stores the interval for the loop under way; it takes effect after the pause under way.
    void setPollingInterval(bool background);

    // Called by the sync when a request failed: a cancelled request is not a loss, a refused one
    // renews a cookie session.
    void reportSyncFailure(const QString &operation, const std::exception_ptr &error);
    void dismissClientError();
    // Moves the saved connection to the suggested port and path, and connects to it.
    QCoro::Task<> acceptHTTPSRedirectSuggestion();
    void dismissHTTPSRedirectSuggestion();

    // Torrent operations: one request each. A failure goes to `clientError` under the operation's
    // title and changes nothing here; a success updates the local model where the server's answer
    // to the next poll is predictable. For the operations taking a set, an empty set means every
    // torrent (sent as "all"), except where noted.
    QCoro::Task<> startTnts(QSet<QString> hashes);
    QCoro::Task<> stopTnts(QSet<QString> hashes);
    QCoro::Task<> setForceStart(QSet<QString> hashes, bool value);
    QCoro::Task<> recheckTnts(QSet<QString> hashes);
    QCoro::Task<> reannounceTnts(QSet<QString> hashes);
    QCoro::Task<> removeTnts(QSet<QString> hashes, bool deleteFiles);
    QCoro::Task<> addTrackers(QString hash, QStringList urls);
    QCoro::Task<> editTracker(QString hash, QString origUrl, QString newUrl);
    QCoro::Task<> removeTrackers(QString hash, QStringList urls);
    QCoro::Task<> addPeers(QSet<QString> hashes, QStringList peers); // empty set: nothing is sent
    // Queue priority of the selection (`selectedTnts`).
    QCoro::Task<> increasePriority();
    QCoro::Task<> decreasePriority();
    QCoro::Task<> maximumPriority();
    QCoro::Task<> minimumPriority();
    QCoro::Task<> setFilePriority(QString hash, QSet<int> fileIds, int priority);
    QCoro::Task<> setLocation(QSet<QString> hashes, QString location);
    QCoro::Task<> renameTnt(QString hash, QString name);
    // "" removes the category; empty set: nothing is sent
    QCoro::Task<> setCategory(QSet<QString> hashes, QString category);
    QCoro::Task<> createCategory(QString name, QString savePath);
    QCoro::Task<> editCategory(QString name, QString savePath);
    QCoro::Task<> removeCategories(QSet<QString> names);
    QCoro::Task<> addTags(QSet<QString> hashes, QSet<QString> tags);    // empty set: nothing is sent
    QCoro::Task<> removeTags(QSet<QString> hashes, QSet<QString> tags); // empty set: nothing is sent
    QCoro::Task<> createTags(QSet<QString> tags);
    QCoro::Task<> deleteTags(QSet<QString> tags);
    QCoro::Task<> setAutoManagement(QSet<QString> hashes, bool enable);
    QCoro::Task<> toggleSequentialDownload(QSet<QString> hashes);
    QCoro::Task<> toggleFirstLastPiecePrio(QSet<QString> hashes);
    QCoro::Task<> setSuperSeeding(QSet<QString> hashes, bool value);
    QCoro::Task<> banPeers(QSet<QString> peers);
    QCoro::Task<> toggleSpeedLimitsMode();
    // Adds torrents; false when the server refused or the connection went. With the torrent's hash,
    // `filePriorities` (per file, in index order) reach every server: sent along with a link from
    // API 2.15; otherwise the torrent is added stopped, given them once it appears, and then
    // started if `start` asks.
    QCoro::Task<bool> addTnts(API::TntAddingOptions options, bool start, QString hash = {},
                              QList<int> filePriorities = {});

Q_SIGNALS:
    void configurationsChanged();
    void connectionStateChanged();
    void clientErrorChanged();
    void loginPromptChanged();
    // The poller's seam: start after a successful connection, stop on loss or log out.
    void pollingStarted();
    void pollingStopped();
    // Categories or tags of the server changed.
    void labelsChanged();
    void httpsRedirectSuggestionChanged();
    void selectionChanged();
    // The torrent's tracker list changed on the server; whoever shows it fetches it again.
    void trackersEdited(const QString &hash);
    // Torrents were removed here: views showing one of them let it go.
    void tntsRemoved();

private:
    void resetServerState();
    void deselect();
    void makeClient(const ClientConfiguration &configuration);
    void fail(const QString &title, const std::exception_ptr &error);
    void setConfigurations(QList<ClientConfiguration> configurations);
    void persistAutoLogin(bool autoLogin);
    void replaceConfiguration(const ClientConfiguration &configuration);
    void presentLoginPrompt(bool presented);
    // Sends one operation; false (with the error reported under `failureTitle`) when it failed or
    // the connection it was sent on is gone, so the caller leaves the model alone.
    QCoro::Task<bool> send(API::APIEndpoint endpoint, QString failureTitle);
    QCoro::Task<bool> upload(API::TntAddingOptions options);
    // Waits for the poller to bring the torrent; false when it did not come or the connection went.
    QCoro::Task<bool> isListedWithin(QString hash, std::chrono::milliseconds within);
    // The same, a minute at most, and a torrent that never comes is reported.
    QCoro::Task<bool> awaitTnt(QString hash);
    QCoro::Task<bool> addMagnetMakingSureItIsListed(API::TntAddingOptions options, QString hash);
    bool usesStartStop() const;
    void setStates(const QSet<QString> &hashes, bool emptyMeansAll, TntModel::State incomplete,
                   TntModel::State complete);
    void startPolling(Poller::FirstRound first = Poller::FirstRound::now);
    QCoro::Task<> syncAndStartPolling();
    void stopPolling();
    QCoro::Task<> syncMainData();
    // A failed poll: a lost connection is a loss, anything else one alert under `title`, not one
    // per round.
    void reportPollFailure(const QString &title, const std::exception_ptr &failure);
    // One refresh of the detail pane's torrent at a time. A request for one while another runs is
    // covered by it, unless the pane's torrent or tab changed: then one more follows.
    QCoro::Task<> refreshTntDetails(bool targetChanged);
    QCoro::Task<> loadTntDetails();
    QCoro::Task<> loadTntTrackers();
    // The answer, or none when the request failed (reported under `failureTitle`), or the answer
    // came for a connection or a detail pane's torrent that is gone.
    template<typename T>
    QCoro::Task<std::optional<T>> fetchTntDetail(QCoro::Task<T> request, QString failureTitle);
    void applyLabels(const API::MainData &data);
    QCoro::Task<> offerSecureAddress(ClientConfiguration failed, QString error);
    // Whether the server lets this client in as it is; none when the check itself failed.
    QCoro::Task<std::optional<bool>> checkAuthorizationBypass();
    QCoro::Task<bool> authenticate();
    QCoro::Task<> finishConnecting();
    // Opens the selected connection from step 3 on; `credentials` skips the keychain lookup.
    QCoro::Task<> connect(std::optional<API::UserCredentials> credentials);

    UserDefaults &m_defaults;
    KeychainStore &m_keychain;
    AppSettings m_settings;
    ConnectionStore m_store;
    QList<ClientConfiguration> m_configurations;
    std::optional<ClientConfiguration> m_configuration;
    std::unique_ptr<API::Client> m_client;
    // Bumped whenever the client is replaced: a coroutine that finds it changed after a co_await
    // belongs to a connection that is gone and stops.
    quint64 m_generation = 0;
    bool m_isAuthorized = false;
    bool m_isPolling = false;
    bool m_isReconnecting = false;
    bool m_isLoginPromptPresented = false;
    ProgressMessage m_progressMessage = ProgressMessage::none;
    std::optional<API::ClientError> m_clientError;
    QString m_qbtVersion;
    API::WebAPIVersion m_webAPIVersion;
    API::BuildInfo m_qbtBuildInfo;
    qint64 m_rid = 0;
    AppState m_appState = AppState::foreground;
    TntCollection m_tntCollection;
    GlobalTransferInfo m_serverState;
    CompletionNotifier m_completionNotifier{m_tntCollection, m_settings};
    QMap<QString, API::Category> m_categories;
    QStringList m_tags;
    TrackerIndex m_trackers;
    TntDetailContext m_tntDetails;
    bool m_tntDetailsRefreshing = false;
    bool m_tntDetailsRefreshAgain = false;
    std::unique_ptr<Poller> m_poller;
    std::optional<HTTPSRedirectSuggestion> m_httpsRedirectSuggestion;
    QSet<QString> m_selectedTnts;
    HTTPSRedirectSuggestion::ProbeSettings m_probeSettings;
    quint64 m_pollRound = 0; // bumped when polling starts or stops: late answers of a stopped poller are dropped
    int m_connectionLossCount = 0;
    QString m_connectionError;
    QElapsedTimer m_lastSessionRenewal; // monotonic
};
