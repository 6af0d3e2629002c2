#include "settings/AppSettings.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcSettings, "AppSettings")

void AppSettings::registerDefaults(UserDefaults &defaults)
{
    using K = UserDefaultsKey;
    defaults.registerDefaults({{K::refreshInterval, 2000},
                               {K::intervalIncreaseValue, 1000},
                               {K::dataTransferRateAvgCoefficient, 5},
                               {K::showTntAddingWindow, true},
                               {K::deleteTntFileOnAdditionCanceled, false},
                               {K::autoDeleteTntFile, false},
                               {K::animateDockIcon, true},
                               {K::shareAnonymousStatistics, true}});
}

UpdateInterval AppSettings::updateIntervalFromStored(const QVariant &stored)
{
    bool ok = false;
    const int position = stored.toInt(&ok);
    if (!ok || position < 0 || position > static_cast<int>(UpdateInterval::mounce))
        return UpdateInterval::weak;
    return static_cast<UpdateInterval>(position);
}

RefreshMode AppSettings::refreshModeFromStored(const QVariant &stored, const QVariant &followServer)
{
    bool ok = false;
    const int position = stored.toInt(&ok);
    if (ok && position >= 0 && position <= static_cast<int>(RefreshMode::adaptive))
        return static_cast<RefreshMode>(position);
    return !stored.isValid() && followServer.toBool() ? RefreshMode::server : RefreshMode::adaptive;
}

AppSettings::AppSettings(UserDefaults &defaults, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
{
    using K = UserDefaultsKey;
    registerDefaults(defaults);
    m_updateCheckInterval = updateIntervalFromStored(defaults.value(K::updateCheckInterval));
    m_refreshInterval = refreshIntervalBounds.clamp(defaults.integerValue(K::refreshInterval, 2000));
    m_intervalIncreaseValue = intervalIncreaseBounds.clamp(defaults.integerValue(K::intervalIncreaseValue, 1000));
    m_refreshMode = refreshModeFromStored(defaults.value(K::refreshMode), defaults.value(K::setRefreshIntervalAuto));
    m_showTntAddingWindow = defaults.boolValue(K::showTntAddingWindow, true);
    m_autoDeleteTntFile = defaults.boolValue(K::autoDeleteTntFile, false);
    m_deleteTntFileOnAdditionCanceled = defaults.boolValue(K::deleteTntFileOnAdditionCanceled, false);
    m_selectedSound = defaults.stringValue(K::dlFinishedNotification, QStringLiteral("Funk"));
    m_animateDockIcon = defaults.boolValue(K::animateDockIcon, true);
    m_notifyDownloadsComplete = defaults.boolValue(K::notifyDownloadsComplete, true);
    m_pathMapping = PathMap::decodeList(defaults.dataValue(K::pathMapping));
    m_shareAnonymousStatistics = defaults.boolValue(K::shareAnonymousStatistics, true);
    m_avgCoefficient = averagingWindowBounds.clamp(defaults.integerValue(K::dataTransferRateAvgCoefficient, 5));
    m_rememberTntLists = defaults.boolValue(K::rememberTntLists, true);
}

template<typename T>
void AppSettings::write(T &field, const T &value, UserDefaultsKey key, const QVariant &stored)
{
    if (field == value)
        return;
    field = value;
    store(key, stored);
}

void AppSettings::store(UserDefaultsKey key, const QVariant &stored)
{
    m_defaults.setValue(key, stored);
    qCDebug(lcSettings, "%s changed", qUtf8Printable(keyName(key)));
    Q_EMIT changed(key);
}

void AppSettings::setUpdateCheckInterval(UpdateInterval value)
{
    write(m_updateCheckInterval, value, UserDefaultsKey::updateCheckInterval, static_cast<int>(value));
}

void AppSettings::setRefreshInterval(int milliseconds)
{
    milliseconds = refreshIntervalBounds.clamp(milliseconds);
    write(m_refreshInterval, milliseconds, UserDefaultsKey::refreshInterval, milliseconds);
}

void AppSettings::setIntervalIncreaseValue(int milliseconds)
{
    milliseconds = intervalIncreaseBounds.clamp(milliseconds);
    write(m_intervalIncreaseValue, milliseconds, UserDefaultsKey::intervalIncreaseValue, milliseconds);
}

void AppSettings::setRefreshMode(RefreshMode mode)
{
    write(m_refreshMode, mode, UserDefaultsKey::refreshMode, static_cast<int>(mode));
}

void AppSettings::setShowTntAddingWindow(bool value)
{
    write(m_showTntAddingWindow, value, UserDefaultsKey::showTntAddingWindow, value);
}

void AppSettings::setAutoDeleteTntFile(bool value)
{
    write(m_autoDeleteTntFile, value, UserDefaultsKey::autoDeleteTntFile, value);
}

void AppSettings::setDeleteTntFileOnAdditionCanceled(bool value)
{
    write(m_deleteTntFileOnAdditionCanceled, value, UserDefaultsKey::deleteTntFileOnAdditionCanceled, value);
}

void AppSettings::setSelectedSound(const QString &name)
{
    write(m_selectedSound, name, UserDefaultsKey::dlFinishedNotification, name);
}

void AppSettings::setAnimateDockIcon(bool value)
{
    write(m_animateDockIcon, value, UserDefaultsKey::animateDockIcon, value);
}

void AppSettings::setNotifyDownloadsComplete(bool value)
{
    write(m_notifyDownloadsComplete, value, UserDefaultsKey::notifyDownloadsComplete, value);
}

void AppSettings::setRememberTntLists(bool value)
{
    write(m_rememberTntLists, value, UserDefaultsKey::rememberTntLists, value);
}

// Mappings are equal by identity; what is stored is compared, so that an edited mapping is written.
void AppSettings::setPathMapping(const QList<PathMap> &maps)
{
    const QByteArray stored = PathMap::encodeList(maps);
    const bool edited = stored != PathMap::encodeList(m_pathMapping);
    m_pathMapping = maps;
    if (edited)
        store(UserDefaultsKey::pathMapping, stored);
}

void AppSettings::setShareAnonymousStatistics(bool value)
{
    write(m_shareAnonymousStatistics, value, UserDefaultsKey::shareAnonymousStatistics, value);
}

void AppSettings::setAvgCoefficient(int samples)
{
    samples = averagingWindowBounds.clamp(samples);
    const int before = m_avgCoefficient;
    write(m_avgCoefficient, samples, UserDefaultsKey::dataTransferRateAvgCoefficient, samples);
    if (before != m_avgCoefficient)
        Q_EMIT dataTransferRateAvgCoefficientDidChange(samples);
}
