#pragma once

#include "core/UpdateCheck.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>

class AppSettings;

// The automatic update check: asks the release feed once the interval chosen in the settings has
// passed since the last check, at start and then every few hours, and speaks up only for a newer
// release. A failed check is tried again the next round, in silence: the user did not ask.
class UpdateSchedule : public QObject
{
    Q_OBJECT

public:
    UpdateSchedule(AppSettings &settings, const QUrl &feed, const QVersionNumber &current, QObject *parent = nullptr);

    void start();
    // Checks when due at `now`.
    QCoro::Task<> checkIfDue(QDateTime now);
    static bool isDue(const AppSettings &settings, const QDateTime &now);

Q_SIGNALS:
    void available(const UpdateCheck::Outcome &outcome);

private:
    AppSettings &m_settings;
    UpdateCheck m_check;
    QTimer m_rounds;
    bool m_checking = false;
};
