#include "adding/TntAddition.h"

#include "adding/TntAdder.h"
#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "model/TntCollection.h"
#include "support/Captured.h"

#include <QCoreApplication>
#include <QCoroSignal>
#include <QCoroTimer>
#include <QDeadlineTimer>
#include <QLoggingCategory>

#include <algorithm>

Q_LOGGING_CATEGORY(lcAddition, "AppContext")

namespace {

const QString addingFailure = QCoreApplication::translate("TntAddition", "Failed to add torrents.");
constexpr int normalPriority = 1;

QString joined(const QList<int> &priorities)
{
    QStringList texts;
    texts.reserve(priorities.size());
    for (const int priority : priorities)
        texts << QString::number(priority);
    return texts.join(u',');
}

// File indexes, ascending, by the priority they need other than the server's normal one.
QMap<int, QList<int>> filesByPriority(const QList<int> &priorities)
{
    QMap<int, QList<int>> files;
    for (qsizetype index = 0; index < priorities.size(); ++index) {
        if (priorities[index] != normalPriority)
            files[priorities[index]].append(static_cast<int>(index));
    }
    return files;
}

std::exception_ptr refusal(const QString &reason)
{
    return std::make_exception_ptr(API::TntManagmentError(API::TntManagmentError::Case::addingRejected, {}, reason));
}

} // namespace

TntAddition::TntAddition(TntCollection &tnts, std::function<void()> poll, std::function<QCoro::Task<>(QString)> start,
                         QObject *parent)
    : QObject(parent)
    , m_tnts(tnts)
    , m_poll(std::move(poll))
    , m_start(std::move(start))
{}

QCoro::Task<bool> TntAddition::upload(Server server, API::TntAddingOptions options)
{
    QCoro::Task<Captured<void>> adding = captured(TntAdder::add(*server.client, std::move(options)));
    const Captured<void> added = co_await std::move(adding);
    if (!server.session)
        co_return false;
    if (!added) {
        Q_EMIT failed(addingFailure, added.error);
        co_return false;
    }
    m_poll();
    co_return true;
}

// New rows wake it at once; a second without any asks for a poll.
QCoro::Task<bool> TntAddition::isListedWithin(Server server, QString hash, std::chrono::milliseconds within)
{
    const QDeadlineTimer deadline(within);
    while (!m_tnts.find(hash)) {
        if (deadline.hasExpired())
            co_return false;
        const std::chrono::milliseconds wait(std::min<qint64>(1000, deadline.remainingTime()));
        const auto inserted = co_await qCoro(&m_tnts, &TntCollection::didInsert, wait);
        if (!server.session)
            co_return false;
        if (!inserted)
            m_poll();
    }
    co_return true;
}

QCoro::Task<bool> TntAddition::awaitTnt(Server server, QString hash)
{
    // Long enough for a busy server's slow polls.
    QCoro::Task<bool> listing = isListedWithin(server, hash, std::chrono::minutes(1));
    if (co_await std::move(listing))
        co_return true;
    if (server.session)
        Q_EMIT failed(QCoreApplication::translate("TntAddition", "Failed to set file priority."),
                      refusal(QCoreApplication::translate(
                          "TntAddition", "The torrent did not appear on the server, so its skipped files could "
                                         "not be set.")));
    co_return false;
}

