#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/Errors.h"
#include "core/AppContext.h"
#include "support/Await.h"
#include "support/Captured.h"
#include "support/ConnectedServer.h"
#include "support/FakeServer.h"
#include "ui/SearchTab.h"
#include "ui/SearchWindow.h"
#include "ui/TntAddingFlow.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

using Flavor = QbtServer::Flavor;
using QuilloTest::wait;

namespace {

// The host's 4.5.2 runs plugins with its /usr/bin/python3; the trixie and sid roots hold no Python.
bool hasPython(Flavor flavor)
{
    return flavor == Flavor::Bookworm45;
}

std::optional<API::SearchError> searchRefusal(QCoro::Task<Captured<API::SearchResults>> task)
{
    return thrown<API::SearchError>(wait(std::move(task)).error);
}

} // namespace

// Search on real servers: plugins installed from a file on the server's computer (a nova engine
// of the tests' own, tests/support/quillotest.py, that prints fixed results a few tenths of a second
// apart), results read on from offsets while the job runs, stopped and deleted jobs; and on servers
// without Python, the window's explanation.
class TestSearchRealServers : public QObject
{
    Q_OBJECT

public:
    explicit TestSearchRealServers(Flavor flavor)
        : m_flavor(flavor)
    {}

private:
    const Flavor m_flavor;
    std::unique_ptr<ConnectedServer> m_server;
    std::unique_ptr<QWidget> m_main;
    std::unique_ptr<TntAddingFlow> m_adding;
    std::unique_ptr<SearchWindow> m_window;

    SearchWindow &openWindow()
    {
        m_main = std::make_unique<QWidget>();
        m_adding = std::make_unique<TntAddingFlow>(m_server->context(), m_main.get());
        m_window = std::make_unique<SearchWindow>(m_server->context(), *m_adding);
        m_window->show();
        return *m_window;
    }

    // Every page of a job until it stops, each read from the count already read.
    QList<API::SearchResults> readToTheEnd(qint64 id)
    {
        QList<API::SearchResults> pages;
        qint64 held = 0;
        for (int round = 0; round < 100; ++round) {
            API::SearchResults page = wait(m_server->client().searchResults(id, held));
            held += page.results.size();
            const bool stopped = page.status == API::SearchStatus::stopped;
            pages << std::move(page);
            if (stopped)
                break;
            QTest::qWait(150);
        }
        return pages;
    }

private Q_SLOTS:
    void initTestCase() { QUILLO_CONNECT(m_server, m_flavor); }

    void cleanup()
    {
        m_window.reset();
        m_adding.reset();
        m_main.reset();
    }

    void cleanupTestCase() { m_server.reset(); }

