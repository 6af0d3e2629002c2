#include "api/AppInfo.h"
#include "core/AppContext.h"
#include "support/Detached.h"
#include "core/InstanceChannel.h"
#include "core/KeychainStore.h"
#include "settings/UserDefaults.h"
#include "ui/MainWindow.h"
#include "ui/TntAddingFlow.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QString::fromUtf16(AppInfo::name));
    QApplication::setApplicationVersion(QString::fromUtf16(AppInfo::version));
    QApplication::setOrganizationDomain(QStringLiteral("quillo.app"));
    QApplication::setDesktopFileName(QStringLiteral("app.quillo.Quillo"));

    // Torrents given to a second launch (files, magnet links) go to the running instance, whose
    // connection is already open. Paths are made absolute here, where they were meant.
    QStringList sources;
    for (const QUrl &source : TntAddingFlow::sourcesOf(QApplication::arguments().mid(1)))
        sources << source.toString(QUrl::FullyEncoded);
    if (InstanceChannel::sendToRunning(sources))
        return 0;
    InstanceChannel channel;
    channel.listen();

    UserDefaults defaults;
    KeychainStore keychain;
    AppContext context(defaults, keychain);
    MainWindow window(context);
    window.show();
    const auto open = [&window](const QStringList &received) {
        window.addingFlow()->open(TntAddingFlow::sourcesOf(received));
        window.raise();
        window.activateWindow();
    };
    QObject::connect(&channel, &InstanceChannel::received, &window, open);
    // Before the connection is ready these wait, and open once it is.
    if (!sources.isEmpty())
        open(sources);
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
