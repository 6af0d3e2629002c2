#include "ui/MainWindow.h"

#include "core/AppContext.h"
#include "core/NavigationContext.h"
#include "core/ReconnectionCountdown.h"
#include "support/Detached.h"
#include "ui/ClientErrorPresenter.h"
#include "ui/ConnectionEditor.h"
#include "ui/DisplayName.h"
#include "ui/DropOverlay.h"
#include "ui/LocalDaemonFlow.h"
#include "ui/LoginPrompt.h"
#include "ui/MainMenus.h"
#include "ui/ReconnectionOverlay.h"
#include "ui/ServerMenu.h"
#include "ui/SettingsWindow.h"
#include "ui/SidebarView.h"
#include "ui/TntActions.h"
#include "ui/TntAddingFlow.h"
#include "ui/RssWindow.h"
#include "ui/TntCommands.h"
#include "ui/TntContentTree.h"
#include "ui/TntContextMenu.h"
#include "ui/TntDetailPane.h"
#include "ui/TntFilterProxy.h"
#include "ui/TntReveal.h"
#include "ui/TntTableView.h"
#include "ui/TransferStatus.h"
#include "ui/WelcomeView.h"

#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace {
constexpr int attentionDurationMs = 3000;
using Panel = NavigationContext::Panel;
} // namespace

