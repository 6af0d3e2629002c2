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

    // What the server offers for assigning. The rule's own feed URLs and tags the server does not
    // know stay listed; any other category may be typed.
    struct Choices
    {
        QList<Feed> feeds;
        QStringList categories;
        QStringList tags;
    };

    explicit RssRuleForm(QWidget *parent = nullptr);

    void setRule(const API::RssRule &rule, const Choices &choices);
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
    // The first entry: the server's own setting.
    QComboBox *contentLayoutBox() const { return m_contentLayout; }
    QListWidget *tagList() const { return m_tags; }
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
    QComboBox *m_contentLayout;
    QListWidget *m_tags;
    QListWidget *m_feeds;
};
