#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <QVersionNumber>

// A release feed in the GitHub Releases JSON format (an array of releases, each with "tag_name",
// "html_url", "draft" and "prerelease") read for a Quillo newer than this one. No network here, so
// that the reading is tested and fuzzed on its own.
struct ReleaseFeed
{
    struct Outcome
    {
        enum class Kind { available, upToDate, failed };

        Kind kind;
        QString text; // what to tell the user
        QUrl page;    // the newer release's page, when one is available
    };

    // The feed's answer compared with the running version.
    static Outcome judge(const QByteArray &feed, const QVersionNumber &current);
    // "v1.2.3" and "1.2.3" alike; null for a tag that is no plain release version ("1.3.0-beta.1").
    static QVersionNumber releaseVersion(QStringView tag);
    static Outcome failed(const QString &reason);
};
