#include "model/TrackerIndex.h"

#include <QSet>
#include <QUrl>

#include <algorithm>

TrackerIndex::TrackerIndex(QObject *parent)
    : QObject(parent)
{
}

void TrackerIndex::apply(bool fullUpdate, const QHash<QString, QStringList> &trackers, const QStringList &removed)
{
    bool changed = false;
    if (fullUpdate && !m_urls.isEmpty()) {
        m_urls.clear();
        changed = true;
    }
    for (auto it = trackers.cbegin(); it != trackers.cend(); ++it) {
        const auto known = m_urls.find(it.key());
        if (known == m_urls.end()) {
            m_urls.insert(it.key(), it.value());
            changed = true;
        } else if (*known != it.value()) {
            *known = it.value();
            changed = true;
        }
    }
    for (const QString &url : removed)
        changed |= m_urls.remove(url);
    if (changed)
        mapChanged();
}

void TrackerIndex::clear()
{
    if (m_urls.isEmpty())
        return;
    m_urls.clear();
    mapChanged();
}

const QStringList &TrackerIndex::hostsOf(const QString &hash) const
{
    if (m_hashIndexStale) {
        m_hostsByHash.clear();
        for (auto it = m_urls.cbegin(); it != m_urls.cend(); ++it) {
            const QString host = m_hostOfUrl.value(it.key());
            for (const QString &tnt : it.value()) {
                QStringList &hosts = m_hostsByHash[tnt];
                if (!hosts.contains(host))
                    hosts.append(host);
            }
        }
        m_hashIndexStale = false;
    }
    static const QStringList none;
    const auto found = m_hostsByHash.constFind(hash);
    return found == m_hostsByHash.cend() ? none : *found;
}

QString TrackerIndex::hostOf(const QString &url)
{
    const QString host = QUrl(url).host();
    return host.isEmpty() ? url : host;
}

void TrackerIndex::mapChanged()
{
    QHash<QString, QString> hostOfUrl;
    QSet<QString> hostSet;
    for (auto it = m_urls.cbegin(); it != m_urls.cend(); ++it) {
        const auto known = m_hostOfUrl.constFind(it.key());
        const QString host = known != m_hostOfUrl.cend() ? *known : hostOf(it.key());
        hostOfUrl.insert(it.key(), host);
        hostSet.insert(host);
    }
    m_hostOfUrl = std::move(hostOfUrl);
    QStringList hosts(hostSet.cbegin(), hostSet.cend());
    std::sort(hosts.begin(), hosts.end());
    m_hashIndexStale = true;
    const bool hostsDiffer = hosts != m_hosts;
    m_hosts = std::move(hosts);
    Q_EMIT changed();
    if (hostsDiffer)
        Q_EMIT hostsChanged();
}
