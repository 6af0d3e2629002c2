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

template <typename T> std::optional<T> as(const std::optional<BencodeResult> &value)
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

// A refused file: why, for the user.
struct Refusal
{
    QString reason;
};

[[noreturn]] void refuse(const QString &reason)
{
    throw Refusal{reason};
}

const QString invalidFormat = QCoreApplication::translate("TntMetadata", "The file's format is invalid.");

bool hasAttribute(const Dictionary &file, char attribute)
{
    const auto attributes = as<QByteArrayView>(file.value("attr"));
    return attributes && attributes->contains(attribute);
}

// What libtorrent-based servers read of the info dictionary, refused where they refuse it. Pad files
// are left out: the server neither shows nor numbers them.
class InfoReader
{
public:
    explicit InfoReader(const Dictionary &dictionary)
        : m_dictionary(dictionary)
    {
        m_info.name = textAt(dictionary, "name").value_or(QString());
        if (m_info.name.isEmpty())
            refuse(QCoreApplication::translate("TntMetadata", "The torrent has no name."));
        const auto pieceLength = integerAt(dictionary, "piece length");
        if (!pieceLength || *pieceLength <= 0)
            refuse(QCoreApplication::translate("TntMetadata", "The torrent has no valid piece length."));
        m_info.pieceLength = *pieceLength;
        m_info.piecesNum = integerAt(dictionary, "piecesNum").value_or(-1);
        m_info.isPrivate = integerAt(dictionary, "private") == 1;
    }

    TntMetadata::Info read(bool hasV2)
    {
        const auto tree = as<Dictionary>(m_dictionary.value("file tree"));
        const bool hasV1 = m_dictionary.value("pieces") || m_dictionary.value("files") || m_dictionary.value("length");
        if (hasV1 || !hasV2) {
            const auto pieces = as<QByteArrayView>(m_dictionary.value("pieces"));
            if (!pieces || pieces->isEmpty() || pieces->size() % 20 != 0)
                refuse(QCoreApplication::translate("TntMetadata", "The torrent has no valid pieces."));
            if (const auto files = as<List>(m_dictionary.value("files")))
                readFileList(*files);
            else if (m_dictionary.value("length"))
                addSingleFile(integerAt(m_dictionary, "length"), false);
        } else if (tree) {
            readFileTree(*tree);
        }
        if (m_info.files.isEmpty() && !m_isSingleFile)
            refuse(QCoreApplication::translate("TntMetadata", "The torrent has no files."));
        if (m_total - m_padding == 0)
            refuse(QCoreApplication::translate("TntMetadata", "The torrent's size is zero."));
        return std::move(m_info);
    }

private:
    // Sizes come from the file: a sum that does not fit is a malformed file, not a fault of Quillo.
    qint64 counted(std::optional<qint64> length, bool isSymlink)
    {
        if (isSymlink)
            return 0;
        if (!length)
            refuse(invalidFormat);
        if (*length < 0)
            refuse(QCoreApplication::translate("TntMetadata", "The torrent has a file of negative size."));
        if (__builtin_add_overflow(m_total, *length, &m_total))
            refuse(invalidFormat);
        return *length;
    }

    void addSingleFile(std::optional<qint64> length, bool isSymlink)
    {
        m_info.length = counted(length, isSymlink);
        m_isSingleFile = true;
    }

    void addFile(const QString &path, std::optional<qint64> length, bool isSymlink)
    {
        m_info.files.append({.path = m_info.name + u'/' + path, .length = counted(length, isSymlink)});
    }

    void readFileList(const List &files)
    {
        for (const BencodeResult element : files) {
            const auto file = as<Dictionary>(element);
            if (!file)
                refuse(invalidFormat);
            const auto parts = as<List>(file->value("path"));
            const QString path = parts ? joinedPath(*parts) : QString();
            if (hasAttribute(*file, 'p') || path.startsWith(u".pad/")) {
                m_padding += counted(integerAt(*file, "length"), false);
                continue;
            }
            addFile(path, integerAt(*file, "length"), hasAttribute(*file, 'l'));
        }
        m_info.length = m_total - m_padding;
    }

    // A v2 "file tree": folders are dictionaries, and a file is the entry under the empty key.
    void readFileTree(const Dictionary &tree)
    {
        const QList<QByteArrayView> keys = tree.keys();
        if (keys.size() == 1) {
            // One file at the top is a single-file torrent named by the torrent's name.
            const auto top = as<Dictionary>(tree.value(keys.constFirst()));
            if (const auto file = top ? as<Dictionary>(top->value("")) : std::nullopt) {
                addSingleFile(integerAt(*file, "length"), hasAttribute(*file, 'l'));
                return;
            }
        }
        readFolder(tree, QString(), 0);
        m_info.length = m_total;
    }

