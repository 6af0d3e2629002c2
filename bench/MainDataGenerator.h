#pragma once

#include <QByteArray>

// Synthetic main-data answers shaped like qBittorrent 5.1's: every torrent carries the 56 keys that
// server sends, in its sorted key order, and about one name in twenty is non-ASCII.
namespace Bench {

QByteArray fullUpdate(int torrentCount, unsigned seed = 1);
// Changes the transfer fields of one torrent in a hundred, as a busy server's next answer would.
QByteArray delta(int torrentCount, unsigned seed = 1);

} // namespace Bench
