// How the live torrent table copes with a large library: building the models of a full update,
// swapping them into a table model that a sorting proxy watches, merging a busy delta, sorting and
// filtering. Run from a Release build: bench_table [runs]

#include "MainDataGenerator.h"

#include "api/Records.h"
#include "model/TntCollection.h"
#include "ui/TntFilterProxy.h"
#include "ui/TntTableModel.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

template<typename Work>
double medianMs(int runs, const Work &work)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const auto start = Clock::now();
        work(i);
        times.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

long residentMiB()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmRSS:", 0) == 0)
            return std::stol(line.substr(6)) / 1024;
    }
    return -1;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5;
    std::printf("median of %d runs, milliseconds (resident memory: whole process, MiB)\n", runs);
    std::printf("%8s %7s %10s %10s %10s %8s %11s %11s %9s %9s %7s %9s\n", "torrents", "build", "swap/name",
                "swap/added", "full again", "merge", "views/name", "views/rate", "sort name", "sort size", "filter",
                "resident");
    for (const int count : {5000, 50000}) {
        const API::MainData full = API::decodeMainData(Bench::fullUpdate(count));
        // A fresh busy delta (1% of the torrents) for every merge, as a real server sends.
        std::vector<API::MainData> deltas;
        for (int i = 0; i < 4 * runs; ++i)
            deltas.push_back(API::decodeMainData(Bench::delta(count, static_cast<unsigned>(i + 1))));

        const double build = medianMs(runs, [&](int) { TntCollection::build(full.tnts, 5); });

        TntCollection collection;
        TntFilterProxy proxy(collection);
        proxy.sort(TntTableModel::NameColumn);

        // Built on a worker in the application; the swap is what the main thread does.
        std::vector<double> swaps;
        for (int i = 0; i < runs; ++i) {
            auto models = TntCollection::build(full.tnts, 5);
            const auto start = Clock::now();
            collection.replaceAll(std::move(models));
            swaps.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        }
        std::sort(swaps.begin(), swaps.end());
        const long resident = residentMiB();
        // The application's default order: newest first.
        proxy.sort(TntTableModel::AddedOnColumn, Qt::DescendingOrder);
        std::vector<double> swapsByDate;
        for (int i = 0; i < runs; ++i) {
            auto models = TntCollection::build(full.tnts, 5);
            const auto start = Clock::now();
            collection.replaceAll(std::move(models));
            swapsByDate.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        }
        std::sort(swapsByDate.begin(), swapsByDate.end());
        proxy.sort(TntTableModel::NameColumn);
        const double fullAgain = medianMs(runs, [&](int) { collection.mergeFull(full.tnts, 5); });

        TntCollection bare;
        bare.replaceAll(TntCollection::build(full.tnts, 5));
        const double merge = medianMs(runs, [&](int i) { bare.merge(deltas[static_cast<std::size_t>(i)].tnts, {}, 5); });
        const double viewsByName = medianMs(runs, [&](int i) { collection.merge(deltas[static_cast<std::size_t>(runs + i)].tnts, {}, 5); });
        proxy.sort(TntTableModel::DownSpeedColumn, Qt::DescendingOrder);
        const double viewsByRate = medianMs(runs, [&](int i) { collection.merge(deltas[static_cast<std::size_t>(2 * runs + i)].tnts, {}, 5); });
        const double sortName = medianMs(runs, [&](int i) {
            proxy.sort(TntTableModel::NameColumn, i % 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
        });
        const double sortSize = medianMs(runs, [&](int i) {
            proxy.sort(TntTableModel::SizeColumn, i % 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
        });
        const double filter = medianMs(runs, [&](int i) { proxy.setNameFilter(i % 2 ? QStringLiteral("ab") : QString()); });
        std::printf("%8d %7.1f %10.1f %10.1f %10.1f %8.2f %11.2f %11.2f %9.1f %9.1f %7.1f %9ld\n", count, build,
                    swaps[swaps.size() / 2], swapsByDate[swapsByDate.size() / 2], fullAgain, merge, viewsByName,
                    viewsByRate, sortName, sortSize, filter, resident);
    }
    return 0;
}
