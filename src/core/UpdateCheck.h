#pragma once

#include <QNetworkAccessManager>
#include <QObject>
#include <QUrl>
#include <QVersionNumber>

#include <qcorotask.h>

// Looks in a release feed in the GitHub Releases JSON format (an array of releases, each with
// "tag_name", "html_url", "draft" and "prerelease") for a Quillo newer than this one.
class UpdateCheck : public QObject
{
    Q_OBJECT

public:
    struct Outcome
    {
        enum class Kind { available, upToDate, failed };

        Kind kind;
        QString text; // what to tell the user
        QUrl page;    // the newer release's page, when one is available
    };

    UpdateCheck(QUrl feed, QVersionNumber current, QObject *parent = nullptr);

    QCoro::Task<Outcome> check();
    // The feed's answer compared with the running version.
    static Outcome judge(const QByteArray &feed, const QVersionNumber &current);
    // "v1.2.3" and "1.2.3" alike; null for a tag that is no plain release version ("1.3.0-beta.1").
    static QVersionNumber releaseVersion(QStringView tag);

private:
    QUrl m_feed;
    QVersionNumber m_current;
    QNetworkAccessManager m_network;
};
