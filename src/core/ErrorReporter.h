#pragma once

#include "api/ClientError.h"

#include <QObject>

#include <exception>
#include <optional>

// The one failure the user is shown, with the title of what failed.
class ErrorReporter : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    const std::optional<API::ClientError> &current() const { return m_current; }
    void report(const QString &title, const std::exception_ptr &error);
    // A cancelled request is no failure of its own: a log out or a lost connection cancelled it,
    // and they tell the user themselves.
    void reportUnlessCancelled(const QString &title, const std::exception_ptr &error);
    // Once for a failure that repeats, as a poll's does every round.
    void reportOnce(const QString &title, const std::exception_ptr &error);
    void dismiss();

Q_SIGNALS:
    void changed();

private:
    std::optional<API::ClientError> m_current;
};
