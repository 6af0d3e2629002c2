#include "ui/Translation.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

bool installTranslations(QCoreApplication &application, const QLocale &locale)
{
    auto *own = new QTranslator(&application);
    if (!own->load(locale, QStringLiteral("quillo"), QStringLiteral("_"), QStringLiteral(":/i18n"))) {
        delete own;
        return false;
    }
    QCoreApplication::installTranslator(own);
    auto *qt = new QTranslator(&application);
    if (qt->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                 QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(qt);
    else
        delete qt;
    return true;
}
