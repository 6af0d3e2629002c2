#include "ui/QuilloSettingsPage.h"

#include "api/AppInfo.h"
#include "settings/AppSettings.h"

#include <QCheckBox>
#include <QDir>
#include <QSpinBox>
#include <QStandardPaths>

QuilloSettingsPage::QuilloSettingsPage(AppSettings &settings, QWidget *parent)
    : BoundSettingsPage(parent)
{
    AppSettings *s = &settings;
    UserDefaults *d = &settings.defaults();
    using K = UserDefaultsKey;
    // A switch stored in the settings file alone: views read it from there.
    const auto addStored = [this, d](const QString &title, K key, bool fallback) {
        return addSwitch(title, [d, key, fallback] { return d->boolValue(key, fallback); },
                         [d, key](bool value) { d->setValue(key, value); });
    };

    addSection(QStringLiteral("Updates from the server"));
    QCheckBox *automatic = addSwitch(
        QStringLiteral("Follow the server's refresh interval"), [s] { return s->setRefreshIntervalAuto(); },
        [s](bool on) { s->setSetRefreshIntervalAuto(on); });
    const AppSettings::Bounds refresh = AppSettings::refreshIntervalBounds;
    QSpinBox *interval = addNumber(QStringLiteral("Refresh interval:"), refresh.minimum, refresh.maximum,
                                   QStringLiteral(" ms"), [s] { return s->refreshInterval(); },
                                   [s](int value) { s->setRefreshInterval(value); });
    const AppSettings::Bounds increase = AppSettings::intervalIncreaseBounds;
    addNumber(QStringLiteral("In the background, slower by:"), increase.minimum, increase.maximum,
              QStringLiteral(" ms"), [s] { return s->intervalIncreaseValue(); },
              [s](int value) { s->setIntervalIncreaseValue(value); });
    interval->setEnabled(!automatic->isChecked());
    connect(automatic, &QCheckBox::toggled, interval, [interval](bool on) { interval->setEnabled(!on); });
    const AppSettings::Bounds window = AppSettings::averagingWindowBounds;
    addNumber(QStringLiteral("Speeds averaged over:"), window.minimum, window.maximum, QStringLiteral(" samples"),
              [s] { return s->avgCoefficient(); }, [s](int value) { s->setAvgCoefficient(value); });

    addSection(QStringLiteral("Torrents"));
    addStored(QStringLiteral("Ask before removing torrents"), K::confirmTntDeleting, true);
    addStored(QStringLiteral("Alternate row colors"), K::alternateRows, true);

    addSection(QStringLiteral("Status bar"));
    addStored(QStringLiteral("Session totals"), K::showSessionStats, true);
    addStored(QStringLiteral("All-time totals"), K::showAllTimeStats, true);
    addStored(QStringLiteral("Free disk space"), K::showFreeSpace, true);
    addStored(QStringLiteral("Global ratio"), K::showGlobalRatio, true);

    addSection(QStringLiteral("Tray"));
    addStored(QStringLiteral("Close to tray"), K::closeToTray, false);
    addStored(QStringLiteral("Start minimized"), K::startMinimized, false);

    // Builds without a release feed are updated by their package manager.
    if (!QStringView(AppInfo::releaseFeed).isEmpty()) {
        addSection(QStringLiteral("Updates of Quillo"));
        static const QStringList intervals{QStringLiteral("Never"), QStringLiteral("Daily"), QStringLiteral("Weekly"),
                                           QStringLiteral("Monthly")};
        addChoice(
            QStringLiteral("Check for updates:"), intervals,
            [s] { return intervals.at(static_cast<int>(s->updateCheckInterval())); },
            [s](const QString &name) { s->setUpdateCheckInterval(static_cast<UpdateInterval>(intervals.indexOf(name))); });
    }

    addSection(QStringLiteral("Adding torrents"));
    addSwitch(QStringLiteral("Show the add window before adding"), [s] { return s->showTntAddingWindow(); },
              [s](bool on) { s->setShowTntAddingWindow(on); });
    addSwitch(QStringLiteral("Move the .torrent file to the trash once added"), [s] { return s->autoDeleteTntFile(); },
              [s](bool on) { s->setAutoDeleteTntFile(on); });
    addSwitch(QStringLiteral("Also when the adding is cancelled"),
              [s] { return s->deleteTntFileOnAdditionCanceled(); },
              [s](bool on) { s->setDeleteTntFileOnAdditionCanceled(on); });

    addSection(QStringLiteral("Finished downloads"));
    addSwitch(QStringLiteral("Notify when downloads complete"), [s] { return s->notifyDownloadsComplete(); },
              [s](bool on) { s->setNotifyDownloadsComplete(on); });
    // "Funk", the stored default, has no freedesktop sound: the theme's completion sound plays.
    addChoice(QStringLiteral("Sound:"), themeSounds(),
              [s] { return s->selectedSound() == u"Funk" ? QStringLiteral("Default") : s->selectedSound(); },
              [s](const QString &name) { s->setSelectedSound(name); });
    addSwitch(QStringLiteral("Ask for attention"), [s] { return s->animateDockIcon(); },
              [s](bool on) { s->setAnimateDockIcon(on); });
}

QStringList QuilloSettingsPage::themeSounds()
{
    QStringList names;
    for (const QString &root : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        QDir themes(root + QStringLiteral("/sounds"));
        for (const QString &theme : themes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QDir stereo(themes.filePath(theme) + QStringLiteral("/stereo"));
            for (const QFileInfo &file : stereo.entryInfoList({QStringLiteral("*.oga"), QStringLiteral("*.ogg"),
                                                               QStringLiteral("*.wav")},
                                                              QDir::Files))
                names << file.completeBaseName();
        }
    }
    names.sort();
    names.removeDuplicates();
    names.prepend(QStringLiteral("Default"));
    return names;
}
