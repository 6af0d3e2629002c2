#include "api/AppInfo.h"
#include "core/AppContext.h"
#include "core/InstanceChannel.h"
#include "core/KeychainStore.h"
#include "core/UpdateSchedule.h"
#include "settings/UserDefaults.h"
#include "support/Detached.h"
#include "ui/CommandLine.h"
#include "ui/MainMenus.h"
#include "ui/MainWindow.h"
#include "ui/StartupTrace.h"
#include "ui/ThemedIcon.h"
#include "ui/TntActions.h"
#include "ui/TntAddingFlow.h"
#include "ui/TntTableView.h"
#include "ui/Translation.h"
#include "ui/TrayIcon.h"
#include "ui/UpdatePresenter.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QLocale>
#include <QLoggingCategory>
#include <QTableView>

Q_LOGGING_CATEGORY(lcMain, "Quillo")

int main(int argc, char *argv[])
{
    QElapsedTimer sinceStart;
    sinceStart.start();
    QApplication::setApplicationName(QString::fromUtf16(AppInfo::name));
    QApplication::setApplicationVersion(QString::fromUtf16(AppInfo::version));
    // Answered without a display, as on a server over ssh: they print and end the program.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    if (CommandLine::asksForHelpOrVersion(arguments)) {
        QCoreApplication console(argc, argv);
        installTranslations(console, QLocale::system());
        CommandLine::ofProgram(arguments);
    }

    QApplication app(argc, argv);
    installTranslations(app, QLocale::system());
    const QString id = QString::fromUtf16(AppInfo::id);
    QApplication::setOrganizationDomain(QStringLiteral("quillo.app"));
    QApplication::setDesktopFileName(id);
    QApplication::setWindowIcon(themedIcon(id, QStringLiteral("hicolor/scalable/apps/") + id));
    const CommandLine command = CommandLine::ofProgram(QApplication::arguments());

    // A second launch hands what it was given to the running instance, whose connection is open.
    if (InstanceChannel::sendToRunning(command.message()))
        return 0;
    InstanceChannel channel;
    channel.listen();

    UserDefaults defaults;
    KeychainStore keychain;
    AppContext context(defaults, keychain);
    MainWindow window(context);
    StartupTrace::watch(window, *window.tntTable()->table(), sinceStart);
    TrayIcon tray(context, window);
    // Torrents wait until the connection is ready, and open once it is.
    const auto follow = [&window](const CommandLine &given) {
        window.addingFlow()->open(given.sources);
        if (given.addFile)
            window.tntActions()->action(TntActions::Id::addFiles)->trigger();
        if (given.addLink)
            window.tntActions()->action(TntActions::Id::addLinks)->trigger();
    };
    QObject::connect(&channel, &InstanceChannel::received, &window, [&](const QStringList &message) {
        QString error;
        const std::optional<CommandLine> given = CommandLine::read(message, &error);
        if (!given) {
            qCWarning(lcMain, "Ignored a second launch: %s", qUtf8Printable(error));
            return;
        }
        follow(*given);
        if (!given->minimized)
            tray.showWindow();
    });
    tray.start(command.minimized || defaults.boolValue(UserDefaultsKey::startMinimized, false));
    follow(command);

    const QUrl feed(QString::fromUtf16(AppInfo::releaseFeed));
    if (!feed.isEmpty()) {
        auto *updates = new UpdatePresenter(feed, window);
        QObject::connect(window.menus(), &MainMenus::updateCheckRequested, updates, &UpdatePresenter::check);
        auto *schedule = new UpdateSchedule(context.settings(), feed,
                                            QVersionNumber::fromString(QString::fromUtf16(AppInfo::version)), updates);
        QObject::connect(schedule, &UpdateSchedule::available, updates, &UpdatePresenter::show);
        schedule->start();
    }
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
