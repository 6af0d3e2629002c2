// Start-up as a user meets it: the built quillo launched as a process of its own, timed from the
// launch to its first painted window and to its table first painted with rows (the lines of its
// "Startup" logging category), and its resident memory three seconds later; the median of several
// launches. Each launch is ended once it has painted. Run under a display server, with a session
// bus as on a desktop:
//
//   dbus-run-session -- xvfb-run -a bench_start welcome [runs]
//       no saved connection: the welcome view
//   … bench_start kept TORRENTS [runs]
//       a saved connection to a server that takes an hour to answer, and the list of that many
//       torrents kept from its last session
//   … bench_start real TORRENTS [runs] [4.5|newest]
//       a real qbittorrent-nox loaded with that many torrents, nothing kept: connect to painted
//
// Without a display the launches run offscreen. BENCH_START_WRAPPER names a command to launch
// them under, such as a profiler; BENCH_START_PROGRAM another build of quillo to launch.

#include "Stats.h"
#include "EventLoop.h"
#include "LoadedServer.h"
#include "MainDataGenerator.h"
#include "Resident.h"

#include "api/AppInfo.h"
#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/FakeServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

struct Launch
{
    double window = 0, table = 0;       // from the launch, measured here
    double windowOwn = 0, tableOwn = 0; // from the start of main(), as the program says
    int rows = 0;
    long resident = -1; // MiB, a few seconds after the table was painted
};

// Saves `configuration` as the current connection the way the program does, connects once and
// quits, which keeps the server's torrent list.
bool prepare(const ClientConfiguration &configuration, qsizetype torrents)
{
    UserDefaults defaults;
    KeychainStore keychain;
    AppContext context(defaults, keychain);
    context.addConfiguration(configuration);
    QuilloTest::wait(context.selectConfiguration(configuration.id));
    return Bench::runUntil([&] { return context.isCurrent() && context.tntCollection().size() >= torrents; }, 300s);
}

std::optional<Launch> launch(bool expectTable)
{
    QProcess quillo;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("Startup.debug=true"));
    environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    if (!environment.contains(QStringLiteral("DISPLAY")) && !environment.contains(QStringLiteral("WAYLAND_DISPLAY")))
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    quillo.setProcessEnvironment(environment);
    // BENCH_START_WRAPPER runs each launch under a profiler: "perf record -g -o /tmp/start.perf".
    QStringList command = QString::fromLocal8Bit(qgetenv("BENCH_START_WRAPPER")).split(u' ', Qt::SkipEmptyParts);
    // BENCH_START_PROGRAM launches another build, for a comparison in one run.
    const QString program = qEnvironmentVariable("BENCH_START_PROGRAM", QStringLiteral(QUILLO_PROGRAM));
    command << program;
    quillo.setProgram(command.takeFirst());
    quillo.setArguments(command);

    static const QRegularExpression windowLine(QStringLiteral("Window painted (\\d+) ms after start"));
    static const QRegularExpression tableLine(QStringLiteral("Table painted with (\\d+) rows (\\d+) ms after start"));
    Launch result;
    bool window = false, table = false;
    QByteArray pending;
    Clock::time_point started;
    const auto msSinceLaunch = [&] { return std::chrono::duration<double, std::milli>(Clock::now() - started).count(); };
    QObject::connect(&quillo, &QProcess::readyReadStandardError, [&] {
        const double now = msSinceLaunch();
        pending += quillo.readAllStandardError();
        qsizetype end;
        while ((end = pending.indexOf('\n')) >= 0) {
            const QString line = QString::fromUtf8(pending.left(end));
            pending.remove(0, end + 1);
            if (const auto painted = windowLine.match(line); painted.hasMatch() && !window) {
                window = true;
                result.window = now;
                result.windowOwn = painted.captured(1).toDouble();
            } else if (const auto filled = tableLine.match(line); filled.hasMatch() && !table) {
                table = true;
                result.table = now;
                result.rows = filled.captured(1).toInt();
                result.tableOwn = filled.captured(2).toDouble();
            }
        }
    });
    started = Clock::now();
    quillo.start();
    const bool painted = Bench::runUntil([&] { return window && (table || !expectTable); }, 120s);
    // What the program holds once it has settled: freed memory goes back a second after a list is
    // swapped in.
    if (painted && expectTable) {
        Bench::run(3s);
        result.resident = Bench::residentMiB(std::to_string(quillo.processId()));
    }
    quillo.terminate();
    if (!quillo.waitForFinished(5000))
        quillo.kill();
    quillo.waitForFinished();
    if (!painted) {
        std::fprintf(stderr, "quillo did not paint %s in two minutes\n", window ? "its table" : "its window");
        return std::nullopt;
    }
    return result;
}

