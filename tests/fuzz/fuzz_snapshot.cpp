// Bytes into the reader of the torrent lists kept between starts. The checksum that guards a file on
// disk is made here for whatever the fuzzer writes, so that the reading behind it is what is tried.
// What decodes must build a collection and write a snapshot that reads back to the same data.
#include "model/ServerLabels.h"
#include "model/TntCollection.h"
#include "model/TntSnapshot.h"
#include "model/TrackerIndex.h"

#include <QtEndian>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

QByteArray sealed(QByteArray bytes)
{
    quint64 hash = 0xcbf29ce484222325ull;
    for (const char byte : bytes) {
        hash ^= static_cast<quint8>(byte);
        hash *= 0x100000001b3ull;
    }
    const quint64 little = qToLittleEndian(hash);
    bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // The seeds are whole files: their own checksum is dropped and made again.
    QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (bytes.size() >= 8)
        bytes.chop(8);
    const std::optional<API::MainData> read = TntSnapshot::decode(sealed(bytes));
    if (!read)
        return 0;
    TntCollection tnts;
    tnts.replaceAll(TntCollection::build(read->tnts, 5));
    ServerLabels labels;
    labels.apply(*read);
    TrackerIndex trackers;
    trackers.apply(true, read->trackers, {});
    const std::optional<API::MainData> again = TntSnapshot::decode(TntSnapshot::encode(tnts, labels, trackers));
    if (!again || again->tnts.size() != read->tnts.size() || again->tags != labels.tags()
        || again->trackers != trackers.urls())
        std::abort();
    return 0;
}
