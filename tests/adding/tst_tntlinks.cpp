#include "adding/TntLinks.h"

#include <QTest>

// Links typed or dropped, one per line, as torrents/add takes them.
class TestTntLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parse_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("urls");
        QTest::addColumn<QStringList>("rejected");
        const QString hex = u"0123456789ABCDEF0123456789abcdef01234567"_qs;
        QTest::newRow("empty") << QString() << QStringList() << QStringList();
        QTest::newRow("blank lines") << u"  \n\t\n"_qs << QStringList() << QStringList();
        QTest::newRow("magnet kept as is")
            << u"magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567&dn=A%20B"_qs
            << QStringList{u"magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567&dn=A%20B"_qs}
            << QStringList();
        QTest::newRow("magnet without a torrent hash") << u"magnet:?dn=nothing"_qs << QStringList()
                                                       << QStringList{u"magnet:?dn=nothing"_qs};
        QTest::newRow("hex hash, lower case") << hex
                                              << QStringList{u"magnet:?xt=urn:btih:"_qs + hex.toLower()}
                                              << QStringList();
        QTest::newRow("base32 hash, upper case")
            << u"mfrggzdfmztwq2lknnwg23tpobyxe43u"_qs
            << QStringList{u"magnet:?xt=urn:btih:MFRGGZDFMZTWQ2LKNNWG23TPOBYXE43U"_qs} << QStringList();
        QTest::newRow("v2 hash") << QString(64, u'a')
                                 << QStringList{u"magnet:?xt=urn:btmh:1220"_qs + QString(64, u'a')}
                                 << QStringList();
        QTest::newRow("39 hex digits") << hex.left(39) << QStringList() << QStringList{hex.left(39)};
        QTest::newRow("base32 with a 1") << u"1frggzdfmztwq2lknnwg23tpobyxe43u"_qs << QStringList()
                                         << QStringList{u"1frggzdfmztwq2lknnwg23tpobyxe43u"_qs};
        QTest::newRow("http and https, trimmed, in order")
            << u"  https://example.org/a.torrent \r\n\nhttp://10.0.0.2:8080/get?id=5\n"_qs
            << QStringList{u"https://example.org/a.torrent"_qs, u"http://10.0.0.2:8080/get?id=5"_qs}
            << QStringList();
        QTest::newRow("other schemes and words")
            << u"ftp://example.org/a.torrent\nfile:///tmp/a.torrent\nhello\nhttp://"_qs << QStringList()
            << QStringList{u"ftp://example.org/a.torrent"_qs, u"file:///tmp/a.torrent"_qs, u"hello"_qs,
                           u"http://"_qs};
        QTest::newRow("good and bad mixed") << (hex + u"\nnot a link"_qs)
                                            << QStringList{u"magnet:?xt=urn:btih:"_qs + hex.toLower()}
                                            << QStringList{u"not a link"_qs};
    }

    void parse()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, urls);
        QFETCH(QStringList, rejected);
        const TntLinks links = TntLinks::parse(text);
        QCOMPARE(links.urls, urls);
        QCOMPARE(links.rejected, rejected);
    }

    void infoHashOf_data()
    {
        QTest::addColumn<QString>("magnet");
        QTest::addColumn<QString>("hash");
        const QString hash = u"0123456789abcdef0123456789abcdef01234567"_qs;
        QTest::newRow("hex") << u"magnet:?dn=x&xt=urn:btih:0123456789ABCDEF0123456789abcdef01234567&tr=t"_qs << hash;
        QTest::newRow("base32") << u"magnet:?xt=urn:btih:aeruKZ4JVPG66AJDIVTYTK6N54ASGRLH"_qs << hash;
        const QString v2 = u"CB8A0D2DF5D1A2F1A0B9E1C7E2F3A4B5C6D7E8F90A1B2C3D4E5F60718293A4B5"_qs;
        QTest::newRow("v2 only") << u"magnet:?xt=urn:btmh:1220"_qs + v2 << v2.left(40).toLower();
        QTest::newRow("hybrid: the v2 hash, either order")
            << u"magnet:?xt=urn:btih:"_qs + hash + u"&xt=urn:btmh:1220"_qs + v2 + u"&dn=x"_qs << v2.left(40).toLower();
        QTest::newRow("v2 digest cut short") << u"magnet:?xt=urn:btmh:1220abcd"_qs << QString();
        QTest::newRow("not a SHA-256 multihash, v1 beside it")
            << u"magnet:?xt=urn:btmh:1120"_qs + v2 + u"&xt=urn:btih:"_qs + hash << hash;
        QTest::newRow("no hash") << u"magnet:?dn=x"_qs << QString();
        QTest::newRow("hash too long") << (u"magnet:?xt=urn:btih:"_qs + hash + u"0"_qs) << QString();
    }

    void infoHashOf()
    {
        QFETCH(QString, magnet);
        QTEST(TntLinks::infoHashOf(magnet), "hash");
    }
};

QTEST_GUILESS_MAIN(TestTntLinks)
#include "tst_tntlinks.moc"
