#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "support/Await.h"
#include "support/FakeServer.h"
#include "support/ScriptedQbt.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using QuilloTest::admin;
using QuilloTest::wait;

// The torrent list kept between starts, against a scripted server.
class TestSnapshots : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QuilloTest::ScriptedQbt m_qbt;
    QJsonObject m_mainData; // what the server's full update holds now
    std::unique_ptr<FakeServer> m_server;
    std::unique_ptr<UserDefaults> m_defaults;
    KeychainStore m_keychain;
    std::unique_ptr<AppContext> m_context;
    QUuid m_connection;

    static QJsonObject torrent(const char *name, const char *state)
    {
        return {{u"name"_qs, QString::fromUtf8(name)}, {u"state"_qs, QString::fromUtf8(state)},
                {u"save_path"_qs, u"/srv/films"_qs}, {u"category"_qs, u"Films"_qs}, {u"size"_qs, 1000}};
    }

    // A new context over the same settings, as Quillo started again; the server asks for a login,
    // which holds the connection before its first answer.
    void restart()
    {
        m_context.reset();
        m_context = std::make_unique<AppContext>(*m_defaults, m_keychain);
        m_qbt.bypass = false;
        wait(m_context->selectConfiguration(m_connection));
        QVERIFY(m_context->isLoginPromptPresented());
    }

    QString keptPath() const { return m_context->snapshots().pathOf(m_connection); }

