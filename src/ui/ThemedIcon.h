#pragma once

#include <QIcon>

// The desktop theme's icon by its freedesktop name, else our picture ":/bundled/icons/<bundled>.svg"
// for themes that lack it; the picture alone for an empty name. Our pictures stay out of ":/icons",
// which Qt searches as an icon theme folder: every lookup of a name would walk them too.
QIcon themedIcon(QStringView themeName, QStringView bundled);
