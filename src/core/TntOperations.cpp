#include "core/TntOperations.h"

#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "core/Connector.h"
#include "core/ErrorReporter.h"
#include "model/ServerLabels.h"
#include "model/TntCollection.h"
#include "support/Captured.h"

#include <QLoggingCategory>

#include <algorithm>

Q_LOGGING_CATEGORY(lcOperations, "AppContext")

namespace Endpoint = API::Endpoint;
using Features = API::ServerFeatures;
using State = TntModel::State;

namespace {

// Sorted so that a request's bytes do not depend on set order.
template <typename T> QList<T> sorted(const QSet<T> &values)
{
    QList<T> list = values.values();
    std::sort(list.begin(), list.end());
    return list;
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

QCoro::Task<> nothingToSend()
{
    co_return;
}

// Only a finished torrent seeds; 0.9999 is still downloading.
auto stateBy(State incomplete, State complete)
{
    return
        [incomplete, complete](TntModel &tnt) { return tnt.setState(tnt.progress() == 1.0 ? complete : incomplete); };
}

} // namespace

TntOperations::TntOperations(Connector &connector, TntCollection &tnts, ServerLabels &labels, ErrorReporter &errors,
                             QObject *parent)
    : QObject(parent)
    , m_connector(connector)
    , m_tnts(tnts)
    , m_labels(labels)
    , m_errors(errors)
{}

QCoro::Task<bool> TntOperations::send(API::APIEndpoint endpoint, QString failureTitle)
{
    const QPointer<Session> session = m_connector.session();
    // A command given while logged out or reconnecting (the table still shows the last torrents).
    if (!session || !session->isAuthorized()) {
        m_errors.report(failureTitle, std::make_exception_ptr(API::NetworkError::disconnected()));
        co_return false;
    }
    QCoro::Task<Captured<QByteArray>> request = captured(session->client().perform(std::move(endpoint)));
    const Captured<QByteArray> answer = co_await std::move(request);
    if (!session)
        co_return false;
    if (!answer) {
        m_errors.reportUnlessCancelled(failureTitle, answer.error);
        co_return false;
    }
    co_return true;
}

QCoro::Task<bool> TntOperations::runChecked(Command command)
{
    const Session *session = m_connector.session();
    const Features features = session ? session->features() : Features();
    QCoro::Task<bool> request = send(command.endpoint(features), command.failureTitle);
    const bool sent = co_await std::move(request);
    if (sent && command.applied)
        command.applied(features);
    co_return sent;
}

QCoro::Task<> TntOperations::run(Command command)
{
    QCoro::Task<bool> running = runChecked(std::move(command));
    co_await std::move(running);
}

QCoro::Task<> TntOperations::start(TntTargets targets)
{
    return run({QStringLiteral("Failed to start torrents."),
                [targets](const Features &server) {
                    return server.usesStartStop() ? Endpoint::TntManagement::start(targets.wireList())
                                                  : Endpoint::TntManagement::resume(targets.wireList());
                },
                [this, targets](const Features &) {
                    m_tnts.editLocally(targets, stateBy(State::stalledDL, State::stalledUP));
                }});
}

QCoro::Task<> TntOperations::stop(TntTargets targets)
{
    return run({QStringLiteral("Failed to stop torrents."),
                [targets](const Features &server) {
                    return server.usesStartStop() ? Endpoint::TntManagement::stop(targets.wireList())
                                                  : Endpoint::TntManagement::pause(targets.wireList());
                },
                [this, targets](const Features &server) {
                    m_tnts.editLocally(targets, server.usesStartStop() ? stateBy(State::stoppedDL, State::stoppedUP)
                                                                       : stateBy(State::pausedDL, State::pausedUP));
                }});
}

QCoro::Task<> TntOperations::setForceStart(TntTargets targets, bool value)
{
    return run({QStringLiteral("Failed to set force start for torrents."),
                [targets, value](const Features &) {
                    return Endpoint::TntManagement::setForceStart(targets.wireList(), value);
                },
                [this, targets](const Features &) {
                    // Every torrent is left to the next poll.
                    if (!targets.isAll())
                        m_tnts.editLocally(targets, stateBy(State::forcedDL, State::forcedUP));
                }});
}

QCoro::Task<> TntOperations::recheck(TntTargets targets)
{
    return run({QStringLiteral("Failed to recheck torrents."),
                [targets](const Features &) { return Endpoint::TntManagement::recheck(targets.wireList()); }});
}

QCoro::Task<> TntOperations::reannounce(TntTargets targets)
{
    const QString title = QStringLiteral("failed to reannounce torrents.");
    QCoro::Task<bool> request = runChecked(
        {title, [targets](const Features &) { return Endpoint::TntManagement::reannounce(targets.wireList()); }});
    if (co_await std::move(request))
        co_return;
    if (const auto &error = m_errors.current(); error && error->title() == title)
        qCWarning(lcOperations, "Failed to reannounce tnts: %s", qUtf8Printable(error->description()));
}

QCoro::Task<> TntOperations::remove(TntTargets targets, bool deleteFiles)
{
    return run({QStringLiteral("Failed to delete torrents."),
                [targets, deleteFiles](const Features &) {
                    return Endpoint::TntManagement::deleteTnts(targets.wireList(), deleteFiles);
                },
                [this, targets](const Features &) {
                    m_tnts.removeHere(targets);
                    Q_EMIT tntsRemoved();
                }});
}

QCoro::Task<> TntOperations::moveInQueue(TntTargets targets, QueueMove move)
{
    switch (move) {
    case QueueMove::up:
        return run({QStringLiteral("Failed to increase torrent priority."),
                    [targets](const Features &) { return Endpoint::TntManagement::increasePrio(targets.wireList()); }});
    case QueueMove::down:
        return run({QStringLiteral("Failed to decrease torrent priority."),
                    [targets](const Features &) { return Endpoint::TntManagement::decreasePrio(targets.wireList()); }});
    case QueueMove::top:
        return run({QStringLiteral("Failed to set maximum torrent priority."),
                    [targets](const Features &) { return Endpoint::TntManagement::topPrio(targets.wireList()); }});
    case QueueMove::bottom:
        return run({QStringLiteral("Failed to set minimum torrent priority."),
                    [targets](const Features &) { return Endpoint::TntManagement::bottomPrio(targets.wireList()); }});
    }
    Q_UNREACHABLE();
}

QCoro::Task<> TntOperations::setLocation(TntTargets targets, QString location)
{
    if (targets.isNone())
        return nothingToSend();
    return run({QStringLiteral("Failed to set torrent location."), [targets, location](const Features &) {
                    return Endpoint::TntManagement::setLocation(targets.wireList(), location);
                }});
}

QCoro::Task<> TntOperations::rename(QString hash, QString name)
{
    return run({QStringLiteral("Failed to rename torrent."),
                [hash, name](const Features &) { return Endpoint::TntManagement::rename(hash, name); }});
}

QCoro::Task<> TntOperations::setFilePriority(QString hash, QSet<int> fileIds, int priority)
{
    return run(
        {QStringLiteral("Failed to set file priority."), [hash, ids = sorted(fileIds), priority](const Features &) {
             return Endpoint::TntManagement::filePrio(hash, ids, priority);
         }});
}

QCoro::Task<> TntOperations::addTrackers(QString hash, QStringList urls)
{
    return run({QStringLiteral("Failed to add trackers."),
                [hash, urls](const Features &) { return Endpoint::TntManagement::addTrackers(hash, urls); },
                [this, hash](const Features &) { Q_EMIT trackersEdited(hash); }});
}

QCoro::Task<> TntOperations::editTracker(QString hash, QString origUrl, QString newUrl)
{
    return run({QStringLiteral("Failed to edit tracker."),
                [hash, origUrl, newUrl](const Features &server) {
                    return Endpoint::TntManagement::editTracker(hash, origUrl, newUrl, server);
                },
                [this, hash](const Features &) { Q_EMIT trackersEdited(hash); }});
}

QCoro::Task<> TntOperations::removeTrackers(QString hash, QStringList urls)
{
    return run({QStringLiteral("Failed to remove trackers."),
                [hash, urls](const Features &) { return Endpoint::TntManagement::removeTrackers(hash, urls); },
                [this, hash](const Features &) { Q_EMIT trackersEdited(hash); }});
}

QCoro::Task<> TntOperations::addPeers(TntTargets targets, QStringList peers)
{
    if (targets.isNone())
        return nothingToSend();
    return run({QStringLiteral("Failed to add peers to torrent."), [targets, peers](const Features &) {
                    return Endpoint::TntManagement::addPeers(targets.wireList(), peers);
                }});
}

QCoro::Task<> TntOperations::banPeers(QSet<QString> peers)
{
    return run({QStringLiteral("Failed to ban peers."),
                [peers = sorted(peers)](const Features &) { return Endpoint::TransferInfo::banPeers(peers); }});
}

QCoro::Task<> TntOperations::setCategory(TntTargets targets, QString category)
{
    if (targets.isNone())
        return nothingToSend();
    return run({QStringLiteral("Failed to set torrent category."),
                [targets, category](const Features &) {
                    return Endpoint::TntManagement::setCategory(targets.wireList(), category);
                },
                [this, targets, category](const Features &) {
                    m_tnts.editLocally(targets, [&category](TntModel &tnt) { return tnt.setCategory(category); });
                }});
}

QCoro::Task<> TntOperations::createCategory(QString name, QString savePath)
{
    return run({QStringLiteral("Failed to create category."),
                [name, savePath](const Features &) { return Endpoint::TntManagement::createCategory(name, savePath); },
                [this, name, savePath](const Features &) { m_labels.insertCategory(name, savePath); }});
}

QCoro::Task<> TntOperations::editCategory(QString name, QString savePath)
{
    return run({QStringLiteral("Failed to edit category."),
                [name, savePath](const Features &) { return Endpoint::TntManagement::editCategory(name, savePath); }});
}

QCoro::Task<> TntOperations::removeCategories(QSet<QString> names)
{
    return run({QStringLiteral("Failed to remove categories."),
                [list = sorted(names)](const Features &) { return Endpoint::TntManagement::removeCategories(list); },
                [this, names](const Features &) { m_labels.removeCategories(names); }});
}

QCoro::Task<> TntOperations::addTags(TntTargets targets, QSet<QString> tags)
{
    if (targets.isNone())
        return nothingToSend();
    return run({QStringLiteral("Failed to add tags."),
                [targets, list = sorted(tags)](const Features &) {
                    return Endpoint::TntManagement::addTags(targets.wireList(), list);
                },
                [this, targets, tags](const Features &) {
                    m_tnts.editLocally(targets, [&tags](TntModel &tnt) {
                        QStringList merged = tagList(tnt.tags());
                        for (const QString &tag : tags) {
                            if (!merged.contains(tag))
                                merged.append(tag);
                        }
                        return tnt.setTags(tagText(std::move(merged)));
                    });
                }});
}

QCoro::Task<> TntOperations::removeTags(TntTargets targets, QSet<QString> tags)
{
    if (targets.isNone())
        return nothingToSend();
    return run({QStringLiteral("Failed to remove tags."),
                [targets, list = sorted(tags)](const Features &) {
                    return Endpoint::TntManagement::removeTags(targets.wireList(), list);
                },
                [this, targets, tags](const Features &) {
                    m_tnts.editLocally(targets, [&tags](TntModel &tnt) {
                        QStringList kept = tagList(tnt.tags());
                        kept.removeIf([&tags](const QString &tag) { return tags.contains(tag); });
                        return tnt.setTags(tagText(std::move(kept)));
                    });
                }});
}

QCoro::Task<> TntOperations::createTags(QSet<QString> tags)
{
    return run({QStringLiteral("Failed to create tags."),
                [list = sorted(tags)](const Features &) { return Endpoint::TntManagement::createTags(list); },
                [this, list = sorted(tags)](const Features &) { m_labels.insertTags(list); }});
}

QCoro::Task<> TntOperations::deleteTags(QSet<QString> tags)
{
    return run({QStringLiteral("Failed to delete tags."),
                [list = sorted(tags)](const Features &) { return Endpoint::TntManagement::deleteTags(list); },
                [this, tags](const Features &) { m_labels.removeTags(tags); }});
}

QCoro::Task<> TntOperations::setAutoManagement(TntTargets targets, bool enable)
{
    return run({QStringLiteral("Failed to set automatic torrent management."), [targets, enable](const Features &) {
                    return Endpoint::TntManagement::setAutoManagement(targets.wireList(), enable);
                }});
}

QCoro::Task<> TntOperations::toggleSequentialDownload(TntTargets targets)
{
    return run({QStringLiteral("Failed to toggle sequential download."), [targets](const Features &) {
                    return Endpoint::TntManagement::toggleSequentialDownload(targets.wireList());
                }});
}

QCoro::Task<> TntOperations::toggleFirstLastPiecePrio(TntTargets targets)
{
    return run({QStringLiteral("Failed to toggle first/last piece priority."), [targets](const Features &) {
                    return Endpoint::TntManagement::toggleFirstLastPiecePrio(targets.wireList());
                }});
}

QCoro::Task<> TntOperations::setSuperSeeding(TntTargets targets, bool value)
{
    return run({QStringLiteral("Failed to set super seeding."), [targets, value](const Features &) {
                    return Endpoint::TntManagement::setSuperSeeding(targets.wireList(), value);
                }});
}

QCoro::Task<> TntOperations::toggleSpeedLimitsMode()
{
    return run({QStringLiteral("Failed to toggle speed limits mode."),
                [](const Features &) { return Endpoint::TransferInfo::toggleSpeedLimitsMode(); }});
}
