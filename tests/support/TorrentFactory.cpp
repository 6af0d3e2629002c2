#include "support/TorrentFactory.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QRandomGenerator>
#include <QUrl>

#include <algorithm>
#include <cstring>
#include <map>
#include <stdexcept>
#include <vector>

namespace TorrentFactory {

namespace {

QByteArray bString(const QByteArray &bytes)
{
    return QByteArray::number(bytes.size()) + ':' + bytes;
}

QByteArray bInteger(qint64 value)
{
    return 'i' + QByteArray::number(value) + 'e';
}

QByteArray bList(const QList<QByteArray> &encodedItems)
{
    return 'l' + encodedItems.join() + 'e';
}

// Values already encoded. std::map orders QByteArray keys by raw bytes, as bencoding requires.
using BDict = std::map<QByteArray, QByteArray>;

QByteArray bDict(const BDict &entries)
{
    QByteArray out("d");
    for (const auto &[key, value] : entries)
        out += bString(key) + value;
    return out + 'e';
}

QByteArray sha1(QByteArrayView data)
{
    return QCryptographicHash::hash(data, QCryptographicHash::Sha1);
}

[[noreturn]] void misuse(const QString &what)
{
    throw std::invalid_argument(what.toStdString());
}

QByteArray randomBytes(qint64 size)
{
    std::vector<quint32> words(static_cast<std::size_t>((size + 3) / 4));
    QRandomGenerator::global()->fillRange(words.data(), static_cast<qsizetype>(words.size()));
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    if (size > 0)
        std::memcpy(bytes.data(), words.data(), static_cast<std::size_t>(size));
    return bytes;
}

void writeFile(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly)
        || file.write(contents) != contents.size())
        throw std::runtime_error(QStringLiteral("cannot write %1: %2").arg(path, file.errorString()).toStdString());
}

QStringList checkedComponents(const QString &path)
{
    const QStringList components = path.split(u'/');
    for (const QString &component : components) {
        if (component.isEmpty() || component == u"." || component == u"..")
            misuse(QStringLiteral("unsafe path in a torrent: \"%1\"").arg(path));
    }
    return components;
}

void checkOptions(const Options &options)
{
    const qint64 length = options.pieceLength;
    if (length < 16 * 1024 || (length & (length - 1)) != 0)
        misuse(QStringLiteral("piece length %1 is not a power of two of at least 16 KiB").arg(length));
    for (const QString &url : options.announceUrls + options.webSeeds) {
        if (!QHostAddress(QUrl(url).host()).isLoopback())
            misuse(QStringLiteral("tracker or web seed %1 is not on a loopback address").arg(url));
    }
}

// SHA-1 of each piece of the files' concatenation.
class PieceHasher
{
public:
    explicit PieceHasher(qint64 pieceLength)
        : m_pieceLength(static_cast<qsizetype>(pieceLength))
    {
    }

    void add(const QByteArray &data)
    {
        m_pending += data;
        qsizetype start = 0;
        for (; m_pending.size() - start >= m_pieceLength; start += m_pieceLength)
            m_pieces += sha1(QByteArrayView(m_pending).sliced(start, m_pieceLength));
        m_pending.remove(0, start);
    }

    QByteArray finish()
    {
        if (!m_pending.isEmpty())
            m_pieces += sha1(m_pending);
        m_pending.clear();
        return m_pieces;
    }

private:
    qsizetype m_pieceLength;
    QByteArray m_pending;
    QByteArray m_pieces;
};

Torrent assemble(BDict info, const QString &name, qint64 totalSize, const QString &contentPath, const Options &options)
{
    info.emplace("name", bString(name.toUtf8()));
    info.emplace("piece length", bInteger(options.pieceLength));
    if (options.isPrivate)
        info.emplace("private", bInteger(1));
    const QByteArray encodedInfo = bDict(info);

    BDict root{{"info", encodedInfo}};
    if (!options.announceUrls.isEmpty())
        root.emplace("announce", bString(options.announceUrls.constFirst().toUtf8()));
    if (options.announceUrls.size() > 1) {
        QList<QByteArray> tiers;
        for (const QString &url : options.announceUrls)
            tiers.append(bList({bString(url.toUtf8())}));
        root.emplace("announce-list", bList(tiers));
    }
    if (!options.webSeeds.isEmpty()) {
        QList<QByteArray> seeds;
        for (const QString &url : options.webSeeds)
            seeds.append(bString(url.toUtf8()));
        root.emplace("url-list", bList(seeds));
    }
    return {bDict(root), QString::fromLatin1(sha1(encodedInfo).toHex()), name, totalSize, contentPath};
}

} // namespace

