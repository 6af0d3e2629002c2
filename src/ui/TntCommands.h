#pragma once

#include "core/TransferLimits.h"

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>

#include <functional>

class AppContext;
class QWidget;
class TntAddingFlow;

// The flows in front of the torrent operations: the remove confirmation and the editor sheets.
// The toolbar, the table's context menu and the sidebar all go through here, so each flow exists
// once. Every sheet is window-modal over `window` and deletes itself when closed.
class TntCommands : public QObject
{
    Q_OBJECT

public:
    TntCommands(AppContext &context, QWidget *window);

    void start(const QSet<QString> &hashes);
    void stop(const QSet<QString> &hashes);
    // Asks first while "confirmTntDeleting" is on; without asking it removes from the list only,
    // never the data. An empty set is every torrent.
    // Removing with the files always asks: they cannot be had back.
    enum class Removal { asSettingsSay, withFiles };
    void remove(const QSet<QString> &hashes, Removal removal = Removal::asSettingsSay);
    void editLocation(const QSet<QString> &hashes);
    void rename(const QString &hash);
    void addPeers(const QSet<QString> &hashes);
    void addTrackers(const QString &hash);
    // A sheet with the tracker's URL to change; nothing is sent when it is left as it was.
    void editTracker(const QString &hash, const QString &url);
    // The same for web seeds, on servers that edit them (ServerFeatures::editsWebSeeds()).
    void addWebSeeds(const QString &hash);
    void editWebSeed(const QString &hash, const QString &url);
    // Asks first: a banned address stays banned on the server until its settings say otherwise.
    void banPeers(const QSet<QString> &addresses);
    // The limit sheet, filled with the limit read from the server first.
    void limitRate(const QSet<QString> &hashes, TransferLimits::Direction direction);
    void limitGlobalRate(TransferLimits::Direction direction);
    // Ratio and seeding times, starting from what the torrents share.
    void limitShare(const QSet<QString> &hashes);
    // The statistics window, opened once and brought forward after.
    QDialog *showStatistics();
    // The server log window, likewise.
    QWidget *showServerLog();
    QWidget *showSearch(TntAddingFlow &adding);
    // Asks first, naming the server: it cannot be started again from here.
    void shutDownServer();
    void createCategory();
    void editCategory(const QString &name, const QString &savePath);
    // The tag editor, then Add tags for `hashes`, or Create tags.
    void addTags(const QSet<QString> &hashes);
    void createTags();

    // The sheet open now, for tests and for the window to close on disconnect.
    QDialog *openSheet() const { return m_sheet; }

    // The confirmation's texts for removing `count` torrents, 0 meaning all.
    static QString removeTitle(qsizetype count);
    static QString removeMessage(qsizetype count);

Q_SIGNALS:
    void sheetOpened(QDialog *sheet);

private:
    void present(QDialog *sheet);
    // A sheet of URLs, one a line, for `add`; and one with a URL to change, `save` getting it only
    // when it was changed.
    void addUrls(const QString &name, const QString &prompt, const std::function<void(QStringList)> &add);
    void editUrl(const QString &title, const QString &name, const QString &placeholder, const QString &url,
                 const std::function<void(QString)> &save);
    // A sheet for one limit; `reading` fills it, `save` takes the chosen limit in bytes per second.
    void editLimit(const QString &title, QCoro::Task<std::optional<qint64>> reading, std::function<void(qint64)> save);

    AppContext &m_context;
    QWidget *m_window;
    QPointer<QDialog> m_sheet;
    QPointer<QDialog> m_statistics;
    QPointer<QWidget> m_serverLog;
    QPointer<QWidget> m_search;
};
