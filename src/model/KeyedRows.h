#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

// What keyed rows announce, whatever their type, so that one table adapter serves them all. Each
// change is announced around the change itself, as item models need.
class KeyedRowsSignals : public QObject
{
    Q_OBJECT

public:
    // A row whose fields changed, in its type's own field mask.
    struct RowChange
    {
        qsizetype row;
        quint64 fields;
    };

    using QObject::QObject;

    virtual qsizetype size() const = 0;

Q_SIGNALS:
    void aboutToReset();
    void didReset();
    void aboutToInsert(qsizetype first, qsizetype last);
    void didInsert();
    void aboutToRemove(qsizetype first, qsizetype last);
    void didRemove();
    // Rows ascending, only those whose fields really changed; `fields` is the union of theirs.
    void rowsChanged(const QList<KeyedRowsSignals::RowChange> &changes, quint64 fields);
};

// Rows in arrival order, found by their `id()` through an index (never a scan). Their owner
// changes them through the protected members, which announce each change.
template<typename Row>
class KeyedRows : public KeyedRowsSignals
{
public:
    using Rows = std::vector<std::unique_ptr<Row>>;

    using KeyedRowsSignals::KeyedRowsSignals;

    qsizetype size() const final { return static_cast<qsizetype>(m_rows.size()); }
    const Row &at(qsizetype row) const { return *m_rows[static_cast<std::size_t>(row)]; }
    // -1 when no row has that key.
    qsizetype rowOf(const QString &key) const { return m_index.value(key, -1); }
    const Row *find(const QString &key) const
    {
        const qsizetype row = rowOf(key);
        return row < 0 ? nullptr : &at(row);
    }
    typename Rows::const_iterator begin() const { return m_rows.cbegin(); }
    typename Rows::const_iterator end() const { return m_rows.cend(); }

protected:
    Row &rowAt(qsizetype row) { return *m_rows[static_cast<std::size_t>(row)]; }

    // Every row anew, announced as a reset; the caller gets the rows held before.
    Rows resetRows(Rows rows)
    {
        Q_EMIT aboutToReset();
        Rows previous = std::exchange(m_rows, std::move(rows));
        m_index.clear();
        m_index.reserve(size());
        reindexFrom(0);
        Q_EMIT didReset();
        return previous;
    }

    // New keys only, appended in their order as one range.
    void appendRows(Rows rows)
    {
        if (rows.empty())
            return;
        const qsizetype first = size();
        Q_EMIT aboutToInsert(first, first + static_cast<qsizetype>(rows.size()) - 1);
        std::move(rows.begin(), rows.end(), std::back_inserter(m_rows));
        reindexFrom(first);
        Q_EMIT didInsert();
    }

    // Keys not here are skipped. A few runs of neighbouring rows are announced one by one, from the
    // bottom up so that the rows above keep their numbers (between the announcements the index
    // still holds the old numbers of the rows below a run); many scattered rows go in one pass
    // announced as a reset, since erasing run after run would move the rows below each one again.
    void removeRows(const QStringList &keys)
    {
        QList<qsizetype> rows;
        for (const QString &key : keys) {
            if (const qsizetype row = rowOf(key); row >= 0)
                rows << row;
        }
        if (rows.isEmpty())
            return;
        std::sort(rows.begin(), rows.end());
        rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
        for (const qsizetype row : std::as_const(rows))
            m_index.remove(at(row).id());

        QList<std::pair<qsizetype, qsizetype>> runs;
        for (const qsizetype row : std::as_const(rows)) {
            if (!runs.isEmpty() && runs.last().second == row - 1)
                runs.last().second = row;
            else
                runs.append({row, row});
        }
        if (runs.size() <= maxRunsAnnounced) {
            for (auto run = runs.crbegin(); run != runs.crend(); ++run) {
                Q_EMIT aboutToRemove(run->first, run->second);
                m_rows.erase(m_rows.begin() + run->first, m_rows.begin() + run->second + 1);
                Q_EMIT didRemove();
            }
        } else {
            Q_EMIT aboutToReset();
            qsizetype next = 0; // the next removed row, in `rows`
            std::size_t kept = 0;
            for (std::size_t row = 0; row < m_rows.size(); ++row) {
                if (next < rows.size() && rows[next] == static_cast<qsizetype>(row)) {
                    ++next;
                    continue;
                }
                m_rows[kept++] = std::move(m_rows[row]);
            }
            m_rows.resize(kept);
            reindexFrom(rows.first());
            Q_EMIT didReset();
            return;
        }
        reindexFrom(rows.first());
    }

    // Announces `changes` in row order, unless there are none.
    void announceChanges(QList<RowChange> &changes, quint64 fields)
    {
        if (changes.isEmpty())
            return;
        std::sort(changes.begin(), changes.end(), [](const RowChange &a, const RowChange &b) { return a.row < b.row; });
        Q_EMIT rowsChanged(changes, fields);
    }

private:
    // Above this many runs a removal is one pass and a reset: each run erased on its own moves
    // every row below it, which for thousands of scattered rows blocks the interface for seconds.
    static constexpr qsizetype maxRunsAnnounced = 16;

    void reindexFrom(qsizetype first)
    {
        for (qsizetype row = first; row < size(); ++row)
            m_index.insert(at(row).id(), row);
    }

    Rows m_rows;
    QHash<QString, qsizetype> m_index;
};
