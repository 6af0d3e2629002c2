#pragma once

#include <QJsonValue>
#include <QList>
#include <QString>

#include <optional>
#include <utility>

// What each of the server's preferences is: its key, how its value travels and where the settings
// window shows it. The decoder, the encoder and the window all read this one table.
namespace API {

// One value of an enumeration: its name in code, its value on the wire (a number or a word) and the
// text shown for it.
struct EnumCase
{
    QString name;
    QJsonValue raw;
    QString text;
};

struct Enumeration
{
    QString name;
    QList<EnumCase> cases;
    // Tells translators apart the texts of enumerations that share words ("Default").
    const char *comment = nullptr;

    // The case the server means by `raw`; none when the number or word is not one of the cases.
    std::optional<qsizetype> indexOf(const QJsonValue &raw) const;
    // Whether the cases travel as numbers (else as words).
    bool isNumbered() const { return cases.constFirst().raw.isDouble(); }
};

enum class PreferenceType { boolean, integer, string, real, rate, enumeration, scanDirs };

enum class PreferenceGroup { downloads, connection, speed, bitTorrent, rss, webUi, advanced };

QString groupTitle(PreferenceGroup group);
QString typeName(PreferenceType type);

struct PreferenceKey
{
    QString key;     // in code and in the window: "maxConnecPerTorrent"
    QString wireKey; // in the server's JSON: "max_connec_per_torrent"
    PreferenceType type = PreferenceType::boolean;
    PreferenceGroup group = PreferenceGroup::advanced;
    // For an enumeration, the forms it may arrive in: a server that changed the form of a key (the
    // proxy type became a word in 4.6) is read in either.
    QList<const Enumeration *> enumerations;
    // A key the server reads only together with this one (a limit and its switch, an hour and its
    // minute): a change to either sends both.
    QString writtenWith;
    // The label in the settings window; carries the unit where the value has one the window cannot know.
    QString title;
    // Lowest and highest whole number the server takes, checked before sending; none for other kinds.
    std::optional<std::pair<qint64, qint64>> range;
};

namespace Enumerations {
extern const Enumeration btProtocol;
extern const Enumeration diskIOReadWriteMode;
extern const Enumeration diskIOType;
extern const Enumeration dynDNSService;
extern const Enumeration encryptionMode;
extern const Enumeration maxRatioAction;
extern const Enumeration schedulerDays;
extern const Enumeration uploadChokingAlgorithm;
extern const Enumeration uploadSlotsBehavior;
extern const Enumeration utpTcpMixedMode;
extern const Enumeration proxyType;
extern const Enumeration numberedProxyType; // before qBittorrent 4.6
extern const Enumeration mailNotificationEncryption;
extern const Enumeration tntContentLayout;
extern const Enumeration tntStopCondition;
} // namespace Enumerations

// Every preference Quillo knows, in the record's order.
const QList<PreferenceKey> &preferenceKeys();
const PreferenceKey *findPreference(QStringView key);
const PreferenceKey *findPreferenceByWireKey(QStringView wireKey);

// The server's spelling of a key: an underscore before each capital, which is lowered; digits stay.
QString snakeCased(QStringView key);

} // namespace API
