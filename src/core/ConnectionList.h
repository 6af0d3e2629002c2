#pragma once

#include "core/ClientConfiguration.h"
#include "core/ConnectionStore.h"

#include <QCoroTask>
#include <QList>
#include <QObject>

#include <optional>

class KeychainStore;
class UserDefaults;

// The saved connections and the one chosen among them, kept in the settings; their credentials
// leave the keychain with them.
class ConnectionList : public QObject
{
    Q_OBJECT

public:
    ConnectionList(UserDefaults &defaults, KeychainStore &keychain, QObject *parent = nullptr);

    const QList<ClientConfiguration> &all() const { return m_all; }
    const std::optional<ClientConfiguration> &selected() const { return m_selected; }
    bool isSelected(QUuid id) const { return m_selected && m_selected->id == id; }

    // Adding or saving a connection equal to another fails with
    // InternalError::serverConfigurationAlreadyExist and leaves the list as it was.
    void add(const ClientConfiguration &configuration);
    void update(const ClientConfiguration &configuration);
    // Changes the application makes itself (the login's choice, a moved address) are never refused
    // for resembling another saved connection: that would stop a login halfway.
    void replace(const ClientConfiguration &configuration);
    void setAutoLogin(bool autoLogin);

    // Makes `id` the chosen connection; false when there is none of that id.
    bool select(QUuid id);
    void deselect() { m_selected.reset(); }
    // Removes the connection (the chosen one too: deselect it first) and its credentials.
    QCoro::Task<> remove(QUuid id);
    // Every connection but the local daemon's, which is not a remote one.
    QCoro::Task<> removeAllRemote();

Q_SIGNALS:
    void changed();

private:
    void setAll(QList<ClientConfiguration> configurations);

    KeychainStore &m_keychain;
    ConnectionStore m_store;
    QList<ClientConfiguration> m_all;
    std::optional<ClientConfiguration> m_selected;
};
