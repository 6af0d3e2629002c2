#pragma once

#include "api/RssRecords.h"

#include <QAbstractItemModel>
#include <QAbstractTableModel>

class RssFeeds;

// The server's folders and feeds as a tree, each with its unread count. Every reading that differs
// resets the tree; views keep their place by the items' paths (PathRole).
class RssTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role { PathRole = Qt::UserRole, IsFolderRole, UnreadRole };

    explicit RssTreeModel(const RssFeeds &feeds, QObject *parent = nullptr);

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    QModelIndex indexOf(const QString &path) const;

private:
    struct Node
    {
        const API::RssItem *item;
        int parent; // -1 for the root's children
        int row;
        QList<int> children;
    };

    void rebuild();
    void add(const API::RssItem &item, int parent, int row);

    const RssFeeds &m_feeds;
    QList<Node> m_nodes;
    QList<int> m_top;
};

// The articles of one item: a feed's, or those of every feed in a folder, in the server's order.
class RssArticleModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { TitleColumn, DateColumn, FeedColumn, ColumnCount };
    enum Role { FeedPathRole = Qt::UserRole, IdRole, IsReadRole, TorrentURLRole, LinkRole };

    explicit RssArticleModel(const RssFeeds &feeds, QObject *parent = nullptr);

    void setItemPath(const QString &path);
    const QString &itemPath() const { return m_path; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    struct Row
    {
        QString feedPath;
        QString feedName;
        API::RssArticle article;
    };

    QList<Row> read() const;
    void reload();

    const RssFeeds &m_feeds;
    QString m_path;
    QList<Row> m_rows;
};
