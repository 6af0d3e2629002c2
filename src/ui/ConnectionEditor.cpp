#include "ui/ConnectionEditor.h"

#include "core/AppContext.h"
#include "core/InternalError.h"
#include "core/KeychainStore.h"
#include "support/Detached.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHostAddress>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QUrl>
#include <QVBoxLayout>

using API::AuthMethod;

namespace {

QLabel *makeErrorLabel(QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setWordWrap(true);
    label->setStyleSheet(QStringLiteral("color: #c0392b;"));
    label->hide();
    return label;
}

void showProblem(QLabel *label, const QString &problem)
{
    label->setText(problem);
    label->setVisible(!problem.isEmpty());
}

bool startsWithWebScheme(const QString &text)
{
    return text.startsWith(u"http://", Qt::CaseInsensitive) || text.startsWith(u"https://", Qt::CaseInsensitive);
}

QString withoutBrackets(const QString &host)
{
    if (host.startsWith(u'[') && host.endsWith(u']'))
        return host.mid(1, host.size() - 2);
    return host;
}

bool isHostLabel(const QByteArray &label)
{
    if (label.isEmpty() || label.size() > 63 || label.startsWith('-') || label.endsWith('-'))
        return false;
    return std::all_of(label.begin(), label.end(), [](char c) {
        // The underscore is not in the host name grammar, but container and NAS names use it and
        // resolvers accept it.
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    });
}

// Closes the dialog once the keychain has the credentials (connecting right after reads them),
// unless the dialog is gone by then. The item is found by address and method: when they change,
// the credentials move to the new item, unless the new method takes none of them.
QCoro::Task<> storeCredentialsThenAccept(QPointer<QDialog> dialog, KeychainStore &keychain,
                                         std::optional<ClientConfiguration> previous, ClientConfiguration saved,
                                         API::UserCredentials typed, bool credentialsEdited)
{
    const bool keyChanged = previous && KeychainStore::service(*previous) != KeychainStore::service(saved);
    std::optional<API::UserCredentials> kept;
    if (credentialsEdited || !previous)
        kept = typed; // what the user typed, or cleared
    else if (keyChanged) {
        QCoro::Task<std::optional<API::UserCredentials>> reading = keychain.read(*previous);
        kept = co_await std::move(reading);
    }
    if (kept && (saved.authMethod == AuthMethod::none || kept->isMissing(saved.authMethod)))
        kept.reset();
    if (kept) {
        QCoro::Task<bool> saving = keychain.save(saved, *kept);
        co_await std::move(saving);
    }
    if (previous && (keyChanged || (credentialsEdited && !kept))) {
        QCoro::Task<bool> removing = keychain.remove(*previous);
        co_await std::move(removing);
    }
    if (dialog)
        dialog->accept();
}

} // namespace

