#include "api/JsonRecords.h"

// The main-data answer: torrents, transfer totals, categories, tags and trackers.
namespace API {

namespace JsonDecoding {

using TS = STntModel;
constexpr Field<TS> tntFields[] = {
#define QUILLO_DECODED_FIELD(member, Bit, Type, decoding, role) decoding<&TS::member>(#member),
    QUILLO_TNT_FIELDS(QUILLO_DECODED_FIELD)
#undef QUILLO_DECODED_FIELD
};

using GT = SGlobalTransferInfo;
constexpr Field<GT> globalFields[] = {
    optional<&GT::alltimeDl>("alltimeDl"),
    optional<&GT::dlInfoSpeed>("dlInfoSpeed"),
    optional<&GT::dlInfoData>("dlInfoData"),
    optional<&GT::upInfoSpeed>("upInfoSpeed"),
    optional<&GT::alltimeUl>("alltimeUl"),
    optional<&GT::upInfoData>("upInfoData"),
    optional<&GT::dlRateLimit>("dlRateLimit"),
    optional<&GT::upRateLimit>("upRateLimit"),
    optional<&GT::dhtNodes>("dhtNodes"),
    optional<&GT::connectionStatus>("connectionStatus"),
    optional<&GT::queueing>("queueing"),
    optional<&GT::useAltSpeedLimits>("useAltSpeedLimits"),
    optional<&GT::refreshInterval>("refreshInterval"),
    optional<&GT::freeSpaceOnDisk>("freeSpaceOnDisk"),
    optional<&GT::globalRatio>("globalRatio"),
    optional<&GT::totalWastedSession>("totalWastedSession"),
    optional<&GT::totalPeerConnections>("totalPeerConnections"),
    optional<&GT::readCacheHits>("readCacheHits"),
    optional<&GT::totalBuffersSize>("totalBuffersSize"),
    optional<&GT::writeCacheOverload>("writeCacheOverload"),
    optional<&GT::readCacheOverload>("readCacheOverload"),
    optional<&GT::queuedIoJobs>("queuedIoJobs"),
    optional<&GT::averageTimeQueue>("averageTimeQueue"),
    optional<&GT::totalQueuedSize>("totalQueuedSize"),
};

constexpr Field<Category> categoryFields[] = {
    optional<&Category::name>("name"),
    optional<&Category::savePath>("savePath"),
};

// "torrentsRemoved" is the key that "torrents_removed" converts to: removed torrents must leave.
constexpr Field<MainData> mainDataFields[] = {
    required<&MainData::rid>("rid"),
    optional<&MainData::fullUpdate>("fullUpdate"),
    optional<&MainData::tnts>("torrents"),
    optional<&MainData::tntsRemoved>("torrentsRemoved"),
    optional<&MainData::categories>("categories"),
    optional<&MainData::categoriesRemoved>("categoriesRemoved"),
    optional<&MainData::tags>("tags"),
    optional<&MainData::tagsRemoved>("tagsRemoved"),
    optional<&MainData::serverState>("serverState"),
    optional<&MainData::trackers>("trackers"),
    optional<&MainData::trackersRemoved>("trackersRemoved"),
};

template<> std::span<const Field<STntModel>> fieldsOf() { return tntFields; }
template<> std::span<const Field<SGlobalTransferInfo>> fieldsOf() { return globalFields; }
template<> std::span<const Field<Category>> fieldsOf() { return categoryFields; }
template<> std::span<const Field<MainData>> fieldsOf() { return mainDataFields; }

} // namespace JsonDecoding

MainData decodeMainData(const QByteArray &json) { return JsonDecoding::decodeGuarded<MainData>(json); }

} // namespace API
