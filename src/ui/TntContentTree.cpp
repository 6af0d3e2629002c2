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
    if (mode == TntContentModel::Mode::details) {
        connect(this, &QAbstractItemView::activated, this, &TntContentTree::openRow);
    }
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

void TntContentTree::openRow(const QModelIndex &row)
{
    if (const TntFileNode *node = m_model->nodeAt(row))
        Q_EMIT openRequested(node->path, node->progress >= 1);
}

QStringList TntContentTree::selectedPaths() const
{
    QStringList paths;
    for (const QModelIndex &row : selectionModel()->selectedRows())
        paths.append(m_model->nodeAt(row)->path);
    return paths;
}

void TntContentTree::showMenu(const QPoint &position)
{
    if (!selectionModel()->hasSelection())
        return;
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (m_model->mode() == TntContentModel::Mode::details) {
        const QPersistentModelIndex clicked = indexAt(position);
        QAction *open = menu->addAction(QStringLiteral("Open"), this, [this, clicked] { openRow(clicked); });
        open->setEnabled(clicked.isValid());
        menu->addAction(QStringLiteral("Show in File Manager"), this,
                        [this] { Q_EMIT revealRequested(selectedPaths()); });
        menu->addSeparator();
    }
    for (const auto priority : {TntContentModel::maximal, TntContentModel::high, TntContentModel::normal,
                                TntContentModel::skipped}) {
        menu->addAction(TntContentModel::priorityTitle(priority), this,
                        [this, priority] { setPriorityOfSelection(priority); });
    }
    menu->popup(viewport()->mapToGlobal(position));
}
