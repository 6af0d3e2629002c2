#pragma once

#include "api/TntAddingOptions.h"

#include <QWidget>

class AppContext;
class QCheckBox;
class QComboBox;
class ShareLimitField;
class QLineEdit;
class QListWidget;
class QSpinBox;

// The choices of the add-torrent window: where, under which category and tags, and how the torrent
// starts. A choice left at "Default" is not sent, so that the server's own setting applies.
class AddTntOptionsForm : public QWidget
{
    Q_OBJECT

public:
    // Category and tags are the server's, preselected from the settings for new torrents.
    AddTntOptionsForm(AppContext &context, const QString &tntName, QWidget *parent = nullptr);

    // The options chosen; whether to start is `startsTnt()`, which depends on the server's version.
    API::TntAddingOptions options() const;
    bool startsTnt() const;

    void setSavePath(const QString &path);
    QLineEdit *savePathField() const { return m_savePath; }

private:
    QLineEdit *m_savePath;
    QCheckBox *m_useDownloadPath;
    QLineEdit *m_downloadPath;
    QComboBox *m_category;
    QListWidget *m_tags;
    QLineEdit *m_rename;
    QComboBox *m_management;
    QComboBox *m_contentLayout;
    QComboBox *m_stopCondition;
    QCheckBox *m_start;
    QCheckBox *m_topOfQueue;
    QCheckBox *m_skipChecking;
    QCheckBox *m_sequential;
    QCheckBox *m_firstLastPiece;
    QSpinBox *m_dlLimit;
    QSpinBox *m_upLimit;
    ShareLimitField *m_ratioLimit;
    ShareLimitField *m_seedingTimeLimit;
};
