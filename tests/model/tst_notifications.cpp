#include "model/CompletionNotifier.h"
#include "model/TntCollection.h"
#include "settings/AppSettings.h"
#include "support/NotificationService.h"

#include <QDBusConnection>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

API::STntModel downloading(const QString &name)
{
    return {.name = name, .state = TntModel::State::downloading};
}

// A notifier over a collection of its own, and the service that records what it tells.
struct Watched
{
    NotificationService service;
    UserDefaults defaults;
    AppSettings settings{defaults};
    TntCollection collection;
    CompletionNotifier notifier{collection, settings};

    Watched(const QString &settingsFile, bool notifying)
        : defaults(settingsFile)
    {
        settings.setNotifyDownloadsComplete(notifying);
    }
    ~Watched() { service.withdraw(); }

    // A download that finishes after everything else, announced on its own: once it has been told,
    // everything before it has been too.
    bool sentinelTold()
    {
        settings.setNotifyDownloadsComplete(true);
        collection.merge({{QStringLiteral("s"), downloading(QStringLiteral("Sentinel"))}}, {}, 5);
        collection.merge({{QStringLiteral("s"), API::STntModel{.state = TntModel::State::stalledUP}}}, {}, 5);
        return QTest::qWaitFor(
            [this] { return !service.received.isEmpty() && service.received.last().body == u"\"Sentinel\""_qs; });
    }
};

} // namespace

Q_DECLARE_METATYPE(QList<TntModel::State>)

