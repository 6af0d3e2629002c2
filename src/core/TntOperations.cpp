#include "core/TntOperations.h"

#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "core/Connector.h"
#include "core/ErrorReporter.h"
#include "model/ServerLabels.h"
#include "model/TntCollection.h"
#include "support/Captured.h"
#include "support/Sorted.h"

#include <QCoreApplication>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcOperations, "AppContext")

namespace Endpoint = API::Endpoint;
using Features = API::ServerFeatures;
using State = TntModel::State;

namespace {

// Only a finished torrent seeds; 0.9999 is still downloading.
auto stateBy(State incomplete, State complete)
{
    return
        [incomplete, complete](TntModel &tnt) { return tnt.setState(tnt.progress() == 1.0 ? complete : incomplete); };
}

} // namespace

QCoro::Task<> TntOperations::nothing()
{
    co_return;
}

TntOperations::TntOperations(Connector &connector, TntCollection &tnts, ServerLabels &labels, ErrorReporter &errors,
                             QObject *parent)
    : QObject(parent)
    , m_connector(connector)
    , m_tnts(tnts)
    , m_labels(labels)
    , m_errors(errors)
{}

QCoro::Task<std::optional<QByteArray>> TntOperations::request(API::APIEndpoint endpoint, QString failureTitle)
{
    const QPointer<Session> session = m_connector.session();
    // A command given while logged out or reconnecting (the table still shows the last torrents).
    if (!session || !session->isAuthorized()) {
        m_errors.report(failureTitle, std::make_exception_ptr(API::NetworkError::disconnected()));
        co_return std::nullopt;
    }
    QCoro::Task<Captured<QByteArray>> request = captured(session->client().perform(std::move(endpoint)));
    Captured<QByteArray> answer = co_await std::move(request);
    if (!session)
        co_return std::nullopt;
    if (!answer) {
        m_errors.reportUnlessCancelled(failureTitle, answer.error);
        co_return std::nullopt;
    }
    co_return std::move(*answer.value);
}