MainWindow::MainWindow(AppContext &context, QWidget *parent)
    : QMainWindow(parent)
    , m_context(context)
    , m_pages(new QStackedWidget(this))
    , m_welcomeView(new WelcomeView(m_pages))
    , m_connectedArea(new QWidget(m_pages))
    , m_connectedPages(new QStackedWidget(m_connectedArea))
    , m_placeholder(new QLabel(m_connectedPages))
    , m_tntTable(new TntTableView(context.tntCollection(), context.settings().defaults(), m_connectedPages))
    , m_transferStatus(
          new TransferStatus(context.serverState(), context.transferRates(), context.answerPace(),
                             context.settings().defaults(), this))
    , m_updating(new QLabel(QCoreApplication::translate("MainWindow", "Updating…"), this))
    , m_commands(new TntCommands(context, this))
    , m_addingFlow(new TntAddingFlow(context, this))
    , m_reveal(new TntReveal(context, this))
    , m_tntActions(new TntActions(context, *m_commands, *m_addingFlow, *m_reveal, this))
    , m_navigation(new NavigationContext(context, context.settings().defaults(), this))
    , m_sidebar(new SidebarView(context, *m_navigation, *m_commands, *m_tntActions, m_connectedArea))
    , m_toolBar(new QToolBar(QCoreApplication::translate("MainWindow", "Toolbar"), this))
    , m_serverMenu(new ServerMenu(context, this))
    , m_logInOut(new QAction(this))
    , m_countdown(new ReconnectionCountdown(context, std::chrono::seconds(1), this))
    , m_overlay(new ReconnectionOverlay(context, *m_countdown, m_connectedArea))
    , m_errorPresenter(new ClientErrorPresenter(context, this))
    , m_dropOverlay(new DropOverlay(m_pages))
    , m_localDaemon(new LocalDaemonFlow(context, this))
{
    setWindowTitle(QStringLiteral("Quillo"));
    // The first time, wide enough for the status bar with every figure switched on.
    if (!restoreGeometry(m_navigation->windowGeometry()))
        resize(1360, 820);

    // The table with the detail pane below it while connected; otherwise a line that says how the
    // connection stands.
    m_placeholder->setAlignment(Qt::AlignCenter);
    m_connectedPages->addWidget(m_placeholder);
    m_tableSplit = new QSplitter(Qt::Vertical, m_connectedPages);
    m_tableSplit->addWidget(m_tntTable);
    m_detailPane = new TntDetailPane(context, *m_commands, m_tableSplit);
    m_tableSplit->addWidget(m_detailPane);
    TntContentTree *content = m_detailPane->contentTree();
    connect(content, &TntContentTree::openRequested, m_reveal, [this](const QString &path, bool complete) {
        m_reveal->openFile(m_context.tntDetails().hash(), path, complete);
    });
    connect(content, &TntContentTree::revealRequested, m_reveal,
            [this](const QStringList &paths) { m_reveal->showFiles(m_context.tntDetails().hash(), paths); });
    m_tableSplit->setStretchFactor(0, 1);
    m_tableSplit->setChildrenCollapsible(false);
    keepSplitSizes(m_tableSplit, NavigationContext::Split::tntDetails, {460, 260});
    m_connectedPages->addWidget(m_tableSplit);
    // The sidebar stays while connecting: its entries show as placeholders until the torrents come.
    auto *split = new QSplitter(Qt::Horizontal, m_connectedArea);
    split->addWidget(m_sidebar);
    split->addWidget(m_connectedPages);
    split->setStretchFactor(1, 1);
    split->setChildrenCollapsible(false);
    keepSplitSizes(split, NavigationContext::Split::sidebar, {220, 980});
    auto *areaLayout = new QVBoxLayout(m_connectedArea);
    areaLayout->setContentsMargins(0, 0, 0, 0);
    areaLayout->addWidget(split);
    m_tntTable->proxy()->setSidebarFilter(m_navigation->sidebarFilter());
    connect(m_navigation, &NavigationContext::filterChanged, m_tntTable->proxy(), &TntFilterProxy::setSidebarFilter);
    statusBar()->addWidget(m_updating);
    statusBar()->addPermanentWidget(m_transferStatus, 1);

    m_pages->addWidget(m_welcomeView);
    m_pages->addWidget(m_connectedArea);
    setCentralWidget(m_pages);
    setAcceptDrops(true);

    m_toolBar->setObjectName(QStringLiteral("tnt_table_toolbar"));
    m_toolBar->setMovable(false);
    addToolbarActions();
    auto *flexibleSpace = new QWidget(m_toolBar);
    flexibleSpace->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_toolBar->addWidget(flexibleSpace);
    QAction *menuAction = m_serverMenu->menuAction();
    menuAction->setObjectName(QStringLiteral("connection_menu"));
    m_toolBar->addAction(menuAction);
    if (auto *button = qobject_cast<QToolButton *>(m_toolBar->widgetForAction(menuAction))) {
        button->setObjectName(QStringLiteral("connection_menu"));
        button->setPopupMode(QToolButton::InstantPopup);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    }
    m_logInOut->setObjectName(QStringLiteral("log_in_out"));
    m_toolBar->addAction(m_logInOut);
    addToolBar(m_toolBar);

    connect(m_welcomeView, &WelcomeView::connectToServerRequested, this, &MainWindow::openConnectionEditor);
    connect(m_serverMenu, &ServerMenu::addConnectionRequested, this, &MainWindow::openConnectionEditor);
    connect(m_serverMenu, &ServerMenu::editConnectionRequested, this, &MainWindow::editConnection);
    connect(m_welcomeView, &WelcomeView::installLocallyRequested, m_localDaemon, &LocalDaemonFlow::install);
    connect(m_serverMenu, &ServerMenu::installLocalRequested, m_localDaemon, &LocalDaemonFlow::install);
    connect(m_serverMenu, &ServerMenu::uninstallLocalRequested, m_localDaemon, &LocalDaemonFlow::confirmUninstall);
    connect(m_logInOut, &QAction::triggered, this, &MainWindow::logInOrOut);
    connect(&m_context, &AppContext::configurationsChanged, this, &MainWindow::showPage);
    connect(&m_context, &AppContext::connectionStateChanged, this, &MainWindow::showConnectionState);
    connect(&m_context, &AppContext::loginPromptChanged, this, &MainWindow::followLoginPrompt);
    connect(&m_context.completionNotifier(), &CompletionNotifier::attentionRequested, this,
            // A bounded request: with no end, some desktops flash the task bar until the window is
            // looked at, which is one reminder per download rather than one per batch.
            [this] { QApplication::alert(this, attentionDurationMs); });
    connect(&m_context, &AppContext::httpsRedirectSuggestionChanged, this, &MainWindow::offerSecureAddress);
    connect(&m_context, &AppContext::certificateQuestionChanged, this, &MainWindow::askAboutCertificate);
    connect(m_tntTable, &TntTableView::selectionChanged, &m_context, &AppContext::setSelectedTnts);
    connect(&m_context, &AppContext::selectionChanged, this,
            [this] { m_tntTable->selectHashes(m_context.selectedTnts()); });
    connect(m_tntTable, &TntTableView::contextMenuRequested, this, &MainWindow::showTntContextMenu);
    connect(m_tntTable, &TntTableView::openRequested, m_reveal, &TntReveal::openTnt);
    connect(m_reveal, &TntReveal::mappingWanted, this, &MainWindow::openPathMapping);
    connect(m_transferStatus, &TransferStatus::altSpeedToggleRequested, this,
            [this] { detached(m_context.toggleSpeedLimitsMode()); });
    connect(m_transferStatus, &TransferStatus::globalLimitRequested, m_commands, [this](bool upload) {
        m_commands->limitGlobalRate(upload ? TransferLimits::Direction::up : TransferLimits::Direction::down);
    });
    connect(m_transferStatus, &TransferStatus::tntDetailsToggleRequested, this,
            [this] { m_navigation->setHidden(Panel::tntDetails, !m_navigation->isHidden(Panel::tntDetails)); });
    connect(m_navigation, &NavigationContext::hiddenChanged, this, &MainWindow::showPanels);
    m_menus = new MainMenus({.window = this,
                             .actions = m_tntActions,
                             .table = m_tntTable,
                             .navigation = m_navigation,
                             .serverMenu = m_serverMenu,
                             .logInOut = m_logInOut});
    connect(m_menus, &MainMenus::settingsRequested, this, &MainWindow::openSettings);
    connect(m_menus, &MainMenus::rssRequested, this, &MainWindow::openRss);
    const auto offerRss = [this] { m_menus->rssAction()->setEnabled(m_context.isAuthorized()); };
    connect(&m_context, &AppContext::connectionStateChanged, this, offerRss);
    offerRss();
    showPanels();

    showPage();
    showConnectionState();
    followLoginPrompt();
}

