#include "api/AuthMethod.h"

namespace API {

QString rawText(AuthMethod method)
{
    switch (method) {
    case AuthMethod::none: return QStringLiteral("none");
    case AuthMethod::cookieLogin: return QStringLiteral("cookieLogin");
    case AuthMethod::basic: return QStringLiteral("basic");
    case AuthMethod::apiKey: return QStringLiteral("apiKey");
    }
    Q_UNREACHABLE();
}

std::optional<AuthMethod> authMethodFromRawText(const QString &text)
{
    for (const AuthMethod method : allAuthMethods) {
        if (rawText(method) == text)
            return method;
    }
    return std::nullopt;
}

bool UserCredentials::isMissing(AuthMethod method) const
{
    switch (method) {
    case AuthMethod::none: return false;
    case AuthMethod::cookieLogin:
    case AuthMethod::basic: return username.isEmpty() || password.isEmpty();
    case AuthMethod::apiKey: return apiKey.isEmpty();
    }
    Q_UNREACHABLE();
}

} // namespace API
