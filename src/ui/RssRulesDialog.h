#pragma once

#include "api/RssRecords.h"

#include <QCoroTask>
#include <QDialog>

class AppContext;
class QLabel;
class QListWidget;
class QPushButton;
class QTreeWidget;
class RssRuleForm;

// The server's auto-downloading rules: the list, one rule's values, and the articles the server
// says the saved rule matches. A rule edited is saved when another is chosen and when the dialog
// closes, so no edit is lost.
class RssRulesDialog : public QDialog
{
    Q_OBJECT

public:
    explicit RssRulesDialog(AppContext &context, QWidget *parent = nullptr);

    QListWidget *ruleList() const { return m_list; }
    RssRuleForm *form() const { return m_form; }
    QTreeWidget *matches() const { return m_matches; }
    QPushButton *saveButton() const { return m_save; }

    // Reads the rules again, choosing `select` (or the current one) afterwards.
    QCoro::Task<> reload(QString select = {});
    QCoro::Task<bool> save();

    void done(int result) override;

private:
    void choose(int row);
    QCoro::Task<> showMatches(QString name);
    QCoro::Task<> addRule();
    QCoro::Task<> renameRule();
    QCoro::Task<> removeRule();

    AppContext &m_context;
    QList<API::RssRule> m_rules;
    int m_current = -1;
    QListWidget *m_list;
    RssRuleForm *m_form;
    QTreeWidget *m_matches;
    QLabel *m_status;
    QPushButton *m_save;
    QPushButton *m_rename;
    QPushButton *m_remove;
};
