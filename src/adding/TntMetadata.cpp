#include "adding/TntMetadata.h"

#include "adding/BencodeDecoder.h"
#include "api/Errors.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QUrl>

#include <cmath>

Q_LOGGING_CATEGORY(lcTntMetadata, "TntMetadata")

namespace {

using Dictionary = BencodeResult::Dictionary;
using List = BencodeResult::List;

template<typename T>
std::optional<T> as(const std::optional<BencodeResult> &value)
{
    if (!value)
        return std::nullopt;
    const BencodeResult::RawData raw = value->rawData();
    if (const T *content = std::get_if<T>(&raw))
        return *content;
    return std::nullopt;
}

std::optional<qint64> integerAt(const Dictionary &dictionary, QByteArrayView key)
{
    const auto value = dictionary.value(key);
    return value ? value->toInteger() : std::nullopt;
}

std::optional<QString> textAt(const Dictionary &dictionary, QByteArrayView key)
{
    const auto value = dictionary.value(key);
    return value ? value->toText() : std::nullopt;
}

QString joinedPath(const List &parts)
{
    QString path;
    for (const BencodeResult part : parts) {
        if (part.type() != BencodeResult::BencodeType::buffer)
            continue;
        if (const auto text = part.toText()) {
            if (!path.isEmpty())
                path += u'/';
            path += *text;
        }
    }
    return path;
}

TntMetadata::Info infoFrom(const Dictionary &dictionary)
{
    TntMetadata::Info info;
    info.name = textAt(dictionary, "name").value_or(QString());
    if (const auto files = as<List>(dictionary.value("files"))) {
        for (const BencodeResult element : *files) {
            const auto file = as<Dictionary>(element);
            if (!file)
                continue;
            const auto parts = as<List>(file->value("path"));
            info.files.append({.path = info.name + u'/' + (parts ? joinedPath(*parts) : QString()),
                               .length = integerAt(*file, "length").value_or(0)});
        }
    }
    info.length = integerAt(dictionary, "length").value_or(0);
    info.pieceLength = integerAt(dictionary, "piece length").value_or(0);
    info.piecesNum = integerAt(dictionary, "piecesNum").value_or(-1);
    info.isPrivate = integerAt(dictionary, "private") == 1;
    return info;
}

// ---- The server's JSON record

[[noreturn]] void fail(const QString &key, const char *expected)
{
    throw API::ResponseDecodingError(key + QStringLiteral(": expected ") + QLatin1String(expected));
}

QString snakeCase(QStringView camel)
{
    QString snake;
    for (const QChar c : camel) {
        if (c.isUpper())
            snake += u'_' + c.toLower();
        else
            snake += c;
    }
    return snake;
}

// The value under a camelCase key or its snake_case form; null counts as absent.
std::optional<QJsonValue> field(const QJsonObject &object, const QString &key)
{
    QJsonValue value = object.value(key);
    if (value.isUndefined())
        value = object.value(snakeCase(key));
    if (value.isUndefined() || value.isNull())
        return std::nullopt;
    return value;
}

void read(const QJsonObject &object, const QString &key, QString &target)
{
    if (const auto value = field(object, key)) {
        if (!value->isString())
            fail(key, "a string");
        target = value->toString();
    }
}

std::optional<qint64> integerField(const QJsonObject &object, const QString &key)
{
    const auto value = field(object, key);
    if (!value)
        return std::nullopt;
    const double number = value->toDouble(std::nan(""));
    if (!value->isDouble() || number != std::trunc(number) || std::abs(number) > 9.0e15)
        fail(key, "an integer");
    return static_cast<qint64>(number);
}

void read(const QJsonObject &object, const QString &key, qint64 &target)
{
    if (const auto value = integerField(object, key))
        target = *value;
}

QJsonArray arrayField(const QJsonObject &object, const QString &key)
{
    const auto value = field(object, key);
    if (value && !value->isArray())
        fail(key, "an array");
    return value ? value->toArray() : QJsonArray();
}

QJsonObject objectOf(const QJsonValue &value, const QString &key)
{
    if (!value.isObject())
        fail(key, "an object");
    return value.toObject();
}

TntMetadata::Info infoFrom(const QJsonObject &object)
{
    TntMetadata::Info info;
    for (const QJsonValue &element : arrayField(object, QStringLiteral("files"))) {
        const QJsonObject file = objectOf(element, QStringLiteral("files"));
        TntMetadata::Info::File entry;
        read(file, QStringLiteral("path"), entry.path);
        read(file, QStringLiteral("length"), entry.length);
        entry.priority = integerField(file, QStringLiteral("priority"));
        info.files.append(entry);
    }
    read(object, QStringLiteral("name"), info.name);
    read(object, QStringLiteral("length"), info.length);
    read(object, QStringLiteral("pieceLength"), info.pieceLength);
    read(object, QStringLiteral("piecesNum"), info.piecesNum);
    if (const auto isPrivate = field(object, QStringLiteral("private"))) {
        if (!isPrivate->isBool())
            fail(QStringLiteral("private"), "a boolean");
        info.isPrivate = isPrivate->toBool();
    }
    return info;
}

} // namespace

