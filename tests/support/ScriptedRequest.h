#pragma once

#include <QByteArray>
#include <QList>

#include <chrono>
#include <utility>

namespace support {

/// A request as it reached a ScriptedServer. A value type.
struct ScriptedRequest
{
    QByteArray method;
    QByteArray path;
    QList<std::pair<QByteArray, QByteArray>> fields; // names in lower case
    QByteArray body;
    int connection = 0; // 0 for the first that was accepted, and so on
    std::chrono::steady_clock::time_point arrival;

    QByteArray field(const QByteArray &lowerCaseName) const;
    bool hasField(const QByteArray &lowerCaseName) const;
};

/// Waits for a complete request on a socket and takes it out of `received`, which keeps what
/// follows it. False when the peer has closed or the connection was cut.
bool readRequest(int socket, QByteArray &received, ScriptedRequest &request);

} // namespace support