int measure(int runs, bool expectTable, const std::function<void()> &beforeEach = {})
{
    std::vector<double> window, table, windowOwn, tableOwn, resident;
    int rows = 0;
    for (int i = 0; i < runs; ++i) {
        if (beforeEach)
            beforeEach();
        const std::optional<Launch> launched = launch(expectTable);
        if (!launched)
            return 1;
        window.push_back(launched->window);
        windowOwn.push_back(launched->windowOwn);
        table.push_back(launched->table);
        tableOwn.push_back(launched->tableOwn);
        resident.push_back(static_cast<double>(launched->resident));
        rows = launched->rows;
    }
    using Bench::range;
    std::printf("launches                  %d\n", runs);
    std::printf("launch to window painted  median %.0f ms (%.0f–%.0f); from main(): %.0f ms\n", Bench::median(window),
                range(window).first, range(window).second, Bench::median(windowOwn));
    if (expectTable)
        std::printf("launch to table painted   median %.0f ms (%.0f–%.0f); from main(): %.0f ms; %d rows\n", Bench::median(table),
                    range(table).first, range(table).second, Bench::median(tableOwn), rows);
    if (expectTable)
        std::printf("resident 3 s after        median %.0f MiB (%.0f–%.0f)\n", Bench::median(resident), range(resident).first,
                    range(resident).second);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    // The launched program and this one share a home of their own: settings, keyring-free
    // connections and kept lists.
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", QDir(home.path()).filePath(QStringLiteral("config")).toUtf8());
    qputenv("XDG_CACHE_HOME", QDir(home.path()).filePath(QStringLiteral("cache")).toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen"); // this process shows nothing; the launches inherit the display
    QCoreApplication app(argc, argv);
    qunsetenv("QT_QPA_PLATFORM");
    QCoreApplication::setApplicationName(QString::fromUtf16(AppInfo::name)); // the cache folder's name

    const QString mode = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("welcome");
    if (mode == u"welcome") {
        const int runs = argc > 2 ? std::max(1, std::atoi(argv[2])) : 11;
        std::printf("no saved connection\n");
        return measure(runs, false);
    }
    const int count = argc > 2 ? std::max(1, std::atoi(argv[2])) : 10000;
    const int runs = argc > 3 ? std::max(1, std::atoi(argv[3])) : 11;
    if (mode == u"kept") {
        FakeServer server;
        const QByteArray full = Bench::fullUpdate(count);
        server.setHandler([full](const FakeServer::Request &request) {
            if (request.target.endsWith("/app/webapiVersion"))
                return FakeServer::Response::text(200, "2.11.4");
            if (request.target.endsWith("/app/version"))
                return FakeServer::Response::text(200, "v5.1.0");
            if (request.target.endsWith("/app/buildInfo"))
                return FakeServer::Response::json("{\"bitness\":64}");
            if (request.target.contains("/sync/maindata"))
                return FakeServer::Response::json(full);
            return FakeServer::Response::text(200, "");
        });
        if (!prepare(server.configuration(API::AuthMethod::none), count)) {
            std::fprintf(stderr, "the list to keep was not loaded\n");
            return 1;
        }
        server.setHandler([](const FakeServer::Request &) {
            FakeServer::Response stalled = FakeServer::Response::text(200, "");
            stalled.delay = 1h;
            return stalled;
        });
        std::printf("a kept list of %d torrents, its server answering nothing\n", count);
        return measure(runs, true);
    }
    if (mode == u"real") {
        const bool newest = argc > 4 && QByteArrayView(argv[4]) == "newest";
        const std::unique_ptr<QbtServer> server =
            Bench::loadedServer(count, newest ? QbtServer::Flavor::Sid : QbtServer::Flavor::Bookworm45);
        if (!server)
            return 1;
        ClientConfiguration configuration = server->configuration();
        configuration.authMethod = API::AuthMethod::none;
        if (!prepare(configuration, count)) {
            std::fprintf(stderr, "the server's torrents were not loaded\n");
            return 1;
        }
        std::printf("qbittorrent-nox %s with %d torrents, nothing kept\n", newest ? "newest" : "4.5.2", count);
        const QString kept = QDir(home.path()).filePath(QStringLiteral("cache/Quillo/snapshots"));
        return measure(runs, true, [kept] { QDir(kept).removeRecursively(); });
    }
    std::fprintf(stderr, "bench_start welcome [runs] | kept TORRENTS [runs] | real TORRENTS [runs] [4.5|newest]\n");
    return 2;
}
