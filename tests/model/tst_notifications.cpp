#include "model/CompletionNotifier.h"
#include "model/TntCollection.h"
#include "settings/AppSettings.h"

#include <QDBusConnection>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

// The desktop's notification service, as far as Quillo uses it.
class NotificationService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Received
    {
        QString summary;
        QString body;
        QVariantMap hints;
    };
    QList<Received> received;

public Q_SLOTS:
    uint Notify(const QString &, uint, const QString &, const QString &summary, const QString &body, const QStringList &,
                const QVariantMap &hints, int)
    {
        received.append({summary, body, hints});
        return static_cast<uint>(received.size());
    }
};

API::STntModel downloading(const QString &name)
{
    return {.name = name, .state = TntModel::State::downloading};
}

} // namespace

// Against a private session bus (tests/support/with-secret-service starts one).
class TestNotifications : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private Q_SLOTS:
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
        if (serviceThere) {
            QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), &service,
                                       QDBusConnection::ExportAllSlots));
            QVERIFY(bus.registerService(QStringLiteral("org.freedesktop.Notifications")));
        }

        QFile::remove(m_dir.filePath(QStringLiteral("Quillo.ini")));
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
            bus.unregisterService(QStringLiteral("org.freedesktop.Notifications"));
            bus.unregisterObject(QStringLiteral("/org/freedesktop/Notifications"));
        }
    }
};

QTEST_GUILESS_MAIN(TestNotifications)
#include "tst_notifications.moc"
