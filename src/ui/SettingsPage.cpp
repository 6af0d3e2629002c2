#include "ui/SettingsPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>

BoundSettingsPage::BoundSettingsPage(QWidget *parent)
    : SettingsPage(parent)
    , m_form(new QFormLayout(this))
{
}

bool BoundSettingsPage::hasChanges() const
{
    return std::any_of(m_bindings.cbegin(), m_bindings.cend(),
                       [](const Binding &binding) { return shown(binding.field) != binding.read(); });
}

void BoundSettingsPage::apply()
{
    for (const Binding &binding : m_bindings) {
        const QVariant value = shown(binding.field);
        if (value != binding.read())
            binding.write(value);
        // What the store kept, which a bound may have changed.
        show(binding.field, binding.read());
    }
}

QVariant BoundSettingsPage::shown(const QWidget *field)
{
    if (const auto *box = qobject_cast<const QCheckBox *>(field))
        return box->isChecked();
    if (const auto *spin = qobject_cast<const QSpinBox *>(field))
        return spin->value();
    if (const auto *combo = qobject_cast<const QComboBox *>(field))
        return combo->currentText();
    return {};
}

void BoundSettingsPage::show(QWidget *field, const QVariant &value)
{
    if (auto *box = qobject_cast<QCheckBox *>(field))
        box->setChecked(value.toBool());
    else if (auto *spin = qobject_cast<QSpinBox *>(field))
        spin->setValue(value.toInt());
    else if (auto *combo = qobject_cast<QComboBox *>(field))
        combo->setCurrentText(value.toString());
}

void BoundSettingsPage::bind(Binding binding)
{
    show(binding.field, binding.read());
    m_bindings.push_back(std::move(binding));
}

QCheckBox *BoundSettingsPage::addSwitch(const QString &title, std::function<bool()> read,
                                        std::function<void(bool)> write)
{
    auto *box = new QCheckBox(title, this);
    m_form->addRow(box);
    bind({box, [read] { return QVariant(read()); }, [write](const QVariant &value) { write(value.toBool()); }});
    connect(box, &QCheckBox::toggled, this, &SettingsPage::edited);
    return box;
}

QSpinBox *BoundSettingsPage::addNumber(const QString &label, int minimum, int maximum, const QString &suffix,
                                       std::function<int()> read, std::function<void(int)> write)
{
    auto *spin = new QSpinBox(this);
    // The stored bounds, offered as they are: a value outside them cannot be typed.
    spin->setRange(minimum, maximum);
    spin->setSuffix(suffix);
    m_form->addRow(label, spin);
    bind({spin, [read] { return QVariant(read()); }, [write](const QVariant &value) { write(value.toInt()); }});
    connect(spin, &QSpinBox::valueChanged, this, &SettingsPage::edited);
    return spin;
}

QComboBox *BoundSettingsPage::addChoice(const QString &label, const QStringList &choices,
                                        std::function<QString()> read, std::function<void(const QString &)> write)
{
    auto *combo = new QComboBox(this);
    combo->addItems(choices);
    if (!choices.contains(read()))
        combo->addItem(read()); // a stored choice this desktop lacks stays chosen
    m_form->addRow(label, combo);
    bind({combo, [read] { return QVariant(read()); },
          [write](const QVariant &value) { write(value.toString()); }});
    connect(combo, &QComboBox::currentTextChanged, this, &SettingsPage::edited);
    return combo;
}

void BoundSettingsPage::addSection(const QString &title)
{
    auto *label = new QLabel(QStringLiteral("<b>%1</b>").arg(title.toHtmlEscaped()), this);
    m_form->addRow(label);
}
