#pragma once

#include "api/APIEndpoint.h"
#include "model/TntTargets.h"

#include <QCoroTask>
#include <QStringList>

#include <optional>

class Connector;
class ErrorReporter;
class TntOperations;

// Speed limits, of torrents and of the whole transfer, read from the server and set on it, and the
// server shut down. A read answers nothing when it failed (reported under its title) or the
// session went; limits are bytes per second, 0 for none.
class TransferLimits
{
public:
    enum class Direction { down, up };

    TransferLimits(Connector &connector, TntOperations &operations, ErrorReporter &errors);

    // The limit the torrents share; none when they differ or the read failed.
    QCoro::Task<std::optional<qint64>> tntLimit(QStringList hashes, Direction direction);
    QCoro::Task<> setTntLimit(TntTargets targets, Direction direction, qint64 limit);
    // -2 for each is the server's own setting, -1 no limit; times in minutes.
    QCoro::Task<> setShareLimits(TntTargets targets, double ratio, qint64 seedingTime, qint64 inactiveSeedingTime);
    QCoro::Task<std::optional<qint64>> globalLimit(Direction direction);
    QCoro::Task<> setGlobalLimit(Direction direction, qint64 limit);
    // True once the server took the request: it then closes the connection, which is no loss.
    QCoro::Task<bool> shutDown();

private:
    void reportUndecodable(Direction direction, const QString &expected, const QByteArray &answer);

    Connector &m_connector;
    TntOperations &m_operations;
    ErrorReporter &m_errors;
};
