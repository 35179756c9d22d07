#pragma once

#include <QByteArray>

#include <chrono>

namespace support {

using namespace std::chrono_literals;

/// What a ScriptedServer does once it has read a request: it waits, sends, goes on sending, and
/// then keeps the connection or closes it. A value type.
struct ScriptedAnswer
{
    std::chrono::milliseconds delay = 0ms; // before the first byte
    QByteArray bytes = {};
    QByteArray repeated = {};              // sent after `bytes` without an end; nothing if empty
    std::chrono::milliseconds pause = 0ms; // before each repetition
    bool closes = false;                   // otherwise the connection waits for its next request

    /// A complete answer; the connection is kept.
    static ScriptedAnswer ok(const QByteArray &body = "{}");
    /// A complete answer with that status; a redirect leads to "/redirected" of the same server.
    static ScriptedAnswer status(int code);
    /// A complete answer whose body comes in chunks.
    static ScriptedAnswer chunked();
    /// A complete answer whose compressed body is small, and huge if it is inflated.
    static ScriptedAnswer compressedZeros(qsizetype inflatedBytes);
    /// A complete answer with header fields of that many bytes.
    static ScriptedAnswer largeHeader(qsizetype bytes);
    /// A complete answer that starts after `delay`.
    static ScriptedAnswer slow(std::chrono::milliseconds delay);
    /// Bytes that are no HTTP, and the connection is closed.
    static ScriptedAnswer garbage();
    /// Nothing, ever, on a connection that stays open.
    static ScriptedAnswer blackHole();
    /// Nothing, and the connection is closed.
    static ScriptedAnswer closed();
    /// A body that announces a length and ends before it with the connection.
    static ScriptedAnswer truncated();
    /// A complete answer with a second Content-Length, and the connection is closed: another
    /// length.
    static ScriptedAnswer twoLengths();
    /// Header fields of one byte at a time that never end.
    static ScriptedAnswer drippingHeader(std::chrono::milliseconds pause);
    /// A body of one byte at a time that never ends.
    static ScriptedAnswer dripping(std::chrono::milliseconds pause);
    /// A body as fast as the peer takes it that never ends.
    static ScriptedAnswer endlessBody();
    /// The same, after that length was announced.
    static ScriptedAnswer largeBody(qint64 bytes);
    /// Header fields as fast as the peer takes them that never end.
    static ScriptedAnswer endlessHeader();
    /// Interim answers, with a pause between them, and never a final one.
    static ScriptedAnswer endlessInterim(std::chrono::milliseconds pause);
};

} // namespace support
