#include "support/NginxProxy.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

// `daemon off` keeps the master in the foreground, our child; every path it would write under /var
// is given here. Large answers stay in memory, so the workers (nobody, when started by root) never
// need the temp folders.
QByteArray configText(const QString &dir, int port, int upstreamPort, const QString &subPath)
{
    QByteArray text(R"conf(daemon off;
worker_processes 1;
pid @DIR@/nginx.pid;
error_log @DIR@/error.log;
events { worker_connections 256; }
http {
    access_log @DIR@/access.log;
    client_body_temp_path @DIR@/body;
    proxy_temp_path @DIR@/proxy;
    fastcgi_temp_path @DIR@/fastcgi;
    uwsgi_temp_path @DIR@/uwsgi;
    scgi_temp_path @DIR@/scgi;
    client_max_body_size 100m;
    client_body_buffer_size 1m;
    server {
        listen 127.0.0.1:@PORT@;
        location @SUBPATH@ {
            proxy_pass http://127.0.0.1:@UPSTREAM@/;
            proxy_http_version 1.1;
            proxy_max_temp_file_size 0;
            proxy_set_header Host $proxy_host;
            proxy_set_header X-Forwarded-Host $http_host;
            proxy_set_header X-Forwarded-For $proxy_add_x_forwarded_for;
            proxy_set_header X-Forwarded-Proto $scheme;
        }
    }
}
)conf");
    text.replace("@DIR@", dir.toUtf8());
    text.replace("@PORT@", QByteArray::number(port));
    text.replace("@UPSTREAM@", QByteArray::number(upstreamPort));
    text.replace("@SUBPATH@", subPath.toUtf8());
    return text;
}

int freePort()
{
    QTcpServer probe;
    return probe.listen(QHostAddress::LocalHost, 0) ? probe.serverPort() : 0;
}

} // namespace

NginxProxy::StartResult NginxProxy::start(int upstreamPort, const QString &subPath)
{
    std::unique_ptr<NginxProxy> proxy(new NginxProxy);
    if (const QString failure = proxy->launch(upstreamPort, subPath); !failure.isEmpty())
        return {nullptr, QStringLiteral("nginx: ") + failure + u'\n' + proxy->errorLog()};
    return {std::move(proxy), {}};
}

QString NginxProxy::launch(int upstreamPort, const QString &subPath)
{
    const QString program =
        QStandardPaths::findExecutable(QStringLiteral("nginx"), {QStringLiteral("/usr/sbin"), QStringLiteral("/usr/bin")});
    if (program.isEmpty())
        return QStringLiteral("not installed (apt-get install nginx-light)");
    if (!m_dir.isValid())
        return QStringLiteral("no folder: ") + m_dir.errorString();
    m_port = freePort();
    if (m_port == 0)
        return QStringLiteral("no free port on 127.0.0.1");
    // The workers run as nobody when we are root: they must reach the folder.
    QFile::setPermissions(m_dir.path(), QFile::permissions(m_dir.path()) | QFile::ExeOther | QFile::ReadOther);
    const QString config = m_dir.filePath(QStringLiteral("nginx.conf"));
    QFile file(config);
    if (!file.open(QIODevice::WriteOnly) || file.write(configText(m_dir.path(), m_port, upstreamPort, subPath)) < 0)
        return QStringLiteral("cannot write %1: %2").arg(config, file.errorString());
    file.close();

    m_process.setStandardOutputFile(m_dir.filePath(QStringLiteral("stdout.txt")));
    m_process.setStandardErrorFile(m_dir.filePath(QStringLiteral("stderr.txt")));
    const pid_t parent = ::getpid();
    m_process.setChildProcessModifier([parent] {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent)
            ::_exit(127);
    });
    // -e: the error log before the configuration is read, which would otherwise be /var/log/nginx.
    m_process.start(program, {QStringLiteral("-p"), m_dir.path(), QStringLiteral("-c"), config, QStringLiteral("-e"),
                              m_dir.filePath(QStringLiteral("error.log"))});
    if (!m_process.waitForStarted())
        return QStringLiteral("cannot run %1: %2").arg(program, m_process.errorString());

    const QDeadlineTimer deadline(10'000);
    while (!deadline.hasExpired()) {
        if (m_process.state() == QProcess::NotRunning)
            return QStringLiteral("exited with code %1").arg(m_process.exitCode());
        QTcpSocket probe;
        probe.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(m_port));
        if (probe.waitForConnected(200))
            return {};
        QThread::msleep(50);
    }
    return QStringLiteral("not listening on port %1 within 10 s").arg(m_port);
}

NginxProxy::~NginxProxy()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate(); // SIGTERM: a fast shutdown, the workers with it
    if (!m_process.waitForFinished(10'000)) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

QString NginxProxy::errorLog() const
{
    QFile log(m_dir.filePath(QStringLiteral("error.log")));
    if (!log.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(log.readAll().right(4096)).trimmed();
}
