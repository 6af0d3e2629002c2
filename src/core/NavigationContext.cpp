#include "core/NavigationContext.h"

#include "core/AppContext.h"
#include "settings/UserDefaults.h"

#include <QTimer>

#include <algorithm>

using Group = NavigationContext::Group;

namespace {

UserDefaultsKey expandedKey(Group group)
{
    switch (group) {
    case Group::state: return UserDefaultsKey::statesIsExpanded;
    case Group::category: return UserDefaultsKey::categoriesIsExpanded;
    case Group::tag: return UserDefaultsKey::tagsIsExpanded;
    case Group::tracker: return UserDefaultsKey::trackersIsExpanded;
    }
    Q_UNREACHABLE();
}

// A server label named like a fixed entry would make a second entry with the same id.
void appendUnlessPresent(QList<SidebarItem> &items, const SidebarItem &item)
{
    const bool present = std::any_of(items.cbegin(), items.cend(), [&item](const SidebarItem &other) { return other.id == item.id; });
    if (!present)
        items.append(item);
}

UserDefaultsKey splitKey(NavigationContext::Split split)
{
    return split == NavigationContext::Split::sidebar ? UserDefaultsKey::sidebarSplitSizes
                                                      : UserDefaultsKey::tntDetailSplitSizes;
}

UserDefaultsKey hiddenKey(NavigationContext::Panel panel)
{
    switch (panel) {
    case NavigationContext::Panel::sidebar: return UserDefaultsKey::sidebarIsHidden;
    case NavigationContext::Panel::tntDetails: return UserDefaultsKey::tntDetailsIsHidden;
    case NavigationContext::Panel::statusBar: return UserDefaultsKey::statusBarIsHidden;
    case NavigationContext::Panel::toolbar: return UserDefaultsKey::toolbarIsHidden;
    }
    Q_UNREACHABLE();
}


} // namespace

