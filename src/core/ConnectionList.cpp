#include "core/ConnectionList.h"

#include "core/InternalError.h"
#include "core/KeychainStore.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcConnectionList, "AppContext")

namespace {

// Being the selected connection does not make two saved connections different.
bool sameSettings(ClientConfiguration a, const ClientConfiguration &b)
{
    a.isCurrent = b.isCurrent;
    return a == b;
}

QString describe(const ClientConfiguration &configuration)
{
    return QStringLiteral("name: %1\naddress: %2://%3:%4%5\nauthentication: %6%7")
        .arg(configuration.name, configuration.useHTTPS ? QStringLiteral("https") : QStringLiteral("http"),
             configuration.host, configuration.port ? QString::number(*configuration.port) : QStringLiteral("-"),
             configuration.path, API::rawText(configuration.authMethod),
             configuration.isLocal ? QStringLiteral("\nlocal daemon") : QString());
}

} // namespace

ConnectionList::ConnectionList(UserDefaults &defaults, KeychainStore &keychain, QObject *parent)
    : QObject(parent)
    , m_keychain(keychain)
    , m_store(defaults)
    , m_all(m_store.load())
{}

void ConnectionList::setAll(QList<ClientConfiguration> configurations)
{
    m_all = std::move(configurations);
    m_store.save(m_all);
    Q_EMIT changed();
}

void ConnectionList::add(const ClientConfiguration &configuration)
{
    for (const ClientConfiguration &existing : std::as_const(m_all)) {
        if (sameSettings(existing, configuration))
            throw InternalError(InternalError::Case::serverConfigurationAlreadyExist);
    }
    auto configurations = m_all;
    configurations.append(configuration);
    setAll(std::move(configurations));
}

void ConnectionList::update(const ClientConfiguration &configuration)
{
    ClientConfiguration edited = configuration;
    for (const ClientConfiguration &existing : std::as_const(m_all)) {
        if (existing.id != configuration.id && sameSettings(existing, configuration))
            throw InternalError(InternalError::Case::serverConfigurationAlreadyExist);
        // A certificate was trusted for one server: another address must earn its own.
        if (existing.id == configuration.id && (existing.host != edited.host || existing.port != edited.port ||
                                                 existing.useHTTPS != edited.useHTTPS))
            edited.trustedCertificate.clear();
    }
    replace(edited);
}

void ConnectionList::replace(const ClientConfiguration &configuration)
{
    auto configurations = m_all;
    const auto found =
        std::find_if(configurations.begin(), configurations.end(),
                     [&configuration](const ClientConfiguration &c) { return c.id == configuration.id; });
    if (found == configurations.end())
        return;
    *found = configuration;
    setAll(std::move(configurations));
    if (isSelected(configuration.id))
        m_selected = configuration;
}

void ConnectionList::setAutoLogin(bool autoLogin)
{
    if (!m_selected || m_selected->autoLogin == autoLogin)
        return;
    ClientConfiguration changed = *m_selected;
    changed.autoLogin = autoLogin;
    replace(changed);
}

bool ConnectionList::select(QUuid id)
{
    auto configurations = m_all;
    const auto found = std::find_if(configurations.begin(), configurations.end(),
                                    [id](const ClientConfiguration &c) { return c.id == id; });
    if (found == configurations.end())
        return false;
    for (ClientConfiguration &configuration : configurations)
        configuration.isCurrent = configuration.id == id;
    qCInfo(lcConnectionList, "New client configuration:\n%s", qUtf8Printable(describe(*found)));
    m_selected = *found;
    setAll(std::move(configurations));
    return true;
}

QCoro::Task<> ConnectionList::remove(QUuid id)
{
    auto configurations = m_all;
    const QUuid wanted = id; // lambdas see a coroutine's own copy of a local, not always of a parameter
    const auto found = std::find_if(configurations.begin(), configurations.end(),
                                    [&wanted](const ClientConfiguration &c) { return c.id == wanted; });
    if (found == configurations.end())
        co_return;
    const ClientConfiguration removed = *found;
    configurations.erase(found);
    setAll(std::move(configurations));
    co_await m_keychain.remove(removed);
}

QCoro::Task<> ConnectionList::removeAllRemote()
{
    QList<ClientConfiguration> kept;
    QList<ClientConfiguration> removed;
    for (const ClientConfiguration &configuration : std::as_const(m_all))
        (configuration.isLocal ? kept : removed).append(configuration);
    setAll(std::move(kept));
    // The keychain outlives the list, which may be gone before the last item is removed.
    KeychainStore &keychain = m_keychain;
    for (const ClientConfiguration &configuration : std::as_const(removed))
        co_await keychain.remove(configuration);
}
