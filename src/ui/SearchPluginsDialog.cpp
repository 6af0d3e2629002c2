#include "ui/SearchPluginsDialog.h"

#include "api/ClientError.h"
#include "core/SearchPlugins.h"
#include "support/Captured.h"
#include "support/Detached.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { NameColumn, VersionColumn, UrlColumn, CategoriesColumn, ColumnCount };

// The server downloads a plugin after answering: the list is read again once it likely has it.
constexpr int downloadWait = 3'000;

} // namespace

SearchPluginsDialog::SearchPluginsDialog(SearchPlugins &plugins, QWidget *parent)
    : QDialog(parent)
    , m_plugins(plugins)
    , m_list(new QTreeWidget(this))
    , m_source(new QLineEdit(this))
    , m_install(new QPushButton(tr("Install"), this))
    , m_uninstall(new QPushButton(tr("Uninstall"), this))
    , m_update(new QPushButton(tr("Update All"), this))
    , m_failure(new QLabel(this))
{
    setWindowTitle(tr("Search Plugins"));
    m_list->setColumnCount(ColumnCount);
    m_list->setHeaderLabels({tr("Name"), tr("Version"), tr("URL"), tr("Categories")});
    m_list->setRootIsDecorated(false);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->header()->setSectionResizeMode(NameColumn, QHeaderView::ResizeToContents);
    m_source->setPlaceholderText(tr("A plugin's URL, or the path of its .py file on the server's computer"));
    m_source->setClearButtonEnabled(true);
    m_failure->setWordWrap(true);
    m_failure->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_failure->hide();

    // The check box beside a name says whether searches with "Only enabled" use the plugin.
    connect(m_list, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem *item, int column) {
        if (column != NameColumn || m_busy)
            return;
        const QString name = item->data(NameColumn, Qt::UserRole).toString();
        const bool enable = item->checkState(NameColumn) == Qt::Checked;
        run(enable ? tr("Failed to enable the plugin.") : tr("Failed to disable the plugin."),
            [this, name, enable] { return m_plugins.setEnabled({name}, enable); });
    });
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &SearchPluginsDialog::showSelection);
    connect(m_source, &QLineEdit::textChanged, this, &SearchPluginsDialog::showSelection);
    connect(m_source, &QLineEdit::returnPressed, this, &SearchPluginsDialog::install);
    connect(m_install, &QPushButton::clicked, this, &SearchPluginsDialog::install);
    connect(m_uninstall, &QPushButton::clicked, this, &SearchPluginsDialog::uninstallSelected);
    connect(m_update, &QPushButton::clicked, this, &SearchPluginsDialog::updateAll);
    connect(&m_plugins, &SearchPlugins::changed, this, &SearchPluginsDialog::showPlugins);

    auto *source = new QHBoxLayout;
    source->addWidget(m_source, 1);
    source->addWidget(m_install);
    auto *close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_uninstall);
    buttons->addWidget(m_update);
    buttons->addStretch();
    buttons->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_failure);
    layout->addLayout(source);
    layout->addLayout(buttons);
    resize(720, 380);
    showPlugins();
}

QString SearchPluginsDialog::failure() const
{
    return m_failure->isHidden() ? QString() : m_failure->text();
}

void SearchPluginsDialog::showPlugins()
{
    const bool wasBusy = std::exchange(m_busy, true); // the check boxes set here are no user's change
    m_list->clear();
    for (const API::SearchPlugin &plugin : m_plugins.plugins()) {
        QStringList categories;
        for (const API::SearchCategory &category : plugin.supportedCategories) {
            if (category.id != u"all")
                categories << category.name;
        }
        auto *item = new QTreeWidgetItem(m_list, {plugin.fullName.isEmpty() ? plugin.name : plugin.fullName,
                                                  plugin.version, plugin.url, categories.join(QStringLiteral(", "))});
        item->setData(NameColumn, Qt::UserRole, plugin.name);
        item->setToolTip(NameColumn, plugin.name);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(NameColumn, plugin.enabled ? Qt::Checked : Qt::Unchecked);
    }
    m_busy = wasBusy;
    showSelection();
}

void SearchPluginsDialog::showSelection()
{
    m_install->setEnabled(!m_busy && !m_source->text().trimmed().isEmpty());
    m_uninstall->setEnabled(!m_busy && !m_list->selectedItems().isEmpty());
    m_update->setEnabled(!m_busy && !m_plugins.plugins().isEmpty());
    m_list->setEnabled(!m_busy);
}

void SearchPluginsDialog::install()
{
    const QString source = m_source->text().trimmed();
    if (source.isEmpty() || m_busy)
        return;
    run(tr("Failed to install the plugin."), [this, source] { return m_plugins.install({source}); });
    // The field keeps what was typed until the server took it.
    connect(
        this, &SearchPluginsDialog::changeEnded, m_source,
        [this, source] {
            if (failure().isEmpty() && m_source->text().trimmed() == source)
                m_source->clear();
        },
        Qt::SingleShotConnection);
    if (SearchPlugins::isDownload(source))
        QTimer::singleShot(downloadWait, this, [this] {
            run(tr("Failed to get the search plugins."), [this] { return m_plugins.reload(); });
        });
}

void SearchPluginsDialog::uninstallSelected()
{
    QStringList names;
    for (const QTreeWidgetItem *item : m_list->selectedItems())
        names << item->data(NameColumn, Qt::UserRole).toString();
    if (names.isEmpty() || m_busy)
        return;
    run(tr("Failed to uninstall the plugin."), [this, names] { return m_plugins.uninstall(names); });
}

void SearchPluginsDialog::updateAll()
{
    if (m_busy)
        return;
    run(tr("Failed to update the plugins."), [this] { return m_plugins.updateAll(); });
    QTimer::singleShot(downloadWait, this,
                       [this] { run(tr("Failed to get the search plugins."), [this] { return m_plugins.reload(); }); });
}

void SearchPluginsDialog::run(const QString &failureTitle, std::function<QCoro::Task<>()> change)
{
    if (m_busy)
        return;
    m_busy = true;
    showSelection();
    detached(
        [](QPointer<SearchPluginsDialog> self, QString title, std::function<QCoro::Task<>()> work) -> QCoro::Task<> {
            auto done = co_await captured(work());
            if (!self)
                co_return;
            self->m_busy = false;
            if (done) {
                self->m_failure->clear();
                self->m_failure->hide();
            } else {
                const API::ClientError shown(title, done.error);
                QStringList parts{title, shown.description(), shown.failureReason()};
                parts.removeAll(QString());
                self->m_failure->setText(parts.join(u' '));
                self->m_failure->show();
            }
            self->showPlugins();
            Q_EMIT self->changeEnded();
        }(this, failureTitle, std::move(change)));
}
