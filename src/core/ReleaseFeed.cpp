#include "core/ReleaseFeed.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

ReleaseFeed::Outcome ReleaseFeed::failed(const QString &reason)
{
    return {Outcome::Kind::failed,
            QCoreApplication::translate("UpdateCheck", "Could not check for updates: %1").arg(reason),
            {}};
}

ReleaseFeed::Outcome ReleaseFeed::judge(const QByteArray &feed, const QVersionNumber &current)
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
        return {Outcome::Kind::upToDate, QCoreApplication::translate("UpdateCheck", "Quillo is up to date."), {}};
    return {Outcome::Kind::available, QCoreApplication::translate("UpdateCheck", "Quillo %1 is available.").arg(shown),
            page};
}

QVersionNumber ReleaseFeed::releaseVersion(QStringView tag)
{
    if (tag.startsWith(u'v') || tag.startsWith(u'V'))
        tag = tag.mid(1);
    qsizetype suffix = 0;
    const QVersionNumber version = QVersionNumber::fromString(tag, &suffix);
    // Trailing zeros do not make a version newer: 1.2 and 1.2.0 are one release.
    return suffix == tag.size() ? version.normalized() : QVersionNumber();
}
