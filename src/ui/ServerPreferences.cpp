#include "ui/ServerPreferences.h"

#include "api/Client.h"
#include "api/ClientError.h"
#include "core/AppContext.h"
#include "support/Captured.h"

#include <QPointer>

namespace {

QString failureText(const QString &title, const std::exception_ptr &error)
{
    const API::ClientError shown(title, error);
    QStringList lines{shown.title(), shown.description(), shown.failureReason()};
    lines.removeAll(QString());
    return lines.join(QStringLiteral("\n"));
}

} // namespace

ServerPreferences::ServerPreferences(AppContext &context, QObject *parent)
    : QObject(parent)
    , m_context(context)
{
}

QCoro::Task<> ServerPreferences::read()
{
    const QPointer<ServerPreferences> self = this;
    API::Client *client = m_context.client();
    if (!client || !m_context.isAuthorized())
        co_return;
    QCoro::Task<Captured<API::QBTPreferences>> reading = captured(client->preferences());
    Captured<API::QBTPreferences> answer = co_await std::move(reading);
    if (!self)
        co_return;
    if (answer) {
        m_record = std::move(*answer.value);
        m_failure.clear();
    } else {
        m_failure = failureText(API::QBTPreferences::readFailureTitle(), answer.error);
    }
    Q_EMIT readFinished();
}

QCoro::Task<> ServerPreferences::write()
{
    const QPointer<ServerPreferences> self = this;
    API::Client *client = m_context.client();
    if (!m_record || !client)
        co_return;
    // The window stays editable while the write is under way.
    const API::QBTPreferences written = *m_record;
    QCoro::Task<Captured<void>> writing = captured(client->setPreferences(written));
    const Captured<void> answer = co_await std::move(writing);
    if (!self)
        co_return;
    if (answer) {
        m_record->acceptChanges(written);
        m_failure.clear();
    } else {
        m_failure = failureText(API::QBTPreferences::writeFailureTitle(), answer.error);
    }
    Q_EMIT writeFinished();
}
