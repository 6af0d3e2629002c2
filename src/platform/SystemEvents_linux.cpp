#include "platform/SystemEvents.h"

#include <QDBusConnection>
#include <QLoggingCategory>
#include <QNetworkInformation>

Q_LOGGING_CATEGORY(lcSystemEvents, "SystemEvents")

namespace Platform {

SystemEvents::SystemEvents(QObject *parent)
    : QObject(parent)
{
    // logind says PrepareForSleep(true) before sleeping and PrepareForSleep(false) on waking.
    QDBusConnection::systemBus().connect(QStringLiteral("org.freedesktop.login1"),
                                         QStringLiteral("/org/freedesktop/login1"),
                                         QStringLiteral("org.freedesktop.login1.Manager"),
                                         QStringLiteral("PrepareForSleep"), this, SLOT(prepareForSleep(bool)));
    // Without a network backend (no NetworkManager) only the wake is watched.
    if (QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability)) {
        connect(QNetworkInformation::instance(), &QNetworkInformation::reachabilityChanged, this,
                [this](QNetworkInformation::Reachability reachability) {
                    if (reachability == QNetworkInformation::Reachability::Online) {
                        qCInfo(lcSystemEvents, "Network is back");
                        Q_EMIT connectivityRestored();
                    }
                });
    }
}

void SystemEvents::prepareForSleep(bool sleeping)
{
    if (sleeping)
        return;
    qCInfo(lcSystemEvents, "Woke from sleep");
    Q_EMIT connectivityRestored();
}

} // namespace Platform