QCoro::Task<bool> TntOperations::send(API::APIEndpoint endpoint, QString failureTitle)
{
    QCoro::Task<std::optional<QByteArray>> requesting = request(std::move(endpoint), std::move(failureTitle));
    co_return (co_await std::move(requesting)).has_value();
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
    return run({QCoreApplication::translate("TntOperations", "Failed to start torrents."),
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
    return run({QCoreApplication::translate("TntOperations", "Failed to stop torrents."),
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
    return run({QCoreApplication::translate("TntOperations", "Failed to set force start for torrents."),
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
    return run({QCoreApplication::translate("TntOperations", "Failed to recheck torrents."),
                [targets](const Features &) { return Endpoint::TntManagement::recheck(targets.wireList()); }});
}

QCoro::Task<> TntOperations::reannounce(TntTargets targets)
{
    const QString title = QCoreApplication::translate("TntOperations", "Failed to reannounce torrents.");
    QCoro::Task<bool> request = runChecked(
        {title, [targets](const Features &) { return Endpoint::TntManagement::reannounce(targets.wireList()); }});
    if (co_await std::move(request))
        co_return;
    if (const auto &error = m_errors.current(); error && error->title() == title)
        qCWarning(lcOperations, "Failed to reannounce tnts: %s", qUtf8Printable(error->description()));
}

QCoro::Task<> TntOperations::remove(TntTargets targets, bool deleteFiles)
{
    return run({QCoreApplication::translate("TntOperations", "Failed to delete torrents."),
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
        return run({QCoreApplication::translate("TntOperations", "Failed to increase torrent priority."),
                    [targets](const Features &) { return Endpoint::TntManagement::increasePrio(targets.wireList()); }});
    case QueueMove::down:
        return run({QCoreApplication::translate("TntOperations", "Failed to decrease torrent priority."),
                    [targets](const Features &) { return Endpoint::TntManagement::decreasePrio(targets.wireList()); }});
    case QueueMove::top:
        return run({QCoreApplication::translate("TntOperations", "Failed to set maximum torrent priority."),
                    [targets](const Features &) { return Endpoint::TntManagement::topPrio(targets.wireList()); }});
    case QueueMove::bottom:
        return run({QCoreApplication::translate("TntOperations", "Failed to set minimum torrent priority."),
                    [targets](const Features &) { return Endpoint::TntManagement::bottomPrio(targets.wireList()); }});
    }
    Q_UNREACHABLE();
}

QCoro::Task<> TntOperations::setLocation(TntTargets targets, QString location)
{
    if (targets.isNone())
        return nothing();
    return run({QCoreApplication::translate("TntOperations", "Failed to set torrent location."),
                [targets, location](const Features &) {
                    return Endpoint::TntManagement::setLocation(targets.wireList(), location);
                }});
}

QCoro::Task<> TntOperations::rename(QString hash, QString name)
{
    return run({QCoreApplication::translate("TntOperations", "Failed to rename torrent."),
                [hash, name](const Features &) { return Endpoint::TntManagement::rename(hash, name); }});
}

QCoro::Task<> TntOperations::setFilePriority(QString hash, QSet<int> fileIds, int priority)
{
    return run({QCoreApplication::translate("TntOperations", "Failed to set file priority."),
                [hash, ids = sorted(fileIds), priority](const Features &) {
                    return Endpoint::TntManagement::filePrio(hash, ids, priority);
                }});
}

QCoro::Task<> TntOperations::addTrackers(QString hash, QStringList urls)
{
    return run({QCoreApplication::translate("TntOperations", "Failed to add trackers."),
                [hash, urls](const Features &) { return Endpoint::TntManagement::addTrackers(hash, urls); },
                [this, hash](const Features &) { Q_EMIT trackersEdited(hash); }});
}

QCoro::Task<> TntOperations::editTracker(QString hash, QString origUrl, QString newUrl)
{
    return run({QCoreApplication::translate("TntOperations", "Failed to edit tracker."),
                [hash, origUrl, newUrl](const Features &server) {
                    return Endpoint::TntManagement::editTracker(hash, origUrl, newUrl, server);
                },
                [this, hash](const Features &) { Q_EMIT trackersEdited(hash); }});
}

QCoro::Task<> TntOperations::removeTrackers(QString hash, QStringList urls)
{
    return run({QCoreApplication::translate("TntOperations", "Failed to remove trackers."),
                [hash, urls](const Features &) { return Endpoint::TntManagement::removeTrackers(hash, urls); },
                [this, hash](const Features &) { Q_EMIT trackersEdited(hash); }});
}

QCoro::Task<> TntOperations::addPeers(TntTargets targets, QStringList peers)
{
    if (targets.isNone())
        return nothing();
    return run(
        {QCoreApplication::translate("TntOperations", "Failed to add peers to torrent."),
         [targets, peers](const Features &) { return Endpoint::TntManagement::addPeers(targets.wireList(), peers); }});
}

QCoro::Task<> TntOperations::banPeers(QSet<QString> peers)
{
    return run({QCoreApplication::translate("TntOperations", "Failed to ban peers."),
                [peers = sorted(peers)](const Features &) { return Endpoint::TransferInfo::banPeers(peers); }});
}

QCoro::Task<> TntOperations::setAutoManagement(TntTargets targets, bool enable)
{
    return run({QCoreApplication::translate("TntOperations", "Failed to set automatic torrent management."),
                [targets, enable](const Features &) {
                    return Endpoint::TntManagement::setAutoManagement(targets.wireList(), enable);
                }});
}

QCoro::Task<> TntOperations::toggleSequentialDownload(TntTargets targets)
{
    return run({QCoreApplication::translate("TntOperations", "Failed to toggle sequential download."),
                [targets](const Features &) {
                    return Endpoint::TntManagement::toggleSequentialDownload(targets.wireList());
                }});
}

QCoro::Task<> TntOperations::toggleFirstLastPiecePrio(TntTargets targets)
{
    return run({QCoreApplication::translate("TntOperations", "Failed to toggle first/last piece priority."),
                [targets](const Features &) {
                    return Endpoint::TntManagement::toggleFirstLastPiecePrio(targets.wireList());
                }});
}

QCoro::Task<> TntOperations::setSuperSeeding(TntTargets targets, bool value)
{
    return run({QCoreApplication::translate("TntOperations", "Failed to set super seeding."),
                [targets, value](const Features &) {
                    return Endpoint::TntManagement::setSuperSeeding(targets.wireList(), value);
                }});
}

QCoro::Task<> TntOperations::toggleSpeedLimitsMode()
{
    return run({QCoreApplication::translate("TntOperations", "Failed to toggle speed limits mode."),
                [](const Features &) { return Endpoint::TransferInfo::toggleSpeedLimitsMode(); }});
}

QCoro::Task<std::optional<QByteArray>> TntOperations::exportTnt(QString hash)
{
    return request(Endpoint::TntManagement::exportTnt(hash),
                   QCoreApplication::translate("TntOperations", "Failed to export torrent."));
}
