#include "ui/SidebarView.h"

#include "core/AppContext.h"
#include "support/CheckedMath.h"
#include "support/Detached.h"
#include "ui/SidebarIcons.h"
#include "ui/TntActions.h"
#include "ui/TntCommands.h"
#include "ui/TntTableModel.h"

#include <QMenu>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

using Group = NavigationContext::Group;
using ItemType = SidebarItem::ItemType;

namespace {

constexpr std::array groups{Group::state, Group::category, Group::tag, Group::tracker};

SidebarItem itemOf(const QTreeWidgetItem *entry)
{
    return entry->data(0, SidebarView::ItemRole).value<SidebarItem>();
}

bool isEntry(const QTreeWidgetItem *item)
{
    return item && item->parent();
}

} // namespace

// Entries with their count badge on the right, or as grey placeholders while connecting.
class SidebarDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void setSkeleton(bool skeleton) { m_skeleton = skeleton; }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        size.setHeight(std::max(size.height(), option.fontMetrics.height() + 10));
        return size;
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        if (!index.parent().isValid()) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        if (m_skeleton) {
            paintPlaceholder(painter, option, index.row());
            return;
        }
        const QVariant count = index.data(SidebarView::CountRole);
        if (!count.isValid()) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        const QString text = QString::number(count.toLongLong());
        const int badgeWidth = option.fontMetrics.horizontalAdvance(text) + 12;
        const QStyle *style = option.widget ? option.widget->style() : nullptr;
        if (style)
            style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
        QStyleOptionViewItem title(option);
        title.rect.setRight(option.rect.right() - badgeWidth - 6);
        title.state &= ~QStyle::State_HasFocus; // a focus frame around the title alone cuts the row in two
        QStyledItemDelegate::paint(painter, title, index);

        const QRect badge(option.rect.right() - badgeWidth - 2,
                          option.rect.center().y() - option.fontMetrics.height() / 2 - 1, badgeWidth,
                          option.fontMetrics.height() + 2);
        const bool selected = option.state & QStyle::State_Selected;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        QColor fill = option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
        fill.setAlphaF(0.15f);
        painter->setPen(Qt::NoPen);
        painter->setBrush(fill);
        painter->drawRoundedRect(badge, badge.height() / 2.0, badge.height() / 2.0);
        painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
        painter->drawText(badge, Qt::AlignCenter, text);
        painter->restore();
    }

private:
    static void paintPlaceholder(QPainter *painter, const QStyleOptionViewItem &option, int row)
    {
        QColor grey = option.palette.color(QPalette::Text);
        grey.setAlphaF(0.12f);
        const int height = option.fontMetrics.height() - 4;
        const int top = option.rect.center().y() - height / 2;
        // Bars of a few lengths, so that the column reads as a list of names.
        const int width = (option.rect.width() - height - 12) * (45 + (row * 37) % 40) / 100;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(grey);
        painter->drawRoundedRect(QRect(option.rect.left() + 2, top, height, height), 3, 3);
        painter->drawRoundedRect(QRect(option.rect.left() + height + 8, top, std::max(width, 8), height), 3, 3);
        painter->restore();
    }

    bool m_skeleton = false;
};

