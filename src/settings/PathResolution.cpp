#include "settings/PathResolution.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcPathMap, "PathMap")

namespace {

QList<PathMap>::const_iterator mappingOf(const QList<PathMap> &maps, const QString &remotePath)
{
    return std::find_if(maps.cbegin(), maps.cend(),
                        [&remotePath](const PathMap &map) { return remotePath.startsWith(map.remotePath); });
}

} // namespace

bool PathResolution::isMapped(const QList<PathMap> &maps, const QString &remotePath, bool serverIsLocal)
{
    return serverIsLocal || mappingOf(maps, remotePath) != maps.cend();
}

PathResolution PathResolution::resolve(const QList<PathMap> &maps, const QString &remotePath, bool serverIsLocal)
{
    if (serverIsLocal)
        return {Outcome::found, remotePath, {}};
    const auto match = mappingOf(maps, remotePath);
    if (match == maps.cend()) {
        qCCritical(lcPathMap, "Failed to find path mapping for %s", qUtf8Printable(remotePath));
        return {};
    }
    const QString folder = QString::fromUtf8(match->bookmarkData.value_or(QByteArray()));
    qCInfo(lcPathMap, "Path map found: \n"
                      "PathMap:\n\t- remotePath: %s\n\t- localURL: %s",
           qUtf8Printable(match->remotePath), qUtf8Printable(folder));
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) {
        qCWarning(lcPathMap, "Folder not mounted: %s", qUtf8Printable(folder));
        return {Outcome::notMounted, {}, folder};
    }
    QString rest = remotePath.mid(match->remotePath.size());
    // A server on Windows reports "D:\Downloads\show\ep1.mkv".
    if (!remotePath.contains(u'/'))
        rest.replace(u'\\', u'/');
    while (rest.startsWith(u'/'))
        rest.remove(0, 1);
    while (rest.endsWith(u'/'))
        rest.chop(1);
    return {Outcome::found, rest.isEmpty() ? folder : QDir(folder).filePath(rest), folder};
}
