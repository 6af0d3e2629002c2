#pragma once

#include "model/TntModel.h"
#include "model/TntTargets.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>

#include <functional>

#include <memory>
#include <vector>

// The torrents of the connected server: models in arrival order, found by hash through an index
// (never a scan). Every change is announced around the change itself, as item models need, and a
// merge reports all changed rows of an answer in one signal.
class TntCollection : public QObject
{
    Q_OBJECT

public:
    struct RowChange
    {
        qsizetype row;
        TntModel::Fields fields;
    };

    using Models = std::vector<std::unique_ptr<TntModel>>;

    explicit TntCollection(QObject *parent = nullptr);
    ~TntCollection() override;

    qsizetype size() const { return static_cast<qsizetype>(m_models.size()); }
    const TntModel &at(qsizetype row) const { return *m_models[static_cast<std::size_t>(row)]; }
    // -1 when the hash is not here.
    qsizetype rowOf(const QString &hash) const { return m_rows.value(hash, -1); }
    const TntModel *find(const QString &hash) const;

    // Models for a full update, built on any thread; `replaceAll` swaps them in on the owner's.
    static Models build(const QHash<QString, API::STntModel> &tnts, int averagingWindow);
    void replaceAll(Models models);
    // A delta: known torrents change in place, new ones are appended, removed ones leave.
    void merge(const QHash<QString, API::STntModel> &tnts, const QStringList &removed, int averagingWindow);
    // A full update over torrents already shown: merged like a delta, so rows keep their place and
    // views their sort instead of starting over; torrents it does not list leave.
    void mergeFull(const QHash<QString, API::STntModel> &tnts, int averagingWindow);
    void remove(const QStringList &hashes);
    void clear();
    void setAveragingWindow(int samples);

    // Local changes made before the server confirms them, announced as one change: `edit` runs on
    // each target and returns the fields it changed. Hashes not here are skipped.
    void editLocally(const TntTargets &targets, const std::function<TntModel::Fields(TntModel &)> &edit);

Q_SIGNALS:
    void aboutToReset();
    void didReset();
    void aboutToInsert(qsizetype first, qsizetype last);
    void didInsert();
    void aboutToRemove(qsizetype first, qsizetype last);
    void didRemove();
    // Rows ascending; only rows whose fields really changed.
    void rowsChanged(const QList<TntCollection::RowChange> &changes, TntModel::Fields union_);
    // Torrents that moved from downloading to a completed state in this answer.
    void downloadsCompleted(const QStringList &hashes);

private:
    void reindexFrom(qsizetype first);
    void announce(QList<RowChange> &changes, TntModel::Fields fields);

    Models m_models;
    QHash<QString, qsizetype> m_rows;
};

// Whether a move from `before` to `after` is a download finishing (a recheck is not).
bool isDownloadCompletion(TntModel::State before, TntModel::State after);
