// The server's two logs read in sequence, each answer's first byte choosing its decoder ('m' the
// execution log, 'p' the refused peers), merged as the log loader merges them: a decode either
// succeeds or throws ResponseDecodingError; anything else is a bug. After every merge the lines
// kept are within the bound, in rising id order, the last of them the id the next read starts
// after; an answer whose ids do not rise past it leaves nothing kept and starts reading afresh.
#include "Answers.h"

#include "api/Errors.h"
#include "api/Records.h"
#include "model/ServerLog.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr qsizetype capacity = 64;

template<typename Entry>
void merge(LogLines<Entry> &log, QList<Entry> answer)
{
    const qint64 before = log.lastId();
    const bool rises = std::adjacent_find(answer.cbegin(), answer.cend(),
                                          [](const Entry &a, const Entry &b) { return a.id >= b.id; }) == answer.cend()
                       && (answer.isEmpty() || answer.first().id > before);
    const qint64 newest = answer.isEmpty() ? before : answer.last().id;
    const auto result = log.merge(std::move(answer));
    if (rises != (result == LogLines<Entry>::Merge::appended))
        std::abort();
    if (!rises && (log.size() != 0 || log.lastId() != -1))
        std::abort();
    if (rises && log.lastId() != newest)
        std::abort();
    if (log.size() > capacity)
        std::abort();
    for (qsizetype row = 1; row < log.size(); ++row) {
        if (log.at(row - 1).id >= log.at(row).id)
            std::abort();
    }
    if (log.size() > 0 && log.at(log.size() - 1).id != log.lastId())
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    ServerLog log(capacity);
    for (const QByteArray &answer : answersOf(data, size)) {
        if (answer.isEmpty())
            continue;
        try {
            switch (answer.front()) {
            case 'm': merge(log.messages(), API::decodeLogMessages(answer.sliced(1))); break;
            case 'p': merge(log.peers(), API::decodePeerLog(answer.sliced(1))); break;
            case 'c': log.messages().clear(); break;
            default: break;
            }
        } catch (const API::ResponseDecodingError &) {
        }
    }
    return 0;
}
