#include "ui/LocalDaemonFlow.h"

#include "daemon/DaemonCommand.h"
#include "daemon/LocalDaemonUninstaller.h"
#include "daemon/TerminalRunner.h"
#include "support/Detached.h"
#include "ui/LocalDaemonSheet.h"
#include "ui/PlatformTexts.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>

LocalDaemonFlow::LocalDaemonFlow(AppContext &context, QWidget *window, std::unique_ptr<CommandRunner> runner,
                                 QString scriptPath)
    : QObject(window)
    , m_context(context)
    , m_window(window)
    , m_runner(runner ? std::move(runner) : std::make_unique<TerminalRunner>())
    , m_scriptPath(scriptPath.isEmpty() ? DaemonCommand::locateScript() : std::move(scriptPath))
    , m_installer(context, *m_runner, m_scriptPath)
{}

LocalDaemonFlow::~LocalDaemonFlow() = default;

LocalDaemonSheet *LocalDaemonFlow::install()
{
    if (!m_sheet)
        m_sheet = new LocalDaemonSheet(m_installer, m_window);
    if (!m_installer.isRunning())
        m_installer.install();
    m_sheet->open();
    return m_sheet;
}

QMessageBox *LocalDaemonFlow::confirmUninstall()
{
    const QString title =
        QCoreApplication::translate("LocalDaemonFlow", "Uninstall qBittorrent from %1").arg(PlatformTexts::thisMac());
    auto *box = new QMessageBox(QMessageBox::Warning, title, title, QMessageBox::NoButton, m_window);
    box->setInformativeText(QCoreApplication::translate(
        "LocalDaemonFlow", "Quillo will stop qBittorrent and remove it from this computer. "
                           "The connection and its password are removed from Quillo.\n"
                           "Downloaded files and qBittorrent settings are kept for a future installation."));
    QPushButton *remove =
        box->addButton(QCoreApplication::translate("LocalDaemonFlow", "Delete"), QMessageBox::DestructiveRole);
    box->setDefaultButton(
        box->addButton(QCoreApplication::translate("LocalDaemonFlow", "Cancel"), QMessageBox::RejectRole));
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QMessageBox::finished, this, [this, box, remove] {
        if (box->clickedButton() == remove)
            detached(uninstall());
    });
    box->open();
    return box;
}

QCoro::Task<> LocalDaemonFlow::uninstall()
{
    const QPointer<LocalDaemonFlow> self(this);
    LocalDaemonUninstaller uninstaller(m_context, *m_runner, m_scriptPath);
    const LocalDaemonUninstaller::Outcome outcome = co_await uninstaller.uninstall();
    if (!self)
        co_return;
    using Outcome = LocalDaemonUninstaller::Outcome;
    switch (outcome) {
    case Outcome::removed: break;
    case Outcome::pasteRequired:
        QGuiApplication::clipboard()->setText(uninstaller.command());
        inform(QCoreApplication::translate("LocalDaemonFlow", "qBittorrent is stopped, but not removed"),
               QCoreApplication::translate(
                   "LocalDaemonFlow",
                   "The uninstall command is copied to the clipboard. Open a terminal, paste the command "
                   "with Ctrl+Shift+V and press Return.\n\n") +
                   uninstaller.command());
        break;
    case Outcome::terminalFailed:
        inform(QCoreApplication::translate("LocalDaemonFlow",
                                           "Quillo couldn't open a terminal. qBittorrent wasn't uninstalled."),
               {});
        break;
    case Outcome::scriptMissing:
        inform(QCoreApplication::translate("LocalDaemonFlow", "The installer script is missing from the installation."),
               {});
        break;
    }
}

QMessageBox *LocalDaemonFlow::inform(const QString &text, const QString &details)
{
    auto *box = new QMessageBox(QMessageBox::Information, text, text, QMessageBox::Ok, m_window);
    box->setInformativeText(details);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
    return box;
}
