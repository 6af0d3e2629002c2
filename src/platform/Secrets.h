#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <stdexcept>

// Generic-password items of the system keychain, one per service text. Implemented once per
// platform (Secrets_linux.cpp: the Secret Service through libsecret). Calls block: run them off the
// main thread.
namespace Platform::Secrets {

struct Item
{
    QString account;
    QByteArray data;
};

struct Failure : std::runtime_error
{
    Failure(int status, const QString &message)
        : std::runtime_error(message.toStdString())
        , code(status)
    {
    }
    int code;
};

// Replaces whatever the service held with one item. `synchronizable` lets the keychain carry the
// item to the user's other devices where the platform can.
void store(const QString &service, const QString &account, const QByteArray &data, bool synchronizable);
std::optional<Item> find(const QString &service);
// True when something was removed.
bool remove(const QString &service);

} // namespace Platform::Secrets