private Q_SLOTS:
    void init()
    {
        m_qbt = {};
        m_qbt.bypass = true;
        m_mainData = {{u"rid"_qs, 1},
                      {u"full_update"_qs, true},
                      {u"torrents"_qs,
                       QJsonObject{{u"a"_qs, torrent("Alpha", "downloading")},
                                   {u"b"_qs, torrent("Beta", "stalledUP")},
                                   {u"c"_qs, torrent("Gamma", "pausedDL")}}},
                      {u"categories"_qs, QJsonObject{{u"Films"_qs, QJsonObject{{u"name"_qs, u"Films"_qs},
                                                                               {u"savePath"_qs, u"/srv/films"_qs}}}}},
                      {u"tags"_qs, QJsonArray{u"x"_qs}},
                      {u"trackers"_qs, QJsonObject{{u"http://tracker.example/announce"_qs, QJsonArray{u"a"_qs}}}}};
        m_server = std::make_unique<FakeServer>();
        m_server->setHandler([this](const FakeServer::Request &request) {
            if (request.target.contains("/sync/maindata") && (m_qbt.bypass || request.header("Cookie").contains("SID=")))
                return FakeServer::Response::json(QJsonDocument(m_mainData).toJson(QJsonDocument::Compact));
            return m_qbt.answer(request);
        });
        QFile::remove(m_dir.filePath(u"Quillo.ini"_qs));
        m_defaults = std::make_unique<UserDefaults>(m_dir.filePath(u"Quillo.ini"_qs));
        m_context = std::make_unique<AppContext>(*m_defaults, m_keychain);
        ClientConfiguration configuration = m_server->configuration(API::AuthMethod::cookieLogin);
        configuration.autoLogin = false; // the prompt, not the keychain
        m_connection = configuration.id;
        m_context->addConfiguration(configuration);
        wait(m_context->selectConfiguration(m_connection));
        QVERIFY(m_context->isCurrent());
    }

    void cleanup()
    {
        m_context.reset();
        m_defaults.reset();
        m_server.reset();
    }

    // Shown at once and marked as not current; the first answer replaces it in place, keeping the
    // selection made meanwhile; only the user may read the file.
    void keptListShownUntilTheFirstAnswer()
    {
        restart();
        QTRY_VERIFY(m_context->isShowingSnapshot());
        QVERIFY(!m_context->isCurrent());
        const TntCollection &tnts = m_context->tntCollection();
        QCOMPARE(tnts.size(), 3);
        QCOMPARE(tnts.find(u"a"_qs)->state(), TntModel::State::downloading);
        QCOMPARE(tnts.find(u"b"_qs)->savePath(), u"/srv/films"_qs);
        QCOMPARE(m_context->categories().value(u"Films"_qs).savePath, std::optional(u"/srv/films"_qs));
        QCOMPARE(m_context->tags(), QStringList{u"x"_qs});
        QCOMPARE(m_context->trackers().hostsOf(u"a"_qs), QStringList{u"tracker.example"_qs});
        const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        QCOMPARE(QFile::permissions(keptPath()) & others, QFile::Permissions());

        m_context->setSelectedTnts({u"b"_qs});
        // The kept list's order is the hash order of its torrents: b moves up only if c was above it.
        const qsizetype rowOfB = tnts.rowOf(u"b"_qs) - (tnts.rowOf(u"c"_qs) < tnts.rowOf(u"b"_qs) ? 1 : 0);
        QJsonObject now = m_mainData.value(u"torrents"_qs).toObject();
        now.remove(u"c"_qs);
        now.insert(u"a"_qs, torrent("Alpha", "stalledUP"));
        now.insert(u"d"_qs, torrent("Delta", "queuedDL"));
        m_mainData.insert(u"torrents"_qs, now);
        wait(m_context->logIn(admin, false));

        QVERIFY(m_context->isCurrent());
        QVERIFY(!m_context->isShowingSnapshot());
        QCOMPARE(tnts.size(), 3);
        QVERIFY(!tnts.find(u"c"_qs));
        QCOMPARE(tnts.find(u"a"_qs)->state(), TntModel::State::stalledUP);
        QCOMPARE(tnts.find(u"d"_qs)->name(), u"Delta"_qs);
        QCOMPARE(tnts.rowOf(u"b"_qs), rowOfB);
        QCOMPARE(m_context->selectedTnts(), QSet<QString>{u"b"_qs});
    }

    void damagedKeptListIgnoredAndRemoved_data()
    {
        QTest::addColumn<int>("keep");   // bytes kept from the start; negative: counted from the end
        QTest::addColumn<int>("flipped"); // a byte changed at this position; -1: none
        QTest::newRow("cut in half") << 0 << -1;
        QTest::newRow("last byte missing") << -1 << -1;
        QTest::newRow("empty") << 1 << -1;
        QTest::newRow("a byte changed") << 0 << 40;
    }

    void damagedKeptListIgnoredAndRemoved()
    {
        QFETCH(int, keep);
        QFETCH(int, flipped);
        const QString path = m_context->snapshots().pathOf(m_connection);
        m_context.reset();
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArray bytes = file.readAll();
        file.close();
        QVERIFY(bytes.size() > 64);
        if (keep == 0 && flipped < 0)
            bytes.truncate(bytes.size() / 2);
        else if (keep < 0)
            bytes.chop(-keep);
        else if (keep > 0)
            bytes.clear();
        if (flipped >= 0)
            bytes[flipped] = static_cast<char>(bytes[flipped] ^ 0x20);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        file.close();

        restart();
        QTRY_VERIFY(!QFile::exists(path));
        QCOMPARE(m_context->tntCollection().size(), 0);
        QVERIFY(!m_context->isShowingSnapshot());
        QVERIFY(!m_context->clientError());
    }

    void keptListsRemoved_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("remembering switched off") << u"off"_qs;
        QTest::newRow("forget") << u"forget"_qs;
        QTest::newRow("connection removed") << u"removed"_qs;
    }

    // Nothing stays, and with the setting off nothing is written again.
    void keptListsRemoved()
    {
        QFETCH(QString, how);
        m_context->snapshots().keep();
        const QString path = keptPath();
        QVERIFY(QFile::exists(path));
        if (how == u"off")
            m_context->settings().setRememberTntLists(false);
        else if (how == u"forget")
            m_context->snapshots().forgetAll();
        else
            wait(m_context->removeConfiguration(m_connection));
        QVERIFY(!QFile::exists(path));
        m_context.reset();
        QCOMPARE(QFile::exists(path), how == u"forget");
    }
};

QTEST_GUILESS_MAIN(TestSnapshots)
#include "tst_snapshots.moc"
