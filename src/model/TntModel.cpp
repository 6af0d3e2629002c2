#include "model/TntModel.h"

#include <QCollator>
#include <QLocale>

namespace {

QCollatorSortKey sortKeyOf(const QString &name)
{
    // One collator per thread: models are built on workers and updated on the main thread.
    thread_local const QCollator collator = [] {
        // The C locale collates by code point and ignores numeric mode: order as English then.
        QLocale locale;
        if (locale.language() == QLocale::C)
            locale = QLocale(QLocale::English);
        QCollator made(locale);
        made.setNumericMode(true);
        made.setCaseSensitivity(Qt::CaseInsensitive);
        return made;
    }();
    return collator.sortKey(name);
}

template<typename T, typename Incoming>
void take(T &field, const Incoming &incoming, TntModel::Field flag, TntModel::Fields &changed)
{
    if (incoming && field != *incoming) {
        field = *incoming;
        changed |= flag;
    }
}

} // namespace

QString TntModel::Tracker::statusText(Status status)
{
    switch (status) {
    case Status::disabled: return QStringLiteral("Disabled");
    case Status::notContacted: return QStringLiteral("Not contacted yet");
    case Status::contacted: return QStringLiteral("Working");
    case Status::updating: return QStringLiteral("Updating");
    case Status::notWorking: return QStringLiteral("Not working");
    }
    Q_UNREACHABLE();
}

TntModel::TntModel(QString hash, const API::STntModel &record, int averagingWindow)
    : m_id(std::move(hash))
    , m_addedOn(record.addedOn.value_or(API::Date()))
    , m_totalSize(record.totalSize.value_or(0))
    , m_magnetUri(record.magnetUri.value_or(QString()))
{
    setAveragingWindow(averagingWindow);
    update(record);
    if (!m_nameSortKey)
        m_nameSortKey = sortKeyOf(m_name);
}

void TntModel::setAveragingWindow(int samples)
{
    m_dlSpeedBuffer.setCapacity(samples);
    m_upSpeedBuffer.setCapacity(samples);
}

TntModel::Fields TntModel::update(const API::STntModel &d)
{
    Fields changed = 0;
    take(m_tags, d.tags, Tags, changed);
    take(m_state, d.state, StateField, changed);
    take(m_category, d.category, Category, changed);
    take(m_amountLeft, d.amountLeft, AmountLeft, changed);
    take(m_autoTmm, d.autoTmm, AutoTmm, changed);
    take(m_availability, d.availability, Availability, changed);
    take(m_completed, d.completed, Completed, changed);
    take(m_completionOn, d.completionOn, CompletionOn, changed);
    take(m_contentPath, d.contentPath, ContentPath, changed);
    take(m_dlLimit, d.dlLimit, DlLimit, changed);
    if (d.dlspeed) {
        m_dlSpeedBuffer.add(*d.dlspeed);
        take(m_dlspeed, std::optional(m_dlSpeedBuffer.shownRate(*d.dlspeed)), Dlspeed, changed);
    }
    take(m_downloaded, d.downloaded, Downloaded, changed);
    take(m_downloadedSession, d.downloadedSession, DownloadedSession, changed);
    take(m_eta, d.eta, Eta, changed);
    take(m_fLPiecePrio, d.fLPiecePrio, FLPiecePrio, changed);
    take(m_forceStart, d.forceStart, ForceStart, changed);
    take(m_lastActivity, d.lastActivity, LastActivity, changed);
    take(m_maxRatio, d.maxRatio, MaxRatio, changed);
    take(m_maxSeedingTime, d.maxSeedingTime, MaxSeedingTime, changed);
    if (d.name && *d.name != m_name) {
        m_name = *d.name;
        m_nameSortKey = sortKeyOf(m_name);
        changed |= Name;
    }
    take(m_numComplete, d.numComplete, NumComplete, changed);
    take(m_numIncomplete, d.numIncomplete, NumIncomplete, changed);
    take(m_numLeechs, d.numLeechs, NumLeechs, changed);
    take(m_numSeeds, d.numSeeds, NumSeeds, changed);
    take(m_priority, d.priority, Priority, changed);
    take(m_progress, d.progress, Progress, changed);
    take(m_ratio, d.ratio, Ratio, changed);
    take(m_ratioLimit, d.ratioLimit, RatioLimit, changed);
    take(m_savePath, d.savePath, SavePath, changed);
    take(m_seedingTime, d.seedingTime, SeedingTime, changed);
    take(m_seedingTimeLimit, d.seedingTimeLimit, SeedingTimeLimit, changed);
    take(m_seenComplete, d.seenComplete, SeenComplete, changed);
    take(m_seqDl, d.seqDl, SeqDl, changed);
    take(m_size, d.size, Size, changed);
    take(m_superSeeding, d.superSeeding, SuperSeeding, changed);
    take(m_timeActive, d.timeActive, TimeActive, changed);
    take(m_tracker, d.tracker, TrackerField, changed);
    take(m_upLimit, d.upLimit, UpLimit, changed);
    take(m_uploaded, d.uploaded, Uploaded, changed);
    take(m_uploadedSession, d.uploadedSession, UploadedSession, changed);
    if (d.upspeed) {
        m_upSpeedBuffer.add(*d.upspeed);
        take(m_upspeed, std::optional(m_upSpeedBuffer.shownRate(*d.upspeed)), Upspeed, changed);
    }
    return changed;
}

