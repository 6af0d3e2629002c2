#pragma once

#include "api/Records.h"
#include "model/DataRateBuffer.h"

#include <QObject>

// The server-wide transfer figures for the status bar, filled from each main-data answer's server
// state. Each update announces, once, which fields changed.
class GlobalTransferInfo : public QObject
{
    Q_OBJECT

public:
    enum class TransferDirection { up, down };

    enum Field : quint32 {
        UseAltSpeedLimits = 1u << 0,
        AlltimeDl = 1u << 1,
        DlInfoSpeed = 1u << 2,
        DlInfoData = 1u << 3,
        AlltimeUl = 1u << 4,
        UpInfoSpeed = 1u << 5,
        UpInfoData = 1u << 6,
        DlRateLimit = 1u << 7,
        UpRateLimit = 1u << 8,
        DhtNodes = 1u << 9,
        ConnectionStatusField = 1u << 10,
        Queueing = 1u << 11,
        RefreshInterval = 1u << 12,
        FreeSpaceOnDisk = 1u << 13,
        GlobalRatio = 1u << 14,
        StatisticsField = 1u << 15, // any of `statistics()`
    };
    Q_DECLARE_FLAGS(Fields, Field)

    // What the statistics window shows beyond the status bar's figures; the server's texts for the
    // cache percentages.
    struct Statistics
    {
        qint64 totalWastedSession = 0;
        qint64 totalPeerConnections = 0;
        QString readCacheHits;
        qint64 totalBuffersSize = 0;
        QString writeCacheOverload;
        QString readCacheOverload;
        qint64 queuedIoJobs = 0;
        qint64 averageTimeQueue = 0; // milliseconds
        qint64 totalQueuedSize = 0;

        friend bool operator==(const Statistics &, const Statistics &) = default;
    };

    explicit GlobalTransferInfo(QObject *parent = nullptr);

    bool useAltSpeedLimits() const { return m_useAltSpeedLimits; }
    qint64 alltimeDl() const { return m_alltimeDl; }
    qint64 dlInfoSpeed() const { return m_dlInfoSpeed; }
    qint64 dlInfoData() const { return m_dlInfoData; }
    qint64 alltimeUl() const { return m_alltimeUl; }
    qint64 upInfoSpeed() const { return m_upInfoSpeed; }
    qint64 upInfoData() const { return m_upInfoData; }
    qint64 dlRateLimit() const { return m_dlRateLimit; }
    qint64 upRateLimit() const { return m_upRateLimit; }
    qint64 dhtNodes() const { return m_dhtNodes; }
    API::ConnectionStatus connectionStatus() const { return m_connectionStatus; }
    bool queueing() const { return m_queueing; }
    qint64 refreshInterval() const { return m_refreshInterval; }
    qint64 freeSpaceOnDisk() const { return m_freeSpaceOnDisk; }
    const QString &globalRatio() const { return m_globalRatio; }
    const Statistics &statistics() const { return m_statistics; }
    const DataRateBuffer &dlSpeedBuffer() const { return m_dlSpeedBuffer; }
    const DataRateBuffer &upSpeedBuffer() const { return m_upSpeedBuffer; }

    qint64 rate(TransferDirection direction) const { return direction == TransferDirection::up ? m_upInfoSpeed : m_dlInfoSpeed; }
    qint64 sessionTotal(TransferDirection direction) const { return direction == TransferDirection::up ? m_upInfoData : m_dlInfoData; }
    qint64 alltimeTotal(TransferDirection direction) const { return direction == TransferDirection::up ? m_alltimeUl : m_alltimeDl; }
    qint64 limit(TransferDirection direction) const { return direction == TransferDirection::up ? m_upRateLimit : m_dlRateLimit; }

    // Applies the fields the answer carries; absent ones keep their values.
    Fields update(const API::SGlobalTransferInfo &state);
    // After logging out: totals, rates, DHT nodes and free space to 0, ratio to "0".
    Fields reset();
    void setAveragingWindow(int samples);

Q_SIGNALS:
    void changed(GlobalTransferInfo::Fields fields);

private:
    template<typename T>
    void assign(T &field, const T &value, Field flag, Fields &changedFields);
    void applyRate(qint64 sample, DataRateBuffer &buffer, qint64 &field, Field flag, Fields &changedFields);

    bool m_useAltSpeedLimits = false;
    qint64 m_alltimeDl = 0;
    qint64 m_dlInfoSpeed = 0;
    qint64 m_dlInfoData = 0;
    qint64 m_alltimeUl = 0;
    qint64 m_upInfoSpeed = 0;
    qint64 m_upInfoData = 0;
    qint64 m_dlRateLimit = 0;
    qint64 m_upRateLimit = 0;
    qint64 m_dhtNodes = 0;
    API::ConnectionStatus m_connectionStatus = API::ConnectionStatus::disconnected;
    bool m_queueing = false;
    qint64 m_refreshInterval = 0;
    qint64 m_freeSpaceOnDisk = 0;
    QString m_globalRatio = QStringLiteral("-1");
    Statistics m_statistics;
    DataRateBuffer m_dlSpeedBuffer;
    DataRateBuffer m_upSpeedBuffer;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(GlobalTransferInfo::Fields)
