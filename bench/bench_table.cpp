// How the live torrent table copes with a large library: building the models of a full update,
// swapping them into the table that a sorting proxy and a table view watch, merging busy deltas,
// sorting and filtering. Run from a Release build: bench_table [runs] [--same-delta], or
// bench_table <torrents> --memory for where the memory of a library goes

#include "MainDataGenerator.h"
#include "Resident.h"

#include "api/Records.h"
#include "model/TntCollection.h"
#include "settings/UserDefaults.h"
#include "ui/TntFilterProxy.h"
#include "ui/TntTableModel.h"
#include "ui/TntTableView.h"

#include <QApplication>
#include <QCollator>
#include <QSet>
#include <QTableView>
#include <QTemporaryDir>

#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double msSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

template<typename Work>
double medianMs(int runs, const Work &work)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        const auto start = Clock::now();
        work(i);
        times.push_back(msSince(start));
    }
    return median(times);
}

// Deltas with values of their own: merging the same one twice changes nothing the second time.
std::vector<API::MainData> deltas(int torrentCount, int changed, int count)
{
    std::vector<API::MainData> result;
    for (int round = 1; round <= count; ++round)
        result.push_back(API::decodeMainData(Bench::delta(torrentCount, changed, static_cast<unsigned>(round))));
    return result;
}

// A table view over the proxy, its layout done and its rows painted.
struct ShownTable
{
    QTableView view;

    explicit ShownTable(TntFilterProxy &proxy)
    {
        view.setModel(&proxy);
        view.resize(1400, 900);
        view.show();
        QApplication::processEvents();
    }
};

void fullUpdates(int count, int runs)
{
    const API::MainData full = API::decodeMainData(Bench::fullUpdate(count));
    const std::vector<API::MainData> busy = deltas(count, count / 100, 3 * runs);

    const double build = medianMs(runs, [&](int) { TntCollection::build(full.tnts, 5); });

    TntCollection collection;
    TntFilterProxy proxy(collection);
    // Built on a worker in the application; the swap is what the main thread does.
    const auto swapMs = [&] {
        std::vector<double> times;
        for (int i = 0; i < runs; ++i) {
            auto models = TntCollection::build(full.tnts, 5);
            const auto start = Clock::now();
            collection.replaceAll(std::move(models));
            times.push_back(msSince(start));
        }
        return median(times);
    };
    proxy.sort(TntTableModel::NameColumn);
    const double swapByName = swapMs();
    const long resident = Bench::residentMiB();
    // The application's default order: newest first.
    proxy.sort(TntTableModel::AddedOnColumn, Qt::DescendingOrder);
    const double swapByDate = swapMs();
    proxy.sort(TntTableModel::NameColumn);
    const double fullAgain = medianMs(runs, [&](int) { collection.mergeFull(full.tnts, 5); });

    TntCollection bare;
    bare.replaceAll(TntCollection::build(full.tnts, 5));
    const auto merge = [&](TntCollection &into, int round) { into.merge(busy[static_cast<std::size_t>(round)].tnts, {}, 5); };
    const double mergeAlone = medianMs(runs, [&](int i) { merge(bare, i); });
    const double viewsByName = medianMs(runs, [&](int i) { merge(collection, runs + i); });
    proxy.sort(TntTableModel::DownSpeedColumn, Qt::DescendingOrder);
    const double viewsByRate = medianMs(runs, [&](int i) { merge(collection, 2 * runs + i); });
    const double sortName = medianMs(runs, [&](int i) {
        proxy.sort(TntTableModel::NameColumn, i % 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
    });
    const double sortSize = medianMs(runs, [&](int i) {
        proxy.sort(TntTableModel::SizeColumn, i % 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
    });
    const double filter = medianMs(runs, [&](int i) { proxy.setNameFilter(i % 2 ? QStringLiteral("ab") : QString()); });

    // The first full update as the application meets it: swapped in, the view laid out and painted.
    proxy.setNameFilter({});
    proxy.sort(TntTableModel::AddedOnColumn, Qt::DescendingOrder);
    std::vector<double> swapsShown;
    {
        ShownTable table(proxy);
        for (int i = 0; i < runs; ++i) {
            collection.clear();
            QApplication::processEvents();
            auto models = TntCollection::build(full.tnts, 5);
            const auto start = Clock::now();
            collection.replaceAll(std::move(models));
            QApplication::processEvents();
            swapsShown.push_back(msSince(start));
        }
    }
    const double swapShown = median(swapsShown);
    std::printf("%8d %7.1f %10.1f %10.1f %10.1f %10.1f %8.2f %11.2f %11.2f %9.1f %9.1f %7.1f %9ld\n", count, build,
                swapByName, swapByDate, swapShown, fullAgain, mergeAlone, viewsByName, viewsByRate, sortName, sortSize,
                filter, resident);
}

// The application's table widget (the proxy, the view with its hidden vertical header of fixed row
// heights) over `collection`, sorted by download rate, fastest first, laid out and painted.
struct AppTable
{
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("bench.ini"))};
    TntTableView view;

    explicit AppTable(TntCollection &collection)
        : view(collection, defaults)
    {
        view.table()->sortByColumn(TntTableModel::DownSpeedColumn, Qt::DescendingOrder);
        view.resize(1400, 900);
        view.show();
        QApplication::processEvents();
    }
};

