#include "model/TntSnapshot.h"

#include "model/ServerLabels.h"
#include "model/TntCollection.h"
#include "model/TrackerIndex.h"

#include <QHash>
#include <QtEndian>

#include <cstring>
#include <type_traits>

namespace {

constexpr char magic[4] = {'Q', 'S', 'N', 'P'};
constexpr quint32 formatVersion = 1;

// The field list as the build knows it: a snapshot written by a build with other fields or other
// types is not read as this one's.
quint64 fnv1a(QByteArrayView bytes, quint64 hash = 0xcbf29ce484222325ull)
{
    for (const char byte : bytes) {
        hash ^= static_cast<quint8>(byte);
        hash *= 0x100000001b3ull;
    }
    return hash;
}

#define QUILLO_SNAPSHOT_NAME_kept(member, Type, decoding) #member ":" #Type ":" #decoding ";"
#define QUILLO_SNAPSHOT_NAME_rate(member, Type, decoding)
#define QUILLO_SNAPSHOT_NAME_wire(member, Type, decoding)
#define QUILLO_SNAPSHOT_NAME(member, Bit, Type, decoding, role) QUILLO_SNAPSHOT_NAME_##role(member, Type, decoding)
constexpr char fieldList[] = QUILLO_TNT_FIELDS(QUILLO_SNAPSHOT_NAME);

// Strings that many torrents repeat go through the table; the others (names, paths of content,
// magnet links) are written where they are, which keeps the table, and the writing, small.
#define QUILLO_SNAPSHOT_SHARED_shared true
#define QUILLO_SNAPSHOT_SHARED_optional false

class Writer
{
public:
    void putNumber(quint64 value)
    {
        while (value >= 0x80) {
            m_body.append(static_cast<char>((value & 0x7f) | 0x80));
            value >>= 7;
        }
        m_body.append(static_cast<char>(value));
    }
    void put(qint64 value) { putNumber((static_cast<quint64>(value) << 1) ^ static_cast<quint64>(value >> 63)); }
    void put(bool value) { m_body.append(value ? '\1' : '\0'); }
    void put(double value)
    {
        quint64 bits;
        std::memcpy(&bits, &value, sizeof bits);
        const quint64 little = qToLittleEndian(bits);
        m_body.append(reinterpret_cast<const char *>(&little), sizeof little);
    }
    void put(API::Date value) { put(value.secondsSinceEpoch()); }
    void put(TntModelState value) { putNumber(static_cast<quint64>(value)); }
    // 0 stands for no string, n for the table's (n-1)th.
    void put(const QString &value)
    {
        if (value.isNull()) {
            putNumber(0);
            return;
        }
        auto it = m_index.constFind(value);
        if (it == m_index.cend()) {
            it = m_index.insert(value, static_cast<quint64>(m_strings.size()));
            m_strings.append(value);
        }
        putNumber(*it + 1);
    }
    void putInline(const QString &value)
    {
        if (value.isNull()) {
            putNumber(0);
            return;
        }
        const QByteArray utf8 = value.toUtf8();
        putNumber(static_cast<quint64>(utf8.size()) + 1);
        m_body.append(utf8);
    }
    template<typename T>
    void putField(const T &value, bool shared)
    {
        if constexpr (std::is_same_v<T, QString>) {
            if (!shared) {
                putInline(value);
                return;
            }
        }
        put(value);
    }
    void reserve(qsizetype size) { m_body.reserve(size); }
    void putStrings(const QStringList &values)
    {
        putNumber(static_cast<quint64>(values.size()));
        for (const QString &value : values)
            put(value);
    }

