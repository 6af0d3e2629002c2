#pragma once

#include "api/Records.h"

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

class ServerLabels;
class TntCollection;
class TrackerIndex;

// What the table and the sidebar show of one server, kept between starts so that the next start
// paints at once: every torrent's kept fields (not its rates, which are stale the moment they are
// read), the categories, the tags and the tracker map. Strings that many torrents repeat (save
// paths, categories, trackers) are written once. A snapshot of another field list, one cut short or
// one whose checksum fails does not decode.
namespace TntSnapshot {

QByteArray encode(const TntCollection &tnts, const ServerLabels &labels, const TrackerIndex &trackers);
// As a full update without the transfer figures; none when `bytes` is not a whole snapshot.
std::optional<API::MainData> decode(QByteArrayView bytes);

} // namespace TntSnapshot
