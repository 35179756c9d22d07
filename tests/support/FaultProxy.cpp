#include <support/FaultProxy.h>

#include <support/ProxyConnection.h>

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace support {

namespace {

/// A connection to a port of the loopback address; closed without one.
class Target
{
public:
    explicit Target(int port) : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        m_isConnected =
            ::connect(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0;
    }
    ~Target() { ::close(m_socket); }
    Target(const Target &) = delete;
    Target &operator=(const Target &) = delete;

    bool isConnected() const { return m_isConnected; }
    int socket() const { return m_socket; }

private:
    const int m_socket;
    bool m_isConnected = false;
};

bool pass(ProxyConnection &from, ProxyConnection &to)
{
    const auto bytes = from.read();
    return !bytes.isEmpty() && to.write(bytes);
}

/// Passes bytes on between the two until one of them leaves.
void passBetween(ProxyConnection &client, ProxyConnection &target)
{
    std::array<pollfd, 2> waiting{pollfd{client.socket(), POLLIN, 0},
                                  pollfd{target.socket(), POLLIN, 0}};
    for (;;) {
        if (!client.hasPending() && ::poll(waiting.data(), waiting.size(), -1) < 0)
            return;
        if ((client.hasPending() || waiting[0].revents != 0) && !pass(client, target))
            return;
        if (waiting[1].revents != 0 && !pass(target, client))
            return;
    }
}

/// Lets the closing of the socket be a reset.
void reset(int socket)
{
    ProxyConnection(socket, nullptr).read();
    const linger atOnce{1, 0};
    ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

} // namespace

FaultProxy::FaultProxy(int targetPort)
    : m_targetPort(targetPort), m_server([this](int socket, int) { serve(socket); })
{
    std::signal(SIGPIPE, SIG_IGN);
}

void FaultProxy::strike(Fault fault)
{
    {
        const std::lock_guard guard(m_mutex);
        m_state.fault = fault;
    }
    m_server.cutConnections();
}

void FaultProxy::heal()
{
    const std::lock_guard guard(m_mutex);
    m_state.fault = Fault::None;
    for (const int socket : m_swallowed)
        ::shutdown(socket, SHUT_RDWR);
}

void FaultProxy::present(const TlsIdentity &identity)
{
    const std::lock_guard guard(m_mutex);
    m_state.tls = identity.serverContext();
}

void FaultProxy::serve(int socket)
{
    State state;
    {
        const std::lock_guard guard(m_mutex);
        state = m_state;
        if (state.fault == Fault::Swallow)
            m_swallowed.insert(socket);
    }
    switch (state.fault) {
    case Fault::None:
        passOn(socket, state.tls.get());
        break;
    case Fault::Swallow:
        swallow(socket);
        break;
    case Fault::Reset:
        reset(socket);
        break;
    }
}

/// Until the client leaves or the connection is cut.
void FaultProxy::swallow(int socket)
{
    pollfd left{socket, POLLRDHUP, 0};
    ::poll(&left, 1, -1);
    const std::lock_guard guard(m_mutex);
    m_swallowed.erase(socket);
}

void FaultProxy::passOn(int socket, SSL_CTX *tls) const
{
    ProxyConnection client(socket, tls);
    if (!client.accept())
        return;
    const Target target(m_targetPort);
    ProxyConnection server(target.socket(), nullptr);
    if (target.isConnected())
        passBetween(client, server);
}

} // namespace support
