#pragma once

#include "settings/PathMap.h"

#include <QList>
#include <QString>

// Where a path the server reports lives on this computer. A local server's paths are this
// computer's already; otherwise the first mapping, in the user's order, whose remote path starts
// the path turns it into a path under that mapping's local folder.
struct PathResolution
{
    enum class Outcome {
        found,      // `localPath` is where it lives
        notMapped,  // no mapping's remote path starts it
        notMounted, // the mapping's local folder, `localFolder`, is not there (a share not mounted)
    };

    Outcome outcome = Outcome::notMapped;
    QString localPath;
    QString localFolder;

    // The remote path is a plain, case-sensitive text prefix: "/data" maps "/database/x" too, to
    // "base/x" under its folder, so the user orders the list.
    static PathResolution resolve(const QList<PathMap> &maps, const QString &remotePath, bool serverIsLocal);
    // Whether `resolve` would find a mapping, without looking at the disk: cheap enough for every
    // torrent of a menu.
    static bool isMapped(const QList<PathMap> &maps, const QString &remotePath, bool serverIsLocal);
};
