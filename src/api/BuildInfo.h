#pragma once

#include <QByteArray>
#include <QString>

namespace API {

// The server's build record (app/buildInfo).
struct BuildInfo
{
    QString qt;
    QString libtorrent;
    QString boost;
    QString openssl;
    int bitness = 0;

    // Throws ResponseDecodingError when a field is missing or of another JSON type.
    static BuildInfo decode(const QByteArray &json);

    friend bool operator==(const BuildInfo &, const BuildInfo &) = default;
};

} // namespace API
