#pragma once

#include "api/APIEndpoint.h"

#include <QByteArray>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>

// Small real BitTorrent v1 torrents over random data written to disk, for tests against real
// servers. Misuse (a non-loopback tracker, an unsafe path, nothing to hash) throws
// std::invalid_argument; a file that cannot be written throws std::runtime_error.
namespace TorrentFactory {

struct File
{
    QString path; // relative to the torrent's folder, "/"-separated
    qint64 size = 0;
};

struct Options
{
    QStringList announceUrls; // loopback trackers only, e.g. "http://127.0.0.1:1/announce"
    bool isPrivate = false;
    qint64 pieceLength = 16 * 1024; // a power of two, at least 16 KiB
    QStringList webSeeds;           // loopback only, written as "url-list"
};

struct Torrent
{
    QByteArray bytes; // the .torrent file
    QString infoHash; // lower-case hex SHA-1 of the bencoded info dictionary
    QString name;
    qint64 totalSize = 0;
    QString contentPath; // local: the file itself, or the folder holding the files
};

// Writes `size` random bytes to `<folder>/<name>`.
Torrent singleFile(const QString &folder, const QString &name, qint64 size, const Options &options = {});
// Writes every file under `<folder>/<name>/`, in the order given, which is also the torrent's order.
Torrent multiFile(const QString &folder, const QString &name, const QList<File> &files,
                  const Options &options = {});

// A torrent made by libtorrent itself (tests/support/make_torrent.py through /usr/bin/python3 and
// python3-libtorrent), with libtorrent's own reading of it. Throws std::runtime_error when the
// script fails.
enum class Version { v1, v2, hybrid };

struct LibtorrentMade
{
    QByteArray bytes;
    QString id;     // what a libtorrent-2 server lists it under
    QString v1;     // empty without v1 metadata
    QString v2;     // all 64 hex digits; empty without v2 metadata
    QList<File> files; // as the server numbers them: pad files left out, paths from the torrent's name
};

// `entries` as make_torrent.py takes them: "path=size" for a file, "path->target" for a symbolic link.
LibtorrentMade madeByLibtorrent(Version version, const QString &folder, const QString &name, const QStringList &entries);

// One field of a multipart/form-data body; a file part has a file name and usually a content type.
struct FormPart
{
    QByteArray name;
    QByteArray value;
    QByteArray fileName = {};
    QByteArray contentType = {};
};

API::MultipartBody multipartBody(const QList<FormPart> &parts);
// The "torrents" part that carries `torrent` to torrents/add.
FormPart torrentPart(const Torrent &torrent);

} // namespace TorrentFactory

Q_DECLARE_METATYPE(TorrentFactory::File)
Q_DECLARE_METATYPE(TorrentFactory::Options)
Q_DECLARE_METATYPE(TorrentFactory::Version)
