#pragma once

#include <QCoreApplication>
#include <QTcpServer>

namespace support {

/// A free port that the system gives to nobody who does not ask for it: for who has to know a port
/// before it is listened on, or between.
inline int freePort()
{
    constexpr int first = 20'000;
    constexpr int count = 10'000; // below those that connections get
    for (qint64 offset = QCoreApplication::applicationPid();; ++offset) {
        const auto port = static_cast<quint16>(first + offset % count);
        if (QTcpServer().listen(QHostAddress::LocalHost, port))
            return port;
    }
}

} // namespace support
