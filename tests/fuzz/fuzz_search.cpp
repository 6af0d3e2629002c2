// A search's answers read in sequence, each answer's first byte choosing its decoder ('p' the
// plugin list, 's' a started job, 'r' a page of results, 'x' a stop asked for), pages appended to
// one job as its runner appends them: a decode either succeeds or throws ResponseDecodingError;
// anything else is a bug. A page is taken only while the job runs and only when its count follows
// on from the results held; the job then holds exactly what it was given, and once it has stopped,
// finished or failed it takes nothing more.
#include "Answers.h"

#include "api/Errors.h"
#include "api/Records.h"
#include "model/SearchJob.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    SearchJob job({QStringLiteral("fuzz"), {QStringLiteral("enabled")}, QStringLiteral("all")});
    for (const QByteArray &answer : answersOf(data, size)) {
        if (answer.isEmpty())
            continue;
        try {
            switch (answer.front()) {
            case 'p': {
                for (const API::SearchPlugin &plugin : API::decodeSearchPlugins(answer.sliced(1))) {
                    if (plugin.name.isNull())
                        std::abort();
                }
                break;
            }
            case 's': job.started(API::decodeSearchStart(answer.sliced(1)).id); break;
            case 'x': job.stopRequested(); break;
            case 'r': {
                API::SearchResults page = API::decodeSearchResults(answer.sliced(1));
                const bool wasRunning = job.isRunning();
                const qsizetype before = job.size();
                const qsizetype added = page.results.size();
                const bool followsOn = page.total == before + added;
                const bool taken = job.append(std::move(page));
                if (taken != (followsOn || !wasRunning))
                    std::abort();
                const qsizetype expected = wasRunning && followsOn ? before + added : before;
                if (job.size() != expected || job.nextOffset() != job.size())
                    std::abort();
                if (wasRunning && !followsOn && job.state() != SearchJob::State::failed)
                    std::abort();
                break;
            }
            default: break;
            }
        } catch (const API::ResponseDecodingError &) {
        }
    }
    return 0;
}
