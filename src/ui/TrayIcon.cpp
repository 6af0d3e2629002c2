#include "ui/TrayIcon.h"

#include "api/AppInfo.h"
#include "core/AppContext.h"
#include "support/Detached.h"
#include "ui/MainWindow.h"
#include "ui/TntActions.h"
#include "ui/TntTableModel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QWidget>

TrayIcon::TrayIcon(AppContext &context, MainWindow &window, bool available)
    : QObject(&window)
    , m_context(context)
    , m_window(window)
    , m_available(available)
    , m_icon(QApplication::windowIcon())
    , m_showHide(m_menu.addAction(QString(), this, &TrayIcon::toggleWindow))
{
    m_menu.addAction(window.tntActions()->action(TntActions::Id::alternativeSpeedLimits));
    m_menu.addSeparator();
    m_startAll = m_menu.addAction(QCoreApplication::translate("TrayIcon", "Start All Torrents"), this,
                                  [this] { detached(m_context.startTnts({})); });
    m_stopAll = m_menu.addAction(QCoreApplication::translate("TrayIcon", "Stop All Torrents"), this,
                                 [this] { detached(m_context.stopTnts({})); });
    m_menu.addSeparator();
    m_menu.addAction(QCoreApplication::translate("TrayIcon", "Quit"), this, &TrayIcon::quit);
    // The title is read as the menu opens: the window may have been shown or hidden another way.
    connect(&m_menu, &QMenu::aboutToShow, this, &TrayIcon::refresh);
    m_icon.setContextMenu(&m_menu);
    connect(&m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger)
            toggleWindow();
    });
    connect(&m_context.serverState(), &GlobalTransferInfo::changed, this, &TrayIcon::refresh);
    connect(&m_context, &AppContext::connectionStateChanged, this, &TrayIcon::refresh);
    m_window.installEventFilter(this);
    refresh();
}

void TrayIcon::start(bool minimized)
{
    if (m_available)
        m_icon.show();
    if (!minimized)
        m_window.show();
    else if (!m_available)
        m_window.showMinimized();
    refresh();
}

void TrayIcon::showWindow()
{
    m_window.show();
    m_window.setWindowState(m_window.windowState() & ~Qt::WindowMinimized);
    m_window.raise();
    m_window.activateWindow();
}

void TrayIcon::toggleWindow()
{
    if (m_window.isVisible() && !m_window.isMinimized())
        m_window.hide();
    else
        showWindow();
    refresh();
}

void TrayIcon::quit()
{
    // Closed first, hidden in the tray or not, so the window keeps its place and open editors their
    // say, as File › Quit does.
    if (!m_window.close())
        return;
    QApplication::quit();
}

bool TrayIcon::eventFilter(QObject *watched, QEvent *event)
{
    // Only a close the user asked of the window manager: Quit closes the window from within.
    if (watched == &m_window && event->type() == QEvent::Close && event->spontaneous() && m_available &&
        m_context.settings().defaults().boolValue(UserDefaultsKey::closeToTray, false)) {
        event->ignore();
        m_window.hide();
        refresh();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void TrayIcon::refresh()
{
    const bool shown = m_window.isVisible() && !m_window.isMinimized();
    m_showHide->setText(shown ? QCoreApplication::translate("TrayIcon", "Hide Quillo")
                              : QCoreApplication::translate("TrayIcon", "Show Quillo"));
    const bool connected = m_context.isAuthorized();
    for (QAction *action : {m_startAll, m_stopAll})
        action->setEnabled(connected);
    const GlobalTransferInfo &transfer = m_context.serverState();
    const QString name = QString::fromUtf16(AppInfo::name);
    if (!connected) {
        m_icon.setToolTip(name + QCoreApplication::translate("TrayIcon", "\nNot connected"));
        return;
    }
    using Direction = GlobalTransferInfo::TransferDirection;
    m_icon.setToolTip(QStringLiteral("%1\n▼ %2   ▲ %3")
                          .arg(name, TntFormat::rateOrZero(transfer.rate(Direction::down)),
                               TntFormat::rateOrZero(transfer.rate(Direction::up))));
}
