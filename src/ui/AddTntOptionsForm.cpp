#include "ui/AddTntOptionsForm.h"

#include "core/AppContext.h"
#include "ui/ShareLimitField.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QSpinBox>

#include <limits>

namespace {

constexpr qint64 kibibyte = 1024;

QComboBox *choices(const QStringList &titles, QWidget *parent)
{
    auto *box = new QComboBox(parent);
    box->addItems(titles);
    return box;
}

// A rate limit in KiB/s; 0 is none and is not sent.
QSpinBox *rateLimit(QWidget *parent)
{
    auto *box = new QSpinBox(parent);
    // The server reads bytes per second as an int and takes a larger one as no limit.
    box->setRange(0, int(std::numeric_limits<int>::max() / kibibyte));
    box->setSpecialValueText(QStringLiteral("∞"));
    box->setSuffix(QStringLiteral(" KiB/s"));
    return box;
}

template <typename Value> std::optional<Value> choice(const QComboBox *box, const QList<Value> &values)
{
    const int index = box->currentIndex() - 1; // 0 is "Default"
    if (index < 0 || index >= values.size())
        return std::nullopt;
    return values[index];
}

} // namespace

AddTntOptionsForm::AddTntOptionsForm(AppContext &context, const QString &tntName, QWidget *parent)
    : QWidget(parent)
    , m_savePath(new QLineEdit(this))
    , m_useDownloadPath(
          new QCheckBox(QCoreApplication::translate("AddTntOptionsForm", "Keep incomplete torrents in"), this))
    , m_downloadPath(new QLineEdit(this))
    , m_category(new QComboBox(this))
    , m_tags(new QListWidget(this))
    , m_rename(new QLineEdit(this))
    , m_management(choices({QCoreApplication::translate("AddTntOptionsForm", "Default"),
                            QCoreApplication::translate("AddTntOptionsForm", "Manual"),
                            QCoreApplication::translate("AddTntOptionsForm", "Automatic")},
                           this))
    , m_contentLayout(choices({QCoreApplication::translate("AddTntOptionsForm", "Default"),
                               QCoreApplication::translate("AddTntOptionsForm", "Original"),
                               QCoreApplication::translate("AddTntOptionsForm", "Create subfolder"),
                               QCoreApplication::translate("AddTntOptionsForm", "Don't create subfolder")},
                              this))
    , m_stopCondition(choices({QCoreApplication::translate("AddTntOptionsForm", "Default"),
                               QCoreApplication::translate("AddTntOptionsForm", "None"),
                               QCoreApplication::translate("AddTntOptionsForm", "Metadata received"),
                               QCoreApplication::translate("AddTntOptionsForm", "Files checked")},
                              this))
    , m_start(new QCheckBox(QCoreApplication::translate("AddTntOptionsForm", "Start torrent"), this))
    , m_topOfQueue(new QCheckBox(QCoreApplication::translate("AddTntOptionsForm", "Add to top of queue"), this))
    , m_skipChecking(new QCheckBox(QCoreApplication::translate("AddTntOptionsForm", "Skip hash check"), this))
    , m_sequential(
          new QCheckBox(QCoreApplication::translate("AddTntOptionsForm", "Download in sequential order"), this))
    , m_firstLastPiece(
          new QCheckBox(QCoreApplication::translate("AddTntOptionsForm", "Download first and last pieces first"), this))
    , m_dlLimit(rateLimit(this))
    , m_upLimit(rateLimit(this))
    , m_ratioLimit(new ShareLimitField(ShareLimitField::Kind::ratio, QStringLiteral("ratioLimit"),
                                       QCoreApplication::translate("AddTntOptionsForm", "Default"), this))
    , m_seedingTimeLimit(new ShareLimitField(ShareLimitField::Kind::minutes, QStringLiteral("seedingTimeLimit"),
                                             QCoreApplication::translate("AddTntOptionsForm", "Default"), this))
{
    const UserDefaults &defaults = context.settings().defaults();
    m_savePath->setObjectName(QStringLiteral("savePath"));
    m_useDownloadPath->setObjectName(QStringLiteral("useDownloadPath"));
    m_downloadPath->setObjectName(QStringLiteral("downloadPath"));
    m_downloadPath->setEnabled(false);
    connect(m_useDownloadPath, &QCheckBox::toggled, m_downloadPath, &QWidget::setEnabled);
    m_category->setObjectName(QStringLiteral("category"));
    m_category->setEditable(true);
    m_category->addItem(QString());
    m_category->addItems(context.categories().keys());
    m_category->setCurrentText(defaults.stringValue(UserDefaultsKey::categoryForNewTnt));

    m_tags->setObjectName(QStringLiteral("tags"));
    m_tags->setMaximumHeight(96);
    const QStringList preselected =
        defaults.stringValue(UserDefaultsKey::tagsForNewTnt).split(u',', Qt::SkipEmptyParts);
    for (const QString &tag : context.tags()) {
        auto *item = new QListWidgetItem(tag, m_tags);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        const bool chosen = std::any_of(preselected.cbegin(), preselected.cend(),
                                        [&tag](const QString &wanted) { return wanted.trimmed() == tag; });
        item->setCheckState(chosen ? Qt::Checked : Qt::Unchecked);
    }

    m_rename->setObjectName(QStringLiteral("rename"));
    m_rename->setPlaceholderText(tntName);
    m_start->setObjectName(QStringLiteral("start"));
    m_start->setChecked(true);

    const QList<std::pair<QWidget *, const char *>> named{{m_management, "management"},
                                                          {m_contentLayout, "contentLayout"},
                                                          {m_stopCondition, "stopCondition"},
                                                          {m_topOfQueue, "topOfQueue"},
                                                          {m_skipChecking, "skipChecking"},
                                                          {m_sequential, "sequential"},
                                                          {m_firstLastPiece, "firstLastPiece"},
                                                          {m_dlLimit, "dlLimit"},
                                                          {m_upLimit, "upLimit"}};
    for (const auto &[widget, name] : named)
        widget->setObjectName(QString::fromLatin1(name));

    auto *form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(QCoreApplication::translate("AddTntOptionsForm", "Save at"), m_savePath);
    form->addRow(m_useDownloadPath, m_downloadPath);
    form->addRow(QCoreApplication::translate("AddTntOptionsForm", "Category"), m_category);
    form->addRow(QCoreApplication::translate("AddTntOptionsForm", "Tags"), m_tags);
    form->addRow(QCoreApplication::translate("AddTntOptionsForm", "Rename"), m_rename);
    form->addRow(QCoreApplication::translate("AddTntOptionsForm", "Torrent management"), m_management);
    form->addRow(QCoreApplication::translate("AddTntOptionsForm", "Content layout"), m_contentLayout);
    form->addRow(QCoreApplication::translate("AddTntOptionsForm", "Stop condition"), m_stopCondition);
    for (QCheckBox *box : {m_start, m_topOfQueue, m_skipChecking, m_sequential, m_firstLastPiece})
        form->addRow(box);
    form->addRow(QCoreApplication::translate("AddTntOptionsForm", "Download limit"), m_dlLimit);
    form->addRow(QCoreApplication::translate("AddTntOptionsForm", "Upload limit"), m_upLimit);
    form->addRow(QCoreApplication::translate("AddTntOptionsForm", "Ratio limit"), m_ratioLimit);
    form->addRow(QCoreApplication::translate("AddTntOptionsForm", "Seeding time limit"), m_seedingTimeLimit);
}

