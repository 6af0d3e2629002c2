#pragma once

#include "api/PreferenceTable.h"

#include <QByteArray>
#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QString>

#include <variant>

namespace API {

// A transfer limit, whole bytes per second on the wire; 0 is no limit.
struct DataRate
{
    qint64 bytesPerSecond = 0;
    friend bool operator==(const DataRate &, const DataRate &) = default;
};

// One row of the monitored-folders editor: where torrent files are watched for, and where their
// torrents are saved. On the wire the map's value is 0, 1, or the other path.
struct ScanDir
{
    enum class SavePath { monitoredFolder, defaultSavePath, other };

    QString path;
    SavePath savePath = SavePath::monitoredFolder;
    QString otherPath; // only for SavePath::other

    static QString savePathText(SavePath savePath);
    static QString savePathHelp();
    friend bool operator==(const ScanDir &, const ScanDir &) = default;
};

// One case of one of the forms a preference's enumeration may take.
struct EnumChoice
{
    const Enumeration *enumeration = nullptr;
    qsizetype index = 0;

    const EnumCase &selected() const { return enumeration->cases.at(index); }
    friend bool operator==(const EnumChoice &, const EnumChoice &) = default;
};

using PreferenceValue = std::variant<bool, qint64, QString, double, DataRate, EnumChoice, QList<ScanDir>>;

// The server's preferences as read, with the user's edits on top. Only keys the server sent are held,
// and only edited keys are written back, so a server that lacks a key, or another client's change
// made in the meantime, is never overwritten. Keys Quillo does not know are kept, never sent.
class QBTPreferences
{
public:
    static QString readFailureTitle() { return QStringLiteral("Failed to get QBt preferences."); }
    static QString writeFailureTitle() { return QStringLiteral("Failed to set QBt preferences."); }

    // Throws ResponseDecodingError naming the key when a value has the wrong type or an enumeration
    // number or word that is not one of its cases.
    static QBTPreferences decode(const QByteArray &json);

    // Empty when the server did not send the key.
    std::optional<PreferenceValue> value(QStringView key) const;
    // Throws std::invalid_argument when the key is unknown, was not sent by the server, the value is
    // not of the key's type, or a folder is monitored twice. Folders are kept in path order.
    void setValue(QStringView key, PreferenceValue value);

    // What the server sent that Quillo has no key for, as sent.
    const QJsonObject &unknownKeys() const { return m_unknown; }

    // The keys whose value differs from what was read, each with the key the server reads it
    // with, in the server's spelling.
    QJsonObject changes() const;
    // After a successful write: the server now holds what `written` carried; edits made since stay
    // changes.
    void acceptChanges(const QBTPreferences &written) { m_read = written.m_values; }

private:
    QHash<QString, PreferenceValue> m_read;
    QHash<QString, PreferenceValue> m_values;
    QJsonObject m_unknown;
};

} // namespace API
