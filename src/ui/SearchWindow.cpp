#include "ui/SearchWindow.h"

#include "api/ClientError.h"
#include "core/AppContext.h"
#include "support/Captured.h"
#include "support/Detached.h"
#include "ui/SearchPluginsDialog.h"
#include "ui/SearchTab.h"
#include "ui/TntAddingFlow.h"

#include <QComboBox>
#include <QHeaderView>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableView>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace {

QString failureText(const QString &title, const std::exception_ptr &error)
{
    const API::ClientError shown(title, error);
    QStringList parts{title, shown.description(), shown.failureReason()};
    parts.removeAll(QString());
    return parts.join(u"\n\n");
}

} // namespace

SearchWindow::SearchWindow(AppContext &context, TntAddingFlow &adding, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_context(context)
    , m_adding(adding)
    , m_pages(new QStackedWidget(this))
    , m_message(new QLabel(this))
    , m_pattern(new QLineEdit(this))
    , m_category(new QComboBox(this))
    , m_plugin(new QComboBox(this))
    , m_search(new QPushButton(tr("Search"), this))
    , m_plugins(new QPushButton(tr("Plugins..."), this))
    , m_hint(new QLabel(this))
    , m_tabs(new QTabWidget(this))
{
    setWindowTitle(tr("Search"));
    m_message->setWordWrap(true);
    m_message->setAlignment(Qt::AlignCenter);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_message->setMargin(24);

    m_pattern->setPlaceholderText(tr("Search for torrents"));
    m_pattern->setClearButtonEnabled(true);
    m_category->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_plugin->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_search->setDefault(true);
    m_hint->setWordWrap(true);
    m_tabs->setTabsClosable(true);
    m_tabs->setDocumentMode(true);

    connect(m_pattern, &QLineEdit::textChanged, this, &SearchWindow::showSearchEnabled);
    connect(m_pattern, &QLineEdit::returnPressed, this, &SearchWindow::startSearch);
    connect(m_search, &QPushButton::clicked, this, &SearchWindow::startSearch);
    connect(m_plugins, &QPushButton::clicked, this, &SearchWindow::showPlugins);
    connect(m_plugin, &QComboBox::currentIndexChanged, this, &SearchWindow::fillCategories);
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, &SearchWindow::closeTab);

    auto *bar = new QHBoxLayout;
    bar->addWidget(m_pattern, 1);
    bar->addWidget(m_category);
    bar->addWidget(m_plugin);
    bar->addWidget(m_search);
    bar->addWidget(m_plugins);
    auto *searchPage = new QWidget(this);
    auto *searchLayout = new QVBoxLayout(searchPage);
    searchLayout->setContentsMargins({});
    searchLayout->addLayout(bar);
    searchLayout->addWidget(m_hint);
    searchLayout->addWidget(m_tabs, 1);
    m_pages->addWidget(m_message);
    m_pages->addWidget(searchPage);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);

    connect(&context.searchPlugins(), &SearchPlugins::changed, this, &SearchWindow::showPluginState);
    // A new connection is another server, whose plugins are read afresh while the window shows.
    connect(&context, &AppContext::pollingStarted, this, &SearchWindow::showPluginState);
    connect(&context, &AppContext::connectionStateChanged, this, &SearchWindow::showPluginState);

    resize(860, 560);
    restoreGeometry(m_context.settings().defaults().dataValue(UserDefaultsKey::searchWindowGeometry));
    showPluginState();
}

// Gone with its parent while open, it gets no hide event of its own; its tabs delete their searches.
SearchWindow::~SearchWindow()
{
    if (isVisible()) {
        m_context.settings().defaults().setValue(UserDefaultsKey::searchWindowGeometry, saveGeometry());
        keepColumns(tab(m_tabs->currentIndex()));
    }
}

void SearchWindow::keepColumns(const SearchTab *tab)
{
    if (tab)
        m_context.settings().defaults().setValue(UserDefaultsKey::searchResultsColumns,
                                                 tab->view()->horizontalHeader()->saveState());
}

bool SearchWindow::showsSearch() const
{
    return m_pages->currentIndex() == 1;
}

SearchTab *SearchWindow::tab(int index) const
{
    return qobject_cast<SearchTab *>(m_tabs->widget(index));
}

void SearchWindow::readPlugins()
{
    if (m_reading)
        return;
    m_reading = true;
    m_readFailure.clear();
    showPluginState();
    detached([](QPointer<SearchWindow> self) -> QCoro::Task<> {
        auto read = co_await captured(self->m_context.searchPlugins().reload());
        if (!self)
            co_return;
        self->m_reading = false;
        if (!read)
            self->m_readFailure = failureText(tr("Failed to get the search plugins."), read.error);
        self->showPluginState();
    }(this));
}

