#pragma once

#include "core/ClientConfiguration.h"

#include <QMenu>
#include <QUuid>

class AppContext;
class QMessageBox;

// The toolbar's server menu: the saved connections with their state, the local daemon's place,
// adding and deleting connections. Choosing a connection opens it; with Alt (Option on macOS)
// held it deletes it instead. Its title names the connection in use.
class ServerMenu : public QMenu
{
    Q_OBJECT

public:
    explicit ServerMenu(AppContext &context, QWidget *parent = nullptr);

    // The confirmation of "Delete All Connections…", already open.
    QMessageBox *confirmDeleteAll();

Q_SIGNALS:
    void addConnectionRequested();
    void editConnectionRequested(QUuid id);
    // The local daemon: installing it when there is none, else reinstalling or removing it.
    void installLocalRequested();
    void uninstallLocalRequested();

private:
    void scheduleRebuild();
    void rebuild();
    void addConnection(const ClientConfiguration &configuration);
    void choose(QUuid id);

    AppContext &m_context;
    bool m_rebuildPending = false;
};
