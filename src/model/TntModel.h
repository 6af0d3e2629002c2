#pragma once

#include "api/Records.h"
#include "model/DataRateBuffer.h"
#include "api/TntState.h"

#include <QCollator>
#include <QString>

#include <optional>
#include <type_traits>

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

    // One bit per kept field, in the order of the field list.
#define QUILLO_FIELD_INDEX_kept(Bit) Bit##Index,
#define QUILLO_FIELD_INDEX_rate(Bit) Bit##Index,
#define QUILLO_FIELD_INDEX_wire(Bit)
#define QUILLO_FIELD_INDEX(member, Bit, Type, decoding, role) QUILLO_FIELD_INDEX_##role(Bit)
    enum FieldIndex { QUILLO_TNT_FIELDS(QUILLO_FIELD_INDEX) fieldCount };
#define QUILLO_FIELD_BIT_kept(Bit) Bit = 1ull << Bit##Index,
#define QUILLO_FIELD_BIT_rate(Bit) Bit = 1ull << Bit##Index,
#define QUILLO_FIELD_BIT_wire(Bit)
#define QUILLO_FIELD_BIT(member, Bit, Type, decoding, role) QUILLO_FIELD_BIT_##role(Bit)
    enum Field : quint64 { QUILLO_TNT_FIELDS(QUILLO_FIELD_BIT) };
    static_assert(fieldCount <= 64);
    using Fields = quint64;

    TntModel(QString hash, const API::STntModel &record, int averagingWindow = DataRateBuffer::defaultCapacity);

    // Takes the fields the delta carries and that may change; returns those whose value changed.
    Fields update(const API::STntModel &delta);
    void setAveragingWindow(int samples);

    // The state's display text, and whether a torrent in `state` is shown under the filter `filter`.
    static QString stateTitle(State state);
    static bool matches(State state, State filter);

    const QString &id() const { return m_id; }
    // Compares names in the user's language order with numbers as numbers; made with the name,
    // on whichever thread builds the model, so that sorting 50,000 rows compares keys only.
    const QCollatorSortKey &nameSortKey() const { return *m_nameSortKey; }

    template<typename T>
    using Read = std::conditional_t<std::is_same_v<T, QString>, const T &, T>;
#define QUILLO_FIELD_READ_kept(member, Type) Read<Type> member() const { return m_##member; }
#define QUILLO_FIELD_READ_rate(member, Type) QUILLO_FIELD_READ_kept(member, Type)
#define QUILLO_FIELD_READ_wire(member, Type)
#define QUILLO_FIELD_READ(member, Bit, Type, decoding, role) QUILLO_FIELD_READ_##role(member, Type)
    QUILLO_TNT_FIELDS(QUILLO_FIELD_READ)

    // Where the server keeps one of its files or folders, given as its file list names it (from the
    // top of its content: "Album/cd1/track.flac"). Names run from the folder that holds the content
    // (the content path's parent for a file or a root folder), which may be the incomplete folder.
    QString remotePathOf(const QString &relativePath) const;

    // For changes made here before the server confirms them (a started torrent, a new category).
    Fields setState(State state);
    Fields setCategory(const QString &category);
    Fields setTags(const QString &tags);

private:
    // Absent fields start empty, zero (a date: the epoch) or `unknown`.
    template<typename T>
    static T initial()
    {
        if constexpr (std::is_same_v<T, State>)
            return State::unknown;
        else
            return T{};
    }

    const QString m_id;
    std::optional<QCollatorSortKey> m_nameSortKey;
#define QUILLO_FIELD_STORE_kept(member, Type) Type m_##member = initial<Type>();
#define QUILLO_FIELD_STORE_rate(member, Type) Type m_##member = 0; DataRateBuffer m_##member##Buffer;
#define QUILLO_FIELD_STORE_wire(member, Type)
#define QUILLO_FIELD_STORE(member, Bit, Type, decoding, role) QUILLO_FIELD_STORE_##role(member, Type)
    QUILLO_TNT_FIELDS(QUILLO_FIELD_STORE)
};
