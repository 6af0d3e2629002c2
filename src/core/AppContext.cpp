#include "core/AppContext.h"

#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "core/InternalError.h"
#include "core/Detached.h"
#include "core/KeychainStore.h"
#include "model/Poller.h"
#include "model/SidebarFilter.h"

#include <QCoroFuture>
#include <QLoggingCategory>
#include <QPointer>
#include <QThread>
#include <QtConcurrent/QtConcurrentRun>

Q_LOGGING_CATEGORY(lcContext, "AppContext")

using API::AuthMethod;
using API::UserCredentials;

namespace {

QString describe(const ClientConfiguration &configuration)
{
    return QStringLiteral("name: %1\naddress: %2://%3:%4%5\nauthentication: %6%7")
        .arg(configuration.name, configuration.useHTTPS ? QStringLiteral("https") : QStringLiteral("http"),
             configuration.host, configuration.port ? QString::number(*configuration.port) : QStringLiteral("-"),
             configuration.path, API::rawText(configuration.authMethod),
             configuration.isLocal ? QStringLiteral("\nlocal daemon") : QString());
}

// Being the selected connection does not make two saved connections different.
bool sameSettings(ClientConfiguration a, const ClientConfiguration &b)
{
    a.isCurrent = b.isCurrent;
    return a == b;
}

template<typename E>
std::optional<E> thrown(const std::exception_ptr &error)
{
    try {
        std::rethrow_exception(error);
    } catch (const E &typed) {
        return typed;
    } catch (...) {
        return std::nullopt;
    }
}

} // namespace

// Every coroutine below that awaits checks this after each co_await: the context may have been
// destroyed, or the connection replaced, while it waited.
#define QUILLO_RETURN_IF_STALE(self, generation)                                                                       \
    if (!(self) || (self)->m_generation != (generation))                                                               \
    co_return

