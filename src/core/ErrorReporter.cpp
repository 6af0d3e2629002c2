#include "core/ErrorReporter.h"

#include "api/Errors.h"
#include "support/Captured.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcErrors, "AppContext")

void ErrorReporter::report(const QString &title, const std::exception_ptr &error)
{
    m_current.emplace(title, error);
    qCWarning(lcErrors, "%s %s %s", qUtf8Printable(title), qUtf8Printable(m_current->description()),
              qUtf8Printable(m_current->failureReason()));
    Q_EMIT changed();
}

void ErrorReporter::reportUnlessCancelled(const QString &title, const std::exception_ptr &error)
{
    const auto transport = thrown<API::TransportError>(error);
    if (!transport || !transport->isCancelled())
        report(title, error);
}

void ErrorReporter::reportOnce(const QString &title, const std::exception_ptr &error)
{
    if (!m_current || m_current->title() != title)
        report(title, error);
}

void ErrorReporter::dismiss()
{
    m_current.reset();
    Q_EMIT changed();
}
