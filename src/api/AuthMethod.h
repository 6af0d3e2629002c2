#pragma once

#include <QString>

#include <array>
#include <optional>

namespace API {

// Persisted by raw text; the order is the editor's picker order.
enum class AuthMethod { none, cookieLogin, basic, apiKey };

inline constexpr std::array allAuthMethods{AuthMethod::none, AuthMethod::cookieLogin, AuthMethod::basic,
                                           AuthMethod::apiKey};

QString rawText(AuthMethod method);
std::optional<AuthMethod> authMethodFromRawText(const QString &text);

struct UserCredentials
{
    QString username;
    QString password;
    QString apiKey;

    // Whether `method` lacks what it needs to authenticate.
    bool isMissing(AuthMethod method) const;

    friend bool operator==(const UserCredentials &, const UserCredentials &) = default;
};

} // namespace API
