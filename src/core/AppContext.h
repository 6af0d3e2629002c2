#pragma once

#include "adding/TntAddition.h"
#include "api/ClientError.h"
#include "core/CertificateTrust.h"
#include "core/ConnectionList.h"
#include "core/Connector.h"
#include "core/ErrorReporter.h"
#include "core/SecureAddressOffer.h"
#include "core/SearchPlugins.h"
#include "core/SearchRunner.h"
#include "core/ServerLogLoader.h"
#include "core/RssLoader.h"
#include "core/RssOperations.h"
#include "core/SnapshotKeeper.h"
#include "core/Sync.h"
#include "core/TntDetailEdits.h"
#include "core/TntDetailLoader.h"
#include "core/TntCommandMethods.h"
#include "core/TransferLimits.h"
#include "model/CompletionNotifier.h"
#include "model/GlobalTransferInfo.h"
#include "model/ServerLabels.h"
#include "model/ServerLog.h"
#include "model/RssFeeds.h"
#include "model/SidebarItem.h"
#include "model/TntCollection.h"
#include "model/TntDetailContext.h"
#include "model/TrackerIndex.h"
#include "platform/SystemEvents.h"
#include "settings/AppSettings.h"
#include "settings/PathResolution.h"

#include <QCoroTask>
#include <QObject>
#include <QSet>

#include <optional>

class KeychainStore;

// The one object handed to every window: the saved connections, the open one, what its server
// shows, and every command (the torrent commands are its base's). It holds the parts that do the
// work and forwards to them; it lives on the main thread.
class AppContext : public QObject, public TntCommandMethods
{
    Q_OBJECT

public:
    using ProgressMessage = Connector::ProgressMessage;
    using AppState = Sync::AppState;
    static constexpr int maxAutoReconnectAttempts = 5;

    AppContext(UserDefaults &defaults, KeychainStore &keychain, QObject *parent = nullptr);
    ~AppContext() override;

    AppSettings &settings() { return m_settings; }
    KeychainStore &keychain() { return m_keychain; }

