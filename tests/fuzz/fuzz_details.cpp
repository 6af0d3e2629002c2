// The detail answers of one torrent in sequence, each's first byte choosing its decoder, into the
// detail pane's state as the loader applies them: a decode either succeeds or throws
// ResponseDecodingError; anything else (a crash, a sanitizer report, another exception) is a bug.
// After each peers answer the pane holds exactly the peers the answers so far leave listed, each
// found at its row by its address.
#include "Answers.h"

#include "api/Errors.h"
#include "api/Records.h"
#include "model/TntDetailContext.h"

#include <QSet>

#include <cstdlib>

namespace {

constexpr int averagingWindow = 5;

// What an answer of the peer sync leaves listed: removed peers go, then a full update with peers
// replaces the list, a delta adds to it.
void follow(QSet<QString> &listed, const API::PeersData &data)
{
    for (const QString &peer : data.peersRemoved)
        listed.remove(peer);
    if (data.peers.isEmpty())
        return;
    if (data.fullUpdate.value_or(false))
        listed.clear();
    for (auto it = data.peers.keyBegin(); it != data.peers.keyEnd(); ++it)
        listed.insert(*it);
}

void check(const TntDetailContext::Peers &peers, const QSet<QString> &listed)
{
    if (peers.size() != listed.size())
        std::abort();
    for (qsizetype row = 0; row < peers.size(); ++row) {
        const QString &address = peers.at(row).id();
        if (!listed.contains(address) || peers.rowOf(address) != row)
            std::abort();
    }
}

void apply(TntDetailContext &context, QSet<QString> &listedPeers, char decoder, const QByteArray &json)
{
    switch (decoder) {
    case 'p': context.setProperties(API::decodeGenericProperties(json), averagingWindow); break;
    case 't': context.setTrackers(API::decodeTrackers(json)); break;
    case 'f': context.setFiles(API::decodeFiles(json)); break;
    case 'w': context.setWebSeeds(API::decodeWebSeeds(json)); break;
    case 's': context.setPieceStates(API::decodePieceStates(json)); break;
    case 'e': {
        const API::PeersData peers = API::decodePeersData(json);
        context.applyPeers(peers, averagingWindow);
        follow(listedPeers, peers);
        check(context.peers(), listedPeers);
        break;
    }
    default: break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    TntDetailContext context;
    QSet<QString> listedPeers;
    for (const QByteArray &answer : answersOf(data, size)) {
        if (answer.isEmpty())
            continue;
        try {
            apply(context, listedPeers, answer.front(), answer.sliced(1));
        } catch (const API::ResponseDecodingError &) {
        }
    }
    return 0;
}
