#pragma once

#include "api/APIEndpoint.h"

#include <QCoroTask>
#include <QString>
#include <QStringList>

class TntDetailLoader;
class TntOperations;

// What is changed from the detail pane's tabs: a file or folder of a torrent renamed, its web seeds
// added, edited and removed. One request each; a failure is reported under its title.
class TntDetailEdits
{
public:
    enum class PathKind { file, folder };

    TntDetailEdits(TntOperations &operations, TntDetailLoader &loader);

    // True once the server took it: the caller, who showed the new name at once, undoes that otherwise.
    QCoro::Task<bool> renamePath(QString hash, QString oldPath, QString newPath, PathKind kind);
    // Servers without ServerFeatures::editsWebSeeds() answer these with 404.
    QCoro::Task<> addWebSeeds(QString hash, QStringList urls);
    QCoro::Task<> editWebSeed(QString hash, QString origUrl, QString newUrl);
    QCoro::Task<> removeWebSeeds(QString hash, QStringList urls);

private:
    // The list shown is read again once the server took the change.
    QCoro::Task<> editWebSeeds(QString hash, API::APIEndpoint endpoint, QString failureTitle);

    TntOperations &m_operations;
    TntDetailLoader &m_loader;
};
