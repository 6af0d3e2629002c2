#include "model/SearchJob.h"

#include <QCoreApplication>

SearchJob::SearchJob(Query query, QObject *parent)
    : KeyedRowsSignals(parent)
    , m_query(std::move(query))
{}

void SearchJob::started(qint64 id)
{
    m_id = id;
    setState(State::running);
}

bool SearchJob::append(API::SearchResults page)
{
    if (!isRunning())
        return true;
    if (page.total != nextOffset() + page.results.size()) {
        fail(QCoreApplication::translate("SearchJob", "The server's results no longer match those shown."));
        return false;
    }
    if (!page.results.isEmpty()) {
        const qsizetype first = m_results.size();
        Q_EMIT aboutToInsert(first, first + page.results.size() - 1);
        m_results.append(std::move(page.results));
        Q_EMIT didInsert();
    }
    if (page.status == API::SearchStatus::stopped)
        setState(m_stopRequested ? State::stopped : State::finished);
    return true;
}

void SearchJob::stopRequested()
{
    m_stopRequested = true;
}

void SearchJob::fail(const QString &reason)
{
    m_failure = reason;
    setState(State::failed);
}

void SearchJob::setState(State state)
{
    if (state == m_state)
        return;
    m_state = state;
    Q_EMIT stateChanged(state);
}
