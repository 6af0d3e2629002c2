#pragma once

#include <QString>

#include <optional>
#include <string_view>

// The torrent model's enumerations, kept apart from the model class so that the wire records can
// decode into them. The model class exposes them as `TntModel::State`, `TntModel::Tracker::Status`
// and `TntModel::File::Priority`.

// The server's torrent state words; cases 0 to 9 double as the sidebar's filter groups. The text
// value of each case is its name ("complited" included).
enum class TntModelState {
    all,
    downloading,
    uploading,
    stopped,
    complited,
    queued,
    stalled,
    checking,
    moving,
    error,
    missingFiles,
    pausedUP,
    stoppedUP,
    pausedDL,
    stoppedDL,
    queuedUP,
    queuedDL,
    stalledUP,
    stalledDL,
    checkingUP,
    checkingDL,
    checkingResumeData,
    forcedUP,
    forcedDL,
    forcedMetaDL,
    allocating,
    metaDL,
    unknown,
};

inline constexpr int tntModelStateCount = 28;

std::optional<TntModelState> tntModelStateFromText(std::string_view text) noexcept;
QString tntModelStateText(TntModelState state);

// Ordered by value: the model sorts and compares trackers by it.
enum class TntModelTrackerStatus : int { disabled = 0, notContacted = 1, contacted = 2, updating = 3, notWorking = 4 };

std::optional<TntModelTrackerStatus> tntModelTrackerStatusFromValue(qint64 value) noexcept;

enum class TntModelFilePriority { doNotDownload, normal, high, maximal, mixed };

// Exact comparison with 0, 1, 6, 7 and -1: any other server value has no case.
std::optional<TntModelFilePriority> tntModelFilePriorityFromValue(double value) noexcept;
double tntModelFilePriorityValue(TntModelFilePriority priority) noexcept;
