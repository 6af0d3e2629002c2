#include "api/ServerCertificate.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QStringList>

namespace API {

ServerCertificate ServerCertificate::of(const QSslCertificate &certificate)
{
    return {sha256Of(certificate), distinguishedName(certificate, false), distinguishedName(certificate, true),
            certificate.effectiveDate().toUTC(), certificate.expiryDate().toUTC()};
}

QString ServerCertificate::sha256Of(const QSslCertificate &certificate)
{
    if (certificate.isNull())
        return {};
    return QString::fromLatin1(certificate.digest(QCryptographicHash::Sha256).toHex());
}

QString ServerCertificate::displayFingerprint(const QString &sha256)
{
    QStringList pairs;
    for (qsizetype at = 0; at < sha256.size(); at += 2)
        pairs.append(sha256.mid(at, 2).toUpper());
    return pairs.join(u':');
}

QString ServerCertificate::distinguishedName(const QSslCertificate &certificate, bool issuer)
{
    static const std::pair<QSslCertificate::SubjectInfo, const char16_t *> parts[] = {
        {QSslCertificate::CommonName, u"CN"},          {QSslCertificate::OrganizationalUnitName, u"OU"},
        {QSslCertificate::Organization, u"O"},         {QSslCertificate::LocalityName, u"L"},
        {QSslCertificate::StateOrProvinceName, u"ST"}, {QSslCertificate::CountryName, u"C"},
    };
    QStringList named;
    for (const auto &[info, label] : parts) {
        const QStringList values = issuer ? certificate.issuerInfo(info) : certificate.subjectInfo(info);
        for (const QString &value : values)
            named.append(QString::fromUtf16(label) + u'=' + value);
    }
    return named.join(QStringLiteral(", "));
}

QString ServerCertificate::details() const
{
    const auto date = [](const QDateTime &when) { return when.toString(QStringLiteral("yyyy-MM-dd HH:mm 'UTC'")); };
    return QCoreApplication::translate("ServerCertificate",
                                       "SHA-256: %1\nSubject: %2\nIssuer: %3\nValid from %4 until %5")
        .arg(displayFingerprint(sha256), subject, issuer, date(validFrom), date(validUntil));
}

} // namespace API
