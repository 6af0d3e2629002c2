#pragma once

#include "api/Errors.h"
#include "api/Records.h"

#include <QLoggingCategory>
#include <QMutex>
#include <QSet>
#include <QtEndian>

#include <simdjson.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <optional>
#include <string_view>

Q_DECLARE_LOGGING_CATEGORY(lcRecords)

// The value half of the decoder shared by every answer: where it stands, the raw bytes read a word
// at a time, the strings one answer shares, and scalars, optionals and collections under strict
// types. The record half (api/JsonRecords.h) stands on it.
namespace API::JsonDecoding {

namespace od = simdjson::ondemand;

// Where the decoder stands, as a chain on the stack: built into text only when a decode fails.
struct Path
{
    const Path *parent = nullptr;
    std::string_view key;
    std::size_t index = 0;
    bool isIndex = false;
};

inline void appendPath(QString &text, const Path *path)
{
    if (!path)
        return;
    appendPath(text, path->parent);
    if (path->isIndex) {
        text += QLatin1Char('[') + QString::number(path->index) + QLatin1Char(']');
        return;
    }
    if (path->key.empty() && !path->parent)
        return;
    if (!text.isEmpty())
        text += QLatin1Char('.');
    text += QString::fromUtf8(path->key.data(), static_cast<qsizetype>(path->key.size()));
}

[[noreturn]] inline void fail(const Path &path, const QString &what)
{
    QString text;
    appendPath(text, &path);
    throw ResponseDecodingError(text.isEmpty() ? what : text + QStringLiteral(": ") + what);
}

[[noreturn]] inline void fail(const Path &path, simdjson::error_code error)
{
    fail(path, QString::fromUtf8(simdjson::error_message(error)));
}

template<typename T>
T take(simdjson::simdjson_result<T> &&result, const Path &path)
{
    T value;
    if (const auto error = std::move(result).get(value))
        fail(path, error);
    return value;
}

// The value inside a result, in place: copying a field out of its result costs a stall per field
// (a wide load of what was just stored in parts).
template<typename T>
T &inPlace(simdjson::simdjson_result<T> &result, const Path &path)
{
    if (const auto error = result.error())
        fail(path, error);
    return result.value_unsafe();
}

inline od::object objectOf(od::value &value, const Path &path)
{
    od::object object;
    if (const auto error = value.get_object().get(object))
        error == simdjson::INCORRECT_TYPE ? fail(path, QStringLiteral("expected an object")) : fail(path, error);
    return object;
}

inline od::array arrayOf(od::value &value, const Path &path)
{
    od::array array;
    if (const auto error = value.get_array().get(array))
        error == simdjson::INCORRECT_TYPE ? fail(path, QStringLiteral("expected an array")) : fail(path, error);
    return array;
}

inline QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// ---- Raw bytes of the input, read a word at a time. The input is followed by SIMDJSON_PADDING
// bytes, so a word that starts inside a string may run past its closing quote.

inline std::uint64_t wordAt(const char *at)
{
    std::uint64_t word;
    std::memcpy(&word, at, sizeof word);
    if constexpr (std::endian::native == std::endian::big)
        word = qbswap(word);
    return word;
}

// The low `count` bytes (1 to 8) of a word.
inline std::uint64_t lowBytes(std::size_t count)
{
    return count >= 8 ? ~std::uint64_t{0} : (std::uint64_t{1} << (8 * count)) - 1;
}

// The string that starts at `raw`, just past its opening quote, when it holds no escape.
inline std::optional<std::string_view> plainAt(const char *raw)
{
    constexpr std::uint64_t ones = 0x0101010101010101ull;
    constexpr std::uint64_t highs = 0x8080808080808080ull;
    for (std::size_t at = 0;; at += 8) {
        const std::uint64_t word = wordAt(raw + at);
        const std::uint64_t quote = word ^ (ones * '"');
        const std::uint64_t backslash = word ^ (ones * '\\');
        // The lowest byte found is exact; bytes above it may be false hits.
        const std::uint64_t found = (((quote - ones) & ~quote) | ((backslash - ones) & ~backslash)) & highs;
        if (found) {
            const std::size_t end = at + static_cast<std::size_t>(std::countr_zero(found)) / 8;
            if (raw[end] == '\\')
                return std::nullopt;
            return std::string_view(raw, end);
        }
    }
}

// Whether two strings are equal. Both lie in padded buffers (the input, simdjson's string buffer).
inline bool sameBytes(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    std::size_t at = 0;
    for (; at + 8 < a.size(); at += 8) {
        if (wordAt(a.data() + at) != wordAt(b.data() + at))
            return false;
    }
    return a.size() == at || ((wordAt(a.data() + at) ^ wordAt(b.data() + at)) & lowBytes(a.size() - at)) == 0;
}

// Strings of one answer by their bytes; the bytes stay in the input, which outlives the table.
class StringTable
{
public:
    // A fresh string once the table is full: past that many values, they are not shared ones.
    QString intern(std::string_view raw)
    {
        const std::uint64_t hash = hashOf(raw);
        for (std::size_t at = hash;; ++at) {
            Slot &slot = m_slots[at & (m_slots.size() - 1)];
            if (!slot.raw.data()) {
                QString made = toQString(raw);
                if (m_used >= maxUsed)
                    return made;
                slot = {raw, hash, made};
                if (++m_used * 2 > m_slots.size())
                    grow();
                return made;
            }
            if (slot.hash == hash && sameBytes(slot.raw, raw))
                return slot.string;
        }
    }

private:
    struct Slot
    {
        std::string_view raw;
        std::uint64_t hash = 0;
        QString string;
    };
    static constexpr std::size_t maxUsed = 4096;

