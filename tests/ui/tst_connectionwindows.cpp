#include "api/Errors.h"
#include "api/ServerCertificate.h"
#include "core/AppContext.h"
#include "core/KeychainStore.h"
#include "core/ReconnectionCountdown.h"
#include "model/ServerLabels.h"
#include "model/TntSnapshot.h"
#include "model/TrackerIndex.h"
#include "settings/UserDefaults.h"
#include "support/Await.h"
#include "support/FakeServer.h"
#include "support/ScriptedQbt.h"
#include "support/Widgets.h"
#include "ui/ClientErrorPresenter.h"
#include "ui/ConnectionEditor.h"
#include "ui/LoginPrompt.h"
#include "ui/MainWindow.h"
#include "ui/ReconnectionOverlay.h"
#include "ui/ServerMenu.h"
#include "ui/TntActions.h"
#include "ui/TransferStatus.h"
#include "ui/WelcomeView.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>

#include <functional>
#include <memory>

using API::AuthMethod;
using EditorEdit = std::function<void(ConnectionEditor &)>;
using StoredCredentials = std::optional<API::UserCredentials>;
Q_DECLARE_METATYPE(EditorEdit)
Q_DECLARE_METATYPE(StoredCredentials)

namespace {

// A fresh context over a throwaway settings file, and a server that wants QuilloTest::admin.
struct ConnectionFixture
{
    QTemporaryDir dir;
    FakeServer server;
    QuilloTest::ScriptedQbt qbt;
    UserDefaults defaults{dir.filePath(QStringLiteral("Quillo.ini"))};
    KeychainStore &keychain;
    std::unique_ptr<AppContext> context;

    explicit ConnectionFixture(KeychainStore &store)
        : keychain(store)
        , context(std::make_unique<AppContext>(defaults, keychain))
    {
        server.setHandler([this](const FakeServer::Request &request) { return qbt.answer(request); });
    }

    ~ConnectionFixture()
    {
        // Dialogs and alerts left open by a failed check must not outlive the context they use.
        const QWidgetList windows = QApplication::topLevelWidgets();
        const QList<QPointer<QWidget>> alive(windows.cbegin(), windows.cend()); // some go with their parent
        qDeleteAll(alive);
        context.reset();
    }

    ClientConfiguration add(const QString &name, API::AuthMethod method = API::AuthMethod::cookieLogin,
                            quint16 port = 0)
    {
        ClientConfiguration configuration = server.configuration(method);
        configuration.name = name;
        if (port)
            configuration.port = port;
        context->addConfiguration(configuration);
        return configuration;
    }
};

void type(QLineEdit *field, const QString &text)
{
    field->clear();
    // Key events exist for ASCII only; inserting is an edit by the user all the same.
    if (std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 128; }))
        QTest::keyClicks(field, text);
    else
        field->insert(text);
}

QStringList entries(const QMenu &menu)
{
    QStringList texts;
    for (const QAction *action : menu.actions()) {
        if (!action->text().isEmpty()) // sections are separators with a title
            texts << action->text();
    }
    return texts;
}

const auto entry = QuilloTest::menuItem;

// Every text a window shows, each after the kind of widget that shows it.
QStringList shownTexts(const QWidget &window)
{
    QStringList texts{QStringLiteral("title: ") + window.windowTitle()};
    for (const QLabel *label : window.findChildren<QLabel *>())
        texts << QStringLiteral("label: ") + label->text();
    for (const QAbstractButton *button : window.findChildren<QAbstractButton *>()) {
        for (const QString &line : button->text().split(u'\n'))
            texts << (button->isEnabled() ? QStringLiteral("button: ") : QStringLiteral("disabled button: ")) + line;
    }
    for (const QLineEdit *field : window.findChildren<QLineEdit *>())
        texts << QStringLiteral("placeholder: ") + field->placeholderText();
    for (const QGroupBox *group : window.findChildren<QGroupBox *>())
        texts << QStringLiteral("group: ") + group->title();
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (!widget->toolTip().isEmpty())
            texts << QStringLiteral("tip: ") + widget->toolTip();
    }
    return texts;
}

void loseConnection(AppContext &context, int times, const QString &message,
                    QNetworkReply::NetworkError code = QNetworkReply::ConnectionRefusedError)
{
    for (int i = 0; i < times; ++i)
        context.reportSyncFailure(QStringLiteral("Sync"), std::make_exception_ptr(API::TransportError(code, message)));
}

} // namespace

