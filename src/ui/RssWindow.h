#pragma once

#include <QCoroTask>
#include <QPointer>
#include <QSet>
#include <QWidget>

class AppContext;
class QLabel;
class QPushButton;
class QTreeView;
class RssArticleModel;
class RssRulesDialog;
class RssTreeModel;
class TntAddingFlow;
class UserDefaults;

// The server's RSS feeds in a window of their own: folders and feeds with their unread counts,
// the chosen item's articles, and the auto-downloading rules. The feeds are read while it shows.
class RssWindow : public QWidget
{
    Q_OBJECT

public:
    RssWindow(AppContext &context, TntAddingFlow &adding, QWidget *parent = nullptr);
    ~RssWindow() override;

    QTreeView *feedView() const { return m_tree; }
    QTreeView *articleView() const { return m_articles; }
    // Says when the server fetches no feeds, or did not say whether it does.
    QLabel *notice() const { return m_notice; }
    QPushButton *markReadButton() const { return m_markRead; }
    QPushButton *downloadButton() const { return m_download; }
    QPushButton *openLinkButton() const { return m_openLink; }

    // The chosen item's path; empty for none.
    QString currentPath() const;
    void download();
    void openLinks();
    void markSelectionRead();
    RssRulesDialog *showRules();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QString currentFolder() const;
    QCoro::Task<> checkProcessing();
    QCoro::Task<> addFeed();
    QCoro::Task<> addFolder();
    QCoro::Task<> rename();
    QCoro::Task<> move();
    QCoro::Task<> changeURL();
    QCoro::Task<> remove();
    void showItemMenu(const QPoint &at);
    void restoreTree();
    void articleChosen();
    void updateButtons();

    AppContext &m_context;
    TntAddingFlow &m_adding;
    UserDefaults &m_defaults;
    RssTreeModel *m_treeModel;
    RssArticleModel *m_articleModel;
    QTreeView *m_tree;
    QTreeView *m_articles;
    QLabel *m_notice;
    QPushButton *m_markRead;
    QPushButton *m_download;
    QPushButton *m_openLink;
    // Kept across readings by path: a reading rebuilds the tree.
    QString m_chosenPath;
    QSet<QString> m_collapsed;
    QPointer<RssRulesDialog> m_rules;
};
