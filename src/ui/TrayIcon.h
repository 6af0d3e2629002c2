#pragma once

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

class AppContext;
class MainWindow;

// Quillo in the notification area: the current rates in its tooltip, and a menu to show or hide the
// window, switch the alternative speed limits, start or stop every torrent and quit. With "Close to
// tray" on, closing the window hides it here instead of ending Quillo.
class TrayIcon : public QObject
{
    Q_OBJECT

public:
    // `available`: whether the desktop shows tray icons at all; without, the window is never hidden.
    // The alternative limits item is the window's own, so both show the same switch.
    TrayIcon(AppContext &context, MainWindow &window, bool available = QSystemTrayIcon::isSystemTrayAvailable());

    bool isAvailable() const { return m_available; }
    QSystemTrayIcon &icon() { return m_icon; }
    QMenu &menu() { return m_menu; }
    // Brings the window forward: from the tray, or for a second launch.
    void showWindow();
    // Shows the window unless Quillo is to start in the tray (`minimized`, or the setting), which
    // needs a tray; without one it starts minimized on the task bar.
    void start(bool minimized);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void refresh();
    void toggleWindow();
    void quit();

    AppContext &m_context;
    MainWindow &m_window;
    bool m_available;
    QMenu m_menu;
    QSystemTrayIcon m_icon;
    QAction *m_showHide;
    QAction *m_startAll;
    QAction *m_stopAll;
};
