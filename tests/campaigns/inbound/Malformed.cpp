#include "Malformed.h"

#include "Bytes.h"

#include <array>

namespace inbound {

namespace {

const QByteArray headEnd = "\r\n\r\n";

QByteArray replaced(QByteArray bytes, const QByteArray &what, const QByteArray &by)
{
    const auto at = bytes.indexOf(what);
    return at < 0 ? bytes : bytes.replace(at, what.size(), by);
}

QByteArray withOddRequestLine(Random &random, Request request)
{
    static const std::array<QByteArray, 8> methods{"",     " ",     "GE T", "G\xc3\xa9T",
                                                   "GET:", "GET\t", "\"",   "CONNECT"};
    static const std::array<QByteArray, 10> versions{
        "",         "HTTP/2.0", "HTTP/0.9",   "HTTP/1.",        "HTTP/1.10",
        "http/1.1", "HTTP/-1",  "HTTP/1.1 x", "HTTP/9999999.1", "\xff"};
    static const std::array<QByteArray, 8> targets{
        "", " ", "*", "a b", "//", "http://a/\x01", "/%", "localhost:80"};
    switch (random.below(5)) {
    case 0:
        request.method = random.of(methods);
        break;
    case 1:
        request.version = random.of(versions);
        break;
    case 2:
        request.target = random.of(targets);
        break;
    case 3:
        request.target = '/' + QByteArray(random.between(1, 100'000), random.byte());
        break;
    default:
        request.target = "/?" + QByteArray("a=b&").repeated(random.between(1, 5000));
    }
    return request.bytes();
}

QByteArray withOddFields(Random &random, Request request)
{
    static const std::array<Request::Field, 12> odd{{{"Host", "elsewhere"},
                                                     {"Host", "a b"},
                                                     {"", "a"},
                                                     {"X ", "a"},
                                                     {" X", "a"},
                                                     {"X", "a\r\n b"},
                                                     {"X", QByteArray("a\0b", 3)},
                                                     {"X", "a\x07"},
                                                     {"X(", "a"},
                                                     {"X\r\nY", "a"},
                                                     {"Expect", "tea"},
                                                     {"Upgrade", "h2c"}}};
    switch (random.below(4)) {
    case 0:
        request.fields.removeIf([](const auto &field) { return field.name == "Host"; });
        break;
    case 1:
        request.fields.append({"X-Long", QByteArray(random.between(1, 100'000), 'a')});
        break;
    case 2:
        for (int left = random.between(1, 3000); left > 0; --left)
            request.fields.append(Request::Field{"a", ""});
        break;
    default:
        request.fields.insert(random.below(request.fields.size() + 1), random.of(odd));
    }
    return request.bytes();
}

/// A length that lies, or more than one.
QByteArray withOddLength(Random &random, Request request)
{
    static const std::array<QByteArray, 16> lengths{"0",
                                                    "1",
                                                    "18446744073709551615",
                                                    "18446744073709551621",
                                                    "-1",
                                                    "+5",
                                                    "0x5",
                                                    "",
                                                    "5, 5",
                                                    "5 5",
                                                    "1e3",
                                                    "1048576",
                                                    "1048577",
                                                    "\"5\"",
                                                    "a",
                                                    "999999999999999999999999999999"};
    static const std::array<QByteArray, 6> encodings{
        "identity", "gzip, chunked", "chunked, chunked", "xchunked", "", "\vchunked"};
    request.chunkSize = 0;
    const auto own = "Content-Length: " + QByteArray::number(request.body.size());
    const auto lie = "Content-Length: " + random.of(lengths);
    const auto encoding = "Transfer-Encoding: " + random.of(encodings);
    const std::array<QByteArray, 6> all{
        lie,      own + "\r\n" + lie,   lie + "\r\n" + own, own + "\r\nTransfer-Encoding: chunked",
        encoding, "X: no length at all"};
    request.lengthPrefix.clear();
    return replaced(request.bytes(), own, random.of(all));
}

QByteArray withOddChunks(Random &random, Request request)
{
    static const std::array<QByteArray, 12> sizes{
        "",      "-5", "+5", "0x5", "g", " 5", "5 ", "1_0", "ffffffffffffffff", "10000000000000005",
        "fffff", "0"};
    request.chunkSize = random.between(1 + static_cast<int>(request.body.size()) / 50, 100'000);
    const auto bytes = request.bytes();
    const auto body = bytes.indexOf(headEnd) + headEnd.size();
    const auto chunks = bytes.mid(body);
    const auto sizeEnd = chunks.indexOf("\r\n");
    switch (random.below(3)) {
    case 0:
        return bytes.left(body) + random.of(sizes) + chunks.mid(sizeEnd);
    case 1:
        return bytes.left(body) + mutated(random, chunks);
    default:
        return bytes + QByteArray(random.of(sizes)).repeated(random.between(1, 500));
    }
}

QByteArray truncated(Random &random, const QByteArray &bytes)
{
    return bytes.left(random.below(bytes.size()));
}

/// Followed by what must not be mixed up with it.
QByteArray followed(Random &random, const QByteArray &bytes)
{
    return mutated(random, bytes) + bytes + mutated(random, bytes);
}

} // namespace

QByteArray malformed(Random &random, Request request)
{
    const auto bytes = request.bytes();
    const auto head = bytes.indexOf(headEnd) + headEnd.size();
    switch (random.below(10)) {
    case 0:
        return withOddRequestLine(random, std::move(request));
    case 1:
        return withOddFields(random, std::move(request));
    case 2:
        return withOddLength(random, std::move(request));
    case 3:
        return withOddChunks(random, std::move(request));
    case 4:
        return truncated(random, bytes);
    case 5:
        return followed(random, bytes);
    case 6:
        return mutated(random, bytes);
    default:
        return mutated(random, bytes.left(head)) + bytes.mid(head);
    }
}

} // namespace inbound
