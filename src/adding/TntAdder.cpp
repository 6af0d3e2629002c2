#include "adding/TntAdder.h"

#include "adding/TntMetadata.h"
#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"

#include <QCoroFuture>
#include <QFileInfo>
#include <QtConcurrentRun>

#include <exception>

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

struct Prepared
{
    API::MultipartBody body;
    std::exception_ptr failure;
};

} // namespace

QCoro::Task<void> TntAdder::add(API::Client &client, API::TntAddingOptions options)
{
    // A large .torrent takes a noticeable time to read and decode: never on the main thread.
    QFuture<Prepared> preparing = QtConcurrent::run([options = std::move(options)] {
        Prepared prepared;
        try {
            checkTorrentFiles(options);
            prepared.body = options.multipartBody();
        } catch (...) {
            prepared.failure = std::current_exception();
        }
        return prepared;
    });
    const Prepared prepared = co_await preparing;
    if (prepared.failure)
        std::rethrow_exception(prepared.failure);
    const API::APIEndpoint endpoint = API::Endpoint::TntManagement::add(prepared.body);
    const QString answer = co_await client.performText(endpoint);
    // Up to 5.1 a refusal is a 200 with "Fails."; later servers answer with a status instead.
    if (answer.trimmed() == u"Fails.")
        throw API::TntManagmentError(API::TntManagmentError::Case::addingRejected);
}
