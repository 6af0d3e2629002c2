#include "ui/TntContentTree.h"

#include "settings/UserDefaults.h"
#include "ui/ColumnState.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QMenu>
#include <QMessageBox>

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
    // A double-click opens the file; F2 renames it.
    setEditTriggers(QAbstractItemView::EditKeyPressed);
    if (mode == TntContentModel::Mode::details) {
        connect(this, &QAbstractItemView::activated, this, &TntContentTree::openRow);
        connect(m_model, &TntContentModel::renameRefused, this, &TntContentTree::refuseName);
    }
    // A rename or a new build may change which rows the filter keeps.
    connect(m_model, &TntContentModel::renamed, this, [this] { setNameFilter(m_nameFilter); });
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] { setNameFilter(m_nameFilter); });
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
    m_model->setPriority(selectionModel()->selectedRows(), priority);
}

void TntContentTree::setNameFilter(const QString &text)
{
    const bool wasFiltered = !m_nameFilter.isEmpty();
    m_nameFilter = text;
    if (text.isEmpty() && !wasFiltered)
        return;
    filterRows({}, false);
    if (!text.isEmpty())
        expandAll();
}

bool TntContentTree::filterRows(const QModelIndex &parent, bool folderMatches)
{
    bool anyShown = false;
    for (int row = 0; row < m_model->rowCount(parent); ++row) {
        const QModelIndex index = m_model->index(row, TntContentModel::nameColumn, parent);
        const bool matches = folderMatches || m_model->nodeAt(index)->name.contains(m_nameFilter, Qt::CaseInsensitive);
        // Every row is visited once: a folder's rows decide whether it shows.
        const bool shown = filterRows(index, matches) || matches;
        setRowHidden(row, parent, !shown);
        anyShown = anyShown || shown;
    }
    return anyShown;
}

void TntContentTree::refuseName(const QString &reason)
{
    auto *alert = new QMessageBox(QMessageBox::Warning, QCoreApplication::translate("TntContentTree", "Rename"), reason,
                                  QMessageBox::Ok, this);
    alert->setObjectName(QStringLiteral("renameRefused"));
    alert->setWindowModality(Qt::WindowModal);
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->open();
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
        QAction *open = menu->addAction(QCoreApplication::translate("TntContentTree", "Open"), this,
                                        [this, clicked] { openRow(clicked); });
        open->setEnabled(clicked.isValid());
        menu->addAction(QCoreApplication::translate("TntContentTree", "Show in File Manager"), this,
                        [this] { Q_EMIT revealRequested(selectedPaths()); });
        QAction *rename =
            menu->addAction(QCoreApplication::translate("TntContentTree", "Rename..."), this, [this, clicked] {
                edit(QModelIndex(clicked).siblingAtColumn(TntContentModel::nameColumn));
            });
        rename->setEnabled(clicked.isValid() && selectionModel()->selectedRows().size() == 1);
        menu->addSeparator();
    }
    for (const auto priority :
         {TntContentModel::maximal, TntContentModel::high, TntContentModel::normal, TntContentModel::skipped}) {
        menu->addAction(TntContentModel::priorityTitle(priority), this,
                        [this, priority] { setPriorityOfSelection(priority); });
    }
    menu->popup(viewport()->mapToGlobal(position));
}
