#pragma once

#include <QString>

// Where a text names a macOS thing, other platforms say their own thing in the same sentence.
namespace PlatformTexts {

inline QString thisMac()
{
#ifdef Q_OS_MACOS
    return QStringLiteral("This Mac");
#else
    return QStringLiteral("This Computer");
#endif
}

} // namespace PlatformTexts
