#include "model/ServerLog.h"

#include <QSignalSpy>
#include <QTest>

using API::LogMessage;
using Merge = LogLines<LogMessage>::Merge;

namespace {

QList<LogMessage> lines(std::initializer_list<qint64> ids)
{
    QList<LogMessage> made;
    for (const qint64 id : ids)
        made << LogMessage{id, QStringLiteral("line %1").arg(id), API::Date(1'700'000'000 + double(id)),
                           API::LogLevel::info};
    return made;
}

QList<qint64> idsOf(const LogLines<LogMessage> &log)
{
    QList<qint64> ids;
    for (qsizetype row = 0; row < log.size(); ++row)
        ids << log.at(row).id;
    return ids;
}

} // namespace

// The log read on from its last id: answers in sequence, as the loader merges them.
class TestServerLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void merges_data()
    {
        QTest::addColumn<QList<QList<qint64>>>("answers");
        QTest::addColumn<QList<qint64>>("kept");
        QTest::addColumn<qint64>("lastId");
        QTest::addColumn<bool>("wentBack");
        using Ids = QList<qint64>;
        using Answers = QList<Ids>;
        QTest::newRow("first read") << Answers{{0, 1, 2}} << Ids{0, 1, 2} << qint64(2) << false;
        QTest::newRow("new lines appended") << Answers{{0, 1}, {2, 3}, {}} << Ids{0, 1, 2, 3} << qint64(3) << false;
        // The server's ring let lines go before they were read, or a level left some out.
        QTest::newRow("gap in the ids") << Answers{{0, 1}, {7, 9}} << Ids{0, 1, 7, 9} << qint64(9) << false;
        QTest::newRow("oldest lines leave") << Answers{{0, 1, 2}, {3, 4, 5}} << Ids{2, 3, 4, 5} << qint64(5) << false;
        QTest::newRow("answer above the bound") << Answers{{0, 1, 2, 3, 4, 5}} << Ids{2, 3, 4, 5} << qint64(5) << false;
        // A server started again, or a server that did not read the last id.
        QTest::newRow("ids start again") << Answers{{0, 1, 2}, {0, 1}} << Ids{} << qint64(-1) << true;
        QTest::newRow("id already read") << Answers{{0, 1, 2}, {2, 3}} << Ids{} << qint64(-1) << true;
        QTest::newRow("ids out of order") << Answers{{0, 2, 1}} << Ids{} << qint64(-1) << true;
        QTest::newRow("read afresh after going back") << Answers{{5, 6}, {0}, {0, 1}} << Ids{0, 1} << qint64(1) << false;
    }

    void merges()
    {
        QFETCH(QList<QList<qint64>>, answers);
        QFETCH(QList<qint64>, kept);
        QFETCH(qint64, lastId);
        QFETCH(bool, wentBack);
        LogLines<LogMessage> log(4);
        Merge last = Merge::appended;
        for (const QList<qint64> &answer : std::as_const(answers)) {
            QList<LogMessage> made;
            for (const qint64 id : answer)
                made << lines({id});
            last = log.merge(made);
        }
        QCOMPARE(idsOf(log), kept);
        QCOMPARE(log.lastId(), lastId);
        QCOMPARE(last == Merge::wentBack, wentBack);
        if (!kept.isEmpty())
            QCOMPARE(log.at(0), lines({kept.first()}).first());
    }

    // A view over the lines learns of each change before and after it, with rows that add up.
    void announcesRows()
    {
        LogLines<LogMessage> log(3);
        QSignalSpy inserted(&log, &KeyedRowsSignals::aboutToInsert);
        QSignalSpy removed(&log, &KeyedRowsSignals::aboutToRemove);
        log.merge(lines({0, 1}));
        log.merge(lines({2, 3}));
        QCOMPARE(inserted.count(), 2);
        QCOMPARE(inserted.at(1), (QVariantList{qsizetype(1), qsizetype(2)}));
        QCOMPARE(removed.count(), 1);
        QCOMPARE(removed.at(0), (QVariantList{qsizetype(0), qsizetype(0)}));
        QCOMPARE(idsOf(log), (QList<qint64>{1, 2, 3}));
    }

    // Clear empties the view only: the lines cleared do not come back with the next read.
    void clearKeepsReadingOn()
    {
        ServerLog log;
        log.messages().merge(lines({0, 1}));
        log.messages().clear();
        QCOMPARE(log.messages().size(), 0);
        QCOMPARE(log.messages().lastId(), 1);
        QCOMPARE(log.messages().merge(lines({2})), Merge::appended);
        QCOMPARE(idsOf(log.messages()), QList<qint64>{2});
        log.reset();
        QCOMPARE(log.messages().lastId(), -1);
        QCOMPARE(log.peers().lastId(), -1);
    }
};

QTEST_GUILESS_MAIN(TestServerLog)
#include "tst_serverlog.moc"
