// The torrent operations of the application context: one request each, then the local change the
// next poll would make anyway, so the table answers a click at once.
#include "core/AppContext.h"

#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "adding/TntAdder.h"

#include <QLoggingCategory>
#include <QPointer>
#include <QCoroSignal>
#include <QCoroTimer>
#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>

Q_DECLARE_LOGGING_CATEGORY(lcContext)

namespace Endpoint = API::Endpoint;

// Each operation makes its request task first and then awaits it by name: g++ 12 destroys
// temporaries made inside a co_await expression twice.
using State = TntModel::State;

namespace {

// Sorted so that a request's bytes do not depend on hash-set order.
QStringList sorted(const QSet<QString> &values)
{
    QStringList list = values.values();
    list.sort();
    return list;
}

QList<int> sortedIds(const QSet<int> &ids)
{
    QList<int> list = ids.values();
    std::sort(list.begin(), list.end());
    return list;
}

// The server reads "all" as every torrent.
QStringList hashList(const QSet<QString> &hashes)
{
    return hashes.isEmpty() ? QStringList{QStringLiteral("all")} : sorted(hashes);
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

const QString addingFailure = QStringLiteral("Failed to add tnts.");

// The version from which torrents/add reads `filePriorities`, and torrents/fetchMetadata exists.
constexpr API::WebAPIVersion filePrioritiesOnAdd{2, 15, 0};
constexpr API::WebAPIVersion metadataFetching = filePrioritiesOnAdd;
constexpr int normalPriority = 1;

QString joined(const QList<int> &priorities)
{
    QStringList texts;
    texts.reserve(priorities.size());
    for (const int priority : priorities)
        texts << QString::number(priority);
    return texts.join(u',');
}

// File indexes by the priority they need other than the server's normal one.
QMap<int, QSet<int>> filesByPriority(const QList<int> &priorities)
{
    QMap<int, QSet<int>> files;
    for (qsizetype index = 0; index < priorities.size(); ++index) {
        if (priorities[index] != normalPriority)
            files[priorities[index]].insert(static_cast<int>(index));
    }
    return files;
}

} // namespace

QCoro::Task<bool> AppContext::send(API::APIEndpoint endpoint, QString failureTitle)
{
    Q_ASSERT(QThread::currentThread() == thread());
    // A command given while logged out or reconnecting (the table still shows the last torrents).
    if (!m_client || !m_isAuthorized) {
        fail(failureTitle, std::make_exception_ptr(API::NetworkError::disconnected()));
        co_return false;
    }
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
    API::APIEndpoint endpoint =
        usesStartStop() ? Endpoint::TntManagement::start(list) : Endpoint::TntManagement::resume(list);
    QCoro::Task<bool> request = send(std::move(endpoint), QStringLiteral("Failed to start tnts."));
    if (co_await std::move(request))
        setStates(hashes, true, State::stalledDL, State::stalledUP);
}

QCoro::Task<> AppContext::stopTnts(QSet<QString> hashes)
{
    const QStringList list = hashList(hashes);
    const bool current = usesStartStop();
    API::APIEndpoint endpoint = current ? Endpoint::TntManagement::stop(list) : Endpoint::TntManagement::pause(list);
    QCoro::Task<bool> request = send(std::move(endpoint), QStringLiteral("Failed to stop tnts."));
    if (!co_await std::move(request))
        co_return;
    if (current)
        setStates(hashes, true, State::stoppedDL, State::stoppedUP);
    else
        setStates(hashes, true, State::pausedDL, State::pausedUP);
}

QCoro::Task<> AppContext::setForceStart(QSet<QString> hashes, bool value)
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::setForceStart(hashList(hashes), value),
                                     QStringLiteral("Failed to set force start for tnts."));
    if (co_await std::move(request))
        setStates(hashes, false, State::forcedDL, State::forcedUP);
}

