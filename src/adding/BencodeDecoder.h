#pragma once

#include "adding/BencodeDocument.h"
#include "adding/BencodeResult.h"

#include <QByteArray>

#include <array>
#include <cstdint>
#include <memory>

// The one failure of decoding: the input is not bencode that this reader accepts.
enum class BencodeDecodeError { invalidFormat };

// One decoding run over one input; used once. Throws BencodeDecodeError::invalidFormat for any
// malformed input, including cut-off containers, negative or overlong lengths and nesting deeper
// than `depthLimit`: a crafted file must neither crash the reader nor overflow its stack.
class BencodeDecoder
{
public:
    static constexpr int depthLimit = 256;

    explicit BencodeDecoder(QByteArray bencodedData);

    // Reads the value at the start of the input; bytes after its end are ignored.
    BencodeResult decode();

private:
    struct Frame
    {
        std::uint32_t node = 0;
        bool isDictionary = false;
        bool awaitingKey = true;
        // While the value of an "info" key is read: where it starts and the node that gets its bytes.
        qsizetype infoStartPosition = -1;
        std::uint32_t infoHashNode = 0;
    };

    char byteAtPosition() const;
    void openContainer(BencodeNode::Kind kind);
    void closeContainer();
    void valueRead();
    void readInteger();
    void readByteString();
    void readKey(Frame &frame);
    // Steps past "<length>:" and the string's bytes; returns where they start and how many there are.
    std::pair<std::uint32_t, std::uint32_t> stringAtPosition();
    std::uint32_t appendNode(BencodeNode::Kind kind, std::uint32_t offset = 0, std::uint32_t size = 0);

    std::shared_ptr<BencodeDocument> document;
    const char *data = nullptr;
    qsizetype size = 0;
    qsizetype position = 0;
    std::array<Frame, depthLimit> stack;
    int depth = 0;
};

// The entry point: decodes a whole .torrent file's bytes. Throws BencodeDecodeError.
class Bencode
{
public:
    static BencodeResult decode(const QByteArray &bencodedData) { return BencodeDecoder(bencodedData).decode(); }
};
