#include "api/QBTPreferences.h"

#include "api/Errors.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <stdexcept>

namespace API {

namespace {

QString shown(const QJsonValue &value)
{
    if (value.isString())
        return u'"' + value.toString() + u'"';
    if (value.isObject() || value.isArray())
        return value.isObject() ? u"an object"_qs : u"a list"_qs;
    return QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).chopped(1).mid(1));
}

[[noreturn]] void refuse(const PreferenceKey &key, const QJsonValue &value, const QString &expected)
{
    throw ResponseDecodingError(QCoreApplication::translate("QBTPreferences", "The server's \"%1\" is %2, not %3.")
                                    .arg(key.wireKey, shown(value), expected));
}

std::optional<qint64> wholeNumber(const QJsonValue &value)
{
    if (!value.isDouble())
        return std::nullopt;
    const qint64 whole = value.toInteger();
    if (static_cast<double>(whole) != value.toDouble())
        return std::nullopt;
    return whole;
}

qint64 readWhole(const PreferenceKey &key, const QJsonValue &value)
{
    const auto whole = wholeNumber(value);
    if (!whole)
        refuse(key, value, typeName(key.type));
    return *whole;
}

QString valuesOf(const Enumeration &enumeration)
{
    return u"one of the "_qs + enumeration.name + u" values"_qs;
}

EnumChoice readChoice(const PreferenceKey &key, const QJsonValue &value)
{
    for (const Enumeration *enumeration : key.enumerations) {
        if (enumeration->isNumbered() != value.isDouble())
            continue;
        if (const auto index = enumeration->indexOf(value))
            return {enumeration, *index};
        refuse(key, value, valuesOf(*enumeration));
    }
    refuse(key, value, valuesOf(*key.enumerations.constFirst()));
}

QList<ScanDir> readScanDirs(const PreferenceKey &key, const QJsonValue &value)
{
    if (!value.isObject())
        refuse(key, value, typeName(key.type));
    QList<ScanDir> dirs;
    const QJsonObject map = value.toObject();
    for (auto it = map.constBegin(); it != map.constEnd(); ++it) {
        const QJsonValue target = it.value();
        if (target.isString()) {
            dirs.append({it.key(), ScanDir::SavePath::other, target.toString()});
            continue;
        }
        const auto code = wholeNumber(target);
        if (code != 0 && code != 1)
            throw ResponseDecodingError(
                QCoreApplication::translate("QBTPreferences",
                                            "The server's \"%1\" gives the folder \"%2\" %3, not 0, 1 or a path.")
                    .arg(key.wireKey, it.key(), shown(target)));
        dirs.append(
            {it.key(), *code == 0 ? ScanDir::SavePath::monitoredFolder : ScanDir::SavePath::defaultSavePath, {}});
    }
    return dirs;
}

PreferenceValue read(const PreferenceKey &key, const QJsonValue &value)
{
    switch (key.type) {
    case PreferenceType::boolean:
        if (!value.isBool())
            refuse(key, value, typeName(key.type));
        return value.toBool();
    case PreferenceType::integer: return readWhole(key, value);
    case PreferenceType::string:
        if (!value.isString())
            refuse(key, value, typeName(key.type));
        return value.toString();
    case PreferenceType::real:
        if (!value.isDouble())
            refuse(key, value, typeName(key.type));
        return value.toDouble();
    case PreferenceType::rate: return DataRate{readWhole(key, value)};
    case PreferenceType::enumeration: return readChoice(key, value);
    case PreferenceType::scanDirs: return readScanDirs(key, value);
    }
    Q_UNREACHABLE();
}

QJsonValue written(const QList<ScanDir> &dirs)
{
    QJsonObject map;
    for (const ScanDir &dir : dirs) {
        switch (dir.savePath) {
        case ScanDir::SavePath::monitoredFolder: map.insert(dir.path, 0); break;
        case ScanDir::SavePath::defaultSavePath: map.insert(dir.path, 1); break;
        case ScanDir::SavePath::other: map.insert(dir.path, dir.otherPath); break;
        }
    }
    return map;
}

