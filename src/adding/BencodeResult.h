#pragma once

#include <QByteArrayView>
#include <QList>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

struct BencodeDocument;

// One decoded value. Copies are cheap handles that share the decoded input: byte views taken from
// a value stay valid as long as any value of the same decode is alive.
class BencodeResult
{
public:
    enum class BencodeType : std::uint8_t { integer, list, dictionary, buffer };

    class List;
    class Dictionary;
    // An integer's digits as they stand or a string's bytes; the elements of a list; the entries
    // of a dictionary.
    using RawData = std::variant<QByteArrayView, List, Dictionary>;

    BencodeType type() const;
    RawData rawData() const;

    // Base-10 with one optional sign; nothing for anything else, overflow included.
    std::optional<qint64> toInteger() const;
    // The bytes as UTF-8; nothing when they are not valid UTF-8.
    std::optional<QString> toText() const;

private:
    friend class BencodeDecoder;

    BencodeResult(std::shared_ptr<const BencodeDocument> document, std::uint32_t index);
    std::optional<QByteArrayView> scalarBytes() const;

    std::shared_ptr<const BencodeDocument> m_document;
    std::uint32_t m_index = 0;
};

class BencodeResult::List
{
public:
    class Iterator
    {
    public:
        BencodeResult operator*() const { return BencodeResult(m_document, m_index); }
        Iterator &operator++();
        friend bool operator==(const Iterator &a, const Iterator &b) { return a.m_index == b.m_index; }

    private:
        friend class List;
        Iterator(std::shared_ptr<const BencodeDocument> document, std::uint32_t index)
            : m_document(std::move(document))
            , m_index(index)
        {
        }

        std::shared_ptr<const BencodeDocument> m_document;
        std::uint32_t m_index = 0;
    };

    Iterator begin() const;
    Iterator end() const;

private:
    friend class BencodeResult;
    List(std::shared_ptr<const BencodeDocument> document, std::uint32_t index);

    std::shared_ptr<const BencodeDocument> m_document;
    std::uint32_t m_index = 0;
};

// Keys may repeat in the input: the last occurrence wins, as in a map filled in file order.
class BencodeResult::Dictionary
{
public:
    std::optional<BencodeResult> value(QByteArrayView key) const;
    // Each key once, in the order of its first occurrence.
    QList<QByteArrayView> keys() const;
    // Every entry in file order, a repeated key as often as it occurs: one pass, for large dictionaries.
    QList<std::pair<QByteArrayView, BencodeResult>> entries() const;

private:
    friend class BencodeResult;
    Dictionary(std::shared_ptr<const BencodeDocument> document, std::uint32_t index);

    std::shared_ptr<const BencodeDocument> m_document;
    std::uint32_t m_index = 0;
};
