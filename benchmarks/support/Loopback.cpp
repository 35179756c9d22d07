#include <support/Loopback.h>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace bench {

sockaddr_in loopback(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

int freePort()
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    auto address = loopback(0);
    socklen_t size = sizeof address;
    const bool isBound = ::bind(socket, reinterpret_cast<sockaddr *>(&address), size) == 0 &&
                         ::getsockname(socket, reinterpret_cast<sockaddr *>(&address), &size) == 0;
    const int error = errno;
    ::close(socket);
    if (!isBound)
        throw std::system_error(error, std::generic_category(), "no free port");
    return ntohs(address.sin_port);
}

} // namespace bench
