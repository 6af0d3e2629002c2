// A connected Quillo at rest: the application's context, poller, collection and table (offscreen)
// polling a server that holds 10,000 torrents every 2 s. Measures the time from connecting to a
// painted table, sorting it by a column, resident memory, and the process's CPU time over a window
// of polling. Run from a Release build:
//
//   bench_idle real [torrents] [seconds]    a qbittorrent-nox 4.5.2 on loopback (tests/support's
//                                           QbtServer), loaded first with small paused torrents
//                                           through the API
//   bench_idle replay [torrents] [seconds]  a scripted server in this process answering generated
//                                           main data: one full update, then at every poll a delta
//                                           changing 1% of the torrents (its serving counts too)
//
// A fourth argument sets how many header clicks each sort is the median of (5), for a profiler.

#include "LoadedServer.h"
#include "EventLoop.h"
#include "MainDataGenerator.h"
#include "Resident.h"
#include "Stats.h"

#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/FakeServer.h"
#include "support/QbtServer.h"
#include "ui/TntTableModel.h"
#include "ui/TntTableView.h"

#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

double msSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// User and system time of every thread of this process.
double cpuSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) { return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// When the table's rows were first painted with torrents in the collection: the moment the paint
// event is done, which is when the next queued call runs.
class FirstPaint : public QObject
{
public:
    FirstPaint(QWidget *viewport, const TntCollection &collection)
        : m_collection(collection)
    {
        viewport->installEventFilter(this);
    }

    bool done() const { return m_at.has_value(); }
    Clock::time_point at() const { return *m_at; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !m_painting && m_collection.size() > 0) {
            m_painting = true;
            QTimer::singleShot(0, this, [this] { m_at = Clock::now(); });
        }
        return false;
    }

private:
    const TntCollection &m_collection;
    bool m_painting = false;
    std::optional<Clock::time_point> m_at;
};

class PaintCount : public QObject
{
public:
    explicit PaintCount(QWidget *widget) { widget->installEventFilter(this); }
    int count() const { return m_count; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::Paint;
        return false;
    }

private:
    int m_count = 0;
};

struct Source
{
    ClientConfiguration configuration;
    std::function<qint64(const AppContext &)> polls; // answers received so far
};

void answerAsReplay(FakeServer &server, int count, std::shared_ptr<qint64> polls)
{
    const QByteArray full = Bench::fullUpdate(count);
    server.setHandler([full, count, polls](const FakeServer::Request &request) {
        if (request.target.endsWith("/app/webapiVersion"))
            return FakeServer::Response::text(200, "2.8.19");
        if (request.target.endsWith("/app/version"))
            return FakeServer::Response::text(200, "v4.5.2");
        if (request.target.endsWith("/app/buildInfo"))
            return FakeServer::Response::json("{\"bitness\":64}");
        if (request.target.contains("/sync/maindata")) {
            ++*polls;
            if (request.body == "rid=0")
                return FakeServer::Response::json(full);
            return FakeServer::Response::json(Bench::delta(count, count / 100, static_cast<unsigned>(*polls)));
        }
        return FakeServer::Response::text(200, "");
    });
}

