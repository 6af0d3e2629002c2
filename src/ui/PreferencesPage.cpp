#include "ui/PreferencesPage.h"

#include "api/Client.h"
#include "api/NetworkInterface.h"
#include "api/QBTPreferences.h"
#include "support/Captured.h"
#include "support/Detached.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include <limits>

using API::PreferenceType;

namespace {

constexpr int intMaximum = std::numeric_limits<int>::max();

const QString interfaceKey = QStringLiteral("currentNetworkInterface");
const QString interfaceNameKey = QStringLiteral("currentInterfaceName");
const QString addressKey = QStringLiteral("currentInterfaceAddress");

// Fills a picker with (text, value) choices, keeping its value chosen, listed or not.
void offer(QComboBox &combo, const QList<std::pair<QString, QString>> &choices)
{
    const QString current = combo.currentData().toString();
    combo.clear();
    for (const auto &[text, value] : choices)
        combo.addItem(text, value);
    if (combo.findData(current) < 0)
        combo.addItem(current, current);
    combo.setCurrentIndex(combo.findData(current));
}

// Text the server must not be given empty: it would save downloads nowhere.
bool isRequired(const API::PreferenceKey &key)
{
    return key.key == u"savePath";
}

} // namespace

PreferencesPage::PreferencesPage(API::QBTPreferences &record, API::PreferenceGroup group, API::Client *client,
                                 QWidget *parent)
    : SettingsPage(parent)
    , m_record(record)
    , m_group(group)
    , m_client(client)
    , m_form(new QFormLayout(this))
{
    for (const API::PreferenceKey &key : API::preferenceKeys()) {
        if (key.group == group && m_record.value(key.key))
            addField(key);
    }
    if (findChild<QComboBox *>(interfaceKey))
        detached(listInterfaces());
    if (m_form->rowCount() == 0)
        m_form->addRow(new QLabel(
            QCoreApplication::translate("PreferencesPage", "This server has no preferences of this group."), this));
}

bool PreferencesPage::hasChanges() const
{
    const QJsonObject changes = m_record.changes();
    for (const API::PreferenceKey &key : API::preferenceKeys()) {
        if (key.group == m_group && changes.contains(key.wireKey))
            return true;
    }
    return false;
}

bool PreferencesPage::isValid() const
{
    return m_emptyRequired.isEmpty();
}

QWidget *PreferencesPage::field(const QString &key) const
{
    return findChild<QWidget *>(key);
}

void PreferencesPage::set(const API::PreferenceKey &key, const auto &value)
{
    m_record.setValue(key.key, API::PreferenceValue(value));
    Q_EMIT edited();
}

