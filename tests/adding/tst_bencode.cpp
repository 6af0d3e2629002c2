#include "adding/BencodeDecoder.h"

#include <QTest>

#include <algorithm>

namespace {

// A decoded tree as one line: i:digits, b:bytes, [elements], {key=value} with keys sorted.
QByteArray render(const BencodeResult &value)
{
    const BencodeResult::RawData raw = value.rawData();
    if (const auto *bytes = std::get_if<QByteArrayView>(&raw))
        return (value.type() == BencodeResult::BencodeType::integer ? "i:" : "b:") + bytes->toByteArray();
    if (const auto *list = std::get_if<BencodeResult::List>(&raw)) {
        QByteArrayList elements;
        for (const BencodeResult element : *list)
            elements << render(element);
        return '[' + elements.join(',') + ']';
    }
    const auto &dictionary = std::get<BencodeResult::Dictionary>(raw);
    QList<QByteArrayView> keys = dictionary.keys();
    std::sort(keys.begin(), keys.end());
    QByteArrayList entries;
    for (const QByteArrayView key : keys)
        entries << key.toByteArray() + '=' + render(*dictionary.value(key));
    return '{' + entries.join(',') + '}';
}

// The rendered tree, or "invalidFormat".
QByteArray decoded(const QByteArray &input)
{
    try {
        return render(Bencode::decode(input));
    } catch (BencodeDecodeError error) {
        Q_ASSERT(error == BencodeDecodeError::invalidFormat);
        return "invalidFormat";
    }
}

QByteArray nestedLists(int depth)
{
    return QByteArray(depth, 'l') + QByteArray(depth, 'e');
}

} // namespace

