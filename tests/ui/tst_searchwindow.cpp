#include "core/SearchRunner.h"
#include "support/ScriptedTorrents.h"
#include "ui/SearchPluginsDialog.h"
#include "ui/SearchResultsModel.h"
#include "ui/SearchTab.h"
#include "ui/SearchWindow.h"
#include "ui/TntAddingFlow.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTabWidget>
#include <QTableView>
#include <QHeaderView>
#include <QTest>
#include <QTreeWidget>
#include <QUrlQuery>

namespace {

using Response = FakeServer::Response;

struct Hit
{
    const char *name;
    qint64 size;
    qint64 seeders;
};

QByteArray pageFrom(const QList<Hit> &hits, qsizetype offset, bool running)
{
    QByteArray results;
    for (qsizetype index = offset; index < hits.size(); ++index) {
        const Hit &hit = hits[index];
        if (!results.isEmpty())
            results += ',';
        results += QStringLiteral(R"({"descrLink":"http://site/%1","fileName":"%1","fileSize":%2,)"
                                  R"("fileUrl":"magnet:?xt=urn:btih:%1","nbLeechers":0,"nbSeeders":%3,)"
                                  R"("siteUrl":"http://site"})")
                       .arg(QString::fromUtf8(hit.name))
                       .arg(hit.size)
                       .arg(hit.seeders)
                       .toUtf8();
    }
    return R"({"results":[)" + results + R"(],"status":")" + (running ? "Running" : "Stopped") + R"(","total":)" +
           QByteArray::number(hits.size()) + '}';
}

QString formValue(const FakeServer::Request &request, const char *key)
{
    return QUrlQuery(QString::fromUtf8(request.body)).queryItemValue(QString::fromLatin1(key));
}

QStringList column(const QTableView &view, int section)
{
    QStringList found;
    for (int row = 0; row < view.model()->rowCount(); ++row)
        found << view.model()->index(row, section).data().toString();
    return found;
}

const QByteArray onePlugin =
    R"([{"enabled":true,"fullName":"Quillo Test","name":"quillotest","supportedCategories":[{"id":"all",)"
    R"("name":"All categories"},{"id":"movies","name":"Movies"}],"url":"http://127.0.0.1","version":"1.0"}])";

} // namespace

// The search window, offscreen, over a scripted server whose search job serves what each test says.
class TestSearchWindow : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptedTorrents> m_server;
    std::unique_ptr<QWidget> m_main;
    std::unique_ptr<TntAddingFlow> m_adding;
    std::unique_ptr<SearchWindow> m_window;
    QByteArray m_plugins = onePlugin;
    bool m_python = true;
    QList<Hit> m_hits;
    bool m_running = false;
    QList<qint64> m_offsets; // of each read of results
    QList<qint64> m_deleted;
    QList<qint64> m_stopped;
    QList<QString> m_started;       // "pattern|plugins|category"
    QList<QString> m_pluginChanges; // "action|names or sources|enable"
    QByteArray m_installed;         // the plugin list once installPlugin was asked

