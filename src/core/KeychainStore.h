#pragma once

#include "api/AuthMethod.h"
#include "api/Error.h"
#include "core/ClientConfiguration.h"

#include <QCoroTask>
#include <QThreadPool>

#include <memory>
#include <optional>

// The credentials of saved connections, kept only in the system keychain. Every keychain call runs
// on one worker thread, one at a time, so the main thread never waits for a keychain prompt.
class KeychainStore
{
public:
    class KeychainError : public API::Error
    {
    public:
        enum class Case { unhandled, dataCorrupted };

        static KeychainError unhandled(int status, const QString &message);
        static KeychainError dataCorrupted();

        Case kind() const { return m_case; }
        int status() const { return m_status; }

    private:
        KeychainError(Case kind, int status, QString description, QString reason);

        Case m_case;
        int m_status;
    };

    // The jobs copy what they need and never touch the store, so it may go while they run.
    KeychainStore();
    KeychainStore(const KeychainStore &) = delete;
    KeychainStore &operator=(const KeychainStore &) = delete;

    // Failures are logged and reported as `false` or an absent credential: they never touch the
    // connection itself.
    QCoro::Task<bool> save(ClientConfiguration configuration, API::UserCredentials credentials);
    QCoro::Task<std::optional<API::UserCredentials>> read(ClientConfiguration configuration);
    QCoro::Task<bool> remove(ClientConfiguration configuration);
    // Why the call that finished last failed; none when it succeeded or only found nothing. A
    // locked keyring whose prompt was dismissed and a missing keyring service end up here.
    const std::optional<KeychainError> &lastFailure() const { return *m_lastFailure; }

    // "http://192.168.1.10:8080/#basic": the item's service text; without the method it is the form
    // older versions stored login passwords under.
    static QString service(const ClientConfiguration &configuration, bool withAuthMethod = true);
    static QString account(API::AuthMethod method, const API::UserCredentials &credentials);

    template<typename T>
    struct Outcome
    {
        T value;
        std::optional<KeychainError> failure;
    };

private:
    static QThreadPool &executor();

    // Shared with the calls in flight, which outlive a store that goes first.
    std::shared_ptr<std::optional<KeychainError>> m_lastFailure;
};