TntModel::Fields TntModel::setState(State state)
{
    Fields changed = 0;
    take(m_state, std::optional(state), StateField, changed);
    return changed;
}

TntModel::Fields TntModel::setCategory(const QString &category)
{
    Fields changed = 0;
    take(m_category, std::optional(category), Category, changed);
    return changed;
}

TntModel::Fields TntModel::setTags(const QString &tags)
{
    Fields changed = 0;
    take(m_tags, std::optional(tags), Tags, changed);
    return changed;
}

QString TntModel::stateTitle(State state)
{
    switch (state) {
    case State::all: return QStringLiteral("All");
    case State::downloading: return QStringLiteral("Downloading");
    case State::uploading: return QStringLiteral("Seeding");
    case State::stopped:
    case State::pausedDL:
    case State::stoppedDL: return QStringLiteral("Stopped");
    case State::complited:
    case State::pausedUP:
    case State::stoppedUP: return QStringLiteral("Completed");
    case State::queued:
    case State::queuedUP:
    case State::queuedDL: return QStringLiteral("Queued");
    case State::stalled:
    case State::stalledUP:
    case State::stalledDL: return QStringLiteral("Stalled");
    case State::checking:
    case State::checkingUP:
    case State::checkingDL:
    case State::checkingResumeData: return QStringLiteral("Checking");
    case State::moving: return QStringLiteral("Moving");
    case State::error: return QStringLiteral("Error");
    case State::missingFiles: return QStringLiteral("Missing files");
    case State::forcedUP: return QStringLiteral("[F] Seeding");
    case State::forcedDL: return QStringLiteral("[F] Downloading");
    case State::forcedMetaDL: return QStringLiteral("[F] Metadata loading");
    case State::allocating: return QStringLiteral("Allocating disk space");
    case State::metaDL: return QStringLiteral("Metadata loading");
    case State::unknown: return QStringLiteral("Unknown");
    }
    Q_UNREACHABLE();
}

bool TntModel::matches(State state, State filter)
{
    const auto in = [state](std::initializer_list<State> states) {
        return std::find(states.begin(), states.end(), state) != states.end();
    };
    switch (filter) {
    case State::all: return true;
    case State::downloading: return in({State::downloading, State::forcedDL, State::metaDL, State::forcedMetaDL});
    case State::uploading: return in({State::uploading, State::forcedUP});
    case State::stopped: return in({State::pausedDL, State::stoppedDL});
    case State::complited: return in({State::pausedUP, State::stoppedUP});
    case State::queued: return in({State::queuedDL, State::queuedUP});
    case State::stalled: return in({State::stalledUP, State::stalledDL});
    case State::checking: return in({State::checkingUP, State::checkingDL, State::checkingResumeData});
    case State::moving: return state == State::moving;
    case State::error: return in({State::error, State::missingFiles, State::unknown});
    default: return state == filter;
    }
}
