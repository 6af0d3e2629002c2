#pragma once

#include <QDialog>

class AppContext;
class QDialogButtonBox;
class QPushButton;
class QTabWidget;
class SettingsPage;

// Quillo's settings and the server's preferences in one window that stays open beside the main
// window. Edits are kept until Apply or OK; the last page shown opens again next time.
class SettingsWindow : public QDialog
{
    Q_OBJECT

public:
    explicit SettingsWindow(AppContext &context, QWidget *parent = nullptr);

    QTabWidget *tabs() const { return m_tabs; }
    QPushButton *applyButton() const;
    // The page named `name` ("quillo", "pathMapping", ...), or none.
    SettingsPage *page(const QString &name) const;

    void apply();

private:
    void addPage(SettingsPage *page, const QString &name, const QString &title);
    void showChanges();

    AppContext &m_context;
    QTabWidget *m_tabs;
    QDialogButtonBox *m_buttons;
};
