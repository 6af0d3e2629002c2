#include "api/WebAPIVersion.h"

#include <QList>

namespace API {

std::optional<WebAPIVersion> WebAPIVersion::parse(QStringView text)
{
    const auto parts = text.trimmed().split(u'.');
    if (parts.isEmpty() || parts.size() > 3)
        return std::nullopt;
    int numbers[3] = {0, 0, 0};
    for (qsizetype i = 0; i < parts.size(); ++i) {
        bool ok = false;
        const int value = parts[i].toInt(&ok);
        if (!ok || value < 0 || !parts[i].front().isDigit())
            return std::nullopt;
        numbers[i] = value;
    }
    return WebAPIVersion{numbers[0], numbers[1], numbers[2]};
}

QString WebAPIVersion::toString() const
{
    return QStringLiteral("%1.%2.%3").arg(major).arg(minor).arg(patch);
}

} // namespace API
