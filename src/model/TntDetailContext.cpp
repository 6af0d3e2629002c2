#include "model/TntDetailContext.h"

namespace {

// New peers join in key order, so that an answer always gives the same rows.
TntDetailContext::Peers::Rows peersOf(QStringList keys, const QHash<QString, API::Peer> &peers, int averagingWindow)
{
    keys.sort();
    TntDetailContext::Peers::Rows rows;
    rows.reserve(static_cast<std::size_t>(keys.size()));
    for (const QString &key : std::as_const(keys))
        rows.push_back(std::make_unique<TntModel::Peer>(key, peers.value(key), averagingWindow));
    return rows;
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
    case Tab::httpSources: return QStringLiteral("httpSources");
    case Tab::content: return QStringLiteral("content");
    case Tab::speed: return QStringLiteral("speed");
    }
    Q_UNREACHABLE();
}

TntDetailContext::Tab TntDetailContext::tabNamed(const QString &name)
{
    for (const Tab tab : {Tab::trackers, Tab::peers, Tab::httpSources, Tab::content, Tab::speed}) {
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
    m_peers.removeRows(data.peersRemoved);
    if (data.peers.isEmpty())
        return;
    if (data.fullUpdate.value_or(false)) {
        m_peers.resetRows(peersOf(data.peers.keys(), data.peers, averagingWindow));
        return;
    }

    QList<Peers::RowChange> changes;
    quint64 changedFields = 0;
    QStringList arrived;
    for (auto entry = data.peers.cbegin(); entry != data.peers.cend(); ++entry) {
        const qsizetype row = m_peers.rowOf(entry.key());
        if (row < 0) {
            arrived.append(entry.key());
        } else if (const auto fields = m_peers.rowAt(row).update(entry.value())) {
            changes.append({row, fields});
            changedFields |= fields;
        }
    }
    m_peers.appendRows(peersOf(arrived, data.peers, averagingWindow));
    m_peers.announceChanges(changes, changedFields);
}

void TntDetailContext::resetPeers()
{
    m_rid = 0;
    if (m_showFlags) {
        m_showFlags = false;
        Q_EMIT showFlagsChanged();
    }
    if (m_peers.size() > 0)
        m_peers.resetRows({});
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

void TntDetailContext::setPieceStates(QList<API::PieceState> states)
{
    if (states == m_pieceStates)
        return;
    m_pieceStates = std::move(states);
    Q_EMIT pieceStatesChanged();
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
    setPieceStates({});
    m_rates.clear();
}

void TntDetailContext::setAveragingWindow(int samples)
{
    for (qsizetype row = 0; row < m_peers.size(); ++row)
        m_peers.rowAt(row).setAveragingWindow(samples);
    if (m_properties)
        m_properties->setAveragingWindow(samples);
}
