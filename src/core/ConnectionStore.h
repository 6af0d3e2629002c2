#pragma once

#include "core/ClientConfiguration.h"

#include <QByteArray>
#include <QList>

class UserDefaults;

// The saved connections, persisted whole as one JSON array under "clientConfigurations". The older
// list is migrated once. An entry that cannot be read is never silently dropped from the store: the
// unreadable text is kept aside before the list is written again.
class ConnectionStore
{
public:
    // Where versions before the JSON list kept their records.
    static constexpr auto legacyKey = "serverConfigurations";
    static constexpr auto unreadableBackupKey = "clientConfigurationsUnreadable";

    explicit ConnectionStore(UserDefaults &defaults);

    QList<ClientConfiguration> load();
    void save(const QList<ClientConfiguration> &configurations);

    static QByteArray encode(const QList<ClientConfiguration> &configurations);
    // Entries that do not decode are left out; `complete` says whether any was.
    static QList<ClientConfiguration> decode(const QByteArray &json, bool *complete = nullptr);

private:
    void migrateLegacyList();

    UserDefaults &m_defaults;
    bool m_hasUnreadable = false;
};
