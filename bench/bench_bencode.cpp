// Reading a large .torrent: Quillo's bencode decoder against libtorrent's bdecode on the same bytes
// in the same run, the metadata record, and the folder tree of its files off the main thread.
// Run from a Release build: bench_bencode [runs] [files]

#include "adding/BencodeDecoder.h"
#include "adding/FileTreeBuilder.h"
#include "adding/TntMetadata.h"

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

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

QByteArray string(const QByteArray &bytes)
{
    return QByteArray::number(bytes.size()) + ':' + bytes;
}

// A multi-file torrent shaped like a large real one: files three folders deep with names of
// realistic length, and piece hashes for their 55 GB in 128 KiB pieces.
QByteArray largeTorrent(int fileCount)
{
    QByteArray files = "l";
    qint64 total = 0;
    for (int i = 0; i < fileCount; ++i) {
        const qint64 length = 100'000 + (i * 7919) % 900'000;
        total += length;
        files += "d6:lengthi" + QByteArray::number(length) + "e4:pathl"
            + string("Season " + QByteArray::number(i / 5000)) + string("Disc " + QByteArray::number(i / 250 % 20))
            + string("Track " + QByteArray::number(i) + " - A Rather Long Title Of This Piece.flac") + "ee";
    }
    files += 'e';
    const qint64 pieceLength = 128 * 1024;
    const qint64 pieces = (total + pieceLength - 1) / pieceLength;
    QByteArray hashes(pieces * 20, '\0');
    for (qsizetype i = 0; i < hashes.size(); ++i)
        hashes[i] = static_cast<char>(i * 31 % 251);
    return "d8:announce" + string("http://tracker.example.org/announce") + "7:comment" + string("benchmark")
        + "10:created by" + string("bench_bencode") + "13:creation datei1700000000e4:infod5:files" + files
        + "4:name" + string("A Large Collection") + "12:piece lengthi" + QByteArray::number(pieceLength)
        + "e6:pieces" + string(hashes) + "ee";
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
    std::printf("bdecode (libtorrent) %8.2f\n", median(libtorrent));
    std::printf("Bencode::decode      %8.2f   ratio of medians %.2fx, median of per-run ratios %.2fx\n",
                median(quillo), median(quillo) / median(libtorrent), median(ratios));

    std::vector<double> metadataTimes;
    std::optional<TntMetadata> metadata;
    for (int i = 0; i < runs; ++i) {
        const auto start = Clock::now();
        metadata = TntMetadata::fromTorrentData(torrent);
        metadataTimes.push_back(msSince(start));
    }
    std::printf("TntMetadata (decode, fields, SHA-1) %8.2f\n", median(metadataTimes));

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
    std::printf("file tree, build alone  %8.2f\n", median(treeTimes));
    std::printf("file tree, awaited from the main thread on the builder's thread %8.2f\n", median(workerTimes));
    return 0;
}
