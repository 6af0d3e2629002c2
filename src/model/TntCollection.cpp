#include "model/TntCollection.h"

#include <QThreadPool>

#include <algorithm>

TntCollection::TntCollection(QObject *parent)
    : KeyedRows(parent)
{
}

TntCollection::~TntCollection() = default;

TntCollection::Models TntCollection::build(const QHash<QString, API::STntModel> &tnts, int averagingWindow)
{
    Models models;
    models.reserve(static_cast<std::size_t>(tnts.size()));
    for (auto it = tnts.cbegin(); it != tnts.cend(); ++it)
        models.push_back(std::make_unique<TntModel>(it.key(), it.value(), averagingWindow));
    return models;
}

void TntCollection::replaceAll(Models models)
{
    auto previous = std::make_shared<Models>(resetRows(std::move(models)));
    // Tens of thousands of models take a while to free: not on the thread that paints.
    if (previous->size() > 1000)
        QThreadPool::globalInstance()->start([previous = std::move(previous)]() mutable { previous.reset(); });
}

void TntCollection::clear()
{
    m_removedHere.clear();
    replaceAll({});
}

void TntCollection::merge(const QHash<QString, API::STntModel> &tnts, const QStringList &removed, int averagingWindow)
{
    removeRows(removed);
    for (const QString &hash : removed)
        m_removedHere.remove(hash); // the server confirms it

    QList<RowChange> changes;
    TntModel::Fields changedFields = 0;
    Models added;
    for (auto it = tnts.cbegin(); it != tnts.cend(); ++it) {
        const qsizetype row = rowOf(it.key());
        if (row < 0) {
            if (m_removedHere.contains(it.key()))
                continue;
            added.push_back(std::make_unique<TntModel>(it.key(), it.value(), averagingWindow)); // keys are unique
            continue;
        }
        if (const TntModel::Fields fields = rowAt(row).update(it.value())) {
            changes.append({row, fields});
            changedFields |= fields;
        }
    }
    announceChanges(changes, changedFields);
    appendRows(std::move(added));
}

void TntCollection::mergeFull(const QHash<QString, API::STntModel> &tnts, int averagingWindow)
{
    QStringList missing;
    for (const auto &model : *this) {
        if (!tnts.contains(model->id()))
            missing << model->id();
    }
    // The server's whole list: what it no longer has is gone for good.
    m_removedHere.removeIf([&tnts](const QString &hash) { return !tnts.contains(hash); });
    merge(tnts, missing, averagingWindow);
}

void TntCollection::removeHere(const TntTargets &targets)
{
    QStringList hashes;
    if (targets.isAll()) {
        for (const auto &model : *this)
            hashes << model->id();
    } else {
        hashes = targets.hashes()->values();
    }
    for (const QString &hash : std::as_const(hashes))
        m_removedHere.insert(hash);
    removeRows(hashes);
}

void TntCollection::setAveragingWindow(int samples)
{
    for (qsizetype row = 0; row < size(); ++row)
        rowAt(row).setAveragingWindow(samples);
}

void TntCollection::editLocally(const TntTargets &targets,
                                const std::function<TntModel::Fields(TntModel &)> &edit)
{
    QList<RowChange> changes;
    TntModel::Fields all = 0;
    const auto apply = [&](qsizetype row) {
        if (const TntModel::Fields fields = edit(rowAt(row))) {
            changes.append({row, fields});
            all |= fields;
        }
    };
    if (targets.isAll()) {
        for (qsizetype row = 0; row < size(); ++row)
            apply(row);
    } else {
        for (const QString &hash : *targets.hashes()) {
            if (const qsizetype row = rowOf(hash); row >= 0)
                apply(row);
        }
    }
    announceChanges(changes, all);
}
