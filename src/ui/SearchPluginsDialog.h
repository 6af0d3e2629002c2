#pragma once

#include <QCoroTask>
#include <QDialog>

#include <functional>

class QLineEdit;
class QPushButton;
class QTreeWidget;
class SearchPlugins;

// The server's search plugins: each with its version, site, categories and whether searches use
// it; installing from a URL or a file on the server's computer, updating all, uninstalling.
class SearchPluginsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SearchPluginsDialog(SearchPlugins &plugins, QWidget *parent = nullptr);

    QTreeWidget *list() const { return m_list; }
    QLineEdit *sourceField() const { return m_source; }
    QPushButton *installButton() const { return m_install; }
    QPushButton *uninstallButton() const { return m_uninstall; }
    QPushButton *updateButton() const { return m_update; }
    // The last failure, as shown under the list; empty after a success.
    QString failure() const;

    void install();
    void uninstallSelected();
    void updateAll();

Q_SIGNALS:
    // A change was sent and the list read again, or it failed.
    void changeEnded();

private:
    void showPlugins();
    void showSelection();
    // Runs one change with the buttons off; a failure is shown under the list.
    void run(const QString &failureTitle, std::function<QCoro::Task<>()> change);

    SearchPlugins &m_plugins;
    QTreeWidget *m_list;
    QLineEdit *m_source;
    QPushButton *m_install;
    QPushButton *m_uninstall;
    QPushButton *m_update;
    class QLabel *m_failure;
    bool m_busy = false;
};
