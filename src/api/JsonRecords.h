#pragma once

#include "api/JsonScanner.h"

#include <concepts>
#include <span>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

// One strict decoder for every answer, on simdjson's on-demand API: it measured fastest for the
// big main-data answers (docs/PERFORMANCE.md) and keeps small answers under the same rules. Each
// family of records declares its table of fields (`fieldsOf`) next to its decode functions.
namespace API::JsonDecoding {

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

inline std::string toSnakeCase(std::string_view camel)
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

// No answer of the server nests deeper than a few levels; walking what a hostile one nests as deep
// as the parser allows would take the thread's whole stack.
constexpr int maxUnknownNesting = 32;

// On-demand parsing never looks inside a value nobody reads, so a value under an unknown key is
// walked anyway: malformed JSON anywhere in the body fails the answer.
inline void validate(od::value &value, const Path &path, int depth = 0)
{
    if (depth > maxUnknownNesting)
        fail(path, simdjson::DEPTH_ERROR);
    switch (take(value.type(), path)) {
    case od::json_type::array:
        for (auto element : arrayOf(value, path)) {
            od::value &item = inPlace(element, path);
            validate(item, path, depth + 1);
        }
        break;
    case od::json_type::object:
        for (auto member : objectOf(value, path)) {
            od::field &field = inPlace(member, path);
            take(field.unescaped_key(), path);
            validate(field.value(), path, depth + 1);
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

} // namespace API::JsonDecoding
