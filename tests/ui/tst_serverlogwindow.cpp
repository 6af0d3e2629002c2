#include "support/ScriptedTorrents.h"
#include "support/Widgets.h"
#include "ui/ServerLogModels.h"
#include "ui/ServerLogWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>
#include <QUrlQuery>

namespace {

using Response = FakeServer::Response;

struct Line
{
    qint64 id;
    int type;
    const char *message;
};

QByteArray logAnswer(const QList<Line> &lines, qint64 after)
{
    QByteArray json = "[";
    for (const Line &line : lines) {
        if (line.id <= after)
            continue;
        if (json.size() > 1)
            json += ',';
        json += QStringLiteral(R"({"id":%1,"message":"%2","timestamp":1795688475,"type":%3})")
                    .arg(line.id)
                    .arg(QString::fromUtf8(line.message))
                    .arg(line.type)
                    .toUtf8();
    }
    return json + ']';
}

qint64 lastKnownId(const FakeServer::Request &request)
{
    return QUrlQuery(QString::fromUtf8(request.body)).queryItemValue(QStringLiteral("last_known_id")).toLongLong();
}

QStringList texts(const QTreeView &view, int column)
{
    QStringList found;
    for (int row = 0; row < view.model()->rowCount(); ++row)
        found << view.model()->index(row, column).data().toString();
    return found;
}

} // namespace

