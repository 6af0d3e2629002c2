#include "ui/TntReveal.h"

#include "core/AppContext.h"
#include "core/InternalError.h"
#include "platform/FileManager.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMessageBox>

namespace {

// What is not there yet (a file still downloading, a folder not made) is shown by the nearest
// folder above it that is.
QString nearestExisting(QString path)
{
    while (!QFileInfo::exists(path)) {
        const QString parent = QFileInfo(path).absolutePath();
        if (parent == path)
            break;
        path = parent;
    }
    return path;
}

} // namespace

TntReveal::TntReveal(AppContext &context, QWidget *window)
    : QObject(window)
    , m_context(context)
    , m_window(window)
{}

bool TntReveal::isConfigured(const QStringList &hashes) const
{
    return std::any_of(hashes.cbegin(), hashes.cend(), [this](const QString &hash) {
        const TntModel *tnt = m_context.tntCollection().find(hash);
        return tnt && m_context.isMapped(tnt->contentPath());
    });
}

void TntReveal::Found::add(const QString &remotePath, const PathResolution &resolved)
{
    switch (resolved.outcome) {
    case PathResolution::Outcome::found:
        if (const QString shown = nearestExisting(resolved.localPath); !localPaths.contains(shown))
            localPaths.append(shown);
        break;
    case PathResolution::Outcome::notMapped: unmapped.append(remotePath); break;
    case PathResolution::Outcome::notMounted:
        if (!unmounted.contains(resolved.localFolder))
            unmounted.append(resolved.localFolder);
        break;
    }
}

TntReveal::Found TntReveal::resolve(const QStringList &remotePaths) const
{
    Found found;
    for (const QString &remotePath : remotePaths)
        found.add(remotePath, m_context.localLocation(remotePath));
    return found;
}

void TntReveal::showFound(const Found &found)
{
    if (!found.localPaths.isEmpty())
        Platform::FileManager::showItems(found.localPaths);
    if (!found.unmounted.isEmpty()) {
        warn(QCoreApplication::translate("TntReveal", "The shared folder is not mounted"),
             QCoreApplication::translate(
                 "TntReveal", "Quillo cannot reach \"%1\": it is not there. Mount the share that holds the torrent's "
                              "files, or check your path mapping settings.")
                 .arg(found.unmounted.join(QStringLiteral("\", \""))));
    } else if (!found.unmapped.isEmpty()) {
        const InternalError error(InternalError::Case::pathMappingNotFound, found.unmapped.first());
        warn(error.description(), error.failureReason() + u'\n' + error.recoverySuggestion());
    }
}

void TntReveal::showTnts(const QStringList &hashes)
{
    QStringList remotePaths;
    QString firstSavePath;
    for (const QString &hash : hashes) {
        if (const TntModel *tnt = m_context.tntCollection().find(hash)) {
            remotePaths.append(tnt->contentPath());
            if (firstSavePath.isEmpty())
                firstSavePath = tnt->savePath();
        }
    }
    if (remotePaths.isEmpty())
        return;
    if (!isConfigured(hashes)) {
        Q_EMIT mappingWanted(firstSavePath);
        return;
    }
    showFound(resolve(remotePaths));
}

void TntReveal::openTnt(const QString &hash)
{
    if (const TntModel *tnt = m_context.tntCollection().find(hash))
        open(tnt->contentPath(), tnt->progress() >= 1);
}

void TntReveal::showFiles(const QString &hash, const QStringList &relativePaths)
{
    const TntModel *tnt = m_context.tntCollection().find(hash);
    if (!tnt)
        return;
    QStringList remotePaths;
    for (const QString &relative : relativePaths)
        remotePaths.append(tnt->remotePathOf(relative));
    showFound(resolve(remotePaths));
}

void TntReveal::openFile(const QString &hash, const QString &relativePath, bool complete)
{
    if (const TntModel *tnt = m_context.tntCollection().find(hash))
        open(tnt->remotePathOf(relativePath), complete);
}

void TntReveal::open(const QString &remotePath, bool complete)
{
    const PathResolution resolved = m_context.localLocation(remotePath);
    if (resolved.outcome == PathResolution::Outcome::found && complete && QFileInfo::exists(resolved.localPath)) {
        Platform::FileManager::open(resolved.localPath);
        return;
    }
    Found found;
    found.add(remotePath, resolved);
    showFound(found);
}

void TntReveal::warn(const QString &title, const QString &details)
{
    if (m_alert)
        m_alert->close();
    auto *alert = new QMessageBox(QMessageBox::Warning, QStringLiteral("Quillo"), title, QMessageBox::Ok, m_window);
    alert->setObjectName(QStringLiteral("revealAlert"));
    alert->setInformativeText(details);
    alert->setWindowModality(Qt::WindowModal);
    alert->setAttribute(Qt::WA_DeleteOnClose);
    m_alert = alert;
    alert->open();
}
