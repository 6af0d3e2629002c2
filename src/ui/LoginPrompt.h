#pragma once

#include "api/AuthMethod.h"

#include <QDialog>

class AppContext;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

// Asks for the selected connection's credentials when none are stored or the server refused them.
// Its answer goes to AppContext::logIn, its cancellation to AppContext::cancelLogin.
class LoginPrompt : public QDialog
{
    Q_OBJECT

public:
    explicit LoginPrompt(AppContext &context, QWidget *parent = nullptr);

    // Closes the prompt because the context no longer asks, without cancelling anything.
    void dismiss();
    void reject() override;

    QLabel *headingLabel() const { return m_heading; }
    QLabel *iconLabel() const { return m_icon; }
    QLineEdit *usernameField() const { return m_username; }
    QLineEdit *passwordField() const { return m_password; }
    QLineEdit *apiKeyField() const { return m_apiKey; }
    QCheckBox *autoLoginToggle() const { return m_autoLogin; }
    QLabel *autoLoginHelpLabel() const { return m_autoLoginHelp; }
    QPushButton *logInButton() const { return m_logIn; }
    QPushButton *cancelButton() const { return m_cancel; }

private:
    API::UserCredentials credentials() const;
    void logIn();

    AppContext &m_context;
    API::AuthMethod m_method;
    QLabel *m_heading;
    QLabel *m_icon;
    QLineEdit *m_username = nullptr;
    QLineEdit *m_password = nullptr;
    QLineEdit *m_apiKey = nullptr;
    QCheckBox *m_autoLogin;
    QLabel *m_autoLoginHelp;
    QPushButton *m_logIn;
    QPushButton *m_cancel;
};
