#pragma once

#include <QDialog>

class AppContext;
class QDialogButtonBox;
class QLabel;
class QPushButton;
class QTabWidget;
class ServerPreferences;
class SettingsPage;

// Quillo's settings and the open server's preferences in one window that stays open beside the
// main window. Edits are kept until Apply or OK; a write the server refuses keeps them, with the
// reason shown. The last page shown opens again next time.
class SettingsWindow : public QDialog
{
    Q_OBJECT

public:
    explicit SettingsWindow(AppContext &context, QWidget *parent = nullptr);

    QTabWidget *tabs() const { return m_tabs; }
    QPushButton *applyButton() const;
    // The page named `name` ("quillo", "pathMapping", "downloads", ...), or none.
    SettingsPage *page(const QString &name) const;
    ServerPreferences &serverPreferences() const { return *m_server; }
    // The failure of the last read or write of the server's preferences; hidden without one.
    QLabel *failureLabel() const { return m_failure; }

    void apply();
    // The path-mapping page shown, with the editor of a new mapping for `remotePath` open on it.
    void beginPathMapping(const QString &remotePath);

private:
    void addPage(SettingsPage *page, const QString &name, const QString &title);
    void showServerPages();
    void showWritten();
    void showChanges();
    void restoreTab();

    AppContext &m_context;
    ServerPreferences *m_server;
    QTabWidget *m_tabs;
    QLabel *m_failure;
    QPushButton *m_retry;
    QDialogButtonBox *m_buttons;
    bool m_closeWhenWritten = false;
};
