#include "model/TntDetailContext.h"

#include <algorithm>

namespace {

// New peers join in key order, so that an answer always gives the same rows.
QStringList sortedKeys(const QHash<QString, API::Peer> &peers)
{
    QStringList keys = peers.keys();
    keys.sort();
    return keys;
}

} // namespace

TntDetailContext::TntDetailContext(QObject *parent)
    : QObject(parent)
{
}

TntDetailContext::~TntDetailContext() = default;

void TntDetailContext::setShown(bool shown)
{
    if (shown == m_shown)
        return;
    m_shown = shown;
    retarget(false);
}

void TntDetailContext::setActive(bool active)
{
    if (active == m_active)
        return;
    m_active = active;
    retarget(false);
}

void TntDetailContext::setSelection(const QSet<QString> &hashes)
{
    const QString single = hashes.size() == 1 ? *hashes.cbegin() : QString();
    if (hashes.size() == m_selectionCount && single == m_selected)
        return;
    m_selectionCount = hashes.size();
    m_selected = single;
    retarget(true);
}

void TntDetailContext::retarget(bool announce)
{
    const QString wanted = m_shown && m_active ? m_selected : QString();
    if (wanted != m_hash) {
        m_hash = wanted;
        clear();
        announce = true;
    }
    if (announce)
        Q_EMIT targetChanged();
}

void TntDetailContext::setTab(Tab tab)
{
    if (tab == m_tab)
        return;
    m_tab = tab;
    Q_EMIT tabChanged();
}

QString TntDetailContext::tabName(Tab tab)
{
    switch (tab) {
    case Tab::general: return QStringLiteral("general");
    case Tab::trackers: return QStringLiteral("trackers");
    case Tab::peers: return QStringLiteral("peers");
    case Tab::content: return QStringLiteral("content");
    }
    Q_UNREACHABLE();
}

TntDetailContext::Tab TntDetailContext::tabNamed(const QString &name)
{
    for (const Tab tab : {Tab::trackers, Tab::peers, Tab::content}) {
        if (name == tabName(tab))
            return tab;
    }
    return Tab::general;
}

void TntDetailContext::applyPeers(const API::PeersData &data, int averagingWindow)
{
    m_rid = data.rid;
    if (data.showFlags && *data.showFlags != m_showFlags) {
        m_showFlags = *data.showFlags;
        Q_EMIT showFlagsChanged();
    }
    removePeers(data.peersRemoved);
    if (data.peers.isEmpty())
        return;
    if (data.fullUpdate.value_or(false)) {
        replacePeers(data.peers, averagingWindow);
        return;
    }

    QList<PeerChange> changes;
    QStringList arrived;
    for (auto entry = data.peers.cbegin(); entry != data.peers.cend(); ++entry) {
        const qsizetype row = peerRow(entry.key());
        if (row < 0) {
            arrived.append(entry.key());
        } else if (const auto fields = m_peers[static_cast<std::size_t>(row)]->update(entry.value())) {
            changes.append({row, fields});
        }
    }
    if (!arrived.isEmpty()) {
        arrived.sort();
        const auto first = static_cast<qsizetype>(m_peers.size());
        Q_EMIT peersAboutToInsert(first, first + arrived.size() - 1);
        for (const QString &key : std::as_const(arrived)) {
            m_peerRows.insert(key, static_cast<qsizetype>(m_peers.size()));
            m_peers.push_back(std::make_unique<TntModel::Peer>(key, data.peers.value(key), averagingWindow));
        }
        Q_EMIT peersDidInsert();
    }
    if (!changes.isEmpty()) {
        std::sort(changes.begin(), changes.end(), [](const PeerChange &a, const PeerChange &b) { return a.row < b.row; });
        Q_EMIT peersChanged(changes);
    }
}

void TntDetailContext::removePeers(const QStringList &keys)
{
    QList<qsizetype> rows;
    for (const QString &key : keys) {
        if (const qsizetype row = peerRow(key); row >= 0)
            rows.append(row);
    }
    if (rows.isEmpty())
        return;
    // From the bottom up, one run of neighbouring rows at a time: the rows above stay where they were.
    std::sort(rows.begin(), rows.end(), std::greater<>());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    for (qsizetype at = 0; at < rows.size();) {
        const qsizetype last = rows[at];
        qsizetype first = last;
        while (++at < rows.size() && rows[at] == first - 1)
            first = rows[at];
        Q_EMIT peersAboutToRemove(first, last);
        m_peers.erase(m_peers.begin() + first, m_peers.begin() + last + 1);
        reindexPeers();
        Q_EMIT peersDidRemove();
    }
}

void TntDetailContext::replacePeers(const QHash<QString, API::Peer> &peers, int averagingWindow)
{
    Q_EMIT peersAboutToReset();
    m_peers.clear();
    for (const QString &key : sortedKeys(peers))
        m_peers.push_back(std::make_unique<TntModel::Peer>(key, peers.value(key), averagingWindow));
    reindexPeers();
    Q_EMIT peersDidReset();
}

void TntDetailContext::reindexPeers()
{
    m_peerRows.clear();
    m_peerRows.reserve(static_cast<qsizetype>(m_peers.size()));
    for (std::size_t row = 0; row < m_peers.size(); ++row)
        m_peerRows.insert(m_peers[row]->id(), static_cast<qsizetype>(row));
}

void TntDetailContext::resetPeers()
{
    m_rid = 0;
    if (m_showFlags) {
        m_showFlags = false;
        Q_EMIT showFlagsChanged();
    }
    if (m_peers.empty())
        return;
    Q_EMIT peersAboutToReset();
    m_peers.clear();
    m_peerRows.clear();
    Q_EMIT peersDidReset();
}

void TntDetailContext::setProperties(const API::SGenericProperties &properties, int averagingWindow)
{
    if (m_properties) {
        if (!m_properties->update(properties))
            return;
    } else {
        m_properties.emplace(properties, averagingWindow);
    }
    Q_EMIT propertiesChanged();
}

void TntDetailContext::setTrackers(QList<API::Tracker> trackers)
{
    if (trackers == m_trackers)
        return;
    m_trackers = std::move(trackers);
    Q_EMIT trackersChanged();
}

void TntDetailContext::setWebSeeds(QList<API::WebSeed> webSeeds)
{
    if (webSeeds == m_webSeeds)
        return;
    m_webSeeds = std::move(webSeeds);
    Q_EMIT webSeedsChanged();
}

void TntDetailContext::setFiles(QList<API::File> files)
{
    if (files == m_files)
        return;
    m_files = std::move(files);
    Q_EMIT filesChanged();
}

void TntDetailContext::clear()
{
    resetPeers();
    if (m_properties) {
        m_properties.reset();
        Q_EMIT propertiesChanged();
    }
    setTrackers({});
    setWebSeeds({});
    setFiles({});
}

void TntDetailContext::setAveragingWindow(int samples)
{
    for (const auto &peer : m_peers)
        peer->setAveragingWindow(samples);
    if (m_properties)
        m_properties->setAveragingWindow(samples);
}