    void open()
    {
        m_main = std::make_unique<QWidget>();
        m_adding = std::make_unique<TntAddingFlow>(*m_server->context, m_main.get());
        m_window = std::make_unique<SearchWindow>(*m_server->context, *m_adding);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    SearchTab *search(const QString &pattern)
    {
        [&] { QTRY_VERIFY(m_window->showsSearch()); }();
        m_window->patternField()->setText(pattern);
        return m_window->startSearch();
    }

private Q_SLOTS:
    void init()
    {
        m_plugins = onePlugin;
        m_python = true;
        m_hits.clear();
        m_running = false;
        m_offsets.clear();
        m_deleted.clear();
        m_stopped.clear();
        m_started.clear();
        m_pluginChanges.clear();
        m_installed.clear();
        m_server = std::make_unique<ScriptedTorrents>();
        m_server->server.setHandler([this, base = m_server.get()](const FakeServer::Request &request) {
            if (request.target.endsWith("/search/plugins"))
                return Response::json(m_plugins);
            if (request.target.endsWith("/search/start")) {
                if (!m_python)
                    return Response::text(409, "Python must be installed to use the Search Engine.");
                m_started << formValue(request, "pattern") + u'|' + formValue(request, "plugins") + u'|' +
                                 formValue(request, "category");
                return Response::json(R"({"id":7})");
            }
            if (request.target.endsWith("/search/results")) {
                const qint64 offset = formValue(request, "offset").toLongLong();
                m_offsets << offset;
                return Response::json(pageFrom(m_hits, offset, m_running));
            }
            if (request.target.contains("/search/") && request.target.contains("Plugin")) {
                m_pluginChanges << QString::fromUtf8(request.target.mid(request.target.lastIndexOf('/') + 1)) + u'|' +
                                       formValue(request, "names") + formValue(request, "sources") + u'|' +
                                       formValue(request, "enable");
                if (request.target.endsWith("/installPlugin") && !m_installed.isEmpty())
                    m_plugins = m_installed;
                return Response::text(200, "");
            }
            if (request.target.endsWith("/search/stop")) {
                m_stopped << formValue(request, "id").toLongLong();
                m_running = false;
                return Response::text(200, "");
            }
            if (request.target.endsWith("/search/delete")) {
                m_deleted << formValue(request, "id").toLongLong();
                return Response::text(200, "");
            }
            if (request.target.contains("/sync/maindata"))
                return Response::json(base->syncAnswer);
            return Response::text(200, "");
        });
    }

    void cleanup()
    {
        m_window.reset();
        m_adding.reset();
        m_main.reset();
        m_server.reset();
    }

    // Results arrive while the job runs, each read asking from the count held; the chosen plugin and
    // category go with the pattern.
    void streams()
    {
        m_running = true;
        m_hits = {{"a", 1, 1}, {"b", 2, 2}};
        open();
        QTRY_VERIFY(m_window->showsSearch());
        m_window->pluginBox()->setCurrentIndex(m_window->pluginBox()->findData(QStringLiteral("quillotest")));
        m_window->categoryBox()->setCurrentIndex(m_window->categoryBox()->findData(QStringLiteral("movies")));
        SearchTab *tab = search(QStringLiteral("linux iso"));
        QVERIFY(tab);
        QTRY_COMPARE(m_started, QStringList{QStringLiteral("linux iso|quillotest|movies")});
        QTRY_COMPARE(tab->view()->model()->rowCount(), 2);
        QCOMPARE(tab->statusText(), QStringLiteral("Running, results: 2"));
        m_hits << Hit{"c", 3, 3};
        m_running = false;
        QTRY_COMPARE(tab->job().state(), SearchJob::State::finished);
        QCOMPARE(column(*tab->view(), SearchResultsModel::NameColumn),
                 (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
        QVERIFY(m_offsets.contains(2));
        QCOMPARE(m_offsets.first(), 0);
        QVERIFY(!tab->stopButton()->isEnabled());
        const qsizetype reads = m_offsets.size();
        QTest::qWait(int(SearchRunner::interval.count()) * 2);
        QCOMPARE(m_offsets.size(), reads); // a finished job is read no more
    }

    void sortsOnRawValues_data()
    {
        QTest::addColumn<int>("section");
        QTest::addColumn<Qt::SortOrder>("order");
        QTest::addColumn<QStringList>("names");
        // As text "1.5 MiB" < "2.0 KiB" < "900 B" and "10" < "100" < "9": the numbers sort otherwise. A
        // size or count the site did not say (-1) shows empty and sorts below every other.
        const QStringList bySize{QStringLiteral("unknown"), QStringLiteral("small"), QStringLiteral("middle"),
                                 QStringLiteral("large")};
        QTest::newRow("size ascending") << int(SearchResultsModel::SizeColumn) << Qt::AscendingOrder << bySize;
        QTest::newRow("size descending") << int(SearchResultsModel::SizeColumn) << Qt::DescendingOrder
                                         << QStringList{bySize.crbegin(), bySize.crend()};
        QTest::newRow("seeders ascending") << int(SearchResultsModel::SeedersColumn) << Qt::AscendingOrder
                                           << QStringList{QStringLiteral("unknown"), QStringLiteral("middle"),
                                                          QStringLiteral("large"), QStringLiteral("small")};
    }

    void sortsOnRawValues()
    {
        QFETCH(int, section);
        QFETCH(Qt::SortOrder, order);
        QFETCH(QStringList, names);
        m_hits = {{"large", 1572864, 10}, {"unknown", -1, -1}, {"small", 900, 100}, {"middle", 2048, 9}};
        open();
        SearchTab *tab = search(QStringLiteral("sorted"));
        QVERIFY(tab);
        QTRY_COMPARE(tab->job().state(), SearchJob::State::finished);
        tab->view()->sortByColumn(section, order);
        QCOMPARE(column(*tab->view(), SearchResultsModel::NameColumn), names);
        QVERIFY(column(*tab->view(), SearchResultsModel::SizeColumn).contains(QStringLiteral("1.5 MiB")));

        // The filter keeps the order and admits names containing the text, whatever its case.
        tab->filterField()->setText(QStringLiteral("L"));
        QStringList filtered = names;
        filtered.removeIf([](const QString &name) { return !name.contains(u'l'); });
        QCOMPARE(column(*tab->view(), SearchResultsModel::NameColumn), filtered);
    }

    // Stop asks the server to stop the job, which then reads as stopped, not finished; closing a
    // tab deletes its job on the server, running or not, and reads it no more.
    void stopsAndDeletes()
    {
        m_running = true;
        open();
        SearchTab *stopped = search(QStringLiteral("stopping"));
        QVERIFY(stopped);
        QTRY_COMPARE(stopped->job().state(), SearchJob::State::running);
        QTest::mouseClick(stopped->stopButton(), Qt::LeftButton);
        QTRY_COMPARE(m_stopped, QList<qint64>{7});
        QTRY_COMPARE(stopped->job().state(), SearchJob::State::stopped);
        QCOMPARE(stopped->statusText(), QStringLiteral("Stopped, results: 0"));
        m_window->closeTab(0);
        QTRY_COMPARE(m_deleted, QList<qint64>{7});

        m_running = true;
        m_offsets.clear();
        SearchTab *tab = search(QStringLiteral("closing"));
        QVERIFY(tab);
        QTRY_VERIFY(!m_offsets.isEmpty());
        m_window->closeTab(m_window->tabs()->indexOf(tab));
        QCOMPARE(m_window->tabs()->count(), 0);
        QTRY_COMPARE(m_deleted, (QList<qint64>{7, 7}));
        const qsizetype reads = m_offsets.size();
        QTest::qWait(int(SearchRunner::interval.count()) * 2);
        QCOMPARE(m_offsets.size(), reads);
    }

    // A new tab has the columns the last tab closed had, and so has the first tab after a restart.
    void remembersColumns()
    {
        open();
        SearchTab *first = search(QStringLiteral("first"));
        QVERIFY(first);
        QHeaderView *header = first->view()->horizontalHeader();
        header->resizeSection(SearchResultsModel::SeedersColumn, 143);
        header->moveSection(SearchResultsModel::EngineColumn, 1);
        first->view()->sortByColumn(SearchResultsModel::SizeColumn, Qt::DescendingOrder);
        m_window->closeTab(0);
        const auto sameColumns = [](const QTableView &view) {
            const QHeaderView *columns = view.horizontalHeader();
            QCOMPARE(columns->sectionSize(SearchResultsModel::SeedersColumn), 143);
            QCOMPARE(columns->visualIndex(SearchResultsModel::EngineColumn), 1);
            QCOMPARE(columns->sortIndicatorSection(), int(SearchResultsModel::SizeColumn));
            QCOMPARE(columns->sortIndicatorOrder(), Qt::DescendingOrder);
        };
        SearchTab *second = search(QStringLiteral("second"));
        QVERIFY(second);
        sameColumns(*second->view());
        m_window.reset(); // as Quillo quits
        m_adding.reset();
        open();
        SearchTab *third = search(QStringLiteral("third"));
        QVERIFY(third);
        sameColumns(*third->view());
    }

    // The server lists no plugins both without Python and with Python but no plugins installed; a
    // search started to tell them apart is refused (409) or deleted at once.
    void tellsWhetherTheServerCanSearch_data()
    {
        QTest::addColumn<QByteArray>("plugins");
        QTest::addColumn<bool>("python");
        QTest::addColumn<bool>("searches");
        QTest::addColumn<QList<qint64>>("deleted");
        QTest::newRow("plugins") << onePlugin << true << true << QList<qint64>{};
        QTest::newRow("no plugins") << QByteArray("[]") << true << true << QList<qint64>{7};
        QTest::newRow("no Python") << QByteArray("[]") << false << false << QList<qint64>{};
    }

    void tellsWhetherTheServerCanSearch()
    {
        QFETCH(QByteArray, plugins);
        QFETCH(bool, python);
        QFETCH(bool, searches);
        QFETCH(QList<qint64>, deleted);
        m_plugins = plugins;
        m_python = python;
        open();
        QTRY_COMPARE(m_server->context->searchPlugins().availability() != SearchPlugins::Availability::unknown, true);
        QTRY_COMPARE(m_window->showsSearch(), searches);
        QCOMPARE(m_deleted, deleted);
        QCOMPARE(m_window->messageLabel()->text().contains(u"Python"), !searches);
        m_window->patternField()->setText(QStringLiteral("x"));
        QCOMPARE(m_window->searchButton()->isEnabled(), plugins != "[]");
    }

    // The check box beside a plugin enables it on the server; a file the server did not install
    // says so and stays in the field, one it did leaves the field empty.
    void pluginDialog_data()
    {
        QTest::addColumn<QByteArray>("installed");
        QTest::addColumn<bool>("fails");
        QTest::newRow("installed") << QByteArray(onePlugin).replace("quillotest", "extra") << false;
        QTest::newRow("not installed") << QByteArray() << true;
    }

    void pluginDialog()
    {
        QFETCH(QByteArray, installed);
        QFETCH(bool, fails);
        m_installed = installed;
        QuilloTest::wait(m_server->context->searchPlugins().reload());
        SearchPluginsDialog dialog(m_server->context->searchPlugins());
        dialog.show();
        QCOMPARE(dialog.list()->topLevelItemCount(), 1);
        QCOMPARE(dialog.list()->topLevelItem(0)->text(1), QStringLiteral("1.0"));
        QCOMPARE(dialog.list()->topLevelItem(0)->text(3), QStringLiteral("Movies"));
        dialog.list()->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
        QTRY_COMPARE(m_pluginChanges, QStringList{QStringLiteral("enablePlugin|quillotest|false")});
        QVERIFY(!dialog.installButton()->isEnabled()); // nothing in the field
        QTRY_VERIFY(dialog.list()->isEnabled());       // the list read again after the change

        const QString path = QStringLiteral("/srv/plugins/extra.py");
        dialog.sourceField()->setText(path);
        dialog.install();
        QTRY_COMPARE(m_pluginChanges.size(), 2);
        QCOMPARE(m_pluginChanges.last(), QStringLiteral("installPlugin|") + path + u'|');
        QTRY_VERIFY(dialog.list()->isEnabled()); // the change and the read after it are over
        QCOMPARE(dialog.failure().isEmpty(), !fails);
        QCOMPARE(dialog.failure().contains(path), fails);
        QCOMPARE(dialog.sourceField()->text(), fails ? path : QString());
    }
};

QTEST_MAIN(TestSearchWindow)

#include "tst_searchwindow.moc"
