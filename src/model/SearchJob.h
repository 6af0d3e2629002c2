#pragma once

#include "api/Records.h"
#include "model/KeyedRows.h"

#include <QList>
#include <QString>

// One search as a tab shows it: what was asked, the results read so far in the server's order, and
// where the job stands. Results are read on from the count already held, so each arrives once.
class SearchJob : public KeyedRowsSignals
{
    Q_OBJECT

public:
    // The server says only running or stopped; a stop asked for here tells stopped from finished.
    enum class State { starting, running, finished, stopped, failed };

    struct Query
    {
        QString pattern;
        QStringList plugins; // "enabled", "all", or one plugin's name
        QString category;    // "all" or a category id
    };

    explicit SearchJob(Query query, QObject *parent = nullptr);

    const Query &query() const { return m_query; }
    qsizetype size() const final { return m_results.size(); }
    const API::SearchResult &at(qsizetype row) const { return m_results.at(row); }
    // The server's number for the job; -1 until it has started.
    qint64 id() const { return m_id; }
    State state() const { return m_state; }
    bool isRunning() const { return m_state == State::starting || m_state == State::running; }
    // Why the job failed, in the server's or the network's words.
    const QString &failure() const { return m_failure; }
    // Where the next read of results starts.
    qsizetype nextOffset() const { return m_results.size(); }

    void started(qint64 id);
    // A page read from nextOffset(). The server counts the page and what came before it in `total`;
    // any other count means the results are not the ones held, and the job fails (false).
    bool append(API::SearchResults page);
    // Stopped, not finished, once the server reports the job stopped.
    void stopRequested();
    void fail(const QString &reason);

Q_SIGNALS:
    void stateChanged(SearchJob::State state);

private:
    void setState(State state);

    Query m_query;
    QList<API::SearchResult> m_results;
    qint64 m_id = -1;
    State m_state = State::starting;
    bool m_stopRequested = false;
    QString m_failure;
};
