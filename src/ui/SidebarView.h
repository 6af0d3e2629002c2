#pragma once

#include "core/NavigationContext.h"
#include "ui/SidebarContext.h"

#include <QWidget>

#include <functional>

class AppContext;
class QMenu;
class QTreeWidget;
class QTreeWidgetItem;
class SidebarDelegate;
class TntActions;
class TntCommands;

// The left column of the main window: the filter entries under their group titles, each with its
// symbol and count. A click selects an entry, Ctrl (Cmd on macOS) adds or removes one, Shift a run;
// the selection goes to the navigation context. Each entry has a context menu with the window's
// torrent actions over the torrents it admits.
class SidebarView : public QWidget
{
    Q_OBJECT

public:
    enum Role { ItemRole = Qt::UserRole + 1, CountRole };

    SidebarView(AppContext &context, NavigationContext &navigation, TntCommands &commands, TntActions &actions,
                QWidget *parent = nullptr);
    ~SidebarView() override;

    QTreeWidget *tree() const { return m_tree; }
    SidebarContext &sidebarContext() { return m_sidebarContext; }
    // Built anew for `item`; the caller owns it.
    QMenu *contextMenu(const SidebarItem &item);

    static QString groupTitle(NavigationContext::Group group);

private:
    void rebuild();
    void fillGroup(QTreeWidgetItem *header, const QList<SidebarItem> &items);
    void showSelection();
    void showCounts();
    void showConnecting();
    void takeSelection();
    void openMenu(const QPoint &position);
    void addCategoryCommands(QMenu &menu, const SidebarItem &item);
    void addTagCommands(QMenu &menu, const SidebarItem &item);
    // The open sheet clears `clear` when it closes.
    void whileSheetOpen(const std::function<void()> &clear);

    AppContext &m_context;
    NavigationContext &m_navigation;
    TntCommands &m_commands;
    TntActions &m_actions;
    SidebarContext m_sidebarContext;
    QTreeWidget *m_tree;
    SidebarDelegate *m_delegate;
    bool m_showingSelection = false;
};
