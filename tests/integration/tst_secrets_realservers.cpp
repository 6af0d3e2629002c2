#include "api/Client.h"
#include "api/Endpoint.h"
#include "core/ConnectionStore.h"
#include "core/KeychainStore.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/QbtServer.h"

#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using QuilloTest::wait;

// Quillo itself, run as a user runs it, against the newest real server: one session with a
// password and its cookie, one with an API key ended by a forced abort. Nothing it writes (its
// settings and every other file under its own folders, every log line with every category on at
// debug, what the abort printed) may hold a secret: those belong in the keychain alone.
class TestSecrets : public QObject
{
    Q_OBJECT

    std::unique_ptr<QbtServer> m_server;
    QTemporaryDir m_home; // the XDG folders the sessions write into
    KeychainStore m_keychain;
    QString m_apiKey;

    QProcessEnvironment environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *folder : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
            environment.insert(QLatin1String(folder), m_home.filePath(QLatin1String(folder)));
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*.debug=true"));
        return environment;
    }

    // The saved connections as the settings window leaves them, `current` chosen and logging in.
    void saveConnections(API::AuthMethod current)
    {
        const QString settings = m_home.filePath(QStringLiteral("XDG_CONFIG_HOME/Quillo/Quillo.ini"));
        UserDefaults defaults(settings);
        QList<ClientConfiguration> configurations;
        for (const API::AuthMethod method : {API::AuthMethod::cookieLogin, API::AuthMethod::apiKey}) {
            ClientConfiguration configuration = m_server->configuration();
            configuration.id = QUuid::createUuidV5(QUuid(), QString::number(static_cast<int>(method)));
            configuration.authMethod = method;
            configuration.isCurrent = method == current;
            configuration.autoLogin = true;
            API::UserCredentials credentials = m_server->credentials();
            if (method == API::AuthMethod::apiKey)
                credentials = {{}, {}, m_apiKey};
            QVERIFY(wait(m_keychain.save(configuration, credentials)));
            configurations << configuration;
        }
        ConnectionStore(defaults).save(configurations);
    }

    // Runs Quillo until it polls, and collects all it printed; `abort` ends it with SIGABRT, else
    // it is asked to quit.
    void session(bool abort, QByteArray &output)
    {
        QProcess quillo;
        quillo.setProcessEnvironment(environment());
        quillo.setProcessChannelMode(QProcess::MergedChannels);
        quillo.start(QStringLiteral(QUILLO_EXECUTABLE), {});
        const auto polled = [&] {
            output += quillo.readAll();
            return output.contains("Start polling");
        };
        QTRY_VERIFY2_WITH_TIMEOUT(polled(), output.right(2000).constData(), 60'000);
        QTest::qWait(3000); // a few polls and their cookies
        ::kill(static_cast<pid_t>(quillo.processId()), abort ? SIGABRT : SIGTERM);
        quillo.waitForFinished(30'000);
        output += quillo.readAll();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QbtServer::StartResult started = QbtServer::start(QbtServer::Flavor::Sid, {.localHostAuth = true});
        if (!started.server) {
            if (QbtServer::realServersRequired() && !started.skipAlways)
                QFAIL(qPrintable(started.failure));
            QSKIP(qPrintable(started.failure));
        }
        m_server = std::move(started.server);
        API::Client admin(m_server->configuration());
        admin.setCredentials(m_server->credentials());
        wait(admin.login());
        m_apiKey = QJsonDocument::fromJson(wait(admin.perform(API::Endpoint::Application::rotateAPIKey())))
                       .object()
                       .value(u"apiKey")
                       .toString();
        QVERIFY2(m_apiKey.startsWith(u"qbt_"), qPrintable(m_apiKey));
    }

    void cleanupTestCase() { m_server.reset(); }

    void nothingWrittenHoldsASecret()
    {
        saveConnections(API::AuthMethod::cookieLogin);
        QByteArray withPassword;
        session(false, withPassword);
        QVERIFY(!QTest::currentTestFailed());
        saveConnections(API::AuthMethod::apiKey);
        QByteArray withKey;
        session(true, withKey);
        QVERIFY(!QTest::currentTestFailed());

        QHash<QString, QByteArray> written{{QStringLiteral("output of the password session"), withPassword},
                                           {QStringLiteral("output of the aborted key session"), withKey}};
        QDirIterator files(m_home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            written.insert(file.fileName(), file.readAll());
        }
        QVERIFY2(written.size() > 2, "the sessions wrote no settings");
        const QByteArray password = m_server->credentials().password.toUtf8();
        // qBittorrent's session cookie, whatever its value: the name and a token after it.
        static const QRegularExpression cookie(QStringLiteral("(SID|QBT_SID_\\d+)[=:\" ]+[A-Za-z0-9+/]{16,}"));
        for (auto entry = written.cbegin(); entry != written.cend(); ++entry) {
            const QByteArray &text = entry.value();
            QVERIFY2(!text.contains(password), qPrintable(u"the password in "_qs + entry.key()));
            QVERIFY2(!text.contains(m_apiKey.toUtf8()), qPrintable(u"the API key in "_qs + entry.key()));
            const auto found = cookie.match(QString::fromUtf8(text));
            QVERIFY2(!found.hasMatch(),
                     qPrintable(entry.key() + QStringLiteral(": a session cookie, ") + found.captured()));
        }
    }
};

QTEST_GUILESS_MAIN(TestSecrets)
#include "tst_secrets_realservers.moc"
