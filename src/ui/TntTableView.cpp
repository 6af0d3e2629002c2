#include "ui/TntTableView.h"

#include "settings/UserDefaults.h"
#include "ui/AlternateRows.h"
#include "ui/RowPanelStyle.h"
#include "ui/TntCells.h"
#include "ui/TntFilterProxy.h"
#include "ui/TntTableModel.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QMetaMethod>
#include <QScopedValueRollback>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// The rows' header when every row has one fixed height and none is hidden. Qt 6.4's header walks
// one record per row before every layout change, to carry row sizes and hidden rows across it:
// 50,000 records for each answer that moves a row, most of the view's cost at that size. Here
// there is nothing to carry, so it skips the walk; it still follows insertions, removals, resets.
class FixedRowsHeader : public QHeaderView
{
public:
    explicit FixedRowsHeader(QWidget *parent)
        : QHeaderView(Qt::Vertical, parent)
    {
        setSectionResizeMode(Fixed);
    }

    void setModel(QAbstractItemModel *model) override
    {
        QHeaderView::setModel(model);
        // Later Qt versions connect otherwise: the walk is then theirs to avoid.
        const int walk = metaObject()->indexOfSlot(
            "_q_sectionsAboutToBeChanged(QList<QPersistentModelIndex>,QAbstractItemModel::LayoutChangeHint)");
        if (model && walk >= 0)
            disconnect(model, QMetaMethod::fromSignal(&QAbstractItemModel::layoutAboutToBeChanged), this,
                       metaObject()->method(walk));
    }
};

} // namespace

TntTableView::TntTableView(TntCollection &collection, UserDefaults &defaults, QWidget *parent)
    : QWidget(parent)
    , m_collection(collection)
    , m_defaults(defaults)
    , m_proxy(new TntFilterProxy(collection, this))
    , m_filter(new QLineEdit(this))
    , m_filterDelay(new QTimer(this))
    , m_saveDelay(new QTimer(this))
    , m_table(new QTableView(this))
{
    m_filter->setPlaceholderText(QCoreApplication::translate("TntTableView", "Filter by name"));
    // A placeholder is not read out once the field has text: screen readers need names.
    m_filter->setAccessibleName(m_filter->placeholderText());
    m_table->setAccessibleName(QCoreApplication::translate("TntTableView", "Torrents"));
    // Rows are walked with the arrow keys; Tab moves on, or keyboard users are kept in the table.
    m_table->setTabKeyNavigation(false);
    m_filter->setClearButtonEnabled(true);
    m_filterDelay->setSingleShot(true);
    m_filterDelay->setInterval(150);
    connect(m_filter, &QLineEdit::textChanged, m_filterDelay, qOverload<>(&QTimer::start));
    connect(m_filterDelay, &QTimer::timeout, this, [this] { m_proxy->setNameFilter(m_filter->text()); });

    m_table->setVerticalHeader(new FixedRowsHeader(m_table));
    m_table->setModel(m_proxy);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(TntTableModel::AddedOnColumn, Qt::DescendingOrder);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    followAlternateRows(m_table, defaults);
    m_table->verticalHeader()->hide();
    // Fixed row heights: the view never measures 50,000 rows.
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 8);
    // The view keeps its style in a guarded pointer, so it may own it.
    auto *style = new RowPanelStyle(m_table->style()->name());
    style->setParent(m_table);
    m_table->setStyle(style);
    m_table->setItemDelegate(new TextCellDelegate(m_table));
    m_table->setItemDelegateForColumn(TntTableModel::ProgressColumn, new ProgressCellDelegate(m_table));

    QHeaderView *header = m_table->horizontalHeader();
    header->setSectionsMovable(true);
    header->setStretchLastSection(false);
    header->setDefaultSectionSize(110);
    header->resizeSection(TntTableModel::NameColumn, 320);
    header->restoreState(defaults.dataValue(UserDefaultsKey::tntTableCconfiguration));
    header->setContextMenuPolicy(Qt::ActionsContextMenu);
    for (int column = 0; column < TntTableModel::ColumnCount; ++column) {
        auto *toggle = new QAction(m_proxy->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(), header);
        toggle->setCheckable(true);
        toggle->setChecked(!header->isSectionHidden(column));
        toggle->setEnabled(column != TntTableModel::NameColumn);
        connect(toggle, &QAction::toggled, this,
                [this, column](bool shown) { m_table->horizontalHeader()->setSectionHidden(column, !shown); });
        header->addAction(toggle);
    }
    // Saved once the header has settled: hiding a column resizes it to 0 before it marks it hidden,
    // and a drag resizes many times. A second later, so that a header click's paint does not wait
    // for the settings file to reach the disk; closing the table saves what is still pending.
    m_saveDelay->setSingleShot(true);
    m_saveDelay->setInterval(1000);
    connect(m_saveDelay, &QTimer::timeout, this, &TntTableView::saveColumns);
    connect(header, &QHeaderView::sectionMoved, m_saveDelay, qOverload<>(&QTimer::start));
    connect(header, &QHeaderView::sectionResized, m_saveDelay, qOverload<>(&QTimer::start));
    connect(header, &QHeaderView::sortIndicatorChanged, m_saveDelay, qOverload<>(&QTimer::start));

    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const QScopedValueRollback announcing(m_announcing, true);
        Q_EMIT selectionChanged(selectedHashes());
    });

    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_table, &QWidget::customContextMenuRequested, this, &TntTableView::requestContextMenu);
    connect(m_table, &QAbstractItemView::activated, this,
            [this](const QModelIndex &row) { Q_EMIT openRequested(row.data(TntTableModel::HashRole).toString()); });

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_filter);
    layout->addWidget(m_table);
}

