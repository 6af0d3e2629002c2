#include "ui/TntContentTree.h"

#include <QHeaderView>
#include <QMenu>

TntContentTree::TntContentTree(QWidget *parent)
    : QTreeView(parent)
    , m_model(new TntContentModel(this))
{
    setObjectName(QStringLiteral("tntContent"));
    setModel(m_model);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setUniformRowHeights(true);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(TntContentModel::nameColumn, QHeaderView::Stretch);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &TntContentTree::showMenu);
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
