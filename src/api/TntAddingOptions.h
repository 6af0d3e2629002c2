#pragma once

#include "api/APIEndpoint.h"
#include "api/AddingChoices.h"
#include "api/MultipartWriter.h"
#include "api/ServerFeatures.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace API {

// Everything torrents/add takes: links, .torrent files and the options. An unset option is not
// sent, so that the server's own default applies (unset and false differ).
struct TntAddingOptions
{
    QString boundary = MultipartWriter::newBoundary();
    std::optional<QStringList> urls; // magnet, http(s) links; one that is no valid URL is dropped
    std::optional<QStringList> tnts; // local .torrent files, read when the body is built
    std::optional<QString> savepath;
    std::optional<bool> useDownloadPath;
    std::optional<QString> downloadPath;
    std::optional<bool> addToTopOfQueue;
    std::optional<QString> cookie;
    std::optional<QString> category;
    std::optional<QString> tags; // names joined with ","
    std::optional<bool> skipChecking;
    std::optional<bool> paused;
    std::optional<bool> stopped;
    std::optional<bool> rootFolder;
    std::optional<QString> rename;
    std::optional<qint64> upLimit; // bytes per second
    std::optional<qint64> dlLimit;
    std::optional<double> ratioLimit;
    std::optional<qint64> seedingTimeLimit; // minutes
    std::optional<bool> autoTMM;
    std::optional<bool> sequentialDownload;
    std::optional<bool> firstLastPiecePrio;
    std::optional<TntContentLayout> contentLayout;
    std::optional<TntStopCondition> stopCondition;
    std::optional<QString> filePriorities; // per file, in index order, joined with ","

    // Sets `stopped` where the server reads it (API 2.11 and later) and `paused` before: each
    // server generation ignores the other's word.
    void setAddStopped(bool addStopped, const ServerFeatures &features);

    // The multipart/form-data body. Throws TntManagmentError when a .torrent file cannot be read
    // or an option cannot be written, so that no request goes out with half a body.
    MultipartBody multipartBody() const;
};

} // namespace API
