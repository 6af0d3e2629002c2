#include "api/JsonRecords.h"

// The detail pane's answers: peers, general properties, trackers, files, web seeds and piece states.
namespace API {

namespace JsonDecoding {

constexpr Field<Peer> peerFields[] = {
    optional<&Peer::client>("client"),
    optional<&Peer::connection>("connection"),
    optional<&Peer::country>("country"),
    optional<&Peer::countryCode>("countryCode"),
    optional<&Peer::dlSpeed>("dlSpeed"),
    optional<&Peer::downloaded>("downloaded"),
    optional<&Peer::files>("files"),
    optional<&Peer::flags>("flags"),
    optional<&Peer::flagsDesc>("flagsDesc"),
    optional<&Peer::ip>("ip"),
    optional<&Peer::peerIdClient>("peerIdClient"),
    optional<&Peer::port>("port"),
    optional<&Peer::progress>("progress"),
    optional<&Peer::relevance>("relevance"),
    optional<&Peer::upSpeed>("upSpeed"),
    optional<&Peer::uploaded>("uploaded"),
};

constexpr Field<PeersData> peersDataFields[] = {
    required<&PeersData::rid>("rid"),
    optional<&PeersData::fullUpdate>("fullUpdate"),
    optional<&PeersData::showFlags>("showFlags"),
    optional<&PeersData::peers>("peers"),
    optional<&PeersData::peersRemoved>("peersRemoved"),
};

using GP = SGenericProperties;
constexpr Field<GP> propertiesFields[] = {
    required<&GP::savePath>("savePath"),
    required<&GP::creationDate>("creationDate"),
    required<&GP::pieceSize>("pieceSize"),
    required<&GP::comment>("comment"),
    required<&GP::totalWasted>("totalWasted"),
    required<&GP::totalUploaded>("totalUploaded"),
    required<&GP::totalUploadedSession>("totalUploadedSession"),
    required<&GP::totalDownloaded>("totalDownloaded"),
    required<&GP::totalDownloadedSession>("totalDownloadedSession"),
    required<&GP::upLimit>("upLimit"),
    required<&GP::dlLimit>("dlLimit"),
    required<&GP::timeElapsed>("timeElapsed"),
    required<&GP::seedingTime>("seedingTime"),
    required<&GP::nbConnections>("nbConnections"),
    required<&GP::nbConnectionsLimit>("nbConnectionsLimit"),
    required<&GP::shareRatio>("shareRatio"),
    required<&GP::additionDate>("additionDate"),
    required<&GP::completionDate>("completionDate"),
    required<&GP::createdBy>("createdBy"),
    required<&GP::dlSpeedAvg>("dlSpeedAvg"),
    required<&GP::dlSpeed>("dlSpeed"),
    required<&GP::eta>("eta"),
    required<&GP::infohashV1>("infohashV1"),
    optional<&GP::infohashV2>("infohashV2"),
    required<&GP::lastSeen>("lastSeen"),
    required<&GP::peers>("peers"),
    required<&GP::peersTotal>("peersTotal"),
    required<&GP::piecesHave>("piecesHave"),
    required<&GP::piecesNum>("piecesNum"),
    required<&GP::reannounce>("reannounce"),
    required<&GP::seeds>("seeds"),
    required<&GP::seedsTotal>("seedsTotal"),
    required<&GP::totalSize>("totalSize"),
    required<&GP::upSpeedAvg>("upSpeedAvg"),
    required<&GP::upSpeed>("upSpeed"),
};

constexpr Field<Tracker> trackerFields[] = {
    required<&Tracker::url>("url"),
    required<&Tracker::status>("status"),
    required<&Tracker::tier>("tier"),
    required<&Tracker::numPeers>("numPeers"),
    required<&Tracker::numSeeds>("numSeeds"),
    required<&Tracker::numLeeches>("numLeeches"),
    required<&Tracker::numDownloaded>("numDownloaded"),
    required<&Tracker::msg>("msg"),
};

constexpr Field<File> fileFields[] = {
    required<&File::index>("index"),
    required<&File::name>("name"),
    required<&File::size>("size"),
    required<&File::progress>("progress"),
    required<&File::priority>("priority"),
    required<&File::pieceRange>("pieceRange"),
    required<&File::availability>("availability"),
};

constexpr Field<WebSeed> webSeedFields[] = {required<&WebSeed::url>("url")};

template<> std::span<const Field<Peer>> fieldsOf() { return peerFields; }
template<> std::span<const Field<PeersData>> fieldsOf() { return peersDataFields; }
template<> std::span<const Field<SGenericProperties>> fieldsOf() { return propertiesFields; }
template<> std::span<const Field<Tracker>> fieldsOf() { return trackerFields; }
template<> std::span<const Field<File>> fieldsOf() { return fileFields; }
template<> std::span<const Field<WebSeed>> fieldsOf() { return webSeedFields; }

} // namespace JsonDecoding

using JsonDecoding::decodeGuarded;

PeersData decodePeersData(const QByteArray &json) { return decodeGuarded<PeersData>(json); }
SGenericProperties decodeGenericProperties(const QByteArray &json)
{
    return decodeGuarded<SGenericProperties>(json);
}
QList<Tracker> decodeTrackers(const QByteArray &json) { return decodeGuarded<QList<Tracker>>(json); }
QList<File> decodeFiles(const QByteArray &json) { return decodeGuarded<QList<File>>(json); }
QList<WebSeed> decodeWebSeeds(const QByteArray &json) { return decodeGuarded<QList<WebSeed>>(json); }
QList<PieceState> decodePieceStates(const QByteArray &json) { return decodeGuarded<QList<PieceState>>(json); }

QString Peer::debugDescription() const
{
    const auto text = [](const auto &field) -> QString {
        if (!field)
            return QStringLiteral("nil");
        using T = std::decay_t<decltype(*field)>;
        if constexpr (std::is_same_v<T, QString>)
            return *field;
        else
            return QString::number(*field);
    };
    QString description = QStringLiteral("\nPeer\n\t- client: ") + text(client);
    const auto line = [&](const char *name, const QString &value) {
        description += QStringLiteral("\n\t- ") + QLatin1String(name) + QStringLiteral(": ") + value;
    };
    line("connection", text(connection));
    line("country", text(country));
    line("countryCode", text(countryCode));
    line("dlSpeed", text(dlSpeed));
    line("downloaded", text(downloaded));
    line("files", text(files));
    line("flags", text(flags));
    line("flagsDesc", text(flagsDesc));
    line("ip", text(ip));
    line("peerIdClient", text(peerIdClient));
    line("port", text(port));
    line("progress", text(progress));
    line("relevance", text(relevance));
    line("upSpeed", text(upSpeed));
    line("uploaded", text(uploaded));
    return description;
}


} // namespace API
