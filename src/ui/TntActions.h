#pragma once

#include <QObject>
#include <QSet>
#include <QStringList>

#include <array>
#include <functional>
#include <optional>
#include <vector>

class AppContext;
class QAction;
class QMenu;
class QWidget;
class TntAddingFlow;
class TntCommands;
class TntExport;
class TntModel;
class TntReveal;

// The window's torrent and transfer actions, made once: the toolbar, the table's context menu and the sidebar's
// entry menus show these same objects, so what is enabled or checked agrees wherever they appear.
// They act on the table's selection, or on a menu's torrents while that menu lives.
class TntActions : public QObject
{
    Q_OBJECT

public:
    enum class Id {
        addFiles,
        addLinks,
        start,
        stop,
        forceStart,
        remove,
        removeWithFiles,
        reannounce,
        recheck,
        rename,
        setLocation,
        exportTnt, // where the server hands out .torrent files
        addTrackers,
        addPeers,
        limitDownload,
        limitUpload,
        limitShare,
        // "(not configured)" while no mapping applies to them: it then leads to the mapping settings.
        showInFileManager,
        // The server's: checked while the server reports the alternative limits on.
        alternativeSpeedLimits,
        globalDownloadLimit,
        globalUploadLimit,
        shutDownServer,
        statistics,
        serverLog,
        search,
        // Queue priority moves the selection whatever a menu is over: the server's call takes no list.
        minimumPriority,
        decreasePriority,
        increasePriority,
        maximumPriority,
        // Checked when every torrent has it on. A click sets automatic management and super seeding
        // for all, on unless all had it; the server flips the other two torrent by torrent.
        autoManagement,
        firstLastPiecesFirst,
        sequentialDownload,
        superSeeding, // the last
    };
    // A sidebar entry's menu is about a label or a state, so it says "Start Torrents".
    enum class Wording { rows, entry };

    // The window owns them with their menus.
    TntActions(AppContext &context, TntCommands &commands, TntAddingFlow &adding, TntReveal &reveal,
               QWidget *window);

    QAction *action(Id id) const { return m_actions[static_cast<std::size_t>(id)]; }
    QMenu *copyMenu() const { return m_copyMenu; }
    QMenu *categoryMenu() const { return m_categoryMenu; }
    QMenu *tagsMenu() const { return m_tagsMenu; }

    // Points the actions at `hashes` while `menu` lives, then back at what they were on before.
    // `hashes` in the order Copy lists them; none for every torrent, an empty list for no torrent.
    void actFor(QObject *menu, std::optional<QStringList> hashes, Wording wording = Wording::rows);
    // The switches, the label menus and the reveal's title as the torrents are now: read as a menu
    // opens rather than at every change of a selection that may hold every torrent.
    void readTnts();

private:
    struct Target
    {
        const QObject *menu;
        std::optional<QStringList> hashes;
        Wording wording;
    };

    QAction *add(Id id, const QString &title, std::function<void(bool checked)> run);
    std::optional<QStringList> targetList() const;
    // Empty for every torrent, as the operations take it.
    QSet<QString> targetSet() const;
    void showState();
    void showTransferState();
    void fillCategoryMenu(const QList<const TntModel *> &tnts);
    // A tag is checked when all `listed` torrents carry it.
    void fillTagsMenu(const QList<const TntModel *> &tnts, qsizetype listed);
    void drop(const QObject *menu);

    AppContext &m_context;
    TntCommands &m_commands;
    TntReveal &m_reveal;
    TntExport *m_export;
    std::array<QAction *, static_cast<std::size_t>(Id::superSeeding) + 1> m_actions{};
    QMenu *m_copyMenu;
    QMenu *m_categoryMenu;
    QMenu *m_tagsMenu;
    std::vector<Target> m_menus; // the newest last; a menu may close before a newer one
};
