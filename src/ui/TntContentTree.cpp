#include "ui/TntContentTree.h"

#include "settings/UserDefaults.h"

#include <QHeaderView>
#include <QMenu>

TntContentTree::TntContentTree(UserDefaults &defaults, QWidget *parent)
    : QTreeView(parent)
    , m_defaults(defaults)
    , m_model(new TntContentModel(this))
{
    setObjectName(QStringLiteral("tntContent"));
    setModel(m_model);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setUniformRowHeights(true);
    header()->setStretchLastSection(false);
    header()->setDefaultSectionSize(100);
    header()->resizeSection(TntContentModel::nameColumn, 280);
    header()->restoreState(m_defaults.dataValue(UserDefaultsKey::tntAddingTableConfiguration));
    connect(header(), &QHeaderView::sectionResized, this, &TntContentTree::saveColumns);
    connect(header(), &QHeaderView::sectionMoved, this, &TntContentTree::saveColumns);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &TntContentTree::showMenu);
}

void TntContentTree::saveColumns()
{
    m_defaults.setValue(UserDefaultsKey::tntAddingTableConfiguration, header()->saveState());
}

void TntContentTree::setNodes(FileTreeBuilder::Nodes nodes)
{
    m_model->setNodes(std::move(nodes));
    // A single folder at the top is the torrent's own: show what is in it.
    if (m_model->rowCount() == 1)
        expand(m_model->index(0, 0));
}

void TntContentTree::setPriorityOfSelection(TntContentModel::Priority priority)
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    for (const QModelIndex &row : rows)
        m_model->setPriority(row, priority);
}

void TntContentTree::showMenu(const QPoint &position)
{
    if (!selectionModel()->hasSelection())
        return;
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const auto priority : {TntContentModel::maximal, TntContentModel::high, TntContentModel::normal,
                                TntContentModel::skipped}) {
        menu->addAction(TntContentModel::priorityTitle(priority), this,
                        [this, priority] { setPriorityOfSelection(priority); });
    }
    menu->popup(viewport()->mapToGlobal(position));
}
