#include "ui/TntActions.h"

#include "core/AppContext.h"
#include "support/Detached.h"
#include "ui/ThemedIcon.h"
#include "ui/TntAddingFlow.h"
#include "ui/TntCommands.h"
#include "ui/TntExport.h"
#include "ui/TntReveal.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

#include <algorithm>

TntActions::TntActions(AppContext &context, TntCommands &commands, TntAddingFlow &adding, TntReveal &reveal,
                       QWidget *window)
    : QObject(window)
    , m_context(context)
    , m_commands(commands)
    , m_reveal(reveal)
    , m_export(new TntExport(context, window))
    , m_copyMenu(new QMenu(tr("Copy"), window))
    , m_categoryMenu(new QMenu(tr("Category"), window))
    , m_tagsMenu(new QMenu(tr("Tags"), window))
{
    const auto onToolbar = [](QAction *action, const char *identifier, QStringView themeName, QStringView bundled,
                              const QKeySequence &shortcut) {
        action->setObjectName(QString::fromLatin1(identifier));
        action->setIcon(themedIcon(themeName, bundled));
        action->setShortcut(shortcut);
        // Keys act where the torrents are: Delete in the filter field still deletes text.
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        // Keys act on the selection, a menu on its own torrents: menus leave the keys out.
        action->setShortcutVisibleInContextMenu(false);
    };
    onToolbar(add(Id::addFiles, tr("Add Torrent Files"), [&adding](bool) { adding.chooseFiles(); }), "add_tnt_file",
              u"document-open", u"actions/open", QKeySequence::Open);
    onToolbar(add(Id::addLinks, tr("Add Links"), [&adding](bool) { adding.enterLinks(); }), "add_tnt_link",
              u"insert-link", u"actions/link", QKeySequence(Qt::CTRL | Qt::Key_U));
    // Adding needs no selection: its keys act anywhere in the window.
    for (const Id id : {Id::addFiles, Id::addLinks})
        action(id)->setShortcutContext(Qt::WindowShortcut);
    // Remove, Start and Stop are titled for the menu they are in: see showState.
    onToolbar(add(Id::remove, QString(), [this](bool) { m_commands.remove(targetSet()); }), "delete_tnt",
              u"edit-delete", u"actions/delete", QKeySequence::Delete);
    QAction *withFiles = add(Id::removeWithFiles, tr("Remove with Files"),
                             [this](bool) { m_commands.remove(targetSet(), TntCommands::Removal::withFiles); });
    withFiles->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Delete));
    withFiles->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    withFiles->setShortcutVisibleInContextMenu(false);
    onToolbar(add(Id::start, QString(), [this](bool) { m_commands.start(targetSet()); }), "start_tnt",
              u"media-playback-start", u"actions/start", QKeySequence(Qt::CTRL | Qt::Key_S));
    onToolbar(add(Id::stop, QString(), [this](bool) { m_commands.stop(targetSet()); }), "stop_tnt",
              u"media-playback-stop", u"sidebar/stop", QKeySequence(Qt::CTRL | Qt::Key_P));
    onToolbar(add(Id::minimumPriority, tr("Minimum priority"), [this](bool) { detached(m_context.minimumPriority()); }),
              "min_tnt_prio", u"go-bottom", u"actions/bottom", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Minus));
    onToolbar(
        add(Id::decreasePriority, tr("Decrease priority"), [this](bool) { detached(m_context.decreasePriority()); }),
        "decrease_tnt_prio", u"go-down", u"sidebar/down", QKeySequence(Qt::CTRL | Qt::Key_Minus));
    onToolbar(
        add(Id::increasePriority, tr("Increase priority"), [this](bool) { detached(m_context.increasePriority()); }),
        "increase_tnt_prio", u"go-up", u"sidebar/up", QKeySequence(Qt::CTRL | Qt::Key_Plus));
    onToolbar(add(Id::maximumPriority, tr("Maximum priority"), [this](bool) { detached(m_context.maximumPriority()); }),
              "max_tnt_prio", u"go-top", u"actions/top", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Plus));

    add(Id::forceStart, tr("Force start"), [this](bool) { detached(m_context.setForceStart(targetSet(), true)); });
    add(Id::reannounce, tr("Force reannounce"), [this](bool) { detached(m_context.reannounceTnts(targetSet())); });
    add(Id::recheck, tr("Force recheck"), [this](bool) { detached(m_context.recheckTnts(targetSet())); });
    add(Id::rename, tr("Rename..."), [this](bool) { m_commands.rename(*targetSet().cbegin()); });
    add(Id::setLocation, tr("Set location..."), [this](bool) { m_commands.editLocation(targetSet()); });
    add(Id::exportTnt, tr("Export .torrent..."),
        [this](bool) { m_export->choose(targetList().value_or(QStringList())); });
    add(Id::addTrackers, tr("Add trackers..."), [this](bool) { m_commands.addTrackers(*targetSet().cbegin()); });
    add(Id::addPeers, tr("Add peers..."), [this](bool) { m_commands.addPeers(targetSet()); });
    using Direction = TransferLimits::Direction;
    add(Id::limitDownload, tr("Limit download rate..."),
        [this](bool) { m_commands.limitRate(targetSet(), Direction::down); });
    add(Id::limitUpload, tr("Limit upload rate..."),
        [this](bool) { m_commands.limitRate(targetSet(), Direction::up); });
    add(Id::limitShare, tr("Limit share ratio..."), [this](bool) { m_commands.limitShare(targetSet()); });
    add(Id::globalDownloadLimit, tr("Global Download Limit..."),
        [this](bool) { m_commands.limitGlobalRate(Direction::down); });
    add(Id::globalUploadLimit, tr("Global Upload Limit..."),
        [this](bool) { m_commands.limitGlobalRate(Direction::up); });
    add(Id::shutDownServer, tr("Shut Down Server..."), [this](bool) { m_commands.shutDownServer(); });
    add(Id::statistics, tr("Statistics..."), [this](bool) { m_commands.showStatistics(); });
    add(Id::serverLog, tr("Server Log"), [this](bool) { m_commands.showServerLog(); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_L));
    add(Id::search, tr("Search..."), [this, &adding](bool) { m_commands.showSearch(adding); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F));
    QAction *alternative = add(Id::alternativeSpeedLimits, tr("Alternative Speed Limits"), [this](bool) {
        // Only the server changes the mode: the item shows it, a click asks for the other one.
        showTransferState();
        detached(m_context.toggleSpeedLimitsMode());
    });
    alternative->setCheckable(true);
    connect(&context.serverState(), &GlobalTransferInfo::changed, this, &TntActions::showTransferState);
    add(Id::showInFileManager, tr("Show in File Manager"),
        [this](bool) { m_reveal.showTnts(targetList().value_or(QStringList())); });

    const auto toggle = [this](Id id, const QString &title, std::function<void(bool)> run) {
        add(id, title, std::move(run))->setCheckable(true);
    };
    toggle(Id::autoManagement, tr("Automatic torrent management"),
           [this](bool on) { detached(m_context.setAutoManagement(targetSet(), on)); });
    toggle(Id::firstLastPiecesFirst, tr("Download first and last pieces first"),
           [this](bool) { detached(m_context.toggleFirstLastPiecePrio(targetSet())); });
    toggle(Id::sequentialDownload, tr("Download in sequential order"),
           [this](bool) { detached(m_context.toggleSequentialDownload(targetSet())); });
    toggle(Id::superSeeding, tr("Super seeding mode"),
           [this](bool on) { detached(m_context.setSuperSeeding(targetSet(), on)); });

    // One line per torrent, in the order the menu lists them.
    const auto copyLines = [this](const QString &title, std::function<QString(const TntModel &)> field) {
        m_copyMenu->addAction(title, this, [this, field = std::move(field)] {
            QStringList lines;
            for (const QString &hash : targetList().value_or(QStringList())) {
                if (const TntModel *tnt = m_context.tntCollection().find(hash))
                    lines << field(*tnt);
            }
            QGuiApplication::clipboard()->setText(lines.join(u'\n'));
        });
    };
    copyLines(tr("Name"), [](const TntModel &tnt) { return tnt.name(); });
    copyLines(tr("Hash"), [](const TntModel &tnt) { return tnt.id(); });
    copyLines(tr("Magnet link"), [](const TntModel &tnt) { return tnt.magnetUri(); });

    connect(&context, &AppContext::connectionStateChanged, this, &TntActions::showState);
    connect(&context, &AppContext::selectionChanged, this, &TntActions::showState);
    showState();
    showTransferState();
}

