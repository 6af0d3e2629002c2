#include "api/JsonRecords.h"

// The server's two logs: its execution log and the peers it refused. Every version from 4.5 on
// writes the same keys, and timestamps in seconds (its own comment says milliseconds; it is not so).
namespace API {

namespace JsonDecoding {

constexpr Field<LogMessage> logMessageFields[] = {
    required<&LogMessage::id>("id"),
    required<&LogMessage::message>("message"),
    required<&LogMessage::timestamp>("timestamp"),
    required<&LogMessage::type>("type"),
};

constexpr Field<PeerLogEntry> peerLogFields[] = {
    required<&PeerLogEntry::id>("id"),
    required<&PeerLogEntry::ip>("ip"),
    required<&PeerLogEntry::timestamp>("timestamp"),
    required<&PeerLogEntry::blocked>("blocked"),
    required<&PeerLogEntry::reason>("reason"),
};

template<> std::span<const Field<LogMessage>> fieldsOf() { return logMessageFields; }
template<> std::span<const Field<PeerLogEntry>> fieldsOf() { return peerLogFields; }

} // namespace JsonDecoding

QList<LogMessage> decodeLogMessages(const QByteArray &json)
{
    return JsonDecoding::decodeGuarded<QList<LogMessage>>(json);
}

QList<PeerLogEntry> decodePeerLog(const QByteArray &json)
{
    return JsonDecoding::decodeGuarded<QList<PeerLogEntry>>(json);
}

} // namespace API