void AddTntOptionsForm::setSavePath(const QString &path)
{
    // The user's own choice is not overwritten by a late answer.
    if (m_savePath->text().isEmpty())
        m_savePath->setText(path);
}

bool AddTntOptionsForm::startsTnt() const
{
    return m_start->isChecked();
}

API::TntAddingOptions AddTntOptionsForm::options() const
{
    API::TntAddingOptions options;
    const auto text = [](const QString &value) -> std::optional<QString> {
        const QString trimmed = value.trimmed();
        return trimmed.isEmpty() ? std::nullopt : std::optional(trimmed);
    };
    const auto flag = [](const QCheckBox *box) { return box->isChecked() ? std::optional(true) : std::nullopt; };
    options.savepath = text(m_savePath->text());
    if (m_useDownloadPath->isChecked()) {
        options.useDownloadPath = true;
        options.downloadPath = text(m_downloadPath->text());
    }
    options.category = text(m_category->currentText());
    QStringList tags;
    for (int row = 0; row < m_tags->count(); ++row) {
        if (m_tags->item(row)->checkState() == Qt::Checked)
            tags << m_tags->item(row)->text();
    }
    options.tags = text(tags.join(u','));
    options.rename = text(m_rename->text());
    options.autoTMM = choice(m_management, QList<bool>{false, true});
    options.contentLayout = choice(m_contentLayout, QList<API::TntContentLayout>{API::TntContentLayout::original,
                                                                                 API::TntContentLayout::subfolder,
                                                                                 API::TntContentLayout::noSubfolder});
    options.stopCondition = choice(m_stopCondition, QList<API::TntStopCondition>{API::TntStopCondition::none,
                                                                                 API::TntStopCondition::metaReceived,
                                                                                 API::TntStopCondition::filesChecked});
    options.addToTopOfQueue = flag(m_topOfQueue);
    options.skipChecking = flag(m_skipChecking);
    options.sequentialDownload = flag(m_sequential);
    options.firstLastPiecePrio = flag(m_firstLastPiece);
    if (m_dlLimit->value() > 0)
        options.dlLimit = m_dlLimit->value() * kibibyte;
    if (m_upLimit->value() > 0)
        options.upLimit = m_upLimit->value() * kibibyte;
    // Unset is the server's global limit (-2 on the wire); -1 is none.
    options.ratioLimit = m_ratioLimit->chosen();
    if (const std::optional<double> minutes = m_seedingTimeLimit->chosen())
        options.seedingTimeLimit = static_cast<qint64>(*minutes);
    return options;
}
