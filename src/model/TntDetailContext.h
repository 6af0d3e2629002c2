#pragma once

#include "model/KeyedRows.h"
#include "model/RateHistory.h"
#include "model/TntDetailModels.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>

#include <optional>

// What the detail pane shows of one torrent, and which torrent that is: the single selected torrent
// while the pane is shown and the connection is polling, else none. It holds the peers with the
// response id and flag state of their incremental sync, the properties, trackers, web seeds,
// files and piece states as the server last sent them. It fetches nothing itself: the application context loads what
// the visible tab needs and hands the answers here. Each answer is announced once, and only when it
// changed something; the peer list announces its rows as keyed rows do.
class TntDetailContext : public QObject
{
    Q_OBJECT

public:
    enum class Tab { general, trackers, peers, httpSources, content, speed };

    // The peers by key; only the detail context changes them.
    class Peers : public KeyedRows<TntModel::Peer>
    {
        friend class TntDetailContext;
    };

    explicit TntDetailContext(QObject *parent = nullptr);
    ~TntDetailContext() override;

    // What decides the torrent shown.
    void setShown(bool shown);
    void setSelection(const QSet<QString> &hashes);
    void setActive(bool active);
    bool isShown() const { return m_shown; }
    // How many torrents are selected; the pane explains why it shows nothing.
    qsizetype selectionCount() const { return m_selectionCount; }
    // The torrent whose details are wanted; empty when none is.
    const QString &hash() const { return m_hash; }

    Tab tab() const { return m_tab; }
    void setTab(Tab tab);
    // "general", "trackers", "peers", "httpSources", "content", "speed"; unknown text reads as general.
    static QString tabName(Tab tab);
    static Tab tabNamed(const QString &name);

    // The peers' sync state: the last response id and whether the server resolves countries.
    qint64 rid() const { return m_rid; }
    bool showFlags() const { return m_showFlags; }
    const Peers &peers() const { return m_peers; }
    // An answer of the peer sync for the torrent shown, applied in order: its response id, its flag
    // state, the peers it removes, then its peers: a full update with peers replaces the list (one
    // without peers leaves it), a delta updates known peers in place and appends new ones.
    void applyPeers(const API::PeersData &data, int averagingWindow);
    // Forgets the peers and their sync state, so that the next answer is a full one.
    void resetPeers();

    const std::optional<TntModel::GenericProperties> &properties() const { return m_properties; }
    void setProperties(const API::SGenericProperties &properties, int averagingWindow);
    const QList<API::Tracker> &trackers() const { return m_trackers; }
    void setTrackers(QList<API::Tracker> trackers);
    const QList<API::WebSeed> &webSeeds() const { return m_webSeeds; }
    void setWebSeeds(QList<API::WebSeed> webSeeds);
    const QList<API::File> &files() const { return m_files; }
    void setFiles(QList<API::File> files);
    const QList<API::PieceState> &pieceStates() const { return m_pieceStates; }
    // The torrent's rates since it was shown, sampled by the application context.
    RateHistory &rates() { return m_rates; }
    void setPieceStates(QList<API::PieceState> states);

    // Drops everything shown; the torrent stays the one wanted.
    void clear();
    void setAveragingWindow(int samples);

Q_SIGNALS:
    // The torrent shown changed (everything shown was dropped), or the selection count did.
    void targetChanged();
    void tabChanged();
    void propertiesChanged();
    void trackersChanged();
    void webSeedsChanged();
    void filesChanged();
    void pieceStatesChanged();
    void showFlagsChanged();

private:
    // Works out the torrent wanted; `announce` also when only the selection count changed.
    void retarget(bool announce);

    bool m_shown = false;
    bool m_active = false;
    qsizetype m_selectionCount = 0;
    QString m_selected; // the one selected torrent, if only one is
    QString m_hash;
    Tab m_tab = Tab::general;
    qint64 m_rid = 0;
    bool m_showFlags = false;
    Peers m_peers;
    std::optional<TntModel::GenericProperties> m_properties;
    QList<API::Tracker> m_trackers;
    QList<API::WebSeed> m_webSeeds;
    QList<API::File> m_files;
    QList<API::PieceState> m_pieceStates;
    RateHistory m_rates;
};