class TestBencode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decode_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("tree");

        QTest::newRow("integer") << QByteArray("i42e") << QByteArray("i:42");
        QTest::newRow("integer digits unchecked") << QByteArray("i4x2e") << QByteArray("i:4x2");
        QTest::newRow("string") << QByteArray("4:spam") << QByteArray("b:spam");
        QTest::newRow("empty string") << QByteArray("0:") << QByteArray("b:");
        QTest::newRow("length with zeros and signs") << QByteArray("l04:spam+1:a-0:e") << QByteArray("[b:spam,b:a,b:]");
        QTest::newRow("empty list") << QByteArray("le") << QByteArray("[]");
        QTest::newRow("empty dictionary") << QByteArray("de") << QByteArray("{}");
        QTest::newRow("dictionary") << QByteArray("d3:cow3:moo4:spam4:eggse") << QByteArray("{cow=b:moo,spam=b:eggs}");
        QTest::newRow("unsorted keys") << QByteArray("d1:b1:x1:a1:ye") << QByteArray("{a=b:y,b=b:x}");
        QTest::newRow("last duplicate wins") << QByteArray("d1:a1:x1:a1:ye") << QByteArray("{a=b:y}");
        QTest::newRow("info bytes kept") << QByteArray("d4:infod6:lengthi5eee")
                                         << QByteArray("{hash=b:d6:lengthi5ee,info={length=i:5}}");
        QTest::newRow("earlier hash key loses") << QByteArray("d4:hash1:x4:infodee") << QByteArray("{hash=b:de,info={}}");
        QTest::newRow("later hash key wins") << QByteArray("d4:infode4:hash1:xe") << QByteArray("{hash=b:x,info={}}");
        QTest::newRow("nested info keeps the whole outer value")
            << QByteArray("d4:infod4:infoi1eee") << QByteArray("{hash=b:d4:infoi1ee,info={hash=b:i1e,info=i:1}}");
        QTest::newRow("non-UTF-8 value") << QByteArray("d1:k1:\xff" "e") << QByteArray("{k=b:\xff}");
        QTest::newRow("non-UTF-8 keys kept as bytes")
            << QByteArray("d12:piece layersd2:\xff\xfe" "1:a2:\xc3(1:bee") << QByteArray("{piece layers={\xc3(=b:b,\xff\xfe=b:a}}");
        QTest::newRow("trailing bytes ignored") << QByteArray("i1e trailing") << QByteArray("i:1");
        QTest::newRow("deepest nesting") << nestedLists(BencodeDecoder::depthLimit)
                                         << QByteArray(BencodeDecoder::depthLimit, '[') + QByteArray(BencodeDecoder::depthLimit, ']');

        const QByteArray invalid("invalidFormat");
        QTest::newRow("empty input") << QByteArray() << invalid;
        QTest::newRow("empty integer") << QByteArray("ie") << invalid;
        QTest::newRow("integer without end") << QByteArray("i12") << invalid;
        QTest::newRow("no length") << QByteArray(":spam") << invalid;
        QTest::newRow("stray byte") << QByteArray("x:spam") << invalid;
        QTest::newRow("lone end") << QByteArray("e") << invalid;
        QTest::newRow("sign alone") << QByteArray("-:") << invalid;
        QTest::newRow("negative length") << QByteArray("-1:a") << invalid;
        QTest::newRow("length past the end") << QByteArray("5:spam") << invalid;
        QTest::newRow("length overflow") << QByteArray("99999999999999999999:x") << invalid;
        QTest::newRow("string without colon") << QByteArray("4spam") << invalid;
        QTest::newRow("list cut off") << QByteArray("li1e") << invalid;
        QTest::newRow("dictionary cut off after key") << QByteArray("d3:cow") << invalid;
        QTest::newRow("dictionary cut off after value") << QByteArray("d3:cow3:moo") << invalid;
        QTest::newRow("key without value") << QByteArray("d3:cowe") << invalid;
        QTest::newRow("integer key") << QByteArray("di1ei2ee") << invalid;
        QTest::newRow("too deep") << nestedLists(BencodeDecoder::depthLimit + 1) << invalid;
    }

    void decode()
    {
        QFETCH(QByteArray, input);
        QFETCH(QByteArray, tree);
        QCOMPARE(decoded(input), tree);
    }

    void integerConversion_data()
    {
        QTest::addColumn<QByteArray>("digits");
        QTest::addColumn<std::optional<qint64>>("value");

        QTest::newRow("plain") << QByteArray("42") << std::optional<qint64>(42);
        QTest::newRow("negative") << QByteArray("-7") << std::optional<qint64>(-7);
        QTest::newRow("plus") << QByteArray("+7") << std::optional<qint64>(7);
        QTest::newRow("leading zeros") << QByteArray("007") << std::optional<qint64>(7);
        QTest::newRow("minus zero") << QByteArray("-0") << std::optional<qint64>(0);
        QTest::newRow("largest") << QByteArray("9223372036854775807") << std::optional<qint64>(INT64_MAX);
        QTest::newRow("smallest") << QByteArray("-9223372036854775808") << std::optional<qint64>(INT64_MIN);
        QTest::newRow("past largest") << QByteArray("9223372036854775808") << std::optional<qint64>();
        QTest::newRow("past smallest") << QByteArray("-9223372036854775809") << std::optional<qint64>();
        QTest::newRow("letter inside") << QByteArray("4x2") << std::optional<qint64>();
        QTest::newRow("sign alone") << QByteArray("-") << std::optional<qint64>();
        QTest::newRow("two signs") << QByteArray("+-1") << std::optional<qint64>();
        QTest::newRow("space") << QByteArray(" 1") << std::optional<qint64>();
    }

    void integerConversion()
    {
        QFETCH(QByteArray, digits);
        QFETCH(std::optional<qint64>, value);
        QCOMPARE(Bencode::decode('i' + digits + 'e').toInteger(), value);
    }

    void textConversion()
    {
        QCOMPARE(Bencode::decode("2:\xc3\xa9").toText(), std::optional<QString>(u"é"_qs));
        QCOMPARE(Bencode::decode("1:\xff").toText(), std::optional<QString>());
        QCOMPARE(Bencode::decode("le").toText(), std::optional<QString>());
        QCOMPARE(Bencode::decode("le").toInteger(), std::optional<qint64>());
    }

    void valuesOutliveTheirTree()
    {
        std::optional<BencodeResult> inner;
        {
            const auto top = std::get<BencodeResult::Dictionary>(Bencode::decode("d1:kl4:spamee").rawData());
            inner = *std::get<BencodeResult::List>(top.value("k")->rawData()).begin();
        }
        QCOMPARE(inner->toText(), std::optional<QString>(u"spam"_qs));
    }
};

QTEST_GUILESS_MAIN(TestBencode)
#include "tst_bencode.moc"
