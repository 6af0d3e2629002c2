#pragma once

#include "api/APIEndpoint.h"
#include "api/ServerFeatures.h"
#include "model/TntTargets.h"

#include <QCoroTask>
#include <QObject>
#include <QSet>
#include <QStringList>

#include <functional>
#include <optional>

class Connector;
class ErrorReporter;
class ServerLabels;
class TntCollection;

// The torrent commands: one request each, then the local change the next poll would make anyway,
// so that the table answers a click at once. A failure goes to the error reporter under the
// command's title and changes nothing here.
class TntOperations : public QObject
{
    Q_OBJECT

public:
    enum class QueueMove { up, down, top, bottom };

    TntOperations(Connector &connector, TntCollection &tnts, ServerLabels &labels, ErrorReporter &errors,
                  QObject *parent = nullptr);

    QCoro::Task<> start(TntTargets targets);
    QCoro::Task<> stop(TntTargets targets);
    QCoro::Task<> setForceStart(TntTargets targets, bool value);
    QCoro::Task<> recheck(TntTargets targets);
    QCoro::Task<> reannounce(TntTargets targets);
    QCoro::Task<> remove(TntTargets targets, bool deleteFiles);
    QCoro::Task<> moveInQueue(TntTargets targets, QueueMove move);
    QCoro::Task<> setLocation(TntTargets targets, QString location);
    QCoro::Task<> rename(QString hash, QString name);
    QCoro::Task<> setFilePriority(QString hash, QSet<int> fileIds, int priority);
    QCoro::Task<> addTrackers(QString hash, QStringList urls);
    QCoro::Task<> editTracker(QString hash, QString origUrl, QString newUrl);
    QCoro::Task<> removeTrackers(QString hash, QStringList urls);
    QCoro::Task<> addPeers(TntTargets targets, QStringList peers);
    QCoro::Task<> banPeers(QSet<QString> peers);
    // "" removes the category.
    QCoro::Task<> setCategory(TntTargets targets, QString category);
    QCoro::Task<> createCategory(QString name, QString savePath);
    QCoro::Task<> editCategory(QString name, QString savePath);
    QCoro::Task<> removeCategories(QSet<QString> names);
    QCoro::Task<> addTags(TntTargets targets, QSet<QString> tags);
    QCoro::Task<> removeTags(TntTargets targets, QSet<QString> tags);
    QCoro::Task<> createTags(QSet<QString> tags);
    QCoro::Task<> deleteTags(QSet<QString> tags);
    QCoro::Task<> setAutoManagement(TntTargets targets, bool enable);
    QCoro::Task<> toggleSequentialDownload(TntTargets targets);
    QCoro::Task<> toggleFirstLastPiecePrio(TntTargets targets);
    QCoro::Task<> setSuperSeeding(TntTargets targets, bool value);
    QCoro::Task<> toggleSpeedLimitsMode();

    // Sends one request on the open session and answers its body; none (with the failure reported
    // under `failureTitle`) when it failed or its session is gone, so the caller leaves the model alone.
    QCoro::Task<std::optional<QByteArray>> request(API::APIEndpoint endpoint, QString failureTitle);
    // The same when only success matters.
    QCoro::Task<bool> send(API::APIEndpoint endpoint, QString failureTitle);

Q_SIGNALS:
    // The torrent's tracker list changed on the server; whoever shows it fetches it again.
    void trackersEdited(const QString &hash);
    // Torrents were removed here: views showing one of them let it go.
    void tntsRemoved();

private:
    // One command: what to send for the server at hand, its failure's title, and the local change
    // once the server took it.
    struct Command
    {
        QString failureTitle;
        std::function<API::APIEndpoint(const API::ServerFeatures &)> endpoint;
        std::function<void(const API::ServerFeatures &)> applied = {};
    };
    static QCoro::Task<> nothing();
    QCoro::Task<> run(Command command);
    QCoro::Task<bool> runChecked(Command command);

    Connector &m_connector;
    TntCollection &m_tnts;
    ServerLabels &m_labels;
    ErrorReporter &m_errors;
};
