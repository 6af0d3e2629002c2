#pragma once

#include "api/APIEndpoint.h"

#include <QString>
#include <QStringList>

namespace API {

// Writes the parts of a multipart/form-data body for torrents/add, CRLF-delimited under the given
// boundary, and closes it.
class MultipartWriter
{
public:
    explicit MultipartWriter(const QString &boundary);

    // A fresh UUID in upper case, without braces.
    static QString newBoundary();

    // One "urls" part, a line per link; links that are no valid URL are left out.
    void addUrls(const QStringList &urls);
    // A "torrents" part with the file's whole content. Throws TntManagmentError when it cannot be read.
    void addTntFile(const QString &path);
    void addField(const QString &name, const QString &value);
    MultipartBody finish() &&;

private:
    void addDelimiter();

    QByteArray m_boundary;
    QByteArray m_bytes;
};

} // namespace API
