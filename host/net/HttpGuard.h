#pragma once

#include <HostExport.h>
#include <RequestHeader.h>

/**
 * Keeps web pages of other sites away from a server on this machine: a browser tells by "Host"
 * under which name the server was asked for, which a page may have pointed at this machine, by
 * "Origin" which page asks, and by "Sec-Fetch-Site" that a page of another site wants a part of its
 * own from here.
 *
 * Own names are "localhost", 127.0.0.0/8, "[::1]" and the address listened on, with any port or
 * none. A value type.
 */
class HOST_EXPORT HttpGuard
{
public:
    /// `address` is the one listened on; "0.0.0.0" is nobody's name.
    explicit HttpGuard(const QString &address);

    /// Whether "Host" is there, it and "Origin", if there, are of an own name, and the request is
    /// not for a part of another site's page. Following a link from there is no such part.
    bool admits(const RequestHeader &header) const;

private:
    bool isOwnAuthority(const QString &authority) const;
    bool isOwnOrigin(const QString &origin) const;
    bool isOwnName(const QString &name) const;

    QString m_address;
};
