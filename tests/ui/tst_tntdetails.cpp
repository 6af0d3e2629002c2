#include "support/ScriptedTorrents.h"
#include "support/Widgets.h"
#include "ui/EditorSheet.h"
#include "ui/LinkedText.h"
#include "ui/MainWindow.h"
#include "ui/TntCommands.h"
#include "ui/TntContentTree.h"
#include "ui/TntDetailPane.h"
#include "ui/TntHttpSources.h"
#include "ui/TntTableModel.h"
#include "ui/TntTableView.h"
#include "ui/TransferStatus.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTextBlock>
#include <QTextDocument>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QTreeView>
#include <QUrlQuery>

namespace {

using Response = FakeServer::Response;

// What the scripted server knows of the torrents' details.
Response detailAnswer(const FakeServer::Request &request)
{
    // "\/" is JSON's "/": two slashes in a raw string read as a comment to moc.
    if (request.target.contains("/torrents/trackers"))
        return Response::json(R"([
            {"url":"** [DHT] **","status":2,"tier":-1,"num_peers":0,"num_seeds":0,"num_leeches":0,"num_downloaded":0,"msg":""},
            {"url":"http:\/\/t.example\/announce","status":2,"tier":0,"num_peers":3,"num_seeds":1,"num_leeches":2,
             "num_downloaded":5,"msg":""}])");
    if (request.target.contains("/torrents/webseeds"))
        return Response::json(R"([{"url":"http:\/\/seed.example\/files\/"}])");
    if (request.target.contains("/sync/torrentPeers"))
        return Response::json(R"({"rid":1,"full_update":true,
            "peers":{"10.0.0.1:6881":{"ip":"10.0.0.1","port":6881,"client":"qBittorrent"}}})");
    if (request.target.contains("/torrents/pieceStates"))
        return Response::json("[2]");
    if (request.target.contains("/torrents/properties"))
        return Response::json(R"({"save_path":"/data","creation_date":1700000000,"piece_size":16384,
            "comment":"<b>Mirror<\/b>: https:\/\/example.org\/a?x=1&y=2, or file:\/\/\/etc",
            "total_wasted":0,"total_uploaded":0,"total_uploaded_session":0,"total_downloaded":2048,
            "total_downloaded_session":0,"up_limit":-1,"dl_limit":-1,"time_elapsed":60,"seeding_time":0,
            "nb_connections":1,"nb_connections_limit":100,"share_ratio":0,"addition_date":1700000000,
            "completion_date":1700000100,"created_by":"Quillo","dl_speed_avg":0,"dl_speed":0,"eta":8640000,
            "infohash_v1":"aaa","last_seen":-1,"peers":1,"peers_total":1,"pieces_have":1,"pieces_num":1,
            "reannounce":0,"seeds":0,"seeds_total":0,"total_size":2048,"up_speed_avg":0,"up_speed":0})");
    if (request.target.contains("/sync/maindata"))
        return Response::json(ScriptedTorrents::mainData());
    return Response::text(200, "");
}

const auto item = QuilloTest::menuItem;

const QByteArray oneFile = "[{\"index\":0,\"name\":\"Done/a.bin\",\"size\":2048,\"progress\":1,\"priority\":1,"
                           "\"piece_range\":[0,0],\"availability\":1}]";

QStringList linksIn(const QString &html)
{
    QStringList links;
    QTextDocument document;
    document.setHtml(html);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment) {
            if (fragment.fragment().charFormat().isAnchor())
                links << fragment.fragment().charFormat().anchorHref();
        }
    }
    return links;
}

} // namespace