TntTableView::~TntTableView()
{
    if (m_saveDelay->isActive())
        saveColumns();
}

void TntTableView::focusFilter()
{
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

QSet<QString> TntTableView::selectedHashes() const
{
    QSet<QString> hashes;
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    hashes.reserve(rows.size());
    for (const QModelIndex &row : rows)
        hashes.insert(row.data(TntTableModel::HashRole).toString());
    return hashes;
}

void TntTableView::saveColumns()
{
    m_defaults.setValue(UserDefaultsKey::tntTableCconfiguration, m_table->horizontalHeader()->saveState());
}

QStringList TntTableView::selectedHashesInOrder() const
{
    QModelIndexList rows = m_table->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(), [](const QModelIndex &a, const QModelIndex &b) { return a.row() < b.row(); });
    QStringList hashes;
    hashes.reserve(rows.size());
    for (const QModelIndex &row : std::as_const(rows))
        hashes.append(row.data(TntTableModel::HashRole).toString());
    return hashes;
}

void TntTableView::selectHashes(const QSet<QString> &hashes)
{
    // What comes back of the view's own announcement is already shown.
    if (m_announcing)
        return;
    QItemSelection rows;
    for (const QString &hash : hashes) {
        const qsizetype row = m_collection.rowOf(hash);
        if (row < 0)
            continue;
        const QModelIndex shown = m_proxy->mapFromSource(m_proxy->sourceModel()->index(static_cast<int>(row), 0));
        if (shown.isValid())
            rows.select(shown, shown);
    }
    m_table->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void TntTableView::requestContextMenu(const QPoint &position)
{
    const QModelIndex clicked = m_table->indexAt(position);
    if (!clicked.isValid())
        return;
    const QStringList hashes = m_table->selectionModel()->isRowSelected(clicked.row(), clicked.parent())
                                   ? selectedHashesInOrder()
                                   : QStringList{clicked.data(TntTableModel::HashRole).toString()};
    Q_EMIT contextMenuRequested(hashes, m_table->viewport()->mapToGlobal(position));
}
