#pragma once

#include <QStringList>
#include <QUrl>

#include <optional>

// What Quillo was started with: torrents to add (files and links), a request to open one of the add
// dialogs, and whether to start hidden in the tray. A second launch hands it to the running
// Quillo as a message the same parser reads.
struct CommandLine
{
    QList<QUrl> sources;
    bool minimized = false;
    bool addFile = false;
    bool addLink = false;

    // The program's own arguments, its name first. --help and --version print and end the program,
    // as does an unknown option, with the reason.
    static CommandLine ofProgram(const QStringList &arguments);
    // Whether `arguments` ask only to be answered: --help or --version, which need no display, so
    // they are answered before the window system is reached.
    static bool asksForHelpOrVersion(const QStringList &arguments);
    // A message from a second launch; none, with the reason in `error`, when it cannot be read.
    static std::optional<CommandLine> read(const QStringList &message, QString *error = nullptr);
    // The message for the running instance: files made absolute here, where they were meant.
    QStringList message() const;
};
