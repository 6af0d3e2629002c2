#include "model/GlobalTransferInfo.h"

GlobalTransferInfo::GlobalTransferInfo(QObject *parent)
    : QObject(parent)
{
}

template<typename T>
void GlobalTransferInfo::assign(T &field, const T &value, Field flag, Fields &changedFields)
{
    if (field == value)
        return;
    field = value;
    changedFields |= flag;
}

void GlobalTransferInfo::applyRate(qint64 sample, DataRateBuffer &buffer, qint64 &field, Field flag,
                                   Fields &changedFields)
{
    buffer.add(sample);
    assign(field, buffer.shownRate(sample), flag, changedFields);
}

GlobalTransferInfo::Fields GlobalTransferInfo::update(const API::SGlobalTransferInfo &state)
{
    Fields changedFields;
    const auto take = [&](const auto &incoming, auto &field, Field flag) {
        if (incoming)
            assign(field, *incoming, flag, changedFields);
    };
    take(state.useAltSpeedLimits, m_useAltSpeedLimits, UseAltSpeedLimits);
    take(state.alltimeDl, m_alltimeDl, AlltimeDl);
    if (state.dlInfoSpeed)
        applyRate(*state.dlInfoSpeed, m_dlSpeedBuffer, m_dlInfoSpeed, DlInfoSpeed, changedFields);
    take(state.dlInfoData, m_dlInfoData, DlInfoData);
    take(state.alltimeUl, m_alltimeUl, AlltimeUl);
    if (state.upInfoSpeed)
        applyRate(*state.upInfoSpeed, m_upSpeedBuffer, m_upInfoSpeed, UpInfoSpeed, changedFields);
    take(state.upInfoData, m_upInfoData, UpInfoData);
    take(state.dlRateLimit, m_dlRateLimit, DlRateLimit);
    take(state.upRateLimit, m_upRateLimit, UpRateLimit);
    take(state.dhtNodes, m_dhtNodes, DhtNodes);
    take(state.connectionStatus, m_connectionStatus, ConnectionStatusField);
    take(state.queueing, m_queueing, Queueing);
    take(state.refreshInterval, m_refreshInterval, RefreshInterval);
    take(state.freeSpaceOnDisk, m_freeSpaceOnDisk, FreeSpaceOnDisk);
    take(state.globalRatio, m_globalRatio, GlobalRatio);
    Statistics statistics = m_statistics;
    const auto keep = [](const auto &incoming, auto &field) {
        if (incoming)
            field = *incoming;
    };
    keep(state.totalWastedSession, statistics.totalWastedSession);
    keep(state.totalPeerConnections, statistics.totalPeerConnections);
    keep(state.readCacheHits, statistics.readCacheHits);
    keep(state.totalBuffersSize, statistics.totalBuffersSize);
    keep(state.writeCacheOverload, statistics.writeCacheOverload);
    keep(state.readCacheOverload, statistics.readCacheOverload);
    keep(state.queuedIoJobs, statistics.queuedIoJobs);
    keep(state.averageTimeQueue, statistics.averageTimeQueue);
    keep(state.totalQueuedSize, statistics.totalQueuedSize);
    assign(m_statistics, statistics, StatisticsField, changedFields);
    if (changedFields)
        Q_EMIT changed(changedFields);
    return changedFields;
}

GlobalTransferInfo::Fields GlobalTransferInfo::reset()
{
    Fields changedFields;
    assign(m_alltimeDl, qint64{0}, AlltimeDl, changedFields);
    assign(m_dlInfoSpeed, qint64{0}, DlInfoSpeed, changedFields);
    assign(m_dlInfoData, qint64{0}, DlInfoData, changedFields);
    assign(m_alltimeUl, qint64{0}, AlltimeUl, changedFields);
    assign(m_upInfoSpeed, qint64{0}, UpInfoSpeed, changedFields);
    assign(m_upInfoData, qint64{0}, UpInfoData, changedFields);
    assign(m_dlRateLimit, qint64{0}, DlRateLimit, changedFields);
    assign(m_upRateLimit, qint64{0}, UpRateLimit, changedFields);
    assign(m_dhtNodes, qint64{0}, DhtNodes, changedFields);
    assign(m_freeSpaceOnDisk, qint64{0}, FreeSpaceOnDisk, changedFields);
    assign(m_globalRatio, QStringLiteral("0"), GlobalRatio, changedFields);
    if (changedFields)
        Q_EMIT changed(changedFields);
    return changedFields;
}

void GlobalTransferInfo::setAveragingWindow(int samples)
{
    m_dlSpeedBuffer.setCapacity(samples);
    m_upSpeedBuffer.setCapacity(samples);
}