QCoro::Task<> AppContext::recheckTnts(QSet<QString> hashes)
{
    QCoro::Task<bool> request =
        send(Endpoint::TntManagement::recheck(hashList(hashes)), QStringLiteral("Failed to recheck tnts."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::reannounceTnts(QSet<QString> hashes)
{
    const QPointer<AppContext> self(this);
    const QString title = QStringLiteral("failed to reannounce tnts.");
    QCoro::Task<bool> request = send(Endpoint::TntManagement::reannounce(hashList(hashes)), title);
    if (co_await std::move(request) || !self)
        co_return;
    if (m_clientError && m_clientError->title() == title)
        qCWarning(lcContext, "Failed to reannounce tnts: %s", qUtf8Printable(m_clientError->description()));
}

QCoro::Task<> AppContext::removeTnts(QSet<QString> hashes, bool deleteFiles)
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::deleteTnts(hashList(hashes), deleteFiles),
                                     QStringLiteral("Failed to delete tnts."));
    if (!co_await std::move(request))
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
    QCoro::Task<bool> request =
        send(Endpoint::TntManagement::addTrackers(hash, urls), QStringLiteral("Failed to add trackers."));
    if (co_await std::move(request))
        Q_EMIT trackersEdited(hash);
}

QCoro::Task<> AppContext::editTracker(QString hash, QString origUrl, QString newUrl)
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::editTracker(hash, origUrl, newUrl, m_webAPIVersion),
                                     QStringLiteral("Failed to edit tracker."));
    if (co_await std::move(request))
        Q_EMIT trackersEdited(hash);
}

QCoro::Task<> AppContext::removeTrackers(QString hash, QStringList urls)
{
    QCoro::Task<bool> request =
        send(Endpoint::TntManagement::removeTrackers(hash, urls), QStringLiteral("Faield to remove trackers."));
    if (co_await std::move(request))
        Q_EMIT trackersEdited(hash);
}

