#pragma once

#include <QListWidget>

class AppContext;
class QMenu;
class TntCommands;

// The detail pane's HTTP Sources tab: the torrent's web seeds, with a menu that copies them and,
// where the server edits them (ServerFeatures::editsWebSeeds()), adds, edits and removes them.
class TntHttpSources : public QListWidget
{
    Q_OBJECT

public:
    TntHttpSources(AppContext &context, TntCommands &commands, QWidget *parent);

    // The menu for the rows selected now; it deletes itself when closed.
    QMenu *menu();

private:
    void showWebSeeds();
    QStringList selectedUrls() const;

    AppContext &m_context;
    TntCommands &m_commands;
};
