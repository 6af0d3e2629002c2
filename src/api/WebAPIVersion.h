#pragma once

#include <QString>

#include <compare>
#include <optional>

namespace API {

struct WebAPIVersion
{
    int major = 0;
    int minor = 0;
    int patch = 0;

    // The server drops trailing zero parts ("2.11" is 2.11.0); missing parts are 0.
    static std::optional<WebAPIVersion> parse(QStringView text);
    QString toString() const;

    friend auto operator<=>(const WebAPIVersion &, const WebAPIVersion &) = default;
};

} // namespace API
