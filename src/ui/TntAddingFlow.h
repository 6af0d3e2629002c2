#pragma once

#include "adding/TntMetadata.h"
#include "api/TntAddingOptions.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QUrl>

class AppContext;
class QWidget;

// Where every torrent that reaches Quillo goes: .torrent files and links from the toolbar, a drop,
// the command line or a second launch. Files open the add-torrent window, or are added at once with
// the defaults when the setting "showTntAddingWindow" is off; links likewise go through the links
// dialog, and on servers that fetch metadata (API 2.15 and later) magnets open the window too. What comes before the connection is ready waits in `pendingTntURLs` and opens once
// connected. After adding (and, if the settings say so, after cancelling) the .torrent goes to the trash.
class TntAddingFlow : public QObject
{
    Q_OBJECT

public:
    TntAddingFlow(AppContext &context, QWidget *window);

    // Local .torrent files as file URLs; magnet and http(s) links as they are.
    void open(const QList<QUrl> &sources);
    // Command-line arguments and dropped text: paths, links and info-hashes.
    static QList<QUrl> sourcesOf(const QStringList &arguments);
    static bool isTntSource(const QUrl &url);
    void chooseFiles();
    void enterLinks(const QStringList &links = {});

    const QList<QUrl> &pendingTntURLs() const { return m_pendingTntURLs; }
    // Additions begun from a window and not yet ended, their waits for the server's listing included.
    int additionsUnderWay() const { return m_additionsUnderWay; }

private:
    void openPending();
    QCoro::Task<> openFile(QString path);
    // Several files added with the defaults, with progress and Cancel.
    QCoro::Task<> addFiles(QStringList paths);
    void openWindow(const QString &source, const std::optional<TntMetadata> &metadata);
    void acceptLinks(QStringList urls);
    API::TntAddingOptions defaultOptions() const;
    void trash(const QString &path) const;
    // `tntFile` goes to the trash after adding when the settings say so; empty for a link.
    QCoro::Task<> addTnt(API::TntAddingOptions options, bool start, QString hash, QList<int> filePriorities,
                         QString tntFile);
    QCoro::Task<> addLinks(QStringList urls);

    AppContext &m_context;
    QWidget *m_window;
    QList<QUrl> m_pendingTntURLs;
    int m_additionsUnderWay = 0;
};