// The connection editor, the welcome view, the server menu, the login prompt and the reconnection
// overlay, driven through their widgets against a scripted server and a real Secret Service.
class TestConnectionWindows : public QObject
{
    Q_OBJECT

    // One store for the run: GLib keeps per-thread data that an ending worker thread leaves behind.
    KeychainStore m_keychain;

    // A login connection without stored credentials: selecting it asks for them.
    static LoginPrompt *askForLogin(ConnectionFixture &fixture, MainWindow &window)
    {
        const ClientConfiguration nas = fixture.add(QStringLiteral("Home NAS"));
        window.show();
        QuilloTest::wait(fixture.context->selectConfiguration(nas.id));
        return window.loginPrompt();
    }

    // The window a row of shownTextsAreExact reads; the fixture's end deletes it.
    static QWidget *open(const QString &window, ConnectionFixture &fixture)
    {
        if (window == u"welcome")
            return new WelcomeView;
        if (window == u"login")
            return askForLogin(fixture, *new MainWindow(*fixture.context));
        if (window == u"overlay") {
            auto *area = new QWidget;
            new ReconnectionOverlay(*fixture.context,
                                    *new ReconnectionCountdown(*fixture.context, std::chrono::hours(1), area), area);
            loseConnection(*fixture.context, 1, QStringLiteral("Connection refused"));
            return area;
        }
        if (window == u"delete all") {
            fixture.add(QStringLiteral("NAS"));
            return (new ServerMenu(*fixture.context))->confirmDeleteAll();
        }
        // "editor N": the connection editor with the Nth method picked
        auto *editor = new ConnectionEditor(*fixture.context);
        editor->methodPicker()->setCurrentIndex(window.back().digitValue());
        return editor;
    }

private Q_SLOTS:
    // A list kept from the last time shows at once, marked "Updating…" without transfer figures and
    // with the torrent commands off, until the server's first answer replaces it.
    void keptListWhileConnecting()
    {
        ConnectionFixture fixture(m_keychain);
        const ClientConfiguration nas = fixture.add(QStringLiteral("Home NAS"));
        TntCollection kept;
        kept.replaceAll(TntCollection::build({{u"a"_qs, {.name = u"Kept"_qs, .state = TntModel::State::uploading}}}, 5));
        QDir().mkpath(fixture.context->snapshots().directory());
        QFile file(fixture.context->snapshots().pathOf(nas.id));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(TntSnapshot::encode(kept, ServerLabels(), TrackerIndex()));
        file.close();

        MainWindow window(*fixture.context);
        window.show();
        QuilloTest::wait(fixture.context->selectConfiguration(nas.id)); // stops at the login prompt
        QTRY_COMPARE(fixture.context->tntCollection().size(), 1);
        fixture.context->setSelectedTnts({u"a"_qs});
        QAction *start = window.tntActions()->action(TntActions::Id::start);
        QTRY_VERIFY(window.updatingNote()->isVisible());
        QCOMPARE(window.updatingNote()->text(), u"Updating…"_qs);
        QVERIFY(!window.transferStatus()->isVisible());
        QVERIFY(!start->isEnabled());

        QuilloTest::wait(fixture.context->logIn(QuilloTest::admin, false));
        QVERIFY(fixture.context->isCurrent());
        QVERIFY(!window.updatingNote()->isVisible());
        QVERIFY(window.transferStatus()->isVisible());
        QCOMPARE(fixture.context->tntCollection().size(), 0); // the server lists none
    }

