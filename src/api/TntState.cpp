#include "api/TntState.h"

#include <array>

namespace {

constexpr std::array<std::string_view, tntModelStateCount> stateTexts = {
    "all",       "downloading", "uploading", "stopped",   "complited",  "queued",     "stalled",
    "checking",  "moving",      "error",     "missingFiles", "pausedUP", "stoppedUP", "pausedDL",
    "stoppedDL", "queuedUP",    "queuedDL",  "stalledUP", "stalledDL",  "checkingUP", "checkingDL",
    "checkingResumeData", "forcedUP", "forcedDL", "forcedMetaDL", "allocating", "metaDL", "unknown",
};

} // namespace

std::optional<TntModelState> tntModelStateFromText(std::string_view text) noexcept
{
    for (std::size_t i = 0; i < stateTexts.size(); ++i) {
        if (stateTexts[i] == text)
            return static_cast<TntModelState>(i);
    }
    return std::nullopt;
}

QString tntModelStateText(TntModelState state)
{
    const std::string_view text = stateTexts.at(static_cast<std::size_t>(state));
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

std::optional<TntModelTrackerStatus> tntModelTrackerStatusFromValue(qint64 value) noexcept
{
    if (value < 0 || value > static_cast<int>(TntModelTrackerStatus::notWorking))
        return std::nullopt;
    return static_cast<TntModelTrackerStatus>(value);
}

std::optional<TntModelFilePriority> tntModelFilePriorityFromValue(double value) noexcept
{
    for (auto priority : {TntModelFilePriority::doNotDownload, TntModelFilePriority::normal,
                          TntModelFilePriority::high, TntModelFilePriority::maximal, TntModelFilePriority::mixed}) {
        if (tntModelFilePriorityValue(priority) == value)
            return priority;
    }
    return std::nullopt;
}

double tntModelFilePriorityValue(TntModelFilePriority priority) noexcept
{
    switch (priority) {
    case TntModelFilePriority::doNotDownload: return 0;
    case TntModelFilePriority::normal: return 1;
    case TntModelFilePriority::high: return 6;
    case TntModelFilePriority::maximal: return 7;
    case TntModelFilePriority::mixed: return -1;
    }
    return 0;
}
