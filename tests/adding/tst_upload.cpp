#include "adding/TntAdder.h"
#include "api/Client.h"
#include "api/Errors.h"
#include "api/TntFilesUpload.h"
#include "support/Await.h"
#include "support/FakeServer.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using API::TntAddingOptions;

Q_DECLARE_METATYPE(API::TntAddingOptions)
Q_DECLARE_METATYPE(API::WebAPIVersion)
Q_DECLARE_METATYPE(FakeServer::Response)

namespace {

const QString boundary = u"B0UND"_qs;

TntAddingOptions options()
{
    TntAddingOptions options;
    options.boundary = boundary;
    return options;
}

QByteArray field(const QByteArray &name, const QByteArray &value)
{
    return "--B0UND\r\nContent-Disposition: form-data; name=\"" + name + "\"\r\n\r\n" + value + "\r\n";
}

QByteArray torrentPart(const QByteArray &fileName, const QByteArray &content)
{
    return "--B0UND\r\nContent-Disposition: form-data; name=\"torrents\"; filename=\"" + fileName
        + "\"\r\nContent-Type: application/x-bittorrent\r\n\r\n" + content + "\r\n";
}

const QByteArray closing = "--B0UND--\r\n";

QString writeFile(const QTemporaryDir &folder, const QString &name, const QByteArray &content)
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

// The failure a user would read: description | reason.
QString failureOf(const std::function<void()> &work)
{
    try {
        work();
    } catch (const API::Error &error) {
        return error.description() + u" | "_qs + error.failureReason();
    }
    return {};
}

} // namespace

class TestUpload : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_first;
    QString m_second;

