#include "core/UpdateSchedule.h"

#include "settings/AppSettings.h"
#include "support/Detached.h"

#include <QLoggingCategory>
#include <QPointer>

Q_LOGGING_CATEGORY(lcUpdateSchedule, "UpdateSchedule")

namespace {

// A computer left running for weeks still looks; a check needs no more than this.
constexpr std::chrono::hours roundInterval{6};

int days(UpdateInterval interval)
{
    switch (interval) {
    case UpdateInterval::disabled: return 0;
    case UpdateInterval::day: return 1;
    case UpdateInterval::weak: return 7;
    case UpdateInterval::mounce: return 30;
    }
    Q_UNREACHABLE();
}

} // namespace

UpdateSchedule::UpdateSchedule(AppSettings &settings, const QUrl &feed, const QVersionNumber &current, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_check(feed, current)
{
    m_rounds.setInterval(roundInterval);
    connect(&m_rounds, &QTimer::timeout, this, [this] { detached(checkIfDue(QDateTime::currentDateTimeUtc())); });
}

void UpdateSchedule::start()
{
    m_rounds.start();
    detached(checkIfDue(QDateTime::currentDateTimeUtc()));
}

bool UpdateSchedule::isDue(const AppSettings &settings, const QDateTime &now)
{
    const int interval = days(settings.updateCheckInterval());
    if (interval == 0)
        return false;
    const QDateTime last = settings.defaults().value(UserDefaultsKey::lastCheckForUpdate).toDateTime();
    // A last check in the future is a clock that was wrong then: check again.
    return !last.isValid() || last > now || last.addDays(interval) <= now;
}

QCoro::Task<> UpdateSchedule::checkIfDue(QDateTime now)
{
    if (m_checking || !isDue(m_settings, now))
        co_return;
    m_checking = true;
    QPointer<UpdateSchedule> self(this);
    const UpdateCheck::Outcome outcome = co_await m_check.check();
    if (!self)
        co_return;
    m_checking = false;
    if (outcome.kind == UpdateCheck::Outcome::Kind::failed) {
        qCWarning(lcUpdateSchedule, "%s", qUtf8Printable(outcome.text));
        co_return;
    }
    m_settings.defaults().setValue(UserDefaultsKey::lastCheckForUpdate, now);
    if (outcome.kind == UpdateCheck::Outcome::Kind::available)
        Q_EMIT available(outcome);
}
