#include "core/RssOperations.h"

#include "api/Endpoint.h"
#include "api/Errors.h"
#include "api/QBTPreferences.h"
#include "core/ErrorReporter.h"
#include "core/RssLoader.h"
#include "core/TntOperations.h"
#include "model/RssFeeds.h"

#include <QCoreApplication>

namespace Rss = API::Endpoint::Rss;

RssOperations::RssOperations(TntOperations &operations, ErrorReporter &errors, RssFeeds &feeds, RssLoader &loader)
    : m_operations(operations)
    , m_errors(errors)
    , m_feeds(feeds)
    , m_loader(loader)
{
}

QCoro::Task<bool> RssOperations::changeFeeds(API::APIEndpoint endpoint, QString failureTitle)
{
    QCoro::Task<bool> sending = m_operations.send(std::move(endpoint), std::move(failureTitle));
    const bool sent = co_await std::move(sending);
    if (sent)
        m_loader.readNow();
    co_return sent;
}

template<typename T>
std::optional<T> RssOperations::decoded(const std::optional<QByteArray> &answer, T (*decode)(const QByteArray &),
                                        const QString &failureTitle)
{
    if (!answer)
        return std::nullopt;
    try {
        return decode(*answer);
    } catch (const API::ResponseDecodingError &) {
        m_errors.report(failureTitle, std::current_exception());
        return std::nullopt;
    }
}

QCoro::Task<bool> RssOperations::addFeed(QString url, QString path)
{
    return changeFeeds(Rss::addFeed(url, path), QCoreApplication::translate("RssOperations", "Failed to add the RSS feed."));
}

QCoro::Task<bool> RssOperations::addFolder(QString path)
{
    return changeFeeds(Rss::addFolder(path), QCoreApplication::translate("RssOperations", "Failed to add the folder."));
}

QCoro::Task<bool> RssOperations::moveItem(QString itemPath, QString destPath)
{
    return changeFeeds(Rss::moveItem(itemPath, destPath), QCoreApplication::translate("RssOperations", "Failed to move or rename the RSS item."));
}

QCoro::Task<bool> RssOperations::removeItem(QString path)
{
    return changeFeeds(Rss::removeItem(path), QCoreApplication::translate("RssOperations", "Failed to remove the RSS item."));
}

QCoro::Task<bool> RssOperations::setFeedURL(QString path, QString url)
{
    return changeFeeds(Rss::setFeedURL(path, url), QCoreApplication::translate("RssOperations", "Failed to change the feed's URL."));
}

QCoro::Task<bool> RssOperations::refresh(QString path)
{
    return changeFeeds(Rss::refreshItem(path), QCoreApplication::translate("RssOperations", "Failed to refresh the RSS feeds."));
}

QCoro::Task<bool> RssOperations::markAsRead(QString itemPath, QString articleId)
{
    // Shown at once; the next reading confirms it, so reading through articles asks for no extra read.
    m_feeds.markRead(itemPath, articleId);
    return m_operations.send(Rss::markAsRead(itemPath, articleId),
                             QCoreApplication::translate("RssOperations", "Failed to mark the articles as read."));
}

QCoro::Task<std::optional<QList<API::RssRule>>> RssOperations::rules()
{
    const QString title = QCoreApplication::translate("RssOperations", "Failed to get the download rules.");
    QCoro::Task<std::optional<QByteArray>> reading = m_operations.request(Rss::rules(), title);
    const std::optional<QByteArray> answer = co_await std::move(reading);
    co_return decoded(answer, &API::decodeRssRules, title);
}

QCoro::Task<bool> RssOperations::setRule(API::RssRule rule)
{
    return m_operations.send(Rss::setRule(rule.name(), rule.definition()), QCoreApplication::translate("RssOperations", "Failed to save the download rule."));
}

QCoro::Task<bool> RssOperations::renameRule(QString name, QString newName)
{
    return m_operations.send(Rss::renameRule(name, newName), QCoreApplication::translate("RssOperations", "Failed to rename the download rule."));
}

QCoro::Task<bool> RssOperations::removeRule(QString name)
{
    return m_operations.send(Rss::removeRule(name), QCoreApplication::translate("RssOperations", "Failed to remove the download rule."));
}

QCoro::Task<std::optional<QMap<QString, QStringList>>> RssOperations::matchingArticles(QString ruleName)
{
    const QString title = QCoreApplication::translate("RssOperations", "Failed to get the matching articles.");
    QCoro::Task<std::optional<QByteArray>> reading = m_operations.request(Rss::matchingArticles(ruleName), title);
    const std::optional<QByteArray> answer = co_await std::move(reading);
    co_return decoded(answer, &API::decodeRssMatchingArticles, title);
}

QCoro::Task<std::optional<bool>> RssOperations::isProcessingEnabled()
{
    const QString title = QCoreApplication::translate("RssOperations", "Failed to get the server's RSS settings.");
    QCoro::Task<std::optional<QByteArray>> reading = m_operations.request(API::Endpoint::Application::preferences(), title);
    const std::optional<QByteArray> answer = co_await std::move(reading);
    const std::optional<API::QBTPreferences> preferences = decoded(answer, &API::QBTPreferences::decode, title);
    if (!preferences)
        co_return std::nullopt;
    const std::optional<API::PreferenceValue> value = preferences->value(u"rssProcessingEnabled");
    if (!value || !std::holds_alternative<bool>(*value))
        co_return std::nullopt;
    co_return std::get<bool>(*value);
}
