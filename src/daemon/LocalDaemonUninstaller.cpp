#include "daemon/LocalDaemonUninstaller.h"

#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "daemon/DaemonCommand.h"
#include "daemon/TerminalRunner.h"

#include <QFileInfo>
#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcLocalDaemonInstaller)

LocalDaemonUninstaller::LocalDaemonUninstaller(AppContext &context, CommandRunner &runner, QString scriptPath)
    : m_context(context)
    , m_runner(runner)
    , m_scriptPath(std::move(scriptPath))
{
}

QCoro::Task<LocalDaemonUninstaller::Outcome> LocalDaemonUninstaller::uninstall()
{
    if (m_scriptPath.isEmpty() || !QFileInfo(m_scriptPath).isReadable())
        co_return Outcome::scriptMissing;
    std::optional<ClientConfiguration> local;
    for (const ClientConfiguration &configuration : m_context.clientConfigurations()) {
        if (configuration.isLocal)
            local = configuration;
    }
    std::optional<API::UserCredentials> credentials;
    if (local)
        credentials = co_await m_context.keychain().read(*local);
    if (local && local->port && credentials)
        co_await m_probe.shutDown(*local->port, credentials->username, credentials->password);
    else
        qCInfo(lcLocalDaemonInstaller, "The daemon's credentials aren't found, it's left to the script to stop.");

    m_command = DaemonCommand::uninstall(m_scriptPath);
    const CommandRunner::Result run = m_runner.run(m_command);
    if (run == CommandRunner::Result::failed)
        co_return Outcome::terminalFailed;
    if (local) {
        QCoro::Task<> removing = m_context.removeConfiguration(local->id);
        co_await std::move(removing);
    }
    co_return run == CommandRunner::Result::launched ? Outcome::removed : Outcome::pasteRequired;
}