    static std::uint64_t hashOf(std::string_view raw)
    {
        constexpr std::uint64_t mix = 0x9e3779b97f4a7c15ull;
        std::uint64_t hash = raw.size();
        std::size_t at = 0;
        for (; at + 8 < raw.size(); at += 8)
            hash = (hash ^ wordAt(raw.data() + at)) * mix;
        if (at < raw.size())
            hash = (hash ^ (wordAt(raw.data() + at) & lowBytes(raw.size() - at))) * mix;
        return hash ^ (hash >> 32);
    }

    void grow()
    {
        std::vector<Slot> old(m_slots.size() * 2);
        old.swap(m_slots);
        for (Slot &slot : old) {
            if (!slot.raw.data())
                continue;
            for (std::size_t at = slot.hash;; ++at) {
                Slot &to = m_slots[at & (m_slots.size() - 1)];
                if (!to.raw.data()) {
                    to = std::move(slot);
                    break;
                }
            }
        }
    }

    std::vector<Slot> m_slots = std::vector<Slot>(64);
    std::size_t m_used = 0;
};

// What one decode shares between its records: strings that many torrents repeat (a save path, a
// category, a tracker) are made once and shared, so the records and the models built from them
// hold one copy instead of 50,000.
class Decoding
{
public:
    explicit Decoding(const char *answerEnd)
        : m_answerEnd(answerEnd)
        , m_outer(current)
    {
        current = this;
    }
    ~Decoding() { current = m_outer; }
    Decoding(const Decoding &) = delete;
    Decoding &operator=(const Decoding &) = delete;

    static Decoding *active() { return current; }
    const char *answerEnd() const { return m_answerEnd; }

