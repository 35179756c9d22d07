#pragma once

#include <QByteArray>
#include <QList>

#include <optional>

/// What a multipart message consists of, read strictly.
struct Multipart
{
    QList<QByteArray> jpegs;
    bool isClosed = false; ///< the closing boundary has come, and nothing after it

    /// Nothing if `body` is not of this form. The message may go on, but only after a whole part.
    static std::optional<Multipart> parse(QByteArray body, const QByteArray &boundary)
    {
        const auto take = [&](const QByteArray &expected) {
            const bool is = body.startsWith(expected);
            body.remove(0, is ? expected.size() : 0);
            return is;
        };
        Multipart message;
        if (!take("--" + boundary + "\r\n"))
            return std::nullopt;
        while (!body.isEmpty()) {
            if (!take("Content-Type: image/jpeg\r\nContent-Length: "))
                return std::nullopt;
            const auto size = body.left(body.indexOf("\r\n")).toLongLong();
            if (!take(QByteArray::number(size) + "\r\n\r\n") || body.size() < size)
                return std::nullopt;
            message.jpegs += body.left(size);
            body.remove(0, size);
            message.isClosed = take("\r\n--" + boundary + "--\r\n");
            if (message.isClosed ? !body.isEmpty() : !take("\r\n--" + boundary + "\r\n"))
                return std::nullopt;
        }
        return message;
    }
};
