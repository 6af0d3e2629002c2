#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/AppContext.h"
#include "support/Await.h"
#include "support/ConnectedServer.h"
#include "support/FileManagerService.h"
#include "support/TorrentFactory.h"
#include "ui/MainWindow.h"
#include "ui/TntContentTree.h"
#include "ui/TntContextMenu.h"
#include "ui/PiecesBar.h"
#include "ui/TntDetailPane.h"
#include "ui/TntReveal.h"
#include "ui/TntTableModel.h"
#include "ui/TransferStatus.h"
#include "ui/TntActions.h"
#include "ui/TntHttpSources.h"
#include "support/Widgets.h"

#include <QApplication>
#include <QMenu>
#include <QDir>
#include <QSignalSpy>
#include <QUrl>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

using Flavor = QbtServer::Flavor;
using QuilloTest::wait;

// The detail pane of a seeded torrent on real servers: what the server says of it shows in the
// tabs, a file priority set in the Content tab reaches the server, and its files are revealed
// where a path mapping says they are (with a file manager on a private session bus).
class TestDetailsRealServers : public QObject
{
    Q_OBJECT

public:
    explicit TestDetailsRealServers(Flavor flavor)
        : m_flavor(flavor)
    {}

private:
    const Flavor m_flavor;
    std::unique_ptr<ConnectedServer> m_server;
    AppContext *m_context = nullptr;
    MainWindow *m_window = nullptr;

    QStringList rows(const QAbstractItemModel &model, const QModelIndex &parent = {}) const
    {
        QStringList texts;
        for (int row = 0; row < model.rowCount(parent); ++row)
            texts << model.index(row, 0, parent).data().toString();
        return texts;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QUILLO_CONNECT(m_server, m_flavor);
        m_context = &m_server->context();
        m_window = &m_server->show<MainWindow>();
    }

    void cleanupTestCase() { m_server.reset(); }

