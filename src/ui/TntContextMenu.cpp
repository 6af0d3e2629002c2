#include "ui/TntContextMenu.h"

#include "ui/TntActions.h"

TntContextMenu::TntContextMenu(TntActions &actions, QStringList hashes, QWidget *parent)
    : QMenu(parent)
{
    setObjectName(QStringLiteral("tntContextMenu"));
    setAttribute(Qt::WA_DeleteOnClose);
    actions.actFor(this, std::move(hashes));
    using Id = TntActions::Id;
    const auto add = [this, &actions](std::initializer_list<Id> ids) {
        for (const Id id : ids)
            addAction(actions.action(id));
    };
    add({Id::start, Id::stop, Id::forceStart, Id::remove});
    addSeparator();
    add({Id::showInFileManager});
    addSeparator();
    addMenu(actions.copyMenu());
    addSeparator();
    add({Id::reannounce, Id::recheck});
    addSeparator();
    add({Id::rename, Id::setLocation, Id::exportTnt});
    addMenu(actions.categoryMenu());
    addMenu(actions.tagsMenu());
    add({Id::addTrackers, Id::addPeers, Id::limitDownload, Id::limitUpload, Id::limitShare});
    addSeparator();
    add({Id::autoManagement, Id::firstLastPiecesFirst, Id::sequentialDownload, Id::superSeeding});
}
