#pragma once

#include "api/RssRecords.h"

#include <QObject>

// The server's RSS feeds and folders with their articles, as last read. They are read only while
// a window shows them and the connection polls (see RssLoader).
class RssFeeds : public QObject
{
    Q_OBJECT

public:
    explicit RssFeeds(QObject *parent = nullptr);

    const API::RssItem &root() const { return m_root; }
    // Takes a new reading; says `changed` only when it differs.
    void setRoot(API::RssItem root);
    // The item under `path`; the root for an empty path; none when the server has no such item.
    const API::RssItem *item(const QString &path) const;
    // What the server is told at once shows at once; its next reading confirms it.
    void markRead(const QString &itemPath, const QString &articleId = {});

    void setShown(bool shown);
    bool isShown() const { return m_shown; }

    // Nothing read, for another server.
    void reset() { setRoot({}); }

Q_SIGNALS:
    // Around a new reading: what was shown of the old one is gone after the first.
    void aboutToChange();
    void changed();
    void shownChanged(bool shown);

private:
    API::RssItem m_root;
    bool m_shown = false;
};
