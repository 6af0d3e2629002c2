#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>

// The server's tracker map (announce URL to the hashes of the torrents using it) from the main data,
// and what the sidebar reads from it: the tracker hosts and each torrent's hosts, several URLs of
// one host folding into one.
class TrackerIndex : public QObject
{
    Q_OBJECT

public:
    explicit TrackerIndex(QObject *parent = nullptr);

    // A full update replaces the map; a delta resends whole the URLs that changed and lists the
    // URLs that are gone.
    void apply(bool fullUpdate, const QHash<QString, QStringList> &trackers, const QStringList &removed);
    void clear();

    bool isEmpty() const { return m_urls.isEmpty(); }
    const QHash<QString, QStringList> &urls() const { return m_urls; }
    // In plain string order.
    const QStringList &hosts() const { return m_hosts; }
    // Empty for a torrent without trackers. Found through a hash index made once per change of the
    // map, when first asked.
    const QStringList &hostsOf(const QString &hash) const;

    // The host of an announce URL, lower case; the URL itself when it has none.
    static QString hostOf(const QString &url);

Q_SIGNALS:
    // The map changed: which torrents a host has may be different now.
    void changed();
    // The list of hosts changed.
    void hostsChanged();

private:
    void mapChanged();

    QHash<QString, QStringList> m_urls;
    QHash<QString, QString> m_hostOfUrl;
    QStringList m_hosts;
    mutable QHash<QString, QStringList> m_hostsByHash;
    mutable bool m_hashIndexStale = false;
};
