#include "core/AppContext.h"

#include "api/Client.h"
#include "model/SidebarFilter.h"
#include "support/Detached.h"

#include <QCoreApplication>

#include <stdexcept>

AppContext::AppContext(UserDefaults &defaults, KeychainStore &keychain, QObject *parent)
    : QObject(parent)
    , TntCommandMethods(m_operations, m_selectedTnts)
    , m_keychain(keychain)
    , m_settings(defaults)
    , m_connections(defaults, keychain)
    , m_addition(
          m_tntCollection, [this] { m_sync.forcePoll(); },
          [this](QString hash) { return m_operations.start(TntTargets::only({hash})); })
{
    m_serverState.setAveragingWindow(m_settings.avgCoefficient());
    QObject::connect(&m_settings, &AppSettings::dataTransferRateAvgCoefficientDidChange, this, [this](int samples) {
        m_serverState.setAveragingWindow(samples);
        m_tntCollection.setAveragingWindow(samples);
        m_tntDetails.setAveragingWindow(samples);
    });
    QObject::connect(&m_settings, &AppSettings::changed, this, [this](UserDefaultsKey key) {
        if (key == UserDefaultsKey::refreshInterval || key == UserDefaultsKey::refreshMode ||
            key == UserDefaultsKey::intervalIncreaseValue)
            m_sync.setPollingInterval(m_sync.appState() == AppState::background);
    });

    if (const std::optional<QString> &aside = defaults.setAsidePath()) {
        const QString details =
            QCoreApplication::translate("AppContext", "The file is kept unchanged as %1. Quillo started with "
                                                      "what it could read of it; everything else has its "
                                                      "default value.")
                .arg(*aside);
        m_errors.report(QCoreApplication::translate("AppContext", "Quillo could not read its settings file."),
                        std::make_exception_ptr(std::runtime_error(details.toStdString())));
    }

    QObject::connect(&m_connections, &ConnectionList::changed, this, &AppContext::configurationsChanged);
    QObject::connect(&m_errors, &ErrorReporter::changed, this, &AppContext::clientErrorChanged);
    QObject::connect(&m_secureOffer, &SecureAddressOffer::changed, this, &AppContext::httpsRedirectSuggestionChanged);
    QObject::connect(&m_labels, &ServerLabels::changed, this, &AppContext::labelsChanged);
    QObject::connect(&m_sync, &Sync::pollingStarted, this, &AppContext::pollingStarted);
    QObject::connect(&m_sync, &Sync::pollingStopped, this, &AppContext::pollingStopped);
    QObject::connect(&m_connector, &Connector::stateChanged, this, &AppContext::connectionStateChanged);
    QObject::connect(&m_connector, &Connector::loginPromptChanged, this, &AppContext::loginPromptChanged);
    QObject::connect(&m_connector, &Connector::sessionChanged, this, [this] {
        setSelectedTnts({});
        m_transferRates.clear();
        const bool open = m_connector.session() && m_connections.selected();
        m_snapshots.follow(open ? std::optional(m_connections.selected()->id) : std::nullopt);
    });
    QObject::connect(&m_sync, &Sync::catchingUp, &m_completionNotifier, &CompletionNotifier::beginCatchUp);
    QObject::connect(&m_sync, &Sync::currentChanged, this, [this] {
        if (!m_sync.isShowingSnapshot())
            m_completionNotifier.endCatchUp();
        Q_EMIT connectionStateChanged();
    });
    QObject::connect(&m_connections, &ConnectionList::changed, this, [this] {
        QList<QUuid> saved;
        for (const ClientConfiguration &configuration : m_connections.all())
            saved << configuration.id;
        m_snapshots.retain(saved);
    });
    QObject::connect(&m_sync, &Sync::mainDataMerged, this, &AppContext::sampleRates);
    QObject::connect(
        &m_connector, &Connector::insecureAddressFailed, this,
        [this](const ClientConfiguration &failed, const QString &error, HTTPSRedirectSuggestion::Origin origin) {
            detached(m_secureOffer.probe(m_connector.session(), failed, error, origin));
        });
    QObject::connect(&m_connector, &Connector::certificateRefused, &m_certificateTrust, &CertificateTrust::ask);
    QObject::connect(&m_certificateTrust, &CertificateTrust::changed, this, &AppContext::certificateQuestionChanged);
    QObject::connect(&m_systemEvents, &Platform::SystemEvents::connectivityRestored, this,
                     [this] { detached(m_connector.checkConnection()); });
    QObject::connect(&m_operations, &TntOperations::trackersEdited, this, &AppContext::trackersEdited);
    QObject::connect(&m_operations, &TntOperations::trackersEdited, &m_detailLoader, &TntDetailLoader::reloadTrackers);
    QObject::connect(&m_operations, &TntOperations::tntsRemoved, this, [this] {
        setSelectedTnts({});
        m_detailLoader.drop();
        Q_EMIT tntsRemoved();
    });
    QObject::connect(&m_addition, &TntAddition::failed, &m_errors, &ErrorReporter::reportUnlessCancelled);
}

