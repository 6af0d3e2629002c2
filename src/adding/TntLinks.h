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
    // The id the server lists a magnet's torrent under, in lower-case hex: its v2 info-hash ("btmh")
    // cut to 40 digits, else its v1 info-hash ("btih", hex or base32); empty when the link names none.
    static QString infoHashOf(const QString &magnet);
};
