#include "ui/RssWindow.h"

#include "core/AppContext.h"
#include "support/Detached.h"
#include "ui/RssModels.h"
#include "ui/RssRulesDialog.h"
#include "ui/TntAddingFlow.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

QString parentPathOf(const QString &path)
{
    const qsizetype cut = path.lastIndexOf(API::rssPathSeparator);
    return cut < 0 ? QString() : path.left(cut);
}

QString nameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(API::rssPathSeparator) + 1);
}

void folderPaths(const API::RssItem &folder, QStringList &paths)
{
    for (const API::RssItem &child : folder.children) {
        if (child.isFolder()) {
            paths << child.path;
            folderPaths(child, paths);
        }
    }
}

} // namespace

RssWindow::RssWindow(AppContext &context, TntAddingFlow &adding, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_context(context)
    , m_adding(adding)
    , m_defaults(context.settings().defaults())
    , m_treeModel(new RssTreeModel(context.rssFeeds(), this))
    , m_articleModel(new RssArticleModel(context.rssFeeds(), this))
    , m_tree(new QTreeView(this))
    , m_articles(new QTreeView(this))
    , m_notice(new QLabel(this))
    , m_markRead(new QPushButton(tr("Mark as Read"), this))
    , m_download(new QPushButton(tr("Download"), this))
    , m_openLink(new QPushButton(tr("Open Link"), this))
{
    setWindowTitle(tr("RSS"));
    m_notice->setWordWrap(true);
    m_notice->hide();

    m_tree->setModel(m_treeModel);
    m_tree->setHeaderHidden(true);
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_tree, &QWidget::customContextMenuRequested, this, &RssWindow::showItemMenu);
    connect(m_tree, &QTreeView::collapsed, this,
            [this](const QModelIndex &index) { m_collapsed.insert(index.data(RssTreeModel::PathRole).toString()); });
    connect(m_tree, &QTreeView::expanded, this,
            [this](const QModelIndex &index) { m_collapsed.remove(index.data(RssTreeModel::PathRole).toString()); });
    connect(m_treeModel, &QAbstractItemModel::modelReset, this, &RssWindow::restoreTree);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex &current) {
        // A reset clears the current item for a moment: the chosen one stays chosen.
        if (!current.isValid())
            return;
        m_chosenPath = current.data(RssTreeModel::PathRole).toString();
        m_articleModel->setItemPath(m_chosenPath);
        updateButtons();
    });

    m_articles->setModel(m_articleModel);
    m_articles->setRootIsDecorated(false);
    m_articles->setUniformRowHeights(true);
    m_articles->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_articles->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_articles->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_articles->header()->setSectionResizeMode(RssArticleModel::TitleColumn, QHeaderView::Stretch);
    m_articles->header()->setStretchLastSection(false);
    connect(m_articles->selectionModel(), &QItemSelectionModel::currentChanged, this, &RssWindow::articleChosen);
    connect(m_articles->selectionModel(), &QItemSelectionModel::selectionChanged, this, &RssWindow::updateButtons);
    connect(m_articleModel, &QAbstractItemModel::modelReset, this, &RssWindow::updateButtons);
    connect(m_articles, &QTreeView::doubleClicked, this, &RssWindow::download);

    auto *addFeed = new QPushButton(tr("Add Feed..."), this);
    auto *addFolder = new QPushButton(tr("Add Folder..."), this);
    auto *refreshAll = new QPushButton(tr("Refresh All"), this);
    auto *rules = new QPushButton(tr("Download Rules..."), this);
    connect(addFeed, &QPushButton::clicked, this, [this] { detached(this->addFeed()); });
    connect(addFolder, &QPushButton::clicked, this, [this] { detached(this->addFolder()); });
    connect(refreshAll, &QPushButton::clicked, this, [this] { detached(m_context.rss().refresh({})); });
    connect(rules, &QPushButton::clicked, this, &RssWindow::showRules);
    connect(m_markRead, &QPushButton::clicked, this, &RssWindow::markSelectionRead);
    connect(m_download, &QPushButton::clicked, this, &RssWindow::download);
    connect(m_openLink, &QPushButton::clicked, this, &RssWindow::openLinks);

    auto *top = new QHBoxLayout;
    for (QPushButton *button : {addFeed, addFolder, refreshAll})
        top->addWidget(button);
    top->addStretch();
    top->addWidget(rules);
    auto *articleButtons = new QHBoxLayout;
    articleButtons->addStretch();
    for (QPushButton *button : {m_markRead, m_openLink, m_download})
        articleButtons->addWidget(button);
    auto *articlePane = new QWidget(this);
    auto *articleLayout = new QVBoxLayout(articlePane);
    articleLayout->setContentsMargins(0, 0, 0, 0);
    articleLayout->addWidget(m_articles);
    articleLayout->addLayout(articleButtons);
    auto *split = new QSplitter(this);
    split->addWidget(m_tree);
    split->addWidget(articlePane);
    split->setStretchFactor(1, 1);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_notice);
    layout->addLayout(top);
    layout->addWidget(split);

    restoreTree();
    updateButtons();
    resize(900, 560);
    restoreGeometry(m_defaults.dataValue(UserDefaultsKey::rssWindowGeometry));
}

