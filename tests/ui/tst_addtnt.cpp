#include "support/Files.h"
#include "support/ScriptedTorrents.h"
#include "support/TorrentFactory.h"
#include "core/InstanceChannel.h"
#include "ui/CommandLine.h"
#include "ui/AddTntOptionsForm.h"
#include "ui/AddTntWindow.h"
#include "ui/DropOverlay.h"
#include "ui/LinksDialog.h"
#include "ui/MainWindow.h"
#include "ui/TntAddingFlow.h"
#include "ui/TntContentModel.h"
#include "ui/TntContentTree.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QListWidget>
#include <QSpinBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QHeaderView>
#include <QLabel>
#include <QPointer>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProcess>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QUuid>
#include <QTest>

#include <functional>
#include <limits>

using Choose = std::function<void(QWidget &)>;
using Fields = QMap<QByteArray, QByteArray>;
Q_DECLARE_METATYPE(Choose)

namespace {

// A field of a multipart body; empty when the body has none.
QByteArray formField(const QByteArray &body, const QByteArray &name)
{
    const QByteArray header = "name=\"" + name + "\"\r\n\r\n";
    const qsizetype start = body.indexOf(header);
    if (start < 0)
        return {};
    const qsizetype valueStart = start + header.size();
    return body.mid(valueStart, body.indexOf("\r\n--", valueStart) - valueStart);
}

QStringList targets(const FakeServer &server)
{
    QStringList found;
    for (const FakeServer::Request &request : server.requests()) {
        if (!request.target.contains("/sync/maindata"))
            found << QString::fromUtf8(request.target + (request.target.endsWith("/add") ? QByteArray() : '?' + request.body));
    }
    return found;
}

} // namespace

// The add-torrent window and the links dialog, offscreen against a scripted server: what the user
// chose is what the add request carries.
class TestAddTnt : public QObject
{
    Q_OBJECT

    QTemporaryDir m_files;
    std::unique_ptr<ScriptedTorrents> m_server;
    std::unique_ptr<MainWindow> m_window;
    TorrentFactory::Torrent m_album;
    QString m_albumFile;
    bool m_added = false;
    int m_adds = 0;
    int m_addsLost = 0; // adds the server answers but never lists, as 5.3 may lose a magnet
    int m_metadataAsked = 0;
    bool m_metadataComes = true;
    int m_savePathFailures = 0; // answers to app/defaultSavePath that fail before it answers
    QByteArray m_magnetId; // what the server lists the magnet's torrent under

    void connectTo(const QByteArray &apiVersion)
    {
        m_server = std::make_unique<ScriptedTorrents>(apiVersion);
        m_added = false;
        m_adds = 0;
        m_addsLost = 0;
        m_metadataAsked = 0;
        m_metadataComes = true;
        m_savePathFailures = 0;
        m_magnetId = "0123456789abcdef0123456789abcdef01234567";
        // The scripted server lists the album once it was added.
        m_server->server.setHandler([this](const FakeServer::Request &request) {
            if (request.target.endsWith("/app/webapiVersion"))
                return FakeServer::Response::text(200, m_server->apiVersion);
            if (request.target.endsWith("/app/defaultSavePath"))
                return m_savePathFailures-- > 0 ? FakeServer::Response::text(500, "Internal Server Error")
                                                : FakeServer::Response::text(200, "/srv/downloads");
            if (request.target.endsWith("/torrents/add"))
                m_added = ++m_adds > m_addsLost;
            // Still fetching at first, as the server answers while it looks for peers.
            if (request.target.endsWith("/torrents/fetchMetadata"))
                return ++m_metadataAsked < 2 || !m_metadataComes ? FakeServer::Response::text(202, "")
                                              : FakeServer::Response::json(R"({"hash":"0123456789abcdef0123456789abcdef01234567",
                                                    "comment":"Live","createdBy":"mktorrent","creationDate":1700000000,
                                                    "info":{"name":"Show","length":0,"pieceLength":16384,"piecesNum":3,
                                                    "private":true,"files":[{"path":"Show/e1.mkv","length":30000},
                                                    {"path":"Show/e2.mkv","length":20000}]}})");
            if (!request.target.contains("/sync/maindata"))
                return FakeServer::Response::text(200, "Ok.");
            QByteArray data = ScriptedTorrents::mainData();
            if (m_added)
                data.replace("\"torrents\":{",
                             "\"torrents\":{\"" + m_album.infoHash.toLatin1() + "\":{\"name\":\"Album\",\"state\":\"stoppedDL\"},"
                             "\"" + m_magnetId + "\":{\"name\":\"Show\",\"state\":\"metaDL\"},");
            return FakeServer::Response::json(data);
        });
        m_window = std::make_unique<MainWindow>(*m_server->context);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    QString write(const QString &name, const QByteArray &bytes) { return QuilloTest::writeFile(m_files.path(), name, bytes); }

