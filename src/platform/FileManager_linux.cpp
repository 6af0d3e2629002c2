#include "platform/FileManager.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QUrl>

Q_LOGGING_CATEGORY(lcFileManager, "FileManager")

namespace Platform::FileManager {

namespace {

void openFolders(const QStringList &paths)
{
    QStringList folders;
    for (const QString &path : paths) {
        const QString folder = QFileInfo(path).absolutePath();
        if (!folders.contains(folder))
            folders.append(folder);
    }
    for (const QString &folder : folders)
        QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

} // namespace

void showItems(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        openFolders(paths);
        return;
    }
    QStringList uris;
    for (const QString &path : paths)
        uris.append(QString::fromUtf8(QUrl::fromLocalFile(path).toEncoded()));
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << uris << QString();
    // Not asked whether one runs: the bus starts a file manager that is installed but not running.
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [paths](QDBusPendingCallWatcher *finished) {
                         if (finished->isError()) {
                             qCInfo(lcFileManager, "No file manager shows items (%s): opening their folders",
                                    qUtf8Printable(finished->error().message()));
                             openFolders(paths);
                         }
                         finished->deleteLater();
                     });
}

void open(const QString &path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

} // namespace Platform::FileManager
