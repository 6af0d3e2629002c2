#pragma once

#include "api/APIEndpoint.h"
#include "api/RssRecords.h"

#include <QCoroTask>
#include <QMap>
#include <QStringList>

#include <optional>

class Connector;
class ErrorReporter;
class RssFeeds;
class RssLoader;
class TntOperations;

// What the user changes in RSS: feeds, folders, read marks and the auto-downloading rules. Each
// change is one request; a failure is reported under its title and answers false or nothing. The
// feeds are read again after every change to them but a read mark, which shows at once.
class RssOperations
{
public:
    RssOperations(TntOperations &operations, ErrorReporter &errors, RssFeeds &feeds, RssLoader &loader);

    // `path` names the new feed within its folder; the server names it by its URL when empty.
    QCoro::Task<bool> addFeed(QString url, QString path);
    QCoro::Task<bool> addFolder(QString path);
    // Renames too: the destination holds the new name.
    QCoro::Task<bool> moveItem(QString itemPath, QString destPath);
    QCoro::Task<bool> removeItem(QString path);
    QCoro::Task<bool> setFeedURL(QString path, QString url);
    // The root (an empty path) refreshes every feed.
    QCoro::Task<bool> refresh(QString path);
    // Every article of the item without an article id.
    QCoro::Task<bool> markAsRead(QString itemPath, QString articleId = {});

    QCoro::Task<std::optional<QList<API::RssRule>>> rules();
    QCoro::Task<bool> setRule(API::RssRule rule);
    QCoro::Task<bool> renameRule(QString name, QString newName);
    QCoro::Task<bool> removeRule(QString name);
    // The titles of the rule as saved on the server, by feed name.
    QCoro::Task<std::optional<QMap<QString, QStringList>>> matchingArticles(QString ruleName);
    // Whether the server fetches feeds at all; nothing when it did not say.
    QCoro::Task<std::optional<bool>> isProcessingEnabled();

private:
    QCoro::Task<bool> changeFeeds(API::APIEndpoint endpoint, QString failureTitle);
    template<typename T>
    std::optional<T> decoded(const std::optional<QByteArray> &answer, T (*decode)(const QByteArray &),
                             const QString &failureTitle);

    TntOperations &m_operations;
    ErrorReporter &m_errors;
    RssFeeds &m_feeds;
    RssLoader &m_loader;
};
