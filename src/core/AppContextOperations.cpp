// The torrent operations of the application context: one request each, then the local change the
// next poll would make anyway, so the table answers a click at once.
#include "core/AppContext.h"

#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"

#include <QLoggingCategory>
#include <QPointer>
#include <QThread>

#include <algorithm>

Q_DECLARE_LOGGING_CATEGORY(lcContext)

namespace Endpoint = API::Endpoint;
using State = TntModel::State;

namespace {

// The server reads "all" as every torrent.
QStringList hashList(const QSet<QString> &hashes)
{
    return hashes.isEmpty() ? QStringList{QStringLiteral("all")} : hashes.values();
}

// Sorted so that a request's bytes do not depend on hash-set order.
QStringList sorted(const QSet<QString> &values)
{
    QStringList list = values.values();
    list.sort();
    return list;
}

bool isCancellation(const std::exception_ptr &error)
{
    try {
        std::rethrow_exception(error);
    } catch (const API::TransportError &transport) {
        return transport.isCancelled();
    } catch (...) {
        return false;
    }
}

const QString tagSeparator = QStringLiteral(", ");

QStringList tagList(const QString &tags)
{
    return tags.isEmpty() ? QStringList() : tags.split(tagSeparator);
}

// The server keeps tags sorted without regard to case.
QString tagText(QStringList tags)
{
    std::sort(tags.begin(), tags.end(),
              [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    return tags.join(tagSeparator);
}

} // namespace

QCoro::Task<bool> AppContext::send(API::APIEndpoint endpoint, QString failureTitle)
{
    Q_ASSERT(QThread::currentThread() == thread());
    if (!m_client)
        co_return false;
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    std::exception_ptr failure;
    try {
        co_await m_client->perform(std::move(endpoint));
    } catch (...) {
        failure = std::current_exception();
    }
    if (!self || self->m_generation != generation)
        co_return false;
    if (failure) {
        // Cancelled by a log out or a lost connection, which tell the user themselves.
        if (!isCancellation(failure))
            fail(failureTitle, failure);
        co_return false;
    }
    co_return true;
}

// Servers from WebUI API 2.11.0 on (qBittorrent 5) start and stop; older ones resume and pause.
bool AppContext::usesStartStop() const
{
    return m_webAPIVersion >= API::WebAPIVersion{2, 11, 0};
}

void AppContext::setStates(const QSet<QString> &hashes, bool emptyMeansAll, State incomplete, State complete)
{
    if (hashes.isEmpty() && !emptyMeansAll)
        return;
    m_tntCollection.editLocally(hashes, [incomplete, complete](TntModel &tnt) {
        // Only a finished torrent seeds; 0.9999 is still downloading.
        return tnt.setState(tnt.progress() == 1.0 ? complete : incomplete);
    });
}

QCoro::Task<> AppContext::startTnts(QSet<QString> hashes)
{
    const QStringList list = hashList(hashes);
    // Named, not a conditional inside the co_await: g++ 12 destroys such temporaries twice.
    API::APIEndpoint endpoint = usesStartStop() ? Endpoint::TntManagement::start(list) : Endpoint::TntManagement::resume(list);
    if (co_await send(std::move(endpoint), QStringLiteral("Failed to start tnts.")))
        setStates(hashes, true, State::stalledDL, State::stalledUP);
}

QCoro::Task<> AppContext::stopTnts(QSet<QString> hashes)
{
    const QStringList list = hashList(hashes);
    const bool current = usesStartStop();
    API::APIEndpoint endpoint = current ? Endpoint::TntManagement::stop(list) : Endpoint::TntManagement::pause(list);
    if (!co_await send(std::move(endpoint), QStringLiteral("Failed to stop tnts.")))
        co_return;
    if (current)
        setStates(hashes, true, State::stoppedDL, State::stoppedUP);
    else
        setStates(hashes, true, State::pausedDL, State::pausedUP);
}

QCoro::Task<> AppContext::setForceStart(QSet<QString> hashes, bool value)
{
    if (co_await send(Endpoint::TntManagement::setForceStart(hashList(hashes), value),
                      QStringLiteral("Failed to set force start for tnts.")))
        setStates(hashes, false, State::forcedDL, State::forcedUP);
}

QCoro::Task<> AppContext::recheckTnts(QSet<QString> hashes)
{
    co_await send(Endpoint::TntManagement::recheck(hashList(hashes)), QStringLiteral("Failed to recheck tnts."));
}

QCoro::Task<> AppContext::reannounceTnts(QSet<QString> hashes)
{
    const QPointer<AppContext> self(this);
    const QString title = QStringLiteral("failed to reannounce tnts.");
    if (co_await send(Endpoint::TntManagement::reannounce(hashList(hashes)), title) || !self)
        co_return;
    if (m_clientError && m_clientError->title() == title)
        qCWarning(lcContext, "Failed to reannounce tnts: %s", qUtf8Printable(m_clientError->description()));
}

QCoro::Task<> AppContext::removeTnts(QSet<QString> hashes, bool deleteFiles)
{
    if (!co_await send(Endpoint::TntManagement::deleteTnts(hashList(hashes), deleteFiles),
                       QStringLiteral("Failed to delete tnts.")))
        co_return;
    if (hashes.isEmpty())
        m_tntCollection.clear();
    else
        m_tntCollection.remove(hashes.values());
    setSelectedTnts({});
    Q_EMIT tntsRemoved();
}

QCoro::Task<> AppContext::addTrackers(QString hash, QStringList urls)
{
    if (co_await send(Endpoint::TntManagement::addTrackers(hash, urls), QStringLiteral("Failed to add trackers.")))
        Q_EMIT trackersEdited(hash);
}

QCoro::Task<> AppContext::editTracker(QString hash, QString origUrl, QString newUrl)
{
    if (co_await send(Endpoint::TntManagement::editTracker(hash, origUrl, newUrl, m_webAPIVersion),
                      QStringLiteral("Failed to edit tracker.")))
        Q_EMIT trackersEdited(hash);
}

QCoro::Task<> AppContext::removeTrackers(QString hash, QStringList urls)
{
    if (co_await send(Endpoint::TntManagement::removeTrackers(hash, urls),
                      QStringLiteral("Faield to remove trackers.")))
        Q_EMIT trackersEdited(hash);
}

QCoro::Task<> AppContext::addPeers(QSet<QString> hashes, QStringList peers)
{
    if (hashes.isEmpty())
        co_return;
    co_await send(Endpoint::TntManagement::addPeers(sorted(hashes), peers), QStringLiteral("Failed to add peers to tnt."));
}

QCoro::Task<> AppContext::increasePriority()
{
    co_await send(Endpoint::TntManagement::increasePrio(hashList(m_selectedTnts)),
                  QStringLiteral("Failed to increase tnt priority."));
}

QCoro::Task<> AppContext::decreasePriority()
{
    co_await send(Endpoint::TntManagement::decreasePrio(hashList(m_selectedTnts)),
                  QStringLiteral("Failed to decrease tnt priority."));
}

QCoro::Task<> AppContext::maximumPriority()
{
    co_await send(Endpoint::TntManagement::topPrio(hashList(m_selectedTnts)),
                  QStringLiteral("Failed to set maximum tnt priority."));
}

QCoro::Task<> AppContext::minimumPriority()
{
    co_await send(Endpoint::TntManagement::bottomPrio(hashList(m_selectedTnts)),
                  QStringLiteral("Failed to set minimum tnt priority."));
}

QCoro::Task<> AppContext::setFilePriority(QString hash, QSet<int> fileIds, int priority)
{
    QList<int> ids = fileIds.values();
    std::sort(ids.begin(), ids.end());
    co_await send(Endpoint::TntManagement::filePrio(hash, ids, priority), QStringLiteral("Failed to set file priority."));
}

QCoro::Task<> AppContext::setLocation(QSet<QString> hashes, QString location)
{
    co_await send(Endpoint::TntManagement::setLocation(sorted(hashes), location),
                  QStringLiteral("Failed to set tnt location."));
}

QCoro::Task<> AppContext::renameTnt(QString hash, QString name)
{
    co_await send(Endpoint::TntManagement::rename(hash, name), QStringLiteral("Failed to rename tnt."));
}

QCoro::Task<> AppContext::setCategory(QSet<QString> hashes, QString category)
{
    if (!co_await send(Endpoint::TntManagement::setCategory(sorted(hashes), category),
                       QStringLiteral("Failed to set tnt category.")))
        co_return;
    m_tntCollection.editLocally(hashes, [&category](TntModel &tnt) { return tnt.setCategory(category); });
}

QCoro::Task<> AppContext::createCategory(QString name, QString savePath)
{
    if (!co_await send(Endpoint::TntManagement::createCategory(name, savePath),
                       QStringLiteral("Failed to create category.")))
        co_return;
    m_categories.insert(name, API::Category{name, savePath});
    Q_EMIT labelsChanged();
}

QCoro::Task<> AppContext::editCategory(QString name, QString savePath)
{
    co_await send(Endpoint::TntManagement::editCategory(name, savePath), QStringLiteral("Failed to edit category."));
}

QCoro::Task<> AppContext::removeCategories(QSet<QString> names)
{
    if (!co_await send(Endpoint::TntManagement::removeCategories(sorted(names)),
                       QStringLiteral("Failed to remove categories.")))
        co_return;
    for (const QString &name : std::as_const(names))
        m_categories.remove(name);
    Q_EMIT labelsChanged();
}

QCoro::Task<> AppContext::addTags(QSet<QString> hashes, QSet<QString> tags)
{
    if (!co_await send(Endpoint::TntManagement::addTags(sorted(hashes), sorted(tags)),
                       QStringLiteral("Failed to add tags.")))
        co_return;
    m_tntCollection.editLocally(hashes, [&tags](TntModel &tnt) {
        QStringList merged = tagList(tnt.tags());
        for (const QString &tag : std::as_const(tags)) {
            if (!merged.contains(tag))
                merged.append(tag);
        }
        return tnt.setTags(tagText(std::move(merged)));
    });
}

QCoro::Task<> AppContext::removeTags(QSet<QString> hashes, QSet<QString> tags)
{
    if (!co_await send(Endpoint::TntManagement::removeTags(sorted(hashes), sorted(tags)),
                       QStringLiteral("Failed to remove tags.")))
        co_return;
    m_tntCollection.editLocally(hashes, [&tags](TntModel &tnt) {
        QStringList kept = tagList(tnt.tags());
        kept.removeIf([&tags](const QString &tag) { return tags.contains(tag); });
        return tnt.setTags(tagText(std::move(kept)));
    });
}

QCoro::Task<> AppContext::createTags(QSet<QString> tags)
{
    if (!co_await send(Endpoint::TntManagement::createTags(sorted(tags)), QStringLiteral("Failed to create tags.")))
        co_return;
    for (const QString &tag : sorted(tags)) {
        if (!m_tags.contains(tag))
            m_tags.append(tag);
    }
    Q_EMIT labelsChanged();
}

QCoro::Task<> AppContext::deleteTags(QSet<QString> tags)
{
    if (!co_await send(Endpoint::TntManagement::deleteTags(sorted(tags)), QStringLiteral("Failed to delete tags.")))
        co_return;
    m_tags.removeIf([&tags](const QString &tag) { return tags.contains(tag); });
    Q_EMIT labelsChanged();
}

QCoro::Task<> AppContext::setAutoManagement(QSet<QString> hashes, bool enable)
{
    co_await send(Endpoint::TntManagement::setAutoManagement(hashList(hashes), enable),
                  QStringLiteral("Failed to set automatic tnt management."));
}

QCoro::Task<> AppContext::toggleSequentialDownload(QSet<QString> hashes)
{
    co_await send(Endpoint::TntManagement::toggleSequentialDownload(hashList(hashes)),
                  QStringLiteral("Failed to toggle sequential download."));
}

QCoro::Task<> AppContext::toggleFirstLastPiecePrio(QSet<QString> hashes)
{
    co_await send(Endpoint::TntManagement::toggleFirstLastPiecePrio(hashList(hashes)),
                  QStringLiteral("Failed to toggle first/last piece priority."));
}

QCoro::Task<> AppContext::setSuperSeeding(QSet<QString> hashes, bool value)
{
    co_await send(Endpoint::TntManagement::setSuperSeeding(hashList(hashes), value),
                  QStringLiteral("Failed to set super seeding."));
}

QCoro::Task<> AppContext::banPeers(QSet<QString> peers)
{
    co_await send(Endpoint::TransferInfo::banPeers(sorted(peers)), QStringLiteral("Failed to ban peers."));
}

QCoro::Task<> AppContext::toggleSpeedLimitsMode()
{
    co_await send(Endpoint::TransferInfo::toggleSpeedLimitsMode(), QStringLiteral("Failed to toggle speed limits mode."));
}
