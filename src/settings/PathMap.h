#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

// One remote-to-local path prefix: where the server's paths live on this computer. The local
// folder is kept as its bookmark (here the folder's absolute path), never read from elsewhere.
struct PathMap
{
    QUuid id = QUuid::createUuid(); // not stored: every read gives a fresh one
    QString remotePath;
    std::optional<QByteArray> bookmarkData;

    // "remote||base64 of the bookmark"; split at the first "||" when read.
    QString storedText() const;
    static std::optional<PathMap> fromStoredText(const QString &text);

    // The list as the settings keep it; an undecodable list reads as empty.
    static QByteArray encodeList(const QList<PathMap> &maps);
    static QList<PathMap> decodeList(const QByteArray &stored);

    friend bool operator==(const PathMap &a, const PathMap &b) { return a.id == b.id; }
};
