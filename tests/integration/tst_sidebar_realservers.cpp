#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/AppContext.h"
#include "core/NavigationContext.h"
#include "support/Await.h"
#include "support/ConnectedServer.h"
#include "support/TorrentFactory.h"

#include <QTest>

using QuilloTest::wait;
using Flavor = QbtServer::Flavor;

// Both released server generations send the tracker map, so both get the Trackers group, with one
// entry per host however many of its URLs a torrent carries.
class TestSidebarRealServers : public QObject
{
    Q_OBJECT

public:
    explicit TestSidebarRealServers(Flavor flavor)
        : m_flavor(flavor)
    {
    }

private:
    const Flavor m_flavor;

    QString add(AppContext &context, const QbtServer::DataDir &dir, const QString &name, const QStringList &trackers)
    {
        const auto made = TorrentFactory::singleFile(dir.localPath, name, 20'000, {.announceUrls = trackers});
        wait(context.client()->perform(API::Endpoint::TntManagement::add(TorrentFactory::multipartBody(
            {TorrentFactory::torrentPart(made), {"savepath", dir.serverPath.toUtf8()}}))));
        return made.infoHash;
    }

    static QStringList ids(const QList<const TntModel *> &tnts)
    {
        QStringList hashes;
        for (const TntModel *tnt : tnts)
            hashes << tnt->id();
        return hashes;
    }

private Q_SLOTS:
    void trackerGroupFollowsTheServersMap()
    {
        std::unique_ptr<ConnectedServer> server;
        QUILLO_CONNECT(server, m_flavor);
        AppContext &context = server->context();
        NavigationContext navigation(context, server->defaults());
        QVERIFY(navigation.trackerSidebarItems().isEmpty()); // nothing announced yet: no group

        const QbtServer::DataDir data = server->server().makeDataDir();
        const QString twoUrlsOneHost =
            add(context, data, QStringLiteral("a.bin"),
                {QStringLiteral("http://127.0.0.1:1/announce"), QStringLiteral("udp://127.0.0.1:2/announce")});
        const QString otherHost = add(context, data, QStringLiteral("b.bin"), {QStringLiteral("http://127.0.0.2:3/announce")});
        const QString trackerless = add(context, data, QStringLiteral("c.bin"), {});

        const auto titles = [&navigation] {
            QStringList shown;
            for (const SidebarItem &item : navigation.trackerSidebarItems())
                shown << item.title();
            return shown;
        };
        QTRY_COMPARE_WITH_TIMEOUT(titles(), (QStringList{u"All"_qs, u"Trackerless"_qs, u"127.0.0.1"_qs, u"127.0.0.2"_qs}),
                                  10'000);
        QTRY_COMPARE_WITH_TIMEOUT(context.tntCollection().size(), 3, 10'000);
        QCOMPARE(ids(context.filterTnts({SidebarItem::forTracker(u"127.0.0.1"_qs)}, {})), QStringList{twoUrlsOneHost});
        QCOMPARE(ids(context.filterTnts({SidebarItem::forTracker(SidebarItem::trackerlessTitle())}, {})),
                 QStringList{trackerless});
        QTRY_COMPARE(navigation.counts().count(SidebarItem::forTracker(u"127.0.0.2"_qs)), 1);

        // Removing the last torrent of a host takes its entry away.
        wait(context.client()->perform(API::Endpoint::TntManagement::deleteTnts({otherHost}, false)));
        QTRY_COMPARE_WITH_TIMEOUT(titles(), (QStringList{u"All"_qs, u"Trackerless"_qs, u"127.0.0.1"_qs}), 10'000);
    }
};

QUILLO_PER_FLAVOR_MAIN(TestSidebarRealServers)

#include "tst_sidebar_realservers.moc"
