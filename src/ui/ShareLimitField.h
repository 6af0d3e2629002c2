#pragma once

#include <QWidget>

#include <optional>

class QComboBox;
class QDoubleSpinBox;
class QSpinBox;

// One share limit: the server's own setting, no limit, or a value (a ratio, or minutes of
// seeding). On the wire -2 is the server's setting and -1 no limit.
class ShareLimitField : public QWidget
{
    Q_OBJECT

public:
    enum class Kind { ratio, minutes };

    // `name` names the value field, and the choice with "Choice" after it.
    ShareLimitField(Kind kind, const QString &name, const QString &serverSetting, QWidget *parent);

    // None while the server's own setting is chosen; -1 for no limit.
    std::optional<double> chosen() const;
    double wireValue() const { return chosen().value_or(-2); }
    void setWireValue(double value);

private:
    QComboBox *m_choice;
    QDoubleSpinBox *m_ratio = nullptr;
    QSpinBox *m_minutes = nullptr;
};
