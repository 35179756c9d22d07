#include "Bodies.h"

#include "Bytes.h"

#include <QList>

#include <array>

namespace inbound {

namespace {

constexpr int deepest = 100'000;
constexpr int largest = 1'048'576; // the limit, which still is acknowledged

/// Values of every JSON type, and some of none.
const QList<QByteArray> &values()
{
    static const QList<QByteArray> all{
        "null",
        "true",
        "false",
        "0",
        "-0",
        "1",
        "1.5",
        "1e999",
        "-1e-999",
        "1E+2",
        "01",
        "+1",
        ".5",
        "NaN",
        "Infinity",
        "123456789012345678901234567890",
        "-9223372036854775809",
        "18446744073709551616",
        "\"\"",
        "\"request\"",
        "\"result\"",
        "\"getImage\"",
        "\"adResult\"",
        "\"GETIMAGE\"",
        "\" getImage\"",
        "\"getImage\\u0000\"",
        "\"\\u0000\"",
        "\"\\ud800\"",
        "\"\\udc00\\ud800\"",
        "\"\\ud83d\\ude00\"",
        "\"\\uFFFF\"",
        "\"\\x\"",
        "\"\\u12\"",
        "\"\xff\xfe\"",
        "\"\xc0\xaf\"",
        "\"\xed\xa0\x80\"",
        "\"\xf4\x90\x80\x80\"",
        "\"\xe2\x82\"",
        "\"\n\"",
        "'getImage'",
        "[]",
        "[null]",
        "[[[[]]]]",
        "{}",
        "{\"\":{}}",
        "{\"a\":{\"b\":[{}]}}",
        "{\"GoodsCode\":null}",
        "{\"GoodsCode\":[]}",
        "{\"GoodsCode\":{}}",
        "{\"GoodsCode\":{\"type\":5,\"value\":{}}}",
        "{\"GoodsCode\":{\"type\":\"Barcode\",\"value\":\"1\"},\"Barcode\":7}",
        "{\"GoodsCode\":{\"type\":\"None\",\"value\":\"1\",\"value\":\"2\"}}",
        ""};
    return all;
}

/// Keys of the display's requests in any order and number, each with any value.
QByteArray anyObject(Random &random)
{
    static const std::array<QByteArray, 6> keys{"type", "name", "data", "value", "Type", ""};
    QByteArray members;
    for (int left = random.below(8); left > 0; --left) {
        members += '"' + random.of(keys) + "\":" + random.of(values());
        if (left > 1 || random.oneIn(20))
            members += ',';
    }
    return '{' + members + '}';
}

/// As good as it was, but for one value.
QByteArray withOtherValue(Random &random, const QByteArray &good)
{
    static const std::array<QByteArray, 4> keys{
        "\"type\":", "\"name\":", "\"data\":", "\"value\":"};
    const auto &key = random.of(keys);
    const auto at = good.indexOf(key);
    if (at < 0)
        return random.of(values());
    const auto begin = at + key.size();
    const auto end = good.indexOf(random.oneIn(2) ? ',' : '}', begin);
    return good.left(begin) + random.of(values()) + (end < 0 ? QByteArray("}") : good.mid(end));
}

QByteArray nested(Random &random)
{
    const int levels = random.oneIn(50) ? deepest : random.between(1, 2000);
    const bool closes = random.oneIn(2);
    const bool inObjects = random.oneIn(2);
    const QByteArray open = inObjects ? "{\"a\":" : "[";
    auto body = "{\"type\":\"request\",\"name\":\"getImage\",\"data\":" + open.repeated(levels);
    if (closes)
        body += QByteArray(inObjects ? "1" : "") + QByteArray(levels, inObjects ? '}' : ']') + '}';
    return body;
}

QByteArray huge(Random &random)
{
    static const std::array<char, 5> fillers{'9', ' ', '\\', '\0', '\xff'};
    static const QByteArray begin = "{\"type\":\"result\",\"name\":\"adResult\",\"value\":";
    return begin + QByteArray(random.between(1000, largest - 100), random.of(fillers)) + '}';
}

QByteArray inOtherEncoding(const QByteArray &good)
{
    QByteArray wide = "\xff\xfe";
    for (const char c : good)
        wide.append(c).append('\0');
    return wide;
}

} // namespace

QByteArray anyBody(Random &random, const QByteArray &good)
{
    const int choice = random.below(1000);
    if (choice == 0)
        return huge(random);
    if (choice < 20)
        return nested(random);
    if (choice < 30)
        return inOtherEncoding(good);
    if (choice < 40)
        return "\xef\xbb\xbf" + good;
    if (choice < 350)
        return anyObject(random);
    if (choice < 550)
        return withOtherValue(random, good);
    if (choice < 700)
        return mutated(random, good);
    return good;
}

} // namespace inbound
