#include "api/JsonRecords.h"

#include <QJsonDocument>
#include <QJsonObject>

Q_LOGGING_CATEGORY(lcRecords, "API.Records")

namespace API {

namespace JsonDecoding {

constexpr Field<Key> keyFields[] = {required<&Key::apiKey>("apiKey")};
template<> std::span<const Field<Key>> fieldsOf() { return keyFields; }

} // namespace JsonDecoding

QByteArray convertFromSnakeCase(std::string_view key)
{
    const auto first = key.find_first_not_of('_');
    if (first == std::string_view::npos)
        return QByteArray(key.data(), static_cast<qsizetype>(key.size()));
    const auto last = key.find_last_not_of('_');
    const std::string_view middle = key.substr(first, last - first + 1);
    if (middle.find('_') == std::string_view::npos)
        return QByteArray(key.data(), static_cast<qsizetype>(key.size()));

    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    QByteArray result(key.data(), static_cast<qsizetype>(first));
    result.reserve(static_cast<qsizetype>(key.size()));
    bool firstPart = true;
    bool startOfPart = true;
    for (const char c : middle) {
        if (c == '_') {
            // Empty parts between repeated underscores vanish.
            if (!startOfPart)
                firstPart = false;
            startOfPart = true;
            continue;
        }
        result += (firstPart || !startOfPart) ? lower(c) : upper(c);
        startOfPart = false;
    }
    result.append(key.data() + last + 1, static_cast<qsizetype>(key.size() - last - 1));
    return result;
}

Key decodeKey(const QByteArray &json) { return JsonDecoding::decodeGuarded<Key>(json); }

QByteArray encodeKey(const Key &key)
{
    return QJsonDocument(QJsonObject{{QStringLiteral("apiKey"), key.apiKey}}).toJson(QJsonDocument::Compact);
}

} // namespace API
