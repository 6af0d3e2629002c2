#pragma once

#include "adding/FileTreeBuilder.h"

#include <QCoroTask>
#include <QList>
#include <QPair>
#include <QWidget>

class AppContext;
class QLabel;
class QMenu;
class QStackedWidget;
class QTabWidget;
class QTreeView;
class PiecesBar;
class TntCommands;
class TntContentTree;
class TntHttpSources;

// The pane below the torrent table: the selected torrent's General, Trackers, Peers, HTTP Sources,
// Content and Speed, or a line saying why there is nothing to show. Being visible is what makes the
// application context load the details; the open tab says which, and is kept in
// "selectedTntDetailTab".
class TntDetailPane : public QWidget
{
    Q_OBJECT

public:
    TntDetailPane(AppContext &context, TntCommands &commands, QWidget *parent = nullptr);
    ~TntDetailPane() override;

    QTabWidget *tabs() const { return m_tabs; }
    // What the pane says while none or several torrents are selected; empty while it shows one.
    QString emptyText() const;
    // Everything the General tab shows, "Title: value" a line, for tests and accessibility.
    QString generalText() const;
    QTreeView *trackerView() const { return m_trackerView; }
    TntHttpSources *httpSources() const { return m_httpSources; }
    QTreeView *peerView() const { return m_peerView; }
    TntContentTree *contentTree() const { return m_content; }
    PiecesBar *piecesBar() const { return m_piecesBar; }

    // The context menus for the rows selected now; each deletes itself when closed.
    QMenu *trackerMenu();
    QMenu *peerMenu();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QWidget *makeGeneralTab();
    QWidget *makeTrackersTab();
    QWidget *makePeersTab();
    void showTarget();
    void showGeneral();
    QCoro::Task<> showFiles();
    QStringList selectedTrackerUrls() const;
    QSet<QString> selectedPeerAddresses() const;

    AppContext &m_context;
    TntCommands &m_commands;
    QStackedWidget *m_pages;
    QLabel *m_empty;
    QTabWidget *m_tabs;
    QList<QPair<QString, QLabel *>> m_generalFields;
    PiecesBar *m_piecesBar = nullptr;
    QTreeView *m_trackerView = nullptr;
    QTreeView *m_peerView = nullptr;
    TntHttpSources *m_httpSources;
    TntContentTree *m_content;
    FileTreeBuilder m_builder;
    quint64 m_filesBuild = 0; // a build finishing after a newer one started is dropped
};
