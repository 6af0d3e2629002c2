#include "ui/RssRulesDialog.h"

#include "core/AppContext.h"
#include "support/Detached.h"
#include "ui/RssRuleForm.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

RssRulesDialog::RssRulesDialog(AppContext &context, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
    , m_list(new QListWidget(this))
    , m_form(new RssRuleForm(this))
    , m_matches(new QTreeWidget(this))
    , m_status(new QLabel(this))
    , m_save(new QPushButton(tr("Save Rule"), this))
    , m_rename(new QPushButton(tr("Rename..."), this))
    , m_remove(new QPushButton(tr("Remove"), this))
{
    setWindowTitle(tr("RSS Download Rules"));
    auto *add = new QPushButton(tr("Add..."), this);
    connect(add, &QPushButton::clicked, this, [this] { detached(addRule()); });
    connect(m_rename, &QPushButton::clicked, this, [this] { detached(renameRule()); });
    connect(m_remove, &QPushButton::clicked, this, [this] { detached(removeRule()); });
    connect(m_save, &QPushButton::clicked, this, [this] { detached(save()); });
    connect(m_list, &QListWidget::currentRowChanged, this, &RssRulesDialog::choose);
    connect(m_form, &RssRuleForm::edited, this, [this] { m_save->setEnabled(true); });

    auto *ruleButtons = new QHBoxLayout;
    ruleButtons->addWidget(add);
    ruleButtons->addWidget(m_rename);
    ruleButtons->addWidget(m_remove);
    auto *rules = new QWidget(this);
    auto *rulesLayout = new QVBoxLayout(rules);
    rulesLayout->setContentsMargins(0, 0, 0, 0);
    rulesLayout->addWidget(m_list);
    rulesLayout->addLayout(ruleButtons);

    m_matches->setHeaderLabel(tr("Matching articles (as saved)"));
    m_matches->header()->setStretchLastSection(true);
    auto *editing = new QWidget(this);
    auto *editingLayout = new QVBoxLayout(editing);
    editingLayout->setContentsMargins(0, 0, 0, 0);
    editingLayout->addWidget(m_form);
    auto *saveRow = new QHBoxLayout;
    saveRow->addStretch();
    saveRow->addWidget(m_save);
    editingLayout->addLayout(saveRow);

    auto *splitter = new QSplitter(this);
    splitter->addWidget(rules);
    splitter->addWidget(editing);
    splitter->addWidget(m_matches);
    splitter->setStretchFactor(1, 1);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_status->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
    layout->addWidget(m_status);
    layout->addWidget(buttons);
    resize(900, 520);
    choose(-1);
}

QCoro::Task<> RssRulesDialog::reload(QString select)
{
    const QPointer<RssRulesDialog> self(this);
    if (select.isEmpty() && m_current >= 0)
        select = m_rules.at(m_current).name();
    QCoro::Task<std::optional<QList<API::RssRule>>> reading = m_context.rss().rules();
    std::optional<QList<API::RssRule>> rules = co_await std::move(reading);
    if (!self || !rules)
        co_return;
    m_current = -1;
    m_rules = std::move(*rules);
    const QSignalBlocker blocker(m_list);
    m_list->clear();
    int row = -1;
    for (const API::RssRule &rule : std::as_const(m_rules)) {
        m_list->addItem(rule.name());
        if (rule.name() == select)
            row = m_list->count() - 1;
    }
    m_list->setCurrentRow(row);
    choose(row);
    m_status->setText(m_rules.isEmpty() ? tr("The server has no download rules.") : QString());
}

void RssRulesDialog::choose(int row)
{
    if (m_form->isEdited() && m_current >= 0 && m_current != row)
        detached(save());
    m_current = row;
    const bool chosen = row >= 0 && row < m_rules.size();
    m_form->setEnabled(chosen);
    m_rename->setEnabled(chosen);
    m_remove->setEnabled(chosen);
    m_save->setEnabled(false);
    m_matches->clear();
    if (!chosen) {
        m_form->setRule({}, {});
        return;
    }
    RssRuleForm::Choices choices{{}, m_context.categories().keys(), m_context.tags()};
    for (const API::RssItem *feed : m_context.rssFeeds().root().feeds())
        choices.feeds.append({feed->name, feed->feed->url});
    m_form->setRule(m_rules.at(row), choices);
    detached(showMatches(m_rules.at(row).name()));
}

QCoro::Task<bool> RssRulesDialog::save()
{
    const QPointer<RssRulesDialog> self(this);
    if (m_current < 0)
        co_return true;
    const API::RssRule rule = m_form->rule();
    m_form->setEdited(false);
    QCoro::Task<bool> saving = m_context.rss().setRule(rule);
    const bool saved = co_await std::move(saving);
    if (!self)
        co_return saved;
    if (!saved) {
        // Still the user's: the next chance to save keeps it.
        m_form->setEdited(true);
        m_save->setEnabled(true);
        co_return false;
    }
    const auto it = std::find_if(m_rules.begin(), m_rules.end(),
                                 [&rule](const API::RssRule &known) { return known.name() == rule.name(); });
    if (it != m_rules.end())
        *it = rule;
    if (m_current >= 0 && m_rules.at(m_current).name() == rule.name()) {
        m_save->setEnabled(m_form->isEdited());
        detached(showMatches(rule.name()));
    }
    co_return true;
}

QCoro::Task<> RssRulesDialog::showMatches(QString name)
{
    const QPointer<RssRulesDialog> self(this);
    QCoro::Task<std::optional<QMap<QString, QStringList>>> reading = m_context.rss().matchingArticles(name);
    const std::optional<QMap<QString, QStringList>> matches = co_await std::move(reading);
    if (!self || !matches || m_current < 0 || m_rules.at(m_current).name() != name)
        co_return;
    m_matches->clear();
    for (auto it = matches->cbegin(); it != matches->cend(); ++it) {
        auto *feed = new QTreeWidgetItem(m_matches, {it.key()});
        for (const QString &title : it.value())
            new QTreeWidgetItem(feed, {title});
        feed->setExpanded(true);
    }
    if (matches->isEmpty())
        new QTreeWidgetItem(m_matches, {tr("No article matches.")});
}

QCoro::Task<> RssRulesDialog::addRule()
{
    const QPointer<RssRulesDialog> self(this);
    const QString name = QInputDialog::getText(this, tr("New Rule"), tr("Rule name:")).trimmed();
    if (name.isEmpty())
        co_return;
    if (std::any_of(m_rules.cbegin(), m_rules.cend(), [&name](const API::RssRule &rule) { return rule.name() == name; })) {
        QMessageBox::warning(this, tr("New Rule"), tr("A rule named \"%1\" exists already.").arg(name));
        co_return;
    }
    // The rule being edited is saved before the list is read again.
    if (m_form->isEdited() && !co_await save())
        co_return;
    if (!self)
        co_return;
    // A new rule is saved with the flat keys every version reads.
    QCoro::Task<bool> saving = m_context.rss().setRule(API::RssRule(name, {{QStringLiteral("enabled"), true}}));
    if (co_await std::move(saving) && self)
        co_await reload(name);
}

QCoro::Task<> RssRulesDialog::renameRule()
{
    const QPointer<RssRulesDialog> self(this);
    if (m_current < 0)
        co_return;
    const QString old = m_rules.at(m_current).name();
    if (m_form->isEdited() && !co_await save())
        co_return;
    if (!self)
        co_return;
    const QString name = QInputDialog::getText(this, tr("Rename Rule"), tr("New name:"), QLineEdit::Normal, old).trimmed();
    if (name.isEmpty() || name == old)
        co_return;
    QCoro::Task<bool> renaming = m_context.rss().renameRule(old, name);
    if (co_await std::move(renaming) && self)
        co_await reload(name);
}

QCoro::Task<> RssRulesDialog::removeRule()
{
    const QPointer<RssRulesDialog> self(this);
    if (m_current < 0)
        co_return;
    const QString name = m_rules.at(m_current).name();
    if (QMessageBox::question(this, tr("Remove Rule"), tr("Remove the download rule \"%1\"?").arg(name)) !=
        QMessageBox::Yes)
        co_return;
    m_form->setEdited(false);
    QCoro::Task<bool> removing = m_context.rss().removeRule(name);
    if (co_await std::move(removing) && self) {
        m_current = -1;
        co_await reload();
    }
}

void RssRulesDialog::done(int result)
{
    if (m_form->isEdited())
        detached(save());
    QDialog::done(result);
}
