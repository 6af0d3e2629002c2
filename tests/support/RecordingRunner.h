#pragma once

#include "daemon/TerminalRunner.h"

#include <QStringList>

namespace QuilloTest {

// Keeps what the installer asks it to run, and runs nothing.
class RecordingRunner : public CommandRunner
{
public:
    explicit RecordingRunner(Result answer = Result::launched)
        : result(answer)
    {
    }

    Result run(const QString &command) override
    {
        commands.append(command);
        return result;
    }

    Result result;
    QStringList commands;
};

} // namespace QuilloTest
