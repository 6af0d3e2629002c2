// The server's small answers, the first byte choosing the decoder: the web API version, the build
// record, the network interfaces and their addresses. A decode either succeeds or throws
// ResponseDecodingError; anything else is a bug.
#include "api/BuildInfo.h"
#include "api/Errors.h"
#include "api/NetworkInterface.h"
#include "api/WebAPIVersion.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray answer(reinterpret_cast<const char *>(data) + 1, static_cast<qsizetype>(size - 1));
    try {
        switch (data[0]) {
        case 'v':
            if (const auto version = API::WebAPIVersion::parse(QString::fromUtf8(answer)))
                (void)version->toString();
            break;
        case 'b': (void)API::BuildInfo::decode(answer); break;
        case 'i': (void)API::NetworkInterface::choices(API::NetworkInterface::decodeList(answer)); break;
        case 'n': (void)API::AddressChoice::choices(API::NetworkAddress::decodeList(answer)); break;
        default: break;
        }
    } catch (const API::ResponseDecodingError &) {
    }
    return 0;
}
