#pragma once

#include "api/Error.h"

// The application's own failures, as opposed to the server's.
class InternalError : public API::Error
{
public:
    enum class Case { serverConfigurationAlreadyExist };

    explicit InternalError(Case kind)
        : API::Error(text(kind), {})
        , m_case(kind)
    {
    }

    Case kind() const { return m_case; }

private:
    static QString text(Case kind)
    {
        switch (kind) {
        case Case::serverConfigurationAlreadyExist: return QStringLiteral("Server with these settings already exists!");
        }
        Q_UNREACHABLE();
    }

    Case m_case;
};
