#pragma once

#include "ui/SettingsPage.h"

class AppSettings;

// Quillo's own settings: polling, averaging, the table, the status bar, adding and notices.
class QuilloSettingsPage : public BoundSettingsPage
{
    Q_OBJECT

public:
    explicit QuilloSettingsPage(AppSettings &settings, QWidget *parent = nullptr);

    // The sounds of the desktop's sound themes, by name, "Default" first.
    static QStringList themeSounds();
    static QString defaultSound();

Q_SIGNALS:
    // At once, not on applying: the kept torrent lists of every server are to be removed.
    void forgetTntListsRequested();
};
