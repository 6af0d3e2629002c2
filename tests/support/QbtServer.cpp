#include "support/QbtServer.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>

#include <cerrno>
#include <csignal>
#include <optional>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr auto answerDeadline = 30s;
constexpr auto termDeadline = 10s;
const QString hostBinary = QStringLiteral("/usr/bin/qbittorrent-nox");
const QString rootBinary = QStringLiteral("/usr/bin/qbittorrent-nox");

struct Ports
{
    int web = 0;
    int peer = 0;
};

// Both sockets stay bound until both ports are known, so the two differ.
std::optional<Ports> freePorts()
{
    QTcpServer web;
    QTcpServer peer;
    if (!web.listen(QHostAddress::LocalHost, 0) || !peer.listen(QHostAddress::LocalHost, 0))
        return std::nullopt;
    return Ports{web.serverPort(), peer.serverPort()};
}

// Beyond the safe recipe: peer geolocation (on by default) makes the server resolve a host and
// download a database from the internet. Torrents added without a save path land in the profile.
QByteArray configText(const Ports &ports, const QString &serverSavePath, const QbtServer::Options &options)
{
    QByteArray text(R"conf([LegalNotice]
Accepted=true

[Preferences]
WebUI\Address=127.0.0.1
WebUI\Port=@WEB@
WebUI\LocalHostAuth=@LOCALAUTH@
WebUI\HostHeaderValidation=@HOSTCHECK@
WebUI\ReverseProxySupportEnabled=@REVERSEPROXY@
WebUI\TrustedReverseProxiesList=@PROXIES@
WebUI\Username=admin
WebUI\Password_PBKDF2="@HASH@"
Connection\ResolvePeerCountries=false
@PREFERENCES@

[BitTorrent]
Session\DHTEnabled=false
Session\LSDEnabled=false
Session\PeXEnabled=false
Session\Interface=lo
Session\InterfaceName=lo
Session\InterfaceAddress=127.0.0.1
Session\Port=@PEER@
Session\AnonymousModeEnabled=true
Session\DefaultSavePath=@SAVE@

[Network]
PortForwardingEnabled=false
)conf");
    text.replace("@LOCALAUTH@", options.localHostAuth ? "true" : "false");
    text.replace("@HOSTCHECK@", options.hostHeaderValidation ? "true" : "false");
    text.replace("@REVERSEPROXY@", options.trustedReverseProxies.isEmpty() ? "false" : "true");
    text.replace("@PROXIES@", options.trustedReverseProxies.toUtf8());
    text.replace("@HASH@", options.passwordHash.isEmpty() ? QByteArrayLiteral(
                               "@ByteArray(ARQ77eY1NUZaQsuDHbIMCA==:0WMRkYTUWVT9wVvdDtHAjU9b3b7uB8NR1Gur2hmQCvCDpm39Q+"
                               "PsJRJPaCU51dEiz+dTzh8qbPsL8WkFljQYFQ==)")
                                                          : options.passwordHash.toUtf8());
    text.replace("@WEB@", QByteArray::number(ports.web));
    text.replace("@PEER@", QByteArray::number(ports.peer));
    text.replace("@SAVE@", serverSavePath.toUtf8());
    text.replace("@PREFERENCES@", options.preferences);
    return text;
}

QString readTail(const QString &path, qint64 maxBytes = 4096)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    if (file.size() > maxBytes)
        file.seek(file.size() - maxBytes);
    return QString::fromUtf8(file.readAll()).trimmed();
}

// A zombie counts as gone: it has ended and its pid cannot be reused before it is reaped.
bool processIsGone(pid_t pid)
{
    if (::kill(pid, 0) == -1)
        return errno == ESRCH;
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return false;
    const QByteArray line = stat.readAll();
    const qsizetype afterName = line.lastIndexOf(')');
    return afterName >= 0 && line.mid(afterName + 2, 1) == "Z";
}

// Folders carry the pid of the test that made them. A test that crashed could not remove its own;
// they are removed once that test process no longer exists.
void removeAbandonedFolders(const QString &parent, const QStringList &prefixes)
{
    const auto entries = QDir(parent).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        const QString name = entry.fileName();
        for (const QString &prefix : prefixes) {
            if (!name.startsWith(prefix))
                continue;
            bool ok = false;
            const auto pid = static_cast<pid_t>(name.mid(prefix.size()).section(u'-', 0, 0).toInt(&ok));
            if (ok && pid > 0 && pid != ::getpid() && processIsGone(pid))
                QDir(entry.absoluteFilePath()).removeRecursively();
        }
    }
}

