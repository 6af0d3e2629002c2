#include "core/UpdateCheck.h"

#include <QCoreApplication>
#include <QCoroNetworkReply>
#include <QNetworkReply>
#include <QPointer>

#include <memory>

namespace {

// A feed that has not answered by then will not: the user is waiting on the dialog.
constexpr int timeoutMs = 30'000;

} // namespace

UpdateCheck::UpdateCheck(QUrl feed, QVersionNumber current, QObject *parent)
    : QObject(parent)
    , m_feed(std::move(feed))
    , m_current(std::move(current))
{
    m_network.setTransferTimeout(timeoutMs);
}

QCoro::Task<UpdateCheck::Outcome> UpdateCheck::check()
{
    QNetworkRequest request(m_feed);
    request.setRawHeader("Accept", "application/vnd.github+json");
    QPointer<UpdateCheck> self(this);
    std::unique_ptr<QNetworkReply, void (*)(QNetworkReply *)> reply(m_network.get(request),
                                                                    [](QNetworkReply *r) { r->deleteLater(); });
    co_await reply.get();
    if (!self)
        co_return ReleaseFeed::failed(QCoreApplication::translate("UpdateCheck", "Quillo is closing."));
    if (reply->error() != QNetworkReply::NoError)
        co_return ReleaseFeed::failed(
            QCoreApplication::translate("UpdateCheck", "the release feed at %1 did not answer (%2).")
                .arg(m_feed.toDisplayString(), reply->errorString()));
    co_return ReleaseFeed::judge(reply->readAll(), m_current);
}
