#include "core/TransferLimits.h"

#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "core/Connector.h"
#include "core/ErrorReporter.h"
#include "core/TntOperations.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

namespace Endpoint = API::Endpoint;
using Direction = TransferLimits::Direction;

namespace {

QString readTitle(Direction direction)
{
    return direction == Direction::down ? QCoreApplication::translate("TransferLimits", "Failed to get download limit.")
                                        : QCoreApplication::translate("TransferLimits", "Failed to get upload limit.");
}

QString writeTitle(Direction direction)
{
    return direction == Direction::down ? QCoreApplication::translate("TransferLimits", "Failed to set download limit.")
                                        : QCoreApplication::translate("TransferLimits", "Failed to set upload limit.");
}

// The limit every torrent of a read answer ({"hash": limit, ...}) has; none when they differ.
std::optional<qint64> sharedLimit(const QJsonObject &limits)
{
    std::optional<qint64> shared;
    for (const QJsonValue value : limits) {
        if (!value.isDouble() || (shared && *shared != value.toInteger()))
            return std::nullopt;
        shared = value.toInteger();
    }
    // A negative limit is how some servers say "none".
    return shared ? std::optional(std::max<qint64>(*shared, 0)) : std::nullopt;
}

} // namespace

TransferLimits::TransferLimits(Connector &connector, TntOperations &operations, ErrorReporter &errors)
    : m_connector(connector)
    , m_operations(operations)
    , m_errors(errors)
{}

void TransferLimits::reportUndecodable(Direction direction, const QString &expected, const QByteArray &answer)
{
    m_errors.report(readTitle(direction),
                    std::make_exception_ptr(API::ResponseDecodingError(
                        QStringLiteral("%1: \"%2\"").arg(expected, QString::fromUtf8(answer.left(40))))));
}

QCoro::Task<std::optional<qint64>> TransferLimits::tntLimit(QStringList hashes, Direction direction)
{
    QCoro::Task<std::optional<QByteArray>> reading =
        m_operations.request(direction == Direction::down ? Endpoint::TntManagement::downloadLimit(hashes)
                                                          : Endpoint::TntManagement::uploadLimit(hashes),
                             readTitle(direction));
    const std::optional<QByteArray> answer = co_await std::move(reading);
    if (!answer)
        co_return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(*answer);
    if (!document.isObject()) {
        reportUndecodable(direction, QCoreApplication::translate("TransferLimits", "not a map of limits"), *answer);
        co_return std::nullopt;
    }
    co_return sharedLimit(document.object());
}

QCoro::Task<> TransferLimits::setTntLimit(TntTargets targets, Direction direction, qint64 limit)
{
    const QStringList hashes = targets.wireList();
    QCoro::Task<bool> sending =
        m_operations.send(direction == Direction::down ? Endpoint::TntManagement::setDownloadLimit(hashes, limit)
                                                       : Endpoint::TntManagement::setUploadLimit(hashes, limit),
                          writeTitle(direction));
    co_await std::move(sending);
}

QCoro::Task<> TransferLimits::setShareLimits(TntTargets targets, double ratio, qint64 seedingTime,
                                             qint64 inactiveSeedingTime)
{
    const Session *session = m_connector.session();
    QCoro::Task<bool> sending = m_operations.send(
        Endpoint::TntManagement::setShareLimits(targets.wireList(), ratio, seedingTime, inactiveSeedingTime,
                                                session ? session->features() : API::ServerFeatures()),
        QCoreApplication::translate("TransferLimits", "Failed to set share limits."));
    co_await std::move(sending);
}

QCoro::Task<std::optional<qint64>> TransferLimits::globalLimit(Direction direction)
{
    QCoro::Task<std::optional<QByteArray>> reading = m_operations.request(
        direction == Direction::down ? Endpoint::TransferInfo::downloadLimit() : Endpoint::TransferInfo::uploadLimit(),
        readTitle(direction));
    const std::optional<QByteArray> answer = co_await std::move(reading);
    bool isNumber = false;
    const qint64 limit = answer ? answer->trimmed().toLongLong(&isNumber) : 0;
    if (answer && !isNumber)
        reportUndecodable(direction, QCoreApplication::translate("TransferLimits", "not a number"), *answer);
    co_return isNumber ? std::optional(std::max<qint64>(limit, 0)) : std::nullopt;
}

QCoro::Task<> TransferLimits::setGlobalLimit(Direction direction, qint64 limit)
{
    QCoro::Task<bool> sending =
        m_operations.send(direction == Direction::down ? Endpoint::TransferInfo::setDownloadLimit(limit)
                                                       : Endpoint::TransferInfo::setUploadLimit(limit),
                          writeTitle(direction));
    co_await std::move(sending);
}

QCoro::Task<bool> TransferLimits::shutDown()
{
    QCoro::Task<bool> sending =
        m_operations.send(Endpoint::Application::shutdown(),
                          QCoreApplication::translate("TransferLimits", "Failed to shut down the server."));
    co_return co_await std::move(sending);
}