QString pidTemplate(const QString &parent, const QString &prefix)
{
    return QStringLiteral("%1/%2%3-XXXXXX").arg(parent, prefix).arg(::getpid());
}

const QString hostProfilePrefix = QStringLiteral("quillo-qbt45-");
const QString hostDataPrefix = QStringLiteral("quillo-data-");
const QString rootProfilePrefix = QStringLiteral("prof-");
const QString rootDataPrefix = QStringLiteral("data-");

} // namespace

QbtServer::QbtServer(Flavor flavor)
    : m_flavor(flavor)
{
}

QbtServer::~QbtServer()
{
    stop();
}

QString QbtServer::flavorName(Flavor flavor)
{
    switch (flavor) {
    case Flavor::Bookworm45: return QStringLiteral("qBittorrent 4.5 (bookworm)");
    case Flavor::Trixie51: return QStringLiteral("qBittorrent 5.1 (trixie root)");
    case Flavor::Sid: return QStringLiteral("qBittorrent, newest (sid root)");
    }
    return {};
}

bool QbtServer::realServersRequired()
{
    return qEnvironmentVariable("QUILLO_REQUIRE_REAL_SERVERS") == u"1";
}

QString QbtServer::rootOf(Flavor flavor)
{
    const QString suite = flavor == Flavor::Sid ? QStringLiteral("sid") : QStringLiteral("trixie");
    if (const QString root = qEnvironmentVariable(qPrintable(QStringLiteral("QUILLO_%1_ROOT").arg(suite.toUpper())));
        !root.isEmpty())
        return QDir::cleanPath(QFileInfo(root).absoluteFilePath());
    return QDir::cleanPath(QStringLiteral(QUILLO_ROOTS_CACHE "/quillo/%1-qbt").arg(suite));
}

QbtServer::StartResult QbtServer::start(Flavor flavor, Options options)
{
    std::unique_ptr<QbtServer> server(new QbtServer(flavor));
    server->m_options = options;
    QString failure = server->startProcess();
    if (failure.isEmpty())
        failure = server->waitUntilAnswering();
    if (!failure.isEmpty()) {
        const QString details = server->diagnostics();
        server.reset();
        // Only a missing sid root is excused: once it exists, a server that fails there is a fault.
        const bool skipAlways = flavor == Flavor::Sid && !QFileInfo(rootOf(flavor) + rootBinary).isExecutable();
        return {nullptr, flavorName(flavor) + QStringLiteral(": ") + failure + details, skipAlways};
    }
    qInfo("%s answered on 127.0.0.1:%d after %lld ms (pid %lld)", qUtf8Printable(flavorName(flavor)),
          server->m_webPort, static_cast<long long>(server->m_startupTime.count()),
          static_cast<long long>(server->processId()));
    return {std::move(server), {}};
}

QString QbtServer::startProcess()
{
    if (m_flavor == Flavor::Bookworm45) {
        if (!QFileInfo(hostBinary).isExecutable())
            return hostBinary + QStringLiteral(" is missing (apt-get install qbittorrent-nox)");
        m_program = hostBinary;
        removeAbandonedFolders(QDir::tempPath(), {hostProfilePrefix, hostDataPrefix});
        m_profile = std::make_unique<QTemporaryDir>(pidTemplate(QDir::tempPath(), hostProfilePrefix));
    } else {
        m_root = rootOf(m_flavor);
        if (!QFileInfo(m_root + rootBinary).isExecutable()) {
            if (m_flavor == Flavor::Sid)
                return QStringLiteral("no sid root with qbittorrent-nox at %1: scripts/qbt-root sid makes one, and "
                                      "when it could not (sid changes daily), these cases skip")
                    .arg(m_root);
            return QStringLiteral("no trixie root with qbittorrent-nox at %1 (scripts/qbt-trixie-root makes one)")
                .arg(m_root);
        }
        if (::geteuid() != 0)
            return QStringLiteral("running the server in %1 needs chroot, which needs root").arg(m_root);
        m_program = QStandardPaths::findExecutable(QStringLiteral("chroot"));
        if (m_program.isEmpty())
            return QStringLiteral("chroot is not installed");
        removeAbandonedFolders(m_root, {rootProfilePrefix, rootDataPrefix});
        m_profile = std::make_unique<QTemporaryDir>(pidTemplate(m_root, rootProfilePrefix));
    }
    if (!m_profile->isValid())
        return QStringLiteral("cannot create a profile folder: ") + m_profile->errorString();

    const std::optional<Ports> ports = freePorts();
    if (!ports)
        return QStringLiteral("no free port on 127.0.0.1");
    m_webPort = ports->web;
    m_peerPort = ports->peer;

    const QString configDir = m_profile->path() + QStringLiteral("/qBittorrent/config");
    QFile config(configDir + QStringLiteral("/qBittorrent.conf"));
    // An existing save folder, else free_space_on_disk reads -1.
    if (!QDir().mkpath(configDir) || !QDir().mkpath(m_profile->path() + QStringLiteral("/downloads"))
        || !config.open(QIODevice::WriteOnly) || config.write(configText(*ports, defaultSavePath(), m_options)) < 0)
        return QStringLiteral("cannot write %1: %2").arg(config.fileName(), config.errorString());
    config.close();
    if (m_options.tls) {
        replaceTls(*m_options.tls);
        // The server reads the files at start; their paths as the server sees them.
        const QByteArray https = "\n[Preferences]\nWebUI\\HTTPS\\Enabled=true\nWebUI\\HTTPS\\CertificatePath=" +
                                 serverPathOf(m_profile->path() + QStringLiteral("/webui.crt")).toUtf8() +
                                 "\nWebUI\\HTTPS\\KeyPath=" +
                                 serverPathOf(m_profile->path() + QStringLiteral("/webui.key")).toUtf8() + "\n";
        if (!config.open(QIODevice::Append) || config.write(https) < 0)
            return QStringLiteral("cannot write %1: %2").arg(config.fileName(), config.errorString());
        config.close();
    }

    return launch();
}

