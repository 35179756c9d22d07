#pragma once

#include <support/LoopbackServer.h>
#include <support/TlsIdentity.h>

#include <mutex>
#include <optional>
#include <set>

namespace support {

/**
 * The network on the way to a server on the loopback address: it passes connections on, or loses
 * them. What the server itself does wrong is a ScriptedAnswer's part.
 *
 * Owner: the test.
 * Thread: those of a LoopbackServer; every member is for the test's thread.
 * Errors: the constructor and `comeUp` throw std::system_error if there is no port. TLS writes to
 * sockets without a care for SIGPIPE: the constructor has this process ignore it.
 * Shut-down: the destructor and `goDown` cut all connections.
 */
class FaultProxy
{
public:
    enum class Fault {
        None,    ///< everything is passed on, both ways
        Swallow, ///< the connection is accepted, and nothing is read or written
        Reset,   ///< after the first bytes the connection is reset
    };

    /// Leads to that port, from one that the system chose.
    explicit FaultProxy(int targetPort);

    int port() const { return m_server.port(); }

    /// What happens to each connection from now on. The present ones are cut.
    void strike(Fault fault);
    /// From now on connections are passed on. Those that are passed on already stay, all others
    /// are cut.
    void heal();
    /// From now on new connections are of TLS, up to here, with that certificate.
    void present(const TlsIdentity &identity);

    /// Closes the port and cuts the connections, so that the next ones are refused.
    void goDown() { m_server.goDown(); }
    /// Listens again, on the same port.
    void comeUp() { m_server.comeUp(); }

    /// How many connections were accepted.
    int connectionCount() const { return m_server.connectionCount(); }

private:
    struct State
    {
        Fault fault = Fault::None;
        TlsContextPtr tls;
    };

    void serve(int socket);
    void swallow(int socket);
    void passOn(int socket, SSL_CTX *tls) const;

    const int m_targetPort;
    mutable std::mutex m_mutex; // guards the two that follow
    State m_state;
    std::set<int> m_swallowed; // sockets
    LoopbackServer m_server;
};

} // namespace support
