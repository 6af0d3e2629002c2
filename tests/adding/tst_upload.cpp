#include "adding/TntAdder.h"
#include "api/Client.h"
#include "api/Errors.h"
#include "api/TntFilesUpload.h"
#include "support/Await.h"
#include "support/Files.h"
#include "support/FakeServer.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using API::TntAddingOptions;

Q_DECLARE_METATYPE(API::TntAddingOptions)
Q_DECLARE_METATYPE(FakeServer::Response)

using QuilloTest::writeFile;

namespace {

const QString boundary = u"B0UND"_qs;

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

const QByteArray validTorrent = "d4:infod6:lengthi1e4:name1:a12:piece lengthi16384e6:pieces20:aaaaaaaaaaaaaaaaaaaaee";

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
        m_first = writeFile(m_folder.path(), u"first.torrent"_qs, validTorrent);
        m_second = writeFile(m_folder.path(), u"zwei ü.torrent"_qs, QByteArray("d4:infod4:name1:b\r\n\0ee", 22));
    }

    void body_data()
    {
        QTest::addColumn<TntAddingOptions>("options");
        QTest::addColumn<QByteArray>("body");

        const QByteArray urlsPart = "--B0UND\r\nContent-Disposition: form-data; name=\"urls\"\r\n\r\n";
        QTest::newRow("one link") << TntAddingOptions{.boundary = boundary, .urls = QStringList{u"magnet:?xt=urn:btih:abc&dn=A B"_qs}}
                                  << urlsPart + "magnet:?xt=urn:btih:abc&dn=A%20B\r\n" + closing;
        QTest::newRow("links that are no URL dropped")
            << TntAddingOptions{.boundary = boundary, .urls = QStringList{u"http://a/"_qs, u"http://bad host/"_qs, QString()}}
            << urlsPart + "http://a/\r\n" + closing;
        QTest::newRow("empty link list") << TntAddingOptions{.boundary = boundary, .urls = QStringList()} << urlsPart + closing;
        QTest::newRow("false is sent, unset is not") << TntAddingOptions{.boundary = boundary, .skipChecking = false}
                                                     << field("skip_checking", "false") + closing;
        QTest::newRow("large ratio, no exponent") << TntAddingOptions{.boundary = boundary, .ratioLimit = 100000.0}
                                                  << field("ratioLimit", "100000") + closing;
        QTest::newRow("every option")
            << TntAddingOptions{.boundary = boundary, .tnts = QStringList{m_first}, .savepath = u"/data/A & B é"_qs,
                                .useDownloadPath = true, .downloadPath = u"/incomplete"_qs, .addToTopOfQueue = true,
                                .cookie = u"c=1"_qs, .category = u"Films"_qs, .tags = u"a,b"_qs, .skipChecking = true,
                                .paused = true, .stopped = true, .rootFolder = false, .rename = u"New"_qs,
                                .upLimit = 1024, .dlLimit = -1, .ratioLimit = 0.25, .seedingTimeLimit = 60,
                                .autoTMM = false, .sequentialDownload = true, .firstLastPiecePrio = true,
                                .contentLayout = API::TntContentLayout::noSubfolder,
                                .stopCondition = API::TntStopCondition::metaReceived, .filePriorities = u"0,1,6"_qs}
            << torrentPart("first.torrent", validTorrent) + field("savepath", "/data/A & B \xc3\xa9")
                   + field("useDownloadPath", "true") + field("downloadPath", "/incomplete")
                   + field("addToTopOfQueue", "true") + field("cookie", "c=1") + field("category", "Films")
                   + field("tags", "a,b") + field("skip_checking", "true") + field("paused", "true")
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
        const API::TntFilesUpload upload{.boundary = boundary, .files = {m_first, m_second}};
        QCOMPARE(upload.multipartBody().bytes,
                 torrentPart("first.torrent", validTorrent)
                     + torrentPart("zwei \xc3\xbc.torrent", QByteArray("d4:infod4:name1:b\r\n\0ee", 22)) + closing);
    }

    // A file name cannot end its header early: quotes and line breaks are escaped as browsers do.
    void fileNameInTheHeader_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("quotes") << u"say \"hi\".torrent"_qs << QByteArray("say %22hi%22.torrent");
        QTest::newRow("line breaks") << u"a\r\nb\nc\r.torrent"_qs << QByteArray("a%0D%0Ab%0Ac%0D.torrent");
        QTest::newRow("percent and UTF-8 as they are") << u"100% é;x=1.torrent"_qs << QByteArray("100% \xc3\xa9;x=1.torrent");
    }

    void fileNameInTheHeader()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, sent);
        QTemporaryDir folder;
        const QString path = writeFile(folder.path(), name, validTorrent);
        const API::TntFilesUpload upload{.boundary = boundary, .files = {path}};
        QCOMPARE(upload.multipartBody().bytes, torrentPart(sent, validTorrent) + closing);
    }

    void freshBoundaries()
    {
        const QString first = TntAddingOptions().boundary;
        QVERIFY(QRegularExpression(u"^[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}$"_qs).match(first).hasMatch());
        QVERIFY(first != TntAddingOptions().boundary);
    }

    // Nothing reaches the server when a file cannot go: not a torrent, unreadable, or an option
    // that cannot be written.
    void refusedBeforeSending_data()
    {
        QTest::addColumn<TntAddingOptions>("options");
        QTest::addColumn<QString>("failure");
        QTest::addColumn<QString>("logged");

        const QString page = writeFile(m_folder.path(), u"page.torrent"_qs, "<html>");
        QTest::newRow("not a torrent") << TntAddingOptions{.tnts = QStringList{page}}
                                       << u"Failed to add torrent! | \"page.torrent\" is not a valid torrent file."_qs
                                       << u"Failed to initialize tnt metadata"_qs;

        QTest::newRow("ratio not a number")
            << TntAddingOptions{.ratioLimit = std::nan("")} << u"An unexpected error occurred! | The ratio limit is not a number."_qs << u"ratio limit nan"_qs;
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
        const QString gone = m_folder.filePath(u"gone.torrent"_qs);
        QCOMPARE(failureOf([&] { TntAddingOptions{.tnts = QStringList{gone}}.multipartBody(); }),
                 u"Failed to add torrent! | Could not read \"%1\": No such file or directory"_qs.arg(gone));
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
        const TntAddingOptions first{.boundary = boundary, .tnts = QStringList{m_first}};
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
