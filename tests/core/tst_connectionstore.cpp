#include "core/ConnectionStore.h"
#include "settings/UserDefaults.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

namespace {

ClientConfiguration sample(const QString &host, std::optional<int> port = 8080)
{
    ClientConfiguration configuration;
    configuration.name = QStringLiteral("NAS");
    configuration.host = host;
    configuration.port = port;
    configuration.path = QStringLiteral("/qbt");
    configuration.useHTTPS = true;
    configuration.authMethod = API::AuthMethod::basic;
    configuration.addedDate = QDateTime(QDate(2024, 5, 1), QTime(12, 0, 0, 250), Qt::UTC);
    return configuration;
}

} // namespace

class TestConnectionStore : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString iniPath() const { return m_dir.filePath(QStringLiteral("Quillo.ini")); }

private Q_SLOTS:
    void init() { QFile::remove(iniPath()); }

    void encodingKeepsEveryField()
    {
        ClientConfiguration local = sample(QStringLiteral("::1"), {});
        local.authMethod = API::AuthMethod::none;
        ClientConfiguration nas = sample(QStringLiteral("nas.local"));
        nas.trustedCertificate = QStringLiteral("9f86d081884c7d659a2feaa0c55ad015a3bf4f1b2b0b822cd15d6c15b0f00a08");
        const QList<ClientConfiguration> saved{nas, local};
        const QByteArray json = ConnectionStore::encode(saved);
        bool complete = false;
        const auto read = ConnectionStore::decode(json, &complete);
        QVERIFY(complete);
        QCOMPARE(read.size(), 2);
        for (qsizetype i = 0; i < read.size(); ++i) {
            QVERIFY(read[i] == saved[i]);
            QCOMPARE(read[i].id, saved[i].id);
            QCOMPARE(read[i].addedDate, saved[i].addedDate);
            QCOMPARE(read[i].trustedCertificate, saved[i].trustedCertificate);
        }
        const QJsonObject first = QJsonDocument::fromJson(json).array().first().toObject();
        QCOMPARE(first.value(u"authMethod").toString(), QStringLiteral("basic"));
        QCOMPARE(first.value(u"id").toString(), saved[0].id.toString(QUuid::WithoutBraces).toUpper());
        // Seconds since 2001-01-01, as the JSON encoder of earlier versions wrote them.
        QCOMPARE(first.value(u"addedDate").toDouble(), 736257600.25);
        const QJsonObject second = QJsonDocument::fromJson(json).array().at(1).toObject();
        QVERIFY(!second.contains(u"port"));
        // Absent as in lists written before certificates could be trusted, which read as they did.
        QVERIFY(!second.contains(u"trustedCertificate"));
        QCOMPARE(second.value(u"authMethod").toString(), QStringLiteral("none"));
    }

    void unreadableEntriesAreNeverLost()
    {
        const QByteArray good = ConnectionStore::encode({sample(QStringLiteral("nas.local"))});
        QByteArray stored = good;
        stored.insert(1, R"({"id":"not a uuid","host":5},)");
        {
            UserDefaults defaults(iniPath());
            defaults.setValue(UserDefaultsKey::didMigrateServerConfigurationsToDefaults, true);
            defaults.setValue(UserDefaultsKey::clientConfigurations, stored);
            ConnectionStore store(defaults);
            const auto loaded = store.load();
            QCOMPARE(loaded.size(), 1);
            store.save(loaded + QList{sample(QStringLiteral("second.local"))});
        }
        UserDefaults reopened(iniPath());
        QCOMPARE(reopened.rawValue(QLatin1String(ConnectionStore::unreadableBackupKey)).toByteArray(), stored);
        QCOMPARE(ConnectionStore(reopened).load().size(), 2);
    }

    void damagedFileIsSetAside_data()
    {
        using Damage = std::function<QByteArray(QByteArray)>;
        QTest::addColumn<Damage>("damage");
        QTest::addColumn<bool>("setAside");
        QTest::addColumn<QStringList>("hostsKept");
        QTest::addColumn<bool>("intervalKept");
        const QStringList all{u"a.local"_qs, u"b.local"_qs, u"c.local"_qs};
        QTest::newRow("read whole") << Damage([](QByteArray text) { return text; }) << false << all << true;
        QTest::newRow("another type where a number belongs") << Damage([](QByteArray text) {
            return text.replace("refreshInterval=4500", "refreshInterval=@Size(1 2)");
        }) << false << all << false;
        QTest::newRow("cut inside the connections")
            << Damage([](QByteArray text) { return text.left(text.indexOf("b.local")); }) << true
            << QStringList{u"a.local"_qs} << false;
        QTest::newRow("cut in the last line")
            << Damage([](QByteArray text) { return text.chopped(2); }) << true << all << true;
        QTest::newRow("zeros left by a crash")
            << Damage([](QByteArray text) { return text + QByteArray(64, '\0'); }) << true << all << true;
        // A length of its own: the settings cache of this process takes a file of the same size and
        // time for the one it has read.
        QTest::newRow("written by a newer Quillo")
            << Damage([](QByteArray text) { return text.replace("settingsFormat=1", "settingsFormat=12"); }) << true
            << all << true;
    }

    // Nothing of a damaged file is written over: it is kept aside as it is, what can be read of it
    // carries on, and it is reported at the one start that found it.
    void damagedFileIsSetAside()
    {
        QFETCH(std::function<QByteArray(QByteArray)>, damage);
        QFETCH(bool, setAside);
        QFETCH(QStringList, hostsKept);
        QFETCH(bool, intervalKept);
        {
            UserDefaults defaults(iniPath());
            ConnectionStore(defaults).save({sample(u"a.local"_qs), sample(u"b.local"_qs), sample(u"c.local"_qs)});
            defaults.setValue(UserDefaultsKey::refreshInterval, 4500);
        }
        QFile file(iniPath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray damaged = damage(file.readAll());
        file.close();
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(damaged);
        file.close();
        QFile::remove(iniPath() + u".unreadable"_qs);

        {
            UserDefaults defaults(iniPath());
            QCOMPARE(defaults.setAsidePath().has_value(), setAside);
            QStringList hosts;
            for (const ClientConfiguration &configuration : ConnectionStore(defaults).load())
                hosts << configuration.host;
            QCOMPARE(hosts, hostsKept);
            QCOMPARE(defaults.integerValue(UserDefaultsKey::refreshInterval, 2000), intervalKept ? 4500 : 2000);
            if (setAside) {
                QFile aside(*defaults.setAsidePath());
                QVERIFY(aside.open(QIODevice::ReadOnly));
                QCOMPARE(aside.readAll(), damaged);
            }
        }
        QVERIFY(!UserDefaults(iniPath()).setAsidePath());
    }

    void legacyListMigratesOnce()
    {
        UserDefaults defaults(iniPath());
        const QByteArray legacy = R"([{"name":"Old","host":"10.0.0.2","port":8080,"path":"","useHTTPS":false,
            "isCurrent":true,"addedDate":700000000,"autoLogin":true,"authMethodRawValue":"cookieLogin"},
            {"name":"Broken","host":"x"}])";
        defaults.setRawValue(QLatin1String(ConnectionStore::legacyKey), legacy);

        ConnectionStore store(defaults);
        const auto migrated = store.load();
        QCOMPARE(migrated.size(), 1);
        QCOMPARE(migrated[0].host, QStringLiteral("10.0.0.2"));
        QCOMPARE(migrated[0].authMethod, API::AuthMethod::cookieLogin);
        QVERIFY(migrated[0].isCurrent);
        QVERIFY(defaults.boolValue(UserDefaultsKey::didMigrateServerConfigurationsToDefaults));

        // Deleting everything afterwards must not bring the old list back.
        store.save({});
        QVERIFY(ConnectionStore(defaults).load().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestConnectionStore)
#include "tst_connectionstore.moc"