QString QbtServer::launch()
{
    QStringList arguments;
    const QString serverProfile = QStringLiteral("--profile=") + serverPathOf(m_profile->path());
    if (m_flavor == Flavor::Bookworm45) {
        arguments = {serverProfile};
    } else {
        // No mounts needed: debootstrap leaves device nodes in the root's /dev, and without /proc the
        // server only misses facts it does not use here (its own path, CPU and mount lists).
        // chroot execs the server, so the pid we signal is the server's.
        arguments = {m_root, rootBinary, serverProfile, QStringLiteral("--confirm-legal-notice")};
    }

    // QBT_* variables would override the configuration file.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QStringList names = environment.keys();
    for (const QString &name : names) {
        if (name.startsWith(u"QBT_"))
            environment.remove(name);
    }
    m_process.setProcessEnvironment(environment);
    m_process.setWorkingDirectory(m_profile->path());
    // Files, not pipes: a pipe nobody drains while a test blocks could stall the server.
    m_process.setStandardOutputFile(m_profile->path() + QStringLiteral("/stdout.txt"), QIODevice::Append);
    m_process.setStandardErrorFile(m_profile->path() + QStringLiteral("/stderr.txt"), QIODevice::Append);
    // The server must not outlive a test that crashes or is killed before its destructor runs.
    const pid_t parent = ::getpid();
    m_process.setChildProcessModifier([parent] {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent)
            ::_exit(127);
    });
    m_process.start(m_program, arguments);
    if (!m_process.waitForStarted())
        return QStringLiteral("cannot run %1: %2").arg(m_program, m_process.errorString());
    return {};
}

void QbtServer::replaceTls(const Tls &tls)
{
    const auto write = [this](const QString &name, const QByteArray &pem) {
        QFile file(m_profile->path() + u'/' + name);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(pem) != pem.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
    };
    write(QStringLiteral("webui.crt"), tls.certificate);
    write(QStringLiteral("webui.key"), tls.key);
}

std::optional<QbtServer::Tls> QbtServer::selfSignedTls(QString *whyNot)
{
    QTemporaryDir dir;
    const QString keyPath = dir.filePath(QStringLiteral("key.pem"));
    const QString certificatePath = dir.filePath(QStringLiteral("certificate.pem"));
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"), QStringLiteral("rsa:2048"),
                   QStringLiteral("-nodes"), QStringLiteral("-subj"), QStringLiteral("/CN=127.0.0.1/O=Quillo tests"),
                   QStringLiteral("-days"), QStringLiteral("2"), QStringLiteral("-keyout"), keyPath,
                   QStringLiteral("-out"), certificatePath});
    QFile key(keyPath);
    QFile certificate(certificatePath);
    if (!openssl.waitForFinished(60'000) || openssl.exitStatus() != QProcess::NormalExit || openssl.exitCode() != 0 ||
        !key.open(QIODevice::ReadOnly) || !certificate.open(QIODevice::ReadOnly)) {
        *whyNot = QStringLiteral("openssl could not make a certificate: ") + openssl.errorString() + u' ' +
                  QString::fromLocal8Bit(openssl.readAllStandardError());
        return std::nullopt;
    }
    return Tls{certificate.readAll(), key.readAll()};
}

