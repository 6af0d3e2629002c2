#pragma once

#include "settings/UserDefaultsKey.h"

#include <QHash>
#include <QObject>
#include <QSettings>
#include <QVariant>

#include <memory>
#include <optional>

// The per-user settings store: an INI file (XDG config folder by default) with a registration
// domain whose values are read until the user writes their own.
class UserDefaults : public QObject
{
    Q_OBJECT

public:
    // The application's own store in the user's config folder.
    explicit UserDefaults(QObject *parent = nullptr);
    // A store in a file of its own (tests, demo sessions).
    explicit UserDefaults(const QString &iniPath, QObject *parent = nullptr);

    void registerDefaults(const QHash<UserDefaultsKey, QVariant> &values);

    bool contains(UserDefaultsKey key) const;
    QVariant value(UserDefaultsKey key) const; // stored, else registered, else invalid
    bool boolValue(UserDefaultsKey key, bool fallback = false) const;
    qint64 integerValue(UserDefaultsKey key, qint64 fallback = 0) const;
    QString stringValue(UserDefaultsKey key, const QString &fallback = {}) const;
    QByteArray dataValue(UserDefaultsKey key) const;

    // Keys outside the application's own set: records of older versions and safety copies.
    QVariant rawValue(const QString &key) const { return m_settings->value(key); }
    void setRawValue(const QString &key, const QVariant &value) { m_settings->setValue(key, value); }

    void setValue(UserDefaultsKey key, const QVariant &value);
    void remove(UserDefaultsKey key);
    void sync() { m_settings->sync(); }
    QString fileName() const { return m_settings->fileName(); }
    // Where the file found unreadable at start was moved; none when it was read whole.
    const std::optional<QString> &setAsidePath() const { return m_setAsidePath; }

Q_SIGNALS:
    void valueChanged(UserDefaultsKey key);

private:
    void checkFile();

    std::unique_ptr<QSettings> m_settings;
    std::optional<QString> m_setAsidePath;
    QHash<UserDefaultsKey, QVariant> m_registered;
};
