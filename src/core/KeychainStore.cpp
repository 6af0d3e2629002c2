#include "core/KeychainStore.h"

#include "platform/Secrets.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QLoggingCategory>
#include <QStringDecoder>
#include <QtConcurrent/QtConcurrentRun>

Q_LOGGING_CATEGORY(lcKeychain, "KeychainSecurity")

using API::AuthMethod;
using API::UserCredentials;

namespace {

QByteArray secretOf(AuthMethod method, const UserCredentials &credentials)
{
    switch (method) {
    case AuthMethod::none: return {};
    case AuthMethod::cookieLogin:
    case AuthMethod::basic: return credentials.password.toUtf8();
    case AuthMethod::apiKey: return credentials.apiKey.toUtf8();
    }
    Q_UNREACHABLE();
}

UserCredentials credentialsOf(AuthMethod method, const Platform::Secrets::Item &item)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString secret = decoder.decode(item.data);
    if (decoder.hasError())
        throw KeychainStore::KeychainError::dataCorrupted();
    switch (method) {
    case AuthMethod::none: return {};
    case AuthMethod::cookieLogin:
    case AuthMethod::basic: return {item.account, secret, {}};
    case AuthMethod::apiKey: return {{}, {}, secret};
    }
    Q_UNREACHABLE();
}

} // namespace

KeychainStore::KeychainError::KeychainError(Case kind, int status, QString description, QString reason)
    : API::Error(std::move(description), std::move(reason))
    , m_case(kind)
    , m_status(status)
{}

KeychainStore::KeychainError KeychainStore::KeychainError::unhandled(int status, const QString &message)
{
    return {Case::unhandled, status,
            QCoreApplication::translate("KeychainStore",
                                        "The keyring is locked, or no keyring service such as GNOME Keyring or "
                                        "KWallet is running. Unlock or start it, then log in again."),
            QCoreApplication::translate("KeychainStore", "Keychain error %1: %2").arg(status).arg(message)};
}

KeychainStore::KeychainError KeychainStore::KeychainError::dataCorrupted()
{
    return {Case::dataCorrupted, 0, QCoreApplication::translate("KeychainStore", "Keychain data is corrupted"),
            QCoreApplication::translate("KeychainStore", "The stored credential is not text.")};
}

KeychainStore::KeychainStore()
    : m_lastFailure(std::make_shared<std::optional<KeychainError>>())
{
}

// One keychain thread for the whole process, never ended: the Secret Service client keeps
// per-thread state that a thread leaves behind when it ends.
QThreadPool &KeychainStore::executor()
{
    static QThreadPool *const pool = [] {
        auto *created = new QThreadPool;
        created->setObjectName(QStringLiteral("app.quillo.Quillo.keychain.executor"));
        created->setMaxThreadCount(1);
        created->setExpiryTimeout(-1);
        return created;
    }();
    return *pool;
}

QString KeychainStore::service(const ClientConfiguration &configuration, bool withAuthMethod)
{
    QString text =
        QStringLiteral("%1://%2:%3/%4")
            .arg(configuration.useHTTPS ? QStringLiteral("https") : QStringLiteral("http"), configuration.host)
            .arg(configuration.port.value_or(0))
            .arg(configuration.path);
    if (withAuthMethod)
        text += u'#' + API::rawText(configuration.authMethod);
    return text;
}

QString KeychainStore::account(AuthMethod method, const UserCredentials &credentials)
{
    switch (method) {
    case AuthMethod::none: return QStringLiteral("No Authentication");
    case AuthMethod::cookieLogin:
    case AuthMethod::basic: return credentials.username;
    case AuthMethod::apiKey: return QStringLiteral("API Key");
    }
    Q_UNREACHABLE();
}

