#pragma once

#include "api/Records.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QStringList>

class Connector;

// The server's search plugins, and whether it can search at all. A server without Python lists no
// plugins and refuses every search with 409; one with Python and no plugins lists none either but
// starts a search. So an empty list is settled by starting a search (deleted at once): 409 means
// no Python.
class SearchPlugins : public QObject
{
    Q_OBJECT

public:
    enum class Availability { unknown, available, noPython };

    explicit SearchPlugins(Connector &connector, QObject *parent = nullptr);

    Availability availability() const { return m_availability; }
    const QList<API::SearchPlugin> &plugins() const { return m_plugins; }
    // The categories of the plugins a search would use (`choice`: "enabled", "all" or one plugin's
    // name), "all" first, each id once.
    QList<API::SearchCategory> categories(const QString &choice) const;

    // Each throws what the server or the network answered; the list is read again after a change.
    QCoro::Task<> reload();
    QCoro::Task<> setEnabled(QStringList names, bool enabled);
    // A URL the server downloads from, or the path of a .py file on the server's machine. Local
    // files are installed before the answer (a file that was not throws RefusalError); downloads
    // later, so whoever asked reads the list again then.
    QCoro::Task<> install(QStringList sources);
    QCoro::Task<> uninstall(QStringList names);
    QCoro::Task<> updateAll();

    // A source the server downloads rather than reads from its disk.
    static bool isDownload(const QString &source);

Q_SIGNALS:
    void changed();

private:
    QCoro::Task<Availability> probe();

    Connector &m_connector;
    QList<API::SearchPlugin> m_plugins;
    Availability m_availability = Availability::unknown;
};