QAction *TntActions::add(Id id, const QString &title, std::function<void(bool)> run)
{
    auto *action = new QAction(title, this);
    connect(action, &QAction::triggered, this, std::move(run));
    m_actions[static_cast<std::size_t>(id)] = action;
    return action;
}

void TntActions::actFor(QObject *menu, std::optional<QStringList> hashes, Wording wording)
{
    m_menus.push_back({menu, std::move(hashes), wording});
    connect(menu, &QObject::destroyed, this, [this, menu] { drop(menu); });
    showState();
    readTnts();
}

void TntActions::drop(const QObject *menu)
{
    const auto found =
        std::find_if(m_menus.cbegin(), m_menus.cend(), [menu](const Target &target) { return target.menu == menu; });
    if (found == m_menus.cend())
        return;
    const bool wasShown = found + 1 == m_menus.cend();
    m_menus.erase(found);
    if (!wasShown)
        return;
    showState();
    if (!m_menus.empty())
        readTnts();
}

std::optional<QStringList> TntActions::targetList() const
{
    if (!m_menus.empty())
        return m_menus.back().hashes;
    const QSet<QString> &selected = m_context.selectedTnts();
    return selected.isEmpty() ? std::nullopt : std::optional(selected.values());
}

QSet<QString> TntActions::targetSet() const
{
    if (m_menus.empty())
        return m_context.selectedTnts();
    const std::optional<QStringList> &hashes = m_menus.back().hashes;
    return hashes ? QSet<QString>(hashes->cbegin(), hashes->cend()) : QSet<QString>();
}

