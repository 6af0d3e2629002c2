#include "support/ScriptedTorrents.h"
#include "support/Widgets.h"
#include "support/Detached.h"
#include "ui/EditorSheet.h"
#include "ui/MainWindow.h"
#include "ui/TntActions.h"
#include "ui/TntCommands.h"
#include "ui/TntContextMenu.h"
#include "ui/TntTableModel.h"
#include "ui/TntTableView.h"
#include "ui/TransferStatus.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QTableView>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <functional>

using Open = std::function<void(TntCommands &)>;
Q_DECLARE_METATYPE(Open)

namespace {

using Set = QSet<QString>;
using QuilloTest::button;
const auto item = QuilloTest::menuItem;

QStringList texts(const QWidget &sheet)
{
    QStringList found;
    for (const QLabel *label : sheet.findChildren<QLabel *>())
        found << label->text();
    for (const QLineEdit *field : sheet.findChildren<QLineEdit *>())
        found << field->placeholderText();
    for (const QAbstractButton *button : sheet.findChildren<QAbstractButton *>())
        found << button->text();
    found.removeAll(QString());
    return found;
}

QStringList titles(const QMenu &menu)
{
    QStringList found;
    for (const QAction *action : menu.actions()) {
        if (!action->isSeparator())
            found << action->text() + (action->isCheckable() && action->isChecked() ? QStringLiteral(" ✓") : QString());
    }
    return found;
}

} // namespace