MainWindow::~MainWindow() = default;

SettingsWindow *MainWindow::openPathMapping(const QString &remotePath)
{
    SettingsWindow *settings = openSettings();
    settings->beginPathMapping(remotePath);
    return settings;
}

SettingsWindow *MainWindow::openSettings()
{
    // A window closed or cancelled starts again from what is stored.
    if (m_settingsWindow && !m_settingsWindow->isVisible())
        delete m_settingsWindow;
    if (!m_settingsWindow)
        m_settingsWindow = new SettingsWindow(m_context, this);
    m_settingsWindow->show();
    m_settingsWindow->raise();
    m_settingsWindow->activateWindow();
    return m_settingsWindow;
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    m_navigation->setWindowGeometry(saveGeometry());
    QMainWindow::closeEvent(event);
}

void MainWindow::showPage()
{
    const bool hasConnections = !m_context.clientConfigurations().isEmpty();
    m_pages->setCurrentWidget(hasConnections ? m_connectedArea : m_welcomeView);
    m_toolBar->setVisible(hasConnections && !m_navigation->isHidden(Panel::toolbar));
}

void MainWindow::showConnectionState()
{
    const auto &current = m_context.clientConfiguration();
    if (!current)
        m_placeholder->setText(QCoreApplication::translate("MainWindow", "No Connection"));
    else if (m_context.isAuthorized())
        m_placeholder->setText(QCoreApplication::translate("MainWindow", "Connected to %1").arg(displayName(*current)));
    else if (m_context.progressMessage() == AppContext::ProgressMessage::connecting)
        m_placeholder->setText(
            QCoreApplication::translate("MainWindow", "Connecting to %1…").arg(displayName(*current)));
    else
        m_placeholder->setText(
            QCoreApplication::translate("MainWindow", "Not connected to %1").arg(displayName(*current)));

    const bool authorized = m_context.isAuthorized();
    m_connectedPages->setCurrentWidget(
        authorized || m_context.tntCollection().size() > 0 ? static_cast<QWidget *>(m_tableSplit) : m_placeholder);
    // The figures of a kept list would be stale: none until the server's first answer.
    m_transferStatus->setVisible(authorized && m_context.isCurrent());
    m_updating->setVisible(m_context.isShowingSnapshot());
    m_logInOut->setText(authorized ? QCoreApplication::translate("MainWindow", "Log Out")
                                   : QCoreApplication::translate("MainWindow", "Log In"));
    m_logInOut->setIcon(
        QIcon::fromTheme(authorized ? QStringLiteral("system-log-out") : QStringLiteral("dialog-password")));
    m_logInOut->setEnabled(current.has_value());
}