    const QList<ClientConfiguration> &clientConfigurations() const { return m_connections.all(); }
    const std::optional<ClientConfiguration> &clientConfiguration() const { return m_connections.selected(); }
    // The open session's client; none while no session is open (before choosing, after logging out).
    API::Client *client() const;
    bool isAuthorized() const { return m_connector.isAuthorized(); }
    bool isPolling() const { return m_sync.isPolling(); }
    // What the table shows is the server's: a session is open and its first answer is merged.
    // Commands wait for it; before it, the table may show the list kept from the last time.
    bool isCurrent() const { return m_sync.isCurrent(); }
    bool isShowingSnapshot() const { return m_sync.isShowingSnapshot(); }
    SnapshotKeeper &snapshots() { return m_snapshots; }
    std::chrono::milliseconds pollingInterval() const { return m_sync.pollingInterval(); }
    const AnswerPace &answerPace() const { return m_sync.answerPace(); }
    ProgressMessage progressMessage() const { return m_connector.progressMessage(); }
    const std::optional<API::ClientError> &clientError() const { return m_errors.current(); }
    const QString &qbtVersion() const;
    const API::WebAPIVersion &webAPIVersion() const;
    // What the open session's server can do; nothing before one is open.
    API::ServerFeatures serverFeatures() const { return webAPIVersion(); }
    const API::BuildInfo &qbtBuildInfo() const;
    // The response id of the last main-data answer; 0 before the first.
    qint64 rid() const { return m_sync.rid(); }
    int connectionLossCount() const { return m_connector.connectionLossCount(); }
    // What broke the connection, as the user reads it; empty while connected.
    const QString &connectionError() const { return m_connector.connectionError(); }
    bool isReconnecting() const { return m_connector.isReconnecting(); }
    bool isLoginPromptPresented() const { return m_connector.isLoginPromptPresented(); }
    TntCollection &tntCollection() { return m_tntCollection; }
    const TntCollection &tntCollection() const { return m_tntCollection; }
    GlobalTransferInfo &serverState() { return m_serverState; }
    CompletionNotifier &completionNotifier() { return m_completionNotifier; }
    const QMap<QString, API::Category> &categories() const { return m_labels.categories(); }
    const QStringList &tags() const { return m_labels.tags(); }
    // The server's tracker map; empty for servers that do not send one.
    TrackerIndex &trackers() { return m_trackers; }
    // The detail pane's torrent. Its peers, and what its visible tab shows, are refreshed with every
    // poll while it has one, and at once when it gets another or the tab changes.
    TntDetailContext &tntDetails() { return m_tntDetails; }
    // The server's logs, read while a window shows them (ServerLog::setShown) and the connection polls.
    ServerLog &serverLog() { return m_serverLog; }
    bool isReadingServerLog() const { return m_logLoader.isPolling(); }
    // The server's search plugins and whether it can search; a runner per search job.
    SearchPlugins &searchPlugins() { return m_searchPlugins; }
    SearchRunner *makeSearchRunner(SearchJob &job, QObject *parent) { return new SearchRunner(m_connector, job, parent); }
    // The transfer's rates of the last minutes, a sample per main-data answer.
    RateHistory &transferRates() { return m_transferRates; }
    // The torrents that the sidebar selection and the name text admit, in the collection's order.
    QList<const TntModel *> filterTnts(const QSet<SidebarItem> &selection, const QString &nameText) const;
    AppState appState() const { return m_sync.appState(); }
    // The table's selection, by hash; what the torrent operations act on.
    const QSet<QString> &selectedTnts() const { return m_selectedTnts; }
    void setSelectedTnts(QSet<QString> hashes);
    // An offer to move the selected connection to the HTTPS address its port redirects to.
    const std::optional<HTTPSRedirectSuggestion> &httpsRedirectSuggestion() const { return m_secureOffer.current(); }

    // Whether to trust the certificate the selected connection's server presented.
    const std::optional<CertificateQuestion> &certificateQuestion() const { return m_certificateTrust.current(); }
    // Keeps the presented certificate with the connection and connects again.
    QCoro::Task<> trustCertificate();
    // The connection stays saved and unconnected, with a message saying so.
    void declineCertificate() { m_certificateTrust.decline(); }

    // Where a path the server reports (a torrent's content path, or one of its files) is on this
    // computer, through the path mapping unless the open connection is this computer's own server.
    PathResolution localLocation(const QString &remotePath) const
    {
        return PathResolution::resolve(m_settings.pathMapping(), remotePath, serverIsLocal());
    }
    bool isMapped(const QString &remotePath) const
    {
        return PathResolution::isMapped(m_settings.pathMapping(), remotePath, serverIsLocal());
    }

    // The saved list. Adding or saving a connection equal to another fails with
    // InternalError::serverConfigurationAlreadyExist and leaves the list as it was.
    void addConfiguration(const ClientConfiguration &configuration) { m_connections.add(configuration); }
    void updateConfiguration(const ClientConfiguration &configuration) { m_connections.update(configuration); }
    QCoro::Task<> removeConfiguration(QUuid id);
    QCoro::Task<> removeAllConfigurations();

    // Opens a saved connection: new session, credentials, bypass check, log in, versions, polling.
    QCoro::Task<> selectConfiguration(QUuid id);
    // The login prompt's answer. With `autoLogin` the credentials are kept in the keychain.
    QCoro::Task<> logIn(API::UserCredentials credentials, bool autoLogin);
    void cancelLogin() { m_connector.cancelLogin(); }
    QCoro::Task<> logOut() { return m_connector.logOut(); }
    QCoro::Task<> reconnect() { return m_connector.reconnect(); }

