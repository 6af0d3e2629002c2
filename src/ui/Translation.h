#pragma once

class QCoreApplication;
class QLocale;

// Installs Quillo's translation for `locale`, and Qt's own for its dialogs where the system has
// it; false when Quillo has none for that language (English is the texts themselves).
bool installTranslations(QCoreApplication &application, const QLocale &locale);