// The same 500 torrents change in a library of 5,000 and one of 50,000 (the first 5,000 torrents
// of both are the same): the cost should follow the change, not the library.
void sameDelta(int runs)
{
    constexpr int changed = 500;
    const int rounds = std::max(runs, 21);
    const std::vector<API::MainData> busy = deltas(5000, changed, 3 * rounds);
    struct Library
    {
        int count;
        TntCollection bare;
        TntCollection shown;
        std::optional<TntFilterProxy> proxy;
        std::optional<AppTable> table;
        std::vector<double> merge, views, view, paint;
    };
    std::vector<std::unique_ptr<Library>> libraries;
    for (const int count : {5000, 50000}) {
        auto library = std::make_unique<Library>();
        library->count = count;
        const API::MainData full = API::decodeMainData(Bench::fullUpdate(count));
        library->bare.replaceAll(TntCollection::build(full.tnts, 5));
        library->shown.replaceAll(TntCollection::build(full.tnts, 5));
        library->proxy.emplace(library->shown);
        library->proxy->sort(TntTableModel::DownSpeedColumn, Qt::DescendingOrder);
        libraries.push_back(std::move(library));
    }
    const auto delta = [&](int round) -> const auto & { return busy[static_cast<std::size_t>(round)].tnts; };
    const auto timed = [](const auto &work) {
        const auto start = Clock::now();
        work();
        return msSince(start);
    };
    // Interleaved, first one library then the other, so that both meet the same load of the machine
    // and the same state of the caches.
    const auto interleaved = [&](const auto &measure) {
        for (int i = 0; i < rounds; ++i) {
            for (std::size_t j = 0; j < libraries.size(); ++j)
                measure(*libraries[i % 2 ? libraries.size() - 1 - j : j], i);
        }
    };
    interleaved([&](Library &library, int i) {
        library.merge.push_back(timed([&] { library.bare.merge(delta(i), {}, 5); }));
        library.views.push_back(timed([&] { library.shown.merge(delta(rounds + i), {}, 5); }));
    });
    // With the application's table: the merge and the view's handling of the signals, then the
    // layout and painting that follow in the event loop.
    for (const auto &library : libraries) {
        library->proxy.reset();
        library->table.emplace(library->shown);
    }
    interleaved([&](Library &library, int i) {
        library.view.push_back(timed([&] { library.shown.merge(delta(2 * rounds + i), {}, 5); }));
        library.paint.push_back(library.view.back() + timed([] { QApplication::processEvents(); }));
    });
    std::printf("\nthe same %d-torrent delta, sorted by download rate (milliseconds, median of %d)\n", changed, rounds);
    std::printf("%8s %8s %11s %8s %8s\n", "torrents", "merge", "views/rate", "+view", "+paint");
    for (const auto &library : libraries)
        std::printf("%8d %8.2f %11.2f %8.2f %8.2f\n", library->count, median(library->merge), median(library->views),
                    median(library->view), median(library->paint));
    const auto ratio = [&](std::vector<double> Library::*times) {
        return median(libraries[1].get()->*times) / median(libraries[0].get()->*times);
    };
    std::printf("%8s %7.2fx %10.2fx %7.2fx %7.2fx\n", "ratio", ratio(&Library::merge), ratio(&Library::views),
                ratio(&Library::view), ratio(&Library::paint));
}

// Scattered torrents leaving in one answer (another client removed thousands): what the main thread
// does, with the collection alone and with the proxy sorted by name over it.
void removals(int runs)
{
    constexpr int count = 50'000;
    const API::MainData full = API::decodeMainData(Bench::fullUpdate(count));
    std::printf("\nscattered removals from %d torrents (milliseconds, median of %d)\n", count, runs);
    std::printf("%8s %10s %11s\n", "removed", "collection", "+views/name");
    for (const int step : {5, 2}) {
        const auto timed = [&](bool withViews) {
            std::vector<double> times;
            for (int i = 0; i < runs; ++i) {
                TntCollection collection;
                std::optional<TntFilterProxy> proxy;
                if (withViews) {
                    proxy.emplace(collection);
                    proxy->sort(TntTableModel::NameColumn);
                }
                collection.replaceAll(TntCollection::build(full.tnts, 5));
                QStringList removed;
                for (qsizetype row = 0; row < collection.size(); row += step)
                    removed << collection.at(row).id();
                const auto start = Clock::now();
                collection.merge({}, removed, 5);
                times.push_back(msSince(start));
            }
            return median(times);
        };
        std::printf("%8d %10.1f %11.1f\n", count / step, timed(false), timed(true));
    }
}

