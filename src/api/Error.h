#pragma once

#include <QString>

#include <exception>

namespace API {

// Base of every failure the application reports to the user: what went wrong, why, and what to do.
// Derived types fix the texts at construction, so an error is a plain value that can be copied,
// rethrown across co_await and shown later.
class Error : public std::exception
{
public:
    ~Error() override = default;

    const QString &description() const noexcept { return m_description; }
    const QString &failureReason() const noexcept { return m_failureReason; }
    const QString &recoverySuggestion() const noexcept { return m_recoverySuggestion; }

    const char *what() const noexcept override { return m_what.constData(); }

protected:
    Error(QString description, QString failureReason, QString recoverySuggestion = {});

private:
    QString m_description;
    QString m_failureReason;
    QString m_recoverySuggestion;
    QByteArray m_what;
};

} // namespace API