SidebarView::SidebarView(AppContext &context, NavigationContext &navigation, TntCommands &commands, TntActions &actions,
                         QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_navigation(navigation)
    , m_commands(commands)
    , m_actions(actions)
    , m_tree(new QTreeWidget(this))
    , m_delegate(new SidebarDelegate(m_tree))
{
    m_tree->setObjectName(QStringLiteral("sidebar"));
    m_tree->setAccessibleName(tr("Filters"));
    m_tree->setHeaderHidden(true);
    m_tree->setColumnCount(1);
    m_tree->setIndentation(10);
    m_tree->setUniformRowHeights(true);
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tree->setItemDelegate(m_delegate);
    for (const Group group : groups) {
        auto *header = new QTreeWidgetItem(m_tree, {groupTitle(group)});
        header->setFlags(Qt::ItemIsEnabled);
        QFont bold = header->font(0);
        bold.setBold(true);
        header->setFont(0, bold);
    }
    rebuild();
    for (const Group group : groups)
        m_tree->topLevelItem(static_cast<int>(group))->setExpanded(navigation.isExpanded(group));
    showConnecting();

    const auto remember = [this](bool expanded) {
        return [this, expanded](QTreeWidgetItem *item) {
            if (!isEntry(item))
                m_navigation.setExpanded(static_cast<Group>(m_tree->indexOfTopLevelItem(item)), expanded);
        };
    };
    connect(m_tree, &QTreeWidget::itemExpanded, this, remember(true));
    connect(m_tree, &QTreeWidget::itemCollapsed, this, remember(false));
    connect(m_tree, &QTreeWidget::itemSelectionChanged, this, &SidebarView::takeSelection);
    connect(m_tree, &QWidget::customContextMenuRequested, this, &SidebarView::openMenu);
    connect(&navigation, &NavigationContext::itemsChanged, this, &SidebarView::rebuild);
    connect(&navigation, &NavigationContext::selectionChanged, this, &SidebarView::showSelection);
    connect(&navigation, &NavigationContext::countsChanged, this, &SidebarView::showCounts);
    connect(&context, &AppContext::connectionStateChanged, this, &SidebarView::showConnecting);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tree);
}

SidebarView::~SidebarView() = default;

QString SidebarView::groupTitle(Group group)
{
    switch (group) {
    case Group::state: return tr("State");
    case Group::category: return tr("Categories");
    case Group::tag: return tr("Tags");
    case Group::tracker: return tr("Trackers");
    }
    return {};
}

void SidebarView::rebuild()
{
    for (const Group group : groups) {
        QTreeWidgetItem *header = m_tree->topLevelItem(static_cast<int>(group));
        const QList<SidebarItem> &items = m_navigation.items(group);
        fillGroup(header, items);
        header->setHidden(items.isEmpty());
    }
    showSelection();
    showCounts();
}

void SidebarView::fillGroup(QTreeWidgetItem *header, const QList<SidebarItem> &items)
{
    const bool unchanged = header->childCount() == items.size() && [&] {
        for (int row = 0; row < header->childCount(); ++row) {
            if (itemOf(header->child(row)) != items[row])
                return false;
        }
        return true;
    }();
    if (unchanged)
        return;
    m_showingSelection = true;
    qDeleteAll(header->takeChildren());
    for (const SidebarItem &item : items) {
        auto *entry = new QTreeWidgetItem(header, {item.shownTitle()});
        entry->setIcon(0, SidebarIcons::forItem(item));
        entry->setData(0, ItemRole, QVariant::fromValue(item));
    }
    m_showingSelection = false;
}

void SidebarView::showSelection()
{
    const QSet<SidebarItem> &selected = m_navigation.selectedSidebarItems();
    m_showingSelection = true;
    for (int group = 0; group < m_tree->topLevelItemCount(); ++group) {
        QTreeWidgetItem *header = m_tree->topLevelItem(group);
        for (int row = 0; row < header->childCount(); ++row) {
            QTreeWidgetItem *entry = header->child(row);
            const bool wanted = selected.contains(itemOf(entry));
            if (entry->isSelected() != wanted)
                entry->setSelected(wanted);
        }
    }
    m_showingSelection = false;
}

void SidebarView::showCounts()
{
    const SidebarCounts &counts = m_navigation.counts();
    for (int group = 0; group < m_tree->topLevelItemCount(); ++group) {
        QTreeWidgetItem *header = m_tree->topLevelItem(group);
        for (int row = 0; row < header->childCount(); ++row) {
            QTreeWidgetItem *entry = header->child(row);
            entry->setData(0, CountRole, static_cast<qlonglong>(counts.count(itemOf(entry))));
        }
    }
}

void SidebarView::showConnecting()
{
    m_delegate->setSkeleton(m_context.progressMessage() == AppContext::ProgressMessage::connecting);
    m_tree->viewport()->update();
}