void PreferencesPage::addField(const API::PreferenceKey &key)
{
    const API::PreferenceValue value = *m_record.value(key.key);
    const QString title = QCoreApplication::translate("Preferences", key.title.toUtf8().constData());
    QWidget *field = nullptr;
    switch (key.type) {
    case PreferenceType::boolean: {
        auto *box = new QCheckBox(title, this);
        box->setChecked(std::get<bool>(value));
        connect(box, &QCheckBox::toggled, this, [this, &key](bool on) { set(key, on); });
        box->setObjectName(key.key);
        m_form->addRow(box);
        return;
    }
    case PreferenceType::integer: {
        const qint64 number = std::get<qint64>(value);
        auto *spin = new QSpinBox(this);
        // What the server takes: a value outside cannot be typed, so none is sent.
        const auto [minimum, maximum] = key.range.value_or(std::pair<qint64, qint64>{-intMaximum, intMaximum});
        spin->setRange(static_cast<int>(std::clamp<qint64>(minimum, -intMaximum, intMaximum)),
                       static_cast<int>(std::clamp<qint64>(maximum, -intMaximum, intMaximum)));
        spin->setValue(static_cast<int>(std::clamp<qint64>(number, spin->minimum(), spin->maximum())));
        spin->setEnabled(number == spin->value()); // a value beyond the field stays as it is
        connect(spin, &QSpinBox::valueChanged, this, [this, &key](int typed) { set(key, qint64(typed)); });
        field = spin;
        break;
    }
    case PreferenceType::rate: {
        auto *spin = new QSpinBox(this);
        spin->setRange(0, intMaximum);
        spin->setSuffix(QCoreApplication::translate("PreferencesPage", " KiB/s"));
        spin->setSpecialValueText(QCoreApplication::translate("PreferencesPage", "No limit"));
        spin->setValue(static_cast<int>(std::get<API::DataRate>(value).bytesPerSecond / rateUnit));
        connect(spin, &QSpinBox::valueChanged, this,
                [this, &key](int kib) { set(key, API::DataRate{qint64(kib) * rateUnit}); });
        field = spin;
        break;
    }
    case PreferenceType::real: {
        auto *spin = new QDoubleSpinBox(this);
        spin->setRange(-1, 1'000'000);
        spin->setDecimals(2);
        spin->setValue(std::get<double>(value));
        connect(spin, &QDoubleSpinBox::valueChanged, this, [this, &key](double typed) { set(key, typed); });
        field = spin;
        break;
    }
    case PreferenceType::string: {
        if (key.key == interfaceKey || key.key == addressKey) {
            field = picker(key);
            break;
        }
        auto *line = new QLineEdit(std::get<QString>(value), this);
        connect(line, &QLineEdit::textEdited, this, [this, &key, line, title](const QString &text) {
            const bool missing = isRequired(key) && text.trimmed().isEmpty();
            line->setProperty("invalid", missing);
            line->setStyleSheet(missing ? QStringLiteral("border: 1px solid #b3261e") : QString());
            line->setToolTip(missing
                                 ? QCoreApplication::translate("PreferencesPage", "%1 must not be empty.").arg(title)
                                 : QString());
            if (missing)
                m_emptyRequired.insert(key.key);
            else
                m_emptyRequired.remove(key.key);
            set(key, text);
        });
        field = line;
        break;
    }
    case PreferenceType::enumeration: {
        const API::EnumChoice choice = std::get<API::EnumChoice>(value);
        auto *combo = new QComboBox(this);
        for (const API::EnumCase &enumCase : choice.enumeration->cases)
            combo->addItem(QCoreApplication::translate("Preferences", enumCase.text.toUtf8().constData(),
                                                       choice.enumeration->comment));
        combo->setCurrentIndex(static_cast<int>(choice.index));
        connect(combo, &QComboBox::currentIndexChanged, this, [this, &key, choice](int index) {
            set(key, API::EnumChoice{choice.enumeration, index});
        });
        field = combo;
        break;
    }
    case PreferenceType::scanDirs: field = scanDirsEditor(key); break;
    }
    field->setObjectName(key.key);
    m_form->addRow(title + u':', field);
}

QComboBox *PreferencesPage::picker(const API::PreferenceKey &key)
{
    auto *combo = new QComboBox(this);
    const QString current = std::get<QString>(*m_record.value(key.key));
    combo->addItem(current, current); // until the server's list comes
    connect(combo, &QComboBox::activated, this, [this, &key, combo](int index) {
        const QString chosen = combo->itemData(index).toString();
        set(key, chosen);
        if (key.key != interfaceKey)
            return;
        if (m_record.value(interfaceNameKey))
            set(*API::findPreference(interfaceNameKey), index == 0 ? QString() : combo->itemText(index));
        detached(listAddresses(chosen));
    });
    return combo;
}

QCoro::Task<> PreferencesPage::listInterfaces()
{
    const QPointer<PreferencesPage> self = this;
    if (!m_client)
        co_return;
    QCoro::Task<Captured<QList<API::NetworkInterface>>> listing = captured(m_client->networkInterfaces());
    const Captured<QList<API::NetworkInterface>> answer = co_await std::move(listing);
    if (!self || !answer)
        co_return; // the current value stays, as text
    auto *combo = findChild<QComboBox *>(interfaceKey);
    const QString current = combo->currentData().toString();
    QList<std::pair<QString, QString>> choices;
    for (const API::NetworkInterface &choice : API::NetworkInterface::choices(*answer.value))
        choices.append({choice.name, choice.value});
    offer(*combo, choices);
    QCoro::Task<> addresses = listAddresses(current);
    co_await std::move(addresses);
}

