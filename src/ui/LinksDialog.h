#pragma once

#include <QDialog>
#include <QStringList>

class QLabel;
class QPlainTextEdit;
class QPushButton;

// Links to add, one per line: magnet links, http(s) links to .torrent files and info-hashes. Add
// stays disabled while there is nothing, or a line that is none of these, which it names.
class LinksDialog : public QDialog
{
    Q_OBJECT

public:
    explicit LinksDialog(const QString &text = {}, QWidget *parent = nullptr);

    QPlainTextEdit *textField() const { return m_text; }
    QPushButton *addButton() const { return m_add; }
    // What Add sends: the links, hashes made magnet links.
    QStringList urls() const;

private:
    void check();

    QPlainTextEdit *m_text;
    QLabel *m_problem;
    QPushButton *m_add;
};
