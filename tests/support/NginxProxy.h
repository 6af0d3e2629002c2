#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>

// A real nginx on 127.0.0.1 serving a qBittorrent WebUI under a sub-path, set up as qBittorrent's
// own guide for reverse proxies has it. It runs in the foreground as a child with everything it
// writes in a folder of its own, and is stopped by its pid when destroyed.
class NginxProxy
{
public:
    struct StartResult
    {
        std::unique_ptr<NginxProxy> proxy; // null when it could not start
        QString failure;
    };

    // `subPath` as "/qbt/": requests under it reach the server's root on `upstreamPort`.
    static StartResult start(int upstreamPort, const QString &subPath);

    ~NginxProxy();
    NginxProxy(const NginxProxy &) = delete;
    NginxProxy &operator=(const NginxProxy &) = delete;

    int port() const { return m_port; }
    // The end of its error log, for a failure message.
    QString errorLog() const;

private:
    NginxProxy() = default;
    QString launch(int upstreamPort, const QString &subPath);

    QTemporaryDir m_dir;
    QProcess m_process;
    int m_port = 0;
};