ConnectionEditor::ConnectionEditor(AppContext &context, std::optional<ClientConfiguration> editing, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
    , m_editing(std::move(editing))
    , m_name(new QLineEdit(this))
    , m_host(new QLineEdit(this))
    , m_port(new QLineEdit(this))
    , m_path(new QLineEdit(this))
    , m_useHTTPS(new QCheckBox(QCoreApplication::translate("ConnectionEditor", "Use HTTPS"), this))
    , m_method(new QComboBox(this))
    , m_helpTitle(new QLabel(this))
    , m_help(new QLabel(this))
    , m_loginFields(new QWidget(this))
    , m_username(new QLineEdit(this))
    , m_password(new QLineEdit(this))
    , m_apiKeyFields(new QWidget(this))
    , m_apiKey(new QLineEdit(this))
    , m_hostError(makeErrorLabel(this))
    , m_portError(makeErrorLabel(this))
    , m_saveError(makeErrorLabel(this))
{
    setWindowTitle(m_editing ? QCoreApplication::translate("ConnectionEditor", "Edit Connection")
                             : QCoreApplication::translate("ConnectionEditor", "New Connection"));
    setModal(true);

    auto *intro = new QLabel(
        QCoreApplication::translate("ConnectionEditor", "Describe how Quillo will connect to your qbt server"), this);
    intro->setWordWrap(true);

    m_name->setPlaceholderText(QCoreApplication::translate("ConnectionEditor", "Optional"));
    m_host->setPlaceholderText(QStringLiteral("192.168.1.1"));
    m_port->setPlaceholderText(QStringLiteral("9080"));
    m_port->setMaxLength(5);
    m_password->setEchoMode(QLineEdit::Password);
    m_apiKey->setEchoMode(QLineEdit::Password);

    auto *address = new QFormLayout;
    address->addRow(QCoreApplication::translate("ConnectionEditor", "Name"), m_name);
    address->addRow(QCoreApplication::translate("ConnectionEditor", "Host"), m_host);
    address->addRow(QString(), m_hostError);
    address->addRow(QCoreApplication::translate("ConnectionEditor", "Port"), m_port);
    address->addRow(QString(), m_portError);
    address->addRow(QCoreApplication::translate("ConnectionEditor", "Path"), m_path);
    address->addRow(QString(), m_useHTTPS);

    for (const AuthMethod method : API::allAuthMethods)
        m_method->addItem(label(method), static_cast<int>(method));
    QFont titleFont = m_helpTitle->font();
    titleFont.setBold(true);
    m_helpTitle->setFont(titleFont);
    m_help->setWordWrap(true);

    auto *loginForm = new QFormLayout(m_loginFields);
    loginForm->setContentsMargins({});
    loginForm->addRow(QCoreApplication::translate("ConnectionEditor", "Username"), m_username);
    loginForm->addRow(QCoreApplication::translate("ConnectionEditor", "Password"), m_password);
    auto *apiKeyForm = new QFormLayout(m_apiKeyFields);
    apiKeyForm->setContentsMargins({});
    apiKeyForm->addRow(QCoreApplication::translate("ConnectionEditor", "API Key"), m_apiKey);

    auto *authentication = new QGroupBox(QCoreApplication::translate("ConnectionEditor", "Authentication"), this);
    auto *authLayout = new QVBoxLayout(authentication);
    authLayout->addWidget(m_method);
    authLayout->addWidget(m_helpTitle);
    authLayout->addWidget(m_help);
    authLayout->addWidget(m_loginFields);
    authLayout->addWidget(m_apiKeyFields);

    auto *buttons = new QDialogButtonBox(this);
    m_cancel =
        buttons->addButton(QCoreApplication::translate("ConnectionEditor", "Cancel"), QDialogButtonBox::RejectRole);
    m_save = buttons->addButton(QCoreApplication::translate("ConnectionEditor", "Save"), QDialogButtonBox::AcceptRole);
    m_save->setDefault(true);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addLayout(address);
    layout->addWidget(authentication);
    layout->addWidget(m_saveError);
    layout->addWidget(buttons);
    setMinimumWidth(460);

    const ClientConfiguration initial = m_editing.value_or(ClientConfiguration{});
    if (m_editing) {
        m_name->setText(initial.name);
        m_host->setText(initial.host);
        m_port->setText(initial.port ? QString::number(*initial.port) : QString());
        m_path->setText(initial.path);
        m_hostTouched = m_portTouched = true;
    }
    m_useHTTPS->setChecked(initial.useHTTPS);
    m_method->setCurrentIndex(m_method->findData(static_cast<int>(initial.authMethod)));

    connect(m_host, &QLineEdit::textEdited, this, [this] {
        m_hostTouched = true;
        takeAddressApart(false);
        validate();
    });
    connect(m_host, &QLineEdit::editingFinished, this, [this] {
        takeAddressApart(true);
        validate();
    });
    connect(m_port, &QLineEdit::textEdited, this, [this] {
        m_portTouched = true;
        validate();
    });
    connect(m_method, &QComboBox::currentIndexChanged, this, &ConnectionEditor::showMethod);
    for (QLineEdit *field : {m_name, m_path, m_username, m_password, m_apiKey})
        connect(field, &QLineEdit::textEdited, this, [this] { m_saveError->hide(); });
    for (QLineEdit *field : {m_username, m_password, m_apiKey})
        connect(field, &QLineEdit::textEdited, this, [this] { m_credentialsEdited = true; });
    connect(m_useHTTPS, &QCheckBox::toggled, this, [this] { m_saveError->hide(); });
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_save, &QPushButton::clicked, this, &ConnectionEditor::save);

    showMethod();
    validate();
    if (m_editing)
        detached(showStoredCredentials(QPointer<ConnectionEditor>(this), m_context.keychain(), *m_editing));
}

