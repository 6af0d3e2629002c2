#include "model/TntDetailModels.h"

namespace {

using PeerFields = TntModel::Peer::Fields;

template<typename T>
void take(T &field, const std::optional<T> &incoming, TntModel::Peer::Field flag, PeerFields &changed)
{
    if (incoming && field != *incoming) {
        field = *incoming;
        changed |= flag;
    }
}

// The window's average of the samples so far, once the sample has joined it.
qint64 averaged(DataRateBuffer &buffer, qint64 sample)
{
    buffer.add(sample);
    return buffer.shownRate(sample);
}

} // namespace

TntModel::Peer::Peer(QString id, const API::Peer &record, int averagingWindow)
    : m_id(std::move(id))
{
    setAveragingWindow(averagingWindow);
    update(record);
}

void TntModel::Peer::setAveragingWindow(int samples)
{
    m_dlSpeedBuffer.setCapacity(samples);
    m_upSpeedBuffer.setCapacity(samples);
}

TntModel::Peer::Fields TntModel::Peer::update(const API::Peer &d)
{
    Fields changed = 0;
    take(m_client, d.client, Client, changed);
    take(m_connection, d.connection, Connection, changed);
    take(m_country, d.country, Country, changed);
    take(m_countryCode, d.countryCode, CountryCode, changed);
    if (d.dlSpeed)
        take(m_dlSpeed, std::optional(averaged(m_dlSpeedBuffer, *d.dlSpeed)), DlSpeed, changed);
    take(m_downloaded, d.downloaded, DownloadedField, changed);
    take(m_files, d.files, Files, changed);
    take(m_flags, d.flags, Flags, changed);
    take(m_flagsDesc, d.flagsDesc, FlagsDesc, changed);
    take(m_ip, d.ip, Ip, changed);
    take(m_peerIdClient, d.peerIdClient, PeerIdClient, changed);
    take(m_port, d.port, Port, changed);
    take(m_progress, d.progress, ProgressField, changed);
    take(m_relevance, d.relevance, Relevance, changed);
    if (d.upSpeed)
        take(m_upSpeed, std::optional(averaged(m_upSpeedBuffer, *d.upSpeed)), UpSpeed, changed);
    take(m_uploaded, d.uploaded, UploadedField, changed);
    return changed;
}

QString TntModel::Peer::address() const
{
    // Before the server has said where the peer is, its key is the address.
    if (m_ip.isEmpty())
        return m_id;
    const QString host = m_ip.contains(u':') ? u'[' + m_ip + u']' : m_ip;
    return host + u':' + QString::number(m_port);
}

TntModel::GenericProperties::GenericProperties(const API::SGenericProperties &record, int averagingWindow)
{
    setAveragingWindow(averagingWindow);
    update(record);
}

void TntModel::GenericProperties::setAveragingWindow(int samples)
{
    m_dlSpeedBuffer.setCapacity(samples);
    m_upSpeedBuffer.setCapacity(samples);
}

bool TntModel::GenericProperties::update(const API::SGenericProperties &record)
{
    API::SGenericProperties next = record;
    next.dlSpeed = averaged(m_dlSpeedBuffer, record.dlSpeed);
    next.upSpeed = averaged(m_upSpeedBuffer, record.upSpeed);
    if (next == m_values)
        return false;
    m_values = std::move(next);
    return true;
}
