#include "ui/LinksDialog.h"

#include "adding/TntLinks.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

LinksDialog::LinksDialog(const QString &text, QWidget *parent)
    : QDialog(parent)
    , m_text(new QPlainTextEdit(this))
    , m_problem(new QLabel(this))
{
    setWindowTitle(QCoreApplication::translate("LinksDialog", "Add Links"));
    resize(560, 320);
    auto *prompt = new QLabel(QCoreApplication::translate(
                                  "LinksDialog", "Magnet links, links to .torrent files or info-hashes, one per line"),
                              this);
    m_problem->setObjectName(QStringLiteral("problem"));
    m_problem->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(this);
    m_add = buttons->addButton(QCoreApplication::translate("LinksDialog", "Add"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_text, &QPlainTextEdit::textChanged, this, &LinksDialog::check);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(prompt);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_problem);
    layout->addWidget(buttons);
    m_text->setPlainText(text);
    check();
}

QStringList LinksDialog::urls() const
{
    return TntLinks::parse(m_text->toPlainText()).urls;
}

void LinksDialog::check()
{
    const TntLinks links = TntLinks::parse(m_text->toPlainText());
    m_problem->setText(
        links.rejected.isEmpty()
            ? QString()
            : QCoreApplication::translate("LinksDialog", "Not a link or info-hash: %1").arg(links.rejected.first()));
    m_add->setEnabled(!links.urls.isEmpty() && links.rejected.isEmpty());
}