QCoro::Task<> PreferencesPage::listAddresses(QString interfaceValue)
{
    const QPointer<PreferencesPage> self = this;
    auto *combo = findChild<QComboBox *>(addressKey);
    if (!m_client || !combo)
        co_return;
    QCoro::Task<Captured<QList<API::NetworkAddress>>> listing =
        captured(m_client->networkAddresses(std::move(interfaceValue)));
    const Captured<QList<API::NetworkAddress>> answer = co_await std::move(listing);
    if (!self || !answer)
        co_return;
    QList<std::pair<QString, QString>> choices;
    for (const API::AddressChoice &choice : API::AddressChoice::choices(*answer.value))
        choices.append({choice.text, choice.value});
    offer(*combo, choices);
}

QWidget *PreferencesPage::scanDirsEditor(const API::PreferenceKey &key)
{
    auto *editor = new QWidget(this);
    auto *layout = new QVBoxLayout(editor);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *table = new QTableWidget(0, 2, editor);
    table->setObjectName(QStringLiteral("scanDirsTable"));
    table->setHorizontalHeaderLabels({QCoreApplication::translate("PreferencesPage", "Monitored Folder"),
                                      QCoreApplication::translate("PreferencesPage", "Save to")});
    table->horizontalHeader()->setStretchLastSection(true);
    table->verticalHeader()->hide();
    table->setToolTip(API::ScanDir::savePathHelp());
    using SavePath = API::ScanDir::SavePath;
    const auto shownTarget = [](const API::ScanDir &dir) {
        return dir.savePath == SavePath::other ? dir.otherPath : API::ScanDir::savePathText(dir.savePath);
    };
    const QList<API::ScanDir> read = std::get<QList<API::ScanDir>>(*m_record.value(key.key));
    for (const API::ScanDir &dir : read) {
        const int row = table->rowCount();
        table->insertRow(row);
        table->setItem(row, 0, new QTableWidgetItem(dir.path));
        table->setItem(row, 1, new QTableWidgetItem(shownTarget(dir)));
    }
    layout->addWidget(table);
    auto *buttons = new QHBoxLayout;
    auto *add = new QPushButton(QCoreApplication::translate("PreferencesPage", "Add Folder"), editor);
    auto *remove = new QPushButton(QCoreApplication::translate("PreferencesPage", "Remove Folder"), editor);
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addStretch(1);
    layout->addLayout(buttons);

    // The table is read whole into the record after every edit; rows without a folder wait.
    const auto store = [this, &key, table] {
        QList<API::ScanDir> dirs;
        for (int row = 0; row < table->rowCount(); ++row) {
            const QString path = table->item(row, 0) ? table->item(row, 0)->text().trimmed() : QString();
            const QString target = table->item(row, 1) ? table->item(row, 1)->text().trimmed() : QString();
            if (path.isEmpty())
                continue;
            API::ScanDir dir{path, SavePath::other, target};
            for (const SavePath named : {SavePath::monitoredFolder, SavePath::defaultSavePath}) {
                if (target.isEmpty() || target == API::ScanDir::savePathText(named)) {
                    dir.savePath = target.isEmpty() ? SavePath::monitoredFolder : named;
                    dir.otherPath.clear();
                }
            }
            if (std::any_of(dirs.cbegin(), dirs.cend(), [&dir](const API::ScanDir &d) { return d.path == dir.path; }))
                continue; // a folder is watched once; the first row holds it
            dirs.append(dir);
        }
        set(key, dirs);
    };
    connect(table, &QTableWidget::itemChanged, this, store);
    connect(add, &QPushButton::clicked, table, [table] {
        const int row = table->rowCount();
        table->insertRow(row);
        table->setItem(row, 1, new QTableWidgetItem(API::ScanDir::savePathText(SavePath::monitoredFolder)));
        table->editItem(table->item(row, 1));
        table->setCurrentCell(row, 0);
    });
    connect(remove, &QPushButton::clicked, table, [table, store] {
        if (table->currentRow() >= 0) {
            table->removeRow(table->currentRow());
            store();
        }
    });
    return editor;
}
