#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

// The desktop's file manager as far as Quillo asks it, published on a session-bus connection of its
// own so that the calls really cross the bus (run the test through with-secret-service).
class FileManagerService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QList<QStringList> shown; // the URIs of each ShowItems call

    ~FileManagerService() override { publish(false); }

    bool isConnected() const { return m_bus.isConnected(); }

    bool publish(bool published)
    {
        if (!published) {
            m_bus.unregisterService(serviceName());
            m_bus.unregisterObject(objectPath());
            return true;
        }
        return m_bus.registerObject(objectPath(), this, QDBusConnection::ExportAllSlots)
            && m_bus.registerService(serviceName());
    }

public Q_SLOTS:
    void ShowItems(const QStringList &uris, const QString &) { shown.append(uris); }

private:
    static QString serviceName() { return QStringLiteral("org.freedesktop.FileManager1"); }
    static QString objectPath() { return QStringLiteral("/org/freedesktop/FileManager1"); }

    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("fileManager"));
};
