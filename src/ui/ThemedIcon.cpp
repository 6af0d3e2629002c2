#include "ui/ThemedIcon.h"

// Outside any namespace: the macro declares the resource's registration function.
static void initResources()
{
    Q_INIT_RESOURCE(sidebar);
}

QIcon themedIcon(QStringView themeName, QStringView bundled)
{
    [[maybe_unused]] static const bool registered = (initResources(), true);
    const QIcon picture(QStringLiteral(":/icons/%1.svg").arg(bundled));
    if (themeName.isEmpty())
        return picture;
    const QString name = themeName.toString();
    // Themes of the GNOME family name their monochrome icons with a suffix.
    return QIcon::fromTheme(name, QIcon::fromTheme(name + QStringLiteral("-symbolic"), picture));
}