// Gone with its parent while open, it gets no hide event of its own.
RssWindow::~RssWindow()
{
    if (isVisible())
        m_defaults.setValue(UserDefaultsKey::rssWindowGeometry, saveGeometry());
    m_context.rssFeeds().setShown(false);
}

void RssWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_context.rssFeeds().setShown(true);
    detached(checkProcessing());
}

void RssWindow::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_defaults.setValue(UserDefaultsKey::rssWindowGeometry, saveGeometry());
    m_context.rssFeeds().setShown(false);
}

QCoro::Task<> RssWindow::checkProcessing()
{
    const QPointer<RssWindow> self(this);
    QCoro::Task<std::optional<bool>> asking = m_context.rss().isProcessingEnabled();
    const std::optional<bool> enabled = co_await std::move(asking);
    if (!self)
        co_return;
    if (enabled == true) {
        m_notice->hide();
        co_return;
    }
    m_notice->setText(
        enabled ? tr("RSS processing is off on this server: it keeps feeds and rules, but fetches no articles "
                     "until it is turned on in the server's preferences.")
                : tr("The server did not say whether it processes RSS feeds: articles may not be fetched."));
    m_notice->show();
}

void RssWindow::restoreTree()
{
    m_tree->expandAll();
    for (const QString &path : std::as_const(m_collapsed)) {
        if (const QModelIndex index = m_treeModel->indexOf(path); index.isValid())
            m_tree->collapse(index);
    }
    const QModelIndex chosen = m_treeModel->indexOf(m_chosenPath);
    if (chosen.isValid()) {
        m_tree->selectionModel()->setCurrentIndex(chosen, QItemSelectionModel::ClearAndSelect);
    } else if (!m_chosenPath.isEmpty()) {
        m_chosenPath.clear();
        m_articleModel->setItemPath({});
    }
    updateButtons();
}

QString RssWindow::currentPath() const
{
    return m_chosenPath;
}

QString RssWindow::currentFolder() const
{
    const QModelIndex current = m_treeModel->indexOf(m_chosenPath);
    if (!current.isValid())
        return {};
    return current.data(RssTreeModel::IsFolderRole).toBool() ? m_chosenPath : parentPathOf(m_chosenPath);
}

void RssWindow::updateButtons()
{
    const QModelIndexList rows = m_articles->selectionModel()->selectedRows();
    const bool any = !rows.isEmpty();
    m_markRead->setEnabled(!m_chosenPath.isEmpty());
    m_download->setEnabled(std::any_of(rows.cbegin(), rows.cend(), [](const QModelIndex &row) {
        return !row.data(RssArticleModel::TorrentURLRole).toString().isEmpty();
    }));
    m_openLink->setEnabled(any && std::any_of(rows.cbegin(), rows.cend(), [](const QModelIndex &row) {
                               return !row.data(RssArticleModel::LinkRole).toString().isEmpty();
                           }));
}

// An article read is marked read on the server at once, as qBittorrent's own clients do.
void RssWindow::articleChosen()
{
    const QModelIndex current = m_articles->currentIndex();
    if (!current.isValid() || current.data(RssArticleModel::IsReadRole).toBool())
        return;
    detached(m_context.rss().markAsRead(current.data(RssArticleModel::FeedPathRole).toString(),
                                        current.data(RssArticleModel::IdRole).toString()));
}

// With articles selected, those; else the whole chosen item.
void RssWindow::markSelectionRead()
{
    const QModelIndexList rows = m_articles->selectionModel()->selectedRows();
    if (rows.isEmpty()) {
        if (!m_chosenPath.isEmpty())
            detached(m_context.rss().markAsRead(m_chosenPath));
        return;
    }
    for (const QModelIndex &row : rows) {
        if (!row.data(RssArticleModel::IsReadRole).toBool())
            detached(m_context.rss().markAsRead(row.data(RssArticleModel::FeedPathRole).toString(),
                                                row.data(RssArticleModel::IdRole).toString()));
    }
}

void RssWindow::download()
{
    QList<QUrl> sources;
    for (const QModelIndex &row : m_articles->selectionModel()->selectedRows()) {
        const QString url = row.data(RssArticleModel::TorrentURLRole).toString();
        if (!url.isEmpty())
            sources << QUrl(url);
    }
    if (!sources.isEmpty())
        m_adding.open(sources);
}

void RssWindow::openLinks()
{
    for (const QModelIndex &row : m_articles->selectionModel()->selectedRows()) {
        const QString link = row.data(RssArticleModel::LinkRole).toString();
        if (!link.isEmpty())
            QDesktopServices::openUrl(QUrl(link));
    }
}

