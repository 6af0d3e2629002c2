#include "api/TntAddingOptions.h"

#include "api/Errors.h"

#include <QCoreApplication>
#include <QLocale>
#include <QLoggingCategory>

#include <cmath>

Q_LOGGING_CATEGORY(lcTntAddingOptions, "TntAddingOptions")

namespace API {

namespace {

QString textOf(const QString &value)
{
    return value;
}
QString textOf(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}
QString textOf(qint64 value)
{
    return QString::number(value);
}
// Fixed notation: 'g' turns 100000 into "1e+05".
QString textOf(double value)
{
    return QString::number(value, 'f', QLocale::FloatingPointShortest);
}
QString textOf(TntContentLayout value)
{
    return wireText(value);
}
QString textOf(TntStopCondition value)
{
    return wireText(value);
}

} // namespace

void TntAddingOptions::setAddStopped(bool addStopped, const ServerFeatures &features)
{
    if (features.usesStartStop())
        stopped = addStopped;
    else
        paused = addStopped;
}

MultipartBody TntAddingOptions::multipartBody() const
{
    if (ratioLimit && !std::isfinite(*ratioLimit)) {
        qCCritical(lcTntAddingOptions, "The ratio limit %f cannot be sent.", *ratioLimit);
        throw TntManagmentError(TntManagmentError::Case::missingParameter, {},
                                QCoreApplication::translate("TntAddingOptions", "The ratio limit is not a number."));
    }

    MultipartWriter writer(boundary);
    if (urls)
        writer.addUrls(*urls);
    if (tnts) {
        for (const QString &file : *tnts)
            writer.addTntFile(file);
    }
    const auto add = [&writer](const char16_t *name, const auto &value) {
        if (value)
            writer.addField(QString::fromUtf16(name), textOf(*value));
    };
    add(u"savepath", savepath);
    add(u"useDownloadPath", useDownloadPath);
    add(u"downloadPath", downloadPath);
    add(u"addToTopOfQueue", addToTopOfQueue);
    add(u"cookie", cookie);
    add(u"category", category);
    add(u"tags", tags);
    // Both real servers (4.5, 5.1) read "skip_checking" and ignore "skipChecking" without a word.
    add(u"skip_checking", skipChecking);
    add(u"paused", paused);
    add(u"stopped", stopped);
    add(u"rootFolder", rootFolder);
    add(u"rename", rename);
    add(u"upLimit", upLimit);
    add(u"dlLimit", dlLimit);
    add(u"ratioLimit", ratioLimit);
    add(u"seedingTimeLimit", seedingTimeLimit);
    add(u"autoTMM", autoTMM);
    add(u"sequentialDownload", sequentialDownload);
    add(u"firstLastPiecePrio", firstLastPiecePrio);
    add(u"contentLayout", contentLayout);
    add(u"stopCondition", stopCondition);
    add(u"filePriorities", filePriorities);
    return std::move(writer).finish();
}

} // namespace API
