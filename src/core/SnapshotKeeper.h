#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <QUuid>

#include <optional>

class AppSettings;
class ServerLabels;
class Sync;
class TntCollection;
class TrackerIndex;

// Keeps the last torrent list of each saved connection in the cache directory, one file each, readable
// by the user alone, so that choosing a server or starting Quillo paints its table at once. A list is
// written when it is about to be cleared (quitting, switching away, logging out), and every few
// minutes while current; it is shown again when its connection is chosen. Nothing is written, and
// what exists is removed, while the setting is off.
class SnapshotKeeper : public QObject
{
    Q_OBJECT

public:
    static constexpr auto keepingPeriod = std::chrono::minutes(5);

    SnapshotKeeper(AppSettings &settings, Sync &sync, const TntCollection &tnts, const ServerLabels &labels,
                   const TrackerIndex &trackers, QObject *parent = nullptr);
    ~SnapshotKeeper() override;

    // The connection whose session is open now (none: none is); its list is shown at once.
    void follow(std::optional<QUuid> connection);
    // Writes the followed connection's list, when what is shown is the server's.
    void keep();
    // Removes the lists of connections no longer saved.
    void retain(const QList<QUuid> &connections);
    void forgetAll();

    // Where the lists are kept: "snapshots" in the application's cache directory.
    QString directory() const { return m_directory; }
    QString pathOf(QUuid connection) const;

private:
    AppSettings &m_settings;
    Sync &m_sync;
    const TntCollection &m_tnts;
    const ServerLabels &m_labels;
    const TrackerIndex &m_trackers;
    const QString m_directory;
    std::optional<QUuid> m_followed;
    QTimer m_timer;
};