    // While the server is replaced under the open session (the local daemon's reinstall).
    void suspendPolling() { m_sync.stopPolling(); }
    void resumePolling() { m_sync.startPolling(); }
    // One synchronisation at once, outside the poller's rhythm.
    void forcePoll() { m_sync.forcePoll(); }
    // The background pause is longer; the loop under way is not restarted.
    void setAppState(AppState state) { m_sync.setAppState(state); }
    // Stores the interval for the loop under way; it takes effect after the pause under way.
    void setPollingInterval(bool background) { m_sync.setPollingInterval(background); }

    // Called by the sync when a request failed: a cancelled request is not a loss, a refused one
    // renews a cookie session.
    void reportSyncFailure(const QString &operation, const std::exception_ptr &error);
    void dismissClientError() { m_errors.dismiss(); }
    // Moves the saved connection to the suggested port and path, and connects to it.
    QCoro::Task<> acceptHTTPSRedirectSuggestion();
    void dismissHTTPSRedirectSuggestion() { m_secureOffer.dismiss(); }

    // Speed limits of torrents and of the transfer.
    TransferLimits &limits() { return m_limits; }
    // Renames in the Content tab, web seeds in the HTTP Sources tab.
    TntDetailEdits &detailEdits() { return m_detailEdits; }
    // Once the server took it, the connection ends here as after logging out, without an alert.
    QCoro::Task<> shutDownServer();
    // Adds torrents; false when the server refused or the connection went. See TntAddition.
    QCoro::Task<bool> addTnts(API::TntAddingOptions options, bool start, QString hash = {},
                              QList<int> filePriorities = {});
    // The server's RSS feeds, read while a window shows them (RssFeeds::setShown) and the connection
    // polls, and what changes them and the auto-downloading rules.
    RssFeeds &rssFeeds() { return m_rssFeeds; }
    bool isReadingRss() const { return m_rssLoader.isPolling(); }
    RssOperations &rss() { return m_rss; }

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
    void certificateQuestionChanged();
    void selectionChanged();
    // The torrent's tracker list changed on the server; whoever shows it fetches it again.
    void trackersEdited(const QString &hash);
    // Torrents were removed here: views showing one of them let it go.
    void tntsRemoved();

private:
    void sampleRates();
    bool serverIsLocal() const { return m_connections.selected() && m_connections.selected()->isLocal; }

    KeychainStore &m_keychain;
    AppSettings m_settings;
    ErrorReporter m_errors;
    ConnectionList m_connections;
    TntCollection m_tntCollection;
    GlobalTransferInfo m_serverState;
    RateHistory m_transferRates;
    CompletionNotifier m_completionNotifier{m_tntCollection, m_settings};
    ServerLabels m_labels;
    TrackerIndex m_trackers;
    TntDetailContext m_tntDetails;
    QSet<QString> m_selectedTnts;
    SecureAddressOffer m_secureOffer{m_connections};
    CertificateTrust m_certificateTrust{m_connections, m_errors};
    Sync m_sync{m_settings, m_tntCollection, m_serverState, m_labels, m_trackers};
    Connector m_connector{m_connections, m_keychain, m_sync, m_errors};
    SnapshotKeeper m_snapshots{m_settings, m_sync, m_tntCollection, m_labels, m_trackers};
    TntDetailLoader m_detailLoader{m_connector, m_sync, m_tntDetails, m_settings};
    ServerLog m_serverLog;
    ServerLogLoader m_logLoader{m_connector, m_sync, m_serverLog};
    TntOperations m_operations{m_connector, m_tntCollection, m_labels, m_errors};
    TransferLimits m_limits{m_connector, m_operations, m_errors};
    TntDetailEdits m_detailEdits{m_operations, m_detailLoader};
    TntAddition m_addition;
    Platform::SystemEvents m_systemEvents;
    SearchPlugins m_searchPlugins{m_connector};
    RssFeeds m_rssFeeds;
    RssLoader m_rssLoader{m_connector, m_sync, m_rssFeeds};
    RssOperations m_rss{m_operations, m_errors, m_rssFeeds, m_rssLoader};
};
