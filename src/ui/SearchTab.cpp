#include "ui/SearchTab.h"

#include "core/AppContext.h"
#include "support/Detached.h"
#include "ui/AlternateRows.h"
#include "ui/SearchResultsModel.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

SearchTab::SearchTab(AppContext &context, SearchJob::Query query, QWidget *parent)
    : QWidget(parent)
    , m_job(new SearchJob(std::move(query), this))
    , m_runner(context.makeSearchRunner(*m_job, this))
    , m_proxy(new QSortFilterProxyModel(this))
    , m_filter(new QLineEdit(this))
    , m_view(new QTableView(this))
    , m_status(new QLabel(this))
    , m_stop(new QPushButton(tr("Stop"), this))
    , m_download(new QPushButton(tr("Download"), this))
    , m_openPage(new QPushButton(tr("Open description page"), this))
{
    m_proxy->setSourceModel(new SearchResultsModel(*m_job, this));
    m_proxy->setSortRole(SearchResultsModel::SortRole);
    m_proxy->setFilterKeyColumn(SearchResultsModel::NameColumn);
    m_proxy->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_proxy->setSortCaseSensitivity(Qt::CaseInsensitive);
    // Results keep arriving while sorted: each lands where the order puts it.
    m_proxy->setDynamicSortFilter(true);

    m_filter->setPlaceholderText(tr("Filter results by name"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, m_proxy, &QSortFilterProxyModel::setFilterFixedString);

    m_view->setModel(m_proxy);
    m_view->setSortingEnabled(true);
    m_view->sortByColumn(-1, Qt::AscendingOrder); // the server's order until a header is clicked
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setWordWrap(false);
    m_view->verticalHeader()->hide();
    // As dense as the torrent table: the style's default row is a third taller.
    m_view->verticalHeader()->setDefaultSectionSize(m_view->fontMetrics().height() + 8);
    m_view->horizontalHeader()->setSectionResizeMode(SearchResultsModel::NameColumn, QHeaderView::Stretch);
    followAlternateRows(m_view, context.settings().defaults());
    connect(m_view, &QAbstractItemView::doubleClicked, this, [this] { Q_EMIT downloadRequested(selectedFileUrls()); });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &SearchTab::showSelection);

    connect(m_stop, &QPushButton::clicked, m_runner, &SearchRunner::stop);
    connect(m_download, &QPushButton::clicked, this, [this] { Q_EMIT downloadRequested(selectedFileUrls()); });
    connect(m_openPage, &QPushButton::clicked, this, [this] {
        for (const QString &link : selectedDescriptionLinks())
            QDesktopServices::openUrl(QUrl(link));
    });

    auto *top = new QHBoxLayout;
    top->addWidget(m_status, 1);
    top->addWidget(m_filter, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_stop);
    buttons->addStretch();
    buttons->addWidget(m_openPage);
    buttons->addWidget(m_download);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_view);
    layout->addLayout(buttons);

    connect(m_job, &SearchJob::stateChanged, this, &SearchTab::showStatus);
    connect(m_job, &SearchJob::didInsert, this, &SearchTab::showStatus);
    showStatus();
    showSelection();
    detached(m_runner->start());
}

// The runner goes first: it reads the job's number to delete it on the server.
SearchTab::~SearchTab()
{
    delete m_runner;
}

QString SearchTab::statusText() const
{
    const qsizetype count = m_job->size();
    switch (m_job->state()) {
    case SearchJob::State::starting: return tr("Starting…");
    case SearchJob::State::running: return tr("Running, results: %1").arg(count);
    case SearchJob::State::finished: return tr("Finished, results: %1").arg(count);
    case SearchJob::State::stopped: return tr("Stopped, results: %1").arg(count);
    case SearchJob::State::failed: return tr("Failed: %1").arg(m_job->failure());
    }
    return {};
}

void SearchTab::showStatus()
{
    m_status->setText(statusText());
    m_stop->setEnabled(m_job->isRunning());
    Q_EMIT statusChanged();
}

void SearchTab::showSelection()
{
    const bool any = m_view->selectionModel()->hasSelection();
    m_download->setEnabled(any);
    m_openPage->setEnabled(any);
}

QStringList SearchTab::selected(QString API::SearchResult::*field) const
{
    QModelIndexList rows = m_view->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(), [](const QModelIndex &a, const QModelIndex &b) { return a.row() < b.row(); });
    QStringList values;
    for (const QModelIndex &row : std::as_const(rows)) {
        const QString &value = m_job->at(m_proxy->mapToSource(row).row()).*field;
        if (!value.isEmpty())
            values << value;
    }
    return values;
}

QStringList SearchTab::selectedFileUrls() const
{
    return selected(&API::SearchResult::fileUrl);
}

QStringList SearchTab::selectedDescriptionLinks() const
{
    return selected(&API::SearchResult::descrLink);
}
