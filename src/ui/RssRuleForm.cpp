#include "ui/RssRuleForm.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>

namespace {

constexpr int urlRole = Qt::UserRole;

} // namespace

RssRuleForm::RssRuleForm(QWidget *parent)
    : QWidget(parent)
    , m_enabled(new QCheckBox(tr("Enabled"), this))
    , m_mustContain(new QLineEdit(this))
    , m_mustNotContain(new QLineEdit(this))
    , m_regex(new QCheckBox(tr("Use regular expressions"), this))
    , m_smartFilter(new QCheckBox(tr("Use smart episode filter"), this))
    , m_episodeFilter(new QLineEdit(this))
    , m_ignoreDays(new QSpinBox(this))
    , m_category(new QComboBox(this))
    , m_savePath(new QLineEdit(this))
    , m_addStopped(new QCheckBox(tr("Add stopped"), this))
    , m_feeds(new QListWidget(this))
{
    m_category->setEditable(true);
    m_addStopped->setTristate(true);
    m_addStopped->setToolTip(tr("Partly checked: as the server adds torrents."));
    m_episodeFilter->setPlaceholderText(QStringLiteral("1x2;8-15;5;30-;"));
    m_episodeFilter->setToolTip(tr("Seasons and episodes to download, e.g. 1x2;8-15;5;30-; for season 1."));
    m_savePath->setPlaceholderText(tr("The server's default"));
    m_ignoreDays->setRange(0, 3650);
    m_ignoreDays->setSuffix(tr(" days"));
    m_ignoreDays->setSpecialValueText(tr("Never"));
    m_ignoreDays->setToolTip(tr("After a match, the rule downloads nothing more for this many days."));

    auto *layout = new QFormLayout(this);
    layout->addRow(m_enabled);
    layout->addRow(tr("Must contain:"), m_mustContain);
    layout->addRow(tr("Must not contain:"), m_mustNotContain);
    layout->addRow(m_regex);
    layout->addRow(tr("Episode filter:"), m_episodeFilter);
    layout->addRow(m_smartFilter);
    layout->addRow(tr("Ignore later matches for:"), m_ignoreDays);
    layout->addRow(tr("Category:"), m_category);
    layout->addRow(tr("Save to:"), m_savePath);
    layout->addRow(m_addStopped);
    layout->addRow(tr("Apply to feeds:"), m_feeds);

    for (QCheckBox *box : {m_enabled, m_regex, m_smartFilter, m_addStopped})
        connect(box, &QCheckBox::stateChanged, this, &RssRuleForm::markEdited);
    for (QLineEdit *field : {m_mustContain, m_mustNotContain, m_episodeFilter, m_savePath})
        connect(field, &QLineEdit::textEdited, this, &RssRuleForm::markEdited);
    connect(m_category, &QComboBox::currentTextChanged, this, &RssRuleForm::markEdited);
    connect(m_ignoreDays, &QSpinBox::valueChanged, this, &RssRuleForm::markEdited);
    connect(m_feeds, &QListWidget::itemChanged, this, &RssRuleForm::markEdited);
}

void RssRuleForm::markEdited()
{
    if (m_loading)
        return;
    m_edited = true;
    Q_EMIT edited();
}

void RssRuleForm::setRule(const API::RssRule &rule, const QList<Feed> &feeds, const QStringList &categories)
{
    m_loading = true;
    m_rule = rule;
    m_enabled->setChecked(rule.isEnabled());
    m_mustContain->setText(rule.mustContain());
    m_mustNotContain->setText(rule.mustNotContain());
    m_regex->setChecked(rule.usesRegex());
    m_smartFilter->setChecked(rule.usesSmartFilter());
    m_episodeFilter->setText(rule.episodeFilter());
    m_ignoreDays->setValue(rule.ignoreDays());
    m_category->clear();
    m_category->addItem(QString());
    m_category->addItems(categories);
    m_category->setCurrentText(rule.category());
    m_savePath->setText(rule.savePath());
    const std::optional<bool> stopped = rule.addStopped();
    m_addStopped->setCheckState(!stopped ? Qt::PartiallyChecked : *stopped ? Qt::Checked : Qt::Unchecked);

    m_feeds->clear();
    const QStringList assigned = rule.affectedFeeds();
    QStringList listed;
    const auto addFeed = [this, &assigned, &listed](const QString &text, const QString &url) {
        auto *item = new QListWidgetItem(text, m_feeds);
        item->setData(urlRole, url);
        item->setToolTip(url);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(assigned.contains(url) ? Qt::Checked : Qt::Unchecked);
        listed << url;
    };
    for (const Feed &feed : feeds)
        addFeed(feed.name, feed.url);
    for (const QString &url : assigned) {
        if (!listed.contains(url))
            addFeed(url, url);
    }
    m_edited = false;
    m_loading = false;
}

API::RssRule RssRuleForm::rule() const
{
    API::RssRule rule = m_rule;
    rule.setEnabled(m_enabled->isChecked());
    rule.setMustContain(m_mustContain->text());
    rule.setMustNotContain(m_mustNotContain->text());
    rule.setUsesRegex(m_regex->isChecked());
    rule.setUsesSmartFilter(m_smartFilter->isChecked());
    rule.setEpisodeFilter(m_episodeFilter->text());
    rule.setIgnoreDays(m_ignoreDays->value());
    rule.setCategory(m_category->currentText());
    rule.setSavePath(m_savePath->text());
    switch (m_addStopped->checkState()) {
    case Qt::PartiallyChecked: rule.setAddStopped(std::nullopt); break;
    case Qt::Checked: rule.setAddStopped(true); break;
    case Qt::Unchecked: rule.setAddStopped(false); break;
    }
    // The rule's own order first, so that an unchanged set is the list it was.
    QStringList checked;
    for (int row = 0; row < m_feeds->count(); ++row) {
        if (m_feeds->item(row)->checkState() == Qt::Checked)
            checked << m_feeds->item(row)->data(urlRole).toString();
    }
    QStringList urls;
    for (const QString &url : rule.affectedFeeds()) {
        if (checked.contains(url))
            urls << url;
    }
    for (const QString &url : std::as_const(checked)) {
        if (!urls.contains(url))
            urls << url;
    }
    rule.setAffectedFeeds(urls);
    return rule;
}
