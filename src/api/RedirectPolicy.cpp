#include "api/RedirectPolicy.h"

namespace API {

bool RedirectPolicy::allows(const QUrl &from, const QUrl &to) const
{
    if (!followsSameHost || from.host().isEmpty() || to.host().isEmpty())
        return false;
    if (from.host().compare(to.host(), Qt::CaseInsensitive) != 0)
        return false;
    const bool fromSecure = from.scheme().compare(u"https", Qt::CaseInsensitive) == 0;
    const bool toSecure = to.scheme().compare(u"https", Qt::CaseInsensitive) == 0;
    return !fromSecure || toSecure;
}

} // namespace API
