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

// The modifier that turns choosing a connection into deleting it.
inline QString optionClickToDelete()
{
#ifdef Q_OS_MACOS
    return QStringLiteral("Option-click a connection to delete it.");
#else
    return QStringLiteral("Alt-click a connection to delete it.");
#endif
}

} // namespace PlatformTexts
