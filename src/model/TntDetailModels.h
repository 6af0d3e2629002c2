#pragma once

#include "model/TntModel.h"

// The detail pane's picture of one torrent's peers and properties. Plain objects like TntModel: an
// update writes only what changed and says what that was; their owner announces a whole answer at once.

// One peer, under the key the server sends it by (its address and port). Every field the server
// sends is taken, not only the counts and rates: a peer's client name comes with its handshake and
// the files it takes part in change with the pieces it trades.
class TntModel::Peer
{
public:
    enum Field : quint32 {
        Client = 1u << 0,
        Connection = 1u << 1,
        Country = 1u << 2,
        CountryCode = 1u << 3,
        DlSpeed = 1u << 4,
        DownloadedField = 1u << 5, // "Field" where a name is the torrent's too
        Files = 1u << 6,
        Flags = 1u << 7,
        FlagsDesc = 1u << 8,
        Ip = 1u << 9,
        PeerIdClient = 1u << 10,
        Port = 1u << 11,
        ProgressField = 1u << 12,
        Relevance = 1u << 13,
        UpSpeed = 1u << 14,
        UploadedField = 1u << 15,
    };
    using Fields = quint32;

    Peer(QString id, const API::Peer &record, int averagingWindow = DataRateBuffer::defaultCapacity);

    // Takes the fields the entry carries; returns those whose value changed. The rates go through
    // the averaging window first, as the torrents' do.
    Fields update(const API::Peer &delta);
    void setAveragingWindow(int samples);

    // What banning and copying use: "ip:port", or "[v6]:port".
    QString address() const;

    const QString &id() const { return m_id; }
    const QString &client() const { return m_client; }
    const QString &connection() const { return m_connection; }
    const QString &country() const { return m_country; }
    const QString &countryCode() const { return m_countryCode; }
    qint64 dlSpeed() const { return m_dlSpeed; }
    qint64 downloaded() const { return m_downloaded; }
    const QString &files() const { return m_files; }
    const QString &flags() const { return m_flags; }
    const QString &flagsDesc() const { return m_flagsDesc; }
    const QString &ip() const { return m_ip; }
    const QString &peerIdClient() const { return m_peerIdClient; }
    qint64 port() const { return m_port; }
    double progress() const { return m_progress; }
    double relevance() const { return m_relevance; }
    qint64 upSpeed() const { return m_upSpeed; }
    qint64 uploaded() const { return m_uploaded; }

private:
    const QString m_id;
    QString m_client;
    QString m_connection;
    QString m_country;
    QString m_countryCode;
    qint64 m_dlSpeed = 0;
    qint64 m_downloaded = 0;
    QString m_files;
    QString m_flags;
    QString m_flagsDesc;
    QString m_ip;
    QString m_peerIdClient;
    qint64 m_port = 0;
    double m_progress = 0;
    double m_relevance = 0;
    qint64 m_upSpeed = 0;
    qint64 m_uploaded = 0;
    DataRateBuffer m_dlSpeedBuffer;
    DataRateBuffer m_upSpeedBuffer;
};

// The torrent's properties as the server last sent them, with the current rates averaged.
class TntModel::GenericProperties
{
public:
    GenericProperties(const API::SGenericProperties &record, int averagingWindow = DataRateBuffer::defaultCapacity);

    // False when the answer changes nothing that is shown.
    bool update(const API::SGenericProperties &record);
    void setAveragingWindow(int samples);

    const API::SGenericProperties &values() const { return m_values; }

private:
    API::SGenericProperties m_values;
    DataRateBuffer m_dlSpeedBuffer;
    DataRateBuffer m_upSpeedBuffer;
};
