#pragma once

#include <QUrl>

namespace API {

// Decides whether a redirect may be followed. Quillo never follows one to another host or from
// HTTPS down to HTTP; with `followsSameHost` off it follows none at all.
struct RedirectPolicy
{
    bool followsSameHost = false;

    bool allows(const QUrl &from, const QUrl &to) const;
};

} // namespace API
