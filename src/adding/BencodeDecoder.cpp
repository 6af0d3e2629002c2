#include "adding/BencodeDecoder.h"

#include <cstring>
#include <limits>

namespace {

using Kind = BencodeNode::Kind;

[[noreturn]] void fail()
{
    throw BencodeDecodeError::invalidFormat;
}

} // namespace

BencodeDecoder::BencodeDecoder(QByteArray bencodedData)
    : document(std::make_shared<BencodeDocument>())
{
    document->input = std::move(bencodedData);
    data = document->input.constData();
    size = document->input.size();
}

BencodeResult BencodeDecoder::decode()
{
    // Offsets are 32-bit to keep the nodes small; no real .torrent comes near 4 GiB.
    if (size >= qsizetype{std::numeric_limits<std::uint32_t>::max()})
        fail();
    // About one value per sixteen bytes in a torrent of many files; growing past that is amortised.
    document->nodes.reserve(static_cast<std::size_t>(size / 16 + 1));
    do {
        const char c = byteAtPosition();
        if (depth > 0) {
            Frame &top = stack[static_cast<std::size_t>(depth - 1)];
            const bool atKey = top.isDictionary && top.awaitingKey;
            if (c == 'e' && (atKey || !top.isDictionary)) {
                closeContainer();
                continue;
            }
            if (atKey) {
                readKey(top);
                continue;
            }
        }
        switch (c) {
        case 'l': openContainer(Kind::list); continue;
        case 'd': openContainer(Kind::dictionary); continue;
        case 'i': readInteger(); break;
        default: readByteString(); break;
        }
        valueRead();
    } while (depth > 0);
    return BencodeResult(std::move(document), 0);
}

char BencodeDecoder::byteAtPosition() const
{
    if (position >= size)
        fail();
    return data[position];
}

std::uint32_t BencodeDecoder::appendNode(Kind kind, std::uint32_t offset, std::uint32_t length)
{
    const auto index = static_cast<std::uint32_t>(document->nodes.size());
    document->nodes.push_back({.offset = offset, .size = length, .next = index + 1, .kind = kind});
    return index;
}

void BencodeDecoder::openContainer(Kind kind)
{
    if (depth == depthLimit)
        fail();
    const std::uint32_t node = appendNode(kind);
    ++position;
    stack[static_cast<std::size_t>(depth++)] = {.node = node, .isDictionary = kind == Kind::dictionary};
}

void BencodeDecoder::closeContainer()
{
    ++position;
    document->nodes[stack[static_cast<std::size_t>(--depth)].node].next = static_cast<std::uint32_t>(document->nodes.size());
    if (depth > 0)
        valueRead();
}

void BencodeDecoder::valueRead()
{
    if (depth == 0)
        return;
    Frame &top = stack[static_cast<std::size_t>(depth - 1)];
    if (!top.isDictionary)
        return;
    if (top.infoStartPosition >= 0) {
        BencodeNode &hash = document->nodes[top.infoHashNode];
        hash.offset = static_cast<std::uint32_t>(top.infoStartPosition);
        hash.size = static_cast<std::uint32_t>(position - top.infoStartPosition);
        top.infoStartPosition = -1;
    }
    top.awaitingKey = true;
}

void BencodeDecoder::readInteger()
{
    const qsizetype digits = position + 1;
    const void *end = std::memchr(data + digits, 'e', static_cast<std::size_t>(size - digits));
    if (!end)
        fail();
    const qsizetype length = static_cast<const char *>(end) - (data + digits);
    if (length == 0)
        fail();
    appendNode(Kind::integer, static_cast<std::uint32_t>(digits), static_cast<std::uint32_t>(length));
    position = digits + length + 1;
}

std::pair<std::uint32_t, std::uint32_t> BencodeDecoder::stringAtPosition()
{
    qsizetype at = position;
    const bool negative = data[at] == '-';
    if (negative || data[at] == '+')
        ++at;
    const qsizetype digits = at;
    qint64 length = 0;
    for (; at < size && data[at] >= '0' && data[at] <= '9'; ++at) {
        const int digit = data[at] - '0';
        if (length > (std::numeric_limits<qint64>::max() - digit) / 10)
            fail();
        length = length * 10 + digit;
    }
    // "-0" is a valid empty length; any other negative length is refused.
    if (at == digits || at == size || data[at] != ':' || (negative && length != 0))
        fail();
    ++at;
    if (length > size - at)
        fail();
    position = at + length;
    return {static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(length)};
}

void BencodeDecoder::readByteString()
{
    const auto [offset, length] = stringAtPosition();
    appendNode(Kind::buffer, offset, length);
}

void BencodeDecoder::readKey(Frame &frame)
{
    const auto [offset, length] = stringAtPosition();
    // A key that is not text is kept as bytes: v2 files key "piece layers" by raw hashes.
    if (QByteArrayView(data + offset, qsizetype{length}) == "info") {
        // The info-hash is taken over the exact bytes of this value: kept as a "hash" entry placed
        // before "info", so that a later "hash" key of the file still wins.
        appendNode(Kind::hashKey);
        frame.infoHashNode = appendNode(Kind::buffer);
        frame.infoStartPosition = position;
    }
    appendNode(Kind::buffer, offset, length);
    frame.awaitingKey = false;
}
