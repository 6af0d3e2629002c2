#include "api/ClientError.h"

#include "api/Errors.h"

#include <QCoreApplication>

namespace API {

ClientError::ClientError(QString title, const std::exception_ptr &error)
    : m_title(std::move(title))
{
    const auto take = [this](const Error &descriptive) {
        m_description = descriptive.description();
        m_failureReason = descriptive.failureReason();
        m_recoverySuggestion = descriptive.recoverySuggestion();
    };
    try {
        std::rethrow_exception(error);
    } catch (const TransportError &transport) {
        take(NetworkError::unknown(transport));
    } catch (const Error &descriptive) {
        take(descriptive);
    } catch (const std::exception &other) {
        m_description = QString::fromUtf8(other.what());
    } catch (...) {
        m_description = QCoreApplication::translate("ClientError", "An unexpected error occurred!");
    }
}

} // namespace API
