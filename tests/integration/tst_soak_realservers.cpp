#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/AppContext.h"
#include "core/ReconnectionCountdown.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/ConnectedServer.h"
#include "support/FaultProxy.h"
#include "support/TorrentFactory.h"
#include "ui/AddTntOptionsForm.h"
#include "ui/AddTntWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMap>
#include <QPointer>
#include <QTest>

#include <csignal>
#include <functional>

using namespace std::chrono_literals;
using QuilloTest::eventually;
using QuilloTest::wait;
namespace E = API::Endpoint;

namespace {

int fromEnvironment(const char *name, int fallback)
{
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(name, &ok);
    return ok && value > 0 ? value : fallback;
}

// The short run keeps ctest quick and still injects every fault several times; a long run sets
// QUILLO_SOAK_ROUNDS and QUILLO_SOAK_TORRENTS (10000).
const int rounds = fromEnvironment("QUILLO_SOAK_ROUNDS", 3);
const int torrentCount = fromEnvironment("QUILLO_SOAK_TORRENTS", 1000);

// Short request time-outs and countdown ticks keep a fault to seconds; what is exercised is the
// same code the real durations drive.
constexpr API::Client::Timeouts timeouts{.idle = 2s, .overall = 6s};
constexpr auto tick = 100ms;
// Longer than a poll's pause (1.5 s on this server) and its idle time-out together: a poll is sure
// to fail, not merely to be answered late.
constexpr auto faultTime = 5s;

void pause(std::chrono::milliseconds time)
{
    QTest::qWait(static_cast<int>(time.count()));
}

struct Tally
{
    int injected = 0;
    int recovered = 0;
};

} // namespace

