#include "ui/SettingsWindow.h"

#include "core/AppContext.h"
#include "ui/PathMappingPage.h"
#include "ui/QuilloSettingsPage.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

SettingsWindow::SettingsWindow(AppContext &context, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
    , m_tabs(new QTabWidget(this))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this))
{
    setWindowTitle(QStringLiteral("Preferences"));
    setModal(false);
    resize(720, 640);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs, 1);
    layout->addWidget(m_buttons);

    addPage(new QuilloSettingsPage(context.settings()), QStringLiteral("quillo"), QStringLiteral("Quillo"));
    addPage(new PathMappingPage(context.settings()), QStringLiteral("pathMapping"), QStringLiteral("Path Mapping"));

    UserDefaults &defaults = context.settings().defaults();
    const QString remembered = defaults.stringValue(UserDefaultsKey::selectedSettingsTab, QString());
    for (int index = 0; index < m_tabs->count(); ++index) {
        if (m_tabs->widget(index)->objectName() == remembered)
            m_tabs->setCurrentIndex(index);
    }
    connect(m_tabs, &QTabWidget::currentChanged, this, [this, &defaults](int index) {
        defaults.setValue(UserDefaultsKey::selectedSettingsTab, m_tabs->widget(index)->objectName());
    });
    connect(m_buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &SettingsWindow::apply);
    connect(m_buttons, &QDialogButtonBox::accepted, this, [this] {
        apply();
        accept();
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
    for (int index = 0; index < m_tabs->count(); ++index) {
        if (m_tabs->widget(index)->objectName() == name)
            return qobject_cast<SettingsPage *>(static_cast<QScrollArea *>(m_tabs->widget(index))->widget());
    }
    return nullptr;
}

void SettingsWindow::apply()
{
    for (SettingsPage *page : findChildren<SettingsPage *>()) {
        if (page->hasChanges())
            page->apply();
    }
    showChanges();
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

void SettingsWindow::showChanges()
{
    const QList<SettingsPage *> pages = findChildren<SettingsPage *>();
    applyButton()->setEnabled(
        std::any_of(pages.cbegin(), pages.cend(), [](const SettingsPage *page) { return page->hasChanges(); }));
}
