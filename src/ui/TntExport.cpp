#include "ui/TntExport.h"

#include "core/AppContext.h"
#include "support/Detached.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <QSaveFile>

TntExport::TntExport(AppContext &context, QWidget *window)
    : QObject(window)
    , m_context(context)
    , m_window(window)
{}

QString TntExport::fileName(const QString &hash) const
{
    const TntModel *tnt = m_context.tntCollection().find(hash);
    QString name = tnt && !tnt->name().isEmpty() ? tnt->name() : hash;
    // A name is a whole path component here, whatever the torrent calls itself.
    name.replace(u'/', u'_');
    name.replace(QChar(0), u'_');
    if (name.startsWith(u'.'))
        name.prepend(u'_');
    return name + QStringLiteral(".torrent");
}

void TntExport::choose(const QStringList &hashes)
{
    if (hashes.isEmpty())
        return;
    auto *dialog = new QFileDialog(m_window);
    dialog->setObjectName(QStringLiteral("exportDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    if (hashes.size() == 1) {
        dialog->setWindowTitle(QCoreApplication::translate("TntExport", "Export .torrent"));
        dialog->setNameFilter(QCoreApplication::translate("TntExport", "Torrent files (*.torrent)"));
        dialog->selectFile(fileName(hashes.first()));
        connect(dialog, &QFileDialog::fileSelected, this,
                [this, hash = hashes.first()](const QString &path) { detached(write(path, hash)); });
    } else {
        dialog->setWindowTitle(
            QCoreApplication::translate("TntExport", "Export %1 .torrent Files to Folder").arg(hashes.size()));
        dialog->setFileMode(QFileDialog::Directory);
        dialog->setOption(QFileDialog::ShowDirsOnly);
        connect(dialog, &QFileDialog::fileSelected, this,
                [this, hashes](const QString &folder) { detached(writeInto(folder, hashes)); });
    }
    dialog->open();
}

QCoro::Task<> TntExport::write(QString path, QString hash)
{
    const QPointer<TntExport> self(this);
    QCoro::Task<std::optional<QByteArray>> exporting = m_context.exportTnt(hash);
    const std::optional<QByteArray> bytes = co_await std::move(exporting);
    if (self && bytes)
        save(path, *bytes);
}

QCoro::Task<> TntExport::writeInto(QString folder, QStringList hashes)
{
    const QPointer<TntExport> self(this);
    for (const QString &hash : hashes) {
        QCoro::Task<std::optional<QByteArray>> exporting = m_context.exportTnt(hash);
        const std::optional<QByteArray> bytes = co_await std::move(exporting);
        if (!self)
            co_return;
        if (!bytes)
            continue;
        const QFileInfo name(QDir(folder).filePath(fileName(hash)));
        QString path = name.filePath();
        for (int copy = 2; QFileInfo::exists(path); ++copy)
            path = name.dir().filePath(QStringLiteral("%1 (%2).torrent").arg(name.completeBaseName()).arg(copy));
        if (!save(path, *bytes))
            break; // the folder refuses: the next file would fail alike
    }
}

bool TntExport::save(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    auto *alert = new QMessageBox(
        QMessageBox::Warning, QCoreApplication::translate("TntExport", "Failed to export torrent."),
        QCoreApplication::translate("TntExport", "\"%1\" could not be written.").arg(path), QMessageBox::Ok, m_window);
    alert->setObjectName(QStringLiteral("exportFailed"));
    alert->setInformativeText(file.errorString());
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->open();
    return false;
}
