#pragma once

#include "core/NavigationContext.h"
#include "ui/LoginPrompt.h"

#include <QMainWindow>
#include <QPointer>
#include <QUuid>

class AppContext;
class ClientErrorPresenter;
class ConnectionEditor;
class DropOverlay;
class LocalDaemonFlow;
class MainMenus;
class SettingsWindow;
class QAction;
class QLabel;
class QSplitter;
class QStackedWidget;
class QToolBar;
class ReconnectionCountdown;
class ReconnectionOverlay;
class ServerMenu;
class SidebarView;
class TntActions;
class TntAddingFlow;
class RssWindow;
class TntCommands;
class TntDetailPane;
class TntReveal;
class TntTableView;
class TransferStatus;
class WelcomeView;

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(AppContext &context, QWidget *parent = nullptr);
    ~MainWindow() override;

    WelcomeView *welcomeView() const { return m_welcomeView; }
    QToolBar *toolBar() const { return m_toolBar; }
    ServerMenu *serverMenu() const { return m_serverMenu; }
    QAction *logInOutAction() const { return m_logInOut; }
    ReconnectionOverlay *reconnectionOverlay() const { return m_overlay; }
    LoginPrompt *loginPrompt() const { return m_loginPrompt; }
    ClientErrorPresenter *errorPresenter() const { return m_errorPresenter; }
    TntTableView *tntTable() const { return m_tntTable; }
    TntDetailPane *detailPane() const { return m_detailPane; }
    TransferStatus *transferStatus() const { return m_transferStatus; }
    QLabel *updatingNote() const { return m_updating; }
    TntCommands *tntCommands() const { return m_commands; }
    TntActions *tntActions() const { return m_tntActions; }
    TntReveal *reveal() const { return m_reveal; }
    SidebarView *sidebar() const { return m_sidebar; }
    TntAddingFlow *addingFlow() const { return m_addingFlow; }
    DropOverlay *dropOverlay() const { return m_dropOverlay; }
    MainMenus *menus() const { return m_menus; }
    LocalDaemonFlow *localDaemon() const { return m_localDaemon; }
    // The toolbar's item by its identifier ("start_tnt", "delete_tnt", ...).
    QAction *toolbarAction(const QString &identifier) const;

    // The settings window, opened once and brought forward after.
    SettingsWindow *openSettings();
    // The settings on the path-mapping page, a new mapping begun for `remotePath`.
    SettingsWindow *openPathMapping(const QString &remotePath);
    // Opens the editor for a new connection, and connects to it once it is saved.
    ConnectionEditor *openConnectionEditor();
    // Opens the editor on a saved connection; the connection in use reconnects with what was saved.
    ConnectionEditor *editConnection(QUuid id);
    // The RSS window, opened once and brought forward after.
    RssWindow *openRss();

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void showPage();
    void showConnectionState();
    void followLoginPrompt();
    void logInOrOut();
    void askAboutCertificate();
    void offerSecureAddress();
    void addToolbarActions();
    void showTntContextMenu(const QStringList &hashes, const QPoint &position);
    // Restores the split's sizes from the navigation context and keeps them there as the user moves it.
    void keepSplitSizes(QSplitter *split, NavigationContext::Split which, const QList<int> &initial);
    // Shows or hides the sidebar, detail pane, status bar and toolbar as the View menu left them.
    void showPanels();

    AppContext &m_context;
    QStackedWidget *m_pages;
    WelcomeView *m_welcomeView;
    QWidget *m_connectedArea;
    QStackedWidget *m_connectedPages;
    QLabel *m_placeholder;
    TntTableView *m_tntTable;
    QSplitter *m_tableSplit = nullptr;
    TntDetailPane *m_detailPane = nullptr;
    TransferStatus *m_transferStatus;
    QLabel *m_updating; // while the table shows the list kept from the last time
    TntCommands *m_commands;
    TntAddingFlow *m_addingFlow;
    TntReveal *m_reveal;
    TntActions *m_tntActions;
    NavigationContext *m_navigation;
    SidebarView *m_sidebar;
    QToolBar *m_toolBar;
    ServerMenu *m_serverMenu;
    QAction *m_logInOut;
    ReconnectionCountdown *m_countdown;
    ReconnectionOverlay *m_overlay;
    ClientErrorPresenter *m_errorPresenter;
    DropOverlay *m_dropOverlay;
    MainMenus *m_menus = nullptr;
    LocalDaemonFlow *m_localDaemon;
    QPointer<SettingsWindow> m_settingsWindow;
    QPointer<LoginPrompt> m_loginPrompt;
    QPointer<RssWindow> m_rssWindow;
};
