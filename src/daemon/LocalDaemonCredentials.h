#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// The account Quillo makes for the qBittorrent it installs: a password nobody has to type, and
// the hash qBittorrent keeps for it ("@ByteArray(<salt>:<key>)", PBKDF2-HMAC-SHA-512).
struct LocalDaemonCredentials
{
    static constexpr int passwordLength = 32;
    static constexpr int hashRounds = 100'000;
    static constexpr int keyLength = 64;
    static constexpr int saltLength = 16;

    QString password;
    QString passwordHash;

    // No 0, 1, O, i, l or o: characters read aloud or copied by hand are not mistaken.
    static const QString &alphabet();
    static QString generationFailure() { return QStringLiteral("Quillo couldn't generate a password for qBittorrent."); }

    // None when the system's random source fails.
    static std::optional<LocalDaemonCredentials> generate();
    static QString hashOf(const QString &password, const QByteArray &salt);
};
