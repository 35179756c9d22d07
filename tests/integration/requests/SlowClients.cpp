#include "SlowClients.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace {

bool sendAll(int socket, std::string_view text)
{
    return ::send(socket, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT) ==
           static_cast<ssize_t>(text.size());
}

} // namespace

SlowClients::SlowClients(int port, int count) : m_port(port)
{
    for (int i = 0; i < count; ++i)
        m_sockets.push_back(open());
}

SlowClients::~SlowClients()
{
    for (const int socket : m_sockets)
        ::close(socket);
}

void SlowClients::drip()
{
    for (int &socket : m_sockets) {
        if (sendAll(socket, "a"))
            continue;
        ::close(socket);
        socket = open();
    }
}

int SlowClients::openCount() const
{
    return static_cast<int>(
        std::count_if(m_sockets.begin(), m_sockets.end(), [](int socket) { return socket >= 0; }));
}

int SlowClients::open() const
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(m_port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const auto *const peer = reinterpret_cast<const sockaddr *>(&address);
    if (::connect(socket, peer, sizeof address) == 0 || errno == EINPROGRESS) {
        sendAll(socket, "POST / HTTP/1.1\r\nHost: localhost\r\nX-Slow: ");
        return socket;
    }
    ::close(socket);
    return -1;
}
