#pragma once

#include "daemon/ProbeSession.h"

#include <QCoroTask>
#include <QString>

class AppContext;
class CommandRunner;

// Removes the local daemon: stops it while its password is still known, runs the script's removal
// where the user sees it, and removes the connection with its password. Downloads and
// qBittorrent's settings stay.
class LocalDaemonUninstaller
{
public:
    enum class Outcome {
        removed,
        pasteRequired,  // nothing could run the removal: the user pastes `command()`
        terminalFailed, // nothing was removed
        scriptMissing,  // nothing was removed
    };

    LocalDaemonUninstaller(AppContext &context, CommandRunner &runner, QString scriptPath);

    QCoro::Task<Outcome> uninstall();
    const QString &command() const { return m_command; }

private:
    AppContext &m_context;
    CommandRunner &m_runner;
    QString m_scriptPath;
    ProbeSession m_probe;
    QString m_command;
};
