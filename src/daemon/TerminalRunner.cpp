#include "daemon/TerminalRunner.h"

#include <QLoggingCategory>
#include <QProcess>
#include <QStandardPaths>

Q_LOGGING_CATEGORY(lcTerminalRunner, "LocalDaemonInstaller")

namespace {

struct Terminal
{
    QString program;
    QStringList beforeCommand; // what tells it that a program and its arguments follow
};

const QList<Terminal> &terminals()
{
    static const QList<Terminal> known = {
        {QStringLiteral("xdg-terminal-exec"), {}},
        {QStringLiteral("x-terminal-emulator"), {QStringLiteral("-e")}},
        {QStringLiteral("gnome-terminal"), {QStringLiteral("--")}},
        {QStringLiteral("konsole"), {QStringLiteral("-e")}},
        {QStringLiteral("xfce4-terminal"), {QStringLiteral("-x")}},
        {QStringLiteral("xterm"), {QStringLiteral("-e")}},
    };
    return known;
}

} // namespace

TerminalRunner::TerminalRunner(QStringList searchPaths)
    : m_searchPaths(std::move(searchPaths))
{
}

CommandRunner::Result TerminalRunner::run(const QString &command)
{
    for (const Terminal &terminal : terminals()) {
        const QString path = QStandardPaths::findExecutable(terminal.program, m_searchPaths);
        if (path.isEmpty())
            continue;
        // The window stays open until the user has read what the script said.
        const QString shown = command + QStringLiteral("; echo; read -r -p 'Press Return to close this window.' _");
        QProcess process;
        process.setProgram(path);
        process.setArguments(terminal.beforeCommand + QStringList{QStringLiteral("/bin/bash"), QStringLiteral("-c"), shown});
        if (process.startDetached())
            return Result::launched;
        qCWarning(lcTerminalRunner, "Failed to launch a terminal: %s", qUtf8Printable(path));
        return Result::failed;
    }
    qCInfo(lcTerminalRunner, "No terminal emulator found; the command is left for the user to paste.");
    return Result::automationDenied;
}
