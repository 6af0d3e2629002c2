// Reading a large .torrent: Quillo's bencode decoder against libtorrent's bdecode on the same bytes
// in the same run, the metadata record, and the folder tree of its files off the main thread.
// Run from a Release build: bench_bencode [runs] [files]

#include "Stats.h"
#include "adding/BencodeDecoder.h"
#include "adding/FileTreeBuilder.h"
#include "adding/TntMetadata.h"
#include "LargeTorrent.h"

#include <libtorrent/bdecode.hpp>

#include <QCoreApplication>
#include <QCoroTask>
#include <QEventLoop>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double msSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

QCoro::Task<> buildOnWorker(FileTreeBuilder &builder, QList<API::File> files, double &ms, QEventLoop &loop)
{
    const auto start = Clock::now();
    const FileTreeBuilder::Nodes roots = co_await builder.build(std::move(files));
    ms = msSince(start);
    loop.quit();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 15;
    const int fileCount = argc > 2 ? std::max(1, std::atoi(argv[2])) : 100'000;

    const QByteArray torrent = largeTorrent(fileCount);
    std::printf("%d files, %.1f MB, median of %d runs, milliseconds\n", fileCount, static_cast<double>(torrent.size()) / 1e6, runs);

    // Alternating runs, so that both decoders see the same load of the shared machine.
    std::vector<double> libtorrent, quillo, ratios;
    for (int i = 0; i < runs; ++i) {
        lt::error_code error;
        auto start = Clock::now();
        lt::bdecode_node node = lt::bdecode({torrent.constData(), torrent.size()}, error, nullptr, 100, 100'000'000);
        libtorrent.push_back(msSince(start));
        if (error) {
            std::printf("libtorrent failed: %s\n", error.message().c_str());
            return 1;
        }
        node.clear();

        start = Clock::now();
        std::optional<BencodeResult> result = Bencode::decode(torrent);
        quillo.push_back(msSince(start));
        result.reset();
        ratios.push_back(quillo.back() / libtorrent.back());
    }
    std::printf("bdecode (libtorrent) %8.2f\n", Bench::median(libtorrent));
    std::printf("Bencode::decode      %8.2f   ratio of medians %.2fx, median of per-run ratios %.2fx\n",
                Bench::median(quillo), Bench::median(quillo) / Bench::median(libtorrent), Bench::median(ratios));

    std::vector<double> metadataTimes;
    std::optional<TntMetadata> metadata;
    for (int i = 0; i < runs; ++i) {
        const auto start = Clock::now();
        metadata = TntMetadata::fromTorrentData(torrent);
        metadataTimes.push_back(msSince(start));
    }
    std::printf("TntMetadata (decode, fields, SHA-1) %8.2f\n", Bench::median(metadataTimes));

    QList<API::File> files;
    for (const TntMetadata::Info::File &file : metadata->info->files)
        files.append({.index = files.size(), .name = file.path, .size = file.length, .priority = 1});

    std::vector<double> treeTimes, workerTimes;
    FileTreeBuilder builder;
    for (int i = 0; i < runs; ++i) {
        auto start = Clock::now();
        FileTreeBuilder::Nodes roots = FileTreeBuilder::buildTree(files);
        treeTimes.push_back(msSince(start));
        roots.clear();

        double ms = 0;
        QEventLoop loop;
        auto task = buildOnWorker(builder, files, ms, loop);
        loop.exec();
        workerTimes.push_back(ms);
    }
    std::printf("file tree, build alone  %8.2f\n", Bench::median(treeTimes));
    std::printf("file tree, awaited from the main thread on the builder's thread %8.2f\n", Bench::median(workerTimes));
    return 0;
}
