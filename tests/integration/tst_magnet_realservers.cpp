#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/AppContext.h"
#include "support/Await.h"
#include "support/ConnectedServer.h"
#include "support/TorrentFactory.h"
#include "ui/AddTntOptionsForm.h"
#include "ui/AddTntWindow.h"
#include "ui/LinksDialog.h"
#include "ui/MainWindow.h"
#include "ui/TntAddingFlow.h"
#include "ui/TntContentModel.h"
#include "ui/TntContentTree.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using Flavor = QbtServer::Flavor;
using QuilloTest::wait;
namespace T = API::Endpoint::TntManagement;

namespace {

QModelIndex findRow(const QAbstractItemModel &model, const QString &name, const QModelIndex &parent = {})
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        if (index.data().toString() == name)
            return index;
        if (const QModelIndex found = findRow(model, name, index); found.isValid())
            return found;
    }
    return {};
}

} // namespace

// A magnet added through the add window on a server that fetches metadata (API 2.15+): the newest
// server learns the files from a 4.5 seeder on loopback (DHT is off, so the magnet names the peer),
// the window shows them, and a file unchecked there ends at priority 0 on the server.
class TestMagnetRealServers : public QObject
{
    Q_OBJECT

    std::unique_ptr<ConnectedServer> m_seeder; // 4.5, reached by its own client only
    std::unique_ptr<ConnectedServer> m_server;
    AppContext *m_context = nullptr;
    MainWindow *m_window = nullptr;

    QString seederState(const QString &hash) { return m_seeder->torrent(hash).value(u"state").toString(); }

private Q_SLOTS:
    void initTestCase()
    {
        QUILLO_CONNECT(m_server, Flavor::Sid);
        QUILLO_CONNECT(m_seeder, Flavor::Bookworm45, {.localHostAuth = true});
        m_context = &m_server->context();
        m_window = &m_server->show<MainWindow>();
        QVERIFY2(m_context->webAPIVersion() >= (API::WebAPIVersion{2, 15, 0}),
                 qPrintable(m_context->webAPIVersion().toString()));
    }

    void cleanupTestCase()
    {
        m_seeder.reset();
        m_server.reset();
    }

    void fetchedFilesChosenInTheWindow()
    {
        const QbtServer::DataDir seeded = m_seeder->server().makeDataDir();
        const auto album = TorrentFactory::multiFile(seeded.localPath, u"Album"_qs,
                                                     {{u"cd1/a.flac"_qs, 40'000}, {u"b.txt"_qs, 9}});
        wait(m_seeder->client().perform(T::add(TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(album), {"savepath", seeded.serverPath.toUtf8()}}))));
        // A peer still checking its data would turn the newest server away.
        QTRY_COMPARE_WITH_TIMEOUT(seederState(album.infoHash), u"stalledUP"_qs, 20'000);

        const QString magnet = u"magnet:?xt=urn:btih:%1&dn=Album&x.pe=127.0.0.1:%2"_qs.arg(album.infoHash).arg(m_seeder->server().peerPort());
        m_window->addingFlow()->enterLinks({magnet});
        auto *links = m_window->findChild<LinksDialog *>();
        QVERIFY(links);
        links->addButton()->click();
        auto *window = m_window->findChild<AddTntWindow *>();
        QVERIFY(window);
        TntContentModel &content = *window->contentTree()->contentModel();
        QTRY_COMPARE_WITH_TIMEOUT(content.rowCount(), 1, 30'000);
        QCOMPARE(window->findChild<QLabel *>(u"name"_qs)->text(), u"Album"_qs);
        QCOMPARE(window->findChild<QLabel *>(u"hash"_qs)->text(), album.infoHash);
        const QModelIndex skipped = findRow(content, u"a.flac"_qs);
        QVERIFY(skipped.isValid());
        QCOMPARE(skipped.parent().data().toString(), u"cd1"_qs);
        QVERIFY(findRow(content, u"b.txt"_qs).isValid());
        QVERIFY(content.setData(skipped, Qt::Unchecked, Qt::CheckStateRole));

        const QbtServer::DataDir target = m_server->server().makeDataDir();
        window->optionsForm()->savePathField()->setText(target.serverPath);
        QVERIFY(window->addButton()->isEnabled());
        window->addButton()->click();

        const auto priorities = [&] {
            QMap<QString, int> found;
            for (const API::File &file : wait(m_context->client()->files(album.infoHash)))
                found.insert(file.name, static_cast<int>(file.priority));
            return found;
        };
        QTRY_VERIFY_WITH_TIMEOUT(m_context->tntCollection().find(album.infoHash), 20'000);
        const QMap<QString, int> expected{{u"Album/cd1/a.flac"_qs, 0}, {u"Album/b.txt"_qs, 1}};
        QTRY_COMPARE_WITH_TIMEOUT(priorities(), expected, 20'000);
        QVERIFY(!m_context->clientError());
    }

    // Peers as two real servers report each other, the download slowed so that they stay connected.
    void peersOfARealSwarm()
    {
        const QbtServer::DataDir seeded = m_seeder->server().makeDataDir();
        const auto slow = TorrentFactory::singleFile(seeded.localPath, u"slow.bin"_qs, 400'000);
        wait(m_seeder->client().perform(T::add(TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(slow), {"savepath", seeded.serverPath.toUtf8()}}))));
        QTRY_COMPARE_WITH_TIMEOUT(seederState(slow.infoHash), u"stalledUP"_qs, 20'000);
        API::Client &client = *m_context->client();
        wait(client.perform(T::add(TorrentFactory::multipartBody({TorrentFactory::torrentPart(slow),
                                                                  {"savepath", m_server->server().makeDataDir().serverPath.toUtf8()},
                                                                  {"dlLimit", "4096"}}))));
        QTRY_VERIFY_WITH_TIMEOUT(m_context->tntCollection().find(slow.infoHash), 20'000);
        wait(client.perform(T::addPeers({slow.infoHash}, {u"127.0.0.1:%1"_qs.arg(m_seeder->server().peerPort())})));

        // Listed at once, the peer's client and progress come with its handshake.
        API::PeersData first;
        const auto handshaken = [&] {
            first = wait(client.peers(slow.infoHash, 0));
            return first.peers.size() == 1 && first.peers.constBegin()->progress == 1.0;
        };
        QTRY_VERIFY_WITH_TIMEOUT(handshaken(), 20'000);
        QCOMPARE(first.fullUpdate, std::optional(true));
        const API::Peer seeder = first.peers.constBegin().value();
        QCOMPARE(seeder.ip, std::optional(u"127.0.0.1"_qs));
        QCOMPARE(seeder.port, std::optional<qint64>(m_seeder->server().peerPort()));
        QVERIFY(wait(client.peers(slow.infoHash, first.rid)).rid > first.rid); // a delta decodes too

        // The 4.5 seeder's side of the same connection.
        const API::PeersData other = wait(m_seeder->client().peers(slow.infoHash, 0));
        QCOMPARE(other.peers.size(), 1);
        QCOMPARE(other.peers.constBegin()->ip, std::optional(u"127.0.0.1"_qs));
        QVERIFY(other.peers.constBegin()->progress.value_or(1) < 1);
    }
};

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    TestMagnetRealServers test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_magnet_realservers.moc"