void TntActions::showState()
{
    // How many torrents they act on, none for every torrent; a large selection is counted, not listed.
    std::optional<qsizetype> count;
    if (!m_menus.empty() && m_menus.back().hashes)
        count = m_menus.back().hashes->size();
    else if (m_menus.empty() && !m_context.selectedTnts().isEmpty())
        count = m_context.selectedTnts().size();
    // A list kept from the last time may name torrents the server no longer has.
    const bool connected = m_context.isAuthorized() && m_context.isCurrent();
    const bool listed = count > 0;
    for (std::size_t index = 0; index < m_actions.size(); ++index) {
        // An empty list stands for no torrent here, but for every torrent to the operations.
        bool enabled = connected && (!count || listed);
        switch (static_cast<Id>(index)) {
        case Id::addFiles:
        case Id::addLinks:
        case Id::minimumPriority:
        case Id::decreasePriority:
        case Id::increasePriority:
        case Id::maximumPriority: enabled = connected; break;
        case Id::rename:
        case Id::addTrackers: enabled = connected && count == 1; break;
        case Id::alternativeSpeedLimits:
        case Id::globalDownloadLimit:
        case Id::globalUploadLimit:
        case Id::shutDownServer:
        case Id::statistics:
        case Id::serverLog:
        case Id::search: enabled = connected; break;
        case Id::addPeers: // sends nothing for no list
        case Id::limitDownload:
        case Id::limitUpload:
        case Id::limitShare:
        case Id::showInFileManager: enabled = connected && listed; break;
        case Id::exportTnt: enabled = connected && listed && m_context.serverFeatures().exportsTntFiles(); break;
        default: break;
        }
        m_actions[index]->setEnabled(enabled);
    }
    m_copyMenu->menuAction()->setEnabled(listed);
    m_categoryMenu->menuAction()->setEnabled(connected && listed);
    m_tagsMenu->menuAction()->setEnabled(connected && listed);

    const bool entry = !m_menus.empty() && m_menus.back().wording == Wording::entry;
    action(Id::start)->setText(entry ? tr("Start Torrents") : tr("Start"));
    action(Id::stop)->setText(entry ? tr("Stop Torrents") : tr("Stop"));
    action(Id::remove)->setText(entry ? tr("Remove Torrents") : tr("Remove"));
}

