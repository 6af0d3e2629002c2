#include "ui/ServerMenu.h"

#include "core/AppContext.h"
#include "support/Detached.h"
#include "ui/DisplayName.h"
#include "ui/PlatformTexts.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QMessageBox>
#include <QPushButton>

namespace {

QString escapedMnemonics(QString text)
{
    return text.replace(u'&', QStringLiteral("&&"));
}

} // namespace

ServerMenu::ServerMenu(AppContext &context, QWidget *parent)
    : QMenu(parent)
    , m_context(context)
{
    setToolTipsVisible(true);
    connect(&m_context, &AppContext::configurationsChanged, this, &ServerMenu::scheduleRebuild);
    connect(&m_context, &AppContext::connectionStateChanged, this, &ServerMenu::scheduleRebuild);
    connect(this, &QMenu::aboutToShow, this, [this] {
        if (m_rebuildPending)
            rebuild();
    });
    rebuild();
}

// The context announces changes from inside this menu's own triggered actions (deleting a
// connection): the actions may not be deleted under them, so the rebuild waits for the event loop.
void ServerMenu::scheduleRebuild()
{
    if (m_rebuildPending)
        return;
    m_rebuildPending = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_rebuildPending)
                rebuild();
        },
        Qt::QueuedConnection);
}

void ServerMenu::rebuild()
{
    m_rebuildPending = false;
    clear();

    const auto &current = m_context.clientConfiguration();
    setTitle(current ? escapedMnemonics(displayName(*current))
                     : QCoreApplication::translate("ServerMenu", "No Connection"));
    setIcon(QIcon::fromTheme(current && m_context.isAuthorized() ? QStringLiteral("network-wired")
                                                                 : QStringLiteral("network-offline")));

    bool hasRemote = false;
    bool hasLocal = false;
    addSection(QCoreApplication::translate("ServerMenu", "Servers"));
    for (const ClientConfiguration &configuration : m_context.clientConfigurations()) {
        if (!configuration.isLocal) {
            addConnection(configuration);
            hasRemote = true;
        }
    }

    addSection(PlatformTexts::thisMac());
    for (const ClientConfiguration &configuration : m_context.clientConfigurations()) {
        if (configuration.isLocal) {
            addConnection(configuration);
            hasLocal = true;
        }
    }
    if (!hasLocal) {
        QAction *install =
            addAction(QIcon::fromTheme(QStringLiteral("computer")),
                      QCoreApplication::translate("ServerMenu", "Install on %1…").arg(PlatformTexts::thisMac()));
        connect(install, &QAction::triggered, this, &ServerMenu::installLocalRequested);
    } else {
        QAction *reinstall = addAction(QIcon::fromTheme(QStringLiteral("view-refresh")),
                                       QCoreApplication::translate("ServerMenu", "Reinstall qBittorrent…"));
        connect(reinstall, &QAction::triggered, this, &ServerMenu::installLocalRequested);
        QAction *remove =
            addAction(QCoreApplication::translate("ServerMenu", "Delete from %1…").arg(PlatformTexts::thisMac()));
        connect(remove, &QAction::triggered, this, &ServerMenu::uninstallLocalRequested);
    }

    addSeparator();
    QAction *add = addAction(QIcon::fromTheme(QStringLiteral("list-add")),
                             QCoreApplication::translate("ServerMenu", "Add Connection…"));
    connect(add, &QAction::triggered, this, &ServerMenu::addConnectionRequested);
    if (current && !current->isLocal) {
        QAction *edit = addAction(QIcon::fromTheme(QStringLiteral("document-edit")),
                                  QCoreApplication::translate("ServerMenu", "Edit Connection…"));
        const QUuid id = current->id;
        connect(edit, &QAction::triggered, this, [this, id] { Q_EMIT editConnectionRequested(id); });
    }
    QAction *deleteAll = addAction(QIcon::fromTheme(QStringLiteral("edit-delete")),
                                   QCoreApplication::translate("ServerMenu", "Delete All Connections…"));
    deleteAll->setEnabled(hasRemote);
    connect(deleteAll, &QAction::triggered, this, &ServerMenu::confirmDeleteAll);

    addSeparator();
    addAction(PlatformTexts::optionClickToDelete())->setEnabled(false);
}

void ServerMenu::addConnection(const ClientConfiguration &configuration)
{
    const auto &current = m_context.clientConfiguration();
    const bool connected = current && current->id == configuration.id && m_context.isAuthorized();
    QAction *action = addAction(
        QIcon::fromTheme(connected ? QStringLiteral("network-wired") : QStringLiteral("network-offline")),
        QStringLiteral("%1 — %2").arg(escapedMnemonics(displayName(configuration)),
                                      connected ? QCoreApplication::translate("ServerMenu", "Connected")
                                                : QCoreApplication::translate("ServerMenu", "Not Connected")));
    action->setCheckable(true);
    action->setChecked(current && current->id == configuration.id);
    const QUuid id = configuration.id;
    connect(action, &QAction::triggered, this, [this, id] { choose(id); });
}

void ServerMenu::choose(QUuid id)
{
    // The modifier of the click that chose the item: the menu has no other way to tell.
    if (QGuiApplication::keyboardModifiers().testFlag(Qt::AltModifier)) {
        detached(m_context.removeConfiguration(id));
        return;
    }
    const auto &current = m_context.clientConfiguration();
    if (current && current->id == id && m_context.isAuthorized())
        return;
    detached(m_context.selectConfiguration(id));
}

QMessageBox *ServerMenu::confirmDeleteAll()
{
    QWidget *window = parentWidget() ? parentWidget()->window() : nullptr;
    auto *box = new QMessageBox(
        QMessageBox::Warning, QCoreApplication::translate("ServerMenu", "Delete all remote connections?"),
        QCoreApplication::translate("ServerMenu", "Delete all remote connections?"), QMessageBox::NoButton, window);
    box->setInformativeText(QCoreApplication::translate(
        "ServerMenu",
        "All remote connections and their saved passwords will be deleted. This action can't be undone."));
    QPushButton *deleteAll =
        box->addButton(QCoreApplication::translate("ServerMenu", "Delete All"), QMessageBox::DestructiveRole);
    box->setDefaultButton(box->addButton(QCoreApplication::translate("ServerMenu", "Cancel"), QMessageBox::RejectRole));
    box->setAttribute(Qt::WA_DeleteOnClose);
    connect(box, &QMessageBox::finished, this, [this, box, deleteAll] {
        if (box->clickedButton() == deleteAll)
            detached(m_context.removeAllConfigurations());
    });
    box->open();
    return box;
}