void SearchWindow::showPluginState()
{
    const SearchPlugins &plugins = m_context.searchPlugins();
    using Availability = SearchPlugins::Availability;
    if (!m_context.isAuthorized()) {
        m_message->setText(tr("Connect to a server to search."));
    } else if (m_reading) {
        m_message->setText(tr("Reading the server's search plugins…"));
    } else if (!m_readFailure.isEmpty()) {
        m_message->setText(m_readFailure);
    } else if (plugins.availability() == Availability::noPython) {
        m_message->setText(
            tr("This server cannot search.\n\nqBittorrent searches through plugins written in Python, and the "
               "server's computer has no Python it can use. Install Python 3 there and start qBittorrent "
               "again; its search plugins can then be installed from this window."));
    } else if (plugins.availability() == Availability::unknown) {
        m_message->setText(QString());
        if (isVisible())
            readPlugins();
    }
    const bool ready = m_context.isAuthorized() && !m_reading && m_readFailure.isEmpty() &&
                       plugins.availability() == Availability::available;
    m_pages->setCurrentIndex(ready ? 1 : 0);
    if (!ready)
        return;

    const QString chosen = m_plugin->currentData().toString();
    {
        const QSignalBlocker blocker(m_plugin);
        m_plugin->clear();
        m_plugin->addItem(tr("Only enabled"), QStringLiteral("enabled"));
        m_plugin->addItem(tr("All plugins"), QStringLiteral("all"));
        for (const API::SearchPlugin &plugin : plugins.plugins())
            m_plugin->addItem(plugin.fullName.isEmpty() ? plugin.name : plugin.fullName, plugin.name);
        m_plugin->setCurrentIndex(std::max(0, m_plugin->findData(chosen)));
    }
    fillCategories();
    const bool anyEnabled = std::any_of(plugins.plugins().cbegin(), plugins.plugins().cend(),
                                        [](const API::SearchPlugin &plugin) { return plugin.enabled; });
    m_hint->setText(plugins.plugins().isEmpty() ? tr("The server has no search plugins yet: Plugins... installs them.")
                    : anyEnabled                ? QString()
                                 : tr("Every search plugin is disabled: enable one in Plugins..., or search with "
                                      "All plugins."));
    m_hint->setVisible(!m_hint->text().isEmpty());
}

void SearchWindow::fillCategories()
{
    const QString chosen = m_category->currentData().toString();
    const QSignalBlocker blocker(m_category);
    m_category->clear();
    for (const API::SearchCategory &category : m_context.searchPlugins().categories(m_plugin->currentData().toString()))
        m_category->addItem(category.name, category.id);
    m_category->setCurrentIndex(std::max(0, m_category->findData(chosen)));
    showSearchEnabled();
}

void SearchWindow::showSearchEnabled()
{
    m_search->setEnabled(!m_pattern->text().trimmed().isEmpty() && !m_context.searchPlugins().plugins().isEmpty());
}

SearchTab *SearchWindow::startSearch()
{
    const QString pattern = m_pattern->text().trimmed();
    if (!m_search->isEnabled() || pattern.isEmpty())
        return nullptr;
    SearchJob::Query query{pattern, {m_plugin->currentData().toString()}, m_category->currentData().toString()};
    auto *tab = new SearchTab(m_context, std::move(query), m_tabs);
    tab->view()->horizontalHeader()->restoreState(
        m_context.settings().defaults().dataValue(UserDefaultsKey::searchResultsColumns));
    const int index = m_tabs->addTab(tab, pattern);
    m_tabs->setCurrentIndex(index);
    const auto showStatus = [this, tab] { m_tabs->setTabToolTip(m_tabs->indexOf(tab), tab->statusText()); };
    connect(tab, &SearchTab::statusChanged, this, showStatus);
    showStatus();
    connect(tab, &SearchTab::downloadRequested, this, [this](const QStringList &fileUrls) {
        QList<QUrl> links;
        for (const QString &url : fileUrls)
            links << QUrl(url);
        if (!links.isEmpty())
            m_adding.open(links);
    });
    tab->runner().setShown(isVisible());
    return tab;
}

void SearchWindow::closeTab(int index)
{
    keepColumns(tab(index));
    // Deleting the tab deletes its search on the server, which stops it first.
    delete m_tabs->widget(index);
}

void SearchWindow::showPlugins()
{
    auto *dialog = new SearchPluginsDialog(m_context.searchPlugins(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void SearchWindow::setTabsShown(bool shown)
{
    for (int index = 0; index < m_tabs->count(); ++index)
        tab(index)->runner().setShown(shown);
}

void SearchWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    setTabsShown(true);
    if (m_context.searchPlugins().availability() == SearchPlugins::Availability::unknown || !m_readFailure.isEmpty())
        readPlugins();
}

void SearchWindow::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_context.settings().defaults().setValue(UserDefaultsKey::searchWindowGeometry, saveGeometry());
    keepColumns(tab(m_tabs->currentIndex()));
    setTabsShown(false);
}
