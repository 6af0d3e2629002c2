#pragma once

// A torrent's fields, written once. The wire record, its decoding table, and the model's storage,
// accessors, change bits and update are all expanded from this list, so a field added here reaches
// every one of them and a field left out of one cannot compile.
//
// X(member, Bit, Type, decoding, role)
//   member    the camel-case key ("added_on" converts to addedOn) and the name in code
//   Bit       the model's change bit for the field
//   decoding  `optional`, or `shared` for a string that many torrents repeat (one copy for all)
//   role      `kept`: the model holds it and takes every change; `rate`: kept through the averaging
//             buffer of the speed columns; `wire`: decoded, not kept (the hashes: the key is the id)
#define QUILLO_TNT_FIELDS(X) \
    X(addedOn, AddedOn, API::Date, optional, kept) \
    X(amountLeft, AmountLeft, qint64, optional, kept) \
    X(autoTmm, AutoTmm, bool, optional, kept) \
    X(availability, Availability, double, optional, kept) \
    X(category, Category, QString, shared, kept) \
    X(completed, Completed, qint64, optional, kept) \
    X(completionOn, CompletionOn, API::Date, optional, kept) \
    X(contentPath, ContentPath, QString, optional, kept) \
    X(dlLimit, DlLimit, qint64, optional, kept) \
    X(dlspeed, Dlspeed, qint64, optional, rate) \
    X(downloaded, Downloaded, qint64, optional, kept) \
    X(downloadedSession, DownloadedSession, qint64, optional, kept) \
    X(eta, Eta, double, optional, kept) \
    X(fLPiecePrio, FLPiecePrio, bool, optional, kept) \
    X(forceStart, ForceStart, bool, optional, kept) \
    X(inactiveSeedingTimeLimit, InactiveSeedingTimeLimit, qint64, optional, kept) \
    X(infohashV1, InfohashV1, QString, shared, wire) \
    X(infohashV2, InfohashV2, QString, shared, wire) \
    X(lastActivity, LastActivity, API::Date, optional, kept) \
    X(magnetUri, MagnetUri, QString, optional, kept) \
    X(maxRatio, MaxRatio, double, optional, kept) \
    X(maxSeedingTime, MaxSeedingTime, qint64, optional, kept) \
    X(name, Name, QString, optional, kept) \
    X(numComplete, NumComplete, qint64, optional, kept) \
    X(numIncomplete, NumIncomplete, qint64, optional, kept) \
    X(numLeechs, NumLeechs, qint64, optional, kept) \
    X(numSeeds, NumSeeds, qint64, optional, kept) \
    X(priority, Priority, qint64, optional, kept) \
    X(progress, Progress, double, optional, kept) \
    X(ratio, Ratio, double, optional, kept) \
    X(ratioLimit, RatioLimit, double, optional, kept) \
    X(savePath, SavePath, QString, shared, kept) \
    X(seedingTime, SeedingTime, qint64, optional, kept) \
    X(seedingTimeLimit, SeedingTimeLimit, qint64, optional, kept) \
    X(seenComplete, SeenComplete, API::Date, optional, kept) \
    X(seqDl, SeqDl, bool, optional, kept) \
    X(size, Size, qint64, optional, kept) \
    X(state, StateField, TntModelState, optional, kept) \
    X(superSeeding, SuperSeeding, bool, optional, kept) \
    X(tags, Tags, QString, shared, kept) \
    X(timeActive, TimeActive, qint64, optional, kept) \
    X(totalSize, TotalSize, qint64, optional, kept) \
    X(tracker, TrackerField, QString, shared, kept) \
    X(upLimit, UpLimit, qint64, optional, kept) \
    X(uploaded, Uploaded, qint64, optional, kept) \
    X(uploadedSession, UploadedSession, qint64, optional, kept) \
    X(upspeed, Upspeed, qint64, optional, rate)
