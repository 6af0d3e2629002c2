#pragma once

#include <QStringList>

// The desktop's file manager and default applications. Implemented once per platform
// (FileManager_linux.cpp: the freedesktop FileManager1 interface over D-Bus).
namespace Platform::FileManager {

// Shows every item selected in its folder, in one request. Without a file manager that offers
// that, each item's folder is opened instead.
void showItems(const QStringList &paths);

// Opens a file with its default application, a folder in the file manager.
void open(const QString &path);

} // namespace Platform::FileManager
