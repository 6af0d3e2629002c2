// Arbitrary text into the links reader, as typed, pasted or dropped: every line becomes a link or a
// rejection, and every magnet link's info-hash is read; anything else is a bug.
#include "adding/TntLinks.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const TntLinks links = TntLinks::parse(text);
    for (const QString &url : links.urls) {
        const QString hash = TntLinks::infoHashOf(url);
        if (!hash.isEmpty() && hash.size() != 40)
            std::abort();
    }
    return 0;
}
