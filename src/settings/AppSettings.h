#pragma once

#include "settings/PathMap.h"
#include "settings/UserDefaults.h"

#include <QObject>

#include <algorithm>

// How often to look for a new version; stored as its position. The misspellings are the
// program's own case names.
enum class UpdateInterval { disabled, day, weak, mounce };

// Where the pause between polls comes from: the setting alone, the server's own refresh interval,
// or the setting stretched to at least seven times the server's answer time. Stored as its position.
enum class RefreshMode { fixed, server, adaptive };

// The settings that logic outside the views needs, loaded once and written through on every change.
class AppSettings : public QObject
{
    Q_OBJECT

public:
    // The range a number may take, from a settings file or a setter alike; the settings window
    // offers the same.
    struct Bounds
    {
        int minimum;
        int maximum;

        int clamp(qint64 value) const { return static_cast<int>(std::clamp<qint64>(value, minimum, maximum)); }
    };
    // Faster than twice a second keeps a server busy; slower than a minute is no longer live.
    static constexpr Bounds refreshIntervalBounds{500, 60'000};
    static constexpr Bounds intervalIncreaseBounds{0, 60'000};
    // Samples averaged per rate; every torrent holds two windows.
    static constexpr Bounds averagingWindowBounds{1, 60};

    explicit AppSettings(UserDefaults &defaults, QObject *parent = nullptr);

    // The registration domain: read until the user writes a value of their own.
    static void registerDefaults(UserDefaults &defaults);
    static UpdateInterval updateIntervalFromStored(const QVariant &stored);
    // Before there was a mode, a switch chose the server's interval; short of that, the pause adapts.
    static RefreshMode refreshModeFromStored(const QVariant &stored, const QVariant &followServer);

    UserDefaults &defaults() const { return m_defaults; }

    UpdateInterval updateCheckInterval() const { return m_updateCheckInterval; }
    int refreshInterval() const { return m_refreshInterval; }
    int intervalIncreaseValue() const { return m_intervalIncreaseValue; }
    RefreshMode refreshMode() const { return m_refreshMode; }
    bool showTntAddingWindow() const { return m_showTntAddingWindow; }
    bool autoDeleteTntFile() const { return m_autoDeleteTntFile; }
    bool deleteTntFileOnAdditionCanceled() const { return m_deleteTntFileOnAdditionCanceled; }
    QString selectedSound() const { return m_selectedSound; }
    bool animateDockIcon() const { return m_animateDockIcon; }
    bool notifyDownloadsComplete() const { return m_notifyDownloadsComplete; }
    const QList<PathMap> &pathMapping() const { return m_pathMapping; }
    bool shareAnonymousStatistics() const { return m_shareAnonymousStatistics; }
    int avgCoefficient() const { return m_avgCoefficient; }
    bool rememberTntLists() const { return m_rememberTntLists; }

    void setUpdateCheckInterval(UpdateInterval value);
    void setRefreshInterval(int milliseconds);
    void setIntervalIncreaseValue(int milliseconds);
    void setRefreshMode(RefreshMode mode);
    void setShowTntAddingWindow(bool value);
    void setAutoDeleteTntFile(bool value);
    void setDeleteTntFileOnAdditionCanceled(bool value);
    void setSelectedSound(const QString &name);
    void setAnimateDockIcon(bool value);
    void setNotifyDownloadsComplete(bool value);
    void setPathMapping(const QList<PathMap> &maps);
    void setShareAnonymousStatistics(bool value);
    void setAvgCoefficient(int samples);
    void setRememberTntLists(bool value);

Q_SIGNALS:
    void changed(UserDefaultsKey key);
    void dataTransferRateAvgCoefficientDidChange(int samples);

private:
    template<typename T>
    void write(T &field, const T &value, UserDefaultsKey key, const QVariant &stored);
    void store(UserDefaultsKey key, const QVariant &stored);

    UserDefaults &m_defaults;
    UpdateInterval m_updateCheckInterval;
    int m_refreshInterval;
    int m_intervalIncreaseValue;
    RefreshMode m_refreshMode;
    bool m_showTntAddingWindow;
    bool m_autoDeleteTntFile;
    bool m_deleteTntFileOnAdditionCanceled;
    QString m_selectedSound;
    bool m_animateDockIcon;
    bool m_notifyDownloadsComplete;
    QList<PathMap> m_pathMapping;
    bool m_shareAnonymousStatistics;
    int m_avgCoefficient;
    bool m_rememberTntLists;
};