void measure(const Source &source, int count, int seconds, int sortRuns)
{
    QTemporaryDir dir;
    UserDefaults defaults(dir.filePath(QStringLiteral("Quillo.ini")));
    KeychainStore keychain;
    AppContext context(defaults, keychain);
    context.settings().setRefreshMode(RefreshMode::fixed);
    context.settings().setRefreshInterval(2000);
    TntTableView view(context.tntCollection(), defaults);
    view.resize(1400, 900);
    view.show();
    QApplication::processEvents();
    FirstPaint painted(view.table()->viewport(), context.tntCollection());

    // When the first full update's models, built on a worker, are swapped in: from there to the
    // paint the main thread works alone.
    Clock::time_point swapped;
    QObject::connect(&context.tntCollection(), &TntCollection::aboutToReset, &view, [&] {
        if (!painted.done())
            swapped = Clock::now();
    });
    const auto connectStart = Clock::now();
    context.addConfiguration(source.configuration);
    QuilloTest::wait(context.selectConfiguration(source.configuration.id));
    if (!Bench::runUntil([&] { return painted.done(); }, 120s)) {
        std::fprintf(stderr, "the table was not painted with torrents\n");
        return;
    }
    const auto msBetween = [](Clock::time_point from, Clock::time_point to) {
        return std::chrono::duration<double, std::milli>(to - from).count();
    };
    const double connectToPaint = msBetween(connectStart, painted.at());
    const double swapToPaint = msBetween(swapped, painted.at());
    Bench::runUntil([&] { return context.tntCollection().size() >= count; }, 30s);
    const long resident = Bench::residentMiB();

    // A header click: the sort with the view's handling of the layout change, then the layout and
    // painting it causes in the event loop. Medians of each part and of the whole.
    // Qt may hold an update back for a few milliseconds after the last paint (the platform's update
    // pacing), past one pass of the event loop: then the viewport is painted at once, so a click's
    // figure is its own paint, not the pacing's wait nor the next click's.
    PaintCount viewportPaints(view.table()->viewport());
    const auto paintNow = [&] {
        const int before = viewportPaints.count();
        QApplication::processEvents();
        if (viewportPaints.count() == before)
            view.table()->viewport()->repaint();
    };
    struct Click
    {
        double whole, sort, paint;
    };
    const auto sortMs = [&](int column) {
        std::vector<double> wholes, sorts, paints;
        for (int i = 0; i < sortRuns; ++i) {
            const auto start = Clock::now();
            view.table()->sortByColumn(column, i % 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
            const auto sorted = Clock::now();
            paintNow();
            wholes.push_back(msSince(start));
            sorts.push_back(msBetween(start, sorted));
            paints.push_back(msSince(sorted));
        }
        return Click{Bench::median(wholes), Bench::median(sorts), Bench::median(paints)};
    };
    const Click sortName = sortMs(TntTableModel::NameColumn);
    const Click sortSize = sortMs(TntTableModel::SizeColumn);
    // A click onto a screen of texts never painted: before each click the table is scrolled to rows
    // that the clicks before did not show, and painted there in the order of the click before.
    const auto coldMs = [&](int column) {
        std::vector<double> wholes;
        QScrollBar *bar = view.table()->verticalScrollBar();
        for (int i = 0; i < sortRuns; ++i) {
            bar->setValue(std::min(bar->maximum(), (i + 1) * 200));
            paintNow(); // the rows scrolled to, painted before the click, not in its figure
            const auto start = Clock::now();
            view.table()->sortByColumn(column, i % 2 ? Qt::DescendingOrder : Qt::AscendingOrder);
            paintNow();
            wholes.push_back(msSince(start));
        }
        return Bench::median(wholes);
    };
    const double coldName = coldMs(TntTableModel::NameColumn);
    const double coldSize = coldMs(TntTableModel::SizeColumn);
    view.table()->verticalScrollBar()->setValue(0);
    view.table()->sortByColumn(TntTableModel::AddedOnColumn, Qt::DescendingOrder);

    Bench::run(4s); // settle after the sorts
    const qint64 pollsBefore = source.polls(context);
    const double cpuBefore = cpuSeconds();
    const auto idleStart = Clock::now();
    Bench::run(std::chrono::seconds(seconds));
    const double cpu = cpuSeconds() - cpuBefore;
    const double wall = msSince(idleStart) / 1000;
    const qint64 polls = source.polls(context) - pollsBefore;
    const long residentAtRest = Bench::residentMiB();

    std::printf("torrents shown            %lld\n", static_cast<long long>(context.tntCollection().size()));
    std::printf("connect to painted table  %.0f ms (from the swap of the models: %.0f ms)\n", connectToPaint, swapToPaint);
    std::printf("sort by name (median)     %.1f ms (sort %.1f, layout and paint %.1f)\n", sortName.whole, sortName.sort,
                sortName.paint);
    std::printf("sort by size (median)     %.1f ms (sort %.1f, layout and paint %.1f)\n", sortSize.whole, sortSize.sort,
                sortSize.paint);
    std::printf("onto new rows (median)    by name %.1f ms, by size %.1f ms\n", coldName, coldSize);
    std::printf("resident                  %ld MiB (after the polling: %ld MiB)\n", resident, residentAtRest);
    std::printf("polling, %.0f s            %lld answers, CPU %.2f s = %.2f%% of one core\n", wall,
                static_cast<long long>(polls), cpu, 100 * cpu / wall);
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QString mode = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("real");
    const int count = argc > 2 ? std::max(1, std::atoi(argv[2])) : 10000;
    const int seconds = argc > 3 ? std::max(1, std::atoi(argv[3])) : 60;
    const int sortRuns = argc > 4 ? std::max(1, std::atoi(argv[4])) : 5;

    if (mode == u"replay") {
        FakeServer server;
        auto polls = std::make_shared<qint64>(0);
        answerAsReplay(server, count, polls);
        std::printf("replayed answers, %d torrents, 1%% of them changing at every poll\n", count);
        measure({server.configuration(API::AuthMethod::none), [polls](const AppContext &) { return *polls; }}, count,
                seconds, sortRuns);
        return 0;
    }
    const std::unique_ptr<QbtServer> server = Bench::loadedServer(count);
    if (!server)
        return 1;
    ClientConfiguration configuration = server->configuration();
    configuration.authMethod = API::AuthMethod::none;
    std::printf("qbittorrent-nox 4.5.2, %d paused torrents\n", count);
    // The server's rid grows by one per answer.
    measure({configuration, [](const AppContext &context) { return context.rid(); }}, count, seconds, sortRuns);
    return 0;
}
