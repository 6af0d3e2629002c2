#pragma once

#include <QDateTime>
#include <QSslCertificate>
#include <QString>

namespace API {

// What the user needs to judge a certificate the system does not trust, and the SHA-256 of its DER
// form, by which a connection recognises the one certificate it was told to trust.
struct ServerCertificate
{
    QString sha256; // lower-case hex, no separators: how a connection keeps it
    QString subject;
    QString issuer;
    QDateTime validFrom;
    QDateTime validUntil;

    static ServerCertificate of(const QSslCertificate &certificate);
    static QString sha256Of(const QSslCertificate &certificate);
    // "AB:CD:…", as certificate viewers show a fingerprint.
    static QString displayFingerprint(const QString &sha256);
    // The subject's and issuer's names, most specific part first ("CN=nas, O=Home").
    static QString distinguishedName(const QSslCertificate &certificate, bool issuer);

    // Fingerprint, subject, issuer and validity, one per line.
    QString details() const;

    friend bool operator==(const ServerCertificate &, const ServerCertificate &) = default;
};

} // namespace API
