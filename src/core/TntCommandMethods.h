#pragma once

#include "core/TntOperations.h"

#include <QSet>
#include <QStringList>

// The torrent commands as the windows call them, one method each. For those taking a set, an empty
// set means every torrent (sent as "all"), except where noted: this is the one place that reads an
// empty set so.
class TntCommandMethods
{
public:
    QCoro::Task<> startTnts(QSet<QString> hashes) { return m_operations.start(orAll(hashes)); }
    QCoro::Task<> stopTnts(QSet<QString> hashes) { return m_operations.stop(orAll(hashes)); }
    QCoro::Task<> setForceStart(QSet<QString> hashes, bool value)
    {
        return m_operations.setForceStart(orAll(hashes), value);
    }
    QCoro::Task<> recheckTnts(QSet<QString> hashes) { return m_operations.recheck(orAll(hashes)); }
    QCoro::Task<> reannounceTnts(QSet<QString> hashes) { return m_operations.reannounce(orAll(hashes)); }
    QCoro::Task<> removeTnts(QSet<QString> hashes, bool deleteFiles)
    {
        return m_operations.remove(orAll(hashes), deleteFiles);
    }
    QCoro::Task<> addTrackers(QString hash, QStringList urls) { return m_operations.addTrackers(hash, urls); }
    QCoro::Task<> editTracker(QString hash, QString origUrl, QString newUrl)
    {
        return m_operations.editTracker(hash, origUrl, newUrl);
    }
    QCoro::Task<> removeTrackers(QString hash, QStringList urls) { return m_operations.removeTrackers(hash, urls); }
    // empty set: nothing is sent
    QCoro::Task<> addPeers(QSet<QString> hashes, QStringList peers)
    {
        return m_operations.addPeers(TntTargets::only(hashes), peers);
    }
    QCoro::Task<> banPeers(QSet<QString> peers) { return m_operations.banPeers(peers); }
    // Queue priority of the selection.
    QCoro::Task<> increasePriority() { return moveSelection(TntOperations::QueueMove::up); }
    QCoro::Task<> decreasePriority() { return moveSelection(TntOperations::QueueMove::down); }
    QCoro::Task<> maximumPriority() { return moveSelection(TntOperations::QueueMove::top); }
    QCoro::Task<> minimumPriority() { return moveSelection(TntOperations::QueueMove::bottom); }
    QCoro::Task<> setFilePriority(QString hash, QSet<int> fileIds, int priority)
    {
        return m_operations.setFilePriority(hash, fileIds, priority);
    }
    // empty set: nothing is sent
    QCoro::Task<> setLocation(QSet<QString> hashes, QString location)
    {
        return m_operations.setLocation(TntTargets::only(hashes), location);
    }
    QCoro::Task<> renameTnt(QString hash, QString name) { return m_operations.rename(hash, name); }
    // "" removes the category; empty set: nothing is sent
    QCoro::Task<> setCategory(QSet<QString> hashes, QString category)
    {
        return m_operations.setCategory(TntTargets::only(hashes), category);
    }
    QCoro::Task<> createCategory(QString name, QString savePath) { return m_operations.createCategory(name, savePath); }
    QCoro::Task<> editCategory(QString name, QString savePath) { return m_operations.editCategory(name, savePath); }
    QCoro::Task<> removeCategories(QSet<QString> names) { return m_operations.removeCategories(names); }
    // empty set: nothing is sent
    QCoro::Task<> addTags(QSet<QString> hashes, QSet<QString> tags)
    {
        return m_operations.addTags(TntTargets::only(hashes), tags);
    }
    // empty set: nothing is sent
    QCoro::Task<> removeTags(QSet<QString> hashes, QSet<QString> tags)
    {
        return m_operations.removeTags(TntTargets::only(hashes), tags);
    }
    QCoro::Task<> createTags(QSet<QString> tags) { return m_operations.createTags(tags); }
    QCoro::Task<> deleteTags(QSet<QString> tags) { return m_operations.deleteTags(tags); }
    QCoro::Task<> setAutoManagement(QSet<QString> hashes, bool enable)
    {
        return m_operations.setAutoManagement(orAll(hashes), enable);
    }
    QCoro::Task<> toggleSequentialDownload(QSet<QString> hashes)
    {
        return m_operations.toggleSequentialDownload(orAll(hashes));
    }
    QCoro::Task<> toggleFirstLastPiecePrio(QSet<QString> hashes)
    {
        return m_operations.toggleFirstLastPiecePrio(orAll(hashes));
    }
    QCoro::Task<> setSuperSeeding(QSet<QString> hashes, bool value)
    {
        return m_operations.setSuperSeeding(orAll(hashes), value);
    }
    QCoro::Task<> toggleSpeedLimitsMode() { return m_operations.toggleSpeedLimitsMode(); }

protected:
    // Both are members of the class deriving from this one, not yet made when this is: they are
    // only kept here until a command runs.
    TntCommandMethods(TntOperations &operations, const QSet<QString> &selection)
        : m_operations(operations)
        , m_selection(selection)
    {}
    ~TntCommandMethods() = default;

private:
    static TntTargets orAll(QSet<QString> hashes)
    {
        return hashes.isEmpty() ? TntTargets::all() : TntTargets::only(std::move(hashes));
    }
    QCoro::Task<> moveSelection(TntOperations::QueueMove move)
    {
        return m_operations.moveInQueue(orAll(m_selection), move);
    }

    TntOperations &m_operations;
    const QSet<QString> &m_selection;
};
