#pragma once

#include <QString>
#include <QStringList>

// Runs a shell command where the user sees it. The installer's one way to start its script.
class CommandRunner
{
public:
    // `automationDenied`: nothing can run it for the user, who is asked to paste it instead.
    enum class Result { launched, automationDenied, failed };

    virtual ~CommandRunner() = default;
    virtual Result run(const QString &command) = 0;
};

// The user's terminal emulator, so that sudo can ask for a password there. The first found of the
// freedesktop launcher, Debian's alternative and the common terminals; none is `automationDenied`.
class TerminalRunner : public CommandRunner
{
public:
    // Where terminals are looked for; PATH when empty.
    explicit TerminalRunner(QStringList searchPaths = {});

    Result run(const QString &command) override;

private:
    QStringList m_searchPaths;
};