QString ConnectionEditor::label(AuthMethod method)
{
    switch (method) {
    case AuthMethod::none: return QCoreApplication::translate("ConnectionEditor", "No Authentication");
    case AuthMethod::cookieLogin: return QCoreApplication::translate("ConnectionEditor", "Standard Login");
    case AuthMethod::basic: return QCoreApplication::translate("ConnectionEditor", "Basic Auth");
    case AuthMethod::apiKey: return QCoreApplication::translate("ConnectionEditor", "API Key");
    }
    Q_UNREACHABLE();
}

QString ConnectionEditor::helpText(AuthMethod method)
{
    switch (method) {
    case AuthMethod::none:
        return QCoreApplication::translate("ConnectionEditor",
                                           "Use only when qBittorrent bypasses WebUI authentication for this client.");
    case AuthMethod::cookieLogin:
        return QCoreApplication::translate(
            "ConnectionEditor", "Classic qBittorrent login. Quillo sends username and password to /api/v2/auth/login "
                                "and then uses the session cookie.");
    case AuthMethod::basic:
        return QCoreApplication::translate(
            "ConnectionEditor", "qBittorrent 5.2+ can accept username and password in the HTTP Authorization header.");
    case AuthMethod::apiKey:
        return QCoreApplication::translate("ConnectionEditor",
                                           "qBittorrent 5.2+ WebAPI access with Authorization: Bearer. It does not use "
                                           "login/logout cookies.");
    }
    Q_UNREACHABLE();
}

