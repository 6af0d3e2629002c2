#include "ui/LocalDaemonSheet.h"

#include "daemon/LocalDaemonInstaller.h"
#include "ui/PlatformTexts.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

using Kind = LocalDaemonInstaller::Phase::Kind;

LocalDaemonSheet::LocalDaemonSheet(LocalDaemonInstaller &installer, QWidget *parent)
    : QDialog(parent)
    , m_installer(installer)
    , m_status(new QLabel(this))
    , m_detail(new QLabel(this))
    , m_progress(new QProgressBar(this))
{
    setWindowTitle(QCoreApplication::translate("LocalDaemonSheet", "Install on %1").arg(PlatformTexts::thisMac()));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setMinimumWidth(460);
    QFont bold = m_status->font();
    bold.setBold(true);
    m_status->setFont(bold);
    m_status->setWordWrap(true);
    m_detail->setWordWrap(true);
    m_detail->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_progress->setRange(0, LocalDaemonInstaller::maxPollAttempts);

    auto *buttons = new QDialogButtonBox(this);
    m_tryAgain =
        buttons->addButton(QCoreApplication::translate("LocalDaemonSheet", "Try Again"), QDialogButtonBox::ActionRole);
    m_cancel =
        buttons->addButton(QCoreApplication::translate("LocalDaemonSheet", "Cancel"), QDialogButtonBox::RejectRole);
    connect(m_tryAgain, &QPushButton::clicked, &m_installer, [this] {
        m_copiedCommand = false;
        m_installer.install();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // Closing the sheet in any way stops the wait; what the terminal does goes on.
    connect(this, &QDialog::rejected, &m_installer, [this] {
        if (m_installer.phase().kind != Kind::finished)
            m_installer.cancel();
    });

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_status);
    layout->addWidget(m_detail);
    layout->addWidget(m_progress);
    layout->addWidget(buttons);
    connect(&m_installer, &LocalDaemonInstaller::phaseChanged, this, &LocalDaemonSheet::showPhase);
    showPhase();
}

void LocalDaemonSheet::showPhase()
{
    const LocalDaemonInstaller::Phase &phase = m_installer.phase();
    const QString attempts = QCoreApplication::translate("LocalDaemonSheet", "Attempt %1 of %2.")
                                 .arg(phase.attempt)
                                 .arg(LocalDaemonInstaller::maxPollAttempts);
    m_tryAgain->setVisible(phase.kind == Kind::failed || phase.kind == Kind::automationDenied);
    m_progress->setVisible(phase.kind == Kind::preparing || phase.kind == Kind::waiting);
    m_progress->setValue(phase.attempt);
    switch (phase.kind) {
    case Kind::idle:
    case Kind::preparing:
        m_status->setText(QCoreApplication::translate("LocalDaemonSheet", "Preparing the installation…"));
        m_detail->setText(QCoreApplication::translate("LocalDaemonSheet",
                                                      "Downloads go to the Torrents folder in your home folder."));
        break;
    case Kind::waiting:
        m_status->setText(QCoreApplication::translate("LocalDaemonSheet", "Waiting for qBittorrent to start…"));
        m_detail->setText(attempts);
        break;
    case Kind::automationDenied:
        if (!m_copiedCommand) {
            QGuiApplication::clipboard()->setText(m_installer.command());
            m_copiedCommand = true;
        }
        m_status->setText(
            QCoreApplication::translate("LocalDaemonSheet", "Quillo couldn't find a terminal to run the installation"));
        m_detail->setText(
            QCoreApplication::translate("LocalDaemonSheet",
                                        "The install command is copied to the clipboard.\n"
                                        "Open a terminal, paste the command with Ctrl+Shift+V and press Return. "
                                        "Quillo connects to qBittorrent as soon as it starts.\n") +
            attempts);
        break;
    case Kind::failed:
        m_status->setText(QCoreApplication::translate("LocalDaemonSheet", "qBittorrent wasn't installed"));
        m_detail->setText(phase.message);
        break;
    case Kind::finished: accept(); break;
    }
}
