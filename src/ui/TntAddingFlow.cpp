#include "ui/TntAddingFlow.h"

#include "adding/TntLinks.h"
#include "adding/TntMetadata.h"
#include "core/AppContext.h"
#include "support/Detached.h"
#include "ui/AddTntOptionsForm.h"
#include "ui/AddTntWindow.h"
#include "ui/LinksDialog.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QPointer>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QtConcurrentRun>

Q_LOGGING_CATEGORY(lcAddingFlow, "TntAddingFlow")

TntAddingFlow::TntAddingFlow(AppContext &context, QWidget *window)
    : QObject(window)
    , m_context(context)
    , m_window(window)
{
    connect(&m_context, &AppContext::connectionStateChanged, this, &TntAddingFlow::openPending);
}

bool TntAddingFlow::isTntSource(const QUrl &url)
{
    if (url.isLocalFile())
        return url.toLocalFile().endsWith(QStringLiteral(".torrent"), Qt::CaseInsensitive);
    return !TntLinks::urlOf(url.toString()).isEmpty();
}

QList<QUrl> TntAddingFlow::sourcesOf(const QStringList &arguments)
{
    QList<QUrl> sources;
    for (const QString &argument : arguments) {
        const QString text = argument.trimmed();
        if (text.isEmpty())
            continue;
        const QString link = TntLinks::urlOf(text);
        if (!link.isEmpty())
            sources << QUrl(link);
        else
            sources << QUrl::fromUserInput(text, QDir::currentPath(), QUrl::AssumeLocalFile);
    }
    return sources;
}

void TntAddingFlow::open(const QList<QUrl> &sources)
{
    m_pendingTntURLs << sources;
    openPending();
}

void TntAddingFlow::openPending()
{
    if (!m_context.isAuthorized() || m_pendingTntURLs.isEmpty())
        return;
    const QList<QUrl> sources = std::exchange(m_pendingTntURLs, {});
    QStringList files;
    QStringList links;
    for (const QUrl &source : sources) {
        if (source.isLocalFile())
            files << source.toLocalFile();
        else // as given: a magnet's name and trackers keep their escapes
            links << source.toString(QUrl::FullyEncoded);
    }
    if (files.size() > 1 && !m_context.settings().showTntAddingWindow()) {
        detached(addFiles(files));
    } else {
        for (const QString &file : files)
            detached(openFile(file));
    }
    if (links.isEmpty())
        return;
    if (m_context.settings().showTntAddingWindow())
        enterLinks(links);
    else
        acceptLinks(links);
}

void TntAddingFlow::chooseFiles()
{
    auto *dialog =
        new QFileDialog(m_window, QCoreApplication::translate("TntAddingFlow", "Add Torrent Files"), QString(),
                        QCoreApplication::translate("TntAddingFlow", "Torrent files (*.torrent)"));
    dialog->setObjectName(QStringLiteral("tntFileDialog"));
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFileDialog::filesSelected, this, [this](const QStringList &files) {
        QList<QUrl> sources;
        for (const QString &file : files)
            sources << QUrl::fromLocalFile(file);
        open(sources);
    });
    dialog->open();
}

void TntAddingFlow::enterLinks(const QStringList &links)
{
    auto *dialog = new LinksDialog(links.join(u'\n'), m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] { acceptLinks(dialog->urls()); });
    dialog->open();
}

QCoro::Task<> TntAddingFlow::openFile(QString path)
{
    // A large .torrent takes a noticeable time to read and hash: never on the main thread.
    const QPointer<TntAddingFlow> self(this);
    struct Reading
    {
        std::optional<TntMetadata> metadata;
        QString refusal;
    };
    QFuture<Reading> reading = QtConcurrent::run([path] {
        Reading read;
        read.metadata = TntMetadata::fromFile(path, &read.refusal);
        return read;
    });
    const Reading read = co_await reading;
    if (!self)
        co_return;
    const std::optional<TntMetadata> &metadata = read.metadata;
    if (!metadata) {
        auto *alert = new QMessageBox(
            QMessageBox::Warning, QCoreApplication::translate("TntAddingFlow", "Failed to add torrent!"),
            QCoreApplication::translate("TntAddingFlow", "\"%1\" is not a valid torrent file.")
                .arg(QFileInfo(path).fileName()),
            QMessageBox::Ok, m_window);
        alert->setObjectName(QStringLiteral("invalidTntFile"));
        alert->setInformativeText(read.refusal);
        alert->setAttribute(Qt::WA_DeleteOnClose);
        alert->open();
        co_return;
    }
    if (!m_context.settings().showTntAddingWindow()) {
        API::TntAddingOptions options = defaultOptions();
        options.tnts = QStringList{path};
        QCoro::Task<> adding = addTnt(std::move(options), true, {}, {}, path);
        co_await std::move(adding);
        co_return;
    }
    openWindow(path, metadata);
}

