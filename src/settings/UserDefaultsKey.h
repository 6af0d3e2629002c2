#pragma once

#include <QString>

// Every setting of the application itself, by its key in the per-user settings store. The
// misspellings ("skipedVersion", "tntTableCconfiguration") are the keys.
enum class UserDefaultsKey {
    dataTransferRateAvgCoefficient,
    skipedVersion,
    tntTableCconfiguration,
    selectedTntDetailTab,
    tntContentTableConfiguration,
    tntTrackerTableConfiguration,
    tntPeerTableConfiguration,
    showSessionStats,
    showAllTimeStats,
    showFreeSpace,
    showGlobalRatio,
    clientConfigurations,
    didMigrateServerConfigurationsToDefaults,
    selectedSidebarItems,
    statesIsExpanded,
    categoriesIsExpanded,
    tagsIsExpanded,
    trackersIsExpanded,
    selectedSettingsTab,
    alternateRows,
    confirmTntDeleting,
    showTntAddingWindow,
    autoDeleteTntFile,
    deleteTntFileOnAdditionCanceled,
    selectedBrowser,
    dlFinishedNotification,
    animateDockIcon,
    setRefreshIntervalAuto, // read once, when no refreshMode is stored yet
    refreshMode,
    refreshInterval,
    intervalIncreaseValue,
    updateCheckInterval,
    lastCheckForUpdate,
    dlRateRatio,
    upRateRatio,
    altDlRateRatio,
    altUpRateRatio,
    pathMapping,
    shareAnonymousStatistics,
    telemetryInstallID,
    lastTelemetryPing,
    telemetryForgetSentAt,
    categoryForNewTnt,
    tagsForNewTnt,
    tntAddingTableConfiguration,
    // The main window's layout: where its two splits stand ("220,980"), which of its panels are
    // hidden, and the window's own place and size.
    sidebarSplitSizes,
    tntDetailSplitSizes,
    tntDetailsIsHidden,
    sidebarIsHidden,
    statusBarIsHidden,
    toolbarIsHidden,
    mainWindowGeometry,
    // Whether a finished download is announced with a notification.
    notifyDownloadsComplete,
    // The tray: closing the window hides it there; Quillo starts there without showing the window.
    closeToTray,
    startMinimized,
    // Whether each server's torrent list is kept in the cache between starts, to paint at once.
    rememberTntLists,
    // The server log window's place and size, and the levels of the execution log it shows (the
    // server's bits, 1 normal to 8 critical).
    serverLogWindowGeometry,
    serverLogLevels,
    // The search window's place and size, and its results' columns (widths, order, sorting) as the
    // last tab closed or shown had them.
    searchWindowGeometry,
    searchResultsColumns,
    // The RSS window's place and size.
    rssWindowGeometry,
};

QString keyName(UserDefaultsKey key);
