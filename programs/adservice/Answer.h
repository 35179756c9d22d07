#pragma once

#include <QByteArray>
#include <QList>

#include <functional>
#include <utility>

/// What an HTTP request is answered with.
struct Answer
{
    using Field = std::pair<QByteArray, QByteArray>;

    int status = 200;
    QList<Field> fields{};
    QByteArray body{};
    /// Gives what follows `body`, piece by piece, until it gives nothing; may take its time. Null
    /// if nothing follows. Called, and let go, on the connection's thread.
    std::function<QByteArray()> more{};
};

/// An answer of a short text for people.
inline Answer textAnswer(int status, const QByteArray &text)
{
    return {status, {{"Content-Type", "text/plain; charset=utf-8"}}, text + '\n', nullptr};
}