QCoro::Task<> TntAddingFlow::addFiles(QStringList paths)
{
    // One at a time, so that Cancel has something left to spare; the dialog only for a batch that
    // takes a while.
    const QPointer<TntAddingFlow> self(this);
    const QPointer<QProgressDialog> progress = new QProgressDialog(
        QString(), QCoreApplication::translate("TntAddingFlow", "Cancel"), 0, int(paths.size()), m_window);
    progress->setObjectName(QStringLiteral("addingProgress"));
    progress->setWindowTitle(QCoreApplication::translate("TntAddingFlow", "Adding Torrents"));
    progress->setMinimumDuration(1000);
    for (qsizetype i = 0; i < paths.size() && self && progress && !progress->wasCanceled(); ++i) {
        progress->setLabelText(
            QCoreApplication::translate("TntAddingFlow", "Adding torrent %1 of %2…").arg(i + 1).arg(paths.size()));
        QCoro::Task<> opening = openFile(paths[i]);
        co_await std::move(opening);
        if (progress)
            progress->setValue(int(i + 1));
    }
    delete progress;
}

void TntAddingFlow::acceptLinks(QStringList urls)
{
    // Servers that fetch a magnet's metadata let the user choose its files first.
    if (m_context.settings().showTntAddingWindow() && m_context.serverFeatures().fetchesMetadata()) {
        const QStringList magnets = urls.filter(QRegularExpression(QStringLiteral("^magnet:")));
        for (const QString &magnet : magnets)
            openWindow(magnet, std::nullopt);
        urls.removeIf([&magnets](const QString &url) { return magnets.contains(url); });
    }
    if (!urls.isEmpty())
        detached(addLinks(urls));
}

void TntAddingFlow::openWindow(const QString &source, const std::optional<TntMetadata> &metadata)
{
    auto *window = new AddTntWindow(m_context, source, metadata, m_window);
    window->setAttribute(Qt::WA_DeleteOnClose);
    connect(window, &QDialog::accepted, this, [this, window] {
        API::TntAddingOptions options = window->optionsForm()->options();
        if (window->isTntFile())
            options.tnts = QStringList{window->source()};
        else
            options.urls = QStringList{window->source()};
        detached(addTnt(std::move(options), window->optionsForm()->startsTnt(), window->tntHash(),
                        window->filePriorities(), window->isTntFile() ? window->source() : QString()));
    });
    connect(window, &QDialog::rejected, this, [this, window] {
        if (window->isTntFile() && m_context.settings().autoDeleteTntFile() &&
            m_context.settings().deleteTntFileOnAdditionCanceled())
            trash(window->source());
    });
    window->show();
}

API::TntAddingOptions TntAddingFlow::defaultOptions() const
{
    API::TntAddingOptions options;
    const UserDefaults &defaults = m_context.settings().defaults();
    if (const QString category = defaults.stringValue(UserDefaultsKey::categoryForNewTnt); !category.isEmpty())
        options.category = category;
    if (const QString tags = defaults.stringValue(UserDefaultsKey::tagsForNewTnt); !tags.isEmpty())
        options.tags = tags;
    return options;
}

void TntAddingFlow::trash(const QString &path) const
{
    // Qt 6.4 trashes into the working folder when the user's data folder does not exist yet.
    const QString dataHome = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (dataHome.isEmpty() || !QDir().mkpath(dataHome) || !QFile::moveToTrash(path))
        qCWarning(lcAddingFlow, "Failed to move %s to the trash", qUtf8Printable(path));
}

QCoro::Task<> TntAddingFlow::addTnt(API::TntAddingOptions options, bool start, QString hash, QList<int> filePriorities,
                                    QString tntFile)
{
    const QPointer<TntAddingFlow> self(this);
    ++m_additionsUnderWay;
    QCoro::Task<bool> adding = m_context.addTnts(std::move(options), start, hash, filePriorities);
    const bool added = co_await std::move(adding);
    if (!self)
        co_return;
    --m_additionsUnderWay;
    if (added && !tntFile.isEmpty() && m_context.settings().autoDeleteTntFile())
        trash(tntFile);
}

QCoro::Task<> TntAddingFlow::addLinks(QStringList urls)
{
    API::TntAddingOptions options = defaultOptions();
    options.urls = urls;
    QCoro::Task<bool> adding = m_context.addTnts(std::move(options), true);
    co_await std::move(adding);
}
