#pragma once

#include "api/PreferenceTable.h"
#include "ui/SettingsPage.h"

namespace API {
class QBTPreferences;
}
class QFormLayout;

// One group of the server's preferences, with a field for each key the server sent. Every edit goes
// straight into the shared record; the window writes the record's edits of all groups at once.
class PreferencesPage : public SettingsPage
{
    Q_OBJECT

public:
    PreferencesPage(API::QBTPreferences &record, API::PreferenceGroup group, QWidget *parent = nullptr);

    bool hasChanges() const override;
    // Written with the other groups by the window.
    void apply() override {}

    // The field of `key`, none when the server did not send it.
    QWidget *field(const QString &key) const;
    // Shown as KiB/s: the wire's bytes per second are not what users type.
    static constexpr qint64 rateUnit = 1024;

private:
    void addField(const API::PreferenceKey &key);
    QWidget *scanDirsEditor(const API::PreferenceKey &key);
    void set(const API::PreferenceKey &key, const auto &value);

    API::QBTPreferences &m_record;
    API::PreferenceGroup m_group;
    QFormLayout *m_form;
};
