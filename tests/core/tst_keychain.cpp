#include "core/KeychainStore.h"
#include "platform/Secrets.h"
#include "support/Await.h"

#include <QFile>
#include <QTest>

using API::AuthMethod;
using API::UserCredentials;
using QuilloTest::wait;

Q_DECLARE_METATYPE(API::AuthMethod)
Q_DECLARE_METATYPE(API::UserCredentials)

namespace {

ClientConfiguration connection(AuthMethod method, const QString &host = QStringLiteral("192.168.1.10"))
{
    ClientConfiguration configuration;
    configuration.host = host;
    configuration.port = 8080;
    configuration.authMethod = method;
    return configuration;
}

QByteArray keyringFile()
{
    QFile file(qEnvironmentVariable("QUILLO_TEST_KEYRING_FILE"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

// Against a real Secret Service (tests/support/with-secret-service).
class TestKeychain : public QObject
{
    Q_OBJECT

    KeychainStore m_store;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(!qEnvironmentVariableIsEmpty("QUILLO_TEST_KEYRING_FILE"), "run through with-secret-service");
    }

    void serviceText_data()
    {
        QTest::addColumn<ClientConfiguration>("configuration");
        QTest::addColumn<QString>("service");
        ClientConfiguration plain = connection(AuthMethod::basic);
        QTest::newRow("plain basic") << plain << QStringLiteral("http://192.168.1.10:8080/#basic");
        ClientConfiguration proxied = connection(AuthMethod::cookieLogin, QStringLiteral("nas.local"));
        proxied.useHTTPS = true;
        proxied.path = QStringLiteral("qbt");
        QTest::newRow("https with path") << proxied << QStringLiteral("https://nas.local:8080/qbt#cookieLogin");
        ClientConfiguration noPort = connection(AuthMethod::apiKey);
        noPort.port.reset();
        QTest::newRow("no port") << noPort << QStringLiteral("http://192.168.1.10:0/#apiKey");
    }

    void serviceText()
    {
        QFETCH(ClientConfiguration, configuration);
        QFETCH(QString, service);
        QCOMPARE(KeychainStore::service(configuration), service);
    }

    void roundTrip_data()
    {
        QTest::addColumn<AuthMethod>("method");
        QTest::addColumn<UserCredentials>("saved");
        QTest::addColumn<UserCredentials>("read");
        QTest::addColumn<QByteArray>("account");
        const UserCredentials login{QStringLiteral("admin"), QStringLiteral("pässwörd&=1"), {}};
        QTest::newRow("login") << AuthMethod::cookieLogin << login << login << QByteArray("admin");
        QTest::newRow("basic") << AuthMethod::basic << login << login << QByteArray("admin");
        QTest::newRow("api key") << AuthMethod::apiKey << UserCredentials{{}, {}, QStringLiteral("qbt_k3y")}
                                 << UserCredentials{{}, {}, QStringLiteral("qbt_k3y")} << QByteArray("API Key");
        QTest::newRow("none") << AuthMethod::none << login << UserCredentials{} << QByteArray("No Authentication");
    }

    void roundTrip()
    {
        QFETCH(AuthMethod, method);
        QFETCH(UserCredentials, saved);
        QFETCH(UserCredentials, read);
        QFETCH(QByteArray, account);
        const ClientConfiguration configuration = connection(method, QStringLiteral("roundtrip.example"));
        QVERIFY(wait(m_store.save(configuration, saved)));
        QCOMPARE(wait(m_store.read(configuration)), std::optional<UserCredentials>(read));
        // The secret reached the keychain itself, under the account the item is known by.
        const QByteArray stored = keyringFile();
        QVERIFY(stored.contains(KeychainStore::service(configuration).toUtf8()));
        QVERIFY(stored.contains(account));
        if (method != AuthMethod::none)
            QVERIFY(stored.contains((saved.password + saved.apiKey).toUtf8()));
    }

    void methodsOfOneAddressKeepTheirOwnItems()
    {
        const UserCredentials basic{QStringLiteral("alice"), QStringLiteral("basic-pw"), {}};
        const UserCredentials key{{}, {}, QStringLiteral("qbt_key_of_alice")};
        QVERIFY(wait(m_store.save(connection(AuthMethod::basic), basic)));
        QVERIFY(wait(m_store.save(connection(AuthMethod::apiKey), key)));
        QCOMPARE(wait(m_store.read(connection(AuthMethod::basic))), std::optional(basic));
        QCOMPARE(wait(m_store.read(connection(AuthMethod::apiKey))), std::optional(key));
    }

    // Saving again replaces the item; a removed item is gone from the keychain itself.
    void updatedThenRemoved()
    {
        const ClientConfiguration configuration = connection(AuthMethod::cookieLogin, QStringLiteral("replace.example"));
        QVERIFY(wait(m_store.save(configuration, {QStringLiteral("old"), QStringLiteral("old-pw"), {}})));
        const UserCredentials renamed{QStringLiteral("new"), QStringLiteral("new-pw"), {}};
        QVERIFY(wait(m_store.save(configuration, renamed)));
        QCOMPARE(wait(m_store.read(configuration)), std::optional(renamed));
        QVERIFY(!keyringFile().contains("old-pw"));
        const UserCredentials changed{QStringLiteral("new"), QStringLiteral("newer-pw"), {}};
        QVERIFY(wait(m_store.save(configuration, changed))); // the same account
        QCOMPARE(wait(m_store.read(configuration)), std::optional(changed));
        QVERIFY(!keyringFile().contains("new-pw"));

        QVERIFY(wait(m_store.remove(configuration)));
        QCOMPARE(wait(m_store.read(configuration)), std::optional<UserCredentials>());
        QVERIFY(!keyringFile().contains("newer-pw"));
        QVERIFY(!wait(m_store.remove(configuration)));
    }

    // An older version's item is found, moved under today's name and then gone from the old one.
    void olderLoginItemsAreStillFound()
    {
        const ClientConfiguration configuration = connection(AuthMethod::cookieLogin, QStringLiteral("legacy.example"));
        const QString older = KeychainStore::service(configuration, false);
        Platform::Secrets::store(older, QStringLiteral("veteran"), "since-1.0", true);
        const auto veteran = std::optional(UserCredentials{QStringLiteral("veteran"), QStringLiteral("since-1.0"), {}});
        QCOMPARE(wait(m_store.read(configuration)), veteran);
        QVERIFY(!Platform::Secrets::find(older));
        const auto moved = Platform::Secrets::find(KeychainStore::service(configuration));
        QVERIFY(moved);
        QCOMPARE(moved->account, QStringLiteral("veteran"));
        QCOMPARE(wait(m_store.read(configuration)), veteran);

        ClientConfiguration basic = configuration;
        basic.authMethod = AuthMethod::basic;
        QCOMPARE(wait(m_store.read(basic)), std::optional<UserCredentials>());
    }

    void corruptedDataReadsAsAbsent()
    {
        const ClientConfiguration configuration = connection(AuthMethod::basic, QStringLiteral("corrupt.example"));
        Platform::Secrets::store(KeychainStore::service(configuration), QStringLiteral("u"), "\xff\xfe\xfd", true);
        QCOMPARE(wait(m_store.read(configuration)), std::optional<UserCredentials>());
    }
};

QTEST_GUILESS_MAIN(TestKeychain)
#include "tst_keychain.moc"
