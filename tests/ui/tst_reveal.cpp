#include "support/FileManagerService.h"
#include "support/ScriptedTorrents.h"
#include "support/Widgets.h"
#include "ui/EditorSheet.h"
#include "ui/MainWindow.h"
#include "ui/SettingsWindow.h"
#include "ui/TntActions.h"
#include "ui/TntContentTree.h"
#include "ui/TntContextMenu.h"
#include "ui/TntDetailPane.h"
#include "ui/TntReveal.h"
#include "ui/TntTableView.h"

#include <QDesktopServices>
#include <QLineEdit>
#include <QMessageBox>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QUrl>

namespace {

// What QDesktopServices was asked to open.
class Opened : public QObject
{
    Q_OBJECT

public:
    QStringList urls;

public Q_SLOTS:
    void open(const QUrl &url) { urls.append(QString::fromUtf8(url.toEncoded())); }
};

// Paths as a server in a container reports them: all under "/srv/dl", which the tests map.
QByteArray mainData()
{
    // "\/" is JSON's "/": two slashes in a raw string read as a comment to moc.
    return R"({"rid":1,"full_update":true,"torrents":{
        "one":{"name":"my film #1.mkv","progress":1,"state":"stalledUP","save_path":"\/srv\/dl",
               "content_path":"\/srv\/dl\/my film #1.mkv"},
        "album":{"name":"Album","progress":1,"state":"stalledUP","save_path":"\/srv\/dl",
                 "content_path":"\/srv\/dl\/Album"},
        "part":{"name":"part.iso","progress":0.5,"state":"downloading","save_path":"\/srv\/dl",
                "content_path":"\/srv\/dl\/new\/part.iso"},
        "far":{"name":"Far","progress":1,"state":"stalledUP","save_path":"\/elsewhere",
               "content_path":"\/elsewhere\/Far"}},
        "server_state":{"connection_status":"connected"}})";
}

} // namespace

// Revealing and opening torrents' files through the path mapping, offscreen against a scripted
// server, with the file manager on a private session bus (run through with-secret-service).
class TestReveal : public QObject
{
    Q_OBJECT

    QTemporaryDir m_local; // the share as mounted here: holds my film #1.mkv and Album/cd1/a.flac
    std::unique_ptr<ScriptedTorrents> m_server;
    std::unique_ptr<MainWindow> m_window;
    FileManagerService m_fileManager;
    Opened m_opened;

    TntReveal &reveal() { return *m_window->reveal(); }
    QString local(const QString &relative) const { return m_local.filePath(relative); }
    QString uri(const QString &relative) const { return QString::fromUtf8(QUrl::fromLocalFile(local(relative)).toEncoded()); }

    void map(const QString &remote, const QString &folder)
    {
        m_server->context->settings().setPathMapping({{.remotePath = remote, .bookmarkData = folder.toUtf8()}});
    }

    void publishFileManager(bool published) { QVERIFY(m_fileManager.publish(published)); }

