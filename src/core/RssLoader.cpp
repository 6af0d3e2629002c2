#include "core/RssLoader.h"

#include "api/Client.h"
#include "core/Connector.h"
#include "core/Sync.h"
#include "model/RssFeeds.h"
#include "support/Captured.h"

#include <QCoreApplication>

RssLoader::RssLoader(Connector &connector, Sync &sync, RssFeeds &feeds, QObject *parent)
    : QObject(parent)
    , m_connector(connector)
    , m_feeds(feeds)
    , m_sync(sync)
    , m_reads(interval, [this] { return m_sync.isPolling() && m_feeds.isShown(); },
              [this](QPointer<Poller> round) { return read(round); })
{
    QObject::connect(&sync, &Sync::pollingStarted, this, [this] { m_reads.restart(); });
    QObject::connect(&sync, &Sync::pollingStopped, this, [this] { m_reads.follow(); });
    QObject::connect(&connector, &Connector::sessionChanged, this, [this] {
        m_feeds.reset();
        m_reads.restart();
    });
    QObject::connect(&m_feeds, &RssFeeds::shownChanged, this, [this] { m_reads.follow(); });
}

RssLoader::~RssLoader() = default;

void RssLoader::readNow()
{
    m_reads.restart();
}

QCoro::Task<> RssLoader::read(QPointer<Poller> round)
{
    const QPointer<Session> session = m_connector.session();
    if (!session || !session->isAuthorized())
        co_return;
    auto reading = captured(session->client().rssItems());
    auto items = co_await std::move(reading);
    if (!round || !session)
        co_return;
    if (!items) {
        m_connector.reportPollFailure(QCoreApplication::translate("RssLoader", "Failed to get the RSS feeds."),
                                      items.error);
        co_return;
    }
    m_feeds.setRoot(std::move(*items.value));
}
