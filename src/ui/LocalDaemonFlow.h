#pragma once

#include "daemon/LocalDaemonInstaller.h"
#include "daemon/TerminalRunner.h"

#include <QObject>
#include <QPointer>

#include <memory>

class AppContext;
class LocalDaemonSheet;
class QMessageBox;
class QWidget;

// The window's way to the local daemon: installing or reinstalling it under a sheet, and removing
// it after a confirmation. The script runs in the user's terminal unless a runner is given.
class LocalDaemonFlow : public QObject
{
    Q_OBJECT

public:
    LocalDaemonFlow(AppContext &context, QWidget *window, std::unique_ptr<CommandRunner> runner = {},
                    QString scriptPath = {});
    ~LocalDaemonFlow() override;

    LocalDaemonInstaller &installer() { return m_installer; }
    // Starts the installation (a reinstall when the local connection exists) under its sheet.
    LocalDaemonSheet *install();
    // Asks first; removing happens on "Delete".
    QMessageBox *confirmUninstall();

private:
    QCoro::Task<> uninstall();
    QMessageBox *inform(const QString &text, const QString &details);

    AppContext &m_context;
    QWidget *m_window;
    std::unique_ptr<CommandRunner> m_runner;
    QString m_scriptPath;
    LocalDaemonInstaller m_installer;
    QPointer<LocalDaemonSheet> m_sheet;
};
