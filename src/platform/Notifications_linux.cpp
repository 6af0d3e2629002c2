#include "platform/Notifications.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QLoggingCategory>
#include <QUuid>
#include <QVariantMap>

Q_LOGGING_CATEGORY(lcNotifications, "Notifications")

namespace Platform::Notifications {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");

// The freedesktop sound theme has no "Funk"; its completion sound is the closest.
QString themeSound(const QString &sound)
{
    if (sound.isEmpty() || sound == u"Default" || sound == u"Funk")
        return QStringLiteral("complete");
    return sound;
}

} // namespace

void post(const Notification &notification)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        qCInfo(lcNotifications, "No session bus: \"%s\" not shown", qUtf8Printable(notification.body));
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/Notifications"),
                                                       service, QStringLiteral("Notify"));
    const QVariantMap hints{
        {QStringLiteral("category"), QStringLiteral("transfer.complete")},
        {QStringLiteral("desktop-entry"), QStringLiteral("app.quillo.Quillo")},
        {QStringLiteral("sound-name"), themeSound(notification.sound)},
        {QStringLiteral("x-quillo-thread"), notification.threadId},
        // Every notification its own: a fresh identifier, never replacing another.
        {QStringLiteral("x-quillo-id"), QUuid::createUuid().toString(QUuid::WithoutBraces)},
    };
    call << QStringLiteral("Quillo") << 0u << QStringLiteral("quillo") << notification.title << notification.body
         << QStringList() << hints << -1;
    // Not asked whether the service runs: the bus starts one that is installed but not running yet.
    // The application owns the watcher, so an answer still out when Quillo quits leaks nothing.
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [body = notification.body](QDBusPendingCallWatcher *finished) {
                         if (finished->isError())
                             qCInfo(lcNotifications, "No notification service: \"%s\" not shown (%s)",
                                    qUtf8Printable(body), qUtf8Printable(finished->error().message()));
                         finished->deleteLater();
                     });
}

} // namespace Platform::Notifications
