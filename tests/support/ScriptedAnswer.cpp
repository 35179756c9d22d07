#include <support/ScriptedAnswer.h>

namespace support {

namespace {

constexpr int chunkBytes = 16 * 1024;

QByteArray complete(const QByteArray &statusLine, const QByteArray &fields, const QByteArray &body)
{
    return "HTTP/1.1 " + statusLine + "\r\n" + fields +
           "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

} // namespace

ScriptedAnswer ScriptedAnswer::ok(const QByteArray &body)
{
    return {.bytes = complete("200 OK", "Content-Type: application/json\r\n", body)};
}

ScriptedAnswer ScriptedAnswer::status(int code)
{
    const QByteArray line = QByteArray::number(code) + " As scripted";
    if (code == 204)
        return {.bytes = "HTTP/1.1 " + line + "\r\n\r\n"}; // has no body, hence no length
    return {.bytes = complete(line, code / 100 == 3 ? "Location: /redirected\r\n" : "", "{}")};
}

ScriptedAnswer ScriptedAnswer::chunked()
{
    return {
        .bytes =
            "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\n{\r\n1\r\n}\r\n0\r\n\r\n"};
}

ScriptedAnswer ScriptedAnswer::compressedZeros(qsizetype inflatedBytes)
{
    constexpr int lengthBytes = 4; // which qCompress puts before the stream
    const auto zeros = qCompress(QByteArray(inflatedBytes, '\0')).mid(lengthBytes);
    return {.bytes = complete("200 OK", "Content-Encoding: deflate\r\n", zeros)};
}

ScriptedAnswer ScriptedAnswer::largeHeader(qsizetype bytes)
{
    const auto field = "X-Filler: " + QByteArray(chunkBytes, 'x') + "\r\n";
    return {.bytes = complete("200 OK", field.repeated(bytes / field.size() + 1), "{}")};
}

ScriptedAnswer ScriptedAnswer::slow(std::chrono::milliseconds delay)
{
    ScriptedAnswer answer = ok();
    answer.delay = delay;
    return answer;
}

ScriptedAnswer ScriptedAnswer::garbage()
{
    return {.bytes = "\x16\x03\x01 this is no HTTP\r\n\r\n", .closes = true};
}

ScriptedAnswer ScriptedAnswer::blackHole()
{
    return {};
}

ScriptedAnswer ScriptedAnswer::closed()
{
    return {.closes = true};
}

ScriptedAnswer ScriptedAnswer::truncated()
{
    return {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nonly this", .closes = true};
}

ScriptedAnswer ScriptedAnswer::twoLengths()
{
    return {.bytes = complete("200 OK", "Content-Length: 1\r\n", "{}"), .closes = true};
}

ScriptedAnswer ScriptedAnswer::drippingHeader(std::chrono::milliseconds pause)
{
    return {.bytes = "HTTP/1.1 200 OK\r\nX-Filler: ", .repeated = "x", .pause = pause};
}

ScriptedAnswer ScriptedAnswer::dripping(std::chrono::milliseconds pause)
{
    return {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 1000000000\r\n\r\n",
            .repeated = ".",
            .pause = pause};
}

ScriptedAnswer ScriptedAnswer::endlessBody()
{
    return {.bytes = "HTTP/1.1 200 OK\r\n\r\n", .repeated = QByteArray(chunkBytes, 'x')};
}

ScriptedAnswer ScriptedAnswer::largeBody(qint64 bytes)
{
    return {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(bytes) + "\r\n\r\n",
            .repeated = QByteArray(chunkBytes, 'x')};
}

ScriptedAnswer ScriptedAnswer::endlessHeader()
{
    return {.bytes = "HTTP/1.1 200 OK\r\n",
            .repeated = "X-Filler: " + QByteArray(chunkBytes, 'x') + "\r\n"};
}

ScriptedAnswer ScriptedAnswer::endlessInterim(std::chrono::milliseconds pause)
{
    return {.repeated = "HTTP/1.1 100 Continue\r\n\r\n", .pause = pause};
}

} // namespace support
