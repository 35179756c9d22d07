#pragma once

#include <QCoreApplication>
#include <QString>

namespace support {

/// A loopback address of this process alone: every port on it is free, also one that must be known
/// before anybody listens there.
inline QString ownLoopbackAddress()
{
    const auto pid = QCoreApplication::applicationPid();
    return QStringLiteral("127.%1.%2.%3")
        .arg(1 + pid / 65536 % 254)
        .arg(pid / 256 % 256)
        .arg(pid % 256);
}

} // namespace support
