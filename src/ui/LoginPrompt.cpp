#include "ui/LoginPrompt.h"

#include "core/AppContext.h"
#include "support/Detached.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

using API::AuthMethod;

namespace {

QIcon lockIcon(const QStyle *style)
{
    // Icon themes name the padlock differently; without any theme the style's own icon stands in.
    for (const char *name : {"system-lock-screen", "changes-prevent"}) {
        const QIcon icon = QIcon::fromTheme(QString::fromLatin1(name));
        if (!icon.isNull())
            return icon;
    }
    return style->standardIcon(QStyle::SP_MessageBoxInformation);
}

QString connectionName(const std::optional<ClientConfiguration> &configuration)
{
    if (!configuration)
        return {};
    return configuration->name.isEmpty() ? configuration->host : configuration->name;
}

} // namespace

LoginPrompt::LoginPrompt(AppContext &context, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
    , m_method(context.clientConfiguration() ? context.clientConfiguration()->authMethod : AuthMethod::cookieLogin)
    , m_heading(new QLabel(QCoreApplication::translate("LoginPrompt", "Enter your credentials"), this))
    , m_icon(new QLabel(this))
    , m_autoLogin(new QCheckBox(QCoreApplication::translate("LoginPrompt", "Login automatically"), this))
    , m_autoLoginHelp(new QLabel(this))
{
    setWindowTitle(QCoreApplication::translate("LoginPrompt", "Login"));
    setModal(true);

    m_icon->setPixmap(lockIcon(style()).pixmap(48, 48));
    QFont headingFont = m_heading->font();
    headingFont.setBold(true);
    m_heading->setFont(headingFont);
    auto *header = new QHBoxLayout;
    header->addWidget(m_icon);
    header->addWidget(m_heading, 1);

    auto *fields = new QFormLayout;
    if (m_method == AuthMethod::cookieLogin || m_method == AuthMethod::basic) {
        m_username = new QLineEdit(this);
        m_password = new QLineEdit(this);
        m_password->setEchoMode(QLineEdit::Password);
        fields->addRow(QCoreApplication::translate("LoginPrompt", "Username"), m_username);
        fields->addRow(QCoreApplication::translate("LoginPrompt", "Password"), m_password);
    } else if (m_method == AuthMethod::apiKey) {
        m_apiKey = new QLineEdit(this);
        m_apiKey->setEchoMode(QLineEdit::Password);
        fields->addRow(QCoreApplication::translate("LoginPrompt", "API Key"), m_apiKey);
    }

    m_autoLogin->setChecked(context.clientConfiguration() && context.clientConfiguration()->autoLogin);
    m_autoLoginHelp->setWordWrap(true);
    m_autoLoginHelp->setText(
        QCoreApplication::translate(
            "LoginPrompt", "If you enable the Login automatically option, credentials will be safely stored in the "
                           "keychain. This allows you to connect to %1 without entering credentials on any device.")
            .arg(connectionName(context.clientConfiguration())));
    QFont helpFont = m_autoLoginHelp->font();
    helpFont.setPointSizeF(helpFont.pointSizeF() * 0.9);
    m_autoLoginHelp->setFont(helpFont);

    auto *buttons = new QDialogButtonBox(this);
    m_cancel = buttons->addButton(QCoreApplication::translate("LoginPrompt", "Cancel"), QDialogButtonBox::RejectRole);
    m_logIn = buttons->addButton(QCoreApplication::translate("LoginPrompt", "Log In"), QDialogButtonBox::AcceptRole);
    m_logIn->setDefault(true);
    connect(m_cancel, &QPushButton::clicked, this, &LoginPrompt::reject);
    connect(m_logIn, &QPushButton::clicked, this, &LoginPrompt::logIn);

    const auto updateLogIn = [this] { m_logIn->setEnabled(!credentials().isMissing(m_method)); };
    for (QLineEdit *field : {m_username, m_password, m_apiKey}) {
        if (field)
            connect(field, &QLineEdit::textChanged, this, updateLogIn);
    }
    updateLogIn();

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(header);
    layout->addLayout(fields);
    layout->addWidget(m_autoLogin);
    layout->addWidget(m_autoLoginHelp);
    layout->addWidget(buttons);
    setMinimumWidth(380);
}

API::UserCredentials LoginPrompt::credentials() const
{
    API::UserCredentials credentials;
    if (m_username)
        credentials.username = m_username->text();
    if (m_password)
        credentials.password = m_password->text();
    if (m_apiKey)
        credentials.apiKey = m_apiKey->text();
    return credentials;
}

void LoginPrompt::logIn()
{
    if (credentials().isMissing(m_method))
        return;
    const API::UserCredentials typed = credentials();
    const bool autoLogin = m_autoLogin->isChecked();
    QDialog::accept();
    detached(m_context.logIn(typed, autoLogin));
}

void LoginPrompt::reject()
{
    // Closed first: cancelling makes the context withdraw the prompt, which would close it again.
    const bool cancelled = m_context.isLoginPromptPresented();
    QDialog::reject();
    if (cancelled)
        m_context.cancelLogin();
}

void LoginPrompt::dismiss()
{
    if (isVisible())
        done(QDialog::Rejected);
}
