#include "core/SearchRunner.h"

#include "api/Client.h"
#include "api/ClientError.h"
#include "api/Endpoint.h"
#include "core/Connector.h"
#include "model/SearchJob.h"
#include "support/Captured.h"
#include "support/Detached.h"

#include <QCoreApplication>

namespace {

QString failureText(const std::exception_ptr &error)
{
    const API::ClientError shown(QString(), error);
    return shown.failureReason().isEmpty() ? shown.description() : shown.description() + u' ' + shown.failureReason();
}

// Outlives the runner: a tab closed while its job starts or runs still frees the server's slot.
QCoro::Task<> deleteOnServer(QPointer<Session> session, qint64 id)
{
    if (!session)
        co_return;
    auto deleted = co_await captured(session->client().perform(API::Endpoint::Search::deleteSearch(id)));
    if (!deleted)
        qWarning("Search %lld could not be deleted on the server: %s", static_cast<long long>(id),
                 qUtf8Printable(failureText(deleted.error)));
}

} // namespace

SearchRunner::SearchRunner(Connector &connector, SearchJob &job, QObject *parent)
    : QObject(parent)
    , m_connector(connector)
    , m_job(job)
    , m_reads(interval, [this] { return m_shown && m_job.state() == SearchJob::State::running; },
              [this](QPointer<Poller> round) { return read(round); })
{
    connect(&m_job, &SearchJob::stateChanged, this, [this] { m_reads.follow(); });
}

SearchRunner::~SearchRunner()
{
    if (m_job.id() >= 0)
        detached(deleteOnServer(m_connector.session(), m_job.id()));
}

QCoro::Task<> SearchRunner::start()
{
    const QPointer<Session> session = m_connector.session();
    if (!session || !session->isAuthorized()) {
        m_job.fail(QCoreApplication::translate("SearchRunner", "Quillo is not connected to a server."));
        co_return;
    }
    const SearchJob::Query query = m_job.query();
    const QPointer<SearchRunner> self(this);
    auto started = co_await captured(session->client().startSearch(query.pattern, query.plugins, query.category));
    if (!self) {
        if (started)
            detached(deleteOnServer(session, *started.value));
        co_return;
    }
    if (!started) {
        m_job.fail(failureText(started.error));
        co_return;
    }
    m_job.started(*started.value);
    if (m_stopPending)
        co_await sendStop();
}

void SearchRunner::stop()
{
    if (!m_job.isRunning())
        return;
    m_job.stopRequested();
    if (m_job.id() < 0)
        m_stopPending = true; // sent once the server has named the job
    else
        detached(sendStop());
}

QCoro::Task<> SearchRunner::sendStop()
{
    m_stopPending = false;
    const QPointer<Session> session = m_connector.session();
    if (!session)
        co_return;
    const QPointer<SearchRunner> self(this);
    auto stopped = co_await captured(session->client().perform(API::Endpoint::Search::stop(m_job.id())));
    if (!self)
        co_return;
    // A job the server no longer knows answers 404 (a finished one still takes the stop): the next
    // read says how it ended.
    if (!stopped && !thrown<API::SearchError>(stopped.error))
        m_job.fail(failureText(stopped.error));
    m_reads.follow();
}

void SearchRunner::setShown(bool shown)
{
    m_shown = shown;
    m_reads.follow();
}

QCoro::Task<> SearchRunner::read(QPointer<Poller> round)
{
    const QPointer<Session> session = m_connector.session();
    if (!session || !session->isAuthorized())
        co_return;
    auto page = co_await captured(session->client().searchResults(m_job.id(), m_job.nextOffset()));
    if (!round)
        co_return;
    if (!page) {
        // The job is gone (a new session of a server before 5.3 keeps no jobs of the last one) or
        // its results are not those held: reading again cannot mend either.
        if (thrown<API::SearchError>(page.error))
            m_job.fail(failureText(page.error));
        else
            m_connector.reportPollFailure(
                QCoreApplication::translate("SearchRunner", "Failed to get the search results."), page.error);
        co_return;
    }
    m_job.append(std::move(*page.value));
}