RssRulesDialog *RssWindow::showRules()
{
    if (!m_rules) {
        m_rules = new RssRulesDialog(m_context, this);
        detached(m_rules->reload());
    }
    m_rules->show();
    m_rules->raise();
    m_rules->activateWindow();
    return m_rules;
}

void RssWindow::showItemMenu(const QPoint &at)
{
    const QModelIndex index = m_tree->indexAt(at);
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Add Feed..."), this, [this] { detached(addFeed()); });
    menu->addAction(tr("Add Folder..."), this, [this] { detached(addFolder()); });
    if (index.isValid()) {
        const QString path = index.data(RssTreeModel::PathRole).toString();
        const bool isFeed = !index.data(RssTreeModel::IsFolderRole).toBool();
        menu->addSeparator();
        menu->addAction(tr("Refresh"), this, [this, path] { detached(m_context.rss().refresh(path)); });
        menu->addAction(tr("Mark as Read"), this, [this, path] { detached(m_context.rss().markAsRead(path)); });
        menu->addSeparator();
        menu->addAction(tr("Rename..."), this, [this] { detached(rename()); });
        menu->addAction(tr("Move To..."), this, [this] { detached(move()); });
        if (isFeed && m_context.serverFeatures().editsRssFeedURL())
            menu->addAction(tr("Change Feed URL..."), this, [this] { detached(changeURL()); });
        menu->addAction(tr("Remove..."), this, [this] { detached(remove()); });
    }
    menu->popup(m_tree->viewport()->mapToGlobal(at));
}

QCoro::Task<> RssWindow::addFeed()
{
    const QString url = QInputDialog::getText(this, tr("Add Feed"), tr("Feed URL:")).trimmed();
    if (url.isEmpty())
        co_return;
    // Named by its URL, as qBittorrent names a feed added without a name; a rename changes it.
    co_await m_context.rss().addFeed(url, API::rssPath(currentFolder(), url));
}

QCoro::Task<> RssWindow::addFolder()
{
    const QString name = QInputDialog::getText(this, tr("Add Folder"), tr("Folder name:")).trimmed();
    if (name.isEmpty())
        co_return;
    co_await m_context.rss().addFolder(API::rssPath(currentFolder(), name));
}

QCoro::Task<> RssWindow::rename()
{
    const QString path = m_chosenPath;
    if (path.isEmpty())
        co_return;
    const QString name =
        QInputDialog::getText(this, tr("Rename"), tr("New name:"), QLineEdit::Normal, nameOf(path)).trimmed();
    if (name.isEmpty() || name == nameOf(path))
        co_return;
    const QString destination = API::rssPath(parentPathOf(path), name);
    const QPointer<RssWindow> self(this);
    if (co_await m_context.rss().moveItem(path, destination) && self && m_chosenPath == path)
        m_chosenPath = destination;
}

QCoro::Task<> RssWindow::move()
{
    const QString path = m_chosenPath;
    if (path.isEmpty())
        co_return;
    const QString top = tr("(top level)");
    QStringList folders;
    folderPaths(m_context.rssFeeds().root(), folders);
    // Not into itself or below it.
    folders.removeIf([&path](const QString &folder) {
        return folder == path || folder.startsWith(path + API::rssPathSeparator);
    });
    folders.prepend(top);
    bool chose = false;
    const QString folder = QInputDialog::getItem(this, tr("Move To"), tr("Folder:"), folders, 0, false, &chose);
    if (!chose)
        co_return;
    const QString destination = API::rssPath(folder == top ? QString() : folder, nameOf(path));
    if (destination == path)
        co_return;
    const QPointer<RssWindow> self(this);
    if (co_await m_context.rss().moveItem(path, destination) && self && m_chosenPath == path)
        m_chosenPath = destination;
}

QCoro::Task<> RssWindow::changeURL()
{
    const QString path = m_chosenPath;
    const API::RssItem *item = m_context.rssFeeds().item(path);
    if (!item || !item->feed)
        co_return;
    const QString url =
        QInputDialog::getText(this, tr("Change Feed URL"), tr("Feed URL:"), QLineEdit::Normal, item->feed->url).trimmed();
    if (url.isEmpty() || url == item->feed->url)
        co_return;
    co_await m_context.rss().setFeedURL(path, url);
}

QCoro::Task<> RssWindow::remove()
{
    const QString path = m_chosenPath;
    if (path.isEmpty())
        co_return;
    const bool isFolder = m_treeModel->indexOf(path).data(RssTreeModel::IsFolderRole).toBool();
    const QString question = isFolder ? tr("Remove the folder \"%1\" with every feed in it?").arg(nameOf(path))
                                      : tr("Remove the feed \"%1\" and its articles?").arg(nameOf(path));
    if (QMessageBox::question(this, tr("Remove"), question) != QMessageBox::Yes)
        co_return;
    co_await m_context.rss().removeItem(path);
}
