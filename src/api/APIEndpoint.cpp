#include "api/APIEndpoint.h"

#include <QLocale>
#include <QUrl>

#include <cmath>

namespace API {

QByteArray methodWord(HttpMethod method)
{
    return method == HttpMethod::get ? QByteArrayLiteral("GET") : QByteArrayLiteral("POST");
}

QString APIEndpoint::path() const
{
    static constexpr const char16_t *prefixes[] = {u"auth/", u"app/", u"sync/", u"torrents/", u"transfer/",
                                                         u"log/", u"search/", u"rss/"};
    return QString::fromUtf16(prefixes[static_cast<int>(group)]) + name;
}

const StatusRule *APIEndpoint::ruleFor(int status, QStringView serverText) const
{
    for (const StatusRule &rule : statusRules) {
        if (rule.status == status
            && (rule.bodyMarker.isEmpty() || serverText.contains(rule.bodyMarker, Qt::CaseInsensitive)))
            return &rule;
    }
    return nullptr;
}

QByteArray FormBody::encodeValue(const QString &value)
{
    // Unreserved characters plus "/" and "?" stay literal: the URL query set without ":#[]@!$&'()*+,;=".
    return QUrl::toPercentEncoding(value, QByteArrayLiteral("/?"));
}

QString FormBody::formatDouble(double value)
{
    QString text = QString::number(value, 'g', QLocale::FloatingPointShortest);
    if (std::isfinite(value) && !text.contains(u'.') && !text.contains(u'e'))
        text += u".0";
    return text;
}

FormBody &FormBody::add(QStringView key, const QString &value)
{
    if (!m_bytes.isEmpty())
        m_bytes += '&';
    m_bytes += key.toUtf8();
    m_bytes += '=';
    m_bytes += encodeValue(value);
    return *this;
}

FormBody &FormBody::add(QStringView key, bool value)
{
    return add(key, value ? QStringLiteral("true") : QStringLiteral("false"));
}

FormBody &FormBody::add(QStringView key, qint64 value)
{
    return add(key, QString::number(value));
}

FormBody &FormBody::add(QStringView key, double value)
{
    return add(key, formatDouble(value));
}

} // namespace API
