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
    /// The request line and header fields of one request; longer ones are answered 414 or 431.
    qint64 maxHeaderBytes = 32'768;
    /// Connections at the same time; for a further one, that whose request has been incomplete, or
    /// whose answer has not been taken, the longest is closed; if all are busy, it waits for the
    /// next to have been answered, which is closed.
    int maxConnections = 256;
    /// How long a connection may stay silent before it is closed.
    std::chrono::seconds idleTimeout{10};
    /// How long a request may take from its connection to the end of its header; then it is
    /// answered 408.
    std::chrono::seconds headerTimeout{10};
    /// How long the body of one request may take; then it is answered 408.
    std::chrono::seconds bodyTimeout{30};
    /// How long a client may take for its answer; then its connection is closed.
    std::chrono::seconds answerTimeout{30};
    /// Whether requests under a foreign name, or from a foreign page, are answered 403.
    bool guard = false;

    /// The defaults above, overridden by the settings "HttpServer:address", ":maxBodyBytes",
    /// ":maxHeaderBytes", ":maxConnections", ":idleTimeout", ":headerTimeout", ":bodyTimeout",
    /// ":answerTimeout" (seconds) and ":guard". A number below 1 keeps the default.
    static HttpServerOptions fromConfig();
};
