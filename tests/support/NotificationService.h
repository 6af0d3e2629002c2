#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

// The desktop's notification service, as far as Quillo uses it, on the session bus the test runs
// on (tests/support/with-secret-service starts a private one). It records what it is sent.
class NotificationService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Received
    {
        QString summary;
        QString body;
        QVariantMap hints;
    };
    QList<Received> received;

    bool publish()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        return bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
                                  QDBusConnection::ExportAllSlots)
            && bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
    }

    void withdraw()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.unregisterService(QStringLiteral("org.freedesktop.Notifications"));
        bus.unregisterObject(QStringLiteral("/org/freedesktop/Notifications"));
    }

public Q_SLOTS:
    uint Notify(const QString &, uint, const QString &, const QString &summary, const QString &body, const QStringList &,
                const QVariantMap &hints, int)
    {
        received.append({summary, body, hints});
        return static_cast<uint>(received.size());
    }
};
