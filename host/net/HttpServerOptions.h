#pragma once

#include <HostExport.h>

#include <QString>

#include <chrono>

/// Where an HttpServer listens and what it accepts. A value type.
struct HOST_EXPORT HttpServerOptions
{
    /// An IPv4 address of this machine; "0.0.0.0" for all of them.
    QString address = QStringLiteral("127.0.0.1");
    /// The largest request body; a larger one is answered 413.
    qint64 maxBodyBytes = 1'048'576;
    /// The room for the request line and the header fields of one request.
    qint64 maxHeaderBytes = 32'768;
    /// Connections served at the same time; further ones wait until one of them ends.
    int maxConnections = 256;
    /// How long a connection may stay silent before it is closed.
    std::chrono::seconds idleTimeout{10};
    /// How long the body of one request may take; then its connection is closed.
    std::chrono::seconds bodyTimeout{30};

    /// The defaults above, overridden by the settings "HttpServer:address", ":maxBodyBytes",
    /// ":maxHeaderBytes", ":maxConnections", ":idleTimeout" and ":bodyTimeout" (seconds). A number
    /// below 1 keeps the default.
    static HttpServerOptions fromConfig();
};
