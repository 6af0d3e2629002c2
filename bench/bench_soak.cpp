// Quillo's core at work for a long time: the application's context, its sync and models, no widgets,
// polling a scripted server that holds 50,000 torrents and turns them over at every answer (some
// removed, as many added, others changing state and rates, a tag swapped), one answer after another
// 100 ms apart. Resident memory is sampled every 10 s; the run passes when the last quarter's mean
// is within 5% of the first quarter's. Leaks are LeakSanitizer's to report, at exit, in the asan
// build (scripts/soak builds and runs it there).
//
//   bench_soak [minutes] [torrents]    default 30 minutes, 50,000 torrents

#include "MainDataGenerator.h"
#include "Resident.h"

#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/FakeServer.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

// What the sanitizer's allocator holds for live allocations: apart from resident memory, which
// also counts what the allocator keeps after a free, it tells growth from fragmentation.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto pollEvery = 100ms;
constexpr auto sampleEvery = 10s;
// A merge that has not come back by then is asked for again (a lost answer must not end the run).
constexpr auto stallAfter = 10s;
constexpr double allowedGrowth = 0.05;

// The library [first, first + count) as the server holds it, moved on by every delta it serves.
struct ChurningServer
{
    int count;
    int turnover;
    int changed;
    int first = 0;
    unsigned round = 0;

    void serve(FakeServer &server)
    {
        server.setHandler([this](const FakeServer::Request &request) {
            if (request.target.endsWith("/app/webapiVersion"))
                return FakeServer::Response::text(200, "2.11.4");
            if (request.target.endsWith("/app/version"))
                return FakeServer::Response::text(200, "v5.1.0");
            if (request.target.endsWith("/app/buildInfo"))
                return FakeServer::Response::json(
                    R"({"bitness":64,"boost":"1.83.0","libtorrent":"2.0.11.0","openssl":"3.5.0","qt":"6.8.2","zlib":"1.3.1"})");
            if (!request.target.contains("/sync/maindata"))
                return FakeServer::Response::text(200, "");
            if (request.body == "rid=0")
                return FakeServer::Response::json(Bench::churnFull(first, count));
            const QByteArray answer = Bench::churnDelta(first, count, turnover, changed, ++round);
            first += turnover;
            return FakeServer::Response::json(answer);
        });
    }
};

double mean(const std::vector<double> &values)
{
    return values.empty() ? 0 : std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int minutes = argc > 1 ? std::max(1, std::atoi(argv[1])) : 30;
    const int count = argc > 2 ? std::max(100, std::atoi(argv[2])) : 50'000;

    FakeServer server;
    ChurningServer churning{count, count / 1000, count / 100};
    churning.serve(server);

    int result = 0;
    {
        QTemporaryDir dir;
        UserDefaults defaults(dir.filePath(QStringLiteral("Quillo.ini")));
        KeychainStore keychain;
        AppContext context(defaults, keychain);
        // The poller asks for nothing after the full update before the soak takes over.
        context.settings().setRefreshMode(RefreshMode::fixed);
        context.settings().setRefreshInterval(AppSettings::refreshIntervalBounds.maximum);
        const ClientConfiguration configuration = server.configuration(API::AuthMethod::none);
        context.addConfiguration(configuration);
        QuilloTest::wait(context.selectConfiguration(configuration.id));
        if (!QTest::qWaitFor([&] { return context.tntCollection().size() == count; }, 300'000)) {
            std::fprintf(stderr, "the first full update was not merged (%lld torrents)\n",
                         static_cast<long long>(context.tntCollection().size()));
            return 1;
        }
        std::printf("%d torrents; every answer removes %d, adds %d and changes %d; %d minutes\n", count,
                    churning.turnover, churning.turnover, churning.changed, minutes);
        std::printf("%8s %10s %10s %10s %10s\n", "seconds", "RSS MiB", "heap MiB", "answers", "torrents");

        // Only the soak asks from here on, one answer at a time: the scripted server moves on with
        // every answer, so two asked at once could be merged out of order.
        context.suspendPolling();
        std::optional<qint64> askedAtRid;
        auto askedAt = Clock::now();
        int stalls = 0;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &context, [&] {
            const bool merged = askedAtRid != context.rid();
            if (!merged && Clock::now() - askedAt < stallAfter)
                return;
            stalls += merged ? 0 : 1;
            // The scripted server records every request: its memory is not Quillo's.
            server.clearRequests();
            askedAtRid = context.rid();
            askedAt = Clock::now();
            context.forcePoll();
        });

        std::vector<double> samples;
        const auto start = Clock::now();
        const auto sample = [&] {
            samples.push_back(static_cast<double>(Bench::residentMiB()));
            const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start).count();
            const double heap = __sanitizer_get_current_allocated_bytes
                                    ? static_cast<double>(__sanitizer_get_current_allocated_bytes()) / (1024 * 1024)
                                    : -1;
            std::printf("%8lld %10.1f %10.1f %10u %10lld\n", static_cast<long long>(seconds), samples.back(), heap,
                        churning.round, static_cast<long long>(context.tntCollection().size()));
            std::fflush(stdout);
        };
        QTimer sampling;
        QObject::connect(&sampling, &QTimer::timeout, &context, sample);
        sample();
        poll.start(pollEvery);
        sampling.start(sampleEvery);
        QTimer::singleShot(std::chrono::minutes(minutes), &app, &QCoreApplication::quit);
        app.exec();
        poll.stop();
        sampling.stop();

        const std::size_t quarter = std::max<std::size_t>(1, samples.size() / 4);
        const double firstQuarter = mean({samples.begin(), samples.begin() + static_cast<qsizetype>(quarter)});
        const double lastQuarter = mean({samples.end() - static_cast<qsizetype>(quarter), samples.end()});
        const double growth = (lastQuarter - firstQuarter) / firstQuarter;
        std::printf("answers merged %u, stalls %d, at the end %lld torrents and %lld tags\n", churning.round, stalls,
                    static_cast<long long>(context.tntCollection().size()),
                    static_cast<long long>(context.tags().size()));
        std::printf("RSS mean: first quarter %.1f MiB, last quarter %.1f MiB, change %+.1f%% (allowed %.0f%%)\n",
                    firstQuarter, lastQuarter, 100 * growth, 100 * allowedGrowth);
        if (std::abs(growth) > allowedGrowth) {
            std::printf("FAIL: resident memory moved more than allowed\n");
            result = 1;
        }
        // Two tags of the full update and the last answer's: a removed tag must not stay.
        if (context.tags().size() > 3) {
            std::printf("FAIL: %lld tags are listed, the server has 3\n",
                        static_cast<long long>(context.tags().size()));
            result = 1;
        }
        if (context.tntCollection().size() != count) {
            std::printf("FAIL: the collection holds %lld torrents, the server %d\n",
                        static_cast<long long>(context.tntCollection().size()), count);
            result = 1;
        }
        QuilloTest::wait(context.logOut());
    }
    return result;
}
