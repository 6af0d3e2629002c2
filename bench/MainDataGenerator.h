#pragma once

#include <QByteArray>

// Synthetic main-data answers shaped like qBittorrent 5.1's: every torrent carries the 56 keys that
// server sends, in its sorted key order, and about one name in twenty is non-ASCII.
namespace Bench {

// The first n torrents are the same for every count: a delta made for a small library applies to
// a larger one too.
QByteArray fullUpdate(int torrentCount);
// Changes the transfer fields of `changed` torrents spread evenly over fullUpdate(torrentCount), as
// a busy server's next answer would; each round gives them other values.
QByteArray delta(int torrentCount, int changed, unsigned round = 1);

// A library that turns over, for long runs: the torrents numbered [first, first + count), each
// with a hash of its own number. A full update of them, then an answer that removes the first
// `turnover`, adds as many after the last, changes the state and rates of `changed` others, and
// swaps a tag; `round` varies the values and names the response id.
QByteArray churnFull(int first, int count);
QByteArray churnDelta(int first, int count, int turnover, int changed, unsigned round);

} // namespace Bench