    AddTntWindow *openAlbum()
    {
        m_window->addingFlow()->open({QUrl::fromLocalFile(m_albumFile)});
        // The file is read on a worker: the window comes a moment later.
        (void)QTest::qWaitFor([this] { return m_window->findChild<AddTntWindow *>() != nullptr; });
        auto *window = m_window->findChild<AddTntWindow *>();
        // A window whose tree never comes fails the comparisons that follow.
        if (window)
            (void)QTest::qWaitFor([window] { return window->addButton()->isEnabled(); });
        return window;
    }

    QByteArray addRequestBody() const
    {
        for (const FakeServer::Request &request : m_server->server.requests()) {
            if (request.target.endsWith("/torrents/add"))
                return request.body;
        }
        return {};
    }

    // Adds a torrent through the window and waits for it on the wire: whatever was begun before
    // it and was going to be sent has been sent by then.
    void addSentinel()
    {
        m_window->addingFlow()->open({QUrl::fromLocalFile(write(u"sentinel.torrent"_qs, m_album.bytes))});
        QTRY_VERIFY(m_window->findChild<AddTntWindow *>());
        AddTntWindow *window = m_window->findChild<AddTntWindow *>();
        QTRY_VERIFY(window->addButton()->isEnabled());
        window->addButton()->click();
        QTRY_VERIFY(m_added);
    }

    qsizetype adds() const
    {
        const auto &requests = m_server->server.requests();
        return std::count_if(requests.cbegin(), requests.cend(),
                             [](const FakeServer::Request &r) { return r.target.endsWith("/torrents/add"); });
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_album = TorrentFactory::multiFile(m_files.path(), u"Album"_qs,
                                            {{u"cd1/a.flac"_qs, 40'000}, {u"cd1/c.flac"_qs, 20'000}, {u"b.txt"_qs, 9}});
        m_albumFile = write(u"album.torrent"_qs, m_album.bytes);
    }

    void init()
    {
        // The trash of this run, not the user's, in a data folder that does not exist yet.
        QVERIFY(QDir(m_files.filePath(u"data"_qs)).removeRecursively());
        qputenv("XDG_DATA_HOME", m_files.filePath(u"data"_qs).toLocal8Bit());
    }

    void cleanup()
    {
        m_window.reset();
        m_server.reset();
    }

