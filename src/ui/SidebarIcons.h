#pragma once

#include "model/SidebarItem.h"

#include <QIcon>

// The window's symbols (the sidebar's, the status bar's flame): each system symbol name stands for
// an icon-theme name, with a bundled picture for themes that lack it.
namespace SidebarIcons {

QString symbolName(const SidebarItem &item);
// The symbol's themed icon, else the bundled one; a null icon for a name that is not ours.
QIcon forSymbol(QStringView symbol);
inline QIcon forItem(const SidebarItem &item)
{
    return forSymbol(symbolName(item));
}

} // namespace SidebarIcons
