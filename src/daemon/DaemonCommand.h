#pragma once

#include <QString>
#include <QStringList>

// The shell command that runs the daemon script, as typed into a terminal.
namespace DaemonCommand {

// qbt-daemon.sh next to the binary (a build), in its data folder, or in the system's data folders;
// empty when it is nowhere.
QString locateScript();

inline QString username() { return QStringLiteral("quillo"); }

// Each element in single quotes, a quote inside one written as '\'' ; joined by blanks, after
// "clear; " so the terminal shows only what the script says.
QString shellCommand(const QStringList &elements);

// "arm64" on 64-bit ARM, else "x86_64": the machine as uname names it.
QString processor();

QString install(const QString &scriptPath, int port, const QString &passwordHash);
QString uninstall(const QString &scriptPath);

} // namespace DaemonCommand
