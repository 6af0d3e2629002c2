#include "ui/RssModels.h"

#include "model/RssFeeds.h"

#include <QDateTime>
#include <QFont>
#include <QLocale>

RssTreeModel::RssTreeModel(const RssFeeds &feeds, QObject *parent)
    : QAbstractItemModel(parent)
    , m_feeds(feeds)
{
    rebuild();
    connect(&feeds, &RssFeeds::aboutToChange, this, &RssTreeModel::beginResetModel);
    connect(&feeds, &RssFeeds::changed, this, [this] {
        rebuild();
        endResetModel();
    });
}

void RssTreeModel::rebuild()
{
    m_nodes.clear();
    m_top.clear();
    const QList<API::RssItem> &items = m_feeds.root().children;
    for (int row = 0; row < items.size(); ++row) {
        m_top << int(m_nodes.size());
        add(items.at(row), -1, row);
    }
}

void RssTreeModel::add(const API::RssItem &item, int parent, int row)
{
    const int id = int(m_nodes.size());
    m_nodes.append({&item, parent, row, {}});
    for (int childRow = 0; childRow < item.children.size(); ++childRow) {
        m_nodes[id].children << int(m_nodes.size());
        add(item.children.at(childRow), id, childRow);
    }
}

QModelIndex RssTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    const QList<int> &rows = parent.isValid() ? m_nodes.at(int(parent.internalId())).children : m_top;
    if (column != 0 || row < 0 || row >= rows.size())
        return {};
    return createIndex(row, column, quintptr(rows.at(row)));
}

QModelIndex RssTreeModel::parent(const QModelIndex &child) const
{
    if (!child.isValid())
        return {};
    const int parent = m_nodes.at(int(child.internalId())).parent;
    return parent < 0 ? QModelIndex() : createIndex(m_nodes.at(parent).row, 0, quintptr(parent));
}

int RssTreeModel::rowCount(const QModelIndex &parent) const
{
    if (!parent.isValid())
        return int(m_top.size());
    return parent.column() == 0 ? int(m_nodes.at(int(parent.internalId())).children.size()) : 0;
}

int RssTreeModel::columnCount(const QModelIndex &) const
{
    return 1;
}

QVariant RssTreeModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const API::RssItem &item = *m_nodes.at(int(index.internalId())).item;
    const int unread = item.unreadCount();
    switch (role) {
    case Qt::DisplayRole: return unread > 0 ? QStringLiteral("%1 (%2)").arg(item.name).arg(unread) : item.name;
    case Qt::ToolTipRole: return item.feed ? item.feed->url : QVariant();
    case Qt::FontRole: {
        QFont font;
        font.setBold(unread > 0);
        return font;
    }
    case PathRole: return item.path;
    case IsFolderRole: return item.isFolder();
    case UnreadRole: return unread;
    default: return {};
    }
}

QVariant RssTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return tr("Feeds");
    return {};
}

QModelIndex RssTreeModel::indexOf(const QString &path) const
{
    for (int id = 0; id < m_nodes.size(); ++id) {
        if (m_nodes.at(id).item->path == path)
            return createIndex(m_nodes.at(id).row, 0, quintptr(id));
    }
    return {};
}

RssArticleModel::RssArticleModel(const RssFeeds &feeds, QObject *parent)
    : QAbstractTableModel(parent)
    , m_feeds(feeds)
{
    connect(&feeds, &RssFeeds::changed, this, &RssArticleModel::reload);
}

void RssArticleModel::setItemPath(const QString &path)
{
    m_path = path;
    beginResetModel();
    m_rows = read();
    endResetModel();
}

QList<RssArticleModel::Row> RssArticleModel::read() const
{
    QList<Row> rows;
    const API::RssItem *item = m_path.isNull() ? nullptr : m_feeds.item(m_path);
    if (!item)
        return rows;
    for (const API::RssItem *feed : item->feeds()) {
        for (const API::RssArticle &article : feed->feed->articles)
            rows.append({feed->path, feed->name, article});
    }
    return rows;
}

// The same articles in the same order keep the selection: only what they show changes.
void RssArticleModel::reload()
{
    QList<Row> rows = read();
    const bool same = std::equal(rows.cbegin(), rows.cend(), m_rows.cbegin(), m_rows.cend(),
                                 [](const Row &a, const Row &b) {
                                     return a.feedPath == b.feedPath && a.article.id == b.article.id;
                                 });
    if (!same) {
        beginResetModel();
        m_rows = std::move(rows);
        endResetModel();
        return;
    }
    m_rows = std::move(rows);
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(int(m_rows.size()) - 1, ColumnCount - 1));
}

int RssArticleModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int RssArticleModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant RssArticleModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Row &row = m_rows.at(index.row());
    const API::RssArticle &article = row.article;
    switch (role) {
    case Qt::DisplayRole:
        switch (index.column()) {
        case TitleColumn: return article.title;
        case DateColumn: {
            const QDateTime date = QDateTime::fromString(article.date, Qt::RFC2822Date);
            return date.isValid() ? QLocale().toString(date.toLocalTime(), QLocale::ShortFormat) : article.date;
        }
        case FeedColumn: return row.feedName;
        default: return {};
        }
    case Qt::ToolTipRole: return index.column() == TitleColumn ? article.title : QVariant();
    case Qt::FontRole: {
        QFont font;
        font.setBold(!article.isRead);
        return font;
    }
    case FeedPathRole: return row.feedPath;
    case IdRole: return article.id;
    case IsReadRole: return article.isRead;
    case TorrentURLRole: return article.torrentURL;
    case LinkRole: return article.link;
    default: return {};
    }
}

QVariant RssArticleModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case TitleColumn: return tr("Title");
    case DateColumn: return tr("Date");
    case FeedColumn: return tr("Feed");
    default: return {};
    }
}
