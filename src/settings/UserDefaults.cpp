#include "settings/UserDefaults.h"

#include "settings/SettingsFile.h"

UserDefaults::UserDefaults(QObject *parent)
    : QObject(parent)
    , m_settings(std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Quillo"),
                                             QStringLiteral("Quillo")))
{
    checkFile();
}

UserDefaults::UserDefaults(const QString &iniPath, QObject *parent)
    : QObject(parent)
    , m_settings(std::make_unique<QSettings>(iniPath, QSettings::IniFormat))
{
    checkFile();
}

void UserDefaults::checkFile()
{
    const QString path = m_settings->fileName();
    m_setAsidePath = SettingsFile::setAsideIfUnreadable(path);
    if (m_setAsidePath)
        m_settings = std::make_unique<QSettings>(path, QSettings::IniFormat); // the fresh file
    else if (!m_settings->contains(QLatin1String(SettingsFile::formatKey)))
        m_settings->setValue(QLatin1String(SettingsFile::formatKey), SettingsFile::format);
}

void UserDefaults::registerDefaults(const QHash<UserDefaultsKey, QVariant> &values)
{
    m_registered.insert(values);
}

bool UserDefaults::contains(UserDefaultsKey key) const
{
    return m_settings->contains(keyName(key));
}

QVariant UserDefaults::value(UserDefaultsKey key) const
{
    const QVariant stored = m_settings->value(keyName(key));
    return stored.isValid() ? stored : m_registered.value(key);
}

// The INI file keeps every value as text: typed reads convert and fall back when the text is not
// of the type (a hand-edited file must not break the application).
bool UserDefaults::boolValue(UserDefaultsKey key, bool fallback) const
{
    const QVariant stored = value(key);
    if (!stored.isValid())
        return fallback;
    const QString text = stored.toString().toLower();
    if (text == u"true" || text == u"1")
        return true;
    if (text == u"false" || text == u"0")
        return false;
    return fallback;
}

qint64 UserDefaults::integerValue(UserDefaultsKey key, qint64 fallback) const
{
    bool ok = false;
    const qint64 number = value(key).toLongLong(&ok);
    return ok ? number : fallback;
}

QString UserDefaults::stringValue(UserDefaultsKey key, const QString &fallback) const
{
    const QVariant stored = value(key);
    return stored.isValid() ? stored.toString() : fallback;
}

QByteArray UserDefaults::dataValue(UserDefaultsKey key) const
{
    return value(key).toByteArray();
}

void UserDefaults::setValue(UserDefaultsKey key, const QVariant &value)
{
    m_settings->setValue(keyName(key), value);
    Q_EMIT valueChanged(key);
}

void UserDefaults::remove(UserDefaultsKey key)
{
    m_settings->remove(keyName(key));
    Q_EMIT valueChanged(key);
}
