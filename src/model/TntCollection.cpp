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
    : QObject(parent)
{
}

TntCollection::~TntCollection() = default;

const TntModel *TntCollection::find(const QString &hash) const
{
    const qsizetype row = rowOf(hash);
    return row < 0 ? nullptr : &at(row);
}

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
    Q_EMIT aboutToReset();
    auto previous = std::make_shared<Models>(std::exchange(m_models, std::move(models)));
    m_rows.clear();
    m_rows.reserve(size());
    reindexFrom(0);
    Q_EMIT didReset();
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

void TntCollection::reindexFrom(qsizetype first)
{
    for (qsizetype row = first; row < size(); ++row)
        m_rows.insert(at(row).id(), row);
}

void TntCollection::announce(QList<RowChange> &changes, TntModel::Fields fields)
{
    if (changes.isEmpty())
        return;
    std::sort(changes.begin(), changes.end(), [](const RowChange &a, const RowChange &b) { return a.row < b.row; });
    Q_EMIT rowsChanged(changes, fields);
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
        TntModel &model = *m_models[static_cast<std::size_t>(row)];
        const State before = model.state();
        if (const TntModel::Fields fields = model.update(it.value())) {
            changes.append({row, fields});
            changedFields |= fields;
            if ((fields & TntModel::StateField) && isDownloadCompletion(before, model.state()))
                completed << model.id();
        }
    }
    announce(changes, changedFields);

    if (!added.empty()) {
        const qsizetype first = size();
        Q_EMIT aboutToInsert(first, first + static_cast<qsizetype>(added.size()) - 1);
        std::move(added.begin(), added.end(), std::back_inserter(m_models));
        reindexFrom(first);
        Q_EMIT didInsert();
    }
    if (!completed.isEmpty())
        Q_EMIT downloadsCompleted(completed);
}

void TntCollection::mergeFull(const QHash<QString, API::STntModel> &tnts, int averagingWindow)
{
    QStringList missing;
    for (const auto &model : m_models) {
        if (!tnts.contains(model->id()))
            missing << model->id();
    }
    merge(tnts, missing, averagingWindow);
}

void TntCollection::remove(const QStringList &hashes)
{
    QList<qsizetype> rows;
    for (const QString &hash : hashes) {
        if (const qsizetype row = rowOf(hash); row >= 0)
            rows << row;
    }
    if (rows.isEmpty())
        return;
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    for (const qsizetype row : std::as_const(rows))
        m_rows.remove(at(row).id());

    // Contiguous ranges from the back, so the rows still to remove keep their numbers.
    qsizetype end = rows.size();
    while (end > 0) {
        qsizetype begin = end - 1;
        while (begin > 0 && rows[begin - 1] == rows[begin] - 1)
            --begin;
        const qsizetype first = rows[begin];
        const qsizetype last = rows[end - 1];
        Q_EMIT aboutToRemove(first, last);
        m_models.erase(m_models.begin() + first, m_models.begin() + last + 1);
        Q_EMIT didRemove();
        end = begin;
    }
    reindexFrom(rows.first());
}

void TntCollection::setAveragingWindow(int samples)
{
    for (const auto &model : m_models)
        model->setAveragingWindow(samples);
}

void TntCollection::editLocally(const TntTargets &targets,
                                const std::function<TntModel::Fields(TntModel &)> &edit)
{
    QList<RowChange> changes;
    TntModel::Fields all = 0;
    const auto apply = [&](qsizetype row) {
        if (const TntModel::Fields fields = edit(*m_models[static_cast<std::size_t>(row)])) {
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
    announce(changes, all);
}
