// The detail answers of one torrent in sequence, each's first byte choosing its decoder, into the
// detail pane's state as the loader applies them: a decode either succeeds or throws
// ResponseDecodingError; anything else (a crash, a sanitizer report, another exception) is a bug.
#include "Answers.h"

#include "api/Errors.h"
#include "api/Records.h"
#include "model/TntDetailContext.h"

namespace {

constexpr int averagingWindow = 5;

void apply(TntDetailContext &context, char decoder, const QByteArray &json)
{
    switch (decoder) {
    case 'p': context.setProperties(API::decodeGenericProperties(json), averagingWindow); break;
    case 't': context.setTrackers(API::decodeTrackers(json)); break;
    case 'f': context.setFiles(API::decodeFiles(json)); break;
    case 'w': context.setWebSeeds(API::decodeWebSeeds(json)); break;
    case 's': context.setPieceStates(API::decodePieceStates(json)); break;
    case 'e': context.applyPeers(API::decodePeersData(json), averagingWindow); break;
    default: break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    TntDetailContext context;
    for (const QByteArray &answer : answersOf(data, size)) {
        if (answer.isEmpty())
            continue;
        try {
            apply(context, answer.front(), answer.sliced(1));
        } catch (const API::ResponseDecodingError &) {
        }
    }
    return 0;
}