Torrent singleFile(const QString &folder, const QString &name, qint64 size, const Options &options)
{
    checkOptions(options);
    if (size <= 0)
        misuse(QStringLiteral("a single-file torrent needs at least one byte"));
    if (checkedComponents(name).size() != 1)
        misuse(QStringLiteral("a torrent name cannot hold \"/\": \"%1\"").arg(name));

    const QByteArray contents = randomBytes(size);
    const QString path = folder + u'/' + name;
    writeFile(path, contents);

    PieceHasher hasher(options.pieceLength);
    hasher.add(contents);
    BDict info{{"length", bInteger(size)}, {"pieces", bString(hasher.finish())}};
    return assemble(std::move(info), name, size, path, options);
}

Torrent multiFile(const QString &folder, const QString &name, const QList<File> &files, const Options &options)
{
    checkOptions(options);
    if (checkedComponents(name).size() != 1)
        misuse(QStringLiteral("a torrent name cannot hold \"/\": \"%1\"").arg(name));

    const QString root = folder + u'/' + name;
    PieceHasher hasher(options.pieceLength);
    QList<QByteArray> fileEntries;
    qint64 totalSize = 0;
    for (const File &file : files) {
        if (file.size < 0)
            misuse(QStringLiteral("negative size for %1").arg(file.path));
        QList<QByteArray> path;
        for (const QString &component : checkedComponents(file.path))
            path.append(bString(component.toUtf8()));

        const QByteArray contents = randomBytes(file.size);
        writeFile(root + u'/' + file.path, contents);
        hasher.add(contents);
        totalSize += file.size;
        fileEntries.append(bDict({{"length", bInteger(file.size)}, {"path", bList(path)}}));
    }
    if (totalSize == 0)
        misuse(QStringLiteral("a torrent needs at least one byte"));

    BDict info{{"files", bList(fileEntries)}, {"pieces", bString(hasher.finish())}};
    return assemble(std::move(info), name, totalSize, root, options);
}

API::MultipartBody multipartBody(const QList<FormPart> &parts)
{
    for (const FormPart &part : parts) {
        for (const QByteArray &header : {part.name, part.fileName, part.contentType}) {
            if (header.contains('"') || header.contains('\r') || header.contains('\n'))
                misuse(QStringLiteral("a form part header cannot hold quotes or line breaks"));
        }
    }
    QByteArray boundary;
    const auto inAnyValue = [&parts](const QByteArray &candidate) {
        return std::any_of(parts.cbegin(), parts.cend(),
                           [&candidate](const FormPart &part) { return part.value.contains(candidate); });
    };
    do {
        boundary = "QuilloTestBoundary" + randomBytes(12).toHex();
    } while (inAnyValue(boundary));

    QByteArray body;
    for (const FormPart &part : parts) {
        body += "--" + boundary + "\r\nContent-Disposition: form-data; name=\"" + part.name + '"';
        if (!part.fileName.isEmpty())
            body += "; filename=\"" + part.fileName + '"';
        body += "\r\n";
        if (!part.contentType.isEmpty())
            body += "Content-Type: " + part.contentType + "\r\n";
        body += "\r\n" + part.value + "\r\n";
    }
    body += "--" + boundary + "--\r\n";
    return {boundary, body};
}

FormPart torrentPart(const Torrent &torrent)
{
    return {"torrents", torrent.bytes, torrent.name.toUtf8() + ".torrent", "application/x-bittorrent"};
}

LibtorrentMade madeByLibtorrent(Version version, const QString &folder, const QString &name, const QStringList &entries)
{
    const QString kind = version == Version::v1 ? u"v1"_qs : version == Version::v2 ? u"v2"_qs : u"hybrid"_qs;
    QTemporaryDir out;
    const QString file = out.filePath(u"made.torrent"_qs);
    QProcess script;
    script.start(u"/usr/bin/python3"_qs, QStringList{QString::fromUtf8(QUILLO_MAKE_TORRENT), kind, folder, name, file} + entries);
    if (!script.waitForFinished(60'000) || script.exitStatus() != QProcess::NormalExit || script.exitCode() != 0)
        throw std::runtime_error("make_torrent.py failed (is python3-libtorrent installed?): "
                                 + script.readAllStandardError().toStdString());
    const QJsonObject made = QJsonDocument::fromJson(script.readAllStandardOutput()).object();
    QFile torrent(file);
    if (!torrent.open(QIODevice::ReadOnly))
        throw std::runtime_error("make_torrent.py wrote no torrent");
    LibtorrentMade result{.bytes = torrent.readAll(),
                          .id = made.value(u"id").toString(),
                          .v1 = made.value(u"v1").toString(),
                          .v2 = made.value(u"v2").toString()};
    for (const QJsonValue &entry : made.value(u"files").toArray())
        result.files.append({entry[u"path"].toString(), entry[u"size"].toInteger()});
    return result;
}

} // namespace TorrentFactory