    void readFolder(const Dictionary &folder, const QString &path, int depth)
    {
        // The decoder caps nesting; this only keeps the recursion within it.
        if (depth > BencodeDecoder::depthLimit)
            refuse(invalidFormat);
        for (const auto &[key, value] : folder.entries()) {
            const auto entry = as<Dictionary>(std::optional<BencodeResult>(value));
            if (!entry || key.isEmpty())
                refuse(invalidFormat);
            const QString name = QString::fromUtf8(key);
            const QString entryPath = path.isEmpty() ? name : path + u'/' + name;
            if (const auto file = as<Dictionary>(entry->value(""))) {
                if (!hasAttribute(*file, 'p'))
                    addFile(entryPath, integerAt(*file, "length"), hasAttribute(*file, 'l'));
            } else {
                readFolder(*entry, entryPath, depth + 1);
            }
        }
    }

    const Dictionary &m_dictionary;
    TntMetadata::Info m_info;
    qint64 m_total = 0; // with the padding, which a server's size check counts too
    qint64 m_padding = 0;
    bool m_isSingleFile = false;
};

QString hexDigest(QByteArrayView bytes, QCryptographicHash::Algorithm algorithm)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, algorithm).toHex());
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

std::optional<TntMetadata> TntMetadata::fromTorrentData(const QByteArray &bencodedData, QString *refusal)
{
    try {
        std::optional<Dictionary> top;
        try {
            top = as<Dictionary>(Bencode::decode(bencodedData));
        } catch (const BencodeDecodeError &) {
            refuse(invalidFormat);
        }
        if (!top)
            refuse(invalidFormat);
        const auto info = as<Dictionary>(top->value("info"));
        if (!info)
            refuse(QCoreApplication::translate("TntMetadata", "The file holds no torrent information."));

        TntMetadata metadata;
        // libtorrent 2 reads v2 metadata by "meta version" 2; a hybrid carries v1 metadata as well.
        const bool hasV2 = integerAt(*info, "meta version") == 2;
        metadata.info = InfoReader(*info).read(hasV2);
        // The bytes of the "info" value, kept by the decoder under "hash".
        if (const auto infoBytes = as<QByteArrayView>(top->value("hash"))) {
            const QString v1 = hexDigest(*infoBytes, QCryptographicHash::Sha1);
            metadata.infohashV1 = info->value("pieces") ? v1 : notAvailable();
            metadata.infohashV2 = hasV2 ? hexDigest(*infoBytes, QCryptographicHash::Sha256) : notAvailable();
            // The id the server lists it under.
            metadata.hash = hasV2 ? metadata.infohashV2.left(40) : v1;
        } else {
            metadata.hash = notAvailable();
            metadata.infohashV1 = notAvailable();
            metadata.infohashV2 = notAvailable();
        }
        // Deliberately one second before the epoch when missing: the window shows that date as it is.
        metadata.creationDate = API::Date(static_cast<double>(integerAt(*top, "creation date").value_or(-1)));
        metadata.comment = textAt(*top, "comment").value_or(QString());
        metadata.createdBy = textAt(*top, "created by").value_or(notAvailable());
        return metadata;
    } catch (const Refusal &refused) {
        if (refusal)
            *refusal = refused.reason;
        return std::nullopt;
    }
}

std::optional<TntMetadata> TntMetadata::fromFile(const QString &path, QString *refusal)
{
    QFile file(path);
    std::optional<TntMetadata> metadata;
    QString why;
    if (file.open(QIODevice::ReadOnly))
        metadata = fromTorrentData(file.readAll(), &why);
    else
        why = file.errorString();
    if (!metadata)
        qCInfo(lcTntMetadata, "Failed to initialize tnt metadata from %s: %s",
               qUtf8Printable(QUrl::fromLocalFile(path).toString()), qUtf8Printable(why));
    if (refusal)
        *refusal = why;
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
    if (const auto info = field(object, QStringLiteral("info"))) {
        metadata.info = infoFrom(objectOf(*info, QStringLiteral("info")));
        // Sizes from the server are untrusted as well: their sum must fit, as it is shown.
        qint64 total = 0;
        for (const Info::File &file : metadata.info->files) {
            if (file.length < 0 || __builtin_add_overflow(total, file.length, &total))
                fail(QStringLiteral("length"), "file sizes that add up to a size");
        }
    }
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
