// Arbitrary bytes into the bencode reader, the torrent metadata built on it, and the server's JSON
// record of parsed metadata: a decode either succeeds, and every value of the tree can be visited,
// or throws its decoding error; anything else (a crash, a sanitizer report, another exception) is a bug.
#include "adding/BencodeDecoder.h"
#include "adding/TntMetadata.h"
#include "api/Errors.h"

#include <cstddef>
#include <cstdint>

namespace {

void visit(const BencodeResult &value)
{
    const BencodeResult::RawData raw = value.rawData();
    if (const auto *list = std::get_if<BencodeResult::List>(&raw)) {
        for (const BencodeResult element : *list)
            visit(element);
    } else if (const auto *dictionary = std::get_if<BencodeResult::Dictionary>(&raw)) {
        for (const QByteArrayView key : dictionary->keys())
            visit(*dictionary->value(key));
    } else {
        (void)value.toInteger();
        (void)value.toText();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    try {
        visit(Bencode::decode(bytes));
    } catch (BencodeDecodeError) {
    }
    (void)TntMetadata::fromTorrentData(bytes);
    try {
        (void)TntMetadata::fromJson(bytes);
    } catch (const API::ResponseDecodingError &) {
    }
    return 0;
}
