#include "support/ScriptedTorrents.h"
#include "support/Widgets.h"
#include "ui/MainMenus.h"
#include "ui/MainWindow.h"
#include "ui/SearchWindow.h"
#include "ui/ServerLogWindow.h"
#include "ui/SidebarView.h"
#include "ui/StatisticsWindow.h"
#include "ui/TntActions.h"
#include "ui/TntContextMenu.h"
#include "ui/TntDetailPane.h"
#include "ui/TntTableModel.h"
#include "ui/TntTableView.h"
#include "ui/Translation.h"

#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QTranslator>
#include <QTreeWidget>

namespace {

using Set = QSet<QString>;
using Panel = NavigationContext::Panel;

QList<QAction *> items(const QMenu &menu)
{
    QList<QAction *> found;
    for (QAction *action : menu.actions()) {
        if (!action->isSeparator())
            found << action;
    }
    return found;
}

} // namespace

// The menu bar, clicked through offscreen against a scripted server.
class TestMainMenus : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptedTorrents> m_server;
    std::unique_ptr<MainWindow> m_window;

    MainMenus &menus() { return *m_window->menus(); }

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

    void bar_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QStringList>("titles");
        QTest::addColumn<QString>("forceStart");
        QTest::addColumn<QString>("progress"); // a column of the table
        QTest::addColumn<QString>("general");  // a tab of the detail pane
        QTest::addColumn<QString>("untagged"); // an item of the sidebar's own
        QTest::newRow("English: the texts themselves")
            << "en" << QStringList{u"File"_qs, u"Edit"_qs, u"View"_qs, u"Torrent"_qs, u"Server"_qs, u"Help"_qs}
            << "Force start"
            << "Progress"
            << "General"
            << "Untagged";
        QTest::newRow("German") << "de_DE" << QStringList{u"Datei"_qs,   u"Bearbeiten"_qs, u"Ansicht"_qs,
                                                          u"Torrent"_qs, u"Server"_qs,     u"Hilfe"_qs}
                                << "Start erzwingen"
                                << "Fortschritt"
                                << "Allgemein"
                                << "Ohne Tag";
    }

    // The window in the user's language, as it is at start: its menus, the table's columns, the
    // detail pane.
    void bar()
    {
        QFETCH(QString, language);
        QFETCH(QStringList, titles);
        QFETCH(QString, forceStart);
        QFETCH(QString, progress);
        QFETCH(QString, general);
        QFETCH(QString, untagged);
        QCOMPARE(installTranslations(*QCoreApplication::instance(), QLocale(language)), language != u"en"_qs);
        m_window = std::make_unique<MainWindow>(*m_server->context);
        QStringList shown;
        for (const QAction *action : m_window->menuBar()->actions())
            shown << action->text();
        QCOMPARE(shown, titles);
        QVERIFY(QuilloTest::menuItem(*m_window->menuBar()->actions().at(3)->menu(), forceStart));
        const QAbstractItemModel &table = *m_window->findChild<TntTableView *>()->table()->model();
        QCOMPARE(table.headerData(TntTableModel::ProgressColumn, Qt::Horizontal).toString(), progress);
        QCOMPARE(m_window->findChild<TntDetailPane *>()->tabs()->tabText(0), general);
        QVERIFY(!m_window->findChild<QTreeWidget *>()
                     ->findItems(untagged, Qt::MatchExactly | Qt::MatchRecursive)
                     .isEmpty());
        QVERIFY(MainMenus::aboutText().contains(QString::fromLatin1(qVersion())));
        QVERIFY(MainMenus::aboutText().contains(QCoreApplication::applicationVersion().isEmpty()
                                                    ? QStringLiteral("Quillo ")
                                                    : QCoreApplication::applicationVersion()));
        for (QTranslator *translator : QCoreApplication::instance()->findChildren<QTranslator *>()) {
            QCoreApplication::removeTranslator(translator);
            delete translator;
        }
    }

    void torrentItemsAgreeWithToolbarAndContextMenu_data()
    {
        QTest::addColumn<Set>("selected");
        QTest::newRow("nothing") << Set{};
        QTest::newRow("one") << Set{QStringLiteral("bbb")};
        QTest::newRow("two") << Set{QStringLiteral("aaa"), QStringLiteral("ccc")};
    }

    // The same actions everywhere: what the Torrent menu enables for the selection, the toolbar and
    // a context menu over the same torrents enable too.
    void torrentItemsAgreeWithToolbarAndContextMenu()
    {
        QFETCH(Set, selected);
        QuilloTest::selectRows(*m_window->tntTable()->table(), selected);
        QHash<QString, bool> enabled;
        // As the menu opens: titles that depend on the torrents are read then.
        Q_EMIT menus().menu(QStringLiteral("Torrent"))->aboutToShow();
        for (QAction *action : items(*menus().menu(QStringLiteral("Torrent"))))
            enabled.insert(action->text(), action->isEnabled());
        QVERIFY(enabled.size() >= 20);

        for (QAction *action : m_window->toolBar()->actions()) {
            if (enabled.contains(action->text()))
                QCOMPARE(action->isEnabled(), enabled.value(action->text()));
        }
        QCOMPARE(m_window->toolbarAction(QStringLiteral("start_tnt")),
                 m_window->tntActions()->action(TntActions::Id::start));
        if (selected.isEmpty())
            return;
        TntContextMenu context(*m_window->tntActions(), selected.values());
        for (QAction *action : items(context)) {
            QVERIFY2(enabled.contains(action->text()), qPrintable(action->text()));
            QCOMPARE(action->isEnabled(), enabled.value(action->text()));
        }
    }

    // Server › Statistics... shows what the server state says, and follows it while open.
    void statistics()
    {
        m_window.reset();
        const QByteArray state = R"({"rid":1,"full_update":true,"torrents":{},"server_state":{
            "connection_status":"connected","alltime_dl":3221225472,"alltime_ul":1073741824,
            "global_ratio":"0.33","total_wasted_session":2048,"total_peer_connections":12,
            "read_cache_hits":"87","total_buffers_size":1048576,"write_cache_overload":"0",
            "read_cache_overload":"0","queued_io_jobs":3,"average_time_queue":41,"total_queued_size":0}})";
        m_server = std::make_unique<ScriptedTorrents>("2.11.0", state);
        m_window = std::make_unique<MainWindow>(*m_server->context);
        QuilloTest::menuItem(*menus().menu(u"Server"_qs), u"Statistics..."_qs)->trigger();
        auto *window = m_window->findChild<StatisticsWindow *>();
        QVERIFY(window && window->isVisible());
        QCOMPARE(window->text().split(u'\n'),
                 (QStringList{u"All-time upload: 1.0 GiB"_qs, u"All-time download: 3.0 GiB"_qs,
                              u"All-time share ratio: 0.33"_qs, u"Session waste: 2.0 KiB"_qs, u"Connected peers: 12"_qs,
                              u"Read cache hits: 87%"_qs, u"Total buffer size: 1.0 MiB"_qs,
                              u"Write cache overload: 0%"_qs, u"Read cache overload: 0%"_qs, u"Queued I/O jobs: 3"_qs,
                              u"Average time in queue: 41 ms"_qs, u"Total queued size: 0 bytes"_qs}));
        m_server->syncAnswer = R"({"rid":2,"server_state":{"total_peer_connections":13}})";
        m_server->context->forcePoll();
        QTRY_VERIFY(window->text().contains(u"Connected peers: 13"_qs));
    }

    // Server › Server Log opens one window, brought forward again; without a connection there is
    // no log to read.
    void serverLog()
    {
        QAction *item = QuilloTest::menuItem(*menus().menu(u"Server"_qs), u"Server Log"_qs);
        QCOMPARE(item->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_L));
        QTRY_VERIFY(item->isEnabled());
        item->trigger();
        auto *window = m_window->findChild<ServerLogWindow *>();
        QVERIFY(window && window->isVisible());
        window->close();
        item->trigger();
        QCOMPARE(m_window->findChildren<ServerLogWindow *>(), QList<ServerLogWindow *>{window});
        QVERIFY(window->isVisible());
        QuilloTest::wait(m_server->context->logOut());
        QTRY_VERIFY(!item->isEnabled());
    }

    // Two actions on one key in the same window make Qt fire neither.
    void everyShortcutHasOneAction()
    {
        QHash<QKeySequence, QAction *> owners;
        const auto collect = [&owners](QAction *action) {
            for (const QKeySequence &key : action->shortcuts()) {
                QAction *owner = owners.value(key, action);
                QVERIFY2(owner == action, qPrintable(key.toString() + QStringLiteral(": ") + owner->text() +
                                                     QStringLiteral(" and ") + action->text()));
                owners.insert(key, action);
            }
        };
        for (QAction *action : m_window->findChildren<QAction *>())
            collect(action);
        for (QAction *top : m_window->menuBar()->actions()) {
            for (QAction *action : top->menu()->actions())
                collect(action);
        }
        for (const QKeyCombination key :
             {Qt::CTRL | Qt::Key_O, Qt::CTRL | Qt::Key_U, Qt::CTRL | Qt::Key_Q, Qt::CTRL | Qt::Key_A,
              Qt::CTRL | Qt::Key_F, QKeyCombination(Qt::Key_Delete), Qt::CTRL | Qt::Key_S, Qt::CTRL | Qt::Key_P,
              Qt::CTRL | Qt::Key_Delete, Qt::CTRL | Qt::Key_Comma})
            QVERIFY2(owners.contains(QKeySequence(key)), qPrintable(QKeySequence(key).toString()));
    }

    // Files cannot be had back: Ctrl+Delete asks even where removing is not asked about.
    void removeWithFilesAlwaysAsks()
    {
        m_server->defaults.setValue(UserDefaultsKey::confirmTntDeleting, false);
        QuilloTest::selectRows(*m_window->tntTable()->table(), {QStringLiteral("bbb")});
        m_window->tntTable()->table()->setFocus();
        QTest::keyClick(m_window->tntTable()->table(), Qt::Key_Delete, Qt::ControlModifier);
        QMessageBox *asked = nullptr;
        QTRY_VERIFY((asked = m_window->findChild<QMessageBox *>(QStringLiteral("removeConfirmation"))));
        QCOMPARE(asked->defaultButton()->text(), QStringLiteral("Remove Everywhere"));
        asked->defaultButton()->click();
        QTRY_COMPARE(m_server->lastRequest(), QByteArray("/api/v2/torrents/delete?hashes=bbb&deleteFiles=true"));
    }

    void panelsHideAndStayHidden_data()
    {
        QTest::addColumn<Panel>("panel");
        QTest::newRow("sidebar") << Panel::sidebar;
        QTest::newRow("details") << Panel::tntDetails;
        QTest::newRow("status bar") << Panel::statusBar;
        QTest::newRow("toolbar") << Panel::toolbar;
    }

    void panelsHideAndStayHidden()
    {
        QFETCH(Panel, panel);
        const auto widget = [this, panel](MainWindow &window) -> QWidget * {
            switch (panel) {
            case Panel::sidebar: return window.sidebar();
            case Panel::tntDetails: return window.detailPane();
            case Panel::statusBar: return window.statusBar();
            case Panel::toolbar: return window.toolBar();
            }
            return nullptr;
        };
        QAction *show = menus().showAction(panel);
        QVERIFY(show->isChecked());
        QVERIFY(widget(*m_window)->isVisible());
        show->trigger();
        QVERIFY(!widget(*m_window)->isVisible());

        MainWindow reopened(*m_server->context);
        reopened.show();
        QVERIFY(!reopened.menus()->showAction(panel)->isChecked());
        QVERIFY(!widget(reopened)->isVisible());
        reopened.menus()->showAction(panel)->trigger();
        QVERIFY(widget(reopened)->isVisible());
    }

    void quitClosesTheWindowKeepingItsPlace()
    {
        const QRect place(QPoint(40, 50), QSize(900, 600));
        m_window->setGeometry(place);
        items(*menus().menu(QStringLiteral("File"))).constLast()->trigger();
        QVERIFY(!m_window->isVisible());
        MainWindow reopened(*m_server->context);
        QCOMPARE(reopened.size(), place.size());
    }

    // Server › Search... opens one window, where it was last closed.
    void search()
    {
        QAction *item = QuilloTest::menuItem(*menus().menu(u"Server"_qs), u"Search..."_qs);
        QCOMPARE(item->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F));
        QTRY_VERIFY(item->isEnabled());
        item->trigger();
        auto *window = m_window->findChild<SearchWindow *>();
        QVERIFY(window && window->isVisible());
        const QRect place(QPoint(60, 70), QSize(700, 500));
        window->setGeometry(place);
        window->close();
        delete window;
        item->trigger();
        window = m_window->findChild<SearchWindow *>();
        QVERIFY(window && window->isVisible());
        QCOMPARE(window->size(), place.size());
        item->trigger();
        QCOMPARE(m_window->findChildren<SearchWindow *>(), QList<SearchWindow *>{window});
    }
};

QTEST_MAIN(TestMainMenus)
#include "tst_mainmenus.moc"
