#include "ui/TntContentTree.h"

#include <QHeaderView>
#include <QLocale>
#include <QMenu>

namespace {

constexpr int indexRole = Qt::UserRole;
constexpr int priorityRole = Qt::UserRole + 1;

QString priorityText(int priority)
{
    switch (priority) {
    case 0: return QStringLiteral("Do not download");
    case TntContentTree::high: return QStringLiteral("High");
    case TntContentTree::maximal: return QStringLiteral("Maximum");
    default: return QStringLiteral("Normal");
    }
}

// The priority shown: an unchecked file's is "do not download"; a folder shows its files' one
// when they agree, "Mixed" when not.
class ContentItem : public QTreeWidgetItem
{
public:
    using QTreeWidgetItem::QTreeWidgetItem;

    int effectivePriority() const
    {
        if (childCount() == 0)
            return checkState(TntContentTree::nameColumn) == Qt::Unchecked ? 0 : QTreeWidgetItem::data(0, priorityRole).toInt();
        const int first = static_cast<const ContentItem *>(child(0))->effectivePriority();
        for (int row = 1; row < childCount(); ++row) {
            if (static_cast<const ContentItem *>(child(row))->effectivePriority() != first)
                return -1;
        }
        return first;
    }

    QVariant data(int column, int role) const override
    {
        if (column == TntContentTree::priorityColumn && role == Qt::DisplayRole) {
            const int priority = effectivePriority();
            return priority < 0 ? QStringLiteral("Mixed") : priorityText(priority);
        }
        return QTreeWidgetItem::data(column, role);
    }
};

void addNode(const TntFileNode &node, QTreeWidgetItem *parent, QTreeWidget *tree)
{
    auto *item = parent ? new ContentItem(parent) : new ContentItem(tree);
    item->setText(TntContentTree::nameColumn, node.name);
    item->setText(TntContentTree::sizeColumn, QLocale().formattedDataSize(node.size, 1, QLocale::DataSizeIecFormat));
    item->setData(TntContentTree::sizeColumn, Qt::TextAlignmentRole,
                  QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter)));
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable;
    if (node.children) {
        item->setFlags(flags | Qt::ItemIsAutoTristate);
        for (const auto &child : *node.children)
            addNode(*child, item, tree);
        return;
    }
    item->setFlags(flags);
    item->setData(TntContentTree::nameColumn, indexRole, node.index);
    item->setData(TntContentTree::nameColumn, priorityRole, int(TntContentTree::normal));
    item->setCheckState(TntContentTree::nameColumn, Qt::Checked);
}

template<typename Visit>
void forEachFile(QTreeWidgetItem *item, const Visit &visit)
{
    if (item->childCount() == 0) {
        visit(item);
        return;
    }
    for (int row = 0; row < item->childCount(); ++row)
        forEachFile(item->child(row), visit);
}

} // namespace

TntContentTree::TntContentTree(QWidget *parent)
    : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("tntContent"));
    setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Size"), QStringLiteral("Priority")});
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setUniformRowHeights(true);
    header()->setSectionResizeMode(nameColumn, QHeaderView::Stretch);
    header()->setStretchLastSection(false);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &TntContentTree::showMenu);
}

void TntContentTree::setNodes(const FileTreeBuilder::Nodes &nodes)
{
    clear();
    for (const auto &node : nodes)
        addNode(*node, nullptr, this);
    // A single folder at the top is the torrent's own: show what is in it.
    if (topLevelItemCount() == 1)
        topLevelItem(0)->setExpanded(true);
}

QList<int> TntContentTree::filePriorities(qsizetype fileCount) const
{
    QList<int> priorities(fileCount, normal);
    for (int row = 0; row < topLevelItemCount(); ++row) {
        forEachFile(topLevelItem(row), [&priorities](const QTreeWidgetItem *file) {
            const qint64 index = file->data(nameColumn, indexRole).toLongLong();
            if (index >= 0 && index < priorities.size())
                priorities[index] = static_cast<const ContentItem *>(file)->effectivePriority();
        });
    }
    return priorities;
}

void TntContentTree::setPriorityOfSelection(Priority priority)
{
    const QList<QTreeWidgetItem *> selected = selectedItems();
    for (QTreeWidgetItem *item : selected) {
        forEachFile(item, [priority](QTreeWidgetItem *file) {
            file->setData(nameColumn, priorityRole, int(priority));
            file->setCheckState(nameColumn, Qt::Checked);
        });
    }
    viewport()->update();
}

void TntContentTree::showMenu(const QPoint &position)
{
    if (selectedItems().isEmpty())
        return;
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const Priority priority : {normal, high, maximal}) {
        menu->addAction(priorityText(priority), this, [this, priority] { setPriorityOfSelection(priority); });
    }
    QAction *skip = menu->addAction(priorityText(0));
    connect(skip, &QAction::triggered, this, [this] {
        const QList<QTreeWidgetItem *> selected = selectedItems();
        for (QTreeWidgetItem *item : selected)
            item->setCheckState(nameColumn, Qt::Unchecked);
    });
    menu->popup(viewport()->mapToGlobal(position));
}
