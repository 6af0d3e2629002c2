#include "model/CompletionNotifier.h"

#include "model/TntCollection.h"
#include "platform/Notifications.h"
#include "settings/AppSettings.h"

#include <QCoreApplication>

using State = TntModel::State;

namespace {

bool isDownloading(State state)
{
    switch (state) {
    case State::downloading:
    case State::forcedDL:
    case State::stalledDL:
    case State::queuedDL:
    case State::pausedDL:
    case State::stoppedDL:
    case State::checkingDL:
    case State::metaDL:
    case State::forcedMetaDL:
    case State::allocating: return true;
    default: return false;
    }
}

bool isComplete(State state)
{
    switch (state) {
    case State::uploading:
    case State::forcedUP:
    case State::stalledUP:
    case State::queuedUP:
    case State::pausedUP:
    case State::stoppedUP: return true;
    default: return false;
    }
}

} // namespace

CompletionNotifier::CompletionNotifier(TntCollection &collection, AppSettings &settings, QObject *parent)
    : QObject(parent)
    , m_collection(collection)
    , m_settings(settings)
{
    connect(&collection, &TntCollection::didReset, this, [this] {
        QStringList finished;
        QSet<QString> before = std::exchange(m_downloading, {});
        for (qsizetype row = 0; row < m_collection.size(); ++row) {
            const QString &hash = m_collection.at(row).id();
            if (isDownloading(m_collection.at(row).state()))
                m_downloading.insert(hash);
            else if (isComplete(m_collection.at(row).state()) && before.contains(hash))
                finished << hash;
        }
        announce(finished);
    });
    connect(&collection, &TntCollection::aboutToInsert, this,
            [this](qsizetype first, qsizetype) { m_firstInserted = first; });
    connect(&collection, &TntCollection::didInsert, this, [this] {
        for (qsizetype row = m_firstInserted; row < m_collection.size(); ++row) {
            if (isDownloading(m_collection.at(row).state()))
                m_downloading.insert(m_collection.at(row).id());
        }
    });
    connect(&collection, &TntCollection::aboutToRemove, this, [this](qsizetype first, qsizetype last) {
        for (qsizetype row = first; row <= last; ++row)
            m_downloading.remove(m_collection.at(row).id());
    });
    connect(&collection, &TntCollection::rowsChanged, this,
            [this](const QList<KeyedRowsSignals::RowChange> &changes, quint64 fields) {
                if (!(fields & TntModel::StateField))
                    return;
                QStringList finished;
                for (const KeyedRowsSignals::RowChange &change : changes) {
                    if ((change.fields & TntModel::StateField) && follow(change.row))
                        finished << m_collection.at(change.row).id();
                }
                announce(finished);
            });
}

bool CompletionNotifier::follow(qsizetype row)
{
    const TntModel &tnt = m_collection.at(row);
    if (isDownloading(tnt.state())) {
        m_downloading.insert(tnt.id());
        return false;
    }
    return isComplete(tnt.state()) && m_downloading.remove(tnt.id());
}

QString CompletionNotifier::body(const QString &torrentName)
{
    return u'"' + torrentName + u'"';
}

QString CompletionNotifier::summaryBody(const QStringList &torrentNames)
{
    constexpr qsizetype shown = 5;
    QStringList lines;
    for (const QString &name : torrentNames.first(std::min(shown, torrentNames.size())))
        lines << body(name);
    if (torrentNames.size() > shown)
        lines << QCoreApplication::translate("CompletionNotifier", "and %1 more").arg(torrentNames.size() - shown);
    return lines.join(u'\n');
}

void CompletionNotifier::endCatchUp()
{
    m_catchingUp = false;
    QStringList names = std::exchange(m_caughtUp, {});
    if (names.isEmpty())
        return;
    std::sort(names.begin(), names.end(),
              [](const QString &a, const QString &b) { return QString::localeAwareCompare(a, b) < 0; });
    const QString title =
        names.size() == 1
            ? QCoreApplication::translate("CompletionNotifier", "A download completed while Quillo was closed")
            : QCoreApplication::translate("CompletionNotifier", "%1 downloads completed while Quillo was closed")
                  .arg(names.size());
    tell({{title, summaryBody(names)}});
}

void CompletionNotifier::tell(const QList<std::pair<QString, QString>> &notices)
{
    if (m_settings.notifyDownloadsComplete()) {
        for (const auto &[title, text] : notices)
            Platform::Notifications::post({.threadId = QString::fromLatin1(threadId),
                                           .title = title,
                                           .body = text,
                                           .sound = m_settings.selectedSound()});
    }
    if (m_settings.animateDockIcon())
        Q_EMIT attentionRequested();
}

void CompletionNotifier::announce(const QStringList &hashes)
{
    if (hashes.isEmpty())
        return;
    if (m_catchingUp) {
        for (const QString &hash : hashes)
            m_caughtUp << m_collection.find(hash)->name();
        return;
    }
    QList<std::pair<QString, QString>> notices;
    for (const QString &hash : hashes)
        notices.append({QCoreApplication::translate("CompletionNotifier", "Download completed"),
                        body(m_collection.find(hash)->name())});
    tell(notices);
}