QString QbtServer::waitUntilAnswering()
{
    QNetworkAccessManager network;
    network.setProxy(QNetworkProxy::NoProxy);
    QUrl url;
    url.setScheme(m_options.tls ? QStringLiteral("https") : QStringLiteral("http"));
    url.setHost(QStringLiteral("127.0.0.1"));
    url.setPort(m_webPort);
    url.setPath(QStringLiteral("/api/v2/app/version"));

    QElapsedTimer clock;
    clock.start();
    const QDeadlineTimer deadline(answerDeadline);
    QString lastAnswer = QStringLiteral("nothing");
    while (!deadline.hasExpired()) {
        if (m_process.state() == QProcess::NotRunning)
            return QStringLiteral("the server exited with code %1").arg(m_process.exitCode());

        QNetworkRequest request(url);
        request.setTransferTimeout(2000);
        std::unique_ptr<QNetworkReply> reply(network.get(request));
        // Whether it answers, not whom it claims to be: the test's own certificate is trusted nowhere.
        QObject::connect(reply.get(), &QNetworkReply::sslErrors, reply.get(), [raw = reply.get()] { raw->ignoreSslErrors(); });
        QEventLoop loop;
        QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (status == 200 || status == 403) {
            m_startupTime = std::chrono::milliseconds(clock.elapsed());
            return {};
        }
        lastAnswer = status != 0 ? QStringLiteral("HTTP %1").arg(status) : reply->errorString();

        QTimer::singleShot(100, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return QStringLiteral("no answer on port %1 within %2 s (last: %3)")
        .arg(m_webPort)
        .arg(std::chrono::seconds(answerDeadline).count())
        .arg(lastAnswer);
}

QString QbtServer::diagnostics()
{
    if (!m_profile || !m_profile->isValid())
        return {};
    QString text;
    const auto append = [&text](const QString &label, const QString &content) {
        if (!content.isEmpty())
            text += QStringLiteral("\n--- %1 ---\n%2").arg(label, content);
    };
    stop(); // the log is complete only once the server has ended
    append(QStringLiteral("stderr"), readTail(m_profile->path() + QStringLiteral("/stderr.txt")));
    append(QStringLiteral("stdout"), readTail(m_profile->path() + QStringLiteral("/stdout.txt")));
    append(QStringLiteral("log"),
           readTail(m_profile->path() + QStringLiteral("/qBittorrent/data/logs/qbittorrent.log")));
    return text;
}

QString QbtServer::restart()
{
    stop();
    QString failure = launch();
    if (failure.isEmpty())
        failure = waitUntilAnswering();
    return failure;
}

void QbtServer::stop()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.terminate();
        if (!m_process.waitForFinished(static_cast<int>(std::chrono::milliseconds(termDeadline).count()))) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
}

QString QbtServer::serverPathOf(const QString &localPath) const
{
    if (m_root.isEmpty())
        return localPath;
    Q_ASSERT(localPath.startsWith(m_root + u'/'));
    return localPath.mid(m_root.size());
}

QString QbtServer::defaultSavePath() const
{
    return serverPathOf(m_profile->path()) + QStringLiteral("/downloads");
}

ClientConfiguration QbtServer::configuration() const
{
    ClientConfiguration configuration;
    configuration.name = flavorName(m_flavor);
    configuration.host = QStringLiteral("127.0.0.1");
    configuration.port = m_webPort;
    configuration.authMethod = API::AuthMethod::cookieLogin;
    configuration.useHTTPS = m_options.tls.has_value();
    return configuration;
}

API::UserCredentials QbtServer::credentials() const
{
    return {QStringLiteral("admin"), QStringLiteral("adminadmin"), {}};
}

QbtServer::DataDir QbtServer::makeDataDir()
{
    auto dir = std::make_unique<QTemporaryDir>(m_root.isEmpty() ? pidTemplate(QDir::tempPath(), hostDataPrefix)
                                                                : pidTemplate(m_root, rootDataPrefix));
    if (!dir->isValid())
        return {};
    DataDir names{dir->path(), serverPathOf(dir->path())};
    m_dataDirs.push_back(std::move(dir));
    return names;
}