    // Without Python the server lists no plugins and refuses every search with 409, which the
    // window explains instead of offering a search that cannot run.
    void withoutPython()
    {
        if (hasPython(m_flavor))
            QSKIP("this server searches with the host's Python");
        QCOMPARE(wait(m_server->client().searchPlugins()), QList<API::SearchPlugin>{});
        auto started = wait(captured(
            m_server->client().startSearch(QStringLiteral("x"), {QStringLiteral("all")}, QStringLiteral("all"))));
        const auto refusal = thrown<API::SearchError>(started.error);
        QVERIFY(refusal);
        QCOMPARE(refusal->kind(), API::SearchError::Case::refused);
        QCOMPARE(refusal->failureReason(), QStringLiteral("Python must be installed to use the Search Engine."));

        SearchWindow &window = openWindow();
        QTRY_COMPARE_WITH_TIMEOUT(m_server->context().searchPlugins().availability(),
                                  SearchPlugins::Availability::noPython, 10'000);
        QVERIFY(!window.showsSearch());
        QVERIFY(window.messageLabel()->text().contains(u"Python"));
    }

    // A .py file on the server's computer is installed before the answer; a file that is no plugin
    // is answered 200 all the same and shows as not installed.
    void installsFromAFile()
    {
        if (!hasPython(m_flavor))
            QSKIP("no Python on this server");
        const QbtServer::DataDir data = m_server->server().makeDataDir();
        const QString plugin = data.localPath + QStringLiteral("/quillotest.py");
        QVERIFY(QFile::copy(QStringLiteral(QUILLO_TEST_PLUGIN), plugin));
        SearchPlugins &plugins = m_server->context().searchPlugins();
        wait(plugins.install({data.serverPath + QStringLiteral("/quillotest.py")}));
        QCOMPARE(plugins.availability(), SearchPlugins::Availability::available);
        QCOMPARE(plugins.plugins().size(), 1);
        const API::SearchPlugin installed = plugins.plugins().first();
        QCOMPARE(installed.name, QStringLiteral("quillotest"));
        QCOMPARE(installed.fullName, QStringLiteral("Quillo Test"));
        QCOMPARE(installed.version, QStringLiteral("1.0"));
        QVERIFY(installed.enabled);
        QStringList categories;
        for (const API::SearchCategory &category : installed.supportedCategories)
            categories << category.id;
        QCOMPARE(categories,
                 (QStringList{QStringLiteral("all"), QStringLiteral("movies"), QStringLiteral("software")}));

        wait(plugins.setEnabled({installed.name}, false));
        QVERIFY(!plugins.plugins().first().enabled);
        wait(plugins.setEnabled({installed.name}, true));
        QVERIFY(plugins.plugins().first().enabled);

        QFile notAPlugin(data.localPath + QStringLiteral("/notes.py"));
        QVERIFY(notAPlugin.open(QIODevice::WriteOnly) && notAPlugin.write("print('no engine here')\n") > 0);
        notAPlugin.close();
        auto refused = wait(captured(plugins.install({data.serverPath + QStringLiteral("/notes.py")})));
        QVERIFY(thrown<API::RefusalError>(refused.error));
        QCOMPARE(plugins.plugins().size(), 1);
    }

    // Results arrive while the job runs and each read from an offset brings only those after it;
    // an offset past the count is refused; a stopped job ends; a deleted one is gone.
    void streamsStopsDeletes()
    {
        if (!hasPython(m_flavor))
            QSKIP("no Python on this server");
        API::Client &client = m_server->client();
        const qint64 id = wait(
            client.startSearch(QStringLiteral("stream"), {QStringLiteral("quillotest")}, QStringLiteral("movies")));
        const QList<API::SearchResults> pages = readToTheEnd(id);
        QStringList names;
        int pagesWithResults = 0;
        for (const API::SearchResults &page : pages) {
            pagesWithResults += page.results.isEmpty() ? 0 : 1;
            for (const API::SearchResult &result : page.results)
                names << result.fileName;
        }
        QCOMPARE(names.size(), 6);
        for (int index = 0; index < names.size(); ++index)
            QCOMPARE(names[index], QStringLiteral("stream movies %1").arg(index));
        QVERIFY2(pagesWithResults >= 2, "the results did not stream");
        QCOMPARE(pages.last().total, 6);
        const auto pastTheEnd = searchRefusal(captured(client.searchResults(id, 7)));
        QVERIFY(pastTheEnd);
        QCOMPARE(pastTheEnd->kind(), API::SearchError::Case::refused);
        wait(client.perform(API::Endpoint::Search::deleteSearch(id)));
        const auto gone = searchRefusal(captured(client.searchResults(id, 0)));
        QVERIFY(gone);
        QCOMPARE(gone->kind(), API::SearchError::Case::notFound);

        const qint64 endless =
            wait(client.startSearch(QStringLiteral("endless"), {QStringLiteral("enabled")}, QStringLiteral("all")));
        QTRY_VERIFY_WITH_TIMEOUT(!wait(client.searchResults(endless, 0)).results.isEmpty(), 10'000);
        wait(client.perform(API::Endpoint::Search::stop(endless)));
        QTRY_COMPARE_WITH_TIMEOUT(wait(client.searchResults(endless, 0)).status, API::SearchStatus::stopped, 10'000);
        wait(client.perform(API::Endpoint::Search::deleteSearch(endless)));
    }

    // The window streams a search into its tab; closing tabs deletes their jobs, which is what lets
    // five more start (the server runs five at a time and refuses a sixth with 409).
    void window()
    {
        if (!hasPython(m_flavor))
            QSKIP("no Python on this server");
        SearchWindow &window = openWindow();
        QTRY_VERIFY_WITH_TIMEOUT(window.showsSearch(), 10'000);
        window.patternField()->setText(QStringLiteral("stream"));
        SearchTab *tab = window.startSearch();
        QVERIFY(tab);
        QTRY_COMPARE_WITH_TIMEOUT(tab->job().state(), SearchJob::State::finished, 20'000);
        QCOMPARE(tab->view()->model()->rowCount(), 6);
        QCOMPARE(tab->statusText(), QStringLiteral("Finished, results: 6"));
        window.closeTab(0);

        for (int round = 0; round < 2; ++round) {
            window.patternField()->setText(QStringLiteral("endless"));
            QList<SearchTab *> tabs;
            for (int slot = 0; slot < 5; ++slot)
                tabs << window.startSearch();
            for (SearchTab *running : std::as_const(tabs)) {
                QTRY_VERIFY_WITH_TIMEOUT(running->view()->model()->rowCount() > 0 ||
                                             running->job().state() == SearchJob::State::failed,
                                         20'000);
                QVERIFY2(running->job().state() == SearchJob::State::running, qPrintable(running->statusText()));
            }
            while (window.tabs()->count() > 0)
                window.closeTab(0);
            // The deletes go out in the background: give the server a moment to take them.
            QTest::qWait(1'500);
        }
        QVERIFY(!m_server->context().clientError());
    }

    // A plugin at a URL is downloaded by the server after it answers; it shows once listed.
    void installsFromAUrl()
    {
        if (!hasPython(m_flavor))
            QSKIP("no Python on this server");
        QFile source(QStringLiteral(QUILLO_TEST_PLUGIN));
        QVERIFY(source.open(QIODevice::ReadOnly));
        // The engine's class is named as its file.
        const QByteArray plugin = source.readAll().replace("quillotest", "quillourl");
        FakeServer web;
        web.setHandler([&plugin](const FakeServer::Request &request) {
            return request.target == "/quillourl.py" ? FakeServer::Response::text(200, plugin)
                                                     : FakeServer::Response::text(404, "");
        });
        SearchPlugins &plugins = m_server->context().searchPlugins();
        const QString url = QStringLiteral("http://127.0.0.1:%1/quillourl.py").arg(web.port());
        QVERIFY(SearchPlugins::isDownload(url));
        wait(plugins.install({url}));
        const auto listed = [&plugins] {
            return std::any_of(plugins.plugins().cbegin(), plugins.plugins().cend(),
                               [](const API::SearchPlugin &p) { return p.name == QStringLiteral("quillourl"); });
        };
        QTRY_VERIFY_WITH_TIMEOUT((wait(plugins.reload()), listed()), 20'000);
        wait(plugins.uninstall({QStringLiteral("quillourl")}));
        QVERIFY(!listed());
    }

    void uninstalls()
    {
        if (!hasPython(m_flavor))
            QSKIP("no Python on this server");
        SearchPlugins &plugins = m_server->context().searchPlugins();
        wait(plugins.uninstall({QStringLiteral("quillotest")}));
        QCOMPARE(plugins.plugins(), QList<API::SearchPlugin>{});
        QCOMPARE(plugins.availability(), SearchPlugins::Availability::available);
    }
};

QUILLO_PER_FLAVOR_MAIN(TestSearchRealServers)

#include "tst_search_realservers.moc"
