#include "core/ConnectionStore.h"
#include "settings/UserDefaults.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

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
