#include "api/AppInfo.h"
#include "core/AppContext.h"
#include "core/Detached.h"
#include "core/KeychainStore.h"
#include "settings/UserDefaults.h"
#include "ui/MainWindow.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QString::fromUtf16(AppInfo::name));
    QApplication::setApplicationVersion(QString::fromUtf16(AppInfo::version));
    QApplication::setOrganizationDomain(QStringLiteral("quillo.app"));
    QApplication::setDesktopFileName(QStringLiteral("app.quillo.Quillo"));

    UserDefaults defaults;
    KeychainStore keychain;
    AppContext context(defaults, keychain);
    MainWindow window(context);
    window.show();
    // Polling slows down while the window is in the background.
    QObject::connect(&app, &QGuiApplication::applicationStateChanged, &context, [&context](Qt::ApplicationState state) {
        context.setAppState(state == Qt::ApplicationActive ? AppContext::AppState::foreground
                                                           : AppContext::AppState::background);
    });

    for (const ClientConfiguration &configuration : context.clientConfigurations()) {
        if (configuration.isCurrent) {
            detached(context.selectConfiguration(configuration.id));
            break;
        }
    }
    return QApplication::exec();
}