// Heap bytes in use (glibc's count, every arena).
double heapMiB()
{
    return static_cast<double>(mallinfo2().uordblks) / (1024.0 * 1024.0);
}

// The heap bytes a string holds, counted once however many torrents share it.
qsizetype stringBytes(const QString &text, QSet<const void *> &seen)
{
    if (text.isNull() || seen.contains(text.constData()))
        return 0;
    seen.insert(text.constData());
    return 16 + (text.capacity() + 1) * 2;
}

// Where the memory of a library of `count` torrents goes: the empty window, the decoded full
// update, the models and what they hold, the collection's index, the views over them.
void memory(int count)
{
    std::printf("\nmemory of %d torrents: resident (whole process) and heap in use, MiB\n", count);
    const auto report = [](const char *what) {
        std::printf("%-44s %7ld %9.1f\n", what, Bench::residentMiB(), heapMiB());
    };
    report("before the window");
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("bench.ini"))};
    TntCollection collection;
    auto view = std::make_unique<TntTableView>(collection, defaults);
    view->resize(1400, 900);
    view->show();
    QApplication::processEvents();
    report("empty window shown");
    std::optional<API::MainData> full = API::decodeMainData(Bench::fullUpdate(count));
    report("+ decoded full update");
    const double beforeModels = heapMiB();
    auto models = TntCollection::build(full->tnts, 5);
    const double modelsMiB = heapMiB() - beforeModels;
    report("+ models built");
    full.reset();
    report("- decoded full update freed");
    malloc_trim(0);
    report("  after malloc_trim");
    const double beforeSwap = heapMiB();
    collection.replaceAll(std::move(models));
    const double indexMiB = heapMiB() - beforeSwap;
    QApplication::processEvents();
    report("+ swapped in and painted");

    QSet<const void *> seen;
    std::map<std::string, qsizetype> strings;
    for (const auto &tnt : collection) {
        strings["id"] += stringBytes(tnt->id(), seen);
        strings["name"] += stringBytes(tnt->name(), seen);
        strings["contentPath"] += stringBytes(tnt->contentPath(), seen);
        strings["magnetUri"] += stringBytes(tnt->magnetUri(), seen);
        strings["savePath"] += stringBytes(tnt->savePath(), seen);
        strings["category"] += stringBytes(tnt->category(), seen);
        strings["tags"] += stringBytes(tnt->tags(), seen);
        strings["tracker"] += stringBytes(tnt->tracker(), seen);
    }
    const auto perTorrent = [count](double bytes) { return bytes / count; };
    std::printf("\nper torrent, bytes: models (heap) %.0f, of which the model %zu", perTorrent(modelsMiB * 1048576.0),
                sizeof(TntModel));
    for (const auto &[name, bytes] : strings)
        std::printf(", %s %.0f", name.c_str(), perTorrent(static_cast<double>(bytes)));
    // The models' name keys, made again the same way: what they hold on the heap.
    {
        QCollator collator;
        collator.setNumericMode(true);
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        std::vector<QCollatorSortKey> keys;
        keys.reserve(static_cast<std::size_t>(collection.size()));
        const double beforeMade = heapMiB();
        for (const auto &tnt : collection)
            keys.push_back(collator.sortKey(tnt->name()));
        std::printf(", name sort key %.0f", perTorrent((heapMiB() - beforeMade) * 1048576.0));
    }
    // The swap builds the collection's index and the views' arrays by row (order, places, keys).
    std::printf("; index and views %.0f\n", perTorrent(indexMiB * 1048576.0));
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5;
    if (argc > 2 && std::strcmp(argv[2], "--memory") == 0) {
        memory(runs);
        return 0;
    }
    if (argc > 2 && std::strcmp(argv[2], "--removals") == 0) {
        removals(runs);
        return 0;
    }
    // Only the same delta on two library sizes: a minute less, and what a profiler wants.
    if (argc <= 2 || std::strcmp(argv[2], "--same-delta") != 0) {
        std::printf("median of %d runs, milliseconds (resident memory: whole process, MiB)\n", runs);
        std::printf("%8s %7s %10s %10s %10s %10s %8s %11s %11s %9s %9s %7s %9s\n", "torrents", "build", "swap/name",
                    "swap/added", "+table", "full again", "merge", "views/name", "views/rate", "sort name", "sort size",
                    "filter", "resident");
        for (const int count : {5000, 50000})
            fullUpdates(count, runs);
    }
    sameDelta(runs);
    return 0;
}