QCoro::Task<> AppContext::addPeers(QSet<QString> hashes, QStringList peers)
{
    if (hashes.isEmpty())
        co_return;
    QCoro::Task<bool> request =
        send(Endpoint::TntManagement::addPeers(sorted(hashes), peers), QStringLiteral("Failed to add peers to tnt."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::increasePriority()
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::increasePrio(hashList(m_selectedTnts)),
                                     QStringLiteral("Failed to increase tnt priority."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::decreasePriority()
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::decreasePrio(hashList(m_selectedTnts)),
                                     QStringLiteral("Failed to decrease tnt priority."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::maximumPriority()
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::topPrio(hashList(m_selectedTnts)),
                                     QStringLiteral("Failed to set maximum tnt priority."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::minimumPriority()
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::bottomPrio(hashList(m_selectedTnts)),
                                     QStringLiteral("Failed to set minimum tnt priority."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::setFilePriority(QString hash, QSet<int> fileIds, int priority)
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::filePrio(hash, sortedIds(fileIds), priority),
                                     QStringLiteral("Failed to set file priority."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::setLocation(QSet<QString> hashes, QString location)
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::setLocation(sorted(hashes), location),
                                     QStringLiteral("Failed to set tnt location."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::renameTnt(QString hash, QString name)
{
    QCoro::Task<bool> request =
        send(Endpoint::TntManagement::rename(hash, name), QStringLiteral("Failed to rename tnt."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::setCategory(QSet<QString> hashes, QString category)
{
    // No torrents is not "all" here: the request would name none, but the local edit would reach every one.
    if (hashes.isEmpty())
        co_return;
    QCoro::Task<bool> request = send(Endpoint::TntManagement::setCategory(sorted(hashes), category),
                                     QStringLiteral("Failed to set tnt category."));
    if (!co_await std::move(request))
        co_return;
    m_tntCollection.editLocally(hashes, [&category](TntModel &tnt) { return tnt.setCategory(category); });
}

QCoro::Task<> AppContext::createCategory(QString name, QString savePath)
{
    QCoro::Task<bool> request =
        send(Endpoint::TntManagement::createCategory(name, savePath), QStringLiteral("Failed to create category."));
    if (!co_await std::move(request))
        co_return;
    m_categories.insert(name, API::Category{name, savePath});
    Q_EMIT labelsChanged();
}

QCoro::Task<> AppContext::editCategory(QString name, QString savePath)
{
    QCoro::Task<bool> request =
        send(Endpoint::TntManagement::editCategory(name, savePath), QStringLiteral("Failed to edit category."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::removeCategories(QSet<QString> names)
{
    QCoro::Task<bool> request =
        send(Endpoint::TntManagement::removeCategories(sorted(names)), QStringLiteral("Failed to remove categories."));
    if (!co_await std::move(request))
        co_return;
    for (const QString &name : std::as_const(names))
        m_categories.remove(name);
    Q_EMIT labelsChanged();
}

QCoro::Task<> AppContext::addTags(QSet<QString> hashes, QSet<QString> tags)
{
    if (hashes.isEmpty())
        co_return;
    QCoro::Task<bool> request =
        send(Endpoint::TntManagement::addTags(sorted(hashes), sorted(tags)), QStringLiteral("Failed to add tags."));
    if (!co_await std::move(request))
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
    if (hashes.isEmpty())
        co_return;
    QCoro::Task<bool> request = send(Endpoint::TntManagement::removeTags(sorted(hashes), sorted(tags)),
                                     QStringLiteral("Failed to remove tags."));
    if (!co_await std::move(request))
        co_return;
    m_tntCollection.editLocally(hashes, [&tags](TntModel &tnt) {
        QStringList kept = tagList(tnt.tags());
        kept.removeIf([&tags](const QString &tag) { return tags.contains(tag); });
        return tnt.setTags(tagText(std::move(kept)));
    });
}

QCoro::Task<> AppContext::createTags(QSet<QString> tags)
{
    QCoro::Task<bool> request =
        send(Endpoint::TntManagement::createTags(sorted(tags)), QStringLiteral("Failed to create tags."));
    if (!co_await std::move(request))
        co_return;
    for (const QString &tag : sorted(tags)) {
        if (!m_tags.contains(tag))
            m_tags.append(tag);
    }
    Q_EMIT labelsChanged();
}

QCoro::Task<> AppContext::deleteTags(QSet<QString> tags)
{
    QCoro::Task<bool> request =
        send(Endpoint::TntManagement::deleteTags(sorted(tags)), QStringLiteral("Failed to delete tags."));
    if (!co_await std::move(request))
        co_return;
    m_tags.removeIf([&tags](const QString &tag) { return tags.contains(tag); });
    Q_EMIT labelsChanged();
}

QCoro::Task<> AppContext::setAutoManagement(QSet<QString> hashes, bool enable)
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::setAutoManagement(hashList(hashes), enable),
                                     QStringLiteral("Failed to set automatic tnt management."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::toggleSequentialDownload(QSet<QString> hashes)
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::toggleSequentialDownload(hashList(hashes)),
                                     QStringLiteral("Failed to toggle sequential download."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::toggleFirstLastPiecePrio(QSet<QString> hashes)
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::toggleFirstLastPiecePrio(hashList(hashes)),
                                     QStringLiteral("Failed to toggle first/last piece priority."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::setSuperSeeding(QSet<QString> hashes, bool value)
{
    QCoro::Task<bool> request = send(Endpoint::TntManagement::setSuperSeeding(hashList(hashes), value),
                                     QStringLiteral("Failed to set super seeding."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::banPeers(QSet<QString> peers)
{
    QCoro::Task<bool> request =
        send(Endpoint::TransferInfo::banPeers(sorted(peers)), QStringLiteral("Failed to ban peers."));
    co_await std::move(request);
}

QCoro::Task<> AppContext::toggleSpeedLimitsMode()
{
    QCoro::Task<bool> request =
        send(Endpoint::TransferInfo::toggleSpeedLimitsMode(), QStringLiteral("Failed to toggle speed limits mode."));
    co_await std::move(request);
}

QCoro::Task<bool> AppContext::upload(API::TntAddingOptions options)
{
    if (!m_client || !m_isAuthorized) {
        fail(addingFailure, std::make_exception_ptr(API::NetworkError::disconnected()));
        co_return false;
    }
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    std::exception_ptr failure;
    try {
        QCoro::Task<void> adding = TntAdder::add(*m_client, std::move(options));
        co_await std::move(adding);
    } catch (...) {
        failure = std::current_exception();
    }
    if (!self || self->m_generation != generation)
        co_return false;
    if (failure) {
        if (!isCancellation(failure))
            fail(addingFailure, failure);
        co_return false;
    }
    forcePoll();
    co_return true;
}

// Whether the torrent is listed by the time given. New rows wake it at once; a second without any
// asks for a poll.
QCoro::Task<bool> AppContext::isListedWithin(QString hash, std::chrono::milliseconds within)
{
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    const QDeadlineTimer deadline(within);
    while (!m_tntCollection.find(hash)) {
        if (deadline.hasExpired())
            co_return false;
        const std::chrono::milliseconds wait(std::min<qint64>(1000, deadline.remainingTime()));
        const auto inserted = co_await qCoro(&m_tntCollection, &TntCollection::didInsert, wait);
        if (!self || self->m_generation != generation)
            co_return false;
        if (!inserted)
            forcePoll();
    }
    co_return true;
}

QCoro::Task<bool> AppContext::awaitTnt(QString hash)
{
    const QPointer<AppContext> self(this);
    // Long enough for a busy server's slow polls; a torrent that never comes is reported.
    QCoro::Task<bool> listing = isListedWithin(hash, std::chrono::minutes(1));
    if (co_await std::move(listing))
        co_return true;
    if (self)
        fail(QStringLiteral("Failed to set file priority."),
             std::make_exception_ptr(API::TntManagmentError(
                 API::TntManagmentError::Case::addingRejected, {},
                 QStringLiteral("The torrent did not appear on the server, so its skipped files could not be set."))));
    co_return false;
}

// qBittorrent 5.3 loses a magnet added a moment after its first metadata request: the add answers
// success, but the server's metadata download, not yet under way, blocks it as a duplicate, and
// adding it again alone fails the same way. Asking for the metadata once more puts that download
// back under the server's control, so that a second add replaces it.
QCoro::Task<bool> AppContext::addMagnetMakingSureItIsListed(API::TntAddingOptions options, QString hash)
{
    const QPointer<AppContext> self(this);
    const quint64 generation = m_generation;
    const QString magnet = options.urls->constFirst();
    for (int attempt = 1;; ++attempt) {
        QCoro::Task<bool> adding = upload(options);
        if (!co_await std::move(adding))
            co_return false;
        QCoro::Task<bool> listing = isListedWithin(hash, std::chrono::seconds(5));
        if (co_await std::move(listing))
            co_return true;
        if (!self || self->m_generation != generation)
            co_return false;
        if (attempt == 3) {
            fail(addingFailure, std::make_exception_ptr(API::TntManagmentError(
                                    API::TntManagmentError::Case::addingRejected, {},
                                    QStringLiteral("The server accepted the magnet link but does not list it."))));
            co_return false;
        }
        qCWarning(lcContext, "Added magnet %s not listed: asking for its metadata before adding it again",
                  qUtf8Printable(hash));
        try {
            QCoro::Task<QByteArray> asking = m_client->perform(Endpoint::TntManagement::fetchMetadata(magnet));
            co_await std::move(asking);
        } catch (const std::exception &error) {
            qCWarning(lcContext, "Metadata request before adding again failed: %s", error.what());
        }
        QCoro::Task<> pause = QCoro::sleepFor(std::chrono::milliseconds(500));
        co_await std::move(pause);
        if (!self || self->m_generation != generation || !m_client)
            co_return false;
    }
}

QCoro::Task<bool> AppContext::addTnts(API::TntAddingOptions options, bool start, QString hash,
                                      QList<int> filePriorities)
{
    const QMap<int, QSet<int>> changed = filesByPriority(filePriorities);
    // Servers that take `filePriorities` refuse them with uploaded .torrent files ("Cannot specify
    // filePriorities when uploading torrent files", qBittorrent 5.3): only links send them along.
    const bool sentAlong = m_webAPIVersion >= filePrioritiesOnAdd && (!options.tnts || options.tnts->isEmpty());
    if (changed.isEmpty() || sentAlong || hash.isEmpty()) {
        if (!changed.isEmpty())
            options.filePriorities = joined(filePriorities);
        options.setAddStopped(!start, m_webAPIVersion);
        const bool oneMagnet = options.urls && options.urls->size() == 1 && options.urls->constFirst().startsWith(u"magnet:")
                               && (!options.tnts || options.tnts->isEmpty());
        if (oneMagnet && !hash.isEmpty() && m_webAPIVersion >= metadataFetching) {
            QCoro::Task<bool> adding = addMagnetMakingSureItIsListed(std::move(options), hash);
            co_return co_await std::move(adding);
        }
        QCoro::Task<bool> adding = upload(std::move(options));
        co_return co_await std::move(adding);
    }

    // Stopped until its files are set, so that a skipped file is never begun.
    options.setAddStopped(true, m_webAPIVersion);
    QCoro::Task<bool> adding = upload(std::move(options));
    if (!co_await std::move(adding))
        co_return false;
    QCoro::Task<bool> arrival = awaitTnt(hash);
    if (!co_await std::move(arrival))
        co_return false;
    for (auto files = changed.cbegin(); files != changed.cend(); ++files) {
        QCoro::Task<bool> setting = send(Endpoint::TntManagement::filePrio(hash, sortedIds(files.value()), files.key()),
                                         QStringLiteral("Failed to set file priority."));
        if (!co_await std::move(setting))
            co_return false;
    }
    if (start) {
        QCoro::Task<> starting = startTnts({hash});
        co_await std::move(starting);
    }
    co_return true;
}
