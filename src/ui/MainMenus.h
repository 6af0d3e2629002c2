#pragma once

#include "core/NavigationContext.h"

#include <QObject>

#include <array>

class QAction;
class QMainWindow;
class QMenu;
class ServerMenu;
class TntActions;
class TntTableView;

// The window's menu bar, by the freedesktop conventions: File, Edit, View, Torrent, Server, Help.
// Its torrent items are the toolbar's and the context menu's own actions, so what is enabled or
// checked agrees wherever they appear.
class MainMenus : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        QMainWindow *window;
        TntActions *actions;
        TntTableView *table;
        NavigationContext *navigation;
        ServerMenu *serverMenu;
        QAction *logInOut;
    };

    explicit MainMenus(const Parts &parts);

    QMenu *menu(const QString &title) const;
    // The View menu's switch of `panel`, checked while it shows.
    QAction *showAction(NavigationContext::Panel panel) const;
    QAction *rssAction() const { return m_rss; }
    // The text of "About Quillo".
    static QString aboutText();

Q_SIGNALS:
    void settingsRequested();
    // Help › Check for Updates, offered where the build names a release feed.
    void updateCheckRequested();
    // Server › RSS.
    void rssRequested();

private:
    void addFileMenu();
    void addEditMenu();
    void addViewMenu();
    void addTntMenu();
    void addServerMenu();
    void addHelpMenu();

    Parts m_parts;
    std::array<QAction *, 4> m_showActions{}; // by panel
    QAction *m_rss = nullptr;
};
