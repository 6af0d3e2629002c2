#include "api/BuildInfo.h"

#include "api/Errors.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace API {

namespace {

[[noreturn]] void fail(const QString &reason)
{
    throw ResponseDecodingError(reason);
}

QString requiredString(const QJsonObject &object, const QString &key)
{
    const QJsonValue value = object.value(key);
    if (!value.isString())
        fail(value.isUndefined() ? QStringLiteral("No value for key \"%1\".").arg(key)
                                 : QStringLiteral("Expected a string for key \"%1\".").arg(key));
    return value.toString();
}

} // namespace

BuildInfo BuildInfo::decode(const QByteArray &json)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError)
        fail(parseError.errorString());
    if (!document.isObject())
        fail(QStringLiteral("Expected an object."));
    const QJsonObject object = document.object();

    BuildInfo info;
    info.qt = requiredString(object, QStringLiteral("qt"));
    info.libtorrent = requiredString(object, QStringLiteral("libtorrent"));
    info.boost = requiredString(object, QStringLiteral("boost"));
    info.openssl = requiredString(object, QStringLiteral("openssl"));
    const QJsonValue bitness = object.value(u"bitness");
    if (!bitness.isDouble() || bitness.toDouble() != static_cast<double>(bitness.toInt()))
        fail(QStringLiteral("Expected an integer for key \"bitness\"."));
    info.bitness = bitness.toInt();
    return info;
}

} // namespace API
