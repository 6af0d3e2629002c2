#pragma once

#include <QString>

#include <exception>

namespace API {

// What an alert shows when an operation fails: the operation's own title over the error's texts.
// A failure without an HTTP answer is shown as an unexpected error that quotes the system's message.
class ClientError
{
public:
    ClientError(QString title, const std::exception_ptr &error);

    const QString &title() const { return m_title; }
    const QString &description() const { return m_description; }
    const QString &failureReason() const { return m_failureReason; }
    const QString &recoverySuggestion() const { return m_recoverySuggestion; }

private:
    QString m_title;
    QString m_description;
    QString m_failureReason;
    QString m_recoverySuggestion;
};

} // namespace API
