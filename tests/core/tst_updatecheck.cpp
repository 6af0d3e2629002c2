#include "core/UpdateCheck.h"
#include "core/UpdateSchedule.h"
#include "settings/AppSettings.h"
#include "support/Await.h"
#include "support/FakeServer.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

Q_DECLARE_METATYPE(UpdateCheck::Outcome::Kind)
Q_DECLARE_METATYPE(UpdateInterval)

using Kind = UpdateCheck::Outcome::Kind;
using Response = FakeServer::Response;

namespace {

// JSON written with single quotes, which read better in a table.
QByteArray feed(const char *json)
{
    return QByteArray(json).replace('\'', '"');
}

} // namespace

// "Check for Updates" against a release feed served on loopback, as GitHub's releases API answers.
class TestUpdateCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void outcome_data()
    {
        QTest::addColumn<QByteArray>("feed");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("current");
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("text"); // the whole text, or the start of a failure's
        QTest::addColumn<QUrl>("page");

        const QString available = QStringLiteral("Quillo 0.3.0 is available.");
        const QString upToDate = QStringLiteral("Quillo is up to date.");
        const QUrl page(QStringLiteral("https://example.org/v0.3.0"));
        QTest::newRow("newer") << feed("[{'tag_name':'v0.3.0','html_url':'https://example.org/v0.3.0','draft':false,"
                                       "'prerelease':false},{'tag_name':'v0.2.0','html_url':'x'}]")
                               << 200 << "0.2.0" << Kind::available << available << page;
        QTest::newRow("newest listed last, compared by number")
            << feed("[{'tag_name':'v0.9.0'},{'tag_name':'0.10.0','html_url':'https://example.org/10'}]") << 200
            << "0.2.0" << Kind::available << "Quillo 0.10.0 is available."
            << QUrl(QStringLiteral("https://example.org/10"));
        QTest::newRow("same") << feed("[{'tag_name':'v0.2'}]") << 200 << "0.2.0" << Kind::upToDate << upToDate
                              << QUrl();
        QTest::newRow("older") << feed("[{'tag_name':'v0.1.9'}]") << 200 << "0.2.0" << Kind::upToDate << upToDate
                               << QUrl();
        QTest::newRow("newer only as draft or pre-release")
            << feed("[{'tag_name':'v0.4.0','draft':true},{'tag_name':'v0.3.0','prerelease':true},"
                    "{'tag_name':'v0.3.0-rc.1'},{'tag_name':'v0.2.0'}]")
            << 200 << "0.2.0" << Kind::upToDate << upToDate << QUrl();
        const QString failed = QStringLiteral("Could not check for updates: ");
        QTest::newRow("malformed") << feed("[{'tag_name':") << 200 << "0.2.0" << Kind::failed
                                   << failed + u"the release feed is not valid JSON"_qs << QUrl();
        QTest::newRow("not a list") << feed("{'message':'Not Found'}") << 200 << "0.2.0" << Kind::failed
                                    << failed + u"the release feed is not a list of releases."_qs << QUrl();
        QTest::newRow("no release") << feed("[]") << 200 << "0.2.0" << Kind::failed
                                    << failed + u"the release feed lists no release."_qs << QUrl();
        QTest::newRow("not found") << feed("missing") << 404 << "0.2.0" << Kind::failed
                                   << failed + u"the release feed at http://127.0.0.1"_qs << QUrl();
    }

    void outcome()
    {
        QFETCH(QByteArray, feed);
        QFETCH(int, status);
        QFETCH(QString, current);
        QFETCH(QString, text);
        FakeServer server;
        server.answerAll(status == 200 ? Response::json(feed) : Response::text(status, feed));
        const QUrl url(QStringLiteral("http://127.0.0.1:%1/repos/quillo/releases").arg(server.port()));
        UpdateCheck check(url, QVersionNumber::fromString(current));

        const UpdateCheck::Outcome outcome = QuilloTest::wait(check.check());
        QTEST(outcome.kind, "kind");
        QVERIFY2(outcome.text.startsWith(text), qPrintable(outcome.text));
        QTEST(outcome.page, "page");
        QCOMPARE(server.requests().size(), 1);
    }

    void unreachable()
    {
        // A port that was just free: nothing listens there.
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const quint16 port = closed.serverPort();
        closed.close();
        UpdateCheck check(QUrl(QStringLiteral("http://127.0.0.1:%1/releases").arg(port)), QVersionNumber(0, 2));

        const UpdateCheck::Outcome outcome = QuilloTest::wait(check.check());
        QCOMPARE(outcome.kind, Kind::failed);
        QVERIFY2(outcome.text.contains(QStringLiteral("did not answer (Connection refused)")),
                 qPrintable(outcome.text));
    }

    void schedule_data()
    {
        QTest::addColumn<UpdateInterval>("interval");
        QTest::addColumn<int>("lastCheckDaysAgo"); // none: INT_MIN; a last check in the future: negative
        QTest::addColumn<bool>("feedAnswers");
        QTest::addColumn<bool>("asks");
        QTest::addColumn<bool>("records");

        constexpr int never = std::numeric_limits<int>::min();
        QTest::newRow("first check") << UpdateInterval::weak << never << true << true << true;
        QTest::newRow("week not over") << UpdateInterval::weak << 3 << true << false << false;
        QTest::newRow("week over") << UpdateInterval::weak << 8 << true << true << true;
        QTest::newRow("daily") << UpdateInterval::day << 2 << true << true << true;
        QTest::newRow("monthly, not yet") << UpdateInterval::mounce << 20 << true << false << false;
        QTest::newRow("switched off") << UpdateInterval::disabled << never << true << false << false;
        QTest::newRow("last check in the future") << UpdateInterval::weak << -2 << true << true << true;
        QTest::newRow("failed: tried again later") << UpdateInterval::weak << never << false << true << false;
    }

    // The automatic check asks when its interval has passed, and tells only of a newer release.
    void schedule()
    {
        QFETCH(UpdateInterval, interval);
        QFETCH(int, lastCheckDaysAgo);
        QFETCH(bool, feedAnswers);
        QFETCH(bool, asks);
        QFETCH(bool, records);
        QTemporaryDir dir;
        UserDefaults defaults(dir.filePath(QStringLiteral("Quillo.ini")));
        AppSettings settings(defaults);
        settings.setUpdateCheckInterval(interval);
        const QDateTime now = QDateTime::currentDateTimeUtc();
        const bool checkedBefore = lastCheckDaysAgo != std::numeric_limits<int>::min();
        const QDateTime before = checkedBefore ? now.addDays(-lastCheckDaysAgo) : QDateTime();
        if (checkedBefore)
            defaults.setValue(UserDefaultsKey::lastCheckForUpdate, before);
        FakeServer server;
        server.answerAll(feedAnswers ? Response::json(feed("[{'tag_name':'v9.0.0'}]")) : Response::text(500, ""));
        UpdateSchedule schedule(settings, QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(server.port())),
                                QVersionNumber(0, 2));
        QSignalSpy available(&schedule, &UpdateSchedule::available);

        QuilloTest::wait(schedule.checkIfDue(now));
        QCOMPARE(server.requests().size(), asks ? 1 : 0);
        QCOMPARE(available.size(), asks && feedAnswers ? 1 : 0);
        QCOMPARE(defaults.value(UserDefaultsKey::lastCheckForUpdate).toDateTime(), records ? now : before);
    }
};

QTEST_GUILESS_MAIN(TestUpdateCheck)
#include "tst_updatecheck.moc"
