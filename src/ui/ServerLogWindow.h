#pragma once

#include <QWidget>

class AppContext;
class LogLevelFilter;
class QAbstractItemModel;
class QCheckBox;
class QTabWidget;
class QTreeView;
class UserDefaults;

// The server's log in a window of its own, as qBittorrent's desktop shows it: the execution log
// and the blocked IPs, newest at the bottom. The log is read while the window is shown. Clear
// empties the window only; the server keeps its log.
class ServerLogWindow : public QWidget
{
    Q_OBJECT

public:
    explicit ServerLogWindow(AppContext &context, QWidget *parent = nullptr);
    ~ServerLogWindow() override;

    QTabWidget *tabs() const { return m_tabs; }
    QTreeView *messageView() const { return m_messages; }
    QTreeView *peerView() const { return m_peers; }
    // Normal, information, warning and critical, in the server's order.
    const QList<QCheckBox *> &levelBoxes() const { return m_levelBoxes; }

    // The selected lines of the open tab, a line each with its columns apart by tabs.
    QString selectedText() const;
    void copySelection() const;
    void clear();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QTreeView *makeView(QAbstractItemModel *model);
    void followEnd(QTreeView *view);
    QTreeView *currentView() const;

    AppContext &m_context;
    UserDefaults &m_defaults;
    QTabWidget *m_tabs;
    QTreeView *m_messages;
    QTreeView *m_peers;
    LogLevelFilter *m_filter;
    QList<QCheckBox *> m_levelBoxes;
};