void MainWindow::keepSplitSizes(QSplitter *split, NavigationContext::Split which, const QList<int> &initial)
{
    const QList<int> saved = m_navigation->splitSizes(which);
    split->setSizes(saved.size() == split->count() ? saved : initial);
    connect(split, &QSplitter::splitterMoved, this,
            [this, split, which] { m_navigation->setSplitSizes(which, split->sizes()); });
}

void MainWindow::showPanels()
{
    const bool detailsHidden = m_navigation->isHidden(Panel::tntDetails);
    m_detailPane->setHidden(detailsHidden);
    m_transferStatus->setTntDetailsHidden(detailsHidden);
    m_sidebar->setHidden(m_navigation->isHidden(Panel::sidebar));
    statusBar()->setHidden(m_navigation->isHidden(Panel::statusBar));
    showPage();
}

void MainWindow::addToolbarActions()
{
    using Id = TntActions::Id;
    const QList<QList<Id>> groups{
        {Id::addFiles, Id::addLinks},
        {Id::remove},
        {Id::start, Id::stop},
        {Id::minimumPriority, Id::decreasePriority, Id::increasePriority, Id::maximumPriority},
    };
    for (const QList<Id> &group : groups) {
        if (!m_toolBar->actions().isEmpty())
            m_toolBar->addSeparator();
        for (const Id id : group) {
            QAction *action = m_tntActions->action(id);
            m_toolBar->addAction(action);
            // Their keys act while the table has the focus.
            m_tntTable->table()->addAction(action);
        }
    }
}

namespace {

// What a drag carries that can become torrents: .torrent files and links, or lines of text that
// are links or info-hashes.
QList<QUrl> tntSources(const QMimeData *data)
{
    QList<QUrl> sources = data->hasUrls() ? data->urls() : TntAddingFlow::sourcesOf(data->text().split(u'\n'));
    sources.removeIf([](const QUrl &url) { return !TntAddingFlow::isTntSource(url); });
    return sources;
}

} // namespace

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (m_toolBar->isVisible() && !tntSources(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
        m_dropOverlay->show();
        m_dropOverlay->raise();
    }
}

void MainWindow::dragLeaveEvent(QDragLeaveEvent *)
{
    m_dropOverlay->hide();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    m_dropOverlay->hide();
    const QList<QUrl> sources = tntSources(event->mimeData());
    if (sources.isEmpty())
        return;
    event->acceptProposedAction();
    m_addingFlow->open(sources);
}

QAction *MainWindow::toolbarAction(const QString &identifier) const
{
    const QList<QAction *> actions = m_toolBar->actions();
    const auto found = std::find_if(actions.cbegin(), actions.cend(), [&identifier](const QAction *action) {
        return action->objectName() == identifier;
    });
    return found == actions.cend() ? nullptr : *found;
}

void MainWindow::showTntContextMenu(const QStringList &hashes, const QPoint &position)
{
    auto *menu = new TntContextMenu(*m_tntActions, hashes, this);
    menu->popup(position);
}

