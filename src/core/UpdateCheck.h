#pragma once

#include "core/ReleaseFeed.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QUrl>
#include <QVersionNumber>

#include <qcorotask.h>

// Asks the release feed for a Quillo newer than this one.
class UpdateCheck : public QObject
{
    Q_OBJECT

public:
    using Outcome = ReleaseFeed::Outcome;
    UpdateCheck(QUrl feed, QVersionNumber current, QObject *parent = nullptr);

    QCoro::Task<Outcome> check();

private:
    QUrl m_feed;
    QVersionNumber m_current;
    QNetworkAccessManager m_network;
};