AppContext::AppContext(UserDefaults &defaults, KeychainStore &keychain, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_keychain(keychain)
    , m_settings(defaults)
    , m_store(defaults)
    , m_configurations(m_store.load())
{
    const int window = m_settings.avgCoefficient();
    m_serverState.setAveragingWindow(window);
    QObject::connect(&m_settings, &AppSettings::dataTransferRateAvgCoefficientDidChange, this, [this](int samples) {
        m_serverState.setAveragingWindow(samples);
        m_tntCollection.setAveragingWindow(samples);
        m_tntDetails.setAveragingWindow(samples);
    });
    QObject::connect(&m_settings, &AppSettings::changed, this, [this](UserDefaultsKey key) {
        if (key == UserDefaultsKey::refreshInterval || key == UserDefaultsKey::setRefreshIntervalAuto
            || key == UserDefaultsKey::intervalIncreaseValue)
            setPollingInterval(m_appState == AppState::background);
    });
    for (const auto signal : {&TntDetailContext::targetChanged, &TntDetailContext::tabChanged}) {
        QObject::connect(&m_tntDetails, signal, this, [this] {
            if (!m_tntDetails.hash().isEmpty())
                detached(refreshTntDetails(true));
        });
    }
    QObject::connect(this, &AppContext::trackersEdited, this, [this](const QString &hash) {
        if (hash == m_tntDetails.hash())
            detached(loadTntTrackers());
    });
    QObject::connect(this, &AppContext::tntsRemoved, &m_tntDetails, &TntDetailContext::clear);
}

AppContext::~AppContext()
{
    // Requests on their way are cancelled now, while every member is still there: the coroutines
    // awaiting them resume at once, find their connection gone and touch nothing.
    ++m_generation;
    m_client.reset();
}

void AppContext::setConfigurations(QList<ClientConfiguration> configurations)
{
    m_configurations = std::move(configurations);
    m_store.save(m_configurations);
    Q_EMIT configurationsChanged();
}

void AppContext::addConfiguration(const ClientConfiguration &configuration)
{
    Q_ASSERT(QThread::currentThread() == thread());
    for (const ClientConfiguration &existing : std::as_const(m_configurations)) {
        if (sameSettings(existing, configuration))
            throw InternalError(InternalError::Case::serverConfigurationAlreadyExist);
    }
    auto configurations = m_configurations;
    configurations.append(configuration);
    setConfigurations(std::move(configurations));
}

void AppContext::updateConfiguration(const ClientConfiguration &configuration)
{
    Q_ASSERT(QThread::currentThread() == thread());
    for (const ClientConfiguration &existing : std::as_const(m_configurations)) {
        if (existing.id != configuration.id && sameSettings(existing, configuration))
            throw InternalError(InternalError::Case::serverConfigurationAlreadyExist);
    }
    replaceConfiguration(configuration);
}

// Changes the application makes itself (the login's choice, a moved address) are never refused
// for resembling another saved connection: that would stop a login halfway.
void AppContext::replaceConfiguration(const ClientConfiguration &configuration)
{
    auto configurations = m_configurations;
    const auto found = std::find_if(configurations.begin(), configurations.end(),
                                    [&configuration](const ClientConfiguration &c) { return c.id == configuration.id; });
    if (found == configurations.end())
        return;
    *found = configuration;
    setConfigurations(std::move(configurations));
    if (m_configuration && m_configuration->id == configuration.id)
        m_configuration = configuration;
}

QCoro::Task<> AppContext::removeConfiguration(QUuid id)
{
    Q_ASSERT(QThread::currentThread() == thread());
    auto configurations = m_configurations;
    const QUuid wanted = id; // lambdas see a coroutine's own copy of a local, not always of a parameter
    const auto found = std::find_if(configurations.begin(), configurations.end(),
                                    [&wanted](const ClientConfiguration &c) { return c.id == wanted; });
    if (found == configurations.end())
        co_return;
    const ClientConfiguration removed = *found;
    configurations.erase(found);
    if (m_configuration && m_configuration->id == id)
        deselect();
    setConfigurations(std::move(configurations));
    co_await m_keychain.remove(removed);
}

QCoro::Task<> AppContext::removeAllConfigurations()
{
    Q_ASSERT(QThread::currentThread() == thread());
    // The local daemon's connection is not a remote one and stays.
    QList<ClientConfiguration> kept;
    QList<ClientConfiguration> removed;
    for (const ClientConfiguration &configuration : std::as_const(m_configurations))
        (configuration.isLocal ? kept : removed).append(configuration);
    if (m_configuration && !m_configuration->isLocal)
        deselect();
    setConfigurations(std::move(kept));
    // The store outlives the context, which may be gone before the last item is removed.
    KeychainStore &keychain = m_keychain;
    for (const ClientConfiguration &configuration : std::as_const(removed))
        co_await keychain.remove(configuration);
}

void AppContext::deselect()
{
    resetServerState();
    m_client.reset();
    m_configuration.reset();
    Q_EMIT connectionStateChanged();
}

void AppContext::resetServerState()
{
    qCInfo(lcContext, "Resetting app state");
    stopPolling();
    m_rid = 0;
    m_tntCollection.clear();
    setSelectedTnts({});
    m_serverState.reset();
    if (!m_categories.isEmpty() || !m_tags.isEmpty()) {
        m_categories.clear();
        m_tags.clear();
        Q_EMIT labelsChanged();
    }
    m_trackers.clear();
    m_isAuthorized = false;
    m_qbtVersion.clear();
    m_webAPIVersion = {};
    m_qbtBuildInfo = {};
    m_connectionLossCount = 0;
    m_connectionError.clear();
    m_isReconnecting = false;
    presentLoginPrompt(false);
}

void AppContext::makeClient(const ClientConfiguration &configuration)
{
    m_client = std::make_unique<API::Client>(configuration);
    ++m_generation;
    // A refresh under way belongs to the client that is gone.
    m_tntDetailsRefreshing = false;
    m_tntDetailsRefreshAgain = false;
}

void AppContext::fail(const QString &title, const std::exception_ptr &error)
{
    m_clientError.emplace(title, error);
    qCWarning(lcContext, "%s %s %s", qUtf8Printable(title), qUtf8Printable(m_clientError->description()),
              qUtf8Printable(m_clientError->failureReason()));
    Q_EMIT clientErrorChanged();
}

QCoro::Task<> AppContext::offerSecureAddress(ClientConfiguration failed, QString error)
{
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    auto probe = HTTPSRedirectSuggestion::probe(std::move(failed), HTTPSRedirectSuggestion::Origin::currentConnection,
                                                std::move(error), m_probeSettings);
    std::optional<HTTPSRedirectSuggestion> suggestion = co_await probe;
    QUILLO_RETURN_IF_STALE(self, generation);
    if (!suggestion)
        co_return;
    m_httpsRedirectSuggestion = std::move(suggestion);
    Q_EMIT httpsRedirectSuggestionChanged();
}

QCoro::Task<> AppContext::acceptHTTPSRedirectSuggestion()
{
    Q_ASSERT(QThread::currentThread() == thread());
    if (!m_httpsRedirectSuggestion)
        co_return;
    const HTTPSRedirectSuggestion suggestion = *std::exchange(m_httpsRedirectSuggestion, std::nullopt);
    Q_EMIT httpsRedirectSuggestionChanged();
    const auto saved = std::find_if(m_configurations.cbegin(), m_configurations.cend(),
                                    [&suggestion](const ClientConfiguration &c) { return c.id == suggestion.source.id; });
    if (saved == m_configurations.cend())
        co_return;
    const ClientConfiguration moved = suggestion.acceptedConfiguration(*saved);
    replaceConfiguration(moved);
    HTTPSRedirectSuggestion::logAddressChange(suggestion.source, moved);
    const QUuid id = moved.id;
    co_await selectConfiguration(id);
}

void AppContext::dismissHTTPSRedirectSuggestion()
{
    m_httpsRedirectSuggestion.reset();
    Q_EMIT httpsRedirectSuggestionChanged();
}

void AppContext::setSelectedTnts(QSet<QString> hashes)
{
    if (hashes == m_selectedTnts)
        return;
    m_selectedTnts = std::move(hashes);
    m_tntDetails.setSelection(m_selectedTnts);
    Q_EMIT selectionChanged();
}

void AppContext::dismissClientError()
{
    m_clientError.reset();
    Q_EMIT clientErrorChanged();
}

void AppContext::presentLoginPrompt(bool presented)
{
    if (m_isLoginPromptPresented == presented)
        return;
    m_isLoginPromptPresented = presented;
    Q_EMIT loginPromptChanged();
}

void AppContext::startPolling(Poller::FirstRound first)
{
    if (!m_isAuthorized)
        return;
    qCInfo(lcContext, "Start polling");
    // A fresh poller every time; the old one's loop ends with it.
    ++m_pollRound;
    m_tntDetails.resetPeers();
    m_poller = std::make_unique<Poller>();
    m_poller->start(Poller::intervalFor(m_settings, m_serverState, m_appState == AppState::background),
                    {[this] { return syncMainData(); }, [this] { return refreshTntDetails(false); }}, first);
    m_isPolling = true;
    m_tntDetails.setActive(true);
    Q_EMIT pollingStarted();
}

void AppContext::stopPolling()
{
    if (!m_isPolling)
        return;
    qCInfo(lcContext, "Stop polling");
    ++m_pollRound;
    m_poller.reset();
    m_isPolling = false;
    m_tntDetails.setActive(false);
    Q_EMIT pollingStopped();
}

void AppContext::forcePoll()
{
    if (!m_isAuthorized)
        return;
    qCInfo(lcContext, "Force poll");
    detached(syncMainData());
}

// With the automatic interval, the pause comes from the server's answer: one sync comes first.
QCoro::Task<> AppContext::syncAndStartPolling()
{
    qCInfo(lcContext, "Sync and start polling");
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    const int losses = m_connectionLossCount;
    co_await syncMainData();
    QUILLO_RETURN_IF_STALE(self, generation);
    // A lost connection or a renewal of the session under way restarts polling by itself.
    if (m_connectionLossCount != losses || m_isReconnecting || m_isPolling)
        co_return;
    startPolling(Poller::FirstRound::afterPause);
}

std::chrono::milliseconds AppContext::pollingInterval() const
{
    return m_poller ? m_poller->pollingInterval() : std::chrono::milliseconds(0);
}

void AppContext::setPollingInterval(bool background)
{
    const auto interval = Poller::intervalFor(m_settings, m_serverState, background);
    qCInfo(lcContext, "Set polling interval to %lld", static_cast<long long>(interval.count()));
    if (m_poller)
        m_poller->setPollingInterval(interval);
}

void AppContext::setAppState(AppState state)
{
    if (m_appState == state)
        return;
    m_appState = state;
    qCInfo(lcContext, "App did become %s", state == AppState::background ? "background" : "foreground");
    setPollingInterval(state == AppState::background);
}

namespace {

// Full updates are built off the main thread; only the swap happens on it.
QFuture<std::shared_ptr<TntCollection::Models>> buildOnWorker(QHash<QString, API::STntModel> tnts, int window)
{
    return QtConcurrent::run([tnts = std::move(tnts), window] {
        return std::make_shared<TntCollection::Models>(TntCollection::build(tnts, window));
    });
}

} // namespace

QCoro::Task<> AppContext::syncMainData()
{
    if (!m_client)
        co_return;
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    const quint64 round = m_pollRound;
    std::optional<API::MainData> data;
    std::exception_ptr failure;
    try {
        data = co_await m_client->mainData(m_rid);
    } catch (...) {
        failure = std::current_exception();
    }
    QUILLO_RETURN_IF_STALE(self, generation);
    // Polling stopped or restarted while this answer was on its way: it is no longer wanted.
    if (m_pollRound != round)
        co_return;
    if (failure) {
        reportPollFailure(QStringLiteral("Failed to get main data."), failure);
        co_return;
    }
    m_rid = data->rid;
    if (data->fullUpdate.value_or(false) && m_tntCollection.size() > 0) {
        m_tntCollection.mergeFull(data->tnts, m_settings.avgCoefficient());
    } else if (data->fullUpdate.value_or(false)) {
        auto built = buildOnWorker(std::move(data->tnts), m_settings.avgCoefficient());
        const std::shared_ptr<TntCollection::Models> models = co_await built;
        QUILLO_RETURN_IF_STALE(self, generation);
        if (m_pollRound != round)
            co_return;
        m_tntCollection.replaceAll(std::move(*models));
    } else {
        m_tntCollection.merge(data->tnts, data->tntsRemoved, m_settings.avgCoefficient());
    }
    // Before the labels: their announcement is when a remembered sidebar selection is checked.
    m_trackers.apply(data->fullUpdate.value_or(false), data->trackers, data->trackersRemoved);
    applyLabels(*data);
    if (data->serverState) {
        const qint64 serverInterval = m_serverState.refreshInterval();
        m_serverState.update(*data->serverState);
        if (m_settings.setRefreshIntervalAuto() && m_serverState.refreshInterval() != serverInterval)
            setPollingInterval(m_appState == AppState::background);
    }
}

void AppContext::reportPollFailure(const QString &title, const std::exception_ptr &failure)
{
    // An expired session ends polling too: see reportSyncFailure.
    if (thrown<API::TransportError>(failure) || thrown<API::AutorizationError>(failure))
        reportSyncFailure(QStringLiteral("Sync"), failure);
    else if (!m_clientError || m_clientError->title() != title)
        fail(title, failure);
}

void AppContext::applyLabels(const API::MainData &data)
{
    const bool full = data.fullUpdate.value_or(false);
    // A full update is announced even when it changes nothing: it is the server's whole list, by
    // which a remembered selection can be checked.
    bool changed = full;
    if (full && (!m_categories.isEmpty() || !m_tags.isEmpty())) {
        m_categories.clear();
        m_tags.clear();
        changed = true;
    }
    for (auto it = data.categories.cbegin(); it != data.categories.cend(); ++it) {
        API::Category &category = m_categories[it.key()];
        category.name = it->name.has_value() ? it->name : category.name.value_or(it.key());
        if (it->savePath)
            category.savePath = it->savePath;
        changed = true;
    }
    for (const QString &name : data.categoriesRemoved)
        changed |= m_categories.remove(name) > 0;
    for (const QString &tag : data.tags) {
        if (!m_tags.contains(tag)) {
            m_tags.append(tag);
            changed = true;
        }
    }
    for (const QString &tag : data.tagsRemoved)
        changed |= m_tags.removeAll(tag) > 0;
    if (changed)
        Q_EMIT labelsChanged();
}

QList<const TntModel *> AppContext::filterTnts(const QSet<SidebarItem> &selection, const QString &nameText) const
{
    return admittedTnts(m_tntCollection, SidebarFilter(selection, m_trackers), NameFilter(nameText));
}

void AppContext::persistAutoLogin(bool autoLogin)
{
    if (!m_configuration || m_configuration->autoLogin == autoLogin)
        return;
    ClientConfiguration changed = *m_configuration;
    changed.autoLogin = autoLogin;
    replaceConfiguration(changed);
}

QCoro::Task<> AppContext::selectConfiguration(QUuid id)
{
    Q_ASSERT(QThread::currentThread() == thread());
    auto configurations = m_configurations;
    const QUuid wanted = id; // lambdas see a coroutine's own copy of a local, not always of a parameter
    const auto found = std::find_if(configurations.begin(), configurations.end(),
                                    [&wanted](const ClientConfiguration &c) { return c.id == wanted; });
    if (found == configurations.end())
        co_return;
    for (ClientConfiguration &configuration : configurations)
        configuration.isCurrent = configuration.id == wanted;
    qCInfo(lcContext, "New client configuration:\n%s", qUtf8Printable(describe(*found)));
    m_configuration = *found;
    setConfigurations(std::move(configurations));
    co_await connect(std::nullopt);
}

QCoro::Task<> AppContext::connect(std::optional<UserCredentials> credentials)
{
    resetServerState();
    makeClient(*m_configuration);
    m_progressMessage = ProgressMessage::connecting;
    Q_EMIT connectionStateChanged();
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;

    // The bypass check comes first: a server that lets this client in needs no credentials at all.
    const std::optional<bool> bypassed = co_await checkAuthorizationBypass();
    QUILLO_RETURN_IF_STALE(self, generation);
    if (!bypassed) {
        m_progressMessage = ProgressMessage::none;
        Q_EMIT connectionStateChanged();
        co_return;
    }
    if (!*bypassed) {
        const AuthMethod method = m_configuration->authMethod;
        if (method == AuthMethod::none) {
            fail(QStringLiteral("Failed to login."),
                 std::make_exception_ptr(API::AutorizationError(API::AutorizationError::Case::unauthorized)));
            m_progressMessage = ProgressMessage::none;
            Q_EMIT connectionStateChanged();
            co_return;
        }
        if (!credentials && m_configuration->autoLogin) {
            credentials = co_await m_keychain.read(*m_configuration);
            QUILLO_RETURN_IF_STALE(self, generation);
            if (credentials && credentials->isMissing(method))
                credentials.reset();
        }
        if (!credentials) {
            qCInfo(lcContext, "Saved credentials not found. Showing login view.");
            m_progressMessage = ProgressMessage::none;
            presentLoginPrompt(true);
            Q_EMIT connectionStateChanged();
            co_return;
        }
        qCInfo(lcContext, "Found saved credentials for %s. Logging in...", qUtf8Printable(API::rawText(method)));
        m_client->setCredentials(*credentials);
        const bool authenticated = co_await authenticate();
        QUILLO_RETURN_IF_STALE(self, generation);
        if (!authenticated) {
            m_progressMessage = ProgressMessage::none;
            Q_EMIT connectionStateChanged();
            co_return;
        }
    }
    m_isAuthorized = true;
    co_await finishConnecting();
}

QCoro::Task<std::optional<bool>> AppContext::checkAuthorizationBypass()
{
    qCInfo(lcContext, "Checking authorization bypass...");
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    std::exception_ptr failure;
    try {
        co_await m_client->perform(API::Endpoint::Application::version());
    } catch (...) {
        failure = std::current_exception();
    }
    if (!self || self->m_generation != generation)
        co_return std::nullopt;
    if (!failure) {
        qCInfo(lcContext, "Authorization bypass %s", "enabled");
        co_return true;
    }
    if (!thrown<API::AutorizationError>(failure)) {
        fail(QStringLiteral("Failed to check authorization bypass."), failure);
        if (const auto transport = thrown<API::TransportError>(failure);
            transport && HTTPSRedirectSuggestion::triggersProbe(*m_configuration, *transport))
            detached(offerSecureAddress(*m_configuration, transport->description()));
        co_return std::nullopt;
    }
    qCInfo(lcContext, "Authorization bypass %s", "disabled");
    co_return false;
}

// Shows the login prompt again when the server refused the credentials.
QCoro::Task<bool> AppContext::authenticate()
{
    qCInfo(lcContext, "Loggin in...");
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    std::exception_ptr failure;
    try {
        if (m_configuration->authMethod == AuthMethod::cookieLogin)
            co_await m_client->login();
        else // header authentication: the first authorised request proves it
            co_await m_client->perform(API::Endpoint::Application::version());
    } catch (...) {
        failure = std::current_exception();
    }
    if (!self || self->m_generation != generation)
        co_return false;
    qCInfo(lcContext, "Loggin in %s.", failure ? "failed" : "success");
    if (failure) {
        fail(QStringLiteral("Failed to login."), failure);
        if (thrown<API::AutorizationError>(failure))
            presentLoginPrompt(true);
        co_return false;
    }
    qCInfo(lcContext, "Loggin in success.");
    co_return true;
}

QCoro::Task<> AppContext::finishConnecting()
{
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    std::exception_ptr failure;
    QString failedTitle;
    try {
        failedTitle = QStringLiteral("Failed to get QBt version.");
        QString version = co_await m_client->version();
        QUILLO_RETURN_IF_STALE(self, generation);
        m_qbtVersion = std::move(version);
        qCInfo(lcContext, "qBt version: %s", qUtf8Printable(m_qbtVersion));
        failedTitle = QStringLiteral("Failed to get web API version.");
        const API::WebAPIVersion apiVersion = co_await m_client->webapiVersion();
        QUILLO_RETURN_IF_STALE(self, generation);
        m_webAPIVersion = apiVersion;
        qCInfo(lcContext, "Web API version: %s", qUtf8Printable(m_webAPIVersion.toString()));
    } catch (...) {
        failure = std::current_exception();
    }
    if (!self || self->m_generation != generation)
        co_return;
    if (failure) {
        fail(failedTitle, failure);
        m_progressMessage = ProgressMessage::none;
        Q_EMIT connectionStateChanged();
        co_return;
    }
    try {
        API::BuildInfo buildInfo = co_await m_client->buildInfo();
        QUILLO_RETURN_IF_STALE(self, generation);
        m_qbtBuildInfo = std::move(buildInfo);
    } catch (const std::exception &error) {
        // Nothing depends on it: a server that cannot say is still usable.
        qCWarning(lcContext, "Build info unavailable: %s", error.what());
    }
    QUILLO_RETURN_IF_STALE(self, generation);
    m_progressMessage = ProgressMessage::none;
    Q_EMIT connectionStateChanged();
    co_await syncAndStartPolling();
}

QCoro::Task<> AppContext::logIn(UserCredentials credentials, bool autoLogin)
{
    Q_ASSERT(QThread::currentThread() == thread());
    if (!m_configuration || !m_client)
        co_return;
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    presentLoginPrompt(false);
    m_progressMessage = ProgressMessage::connecting;
    Q_EMIT connectionStateChanged();
    m_client->setCredentials(credentials);
    const bool authenticated = co_await authenticate();
    QUILLO_RETURN_IF_STALE(self, generation);
    if (!authenticated) {
        m_progressMessage = ProgressMessage::none;
        Q_EMIT connectionStateChanged();
        co_return;
    }
    persistAutoLogin(autoLogin);
    if (autoLogin)
        co_await m_keychain.save(*m_configuration, credentials);
    else
        co_await m_keychain.remove(*m_configuration);
    QUILLO_RETURN_IF_STALE(self, generation);
    m_isAuthorized = true;
    co_await finishConnecting();
}

void AppContext::cancelLogin()
{
    Q_ASSERT(QThread::currentThread() == thread());
    qCInfo(lcContext, "Loggin in cancelled.");
    presentLoginPrompt(false);
    m_progressMessage = ProgressMessage::none;
    Q_EMIT connectionStateChanged();
}

QCoro::Task<> AppContext::logOut()
{
    Q_ASSERT(QThread::currentThread() == thread());
    if (!m_client)
        co_return;
    qCInfo(lcContext, "Logging out...");
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    stopPolling();
    std::exception_ptr failure;
    try {
        co_await m_client->logout();
    } catch (...) {
        failure = std::current_exception();
    }
    QUILLO_RETURN_IF_STALE(self, generation);
    if (failure)
        fail(QStringLiteral("Failed to logout."), failure);
    // The connection stays chosen, to log in again; what the server showed is no longer current.
    resetServerState();
    Q_EMIT connectionStateChanged();
}

void AppContext::reportSyncFailure(const QString &operation, const std::exception_ptr &error)
{
    Q_ASSERT(QThread::currentThread() == thread());
    if (const auto transport = thrown<API::TransportError>(error)) {
        if (transport->isCancelled())
            return;
        qCWarning(lcContext, "%s Connection lost: %s", qUtf8Printable(operation), transport->what());
        m_connectionError = transport->description();
        stopPolling();
        ++m_connectionLossCount;
        Q_EMIT connectionStateChanged();
        return;
    }
    if (const auto refused = thrown<API::AutorizationError>(error)) {
        // The server no longer knows this client (it restarted, or the session timed out): every
        // later poll would be refused too. A cookie session is renewed at once, unless the last
        // renewal was just now, which would make a loop of logins against a server that keeps refusing.
        qCWarning(lcContext, "%s Error: %s", qUtf8Printable(operation), refused->what());
        stopPolling();
        constexpr qint64 renewalPause = 60'000;
        if (m_configuration && m_configuration->authMethod == AuthMethod::cookieLogin
            && (!m_lastSessionRenewal.isValid() || m_lastSessionRenewal.hasExpired(renewalPause))) {
            m_lastSessionRenewal.start();
            detached(reconnect());
            return;
        }
        m_connectionError = refused->description();
        ++m_connectionLossCount;
        Q_EMIT connectionStateChanged();
        return;
    }
    try {
        std::rethrow_exception(error);
    } catch (const std::exception &other) {
        qCWarning(lcContext, "%s Error: %s", qUtf8Printable(operation), other.what());
    }
}

QCoro::Task<> AppContext::reconnect()
{
    Q_ASSERT(QThread::currentThread() == thread());
    if (!m_client || !m_configuration || m_isReconnecting)
        co_return;
    qCInfo(lcContext, "Reconnecting...");
    m_isReconnecting = true;
    Q_EMIT connectionStateChanged();
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    std::exception_ptr failure;
    try {
        co_await m_client->perform(API::Endpoint::Application::version());
    } catch (...) {
        failure = std::current_exception();
    }
    QUILLO_RETURN_IF_STALE(self, generation);
    m_isReconnecting = false;
    if (!failure) {
        qCInfo(lcContext, "Session is still valid.");
        m_connectionLossCount = 0;
        m_connectionError.clear();
        Q_EMIT connectionStateChanged();
        co_await syncAndStartPolling();
        co_return;
    }
    if (thrown<API::AutorizationError>(failure) && m_configuration->authMethod == AuthMethod::cookieLogin) {
        qCInfo(lcContext, "Session expired. Logging in again...");
        // A named value, not a temporary in the co_await expression: g++ 12 destroys such
        // temporaries twice.
        std::optional<UserCredentials> known = m_client->credentials();
        if (known->isMissing(AuthMethod::cookieLogin))
            known.reset();
        co_await connect(std::move(known));
        co_return;
    }
    if (thrown<API::TransportError>(failure)) {
        qCWarning(lcContext, "Reconnection failed: connection is still lost.");
        ++m_connectionLossCount; // the next countdown is longer
    } else {
        qCWarning(lcContext, "Reconnection failed: authorization required.");
    }
    Q_EMIT connectionStateChanged();
    fail(QStringLiteral("Failed to reconnect."), failure);
}