private Q_SLOTS:
    void initTestCase()
    {
        m_first = writeFile(m_folder, u"first.torrent"_qs, "d4:infod4:name1:aee");
        m_second = writeFile(m_folder, u"zwei ü.torrent"_qs, QByteArray("d4:infod4:name1:b\r\n\0ee", 22));
    }

    void body_data()
    {
        QTest::addColumn<TntAddingOptions>("options");
        QTest::addColumn<QByteArray>("body");

        TntAddingOptions link = options();
        link.urls = QStringList{u"magnet:?xt=urn:btih:abc&dn=A B"_qs};
        QTest::newRow("one link") << link << "--B0UND\r\nContent-Disposition: form-data; name=\"urls\"\r\n\r\n"
                                             "magnet:?xt=urn:btih:abc&dn=A%20B\r\n" + closing;

        TntAddingOptions links = options();
        links.urls = QStringList{u"http://a/x.torrent"_qs, u"http://bad host/"_qs, QString(), u"http://b/"_qs};
        QTest::newRow("links that are no URL dropped")
            << links << "--B0UND\r\nContent-Disposition: form-data; name=\"urls\"\r\n\r\n"
                        "http://a/x.torrent\r\nhttp://b/\r\n" + closing;

        TntAddingOptions noLinks = options();
        noLinks.urls = QStringList();
        QTest::newRow("empty link list") << noLinks
                                         << "--B0UND\r\nContent-Disposition: form-data; name=\"urls\"\r\n\r\n" + closing;

        TntAddingOptions unset = options();
        unset.skipChecking = false;
        QTest::newRow("false is sent, unset is not") << unset << field("skipChecking", "false") + closing;

        TntAddingOptions ratios = options();
        ratios.ratioLimit = 2.0;
        QTest::newRow("whole ratio") << ratios << field("ratioLimit", "2") + closing;
        ratios.ratioLimit = 1.5;
        QTest::newRow("fractional ratio") << ratios << field("ratioLimit", "1.5") + closing;

        TntAddingOptions every = options();
        every.urls = QStringList{u"http://a/"_qs};
        every.tnts = QStringList{m_first};
        every.savepath = u"/data/A & B é"_qs;
        every.useDownloadPath = true;
        every.downloadPath = u"/incomplete"_qs;
        every.addToTopOfQueue = true;
        every.cookie = u"c=1"_qs;
        every.category = u"Films"_qs;
        every.tags = u"a,b"_qs;
        every.skipChecking = true;
        every.paused = true;
        every.stopped = true;
        every.rootFolder = false;
        every.rename = u"New"_qs;
        every.upLimit = 1024;
        every.dlLimit = -1;
        every.ratioLimit = 0.25;
        every.seedingTimeLimit = 60;
        every.autoTMM = false;
        every.sequentialDownload = true;
        every.firstLastPiecePrio = true;
        every.contentLayout = API::TntContentLayout::noSubfolder;
        every.stopCondition = API::TntStopCondition::metaReceived;
        every.filePriorities = u"0,1,6"_qs;
        QTest::newRow("every option")
            << every
            << "--B0UND\r\nContent-Disposition: form-data; name=\"urls\"\r\n\r\nhttp://a/\r\n"
                   + torrentPart("first.torrent", "d4:infod4:name1:aee") + field("savepath", "/data/A & B \xc3\xa9")
                   + field("useDownloadPath", "true") + field("downloadPath", "/incomplete")
                   + field("addToTopOfQueue", "true") + field("cookie", "c=1") + field("category", "Films")
                   + field("tags", "a,b") + field("skipChecking", "true") + field("paused", "true")
                   + field("stopped", "true") + field("rootFolder", "false") + field("rename", "New")
                   + field("upLimit", "1024") + field("dlLimit", "-1") + field("ratioLimit", "0.25")
                   + field("seedingTimeLimit", "60") + field("autoTMM", "false")
                   + field("sequentialDownload", "true") + field("firstLastPiecePrio", "true")
                   + field("contentLayout", "NoSubfolder") + field("stopCondition", "MetadataReceived")
                   + field("filePriorities", "0,1,6") + closing;
    }

    void body()
    {
        QFETCH(TntAddingOptions, options);
        QFETCH(QByteArray, body);
        const API::MultipartBody multipart = options.multipartBody();
        QCOMPARE(multipart.bytes, body);
        QCOMPARE(multipart.boundary, QByteArray("B0UND"));
    }

    void filesAlone()
    {
        API::TntFilesUpload upload;
        upload.boundary = boundary;
        upload.files = {m_first, m_second};
        QCOMPARE(upload.multipartBody().bytes,
                 torrentPart("first.torrent", "d4:infod4:name1:aee")
                     + torrentPart("zwei \xc3\xbc.torrent", QByteArray("d4:infod4:name1:b\r\n\0ee", 22)) + closing);
    }

    void freshBoundaries()
    {
        const QString first = TntAddingOptions().boundary;
        QVERIFY(QRegularExpression(u"^[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}$"_qs).match(first).hasMatch());
        QVERIFY(first != TntAddingOptions().boundary);
    }

    void startStopWord_data()
    {
        QTest::addColumn<API::WebAPIVersion>("version");
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("4.6 server") << API::WebAPIVersion{2, 9, 3} << field("paused", "true") + closing;
        QTest::newRow("5.0 server") << API::WebAPIVersion{2, 11, 0} << field("stopped", "true") + closing;
    }

    void startStopWord()
    {
        QFETCH(API::WebAPIVersion, version);
        QFETCH(QByteArray, body);
        TntAddingOptions stopped = options();
        stopped.setAddStopped(true, version);
        QCOMPARE(stopped.multipartBody().bytes, body);
    }

    // Nothing reaches the server when a file cannot go: not a torrent, unreadable, or an option
    // that cannot be written.
    void refusedBeforeSending_data()
    {
        QTest::addColumn<TntAddingOptions>("options");
        QTest::addColumn<QString>("failure");
        QTest::addColumn<QString>("logged");

        TntAddingOptions notATorrent = options();
        notATorrent.tnts = QStringList{writeFile(m_folder, u"page.torrent"_qs, "<html>")};
        QTest::newRow("not a torrent") << notATorrent
                                       << u"Failed to add torrent! | \"page.torrent\" is not a valid torrent file."_qs
                                       << u"Failed to initialize tnt metadata"_qs;

        TntAddingOptions ratio = options();
        ratio.ratioLimit = std::nan("");
        QTest::newRow("ratio not a number")
            << ratio << u"An unexpected error occurred! | The ratio limit is not a number."_qs << u"ratio limit nan"_qs;
    }

    void refusedBeforeSending()
    {
        QFETCH(TntAddingOptions, options);
        QFETCH(QString, failure);
        QFETCH(QString, logged);
        FakeServer server;
        API::Client client(server.configuration(API::AuthMethod::none));
        QTest::ignoreMessage(options.ratioLimit ? QtCriticalMsg : QtInfoMsg, QRegularExpression(logged));
        QCOMPARE(failureOf([&] { QuilloTest::wait(TntAdder::add(client, options)); }), failure);
        QCOMPARE(server.requests().size(), 0);
    }

    void unreadableFile()
    {
        TntAddingOptions missing = options();
        missing.tnts = QStringList{m_folder.filePath(u"gone.torrent"_qs)};
        QCOMPARE(failureOf([&] { missing.multipartBody(); }),
                 u"Failed to add torrent! | Could not read \"%1\": No such file or directory"_qs.arg(missing.tnts->constFirst()));
    }

    void serverAnswers_data()
    {
        QTest::addColumn<FakeServer::Response>("answer");
        QTest::addColumn<QString>("failure");
        QTest::newRow("added") << FakeServer::Response::text(200, "Ok.") << QString();
        QTest::newRow("refused by 5.1") << FakeServer::Response::text(200, "Fails.")
                                        << u"Failed to add torrent! | The server added nothing: the torrent may already be there."_qs;
    }

    void serverAnswers()
    {
        QFETCH(FakeServer::Response, answer);
        QFETCH(QString, failure);
        FakeServer server;
        server.answerAll(answer);
        API::Client client(server.configuration(API::AuthMethod::none));
        TntAddingOptions first = options();
        first.tnts = QStringList{m_first};
        QCOMPARE(failureOf([&] { QuilloTest::wait(TntAdder::add(client, first)); }), failure);
        QCOMPARE(server.requests().size(), 1);
        const FakeServer::Request &sent = server.requests().constFirst();
        QCOMPARE(sent.target, QByteArray("/api/v2/torrents/add"));
        QCOMPARE(sent.header("Content-Type"), QByteArray("multipart/form-data; boundary=B0UND"));
        QCOMPARE(sent.body, first.multipartBody().bytes);
    }
};

QTEST_GUILESS_MAIN(TestUpload)
#include "tst_upload.moc"
