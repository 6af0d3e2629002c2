#include "core/ConnectionStore.h"

#include "settings/UserDefaults.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcConnections, "ConnectionStore")

namespace {

// Dates are stored as the JSON encoder's default: seconds since 2001-01-01 00:00 UTC.
const QDateTime referenceDate(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);

double encodeDate(const QDateTime &date)
{
    return static_cast<double>(referenceDate.msecsTo(date)) / 1000.0;
}

std::optional<QDateTime> decodeDate(const QJsonValue &value)
{
    if (!value.isDouble())
        return std::nullopt;
    return referenceDate.addMSecs(static_cast<qint64>(std::llround(value.toDouble() * 1000.0)));
}

std::optional<QString> string(const QJsonObject &object, const char *key)
{
    const QJsonValue value = object.value(QLatin1String(key));
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<bool> boolean(const QJsonObject &object, const char *key)
{
    const QJsonValue value = object.value(QLatin1String(key));
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

// Absent is fine; anything but a whole number in the TCP range is not.
bool readPort(const QJsonObject &object, std::optional<int> &port)
{
    const QJsonValue value = object.value(u"port");
    if (value.isUndefined() || value.isNull())
        return true;
    const double number = value.toDouble(-1);
    if (!value.isDouble() || number < 0 || number > 65535 || number != std::floor(number))
        return false;
    port = static_cast<int>(number);
    return true;
}

// Fields shared by both record generations.
bool readCommon(const QJsonObject &object, ClientConfiguration &configuration)
{
    const auto name = string(object, "name");
    const auto host = string(object, "host");
    const auto path = string(object, "path");
    const auto useHTTPS = boolean(object, "useHTTPS");
    const auto isCurrent = boolean(object, "isCurrent");
    const auto autoLogin = boolean(object, "autoLogin");
    const auto addedDate = decodeDate(object.value(u"addedDate"));
    if (!name || !host || !path || !useHTTPS || !isCurrent || !autoLogin || !addedDate ||
        !readPort(object, configuration.port))
        return false;
    configuration.name = *name;
    configuration.host = *host;
    configuration.path = *path;
    configuration.useHTTPS = *useHTTPS;
    configuration.isCurrent = *isCurrent;
    configuration.autoLogin = *autoLogin;
    configuration.addedDate = *addedDate;
    return true;
}

std::optional<ClientConfiguration> decodeOne(const QJsonObject &object)
{
    ClientConfiguration configuration;
    const auto id = string(object, "id");
    const auto method = API::authMethodFromRawText(string(object, "authMethod").value_or(QString()));
    const auto isLocal = boolean(object, "isLocal");
    // Absent in lists saved before certificates could be trusted.
    const QJsonValue trusted = object.value(u"trustedCertificate");
    if (!id || QUuid(*id).isNull() || !method || !isLocal || !(trusted.isUndefined() || trusted.isString())
        || !readCommon(object, configuration))
        return std::nullopt;
    configuration.trustedCertificate = trusted.toString();
    configuration.id = QUuid(*id);
    configuration.authMethod = *method;
    configuration.isLocal = *isLocal;
    return configuration;
}

std::optional<ClientConfiguration> decodeLegacy(const QJsonObject &object)
{
    ClientConfiguration configuration;
    const auto method = API::authMethodFromRawText(string(object, "authMethodRawValue").value_or(QString()));
    if (!method || !readCommon(object, configuration))
        return std::nullopt;
    configuration.authMethod = *method;
    return configuration;
}

// The list cut after its last whole entry and closed again: a file cut short by a crash keeps the
// connections written before the cut.
QByteArray wholeEntries(const QByteArray &json)
{
    int depth = 0;
    bool inString = false;
    bool escaped = false;
    qsizetype lastEntryEnd = -1;
    for (qsizetype at = 0; at < json.size(); ++at) {
        const char c = json.at(at);
        if (inString) {
            if (escaped)
                escaped = false;
            else if (c == '\\')
                escaped = true;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '{' || c == '[') {
            ++depth;
        } else if (c == '}' || c == ']') {
            if (--depth == 1 && c == '}')
                lastEntryEnd = at;
        }
    }
    return lastEntryEnd < 0 ? QByteArrayLiteral("[]") : json.left(lastEntryEnd + 1) + ']';
}

} // namespace

ConnectionStore::ConnectionStore(UserDefaults &defaults)
    : m_defaults(defaults)
{}

QByteArray ConnectionStore::encode(const QList<ClientConfiguration> &configurations)
{
    QJsonArray array;
    for (const ClientConfiguration &configuration : configurations) {
        QJsonObject object{
            {QStringLiteral("id"), configuration.id.toString(QUuid::WithoutBraces).toUpper()},
            {QStringLiteral("name"), configuration.name},
            {QStringLiteral("host"), configuration.host},
            {QStringLiteral("path"), configuration.path},
            {QStringLiteral("useHTTPS"), configuration.useHTTPS},
            {QStringLiteral("isCurrent"), configuration.isCurrent},
            {QStringLiteral("addedDate"), encodeDate(configuration.addedDate)},
            {QStringLiteral("autoLogin"), configuration.autoLogin},
            {QStringLiteral("authMethod"), API::rawText(configuration.authMethod)},
            {QStringLiteral("isLocal"), configuration.isLocal},
        };
        if (configuration.port)
            object.insert(QStringLiteral("port"), *configuration.port);
        if (!configuration.trustedCertificate.isEmpty())
            object.insert(QStringLiteral("trustedCertificate"), configuration.trustedCertificate);
        array.append(object);
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

QList<ClientConfiguration> ConnectionStore::decode(const QByteArray &json, bool *complete)
{
    QList<ClientConfiguration> configurations;
    QJsonDocument document = QJsonDocument::fromJson(json);
    bool everyEntry = document.isArray();
    if (document.isNull())
        document = QJsonDocument::fromJson(wholeEntries(json));
    for (const QJsonValue entry : document.array()) {
        if (const auto configuration = decodeOne(entry.toObject()))
            configurations.append(*configuration);
        else
            everyEntry = false;
    }
    if (complete)
        *complete = everyEntry;
    return configurations;
}

QList<ClientConfiguration> ConnectionStore::load()
{
    migrateLegacyList();
    const QByteArray stored = m_defaults.dataValue(UserDefaultsKey::clientConfigurations);
    if (stored.isEmpty())
        return {};
    bool complete = true;
    auto configurations = decode(stored, &complete);
    m_hasUnreadable = !complete;
    if (m_hasUnreadable)
        qCWarning(lcConnections, "Some saved connections could not be read; they are kept aside unchanged.");
    return configurations;
}

void ConnectionStore::save(const QList<ClientConfiguration> &configurations)
{
    if (m_hasUnreadable) {
        m_defaults.setRawValue(QLatin1String(unreadableBackupKey),
                               m_defaults.dataValue(UserDefaultsKey::clientConfigurations));
        m_hasUnreadable = false;
    }
    m_defaults.setValue(UserDefaultsKey::clientConfigurations, encode(configurations));
    m_defaults.sync();
}

void ConnectionStore::migrateLegacyList()
{
    if (m_defaults.boolValue(UserDefaultsKey::didMigrateServerConfigurationsToDefaults))
        return;
    const QByteArray legacy = m_defaults.rawValue(QLatin1String(legacyKey)).toByteArray();
    if (!legacy.isEmpty()) {
        QList<ClientConfiguration> migrated;
        for (const QJsonValue entry : QJsonDocument::fromJson(legacy).array()) {
            if (const auto configuration = decodeLegacy(entry.toObject()))
                migrated.append(*configuration);
        }
        qCInfo(lcConnections, "Migrated %lld saved connections.", static_cast<long long>(migrated.size()));
        m_defaults.setValue(UserDefaultsKey::clientConfigurations, encode(migrated));
    }
    m_defaults.setValue(UserDefaultsKey::didMigrateServerConfigurationsToDefaults, true);
    m_defaults.sync();
}