void AppContext::sampleRates()
{
    const auto now = RateHistory::Clock::now();
    const bool alternative = m_serverState.useAltSpeedLimits();
    m_transferRates.add({now, m_serverState.dlInfoSpeed(), m_serverState.upInfoSpeed(), alternative});
    if (const TntModel *tnt = m_tntCollection.find(m_tntDetails.hash()))
        m_tntDetails.rates().add({now, tnt->dlspeed(), tnt->upspeed(), alternative});
}

AppContext::~AppContext()
{
    m_snapshots.keep();
    // Whatever was begun for the session resumes now, finds it gone and touches nothing.
    m_connector.abandon();
}

API::Client *AppContext::client() const
{
    const Session *session = m_connector.session();
    return session ? &session->client() : nullptr;
}

const QString &AppContext::qbtVersion() const
{
    static const QString none;
    return m_connector.session() ? m_connector.session()->qbtVersion() : none;
}

const API::WebAPIVersion &AppContext::webAPIVersion() const
{
    static const API::WebAPIVersion none;
    return m_connector.session() ? m_connector.session()->webAPIVersion() : none;
}

const API::BuildInfo &AppContext::qbtBuildInfo() const
{
    static const API::BuildInfo none;
    return m_connector.session() ? m_connector.session()->buildInfo() : none;
}

QList<const TntModel *> AppContext::filterTnts(const QSet<SidebarItem> &selection, const QString &nameText) const
{
    return admittedTnts(m_tntCollection, SidebarFilter(selection, m_trackers), NameFilter(nameText));
}

void AppContext::setSelectedTnts(QSet<QString> hashes)
{
    if (hashes == m_selectedTnts)
        return;
    m_selectedTnts = std::move(hashes);
    m_tntDetails.setSelection(m_selectedTnts);
    Q_EMIT selectionChanged();
}

QCoro::Task<> AppContext::removeConfiguration(QUuid id)
{
    if (m_connections.isSelected(id)) {
        m_connections.deselect();
        m_connector.close();
    }
    return m_connections.remove(id);
}

QCoro::Task<> AppContext::removeAllConfigurations()
{
    if (m_connections.selected() && !m_connections.selected()->isLocal) {
        m_connections.deselect();
        m_connector.close();
    }
    return m_connections.removeAllRemote();
}

QCoro::Task<> AppContext::selectConfiguration(QUuid id)
{
    if (!m_connections.select(id))
        co_return;
    QCoro::Task<> opening = m_connector.open();
    co_await std::move(opening);
}

QCoro::Task<> AppContext::logIn(API::UserCredentials credentials, bool autoLogin)
{
    return m_connector.logIn(std::move(credentials), autoLogin);
}

void AppContext::reportSyncFailure(const QString &operation, const std::exception_ptr &error)
{
    m_connector.reportSyncFailure(operation, error);
}

QCoro::Task<> AppContext::acceptHTTPSRedirectSuggestion()
{
    if (const std::optional<QUuid> moved = m_secureOffer.accept()) {
        QCoro::Task<> opening = selectConfiguration(*moved);
        co_await std::move(opening);
    }
}

QCoro::Task<> AppContext::trustCertificate()
{
    if (const std::optional<QUuid> trusting = m_certificateTrust.trust()) {
        QCoro::Task<> opening = selectConfiguration(*trusting);
        co_await std::move(opening);
    }
}

QCoro::Task<> AppContext::shutDownServer()
{
    QCoro::Task<bool> asking = m_limits.shutDown();
    if (co_await std::move(asking))
        m_connector.close();
}

QCoro::Task<bool> AppContext::addTnts(API::TntAddingOptions options, bool start, QString hash,
                                      QList<int> filePriorities)
{
    TntAddition::Server server;
    if (Session *session = m_connector.session(); session && session->isAuthorized())
        server = {session, &session->client(), session->features()};
    return m_addition.add(std::move(server), {std::move(options), start, std::move(hash), std::move(filePriorities)});
}
