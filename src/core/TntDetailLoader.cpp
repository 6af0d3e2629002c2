#include "core/TntDetailLoader.h"

#include "api/Client.h"
#include "core/Connector.h"
#include "core/Sync.h"
#include "model/TntDetailContext.h"
#include "settings/AppSettings.h"
#include "support/Captured.h"
#include "support/Detached.h"

#include <QCoreApplication>

using Tab = TntDetailContext::Tab;

TntDetailLoader::TntDetailLoader(Connector &connector, Sync &sync, TntDetailContext &details, AppSettings &settings,
                                 QObject *parent)
    : QObject(parent)
    , m_connector(connector)
    , m_details(details)
    , m_settings(settings)
    , m_shown(std::make_unique<QObject>())
{
    sync.addRoundJob([this] { return refresh(false); });
    // Peers are an incremental sync of their own, begun afresh with every poller.
    QObject::connect(&sync, &Sync::pollingStarted, this, [this] {
        m_details.resetPeers();
        m_details.setActive(true);
    });
    QObject::connect(&sync, &Sync::pollingStopped, this, [this] { m_details.setActive(false); });
    QObject::connect(&m_details, &TntDetailContext::targetChanged, this, [this] {
        // Another torrent: what was asked for the last one is not wanted.
        if (m_details.hash() != m_shownHash) {
            m_shownHash = m_details.hash();
            forgetShown();
        }
        refreshAtOnce();
    });
    QObject::connect(&m_details, &TntDetailContext::tabChanged, this, &TntDetailLoader::refreshAtOnce);
    // A refresh under way belonged to the session that is gone.
    QObject::connect(&connector, &Connector::sessionChanged, this, [this] {
        m_refreshing = false;
        m_refreshAgain = false;
    });
}

TntDetailLoader::~TntDetailLoader() = default;

void TntDetailLoader::forgetShown()
{
    m_shown = std::make_unique<QObject>();
}

void TntDetailLoader::refreshAtOnce()
{
    if (!m_details.hash().isEmpty())
        detached(refresh(true));
}

void TntDetailLoader::drop()
{
    forgetShown();
    m_details.clear();
}

void TntDetailLoader::reloadTrackers(const QString &hash)
{
    if (hash == m_details.hash())
        detached(loadTrackers(m_connector.session()));
}

void TntDetailLoader::reloadWebSeeds(const QString &hash)
{
    if (hash == m_details.hash())
        detached(loadWebSeeds(m_connector.session()));
}

QCoro::Task<> TntDetailLoader::refresh(bool targetChanged)
{
    const QPointer<Session> session = m_connector.session();
    if (!session)
        co_return;
    if (m_refreshing) {
        m_refreshAgain = m_refreshAgain || targetChanged;
        co_return;
    }
    m_refreshing = true;
    do {
        m_refreshAgain = false;
        QCoro::Task<> pass = load(session);
        co_await std::move(pass);
        if (!session)
            co_return;
    } while (m_refreshAgain);
    m_refreshing = false;
}

template <typename T>
QCoro::Task<std::optional<T>> TntDetailLoader::fetch(QPointer<Session> session, QCoro::Task<T> request,
                                                     QString failureTitle)
{
    const QPointer<QObject> shown = m_shown.get();
    QCoro::Task<Captured<T>> asking = captured(std::move(request));
    Captured<T> answer = co_await std::move(asking);
    if (!session || !shown)
        co_return std::nullopt;
    if (!answer) {
        m_connector.reportPollFailure(failureTitle, answer.error);
        co_return std::nullopt;
    }
    co_return std::move(answer.value);
}

QCoro::Task<> TntDetailLoader::load(QPointer<Session> session)
{
    const QString hash = m_details.hash();
    if (hash.isEmpty() || !session || !session->isAuthorized())
        co_return;
    API::Client &client = session->client();
    const int window = m_settings.avgCoefficient();
    switch (m_details.tab()) {
    case Tab::general: {
        auto properties = fetch(session, client.properties(hash),
                                QCoreApplication::translate("TntDetailLoader", "Failed to get torrent properties."));
        const auto answer = co_await std::move(properties);
        if (!answer || !session)
            break; // one failure a round is enough to report
        m_details.setProperties(*answer, window);
        auto pieces = fetch(session, client.pieceStates(hash),
                            QCoreApplication::translate("TntDetailLoader", "Failed to get torrent pieces state."));
        if (auto states = co_await std::move(pieces))
            m_details.setPieceStates(std::move(*states));
        break;
    }
    case Tab::trackers: {
        QCoro::Task<> trackers = loadTrackers(session);
        co_await std::move(trackers);
        break;
    }
    case Tab::peers: {
        auto peers = fetch(session, client.peers(hash, m_details.rid()),
                           QCoreApplication::translate("TntDetailLoader", "Failed to get torrent peers."));
        if (const auto answer = co_await std::move(peers))
            m_details.applyPeers(*answer, window);
        break;
    }
    case Tab::httpSources: {
        QCoro::Task<> webSeeds = loadWebSeeds(session);
        co_await std::move(webSeeds);
        break;
    }
    case Tab::content: {
        auto files = fetch(session, client.files(hash),
                           QCoreApplication::translate("TntDetailLoader", "Failed to get torrent content."));
        if (auto answer = co_await std::move(files))
            m_details.setFiles(std::move(*answer));
        break;
    }
    case Tab::speed: // drawn from the rates every main-data answer brings
        break;
    }
}

QCoro::Task<> TntDetailLoader::loadTrackers(QPointer<Session> session)
{
    const QString hash = m_details.hash();
    if (hash.isEmpty() || !session || !session->isAuthorized())
        co_return;
    auto trackers = fetch(session, session->client().trackers(hash),
                          QCoreApplication::translate("TntDetailLoader", "Failed to get torrent trackers."));
    if (auto answer = co_await std::move(trackers))
        m_details.setTrackers(std::move(*answer));
}

QCoro::Task<> TntDetailLoader::loadWebSeeds(QPointer<Session> session)
{
    const QString hash = m_details.hash();
    if (hash.isEmpty() || !session || !session->isAuthorized())
        co_return;
    auto webSeeds = fetch(session, session->client().webSeeds(hash),
                          QCoreApplication::translate("TntDetailLoader", "Failed to get torrent web seeds."));
    if (auto answer = co_await std::move(webSeeds))
        m_details.setWebSeeds(std::move(*answer));
}
