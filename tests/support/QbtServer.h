#pragma once

#include "api/AuthMethod.h"
#include "core/ClientConfiguration.h"

#include <QProcess>
#include <QString>
#include <QtTest/QTest>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

class QTemporaryDir;

// A real qbittorrent-nox on 127.0.0.1 with a fresh profile, confined to loopback (no DHT, LSD,
// PeX, port forwarding or geolocation download). Stopped by its process id when destroyed.
class QbtServer
{
public:
    enum class Flavor {
        Bookworm45, // the host's /usr/bin/qbittorrent-nox 4.5.2, WebUI API 2.8.19
        Trixie51,   // 5.1.0 from the Debian trixie root of scripts/qbt-trixie-root, WebUI API 2.11.4
        Sid,        // the newest packaged release, from the Debian sid root of scripts/qbt-root sid (5.3.0,
                    // WebUI API 2.16.2 when this was written): ask the server for its versions
    };

    struct StartResult
    {
        std::unique_ptr<QbtServer> server; // null when it could not start
        QString failure;                   // why not, for QSKIP or QFAIL
        // Sid's root may be missing (sid changes daily and its bootstrap can fail): a skip even when
        // real servers are required.
        bool skipAlways = false;
    };

    // A folder the test fills and the server reads: the same folder under two names, because the
    // 5.1 server sees it from inside its root.
    struct DataDir
    {
        QString localPath;
        QString serverPath;
    };

    // A PEM certificate and its key, for a WebUI that speaks HTTPS.
    struct Tls
    {
        QByteArray certificate;
        QByteArray key;
    };

    struct Options
    {
        // Off: the server lets clients on loopback in without logging in (the bypass).
        bool localHostAuth = true;
        // The WebUI password as qBittorrent keeps it; empty: the hash of "adminadmin".
        QString passwordHash;
        // Off: a Host header naming another port is let in, as a plain TCP relay in front needs.
        bool hostHeaderValidation = true;
        // Addresses of reverse proxies whose X-Forwarded-* headers the server believes; none: off.
        QString trustedReverseProxies;
        // HTTPS with this certificate instead of plain HTTP.
        std::optional<Tls> tls;
        // More lines of the configuration's [Preferences] section ("WebUI\BanDuration=60").
        QByteArray preferences;
    };

    // A new self-signed certificate for 127.0.0.1, made with the openssl tool; none, with the reason
    // in `whyNot`, when that fails.
    static std::optional<Tls> selfSignedTls(QString *whyNot);

    static StartResult start(Flavor flavor, Options options);
    static StartResult start(Flavor flavor) { return start(flavor, Options{}); }
    static QString flavorName(Flavor flavor);
    // Every flavor, for suites that run against each.
    static QList<Flavor> flavors() { return {Flavor::Bookworm45, Flavor::Trixie51, Flavor::Sid}; }
    // QUILLO_REQUIRE_REAL_SERVERS=1 turns a server that cannot start into a failure, not a skip.
    static bool realServersRequired();
    // The Debian root a chrooted flavor runs from: $QUILLO_TRIXIE_ROOT or $QUILLO_SID_ROOT, else the
    // cache folder that scripts/qbt-root fills.
    static QString rootOf(Flavor flavor);

    ~QbtServer();
    QbtServer(const QbtServer &) = delete;
    QbtServer &operator=(const QbtServer &) = delete;

    Flavor flavor() const { return m_flavor; }
    int webPort() const { return m_webPort; }
    int peerPort() const { return m_peerPort; }
    qint64 processId() const { return m_process.processId(); }
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    std::chrono::milliseconds startupTime() const { return m_startupTime; }
    // The server's own name for its default save path.
    QString defaultSavePath() const;

    ClientConfiguration configuration() const;
    API::UserCredentials credentials() const;

    // A fresh empty folder, removed with the server; empty paths when it cannot be made.
    DataDir makeDataDir();

    // Ends the server (SIGTERM, then SIGKILL after 10 s); safe to call twice. The profile and data
    // folders are removed when the object goes.
    void stop();
    // Stops and starts the same server again: same profile, same ports, sessions forgotten.
    // Empty on success, else why not.
    QString restart();
    // Another certificate, from the next restart() on.
    void replaceTls(const Tls &tls);

private:
    explicit QbtServer(Flavor flavor);
    QString startProcess(); // empty on success, else why not
    QString launch();
    QString waitUntilAnswering();
    QString diagnostics();
    QString serverPathOf(const QString &localPath) const;

    Flavor m_flavor;
    Options m_options;
    QString m_program;
    QString m_root; // the Debian root; empty for the host's server
    std::unique_ptr<QTemporaryDir> m_profile;
    std::vector<std::unique_ptr<QTemporaryDir>> m_dataDirs;
    QProcess m_process;
    int m_webPort = 0;
    int m_peerPort = 0;
    std::chrono::milliseconds m_startupTime{0};
};

Q_DECLARE_METATYPE(QbtServer::Flavor)

// Every real-server test handles an unavailable server the same way: skip, or fail when real
// servers are required.
#define QUILLO_REQUIRE_SERVER(startResult)                                                                  \
    do {                                                                                                   \
        if (!(startResult).server) {                                                                       \
            const QByteArray quilloWhyNot = (startResult).failure.toLocal8Bit();                           \
            if (QbtServer::realServersRequired() && !(startResult).skipAlways)                             \
                QFAIL(quilloWhyNot.constData());                                                           \
            QSKIP(quilloWhyNot.constData());                                                               \
        }                                                                                                  \
    } while (false)
