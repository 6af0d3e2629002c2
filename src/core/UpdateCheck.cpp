#include "core/UpdateCheck.h"

#include <QCoreApplication>
#include <QCoroNetworkReply>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkReply>
#include <QPointer>

#include <memory>

namespace {

using Kind = UpdateCheck::Outcome::Kind;
// A feed that has not answered by then will not: the user is waiting on the dialog.
constexpr int timeoutMs = 30'000;

UpdateCheck::Outcome failed(const QString &reason)
{
    return {
        Kind::failed, QCoreApplication::translate("UpdateCheck", "Could not check for updates: %1").arg(reason), {}};
}

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
        co_return failed(QCoreApplication::translate("UpdateCheck", "Quillo is closing."));
    if (reply->error() != QNetworkReply::NoError)
        co_return failed(QCoreApplication::translate("UpdateCheck", "the release feed at %1 did not answer (%2).")
                             .arg(m_feed.toDisplayString(), reply->errorString()));
    co_return judge(reply->readAll(), m_current);
}

UpdateCheck::Outcome UpdateCheck::judge(const QByteArray &feed, const QVersionNumber &current)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(feed, &error);
    if (document.isNull())
        return failed(QCoreApplication::translate("UpdateCheck", "the release feed is not valid JSON (%1).")
                          .arg(error.errorString()));
    if (!document.isArray())
        return failed(QCoreApplication::translate("UpdateCheck", "the release feed is not a list of releases."));

    QVersionNumber newest;
    QString shown;
    QUrl page;
    const QJsonArray releases = document.array();
    for (const QJsonValue &value : releases) {
        const QJsonObject release = value.toObject();
        if (release.value(u"draft").toBool() || release.value(u"prerelease").toBool())
            continue;
        const QString tag = release.value(u"tag_name").toString();
        const QVersionNumber version = releaseVersion(tag);
        if (!version.isNull() && QVersionNumber::compare(version, newest) > 0) {
            newest = version;
            shown = tag.mid(tag.startsWith(u'v', Qt::CaseInsensitive) ? 1 : 0);
            page = QUrl(release.value(u"html_url").toString());
        }
    }
    if (newest.isNull())
        return failed(QCoreApplication::translate("UpdateCheck", "the release feed lists no release."));
    if (QVersionNumber::compare(newest, current.normalized()) <= 0)
        return {Kind::upToDate, QCoreApplication::translate("UpdateCheck", "Quillo is up to date."), {}};
    return {Kind::available, QCoreApplication::translate("UpdateCheck", "Quillo %1 is available.").arg(shown), page};
}

QVersionNumber UpdateCheck::releaseVersion(QStringView tag)
{
    if (tag.startsWith(u'v') || tag.startsWith(u'V'))
        tag = tag.mid(1);
    qsizetype suffix = 0;
    const QVersionNumber version = QVersionNumber::fromString(tag, &suffix);
    // Trailing zeros do not make a version newer: 1.2 and 1.2.0 are one release.
    return suffix == tag.size() ? version.normalized() : QVersionNumber();
}