    void seededTorrent()
    {
        const QbtServer::DataDir data = m_server->server().makeDataDir();
        const QString tracker = QStringLiteral("http://127.0.0.1:1/announce");
        const QString webSeed = QStringLiteral("http://127.0.0.1:1/seed/");
        const auto made = TorrentFactory::multiFile(data.localPath, QStringLiteral("Details"),
                                                    {{QStringLiteral("a.bin"), 20'000}, {QStringLiteral("sub/b.bin"), 30'000}},
                                                    {.announceUrls = {tracker}, .webSeeds = {webSeed}});
        wait(m_context->client()->perform(API::Endpoint::TntManagement::add(TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(made), {"savepath", data.serverPath.toUtf8()}}))));
        QTRY_VERIFY_WITH_TIMEOUT(m_context->tntCollection().find(made.infoHash)
                                     && m_context->tntCollection().find(made.infoHash)->progress() == 1.0,
                                 20'000);

        m_context->setSelectedTnts({made.infoHash});
        TntDetailPane &pane = *m_window->detailPane();
        QVERIFY(pane.isVisible());
        pane.tabs()->setCurrentIndex(0);
        QTRY_VERIFY_WITH_TIMEOUT(pane.generalText().contains(QStringLiteral("Info hash v1: ") + made.infoHash), 10'000);
        QVERIFY(pane.generalText().contains(QStringLiteral("Total size: ") + TntFormat::size(made.totalSize)));

        // A complete torrent holds every piece; the states are asked for only while the General tab shows.
        TntDetailContext &details = m_context->tntDetails();
        const QList<API::PieceState> held(4, API::PieceState::have); // 50,000 bytes in 16 KiB pieces
        QTRY_COMPARE_WITH_TIMEOUT(details.pieceStates(), held, 10'000);
        QCOMPARE(pane.piecesBar()->states(), held);
        pane.tabs()->setCurrentIndex(1);
        details.setPieceStates({});
        QSignalSpy rounds(&m_context->transferRates(), &RateHistory::changed);
        QTRY_VERIFY_WITH_TIMEOUT(rounds.count() >= 2, 10'000);
        QVERIFY(details.pieceStates().isEmpty());
        QVERIFY(!details.rates().samples().empty()); // the torrent's rates are kept while it is shown
        QTRY_VERIFY_WITH_TIMEOUT(rows(*pane.trackerView()->model()).contains(tracker), 10'000);
        // Each server names the edited tracker its own way (origUrl, then url from API 2.15).
        const QString edited = QStringLiteral("http://127.0.0.1:2/announce?edited");
        wait(m_context->editTracker(made.infoHash, tracker, edited));
        QVERIFY(!m_context->clientError());
        QTRY_VERIFY_WITH_TIMEOUT(rows(*pane.trackerView()->model()).contains(edited), 10'000);
        QVERIFY(!rows(*pane.trackerView()->model()).contains(tracker));

        // 5.3 refuses share limits without its newer fields; older servers take them without.
        wait(m_context->client()->perform(
            API::Endpoint::TntManagement::setShareLimits({made.infoHash}, 1.5, 90, 30, m_context->webAPIVersion())));
        QTRY_COMPARE_WITH_TIMEOUT(m_context->tntCollection().find(made.infoHash)->ratioLimit(), 1.5, 10'000);

        pane.tabs()->setCurrentIndex(4);
        const TntContentModel &content = *pane.contentTree()->contentModel();
        QTRY_COMPARE_WITH_TIMEOUT(rows(content), QStringList{QStringLiteral("Details")}, 10'000);
        const QModelIndex top = content.index(0, 0);
        QCOMPARE(rows(content, top), (QStringList{QStringLiteral("a.bin"), QStringLiteral("sub")}));
        QCOMPARE(top.siblingAtColumn(TntContentModel::progressColumn).data().toString(), TntFormat::percent(1));

        // Skipped in the tree, skipped on the server: the next refresh reads it back from there.
        const QModelIndex file = content.index(0, 0, top);
        pane.contentTree()->contentModel()->setData(file, Qt::Unchecked, Qt::CheckStateRole);
        const auto serverPriority = [this] {
            for (const API::File &onServer : m_context->tntDetails().files()) {
                if (onServer.name.endsWith(QStringLiteral("a.bin")))
                    return onServer.priority;
            }
            return -1.0;
        };
        QTRY_COMPARE_WITH_TIMEOUT(serverPriority(), 0.0, 10'000);
        QCOMPARE(file.data(Qt::CheckStateRole).value<Qt::CheckState>(), Qt::Unchecked);
        QCOMPARE(top.data(Qt::CheckStateRole).value<Qt::CheckState>(), Qt::PartiallyChecked);

        pane.tabs()->setCurrentIndex(0);
        QTRY_COMPARE_WITH_TIMEOUT(details.pieceStates(), held, 10'000);
        QVERIFY(!m_context->clientError());
    }

    // Web seeds changed where the server can (from 5.1), and only listed where it cannot; a file and a
    // folder renamed in the Content tab, and the folder's files given a priority, as the server then lists them.
    void editedInTheTabs()
    {
        const QbtServer::DataDir data = m_server->server().makeDataDir();
        const QString webSeed = QStringLiteral("http://127.0.0.1:1/seed/");
        const auto made = TorrentFactory::multiFile(
            data.localPath, QStringLiteral("Edited"),
            {{QStringLiteral("a.bin"), 20'000}, {QStringLiteral("sub/b.bin"), 30'000}, {QStringLiteral("sub/c.bin"), 10'000}},
            {.webSeeds = {webSeed}});
        const QString hash = made.infoHash;
        wait(m_context->client()->perform(API::Endpoint::TntManagement::add(TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(made), {"savepath", data.serverPath.toUtf8()}}))));
        QTRY_VERIFY_WITH_TIMEOUT(m_context->tntCollection().find(hash) && m_context->tntCollection().find(hash)->progress() == 1.0,
                                 20'000);
        m_context->setSelectedTnts({hash});
        TntDetailPane &pane = *m_window->detailPane();

        pane.tabs()->setCurrentIndex(3);
        const auto seeds = [this] {
            QSet<QString> urls;
            for (const API::WebSeed &seed : m_context->tntDetails().webSeeds())
                urls.insert(seed.url);
            return urls;
        };
        QTRY_COMPARE_WITH_TIMEOUT(seeds(), QSet<QString>{webSeed}, 10'000);
        QTRY_COMPARE(pane.httpSources()->count(), 1);
        const bool edits = m_flavor != Flavor::Bookworm45;
        pane.httpSources()->item(0)->setSelected(true);
        std::unique_ptr<QMenu> menu(pane.httpSources()->menu());
        QCOMPARE(QuilloTest::menuItem(*menu, QStringLiteral("Remove web seed"))->isVisible(), edits);
        if (edits) {
            const QString added = QStringLiteral("http://127.0.0.1:2/added/");
            const QString edited = QStringLiteral("https://127.0.0.1:3/edited/");
            wait(m_context->detailEdits().addWebSeeds(hash, {added}));
            QTRY_COMPARE_WITH_TIMEOUT(seeds(), (QSet<QString>{webSeed, added}), 10'000);
            wait(m_context->detailEdits().editWebSeed(hash, added, edited));
            QTRY_COMPARE_WITH_TIMEOUT(seeds(), (QSet<QString>{webSeed, edited}), 10'000);
            wait(m_context->detailEdits().removeWebSeeds(hash, {webSeed, edited}));
            QTRY_COMPARE_WITH_TIMEOUT(seeds(), QSet<QString>(), 10'000);
            QCOMPARE(pane.httpSources()->count(), 0);
        }
        QVERIFY2(!m_context->clientError(), qPrintable(m_server->alert()));

        pane.tabs()->setCurrentIndex(4);
        TntContentModel &content = *pane.contentTree()->contentModel();
        QTRY_COMPARE_WITH_TIMEOUT(rows(content), QStringList{QStringLiteral("Edited")}, 10'000);
        const QModelIndex top = content.index(0, 0);
        QVERIFY(content.setData(content.index(0, 0, top), QStringLiteral("a & b é.bin"), Qt::EditRole));
        QVERIFY(content.setData(content.index(1, 0, top), QStringLiteral("inner"), Qt::EditRole));
        const auto onServer = [this] {
            QMap<QString, double> files; // name: priority
            for (const API::File &file : m_context->tntDetails().files())
                files.insert(file.name, file.priority);
            return files;
        };
        const QMap<QString, double> renamed{{QStringLiteral("Edited/a & b é.bin"), 1},
                                            {QStringLiteral("Edited/inner/b.bin"), 1},
                                            {QStringLiteral("Edited/inner/c.bin"), 1}};
        QTRY_COMPARE_WITH_TIMEOUT(onServer(), renamed, 10'000);
        QCOMPARE(rows(content, content.index(0, 0)), (QStringList{QStringLiteral("a & b é.bin"), QStringLiteral("inner")}));

        content.setPriority({content.index(1, 0, content.index(0, 0))}, TntContentModel::high);
        QTRY_COMPARE_WITH_TIMEOUT(onServer(), (QMap<QString, double>{{QStringLiteral("Edited/a & b é.bin"), 1},
                                                                    {QStringLiteral("Edited/inner/b.bin"), 6},
                                                                    {QStringLiteral("Edited/inner/c.bin"), 6}}),
                                  10'000);
        QVERIFY2(!m_context->clientError(), qPrintable(m_server->alert()));
    }

    // The server's folder mapped to a second one holding the same files, as a share mounted here
    // would: the torrent and one of its files are shown there.
    void revealedThroughTheMapping()
    {
        FileManagerService fileManager;
        QVERIFY(fileManager.publish(true));
        const QbtServer::DataDir data = m_server->server().makeDataDir();
        const auto made = TorrentFactory::multiFile(data.localPath, QStringLiteral("Shown"),
                                                    {{QStringLiteral("a.bin"), 20'000}, {QStringLiteral("sub/b.bin"), 10'000}});
        wait(m_context->client()->perform(API::Endpoint::TntManagement::add(TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(made), {"savepath", data.serverPath.toUtf8()}}))));
        QTRY_VERIFY_WITH_TIMEOUT(m_context->tntCollection().find(made.infoHash)
                                     && m_context->tntCollection().find(made.infoHash)->progress() == 1.0,
                                 20'000);
        const QString share = m_server->scratchDir() + QStringLiteral("/share");
        QVERIFY(QDir().mkpath(share + QStringLiteral("/Shown/sub")));
        for (const QString &file : {QStringLiteral("Shown/a.bin"), QStringLiteral("Shown/sub/b.bin")})
            QVERIFY(QFile::copy(data.localPath + u'/' + file, share + u'/' + file));
        m_context->settings().setPathMapping({{.remotePath = data.serverPath, .bookmarkData = share.toUtf8()}});
        const auto uri = [&share](const QString &relative) {
            return QString::fromUtf8(QUrl::fromLocalFile(share + u'/' + relative).toEncoded());
        };

        TntContextMenu menu(*m_window->tntActions(), {made.infoHash});
        m_window->tntActions()->action(TntActions::Id::showInFileManager)->trigger();
        QTRY_COMPARE(fileManager.shown, QList<QStringList>{{uri(QStringLiteral("Shown"))}});
        m_window->reveal()->showFiles(made.infoHash, {QStringLiteral("Shown/sub/b.bin")});
        QTRY_COMPARE(fileManager.shown.size(), 2);
        QCOMPARE(fileManager.shown.last(), QStringList{uri(QStringLiteral("Shown/sub/b.bin"))});
    }
};

QUILLO_PER_FLAVOR_MAIN(TestDetailsRealServers)

#include "tst_details_realservers.moc"