// The log window, offscreen, over a scripted server that logs what each test says.
class TestServerLogWindow : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptedTorrents> m_server;
    std::unique_ptr<ServerLogWindow> m_window;
    QList<Line> m_lines;
    QList<qint64> m_asked; // last_known_id of each read of the execution log

    QTreeView &messages() { return *m_window->messageView(); }

    void open()
    {
        m_window = std::make_unique<ServerLogWindow>(*m_server->context);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

private Q_SLOTS:
    void init()
    {
        m_lines = {{0, 1, "qBittorrent started"}, {1, 2, "Peer ID"}, {2, 4, "No translation"}, {3, 8, "Disk full"}};
        m_asked.clear();
        m_server = std::make_unique<ScriptedTorrents>();
        m_server->server.setHandler([this, base = m_server.get()](const FakeServer::Request &request) {
            if (request.target.endsWith("/log/main")) {
                m_asked << lastKnownId(request);
                return Response::json(logAnswer(m_lines, lastKnownId(request)));
            }
            if (request.target.endsWith("/log/peers"))
                return Response::json(lastKnownId(request) < 0 ? R"([{"blocked":true,"id":0,"ip":"127.0.0.2",)"
                                                                  R"("reason":"IP filter","timestamp":1795688486},)"
                                                                  R"({"blocked":false,"id":1,"ip":"10.0.0.9",)"
                                                                  R"("reason":"","timestamp":1795688487}])"
                                                               : "[]");
            if (request.target.contains("/sync/maindata"))
                return Response::json(base->syncAnswer);
            return Response::text(200, "");
        });
    }

    void cleanup()
    {
        m_window.reset();
        m_server.reset();
    }

    void showsAndFilters()
    {
        open();
        QTRY_COMPARE(texts(messages(), LogMessageTableModel::MessageColumn),
                     (QStringList{QStringLiteral("qBittorrent started"), QStringLiteral("Peer ID"),
                                  QStringLiteral("No translation"), QStringLiteral("Disk full")}));
        QCOMPARE(messages().model()->index(0, 0).data().toString(), logTime(API::Date(1795688475)));
        QCOMPARE(m_window->tabs()->tabText(0), QStringLiteral("Execution Log"));
        QCOMPARE(m_window->tabs()->tabText(1), QStringLiteral("Blocked IPs"));

        // Normal and warning lines hidden, and shown again, at once: nothing is asked of the server.
        m_window->levelBoxes().at(0)->setChecked(false);
        m_window->levelBoxes().at(2)->setChecked(false);
        QCOMPARE(texts(messages(), LogMessageTableModel::MessageColumn),
                 (QStringList{QStringLiteral("Peer ID"), QStringLiteral("Disk full")}));
        QCOMPARE(m_server->defaults.integerValue(UserDefaultsKey::serverLogLevels), 0x2 | 0x8);
        m_window->levelBoxes().at(0)->setChecked(true);
        QCOMPARE(texts(messages(), LogMessageTableModel::MessageColumn).size(), 3);

        // Only lines after the last one read are asked for, and appended.
        m_lines << Line{4, 1, "Torrent added"};
        QTRY_VERIFY(texts(messages(), LogMessageTableModel::MessageColumn).endsWith(QStringLiteral("Torrent added")));
        QVERIFY(m_asked.contains(3));
        QCOMPARE(m_asked.first(), -1);

        m_window->tabs()->setCurrentIndex(1);
        QTRY_COMPARE(texts(*m_window->peerView(), PeerLogTableModel::IpColumn),
                     (QStringList{QStringLiteral("127.0.0.2"), QStringLiteral("10.0.0.9")}));
        QCOMPARE(texts(*m_window->peerView(), PeerLogTableModel::ReasonColumn),
                 (QStringList{QStringLiteral("IP filter"), QStringLiteral("Banned")}));
        QVERIFY(!m_window->levelBoxes().at(0)->isEnabled());
    }

    // Ctrl+C copies the selected lines; Clear empties the window, and the lines cleared stay away.
    void copiesAndClears()
    {
        open();
        QTRY_COMPARE(messages().model()->rowCount(), 4);
        messages().selectionModel()->select(messages().model()->index(1, 0),
                                            QItemSelectionModel::Select | QItemSelectionModel::Rows);
        messages().selectionModel()->select(messages().model()->index(3, 0),
                                            QItemSelectionModel::Select | QItemSelectionModel::Rows);
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        messages().setFocus();
        QTest::keySequence(&messages(), QKeySequence::Copy);
        const QString time = logTime(API::Date(1795688475));
        QCOMPARE(QApplication::clipboard()->text(), time + QStringLiteral("\tPeer ID\n") + time + QStringLiteral("\tDisk full"));

        QuilloTest::button(*m_window, QStringLiteral("Clear"))->click();
        QCOMPARE(messages().model()->rowCount(), 0);
        m_lines << Line{4, 1, "Torrent added"};
        QTRY_COMPARE(texts(messages(), LogMessageTableModel::MessageColumn), QStringList{QStringLiteral("Torrent added")});
    }

    // Hidden, the window reads nothing; shown again, it reads on from where it was.
    void readsOnlyWhileShown()
    {
        open();
        QTRY_COMPARE(messages().model()->rowCount(), 4);
        QVERIFY(m_server->context->isReadingServerLog());
        m_window->hide();
        QVERIFY(!m_server->context->isReadingServerLog());
        const qsizetype reads = m_asked.size();
        m_lines << Line{4, 1, "Torrent added"};
        m_window->show();
        QTRY_COMPARE(messages().model()->rowCount(), 5);
        QCOMPARE(m_asked.at(reads), 3);
    }

    // New lines scroll into view while the user is at the end, and leave alone one who scrolled up.
    void followsTheEnd()
    {
        for (qint64 id = 4; id < 200; ++id)
            m_lines << Line{id, 1, "busy"};
        open();
        QScrollBar &bar = *messages().verticalScrollBar();
        QTRY_COMPARE(messages().model()->rowCount(), 200);
        QVERIFY(bar.maximum() > 0);
        QCOMPARE(bar.value(), bar.maximum());
        m_lines << Line{200, 1, "at the end"};
        QTRY_COMPARE(messages().model()->rowCount(), 201);
        QCOMPARE(bar.value(), bar.maximum());
        bar.setValue(bar.maximum() / 2);
        const int reading = bar.value();
        m_lines << Line{201, 1, "while reading"};
        QTRY_COMPARE(messages().model()->rowCount(), 202);
        QCOMPARE(bar.value(), reading);
    }

    // The window opens where and as large as it was closed.
    void remembersItsPlace()
    {
        open();
        m_window->resize(640, 333);
        m_window->close();
        m_window = std::make_unique<ServerLogWindow>(*m_server->context);
        QCOMPARE(m_window->size(), QSize(640, 333));
    }

    // A new poller (a reconnection) reads both logs from the beginning: a server started again
    // numbers its lines from 0.
    void startsAfreshWithEveryPoller()
    {
        open();
        QTRY_COMPARE(messages().model()->rowCount(), 4);
        m_lines = {{0, 1, "qBittorrent started again"}};
        m_server->context->suspendPolling();
        QVERIFY(!m_server->context->isReadingServerLog());
        m_server->context->resumePolling();
        QTRY_COMPARE(texts(messages(), LogMessageTableModel::MessageColumn),
                     QStringList{QStringLiteral("qBittorrent started again")});
        QCOMPARE(m_asked.last(), -1);
    }
};

QTEST_MAIN(TestServerLogWindow)
#include "tst_serverlogwindow.moc"
