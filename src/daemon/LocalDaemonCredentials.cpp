#include "daemon/LocalDaemonCredentials.h"

#include <QCryptographicHash>
#include <QPasswordDigestor>

#include <unistd.h>

namespace {

std::optional<QByteArray> randomBytes(qsizetype count)
{
    QByteArray bytes(count, Qt::Uninitialized);
    // getentropy gives at most 256 bytes a call.
    for (qsizetype offset = 0; offset < count; offset += 256) {
        const auto chunk = static_cast<size_t>(std::min<qsizetype>(256, count - offset));
        if (::getentropy(bytes.data() + offset, chunk) != 0)
            return std::nullopt;
    }
    return bytes;
}

// Each character from one random byte; bytes at or above the largest multiple of the alphabet's
// size are drawn again, so no character is likelier than another.
std::optional<QString> drawPassword(const QString &alphabet, int length)
{
    if (alphabet.isEmpty() || alphabet.size() > 256)
        return std::nullopt;
    const int limit = 256 - 256 % static_cast<int>(alphabet.size());
    QString password;
    while (password.size() < length) {
        const std::optional<QByteArray> bytes = randomBytes(2 * length);
        if (!bytes)
            return std::nullopt;
        for (const char byte : *bytes) {
            const int value = static_cast<unsigned char>(byte);
            if (value < limit && password.size() < length)
                password.append(alphabet.at(value % alphabet.size()));
        }
    }
    return password;
}

} // namespace

const QString &LocalDaemonCredentials::alphabet()
{
    static const QString characters = QStringLiteral("23456789ABCDEFGHIJKLMNPQRSTUVWXYZabcdefghjkmnpqrstuvwxyz");
    return characters;
}

std::optional<LocalDaemonCredentials> LocalDaemonCredentials::generate()
{
    const std::optional<QString> password = drawPassword(alphabet(), passwordLength);
    const std::optional<QByteArray> salt = randomBytes(saltLength);
    if (!password || !salt)
        return std::nullopt;
    return LocalDaemonCredentials{*password, hashOf(*password, *salt)};
}

QString LocalDaemonCredentials::hashOf(const QString &password, const QByteArray &salt)
{
    const QByteArray key = QPasswordDigestor::deriveKeyPbkdf2(QCryptographicHash::Sha512, password.toUtf8(), salt,
                                                              hashRounds, keyLength);
    return QStringLiteral("@ByteArray(%1:%2)")
        .arg(QString::fromLatin1(salt.toBase64()), QString::fromLatin1(key.toBase64()));
}