void MainWindow::followLoginPrompt()
{
    if (!m_context.isLoginPromptPresented()) {
        if (m_loginPrompt)
            m_loginPrompt->dismiss();
        return;
    }
    if (m_loginPrompt && m_loginPrompt->isVisible())
        return;
    m_loginPrompt = new LoginPrompt(m_context, this);
    m_loginPrompt->setAttribute(Qt::WA_DeleteOnClose);
    m_loginPrompt->open();
}

void MainWindow::offerSecureAddress()
{
    const auto &suggestion = m_context.httpsRedirectSuggestion();
    if (!suggestion)
        return;
    auto *dialog = new QMessageBox(QMessageBox::Question, HTTPSRedirectSuggestion::dialogTitle(),
                                   suggestion->dialogMessage(), QMessageBox::NoButton, this);
    dialog->setObjectName(QStringLiteral("httpsRedirectSuggestion"));
    QPushButton *use = dialog->addButton(suggestion->acceptButtonTitle(), QMessageBox::AcceptRole);
    dialog->addButton(HTTPSRedirectSuggestion::cancelButtonTitle(), QMessageBox::RejectRole);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QMessageBox::finished, this, [this, dialog, use] {
        if (dialog->clickedButton() == use)
            detached(m_context.acceptHTTPSRedirectSuggestion());
        else
            m_context.dismissHTTPSRedirectSuggestion();
    });
    dialog->open();
}

// Declining is the default: a certificate is trusted only by a deliberate click.
void MainWindow::askAboutCertificate()
{
    const auto &question = m_context.certificateQuestion();
    if (!question)
        return;
    auto *dialog = new QMessageBox(question->isChange() ? QMessageBox::Warning : QMessageBox::Question,
                                   question->title(), question->message(), QMessageBox::NoButton, this);
    dialog->setObjectName(QStringLiteral("certificateQuestion"));
    dialog->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QPushButton *trust = dialog->addButton(question->trustButtonTitle(), QMessageBox::AcceptRole);
    dialog->setDefaultButton(dialog->addButton(CertificateQuestion::declineButtonTitle(), QMessageBox::RejectRole));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QMessageBox::finished, this, [this, dialog, trust] {
        if (dialog->clickedButton() == trust)
            detached(m_context.trustCertificate());
        else
            m_context.declineCertificate();
    });
    dialog->open();
}

void MainWindow::logInOrOut()
{
    const auto &current = m_context.clientConfiguration();
    if (!current)
        return;
    if (m_context.isAuthorized())
        detached(m_context.logOut());
    else
        detached(m_context.selectConfiguration(current->id));
}

ConnectionEditor *MainWindow::openConnectionEditor()
{
    auto *editor = new ConnectionEditor(m_context, std::nullopt, this);
    editor->setAttribute(Qt::WA_DeleteOnClose);
    connect(editor, &QDialog::accepted, this, [this, editor] {
        if (const auto &saved = editor->savedConfiguration())
            detached(m_context.selectConfiguration(saved->id));
    });
    editor->open();
    return editor;
}

ConnectionEditor *MainWindow::editConnection(QUuid id)
{
    const QList<ClientConfiguration> &saved = m_context.clientConfigurations();
    const auto found = std::find_if(saved.cbegin(), saved.cend(), [id](const auto &c) { return c.id == id; });
    if (found == saved.cend())
        return nullptr;
    auto *editor = new ConnectionEditor(m_context, *found, this);
    editor->setAttribute(Qt::WA_DeleteOnClose);
    connect(editor, &QDialog::accepted, this, [this, editor] {
        const auto &current = m_context.clientConfiguration();
        if (const auto &edited = editor->savedConfiguration(); edited && current && current->id == edited->id)
            detached(m_context.selectConfiguration(edited->id));
    });
    editor->open();
    return editor;
}

RssWindow *MainWindow::openRss()
{
    if (!m_rssWindow)
        m_rssWindow = new RssWindow(m_context, *m_addingFlow, this);
    m_rssWindow->show();
    m_rssWindow->raise();
    m_rssWindow->activateWindow();
    return m_rssWindow;
}