    void preview()
    {
        connectTo("2.15.0");
        AddTntWindow *window = openAlbum();
        QVERIFY(window);
        const auto label = [window](const char *name) { return window->findChild<QLabel *>(QString::fromLatin1(name))->text(); };
        QCOMPARE(label("name"), u"Album"_qs);
        QCOMPARE(label("hash"), m_album.infoHash);
        QCOMPARE(label("size"), QLocale().formattedDataSize(60'009, 1, QLocale::DataSizeIecFormat));
        QCOMPARE(label("private"), u"No"_qs);
        QTRY_COMPARE(window->optionsForm()->savePathField()->text(), u"/srv/downloads"_qs);
        const TntContentModel &model = *window->contentTree()->contentModel();
        QCOMPARE(model.rowCount(), 1);
        const QModelIndex album = model.index(0, 0);
        QCOMPARE(model.rowCount(album), 2);
        QCOMPARE(model.index(0, 0, album).data().toString(), u"cd1"_qs);
        QCOMPARE(model.index(1, 0, album).data().toString(), u"b.txt"_qs);
        QCOMPARE(model.index(0, TntContentModel::sizeColumn, album).data().toString(),
                 QLocale().formattedDataSize(60'000, 1, QLocale::DataSizeIecFormat));
        QCOMPARE(model.index(0, TntContentModel::priorityColumn).data().toString(), u"Normal"_qs);
        QVERIFY(window->contentTree()->isExpanded(album));
        // Nothing to download is nothing to add.
        window->contentTree()->contentModel()->setData(album, Qt::Unchecked, Qt::CheckStateRole);
        QVERIFY(!window->addButton()->isEnabled());
        window->contentTree()->contentModel()->setData(album, Qt::Checked, Qt::CheckStateRole);
        QVERIFY(window->addButton()->isEnabled());

        // The next window has the columns as this one left them.
        window->contentTree()->header()->resizeSection(TntContentModel::sizeColumn, 151);
        window->contentTree()->header()->moveSection(TntContentModel::priorityColumn, 0);
        const QPointer<AddTntWindow> first(window);
        window->reject();
        QTRY_VERIFY(!first);
        AddTntWindow *next = openAlbum();
        QVERIFY(next);
        QCOMPARE(next->contentTree()->header()->sectionSize(TntContentModel::sizeColumn), 151);
        QCOMPARE(next->contentTree()->header()->visualIndex(TntContentModel::priorityColumn), 0);
    }

    void defaultSavePathFails_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("afterRetry");
        QTest::newRow("nothing typed: filled on retry") << QString() << u"/srv/downloads"_qs;
        QTest::newRow("typed: kept") << u"/mine"_qs << u"/mine"_qs;
    }

    // The failure shows in the window, and the user may try again; what they typed stays.
    void defaultSavePathFails()
    {
        QFETCH(QString, typed);
        QFETCH(QString, afterRetry);
        connectTo("2.15.0");
        m_savePathFailures = 1;
        AddTntWindow *window = openAlbum();
        QVERIFY(window);
        QLineEdit *field = window->optionsForm()->savePathField();
        field->setText(typed);
        QTRY_VERIFY(window->findChild<QLabel *>(u"savePathError"_qs) && window->findChild<QLabel *>(u"savePathError"_qs)->isVisible());
        QVERIFY2(window->findChild<QLabel *>(u"savePathError"_qs)->text().startsWith(u"Failed to get the default save path: "_qs),
                 qPrintable(window->findChild<QLabel *>(u"savePathError"_qs)->text()));
        QCOMPARE(field->text(), typed);
        window->findChild<QPushButton *>(u"retrySavePath"_qs)->click();
        QTRY_VERIFY(!window->findChild<QLabel *>(u"savePathError"_qs)->isVisible());
        const auto asked = [this] {
            const auto &requests = m_server->server.requests();
            return std::count_if(requests.cbegin(), requests.cend(), [](const FakeServer::Request &r) {
                return r.target.endsWith("/app/defaultSavePath");
            });
        };
        QTRY_COMPARE(asked(), 2);
        QTRY_COMPARE(field->text(), afterRetry);
        QVERIFY(!window->findChild<QLabel *>(u"savePathError"_qs)->isVisible());
    }

    void uncheckedFolder_data()
    {
        QTest::addColumn<QByteArray>("apiVersion");
        QTest::addColumn<bool>("start");
        QTest::addColumn<QByteArray>("stoppedField");
        QTest::addColumn<QStringList>("followUps");
        // Started only after the skipped files are set, so that nothing of them is fetched. Servers
        // that take them along with a link refuse them with an uploaded file.
        const QString filePrio = u"/api/v2/torrents/filePrio?hash=%1&id=0%7C1&priority=0"_qs;
        QTest::newRow("2.16: set once there, then started")
            << QByteArray("2.16.2") << true << QByteArray("stopped")
            << QStringList{filePrio, u"/api/v2/torrents/start?hashes=%1"_qs};
        QTest::newRow("2.16: set once there, left stopped") << QByteArray("2.16.2") << false << QByteArray("stopped")
                                                            << QStringList{filePrio};
        QTest::newRow("2.8: set once there, left paused") << QByteArray("2.8.19") << false << QByteArray("paused")
                                                          << QStringList{filePrio};
    }

    // The folder "cd1" unchecked: its two files are not downloaded, on every server generation.
    void uncheckedFolder()
    {
        QFETCH(QByteArray, apiVersion);
        QFETCH(bool, start);
        QFETCH(QByteArray, stoppedField);
        QFETCH(QStringList, followUps);
        connectTo(apiVersion);
        AddTntWindow *window = openAlbum();
        QVERIFY(window);
        TntContentModel &model = *window->contentTree()->contentModel();
        const QModelIndex album = model.index(0, 0);
        const QModelIndex cd1 = model.index(0, 0, album);
        // A click on the folder's check box, as the user unchecks it.
        TntContentTree *tree = window->contentTree();
        const QRect row = tree->visualRect(cd1);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, QPoint(row.left() + 8, row.center().y()));
        QCOMPARE(model.index(1, 0, cd1).data(Qt::CheckStateRole), QVariant(Qt::Unchecked));
        QCOMPARE(album.data(Qt::CheckStateRole), QVariant(Qt::PartiallyChecked));
        QCOMPARE(model.index(0, TntContentModel::priorityColumn).data().toString(), u"Mixed"_qs);
        window->optionsForm()->findChild<QCheckBox *>(u"start"_qs)->setChecked(start);
        window->optionsForm()->savePathField()->setText(u"/downloads/music"_qs);
        window->addButton()->click();

        QTRY_VERIFY(m_added);
        const QByteArray body = addRequestBody();
        QCOMPARE(formField(body, "filePriorities"), QByteArray());
        // Added stopped until the files are set, whatever the user chose.
        QCOMPARE(formField(body, stoppedField), QByteArray(start && followUps.isEmpty() ? "false" : "true"));
        QCOMPARE(formField(body, "savepath"), QByteArray("/downloads/music"));
        QVERIFY(body.contains("filename=\"album.torrent\""));
        for (QString &followUp : followUps)
            followUp = followUp.arg(m_album.infoHash);
        followUps.prepend(u"/api/v2/torrents/add"_qs);
        followUps.prepend(u"/api/v2/app/defaultSavePath?"_qs);
        QTRY_COMPARE(targets(m_server->server), followUps);
    }

    void settingsDecide_data()
    {
        QTest::addColumn<bool>("showWindow");
        QTest::addColumn<bool>("autoDelete");
        QTest::addColumn<bool>("deleteOnCancel");
        QTest::addColumn<bool>("cancel");
        QTest::addColumn<bool>("trashed");
        QTest::newRow("added, kept") << true << false << true << false << false;
        QTest::newRow("added, trashed") << true << true << false << false << true;
        QTest::newRow("cancelled, kept") << true << true << false << true << false;
        QTest::newRow("cancelled, trashed") << true << true << true << true << true;
        QTest::newRow("cancel setting alone") << true << false << true << true << false;
        QTest::newRow("no window, kept") << false << false << false << false << false;
        QTest::newRow("no window, trashed") << false << true << false << false << true;
    }

    void manyFilesShowProgress_data()
    {
        QTest::addColumn<bool>("cancel");
        QTest::addColumn<int>("sent");
        QTest::newRow("let through") << false << 3;
        QTest::newRow("cancelled: the rest is not sent") << true << 1;
    }

    // Files added with the defaults go one at a time; a batch that takes more than a second shows
    // its progress, and Cancel spares the files not sent yet.
    void manyFilesShowProgress()
    {
        QFETCH(bool, cancel);
        QFETCH(int, sent);
        connectTo("2.15.0");
        m_server->context->settings().setShowTntAddingWindow(false);
        const FakeServer::Handler answering = m_server->server.handler();
        m_server->server.setHandler([answering](const FakeServer::Request &request) {
            return request.target.endsWith("/torrents/add") ? FakeServer::Response::stallForever() : answering(request);
        });
        QList<QUrl> files;
        for (const QString &name : {u"a.torrent"_qs, u"b.torrent"_qs, u"c.torrent"_qs})
            files << QUrl::fromLocalFile(write(name, m_album.bytes));
        m_window->addingFlow()->open(files);

        QPointer<QProgressDialog> progress;
        QTRY_VERIFY((progress = m_window->findChild<QProgressDialog *>(u"addingProgress"_qs)) && progress->isVisible());
        QCOMPARE(progress->labelText(), u"Adding torrent 1 of 3…"_qs);
        QCOMPARE(adds(), 1);
        if (cancel)
            progress->cancel();
        m_server->server.setHandler(answering);
        m_server->server.answerStalled(FakeServer::Response::text(200, "Ok."));
        QTRY_VERIFY(!progress);
        QCOMPARE(adds(), sent);
    }

    // The window or none, and where the .torrent ends, as the settings say; new torrents get the
    // category and tags of the settings either way.
    void settingsDecide()
    {
        QFETCH(bool, showWindow);
        QFETCH(bool, autoDelete);
        QFETCH(bool, deleteOnCancel);
        QFETCH(bool, cancel);
        QFETCH(bool, trashed);
        connectTo("2.15.0");
        AppSettings &settings = m_server->context->settings();
        settings.setShowTntAddingWindow(showWindow);
        settings.setAutoDeleteTntFile(autoDelete);
        settings.setDeleteTntFileOnAdditionCanceled(deleteOnCancel);
        m_server->defaults.setValue(UserDefaultsKey::categoryForNewTnt, u"films"_qs);
        m_server->defaults.setValue(UserDefaultsKey::tagsForNewTnt, u"y"_qs);
        const QString name = QString::fromLatin1(QTest::currentDataTag()) + u".torrent"_qs;
        const QString path = write(name, m_album.bytes);

        m_window->addingFlow()->open({QUrl::fromLocalFile(path)});
        if (showWindow)
            QTRY_VERIFY(m_window->findChild<AddTntWindow *>());
        auto *window = m_window->findChild<AddTntWindow *>();
        QCOMPARE(window != nullptr, showWindow);
        if (window) {
            QTRY_VERIFY(window->addButton()->isEnabled());
            if (cancel)
                window->reject();
            else
                window->addButton()->click();
        }
        if (cancel) {
            const QPointer<AddTntWindow> cancelled = window;
            QTRY_VERIFY(!cancelled);
            addSentinel();
            QCOMPARE(adds(), 1);
        } else {
            QTRY_VERIFY(m_added);
            QCOMPARE(formField(addRequestBody(), "category"), QByteArray("films"));
            QCOMPARE(formField(addRequestBody(), "tags"), QByteArray("y"));
        }
        const QString inTrash = m_files.filePath(u"data/Trash/files/"_qs + name);
        QTRY_COMPARE(QFile::exists(inTrash), trashed);
        QCOMPARE(QFile::exists(path), !trashed);
    }

    void dropped()
    {
        connectTo("2.15.0");
        QMimeData data;
        const QString magnet = u"magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567"_qs;
        data.setUrls({QUrl::fromLocalFile(m_albumFile), QUrl(magnet), QUrl::fromLocalFile(u"/tmp/notes.txt"_qs)});
        QDragEnterEvent enter(QPoint(100, 100), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(m_window.get(), &enter);
        QVERIFY(enter.isAccepted());
        QVERIFY(m_window->dropOverlay()->isVisible());
        QVERIFY(m_window->dropOverlay()->findChildren<QLabel *>().constLast()->text() == u"Drop Files here"_qs);
        QDropEvent drop(QPointF(100, 100), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(m_window.get(), &drop);
        QVERIFY(!m_window->dropOverlay()->isVisible());
        QTRY_VERIFY(m_window->findChild<AddTntWindow *>());
        auto *links = m_window->findChild<LinksDialog *>();
        QVERIFY(links);
        QCOMPARE(links->textField()->toPlainText(), magnet);

        QMimeData other;
        other.setText(u"just words"_qs);
        QDragEnterEvent refused(QPoint(100, 100), Qt::CopyAction, &other, Qt::LeftButton, {});
        QApplication::sendEvent(m_window.get(), &refused);
        QVERIFY(!refused.isAccepted());
        QVERIFY(!m_window->dropOverlay()->isVisible());
    }

    void optionsSent_data()
    {
        QTest::addColumn<Choose>("choose");
        QTest::addColumn<Fields>("sent");
        const auto boxes = [](QStringList names) {
            return Choose([names](QWidget &form) {
                for (const QString &name : names)
                    form.findChild<QCheckBox *>(name)->setChecked(true);
            });
        };
        const auto pick = [](const char *name, int index) {
            return Choose([name, index](QWidget &form) {
                form.findChild<QComboBox *>(QString::fromLatin1(name))->setCurrentIndex(index);
            });
        };
        QTest::newRow("nothing chosen") << Choose() << Fields{{"stopped", "false"}};
        QTest::newRow("not started") << Choose([](QWidget &form) { form.findChild<QCheckBox *>(u"start"_qs)->setChecked(false); })
                                     << Fields{{"stopped", "true"}};
        QTest::newRow("manual management") << pick("management", 1) << Fields{{"stopped", "false"}, {"autoTMM", "false"}};
        QTest::newRow("automatic management") << pick("management", 2) << Fields{{"stopped", "false"}, {"autoTMM", "true"}};
        QTest::newRow("subfolder") << pick("contentLayout", 2) << Fields{{"stopped", "false"}, {"contentLayout", "Subfolder"}};
        QTest::newRow("no subfolder") << pick("contentLayout", 3) << Fields{{"stopped", "false"}, {"contentLayout", "NoSubfolder"}};
        QTest::newRow("stop when checked") << pick("stopCondition", 3) << Fields{{"stopped", "false"}, {"stopCondition", "FilesChecked"}};
        QTest::newRow("check boxes") << boxes({u"topOfQueue"_qs, u"skipChecking"_qs, u"sequential"_qs, u"firstLastPiece"_qs})
                                     << Fields{{"stopped", "false"}, {"addToTopOfQueue", "true"}, {"skip_checking", "true"},
                                               {"sequentialDownload", "true"}, {"firstLastPiecePrio", "true"}};
        QTest::newRow("limits") << Choose([](QWidget &form) {
            form.findChild<QSpinBox *>(u"dlLimit"_qs)->setValue(100);
            form.findChild<QSpinBox *>(u"upLimit"_qs)->setValue(1);
            form.findChild<QComboBox *>(u"ratioLimitChoice"_qs)->setCurrentIndex(2);
            form.findChild<QDoubleSpinBox *>(u"ratioLimit"_qs)->setValue(1.5);
            form.findChild<QComboBox *>(u"seedingTimeLimitChoice"_qs)->setCurrentIndex(2);
            form.findChild<QSpinBox *>(u"seedingTimeLimit"_qs)->setValue(0);
        }) << Fields{{"stopped", "false"}, {"dlLimit", "102400"}, {"upLimit", "1024"}, {"ratioLimit", "1.5"},
                     {"seedingTimeLimit", "0"}};
        QTest::newRow("no share limits") << Choose([](QWidget &form) {
            form.findChild<QDoubleSpinBox *>(u"ratioLimit"_qs)->setValue(3);
            form.findChild<QComboBox *>(u"ratioLimitChoice"_qs)->setCurrentIndex(1);
            form.findChild<QComboBox *>(u"seedingTimeLimitChoice"_qs)->setCurrentIndex(1);
        }) << Fields{{"stopped", "false"}, {"ratioLimit", "-1"}, {"seedingTimeLimit", "-1"}};
        QTest::newRow("rate limits within the server's int") << Choose([](QWidget &form) {
            form.findChild<QSpinBox *>(u"upLimit"_qs)->setValue(std::numeric_limits<int>::max());
        }) << Fields{{"stopped", "false"}, {"upLimit", "2147482624"}};
        QTest::newRow("paths, category, tags, name") << Choose([](QWidget &form) {
            form.findChild<QLineEdit *>(u"savePath"_qs)->setText(u" /data/films "_qs);
            form.findChild<QCheckBox *>(u"useDownloadPath"_qs)->setChecked(true);
            form.findChild<QLineEdit *>(u"downloadPath"_qs)->setText(u"/incomplete"_qs);
            form.findChild<QComboBox *>(u"category"_qs)->setCurrentText(u"films"_qs);
            auto *tags = form.findChild<QListWidget *>(u"tags"_qs);
            tags->item(0)->setCheckState(Qt::Checked);
            tags->item(1)->setCheckState(Qt::Checked);
            form.findChild<QLineEdit *>(u"rename"_qs)->setText(u"A & B"_qs);
        }) << Fields{{"stopped", "false"}, {"savepath", "/data/films"}, {"useDownloadPath", "true"},
                     {"downloadPath", "/incomplete"}, {"category", "films"}, {"tags", "x,y"}, {"rename", "A & B"}};
    }

    // What each choice of the window sends; a choice left alone sends nothing.
    void optionsSent()
    {
        QFETCH(Choose, choose);
        QFETCH(Fields, sent);
        connectTo("2.11.0");
        AddTntOptionsForm form(*m_server->context, u"Album"_qs);
        if (choose)
            choose(form);
        API::TntAddingOptions options = form.options();
        options.setAddStopped(!form.startsTnt(), m_server->context->webAPIVersion());
        const QByteArray body = options.multipartBody().bytes;
        Fields found;
        for (qsizetype at = body.indexOf("name=\""); at >= 0; at = body.indexOf("name=\"", at + 1)) {
            const QByteArray name = body.mid(at + 6, body.indexOf('"', at + 6) - at - 6);
            found.insert(name, formField(body, name));
        }
        QCOMPARE(found, sent);
    }

    void notATorrentIsNotSent_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("reason");
        const QByteArray pieces = "12:piece lengthi16384e6:pieces20:aaaaaaaaaaaaaaaaaaaa";
        QTest::newRow("a page") << QByteArray("<html>Not found</html>") << u"The file's format is invalid."_qs;
        // Sizes that overflow when summed are a malformed file, not a reason to stop.
        QTest::newRow("sizes past 64 bits")
            << "d4:infod5:filesld6:lengthi9000000000000000000e4:pathl1:beed6:lengthi9000000000000000000e4:pathl1:ceee"
               "4:name1:a" + pieces + "ee"
            << u"The file's format is invalid."_qs;
        QTest::newRow("negative size") << "d4:infod6:lengthi-425e4:name1:a" + pieces + "ee"
                                       << u"The torrent has a file of negative size."_qs;
    }

    void notATorrentIsNotSent()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, reason);
        connectTo("2.15.0");
        const QString page = write(u"page.torrent"_qs, bytes);
        QTest::ignoreMessage(QtInfoMsg, qPrintable(u"Failed to initialize tnt metadata from "_qs
                                                   + QUrl::fromLocalFile(page).toString() + u": "_qs + reason));
        m_window->addingFlow()->open({QUrl::fromLocalFile(page)});
        QTRY_VERIFY(m_window->findChild<QMessageBox *>(u"invalidTntFile"_qs));
        auto *alert = m_window->findChild<QMessageBox *>(u"invalidTntFile"_qs);
        QCOMPARE(alert->text(), u"\"page.torrent\" is not a valid torrent file."_qs);
        QCOMPARE(alert->informativeText(), reason);
        QVERIFY(!m_window->findChild<AddTntWindow *>());
        addSentinel();
        QCOMPARE(adds(), 1);
    }

    void sourcesOf_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QList<QUrl>>("sources");
        const QString hex = u"0123456789ABCDEF0123456789abcdef01234567"_qs;
        const QString magnet = u"magnet:?xt=urn:btih:"_qs;
        const QString relative = u"films/a #1.torrent"_qs;
        QTest::newRow("paths") << QStringList{relative, u"/tmp/b?.torrent"_qs}
                               << QList<QUrl>{QUrl::fromLocalFile(QDir::current().absoluteFilePath(relative)),
                                              QUrl::fromLocalFile(u"/tmp/b?.torrent"_qs)};
        QTest::newRow("links, trimmed, blanks left out")
            << QStringList{u" https://example.org/get?id=5 "_qs, QString(), u"\t"_qs, magnet + hex + u"&dn=A%20B"_qs}
            << QList<QUrl>{QUrl(u"https://example.org/get?id=5"_qs), QUrl(magnet + hex + u"&dn=A%20B"_qs)};
    }

