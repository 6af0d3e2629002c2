#pragma once

#include <QVariant>
#include <QWidget>

#include <functional>
#include <vector>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QSpinBox;

// One page of the settings window. What the user changes stays on the page until the window
// applies it, so Cancel leaves every stored value as it was.
class SettingsPage : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    virtual bool hasChanges() const = 0;
    // Whether what the page holds may be stored; a field that may not is marked on the page.
    virtual bool isValid() const { return true; }
    // Stores what changed; the page then shows the stored values as its starting point.
    virtual void apply() = 0;

Q_SIGNALS:
    void edited();
};

// A page of fields each bound to one stored value: the field starts with it, and applying writes
// the field's value back when it differs.
class BoundSettingsPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit BoundSettingsPage(QWidget *parent = nullptr);

    bool hasChanges() const override;
    void apply() override;

protected:
    struct Binding
    {
        QWidget *field;
        std::function<QVariant()> read;
        std::function<void(const QVariant &)> write;
    };

    QFormLayout *form() const { return m_form; }
    QCheckBox *addSwitch(const QString &title, std::function<bool()> read, std::function<void(bool)> write);
    QSpinBox *addNumber(const QString &label, int minimum, int maximum, const QString &suffix,
                        std::function<int()> read, std::function<void(int)> write);
    QComboBox *addChoice(const QString &label, const QStringList &choices, std::function<QString()> read,
                         std::function<void(const QString &)> write);
    void addSection(const QString &title);

    static QVariant shown(const QWidget *field);
    static void show(QWidget *field, const QVariant &value);

private:
    void bind(Binding binding);

    QFormLayout *m_form;
    std::vector<Binding> m_bindings;
};
