#include "core/TntMetadataFetch.h"

#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/AppContext.h"

#include <QCoroTimer>
#include <QTimer>
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
        // A second's pause, cut short when the owner goes so that nothing is left waiting. The
        // timer is the frame's own: an awaited signal of the owner would never come once it is gone.
        QTimer pause;
        pause.setSingleShot(true);
        QObject::connect(owner.data(), &QObject::destroyed, &pause, [&pause] { pause.start(0); });
        pause.start(std::chrono::seconds(1));
        QCoro::Task<> pausing = qCoro(pause).waitForTimeout();
        co_await std::move(pausing);
    }
    co_return std::nullopt;
}