    QByteArray finish()
    {
        QByteArray body = std::exchange(m_body, {});
        m_body.append(magic, sizeof magic);
        putNumber(formatVersion);
        putNumber(fnv1a(fieldList));
        putNumber(static_cast<quint64>(m_strings.size()));
        for (const QString &string : std::as_const(m_strings)) {
            const QByteArray utf8 = string.toUtf8();
            putNumber(static_cast<quint64>(utf8.size()));
            m_body.append(utf8);
        }
        m_body.reserve(m_body.size() + body.size() + qsizetype(sizeof(quint64)));
        m_body.append(body);
        body = {};
        const quint64 sum = qToLittleEndian(fnv1a(m_body));
        m_body.append(reinterpret_cast<const char *>(&sum), sizeof sum);
        return std::exchange(m_body, {});
    }

private:
    QByteArray m_body;
    QHash<QString, quint64> m_index;
    QStringList m_strings;
};

struct Truncated
{
};

class Reader
{
public:
    explicit Reader(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    bool atEnd() const { return m_at == m_bytes.size(); }

    quint64 number()
    {
        quint64 value = 0;
        for (int shift = 0; shift < 64; shift += 7) {
            const auto byte = static_cast<quint8>(take(1).front());
            value |= static_cast<quint64>(byte & 0x7f) << shift;
            if (!(byte & 0x80))
                return value;
        }
        throw Truncated{};
    }
    qsizetype count()
    {
        // Every element takes a byte at least: a count beyond what is left is damage, not a reason to allocate.
        const quint64 value = number();
        if (value > static_cast<quint64>(m_bytes.size() - m_at))
            throw Truncated{};
        return static_cast<qsizetype>(value);
    }
    QByteArrayView take(qsizetype size)
    {
        if (size < 0 || size > m_bytes.size() - m_at)
            throw Truncated{};
        const QByteArrayView taken = m_bytes.sliced(m_at, size);
        m_at += size;
        return taken;
    }

    // Empty, not null: a null string stands for one that is absent.
    static QString text(QByteArrayView utf8)
    {
        QString value = QString::fromUtf8(utf8);
        return value.isNull() ? QStringLiteral("") : value;
    }

    void readStrings()
    {
        const qsizetype size = count();
        m_strings.reserve(size);
        for (qsizetype i = 0; i < size; ++i)
            m_strings.append(text(take(static_cast<qsizetype>(number()))));
    }

    template<typename T>
    T get()
    {
        if constexpr (std::is_same_v<T, qint64>) {
            const quint64 raw = number();
            return static_cast<qint64>((raw >> 1) ^ (~(raw & 1) + 1));
        } else if constexpr (std::is_same_v<T, bool>) {
            const char byte = take(1).front();
            if (byte != '\0' && byte != '\1')
                throw Truncated{};
            return byte == '\1';
        } else if constexpr (std::is_same_v<T, double>) {
            quint64 bits;
            std::memcpy(&bits, take(sizeof bits).data(), sizeof bits);
            bits = qFromLittleEndian(bits);
            double value;
            std::memcpy(&value, &bits, sizeof value);
            return value;
        } else if constexpr (std::is_same_v<T, API::Date>) {
            return API::Date(get<double>());
        } else if constexpr (std::is_same_v<T, TntModelState>) {
            const quint64 value = number();
            if (value > static_cast<quint64>(TntModelState::unknown))
                throw Truncated{};
            return static_cast<TntModelState>(value);
        } else {
            static_assert(std::is_same_v<T, QString>);
            const quint64 index = number();
            if (index == 0)
                return {};
            if (index > static_cast<quint64>(m_strings.size()))
                throw Truncated{};
            return m_strings.at(static_cast<qsizetype>(index - 1));
        }
    }
    QString inlineString()
    {
        const quint64 size = number();
        if (size == 0)
            return {};
        if (size - 1 > static_cast<quint64>(m_bytes.size() - m_at))
            throw Truncated{};
        return text(take(static_cast<qsizetype>(size - 1)));
    }
    template<typename T>
    T getField(bool shared)
    {
        if constexpr (std::is_same_v<T, QString>) {
            if (!shared)
                return inlineString();
        }
        return get<T>();
    }
    QString name()
    {
        QString value = get<QString>();
        if (value.isNull())
            throw Truncated{};
        return value;
    }
    QStringList names()
    {
        QStringList values;
        const qsizetype size = count();
        values.reserve(size);
        for (qsizetype i = 0; i < size; ++i)
            values.append(name());
        return values;
    }

private:
    QByteArrayView m_bytes;
    qsizetype m_at = 0;
    QStringList m_strings;
};

} // namespace

QByteArray TntSnapshot::encode(const TntCollection &tnts, const ServerLabels &labels, const TrackerIndex &trackers)
{
    Writer writer;
    writer.reserve(tnts.size() * 320); // about what a torrent takes, magnet link included
    writer.putNumber(static_cast<quint64>(tnts.size()));
    for (qsizetype row = 0; row < tnts.size(); ++row) {
        const TntModel &tnt = tnts.at(row);
        writer.putInline(tnt.id());
#define QUILLO_SNAPSHOT_PUT_kept(member, decoding) writer.putField(tnt.member(), QUILLO_SNAPSHOT_SHARED_##decoding);
#define QUILLO_SNAPSHOT_PUT_rate(member, decoding)
#define QUILLO_SNAPSHOT_PUT_wire(member, decoding)
#define QUILLO_SNAPSHOT_PUT(member, Bit, Type, decoding, role) QUILLO_SNAPSHOT_PUT_##role(member, decoding)
        QUILLO_TNT_FIELDS(QUILLO_SNAPSHOT_PUT)
    }
    const QMap<QString, API::Category> &categories = labels.categories();
    writer.putNumber(static_cast<quint64>(categories.size()));
    for (auto it = categories.cbegin(); it != categories.cend(); ++it) {
        writer.put(it.key());
        writer.put(it->savePath.value_or(QString()));
    }
    writer.putStrings(labels.tags());
    const QHash<QString, QStringList> &urls = trackers.urls();
    writer.putNumber(static_cast<quint64>(urls.size()));
    for (auto it = urls.cbegin(); it != urls.cend(); ++it) {
        writer.put(it.key());
        writer.putNumber(static_cast<quint64>(it->size()));
        for (const QString &hash : *it)
            writer.putInline(hash);
    }
    return writer.finish();
}

std::optional<API::MainData> TntSnapshot::decode(QByteArrayView bytes)
{
    constexpr qsizetype sumSize = sizeof(quint64);
    if (bytes.size() < qsizetype(sizeof magic) + sumSize || !bytes.startsWith(QByteArrayView(magic, sizeof magic)))
        return std::nullopt;
    const QByteArrayView content = bytes.first(bytes.size() - sumSize);
    if (qFromLittleEndian<quint64>(bytes.last(sumSize).data()) != fnv1a(content))
        return std::nullopt;
    try {
        Reader reader(content.sliced(sizeof magic));
        if (reader.number() != formatVersion || reader.number() != fnv1a(fieldList))
            return std::nullopt;
        reader.readStrings();
        API::MainData data;
        data.fullUpdate = true;
        const qsizetype size = reader.count();
        data.tnts.reserve(size);
        for (qsizetype i = 0; i < size; ++i) {
            const QString hash = reader.inlineString();
            if (hash.isEmpty())
                return std::nullopt;
            API::STntModel &tnt = data.tnts[hash];
#define QUILLO_SNAPSHOT_GET_kept(member, Type, decoding)                                                   \
    tnt.member = reader.getField<Type>(QUILLO_SNAPSHOT_SHARED_##decoding);
#define QUILLO_SNAPSHOT_GET_rate(member, Type, decoding)
#define QUILLO_SNAPSHOT_GET_wire(member, Type, decoding)
#define QUILLO_SNAPSHOT_GET(member, Bit, Type, decoding, role) QUILLO_SNAPSHOT_GET_##role(member, Type, decoding)
            QUILLO_TNT_FIELDS(QUILLO_SNAPSHOT_GET)
        }
        for (qsizetype i = reader.count(); i > 0; --i) {
            const QString name = reader.name();
            const QString savePath = reader.get<QString>();
            data.categories.insert(name, {name, savePath.isNull() ? std::nullopt : std::optional(savePath)});
        }
        data.tags = reader.names();
        for (qsizetype i = reader.count(); i > 0; --i) {
            const QString url = reader.name();
            QStringList hashes;
            for (qsizetype j = reader.count(); j > 0; --j)
                hashes.append(reader.inlineString());
            data.trackers.insert(url, hashes);
        }
        if (!reader.atEnd())
            return std::nullopt;
        return data;
    } catch (const Truncated &) {
        return std::nullopt;
    }
}