// Quillo's core against a real qBittorrent 5.1 behind a proxy that misbehaves on command: the
// server killed, frozen, restarted under a live session, its answers cut, slowed, refused, reset or
// swallowed. After each fault Quillo is back by itself, shows exactly what the server holds, has
// alerted at most once, and has lost neither the saved connection, its password, nor an edit in an
// open add window.
class TestSoakRealServers : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ConnectedServer> m_fixture;
    std::unique_ptr<FaultProxy> m_proxy;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<AppContext> m_context;
    std::unique_ptr<ReconnectionCountdown> m_countdown;
    std::unique_ptr<AddTntWindow> m_addWindow;
    ClientConfiguration m_configuration;
    QPointer<API::Client> m_timedClient;
    QStringList m_alerts;
    QMap<QString, Tally> m_tallies;
    qsizetype m_fullUpdateSize = 0;
    int m_edits = 0;
    bool m_disturbed = false; // polling stopped since the fault began: Quillo noticed it

    QbtServer &server() { return m_fixture->server(); }

    // What the server itself lists, hash to state, read past the proxy.
    QMap<QString, QString> serverStates()
    {
        API::Client &direct = m_fixture->client();
        wait(direct.login());
        const QByteArray body = wait(direct.perform(E::Sync::maindata(0)));
        m_fullUpdateSize = body.size();
        const QJsonObject tnts = QJsonDocument::fromJson(body).object().value(u"torrents").toObject();
        QMap<QString, QString> states;
        for (auto it = tnts.begin(); it != tnts.end(); ++it)
            states.insert(it.key(), it.value().toObject().value(u"state").toString());
        return states;
    }

    QMap<QString, QString> shownStates() const
    {
        QMap<QString, QString> states;
        const TntCollection &tnts = m_context->tntCollection();
        for (qsizetype row = 0; row < tnts.size(); ++row)
            states.insert(tnts.at(row).id(), tntModelStateText(tnts.at(row).state()));
        return states;
    }

    // Empty when Quillo shows what the server holds; else the first difference.
    QString difference()
    {
        const QMap<QString, QString> expected = serverStates();
        const QMap<QString, QString> shown = shownStates();
        if (expected == shown)
            return {};
        for (auto it = expected.begin(); it != expected.end(); ++it) {
            if (shown.value(it.key()) != it.value())
                return QStringLiteral("%1 torrents on the server, %2 shown; %3 is %4 there, \"%5\" here")
                    .arg(expected.size())
                    .arg(shown.size())
                    .arg(it.key(), it.value(), shown.value(it.key()));
        }
        return QStringLiteral("%1 torrents on the server, %2 shown").arg(expected.size()).arg(shown.size());
    }

    bool healthy() const
    {
        return m_context->isAuthorized() && m_context->isPolling() && m_context->connectionLossCount() == 0
            && !m_context->isReconnecting();
    }

    void addTorrents()
    {
        const QbtServer::DataDir data = server().makeDataDir();
        QVERIFY(!data.localPath.isEmpty());
        constexpr int batch = 200;
        for (int first = 0; first < torrentCount; first += batch) {
            QList<TorrentFactory::FormPart> parts{{"savepath", data.serverPath.toUtf8()},
                                                  {"stopped", "true"},
                                                  {"paused", "true"},
                                                  {"skip_checking", "true"}};
            for (int n = first; n < std::min(torrentCount, first + batch); ++n)
                parts << TorrentFactory::torrentPart(
                    TorrentFactory::singleFile(data.localPath, QStringLiteral("soak-%1.bin").arg(n), 1 + n % 4096));
            wait(m_fixture->client().perform(E::TntManagement::add(TorrentFactory::multipartBody(parts))));
        }
        QVERIFY(eventually([&] { return serverStates().size() == torrentCount; }));
    }

    // An edit the user makes in the add window while the connection is down.
    void editAddWindow()
    {
        ++m_edits;
        m_addWindow->optionsForm()->findChild<QLineEdit *>(QStringLiteral("rename"))->setText(
            QStringLiteral("renamed %1").arg(m_edits));
        m_addWindow->optionsForm()->findChild<QComboBox *>(QStringLiteral("category"))->setCurrentText(
            QStringLiteral("category %1").arg(m_edits));
    }

    void checkAddWindow()
    {
        const API::TntAddingOptions options = m_addWindow->optionsForm()->options();
        QCOMPARE(options.rename, std::optional(QStringLiteral("renamed %1").arg(m_edits)));
        QCOMPARE(options.category, std::optional(QStringLiteral("category %1").arg(m_edits)));
        QVERIFY(m_addWindow->isVisible());
    }

    void checkSavedConnection()
    {
        QCOMPARE(m_context->clientConfigurations().size(), 1);
        QCOMPARE(m_context->clientConfigurations().first().id, m_configuration.id);
        QVERIFY(m_context->clientConfigurations().first() == m_configuration);
        const std::optional<API::UserCredentials> stored = wait(m_fixture->keychain().read(m_configuration));
        QVERIFY(stored);
        QCOMPARE(stored->username, server().credentials().username);
        QCOMPARE(stored->password, server().credentials().password);
    }

    // Injects one fault, ends it, and checks everything Quillo must come out of it with.
    void runFault(const QString &name, const std::function<void()> &inject)
    {
        Tally &tally = m_tallies[name];
        m_alerts.clear();
        m_disturbed = false;
        ++tally.injected;
        inject();
        if (QTest::currentTestFailed())
            return;
        QTRY_VERIFY2_WITH_TIMEOUT(m_disturbed, qPrintable(name + QStringLiteral(" went unnoticed")), 30'000);

        // By itself: the countdowns of five losses in a row, and the requests they start.
        const auto deadline = 15 * 10 * tick + 5 * timeouts.overall;
        QTRY_VERIFY2_WITH_TIMEOUT(healthy() || m_countdown->isStopped(), qPrintable(name + QStringLiteral(" never recovered")),
                                  static_cast<int>(std::chrono::milliseconds(deadline).count()));
        QVERIFY2(!m_countdown->isStopped(), qPrintable(name + QStringLiteral(": reconnection stopped, waiting for the user")));
        QString different;
        QVERIFY2(eventually([&] { return (different = difference()).isEmpty(); }), qPrintable(name + QStringLiteral(": ") + different));
        QVERIFY2(m_alerts.size() <= 1, qPrintable(name + QStringLiteral(" alerted %1 times:\n").arg(m_alerts.size())
                                                  + m_alerts.join(u'\n')));
        checkSavedConnection();
        checkAddWindow();
        if (QTest::currentTestFailed())
            return;
        ++tally.recovered;
        m_context->dismissClientError(); // as the user closes the alert
    }

    void signalServer(int signal)
    {
        QVERIFY(::kill(static_cast<pid_t>(server().processId()), signal) == 0);
    }

    void proxyFault(FaultProxy::Mode mode)
    {
        m_proxy->setMode(mode);
        editAddWindow();
        pause(faultTime);
        m_proxy->setMode(FaultProxy::Mode::pass);
    }

private Q_SLOTS:
    void initTestCase()
    {
        ConnectedServer::StartResult started = ConnectedServer::start(QbtServer::Flavor::Trixie51, {.hostHeaderValidation = false});
        QUILLO_REQUIRE_SERVER(started);
        m_fixture = std::move(started.server);
        addTorrents();
        if (QTest::currentTestFailed())
            return;
        qInfo("%d torrents on the server; a full update is %lld bytes", torrentCount,
              static_cast<long long>(m_fullUpdateSize));

        m_proxy = std::make_unique<FaultProxy>(server().webPort());
        QCOMPARE(m_proxy->listen(), QString());
        m_defaults = std::make_unique<UserDefaults>(m_fixture->scratchDir() + QStringLiteral("/Quillo.ini"));
        m_context = std::make_unique<AppContext>(*m_defaults, m_fixture->keychain());
        // The faults are timed against the server's own pause between polls: adapting to the answer
        // time, a pause after a full update of 10,000 torrents could outlast a hang.
        m_context->settings().setRefreshMode(RefreshMode::server);
        // Every session the context opens gets the short time-outs before its first request.
        connect(m_context.get(), &AppContext::connectionStateChanged, this, [this] {
            if (API::Client *client = m_context->client(); client && client != m_timedClient) {
                client->setTimeouts(timeouts);
                m_timedClient = client;
            }
        });
        connect(m_context.get(), &AppContext::clientErrorChanged, this, [this] {
            if (const auto &error = m_context->clientError())
                m_alerts << error->title() + u' ' + error->description() + u' ' + error->failureReason();
        });
        connect(m_context.get(), &AppContext::pollingStopped, this, [this] { m_disturbed = true; });
        m_countdown = std::make_unique<ReconnectionCountdown>(*m_context, tick);

        m_configuration = server().configuration();
        m_configuration.port = m_proxy->port();
        QVERIFY(wait(m_fixture->keychain().save(m_configuration, server().credentials())));
        m_context->addConfiguration(m_configuration);
        wait(m_context->selectConfiguration(m_configuration.id));
        m_configuration = m_context->clientConfigurations().first();
        QTRY_VERIFY_WITH_TIMEOUT(healthy() && m_context->tntCollection().size() == torrentCount, 60'000);

        const QbtServer::DataDir data = server().makeDataDir();
        const TorrentFactory::Torrent added = TorrentFactory::singleFile(data.localPath, QStringLiteral("kept.bin"), 1000);
        const QString file = data.localPath + QStringLiteral("/kept.torrent");
        QFile written(file);
        QVERIFY(written.open(QIODevice::WriteOnly) && written.write(added.bytes) == added.bytes.size());
        written.close();
        m_addWindow = std::make_unique<AddTntWindow>(*m_context, file, TntMetadata::fromTorrentData(added.bytes));
        m_addWindow->show();
        editAddWindow();
    }

    void cleanupTestCase()
    {
        for (auto it = m_tallies.cbegin(); it != m_tallies.cend(); ++it)
            qInfo("FAULT %s injected=%d recovered=%d", qUtf8Printable(it.key()), it->injected, it->recovered);
        m_addWindow.reset();
        m_countdown.reset();
        m_context.reset();
        m_proxy.reset();
        m_fixture.reset();
    }

    void soak()
    {
        const QList<std::pair<QString, std::function<void()>>> faults{
            {u"kill"_qs,
             [this] {
                 signalServer(SIGKILL);
                 editAddWindow();
                 QCOMPARE(server().restart(), QString());
             }},
            {u"hang"_qs,
             [this] {
                 signalServer(SIGSTOP);
                 editAddWindow();
                 pause(faultTime);
                 signalServer(SIGCONT);
             }},
            {u"expiry"_qs,
             [this] {
                 editAddWindow();
                 QCOMPARE(server().restart(), QString());
             }},
            {u"cut"_qs,
             [this] {
                 // The renewed session's first answer is a full update; it breaks off half way.
                 const int cuts = m_proxy->cuts();
                 m_proxy->setCutAfter(m_fullUpdateSize / 2);
                 m_proxy->setMode(FaultProxy::Mode::cut);
                 editAddWindow();
                 QCOMPARE(server().restart(), QString());
                 QTRY_COMPARE_WITH_TIMEOUT(m_proxy->cuts(), cuts + 1, 30'000);
             }},
            {u"slow"_qs, [this] {
                 m_proxy->setBytesPerSecond(1);
                 m_proxy->setMode(FaultProxy::Mode::slow);
                 editAddWindow();
                 pause(timeouts.overall + 2s);
                 m_proxy->setMode(FaultProxy::Mode::pass);
             }},
            {u"refuse"_qs, [this] { proxyFault(FaultProxy::Mode::refuse); }},
            {u"hold"_qs, [this] { proxyFault(FaultProxy::Mode::hold); }},
            {u"reset"_qs, [this] { proxyFault(FaultProxy::Mode::reset); }},
            {u"blackHole"_qs, [this] { proxyFault(FaultProxy::Mode::blackHole); }},
        };
        for (int round = 1; round <= rounds; ++round) {
            for (const auto &[name, inject] : faults) {
                runFault(name, inject);
                if (QTest::currentTestFailed())
                    return;
            }
            qInfo("round %d of %d done", round, rounds);
        }

        // The edit made through every fault reaches the server.
        API::TntAddingOptions options = m_addWindow->optionsForm()->options();
        options.tnts = QStringList{m_addWindow->source()};
        QVERIFY(wait(m_context->addTnts(options, false, m_addWindow->tntHash(), m_addWindow->filePriorities())));
        QVERIFY(eventually([&] {
            const QJsonObject listed = m_fixture->torrent(m_addWindow->tntHash());
            return listed.value(u"name").toString() == *options.rename
                && listed.value(u"category").toString() == *options.category;
        }));
    }
};

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    TestSoakRealServers test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_soak_realservers.moc"
