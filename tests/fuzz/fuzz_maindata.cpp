// Main-data answers in sequence into the decoder and, as the sync does, into the torrents, trackers,
// labels and transfer figures: a decode either succeeds or throws ResponseDecodingError, and every
// decoded answer merges; anything else (a crash, a sanitizer report, another exception) is a bug.
// After each answer the collection holds exactly the torrents the answers so far leave listed, each
// found at its row by its hash.
#include "Answers.h"

#include "api/Errors.h"
#include "api/Records.h"
#include "model/GlobalTransferInfo.h"
#include "model/ServerLabels.h"
#include "model/TntCollection.h"
#include "model/TrackerIndex.h"

#include <QSet>

#include <cstdlib>

namespace {

constexpr int averagingWindow = 5;

void check(const TntCollection &tnts, const QSet<QString> &listed)
{
    if (tnts.size() != listed.size())
        std::abort();
    for (qsizetype row = 0; row < tnts.size(); ++row) {
        const QString &hash = tnts.at(row).id();
        if (!listed.contains(hash) || tnts.rowOf(hash) != row)
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    TntCollection tnts;
    TrackerIndex trackers;
    ServerLabels labels;
    GlobalTransferInfo transfer;
    QSet<QString> listed;
    for (const QByteArray &answer : answersOf(data, size)) {
        API::MainData decoded;
        try {
            decoded = API::decodeMainData(answer);
        } catch (const API::ResponseDecodingError &) {
            continue;
        }
        const bool full = decoded.fullUpdate.value_or(false);
        if (full) {
            listed = QSet<QString>(decoded.tnts.keyBegin(), decoded.tnts.keyEnd());
        } else {
            for (const QString &hash : decoded.tntsRemoved)
                listed.remove(hash);
            for (auto it = decoded.tnts.keyBegin(); it != decoded.tnts.keyEnd(); ++it)
                listed.insert(*it);
        }
        if (full && tnts.size() > 0)
            tnts.mergeFull(decoded.tnts, averagingWindow);
        else if (full)
            tnts.replaceAll(TntCollection::build(decoded.tnts, averagingWindow));
        else
            tnts.merge(decoded.tnts, decoded.tntsRemoved, averagingWindow);
        trackers.apply(full, decoded.trackers, decoded.trackersRemoved);
        labels.apply(decoded);
        if (decoded.serverState)
            transfer.update(*decoded.serverState);
        check(tnts, listed);
    }
    return 0;
}
