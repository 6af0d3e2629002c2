#pragma once

#include <QString>

// User notifications of the desktop. Implemented once per platform (Notifications_linux.cpp: the
// freedesktop notification service over D-Bus).
namespace Platform::Notifications {

struct Notification
{
    QString threadId; // notifications of one kind group under it where the desktop groups them
    QString title;
    QString body;
    QString sound; // "Default" for the desktop's own sound
};

// Hands the notification over without waiting for an answer; when no notification service takes
// it, that is logged.
void post(const Notification &notification);

} // namespace Platform::Notifications