// The detail pane in the window, offscreen, against a scripted server.
class TestTntDetails : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptedTorrents> m_server;
    std::unique_ptr<MainWindow> m_window;
    // What the server lists of the torrent's files, and how it answers a rename.
    QByteArray m_files;
    int m_renameStatus = 200;

    TntDetailPane &pane() { return *m_window->detailPane(); }
    QToolButton &toggle() { return *m_window->transferStatus()->tntDetailsToggle(); }

    void openWindow()
    {
        m_window = std::make_unique<MainWindow>(*m_server->context);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    void select(const QSet<QString> &hashes) { QuilloTest::selectRows(*m_window->tntTable()->table(), hashes); }

    // The requests to `path` so far, as "target?body".
    QList<QByteArray> sent(const QByteArray &path) const
    {
        QList<QByteArray> found;
        for (const FakeServer::Request &request : m_server->server.requests()) {
            if (request.target.contains(path))
                found << request.target + '?' + request.body;
        }
        return found;
    }

    void connectTo(const QByteArray &apiVersion)
    {
        m_window.reset();
        m_server = std::make_unique<ScriptedTorrents>(apiVersion);
        m_server->server.setHandler([this](const FakeServer::Request &request) {
            if (request.target.contains("/torrents/files"))
                return Response::json(m_files);
            if (request.target.contains("/torrents/rename"))
                return Response::text(m_renameStatus, "");
            return detailAnswer(request);
        });
        openWindow();
    }

    TntContentTree &showContent()
    {
        select({QStringLiteral("aaa")});
        pane().tabs()->setCurrentIndex(4);
        TntContentTree &tree = *pane().contentTree();
        tree.expandAll();
        return tree;
    }

    // The tree's row at a "/"-separated path of names from the top.
    static QModelIndex rowAt(const QTreeView &tree, const QString &path)
    {
        QModelIndex at;
        for (const QString &name : path.split(u'/')) {
            const QModelIndexList found =
                tree.model()->match(tree.model()->index(0, 0, at), Qt::DisplayRole, name, 1, Qt::MatchExactly);
            if (found.isEmpty())
                return {};
            at = found.first();
        }
        return at;
    }

    QStringList linksInTheComment()
    {
        QStringList links;
        for (const QLabel *label : pane().findChildren<QLabel *>()) {
            if (label->textFormat() == Qt::RichText && label->text().contains(QStringLiteral("Mirror")))
                links << linksIn(label->text());
        }
        return links;
    }

    void showRowOf(QTreeView &view, int rows)
    {
        QTRY_COMPARE(view.model()->rowCount(), rows);
        view.selectionModel()->select(view.model()->index(rows - 1, 0),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }

private Q_SLOTS:
    void init()
    {
        m_files = oneFile;
        m_renameStatus = 200;
        connectTo("2.11.0");
    }

    void cleanup()
    {
        m_window.reset();
        m_server.reset();
    }

    void toggleHidesAndShowsAndIsKept()
    {
        QVERIFY(pane().isVisible()); // a fresh start shows the details below the table
        QCOMPARE(toggle().text(), QStringLiteral("Hide torrent details"));
        QCOMPARE(toggle().toolTip(), QStringLiteral("Hide torrent details"));
        toggle().click();
        QVERIFY(!pane().isVisible());
        QCOMPARE(toggle().text(), QStringLiteral("Show torrent details"));
        select({QStringLiteral("aaa")});
        QTest::qWait(100);
        QVERIFY(sent("/torrents/properties").isEmpty()); // nothing is loaded for a hidden pane

        toggle().click();
        QVERIFY(pane().isVisible());
        QTRY_VERIFY(pane().generalText().contains(QStringLiteral("Total size: ") + TntFormat::size(2048)));
        QVERIFY(pane().generalText().contains(QStringLiteral("Created by: Quillo")));
        // The server's text stays text; only its web link is one.
        QVERIFY(pane().generalText().contains(QStringLiteral("Comment: <b>Mirror</b>: https://example.org/a?x=1&y=2, or file:///etc")));
        const QStringList links = linksInTheComment();
        QCOMPARE(links, QStringList{QStringLiteral("https://example.org/a?x=1&y=2")});
        select({QStringLiteral("aaa"), QStringLiteral("ccc")});
        QCOMPARE(pane().emptyText(), QStringLiteral("2 torrents selected"));
        select({});
        QCOMPARE(pane().emptyText(), QStringLiteral("No torrent selected"));

        openWindow();
        QVERIFY(pane().isVisible());
        toggle().click();
        QVERIFY(!pane().isVisible());
        openWindow();
        QVERIFY(!pane().isVisible());
        QCOMPARE(toggle().text(), QStringLiteral("Show torrent details"));

        // So is the window's size, once it was closed.
        QCOMPARE(m_window->size(), QSize(1360, 820));
        m_window->resize(1000, 700);
        m_window->close();
        openWindow();
        QCOMPARE(m_window->size(), QSize(1000, 700));
    }

    // A comment reads as the server wrote it; only its web and magnet links are links.
    void commentLinks_data()
    {
        QTest::addColumn<QString>("comment");
        QTest::addColumn<QStringList>("links");
        const auto row = [](const char *name, const char *comment, QStringList links) {
            QTest::newRow(name) << QString::fromUtf8(comment) << links;
        };
        row("closing punctuation stays out", "See https://a.org/x. Or (http://b.org/y)!",
            {QStringLiteral("https://a.org/x"), QStringLiteral("http://b.org/y")});
        row("magnet with its parameters", "magnet:?xt=urn:btih:abc&dn=x y",
            {QStringLiteral("magnet:?xt=urn:btih:abc&dn=x")});
        row("scheme in capitals", "HTTPS://A.ORG/", {QStringLiteral("HTTPS://A.ORG/")});
        row("other schemes are text", "javascript:alert(1) file:///etc ftp://c.org data:text/html,x", {});
        row("markup is text", "<a href=\"javascript:x\">y</a> <b>z</b>", {});
        row("a link inside markup ends at the quote", "<img src='http://d.org/i.png'>", {QStringLiteral("http://d.org/i.png")});
        row("lines and spaces kept", "one\nhttp://e.org\nthree  four", {QStringLiteral("http://e.org")});
    }

    void commentLinks()
    {
        QFETCH(QString, comment);
        QFETCH(QStringList, links);
        const QString html = LinkedText::html(comment);
        QCOMPARE(linksIn(html), links);
        QTextDocument document;
        document.setHtml(html);
        QCOMPARE(document.toPlainText(), comment);
        for (const QString &link : links)
            QVERIFY(LinkedText::isOpenable(link));
    }

    void theTabIsKept()
    {
        select({QStringLiteral("aaa")});
        pane().tabs()->setCurrentIndex(2);
        QTRY_VERIFY(!sent("/sync/torrentPeers").isEmpty()); // the tab's details come at once
        QCOMPARE(m_server->defaults.stringValue(UserDefaultsKey::selectedTntDetailTab), QStringLiteral("peers"));
        openWindow();
        QCOMPARE(pane().tabs()->tabText(pane().tabs()->currentIndex()), QStringLiteral("Peers"));
    }

    void trackerAndPeerCommands()
    {
        select({QStringLiteral("aaa")});
        pane().tabs()->setCurrentIndex(1);
        showRowOf(*pane().trackerView(), 2);
        // The DHT row is no tracker: only a real one can be edited.
        std::unique_ptr<QMenu> menu(pane().trackerMenu());
        QVERIFY(item(*menu, QStringLiteral("Edit tracker URL..."))->isEnabled());
        const qsizetype fetched = sent("/torrents/trackers").size();
        item(*menu, QStringLiteral("Edit tracker URL..."))->trigger();
        auto *sheet = qobject_cast<EditorSheet *>(m_window->tntCommands()->openSheet());
        QVERIFY(sheet);
        auto *url = sheet->findChild<QLineEdit *>();
        QCOMPARE(url->text(), QStringLiteral("http://t.example/announce"));
        url->setText(QStringLiteral(" http://new.example/announce "));
        sheet->actionButton()->click();
        QTRY_COMPARE(sent("/torrents/editTracker"),
                     QList<QByteArray>{"/api/v2/torrents/editTracker?hash=aaa&origUrl=http%3A//t.example/announce"
                                       "&newUrl=http%3A//new.example/announce"});
        QTRY_VERIFY(sent("/torrents/trackers").size() > fetched); // the list is fetched again

        pane().tabs()->setCurrentIndex(2);
        showRowOf(*pane().peerView(), 1);
        menu.reset(pane().peerMenu());
        item(*menu, QStringLiteral("Ban peer permanently"))->trigger();
        auto *confirmation = qobject_cast<QMessageBox *>(m_window->tntCommands()->openSheet());
        QVERIFY(confirmation);
        QuilloTest::button(*confirmation, QStringLiteral("Ban"))->click();
        QTRY_COMPARE(sent("/transfer/banPeers"), QList<QByteArray>{"/api/v2/transfer/banPeers?peers=10.0.0.1%3A6881"});
    }

    void renameInPlace_data()
    {
        QTest::addColumn<QString>("row");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QString>("failure"); // the alert's title; none when the server took it
        QTest::newRow("file") << u"Done/a.bin"_qs << u"b & c.bin"_qs << 200
                              << QByteArray("/api/v2/torrents/renameFile?hash=aaa&oldPath=Done/a.bin&newPath=Done/b%20%26%20c.bin")
                              << QString();
        QTest::newRow("folder") << u"Done"_qs << u"Finished"_qs << 200
                                << QByteArray("/api/v2/torrents/renameFolder?hash=aaa&oldPath=Done&newPath=Finished")
                                << QString();
        QTest::newRow("refused file") << u"Done/a.bin"_qs << u"b.bin"_qs << 409
                                      << QByteArray("/api/v2/torrents/renameFile?hash=aaa&oldPath=Done/a.bin&newPath=Done/b.bin")
                                      << u"Failed to rename file."_qs;
    }

    // F2 and a new name: the row shows it before the server answers; what the server lists next
    // keeps the row, and a refusal brings the old name back.
    void renameInPlace()
    {
        QFETCH(QString, row);
        QFETCH(QString, name);
        QFETCH(int, status);
        QFETCH(QByteArray, request);
        QFETCH(QString, failure);
        m_renameStatus = status;
        TntContentTree &tree = showContent();
        QTRY_VERIFY(rowAt(tree, row).isValid());
        const QPersistentModelIndex renamed = rowAt(tree, row);
        const QString oldName = renamed.data().toString();
        tree.setCurrentIndex(renamed);
        QTest::keyClick(&tree, Qt::Key_F2);
        auto *editor = tree.viewport()->findChild<QLineEdit *>();
        QVERIFY(editor);
        QCOMPARE(editor->text(), oldName);
        editor->setText(name);
        QTest::keyClick(editor, Qt::Key_Return);
        // The delegate commits in a queued call; the server's answer needs socket events besides.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        QCOMPARE(renamed.data().toString(), name);

        QTRY_COMPARE(sent("/torrents/rename"), QList<QByteArray>{request});
        if (status == 200)
            m_files.replace(oldName.toUtf8(), name.toUtf8());
        const qsizetype asked = sent("/torrents/files").size();
        QTRY_VERIFY(sent("/torrents/files").size() > asked + 1);
        QVERIFY(renamed.isValid());
        QCOMPARE(renamed.data().toString(), failure.isEmpty() ? name : oldName);
        const auto &alert = m_server->context->clientError();
        QCOMPARE(alert ? alert->title() : QString(), failure);
    }

    void renameRefusedHere()
    {
        TntContentTree &tree = showContent();
        QTRY_VERIFY(rowAt(tree, u"Done/a.bin"_qs).isValid());
        QVERIFY(!tree.model()->setData(rowAt(tree, u"Done/a.bin"_qs), u"x/y.bin"_qs, Qt::EditRole));
        auto *refusal = tree.findChild<QMessageBox *>(u"renameRefused"_qs);
        QVERIFY(refusal);
        QCOMPARE(refusal->text(), u"A name cannot contain \"/\"."_qs);
        QVERIFY(rowAt(tree, u"Done/a.bin"_qs).isValid());
        QVERIFY(sent("/torrents/rename").isEmpty());
    }

    void folderPriorityInOneRequest_data()
    {
        QTest::addColumn<QStringList>("selected");
        QTest::addColumn<int>("files");
        QTest::newRow("the top folder") << QStringList{u"Big"_qs} << 10'000;
        QTest::newRow("two folders") << QStringList{u"Big/A"_qs, u"Big/B"_qs} << 10'000;
        QTest::newRow("a folder and a file in it") << QStringList{u"Big/A"_qs, u"Big/A/f7.bin"_qs} << 5'000;
    }

    // However many files the selected rows hold, their priority is one request.
    void folderPriorityInOneRequest()
    {
        QFETCH(QStringList, selected);
        QFETCH(int, files);
        m_files = "[";
        for (int file = 0; file < 10'000; ++file) {
            const QByteArray index = QByteArray::number(file);
            m_files += QByteArray(file == 0 ? "" : ",") + "{\"index\":" + index + ",\"name\":\"Big/"
                       + (file < 5000 ? "A" : "B") + "/f" + index
                       + ".bin\",\"size\":10,\"progress\":0,\"priority\":1,\"piece_range\":[0,0],\"availability\":1}";
        }
        m_files += "]";
        TntContentTree &tree = showContent();
        QTRY_VERIFY(rowAt(tree, u"Big/B"_qs).isValid());
        tree.clearSelection();
        for (const QString &path : selected)
            tree.selectionModel()->select(rowAt(tree, path), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        Q_EMIT tree.customContextMenuRequested(tree.visualRect(rowAt(tree, selected.first())).center());
        auto *menu = tree.findChild<QMenu *>();
        QVERIFY(menu);
        item(*menu, QStringLiteral("Do not download"))->trigger();

        QTRY_COMPARE(sent("/torrents/filePrio").size(), 1);
        QTest::qWait(50);
        const QList<QByteArray> requests = sent("/torrents/filePrio");
        QCOMPARE(requests.size(), 1);
        const QUrlQuery form(QString::fromUtf8(requests.first().mid(requests.first().indexOf('?') + 1)));
        QCOMPARE(form.queryItemValue(u"priority"_qs), u"0"_qs);
        const QStringList ids = form.queryItemValue(u"id"_qs, QUrl::FullyDecoded).split(u'|');
        QCOMPARE(QSet<QString>(ids.cbegin(), ids.cend()).size(), files);
        QCOMPARE(ids.size(), files);
    }

    void webSeeds_data()
    {
        QTest::addColumn<QByteArray>("apiVersion");
        QTest::addColumn<bool>("edits");
        QTest::newRow("5.0 lists them") << QByteArray("2.11.2") << false;
        QTest::newRow("5.1 edits them") << QByteArray("2.11.3") << true;
    }

    // The HTTP Sources tab reads the web seeds while it is open, and offers to change them where
    // the server can.
    void webSeeds()
    {
        QFETCH(QByteArray, apiVersion);
        QFETCH(bool, edits);
        connectTo(apiVersion);
        select({QStringLiteral("aaa")});
        pane().tabs()->setCurrentIndex(1);
        QTRY_VERIFY(!sent("/torrents/trackers").isEmpty());
        QVERIFY(sent("/torrents/webseeds").isEmpty());
        pane().tabs()->setCurrentIndex(3);
        QCOMPARE(pane().tabs()->tabText(3), QStringLiteral("HTTP Sources"));
        QCOMPARE(m_server->defaults.stringValue(UserDefaultsKey::selectedTntDetailTab), QStringLiteral("httpSources"));
        TntHttpSources &list = *pane().httpSources();
        QTRY_COMPARE(list.count(), 1);
        list.item(0)->setSelected(true);
        std::unique_ptr<QMenu> menu(list.menu());
        for (const QString &change : {u"Add web seeds..."_qs, u"Edit web seed URL..."_qs, u"Remove web seed"_qs})
            QCOMPARE(item(*menu, change)->isVisible(), edits);
        QVERIFY(item(*menu, u"Copy web seed URL"_qs)->isEnabled());
        if (!edits)
            return;
        const qsizetype read = sent("/torrents/webseeds").size();
        item(*menu, u"Remove web seed"_qs)->trigger();
        QTRY_COMPARE(sent("/torrents/removeWebSeeds"),
                     QList<QByteArray>{"/api/v2/torrents/removeWebSeeds?hash=aaa&urls=http%3A//seed.example/files/"});
        QTRY_VERIFY(sent("/torrents/webseeds").size() > read); // read again at once
    }
};

QTEST_MAIN(TestTntDetails)
#include "tst_tntdetails.moc"
