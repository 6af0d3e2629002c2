#pragma once

#include "api/RssRecords.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QListWidget;
class QSpinBox;

// One auto-downloading rule's values for editing. What the user leaves alone is written back as it
// came, keys this client does not know included; `edited` says when something changed.
class RssRuleForm : public QWidget
{
    Q_OBJECT

public:
    struct Feed
    {
        QString name;
        QString url;
    };

    explicit RssRuleForm(QWidget *parent = nullptr);

    // `feeds` are the server's, offered for assigning; the rule's own URLs the server does not know
    // stay listed. `categories` are offered; any other text may be typed.
    void setRule(const API::RssRule &rule, const QList<Feed> &feeds, const QStringList &categories);
    // The rule as read with the form's values.
    API::RssRule rule() const;
    bool isEdited() const { return m_edited; }
    void setEdited(bool edited) { m_edited = edited; }

    QCheckBox *enabledBox() const { return m_enabled; }
    QLineEdit *mustContainField() const { return m_mustContain; }
    QLineEdit *mustNotContainField() const { return m_mustNotContain; }
    QCheckBox *regexBox() const { return m_regex; }
    QCheckBox *smartFilterBox() const { return m_smartFilter; }
    QLineEdit *episodeFilterField() const { return m_episodeFilter; }
    QSpinBox *ignoreDaysBox() const { return m_ignoreDays; }
    QComboBox *categoryBox() const { return m_category; }
    QLineEdit *savePathField() const { return m_savePath; }
    // Partly checked: the server's own setting.
    QCheckBox *addStoppedBox() const { return m_addStopped; }
    QListWidget *feedList() const { return m_feeds; }

Q_SIGNALS:
    void edited();

private:
    void markEdited();

    API::RssRule m_rule;
    bool m_edited = false;
    bool m_loading = false;
    QCheckBox *m_enabled;
    QLineEdit *m_mustContain;
    QLineEdit *m_mustNotContain;
    QCheckBox *m_regex;
    QCheckBox *m_smartFilter;
    QLineEdit *m_episodeFilter;
    QSpinBox *m_ignoreDays;
    QComboBox *m_category;
    QLineEdit *m_savePath;
    QCheckBox *m_addStopped;
    QListWidget *m_feeds;
};