namespace {

// Older versions kept login items under the service without the method. One found there is stored
// under today's name, and only once that copy is kept is the old one deleted.
std::optional<Platform::Secrets::Item> moveOlderItem(const ClientConfiguration &configuration)
{
    const QString older = KeychainStore::service(configuration, false);
    auto item = Platform::Secrets::find(older);
    if (!item)
        return std::nullopt;
    try {
        Platform::Secrets::store(KeychainStore::service(configuration), item->account, item->data,
                                 !configuration.isLocal);
        Platform::Secrets::remove(older);
        qCInfo(lcKeychain, "Item moved to %s", qUtf8Printable(KeychainStore::service(configuration)));
    } catch (const Platform::Secrets::Failure &failure) {
        qCWarning(lcKeychain, "Older item not moved: %s", failure.what());
    }
    return item;
}

// The only coroutine here. The public calls are plain functions that hand their arguments to the
// job: g++ 12 miscounts the copies of a coroutine's parameters captured by a lambda, which freed
// the credentials' text while the caller still held it.
template<typename T>
QCoro::Task<T> resultOf(QFuture<KeychainStore::Outcome<T>> future,
                        std::shared_ptr<std::optional<KeychainStore::KeychainError>> lastFailure)
{
    KeychainStore::Outcome<T> outcome = co_await future;
    *lastFailure = std::move(outcome.failure);
    co_return std::move(outcome.value);
}


} // namespace

QCoro::Task<bool> KeychainStore::save(ClientConfiguration configuration, UserCredentials credentials)
{
    auto job = [configuration = std::move(configuration), credentials = std::move(credentials)]() -> Outcome<bool> {
        const AuthMethod method = configuration.authMethod;
        try {
            Platform::Secrets::store(service(configuration), account(method, credentials),
                                     secretOf(method, credentials), !configuration.isLocal);
            qCInfo(lcKeychain, "Item added/updated in keychain!");
            return {true, {}};
        } catch (const Platform::Secrets::Failure &failure) {
            const KeychainError error = KeychainError::unhandled(failure.code, QString::fromUtf8(failure.what()));
            qCWarning(lcKeychain, "Item not saved to keychain! %s", error.what());
            return {false, error};
        }
    };
    return resultOf(QtConcurrent::run(&executor(), std::move(job)), m_lastFailure);
}

QCoro::Task<std::optional<UserCredentials>> KeychainStore::read(ClientConfiguration configuration)
{
    auto job = [configuration = std::move(configuration)]() -> Outcome<std::optional<UserCredentials>> {
        try {
            auto item = Platform::Secrets::find(service(configuration));
            if (!item && configuration.authMethod == AuthMethod::cookieLogin)
                item = moveOlderItem(configuration);
            if (!item) {
                qCInfo(lcKeychain, "Item not found in keychain! %s", qUtf8Printable(service(configuration)));
                return {std::nullopt, {}};
            }
            return {credentialsOf(configuration.authMethod, *item), {}};
        } catch (const Platform::Secrets::Failure &failure) {
            qCWarning(lcKeychain, "Item not found in keychain! %s", failure.what());
            return {std::nullopt, KeychainError::unhandled(failure.code, QString::fromUtf8(failure.what()))};
        } catch (const KeychainError &error) {
            qCWarning(lcKeychain, "Item not found in keychain! %s", error.what());
            return {std::nullopt, error};
        }
    };
    return resultOf(QtConcurrent::run(&executor(), std::move(job)), m_lastFailure);
}

QCoro::Task<bool> KeychainStore::remove(ClientConfiguration configuration)
{
    auto job = [configuration = std::move(configuration)]() -> Outcome<bool> {
        try {
            if (Platform::Secrets::remove(service(configuration))) {
                qCInfo(lcKeychain, "Item removed from keychain!");
                return {true, {}};
            }
            qCWarning(lcKeychain, "Item not removed from keychain! %s", "no such item");
            return {false, {}};
        } catch (const Platform::Secrets::Failure &failure) {
            qCWarning(lcKeychain, "Item not removed from keychain! %s", failure.what());
            return {false, KeychainError::unhandled(failure.code, QString::fromUtf8(failure.what()))};
        }
    };
    return resultOf(QtConcurrent::run(&executor(), std::move(job)), m_lastFailure);
}
