// Opening the add window for a very large .torrent, as the application does it: the file is read
// and its metadata made on a worker, the window shown, the folder tree built on a worker and
// handed to the view. A 1 ms heartbeat on the main thread records how long the interface stalls.
// Run from a Release build: bench_addwindow [runs] [files]

#include "Stats.h"
#include "LargeTorrent.h"
#include "adding/TntMetadata.h"
#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "settings/UserDefaults.h"
#include "ui/AddTntWindow.h"
#include "ui/TntContentTree.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFutureWatcher>
#include <QTemporaryDir>
#include <QTimer>
#include <QtConcurrentRun>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

struct Opening
{
    double metadata = 0;     // the file read and its metadata made, on a worker
    double shown = 0;        // the window made and shown, up to its first paint
    double treeReady = 0;    // from the start until the tree is in the view and painted
    double longestStall = 0; // the longest stretch the heartbeat could not run
};

double msOf(qint64 nanoseconds)
{
    return static_cast<double>(nanoseconds) / 1e6;
}

Opening open(AppContext &context, const QString &path)
{
    Opening result;
    QElapsedTimer clock;
    clock.start();
    QEventLoop loop;
    QFutureWatcher<std::optional<TntMetadata>> reading;
    AddTntWindow *window = nullptr;
    QObject::connect(&reading, &QFutureWatcherBase::finished, &loop, [&] {
        result.metadata = msOf(clock.nsecsElapsed());
        window = new AddTntWindow(context, path, reading.result());
        window->show();
    });
    reading.setFuture(QtConcurrent::run([path] { return TntMetadata::fromFile(path); }));

    QTimer heartbeat;
    heartbeat.setInterval(1);
    qint64 last = clock.nsecsElapsed();
    QObject::connect(&heartbeat, &QTimer::timeout, &loop, [&] {
        const qint64 now = clock.nsecsElapsed();
        result.longestStall = std::max(result.longestStall, msOf(now - last));
        last = now;
        if (!window)
            return;
        if (result.shown == 0)
            result.shown = msOf(now);
        if (result.treeReady == 0 && window->contentTree()->model()->rowCount() > 0) {
            result.treeReady = msOf(now);
            // One more beat, so that the tree's first paint counts as a stall.
            QTimer::singleShot(0, &loop, [&loop] { QTimer::singleShot(1, &loop, &QEventLoop::quit); });
        }
    });
    heartbeat.start();
    loop.exec();
    delete window;
    return result;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 7;
    const int fileCount = argc > 2 ? std::max(1, std::atoi(argv[2])) : 100'000;

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("large.torrent"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(largeTorrent(fileCount)) < 0)
        return 1;
    file.close();

    UserDefaults defaults(folder.filePath(QStringLiteral("settings.ini")));
    KeychainStore keychain;
    AppContext context(defaults, keychain);

    std::vector<double> metadata, shown, ready, stalls;
    for (int i = 0; i < runs; ++i) {
        const Opening opening = open(context, path);
        metadata.push_back(opening.metadata);
        shown.push_back(opening.shown);
        ready.push_back(opening.treeReady);
        stalls.push_back(opening.longestStall);
    }
    std::printf("%d files, %.1f MB, median of %d runs, milliseconds\n", fileCount,
                static_cast<double>(QFile(path).size()) / 1e6, runs);
    std::printf("metadata read on a worker         %8.1f\n", Bench::median(metadata));
    std::printf("window shown                       %8.1f\n", Bench::median(shown));
    std::printf("tree in the view and painted       %8.1f\n", Bench::median(ready));
    std::printf("longest main-thread stall          %8.1f (runs: ", Bench::median(stalls));
    for (double stall : stalls)
        std::printf("%.1f ", stall);
    std::printf(")\n");
    return 0;
}
