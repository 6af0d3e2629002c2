#pragma once

#include <QString>

namespace API {

// What a torrent is added with, both by torrents/add and by an auto-downloading rule.
enum class TntContentLayout { original, subfolder, noSubfolder };
enum class TntStopCondition { none, metaReceived, filesChecked };

QString wireText(TntContentLayout layout);
QString wireText(TntStopCondition condition);

} // namespace API