void SidebarView::takeSelection()
{
    if (m_showingSelection)
        return;
    QSet<SidebarItem> selected;
    const QList<QTreeWidgetItem *> entries = m_tree->selectedItems();
    for (const QTreeWidgetItem *entry : entries) {
        if (isEntry(entry))
            selected.insert(itemOf(entry));
    }
    m_navigation.setSelectedSidebarItems(selected);
}

void SidebarView::openMenu(const QPoint &position)
{
    const QTreeWidgetItem *entry = m_tree->itemAt(position);
    if (!isEntry(entry))
        return;
    QMenu *menu = contextMenu(itemOf(entry));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(m_tree->viewport()->mapToGlobal(position));
}

QMenu *SidebarView::contextMenu(const SidebarItem &item)
{
    const QList<const TntModel *> admitted = m_context.filterTnts({item}, {});
    qint64 size = 0;
    QStringList hashes;
    hashes.reserve(admitted.size());
    for (const TntModel *tnt : admitted) {
        size = CheckedMath::add(size, tnt->size());
        hashes << tnt->id();
    }

    auto *menu = new QMenu(this);
    if (item.type == ItemType::category)
        menu->addSection(tr("Category"));
    menu->addAction(tr("Size: ") + TntFormat::size(size))->setEnabled(false);
    if (item.type == ItemType::category)
        addCategoryCommands(*menu, item);
    else if (item.type == ItemType::tag)
        addTagCommands(*menu, item);
    menu->addSeparator();
    using Id = TntActions::Id;
    menu->addActions({m_actions.action(Id::start), m_actions.action(Id::stop), m_actions.action(Id::remove)});
    // Only the state group's All stands for the server's whole list, sent as "all"; any other entry
    // acts on the torrents it admits now, even when that is every one of them, or none.
    const bool everyTnt = item.type == ItemType::state && item.state == TntModel::State::all && !admitted.isEmpty();
    m_actions.actFor(menu, everyTnt ? std::nullopt : std::optional(hashes), TntActions::Wording::entry);
    return menu;
}

void SidebarView::addCategoryCommands(QMenu &menu, const SidebarItem &item)
{
    menu.addSeparator();
    menu.addAction(SidebarIcons::forSymbol(u"plus"), tr("New Category..."), this,
                   [this] { m_commands.createCategory(); });
    const SidebarItem::Category category = *item.category;
    if (category == SidebarItem::allCategories() || category == SidebarItem::noCategory())
        return;
    menu.addAction(SidebarIcons::forSymbol(u"pencil"), tr("Edit"), this, [this, category] {
        m_sidebarContext.setEditedCategory(category);
        m_commands.editCategory(category.name, category.savePath);
        whileSheetOpen([this] { m_sidebarContext.setEditedCategory(std::nullopt); });
    });
    menu.addAction(SidebarIcons::forSymbol(u"minus"), tr("Remove"), this,
                   [this, name = category.name] { detached(m_context.removeCategories({name})); });
}

void SidebarView::addTagCommands(QMenu &menu, const SidebarItem &item)
{
    menu.addSeparator();
    menu.addAction(SidebarIcons::forSymbol(u"plus"), tr("New Tags..."), this, [this] {
        m_sidebarContext.setShowTagEditor(true);
        m_commands.createTags();
        whileSheetOpen([this] { m_sidebarContext.setShowTagEditor(false); });
    });
    const QString tag = *item.tag;
    if (tag == SidebarItem::allTitle() || tag == SidebarItem::untaggedTitle())
        return;
    menu.addAction(SidebarIcons::forSymbol(u"minus"), tr("Remove"), this,
                   [this, tag] { detached(m_context.deleteTags({tag})); });
}

void SidebarView::whileSheetOpen(const std::function<void()> &clear)
{
    if (QDialog *sheet = m_commands.openSheet())
        connect(sheet, &QDialog::finished, this, clear);
    else
        clear();
}
