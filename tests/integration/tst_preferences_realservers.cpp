#include "api/Client.h"
#include "api/Endpoint.h"
#include "api/QBTPreferences.h"
#include "support/Await.h"
#include "support/QbtServer.h"

#include <QTest>

using QuilloTest::wait;
using Flavor = QbtServer::Flavor;
using namespace API;

// Each server reads Quillo's preferences and takes back exactly what was edited, in the server's
// own spelling and form, leaving every other key and other clients' changes alone.
class TestPreferencesRealServers : public QObject
{
    Q_OBJECT

public:
    explicit TestPreferencesRealServers(Flavor flavor)
        : m_flavor(flavor)
    {
    }

private:
    const Flavor m_flavor;
    std::unique_ptr<QbtServer> m_server;
    std::unique_ptr<Client> m_client;

    std::unique_ptr<Client> loggedInClient()
    {
        auto client = std::make_unique<Client>(m_server->configuration());
        client->setCredentials(m_server->credentials());
        wait(client->login());
        return client;
    }

    // Something else of the same kind, valid for the server.
    PreferenceValue changed(const PreferenceValue &value)
    {
        return std::visit(
            [this](const auto &v) -> PreferenceValue {
                using V = std::decay_t<decltype(v)>;
                if constexpr (std::is_same_v<V, bool>)
                    return !v;
                else if constexpr (std::is_same_v<V, qint64>)
                    return v + 1;
                else if constexpr (std::is_same_v<V, QString>)
                    return v + u"-quillo"_qs;
                else if constexpr (std::is_same_v<V, double>)
                    return v + 1.25;
                else if constexpr (std::is_same_v<V, DataRate>)
                    return DataRate{v.bytesPerSecond + 10240};
                else if constexpr (std::is_same_v<V, EnumChoice>)
                    return EnumChoice{v.enumeration, (v.index + 1) % v.enumeration->cases.size()};
                else {
                    QList<ScanDir> dirs = v;
                    dirs.append({m_server->makeDataDir().serverPath, ScanDir::SavePath::defaultSavePath, {}});
                    dirs.append({m_server->makeDataDir().serverPath, ScanDir::SavePath::other,
                                 m_server->makeDataDir().serverPath});
                    return dirs;
                }
            },
            value);
    }

    static void compareAllBut(const QBTPreferences &before, const QBTPreferences &after, const QString &except)
    {
        for (const PreferenceKey &key : preferenceKeys()) {
            if (key.key != except)
                QVERIFY2(after.value(key.key) == before.value(key.key), qPrintable(key.key + u" changed"_qs));
        }
        QCOMPARE(after.unknownKeys(), before.unknownKeys());
    }

private Q_SLOTS:
    void initTestCase()
    {
        QbtServer::StartResult started = QbtServer::start(m_flavor);
        QUILLO_REQUIRE_SERVER(started);
        m_server = std::move(started.server);
        m_client = loggedInClient();
    }

    void cleanupTestCase()
    {
        m_client.reset();
        m_server.reset();
    }

    void oneEditedKeyChangesAlone_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QByteArray>("setUp"); // sent first, by another client
        QTest::newRow("Boolean") << u"incompleteFilesExt"_qs << QByteArray();
        QTest::newRow("integer") << u"maxActiveDownloads"_qs << QByteArray();
        QTest::newRow("string") << u"mailNotificationSender"_qs << QByteArray();
        QTest::newRow("double") << u"maxRatio"_qs << QByteArray(R"({"max_ratio_enabled":true,"max_ratio":1})");
        QTest::newRow("rate") << u"altDlLimit"_qs << QByteArray();
        QTest::newRow("enumeration") << u"uploadChokingAlgorithm"_qs << QByteArray();
        QTest::newRow("monitored folders") << u"scanDirs"_qs << QByteArray();
    }

    void oneEditedKeyChangesAlone()
    {
        QFETCH(QString, key);
        QFETCH(QByteArray, setUp);
        if (!setUp.isEmpty())
            wait(loggedInClient()->perform(Endpoint::Application::setPreferences(setUp)));

        const QBTPreferences before = wait(m_client->preferences());
        const std::optional<PreferenceValue> old = before.value(key);
        QVERIFY2(old.has_value(), qPrintable(key + u" was not sent"_qs));
        const PreferenceValue edit = changed(*old);
        QBTPreferences edited = before;
        edited.setValue(key, edit);
        wait(m_client->setPreferences(edited));

        const QBTPreferences after = wait(m_client->preferences());
        QVERIFY2(after.value(key) == edited.value(key), qPrintable(key + u" was not changed"_qs));
        compareAllBut(before, after, key);
    }

    void anotherClientsChangeSurvives()
    {
        const QBTPreferences before = wait(m_client->preferences());
        const qint64 uploads = std::get<qint64>(*before.value(u"maxActiveUploads")) + 7;
        const qint64 torrents = std::get<qint64>(*before.value(u"maxActiveTorrents")) + 3;

        const QByteArray otherChange = QByteArray(R"({"max_active_uploads":)") + QByteArray::number(uploads) + '}';
        wait(loggedInClient()->perform(Endpoint::Application::setPreferences(otherChange)));
        QBTPreferences edited = before;
        edited.setValue(u"maxActiveTorrents", torrents);
        wait(m_client->setPreferences(edited));

        const QBTPreferences after = wait(m_client->preferences());
        QVERIFY(after.value(u"maxActiveUploads") == PreferenceValue(uploads));
        QVERIFY(after.value(u"maxActiveTorrents") == PreferenceValue(torrents));
    }

    void interfacesAndAddressesAreListed()
    {
        const QList<NetworkInterface> interfaces = wait(m_client->networkInterfaces());
        const auto loopback = std::find_if(interfaces.cbegin(), interfaces.cend(),
                                           [](const NetworkInterface &i) { return i.value == u"lo"; });
        QVERIFY2(loopback != interfaces.cend(), "no loopback interface");
        const QList<NetworkAddress> addresses = wait(m_client->networkAddresses(loopback->value));
        QVERIFY(addresses.contains(NetworkAddress{u"127.0.0.1"_qs}));
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    int failures = 0;
    for (const Flavor flavor : QbtServer::flavors()) {
        TestPreferencesRealServers test(flavor);
        failures += QTest::qExec(&test, argc, argv);
    }
    return failures;
}

#include "tst_preferences_realservers.moc"
