#include "ui/TntContentTree.h"

#include "settings/UserDefaults.h"
#include "ui/ColumnState.h"

#include <QHeaderView>
#include <QMenu>

TntContentTree::TntContentTree(UserDefaults &defaults, QWidget *parent, TntContentModel::Mode mode)
    : QTreeView(parent)
    , m_model(new TntContentModel(mode, this))
{
    setObjectName(QStringLiteral("tntContent"));
    setModel(m_model);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setUniformRowHeights(true);
    header()->setStretchLastSection(false);
    header()->setDefaultSectionSize(100);
    header()->resizeSection(TntContentModel::nameColumn, 280);
    keepColumnState(*header(), defaults,
                    mode == TntContentModel::Mode::adding ? UserDefaultsKey::tntAddingTableConfiguration
                                                          : UserDefaultsKey::tntContentTableConfiguration);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &TntContentTree::showMenu);
}

void TntContentTree::setNodes(FileTreeBuilder::Nodes nodes)
{
    m_model->setNodes(std::move(nodes));
    expandSingleRoot();
}

void TntContentTree::refreshNodes(FileTreeBuilder::Nodes nodes)
{
    const bool wasEmpty = m_model->rowCount() == 0;
    m_model->refreshNodes(std::move(nodes));
    if (wasEmpty)
        expandSingleRoot();
}

void TntContentTree::expandSingleRoot()
{
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
