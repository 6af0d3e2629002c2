#pragma once

#include <QMenu>

class TntActions;

// The torrent table's context menu: the window's torrent actions, pointed while it lives at the
// torrents it was opened on (the clicked row, or the whole selection when that row is part of it).
class TntContextMenu : public QMenu
{
public:
    // `hashes` in the order the table shows them, which Copy keeps.
    TntContextMenu(TntActions &actions, QStringList hashes, QWidget *parent = nullptr);
};
