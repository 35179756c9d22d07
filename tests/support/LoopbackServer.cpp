#include <support/LoopbackServer.h>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace support {

LoopbackServer::LoopbackServer(Serve serve) : m_serve(std::move(serve))
{
    comeUp();
}

LoopbackServer::~LoopbackServer()
{
    goDown();
}

void LoopbackServer::goDown()
{
    if (!m_accepting.joinable())
        return;
    {
        const std::lock_guard guard(m_mutex);
        m_down = true;
        ::shutdown(m_listener, SHUT_RDWR);
    }
    cutConnections();
    m_woken.notify_all();
    m_accepting.join();
    ::close(m_listener);
    for (auto &thread : m_serving)
        thread.join();
    m_serving.clear();
}

void LoopbackServer::comeUp()
{
    if (m_accepting.joinable())
        return;
    listen();
    {
        const std::lock_guard guard(m_mutex);
        m_down = false;
    }
    m_accepting = std::thread([this, listener = m_listener] { acceptConnections(listener); });
}

void LoopbackServer::cutConnections()
{
    const std::lock_guard guard(m_mutex);
    for (const int socket : m_sockets)
        ::shutdown(socket, SHUT_RDWR);
}

int LoopbackServer::connectionCount() const
{
    const std::lock_guard guard(m_mutex);
    return m_connections;
}

bool LoopbackServer::pause(std::chrono::milliseconds time)
{
    std::unique_lock guard(m_mutex);
    return !m_woken.wait_for(guard, time, [this] { return m_down; });
}

void LoopbackServer::listen()
{
    m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int reuse = 1; // connections of the last time may linger on the port
    ::setsockopt(m_listener, SOL_SOCKET, SO_REUSEADDR, &reuse, sizeof reuse);

    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(m_port));
    socklen_t size = sizeof address;
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    if (::bind(m_listener, generic, size) != 0 || ::listen(m_listener, SOMAXCONN) != 0 ||
        ::getsockname(m_listener, generic, &size) != 0) {
        const int error = errno;
        ::close(m_listener);
        throw std::system_error(error, std::generic_category(), "no port to listen on");
    }
    m_port = ntohs(address.sin_port);
}

void LoopbackServer::acceptConnections(int listener)
{
    for (;;) {
        const int socket = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        const std::lock_guard guard(m_mutex);
        if (m_down || socket < 0) {
            if (socket >= 0)
                ::close(socket);
            return;
        }
        m_sockets.insert(socket);
        const int connection = m_connections++;
        m_serving.emplace_back([this, socket, connection] {
            m_serve(socket, connection);
            release(socket);
        });
    }
}

void LoopbackServer::release(int socket)
{
    const std::lock_guard guard(m_mutex); // so that nobody shuts down another's descriptor
    m_sockets.erase(socket);
    ::close(socket);
}

} // namespace support
