#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "platform/Secrets.h"
#include "support/Await.h"
#include "support/FakeServer.h"
#include "support/ScriptedQbt.h"

#include <QTemporaryDir>
#include <QTest>

using API::AuthMethod;
using QuilloTest::admin;
using QuilloTest::wait;

// A keyring that fails, against a real Secret Service: one whose prompt cannot be shown (as when
// an unlock prompt is dismissed), none on the bus at all, and one whose item is deleted behind
// Quillo's back. Whichever: the user is told in plain words, the connection stays, and the
// password typed again logs in.
class TestKeychainFaults : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<FakeServer> m_server;
    QuilloTest::ScriptedQbt m_qbt;
    KeychainStore m_keychain;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<AppContext> m_context;

    // Quillo started again over the same settings.
    void restart()
    {
        m_context.reset();
        m_defaults = std::make_unique<UserDefaults>(m_dir.filePath(QStringLiteral("Quillo.ini")));
        m_context = std::make_unique<AppContext>(*m_defaults, m_keychain);
    }

    QString alertTitle() const { return m_context->clientError() ? m_context->clientError()->title() : QString(); }

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<FakeServer>();
        m_server->setHandler([this](const FakeServer::Request &request) { return m_qbt.answer(request); });
        restart();
    }

    void passwordTypedAgainLogsIn()
    {
        const QByteArray mode = qgetenv("QUILLO_SECRET_SERVICE");
        const bool failing = !mode.isEmpty();
        ClientConfiguration configuration = m_server->configuration(AuthMethod::cookieLogin);
        m_context->addConfiguration(configuration);
        wait(m_context->selectConfiguration(configuration.id));
        QVERIFY(m_context->isLoginPromptPresented());

        m_context->dismissClientError();
        wait(m_context->logIn(admin, true));
        QVERIFY(m_context->isAuthorized());
        QCOMPARE(alertTitle(), failing ? QStringLiteral("Quillo couldn't save the password to the keyring. It will "
                                                        "be asked for next time.")
                                       : QString());
        if (failing)
            QVERIFY2(m_context->clientError()->description().startsWith(u"The keyring is locked"),
                     qPrintable(m_context->clientError()->description()));
        QCOMPARE(m_context->clientConfigurations().size(), 1);
        QVERIFY(m_context->clientConfigurations().constFirst().autoLogin);

        if (!failing) {
            restart();
            wait(m_context->selectConfiguration(configuration.id));
            QVERIFY(m_context->isAuthorized()); // from the keyring
            QVERIFY(Platform::Secrets::remove(KeychainStore::service(configuration)));
        }
        restart();
        wait(m_context->selectConfiguration(configuration.id));
        QVERIFY(!m_context->isAuthorized());
        QVERIFY(m_context->isLoginPromptPresented());
        if (mode == "absent")
            QCOMPARE(alertTitle(), QStringLiteral("Quillo couldn't read the saved password from the keyring."));
        else
            QCOMPARE(alertTitle(), QString()); // nothing stored is no failure: the prompt says it all
        QCOMPARE(m_context->clientConfigurations().size(), 1);

        wait(m_context->logIn(admin, true));
        QVERIFY(m_context->isAuthorized());
        QCOMPARE(wait(m_keychain.read(configuration)).has_value(), !failing);
    }
};

QTEST_GUILESS_MAIN(TestKeychainFaults)
#include "tst_keychainfaults.moc"
