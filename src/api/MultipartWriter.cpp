#include "api/MultipartWriter.h"

#include "api/Errors.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QUuid>

namespace API {

namespace {

constexpr char crlf[] = "\r\n";

[[noreturn]] void failReading(const QString &path, const QFile &file)
{
    throw TntManagmentError(
        TntManagmentError::Case::invalideFile, {},
        QCoreApplication::translate("MultipartWriter", "Could not read \"%1\": %2").arg(path, file.errorString()));
}

// As browsers write a file name into the header (WHATWG, RFC 7578): a quote or a line break would
// end the header early; everything else goes as UTF-8.
QByteArray quotedFileName(const QString &name)
{
    QByteArray bytes = name.toUtf8();
    bytes.replace('"', "%22").replace('\r', "%0D").replace('\n', "%0A");
    return bytes;
}

} // namespace

QString MultipartWriter::newBoundary()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

MultipartWriter::MultipartWriter(const QString &boundary)
    : m_boundary(boundary.toUtf8())
{}

void MultipartWriter::addDelimiter()
{
    m_bytes += "--" + m_boundary + crlf;
}

void MultipartWriter::addUrls(const QStringList &urls)
{
    addDelimiter();
    m_bytes += "Content-Disposition: form-data; name=\"urls\"\r\n";
    m_bytes += crlf;
    for (const QString &text : urls) {
        const QUrl url(text);
        if (text.isEmpty() || !url.isValid())
            continue;
        m_bytes += url.toEncoded() + crlf;
    }
}

void MultipartWriter::addTntFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        failReading(path, file);
    const QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        failReading(path, file);
    addDelimiter();
    m_bytes += "Content-Disposition: form-data; name=\"torrents\"; filename=\"" +
               quotedFileName(QFileInfo(path).fileName()) + "\"" + crlf;
    m_bytes += "Content-Type: application/x-bittorrent\r\n";
    m_bytes += crlf;
    m_bytes += content;
    m_bytes += crlf;
}

void MultipartWriter::addField(const QString &name, const QString &value)
{
    addDelimiter();
    m_bytes += "Content-Disposition: form-data; name=\"" + name.toUtf8() + "\"" + crlf;
    m_bytes += crlf;
    m_bytes += value.toUtf8() + crlf;
}

MultipartBody MultipartWriter::finish() &&
{
    m_bytes += "--" + m_boundary + "--" + crlf;
    return {.boundary = std::move(m_boundary), .bytes = std::move(m_bytes)};
}

} // namespace API
