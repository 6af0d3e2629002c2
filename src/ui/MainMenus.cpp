#include "ui/MainMenus.h"

#include "api/AppInfo.h"
#include "ui/ServerMenu.h"
#include "ui/TntActions.h"
#include "ui/TntTableView.h"

#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTableView>

using Panel = NavigationContext::Panel;
using Id = TntActions::Id;

MainMenus::MainMenus(const Parts &parts)
    : QObject(parts.window)
    , m_parts(parts)
{
    addFileMenu();
    addEditMenu();
    addViewMenu();
    addTntMenu();
    addServerMenu();
    addHelpMenu();
}

QMenu *MainMenus::menu(const QString &title) const
{
    for (QAction *action : m_parts.window->menuBar()->actions()) {
        if (action->menu() && action->text() == title)
            return action->menu();
    }
    return nullptr;
}

QAction *MainMenus::showAction(Panel panel) const
{
    return m_showActions.at(static_cast<std::size_t>(panel));
}

QString MainMenus::aboutText()
{
    return tr("<h3>Quillo %1</h3><p>A desktop remote control for qBittorrent.</p>"
              "<p>Build %2, Qt %3</p><p>Licensed under the GNU General Public License, "
              "version 3 or later.</p>")
        .arg(QString::fromUtf16(AppInfo::version), QString::fromUtf16(AppInfo::buildNumber),
             QString::fromLatin1(qVersion()));
}

void MainMenus::addFileMenu()
{
    QMenu *file = m_parts.window->menuBar()->addMenu(tr("File"));
    file->addAction(m_parts.actions->action(Id::addFiles));
    file->addAction(m_parts.actions->action(Id::addLinks));
    file->addSeparator();
    QAction *quit = file->addAction(tr("Quit"));
    // Not the platform's Quit key, which some desktops leave empty.
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    // Closing rather than quitting outright lets each window keep its place and finish its edits.
    connect(quit, &QAction::triggered, qApp, &QApplication::closeAllWindows);
}

void MainMenus::addEditMenu()
{
    QMenu *edit = m_parts.window->menuBar()->addMenu(tr("Edit"));
    QAction *selectAll = edit->addAction(tr("Select All"));
    selectAll->setShortcut(QKeySequence::SelectAll);
    // Where the torrents are: in the filter field the same keys select its text.
    selectAll->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    m_parts.table->table()->addAction(selectAll);
    connect(selectAll, &QAction::triggered, m_parts.table->table(), &QTableView::selectAll);
    QAction *filter = edit->addAction(tr("Filter torrents"));
    filter->setShortcut(QKeySequence::Find);
    connect(filter, &QAction::triggered, m_parts.table, &TntTableView::focusFilter);
    edit->addSeparator();
    QAction *preferences = edit->addAction(tr("Preferences..."));
    preferences->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    preferences->setMenuRole(QAction::PreferencesRole);
    connect(preferences, &QAction::triggered, this, &MainMenus::settingsRequested);
}

void MainMenus::addViewMenu()
{
    QMenu *view = m_parts.window->menuBar()->addMenu(tr("View"));
    const auto addSwitch = [this, view](Panel panel, const QString &title) {
        QAction *action = view->addAction(title);
        m_showActions.at(static_cast<std::size_t>(panel)) = action;
        action->setCheckable(true);
        action->setChecked(!m_parts.navigation->isHidden(panel));
        connect(action, &QAction::toggled, m_parts.navigation,
                [this, panel](bool shown) { m_parts.navigation->setHidden(panel, !shown); });
    };
    addSwitch(Panel::sidebar, tr("Show Sidebar"));
    addSwitch(Panel::tntDetails, tr("Show Torrent Details"));
    addSwitch(Panel::statusBar, tr("Show Status Bar"));
    addSwitch(Panel::toolbar, tr("Show Toolbar"));
    connect(m_parts.navigation, &NavigationContext::hiddenChanged, this,
            [this](Panel panel, bool hidden) { showAction(panel)->setChecked(!hidden); });
}

void MainMenus::addTntMenu()
{
    QMenu *tnt = m_parts.window->menuBar()->addMenu(tr("Torrent"));
    TntActions &actions = *m_parts.actions;
    const auto add = [tnt, &actions](std::initializer_list<Id> ids) {
        for (const Id id : ids)
            tnt->addAction(actions.action(id));
        tnt->addSeparator();
    };
    add({Id::start, Id::stop, Id::forceStart, Id::remove, Id::removeWithFiles});
    add({Id::showInFileManager});
    // Its key acts where the torrents are, as Delete does.
    m_parts.table->table()->addAction(actions.action(Id::removeWithFiles));
    tnt->addMenu(actions.copyMenu());
    tnt->addSeparator();
    add({Id::reannounce, Id::recheck});
    tnt->addAction(actions.action(Id::rename));
    tnt->addAction(actions.action(Id::setLocation));
    tnt->addAction(actions.action(Id::exportTnt));
    tnt->addMenu(actions.categoryMenu());
    tnt->addMenu(actions.tagsMenu());
    add({Id::addTrackers, Id::addPeers, Id::limitDownload, Id::limitUpload, Id::limitShare});
    add({Id::maximumPriority, Id::increasePriority, Id::decreasePriority, Id::minimumPriority});
    add({Id::autoManagement, Id::firstLastPiecesFirst, Id::sequentialDownload, Id::superSeeding});
    connect(tnt, &QMenu::aboutToShow, &actions, &TntActions::readTnts);
}

void MainMenus::addServerMenu()
{
    QMenu *server = m_parts.window->menuBar()->addMenu(tr("Server"));
    server->addAction(m_parts.logInOut);
    server->addSeparator();
    TntActions &actions = *m_parts.actions;
    for (const Id id : {Id::alternativeSpeedLimits, Id::globalDownloadLimit, Id::globalUploadLimit, Id::statistics,
                          Id::serverLog, Id::search})
        server->addAction(actions.action(id));
    m_rss = server->addAction(tr("RSS"), this, &MainMenus::rssRequested);
    m_rss->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R));
    server->addSeparator();
    server->addAction(actions.action(Id::shutDownServer));
    server->addSeparator();
    // Titled by the connection in use, as on the toolbar.
    server->addMenu(m_parts.serverMenu);
}

void MainMenus::addHelpMenu()
{
    QMenu *help = m_parts.window->menuBar()->addMenu(tr("Help"));
    // Distribution packages leave updating to the package manager: their builds name no feed.
    if (!QStringView(AppInfo::releaseFeed).isEmpty()) {
        connect(help->addAction(tr("Check for Updates")), &QAction::triggered, this, &MainMenus::updateCheckRequested);
    }
    QAction *about = help->addAction(tr("About Quillo"));
    about->setMenuRole(QAction::AboutRole);
    connect(about, &QAction::triggered, m_parts.window,
            [window = m_parts.window] { QMessageBox::about(window, tr("About Quillo"), aboutText()); });
}
