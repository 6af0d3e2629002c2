#pragma once

#include "daemon/LocalDaemonCredentials.h"
#include "daemon/ProbeSession.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>

#include <chrono>
#include <optional>

class AppContext;
class CommandRunner;
struct ClientConfiguration;

// Installs qBittorrent on this computer and connects to it: a free port, a generated account, the
// script run where the user sees it, the wait for the daemon, the password check, the keyring and
// then the connection. Run again while a local connection exists, it replaces that daemon in place.
class LocalDaemonInstaller : public QObject
{
    Q_OBJECT

public:
    struct Phase
    {
        enum class Kind { idle, preparing, automationDenied, waiting, failed, finished };
        Kind kind = Kind::idle;
        int attempt = 0; // of the wait, while waiting (also while the user is to paste the command)
        QString message; // why it failed

        friend bool operator==(const Phase &, const Phase &) = default;
    };

    static constexpr int maxPollAttempts = 40;
    static constexpr int firstPort = 8080;
    static constexpr int lastPort = 8099;
    static QString connectionName();

    LocalDaemonInstaller(AppContext &context, CommandRunner &runner, QString scriptPath, QObject *parent = nullptr);
    ~LocalDaemonInstaller() override;

    const Phase &phase() const { return m_phase; }
    bool isRunning() const;
    std::optional<int> port() const { return m_port; }
    // The last command run, for the user to paste when nothing could run it.
    const QString &command() const { return m_command; }
    bool isRestartPending() const { return m_isRestartPending; }

    // Starts an installation, or the reinstallation of the local daemon; also "Try Again".
    void install();
    // Stops waiting; polling suspended for a restart resumes. What the script does goes on.
    void cancel();

    // Tests move the ports to a range nothing else uses and make the wait short.
    void setPortRange(int first, int last);
    void setPollInterval(std::chrono::milliseconds interval) { m_pollInterval = interval; }

Q_SIGNALS:
    void phaseChanged();
    // Ends every pause under way: a cancelled run leaves nothing waiting behind it.
    void wakeRequested(QPrivateSignal);

private:
    QCoro::Task<> pause(std::chrono::milliseconds interval);
    QCoro::Task<> run(int generation);
    QCoro::Task<std::optional<int>> freePort(int generation);
    // Waits for the daemon to answer; false when it never did or the run was cancelled.
    QCoro::Task<bool> awaitDaemon(int generation, int port, bool deniedTerminal);
    // A restart replaces a daemon that answers now: first see it go.
    QCoro::Task<> awaitOldDaemonStop(int generation, int port);
    QCoro::Task<bool> store(int generation, ClientConfiguration configuration, LocalDaemonCredentials credentials);
    bool isCurrent(int generation) const { return generation == m_generation; }
    void setPhase(Phase phase);
    void fail(const QString &message);
    void suspendPolling();
    void resumePolling();

    AppContext &m_context;
    CommandRunner &m_runner;
    QString m_scriptPath;
    ProbeSession m_probe;
    int m_firstPort = firstPort;
    int m_lastPort = lastPort;
    std::chrono::milliseconds m_pollInterval{5'000};
    std::chrono::milliseconds m_probeInterval{1'000};
    Phase m_phase;
    int m_generation = 0;
    std::optional<int> m_port;
    QString m_command;
    bool m_isRestartPending = false;
    QPointer<AppContext> m_suspendedPollingContext;
};