QJsonValue written(const PreferenceValue &value)
{
    return std::visit(
        [](const auto &v) -> QJsonValue {
            using V = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<V, DataRate>)
                return v.bytesPerSecond;
            else if constexpr (std::is_same_v<V, EnumChoice>)
                return v.selected().raw;
            else if constexpr (std::is_same_v<V, QList<ScanDir>>)
                return written(v);
            else
                return QJsonValue(v);
        },
        value);
}

// The variant's alternative that each type of key holds, in the order of PreferenceType.
constexpr std::size_t alternativeOf(PreferenceType type)
{
    switch (type) {
    case PreferenceType::boolean: return 0;
    case PreferenceType::integer: return 1;
    case PreferenceType::string: return 2;
    case PreferenceType::real: return 3;
    case PreferenceType::rate: return 4;
    case PreferenceType::enumeration: return 5;
    case PreferenceType::scanDirs: return 6;
    }
    return std::variant_npos;
}

// The server holds the folders as a map: in its order, and each folder once.
void sortByPath(QList<ScanDir> &dirs)
{
    std::sort(dirs.begin(), dirs.end(), [](const ScanDir &a, const ScanDir &b) { return a.path < b.path; });
    const auto twice = std::adjacent_find(dirs.cbegin(), dirs.cend(),
                                          [](const ScanDir &a, const ScanDir &b) { return a.path == b.path; });
    if (twice != dirs.cend())
        throw std::invalid_argument("The folder " + twice->path.toStdString() + " is monitored twice.");
}

} // namespace

QString ScanDir::savePathText(SavePath savePath)
{
    switch (savePath) {
    case SavePath::monitoredFolder: return QCoreApplication::translate("Preferences", "Monitored Folder");
    case SavePath::defaultSavePath: return QCoreApplication::translate("Preferences", "Default Save Path");
    case SavePath::other: return QCoreApplication::translate("Preferences", "Other");
    }
    Q_UNREACHABLE();
}

QString ScanDir::savePathHelp()
{
    return QCoreApplication::translate("Preferences", "Path to save torrents by “Monitored Folder“ function");
}

QBTPreferences QBTPreferences::decode(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        throw ResponseDecodingError(error.errorString());
    if (!document.isObject())
        throw ResponseDecodingError(
            QCoreApplication::translate("QBTPreferences", "The preferences are not a JSON object."));

    QBTPreferences preferences;
    const QJsonObject object = document.object();
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        if (const PreferenceKey *key = findPreferenceByWireKey(it.key()))
            preferences.m_read.insert(key->key, read(*key, it.value()));
        else
            preferences.m_unknown.insert(it.key(), it.value());
    }
    preferences.m_values = preferences.m_read;
    return preferences;
}

std::optional<PreferenceValue> QBTPreferences::value(QStringView key) const
{
    const auto found = m_values.constFind(key.toString());
    if (found == m_values.cend())
        return std::nullopt;
    return *found;
}

void QBTPreferences::setValue(QStringView key, PreferenceValue value)
{
    const PreferenceKey *entry = findPreference(key);
    if (!entry)
        throw std::invalid_argument("No preference is called " + key.toString().toStdString() + ".");
    if (!m_values.contains(entry->key))
        throw std::invalid_argument("The server did not send " + entry->key.toStdString() + ": it cannot be changed.");
    if (value.index() != alternativeOf(entry->type))
        throw std::invalid_argument(entry->key.toStdString() + " takes " + typeName(entry->type).toStdString() + ".");
    if (const auto *choice = std::get_if<EnumChoice>(&value);
        choice && (!entry->enumerations.contains(choice->enumeration) || choice->index < 0 ||
                   choice->index >= choice->enumeration->cases.size()))
        throw std::invalid_argument(entry->key.toStdString() + " takes one of its listed values.");
    if (auto *dirs = std::get_if<QList<ScanDir>>(&value))
        sortByPath(*dirs);
    m_values.insert(entry->key, std::move(value));
}

QJsonObject QBTPreferences::changes() const
{
    QJsonObject changed;
    for (auto it = m_values.cbegin(); it != m_values.cend(); ++it) {
        if (m_read.value(it.key()) == it.value())
            continue;
        const PreferenceKey *key = findPreference(it.key());
        changed.insert(key->wireKey, written(it.value()));
        if (const auto partner = m_values.constFind(key->writtenWith); partner != m_values.cend())
            changed.insert(findPreference(partner.key())->wireKey, written(*partner));
    }
    return changed;
}

} // namespace API
