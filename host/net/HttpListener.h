#pragma once

#include <QString>
#include <QtGlobal>

#include <sys/socket.h>

#include <optional>

/**
 * The socket that the clients of an HttpServer arrive at. libmicrohttpd could have one of its own,
 * but takes no client, once connections or descriptors have run out, before another one leaves.
 *
 * Owner: the HttpDaemon. Thread: any one at a time. Shut-down: the destructor frees the port;
 * clients that have not been accepted are cut off.
 */
class HttpListener
{
public:
    /// A connection, which belongs to whoever accepted it.
    struct Client
    {
        int socket;
        sockaddr_storage address;
        socklen_t addressSize;
    };

    HttpListener() = default;
    ~HttpListener();
    Q_DISABLE_COPY_MOVE(HttpListener)

    /// Listens at an IPv4 address, at a port that the system chooses if `port` is 0. Returns why it
    /// cannot; nothing if it does.
    QString open(const QString &address, int port);
    void close();

    /// The port; 0 if it is not open.
    int port() const { return m_port; }
    /// To wait for clients by; -1 if it is not open.
    int descriptor() const { return m_socket; }
    bool isAwaited() const;
    /// The client that waits the longest; nothing if it has gone, or cannot be taken now.
    std::optional<Client> accept();
    /// Whether the last client was not taken for want of descriptors, memory or the like, so that
    /// another try would fail, too.
    bool lacksResources() const { return m_lacksResources; }

private:
    int m_socket = -1;
    int m_port = 0;
    bool m_lacksResources = false;
};
