#include "model/CompletionNotifier.h"

#include "model/TntCollection.h"
#include "platform/Notifications.h"
#include "settings/AppSettings.h"

CompletionNotifier::CompletionNotifier(TntCollection &collection, AppSettings &settings, QObject *parent)
    : QObject(parent)
    , m_collection(collection)
    , m_settings(settings)
{
    connect(&collection, &TntCollection::downloadsCompleted, this, &CompletionNotifier::notify);
}

QString CompletionNotifier::body(const QString &torrentName)
{
    return u'"' + torrentName + u'"';
}

void CompletionNotifier::notify(const QStringList &hashes)
{
    for (const QString &hash : hashes) {
        const TntModel *tnt = m_collection.find(hash);
        if (!tnt)
            continue;
        Platform::Notifications::post({.threadId = QString::fromLatin1(threadId),
                                       .title = QStringLiteral("Download completed"),
                                       .body = body(tnt->name()),
                                       .sound = m_settings.selectedSound()});
    }
    if (m_settings.animateDockIcon())
        Q_EMIT attentionRequested();
}
