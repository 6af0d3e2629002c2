#pragma once

#include <QIcon>

// The desktop theme's icon by its freedesktop name, else our picture ":/icons/<bundled>.svg" for
// themes that lack it; the picture alone for an empty name.
QIcon themedIcon(QStringView themeName, QStringView bundled);