    void shownTextsAreExact_data()
    {
        QTest::addColumn<QString>("window");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *window, const char *text) {
            QTest::addRow("%s / %s", window, text) << QString::fromUtf8(window) << QString::fromUtf8(text);
        };
        row("login", "title: Login");
        row("login", "label: Enter your credentials");
        row("login", "button: Login automatically");
        row("login", "disabled button: Log In"); // until credentials are typed
        row("login", "button: Cancel");
        row("overlay", "button: Reconnect now");
        row("editor 0", "title: New Connection");
        row("editor 0", "label: Describe how Quillo will connect to your qbt server");
        row("editor 0", "label: Name");
        row("editor 0", "placeholder: Optional");
        row("editor 0", "label: Host");
        row("editor 0", "placeholder: 192.168.1.1");
        row("editor 0", "label: Port");
        row("editor 0", "placeholder: 9080");
        row("editor 0", "label: Path");
        row("editor 0", "button: Use HTTPS");
        row("editor 0", "group: Authentication");
        row("editor 0", "button: Cancel");
        row("editor 0", "label: Use only when qBittorrent bypasses WebUI authentication for this client.");
        row("editor 1", "label: Classic qBittorrent login. Quillo sends username and password to /api/v2/auth/login "
                        "and then uses the session cookie.");
        row("editor 2", "label: qBittorrent 5.2+ can accept username and password in the HTTP Authorization header.");
        row("editor 3",
            "label: qBittorrent 5.2+ WebAPI access with Authorization: Bearer. It does not use login/logout cookies.");
        row("delete all", "label: Delete all remote connections?");
        row("delete all", "label: All remote connections and their saved passwords will be deleted. This action "
                          "can't be undone.");
        row("delete all", "button: Delete All");
        row("delete all", "button: Cancel");
        row("welcome", "label: Welcome to Quillo");
        row("welcome", "label: Connect to qBittorrent to start managing your torrents.");
        row("welcome", "button: Connect to a Server");
        row("welcome", "button: Use qBittorrent running on another computer or a NAS.");
        row("welcome", "button: Install on This Computer");
        row("welcome", "button: Download qBittorrent and run it in the background.");
    }

    void shownTextsAreExact()
    {
        QFETCH(QString, window);
        QFETCH(QString, text);
        ConnectionFixture fixture(m_keychain);
        QWidget *shown = open(window, fixture);
        QVERIFY(shown);
        const QStringList texts = shownTexts(*shown);
        QVERIFY2(texts.contains(text), qPrintable(texts.join(u'|')));
    }

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
        QTest::addColumn<bool>("login");
        QTest::addColumn<bool>("key");
        const auto row = [](AuthMethod method, const char *label, const char *title, bool login, bool key) {
            QTest::newRow(label) << method << QString::fromUtf8(label) << QString::fromUtf8(title) << login << key;
        };
        row(AuthMethod::none, "No Authentication", "No Authentication", false, false);
        row(AuthMethod::cookieLogin, "Standard Login", "Standard Login", true, false);
        row(AuthMethod::basic, "Basic Auth", "Basic Auth", true, false);
        row(AuthMethod::apiKey, "API Key", "API Key", false, true);
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
        QTEST(editor.usernameField()->isVisibleTo(&editor), "login");
        QTEST(editor.passwordField()->isVisibleTo(&editor), "login");
        QTEST(editor.apiKeyField()->isVisibleTo(&editor), "key");
    }

    void refusesADuplicateAndKeepsTheInput_data()
    {
        QTest::addColumn<int>("method"); // index in the picker
        QTest::addColumn<bool>("duplicate");
        QTest::newRow("same address and method") << 1 << true;
        QTest::newRow("another method is another connection") << 2 << false;
    }

    void refusesADuplicateAndKeepsTheInput()
    {
        QFETCH(int, method);
        QFETCH(bool, duplicate);
        ConnectionFixture fixture(m_keychain);
        const ClientConfiguration existing = fixture.add(QStringLiteral("NAS"), AuthMethod::cookieLogin);
        ConnectionEditor editor(*fixture.context);
        editor.show();
        type(editor.nameField(), QStringLiteral("NAS"));
        type(editor.hostField(), existing.host);
        type(editor.portField(), QString::number(*existing.port));
        editor.methodPicker()->setCurrentIndex(method);
        QTest::mouseClick(editor.saveButton(), Qt::LeftButton);

        if (!duplicate) {
            QTRY_COMPARE(fixture.context->clientConfigurations().size(), 2);
            return;
        }
        QCOMPARE(editor.saveErrorLabel()->text(), QStringLiteral("Server with these settings already exists!"));
        QVERIFY(editor.saveErrorLabel()->isVisible());
        QVERIFY(editor.isVisible());
        QCOMPARE(editor.hostField()->text(), existing.host);
        QCOMPARE(fixture.context->clientConfigurations().size(), 1);
    }

    void welcomeViewAddsAndOpensAConnection()
    {
        ConnectionFixture fixture(m_keychain);
        fixture.qbt.bypass = true;
        MainWindow window(*fixture.context);
        window.show();
        QVERIFY(window.welcomeView()->isVisible());
        QVERIFY(!window.toolBar()->isVisible());

        QTest::mouseClick(window.welcomeView()->connectToServerButton(), Qt::LeftButton);
        auto *editor = window.findChild<ConnectionEditor *>();
        QVERIFY(editor);
        QCOMPARE(editor->windowTitle(), QStringLiteral("New Connection"));
        editor->methodPicker()->setCurrentIndex(2); // Basic Auth
        type(editor->hostField(), QStringLiteral("127.0.0.1"));
        type(editor->portField(), QString::number(fixture.server.port()));
        type(editor->usernameField(), QStringLiteral("admin"));
        type(editor->passwordField(), QStringLiteral("pässword"));
        QTest::mouseClick(editor->saveButton(), Qt::LeftButton);

        QTRY_VERIFY(fixture.context->isPolling()); // connected, nothing left in flight
        const ClientConfiguration saved = *fixture.context->clientConfiguration();
        QCOMPARE(saved.host, QStringLiteral("127.0.0.1"));
        QCOMPARE(saved.authMethod, AuthMethod::basic);
        QVERIFY(!window.welcomeView()->isVisible());
        QVERIFY(window.toolBar()->isVisible());
        // The password went to the keychain.
        QCOMPARE(QuilloTest::wait(m_keychain.read(saved)),
                 std::optional(API::UserCredentials{QStringLiteral("admin"), QStringLiteral("pässword"), {}}));
        QuilloTest::wait(m_keychain.remove(saved));
    }

    // What an edit leaves of a saved connection's password: only clearing it, or choosing a method
    // that takes none, lets it go; a new address or method moves it to the new keychain item.
    void editingKeepsThePassword_data()
    {
        QTest::addColumn<EditorEdit>("edit");
        QTest::addColumn<StoredCredentials>("stored");
        const API::UserCredentials admin{QStringLiteral("admin"), QStringLiteral("pässword"), {}};
        const auto pick = [](AuthMethod method) {
            return [method](ConnectionEditor &editor) {
                editor.methodPicker()->setCurrentIndex(static_cast<int>(method));
            };
        };
        QTest::newRow("name") << EditorEdit([](ConnectionEditor &e) { type(e.nameField(), QStringLiteral("Attic")); })
                              << StoredCredentials(admin);
        QTest::newRow("port") << EditorEdit([](ConnectionEditor &e) { type(e.portField(), QStringLiteral("9999")); })
                              << StoredCredentials(admin);
        QTest::newRow("path") << EditorEdit([](ConnectionEditor &e) { type(e.pathField(), QStringLiteral("/qbt")); })
                              << StoredCredentials(admin);
        QTest::newRow("https") << EditorEdit([](ConnectionEditor &e) { e.httpsToggle()->setChecked(true); })
                               << StoredCredentials(admin);
        QTest::newRow("basic") << EditorEdit(pick(AuthMethod::basic)) << StoredCredentials(admin);
        QTest::newRow("none") << EditorEdit(pick(AuthMethod::none)) << StoredCredentials();
        QTest::newRow("password cleared") << EditorEdit([](ConnectionEditor &e) {
            e.passwordField()->selectAll();
            QTest::keyClick(e.passwordField(), Qt::Key_Backspace);
        })
                                          << StoredCredentials();
        QTest::newRow("password typed anew")
            << EditorEdit([](ConnectionEditor &e) { type(e.passwordField(), QStringLiteral("new one")); })
            << StoredCredentials(API::UserCredentials{QStringLiteral("admin"), QStringLiteral("new one"), {}});
    }

    void editingKeepsThePassword()
    {
        QFETCH(EditorEdit, edit);
        QFETCH(StoredCredentials, stored);
        ConnectionFixture fixture(m_keychain);
        const ClientConfiguration nas = fixture.add(QStringLiteral("NAS"));
        const API::UserCredentials admin{QStringLiteral("admin"), QStringLiteral("pässword"), {}};
        QVERIFY(QuilloTest::wait(m_keychain.save(nas, admin)));
        auto *editor = new ConnectionEditor(*fixture.context, nas);
        QTRY_COMPARE(editor->passwordField()->text(), admin.password); // shown, masked
        edit(*editor);
        QTest::mouseClick(editor->saveButton(), Qt::LeftButton);
        QTRY_COMPARE(editor->result(), int(QDialog::Accepted));
        const ClientConfiguration saved = fixture.context->clientConfigurations().constFirst();
        QCOMPARE(QuilloTest::wait(m_keychain.read(saved)), stored);
        if (KeychainStore::service(saved) != KeychainStore::service(nas))
            QCOMPARE(QuilloTest::wait(m_keychain.read(nas)), StoredCredentials());
        QuilloTest::wait(m_keychain.remove(saved));
        QuilloTest::wait(m_keychain.remove(nas));
    }

    // The server menu edits the connection in use, and the window reconnects with what was saved.
    void editingTheConnectionInUse()
    {
        ConnectionFixture fixture(m_keychain);
        fixture.qbt.bypass = true;
        const ClientConfiguration nas = fixture.add(QStringLiteral("NAS"), AuthMethod::none);
        MainWindow window(*fixture.context);
        QuilloTest::wait(fixture.context->selectConfiguration(nas.id));
        QAction *edit = entry(*window.serverMenu(), QStringLiteral("Edit Connection…"));
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
    void loginPromptLogsIn()
    {
        ConnectionFixture fixture(m_keychain);
        MainWindow window(*fixture.context);
        LoginPrompt *prompt = askForLogin(fixture, window);
        QVERIFY(prompt && prompt->isVisible());
        QCOMPARE(prompt->autoLoginHelpLabel()->text(),
                 QStringLiteral("If you enable the Login automatically option, credentials will be safely stored in "
                                "the keychain. This allows you to connect to Home NAS without entering credentials "
                                "on any device."));
        QVERIFY(!prompt->apiKeyField());
        QVERIFY(!prompt->logInButton()->isEnabled());

        prompt->autoLoginToggle()->setChecked(false);
        QTest::keyClicks(prompt->usernameField(), QStringLiteral("admin"));
        type(prompt->passwordField(), QuilloTest::admin.password);
        QTest::mouseClick(prompt->logInButton(), Qt::LeftButton);
        QTRY_VERIFY(fixture.context->isPolling()); // connected, nothing left in flight
        QVERIFY(!window.loginPrompt() || !window.loginPrompt()->isVisible());
        QVERIFY(!fixture.context->clientConfiguration()->autoLogin);
    }

    void cancellingTheLoginLeavesTheConnectionSelected()
    {
        ConnectionFixture fixture(m_keychain);
        MainWindow window(*fixture.context);
        QTest::mouseClick(askForLogin(fixture, window)->cancelButton(), Qt::LeftButton);

        QTRY_VERIFY(!window.loginPrompt());
        QVERIFY(!fixture.context->isLoginPromptPresented());
        QCOMPARE(fixture.context->clientConfiguration()->name, QStringLiteral("Home NAS"));
        QVERIFY(!fixture.context->isAuthorized());
        QVERIFY(!fixture.context->clientError());
        QVERIFY(!window.errorPresenter()->alert());
        QCOMPARE(window.logInOutAction()->text(), QStringLiteral("Log In"));
        // With nothing stored, nothing was tried before the prompt.
        QVERIFY(std::none_of(fixture.server.requests().cbegin(), fixture.server.requests().cend(),
                             [](const auto &request) { return request.target.endsWith("/auth/login"); }));
    }

    void refusedLoginAlertsAndAsksAgain()
    {
        ConnectionFixture fixture(m_keychain);
        MainWindow window(*fixture.context);
        LoginPrompt *prompt = askForLogin(fixture, window);
        QTest::keyClicks(prompt->usernameField(), QStringLiteral("admin"));
        QTest::keyClicks(prompt->passwordField(), QStringLiteral("wrong"));
        QTest::mouseClick(prompt->logInButton(), Qt::LeftButton);

        QTRY_VERIFY(window.errorPresenter()->alert());
        const QMessageBox *alert = window.errorPresenter()->alert();
        const API::ClientError error = *fixture.context->clientError();
        QCOMPARE(alert->windowTitle(), QStringLiteral("Quillo"));
        QCOMPARE(alert->text(), QStringLiteral("Failed to login."));
        QCOMPARE(alert->informativeText(), error.description() + u'\n' + error.failureReason());
        QTRY_VERIFY(window.loginPrompt() && window.loginPrompt()->isVisible());
        alert->button(QMessageBox::Ok)->click();
        QVERIFY(!fixture.context->clientError());
    }

    // The certificate the server presents is trusted nowhere: the question shows it, declining
    // leaves the connection saved and unconnected with a message, trusting connects and keeps it.
    void certificateQuestion_data()
    {
        QTest::addColumn<bool>("trust");
        QTest::newRow("declined") << false;
        QTest::newRow("trusted") << true;
    }

    void certificateQuestion()
    {
        QFETCH(bool, trust);
        QString whyNot;
        const auto tls = FakeServer::selfSignedTls(&whyNot);
        QVERIFY2(tls, qPrintable(whyNot));
        ConnectionFixture fixture(m_keychain);
        fixture.qbt.bypass = true;
        fixture.server.setTls(tls);
        ClientConfiguration nas = fixture.server.configuration(AuthMethod::none);
        nas.useHTTPS = true;
        fixture.context->addConfiguration(nas);
        MainWindow window(*fixture.context);
        window.show();
        QuilloTest::wait(fixture.context->selectConfiguration(nas.id));

        QMessageBox *question = nullptr;
        QTRY_VERIFY((question = window.findChild<QMessageBox *>(QStringLiteral("certificateQuestion"))));
        const QString sha256 = QString::fromLatin1(tls->certificate.digest(QCryptographicHash::Sha256).toHex());
        QCOMPARE(question->windowTitle(), QStringLiteral("Trust the server's certificate?"));
        const QString message = question->text();
        QVERIFY2(message.startsWith(QStringLiteral("127.0.0.1:%1 presented a certificate that this system does "
                                                   "not trust (").arg(fixture.server.port())), qPrintable(message));
        QVERIFY(message.contains(QStringLiteral("SHA-256: ") + API::ServerCertificate::displayFingerprint(sha256) + u'\n'));
        QVERIFY(message.contains(QStringLiteral("\nSubject: CN=127.0.0.1\n")));
        QVERIFY(message.contains(QStringLiteral("\nValid from ") +
                                 tls->certificate.effectiveDate().toUTC().toString(QStringLiteral("yyyy-MM-dd HH:mm"))));
        QCOMPARE(question->defaultButton()->text(), QStringLiteral("Don't Connect"));
        QVERIFY(!fixture.context->isAuthorized());

        const QString button = trust ? QStringLiteral("Trust Certificate") : QStringLiteral("Don't Connect");
        const QList<QAbstractButton *> buttons = question->buttons();
        const auto clicked = std::find_if(buttons.cbegin(), buttons.cend(),
                                          [&button](const QAbstractButton *b) { return b->text() == button; });
        QVERIFY(clicked != buttons.cend());
        (*clicked)->click();

        if (trust) {
            QTRY_VERIFY(fixture.context->isPolling());
            QCOMPARE(fixture.context->clientConfigurations().constFirst().trustedCertificate, sha256);
            QVERIFY(!fixture.context->clientError());
        } else {
            QTRY_VERIFY(window.errorPresenter()->alert());
            QCOMPARE(window.errorPresenter()->alert()->text(), QStringLiteral("Not connected."));
            QCOMPARE(window.errorPresenter()->alert()->informativeText(),
                     QStringLiteral("Quillo did not connect to the server.\nIts certificate was not trusted. The "
                                    "connection is kept: connect to it again to see the certificate and decide anew."));
            QVERIFY(!fixture.context->isAuthorized());
            QCOMPARE(fixture.context->clientConfigurations().size(), 1);
            QVERIFY(fixture.context->clientConfigurations().constFirst().trustedCertificate.isEmpty());
        }
    }

    void serverMenuListsConnections()
    {
        ConnectionFixture fixture(m_keychain);
        fixture.qbt.bypass = true;
        const ClientConfiguration nas = fixture.add(QStringLiteral("NAS & Co"), AuthMethod::none);
        fixture.add(QStringLiteral("Attic"), AuthMethod::none, 1);
        ServerMenu menu(*fixture.context);
        QCOMPARE(menu.title(), QStringLiteral("No Connection"));
        QCOMPARE(entries(menu),
                 QStringList({QStringLiteral("Servers"), QStringLiteral("NAS && Co — Not Connected"),
                              QStringLiteral("Attic — Not Connected"), QStringLiteral("This Computer"),
                              QStringLiteral("Install on This Computer…"), QStringLiteral("Add Connection…"),
                              QStringLiteral("Delete All Connections…"),
                              QStringLiteral("Alt-click a connection to delete it.")}));
        QSignalSpy installing(&menu, &ServerMenu::installLocalRequested);
        entry(menu, QStringLiteral("Install on This Computer…"))->trigger();
        QCOMPARE(installing.size(), 1);
        QVERIFY(!entry(menu, QStringLiteral("Alt-click a connection to delete it."))->isEnabled());

        QuilloTest::wait(fixture.context->selectConfiguration(nas.id));
        QTRY_VERIFY(entry(menu, QStringLiteral("NAS && Co — Connected")));
        QCOMPARE(menu.title(), QStringLiteral("NAS && Co"));
        QVERIFY(entry(menu, QStringLiteral("Attic — Not Connected")));

        // With the local daemon installed, its place offers reinstalling and removing it instead.
        ClientConfiguration local = fixture.server.configuration(AuthMethod::none);
        local.name = QStringLiteral("This Computer");
        local.isLocal = true;
        fixture.context->addConfiguration(local);
        QTRY_VERIFY(entry(menu, QStringLiteral("Reinstall qBittorrent…")));
        const QStringList shown = entries(menu);
        QCOMPARE(shown.mid(shown.indexOf(QStringLiteral("This Computer"))),
                 QStringList({QStringLiteral("This Computer"), QStringLiteral("This Computer — Not Connected"),
                              QStringLiteral("Reinstall qBittorrent…"), QStringLiteral("Delete from This Computer…"),
                              QStringLiteral("Add Connection…"), QStringLiteral("Edit Connection…"),
                              QStringLiteral("Delete All Connections…"),
                              QStringLiteral("Alt-click a connection to delete it.")}));
        QSignalSpy removing(&menu, &ServerMenu::uninstallLocalRequested);
        entry(menu, QStringLiteral("Delete from This Computer…"))->trigger();
        QCOMPARE(removing.size(), 1);
    }

    void serverMenuChoosesOrDeletes_data()
    {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<bool>("deletes");
        QTest::newRow("click") << Qt::KeyboardModifiers() << false;
        QTest::newRow("alt-click") << Qt::KeyboardModifiers(Qt::AltModifier) << true;
    }

    void serverMenuChoosesOrDeletes()
    {
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(bool, deletes);
        ConnectionFixture fixture(m_keychain);
        fixture.qbt.bypass = true;
        fixture.add(QStringLiteral("NAS"), AuthMethod::none);
        const ClientConfiguration attic = fixture.add(QStringLiteral("Attic"), AuthMethod::none);
        ServerMenu menu(*fixture.context);
        menu.popup(QPoint(10, 10));
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        QAction *atticEntry = entry(menu, QStringLiteral("Attic — Not Connected"));
        QTest::mouseClick(&menu, Qt::LeftButton, modifiers, menu.actionGeometry(atticEntry).center());

        if (deletes) {
            QTRY_COMPARE(fixture.context->clientConfigurations().size(), 1);
            QCOMPARE(fixture.context->clientConfigurations().first().name, QStringLiteral("NAS"));
            QVERIFY(!fixture.context->clientConfiguration());
        } else {
            QTRY_VERIFY(fixture.context->isPolling()); // connected, nothing left in flight
            QCOMPARE(fixture.context->clientConfiguration()->id, attic.id);
            QCOMPARE(fixture.context->clientConfigurations().size(), 2);
        }
    }

    void deleteAllAsksFirst_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<int>("remaining");
        QTest::newRow("cancel") << "Cancel" << 2;
        QTest::newRow("delete") << "Delete All" << 0;
    }

    void deleteAllAsksFirst()
    {
        QFETCH(QString, answer);
        QFETCH(int, remaining);
        ConnectionFixture fixture(m_keychain);
        fixture.add(QStringLiteral("NAS"));
        fixture.add(QStringLiteral("Attic"));
        MainWindow window(*fixture.context);
        entry(*window.serverMenu(), QStringLiteral("Delete All Connections…"))->trigger();

        auto *box = window.findChild<QMessageBox *>();
        QVERIFY(box);
        QuilloTest::button(*box, answer)->click();
        QTRY_COMPARE(fixture.context->clientConfigurations().size(), remaining);
    }

    void overlayShowsTheLoss_data()
    {
        QTest::addColumn<int>("losses");
        QTest::addColumn<QString>("error");
        QTest::addColumn<QString>("errorText");
        QTest::addColumn<QString>("countdown");
        const auto row = [](const char *name, int losses, const char *error, const char *errorText, const char *countdown) {
            QTest::newRow(name) << losses << QString::fromUtf8(error) << QString::fromUtf8(errorText)
                                << QString::fromUtf8(countdown);
        };
        // Ten seconds more for every loss, up to the fifth; then it stops trying.
        row("first", 1, "Connection refused", "Connection refused", "Reconnecting in 10 s");
        row("third, no text", 3, "", "An unknown error has occurred", "Reconnecting in 30 s");
        row("fifth", 5, "Host unreachable", "Host unreachable", "Reconnecting in 50 s");
        row("sixth", 6, "Host unreachable", "Host unreachable", "Automatic reconnection stopped");
    }

    void overlayShowsTheLoss()
    {
        QFETCH(int, losses);
        QFETCH(QString, error);
        ConnectionFixture fixture(m_keychain);
        QWidget area;
        // Long ticks: nothing may count down while the texts are read.
        ReconnectionCountdown countdown(*fixture.context, std::chrono::hours(1));
        ReconnectionOverlay overlay(*fixture.context, countdown, &area);
        area.show();
        QVERIFY(!overlay.isVisible());

        loseConnection(*fixture.context, losses, error);
        QVERIFY(overlay.isVisible());
        QTEST(overlay.errorLabel()->text(), "errorText");
        QTEST(overlay.countdownLabel()->text(), "countdown");
    }

    void overlayReconnectsNow_data()
    {
        QTest::addColumn<bool>("serverBack");
        QTest::newRow("server back") << true;
        QTest::newRow("server still gone") << false;
    }

    void overlayReconnectsNow()
    {
        QFETCH(bool, serverBack);
        ConnectionFixture fixture(m_keychain);
        fixture.qbt.bypass = true;
        QuilloTest::wait(fixture.context->selectConfiguration(fixture.add(QStringLiteral("NAS"), AuthMethod::none).id));
        QWidget area;
        ReconnectionCountdown countdown(*fixture.context, std::chrono::hours(1));
        ReconnectionOverlay overlay(*fixture.context, countdown, &area);
        area.show();
        // A cancelled request is no loss.
        loseConnection(*fixture.context, 1, QStringLiteral("cancelled"), QNetworkReply::OperationCanceledError);
        QVERIFY(!overlay.isVisible());
        QVERIFY(fixture.context->isPolling());
        loseConnection(*fixture.context, 1, QStringLiteral("Connection refused"));
        if (!serverBack)
            fixture.server.answerAll(FakeServer::Response::dropConnection());

        QTest::mouseClick(overlay.reconnectButton(), Qt::LeftButton);
        QCOMPARE(overlay.reconnectButton()->text(), QStringLiteral("Reconnecting…"));
        QVERIFY(!overlay.reconnectButton()->isEnabled());
        QTRY_VERIFY(!fixture.context->isReconnecting());
        QCOMPARE(fixture.context->connectionLossCount(), serverBack ? 0 : 2);
        QCOMPARE(overlay.isVisible(), !serverBack);
        QTRY_COMPARE(fixture.context->isPolling(), serverBack);
        if (!serverBack) { // a failed attempt counts as another loss, and waits longer
            QCOMPARE(overlay.countdownLabel()->text(), QStringLiteral("Reconnecting in 20 s"));
            QCOMPARE(fixture.context->clientError()->title(), QStringLiteral("Failed to reconnect."));
            QCOMPARE(fixture.context->clientError()->description(), QStringLiteral("An unexpected error occurred!"));
        }
    }

    void countdownEndsInAReconnection()
    {
        ConnectionFixture fixture(m_keychain);
        fixture.qbt.bypass = true;
        QuilloTest::wait(fixture.context->selectConfiguration(fixture.add(QStringLiteral("NAS"), AuthMethod::none).id));
        ReconnectionCountdown countdown(*fixture.context, std::chrono::milliseconds(2));
        QList<int> shown;
        connect(&countdown, &ReconnectionCountdown::changed, this, [&] {
            if (fixture.context->connectionLossCount() > 0)
                shown << countdown.secondsLeft();
        });
        const auto probes = [&] {
            return std::count_if(fixture.server.requests().cbegin(), fixture.server.requests().cend(),
                                 [](const auto &request) { return request.target.endsWith("/app/version"); });
        };
        const auto probesBefore = probes();
        loseConnection(*fixture.context, 1, QStringLiteral("Connection refused"));

        QTRY_COMPARE(fixture.context->connectionLossCount(), 0);
        QCOMPARE(probes(), probesBefore + 1);
        QTRY_VERIFY(fixture.context->isPolling());
        QCOMPARE(shown.first(), 10);
        QCOMPARE(shown.last(), 0);
        QVERIFY(std::is_sorted(shown.rbegin(), shown.rend()));
        QVERIFY(!countdown.isRunning());
    }
};

QTEST_MAIN(TestConnectionWindows)
#include "tst_connectionwindows.moc"
