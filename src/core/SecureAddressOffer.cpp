#include "core/SecureAddressOffer.h"

#include "core/ConnectionList.h"
#include "core/Session.h"

#include <algorithm>

SecureAddressOffer::SecureAddressOffer(ConnectionList &connections, QObject *parent)
    : QObject(parent)
    , m_connections(connections)
{
}

QCoro::Task<> SecureAddressOffer::probe(QPointer<Session> session, ClientConfiguration failed, QString error,
                                        HTTPSRedirectSuggestion::Origin origin)
{
    auto probing = HTTPSRedirectSuggestion::probe(std::move(failed), origin, std::move(error));
    std::optional<HTTPSRedirectSuggestion> suggestion = co_await std::move(probing);
    if (!session || !suggestion)
        co_return;
    m_current = std::move(suggestion);
    Q_EMIT changed();
}

std::optional<QUuid> SecureAddressOffer::accept()
{
    if (!m_current)
        return std::nullopt;
    const HTTPSRedirectSuggestion suggestion = *std::exchange(m_current, std::nullopt);
    Q_EMIT changed();
    const auto &saved = m_connections.all();
    const auto found = std::find_if(saved.cbegin(), saved.cend(), [&suggestion](const ClientConfiguration &c) {
        return c.id == suggestion.source.id;
    });
    if (found == saved.cend())
        return std::nullopt;
    const ClientConfiguration moved = suggestion.acceptedConfiguration(*found);
    m_connections.replace(moved);
    HTTPSRedirectSuggestion::logAddressChange(suggestion.source, moved);
    return moved.id;
}

void SecureAddressOffer::dismiss()
{
    m_current.reset();
    Q_EMIT changed();
}
