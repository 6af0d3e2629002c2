#include "daemon/LocalDaemonInstaller.h"

#include "core/AppContext.h"
#include "core/InternalError.h"
#include "core/KeychainStore.h"
#include "daemon/DaemonCommand.h"
#include "daemon/TerminalRunner.h"
#include "support/Detached.h"

#include <QCoreApplication>
#include <QCoroTimer>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTcpServer>
#include <QTimer>

Q_LOGGING_CATEGORY(lcLocalDaemonInstaller, "LocalDaemonInstaller")

namespace {

std::optional<ClientConfiguration> localConnection(const AppContext &context)
{
    for (const ClientConfiguration &configuration : context.clientConfigurations()) {
        if (configuration.isLocal)
            return configuration;
    }
    return std::nullopt;
}

} // namespace

QString LocalDaemonInstaller::connectionName()
{
#ifdef Q_OS_MACOS
    return QCoreApplication::translate("LocalDaemonInstaller", "This Mac");
#else
    return QCoreApplication::translate("LocalDaemonInstaller", "This Computer");
#endif
}

LocalDaemonInstaller::LocalDaemonInstaller(AppContext &context, CommandRunner &runner, QString scriptPath,
                                           QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_runner(runner)
    , m_scriptPath(std::move(scriptPath))
{}

LocalDaemonInstaller::~LocalDaemonInstaller()
{
    ++m_generation;
    Q_EMIT wakeRequested(QPrivateSignal());
    resumePolling();
}

bool LocalDaemonInstaller::isRunning() const
{
    using Kind = Phase::Kind;
    return m_phase.kind == Kind::preparing || m_phase.kind == Kind::waiting || m_phase.kind == Kind::automationDenied;
}

void LocalDaemonInstaller::setPortRange(int first, int last)
{
    m_firstPort = first;
    m_lastPort = last;
}

void LocalDaemonInstaller::install()
{
    if (m_phase.kind == Phase::Kind::preparing || m_phase.kind == Phase::Kind::waiting)
        return;
    // "Try Again" while the user was to paste the command: the wait under way ends here.
    const int generation = ++m_generation;
    Q_EMIT wakeRequested(QPrivateSignal());
    detached(run(generation));
}

void LocalDaemonInstaller::cancel()
{
    ++m_generation;
    Q_EMIT wakeRequested(QPrivateSignal());
    resumePolling();
    setPhase({});
}

QCoro::Task<> LocalDaemonInstaller::pause(std::chrono::milliseconds interval)
{
    QTimer timer;
    timer.setSingleShot(true);
    connect(this, &LocalDaemonInstaller::wakeRequested, &timer, [&timer] { timer.start(0); });
    timer.start(interval);
    co_await timer;
}

void LocalDaemonInstaller::setPhase(Phase phase)
{
    if (phase == m_phase)
        return;
    m_phase = std::move(phase);
    Q_EMIT phaseChanged();
}

void LocalDaemonInstaller::fail(const QString &message)
{
    resumePolling();
    setPhase({.kind = Phase::Kind::failed, .message = message});
}

void LocalDaemonInstaller::suspendPolling()
{
    qCInfo(lcLocalDaemonInstaller, "Suspending polling for the daemon restart.");
    m_context.suspendPolling();
    m_suspendedPollingContext = &m_context;
}

void LocalDaemonInstaller::resumePolling()
{
    m_isRestartPending = false;
    if (!m_suspendedPollingContext)
        return;
    qCInfo(lcLocalDaemonInstaller, "Resuming suspended polling.");
    m_suspendedPollingContext->resumePolling();
    m_suspendedPollingContext.clear();
}

QCoro::Task<> LocalDaemonInstaller::run(int generation)
{
    const QPointer<LocalDaemonInstaller> self(this);
    setPhase({.kind = Phase::Kind::preparing});
    if (m_scriptPath.isEmpty() || !QFileInfo(m_scriptPath).isReadable()) {
        fail(QCoreApplication::translate("LocalDaemonInstaller",
                                         "The installer script is missing from the installation."));
        co_return;
    }
    const std::optional<LocalDaemonCredentials> credentials = LocalDaemonCredentials::generate();
    if (!credentials) {
        fail(LocalDaemonCredentials::generationFailure());
        co_return;
    }

    // A reinstall keeps the daemon's port: the connection's address stays, only its password changes.
    const std::optional<ClientConfiguration> existing = localConnection(m_context);
    std::optional<int> port = existing ? existing->port : std::nullopt;
    if (!port) {
        port = co_await freePort(generation);
        if (!self || !isCurrent(generation))
            co_return;
        if (!port) {
            fail(QCoreApplication::translate(
                     "LocalDaemonInstaller",
                     "No free port found in range %1–%2. Close what uses these ports, then try again.")
                     .arg(m_firstPort)
                     .arg(m_lastPort));
            co_return;
        }
    }
    m_port = port;
    m_command = DaemonCommand::install(m_scriptPath, *port, credentials->passwordHash);

    bool replacing = false;
    if (existing) {
        replacing = co_await m_probe.probe(*port) != ProbeSession::Answer::none;
        if (!self || !isCurrent(generation))
            co_return;
    }
    if (replacing && m_context.isPolling() && m_context.clientConfiguration() &&
        m_context.clientConfiguration()->id == existing->id)
        suspendPolling();
    m_isRestartPending = replacing;

    const CommandRunner::Result launched = m_runner.run(m_command);
    if (launched == CommandRunner::Result::failed) {
        fail(QCoreApplication::translate("LocalDaemonInstaller", "Quillo couldn't open a terminal."));
        co_return;
    }
    if (replacing) {
        co_await awaitOldDaemonStop(generation, *port);
        if (!self || !isCurrent(generation))
            co_return;
    }
    if (!co_await awaitDaemon(generation, *port, launched == CommandRunner::Result::automationDenied))
        co_return;
    if (!self || !isCurrent(generation))
        co_return;

    const ProbeSession::Login login = co_await m_probe.logIn(*port, DaemonCommand::username(), credentials->password);
    if (!self || !isCurrent(generation))
        co_return;
    if (login == ProbeSession::Login::noAnswer) {
        fail(QCoreApplication::translate("LocalDaemonInstaller",
                                         "qBittorrent didn't respond. Check the terminal window for errors."));
        co_return;
    }
    if (login == ProbeSession::Login::rejected) {
        qCWarning(lcLocalDaemonInstaller, "qBittorrent on port %d rejected the new password.", *port);
        fail(QCoreApplication::translate(
            "LocalDaemonInstaller",
            "qBittorrent didn't accept the new password. Check the terminal window for errors."));
        co_return;
    }

    ClientConfiguration configuration;
    if (existing) {
        configuration = *existing;
    } else {
        configuration.name = connectionName();
        configuration.host = ProbeSession::host();
        configuration.port = port;
        configuration.isLocal = true;
    }
    if (!co_await store(generation, configuration, *credentials) || !self || !isCurrent(generation))
        co_return;
    // The old session knew the old daemon; polling resumes in a new one, logged in to the new daemon.
    if (m_suspendedPollingContext)
        qCInfo(lcLocalDaemonInstaller, "Resuming suspended polling.");
    m_suspendedPollingContext.clear();
    m_isRestartPending = false;
    setPhase({.kind = Phase::Kind::finished});
    QCoro::Task<> opening = m_context.selectConfiguration(configuration.id);
    co_await std::move(opening);
}

QCoro::Task<std::optional<int>> LocalDaemonInstaller::freePort(int generation)
{
    const QPointer<LocalDaemonInstaller> self(this);
    for (int port = m_firstPort; port <= m_lastPort; ++port) {
        const ProbeSession::Answer answer = co_await m_probe.probe(port);
        if (!self || !isCurrent(generation))
            co_return std::nullopt;
        // A silent service holds the port too: qBittorrent could not listen there.
        if (answer == ProbeSession::Answer::none &&
            QTcpServer().listen(QHostAddress::LocalHost, static_cast<quint16>(port)))
            co_return port;
    }
    co_return std::nullopt;
}

QCoro::Task<> LocalDaemonInstaller::awaitOldDaemonStop(int generation, int port)
{
    const QPointer<LocalDaemonInstaller> self(this);
    const auto interval = std::min(m_probeInterval, m_pollInterval);
    for (int attempt = 1; attempt <= maxPollAttempts; ++attempt) {
        setPhase({.kind = Phase::Kind::waiting, .attempt = attempt});
        if (co_await m_probe.probe(port) == ProbeSession::Answer::none) {
            if (self && isCurrent(generation))
                qCInfo(lcLocalDaemonInstaller, "The old daemon has stopped, waiting for the new one.");
            co_return;
        }
        if (!self || !isCurrent(generation))
            co_return;
        co_await pause(interval);
        if (!self || !isCurrent(generation))
            co_return;
    }
    qCInfo(lcLocalDaemonInstaller, "The daemon restart wasn't observed, trying the new password.");
}

QCoro::Task<bool> LocalDaemonInstaller::awaitDaemon(int generation, int port, bool deniedTerminal)
{
    const QPointer<LocalDaemonInstaller> self(this);
    for (int attempt = 1; attempt <= maxPollAttempts; ++attempt) {
        setPhase({.kind = deniedTerminal ? Phase::Kind::automationDenied : Phase::Kind::waiting, .attempt = attempt});
        const ProbeSession::Answer answer = co_await m_probe.probe(port);
        if (!self || !isCurrent(generation))
            co_return false;
        if (answer == ProbeSession::Answer::qbittorrent || answer == ProbeSession::Answer::refusing)
            co_return true;
        co_await pause(m_pollInterval);
        if (!self || !isCurrent(generation))
            co_return false;
    }
    fail(QCoreApplication::translate("LocalDaemonInstaller",
                                     "qBittorrent didn't respond. Check the terminal window for errors."));
    co_return false;
}

QCoro::Task<bool> LocalDaemonInstaller::store(int generation, ClientConfiguration configuration,
                                              LocalDaemonCredentials credentials)
{
    const QPointer<LocalDaemonInstaller> self(this);
    KeychainStore &keychain = m_context.keychain();
    const API::UserCredentials account{.username = DaemonCommand::username(), .password = credentials.password};
    const bool saved = co_await keychain.save(configuration, account);
    if (!self || !isCurrent(generation))
        co_return false;
    if (!saved) {
        fail(QCoreApplication::translate("LocalDaemonInstaller",
                                         "Quillo couldn't save the qBittorrent password to the keyring."));
        co_return false;
    }
    if (localConnection(m_context))
        co_return true;
    QString refusal;
    try {
        m_context.addConfiguration(configuration);
    } catch (const InternalError &error) {
        refusal = error.description();
    }
    if (refusal.isEmpty())
        co_return true;
    // Nothing half-created: the password goes with the connection that could not be added.
    co_await keychain.remove(configuration);
    if (self)
        fail(refusal);
    co_return false;
}
