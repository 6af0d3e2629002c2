#include "api/Error.h"

namespace API {

Error::Error(QString description, QString failureReason, QString recoverySuggestion)
    : m_description(std::move(description))
    , m_failureReason(std::move(failureReason))
    , m_recoverySuggestion(std::move(recoverySuggestion))
    , m_what(m_failureReason.isEmpty() ? m_description.toUtf8()
                                       : (m_description + QStringLiteral(": ") + m_failureReason).toUtf8())
{
}

} // namespace API
