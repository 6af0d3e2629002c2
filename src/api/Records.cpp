#include "api/Records.h"

#include "api/Errors.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QMutex>
#include <QSet>
#include <QtEndian>

#include <simdjson.h>

#include <bit>
#include <concepts>
#include <cstring>
#include <cmath>
#include <span>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

Q_LOGGING_CATEGORY(lcRecords, "API.Records")

// One strict decoder for every answer, on simdjson's on-demand API: it measured fastest for the
// big main-data answers (docs/PERFORMANCE.md) and keeps small answers under the same rules.
namespace API {

namespace od = simdjson::ondemand;

namespace {

// Where the decoder stands, as a chain on the stack: built into text only when a decode fails.
struct Path
{
    const Path *parent = nullptr;
    std::string_view key;
    std::size_t index = 0;
    bool isIndex = false;
};

void appendPath(QString &text, const Path *path)
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

[[noreturn]] void fail(const Path &path, const QString &what)
{
    QString text;
    appendPath(text, &path);
    throw ResponseDecodingError(text.isEmpty() ? what : text + QStringLiteral(": ") + what);
}

[[noreturn]] void fail(const Path &path, simdjson::error_code error)
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

od::object objectOf(od::value &value, const Path &path)
{
    od::object object;
    if (const auto error = value.get_object().get(object))
        error == simdjson::INCORRECT_TYPE ? fail(path, QStringLiteral("expected an object")) : fail(path, error);
    return object;
}

od::array arrayOf(od::value &value, const Path &path)
{
    od::array array;
    if (const auto error = value.get_array().get(array))
        error == simdjson::INCORRECT_TYPE ? fail(path, QStringLiteral("expected an array")) : fail(path, error);
    return array;
}

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// ---- Raw bytes of the input, read a word at a time. The input is followed by SIMDJSON_PADDING
// bytes, so a word that starts inside a string may run past its closing quote.

std::uint64_t wordAt(const char *at)
{
    std::uint64_t word;
    std::memcpy(&word, at, sizeof word);
    if constexpr (std::endian::native == std::endian::big)
        word = qbswap(word);
    return word;
}

// The low `count` bytes (1 to 8) of a word.
std::uint64_t lowBytes(std::size_t count)
{
    return count >= 8 ? ~std::uint64_t{0} : (std::uint64_t{1} << (8 * count)) - 1;
}

// The string that starts at `raw`, just past its opening quote, when it holds no escape.
std::optional<std::string_view> plainAt(const char *raw)
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
bool sameBytes(std::string_view a, std::string_view b)
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
    static thread_local Decoding *current;
    const char *m_answerEnd;
    Decoding *m_outer;
    std::string_view m_keyRaw;
    const QString *m_key = nullptr;
    StringTable m_strings;
};
thread_local Decoding *Decoding::current = nullptr;

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
std::optional<std::string_view> plainString(od::value &value)
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

simdjson::error_code tryRead(od::value &value, const Path &, QString &out)
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
void logUnknownState(std::string_view word)
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

simdjson::error_code tryRead(od::value &value, const Path &, TntModelState &out)
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

simdjson::error_code tryRead(od::value &value, const Path &path, ConnectionStatus &out)
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

simdjson::error_code tryRead(od::value &value, const Path &path, TntModelTrackerStatus &out)
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

template<typename T>
constexpr const char *expectedText()
{
    if constexpr (std::is_same_v<T, qint64> || std::is_same_v<T, TntModelTrackerStatus>)
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

bool isNull(od::value &value)
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

// ---- Records: a table of coding keys per record. Server keys match through the snake-case
// conversion; the index holds each field's camel key and the snake key that converts to it, so
// only unusual spellings pay for a conversion.

template<typename R>
struct Field
{
    std::string_view key;
    bool required;
    void (*decode)(R &, od::value &, const Path &);
};

template<typename M>
struct MemberOf;
template<typename R, typename T>
struct MemberOf<T R::*>
{
    using Record = R;
};

template<auto member>
void decodeMember(typename MemberOf<decltype(member)>::Record &record, od::value &value, const Path &path)
{
    read(value, path, record.*member);
}

template<typename T>
constexpr bool isCollection = false;
template<typename T>
constexpr bool isCollection<QList<T>> = true;
template<typename K, typename V>
constexpr bool isCollection<QHash<K, V>> = true;

// A null optional collection is empty, as a null optional value is absent.
template<auto member>
void decodeOptional(typename MemberOf<decltype(member)>::Record &record, od::value &value, const Path &path)
{
    auto &field = record.*member;
    if constexpr (isCollection<std::remove_cvref_t<decltype(field)>>) {
        if (isNull(value)) {
            field.clear();
            return;
        }
    }
    read(value, path, field);
}

template<auto member>
constexpr Field<typename MemberOf<decltype(member)>::Record> optional(std::string_view key)
{
    return {key, false, &decodeOptional<member>};
}

template<auto member>
void decodeShared(typename MemberOf<decltype(member)>::Record &record, od::value &value, const Path &path)
{
    Decoding *decoding = Decoding::active();
    if (const auto raw = plainString(value); raw && decoding)
        record.*member = decoding->intern(*raw);
    else
        read(value, path, record.*member);
}

// A string field whose values repeat across records.
template<auto member>
constexpr Field<typename MemberOf<decltype(member)>::Record> shared(std::string_view key)
{
    return {key, false, &decodeShared<member>};
}

template<auto member>
constexpr Field<typename MemberOf<decltype(member)>::Record> required(std::string_view key)
{
    return {key, true, &decodeMember<member>};
}

template<typename R>
std::span<const Field<R>> fieldsOf();

std::string toSnakeCase(std::string_view camel)
{
    std::string snake;
    snake.reserve(camel.size() + 4);
    for (const char c : camel) {
        if (c >= 'A' && c <= 'Z') {
            snake += '_';
            snake += static_cast<char>(c - 'A' + 'a');
        } else {
            snake += c;
        }
    }
    return snake;
}

template<typename R>
class KeyIndex
{
public:
    KeyIndex()
        : m_fields(fieldsOf<R>())
    {
        m_snake.reserve(m_fields.size());
        for (const auto &field : m_fields) {
            m_snake.push_back(toSnakeCase(field.key));
            Q_ASSERT(convertFromSnakeCase(m_snake.back()) == QByteArray(field.key.data(), qsizetype(field.key.size())));
        }
        for (std::size_t i = 0; i < m_fields.size(); ++i) {
            m_byKey.emplace(m_fields[i].key, static_cast<int>(i));
            m_byKey.emplace(m_snake[i], static_cast<int>(i));
            if (m_fields[i].required)
                m_requiredMask |= std::uint64_t{1} << i;
        }
    }

    const Field<R> &field(int id) const { return m_fields[static_cast<std::size_t>(id)]; }
    std::uint64_t requiredMask() const { return m_requiredMask; }
    const std::string &snakeKey(int id) const { return m_snake[static_cast<std::size_t>(id)]; }
    std::size_t size() const { return m_fields.size(); }

    // The field a server key names, or -1.
    int find(std::string_view key) const
    {
        const int id = lookup(key);
        if (id >= 0 || key.find('_') == std::string_view::npos)
            return id;
        const QByteArray converted = convertFromSnakeCase(key);
        return lookup(std::string_view(converted.constData(), static_cast<std::size_t>(converted.size())));
    }

private:
    int lookup(std::string_view key) const
    {
        const auto it = m_byKey.find(key);
        return it == m_byKey.end() ? -1 : it->second;
    }

    std::span<const Field<R>> m_fields;
    std::vector<std::string> m_snake;
    std::unordered_map<std::string_view, int> m_byKey;
    std::uint64_t m_requiredMask = 0;
};

template<typename R>
const KeyIndex<R> &keyIndex()
{
    static const KeyIndex<R> index;
    return index;
}

// A server writes every object of a kind with the same keys in the same order: the keys of the
// last object read, and what they matched, make the next object's lookups plain comparisons.
struct ShapeKey
{
    ShapeKey(std::string_view text, int fieldId)
        : key(text)
        , id(fieldId)
    {
        // Such a key equals the raw bytes of a key without escapes, which compare without unescaping.
        const std::size_t quoted = text.size() + 1;
        plain = text.find_first_of("\\\"") == std::string_view::npos && quoted <= sizeof words;
        if (!plain)
            return;
        for (std::size_t at = 0; at < quoted; ++at) {
            const char c = at < text.size() ? text[at] : '"';
            words[at / 8] |= std::uint64_t{static_cast<unsigned char>(c)} << (8 * (at % 8));
            masks[at / 8] |= std::uint64_t{0xff} << (8 * (at % 8));
        }
        longKey = quoted > 16;
    }

    // Whether the raw key at `raw`, just past its opening quote, is this plain key with its closing
    // quote. Reads 16 or 32 bytes: a key is followed by at least its colon, a value and a brace, and
    // the input by SIMDJSON_PADDING bytes.
    bool matches(const char *raw) const
    {
        std::uint64_t differ = ((wordAt(raw) ^ words[0]) & masks[0]) | ((wordAt(raw + 8) ^ words[1]) & masks[1]);
        if (longKey)
            differ |= ((wordAt(raw + 16) ^ words[2]) & masks[2]) | ((wordAt(raw + 24) ^ words[3]) & masks[3]);
        return differ == 0;
    }

    std::string key;
    int id;
    bool plain = false;
    bool longKey = false;
    std::uint64_t words[4] = {};
    std::uint64_t masks[4] = {};
};
constexpr std::size_t maxShapeLength = 128;

template<typename R>
std::vector<ShapeKey> &lastShape()
{
    thread_local std::vector<ShapeKey> shape;
    return shape;
}

// On-demand parsing never looks inside a value nobody reads, so a value under an unknown key is
// walked anyway: malformed JSON anywhere in the body fails the answer.
void validate(od::value &value, const Path &path)
{
    switch (take(value.type(), path)) {
    case od::json_type::array:
        for (auto element : arrayOf(value, path)) {
            od::value &item = inPlace(element, path);
            validate(item, path);
        }
        break;
    case od::json_type::object:
        for (auto member : objectOf(value, path)) {
            od::field &field = inPlace(member, path);
            take(field.unescaped_key(), path);
            validate(field.value(), path);
        }
        break;
    case od::json_type::number: take(value.get_number(), path); break;
    case od::json_type::string: take(value.get_string(), path); break;
    case od::json_type::boolean: take(value.get_bool(), path); break;
    case od::json_type::null:
        if (!take(value.is_null(), path))
            fail(path, QStringLiteral("malformed null"));
        break;
    }
}

template<typename R>
void readRecord(od::value &value, const Path &path, R &out)
{
    od::object object = objectOf(value, path);
    const KeyIndex<R> &index = keyIndex<R>();
    std::vector<ShapeKey> &shape = lastShape<R>();
    // Held apart from the vector: the decoders called in between may write anywhere, as far as the
    // compiler knows.
    const ShapeKey *expected = shape.data();
    std::size_t known = shape.size();
    std::uint64_t seen = 0;
    std::size_t position = 0;
    // The key reaches the path straight from where it is kept: a copy rebuilt on the stack would be
    // loaded back wider than it was stored, a stall per field.
    const auto decode = [&](od::field &field, int id, std::string_view key) {
        if (id < 0) {
            validate(field.value(), Path{&path, key});
            return;
        }
        seen |= std::uint64_t{1} << id;
        index.field(id).decode(out, field.value(), Path{&path, key});
    };
    for (auto member : object) {
        od::field &field = inPlace(member, path);
        if (position < known && expected[position].plain && expected[position].matches(field.key().raw())) {
            decode(field, expected[position].id, expected[position].key);
            ++position;
            continue;
        }
        const std::string_view key = take(field.unescaped_key(), path);
        int id = -1;
        if (position < known && expected[position].key == key) {
            id = expected[position].id;
        } else {
            id = index.find(key);
            if (position < known)
                shape[position] = ShapeKey(key, id);
            else if (position < maxShapeLength)
                shape.emplace_back(key, id);
            expected = shape.data();
            known = shape.size();
        }
        ++position;
        decode(field, id, key);
    }
    const std::uint64_t missing = index.requiredMask() & ~seen;
    if (missing) {
        const int id = std::countr_zero(missing);
        fail(Path{&path, index.snakeKey(id)}, QStringLiteral("missing"));
    }
}

// ---- Tables, in declaration order.

using TS = STntModel;
constexpr Field<TS> tntFields[] = {
    optional<&TS::addedOn>("addedOn"),
    optional<&TS::amountLeft>("amountLeft"),
    optional<&TS::autoTmm>("autoTmm"),
    optional<&TS::availability>("availability"),
    shared<&TS::category>("category"),
    optional<&TS::completed>("completed"),
    optional<&TS::completionOn>("completionOn"),
    optional<&TS::contentPath>("contentPath"),
    optional<&TS::dlLimit>("dlLimit"),
    optional<&TS::dlspeed>("dlspeed"),
    optional<&TS::downloaded>("downloaded"),
    optional<&TS::downloadedSession>("downloadedSession"),
    optional<&TS::eta>("eta"),
    optional<&TS::fLPiecePrio>("fLPiecePrio"),
    optional<&TS::forceStart>("forceStart"),
    shared<&TS::infohashV1>("infohashV1"),
    shared<&TS::infohashV2>("infohashV2"),
    optional<&TS::lastActivity>("lastActivity"),
    optional<&TS::magnetUri>("magnetUri"),
    optional<&TS::maxRatio>("maxRatio"),
    optional<&TS::maxSeedingTime>("maxSeedingTime"),
    optional<&TS::name>("name"),
    optional<&TS::numComplete>("numComplete"),
    optional<&TS::numIncomplete>("numIncomplete"),
    optional<&TS::numLeechs>("numLeechs"),
    optional<&TS::numSeeds>("numSeeds"),
    optional<&TS::priority>("priority"),
    optional<&TS::progress>("progress"),
    optional<&TS::ratio>("ratio"),
    optional<&TS::ratioLimit>("ratioLimit"),
    shared<&TS::savePath>("savePath"),
    optional<&TS::seedingTime>("seedingTime"),
    optional<&TS::seedingTimeLimit>("seedingTimeLimit"),
    optional<&TS::seenComplete>("seenComplete"),
    optional<&TS::seqDl>("seqDl"),
    optional<&TS::size>("size"),
    optional<&TS::state>("state"),
    optional<&TS::superSeeding>("superSeeding"),
    shared<&TS::tags>("tags"),
    optional<&TS::timeActive>("timeActive"),
    optional<&TS::totalSize>("totalSize"),
    shared<&TS::tracker>("tracker"),
    optional<&TS::upLimit>("upLimit"),
    optional<&TS::uploaded>("uploaded"),
    optional<&TS::uploadedSession>("uploadedSession"),
    optional<&TS::upspeed>("upspeed"),
};

using GT = SGlobalTransferInfo;
constexpr Field<GT> globalFields[] = {
    optional<&GT::alltimeDl>("alltimeDl"),
    optional<&GT::dlInfoSpeed>("dlInfoSpeed"),
    optional<&GT::dlInfoData>("dlInfoData"),
    optional<&GT::upInfoSpeed>("upInfoSpeed"),
    optional<&GT::alltimeUl>("alltimeUl"),
    optional<&GT::upInfoData>("upInfoData"),
    optional<&GT::dlRateLimit>("dlRateLimit"),
    optional<&GT::upRateLimit>("upRateLimit"),
    optional<&GT::dhtNodes>("dhtNodes"),
    optional<&GT::connectionStatus>("connectionStatus"),
    optional<&GT::queueing>("queueing"),
    optional<&GT::useAltSpeedLimits>("useAltSpeedLimits"),
    optional<&GT::refreshInterval>("refreshInterval"),
    optional<&GT::freeSpaceOnDisk>("freeSpaceOnDisk"),
    optional<&GT::globalRatio>("globalRatio"),
};

constexpr Field<Category> categoryFields[] = {
    optional<&Category::name>("name"),
    optional<&Category::savePath>("savePath"),
};

// "torrentsRemoved" is the key that "torrents_removed" converts to: removed torrents must leave.
constexpr Field<MainData> mainDataFields[] = {
    required<&MainData::rid>("rid"),
    optional<&MainData::fullUpdate>("fullUpdate"),
    optional<&MainData::tnts>("torrents"),
    optional<&MainData::tntsRemoved>("torrentsRemoved"),
    optional<&MainData::categories>("categories"),
    optional<&MainData::categoriesRemoved>("categoriesRemoved"),
    optional<&MainData::tags>("tags"),
    optional<&MainData::tagsRemoved>("tagsRemoved"),
    optional<&MainData::serverState>("serverState"),
    optional<&MainData::trackers>("trackers"),
    optional<&MainData::trackersRemoved>("trackersRemoved"),
};

constexpr Field<Peer> peerFields[] = {
    optional<&Peer::client>("client"),
    optional<&Peer::connection>("connection"),
    optional<&Peer::country>("country"),
    optional<&Peer::countryCode>("countryCode"),
    optional<&Peer::dlSpeed>("dlSpeed"),
    optional<&Peer::downloaded>("downloaded"),
    optional<&Peer::files>("files"),
    optional<&Peer::flags>("flags"),
    optional<&Peer::flagsDesc>("flagsDesc"),
    optional<&Peer::ip>("ip"),
    optional<&Peer::peerIdClient>("peerIdClient"),
    optional<&Peer::port>("port"),
    optional<&Peer::progress>("progress"),
    optional<&Peer::relevance>("relevance"),
    optional<&Peer::upSpeed>("upSpeed"),
    optional<&Peer::uploaded>("uploaded"),
};

constexpr Field<PeersData> peersDataFields[] = {
    required<&PeersData::rid>("rid"),
    optional<&PeersData::fullUpdate>("fullUpdate"),
    optional<&PeersData::showFlags>("showFlags"),
    optional<&PeersData::peers>("peers"),
    optional<&PeersData::peersRemoved>("peersRemoved"),
};

using GP = SGenericProperties;
constexpr Field<GP> propertiesFields[] = {
    required<&GP::savePath>("savePath"),
    required<&GP::creationDate>("creationDate"),
    required<&GP::pieceSize>("pieceSize"),
    required<&GP::comment>("comment"),
    required<&GP::totalWasted>("totalWasted"),
    required<&GP::totalUploaded>("totalUploaded"),
    required<&GP::totalUploadedSession>("totalUploadedSession"),
    required<&GP::totalDownloaded>("totalDownloaded"),
    required<&GP::totalDownloadedSession>("totalDownloadedSession"),
    required<&GP::upLimit>("upLimit"),
    required<&GP::dlLimit>("dlLimit"),
    required<&GP::timeElapsed>("timeElapsed"),
    required<&GP::seedingTime>("seedingTime"),
    required<&GP::nbConnections>("nbConnections"),
    required<&GP::nbConnectionsLimit>("nbConnectionsLimit"),
    required<&GP::shareRatio>("shareRatio"),
    required<&GP::additionDate>("additionDate"),
    required<&GP::completionDate>("completionDate"),
    required<&GP::createdBy>("createdBy"),
    required<&GP::dlSpeedAvg>("dlSpeedAvg"),
    required<&GP::dlSpeed>("dlSpeed"),
    required<&GP::eta>("eta"),
    required<&GP::infohashV1>("infohashV1"),
    optional<&GP::infohashV2>("infohashV2"),
    required<&GP::lastSeen>("lastSeen"),
    required<&GP::peers>("peers"),
    required<&GP::peersTotal>("peersTotal"),
    required<&GP::piecesHave>("piecesHave"),
    required<&GP::piecesNum>("piecesNum"),
    required<&GP::reannounce>("reannounce"),
    required<&GP::seeds>("seeds"),
    required<&GP::seedsTotal>("seedsTotal"),
    required<&GP::totalSize>("totalSize"),
    required<&GP::upSpeedAvg>("upSpeedAvg"),
    required<&GP::upSpeed>("upSpeed"),
};

constexpr Field<Tracker> trackerFields[] = {
    required<&Tracker::url>("url"),
    required<&Tracker::status>("status"),
    required<&Tracker::tier>("tier"),
    required<&Tracker::numPeers>("numPeers"),
    required<&Tracker::numSeeds>("numSeeds"),
    required<&Tracker::numLeeches>("numLeeches"),
    required<&Tracker::numDownloaded>("numDownloaded"),
    required<&Tracker::msg>("msg"),
};

constexpr Field<File> fileFields[] = {
    required<&File::index>("index"),
    required<&File::name>("name"),
    required<&File::size>("size"),
    required<&File::progress>("progress"),
    required<&File::priority>("priority"),
    required<&File::pieceRange>("pieceRange"),
    required<&File::availability>("availability"),
};

constexpr Field<WebSeed> webSeedFields[] = {required<&WebSeed::url>("url")};
constexpr Field<Key> keyFields[] = {required<&Key::apiKey>("apiKey")};

template<> std::span<const Field<STntModel>> fieldsOf() { return tntFields; }
template<> std::span<const Field<SGlobalTransferInfo>> fieldsOf() { return globalFields; }
template<> std::span<const Field<Category>> fieldsOf() { return categoryFields; }
template<> std::span<const Field<MainData>> fieldsOf() { return mainDataFields; }
template<> std::span<const Field<Peer>> fieldsOf() { return peerFields; }
template<> std::span<const Field<PeersData>> fieldsOf() { return peersDataFields; }
template<> std::span<const Field<SGenericProperties>> fieldsOf() { return propertiesFields; }
template<> std::span<const Field<Tracker>> fieldsOf() { return trackerFields; }
template<> std::span<const Field<File>> fieldsOf() { return fileFields; }
template<> std::span<const Field<WebSeed>> fieldsOf() { return webSeedFields; }
template<> std::span<const Field<Key>> fieldsOf() { return keyFields; }

// ---- Documents.

template<typename T>
struct IsList : std::false_type
{
};
template<typename T>
struct IsList<QList<T>> : std::true_type
{
};

// simdjson reads up to SIMDJSON_PADDING bytes past the end; a body with that much spare capacity
// is parsed in place, any other is copied once.
template<typename T>
T decodeDocument(const QByteArray &json)
{
    const auto size = static_cast<std::size_t>(json.size());
    simdjson::padded_string copy;
    simdjson::padded_string_view input;
    if (static_cast<std::size_t>(json.capacity()) >= size + simdjson::SIMDJSON_PADDING) {
        input = simdjson::padded_string_view(json.constData(), size, static_cast<std::size_t>(json.capacity()));
    } else {
        copy = simdjson::padded_string(json.constData(), size);
        input = copy;
    }

    const Path root;
    Decoding decoding(input.data() + size);
    od::parser parser;
    od::document document = take(parser.iterate(input), root);
    od::value value = take(document.get_value(), root);
    T result{};
    if constexpr (IsList<T>::value)
        read(value, root, result);
    else
        readRecord(value, root, result);
    // Anything after the top-level value makes the body malformed.
    const auto location = document.current_location();
    if (location.error() != simdjson::OUT_OF_BOUNDS)
        fail(root, QStringLiteral("unexpected content after the JSON value"));
    return result;
}

template<typename T>
T decodeGuarded(const QByteArray &json)
{
    try {
        return decodeDocument<T>(json);
    } catch (const simdjson::simdjson_error &error) {
        throw ResponseDecodingError(QString::fromUtf8(error.what()));
    }
}

} // namespace

QByteArray convertFromSnakeCase(std::string_view key)
{
    const auto first = key.find_first_not_of('_');
    if (first == std::string_view::npos)
        return QByteArray(key.data(), static_cast<qsizetype>(key.size()));
    const auto last = key.find_last_not_of('_');
    const std::string_view middle = key.substr(first, last - first + 1);
    if (middle.find('_') == std::string_view::npos)
        return QByteArray(key.data(), static_cast<qsizetype>(key.size()));

    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    QByteArray result(key.data(), static_cast<qsizetype>(first));
    result.reserve(static_cast<qsizetype>(key.size()));
    bool firstPart = true;
    bool startOfPart = true;
    for (const char c : middle) {
        if (c == '_') {
            // Empty parts between repeated underscores vanish.
            if (!startOfPart)
                firstPart = false;
            startOfPart = true;
            continue;
        }
        result += (firstPart || !startOfPart) ? lower(c) : upper(c);
        startOfPart = false;
    }
    result.append(key.data() + last + 1, static_cast<qsizetype>(key.size() - last - 1));
    return result;
}

MainData decodeMainData(const QByteArray &json) { return decodeGuarded<MainData>(json); }
PeersData decodePeersData(const QByteArray &json) { return decodeGuarded<PeersData>(json); }
SGenericProperties decodeGenericProperties(const QByteArray &json)
{
    return decodeGuarded<SGenericProperties>(json);
}
QList<Tracker> decodeTrackers(const QByteArray &json) { return decodeGuarded<QList<Tracker>>(json); }
QList<File> decodeFiles(const QByteArray &json) { return decodeGuarded<QList<File>>(json); }
QList<WebSeed> decodeWebSeeds(const QByteArray &json) { return decodeGuarded<QList<WebSeed>>(json); }
Key decodeKey(const QByteArray &json) { return decodeGuarded<Key>(json); }

QByteArray encodeKey(const Key &key)
{
    return QJsonDocument(QJsonObject{{QStringLiteral("apiKey"), key.apiKey}}).toJson(QJsonDocument::Compact);
}

QString Peer::debugDescription() const
{
    const auto text = [](const auto &field) -> QString {
        if (!field)
            return QStringLiteral("nil");
        using T = std::decay_t<decltype(*field)>;
        if constexpr (std::is_same_v<T, QString>)
            return *field;
        else
            return QString::number(*field);
    };
    QString description = QStringLiteral("\nPeer\n\t- client: ") + text(client);
    const auto line = [&](const char *name, const QString &value) {
        description += QStringLiteral("\n\t- ") + QLatin1String(name) + QStringLiteral(": ") + value;
    };
    line("connection", text(connection));
    line("country", text(country));
    line("countryCode", text(countryCode));
    line("dlSpeed", text(dlSpeed));
    line("downloaded", text(downloaded));
    line("files", text(files));
    line("flags", text(flags));
    line("flagsDesc", text(flagsDesc));
    line("ip", text(ip));
    line("peerIdClient", text(peerIdClient));
    line("port", text(port));
    line("progress", text(progress));
    line("relevance", text(relevance));
    line("upSpeed", text(upSpeed));
    line("uploaded", text(uploaded));
    return description;
}

} // namespace API
