#pragma once

#include "settings/PathMap.h"
#include "ui/SettingsPage.h"

class AppSettings;
class QPushButton;
class QTreeWidget;

// The list of remote path prefixes and the local folders they live in, in the order they are tried.
class PathMappingPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit PathMappingPage(AppSettings &settings, QWidget *parent = nullptr);

    bool hasChanges() const override;
    void apply() override;

    QTreeWidget *list() const { return m_list; }
    QPushButton *addButton() const { return m_add; }
    QPushButton *removeButton() const { return m_remove; }
    // The editor of the chosen mapping, or of a new one for `remotePath`; open and not modal.
    class EditorSheet *edit(int row = -1, const QString &remotePath = {});

private:
    void showList();

    AppSettings &m_settings;
    QList<PathMap> m_maps;
    QTreeWidget *m_list;
    QPushButton *m_add;
    QPushButton *m_remove;
};
