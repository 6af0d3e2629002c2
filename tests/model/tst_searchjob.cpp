#include "model/SearchJob.h"

#include <QTest>

using API::SearchStatus;
using State = SearchJob::State;

namespace {

// A page of `count` results starting at `first`, the job's count after it being `total`.
struct Page
{
    int first;
    int count;
    int total;
    SearchStatus status = SearchStatus::running;
};

API::SearchResults pageOf(const Page &page)
{
    API::SearchResults made{page.status, {}, page.total};
    for (int index = page.first; index < page.first + page.count; ++index)
        made.results << API::SearchResult{.fileName = QString::number(index)};
    return made;
}

} // namespace

Q_DECLARE_METATYPE(Page)

// A job's results read on from the count held, as its runner appends the server's pages.
class TestSearchJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void appends_data()
    {
        QTest::addColumn<QList<Page>>("pages");
        QTest::addColumn<bool>("stopAsked");
        QTest::addColumn<QStringList>("held");
        QTest::addColumn<State>("state");
        using Pages = QList<Page>;
        const auto names = [](int count) {
            QStringList made;
            for (int index = 0; index < count; ++index)
                made << QString::number(index);
            return made;
        };
        QTest::newRow("streams in") << Pages{{0, 2, 2}, {2, 0, 2}, {2, 3, 5}} << false << names(5) << State::running;
        QTest::newRow("finishes") << Pages{{0, 2, 2}, {2, 1, 3, SearchStatus::stopped}} << false << names(3)
                                  << State::finished;
        QTest::newRow("stopped when asked")
            << Pages{{0, 2, 2, SearchStatus::stopped}} << true << names(2) << State::stopped;
        QTest::newRow("nothing after the end")
            << Pages{{0, 1, 1, SearchStatus::stopped}, {1, 2, 3}} << false << names(1) << State::finished;
        // The server counts more (or fewer) than held plus the page: these are not the results held.
        QTest::newRow("count runs ahead") << Pages{{0, 2, 2}, {2, 1, 4}} << false << names(2) << State::failed;
        QTest::newRow("count falls back") << Pages{{0, 3, 3}, {0, 1, 1}} << false << names(3) << State::failed;
    }

    void appends()
    {
        QFETCH(QList<Page>, pages);
        QFETCH(bool, stopAsked);
        QFETCH(QStringList, held);
        QFETCH(State, state);
        SearchJob job({QStringLiteral("q"), {QStringLiteral("enabled")}, QStringLiteral("all")});
        QCOMPARE(job.state(), State::starting);
        job.started(42);
        if (stopAsked)
            job.stopRequested();
        for (const Page &page : std::as_const(pages)) {
            QCOMPARE(job.nextOffset(), job.size());
            job.append(pageOf(page));
        }
        QStringList names;
        for (qsizetype row = 0; row < job.size(); ++row)
            names << job.at(row).fileName;
        QCOMPARE(names, held);
        QCOMPARE(job.state(), state);
        QCOMPARE(job.id(), 42);
        QCOMPARE(job.failure().isEmpty(), state != State::failed);
    }
};

QTEST_GUILESS_MAIN(TestSearchJob)

#include "tst_searchjob.moc"
