#include "LoadedServer.h"

#include "api/Client.h"
#include "api/Endpoint.h"
#include "support/Await.h"
#include "support/TorrentFactory.h"

#include <QFile>
#include <QThread>

#include <chrono>
#include <cstdio>

namespace Bench {

namespace {

using Clock = std::chrono::steady_clock;

double msSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

} // namespace

// Each torrent adds its own random file, which the server never reads. "paused" for 4.x,
// "stopped" for 5.x: each ignores the other's field.
std::unique_ptr<QbtServer> loadedServer(int count, QbtServer::Flavor flavor)
{
    QbtServer::StartResult started = QbtServer::start(flavor, {.localHostAuth = false, .hostHeaderValidation = false});
    if (!started.server) {
        std::fprintf(stderr, "no server: %s\n", qPrintable(started.failure));
        return nullptr;
    }
    QbtServer &server = *started.server;
    const QbtServer::DataDir dir = server.makeDataDir();
    API::Client client(server.configuration());
    const auto start = Clock::now();
    constexpr int batch = 250;
    for (int first = 0; first < count; first += batch) {
        QList<TorrentFactory::FormPart> parts{
            {"paused", "true"}, {"stopped", "true"}, {"savepath", dir.serverPath.toUtf8()}};
        for (int i = first; i < std::min(count, first + batch); ++i) {
            const QString name = i % 20 == 7 ? QStringLiteral("Ünïcödé Ålbum %1").arg(i)
                                             : QStringLiteral("Some.Linux.Distribution.%1.x86_64.iso").arg(i);
            const auto torrent = TorrentFactory::singleFile(dir.localPath, name, 1024 + i % 4096,
                                                            {.announceUrls = {QStringLiteral("http://127.0.0.1:1/announce")}});
            QFile::remove(torrent.contentPath);
            parts.append(TorrentFactory::torrentPart(torrent));
        }
        QuilloTest::wait(client.perform(API::Endpoint::TntManagement::add(TorrentFactory::multipartBody(parts))));
    }
    // The server adds them after answering.
    qint64 rid = 0;
    while (true) {
        const API::MainData full = QuilloTest::wait(client.mainData(0));
        rid = full.rid;
        if (full.tnts.size() >= count)
            break;
        std::fprintf(stderr, "server holds %lld of %d torrents\n", static_cast<long long>(full.tnts.size()), count);
        QThread::sleep(2);
    }
    std::fprintf(stderr, "server loaded with %d torrents in %.0f s (pid %lld)\n", count, msSince(start) / 1000,
                 static_cast<long long>(server.processId()));
    // What the server itself takes to answer, for the connection time and the rhythm of the polls.
    const auto answerMs = [&](qint64 from) {
        const auto asked = Clock::now();
        rid = QuilloTest::wait(client.mainData(from)).rid;
        return msSince(asked);
    };
    const double full = answerMs(0);
    const double delta = answerMs(rid);
    std::printf("server's answers: full update %.0f ms, delta %.0f ms\n", full, delta);
    return std::move(started.server);
}

} // namespace Bench
