// Arbitrary bytes into the preferences decoder and its key table: a decode either succeeds or throws
// ResponseDecodingError; anything else is a bug. A decoded record that is written back unedited
// sends nothing, and every value it read is accepted back by its own key.
#include "api/Errors.h"
#include "api/QBTPreferences.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    API::QBTPreferences preferences;
    try {
        preferences =
            API::QBTPreferences::decode(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    } catch (const API::ResponseDecodingError &) {
        return 0;
    }
    if (!preferences.changes().isEmpty())
        std::abort();
    for (const API::PreferenceKey &key : API::preferenceKeys()) {
        if (std::optional<API::PreferenceValue> value = preferences.value(key.key))
            preferences.setValue(key.key, std::move(*value));
    }
    if (!preferences.changes().isEmpty())
        std::abort();
    return 0;
}
