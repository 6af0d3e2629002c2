#pragma once

#include "core/ClientConfiguration.h"

#include <QCoroTask>
#include <QDialog>
#include <QPointer>

#include <optional>

class AppContext;
class KeychainStore;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

// Adds a saved connection, or edits one. Host and port are checked as the user types; saving is
// refused until both are valid. Credentials typed here go to the keychain, never to the settings.
class ConnectionEditor : public QDialog
{
    Q_OBJECT

public:
    explicit ConnectionEditor(AppContext &context, std::optional<ClientConfiguration> editing = std::nullopt,
                              QWidget *parent = nullptr);

    // What was saved, once the dialog was accepted.
    const std::optional<ClientConfiguration> &savedConfiguration() const { return m_saved; }

    // The picker's label (also the help panel's title) and the help panel's line for each method.
    static QString label(API::AuthMethod method);
    static QString helpText(API::AuthMethod method);

    // Empty when `host` is usable; otherwise what is wrong with it.
    static QString hostProblem(const QString &host);
    static QString portProblem(const QString &port);

    QLineEdit *nameField() const { return m_name; }
    QLineEdit *hostField() const { return m_host; }
    QLineEdit *portField() const { return m_port; }
    QLineEdit *pathField() const { return m_path; }
    QCheckBox *httpsToggle() const { return m_useHTTPS; }
    QComboBox *methodPicker() const { return m_method; }
    QLabel *helpTitleLabel() const { return m_helpTitle; }
    QLabel *helpLabel() const { return m_help; }
    QLineEdit *usernameField() const { return m_username; }
    QLineEdit *passwordField() const { return m_password; }
    QLineEdit *apiKeyField() const { return m_apiKey; }
    QLabel *hostErrorLabel() const { return m_hostError; }
    QLabel *portErrorLabel() const { return m_portError; }
    QLabel *saveErrorLabel() const { return m_saveError; }
    QPushButton *saveButton() const { return m_save; }
    QPushButton *cancelButton() const { return m_cancel; }

private:
    API::AuthMethod method() const;
    void takeAddressApart(bool finished);
    void showMethod();
    void validate();
    void save();
    ClientConfiguration configurationFromFields() const;
    static QCoro::Task<> showStoredCredentials(QPointer<ConnectionEditor> self, KeychainStore &keychain,
                                               ClientConfiguration editing);

    AppContext &m_context;
    std::optional<ClientConfiguration> m_editing;
    std::optional<ClientConfiguration> m_saved;
    bool m_hostTouched = false;
    bool m_portTouched = false;
    bool m_credentialsEdited = false; // what the credential fields show is no longer what is stored

    QLineEdit *m_name;
    QLineEdit *m_host;
    QLineEdit *m_port;
    QLineEdit *m_path;
    QCheckBox *m_useHTTPS;
    QComboBox *m_method;
    QLabel *m_helpTitle;
    QLabel *m_help;
    QWidget *m_loginFields;
    QLineEdit *m_username;
    QLineEdit *m_password;
    QWidget *m_apiKeyFields;
    QLineEdit *m_apiKey;
    QLabel *m_hostError;
    QLabel *m_portError;
    QLabel *m_saveError;
    QPushButton *m_save;
    QPushButton *m_cancel;
};
