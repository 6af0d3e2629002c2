#include "model/TntCollection.h"

#include <QThreadPool>

#include <algorithm>

using State = TntModel::State;

bool isDownloadCompletion(State before, State after)
{
    const auto in = [](State state, std::initializer_list<State> states) {
        return std::find(states.begin(), states.end(), state) != states.end();
    };
    return in(before, {State::downloading, State::forcedDL, State::stalledDL, State::queuedDL, State::metaDL,
                       State::forcedMetaDL, State::allocating})
        && in(after, {State::uploading, State::forcedUP, State::stalledUP, State::queuedUP, State::pausedUP,
                      State::stoppedUP});
}

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
    QStringList completed;
    for (const auto &model : models) {
        if (const TntModel *old = find(model->id()); old && isDownloadCompletion(old->state(), model->state()))
            completed << model->id();
    }
    auto previous = std::make_shared<Models>(resetRows(std::move(models)));
    // Tens of thousands of models take a while to free: not on the thread that paints.
    if (previous->size() > 1000)
        QThreadPool::globalInstance()->start([previous = std::move(previous)]() mutable { previous.reset(); });
    if (!completed.isEmpty())
        Q_EMIT downloadsCompleted(completed);
}

void TntCollection::clear()
{
    replaceAll({});
}

void TntCollection::merge(const QHash<QString, API::STntModel> &tnts, const QStringList &removed, int averagingWindow)
{
    remove(removed);

    QList<RowChange> changes;
    TntModel::Fields changedFields = 0;
    QStringList completed;
    Models added;
    for (auto it = tnts.cbegin(); it != tnts.cend(); ++it) {
        const qsizetype row = rowOf(it.key());
        if (row < 0) {
            added.push_back(std::make_unique<TntModel>(it.key(), it.value(), averagingWindow)); // keys are unique
            continue;
        }
        TntModel &model = rowAt(row);
        const State before = model.state();
        if (const TntModel::Fields fields = model.update(it.value())) {
            changes.append({row, fields});
            changedFields |= fields;
            if ((fields & TntModel::StateField) && isDownloadCompletion(before, model.state()))
                completed << model.id();
        }
    }
    announceChanges(changes, changedFields);
    appendRows(std::move(added));
    if (!completed.isEmpty())
        Q_EMIT downloadsCompleted(completed);
}

void TntCollection::mergeFull(const QHash<QString, API::STntModel> &tnts, int averagingWindow)
{
    QStringList missing;
    for (const auto &model : *this) {
        if (!tnts.contains(model->id()))
            missing << model->id();
    }
    merge(tnts, missing, averagingWindow);
}

void TntCollection::remove(const QStringList &hashes)
{
    removeRows(hashes);
}

void TntCollection::setAveragingWindow(int samples)
{
    for (qsizetype row = 0; row < size(); ++row)
        rowAt(row).setAveragingWindow(samples);
}

void TntCollection::editLocally(const QSet<QString> &hashes,
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
    if (hashes.isEmpty()) {
        for (qsizetype row = 0; row < size(); ++row)
            apply(row);
    } else {
        for (const QString &hash : hashes) {
            if (const qsizetype row = rowOf(hash); row >= 0)
                apply(row);
        }
    }
    announceChanges(changes, all);
}
