#pragma once

#include <QMenu>
#include <QSet>

class AppContext;
class TntCommands;

// The torrent table's context menu over the torrents it acts on: the clicked row, or the whole
// selection when the clicked row is part of it. Toggles show as checked when every torrent has
// them on, and clicking turns them on for all unless all have them already.
class TntContextMenu : public QMenu
{
    Q_OBJECT

public:
    // `hashes` in the order the table shows them, which "Copy" keeps.
    TntContextMenu(AppContext &context, TntCommands &commands, QStringList hashes, QWidget *parent = nullptr);

    // What "Copy" puts on the clipboard: one line per torrent, in the order of `hashes`.
    enum class CopyField { name, hash, magnetLink };
    static QString copyText(const AppContext &context, const QStringList &hashes, CopyField field);

private:
    void addCopyMenu();
    void addCategoryMenu();
    void addTagsMenu();
    void addToggles();

    AppContext &m_context;
    TntCommands &m_commands;
    QStringList m_ordered;
    QSet<QString> m_hashes;
};
