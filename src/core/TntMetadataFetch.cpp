#include "core/TntMetadataFetch.h"

#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/AppContext.h"

#include <QCoroTimer>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// A 202 answer carries no "info" (or no body at all): the server has not got the metadata yet.
bool isComplete(const QByteArray &answer)
{
    const QJsonDocument document = QJsonDocument::fromJson(answer);
    return document.isObject() && document.object().contains(u"info");
}

} // namespace

QCoro::Task<std::optional<TntMetadata>> fetchTntMetadata(AppContext &context, QString source, QPointer<QObject> owner)
{
    const QPointer<AppContext> alive(&context);
    while (owner && alive && alive->client()) {
        QCoro::Task<QByteArray> asking = alive->client()->perform(API::Endpoint::TntManagement::fetchMetadata(source));
        const QByteArray answer = co_await std::move(asking);
        if (!owner)
            break;
        if (isComplete(answer))
            co_return TntMetadata::fromJson(answer);
        QCoro::Task<> pause = QCoro::sleepFor(std::chrono::seconds(1));
        co_await std::move(pause);
    }
    co_return std::nullopt;
}
