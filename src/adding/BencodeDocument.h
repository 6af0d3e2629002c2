#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <vector>

// The decoded tree as one flat array in file order, pointing into the input instead of copying it:
// a container's descendants follow it, and `next` skips past all of them.
struct BencodeNode
{
    enum class Kind : std::uint8_t { integer, list, dictionary, buffer, hashKey };

    // The payload in the input: an integer's digits, a string's bytes; unused for containers.
    std::uint32_t offset = 0;
    std::uint32_t size = 0;
    std::uint32_t next = 0; // index just past this value and everything inside it
    Kind kind = Kind::buffer;
};

struct BencodeDocument
{
    QByteArray input;
    std::vector<BencodeNode> nodes;

    QByteArrayView bytesOf(const BencodeNode &node) const
    {
        // The synthesised key of the "info" bytes has no bytes of its own in the input.
        if (node.kind == BencodeNode::Kind::hashKey)
            return QByteArrayView("hash");
        return QByteArrayView(input.constData() + node.offset, qsizetype{node.size});
    }
};
