#include "ui/EditorSheet.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSet>
#include <QSlider>
#include <QSpinBox>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

EditorSheet::EditorSheet(const QString &title, const QString &actionTitle, QWidget *parent)
    : QDialog(parent)
    , m_form(new QFormLayout)
    , m_buttons(new QDialogButtonBox(this))
    , m_action(m_buttons->addButton(actionTitle, QDialogButtonBox::AcceptRole))
{
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    m_buttons->addButton(QCoreApplication::translate("EditorSheet", "Cancel"), QDialogButtonBox::RejectRole);
    m_action->setDefault(true);
    auto *layout = new QVBoxLayout(this);
    if (!title.isEmpty()) {
        auto *heading = new QLabel(title, this);
        QFont font = heading->font();
        font.setBold(true);
        heading->setFont(font);
        layout->addWidget(heading);
    }
    layout->addLayout(m_form);
    layout->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    updateAction();
}

QLineEdit *EditorSheet::addLine(const QString &label, const QString &placeholder, const QString &text, bool required)
{
    auto *field = new QLineEdit(text, this);
    field->setPlaceholderText(placeholder);
    field->setMinimumWidth(320);
    m_form->addRow(label, field);
    if (required) {
        m_requiredLines.append(field);
        connect(field, &QLineEdit::textChanged, this, &EditorSheet::updateAction);
    }
    updateAction();
    return field;
}

QSpinBox *EditorSheet::addRate(const QString &label)
{
    auto *row = new QHBoxLayout;
    auto *slider = new QSlider(Qt::Horizontal, this);
    // The slider covers the usual rates; the field takes any.
    slider->setRange(0, 100'000);
    slider->setMinimumWidth(220);
    auto *field = new QSpinBox(this);
    // The server reads bytes per second as an int.
    field->setRange(0, std::numeric_limits<int>::max() / 1024);
    field->setSuffix(QCoreApplication::translate("EditorSheet", " KiB/s"));
    field->setSpecialValueText(QCoreApplication::translate("EditorSheet", "Unlimited"));
    field->setAccessibleName(label);
    connect(slider, &QSlider::valueChanged, field, [field](int value) {
        if (value != std::min(field->value(), 100'000))
            field->setValue(value);
    });
    connect(field, &QSpinBox::valueChanged, slider,
            [slider](int value) { slider->setValue(std::min(value, 100'000)); });
    row->addWidget(slider, 1);
    row->addWidget(field);
    m_form->addRow(label, row);
    return field;
}

void EditorSheet::addRow(const QString &label, QWidget *field)
{
    m_form->addRow(label, field);
}

QPlainTextEdit *EditorSheet::addLines(const QString &prompt, const QString &hint)
{
    m_form->addRow(new QLabel(prompt, this));
    auto *field = new QPlainTextEdit(this);
    field->setMinimumSize(420, 140);
    m_form->addRow(field);
    if (!hint.isEmpty())
        addHint(hint);
    m_requiredTexts.append(field);
    connect(field, &QPlainTextEdit::textChanged, this, &EditorSheet::updateAction);
    updateAction();
    return field;
}

void EditorSheet::addHint(const QString &hint)
{
    auto *label = new QLabel(hint, this);
    label->setForegroundRole(QPalette::PlaceholderText);
    m_form->addRow(label);
}

QLineEdit *EditorSheet::addFolderLine(const QString &label, const QString &placeholder, const QString &text,
                                      const QString &chooseText, const QString &chooseCaption)
{
    auto *row = new QWidget(this);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *field = new QLineEdit(text, row);
    field->setPlaceholderText(placeholder);
    field->setMinimumWidth(320);
    auto *browse = new QToolButton(row);
    browse->setObjectName(QStringLiteral("chooseFolder"));
    browse->setIcon(QIcon::fromTheme(QStringLiteral("folder-open"), style()->standardIcon(QStyle::SP_DirOpenIcon)));
    if (!chooseText.isEmpty()) {
        browse->setText(chooseText);
        browse->setToolButtonStyle(Qt::ToolButtonTextOnly);
    }
    layout->addWidget(field, 1);
    layout->addWidget(browse);
    m_form->addRow(label, row);
    m_requiredLines.append(field);
    connect(field, &QLineEdit::textChanged, this, &EditorSheet::updateAction);
    // The folder dialog sees this computer's folders: right for a local server or a shared mount.
    connect(browse, &QToolButton::clicked, this, [this, field, chooseCaption] {
        const QString folder = QFileDialog::getExistingDirectory(this, chooseCaption, field->text());
        if (!folder.isEmpty())
            field->setText(folder);
    });
    updateAction();
    return field;
}

void EditorSheet::updateAction()
{
    bool filled = true;
    for (const QLineEdit *field : std::as_const(m_requiredLines))
        filled = filled && !field->text().trimmed().isEmpty();
    for (const QPlainTextEdit *field : std::as_const(m_requiredTexts))
        filled = filled && !entries(field->toPlainText()).isEmpty();
    m_action->setEnabled(filled);
}

QStringList EditorSheet::entries(const QString &text)
{
    QStringList result;
    for (const QString &line : text.split(u'\n')) {
        if (const QString entry = line.trimmed(); !entry.isEmpty())
            result.append(entry);
    }
    return result;
}

QSet<QString> EditorSheet::words(const QString &text)
{
    QSet<QString> result;
    for (const QString &word : text.split(u' ', Qt::SkipEmptyParts))
        result.insert(word.trimmed());
    result.remove(QString());
    return result;
}