    // Waits for the file manager or the fallback to be asked, and says what each was asked.
    QString asked()
    {
        (void)QTest::qWaitFor([this] { return !m_fileManager.shown.isEmpty() || !m_opened.urls.isEmpty(); });
        QStringList said;
        for (const QStringList &call : std::as_const(m_fileManager.shown))
            said << u"show "_qs + call.join(u' ');
        for (const QString &url : std::as_const(m_opened.urls))
            said << u"open "_qs + url;
        return said.join(u" | "_qs).replace(QString::fromUtf8(QUrl::fromLocalFile(m_local.path()).toEncoded()), u"~"_qs);
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(m_fileManager.isConnected(), "run through with-secret-service, which starts a session bus");
        QVERIFY(QDir(m_local.path()).mkpath(u"Album/cd1"_qs));
        for (const QString &file : {u"my film #1.mkv"_qs, u"Album/cd1/a.flac"_qs}) {
            QFile made(local(file));
            QVERIFY(made.open(QIODevice::WriteOnly));
        }
        QDesktopServices::setUrlHandler(u"file"_qs, &m_opened, "open");
    }

    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(u"file"_qs); }

    void init()
    {
        m_server = std::make_unique<ScriptedTorrents>("2.11.0", mainData());
        m_server->server.setHandler([](const FakeServer::Request &request) {
            if (request.target.contains("/torrents/files"))
                return FakeServer::Response::json(R"([
                    {"index":0,"name":"Album/cd1/a.flac","size":10,"progress":1,"priority":1,"piece_range":[0,0],"availability":1},
                    {"index":1,"name":"Album/cd1/b.flac","size":10,"progress":0.5,"priority":1,"piece_range":[0,0],"availability":1}])");
            if (request.target.contains("/sync/maindata"))
                return FakeServer::Response::json(mainData());
            return FakeServer::Response::text(200, "");
        });
        map(u"/srv/dl"_qs, m_local.path());
        m_window = std::make_unique<MainWindow>(*m_server->context);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        m_fileManager.shown.clear();
        m_opened.urls.clear();
    }

    void cleanup()
    {
        publishFileManager(false);
        m_window.reset();
        m_server.reset();
    }

    // "Show in File Manager" from the table's menu: one request for every torrent it can reach,
    // and a clear word for those it cannot.
    void showInFileManager_data()
    {
        QTest::addColumn<QStringList>("hashes");
        QTest::addColumn<bool>("fileManager");
        QTest::addColumn<QString>("mappedTo"); // under the share; "" for the share itself
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("alert"); // title, then the details
        QTest::newRow("one file, its name escaped")
            << QStringList{u"one"_qs} << true << QString() << u"show ~/my%20film%20%231.mkv"_qs << QString();
        QTest::newRow("several in one request") << QStringList{u"one"_qs, u"album"_qs} << true << QString()
                                                << u"show ~/my%20film%20%231.mkv ~/Album"_qs << QString();
        QTest::newRow("not there yet: the nearest folder that is")
            << QStringList{u"part"_qs} << true << QString() << u"show ~"_qs << QString();
        QTest::newRow("no file manager: the folder opened")
            << QStringList{u"one"_qs, u"album"_qs} << false << QString() << u"open ~"_qs << QString();
        QTest::newRow("one without a mapping")
            << QStringList{u"one"_qs, u"far"_qs} << true << QString() << u"show ~/my%20film%20%231.mkv"_qs
            << u"Failed to resolve path mapping!|No access or path mapping found for: \"/elsewhere/Far\".\n"
               "Check your path mapping settings."_qs;
        QTest::newRow("share not mounted")
            << QStringList{u"one"_qs} << true << u"unmounted"_qs << QString()
            << u"The shared folder is not mounted|Quillo cannot reach \"~/unmounted\": it is not there. Mount the "
               "share that holds the torrent's files, or check your path mapping settings."_qs;
    }

    void showInFileManager()
    {
        QFETCH(QStringList, hashes);
        QFETCH(bool, fileManager);
        QFETCH(QString, mappedTo);
        QFETCH(QString, asked);
        QFETCH(QString, alert);
        publishFileManager(fileManager);
        if (!mappedTo.isEmpty())
            map(u"/srv/dl"_qs, local(mappedTo));
        if (!alert.isEmpty())
            QTest::ignoreMessage(mappedTo.isEmpty() ? QtCriticalMsg : QtWarningMsg,
                                 QRegularExpression(u"Failed to find path mapping|Folder not mounted"_qs));

        TntContextMenu menu(*m_window->tntActions(), hashes);
        QAction *item = QuilloTest::menuItem(menu, u"Show in File Manager"_qs);
        QVERIFY(item);
        item->trigger();
        QCOMPARE(this->asked(), asked);
        QMessageBox *shown = reveal().alert();
        const QString said = shown ? shown->text() + u'|' + shown->informativeText() : QString();
        QCOMPARE(QString(said).replace(m_local.path(), u"~"_qs), alert);
    }

    // Without any mapping for them the item says so, and leads to a new mapping for their folder.
    void notConfigured()
    {
        TntContextMenu mapped(*m_window->tntActions(), {u"far"_qs, u"one"_qs});
        QVERIFY(QuilloTest::menuItem(mapped, u"Show in File Manager"_qs));
        TntContextMenu menu(*m_window->tntActions(), {u"far"_qs});
        QAction *item = QuilloTest::menuItem(menu, u"Show in File Manager(not configured)"_qs);
        QVERIFY(item);
        item->trigger();

        const auto *settings = m_window->findChild<SettingsWindow *>();
        QVERIFY(settings);
        QTRY_VERIFY(settings->isVisible());
        QCOMPARE(settings->tabs()->currentWidget()->objectName(), u"pathMapping"_qs);
        QCOMPARE(m_server->context->settings().defaults().stringValue(UserDefaultsKey::selectedSettingsTab),
                 u"pathMapping"_qs);
        auto *editor = settings->findChild<EditorSheet *>();
        QVERIFY(editor);
        QTRY_VERIFY(editor->isVisible());
        QCOMPARE(editor->findChildren<QLineEdit *>().first()->text(), u"/elsewhere"_qs);
        QVERIFY(m_fileManager.shown.isEmpty());
    }

    // A double-click or Enter opens a finished torrent's content; a file still coming is revealed.
    void openOnActivation_data()
    {
        QTest::addColumn<QString>("hash");
        QTest::addColumn<bool>("enter"); // else a double-click
        QTest::addColumn<QString>("asked");
        QTest::newRow("a file in its application") << u"one"_qs << false << u"open ~/my%20film%20%231.mkv"_qs;
        QTest::newRow("a folder in the file manager") << u"album"_qs << true << u"open ~/Album"_qs;
        QTest::newRow("still downloading: revealed") << u"part"_qs << false << u"show ~"_qs;
    }

    void openOnActivation()
    {
        QFETCH(QString, hash);
        QFETCH(bool, enter);
        QFETCH(QString, asked);
        publishFileManager(true);
        QTableView &table = *m_window->tntTable()->table();
        QuilloTest::selectRows(table, {hash});
        const QModelIndex row = table.selectionModel()->selectedRows().first();
        table.setCurrentIndex(row);
        if (enter) {
            table.setFocus();
            QTest::keyClick(&table, Qt::Key_Return);
        } else {
            const QPoint at = table.visualRect(row).center();
            QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, at);
        }
        QCOMPARE(this->asked(), asked);
    }

    // The Content tab opens and reveals its rows where they are on this computer.
    void contentRows()
    {
        publishFileManager(true);
        QuilloTest::selectRows(*m_window->tntTable()->table(), {u"album"_qs});
        TntContentTree &tree = *m_window->detailPane()->contentTree();
        m_window->detailPane()->findChild<QTabWidget *>()->setCurrentWidget(tree.parentWidget());
        QTRY_COMPARE(tree.model()->rowCount(), 1);
        tree.expandAll();
        const QModelIndex cd1 = tree.model()->index(0, 0, tree.model()->index(0, 0));
        const QModelIndex done = tree.model()->index(0, 0, cd1);
        const QModelIndex coming = tree.model()->index(1, 0, cd1);
        QCOMPARE(done.data().toString(), u"a.flac"_qs);

        tree.selectionModel()->select(done, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        tree.selectionModel()->select(cd1, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        Q_EMIT tree.customContextMenuRequested(tree.visualRect(done).center());
        auto *menu = tree.findChild<QMenu *>();
        QVERIFY(menu);
        QuilloTest::menuItem(*menu, u"Show in File Manager"_qs)->trigger();
        QCOMPARE(this->asked(), u"show ~/Album/cd1/a.flac ~/Album/cd1"_qs);

        m_fileManager.shown.clear();
        QuilloTest::menuItem(*menu, u"Open"_qs)->trigger();
        QCOMPARE(this->asked(), u"open ~/Album/cd1/a.flac"_qs);

        m_opened.urls.clear();
        tree.setCurrentIndex(coming);
        tree.setFocus();
        QTest::keyClick(&tree, Qt::Key_Return);
        QCOMPARE(this->asked(), u"show ~/Album/cd1"_qs);
    }
};

QTEST_MAIN(TestReveal)
#include "tst_reveal.moc"
