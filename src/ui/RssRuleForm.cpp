#include "ui/RssRuleForm.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>

#include <algorithm>
#include <iterator>

namespace {

constexpr int urlRole = Qt::UserRole;

// In the order of the layout box's entries after the first.
constexpr API::TntContentLayout layouts[] = {API::TntContentLayout::original, API::TntContentLayout::subfolder,
                                             API::TntContentLayout::noSubfolder};

// Checkable entries: the offered ones, then those checked that were not offered. `value` of each
// entry is its data under `role`.
void fillChecklist(QListWidget *list, const QList<std::pair<QString, QString>> &offered, const QStringList &checked,
                   int role)
{
    list->clear();
    QStringList listed;
    const auto add = [&](const QString &text, const QString &value) {
        auto *item = new QListWidgetItem(text, list);
        item->setData(role, value);
        item->setToolTip(value);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(checked.contains(value) ? Qt::Checked : Qt::Unchecked);
        listed << value;
    };
    for (const auto &[text, value] : offered)
        add(text, value);
    for (const QString &value : checked) {
        if (!listed.contains(value))
            add(value, value);
    }
}

// The checked values, those the rule had first in its own order, so that an unchanged set is the
// list it was.
QStringList checkedValues(const QListWidget *list, const QStringList &before, int role)
{
    QStringList checked;
    for (int row = 0; row < list->count(); ++row) {
        if (list->item(row)->checkState() == Qt::Checked)
            checked << list->item(row)->data(role).toString();
    }
    QStringList values;
    for (const QString &value : before) {
        if (checked.contains(value))
            values << value;
    }
    for (const QString &value : std::as_const(checked)) {
        if (!values.contains(value))
            values << value;
    }
    return values;
}

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
    , m_contentLayout(new QComboBox(this))
    , m_tags(new QListWidget(this))
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
    m_contentLayout->addItems({tr("Default"), tr("Original"), tr("Create subfolder"), tr("Don't create subfolder")});
    m_tags->setMaximumHeight(m_tags->fontMetrics().height() * 5);

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
    layout->addRow(tr("Content layout:"), m_contentLayout);
    layout->addRow(tr("Tags:"), m_tags);
    layout->addRow(tr("Apply to feeds:"), m_feeds);

    for (QCheckBox *box : {m_enabled, m_regex, m_smartFilter, m_addStopped})
        connect(box, &QCheckBox::stateChanged, this, &RssRuleForm::markEdited);
    for (QLineEdit *field : {m_mustContain, m_mustNotContain, m_episodeFilter, m_savePath})
        connect(field, &QLineEdit::textEdited, this, &RssRuleForm::markEdited);
    connect(m_category, &QComboBox::currentTextChanged, this, &RssRuleForm::markEdited);
    connect(m_ignoreDays, &QSpinBox::valueChanged, this, &RssRuleForm::markEdited);
    connect(m_contentLayout, &QComboBox::currentIndexChanged, this, &RssRuleForm::markEdited);
    for (QListWidget *list : {m_tags, m_feeds})
        connect(list, &QListWidget::itemChanged, this, &RssRuleForm::markEdited);
}

void RssRuleForm::markEdited()
{
    if (m_loading)
        return;
    m_edited = true;
    Q_EMIT edited();
}

void RssRuleForm::setRule(const API::RssRule &rule, const Choices &choices)
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
    m_category->addItems(choices.categories);
    m_category->setCurrentText(rule.category());
    m_savePath->setText(rule.savePath());
    const std::optional<bool> stopped = rule.addStopped();
    m_addStopped->setCheckState(!stopped ? Qt::PartiallyChecked : *stopped ? Qt::Checked : Qt::Unchecked);
    const std::optional<API::TntContentLayout> layout = rule.contentLayout();
    m_contentLayout->setCurrentIndex(layout ? int(std::find(std::begin(layouts), std::end(layouts), *layout) - layouts) + 1 : 0);

    QList<std::pair<QString, QString>> tags;
    for (const QString &tag : choices.tags)
        tags.append({tag, tag});
    fillChecklist(m_tags, tags, rule.tags(), Qt::DisplayRole);
    m_tags->setEnabled(rule.canAssignTags());
    m_tags->setToolTip(rule.canAssignTags() ? QString() : tr("This server's download rules cannot assign tags."));
    QList<std::pair<QString, QString>> feeds;
    for (const Feed &feed : choices.feeds)
        feeds.append({feed.name, feed.url});
    fillChecklist(m_feeds, feeds, rule.affectedFeeds(), urlRole);
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
    const int layout = m_contentLayout->currentIndex();
    rule.setContentLayout(layout > 0 ? std::optional(layouts[layout - 1]) : std::nullopt);
    rule.setTags(checkedValues(m_tags, rule.tags(), Qt::DisplayRole));
    rule.setAffectedFeeds(checkedValues(m_feeds, rule.affectedFeeds(), urlRole));
    return rule;
}