// qBittorrent 5.3 loses a magnet added a moment after its first metadata request: the add answers
// success, but the server's metadata download, not yet under way, blocks it as a duplicate, and
// adding it again alone fails the same way. Asking for the metadata once more puts that download
// back under the server's control, so that a second add replaces it.
QCoro::Task<bool> TntAddition::addMagnetMakingSureItIsListed(Server server, API::TntAddingOptions options, QString hash)
{
    const QString magnet = options.urls->constFirst();
    for (int attempt = 1;; ++attempt) {
        QCoro::Task<bool> adding = upload(server, options);
        if (!co_await std::move(adding))
            co_return false;
        QCoro::Task<bool> listing = isListedWithin(server, hash, std::chrono::seconds(5));
        if (co_await std::move(listing))
            co_return true;
        if (!server.session)
            co_return false;
        if (attempt == 3) {
            Q_EMIT failed(addingFailure,
                          refusal(QCoreApplication::translate(
                              "TntAddition", "The server accepted the magnet link but does not list it.")));
            co_return false;
        }
        qCWarning(lcAddition, "Added magnet %s not listed: asking for its metadata before adding it again",
                  qUtf8Printable(hash));
        QCoro::Task<Captured<QByteArray>> asking =
            captured(server.client->perform(API::Endpoint::TntManagement::fetchMetadata(magnet)));
        const Captured<QByteArray> asked = co_await std::move(asking);
        if (!server.session)
            co_return false;
        if (!asked)
            qCWarning(lcAddition, "Metadata request before adding again failed: %s", whatOf(asked.error).constData());
        QCoro::Task<> pause = QCoro::sleepFor(std::chrono::milliseconds(500));
        co_await std::move(pause);
        if (!server.session)
            co_return false;
    }
}

QCoro::Task<bool> TntAddition::setFilePriorities(Server server, QString hash, QList<int> priorities)
{
    const QMap<int, QList<int>> files = filesByPriority(priorities);
    for (auto it = files.cbegin(); it != files.cend(); ++it) {
        QCoro::Task<Captured<QByteArray>> setting =
            captured(server.client->perform(API::Endpoint::TntManagement::filePrio(hash, it.value(), it.key())));
        const Captured<QByteArray> set = co_await std::move(setting);
        if (!server.session)
            co_return false;
        if (!set) {
            Q_EMIT failed(QCoreApplication::translate("TntAddition", "Failed to set file priority."), set.error);
            co_return false;
        }
    }
    co_return true;
}

QCoro::Task<bool> TntAddition::add(Server server, Request request)
{
    if (!server.session || !server.client) {
        Q_EMIT failed(addingFailure, std::make_exception_ptr(API::NetworkError::disconnected()));
        co_return false;
    }
    API::TntAddingOptions &options = request.options;
    const bool choosesFiles = !filesByPriority(request.filePriorities).isEmpty();
    // Servers that take `filePriorities` refuse them with uploaded .torrent files ("Cannot specify
    // filePriorities when uploading torrent files", qBittorrent 5.3): only links send them along.
    const bool uploadsFiles = options.tnts && !options.tnts->isEmpty();
    const bool sentAlong = server.features.takesFilePrioritiesOnAdd() && !uploadsFiles;
    if (!choosesFiles || sentAlong || request.hash.isEmpty()) {
        if (choosesFiles)
            options.filePriorities = joined(request.filePriorities);
        options.setAddStopped(!request.start, server.features);
        const bool oneMagnet = options.urls && options.urls->size() == 1 &&
                               options.urls->constFirst().startsWith(u"magnet:") && !uploadsFiles;
        if (oneMagnet && !request.hash.isEmpty() && server.features.fetchesMetadata()) {
            QCoro::Task<bool> adding = addMagnetMakingSureItIsListed(server, std::move(options), request.hash);
            co_return co_await std::move(adding);
        }
        QCoro::Task<bool> adding = upload(server, std::move(options));
        co_return co_await std::move(adding);
    }

    // Stopped until its files are set, so that a skipped file is never begun.
    options.setAddStopped(true, server.features);
    QCoro::Task<bool> adding = upload(server, std::move(options));
    if (!co_await std::move(adding))
        co_return false;
    QCoro::Task<bool> arrival = awaitTnt(server, request.hash);
    if (!co_await std::move(arrival))
        co_return false;
    QCoro::Task<bool> setting = setFilePriorities(server, request.hash, request.filePriorities);
    if (!co_await std::move(setting))
        co_return false;
    if (request.start) {
        QCoro::Task<> starting = m_start(request.hash);
        co_await std::move(starting);
    }
    co_return true;
}
