#include "ui/ServerLogWindow.h"

#include "core/AppContext.h"
#include "ui/AlternateRows.h"
#include "ui/ServerLogModels.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

ServerLogWindow::ServerLogWindow(AppContext &context, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_context(context)
    , m_defaults(context.settings().defaults())
    , m_tabs(new QTabWidget(this))
    , m_filter(new LogLevelFilter(this))
{
    setWindowTitle(tr("Server Log"));
    ServerLog &log = context.serverLog();
    m_filter->setSourceModel(new LogMessageTableModel(log.messages(), this));
    m_filter->setLevels(int(m_defaults.integerValue(UserDefaultsKey::serverLogLevels, LogLevelFilter::allLevels)) &
                        LogLevelFilter::allLevels);
    m_messages = makeView(m_filter);
    m_peers = makeView(new PeerLogTableModel(log.peers(), this));
    m_tabs->addTab(m_messages, tr("Execution Log"));
    m_tabs->addTab(m_peers, tr("Blocked IPs"));

    auto *levels = new QHBoxLayout;
    for (const API::LogLevel level :
         {API::LogLevel::normal, API::LogLevel::info, API::LogLevel::warning, API::LogLevel::critical}) {
        auto *box = new QCheckBox(LogMessageTableModel::levelName(level), this);
        const int bit = static_cast<int>(level);
        box->setChecked(m_filter->levels() & bit);
        connect(box, &QCheckBox::toggled, this, [this, bit](bool on) {
            m_filter->setLevels(on ? m_filter->levels() | bit : m_filter->levels() & ~bit);
            m_defaults.setValue(UserDefaultsKey::serverLogLevels, m_filter->levels());
        });
        levels->addWidget(box);
        m_levelBoxes << box;
    }
    levels->addStretch();
    // The levels are the execution log's; the blocked IPs have none.
    connect(m_tabs, &QTabWidget::currentChanged, this, [this](int) {
        for (QCheckBox *box : std::as_const(m_levelBoxes))
            box->setEnabled(currentView() == m_messages);
    });

    auto *clear = new QPushButton(tr("Clear"), this);
    clear->setToolTip(tr("Empties this window; the server keeps its log."));
    connect(clear, &QPushButton::clicked, this, &ServerLogWindow::clear);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(clear);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(levels);
    layout->addWidget(m_tabs);
    layout->addLayout(buttons);

    auto *copy = new QAction(tr("Copy"), this);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(copy, &QAction::triggered, this, &ServerLogWindow::copySelection);
    addAction(copy);
    for (QTreeView *view : {m_messages, m_peers}) {
        view->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(view, &QWidget::customContextMenuRequested, this, [this, view, copy](const QPoint &at) {
            auto *menu = new QMenu(this);
            menu->setAttribute(Qt::WA_DeleteOnClose);
            menu->addAction(copy);
            copy->setEnabled(view->selectionModel()->hasSelection());
            menu->addAction(tr("Clear"), this, &ServerLogWindow::clear);
            menu->popup(view->viewport()->mapToGlobal(at));
        });
    }

    resize(760, 480);
    restoreGeometry(m_defaults.dataValue(UserDefaultsKey::serverLogWindowGeometry));
}

// Gone with its parent while open, it gets no hide event of its own.
ServerLogWindow::~ServerLogWindow()
{
    if (isVisible())
        m_defaults.setValue(UserDefaultsKey::serverLogWindowGeometry, saveGeometry());
    m_context.serverLog().setShown(false);
}

QTreeView *ServerLogWindow::makeView(QAbstractItemModel *model)
{
    auto *view = new QTreeView(this);
    view->setModel(model);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setTextElideMode(Qt::ElideRight);
    view->header()->setStretchLastSection(true);
    view->header()->resizeSection(0, view->fontMetrics().horizontalAdvance(QStringLiteral("00/00/0000 00:00:00")) + 24);
    followAlternateRows(view, m_defaults);
    followEnd(view);
    return view;
}

// The end is followed while the user is there: one who scrolled up to read keeps the place.
void ServerLogWindow::followEnd(QTreeView *view)
{
    auto atEnd = std::make_shared<bool>(true);
    QAbstractItemModel *model = view->model();
    connect(model, &QAbstractItemModel::rowsAboutToBeInserted, view, [view, atEnd] {
        const QScrollBar *bar = view->verticalScrollBar();
        *atEnd = bar->value() == bar->maximum();
    });
    connect(model, &QAbstractItemModel::rowsInserted, view, [view, atEnd] {
        if (*atEnd)
            view->scrollToBottom();
    });
}

QTreeView *ServerLogWindow::currentView() const
{
    return m_tabs->currentWidget() == m_peers ? m_peers : m_messages;
}

QString ServerLogWindow::selectedText() const
{
    const QTreeView *view = currentView();
    QModelIndexList rows = view->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(), [](const QModelIndex &a, const QModelIndex &b) { return a.row() < b.row(); });
    QStringList lines;
    for (const QModelIndex &row : std::as_const(rows)) {
        QStringList columns;
        for (int column = 0; column < view->model()->columnCount(); ++column)
            columns << row.siblingAtColumn(column).data().toString();
        lines << columns.join(u'\t');
    }
    return lines.join(u'\n');
}

void ServerLogWindow::copySelection() const
{
    const QString text = selectedText();
    if (!text.isEmpty())
        QApplication::clipboard()->setText(text);
}

void ServerLogWindow::clear()
{
    if (currentView() == m_peers)
        m_context.serverLog().peers().clear();
    else
        m_context.serverLog().messages().clear();
}

void ServerLogWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_context.serverLog().setShown(true);
}

void ServerLogWindow::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_defaults.setValue(UserDefaultsKey::serverLogWindowGeometry, saveGeometry());
    m_context.serverLog().setShown(false);
}
