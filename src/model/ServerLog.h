#pragma once

#include "api/Records.h"
#include "model/KeyedRows.h"

#include <QList>
#include <QObject>

// One of the server's logs as read so far, oldest first, read on from the last id. The server
// keeps a ring of its newest 20,000 lines and numbers them from 0 at its start; this keeps the
// newest `capacity`.
template<typename Entry>
class LogLines : public KeyedRowsSignals
{
public:
    enum class Merge { appended, wentBack };

    explicit LogLines(qsizetype capacity, QObject *parent = nullptr)
        : KeyedRowsSignals(parent)
        , m_capacity(capacity)
    {
    }

    qsizetype size() const final { return m_entries.size(); }
    const Entry &at(qsizetype row) const { return m_entries.at(row); }
    qsizetype capacity() const { return m_capacity; }
    // What the next read starts after; -1 before the first line.
    qint64 lastId() const { return m_lastId; }

    // An answer to a read after lastId(): its lines, in the server's order. Ids that do not run on
    // from lastId() mean another server, or the same one restarted: everything is forgotten
    // (wentBack) and the next read starts from the beginning.
    Merge merge(QList<Entry> entries)
    {
        qint64 previous = m_lastId;
        for (const Entry &entry : std::as_const(entries)) {
            if (entry.id <= previous) {
                reset();
                return Merge::wentBack;
            }
            previous = entry.id;
        }
        if (entries.isEmpty())
            return Merge::appended;
        m_lastId = previous;
        if (entries.size() > m_capacity)
            entries.remove(0, entries.size() - m_capacity);
        if (const qsizetype over = m_entries.size() + entries.size() - m_capacity; over > 0) {
            Q_EMIT aboutToRemove(0, over - 1);
            m_entries.remove(0, over);
            Q_EMIT didRemove();
        }
        const qsizetype first = m_entries.size();
        Q_EMIT aboutToInsert(first, first + entries.size() - 1);
        m_entries.append(std::move(entries));
        Q_EMIT didInsert();
        return Merge::appended;
    }

    // Empties the view; reading goes on after the last id, so the lines cleared stay away.
    void clear()
    {
        Q_EMIT aboutToReset();
        m_entries.clear();
        Q_EMIT didReset();
    }

    // As at the start: the next read asks for the whole log.
    void reset()
    {
        clear();
        m_lastId = -1;
    }

private:
    QList<Entry> m_entries;
    qsizetype m_capacity;
    qint64 m_lastId = -1;
};

// The server's execution log and the peers it refused, as the log window shows them. They are read
// only while the window is shown and the connection polls (see ServerLogLoader).
class ServerLog : public QObject
{
    Q_OBJECT

public:
    static constexpr qsizetype defaultCapacity = 10'000;

    explicit ServerLog(qsizetype capacity = defaultCapacity, QObject *parent = nullptr);

    LogLines<API::LogMessage> &messages() { return m_messages; }
    const LogLines<API::LogMessage> &messages() const { return m_messages; }
    LogLines<API::PeerLogEntry> &peers() { return m_peers; }
    const LogLines<API::PeerLogEntry> &peers() const { return m_peers; }

    // Whether a window shows the log: what makes it read.
    void setShown(bool shown);
    bool isShown() const { return m_shown; }

    // Both logs as at the start, for another server or the same one started again.
    void reset();

Q_SIGNALS:
    void shownChanged(bool shown);

private:
    LogLines<API::LogMessage> m_messages;
    LogLines<API::PeerLogEntry> m_peers;
    bool m_shown = false;
};