// The window's ways to act on torrents, clicked through offscreen against a scripted server.
class TestTntActions : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptedTorrents> m_server;
    std::unique_ptr<MainWindow> m_window;

    TntCommands &commands() { return *m_window->tntCommands(); }
    TntActions &actions() { return *m_window->tntActions(); }

    void select(const Set &hashes)
    {
        QuilloTest::selectRows(*m_window->tntTable()->table(), hashes);
        QCOMPARE(m_server->context->selectedTnts(), hashes);
    }

    // Waits for the request the last click sent.
    QByteArray sent()
    {
        // Empty after the wait fails the comparison that follows, with what was sent shown.
        (void)QTest::qWaitFor([this] { return !m_server->lastRequest().isEmpty(); });
        return m_server->lastRequest();
    }

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<ScriptedTorrents>();
        m_window = std::make_unique<MainWindow>(*m_server->context);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        m_server.reset();
    }

    void removeConfirmation_data()
    {
        QTest::addColumn<Set>("selected");
        QTest::addColumn<QString>("clicked"); // a row right-clicked outside the selection, else the Delete key
        QTest::addColumn<QString>("choice");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QString>("defaultChoice");
        const QString one = QStringLiteral("This torrent will be deleted immediately. You can’t undo this action.");
        const QString many = QStringLiteral("These torrents will be deleted immediately. You can’t undo this action.");
        QTest::newRow("two, everywhere") << Set{QStringLiteral("aaa"), QStringLiteral("ccc")} << QString()
                                         << QStringLiteral("Remove Everywhere")
                                         << QStringLiteral("Are you sure you want to remove 2 torrents?") << many
                                         << QByteArray("/api/v2/torrents/delete?hashes=aaa%7Cccc&deleteFiles=true")
                                         << QStringLiteral("Remove from List");
        QTest::newRow("nothing selected is all") << Set{} << QString() << QStringLiteral("Remove from List")
                                                 << QStringLiteral("Are you sure you want to remove All torrents?") << many
                                                 << QByteArray("/api/v2/torrents/delete?hashes=all&deleteFiles=false")
                                                 << QStringLiteral("Cancel");
        QTest::newRow("cancelled") << Set{QStringLiteral("bbb")} << QString() << QStringLiteral("Cancel")
                                   << QStringLiteral("Are you sure you want to remove 1 torrent?") << one << QByteArray()
                                   << QStringLiteral("Remove from List");
        QTest::newRow("outside the selection")
            << Set{QStringLiteral("aaa"), QStringLiteral("ccc")} << QStringLiteral("bbb")
            << QStringLiteral("Remove from List") << QStringLiteral("Are you sure you want to remove 1 torrent?") << one
            << QByteArray("/api/v2/torrents/delete?hashes=bbb&deleteFiles=false") << QStringLiteral("Remove from List");
    }

    // Through the Delete key of the table or the menu of a row, as users remove.
    void removeConfirmation()
    {
        QFETCH(Set, selected);
        QFETCH(QString, clicked);
        QFETCH(QString, choice);
        QFETCH(QString, title);
        QFETCH(QString, message);
        QFETCH(QByteArray, request);
        select(selected);
        m_window->tntTable()->table()->setFocus();
        if (clicked.isEmpty())
            QTest::keyClick(m_window->tntTable()->table(), Qt::Key_Delete);
        else
            item(TntContextMenu(actions(), {clicked}), QStringLiteral("Remove"))->trigger();
        const Set removed = clicked.isEmpty() ? selected : Set{clicked};
        auto *alert = qobject_cast<QMessageBox *>(commands().openSheet());
        QVERIFY(alert);
        QCOMPARE(alert->text(), title);
        QCOMPARE(alert->informativeText(), message);
        QCOMPARE(texts(*alert).filter(QStringLiteral("Remove")).size(), 2);
        QTEST(alert->defaultButton()->text(), "defaultChoice");
        button(*alert, choice)->click();
        if (request.isEmpty()) {
            // A command sent after the answer arrives after anything the answer would have sent.
            detached(m_server->context->recheckTnts(removed));
            QVERIFY(sent().contains("/torrents/recheck"));
            QVERIFY(std::none_of(m_server->server.requests().cbegin(), m_server->server.requests().cend(),
                                 [](const FakeServer::Request &r) { return r.target.contains("/torrents/delete"); }));
            QCOMPARE(m_server->context->tntCollection().size(), 3);
            return;
        }
        QCOMPARE(sent(), request);
        QTRY_COMPARE(m_server->context->tntCollection().size(), 3 - (removed.isEmpty() ? 3 : removed.size()));
        QVERIFY(m_server->context->selectedTnts().isEmpty());
        QVERIFY(m_window->tntTable()->selectedHashes().isEmpty()); // else Start would act on every torrent
    }

    // Without confirmation the selection goes at once, keeping its data; every torrent is still asked about.
    void removeWithoutConfirmation()
    {
        m_server->defaults.setValue(UserDefaultsKey::confirmTntDeleting, false);
        select({});
        m_window->toolbarAction(QStringLiteral("delete_tnt"))->trigger();
        QVERIFY(qobject_cast<QMessageBox *>(commands().openSheet()));
        commands().openSheet()->close();
        QTRY_VERIFY(!commands().openSheet());
        select({QStringLiteral("bbb")});
        m_window->toolbarAction(QStringLiteral("delete_tnt"))->trigger();
        QVERIFY(!commands().openSheet());
        QCOMPARE(sent(), QByteArray("/api/v2/torrents/delete?hashes=bbb&deleteFiles=false"));
    }

    void editors_data()
    {
        QTest::addColumn<Open>("open");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("request");
        QTest::newRow("location") << Open([](TntCommands &c) {
            c.editLocation({QStringLiteral("aaa"), QStringLiteral("bbb")});
        })
                                  << QStringList{QStringLiteral("New torrent location"), QStringLiteral("Location"),
                                                 QStringLiteral("/opt/etc/downloads/"), QStringLiteral("Save")}
                                  << QStringLiteral(" /new place/ ")
                                  << QByteArray("/api/v2/torrents/setLocation?hashes=aaa%7Cbbb&location=/new%20place/");
        QTest::newRow("name") << Open([](TntCommands &c) {
            c.rename(QStringLiteral("ccc"));
        }) << QStringList{QStringLiteral("Name"), QStringLiteral("New name"), QStringLiteral("Rename")}
                              << QStringLiteral("A & B")
                              << QByteArray("/api/v2/torrents/rename?hash=ccc&name=A%20%26%20B");
        QTest::newRow("tags") << Open([](TntCommands &c) { c.addTags({QStringLiteral("bbb")}); })
                              << QStringList{QStringLiteral("New tags"), QStringLiteral("tag1 tag2 tag3 ..."),
                                             QStringLiteral("Tags separated by space"), QStringLiteral("Add")}
                              << QStringLiteral("b a  b")
                              << QByteArray("/api/v2/torrents/addTags?hashes=bbb&tags=a%2C%20b");
        QTest::newRow("new tags") << Open([](TntCommands &c) { c.createTags(); })
                                  << QStringList{QStringLiteral("New tags")} << QStringLiteral("solo")
                                  << QByteArray("/api/v2/torrents/createTags?tags=solo");
        QTest::newRow("peers")
            << Open([](TntCommands &c) { c.addPeers({QStringLiteral("aaa")}); })
            << QStringList{QStringLiteral("List of peers to add (one Peer per line)"),
                           QStringLiteral("Format: IPv4:port / [IPv6]:port")}
            << QStringLiteral(" 10.0.0.1:6881\n\n[::1]:6882 \n")
            << QByteArray("/api/v2/torrents/addPeers?hashes=aaa&peers=10.0.0.1%3A6881%7C%5B%3A%3A1%5D%3A6882");
        QTest::newRow("trackers") << Open([](TntCommands &c) { c.addTrackers(QStringLiteral("aaa")); })
                                  << QStringList{QStringLiteral("List of trackers to add (one per line)")}
                                  << QStringLiteral("http://t/1\n  \nudp://t:2")
                                  << QByteArray(
                                         "/api/v2/torrents/addTrackers?hash=aaa&urls=http%3A//t/1%0Audp%3A//t%3A2");
        QTest::newRow("category") << Open([](TntCommands &c) { c.createCategory(); })
                                  << QStringList{QStringLiteral("Save path"), QStringLiteral("Create")}
                                  << QStringLiteral("music")
                                  << QByteArray("/api/v2/torrents/createCategory?category=music&savePath=");
    }

    // Each editor shows its texts, refuses blank input, trims what it sends.
    void editors()
    {
        QFETCH(Open, open);
        QFETCH(QStringList, shown);
        QFETCH(QString, typed);
        QFETCH(QByteArray, request);
        open(commands());
        auto *sheet = qobject_cast<EditorSheet *>(commands().openSheet());
        QVERIFY(sheet);
        QVERIFY(QTest::qWaitForWindowExposed(sheet));
        const QStringList onSheet = texts(*sheet);
        for (const QString &text : shown)
            QVERIFY2(onSheet.contains(text), qPrintable(text + QStringLiteral(" not in ") + onSheet.join(u'|')));

        // The first editable field takes the input.
        const auto lines = sheet->findChildren<QLineEdit *>();
        const auto editable =
            std::find_if(lines.cbegin(), lines.cend(), [](const QLineEdit *l) { return !l->isReadOnly(); });
        auto *text = sheet->findChild<QPlainTextEdit *>();
        const auto type = [&](const QString &value) {
            if (text)
                text->setPlainText(value);
            else
                (*editable)->setText(value);
        };
        type(QStringLiteral("   \n "));
        QVERIFY(!sheet->actionButton()->isEnabled());
        type(typed);
        QVERIFY(sheet->actionButton()->isEnabled());
        sheet->actionButton()->click();
        QCOMPARE(sent(), request);
    }

    void contextMenu_data()
    {
        QTest::addColumn<Set>("hashes");
        QTest::addColumn<QStringList>("categories");
        QTest::addColumn<QStringList>("tags");
        QTest::addColumn<QStringList>("toggles");
        QTest::newRow("one") << Set{QStringLiteral("bbb")}
                             << QStringList{QStringLiteral("Reset"), QStringLiteral("films ✓")}
                             << QStringList{QStringLiteral("Remove all"), QStringLiteral("Add tags..."),
                                            QStringLiteral("x"), QStringLiteral("y")}
                             << QStringList{QStringLiteral("Automatic torrent management"),
                                            QStringLiteral("Download first and last pieces first"),
                                            QStringLiteral("Download in sequential order"),
                                            QStringLiteral("Super seeding mode")};
        QTest::newRow("tag on both is checked")
            << Set{QStringLiteral("aaa"), QStringLiteral("ccc")}
            << QStringList{QStringLiteral("Reset"), QStringLiteral("films")}
            << QStringList{QStringLiteral("Remove all"), QStringLiteral("Add tags..."), QStringLiteral("x ✓"),
                           QStringLiteral("y")}
            << QStringList();
    }

    void contextMenu()
    {
        QFETCH(Set, hashes);
        QFETCH(QStringList, categories);
        QFETCH(QStringList, tags);
        QFETCH(QStringList, toggles);
        TntContextMenu menu(actions(), hashes.values());
        const QStringList top = titles(menu);
        QCOMPARE(top.mid(0, 14),
                 (QStringList{QStringLiteral("Start"), QStringLiteral("Stop"), QStringLiteral("Force start"),
                              QStringLiteral("Remove"), QStringLiteral("Show in File Manager(not configured)"),
                              QStringLiteral("Copy"), QStringLiteral("Force reannounce"),
                              QStringLiteral("Force recheck"), QStringLiteral("Rename..."),
                              QStringLiteral("Set location..."), QStringLiteral("Export .torrent..."), QStringLiteral("Category"), QStringLiteral("Tags"),
                              QStringLiteral("Add trackers...")}));
        for (const QString &toggle : toggles)
            QVERIFY(top.contains(toggle));
        QCOMPARE(item(menu, QStringLiteral("Rename..."))->isEnabled(), hashes.size() == 1);
        QCOMPARE(titles(*item(menu, QStringLiteral("Copy"))->menu()),
                 (QStringList{QStringLiteral("Name"), QStringLiteral("Hash"), QStringLiteral("Magnet link")}));
        QCOMPARE(titles(*item(menu, QStringLiteral("Category"))->menu()), categories);
        QCOMPARE(titles(*item(menu, QStringLiteral("Tags"))->menu()), tags);
    }

    // A right click on a selected row acts on the selection; on another row, on that row alone.
    void contextMenuTakesTheClickedRowOrItsSelection()
    {
        select({QStringLiteral("aaa"), QStringLiteral("ccc")});
        QTableView *table = m_window->tntTable()->table();
        QSignalSpy requested(m_window->tntTable(), &TntTableView::contextMenuRequested);
        const auto rightClick = [&](const QString &hash) {
            for (int row = 0; row < table->model()->rowCount(); ++row) {
                const QModelIndex index = table->model()->index(row, 0);
                if (index.data(TntTableModel::HashRole).toString() == hash)
                    Q_EMIT table->customContextMenuRequested(table->visualRect(index).center());
            }
            return requested.takeLast().constFirst().toStringList();
        };
        const QStringList selection = rightClick(QStringLiteral("ccc"));
        QCOMPARE(Set(selection.cbegin(), selection.cend()), (Set{QStringLiteral("aaa"), QStringLiteral("ccc")}));
        QCOMPARE(rightClick(QStringLiteral("bbb")), QStringList{QStringLiteral("bbb")});
    }

    void contextMenuActsOnItsTorrents()
    {
        select({QStringLiteral("bbb")});
        auto menu =
            std::make_unique<TntContextMenu>(actions(), QStringList{QStringLiteral("aaa"), QStringLiteral("ccc")});
        item(*item(*menu, QStringLiteral("Copy"))->menu(), QStringLiteral("Name"))->trigger();
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("Done\nBegun"));
        item(*item(*menu, QStringLiteral("Copy"))->menu(), QStringLiteral("Magnet link"))->trigger();
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 QStringLiteral("magnet:?xt=urn:btih:aaa\nmagnet:?xt=urn:btih:ccc"));

        item(*item(*menu, QStringLiteral("Tags"))->menu(), QStringLiteral("y"))->trigger();
        QCOMPARE(sent(), QByteArray("/api/v2/torrents/addTags?hashes=aaa%7Cccc&tags=y"));
        m_server->server.clearRequests();
        item(*item(*menu, QStringLiteral("Tags"))->menu(), QStringLiteral("x"))->trigger();
        QCOMPARE(sent(), QByteArray("/api/v2/torrents/removeTags?hashes=aaa%7Cccc&tags=x"));
        m_server->server.clearRequests();
        item(*menu, QStringLiteral("Super seeding mode"))->trigger();
        QCOMPARE(sent(), QByteArray("/api/v2/torrents/setSuperSeeding?hashes=aaa%7Cccc&value=true"));

        // Gone, the menu leaves the actions to the selection.
        menu.reset();
        m_server->server.clearRequests();
        m_window->toolbarAction(QStringLiteral("start_tnt"))->trigger();
        QCOMPARE(sent(), QByteArray("/api/v2/torrents/start?hashes=bbb"));
    }

    // A limit sheet shows the limit the server reads before anything can be typed; "Unlimited" is 0.
    void limitSheet_data()
    {
        QTest::addColumn<QString>("open"); // a context menu item, else the status bar's rate
        QTest::addColumn<QByteArray>("read"); // what the server answers the read
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("typed"); // KiB/s; -1 leaves what was read
        QTest::addColumn<QByteArray>("request");
        QTest::newRow("torrent, read and kept")
            << u"Limit download rate..."_qs << QByteArray(R"({"bbb":204800})") << u"200 KiB/s"_qs << -1
            << QByteArray("/api/v2/torrents/setDownloadLimit?hashes=bbb&limit=204800");
        QTest::newRow("torrent, below 1 KiB/s is not unlimited")
            << u"Limit upload rate..."_qs << QByteArray(R"({"bbb":100})") << u"1 KiB/s"_qs << -1
            << QByteArray("/api/v2/torrents/setUploadLimit?hashes=bbb&limit=1024");
        QTest::newRow("torrent, made unlimited")
            << u"Limit upload rate..."_qs << QByteArray(R"({"bbb":-1})") << u"Unlimited"_qs << 0
            << QByteArray("/api/v2/torrents/setUploadLimit?hashes=bbb&limit=0");
        QTest::newRow("a broken read leaves it unlimited")
            << u"Limit download rate..."_qs << QByteArray("<html>") << u"Unlimited"_qs << 64
            << QByteArray("/api/v2/torrents/setDownloadLimit?hashes=bbb&limit=65536");
        QTest::newRow("global, from the status bar")
            << QString() << QByteArray("1048576") << u"1024 KiB/s"_qs << 0
            << QByteArray("/api/v2/transfer/setUploadLimit?limit=0");
    }

    void limitSheet()
    {
        QFETCH(QString, open);
        QFETCH(QByteArray, read);
        QFETCH(QString, shown);
        QFETCH(int, typed);
        QFETCH(QByteArray, request);
        m_server->server.setHandler([this, read](const FakeServer::Request &r) {
            if (r.target.contains("Limit") && !r.target.contains("/set"))
                return FakeServer::Response::text(200, read);
            if (r.target.contains("/sync/maindata"))
                return FakeServer::Response::json(m_server->syncAnswer);
            return FakeServer::Response::text(200, "");
        });
        QSignalSpy opened(&commands(), &TntCommands::sheetOpened);
        if (open.isEmpty())
            m_window->transferStatus()->rateButton(true)->click();
        else
            item(TntContextMenu(actions(), {u"bbb"_qs}), open)->trigger();
        QCOMPARE(opened.size(), 1);
        auto *field = commands().openSheet()->findChild<QSpinBox *>();
        QTRY_VERIFY(field->isEnabled());
        QCOMPARE(field->text(), shown);
        // A read the server answered with something else is said, not taken for "Unlimited" silently.
        QCOMPARE(m_server->context->clientError().has_value(), read.startsWith('<'));
        if (typed >= 0)
            field->setValue(typed);
        m_server->server.clearRequests();
        button(*commands().openSheet(), u"Save"_qs)->click();
        QCOMPARE(sent(), request);
    }

    // The share limits sheet starts from what the torrents share and sends all three.
    void shareLimitSheet()
    {
        m_window.reset();
        m_server = std::make_unique<ScriptedTorrents>("2.11.0", R"({"rid":1,"full_update":true,"torrents":{
            "aaa":{"name":"A","ratio_limit":1.5,"seeding_time_limit":-1,"inactive_seeding_time_limit":-2},
            "bbb":{"name":"B","ratio_limit":1.5,"seeding_time_limit":60,"inactive_seeding_time_limit":-2}}})");
        m_window = std::make_unique<MainWindow>(*m_server->context);
        item(TntContextMenu(actions(), {u"aaa"_qs, u"bbb"_qs}), u"Limit share ratio..."_qs)->trigger();
        QDialog &sheet = *commands().openSheet();
        QCOMPARE(sheet.findChild<QComboBox *>(u"ratioChoice"_qs)->currentText(), u"Limit to"_qs);
        QCOMPARE(sheet.findChild<QDoubleSpinBox *>(u"ratio"_qs)->value(), 1.5);
        QCOMPARE(sheet.findChild<QComboBox *>(u"seedingTimeChoice"_qs)->currentText(), u"Use global limit"_qs);
        QCOMPARE(sheet.findChild<QComboBox *>(u"inactiveSeedingTimeChoice"_qs)->currentText(), u"Use global limit"_qs);
        sheet.findChild<QComboBox *>(u"seedingTimeChoice"_qs)->setCurrentIndex(1);
        sheet.findChild<QComboBox *>(u"inactiveSeedingTimeChoice"_qs)->setCurrentIndex(2);
        sheet.findChild<QSpinBox *>(u"inactiveSeedingTime"_qs)->setValue(45);
        button(sheet, u"Save"_qs)->click();
        QCOMPARE(sent(), QByteArray("/api/v2/torrents/setShareLimits?hashes=aaa%7Cbbb&ratioLimit=1.5&seedingTimeLimit=-1"
                                    "&inactiveSeedingTimeLimit=45"));
    }

    void toolbarAndStatusBar()
    {
        QStringList identifiers;
        for (const QAction *action : m_window->toolBar()->actions()) {
            if (!action->objectName().isEmpty())
                identifiers << action->objectName();
        }
        QCOMPARE(identifiers,
                 (QStringList{QStringLiteral("add_tnt_file"), QStringLiteral("add_tnt_link"),
                              QStringLiteral("delete_tnt"), QStringLiteral("start_tnt"), QStringLiteral("stop_tnt"),
                              QStringLiteral("min_tnt_prio"), QStringLiteral("decrease_tnt_prio"),
                              QStringLiteral("increase_tnt_prio"), QStringLiteral("max_tnt_prio"),
                              QStringLiteral("connection_menu"), QStringLiteral("log_in_out")}));
        select({QStringLiteral("ccc")});
        m_window->toolbarAction(QStringLiteral("max_tnt_prio"))->trigger();
        QCOMPARE(sent(), QByteArray("/api/v2/torrents/topPrio?hashes=ccc"));
        m_window->tntTable()->table()->setFocus();
        QTest::keyClick(m_window->tntTable()->table(), Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(m_server->context->selectedTnts().size(), 3);
        select({QStringLiteral("ccc")});
        QTest::keyClick(m_window->tntTable()->table(), Qt::Key_S, Qt::ControlModifier);
        QTRY_COMPARE(tntModelStateText(m_server->tnt("ccc").state()), QStringLiteral("stalledDL"));

        m_server->server.clearRequests();
        m_window->transferStatus()->altSpeedSwitch()->click();
        QCOMPARE(sent(), QByteArray("/api/v2/transfer/toggleSpeedLimitsMode?"));
    }

    void statusBarSwitches_data()
    {
        QTest::addColumn<int>("hidden"); // the switch turned off, -1 for none
        QTest::addColumn<QString>("shown");
        const auto row = [](const char *name, int key, const QStringList &middle) {
            const QString frame =
                QStringLiteral("Connection status: Connected | DHT Nodes: 7 | %1 | ▼ 0 B/s   ▲ 0 B/s");
            QTest::newRow(name) << key << frame.arg(middle.join(QStringLiteral(" | ")));
        };
        const QString space = QStringLiteral("Free Space: 5.0 GiB"), ratio = QStringLiteral("Global Ratio: 1.25");
        const QStringList totals{QStringLiteral("Downloaded: 1.0 KiB / 3.0 MiB"),
                                 QStringLiteral("Uploaded: 2.0 KiB / 4.0 MiB")};
        using K = UserDefaultsKey;
        row("all", -1, QStringList{space, ratio} + totals);
        row("no session", static_cast<int>(K::showSessionStats),
            {space, ratio, QStringLiteral("Downloaded: 3.0 MiB"), QStringLiteral("Uploaded: 4.0 MiB")});
        row("no all time", static_cast<int>(K::showAllTimeStats),
            {space, ratio, QStringLiteral("Downloaded: 1.0 KiB"), QStringLiteral("Uploaded: 2.0 KiB")});
        row("no free space", static_cast<int>(K::showFreeSpace), QStringList{ratio} + totals);
        row("no ratio", static_cast<int>(K::showGlobalRatio), QStringList{space} + totals);
    }

    void statusBarSwitches()
    {
        QFETCH(int, hidden);
        API::SGlobalTransferInfo state;
        state.dlInfoData = 1024;
        state.upInfoData = 2048;
        state.alltimeDl = 3 << 20;
        state.alltimeUl = 4 << 20;
        state.freeSpaceOnDisk = 5LL << 30;
        state.globalRatio = QStringLiteral("1.25");
        state.dhtNodes = 7;
        m_server->context->serverState().update(state);
        if (hidden >= 0)
            m_server->defaults.setValue(static_cast<UserDefaultsKey>(hidden), false);
        QTEST(m_window->transferStatus()->text(), "shown");
    }
};

QTEST_MAIN(TestTntActions)
#include "tst_tntactions.moc"