QString ConnectionEditor::hostProblem(const QString &text)
{
    const QString host = text.trimmed();
    if (host.isEmpty())
        return QCoreApplication::translate("ConnectionEditor", "Enter the server's host name or IP address.");
    if (host.contains(QRegularExpression(QStringLiteral("\\s"))))
        return QCoreApplication::translate("ConnectionEditor", "A host name cannot contain spaces.");
    if (host.contains(u"://"))
        return QCoreApplication::translate("ConnectionEditor",
                                           "Enter the host alone, without “http://” or “https://”: use the Use HTTPS "
                                           "option instead.");
    const QString invalid =
        QCoreApplication::translate("ConnectionEditor", "“%1” is not a valid host name or IP address.").arg(host);
    const QString bare = withoutBrackets(host);
    if (QHostAddress().setAddress(bare)) {
        // inet_aton reads "192.168.1" as 192.168.0.1: nobody typing it means that.
        if (!bare.contains(u':') && bare.count(u'.') != 3)
            return invalid;
        return {};
    }
    QByteArray ace = QUrl::toAce(host);
    if (ace.isEmpty() || ace.size() > 253)
        return invalid;
    if (ace.endsWith('.'))
        ace.chop(1);
    const QList<QByteArray> labels = ace.split('.');
    if (!std::all_of(labels.begin(), labels.end(), isHostLabel))
        return invalid;
    // An all-digit last label is a mistyped address, not a name.
    const QByteArray &last = labels.constLast();
    if (std::all_of(last.begin(), last.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return invalid;
    return {};
}

QString ConnectionEditor::portProblem(const QString &text)
{
    const QString port = text.trimmed();
    if (port.isEmpty())
        return QCoreApplication::translate("ConnectionEditor", "Enter the port the WebUI listens on.");
    bool isNumber = false;
    const int value = port.toInt(&isNumber);
    const bool digitsOnly = std::all_of(port.begin(), port.end(), [](QChar c) { return c.isDigit(); });
    if (!isNumber || !digitsOnly || value < 1 || value > 65535)
        return QCoreApplication::translate("ConnectionEditor", "The port must be a number from 1 to 65535.");
    return {};
}

AuthMethod ConnectionEditor::method() const
{
    return static_cast<AuthMethod>(m_method->currentData().toInt());
}

// An address "https://nas.local:8080/qbt", pasted or typed, fills host, port, path and the HTTPS
// option. "nas.local:8080" is split only once the user is done with the field: while typing, the
// port is not complete yet.
void ConnectionEditor::takeAddressApart(bool finished)
{
    const QString text = m_host->text().trimmed();
    if (startsWithWebScheme(text)) {
        const QUrl url(text, QUrl::StrictMode);
        if (!url.isValid() || url.host().isEmpty())
            return;
        m_useHTTPS->setChecked(url.scheme().compare(u"https", Qt::CaseInsensitive) == 0);
        m_host->setText(url.host());
        if (url.port() != -1) {
            m_port->setText(QString::number(url.port()));
            m_portTouched = true;
        }
        QString path = url.path();
        while (path.endsWith(u'/'))
            path.chop(1);
        if (!path.isEmpty())
            m_path->setText(path);
        return;
    }
    static const QRegularExpression hostAndPort(QStringLiteral("^([^:\\s\\[\\]]+):(\\d{1,5})$"));
    const QRegularExpressionMatch match = hostAndPort.match(text);
    if (finished && match.hasMatch()) {
        m_host->setText(match.captured(1));
        m_port->setText(match.captured(2));
        m_portTouched = true;
    }
}

void ConnectionEditor::showMethod()
{
    const AuthMethod current = method();
    m_helpTitle->setText(label(current));
    m_help->setText(helpText(current));
    m_loginFields->setVisible(current == AuthMethod::cookieLogin || current == AuthMethod::basic);
    m_apiKeyFields->setVisible(current == AuthMethod::apiKey);
    m_saveError->hide();
}

void ConnectionEditor::validate()
{
    const QString hostIssue = hostProblem(m_host->text());
    const QString portIssue = portProblem(m_port->text());
    // An untouched empty field is not a mistake yet; the disabled button says enough.
    showProblem(m_hostError, m_hostTouched || !m_host->text().isEmpty() ? hostIssue : QString());
    showProblem(m_portError, m_portTouched || !m_port->text().isEmpty() ? portIssue : QString());
    m_save->setEnabled(hostIssue.isEmpty() && portIssue.isEmpty());
    m_saveError->hide();
}

// What is stored shows in the fields (the secrets masked), so that a credential can be seen kept,
// or cleared; a field the user has typed in meanwhile is left alone.
QCoro::Task<> ConnectionEditor::showStoredCredentials(QPointer<ConnectionEditor> self, KeychainStore &keychain,
                                                      ClientConfiguration editing)
{
    QCoro::Task<std::optional<API::UserCredentials>> reading = keychain.read(std::move(editing));
    const std::optional<API::UserCredentials> stored = co_await std::move(reading);
    if (!self || !stored || self->m_credentialsEdited)
        co_return;
    self->m_username->setText(stored->username);
    self->m_password->setText(stored->password);
    self->m_apiKey->setText(stored->apiKey);
}

ClientConfiguration ConnectionEditor::configurationFromFields() const
{
    ClientConfiguration configuration = m_editing.value_or(ClientConfiguration{});
    configuration.name = m_name->text().trimmed();
    configuration.host = withoutBrackets(m_host->text().trimmed());
    configuration.port = m_port->text().trimmed().toInt();
    configuration.path = m_path->text().trimmed();
    configuration.useHTTPS = m_useHTTPS->isChecked();
    configuration.authMethod = method();
    return configuration;
}

void ConnectionEditor::save()
{
    validate();
    if (!m_save->isEnabled())
        return;
    const ClientConfiguration configuration = configurationFromFields();
    try {
        if (m_editing)
            m_context.updateConfiguration(configuration);
        else
            m_context.addConfiguration(configuration);
    } catch (const InternalError &error) {
        showProblem(m_saveError, error.description());
        return;
    }
    m_saved = configuration;

    const API::UserCredentials typed{m_username->text(), m_password->text(), m_apiKey->text()};
    m_save->setEnabled(false);
    m_cancel->setEnabled(false);
    // Not QCoro::connect: its continuation frees the coroutine's arguments twice under g++ 12.
    detached(storeCredentialsThenAccept(QPointer<QDialog>(this), m_context.keychain(), m_editing, configuration, typed,
                                        m_credentialsEdited));
}
