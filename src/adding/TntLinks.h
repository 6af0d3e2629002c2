#pragma once

#include <QString>
#include <QStringList>

// What the user typed or dropped as links, one per line: magnet links, http(s) links to .torrent
// files, and bare info-hashes, which become magnet links.
struct TntLinks
{
    QStringList urls;     // as torrents/add takes them, in input order
    QStringList rejected; // lines that are none of these, trimmed

    static TntLinks parse(const QString &text);
    // One line's link; empty when the line is none.
    static QString urlOf(const QString &line);
    // The v1 info-hash of a magnet link in lower-case hex, as the server keys torrents; empty when
    // the link names none.
    static QString infoHashOf(const QString &magnet);
};
