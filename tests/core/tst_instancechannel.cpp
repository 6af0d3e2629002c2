#include "core/InstanceChannel.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QUuid>

// A second launch hands its torrents to the running instance over a local socket.
class TestInstanceChannel : public QObject
{
    Q_OBJECT

    static QString freshName() { return u"quillo-test-"_qs + QUuid::createUuid().toString(QUuid::WithoutBraces); }

private Q_SLOTS:
    void handedOver_data()
    {
        QTest::addColumn<QStringList>("sources");
        QTest::newRow("a launch without torrents") << QStringList();
        QTest::newRow("files and links") << QStringList{u"file:///home/u/Downloads/a b é.torrent"_qs,
                                                        u"magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567"_qs};
        QTest::newRow("many") << QStringList(500, u"file:///tmp/"_qs + QString(200, u'x') + u".torrent"_qs);
    }

    void handedOver()
    {
        QFETCH(QStringList, sources);
        const QString name = freshName();
        InstanceChannel running(name);
        QVERIFY(running.listen());
        QSignalSpy received(&running, &InstanceChannel::received);
        QVERIFY(InstanceChannel::sendToRunning(sources, name));
        QVERIFY(received.wait());
        QCOMPARE(received.size(), 1);
        QCOMPARE(received.first().first().toStringList(), sources);
    }

    void nobodyListening()
    {
        QVERIFY(!InstanceChannel::sendToRunning({u"magnet:?xt=urn:btih:x"_qs}, freshName()));
    }

    // An instance that crashed leaves its socket file behind; the next one takes the name over.
    void staleSocketTakenOver()
    {
        const QString name = freshName();
        QFile stale(QDir::temp().filePath(name));
        QVERIFY(stale.open(QIODevice::WriteOnly));
        stale.close();
        InstanceChannel running(name);
        QVERIFY(running.listen());
        QSignalSpy received(&running, &InstanceChannel::received);
        QVERIFY(InstanceChannel::sendToRunning({u"magnet:?xt=urn:btih:y"_qs}, name));
        QVERIFY(received.wait());
    }
};

QTEST_GUILESS_MAIN(TestInstanceChannel)
#include "tst_instancechannel.moc"
