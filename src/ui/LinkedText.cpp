#include "ui/LinkedText.h"

#include <QDesktopServices>
#include <QRegularExpression>
#include <QUrl>

namespace LinkedText {

QString html(const QString &text)
{
    // A link ends at white space, quotes or angle brackets; closing punctuation stays outside it.
    static const QRegularExpression link(QStringLiteral(R"((?:https?://|magnet:\?)[^\s<>"']*[^\s<>"'.,;:!?)\]])"),
                                         QRegularExpression::CaseInsensitiveOption);
    QString out;
    qsizetype done = 0;
    for (const QRegularExpressionMatch &match : link.globalMatch(text)) {
        out += text.mid(done, match.capturedStart() - done).toHtmlEscaped();
        const QString target = match.captured().toHtmlEscaped();
        out += QStringLiteral("<a href=\"%1\">%1</a>").arg(target);
        done = match.capturedEnd();
    }
    out += text.mid(done).toHtmlEscaped();
    return QStringLiteral("<span style=\"white-space:pre-wrap\">") + out + QStringLiteral("</span>");
}

bool isOpenable(const QString &link)
{
    const QUrl url(link, QUrl::StrictMode);
    const QString scheme = url.scheme().toLower();
    return url.isValid() && (scheme == u"http" || scheme == u"https" || scheme == u"magnet");
}

bool open(const QString &link)
{
    return isOpenable(link) && QDesktopServices::openUrl(QUrl(link, QUrl::StrictMode));
}

} // namespace LinkedText
