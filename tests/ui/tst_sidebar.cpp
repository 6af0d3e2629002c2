#include "core/NavigationContext.h"
#include "support/ScriptedTorrents.h"
#include "ui/EditorSheet.h"
#include "ui/MainWindow.h"
#include "ui/SidebarView.h"
#include "ui/TntCommands.h"
#include "ui/TntTableView.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>

using Group = NavigationContext::Group;

namespace {

const QByteArray twoCategories = "{\"rid\":1,\"full_update\":true,\"torrents\":{"
                                 "\"aaa\":{\"name\":\"Alpha\",\"state\":\"downloading\",\"category\":\"films\",\"tags\":\"x, y\",\"size\":1024},"
                                 "\"bbb\":{\"name\":\"Beta\",\"state\":\"stalledDL\",\"category\":\"films\",\"tags\":\"\",\"size\":2048},"
                                 "\"ccc\":{\"name\":\"Gamma\",\"state\":\"stoppedUP\",\"category\":\"\",\"tags\":\"y\",\"size\":4096}},"
                                 "\"categories\":{\"films\":{\"name\":\"films\",\"savePath\":\"/films\"},\"music\":{\"name\":\"music\"}},"
                                 "\"tags\":[\"y\",\"x\"],"
                                 "\"trackers\":{\"http://t.example/announce\":[\"aaa\",\"bbb\"],\"udp://t.example:1\":[\"aaa\"]}}";

QStringList ids(const QSet<SidebarItem> &items)
{
    QStringList found;
    for (const SidebarItem &item : items)
        found << item.id;
    found.sort();
    return found;
}

QStringList texts(const QList<QAction *> &actions)
{
    QStringList result;
    for (const QAction *action : actions)
        result << action->text();
    return result;
}

} // namespace

