#include "settings/PathMap.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

const QString separator = QStringLiteral("||");

} // namespace

QString PathMap::storedText() const
{
    return remotePath + separator + QString::fromLatin1(bookmarkData.value_or(QByteArray()).toBase64());
}

std::optional<PathMap> PathMap::fromStoredText(const QString &text)
{
    const qsizetype at = text.indexOf(separator);
    if (at < 0)
        return std::nullopt;
    PathMap map;
    map.remotePath = text.left(at);
    const auto decoded = QByteArray::fromBase64Encoding(text.mid(at + separator.size()).toLatin1(),
                                                        QByteArray::AbortOnBase64DecodingErrors);
    if (decoded)
        map.bookmarkData = *decoded;
    return map;
}

QByteArray PathMap::encodeList(const QList<PathMap> &maps)
{
    QJsonArray texts;
    for (const PathMap &map : maps)
        texts.append(map.storedText());
    return QJsonDocument(texts).toJson(QJsonDocument::Compact);
}

QList<PathMap> PathMap::decodeList(const QByteArray &stored)
{
    QList<PathMap> maps;
    const QJsonDocument document = QJsonDocument::fromJson(stored);
    if (!document.isArray())
        return maps;
    for (const QJsonValue &text : document.array()) {
        if (const auto map = fromStoredText(text.toString()))
            maps.append(*map);
    }
    return maps;
}
