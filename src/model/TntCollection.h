#pragma once

#include "model/KeyedRows.h"
#include "model/TntModel.h"

#include <QHash>
#include <QSet>

#include <functional>

// The torrents of the connected server, keyed by hash, in arrival order. A merge reports all changed
// rows of an answer in one signal.
class TntCollection : public KeyedRows<TntModel>
{
    Q_OBJECT

public:
    using Models = Rows;

    explicit TntCollection(QObject *parent = nullptr);
    ~TntCollection() override;

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
    // each listed torrent (every torrent when `hashes` is empty) and returns the fields it changed.
    // Hashes not here are skipped.
    void editLocally(const QSet<QString> &hashes, const std::function<TntModel::Fields(TntModel &)> &edit);

Q_SIGNALS:
    // Torrents that moved from downloading to a completed state in this answer.
    void downloadsCompleted(const QStringList &hashes);
};

// Whether a move from `before` to `after` is a download finishing (a recheck is not).
bool isDownloadCompletion(TntModel::State before, TntModel::State after);
