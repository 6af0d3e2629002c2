#pragma once

#include "api/Errors.h"
#include "core/ClientConfiguration.h"

#include <QObject>
#include <QUuid>

#include <optional>

class ConnectionList;
class ErrorReporter;

// Whether to trust the certificate a connection's server presented, though the system does not:
// asked once per certificate, the first time or when it changed.
struct CertificateQuestion
{
    ClientConfiguration connection;
    API::ServerCertificate presented;
    QString trusted;       // what the connection trusted before; empty the first time
    QString failureReason; // the refusal, with the certificate's details

    bool isChange() const { return !trusted.isEmpty(); }
    QString title() const;
    QString message() const;
    QString trustButtonTitle() const;
    static QString declineButtonTitle();
};

// The pending question and its two answers: a trusted certificate is kept with the saved connection,
// whose later connections accept exactly that one; a declined one leaves the connection saved and
// unconnected.
class CertificateTrust : public QObject
{
    Q_OBJECT

public:
    CertificateTrust(ConnectionList &connections, ErrorReporter &errors, QObject *parent = nullptr);

    const std::optional<CertificateQuestion> &current() const { return m_current; }

    void ask(const ClientConfiguration &connection, const API::CertificateError &refusal);
    // Keeps the presented certificate with the connection; its id, to be opened again, or none when
    // it is no longer saved.
    std::optional<QUuid> trust();
    void decline();

Q_SIGNALS:
    void changed();

private:
    ConnectionList &m_connections;
    ErrorReporter &m_errors;
    std::optional<CertificateQuestion> m_current;
};
