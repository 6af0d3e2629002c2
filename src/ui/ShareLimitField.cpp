#include "ui/ShareLimitField.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QSpinBox>

namespace {
enum Choice { serverSetting, noLimit, limit };
}

ShareLimitField::ShareLimitField(Kind kind, const QString &name, const QString &serverSetting, QWidget *parent)
    : QWidget(parent)
    , m_choice(new QComboBox(this))
{
    m_choice->addItems({serverSetting, QCoreApplication::translate("ShareLimitField", "No limit"),
                        QCoreApplication::translate("ShareLimitField", "Limit to")});
    m_choice->setObjectName(name + QStringLiteral("Choice"));
    QWidget *value = nullptr;
    if (kind == Kind::ratio) {
        m_ratio = new QDoubleSpinBox(this);
        m_ratio->setRange(0, 1'000'000);
        m_ratio->setSingleStep(0.1);
        value = m_ratio;
    } else {
        m_minutes = new QSpinBox(this);
        m_minutes->setRange(0, 1'000'000'000);
        m_minutes->setSuffix(QCoreApplication::translate("ShareLimitField", " min"));
        value = m_minutes;
    }
    value->setObjectName(name);
    value->setEnabled(false);
    connect(m_choice, &QComboBox::currentIndexChanged, value,
            [value](int index) { value->setEnabled(index == limit); });
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_choice);
    layout->addWidget(value, 1);
}

std::optional<double> ShareLimitField::chosen() const
{
    switch (m_choice->currentIndex()) {
    case noLimit: return -1;
    case limit: return m_ratio ? m_ratio->value() : m_minutes->value();
    default: return std::nullopt;
    }
}

void ShareLimitField::setWireValue(double value)
{
    if (value >= 0) {
        if (m_ratio)
            m_ratio->setValue(value);
        else
            m_minutes->setValue(static_cast<int>(std::min<double>(value, m_minutes->maximum())));
    }
    m_choice->setCurrentIndex(value >= 0 ? limit : value > -1.5 ? noLimit : serverSetting);
}
