#include "adding/BencodeResult.h"

#include "adding/BencodeDocument.h"

#include <QSet>

#include <limits>

namespace {

using Kind = BencodeNode::Kind;

std::optional<qint64> integerFrom(QByteArrayView text)
{
    qsizetype at = 0;
    const bool negative = !text.isEmpty() && text.front() == '-';
    if (!text.isEmpty() && (text.front() == '-' || text.front() == '+'))
        ++at;
    if (at == text.size())
        return std::nullopt;
    // Accumulated as a negative number, whose range holds the 64-bit minimum as well.
    qint64 value = 0;
    constexpr qint64 lowest = std::numeric_limits<qint64>::min();
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (c < '0' || c > '9')
            return std::nullopt;
        const int digit = c - '0';
        if (value < (lowest + digit) / 10)
            return std::nullopt;
        value = value * 10 - digit;
    }
    if (negative)
        return value;
    if (value == lowest)
        return std::nullopt;
    return -value;
}

std::optional<QString> textFrom(QByteArrayView bytes)
{
    if (!bytes.isValidUtf8())
        return std::nullopt;
    return QString::fromUtf8(bytes);
}

} // namespace

BencodeResult::BencodeResult(std::shared_ptr<const BencodeDocument> document, std::uint32_t index)
    : m_document(std::move(document))
    , m_index(index)
{
}

BencodeResult::BencodeType BencodeResult::type() const
{
    switch (m_document->nodes[m_index].kind) {
    case Kind::integer: return BencodeType::integer;
    case Kind::list: return BencodeType::list;
    case Kind::dictionary: return BencodeType::dictionary;
    case Kind::buffer:
    case Kind::hashKey: return BencodeType::buffer;
    }
    Q_UNREACHABLE();
}

BencodeResult::RawData BencodeResult::rawData() const
{
    switch (type()) {
    case BencodeType::list: return List(m_document, m_index);
    case BencodeType::dictionary: return Dictionary(m_document, m_index);
    case BencodeType::integer:
    case BencodeType::buffer: break;
    }
    return m_document->bytesOf(m_document->nodes[m_index]);
}

std::optional<QByteArrayView> BencodeResult::scalarBytes() const
{
    const BencodeType kind = type();
    if (kind != BencodeType::integer && kind != BencodeType::buffer)
        return std::nullopt;
    return m_document->bytesOf(m_document->nodes[m_index]);
}

std::optional<qint64> BencodeResult::toInteger() const
{
    const auto bytes = scalarBytes();
    return bytes ? integerFrom(*bytes) : std::nullopt;
}

std::optional<QString> BencodeResult::toText() const
{
    const auto bytes = scalarBytes();
    return bytes ? textFrom(*bytes) : std::nullopt;
}

BencodeResult::List::List(std::shared_ptr<const BencodeDocument> document, std::uint32_t index)
    : m_document(std::move(document))
    , m_index(index)
{
}

BencodeResult::List::Iterator BencodeResult::List::begin() const
{
    return Iterator(m_document, m_index + 1);
}

BencodeResult::List::Iterator BencodeResult::List::end() const
{
    return Iterator(m_document, m_document->nodes[m_index].next);
}

BencodeResult::List::Iterator &BencodeResult::List::Iterator::operator++()
{
    m_index = m_document->nodes[m_index].next;
    return *this;
}

BencodeResult::Dictionary::Dictionary(std::shared_ptr<const BencodeDocument> document, std::uint32_t index)
    : m_document(std::move(document))
    , m_index(index)
{
}

std::optional<BencodeResult> BencodeResult::Dictionary::value(QByteArrayView key) const
{
    const auto &nodes = m_document->nodes;
    std::optional<std::uint32_t> found;
    // Keys and values alternate; a key is a string, so its value follows at once.
    for (std::uint32_t at = m_index + 1; at < nodes[m_index].next; at = nodes[at + 1].next) {
        if (m_document->bytesOf(nodes[at]) == key)
            found = at + 1;
    }
    if (!found)
        return std::nullopt;
    return BencodeResult(m_document, *found);
}

QList<QByteArrayView> BencodeResult::Dictionary::keys() const
{
    const auto &nodes = m_document->nodes;
    QList<QByteArrayView> keys;
    QSet<QByteArrayView> seen;
    for (std::uint32_t at = m_index + 1; at < nodes[m_index].next; at = nodes[at + 1].next) {
        const QByteArrayView key = m_document->bytesOf(nodes[at]);
        if (!seen.contains(key)) {
            seen.insert(key);
            keys.append(key);
        }
    }
    return keys;
}

QList<std::pair<QByteArrayView, BencodeResult>> BencodeResult::Dictionary::entries() const
{
    const auto &nodes = m_document->nodes;
    QList<std::pair<QByteArrayView, BencodeResult>> entries;
    for (std::uint32_t at = m_index + 1; at < nodes[m_index].next; at = nodes[at + 1].next)
        entries.append({m_document->bytesOf(nodes[at]), BencodeResult(m_document, at + 1)});
    return entries;
}
