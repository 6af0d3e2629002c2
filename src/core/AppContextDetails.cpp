// The detail pane's loading: the peers of the torrent it shows, incrementally, and what its visible
// tab shows, fetched whole. It runs as a job of every poll round and at once when the pane gets
// another torrent or tab.
#include "core/AppContext.h"

#include "api/Client.h"

#include <QPointer>

using Tab = TntDetailContext::Tab;

template<typename T>
QCoro::Task<std::optional<T>> AppContext::fetchTntDetail(QCoro::Task<T> request, QString failureTitle)
{
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    const quint64 epoch = m_tntDetails.epoch();
    std::optional<T> answer;
    std::exception_ptr failure;
    try {
        answer = co_await std::move(request);
    } catch (...) {
        failure = std::current_exception();
    }
    if (!self || self->m_generation != generation || m_tntDetails.epoch() != epoch)
        co_return std::nullopt;
    if (failure) {
        reportPollFailure(failureTitle, failure);
        co_return std::nullopt;
    }
    co_return answer;
}

QCoro::Task<> AppContext::refreshTntDetails(bool targetChanged)
{
    if (m_tntDetailsRefreshing) {
        m_tntDetailsRefreshAgain = m_tntDetailsRefreshAgain || targetChanged;
        co_return;
    }
    m_tntDetailsRefreshing = true;
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    do {
        m_tntDetailsRefreshAgain = false;
        QCoro::Task<> pass = loadTntDetails();
        co_await std::move(pass);
        if (!self || self->m_generation != generation)
            co_return;
    } while (m_tntDetailsRefreshAgain);
    m_tntDetailsRefreshing = false;
}

QCoro::Task<> AppContext::loadTntDetails()
{
    const QString hash = m_tntDetails.hash();
    if (hash.isEmpty() || !m_client || !m_isAuthorized)
        co_return;
    const int window = m_settings.avgCoefficient();
    switch (m_tntDetails.tab()) {
    case Tab::general: {
        auto properties = fetchTntDetail(m_client->properties(hash), QStringLiteral("Failed to get tnt properties."));
        if (const auto answer = co_await std::move(properties))
            m_tntDetails.setProperties(*answer, window);
        break;
    }
    case Tab::trackers: {
        QCoro::Task<> trackers = loadTntTrackers();
        co_await std::move(trackers);
        break;
    }
    case Tab::peers: {
        auto peers = fetchTntDetail(m_client->peers(hash, m_tntDetails.rid()), QStringLiteral("Failed to get tnt peers."));
        if (const auto answer = co_await std::move(peers))
            m_tntDetails.applyPeers(*answer, window);
        break;
    }
    case Tab::content: {
        auto files = fetchTntDetail(m_client->files(hash), QStringLiteral("Faield to get tnt content."));
        if (auto answer = co_await std::move(files))
            m_tntDetails.setFiles(std::move(*answer));
        break;
    }
    }
}

QCoro::Task<> AppContext::loadTntTrackers()
{
    const QString hash = m_tntDetails.hash();
    if (hash.isEmpty() || !m_client || !m_isAuthorized)
        co_return;
    auto trackers = fetchTntDetail(m_client->trackers(hash), QStringLiteral("Failed to get tnt trackers."));
    auto answer = co_await std::move(trackers);
    if (!answer)
        co_return;
    m_tntDetails.setTrackers(std::move(*answer));
    // The web seeds show beside the trackers.
    auto webSeeds = fetchTntDetail(m_client->webSeeds(hash), QStringLiteral("Failed to get tnt web seeds."));
    if (auto seeds = co_await std::move(webSeeds))
        m_tntDetails.setWebSeeds(std::move(*seeds));
}
