#pragma once

#include "api/PreferenceTable.h"
#include "ui/SettingsPage.h"

#include <QSet>

#include <QCoroTask>
#include <QPointer>

namespace API {
class Client;
class QBTPreferences;
}
class QComboBox;
class QFormLayout;

// One group of the server's preferences, with a field for each key the server sent. Every edit goes
// straight into the shared record; the window writes the record's edits of all groups at once.
class PreferencesPage : public SettingsPage
{
    Q_OBJECT

public:
    // `client` lists the server's network interfaces and addresses for their pickers.
    PreferencesPage(API::QBTPreferences &record, API::PreferenceGroup group, API::Client *client,
                    QWidget *parent = nullptr);

    bool hasChanges() const override;
    // False while a path the server needs is empty.
    bool isValid() const override;
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
    // The interface and address keys choose from what the server lists, once it has answered.
    QComboBox *picker(const API::PreferenceKey &key);
    QCoro::Task<> listInterfaces();
    QCoro::Task<> listAddresses(QString interfaceValue);

    API::QBTPreferences &m_record;
    API::PreferenceGroup m_group;
    QPointer<API::Client> m_client;
    QFormLayout *m_form;
    QSet<QString> m_emptyRequired;
};
