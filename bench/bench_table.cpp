// How the live torrent table copes with a large library: building the models of a full update,
// swapping them into a table model that a sorting proxy watches, merging a busy delta, and
// filtering by name. Run from a Release build: bench_table [runs]

#include "MainDataGenerator.h"

#include "api/Records.h"
#include "model/TntCollection.h"
#include "ui/TntTableModel.h"

#include <QCoreApplication>
#include <QSortFilterProxyModel>

#include <algorithm>
#include <chrono>
#include <cstdio>
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

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5;
    std::printf("median of %d runs, milliseconds\n", runs);
    std::printf("%9s %10s %10s %12s %12s %10s\n", "torrents", "build", "swap+sort", "delta merge", "delta views",
                "filter");
    for (const int count : {1000, 10000, 50000}) {
        const API::MainData full = API::decodeMainData(Bench::fullUpdate(count));
        // Two different busy deltas, applied in turn, so that every merge changes something.
        const API::MainData deltas[2] = {API::decodeMainData(Bench::delta(count, 1)),
                                         API::decodeMainData(Bench::delta(count, 2))};

        const double build = medianMs(runs, [&](int) { TntCollection::build(full.tnts, 5); });

        TntCollection collection;
        TntTableModel table(collection);
        QSortFilterProxyModel proxy;
        proxy.setSourceModel(&table);
        proxy.setSortRole(TntTableModel::SortRole);
        proxy.setFilterKeyColumn(TntTableModel::NameColumn);
        proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
        proxy.sort(TntTableModel::DownSpeedColumn, Qt::DescendingOrder);

        // Only the swap runs on the main thread (the build does not): it is what the user waits for.
        std::vector<double> swaps;
        for (int i = 0; i < runs; ++i) {
            auto models = TntCollection::build(full.tnts, 5);
            const auto start = Clock::now();
            collection.replaceAll(std::move(models));
            swaps.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        }
        std::sort(swaps.begin(), swaps.end());

        TntCollection bare;
        bare.replaceAll(TntCollection::build(full.tnts, 5));
        const double mergeAlone =
            medianMs(runs, [&](int i) { bare.merge(deltas[i % 2].tnts, {}, 5); });
        const double mergeWithViews =
            medianMs(runs, [&](int i) { collection.merge(deltas[i % 2].tnts, {}, 5); });
        const double filter = medianMs(runs, [&](int i) {
            proxy.setFilterFixedString(i % 2 ? QStringLiteral("ab") : QString());
        });
        std::printf("%9d %10.1f %10.1f %12.2f %12.2f %10.1f\n", count, build, swaps[swaps.size() / 2],
                    mergeAlone, mergeWithViews, filter);
    }
    return 0;
}
