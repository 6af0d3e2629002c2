#include "adding/TntLinks.h"

#include <QRegularExpression>
#include <QUrl>

QString TntLinks::urlOf(const QString &line)
{
    static const QRegularExpression hexV1(QStringLiteral("^[0-9a-fA-F]{40}$"));
    static const QRegularExpression base32V1(QStringLiteral("^[A-Za-z2-7]{32}$"));
    static const QRegularExpression hexV2(QStringLiteral("^[0-9a-fA-F]{64}$"));
    if (hexV1.match(line).hasMatch())
        return QStringLiteral("magnet:?xt=urn:btih:") + line.toLower();
    if (base32V1.match(line).hasMatch())
        return QStringLiteral("magnet:?xt=urn:btih:") + line.toUpper();
    // A v2 info-hash is a multihash: 0x12 (SHA-256), 0x20 (32 bytes), then the digest.
    if (hexV2.match(line).hasMatch())
        return QStringLiteral("magnet:?xt=urn:btmh:1220") + line.toLower();

    const QUrl url(line, QUrl::StrictMode);
    if (!url.isValid())
        return {};
    const QString scheme = url.scheme().toLower();
    if (scheme == u"magnet")
        return url.query().contains(u"xt=urn:bt") ? line : QString();
    if ((scheme == u"http" || scheme == u"https") && !url.host().isEmpty())
        return line;
    return {};
}

TntLinks TntLinks::parse(const QString &text)
{
    TntLinks links;
    const QStringList lines = text.split(u'\n');
    for (const QString &rawLine : lines) {
        const QString line = rawLine.trimmed();
        if (line.isEmpty())
            continue;
        const QString url = urlOf(line);
        if (url.isEmpty())
            links.rejected << line;
        else
            links.urls << url;
    }
    return links;
}
