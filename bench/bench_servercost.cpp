// What Quillo costs a real server, and what compressing its answers gains. Run from a Release build:
//
//   bench_servercost cpu [torrents] [seconds]   a qbittorrent-nox 4.5.2 with small stopped torrents:
//                                              its own CPU time (utime + stime of /proc/<pid>/stat)
//                                              with nobody polling, then while one Quillo polls at a
//                                              fixed 1.5 s, then while one adapts to its speed
//   bench_servercost gzip [torrents] [runs]     full updates from 4.5.2 (and 5.1 when its root is
//                                              there) asked for with and without gzip, on loopback
//                                              and through a relay that carries 20 Mbit/s

#include "EventLoop.h"
#include "Gzip.h"
#include "LoadedServer.h"

#include "api/Records.h"
#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/FaultProxy.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTemporaryDir>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

using namespace std::chrono_literals;
using Bench::run;
using Bench::runUntil;

// User and system time of a process, every thread, in seconds: fields 14 and 15 of its stat line,
// counted after the command name, which may hold spaces.
double processCpuSeconds(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray line = stat.readAll();
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    const double ticks = fields.value(11).toDouble() + fields.value(12).toDouble();
    return ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

void serverCpu(int count, int seconds)
{
    const std::unique_ptr<QbtServer> server = Bench::loadedServer(count);
    if (!server)
        return;
    const qint64 pid = server->processId();
    run(10s); // the answers of the loading settle
    const auto cpuOver = [&](int window) {
        const double before = processCpuSeconds(pid);
        run(std::chrono::seconds(window));
        return processCpuSeconds(pid) - before;
    };
    const int idleWindow = std::min(seconds, 60);
    const double idle = cpuOver(idleWindow);
    std::printf("nobody polling        %d s: server CPU %.1f s (%.1f s a minute)\n", idleWindow, idle,
                idle * 60 / idleWindow);

    for (const RefreshMode mode : {RefreshMode::fixed, RefreshMode::adaptive}) {
        QTemporaryDir dir;
        UserDefaults defaults(dir.filePath(QStringLiteral("Quillo.ini")));
        KeychainStore keychain;
        AppContext context(defaults, keychain);
        context.settings().setRefreshInterval(1500);
        context.settings().setIntervalIncreaseValue(0);
        context.settings().setRefreshMode(mode);
        ClientConfiguration configuration = server->configuration();
        configuration.authMethod = API::AuthMethod::none;
        context.addConfiguration(configuration);
        QuilloTest::wait(context.selectConfiguration(configuration.id));
        if (!runUntil([&] { return context.tntCollection().size() >= count; }, 120s)) {
            std::fprintf(stderr, "the first full update did not arrive\n");
            return;
        }
        std::vector<qint64> pauses;
        QObject::connect(&context.answerPace(), &AnswerPace::changed, &context,
                         [&] { pauses.push_back(context.pollingInterval().count()); });
        const qint64 ridBefore = context.rid();
        const double cpu = cpuOver(seconds);
        const qint64 answers = context.rid() - ridBefore; // the server's rid grows by one per answer
        std::sort(pauses.begin(), pauses.end());
        std::printf("%-21s %d s: server CPU %.1f s (%.1f s a minute), %lld answers, last answer %lld ms, "
                    "pauses %lld–%lld ms (median %lld)\n",
                    mode == RefreshMode::fixed ? "fixed 1.5 s" : "adapting", seconds, cpu, cpu * 60 / seconds,
                    static_cast<long long>(answers),
                    static_cast<long long>(context.answerPace().last().value_or(0ms).count()),
                    static_cast<long long>(pauses.empty() ? 0 : pauses.front()),
                    static_cast<long long>(pauses.empty() ? 0 : pauses.back()),
                    static_cast<long long>(pauses.empty() ? 0 : pauses[pauses.size() / 2]));
    }
}

struct Fetched
{
    double firstByteMs = 0; // the server producing the answer (and compressing it, when asked)
    double receivedMs = 0;  // to the last byte
    qint64 bytes = 0;       // as they came over the wire
    double inflateMs = 0;
    double decodeMs = 0;
};

// One full update, asked for as Quillo asks, with the encoding given; inflated by hand, as a
// named encoding stops Qt from doing it.
Fetched fetchFull(QNetworkAccessManager &network, quint16 port, const QByteArray &encoding)
{
    QNetworkRequest request(QUrl(QStringLiteral("http://127.0.0.1:%1/api/v2/sync/maindata").arg(port)));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/x-www-form-urlencoded"));
    request.setRawHeader("Accept-Encoding", encoding);
    Fetched fetched;
    QElapsedTimer clock;
    clock.start();
    QNetworkReply *reply = network.post(request, QByteArrayLiteral("rid=0"));
    QByteArray body;
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [&] {
        if (body.isEmpty())
            fetched.firstByteMs = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        body += reply->readAll();
    });
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    body += reply->readAll();
    fetched.receivedMs = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    fetched.bytes = body.size();
    const bool gzipped = reply->rawHeader("Content-Encoding") == "gzip";
    reply->deleteLater();
    if (gzipped) {
        clock.restart();
        body = Bench::gunzip(body);
        fetched.inflateMs = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    }
    clock.restart();
    const API::MainData data = API::decodeMainData(body);
    fetched.decodeMs = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    if (!data.fullUpdate.value_or(false))
        std::fprintf(stderr, "not a full update\n");
    return fetched;
}

