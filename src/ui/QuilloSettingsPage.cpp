#include "ui/QuilloSettingsPage.h"

#include "api/AppInfo.h"
#include "settings/AppSettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFormLayout>
#include <QPushButton>
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
        return addSwitch(
            title, [d, key, fallback] { return d->boolValue(key, fallback); },
            [d, key](bool value) { d->setValue(key, value); });
    };

    addSection(QCoreApplication::translate("QuilloSettingsPage", "Updates from the server"));
    // In the order of RefreshMode.
    static const QStringList modes{
        QCoreApplication::translate("QuilloSettingsPage", "At a fixed interval"),
        QCoreApplication::translate("QuilloSettingsPage", "Follow the server's refresh interval"),
        QCoreApplication::translate("QuilloSettingsPage", "Adapt to the server's speed")};
    QComboBox *mode = addChoice(
        QCoreApplication::translate("QuilloSettingsPage", "Refresh:"), modes,
        [s] { return modes.at(static_cast<int>(s->refreshMode())); },
        [s](const QString &name) { s->setRefreshMode(static_cast<RefreshMode>(modes.indexOf(name))); });
    mode->setToolTip(QCoreApplication::translate(
        "QuilloSettingsPage", "Adapting waits at least seven times as long as the server took to answer, and never "
                              "less than the refresh interval: a slow server spends at most an eighth of its time "
                              "on Quillo."));
    const AppSettings::Bounds refresh = AppSettings::refreshIntervalBounds;
    QSpinBox *interval = addNumber(
        QCoreApplication::translate("QuilloSettingsPage", "Refresh interval:"), refresh.minimum, refresh.maximum,
        QCoreApplication::translate("QuilloSettingsPage", " ms"), [s] { return s->refreshInterval(); },
        [s](int value) { s->setRefreshInterval(value); });
    const AppSettings::Bounds increase = AppSettings::intervalIncreaseBounds;
    addNumber(
        QCoreApplication::translate("QuilloSettingsPage", "In the background, slower by:"), increase.minimum,
        increase.maximum, QCoreApplication::translate("QuilloSettingsPage", " ms"),
        [s] { return s->intervalIncreaseValue(); }, [s](int value) { s->setIntervalIncreaseValue(value); });
    // The interval is the server's own while following it, and the shortest pause while adapting.
    const auto followsServer = [mode] { return mode->currentIndex() == static_cast<int>(RefreshMode::server); };
    interval->setEnabled(!followsServer());
    connect(mode, &QComboBox::currentIndexChanged, interval,
            [interval, followsServer] { interval->setEnabled(!followsServer()); });
    const AppSettings::Bounds window = AppSettings::averagingWindowBounds;
    addNumber(
        QCoreApplication::translate("QuilloSettingsPage", "Speeds averaged over:"), window.minimum, window.maximum,
        QCoreApplication::translate("QuilloSettingsPage", " samples"), [s] { return s->avgCoefficient(); },
        [s](int value) { s->setAvgCoefficient(value); });

    addSection(QCoreApplication::translate("QuilloSettingsPage", "Torrents"));
    addStored(QCoreApplication::translate("QuilloSettingsPage", "Ask before removing torrents"), K::confirmTntDeleting,
              true);
    addStored(QCoreApplication::translate("QuilloSettingsPage", "Alternate row colors"), K::alternateRows, true);
    addSwitch(
        QCoreApplication::translate("QuilloSettingsPage", "Remember torrent lists between starts"),
        [s] { return s->rememberTntLists(); }, [s](bool on) { s->setRememberTntLists(on); });
    auto *forget = new QPushButton(QCoreApplication::translate("QuilloSettingsPage", "Forget"), this);
    forget->setToolTip(QCoreApplication::translate(
        "QuilloSettingsPage", "Removes the torrent lists kept on this computer to show them at once on the next start."));
    form()->addRow(QString(), forget);
    connect(forget, &QPushButton::clicked, this, &QuilloSettingsPage::forgetTntListsRequested);

    addSection(QCoreApplication::translate("QuilloSettingsPage", "Status bar"));
    addStored(QCoreApplication::translate("QuilloSettingsPage", "Session totals"), K::showSessionStats, true);
    addStored(QCoreApplication::translate("QuilloSettingsPage", "All-time totals"), K::showAllTimeStats, true);
    addStored(QCoreApplication::translate("QuilloSettingsPage", "Free disk space"), K::showFreeSpace, true);
    addStored(QCoreApplication::translate("QuilloSettingsPage", "Global ratio"), K::showGlobalRatio, true);

    addSection(QCoreApplication::translate("QuilloSettingsPage", "Tray"));
    addStored(QCoreApplication::translate("QuilloSettingsPage", "Close to tray"), K::closeToTray, false);
    addStored(QCoreApplication::translate("QuilloSettingsPage", "Start minimized"), K::startMinimized, false);

    // Builds without a release feed are updated by their package manager.
    if (!QStringView(AppInfo::releaseFeed).isEmpty()) {
        addSection(QCoreApplication::translate("QuilloSettingsPage", "Updates of Quillo"));
        static const QStringList intervals{QCoreApplication::translate("QuilloSettingsPage", "Never"),
                                           QCoreApplication::translate("QuilloSettingsPage", "Daily"),
                                           QCoreApplication::translate("QuilloSettingsPage", "Weekly"),
                                           QCoreApplication::translate("QuilloSettingsPage", "Monthly")};
        addChoice(
            QCoreApplication::translate("QuilloSettingsPage", "Check for updates:"), intervals,
            [s] { return intervals.at(static_cast<int>(s->updateCheckInterval())); },
            [s](const QString &name) {
                s->setUpdateCheckInterval(static_cast<UpdateInterval>(intervals.indexOf(name)));
            });
    }

    addSection(QCoreApplication::translate("QuilloSettingsPage", "Adding torrents"));
    addSwitch(
        QCoreApplication::translate("QuilloSettingsPage", "Show the add window before adding"),
        [s] { return s->showTntAddingWindow(); }, [s](bool on) { s->setShowTntAddingWindow(on); });
    addSwitch(
        QCoreApplication::translate("QuilloSettingsPage", "Move the .torrent file to the trash once added"),
        [s] { return s->autoDeleteTntFile(); }, [s](bool on) { s->setAutoDeleteTntFile(on); });
    addSwitch(
        QCoreApplication::translate("QuilloSettingsPage", "Also when the adding is cancelled"),
        [s] { return s->deleteTntFileOnAdditionCanceled(); },
        [s](bool on) { s->setDeleteTntFileOnAdditionCanceled(on); });

    addSection(QCoreApplication::translate("QuilloSettingsPage", "Finished downloads"));
    addSwitch(
        QCoreApplication::translate("QuilloSettingsPage", "Notify when downloads complete"),
        [s] { return s->notifyDownloadsComplete(); }, [s](bool on) { s->setNotifyDownloadsComplete(on); });
    // "Funk", the stored default, has no freedesktop sound: the theme's completion sound plays.
    addChoice(
        QCoreApplication::translate("QuilloSettingsPage", "Sound:"), themeSounds(),
        [s] {
            const QString sound = s->selectedSound();
            return sound == u"Funk" || sound == u"Default" ? defaultSound() : sound;
        },
        // Stored untranslated, so that a change of language keeps the choice.
        [s](const QString &name) { s->setSelectedSound(name == defaultSound() ? QStringLiteral("Default") : name); });
    addSwitch(
        QCoreApplication::translate("QuilloSettingsPage", "Ask for attention"), [s] { return s->animateDockIcon(); },
        [s](bool on) { s->setAnimateDockIcon(on); });
}

QString QuilloSettingsPage::defaultSound()
{
    return QCoreApplication::translate("QuilloSettingsPage", "Default");
}

QStringList QuilloSettingsPage::themeSounds()
{
    QStringList names;
    for (const QString &root : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        QDir themes(root + QStringLiteral("/sounds"));
        for (const QString &theme : themes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QDir stereo(themes.filePath(theme) + QStringLiteral("/stereo"));
            for (const QFileInfo &file : stereo.entryInfoList(
                     {QStringLiteral("*.oga"), QStringLiteral("*.ogg"), QStringLiteral("*.wav")}, QDir::Files))
                names << file.completeBaseName();
        }
    }
    names.sort();
    names.removeDuplicates();
    names.prepend(defaultSound());
    return names;
}
