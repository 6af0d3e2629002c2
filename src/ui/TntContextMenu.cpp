#include "ui/TntContextMenu.h"

#include "core/AppContext.h"
#include "support/Detached.h"
#include "ui/TntCommands.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QStyle>

#include <algorithm>

namespace {

QIcon themed(const char *name, QStyle::StandardPixmap fallback)
{
    return QIcon::fromTheme(QString::fromLatin1(name), QApplication::style()->standardIcon(fallback));
}

} // namespace

TntContextMenu::TntContextMenu(AppContext &context, TntCommands &commands, QStringList hashes, QWidget *parent)
    : QMenu(parent)
    , m_context(context)
    , m_commands(commands)
    , m_ordered(std::move(hashes))
    , m_hashes(m_ordered.cbegin(), m_ordered.cend())
{
    setObjectName(QStringLiteral("tntContextMenu"));
    setAttribute(Qt::WA_DeleteOnClose);
    const QSet<QString> hashes_ = m_hashes;
    addAction(themed("media-playback-start", QStyle::SP_MediaPlay), QStringLiteral("Start"), this,
              [this, hashes_] { m_commands.start(hashes_); });
    addAction(themed("media-playback-stop", QStyle::SP_MediaStop), QStringLiteral("Stop"), this,
              [this, hashes_] { m_commands.stop(hashes_); });
    addAction(QStringLiteral("Force start"), this,
              [this, hashes_] { detached(m_context.setForceStart(hashes_, true)); });
    addAction(themed("edit-delete", QStyle::SP_TrashIcon), QStringLiteral("Remove"), this,
              [this, hashes_] { m_commands.remove(hashes_); });
    addSeparator();
    addCopyMenu();
    addSeparator();
    addAction(QStringLiteral("Force reannounce"), this,
              [this, hashes_] { detached(m_context.reannounceTnts(hashes_)); });
    addAction(QStringLiteral("Force recheck"), this, [this, hashes_] { detached(m_context.recheckTnts(hashes_)); });
    addSeparator();
    QAction *rename =
        addAction(QStringLiteral("Rename..."), this, [this, hashes_] { m_commands.rename(*hashes_.cbegin()); });
    rename->setEnabled(m_hashes.size() == 1);
    addAction(QStringLiteral("Set location..."), this, [this, hashes_] { m_commands.editLocation(hashes_); });
    addCategoryMenu();
    addTagsMenu();
    QAction *trackers = addAction(QStringLiteral("Add trackers..."), this,
                                  [this, hashes_] { m_commands.addTrackers(*hashes_.cbegin()); });
    trackers->setEnabled(m_hashes.size() == 1);
    addAction(QStringLiteral("Add peers..."), this, [this, hashes_] { m_commands.addPeers(hashes_); });
    addSeparator();
    addToggles();
}

void TntContextMenu::addCopyMenu()
{
    QMenu *copy = addMenu(QStringLiteral("Copy"));
    const QStringList ordered = m_ordered;
    const auto add = [this, copy, ordered](const QString &title, CopyField field) {
        copy->addAction(title, this, [this, ordered, field] {
            QGuiApplication::clipboard()->setText(copyText(m_context, ordered, field));
        });
    };
    add(QStringLiteral("Name"), CopyField::name);
    add(QStringLiteral("Hash"), CopyField::hash);
    add(QStringLiteral("Magnet link"), CopyField::magnetLink);
}

QString TntContextMenu::copyText(const AppContext &context, const QStringList &hashes, CopyField field)
{
    QStringList lines;
    for (const QString &hash : hashes) {
        const TntModel *tnt = context.tntCollection().find(hash);
        if (!tnt)
            continue;
        switch (field) {
        case CopyField::name: lines << tnt->name(); break;
        case CopyField::hash: lines << tnt->id(); break;
        case CopyField::magnetLink: lines << tnt->magnetUri(); break;
        }
    }
    return lines.join(u'\n');
}

void TntContextMenu::addCategoryMenu()
{
    QMenu *menu = addMenu(QStringLiteral("Category"));
    const QSet<QString> hashes = m_hashes;
    QSet<QString> current;
    for (const QString &hash : hashes) {
        if (const TntModel *tnt = m_context.tntCollection().find(hash))
            current.insert(tnt->category());
    }
    menu->addAction(QStringLiteral("Reset"), this,
                    [this, hashes] { detached(m_context.setCategory(hashes, QString())); });
    menu->addSeparator();
    for (const QString &name : m_context.categories().keys()) {
        QAction *choice =
            menu->addAction(name, this, [this, hashes, name] { detached(m_context.setCategory(hashes, name)); });
        choice->setCheckable(true);
        choice->setChecked(current == QSet<QString>{name});
    }
}

void TntContextMenu::addTagsMenu()
{
    QMenu *menu = addMenu(QStringLiteral("Tags"));
    const QSet<QString> hashes = m_hashes;
    // How many of the torrents carry each tag.
    QHash<QString, qsizetype> carriers;
    QSet<QString> all;
    for (const QString &hash : hashes) {
        const TntModel *tnt = m_context.tntCollection().find(hash);
        if (!tnt || tnt->tags().isEmpty())
            continue;
        for (const QString &tag : tnt->tags().split(QStringLiteral(", "))) {
            ++carriers[tag];
            all.insert(tag);
        }
    }
    QAction *removeAll = menu->addAction(QStringLiteral("Remove all"), this,
                                         [this, hashes, all] { detached(m_context.removeTags(hashes, all)); });
    removeAll->setEnabled(!all.isEmpty());
    menu->addAction(QStringLiteral("Add tags..."), this, [this, hashes] { m_commands.addTags(hashes); });
    menu->addSeparator();
    for (const QString &tag : m_context.tags()) {
        const bool onAll = carriers.value(tag) == hashes.size();
        QAction *choice = menu->addAction(tag, this, [this, hashes, tag, onAll] {
            if (onAll)
                detached(m_context.removeTags(hashes, {tag}));
            else
                detached(m_context.addTags(hashes, {tag}));
        });
        choice->setCheckable(true);
        choice->setChecked(onAll);
    }
}

void TntContextMenu::addToggles()
{
    const QSet<QString> hashes = m_hashes;
    const auto everyTnt = [this](bool (TntModel::*flag)() const) {
        bool all = true;
        for (const QString &hash : m_hashes) {
            const TntModel *tnt = m_context.tntCollection().find(hash);
            all = all && tnt && (tnt->*flag)();
        }
        return all;
    };
    const auto toggle = [this](const QString &title, bool on, auto slot) {
        QAction *action = addAction(title, this, slot);
        action->setCheckable(true);
        action->setChecked(on);
    };
    const bool autoTmm = everyTnt(&TntModel::autoTmm);
    toggle(QStringLiteral("Automatic tnt management"), autoTmm,
           [this, hashes, autoTmm] { detached(m_context.setAutoManagement(hashes, !autoTmm)); });
    toggle(QStringLiteral("Download first and last pieces first"), everyTnt(&TntModel::fLPiecePrio),
           [this, hashes] { detached(m_context.toggleFirstLastPiecePrio(hashes)); });
    toggle(QStringLiteral("Download in sequential order"), everyTnt(&TntModel::seqDl),
           [this, hashes] { detached(m_context.toggleSequentialDownload(hashes)); });
    const bool superSeeding = everyTnt(&TntModel::superSeeding);
    toggle(QStringLiteral("Super seeding mode"), superSeeding,
           [this, hashes, superSeeding] { detached(m_context.setSuperSeeding(hashes, !superSeeding)); });
}
