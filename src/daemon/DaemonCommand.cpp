#include "daemon/DaemonCommand.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

#include <sys/utsname.h>

namespace DaemonCommand {

QString shellCommand(const QStringList &elements)
{
    QStringList quoted;
    for (QString element : elements)
        quoted.append(u'\'' + element.replace(u'\'', QStringLiteral("'\\''")) + u'\'');
    return QStringLiteral("clear; ") + quoted.join(u' ');
}

QString locateScript()
{
    const QString name = QStringLiteral("qbt-daemon.sh");
    const QString binaryFolder = QCoreApplication::applicationDirPath();
    for (const QString &candidate : {binaryFolder + u'/' + name, binaryFolder + QStringLiteral("/../share/quillo/") + name}) {
        if (QFileInfo(candidate).isFile())
            return QFileInfo(candidate).canonicalFilePath();
    }
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation, QStringLiteral("quillo/") + name);
}

QString processor()
{
    utsname name{};
    if (::uname(&name) == 0 && QByteArrayView(name.machine) == "aarch64")
        return QStringLiteral("arm64");
    return QStringLiteral("x86_64");
}

QString install(const QString &scriptPath, int port, const QString &passwordHash)
{
    return shellCommand({QStringLiteral("/bin/bash"), scriptPath, QStringLiteral("install"), QStringLiteral("--arch"),
                         processor(), QStringLiteral("--port"), QString::number(port), QStringLiteral("--username"),
                         username(), QStringLiteral("--password-hash"), passwordHash});
}

QString uninstall(const QString &scriptPath)
{
    return shellCommand({QStringLiteral("/bin/bash"), scriptPath, QStringLiteral("uninstall")});
}

} // namespace DaemonCommand
