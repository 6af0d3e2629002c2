#pragma once

#include <QDialog>
#include <QList>
#include <QSet>

class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QSpinBox;
class QPushButton;

// A small modal sheet of text fields over the window: the torrent editors (location, name,
// category, tags, peers, trackers) differ only in their texts and fields. The action button stays
// disabled while a required field holds nothing but spaces, so empty input never reaches the server.
class EditorSheet : public QDialog
{
    Q_OBJECT

public:
    EditorSheet(const QString &title, const QString &actionTitle, QWidget *parent);

    QLineEdit *addLine(const QString &label, const QString &placeholder, const QString &text = {},
                       bool required = true);
    // A multi-line field with `prompt` above it; one entry per line.
    QPlainTextEdit *addLines(const QString &prompt, const QString &hint);
    void addHint(const QString &hint);
    // A rate in KiB/s with a slider beside it; 0 reads "Unlimited".
    QSpinBox *addRate(const QString &label);
    // A required line with a button beside it that picks a folder into it; the button shows
    // `chooseText` when given (an icon otherwise) and the folder dialog `chooseCaption`.
    QLineEdit *addFolderLine(const QString &label, const QString &placeholder, const QString &text = {},
                             const QString &chooseText = {}, const QString &chooseCaption = {});

    QPushButton *actionButton() const { return m_action; }

    // The lines of a multi-line field, trimmed, without empty ones.
    static QStringList entries(const QString &text);
    // Space-separated words, duplicates collapsed.
    static QSet<QString> words(const QString &text);

private:
    void updateAction();

    QFormLayout *m_form;
    QDialogButtonBox *m_buttons;
    QPushButton *m_action;
    QList<QLineEdit *> m_requiredLines;
    QList<QPlainTextEdit *> m_requiredTexts;
};