    // Command-line arguments and dropped text, as the add flow opens them.
    void sourcesOf()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QList<QUrl>, sources);
        QCOMPARE(TntAddingFlow::sourcesOf(arguments), sources);
    }

    // A browser hands a magnet over on the command line, and a second launch hands it to the
    // running Quillo: its escapes reach the server as they were given.
    void magnetFromAnotherLaunch()
    {
        connectTo("2.11.0");
        const QString magnet = u"magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567"
                               u"&dn=hidden%20magnet%20%C3%A9&tr=udp%3A%2F%2Ftracker.example%3A6969%2Fannounce"_qs;
        const QByteArray user = "quillo-test-" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces);
        const QByteArray realUser = qgetenv("USER");
        qputenv("USER", user); // the running instance's name, apart from any real one
        InstanceChannel running;
        QProcess launch;
        launch.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
        qputenv("USER", realUser);
        QVERIFY(running.listen());
        QSignalSpy received(&running, &InstanceChannel::received);
        launch.start(QStringLiteral(QUILLO_EXECUTABLE), {magnet});
        QVERIFY(received.wait(30'000));
        QVERIFY(launch.waitForFinished(30'000));
        QCOMPARE(launch.exitCode(), 0);
        // Read as the running Quillo reads a second launch's message.
        const std::optional<CommandLine> given = CommandLine::read(received.first().first().toStringList());
        QVERIFY(given);
        m_window->addingFlow()->open(given->sources);
        auto *dialog = m_window->findChild<LinksDialog *>();
        QVERIFY(dialog);
        QCOMPARE(dialog->textField()->toPlainText(), magnet);
        dialog->addButton()->click();
        QTRY_VERIFY(!addRequestBody().isEmpty());
        QCOMPARE(formField(addRequestBody(), "urls"), magnet.toUtf8());
    }

    void links()
    {
        connectTo("2.11.0");
        m_window->toolbarAction(u"add_tnt_link"_qs)->trigger();
        auto *dialog = m_window->findChild<LinksDialog *>();
        QVERIFY(dialog);
        QVERIFY(!dialog->addButton()->isEnabled());
        dialog->textField()->setPlainText(u" \n"_qs);
        QVERIFY(!dialog->addButton()->isEnabled());
        dialog->textField()->setPlainText(u"0123456789abcdef0123456789abcdef01234567\nnot a link"_qs);
        QVERIFY(!dialog->addButton()->isEnabled());
        dialog->textField()->setPlainText(u"0123456789abcdef0123456789abcdef01234567\nhttps://example.org/a.torrent"_qs);
        dialog->addButton()->click();
        QTRY_VERIFY(!addRequestBody().isEmpty());
        // Servers before 2.15 fetch no metadata: the links are added as they are.
        QVERIFY(!m_window->findChild<AddTntWindow *>());
        QCOMPARE(formField(addRequestBody(), "urls"),
                 QByteArray("magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567\r\nhttps://example.org/a.torrent"));
    }

    // A magnet's files, as the server fetches them, chosen before it is added.
    void magnetMetadata()
    {
        connectTo("2.15.0");
        const QString magnet = u"magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567"_qs;
        m_window->addingFlow()->enterLinks({magnet});
        auto *links = m_window->findChild<LinksDialog *>();
        QVERIFY(links);
        links->addButton()->click();
        auto *window = m_window->findChild<AddTntWindow *>();
        QVERIFY(window);
        QVERIFY(window->addButton()->isEnabled());
        const TntContentModel &model = *window->contentTree()->contentModel();
        QTRY_COMPARE(model.rowCount(), 1);
        QVERIFY(m_metadataAsked >= 2);
        QCOMPARE(window->findChild<QLabel *>(u"name"_qs)->text(), u"Show"_qs);
        QCOMPARE(window->findChild<QLabel *>(u"private"_qs)->text(), u"Yes"_qs);
        const QModelIndex first = model.index(0, 0, model.index(0, 0));
        QCOMPARE(first.data().toString(), u"e1.mkv"_qs);
        window->contentTree()->contentModel()->setData(first, Qt::Unchecked, Qt::CheckStateRole);
        m_addsLost = 1; // answered, never listed: asked for its metadata again, then added again
        window->addButton()->click();
        QTRY_VERIFY_WITH_TIMEOUT(m_added, 15'000);
        QCOMPARE(formField(addRequestBody(), "urls"), magnet.toLatin1());
        QCOMPARE(formField(addRequestBody(), "filePriorities"), QByteArray("0,1"));
        QStringList afterFirstAdd;
        for (const FakeServer::Request &request : m_server->server.requests()) {
            if (request.target.endsWith("/torrents/add") || (!afterFirstAdd.isEmpty() && request.target.endsWith("/fetchMetadata")))
                afterFirstAdd << QString::fromLatin1(request.target.mid(request.target.lastIndexOf('/') + 1));
        }
        QCOMPARE(afterFirstAdd, (QStringList{u"add"_qs, u"fetchMetadata"_qs, u"add"_qs}));
        QTRY_VERIFY(m_server->context->tntCollection().find(u"0123456789abcdef0123456789abcdef01234567"_qs));
        QVERIFY(!m_server->context->clientError());
    }

    // A magnet with no peers: the fetch shows how long it has been going, and Stop ends it for a
    // magnet added as it is.
    void magnetFetchStopped()
    {
        connectTo("2.15.0");
        m_metadataComes = false;
        const QString magnet = u"magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567"_qs;
        m_window->addingFlow()->enterLinks({magnet});
        m_window->findChild<LinksDialog *>()->addButton()->click();
        auto *window = m_window->findChild<AddTntWindow *>();
        QVERIFY(window);
        auto *status = window->findChild<QLabel *>(u"fetchStatus"_qs);
        QCOMPARE(status->text(), u"Fetching metadata… 0:00"_qs);
        QTRY_COMPARE(status->text(), u"Fetching metadata… 0:01"_qs);
        QVERIFY(window->findChild<QObject *>(u"metadataFetch"_qs));
        window->findChild<QPushButton *>(u"stopFetching"_qs)->click();
        QVERIFY(!window->findChild<QObject *>(u"metadataFetch"_qs));
        QCOMPARE(status->text(), u"Metadata not fetched: the torrent is added with all its files."_qs);
        window->addButton()->click();
        QTRY_VERIFY(m_added);
        QCOMPARE(formField(addRequestBody(), "urls"), magnet.toLatin1());
        // The add's wait for the listing ends before the server goes.
        QTRY_COMPARE_WITH_TIMEOUT(m_window->addingFlow()->additionsUnderWay(), 0, 30'000);
    }

    void magnetAddedBeforeItsMetadata_data()
    {
        QTest::addColumn<QString>("magnet");
        QTest::addColumn<QByteArray>("listedAs");
        const QByteArray v1 = "0123456789abcdef0123456789abcdef01234567";
        const QByteArray v2 = "cb8a0d2df5d1a2f1a0b9e1c7e2f3a4b5c6d7e8f90a1b2c3d4e5f60718293a4b5";
        QTest::newRow("hex") << u"magnet:?xt=urn:btih:0123456789ABCDEF0123456789abcdef01234567"_qs << v1;
        QTest::newRow("base32") << u"magnet:?xt=urn:btih:AERUKZ4JVPG66AJDIVTYTK6N54ASGRLH&dn=Show"_qs << v1;
        QTest::newRow("v2") << u"magnet:?xt=urn:btmh:1220"_qs + QString::fromLatin1(v2) << v2.left(40);
        QTest::newRow("hybrid") << u"magnet:?xt=urn:btih:"_qs + QString::fromLatin1(v1) + u"&xt=urn:btmh:1220"_qs
                                       + QString::fromLatin1(v2)
                                << v2.left(40);
    }

    // Added at once, while the server still looks for its metadata: found under the id its link
    // names, added once.
    void magnetAddedBeforeItsMetadata()
    {
        QFETCH(QString, magnet);
        QFETCH(QByteArray, listedAs);
        connectTo("2.15.0");
        m_metadataComes = false;
        m_magnetId = listedAs;
        m_window->addingFlow()->enterLinks({magnet});
        auto *links = m_window->findChild<LinksDialog *>();
        QVERIFY(links);
        links->addButton()->click();
        auto *window = m_window->findChild<AddTntWindow *>();
        QVERIFY(window);
        QVERIFY(window->addButton()->isEnabled());
        window->addButton()->click();
        QTRY_VERIFY(m_server->context->tntCollection().find(QString::fromLatin1(listedAs)));
        // Listed at the first add, so nothing is asked or added again.
        QTRY_COMPARE_WITH_TIMEOUT(m_window->addingFlow()->additionsUnderWay(), 0, 30'000);
        QCOMPARE(adds(), 1);
        QVERIFY(!m_server->context->clientError());
    }

    // Before the connection is ready a torrent waits, and opens once connected.
    void pendingUntilConnected()
    {
        connectTo("2.15.0");
        QuilloTest::wait(m_server->context->logOut());
        m_window->addingFlow()->open({QUrl::fromLocalFile(m_albumFile)});
        QVERIFY(!m_window->findChild<AddTntWindow *>());
        QCOMPARE(m_window->addingFlow()->pendingTntURLs(), QList<QUrl>{QUrl::fromLocalFile(m_albumFile)});
        QuilloTest::wait(m_server->context->selectConfiguration(m_server->context->clientConfiguration()->id));
        QTRY_VERIFY(m_window->findChild<AddTntWindow *>());
        QVERIFY(m_window->addingFlow()->pendingTntURLs().isEmpty());
    }
};

QTEST_MAIN(TestAddTnt)
#include "tst_addtnt.moc"
