#include "settings/UserDefaultsKey.h"

QString keyName(UserDefaultsKey key)
{
    switch (key) {
    case UserDefaultsKey::dataTransferRateAvgCoefficient: return QStringLiteral("dataTransferRateAvgCoefficient");
    case UserDefaultsKey::skipedVersion: return QStringLiteral("skipedVersion");
    case UserDefaultsKey::tntTableCconfiguration: return QStringLiteral("tntTableCconfiguration");
    case UserDefaultsKey::selectedTntDetailTab: return QStringLiteral("selectedTntDetailTab");
    case UserDefaultsKey::tntContentTableConfiguration: return QStringLiteral("tntContentTableConfiguration");
    case UserDefaultsKey::tntTrackerTableConfiguration: return QStringLiteral("tntTrackerTableConfiguration");
    case UserDefaultsKey::tntPeerTableConfiguration: return QStringLiteral("tntPeerTableConfiguration");
    case UserDefaultsKey::showSessionStats: return QStringLiteral("showSessionStats");
    case UserDefaultsKey::showAllTimeStats: return QStringLiteral("showAllTimeStats");
    case UserDefaultsKey::showFreeSpace: return QStringLiteral("showFreeSpace");
    case UserDefaultsKey::showGlobalRatio: return QStringLiteral("showGlobalRatio");
    case UserDefaultsKey::clientConfigurations: return QStringLiteral("clientConfigurations");
    case UserDefaultsKey::didMigrateServerConfigurationsToDefaults: return QStringLiteral("didMigrateServerConfigurationsToDefaults");
    case UserDefaultsKey::selectedSidebarItems: return QStringLiteral("selectedSidebarItems");
    case UserDefaultsKey::statesIsExpanded: return QStringLiteral("statesIsExpanded");
    case UserDefaultsKey::categoriesIsExpanded: return QStringLiteral("categoriesIsExpanded");
    case UserDefaultsKey::tagsIsExpanded: return QStringLiteral("tagsIsExpanded");
    case UserDefaultsKey::trackersIsExpanded: return QStringLiteral("trackersIsExpanded");
    case UserDefaultsKey::selectedSettingsTab: return QStringLiteral("selectedSettingsTab");
    case UserDefaultsKey::alternateRows: return QStringLiteral("alternateRows");
    case UserDefaultsKey::confirmTntDeleting: return QStringLiteral("confirmTntDeleting");
    case UserDefaultsKey::showTntAddingWindow: return QStringLiteral("showTntAddingWindow");
    case UserDefaultsKey::autoDeleteTntFile: return QStringLiteral("autoDeleteTntFile");
    case UserDefaultsKey::deleteTntFileOnAdditionCanceled: return QStringLiteral("deleteTntFileOnAdditionCanceled");
    case UserDefaultsKey::selectedBrowser: return QStringLiteral("selectedBrowser");
    case UserDefaultsKey::dlFinishedNotification: return QStringLiteral("dlFinishedNotification");
    case UserDefaultsKey::animateDockIcon: return QStringLiteral("animateDockIcon");
    case UserDefaultsKey::setRefreshIntervalAuto: return QStringLiteral("setRefreshIntervalAuto");
    case UserDefaultsKey::refreshInterval: return QStringLiteral("refreshInterval");
    case UserDefaultsKey::refreshMode: return QStringLiteral("refreshMode");
    case UserDefaultsKey::intervalIncreaseValue: return QStringLiteral("intervalIncreaseValue");
    case UserDefaultsKey::updateCheckInterval: return QStringLiteral("updateCheckInterval");
    case UserDefaultsKey::lastCheckForUpdate: return QStringLiteral("lastCheckForUpdate");
    case UserDefaultsKey::dlRateRatio: return QStringLiteral("dlRateRatio");
    case UserDefaultsKey::upRateRatio: return QStringLiteral("upRateRatio");
    case UserDefaultsKey::altDlRateRatio: return QStringLiteral("altDlRateRatio");
    case UserDefaultsKey::altUpRateRatio: return QStringLiteral("altUpRateRatio");
    case UserDefaultsKey::pathMapping: return QStringLiteral("pathMapping");
    case UserDefaultsKey::shareAnonymousStatistics: return QStringLiteral("shareAnonymousStatistics");
    case UserDefaultsKey::telemetryInstallID: return QStringLiteral("telemetryInstallID");
    case UserDefaultsKey::lastTelemetryPing: return QStringLiteral("lastTelemetryPing");
    case UserDefaultsKey::telemetryForgetSentAt: return QStringLiteral("telemetryForgetSentAt");
    case UserDefaultsKey::categoryForNewTnt: return QStringLiteral("categoryForNewTnt");
    case UserDefaultsKey::tagsForNewTnt: return QStringLiteral("tagsForNewTnt");
    case UserDefaultsKey::tntAddingTableConfiguration: return QStringLiteral("tntAddingTableConfiguration");
    case UserDefaultsKey::sidebarSplitSizes: return QStringLiteral("sidebarSplitSizes");
    case UserDefaultsKey::tntDetailSplitSizes: return QStringLiteral("tntDetailSplitSizes");
    case UserDefaultsKey::tntDetailsIsHidden: return QStringLiteral("tntDetailsIsHidden");
    case UserDefaultsKey::sidebarIsHidden: return QStringLiteral("sidebarIsHidden");
    case UserDefaultsKey::statusBarIsHidden: return QStringLiteral("statusBarIsHidden");
    case UserDefaultsKey::toolbarIsHidden: return QStringLiteral("toolbarIsHidden");
    case UserDefaultsKey::mainWindowGeometry: return QStringLiteral("mainWindowGeometry");
    case UserDefaultsKey::notifyDownloadsComplete: return QStringLiteral("notifyDownloadsComplete");
    case UserDefaultsKey::closeToTray: return QStringLiteral("closeToTray");
    case UserDefaultsKey::startMinimized: return QStringLiteral("startMinimized");
    case UserDefaultsKey::rememberTntLists: return QStringLiteral("rememberTntLists");
    case UserDefaultsKey::serverLogWindowGeometry: return QStringLiteral("serverLogWindowGeometry");
    case UserDefaultsKey::serverLogLevels: return QStringLiteral("serverLogLevels");
    case UserDefaultsKey::searchWindowGeometry: return QStringLiteral("searchWindowGeometry");
    case UserDefaultsKey::searchResultsColumns: return QStringLiteral("searchResultsColumns");
    case UserDefaultsKey::rssWindowGeometry: return QStringLiteral("rssWindowGeometry");
    }
    Q_UNREACHABLE();
}
