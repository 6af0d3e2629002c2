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

QString TntLinks::infoHashOf(const QString &magnet)
{
    // A v2 hash names the torrent wherever there is one, a hybrid's included: libtorrent-2 servers
    // list it under the SHA-256 digest (multihash 0x12, 32 bytes) cut to 40 hex digits.
    static const QRegularExpression btmh(QStringLiteral("[?&]xt=urn:btmh:1220([0-9a-fA-F]{64})(&|$)"));
    if (const QRegularExpressionMatch v2 = btmh.match(magnet); v2.hasMatch())
        return v2.captured(1).left(40).toLower();
    static const QRegularExpression btih(QStringLiteral("[?&]xt=urn:btih:([0-9a-fA-F]{40}|[A-Za-z2-7]{32})(&|$)"));
    const QString hash = btih.match(magnet).captured(1);
    if (hash.size() == 40)
        return hash.toLower();
    if (hash.isEmpty())
        return {};
    // Base32 (RFC 4648): 32 letters of 5 bits are the 20 bytes of the hash.
    QByteArray bytes;
    quint64 bits = 0;
    int count = 0;
    for (const QChar c : hash.toUpper()) {
        const char16_t u = c.unicode();
        bits = (bits << 5) | static_cast<quint64>(u >= u'A' ? u - u'A' : u - u'2' + 26);
        count += 5;
        if (count >= 8) {
            count -= 8;
            bytes.append(static_cast<char>((bits >> count) & 0xff));
        }
    }
    return QString::fromLatin1(bytes.toHex());
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