NavigationContext::NavigationContext(AppContext &context, UserDefaults &defaults, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_defaults(defaults)
    , m_selected(decodeSidebarItems(defaults.stringValue(UserDefaultsKey::selectedSidebarItems).toUtf8()))
    , m_filter(m_selected, context.trackers())
    , m_recount(new QTimer(this))
{
    rebuildLabels();
    rebuildTrackers();

    // A poll can touch many rows and several of these at once: one count after it is enough.
    m_recount->setSingleShot(true);
    m_recount->setInterval(0);
    connect(m_recount, &QTimer::timeout, this, &NavigationContext::recount);
    TntCollection &collection = context.tntCollection();
    for (const auto signal : {&TntCollection::didInsert, &TntCollection::didRemove, &TntCollection::didReset})
        connect(&collection, signal, m_recount, qOverload<>(&QTimer::start));
    connect(&collection, &TntCollection::rowsChanged, this, [this](const auto &, TntModel::Fields fields) {
        if (fields & (TntModel::StateField | TntModel::Category | TntModel::Tags))
            m_recount->start();
    });

    TrackerIndex &trackers = context.trackers();
    connect(&trackers, &TrackerIndex::changed, this, [this] {
        m_recount->start();
        if (m_filter.restrictsTrackers())
            Q_EMIT filterChanged(m_filter);
    });
    connect(&trackers, &TrackerIndex::hostsChanged, this, [this] {
        rebuildTrackers();
        pruneSelection({Group::tracker});
        Q_EMIT itemsChanged();
    });
    connect(&context, &AppContext::labelsChanged, this, [this] {
        rebuildLabels();
        // Every full update announces the labels: the tracker map of that answer is in by then, and
        // an empty one announces nothing of its own.
        pruneSelection({Group::category, Group::tag, Group::tracker});
        Q_EMIT itemsChanged();
    });
    recount();
}

NavigationContext::~NavigationContext() = default;

void NavigationContext::setSelectedSidebarItems(const QSet<SidebarItem> &items)
{
    if (items == m_selected)
        return;
    applySelection(items);
}

const QList<SidebarItem> &NavigationContext::items(Group group) const
{
    switch (group) {
    case Group::state: return stateSidebarItems();
    case Group::category: return m_categoryItems;
    case Group::tag: return m_tagItems;
    case Group::tracker: return m_trackerItems;
    }
    Q_UNREACHABLE();
}

bool NavigationContext::isExpanded(Group group) const
{
    return m_defaults.boolValue(expandedKey(group), true);
}

void NavigationContext::setExpanded(Group group, bool expanded)
{
    m_defaults.setValue(expandedKey(group), expanded);
}

QList<int> NavigationContext::splitSizes(Split split) const
{
    QList<int> sizes;
    for (const QString &size : m_defaults.stringValue(splitKey(split)).split(u',', Qt::SkipEmptyParts)) {
        bool ok = false;
        const int value = size.toInt(&ok);
        if (!ok || value < 0)
            return {};
        sizes.append(value);
    }
    return sizes;
}

void NavigationContext::setSplitSizes(Split split, const QList<int> &sizes)
{
    QStringList texts;
    for (const int size : sizes)
        texts.append(QString::number(size));
    m_defaults.setValue(splitKey(split), texts.join(u','));
}

QByteArray NavigationContext::windowGeometry() const
{
    return m_defaults.dataValue(UserDefaultsKey::mainWindowGeometry);
}

void NavigationContext::setWindowGeometry(const QByteArray &geometry)
{
    m_defaults.setValue(UserDefaultsKey::mainWindowGeometry, geometry);
}

bool NavigationContext::isHidden(Panel panel) const
{
    return m_defaults.boolValue(hiddenKey(panel), false);
}

void NavigationContext::setHidden(Panel panel, bool hidden)
{
    if (hidden == isHidden(panel))
        return;
    m_defaults.setValue(hiddenKey(panel), hidden);
    Q_EMIT hiddenChanged(panel, hidden);
}

void NavigationContext::rebuildLabels()
{
    const QMap<QString, API::Category> &categories = m_context.categories();
    m_userCategories = categories.keys();
    m_categoryItems = {SidebarItem::forCategory(SidebarItem::allCategories()),
                       SidebarItem::forCategory(SidebarItem::noCategory())};
    for (auto it = categories.cbegin(); it != categories.cend(); ++it)
        appendUnlessPresent(m_categoryItems,
                            SidebarItem::forCategory({it.key(), it.key(), it->savePath.value_or(QString())}));

    m_userTags = m_context.tags();
    m_userTags.sort();
    m_tagItems = {SidebarItem::forTag(SidebarItem::allTitle()), SidebarItem::forTag(SidebarItem::untaggedTitle())};
    for (const QString &tag : std::as_const(m_userTags))
        appendUnlessPresent(m_tagItems, SidebarItem::forTag(tag));
}

void NavigationContext::rebuildTrackers()
{
    const TrackerIndex &trackers = m_context.trackers();
    m_trackerItems.clear();
    if (trackers.isEmpty())
        return;
    m_trackerItems = {SidebarItem::forTracker(SidebarItem::allTitle()),
                      SidebarItem::forTracker(SidebarItem::trackerlessTitle())};
    for (const QString &host : trackers.hosts())
        appendUnlessPresent(m_trackerItems, SidebarItem::forTracker(host));
}

void NavigationContext::pruneSelection(std::initializer_list<Group> groups)
{
    // Before the first answer of a connection the lists are empty, not known.
    if (m_context.rid() == 0)
        return;
    QSet<SidebarItem> kept;
    for (const SidebarItem &item : std::as_const(m_selected)) {
        if (std::find(groups.begin(), groups.end(), item.type) == groups.end()) {
            kept.insert(item);
            continue;
        }
        const QList<SidebarItem> &current = items(item.type);
        const auto found = std::find_if(current.cbegin(), current.cend(),
                                        [&item](const SidebarItem &entry) { return entry.id == item.id; });
        if (found != current.cend())
            kept.insert(*found);
    }
    if (kept != m_selected)
        applySelection(std::move(kept));
}

void NavigationContext::applySelection(QSet<SidebarItem> items)
{
    m_selected = std::move(items);
    m_defaults.setValue(UserDefaultsKey::selectedSidebarItems, QString::fromUtf8(encodeSidebarItems(m_selected)));
    m_filter = SidebarFilter(m_selected, m_context.trackers());
    Q_EMIT selectionChanged();
    Q_EMIT filterChanged(m_filter);
}

void NavigationContext::recount()
{
    m_recount->stop();
    m_counts = SidebarCounts(m_context.tntCollection(), m_context.trackers());
    Q_EMIT countsChanged();
}