void TntActions::showTransferState()
{
    action(Id::alternativeSpeedLimits)->setChecked(m_context.serverState().useAltSpeedLimits());
}

void TntActions::readTnts()
{
    const QStringList listed = targetList().value_or(QStringList());
    QList<const TntModel *> tnts;
    tnts.reserve(listed.size());
    for (const QString &hash : listed) {
        if (const TntModel *tnt = m_context.tntCollection().find(hash))
            tnts << tnt;
    }
    const auto everyTnt = [&](bool (TntModel::*flag)() const) {
        return !listed.isEmpty() && tnts.size() == listed.size() &&
               std::all_of(tnts.cbegin(), tnts.cend(), [flag](const TntModel *tnt) { return (tnt->*flag)(); });
    };
    action(Id::autoManagement)->setChecked(everyTnt(&TntModel::autoTmm));
    action(Id::firstLastPiecesFirst)->setChecked(everyTnt(&TntModel::fLPiecePrio));
    action(Id::sequentialDownload)->setChecked(everyTnt(&TntModel::seqDl));
    action(Id::superSeeding)->setChecked(everyTnt(&TntModel::superSeeding));
    fillCategoryMenu(tnts);
    fillTagsMenu(tnts, listed.size());
    action(Id::showInFileManager)
        ->setText(listed.isEmpty() || m_reveal.isConfigured(listed) ? tr("Show in File Manager")
                                                                    : tr("Show in File Manager(not configured)"));
}

void TntActions::fillCategoryMenu(const QList<const TntModel *> &tnts)
{
    QSet<QString> current;
    for (const TntModel *tnt : tnts)
        current.insert(tnt->category());
    m_categoryMenu->clear();
    m_categoryMenu->addAction(tr("Reset"), this, [this] { detached(m_context.setCategory(targetSet(), QString())); });
    m_categoryMenu->addSeparator();
    for (const QString &name : m_context.categories().keys()) {
        QAction *choice =
            m_categoryMenu->addAction(name, this, [this, name] { detached(m_context.setCategory(targetSet(), name)); });
        choice->setCheckable(true);
        choice->setChecked(current == QSet<QString>{name});
    }
}

void TntActions::fillTagsMenu(const QList<const TntModel *> &tnts, qsizetype listed)
{
    // How many of the torrents carry each tag.
    QHash<QString, qsizetype> carriers;
    QSet<QString> all;
    for (const TntModel *tnt : tnts) {
        if (tnt->tags().isEmpty())
            continue;
        for (const QString &tag : tnt->tags().split(QStringLiteral(", "))) {
            ++carriers[tag];
            all.insert(tag);
        }
    }
    m_tagsMenu->clear();
    QAction *removeAll = m_tagsMenu->addAction(tr("Remove all"), this,
                                               [this, all] { detached(m_context.removeTags(targetSet(), all)); });
    removeAll->setEnabled(!all.isEmpty());
    m_tagsMenu->addAction(tr("Add tags..."), this, [this] { m_commands.addTags(targetSet()); });
    m_tagsMenu->addSeparator();
    for (const QString &tag : m_context.tags()) {
        QAction *choice = m_tagsMenu->addAction(tag);
        choice->setCheckable(true);
        choice->setChecked(listed > 0 && carriers.value(tag) == listed);
        // Checked by the click: the tag was missing on some.
        connect(choice, &QAction::triggered, this, [this, tag](bool checked) {
            if (checked)
                detached(m_context.addTags(targetSet(), {tag}));
            else
                detached(m_context.removeTags(targetSet(), {tag}));
        });
    }
}