QString TntMetadata::notAvailable()
{
    return QCoreApplication::translate("TntMetadata", "n/a", "not available");
}

std::optional<TntMetadata> TntMetadata::fromTorrentData(const QByteArray &bencodedData)
{
    std::optional<Dictionary> top;
    try {
        top = as<Dictionary>(Bencode::decode(bencodedData));
    } catch (const BencodeDecodeError &) {
        return std::nullopt;
    }
    if (!top)
        return std::nullopt;

    TntMetadata metadata;
    if (const auto info = as<Dictionary>(top->value("info")))
        metadata.info = infoFrom(*info);
    if (const auto infoBytes = as<QByteArrayView>(top->value("hash"))) {
        metadata.hash = QString::fromLatin1(QCryptographicHash::hash(*infoBytes, QCryptographicHash::Sha1).toHex());
    } else {
        metadata.hash = notAvailable();
    }
    metadata.infohashV1 = metadata.hash;
    // Deliberately one second before the epoch when missing: the window shows that date as it is.
    metadata.creationDate = API::Date(static_cast<double>(integerAt(*top, "creation date").value_or(-1)));
    metadata.comment = textAt(*top, "comment").value_or(QString());
    metadata.createdBy = textAt(*top, "created by").value_or(notAvailable());
    return metadata;
}

std::optional<TntMetadata> TntMetadata::fromFile(const QString &path)
{
    QFile file(path);
    std::optional<TntMetadata> metadata;
    if (file.open(QIODevice::ReadOnly))
        metadata = fromTorrentData(file.readAll());
    if (!metadata)
        qCInfo(lcTntMetadata, "Failed to initialize tnt metadata from %s", qUtf8Printable(QUrl::fromLocalFile(path).toString()));
    return metadata;
}

TntMetadata TntMetadata::fromJson(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        throw API::ResponseDecodingError(error.errorString());
    if (!document.isObject())
        fail(QStringLiteral("metadata"), "an object");
    const QJsonObject object = document.object();

    TntMetadata metadata;
    read(object, QStringLiteral("comment"), metadata.comment);
    read(object, QStringLiteral("createdBy"), metadata.createdBy);
    if (const auto seconds = integerField(object, QStringLiteral("creationDate")))
        metadata.creationDate = API::Date(static_cast<double>(*seconds));
    read(object, QStringLiteral("hash"), metadata.hash);
    read(object, QStringLiteral("infohashV1"), metadata.infohashV1);
    read(object, QStringLiteral("infohashV2"), metadata.infohashV2);
    if (const auto info = field(object, QStringLiteral("info")))
        metadata.info = infoFrom(objectOf(*info, QStringLiteral("info")));
    for (const QJsonValue &element : arrayField(object, QStringLiteral("trackers"))) {
        const QJsonObject tracker = objectOf(element, QStringLiteral("trackers"));
        Tracker entry;
        read(tracker, QStringLiteral("url"), entry.url);
        read(tracker, QStringLiteral("tier"), entry.tier);
        metadata.trackers.append(entry);
    }
    for (const QJsonValue &element : arrayField(object, QStringLiteral("webseeds"))) {
        if (!element.isString())
            fail(QStringLiteral("webseeds"), "a string");
        metadata.webseeds.append(element.toString());
    }
    return metadata;
}