    // `raw` is a string's bytes in the answer, without escapes.
    QString intern(std::string_view raw)
    {
        if (m_key && sameBytes(raw, m_keyRaw))
            return *m_key;
        return m_strings.intern(raw);
    }
    // The key of the object being read, until the next one: a torrent's "infohash_v1" repeats it.
    void setKey(std::string_view raw, const QString *key)
    {
        m_keyRaw = raw;
        m_key = key;
    }

private:
    static inline thread_local Decoding *current = nullptr;
    const char *m_answerEnd;
    Decoding *m_outer;
    std::string_view m_keyRaw;
    const QString *m_key = nullptr;
    StringTable m_strings;
};

// ---- Scalars. A JSON number is one type: an integer literal reads into a double, but a
// fraction or an exponent never reads into an integer. Nothing converts from strings. The
// readers report a wrong JSON type as an error code so that optional fields can accept null
// without a second look at every value.

Q_ALWAYS_INLINE simdjson::error_code tryRead(od::value &value, const Path &, qint64 &out)
{
    int64_t number = 0;
    const auto error = value.get_int64().get(number);
    out = number;
    return error;
}

Q_ALWAYS_INLINE simdjson::error_code tryRead(od::value &value, const Path &, double &out)
{
    return value.get_double().get(out);
}

Q_ALWAYS_INLINE simdjson::error_code tryRead(od::value &value, const Path &, bool &out)
{
    return value.get_bool().get(out);
}

// Most strings hold no escape: they convert straight from the input, skipping simdjson's unescaped
// copy. Stage 1 has already checked their UTF-8 and control characters.
inline std::optional<std::string_view> plainString(od::value &value)
{
    const std::string_view token = value.raw_json_token();
    if (token.size() < 2 || token.front() != '"')
        return std::nullopt;
    const std::size_t close = token.find_last_of('"');
    const std::string_view raw = token.substr(1, close - 1);
    if (close == 0 || raw.find('\\') != std::string_view::npos)
        return std::nullopt;
    return raw;
}

inline simdjson::error_code tryRead(od::value &value, const Path &, QString &out)
{
    if (const auto raw = plainString(value)) {
        out = toQString(*raw);
        return simdjson::SUCCESS;
    }
    std::string_view text;
    const auto error = value.get_string().get(text);
    if (!error)
        out = toQString(text);
    return error;
}

// Any number is a date; one beyond the calendar shows as no date rather than failing the answer.
Q_ALWAYS_INLINE simdjson::error_code tryRead(od::value &value, const Path &, Date &out)
{
    double seconds = 0;
    if (const auto error = value.get_double().get(seconds))
        return error;
    out = Date(seconds);
    return simdjson::SUCCESS;
}

// A newer server may add a state: such a torrent shows as unknown, and the word is logged once.
inline void logUnknownState(std::string_view word)
{
    static QMutex mutex;
    static QSet<QByteArray> logged;
    const QByteArray text(word.data(), static_cast<qsizetype>(word.size()));
    const QMutexLocker lock(&mutex);
    if (!logged.contains(text)) {
        logged.insert(text);
        qCWarning(lcRecords, "Unknown torrent state \"%s\" read as unknown", text.constData());
    }
}

inline simdjson::error_code tryRead(od::value &value, const Path &, TntModelState &out)
{
    std::string_view word;
    if (const auto error = value.get_string().get(word))
        return error;
    const auto state = tntModelStateFromText(word);
    if (!state)
        logUnknownState(word);
    out = state.value_or(TntModelState::unknown);
    return simdjson::SUCCESS;
}

inline simdjson::error_code tryRead(od::value &value, const Path &path, ConnectionStatus &out)
{
    std::string_view word;
    if (const auto error = value.get_string().get(word))
        return error;
    if (word == "connected")
        out = ConnectionStatus::connected;
    else if (word == "firewalled")
        out = ConnectionStatus::firewalled;
    else if (word == "disconnected")
        out = ConnectionStatus::disconnected;
    else
        fail(path, QStringLiteral("unknown connection status \"%1\"").arg(toQString(word)));
    return simdjson::SUCCESS;
}

inline simdjson::error_code tryRead(od::value &value, const Path &path, TntModelTrackerStatus &out)
{
    qint64 number = 0;
    if (const auto error = tryRead(value, path, number))
        return error;
    const auto status = tntModelTrackerStatusFromValue(number);
    if (!status)
        fail(path, QStringLiteral("unknown tracker status %1").arg(number));
    out = *status;
    return simdjson::SUCCESS;
}

inline simdjson::error_code tryRead(od::value &value, const Path &path, PieceState &out)
{
    qint64 number = 0;
    if (const auto error = tryRead(value, path, number))
        return error;
    if (number < 0 || number > 2)
        fail(path, QStringLiteral("unknown piece state %1").arg(number));
    out = static_cast<PieceState>(number);
    return simdjson::SUCCESS;
}

inline void logUnknownLogLevel(qint64 value)
{
    static QMutex mutex;
    static QSet<qint64> logged;
    const QMutexLocker lock(&mutex);
    if (!logged.contains(value)) {
        logged.insert(value);
        qCWarning(lcRecords, "Unknown log type %lld read as normal", static_cast<long long>(value));
    }
}

inline simdjson::error_code tryRead(od::value &value, const Path &path, LogLevel &out)
{
    qint64 number = 0;
    if (const auto error = tryRead(value, path, number))
        return error;
    switch (number) {
    case 0x1: out = LogLevel::normal; break;
    case 0x2: out = LogLevel::info; break;
    case 0x4: out = LogLevel::warning; break;
    case 0x8: out = LogLevel::critical; break;
    default:
        logUnknownLogLevel(number);
        out = LogLevel::normal;
    }
    return simdjson::SUCCESS;
}

// Only these two words: a job in another state would be one this client cannot follow.
inline simdjson::error_code tryRead(od::value &value, const Path &path, SearchStatus &out)
{
    std::string_view word;
    if (const auto error = value.get_string().get(word))
        return error;
    if (word == "Running")
        out = SearchStatus::running;
    else if (word == "Stopped")
        out = SearchStatus::stopped;
    else
        fail(path, QStringLiteral("unknown search status \"%1\"").arg(toQString(word)));
    return simdjson::SUCCESS;
}

template<typename T>
constexpr const char *expectedText()
{
    if constexpr (std::is_same_v<T, qint64> || std::is_same_v<T, TntModelTrackerStatus> ||
                  std::is_same_v<T, PieceState> || std::is_same_v<T, LogLevel>)
        return "expected an integer";
    else if constexpr (std::is_same_v<T, double> || std::is_same_v<T, Date>)
        return "expected a number";
    else if constexpr (std::is_same_v<T, bool>)
        return "expected a boolean";
    else
        return "expected a string";
}

template<typename T>
[[noreturn]] void failRead(const Path &path, simdjson::error_code error)
{
    switch (error) {
    case simdjson::INCORRECT_TYPE:
    case simdjson::NUMBER_ERROR:
    case simdjson::NUMBER_OUT_OF_RANGE:
        fail(path, QLatin1String(expectedText<T>()));
    default:
        fail(path, error);
    }
}

template<typename T>
concept Scalar = requires(od::value &value, const Path &path, T &out) {
    { tryRead(value, path, out) } -> std::same_as<simdjson::error_code>;
};

template<Scalar T>
void read(od::value &value, const Path &path, T &out)
{
    if (const auto error = tryRead(value, path, out))
        failRead<T>(path, error);
}

template<typename T>
void read(od::value &value, const Path &path, QList<T> &out);
template<typename T>
void read(od::value &value, const Path &path, QHash<QString, T> &out);
template<typename R>
void readRecord(od::value &value, const Path &path, R &out);

inline bool isNull(od::value &value)
{
    bool null = false;
    return !value.is_null().get(null) && null;
}

// Optional fields: a missing key or null leaves them empty; any other value must have the type.
template<typename T>
void read(od::value &value, const Path &path, std::optional<T> &out)
{
    if constexpr (Scalar<T>) {
        const auto error = tryRead(value, path, out.emplace());
        if (!error)
            return;
        if (!isNull(value))
            failRead<T>(path, error);
        out.reset();
    } else {
        if (isNull(value)) {
            out.reset();
            return;
        }
        readRecord(value, path, out.emplace());
    }
}

template<typename T>
void read(od::value &value, const Path &path, Maybe<T> &out)
{
    T decoded{};
    if (const auto error = tryRead(value, path, decoded)) {
        if (!isNull(value))
            failRead<T>(path, error);
        out.reset();
        return;
    }
    out = std::move(decoded);
}

template<typename T>
void read(od::value &value, const Path &path, QList<T> &out)
{
    od::array array = arrayOf(value, path);
    out.clear();
    std::size_t index = 0;
    for (auto element : array) {
        const Path here{&path, {}, index++, true};
        od::value &item = inPlace(element, here);
        T decoded{};
        if constexpr (std::is_class_v<T> && !std::is_same_v<T, QString>)
            readRecord(item, here, decoded);
        else
            read(item, here, decoded);
        out.append(std::move(decoded));
    }
}

template<typename T>
void read(od::value &value, const Path &path, QHash<QString, T> &out)
{
    od::object object = objectOf(value, path);
    out.clear();
    Decoding *decoding = Decoding::active();
    // Growing a table of torrent records moves every record again, and counting the torrents first
    // walks them twice: the table is sized once from the bytes the first torrents take (what follows
    // "torrents" in a server's sorted keys, removals and trackers, is small beside them), for about
    // a quarter full. Sized for half full, Qt's spans outgrow their first 48 entries and are copied
    // into 80, and more keys are compared on insertion: 3–5% slower, for 12 MiB less at 50,000.
    constexpr qsizetype sample = 16;
    const char *first = nullptr;
    for (auto member : object) {
        od::field &field = inPlace(member, path);
        const char *at = field.key().raw();
        if constexpr (std::is_same_v<T, STntModel>) {
            if (!first) {
                first = at;
            } else if (out.size() == sample && decoding) {
                const auto perMember = static_cast<double>(at - first) / sample;
                out.reserve(2 * static_cast<qsizetype>(static_cast<double>(decoding->answerEnd() - first) / perMember));
            }
        }
        const std::optional<std::string_view> plain = plainAt(at);
        const std::string_view key = plain ? *plain : take(field.unescaped_key(), path);
        const Path here{&path, key};
        // A repeated key starts over, as a later value replaces an earlier one everywhere else.
        const auto entry = out.emplace(toQString(key));
        T &decoded = entry.value();
        if (decoding)
            decoding->setKey(key, &entry.key());
        if constexpr (std::is_same_v<T, QStringList>)
            read(field.value(), here, decoded);
        else
            readRecord(field.value(), here, decoded);
        if (decoding)
            decoding->setKey({}, nullptr);
    }
}

} // namespace API::JsonDecoding
