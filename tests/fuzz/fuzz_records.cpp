// Arbitrary bytes into the main-data, peers and piece-states decoders: a decode either succeeds or throws
// ResponseDecodingError; anything else (a crash, a sanitizer report, another exception) is a bug.
#include "api/Errors.h"
#include "api/Records.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    try {
        API::decodeMainData(bytes);
    } catch (const API::ResponseDecodingError &) {
    }
    try {
        API::decodePeersData(bytes);
    } catch (const API::ResponseDecodingError &) {
    }
    try {
        API::decodePieceStates(bytes);
    } catch (const API::ResponseDecodingError &) {
    }
    return 0;
}
