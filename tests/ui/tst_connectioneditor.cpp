#include "ConnectionFixture.h"
#include "ui/ConnectionEditor.h"
#include "ui/MainWindow.h"
#include "ui/ServerMenu.h"
#include "ui/WelcomeView.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolBar>

using API::AuthMethod;

class TestConnectionEditor : public QObject
{
    Q_OBJECT

    // One store for the run: GLib keeps per-thread data that an ending worker thread leaves behind.
    KeychainStore m_keychain;

    static void type(QLineEdit *field, const QString &text)
    {
        field->clear();
        // Key events exist for ASCII only; inserting is an edit by the user all the same.
        if (std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 128; }))
            QTest::keyClicks(field, text);
        else
            field->insert(text);
    }

private Q_SLOTS:
    void checksTheAddress_data()
    {
        QTest::addColumn<bool>("isPort");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("problem");
        const auto row = [](const char *name, bool isPort, const char *text, const QString &problem) {
            QTest::newRow(name) << isPort << QString::fromUtf8(text) << problem;
        };
        const QString invalid = QStringLiteral("“%1” is not a valid host name or IP address.");
        row("spaces", false, "my nas", QStringLiteral("A host name cannot contain spaces."));
        row("other scheme", false, "ftp://nas",
            QStringLiteral("Enter the host alone, without “http://” or “https://”: use the Use HTTPS option instead."));
        row("octet too big", false, "192.168.1.300", invalid.arg(u"192.168.1.300"));
        row("three octets", false, "192.168.1", invalid.arg(u"192.168.1"));
        row("empty label", false, "nas..local", invalid.arg(u"nas..local"));
        row("leading hyphen", false, "-nas", invalid.arg(u"-nas"));
        row("slash", false, "nas/qbt", invalid.arg(u"nas/qbt"));
        row("name", false, "nas.local", {});
        row("address", false, "192.168.1.10", {});
        row("IPv6", false, "fe80::1", {});
        row("international", false, "bücher.example", {});
        const QString outOfRange = QStringLiteral("The port must be a number from 1 to 65535.");
        row("port zero", true, "0", outOfRange);
        row("port too big", true, "65536", outOfRange);
        row("signed port", true, "+80", outOfRange);
        row("highest port", true, "65535", {});
    }

    void checksTheAddress()
    {
        QFETCH(bool, isPort);
        QFETCH(QString, text);
        QFETCH(QString, problem);
        ConnectionFixture fixture(m_keychain);
        ConnectionEditor editor(*fixture.context);
        type(isPort ? editor.hostField() : editor.portField(), isPort ? QStringLiteral("nas.local") : QStringLiteral("8080"));
        type(isPort ? editor.portField() : editor.hostField(), text);

        QLabel *error = isPort ? editor.portErrorLabel() : editor.hostErrorLabel();
        QCOMPARE(error->text(), problem);
        QCOMPARE(error->isHidden(), problem.isEmpty());
        QCOMPARE(editor.saveButton()->isEnabled(), problem.isEmpty());
    }

    void takesAnAddressApart_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<bool>("pasted");
        QTest::addColumn<QString>("host");
        QTest::addColumn<QString>("port");
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("https");
        const auto row = [](const char *name, const char *input, bool pasted, const char *host, const char *port,
                            const char *path, bool https) {
            QTest::newRow(name) << QString::fromUtf8(input) << pasted << QString::fromUtf8(host) << QString::fromUtf8(port)
                                << QString::fromUtf8(path) << https;
        };
        row("pasted https", "https://nas.local:8080", true, "nas.local", "8080", "", true);
        row("pasted with path", "http://10.0.0.2:8080/qbt/", true, "10.0.0.2", "8080", "/qbt", false);
        row("typed https", "https://nas.local", false, "nas.local", "", "", true);
        row("typed with port", "http://nas.local:9090", false, "nas.local", "9090", "", false);
        row("host and port", "nas.local:9090", false, "nas.local", "9090", "", false);
    }

    void takesAnAddressApart()
    {
        QFETCH(QString, input);
        QFETCH(bool, pasted);
        ConnectionFixture fixture(m_keychain);
        ConnectionEditor editor(*fixture.context);
        editor.show();
        QVERIFY(QTest::qWaitForWindowExposed(&editor));
        if (pasted) {
            QGuiApplication::clipboard()->setText(input);
            QTest::keyClick(editor.hostField(), Qt::Key_V, Qt::ControlModifier);
        } else {
            QTest::keyClicks(editor.hostField(), input);
            Q_EMIT editor.hostField()->editingFinished();
        }

        QTEST(editor.hostField()->text(), "host");
        QTEST(editor.portField()->text(), "port");
        QTEST(editor.pathField()->text(), "path");
        QTEST(editor.httpsToggle()->isChecked(), "https");
        QVERIFY(editor.hostErrorLabel()->isHidden());
    }

    void explainsEachMethod_data()
    {
        QTest::addColumn<AuthMethod>("method");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("helpMentions");
        QTest::addColumn<bool>("login");
        QTest::addColumn<bool>("key");
        const auto row = [](AuthMethod method, const char *label, const char *title, const char *mentions, bool login,
                            bool key) {
            QTest::newRow(label) << method << QString::fromUtf8(label) << QString::fromUtf8(title)
                                 << QString::fromUtf8(mentions) << login << key;
        };
        row(AuthMethod::none, "No Authentication", "No Authentication", "bypasses", false, false);
        row(AuthMethod::cookieLogin, "Standard Login", "Standart Login", "/api/v2/auth/login", true, false);
        row(AuthMethod::basic, "Basic Auth", "Basic Auth", "HTTP Authorization", true, false);
        row(AuthMethod::apiKey, "API Key", "API Key", "Bearer", false, true);
    }

    void explainsEachMethod()
    {
        QFETCH(AuthMethod, method);
        ConnectionFixture fixture(m_keychain);
        ConnectionEditor editor(*fixture.context);
        const auto index = static_cast<int>(std::find(API::allAuthMethods.begin(), API::allAuthMethods.end(), method) -
                                            API::allAuthMethods.begin());
        editor.methodPicker()->setCurrentIndex(index);

        QTEST(editor.methodPicker()->currentText(), "label");
        QTEST(editor.helpTitleLabel()->text(), "title");
        QFETCH(QString, helpMentions);
        QVERIFY2(editor.helpLabel()->text().contains(helpMentions), qPrintable(editor.helpLabel()->text()));
        QTEST(editor.usernameField()->isVisibleTo(&editor), "login");
        QTEST(editor.passwordField()->isVisibleTo(&editor), "login");
        QTEST(editor.apiKeyField()->isVisibleTo(&editor), "key");
    }

    void refusesADuplicateAndKeepsTheInput()
    {
        ConnectionFixture fixture(m_keychain);
        const ClientConfiguration existing = fixture.add(QStringLiteral("NAS"));
        ConnectionEditor editor(*fixture.context);
        editor.show();
        type(editor.nameField(), QStringLiteral("NAS"));
        type(editor.hostField(), existing.host);
        type(editor.portField(), QString::number(*existing.port));
        QTest::mouseClick(editor.saveButton(), Qt::LeftButton);

        QCOMPARE(editor.saveErrorLabel()->text(), QStringLiteral("Server with these settings already exists!"));
        QVERIFY(editor.saveErrorLabel()->isVisible());
        QVERIFY(editor.isVisible());
        QCOMPARE(editor.hostField()->text(), existing.host);
        QCOMPARE(fixture.context->clientConfigurations().size(), 1);
    }

    void savesCredentialsToTheKeychain()
    {
        ConnectionFixture fixture(m_keychain);
        ConnectionEditor editor(*fixture.context);
        editor.show();
        type(editor.hostField(), QStringLiteral("nas.local"));
        type(editor.portField(), QStringLiteral("8080"));
        editor.methodPicker()->setCurrentIndex(2); // Basic Auth
        type(editor.usernameField(), QStringLiteral("admin"));
        type(editor.passwordField(), QStringLiteral("pässword"));
        QTest::mouseClick(editor.saveButton(), Qt::LeftButton);
        QTRY_VERIFY(!editor.isVisible());

        QCOMPARE(editor.result(), int(QDialog::Accepted));
        const ClientConfiguration saved = fixture.context->clientConfigurations().value(0);
        QCOMPARE(saved.authMethod, AuthMethod::basic);
        QCOMPARE(saved.port, 8080);
        const auto stored = QuilloTest::wait(m_keychain.read(saved));
        QVERIFY(stored);
        QCOMPARE(stored->password, QStringLiteral("pässword"));
        QuilloTest::wait(m_keychain.remove(saved));
    }

    void welcomeViewAddsAndOpensAConnection()
    {
        ConnectionFixture fixture(m_keychain);
        fixture.bypass = true;
        MainWindow window(*fixture.context);
        window.show();
        QVERIFY(window.welcomeView()->isVisible());
        QVERIFY(!window.toolBar()->isVisible());

        QTest::mouseClick(window.welcomeView()->connectToServerButton(), Qt::LeftButton);
        auto *editor = window.findChild<ConnectionEditor *>();
        QVERIFY(editor);
        QCOMPARE(editor->windowTitle(), QStringLiteral("New Connection"));
        editor->methodPicker()->setCurrentIndex(0);
        type(editor->hostField(), QStringLiteral("127.0.0.1"));
        type(editor->portField(), QString::number(fixture.server.port()));
        QTest::mouseClick(editor->saveButton(), Qt::LeftButton);

        QTRY_VERIFY(fixture.context->isPolling()); // connected, nothing left in flight
        QCOMPARE(fixture.context->clientConfiguration()->host, QStringLiteral("127.0.0.1"));
        QVERIFY(!window.welcomeView()->isVisible());
        QVERIFY(window.toolBar()->isVisible());
    }

    // The server menu edits the connection in use, and the window reconnects with what was saved.
    void editingTheConnectionInUse()
    {
        ConnectionFixture fixture(m_keychain);
        fixture.bypass = true;
        const ClientConfiguration nas = fixture.add(QStringLiteral("NAS"), AuthMethod::none);
        MainWindow window(*fixture.context);
        QuilloTest::wait(fixture.context->selectConfiguration(nas.id));
        QAction *edit = nullptr;
        for (QAction *action : window.serverMenu()->actions())
            edit = action->text() == QStringLiteral("Edit Connection…") ? action : edit;
        QVERIFY(edit);
        edit->trigger();
        auto *editor = window.findChild<ConnectionEditor *>();
        QVERIFY(editor);
        QCOMPARE(editor->nameField()->text(), QStringLiteral("NAS"));
        editor->nameField()->setText(QStringLiteral("Attic"));
        QTest::mouseClick(editor->saveButton(), Qt::LeftButton);
        QTRY_COMPARE(fixture.context->clientConfiguration()->name, QStringLiteral("Attic"));
        QCOMPARE(fixture.context->clientConfigurations().size(), 1);
        QTRY_VERIFY(fixture.context->isPolling());
    }
};

QTEST_MAIN(TestConnectionEditor)
#include "tst_connectioneditor.moc"
