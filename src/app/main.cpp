#include "api/AppInfo.h"
#include "ui/MainWindow.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QString::fromUtf16(AppInfo::name));
    QApplication::setApplicationVersion(QString::fromUtf16(AppInfo::version));
    QApplication::setOrganizationDomain(QStringLiteral("quillo.app"));
    QApplication::setDesktopFileName(QStringLiteral("app.quillo.Quillo"));

    MainWindow window;
    window.show();
    return QApplication::exec();
}
