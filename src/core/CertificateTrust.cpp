#include "core/CertificateTrust.h"

#include "core/ConnectionList.h"
#include "core/ErrorReporter.h"
#include "core/InternalError.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <algorithm>

Q_LOGGING_CATEGORY(lcCertificateTrust, "CertificateTrust")

QString CertificateQuestion::title() const
{
    return isChange() ? QCoreApplication::translate("CertificateTrust", "The server's certificate has changed!")
                      : QCoreApplication::translate("CertificateTrust", "Trust the server's certificate?");
}

QString CertificateQuestion::message() const
{
    return failureReason +
           (isChange()
                ? QCoreApplication::translate("CertificateTrust",
                                              "\n\nQuillo does not connect to this server until you trust the new "
                                              "certificate.")
                : QCoreApplication::translate(
                      "CertificateTrust", "\n\nA server with a self-signed certificate looks like this. Trust it only "
                                          "if these are the details of your server's certificate: Quillo then accepts "
                                          "exactly this certificate for this connection, and asks again if it "
                                          "changes."));
}

QString CertificateQuestion::trustButtonTitle() const
{
    return isChange() ? QCoreApplication::translate("CertificateTrust", "Trust New Certificate")
                      : QCoreApplication::translate("CertificateTrust", "Trust Certificate");
}

QString CertificateQuestion::declineButtonTitle()
{
    return QCoreApplication::translate("CertificateTrust", "Don't Connect");
}

CertificateTrust::CertificateTrust(ConnectionList &connections, ErrorReporter &errors, QObject *parent)
    : QObject(parent)
    , m_connections(connections)
    , m_errors(errors)
{}

void CertificateTrust::ask(const ClientConfiguration &connection, const API::CertificateError &refusal)
{
    qCWarning(lcCertificateTrust, "%s %s", qUtf8Printable(refusal.description()),
              qUtf8Printable(refusal.failureReason()));
    m_current = CertificateQuestion{connection, refusal.presented(), refusal.trusted(), refusal.failureReason()};
    Q_EMIT changed();
}

std::optional<QUuid> CertificateTrust::trust()
{
    if (!m_current)
        return std::nullopt;
    const CertificateQuestion question = *std::exchange(m_current, std::nullopt);
    Q_EMIT changed();
    const auto &saved = m_connections.all();
    const auto found = std::find_if(saved.cbegin(), saved.cend(), [&question](const ClientConfiguration &c) {
        return c.id == question.connection.id;
    });
    if (found == saved.cend())
        return std::nullopt;
    ClientConfiguration trusting = *found;
    trusting.trustedCertificate = question.presented.sha256;
    m_connections.replace(trusting);
    qCInfo(lcCertificateTrust, "Trusted the certificate with SHA-256 %s for %s:%d.",
           qUtf8Printable(API::ServerCertificate::displayFingerprint(question.presented.sha256)),
           qUtf8Printable(trusting.host), trusting.port.value_or(0));
    return trusting.id;
}

void CertificateTrust::decline()
{
    if (!std::exchange(m_current, std::nullopt))
        return;
    Q_EMIT changed();
    m_errors.report(QCoreApplication::translate("CertificateTrust", "Not connected."),
                    std::make_exception_ptr(InternalError(InternalError::Case::certificateDeclined)));
}
