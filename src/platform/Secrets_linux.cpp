#include "platform/Secrets.h"

#include <libsecret/secret.h>

#include <memory>

namespace Platform::Secrets {

namespace {

// Items carry the same two attributes a macOS generic password is found by.
const SecretSchema schema = {"app.quillo.Credentials",
                             SECRET_SCHEMA_DONT_MATCH_NAME,
                             {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
                              {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
                              {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                             0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};

using HashTable = std::unique_ptr<GHashTable, decltype(&g_hash_table_unref)>;

HashTable attributes(const QByteArray &service, const QByteArray *account = nullptr)
{
    HashTable table(g_hash_table_new(g_str_hash, g_str_equal), &g_hash_table_unref);
    g_hash_table_insert(table.get(), const_cast<char *>("service"), const_cast<char *>(service.constData()));
    if (account)
        g_hash_table_insert(table.get(), const_cast<char *>("account"), const_cast<char *>(account->constData()));
    return table;
}

QByteArray accountOf(SecretItem *item)
{
    GHashTable *itemAttributes = secret_item_get_attributes(item);
    const QByteArray account(static_cast<const char *>(g_hash_table_lookup(itemAttributes, "account")));
    g_hash_table_unref(itemAttributes);
    return account;
}

[[noreturn]] void fail(GError *error)
{
    const int code = error ? error->code : -1;
    const QString message = error ? QString::fromUtf8(error->message) : QStringLiteral("unknown keychain failure");
    g_clear_error(&error);
    throw Failure(code, message);
}

} // namespace

void store(const QString &service, const QString &account, const QByteArray &data, bool synchronizable)
{
    Q_UNUSED(synchronizable) // the Secret Service has no notion of synchronised items
    const QByteArray serviceText = service.toUtf8();
    const QByteArray accountText = account.toUtf8();
    const QByteArray label = "Quillo: " + serviceText;
    GError *error = nullptr;
    // Stored before anything is removed, so that a refusal (a locked keyring, a dismissed prompt)
    // leaves the old item as it was. An item of the same service and account is replaced.
    SecretValue *value = secret_value_new(data.constData(), data.size(), "application/octet-stream");
    const gboolean stored = secret_password_storev_binary_sync(&schema, attributes(serviceText, &accountText).get(),
                                                               SECRET_COLLECTION_DEFAULT, label.constData(), value,
                                                               nullptr, &error);
    secret_value_unref(value);
    if (!stored)
        fail(error);

    // One item per service: those of another account are the old ones.
    GList *items = secret_service_search_sync(nullptr, &schema, attributes(serviceText).get(), SECRET_SEARCH_ALL,
                                              nullptr, &error);
    if (error)
        fail(error);
    for (GList *it = items; it && !error; it = it->next) {
        auto *item = static_cast<SecretItem *>(it->data);
        if (accountOf(item) != accountText)
            secret_item_delete_sync(item, nullptr, &error);
    }
    g_list_free_full(items, g_object_unref);
    if (error)
        fail(error);
}

std::optional<Item> find(const QString &service)
{
    const QByteArray serviceText = service.toUtf8();
    GError *error = nullptr;
    const auto flags = static_cast<SecretSearchFlags>(SECRET_SEARCH_LOAD_SECRETS | SECRET_SEARCH_UNLOCK);
    GList *items = secret_service_search_sync(nullptr, &schema, attributes(serviceText).get(), flags, nullptr, &error);
    if (error)
        fail(error);
    std::optional<Item> found;
    if (items) {
        auto *item = static_cast<SecretItem *>(items->data);
        found = Item{QString::fromUtf8(accountOf(item)), {}};
        if (SecretValue *value = secret_item_get_secret(item)) {
            gsize length = 0;
            const gchar *bytes = secret_value_get(value, &length);
            found->data = QByteArray(bytes, static_cast<qsizetype>(length));
            secret_value_unref(value);
        }
    }
    g_list_free_full(items, g_object_unref);
    return found;
}

bool remove(const QString &service)
{
    const QByteArray serviceText = service.toUtf8();
    GError *error = nullptr;
    const gboolean removed = secret_password_clearv_sync(&schema, attributes(serviceText).get(), nullptr, &error);
    if (error)
        fail(error);
    return removed;
}

} // namespace Platform::Secrets
