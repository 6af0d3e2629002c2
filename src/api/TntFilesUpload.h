#pragma once

#include "api/APIEndpoint.h"
#include "api/MultipartWriter.h"

#include <QString>
#include <QStringList>

namespace API {

// .torrent files alone, without options.
struct TntFilesUpload
{
    QString boundary = MultipartWriter::newBoundary();
    QStringList files;

    // Throws TntManagmentError when a file cannot be read, like TntAddingOptions::multipartBody().
    MultipartBody multipartBody() const;
};

} // namespace API
