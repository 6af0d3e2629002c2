#pragma once

#include <QCoroTask>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>
#include <optional>

class AppSettings;
class Connector;
class Session;
class Sync;
class TntDetailContext;

// Loads what the detail pane shows: the peers of its torrent, incrementally, and what its visible
// tab shows, fetched whole. It runs in every poll round and at once when the pane gets another
// torrent or tab.
class TntDetailLoader : public QObject
{
    Q_OBJECT

public:
    TntDetailLoader(Connector &connector, Sync &sync, TntDetailContext &details, AppSettings &settings,
                    QObject *parent = nullptr);
    ~TntDetailLoader() override;

    // One refresh at a time. A request for one while another runs is covered by it, unless the
    // pane's torrent or tab changed: then one more follows.
    QCoro::Task<> refresh(bool targetChanged);
    // The torrent's trackers changed on the server.
    void reloadTrackers(const QString &hash);
    // The torrent's web seeds changed on the server.
    void reloadWebSeeds(const QString &hash);
    // What the pane shows is gone (its torrent was removed): answers on their way are dropped.
    void drop();

private:
    QCoro::Task<> load(QPointer<Session> session);
    QCoro::Task<> loadTrackers(QPointer<Session> session);
    QCoro::Task<> loadWebSeeds(QPointer<Session> session);
    // The answer, or none when the request failed (reported under `failureTitle`), or it came for
    // a session or a shown torrent that is gone.
    template <typename T>
    QCoro::Task<std::optional<T>> fetch(QPointer<Session> session, QCoro::Task<T> request, QString failureTitle);
    void forgetShown();
    void refreshAtOnce();

    Connector &m_connector;
    TntDetailContext &m_details;
    AppSettings &m_settings;
    // Replaced whenever what the pane shows is dropped: an answer asked for before finds its
    // pointer null.
    std::unique_ptr<QObject> m_shown;
    QString m_shownHash;
    bool m_refreshing = false;
    bool m_refreshAgain = false;
};