// Against a private session bus (tests/support/with-secret-service starts one).
class TestNotifications : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private Q_SLOTS:
    void init() { QFile::remove(m_dir.filePath(QStringLiteral("Quillo.ini"))); }

    // Whatever a torrent passes through on its way, its download finishing is announced once,
    // never for a torrent complete when first seen, and not at all when switched off.
    void downloadsFinishWhateverTheWay_data()
    {
        using S = TntModel::State;
        QTest::addColumn<QList<S>>("states"); // the first is what the first answer says
        QTest::addColumn<bool>("notifying");
        QTest::addColumn<int>("announced");
        QTest::newRow("straight") << QList{S::downloading, S::stalledUP} << true << 1;
        QTest::newRow("through moving") << QList{S::downloading, S::moving, S::stalledUP} << true << 1;
        QTest::newRow("through checking") << QList{S::downloading, S::checkingUP, S::uploading} << true << 1;
        QTest::newRow("metadata first, stopped at the end")
            << QList{S::metaDL, S::downloading, S::moving, S::stoppedUP} << true << 1;
        QTest::newRow("complete when first seen") << QList{S::stalledUP, S::uploading} << true << 0;
        QTest::newRow("rechecked after") << QList{S::downloading, S::stalledUP, S::checkingUP, S::stalledUP} << true << 1;
        QTest::newRow("downloaded again")
            << QList{S::downloading, S::stalledUP, S::checkingDL, S::downloading, S::stalledUP} << true << 2;
        QTest::newRow("switched off") << QList{S::downloading, S::stalledUP} << false << 0;
    }

    void downloadsFinishWhateverTheWay()
    {
        QFETCH(QList<TntModel::State>, states);
        QFETCH(bool, notifying);
        QFETCH(int, announced);
        Watched watched(m_dir.filePath(QStringLiteral("Quillo.ini")), notifying);
        QVERIFY(watched.service.publish());
        const QString hash = QStringLiteral("a");
        watched.collection.replaceAll(
            TntCollection::build({{hash, {.name = QStringLiteral("A"), .state = states.first()}}}, 5));
        for (qsizetype step = 1; step < states.size(); ++step)
            watched.collection.merge({{hash, API::STntModel{.state = states[step]}}}, {}, 5);
        QVERIFY(watched.sentinelTold());
        QCOMPARE(watched.service.received.size(), announced + 1);
    }

    // What the first answer after a kept list finds finished happened while Quillo was away: one
    // summary, never one each, and nothing for what was complete already.
    void finishedWhileAway_data()
    {
        QTest::addColumn<int>("finished");   // of the kept list's downloads, these many finish
        QTest::addColumn<bool>("notifying");
        QTest::addColumn<QString>("summary"); // empty: nothing is announced
        QTest::addColumn<QString>("body");
        QTest::newRow("none") << 0 << true << QString() << QString();
        QTest::newRow("one") << 1 << true << u"A download completed while Quillo was closed"_qs << u"\"D0\""_qs;
        QTest::newRow("three") << 3 << true << u"3 downloads completed while Quillo was closed"_qs
                               << u"\"D0\"\n\"D1\"\n\"D2\""_qs;
        QTest::newRow("seven") << 7 << true << u"7 downloads completed while Quillo was closed"_qs
                               << u"\"D0\"\n\"D1\"\n\"D2\"\n\"D3\"\n\"D4\"\nand 2 more"_qs;
        QTest::newRow("switched off") << 3 << false << QString() << QString();
    }

    void finishedWhileAway()
    {
        QFETCH(int, finished);
        QFETCH(bool, notifying);
        QFETCH(QString, summary);
        QFETCH(QString, body);
        Watched watched(m_dir.filePath(QStringLiteral("Quillo.ini")), notifying);
        QVERIFY(watched.service.publish());
        QSignalSpy attention(&watched.notifier, &CompletionNotifier::attentionRequested);
        // The kept list: eight downloads, and one torrent complete already.
        QHash<QString, API::STntModel> kept{{u"done"_qs, {.name = u"Done"_qs, .state = TntModel::State::stalledUP}}};
        for (int i = 0; i < 8; ++i)
            kept.insert(QString::number(i), downloading(u"D"_qs + QString::number(i)));
        watched.collection.replaceAll(TntCollection::build(kept, 5));
        QHash<QString, API::STntModel> answer{{u"done"_qs, {.state = TntModel::State::uploading}}};
        for (int i = 0; i < finished; ++i)
            answer.insert(QString::number(i), {.state = TntModel::State::pausedUP});
        watched.notifier.beginCatchUp();
        watched.collection.mergeFull(answer, 5); // what it does not list has gone
        watched.notifier.endCatchUp();
        // A download finishing afterwards is told on its own, as usual.
        QVERIFY(watched.sentinelTold());
        QCOMPARE(watched.service.received.size(), summary.isEmpty() ? 1 : 2);
        if (!summary.isEmpty()) {
            QCOMPARE(watched.service.received.first().summary, summary);
            QCOMPARE(watched.service.received.first().body, body);
        }
        QCOMPARE(attention.size(), finished > 0 ? 2 : 1);
    }

    void finishedDownloadsAreAnnounced_data()
    {
        QTest::addColumn<bool>("serviceThere");
        QTest::addColumn<bool>("animateDockIcon");
        QTest::newRow("service, attention") << true << true;
        QTest::newRow("service, no attention") << true << false;
        QTest::newRow("no service still asks for attention") << false << true;
    }

    void finishedDownloadsAreAnnounced()
    {
        QFETCH(bool, serviceThere);
        QFETCH(bool, animateDockIcon);
        QDBusConnection bus = QDBusConnection::sessionBus();
        QVERIFY2(bus.isConnected(), "run through with-secret-service, which starts a session bus");
        NotificationService service;
        if (serviceThere)
            QVERIFY(service.publish());

        UserDefaults defaults(m_dir.filePath(QStringLiteral("Quillo.ini")));
        AppSettings settings(defaults);
        settings.setAnimateDockIcon(animateDockIcon);
        TntCollection collection;
        CompletionNotifier notifier(collection, settings);
        QSignalSpy attention(&notifier, &CompletionNotifier::attentionRequested);

        collection.replaceAll(TntCollection::build({{QStringLiteral("a"), downloading(QStringLiteral("The \"Best\" Album"))},
                                                    {QStringLiteral("b"), downloading(QStringLiteral("Second"))},
                                                    {QStringLiteral("c"), downloading(QStringLiteral("Still going"))}},
                                                   5));
        const API::STntModel finished{.state = TntModel::State::stalledUP};
        collection.merge({{QStringLiteral("a"), finished}, {QStringLiteral("b"), finished}}, {}, 5);
        QCOMPARE(attention.size(), animateDockIcon ? 1 : 0);

        if (serviceThere) {
            QTRY_COMPARE(service.received.size(), 2);
            QStringList bodies;
            for (const auto &notification : std::as_const(service.received)) {
                QCOMPARE(notification.summary, QStringLiteral("Download completed"));
                QCOMPARE(notification.hints.value(QStringLiteral("x-quillo-thread")).toString(),
                         QStringLiteral("Quillo.Qbt.Nox.Finish.Download"));
                QCOMPARE(notification.hints.value(QStringLiteral("sound-name")).toString(), QStringLiteral("complete"));
                bodies << notification.body;
            }
            bodies.sort();
            QCOMPARE(bodies, (QStringList{u"\"Second\""_qs, u"\"The \"Best\" Album\""_qs}));
            QVERIFY(service.received[0].hints.value(QStringLiteral("x-quillo-id"))
                    != service.received[1].hints.value(QStringLiteral("x-quillo-id")));
            service.withdraw();
        }
    }
};

QTEST_GUILESS_MAIN(TestNotifications)
#include "tst_notifications.moc"
