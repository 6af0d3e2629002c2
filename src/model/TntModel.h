#pragma once

#include "api/Records.h"
#include "model/DataRateBuffer.h"
#include "api/TntState.h"

#include <QCollator>
#include <QString>

#include <optional>

// The long-lived picture of one torrent, keyed by its hash, created once and updated in place from
// every main-data delta. A plain object: an update returns which fields changed, and the collection
// that owns the models announces the changes of a whole answer at once.
class TntModel
{
public:
    using State = TntModelState;

    struct Tracker
    {
        using Status = TntModelTrackerStatus;
        static QString statusText(Status status);
    };

    struct File
    {
        using Priority = TntModelFilePriority;
    };

    // The detail pane's models of the torrent it shows (model/TntDetailModels.h).
    class Peer;
    class GenericProperties;

    // One bit per field a delta may change.
    enum Field : quint64 {
        Tags = 1ull << 0,
        StateField = 1ull << 1,
        Category = 1ull << 2,
        AmountLeft = 1ull << 3,
        AutoTmm = 1ull << 4,
        Availability = 1ull << 5,
        Completed = 1ull << 6,
        CompletionOn = 1ull << 7,
        ContentPath = 1ull << 8,
        DlLimit = 1ull << 9,
        Dlspeed = 1ull << 10,
        Downloaded = 1ull << 11,
        DownloadedSession = 1ull << 12,
        Eta = 1ull << 13,
        FLPiecePrio = 1ull << 14,
        ForceStart = 1ull << 15,
        LastActivity = 1ull << 16,
        MaxRatio = 1ull << 17,
        MaxSeedingTime = 1ull << 18,
        Name = 1ull << 19,
        NumComplete = 1ull << 20,
        NumIncomplete = 1ull << 21,
        NumLeechs = 1ull << 22,
        NumSeeds = 1ull << 23,
        Priority = 1ull << 24,
        Progress = 1ull << 25,
        Ratio = 1ull << 26,
        RatioLimit = 1ull << 27,
        SavePath = 1ull << 28,
        SeedingTime = 1ull << 29,
        SeedingTimeLimit = 1ull << 30,
        SeenComplete = 1ull << 31,
        SeqDl = 1ull << 32,
        Size = 1ull << 33,
        SuperSeeding = 1ull << 34,
        TimeActive = 1ull << 35,
        TrackerField = 1ull << 36,
        UpLimit = 1ull << 37,
        Uploaded = 1ull << 38,
        UploadedSession = 1ull << 39,
        Upspeed = 1ull << 40,
    };
    using Fields = quint64;

    // Absent fields start empty, zero (a date: the epoch) or `unknown`.
    TntModel(QString hash, const API::STntModel &record, int averagingWindow = DataRateBuffer::defaultCapacity);

    // Takes the fields the delta carries and that may change; returns those whose value changed.
    Fields update(const API::STntModel &delta);
    void setAveragingWindow(int samples);

    // The state's display text, and whether a torrent in `state` is shown under the filter `filter`.
    static QString stateTitle(State state);
    static bool matches(State state, State filter);

    const QString &id() const { return m_id; }
    API::Date addedOn() const { return m_addedOn; }
    qint64 totalSize() const { return m_totalSize; }
    const QString &magnetUri() const { return m_magnetUri; }
    const QString &tags() const { return m_tags; }
    State state() const { return m_state; }
    const QString &category() const { return m_category; }
    qint64 amountLeft() const { return m_amountLeft; }
    bool autoTmm() const { return m_autoTmm; }
    double availability() const { return m_availability; }
    qint64 completed() const { return m_completed; }
    API::Date completionOn() const { return m_completionOn; }
    const QString &contentPath() const { return m_contentPath; }
    qint64 dlLimit() const { return m_dlLimit; }
    qint64 dlspeed() const { return m_dlspeed; }
    qint64 downloaded() const { return m_downloaded; }
    qint64 downloadedSession() const { return m_downloadedSession; }
    double eta() const { return m_eta; }
    bool fLPiecePrio() const { return m_fLPiecePrio; }
    bool forceStart() const { return m_forceStart; }
    API::Date lastActivity() const { return m_lastActivity; }
    double maxRatio() const { return m_maxRatio; }
    qint64 maxSeedingTime() const { return m_maxSeedingTime; }
    const QString &name() const { return m_name; }
    // Compares names in the user's language order with numbers as numbers; made with the name,
    // on whichever thread builds the model, so that sorting 50,000 rows compares keys only.
    const QCollatorSortKey &nameSortKey() const { return *m_nameSortKey; }
    qint64 numComplete() const { return m_numComplete; }
    qint64 numIncomplete() const { return m_numIncomplete; }
    qint64 numLeechs() const { return m_numLeechs; }
    qint64 numSeeds() const { return m_numSeeds; }
    qint64 priority() const { return m_priority; }
    double progress() const { return m_progress; }
    double ratio() const { return m_ratio; }
    double ratioLimit() const { return m_ratioLimit; }
    const QString &savePath() const { return m_savePath; }
    qint64 seedingTime() const { return m_seedingTime; }
    qint64 seedingTimeLimit() const { return m_seedingTimeLimit; }
    API::Date seenComplete() const { return m_seenComplete; }
    bool seqDl() const { return m_seqDl; }
    qint64 size() const { return m_size; }
    bool superSeeding() const { return m_superSeeding; }
    qint64 timeActive() const { return m_timeActive; }
    const QString &tracker() const { return m_tracker; }
    qint64 upLimit() const { return m_upLimit; }
    qint64 uploaded() const { return m_uploaded; }
    qint64 uploadedSession() const { return m_uploadedSession; }
    qint64 upspeed() const { return m_upspeed; }

    // For changes made here before the server confirms them (a started torrent, a new category).
    Fields setState(State state);
    Fields setCategory(const QString &category);
    Fields setTags(const QString &tags);

private:
    const QString m_id;
    API::Date m_addedOn;
    qint64 m_totalSize = 0;
    QString m_magnetUri;
    QString m_tags;
    State m_state = State::unknown;
    QString m_category;
    qint64 m_amountLeft = 0;
    bool m_autoTmm = false;
    double m_availability = 0;
    qint64 m_completed = 0;
    API::Date m_completionOn;
    QString m_contentPath;
    qint64 m_dlLimit = 0;
    qint64 m_dlspeed = 0;
    qint64 m_downloaded = 0;
    qint64 m_downloadedSession = 0;
    double m_eta = 0;
    bool m_fLPiecePrio = false;
    bool m_forceStart = false;
    API::Date m_lastActivity;
    double m_maxRatio = 0;
    qint64 m_maxSeedingTime = 0;
    QString m_name;
    std::optional<QCollatorSortKey> m_nameSortKey;
    qint64 m_numComplete = 0;
    qint64 m_numIncomplete = 0;
    qint64 m_numLeechs = 0;
    qint64 m_numSeeds = 0;
    qint64 m_priority = 0;
    double m_progress = 0;
    double m_ratio = 0;
    double m_ratioLimit = 0;
    QString m_savePath;
    qint64 m_seedingTime = 0;
    qint64 m_seedingTimeLimit = 0;
    API::Date m_seenComplete;
    bool m_seqDl = false;
    qint64 m_size = 0;
    bool m_superSeeding = false;
    qint64 m_timeActive = 0;
    QString m_tracker;
    qint64 m_upLimit = 0;
    qint64 m_uploaded = 0;
    qint64 m_uploadedSession = 0;
    qint64 m_upspeed = 0;
    DataRateBuffer m_dlSpeedBuffer;
    DataRateBuffer m_upSpeedBuffer;
};
