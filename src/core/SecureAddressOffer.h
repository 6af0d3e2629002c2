#pragma once

#include "core/HTTPSRedirectSuggestion.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>
#include <QUuid>

#include <optional>

class ConnectionList;
class Session;

// The offer to move a saved connection to the HTTPS address its port redirects to: probed when a
// plain request of the open session fails, shown until accepted or dismissed.
class SecureAddressOffer : public QObject
{
    Q_OBJECT

public:
    explicit SecureAddressOffer(ConnectionList &connections, QObject *parent = nullptr);

    const std::optional<HTTPSRedirectSuggestion> &current() const { return m_current; }

    // Probes where `failed` redirects to; an answer that comes after `session` closed is dropped.
    QCoro::Task<> probe(QPointer<Session> session, ClientConfiguration failed, QString error,
                        HTTPSRedirectSuggestion::Origin origin);
    // Moves the saved connection to the offered address; its id, to be opened, or none when the
    // connection is no longer saved.
    std::optional<QUuid> accept();
    void dismiss();

Q_SIGNALS:
    void changed();

private:
    ConnectionList &m_connections;
    std::optional<HTTPSRedirectSuggestion> m_current;
};
