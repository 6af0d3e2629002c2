#pragma once

#include "api/Date.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// What the add-torrent window shows before anything is uploaded. A fresh record holds runs of "x"
// of realistic widths, so that a loading skeleton can be drawn before the real values arrive.
struct TntMetadata
{
    enum class LoadingState { loaded, loading, failed };

    struct Tracker
    {
        QString url;
        qint64 tier = 0;

        friend bool operator==(const Tracker &, const Tracker &) = default;
    };

    struct Info
    {
        struct File
        {
            QString path; // starts with the torrent's name: "name/folder/file"
            qint64 length = 0;
            std::optional<qint64> priority; // only the server sends one

            friend bool operator==(const File &, const File &) = default;
        };

        QList<File> files; // empty for a single-file torrent
        QString name;
        qint64 length = 0;
        qint64 pieceLength = 0;
        qint64 piecesNum = -1; // a .torrent file has no such key: only the server's record fills it
        bool isPrivate = false; // "private"

        friend bool operator==(const Info &, const Info &) = default;
    };

    QString comment = QString(67, u'x');
    QString createdBy = QString(14, u'x');
    API::Date creationDate = API::Date::fromDateTime(QDateTime::currentDateTimeUtc());
    // The id the server lists the torrent under: the v1 info-hash, or for a torrent with v2
    // metadata its v2 info-hash cut to 40 hex digits.
    QString hash = QString(40, u'x');
    QString infohashV1 = QString(40, u'x');
    QString infohashV2 = QString(40, u'x');
    std::optional<Info> info;
    QList<Tracker> trackers;
    QStringList webseeds;

    // The metadata of a .torrent file's bytes; nothing, and why in `refusal`, for a file that
    // libtorrent-based servers refuse. Optional fields the file lacks take their fallbacks.
    static std::optional<TntMetadata> fromTorrentData(const QByteArray &bencodedData, QString *refusal = nullptr);
    // As fromTorrentData(), reading the file; a failure is logged with the file's location.
    static std::optional<TntMetadata> fromFile(const QString &path, QString *refusal = nullptr);
    // The server's record of fetched metadata. Keys come camelCase or snake_case; a key that is
    // absent keeps its placeholder. Throws API::ResponseDecodingError for a value of the wrong type.
    static TntMetadata fromJson(const QByteArray &json);

    // The localised "not available".
    static QString notAvailable();

    friend bool operator==(const TntMetadata &, const TntMetadata &) = default;
};
