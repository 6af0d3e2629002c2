#pragma once

#include <QString>

// Text from a server (a torrent's comment) shown with its web and magnet links clickable, and
// nothing else: no markup of its own, no other schemes.
namespace LinkedText {
// `text` escaped, its http, https and magnet links as anchors, its spaces and line breaks kept.
QString html(const QString &text);
bool isOpenable(const QString &link);
// Opens `link` with the desktop's handler when it is openable; says whether it did.
bool open(const QString &link);
} // namespace LinkedText