void compression(int count, int runs)
{
    QList<QbtServer::Flavor> flavors{QbtServer::Flavor::Bookworm45};
    if (QFile::exists(QbtServer::rootOf(QbtServer::Flavor::Trixie51)))
        flavors.append(QbtServer::Flavor::Trixie51);
    std::printf("| server | link | asked | first byte | last byte | bytes | inflate | decode | to decoded |\n");
    std::printf("|---|---|---|---:|---:|---:|---:|---:|---:|\n");
    for (const QbtServer::Flavor flavor : flavors) {
        const std::unique_ptr<QbtServer> server = Bench::loadedServer(count, flavor);
        if (!server)
            continue;
        FaultProxy slowLink(static_cast<quint16>(server->webPort()));
        if (const QString failure = slowLink.listen(); !failure.isEmpty()) {
            std::fprintf(stderr, "no relay: %s\n", qPrintable(failure));
            return;
        }
        slowLink.setBytesPerSecond(20'000'000 / 8);
        slowLink.setMode(FaultProxy::Mode::throttle);
        for (const bool slow : {false, true}) {
            for (const QByteArray &encoding : {QByteArrayLiteral("identity"), QByteArrayLiteral("gzip")}) {
                QNetworkAccessManager network;
                const quint16 port = slow ? slowLink.port() : static_cast<quint16>(server->webPort());
                fetchFull(network, port, encoding); // the session and its cookie
                std::vector<double> firstByte, received, inflate, decode, total;
                qint64 bytes = 0;
                for (int i = 0; i < runs; ++i) {
                    const Fetched fetched = fetchFull(network, port, encoding);
                    firstByte.push_back(fetched.firstByteMs);
                    received.push_back(fetched.receivedMs);
                    inflate.push_back(fetched.inflateMs);
                    decode.push_back(fetched.decodeMs);
                    total.push_back(fetched.receivedMs + fetched.inflateMs + fetched.decodeMs);
                    bytes = fetched.bytes;
                }
                std::printf("| %s | %s | %s | %.0f ms | %.0f ms | %.2f MB | %.0f ms | %.0f ms | %.0f ms |\n",
                            qPrintable(QbtServer::flavorName(flavor)), slow ? "20 Mbit/s" : "loopback",
                            encoding.constData(), median(firstByte), median(received),
                            static_cast<double>(bytes) / 1e6, median(inflate), median(decode), median(total));
                std::fflush(stdout);
            }
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QString mode = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("cpu");
    const int count = argc > 2 ? std::max(1, std::atoi(argv[2])) : 10000;
    if (mode == u"gzip") {
        compression(count, argc > 3 ? std::max(1, std::atoi(argv[3])) : 5);
        return 0;
    }
    serverCpu(count, argc > 3 ? std::max(1, std::atoi(argv[3])) : 300);
    return 0;
}
