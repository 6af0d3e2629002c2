#include "ui/SettingsWindow.h"

#include "core/AppContext.h"
#include "support/Detached.h"
#include "ui/PathMappingPage.h"
#include "ui/PreferencesPage.h"
#include "ui/QuilloSettingsPage.h"
#include "ui/ServerPreferences.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

QString pageName(API::PreferenceGroup group)
{
    switch (group) {
    case API::PreferenceGroup::downloads: return QStringLiteral("downloads");
    case API::PreferenceGroup::connection: return QStringLiteral("connection");
    case API::PreferenceGroup::speed: return QStringLiteral("speed");
    case API::PreferenceGroup::bitTorrent: return QStringLiteral("bitTorrent");
    case API::PreferenceGroup::rss: return QStringLiteral("rss");
    case API::PreferenceGroup::webUi: return QStringLiteral("webUi");
    case API::PreferenceGroup::advanced: return QStringLiteral("advanced");
    }
    Q_UNREACHABLE();
}

} // namespace

SettingsWindow::SettingsWindow(AppContext &context, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
    , m_server(new ServerPreferences(context, this))
    , m_tabs(new QTabWidget(this))
    , m_failure(new QLabel(this))
    , m_retry(new QPushButton(QCoreApplication::translate("SettingsWindow", "Try Again"), this))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this))
{
    setWindowTitle(QCoreApplication::translate("SettingsWindow", "Preferences"));
    setModal(false);
    resize(760, 680);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs, 1);
    auto *failureRow = new QHBoxLayout;
    m_failure->setWordWrap(true);
    m_failure->setStyleSheet(QStringLiteral("color: palette(bright-text); background: #b3261e; padding: 6px"));
    failureRow->addWidget(m_failure, 1);
    failureRow->addWidget(m_retry);
    layout->addLayout(failureRow);
    layout->addWidget(m_buttons);
    m_failure->hide();
    m_retry->hide();

    auto *quillo = new QuilloSettingsPage(context.settings());
    connect(quillo, &QuilloSettingsPage::forgetTntListsRequested, this,
            [&context] { context.snapshots().forgetAll(); });
    addPage(quillo, QStringLiteral("quillo"), QStringLiteral("Quillo"));
    addPage(new PathMappingPage(context.settings()), QStringLiteral("pathMapping"),
            QCoreApplication::translate("SettingsWindow", "Path Mapping"));
    restoreTab();
    connect(m_tabs, &QTabWidget::currentChanged, this, [this](int index) {
        m_context.settings().defaults().setValue(UserDefaultsKey::selectedSettingsTab,
                                                 m_tabs->widget(index)->objectName());
    });

    connect(m_server, &ServerPreferences::readFinished, this, &SettingsWindow::showServerPages);
    connect(m_server, &ServerPreferences::writeFinished, this, &SettingsWindow::showWritten);
    connect(m_retry, &QPushButton::clicked, this, [this] {
        m_retry->hide();
        if (m_server->record())
            detached(m_server->write());
        else
            detached(m_server->read());
    });
    detached(m_server->read());

    connect(applyButton(), &QPushButton::clicked, this, &SettingsWindow::apply);
    connect(m_buttons, &QDialogButtonBox::accepted, this, [this] {
        m_closeWhenWritten = true;
        apply();
    });
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showChanges();
}

QPushButton *SettingsWindow::applyButton() const
{
    return m_buttons->button(QDialogButtonBox::Apply);
}

SettingsPage *SettingsWindow::page(const QString &name) const
{
    const auto *scroll = m_tabs->findChild<QScrollArea *>(name);
    return scroll ? qobject_cast<SettingsPage *>(scroll->widget()) : nullptr;
}

void SettingsWindow::apply()
{
    for (SettingsPage *page : findChildren<SettingsPage *>()) {
        if (page->hasChanges())
            page->apply();
    }
    if (m_server->hasChanges()) {
        m_buttons->setEnabled(false);
        detached(m_server->write());
        return;
    }
    showChanges();
    if (std::exchange(m_closeWhenWritten, false))
        accept();
}

void SettingsWindow::beginPathMapping(const QString &remotePath)
{
    const QString name = QStringLiteral("pathMapping");
    m_tabs->setCurrentWidget(m_tabs->findChild<QScrollArea *>(name));
    static_cast<PathMappingPage *>(page(name))->edit(-1, remotePath);
}

void SettingsWindow::addPage(SettingsPage *page, const QString &name, const QString &title)
{
    auto *scroll = new QScrollArea(m_tabs);
    scroll->setObjectName(name);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(page);
    m_tabs->addTab(scroll, title);
    connect(page, &SettingsPage::edited, this, &SettingsWindow::showChanges);
}

void SettingsWindow::showServerPages()
{
    API::QBTPreferences *record = m_server->record();
    m_failure->setText(m_server->failure());
    m_failure->setVisible(!m_server->failure().isEmpty());
    m_retry->setVisible(!record && !m_server->failure().isEmpty());
    if (!record)
        return;
    for (const API::PreferenceGroup group :
         {API::PreferenceGroup::downloads, API::PreferenceGroup::connection, API::PreferenceGroup::speed,
          API::PreferenceGroup::bitTorrent, API::PreferenceGroup::rss, API::PreferenceGroup::webUi,
          API::PreferenceGroup::advanced})
        addPage(new PreferencesPage(*record, group, m_context.client()), pageName(group), API::groupTitle(group));
    restoreTab();
}

void SettingsWindow::showWritten()
{
    m_buttons->setEnabled(true);
    const bool failed = !m_server->failure().isEmpty();
    m_failure->setText(m_server->failure());
    m_failure->setVisible(failed);
    m_retry->setVisible(failed);
    showChanges();
    if (std::exchange(m_closeWhenWritten, false) && !failed)
        accept();
}

void SettingsWindow::showChanges()
{
    const QList<SettingsPage *> pages = findChildren<SettingsPage *>();
    const bool changed =
        std::any_of(pages.cbegin(), pages.cend(), [](const SettingsPage *page) { return page->hasChanges(); });
    const bool valid =
        std::all_of(pages.cbegin(), pages.cend(), [](const SettingsPage *page) { return page->isValid(); });
    applyButton()->setEnabled(changed && valid);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(valid);
}

void SettingsWindow::restoreTab()
{
    const QString remembered =
        m_context.settings().defaults().stringValue(UserDefaultsKey::selectedSettingsTab, QString());
    if (auto *scroll = remembered.isEmpty() ? nullptr : m_tabs->findChild<QScrollArea *>(remembered))
        m_tabs->setCurrentWidget(scroll);
}
