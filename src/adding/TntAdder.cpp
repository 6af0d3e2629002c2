#include "adding/TntAdder.h"

#include "adding/TntMetadata.h"
#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"

#include <QFileInfo>

namespace {

void checkTorrentFiles(const API::TntAddingOptions &options)
{
    if (!options.tnts)
        return;
    for (const QString &path : *options.tnts) {
        if (!TntMetadata::fromFile(path))
            throw API::TntManagmentError(
                API::TntManagmentError::Case::invalideFile, {},
                QStringLiteral("\"%1\" is not a valid torrent file.").arg(QFileInfo(path).fileName()));
    }
}

} // namespace

QCoro::Task<void> TntAdder::add(API::Client &client, API::TntAddingOptions options)
{
    checkTorrentFiles(options);
    const API::APIEndpoint endpoint = API::Endpoint::TntManagement::add(options.multipartBody());
    const QString answer = co_await client.performText(endpoint);
    // Up to 5.1 a refusal is a 200 with "Fails."; later servers answer with a status instead.
    if (answer.trimmed() == u"Fails.")
        throw API::TntManagmentError(API::TntManagmentError::Case::addingRejected);
}
