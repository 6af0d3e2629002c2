#pragma once

#include "settings/PathResolution.h"

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QStringList>

class AppContext;
class QWidget;

// Reveals and opens torrents' files on this computer, through the path mapping. What cannot be
// reached is said: no mapping for a path (with the way to the mapping settings), or a share that is
// not mounted, naming its folder.
class TntReveal : public QObject
{
    Q_OBJECT

public:
    TntReveal(AppContext &context, QWidget *window);

    // Whether some of them can be revealed: a mapping applies, or the server is this computer's.
    bool isConfigured(const QStringList &hashes) const;
    // Every torrent's content selected in its folder, in one file manager request. With no mapping
    // for any of them, asks for one instead (mappingWanted).
    void showTnts(const QStringList &hashes);
    // A complete torrent's content opened (a file in its application, a folder in the file
    // manager); one still downloading is revealed instead.
    void openTnt(const QString &hash);
    // Files or folders of one torrent, by their paths in its content.
    void showFiles(const QString &hash, const QStringList &relativePaths);
    void openFile(const QString &hash, const QString &relativePath, bool complete);

    // The alert on screen, for tests.
    QMessageBox *alert() const { return m_alert; }

Q_SIGNALS:
    // No mapping applies: the user is taken to the mapping settings, a new mapping begun for
    // `remotePath` (the torrent's save path).
    void mappingWanted(const QString &remotePath);

private:
    struct Found
    {
        QStringList localPaths;
        QStringList unmapped; // the server's paths
        QStringList unmounted; // local folders

        void add(const QString &remotePath, const PathResolution &resolved);
    };

    Found resolve(const QStringList &remotePaths) const;
    // Shows what was found, and says why the rest was not.
    void showFound(const Found &found);
    void open(const QString &remotePath, bool complete);
    void warn(const QString &title, const QString &details);

    AppContext &m_context;
    QWidget *m_window;
    QPointer<QMessageBox> m_alert;
};
