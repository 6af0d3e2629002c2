#pragma once

#include "model/KeyedRows.h"
#include "model/TntModel.h"
#include "model/TntTargets.h"

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
    // Torrents removed here, by a command the server took: until the server confirms it, a late
    // answer that still names one of them is for a torrent that is gone, and makes no row.
    void removeHere(const TntTargets &targets);
    void clear();
    void setAveragingWindow(int samples);

    // Local changes made before the server confirms them, announced as one change: `edit` runs on
    // each target and returns the fields it changed. Hashes not here are skipped.
    void editLocally(const TntTargets &targets, const std::function<TntModel::Fields(TntModel &)> &edit);

private:
    QSet<QString> m_removedHere;
};
