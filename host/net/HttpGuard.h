#pragma once

#include <HostExport.h>
#include <RequestHeader.h>

/**
 * Keeps web pages of other sites away from a server on this machine: a browser tells by "Host"
 * under which name the server was asked for, which a page may have pointed at this machine, and by
 * "Origin" which page asks.
 *
 * Own names are "localhost", 127.0.0.0/8, "[::1]" and the address listened on, with any port or
 * none. A value type.
 */
class HOST_EXPORT HttpGuard
{
public:
    /// `address` is the one listened on; "0.0.0.0" is nobody's name.
    explicit HttpGuard(const QString &address);

    /// Whether "Host" is there, and it and "Origin", if there, are of an own name.
    bool admits(const RequestHeader &header) const;

private:
    bool isOwnAuthority(const QString &authority) const;
    bool isOwnOrigin(const QString &origin) const;
    bool isOwnName(const QString &name) const;

    QString m_address;
};
