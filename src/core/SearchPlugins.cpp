#include "core/SearchPlugins.h"

#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "core/Connector.h"
#include "support/Captured.h"

#include <QFileInfo>
#include <QPointer>
#include <QSet>

#include <algorithm>

namespace {

API::Client &clientOf(Connector &connector)
{
    if (!connector.isAuthorized())
        throw API::NetworkError::disconnected();
    return connector.session()->client();
}

} // namespace

bool SearchPlugins::isDownload(const QString &source)
{
    return source.startsWith(u"http://", Qt::CaseInsensitive) || source.startsWith(u"https://", Qt::CaseInsensitive);
}

SearchPlugins::SearchPlugins(Connector &connector, QObject *parent)
    : QObject(parent)
    , m_connector(connector)
{
    connect(&connector, &Connector::sessionChanged, this, [this] {
        m_plugins.clear();
        m_availability = Availability::unknown;
        Q_EMIT changed();
    });
}

QList<API::SearchCategory> SearchPlugins::categories(const QString &choice) const
{
    QList<API::SearchCategory> merged;
    QSet<QString> seen;
    for (const API::SearchPlugin &plugin : m_plugins) {
        const bool used = choice == u"all" || (choice == u"enabled" ? plugin.enabled : plugin.name == choice);
        if (!used)
            continue;
        for (const API::SearchCategory &category : plugin.supportedCategories) {
            if (!seen.contains(category.id)) {
                seen.insert(category.id);
                merged << category;
            }
        }
    }
    if (!seen.contains(QStringLiteral("all")))
        merged.prepend({QStringLiteral("all"), tr("All categories")});
    return merged;
}

QCoro::Task<> SearchPlugins::reload()
{
    const QPointer<SearchPlugins> self(this);
    QList<API::SearchPlugin> plugins = co_await clientOf(m_connector).searchPlugins();
    if (!self)
        co_return;
    // Python does not come or go while a session lasts: one probe settles it.
    Availability availability = Availability::available;
    if (plugins.isEmpty() && m_availability != Availability::available)
        availability = co_await probe();
    if (!self)
        co_return;
    m_plugins = std::move(plugins);
    m_availability = availability;
    Q_EMIT changed();
}

QCoro::Task<SearchPlugins::Availability> SearchPlugins::probe()
{
    const QPointer<Session> session = m_connector.session();
    API::Client &client = clientOf(m_connector);
    // Named, not braced: g++ 12 fails on an initializer list inside a co_await expression.
    const QStringList plugins{QStringLiteral("enabled")};
    auto started = co_await captured(client.startSearch(QStringLiteral("quillo"), plugins, QStringLiteral("all")));
    if (!started) {
        const auto refusal = thrown<API::SearchError>(started.error);
        if (refusal && refusal->kind() == API::SearchError::Case::refused)
            co_return Availability::noPython;
        std::rethrow_exception(started.error);
    }
    if (session)
        co_await session->client().perform(API::Endpoint::Search::deleteSearch(*started.value));
    co_return Availability::available;
}

QCoro::Task<> SearchPlugins::setEnabled(QStringList names, bool enabled)
{
    co_await clientOf(m_connector).perform(API::Endpoint::Search::enablePlugin(names, enabled));
    co_await reload();
}

QCoro::Task<> SearchPlugins::install(QStringList sources)
{
    co_await clientOf(m_connector).perform(API::Endpoint::Search::installPlugin(sources));
    const QPointer<SearchPlugins> self(this);
    co_await reload();
    if (!self)
        co_return;
    // The server answers 200 whatever becomes of a file (missing, unreadable, not a plugin) and
    // only logs it: a local file is installed before the answer, so its absence now is the failure.
    QStringList missing;
    for (const QString &source : std::as_const(sources)) {
        if (isDownload(source))
            continue;
        const QString name = QFileInfo(source).completeBaseName();
        if (std::none_of(m_plugins.cbegin(), m_plugins.cend(),
                         [&name](const API::SearchPlugin &plugin) { return plugin.name == name; }))
            missing << source;
    }
    if (!missing.isEmpty())
        throw API::RefusalError(tr("The server did not install %1. It installs only .py search plugins it can "
                                   "read on its own computer; its log says why.")
                                    .arg(missing.join(QStringLiteral(", "))));
}

QCoro::Task<> SearchPlugins::uninstall(QStringList names)
{
    co_await clientOf(m_connector).perform(API::Endpoint::Search::uninstallPlugin(names));
    co_await reload();
}

QCoro::Task<> SearchPlugins::updateAll()
{
    co_await clientOf(m_connector).perform(API::Endpoint::Search::updatePlugins());
    co_await reload();
}