// The window's sidebar over a scripted server: its groups and titles, clicks that filter the table,
// the entries' menus, and the selection kept across a restart and pruned when the server drops a label.
class TestSidebar : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptedTorrents> m_server;
    AppContext *m_context = nullptr;
    std::unique_ptr<MainWindow> m_window;
    SidebarView *m_view = nullptr;

    int shownRows() const { return m_window->tntTable()->table()->model()->rowCount(); }

    QTreeWidgetItem *entry(Group group, const QString &title) const
    {
        QTreeWidgetItem *header = m_view->tree()->topLevelItem(static_cast<int>(group));
        for (int row = 0; row < header->childCount(); ++row) {
            if (header->child(row)->text(0) == title)
                return header->child(row);
        }
        return nullptr;
    }

    void click(Group group, const QString &title, Qt::KeyboardModifiers modifiers = {})
    {
        QTreeWidget *tree = m_view->tree();
        QTreeWidgetItem *item = entry(group, title);
        QVERIFY2(item, qPrintable(title));
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, modifiers, tree->visualItemRect(item).center());
    }

    // What the next start of Quillo selects.
    QStringList restoredIds() const
    {
        return ids(NavigationContext(*m_context, m_server->defaults).selectedSidebarItems());
    }

    QStringList selectedIds() const
    {
        QSet<SidebarItem> items;
        for (const QTreeWidgetItem *item : m_view->tree()->selectedItems())
            items << item->data(0, SidebarView::ItemRole).value<SidebarItem>();
        return ids(items);
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_server = std::make_unique<ScriptedTorrents>("2.11.4", twoCategories);
        m_context = m_server->context.get();

        m_window = std::make_unique<MainWindow>(*m_context);
        m_view = m_window->sidebar();
        m_window->resize(1000, 1000); // every entry in view
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    void cleanupTestCase()
    {
        m_window.reset();
        m_server.reset();
    }

    void groupsAndTitles()
    {
        QStringList shown;
        for (int group = 0; group < m_view->tree()->topLevelItemCount(); ++group) {
            const QTreeWidgetItem *header = m_view->tree()->topLevelItem(group);
            QStringList titles;
            for (int row = 0; row < header->childCount(); ++row)
                titles << header->child(row)->text(0);
            shown << header->text(0) + u": "_qs + titles.join(u", "_qs);
        }
        QCOMPARE(shown, (QStringList{
                            u"State: All, Downloading, Seeding, Stopped, Completed, Queued, Stalled, Checking, Moving, Error"_qs,
                            u"Categories: All, Uncategorized, films, music"_qs,
                            u"Tags: All, Untagged, x, y"_qs,
                            u"Trackers: All, Trackerless, t.example"_qs}));
        const auto count = [this](Group group, const QString &title) {
            return entry(group, title)->data(0, SidebarView::CountRole).toInt();
        };
        QCOMPARE(count(Group::category, u"films"_qs), 2);
        QCOMPARE(count(Group::tag, u"y"_qs), 2);
        QCOMPARE(count(Group::tracker, u"t.example"_qs), 2);
        QCOMPARE(count(Group::tracker, u"Trackerless"_qs), 1);
    }

    void clicksSelectAndFilterTheTable_data()
    {
        QTest::addColumn<int>("group");
        QTest::addColumn<QString>("title");
        QTest::addColumn<bool>("withCtrl");
        QTest::addColumn<QStringList>("selected");
        QTest::addColumn<int>("rows");
        const int state = static_cast<int>(Group::state), category = static_cast<int>(Group::category);
        QTest::newRow("one state") << state << u"Downloading"_qs << false << QStringList{u"downloading"_qs} << 1;
        QTest::newRow("ctrl adds") << state << u"Stalled"_qs << true << QStringList{u"downloading"_qs, u"stalled"_qs} << 2;
        QTest::newRow("a click replaces") << category << u"films"_qs << false << QStringList{u"category_films"_qs} << 2;
        QTest::newRow("ctrl adds within the group")
            << category << u"Uncategorized"_qs << true << QStringList{u"category_Uncategorized"_qs, u"category_films"_qs} << 3;
        QTest::newRow("ctrl again removes") << category << u"Uncategorized"_qs << true << QStringList{u"category_films"_qs} << 2;
    }

    void clicksSelectAndFilterTheTable()
    {
        QFETCH(int, group);
        QFETCH(QString, title);
        QFETCH(bool, withCtrl);
        QFETCH(QStringList, selected);
        QFETCH(int, rows);
        click(static_cast<Group>(group), title, withCtrl ? Qt::ControlModifier : Qt::NoModifier);
        QCOMPARE(selectedIds(), selected);
        QCOMPARE(shownRows(), rows);
    }

    void menusOfTheEntries()
    {
        const auto menuOf = [this](Group group, const QString &title) {
            return std::unique_ptr<QMenu>(m_view->contextMenu(entry(group, title)->data(0, SidebarView::ItemRole).value<SidebarItem>()));
        };
        const std::unique_ptr<QMenu> films = menuOf(Group::category, u"films"_qs);
        QCOMPARE(texts(films->actions()),
                 (QStringList{u"Category"_qs, u"Size: 3.0 KiB"_qs, {}, u"New Category..."_qs, u"Edit"_qs, u"Remove"_qs, {},
                              u"Start Torrents"_qs, u"Stop Torrents"_qs, u"Remove Torrents"_qs}));
        QCOMPARE(texts(menuOf(Group::tag, u"Untagged"_qs)->actions()),
                 (QStringList{u"Size: 2.0 KiB"_qs, {}, u"New Tags..."_qs, {}, u"Start Torrents"_qs, u"Stop Torrents"_qs,
                              u"Remove Torrents"_qs}));
        const std::unique_ptr<QMenu> moving = menuOf(Group::state, u"Moving"_qs);
        QVERIFY(!moving->actions().constLast()->isEnabled()); // it admits nothing, which would read as "all"

        // Only the state group's All stands for the server's whole list; a tag on every torrent does not.
        const auto started = [&](Group group, const QString &title) {
            m_server->server.clearRequests();
            const std::unique_ptr<QMenu> menu = menuOf(group, title);
            menu->actions().at(menu->actions().size() - 3)->trigger(); // Start Torrents
            (void)QTest::qWaitFor([this] { return !m_server->lastRequest().isEmpty(); });
            return m_server->lastRequest();
        };
        QCOMPARE(started(Group::state, u"All"_qs), QByteArray("/api/v2/torrents/start?hashes=all"));
        QCOMPARE(started(Group::tag, u"All"_qs), QByteArray("/api/v2/torrents/start?hashes=aaa%7Cbbb%7Cccc"));

        const auto edit = [&](const QString &savePath) {
            films->actions().at(4)->trigger(); // Edit
            auto *sheet = qobject_cast<EditorSheet *>(m_window->tntCommands()->openSheet());
            QVERIFY(sheet);
            QCOMPARE(m_view->sidebarContext().editedCategory(),
                     std::optional(SidebarItem::Category{u"films"_qs, u"films"_qs, u"/films"_qs}));
            sheet->findChildren<QLineEdit *>().constLast()->setText(savePath);
            sheet->actionButton()->click();
        };
        edit(u"/films"_qs); // unchanged, which servers up to 5.1 refuse
        QCOMPARE(m_view->sidebarContext().editedCategory(), std::nullopt);
        edit(u"/films2"_qs);
        QTRY_COMPARE(m_server->lastRequest(),
                     QByteArray("/api/v2/torrents/editCategory?category=films&savePath=/films2"));
        QCOMPARE(std::count_if(m_server->server.requests().cbegin(), m_server->server.requests().cend(),
                               [](const auto &request) { return request.target.contains("editCategory"); }),
                 1);
    }

    void selectionOutlivesARestartUntilTheServerDropsIt()
    {
        QCOMPARE(selectedIds(), QStringList{u"category_films"_qs});
        QCOMPARE(restoredIds(), selectedIds());

        m_view->tree()->topLevelItem(static_cast<int>(Group::tag))->setExpanded(false);
        QVERIFY(!m_server->defaults.boolValue(UserDefaultsKey::tagsIsExpanded, true));

        // A server without the category and without trackers.
        m_server->syncAnswer = "{\"rid\":2,\"full_update\":true,\"torrents\":{\"aaa\":{\"name\":\"Alpha\",\"state\":\"downloading\"}},"
                     "\"categories\":{\"music\":{\"name\":\"music\"}}}";
        m_context->forcePoll();
        QTRY_COMPARE(m_context->tntCollection().size(), 1);
        QCOMPARE(selectedIds(), QStringList{});
        QCOMPARE(restoredIds(), QStringList{});
        QVERIFY(m_view->tree()->topLevelItem(static_cast<int>(Group::tracker))->isHidden());
        QCOMPARE(shownRows(), 1);
    }
};

QTEST_MAIN(TestSidebar)
#include "tst_sidebar.moc"
