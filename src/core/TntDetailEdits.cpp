#include "core/TntDetailEdits.h"

#include "api/Endpoint.h"
#include "core/TntDetailLoader.h"
#include "core/TntOperations.h"

#include <QCoreApplication>

namespace Endpoint = API::Endpoint::TntManagement;

TntDetailEdits::TntDetailEdits(TntOperations &operations, TntDetailLoader &loader)
    : m_operations(operations)
    , m_loader(loader)
{}

QCoro::Task<bool> TntDetailEdits::renamePath(QString hash, QString oldPath, QString newPath, PathKind kind)
{
    if (kind == PathKind::folder)
        return m_operations.send(Endpoint::renameFolder(hash, oldPath, newPath),
                                 QCoreApplication::translate("TntDetailEdits", "Failed to rename folder."));
    return m_operations.send(Endpoint::renameFile(hash, oldPath, newPath),
                             QCoreApplication::translate("TntDetailEdits", "Failed to rename file."));
}

QCoro::Task<> TntDetailEdits::addWebSeeds(QString hash, QStringList urls)
{
    return editWebSeeds(hash, Endpoint::addWebSeeds(hash, urls),
                        QCoreApplication::translate("TntDetailEdits", "Failed to add web seeds."));
}

QCoro::Task<> TntDetailEdits::editWebSeed(QString hash, QString origUrl, QString newUrl)
{
    return editWebSeeds(hash, Endpoint::editWebSeed(hash, origUrl, newUrl),
                        QCoreApplication::translate("TntDetailEdits", "Failed to edit web seed."));
}

QCoro::Task<> TntDetailEdits::removeWebSeeds(QString hash, QStringList urls)
{
    return editWebSeeds(hash, Endpoint::removeWebSeeds(hash, urls),
                        QCoreApplication::translate("TntDetailEdits", "Failed to remove web seeds."));
}

QCoro::Task<> TntDetailEdits::editWebSeeds(QString hash, API::APIEndpoint endpoint, QString failureTitle)
{
    QCoro::Task<bool> sending = m_operations.send(std::move(endpoint), std::move(failureTitle));
    if (co_await std::move(sending))
        m_loader.reloadWebSeeds(hash);
}
