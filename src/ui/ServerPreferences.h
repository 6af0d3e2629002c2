#pragma once

#include "api/QBTPreferences.h"

#include <QCoroTask>
#include <QObject>

#include <optional>

class AppContext;

// The open server's preferences while the settings window edits them: read once, edited in place,
// and written as the edited keys only, so what another client changed meanwhile stays.
class ServerPreferences : public QObject
{
    Q_OBJECT

public:
    explicit ServerPreferences(AppContext &context, QObject *parent = nullptr);

    // None until read, or when there is no server to read them from.
    API::QBTPreferences *record() { return m_record ? &*m_record : nullptr; }
    bool hasChanges() const { return m_record && !m_record->changes().isEmpty(); }
    // What the last read or write failed with: its title, description and reason, a line each;
    // empty after a success.
    const QString &failure() const { return m_failure; }

    QCoro::Task<> read();
    // Writes the edits; on failure they stay, to try again.
    QCoro::Task<> write();

Q_SIGNALS:
    void readFinished();
    void writeFinished();

private:
    AppContext &m_context;
    std::optional<API::QBTPreferences> m_record;
    QString m_failure;
};
