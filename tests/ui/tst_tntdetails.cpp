#include "support/ScriptedTorrents.h"
#include "support/Widgets.h"
#include "ui/EditorSheet.h"
#include "ui/LinkedText.h"
#include "ui/MainWindow.h"
#include "ui/TntCommands.h"
#include "ui/TntDetailPane.h"
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
        return Response::json("[]");
    if (request.target.contains("/sync/torrentPeers"))
        return Response::json(R"({"rid":1,"full_update":true,
            "peers":{"10.0.0.1:6881":{"ip":"10.0.0.1","port":6881,"client":"qBittorrent"}}})");
    if (request.target.contains("/torrents/files"))
        return Response::json(
            R"([{"index":0,"name":"Done/a.bin","size":2048,"progress":1,"priority":1,"piece_range":[0,0],"availability":1}])");
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
        m_server = std::make_unique<ScriptedTorrents>();
        m_server->server.setHandler(detailAnswer);
        openWindow();
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
};

QTEST_MAIN(TestTntDetails)
#include "tst_tntdetails.moc"
