#pragma once

#include "model/SidebarCounts.h"
#include "model/SidebarFilter.h"
#include "model/SidebarItem.h"

#include <QObject>
#include <QSet>
#include <QStringList>

#include <initializer_list>

class AppContext;
class QTimer;
class UserDefaults;

// The window's navigation state behind the sidebar: the entries of each group, the selection
// (kept in the settings across restarts), the groups' disclosure, the filter the selection makes
// and the entries' counts; and the window's layout around them, also kept: where the splits beside
// the sidebar and above the detail pane stand, and which panels are hidden. A remembered entry whose
// category, tag or tracker the server no longer has leaves the selection when the server's lists
// arrive.
class NavigationContext : public QObject
{
    Q_OBJECT

public:
    using Group = SidebarItem::ItemType;
    enum class Split { sidebar, tntDetails };
    // The parts of the window the View menu shows or hides.
    enum class Panel { sidebar, tntDetails, statusBar, toolbar };

    NavigationContext(AppContext &context, UserDefaults &defaults, QObject *parent = nullptr);
    ~NavigationContext() override;

    const QSet<SidebarItem> &selectedSidebarItems() const { return m_selected; }
    void setSelectedSidebarItems(const QSet<SidebarItem> &items);

    static const QList<SidebarItem> &stateSidebarItems() { return SidebarItem::stateItems(); }
    // All, Uncategorized, then the server's categories by name.
    const QList<SidebarItem> &categorySidebarItems() const { return m_categoryItems; }
    // All, Untagged, then the server's tags in order.
    const QList<SidebarItem> &tagSidebarItems() const { return m_tagItems; }
    // All, Trackerless, then one entry per tracker host; empty (no group) while the server sends no
    // tracker map.
    const QList<SidebarItem> &trackerSidebarItems() const { return m_trackerItems; }
    const QList<SidebarItem> &items(Group group) const;
    const QStringList &userCategories() const { return m_userCategories; }
    const QStringList &userTags() const { return m_userTags; }

    bool isExpanded(Group group) const;
    void setExpanded(Group group, bool expanded);

    // Empty until the user first moved the split.
    QList<int> splitSizes(Split split) const;
    void setSplitSizes(Split split, const QList<int> &sizes);
    // The main window's place and size as the toolkit saves them; empty until the window first closed.
    QByteArray windowGeometry() const;
    void setWindowGeometry(const QByteArray &geometry);
    bool isHidden(Panel panel) const;
    void setHidden(Panel panel, bool hidden);

    const SidebarFilter &sidebarFilter() const { return m_filter; }
    const SidebarCounts &counts() const { return m_counts; }

Q_SIGNALS:
    void selectionChanged();
    // Entries of a group came or went.
    void itemsChanged();
    // The table applies this filter; sent again when what it tests for changed on the server.
    void filterChanged(const SidebarFilter &filter);
    void countsChanged();
    void hiddenChanged(NavigationContext::Panel panel, bool hidden);

private:
    void rebuildLabels();
    void rebuildTrackers();
    // Drops the groups' remembered entries that the server's lists no longer hold; a kept category
    // takes the server's current save path. Only once the server has sent its lists.
    void pruneSelection(std::initializer_list<Group> groups);
    void applySelection(QSet<SidebarItem> items);
    void recount();

    AppContext &m_context;
    UserDefaults &m_defaults;
    QSet<SidebarItem> m_selected;
    QList<SidebarItem> m_categoryItems;
    QList<SidebarItem> m_tagItems;
    QList<SidebarItem> m_trackerItems;
    QStringList m_userCategories;
    QStringList m_userTags;
    SidebarFilter m_filter;
    SidebarCounts m_counts;
    QTimer *m_recount;
};
