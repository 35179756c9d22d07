#include "HttpListener.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>

HttpListener::~HttpListener()
{
    close();
}

QString HttpListener::open(const QString &address, int port)
{
    sockaddr_in at{};
    at.sin_family = AF_INET;
    at.sin_port = htons(static_cast<std::uint16_t>(port));
    if (port < 0 || port > 65535)
        return QStringLiteral("порт вне диапазона 0–65535");
    if (inet_pton(AF_INET, address.toLatin1().constData(), &at.sin_addr) != 1)
        return QStringLiteral("не адрес IPv4");

    m_socket = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (m_socket < 0)
        return qt_error_string(errno);
    const int yes = 1; // also while connections of an earlier server are still being closed
    ::setsockopt(m_socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    auto *any = reinterpret_cast<sockaddr *>(&at);
    socklen_t size = sizeof at;
    if (::bind(m_socket, any, size) != 0 || ::listen(m_socket, SOMAXCONN) != 0 ||
        ::getsockname(m_socket, any, &size) != 0) {
        auto why = qt_error_string(errno);
        close();
        return why;
    }
    m_port = ntohs(at.sin_port);
    return {};
}

void HttpListener::close()
{
    if (m_socket >= 0)
        ::close(m_socket);
    m_socket = -1;
    m_port = 0;
}

bool HttpListener::isAwaited() const
{
    pollfd watched{m_socket, POLLIN, 0};
    return ::poll(&watched, 1, 0) > 0;
}

std::optional<HttpListener::Client> HttpListener::accept()
{
    Client client{};
    client.addressSize = sizeof client.address;
    client.socket = ::accept4(m_socket, reinterpret_cast<sockaddr *>(&client.address),
                              &client.addressSize, SOCK_NONBLOCK | SOCK_CLOEXEC);
    m_lacksResources = client.socket < 0 &&
                       (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM);
    return client.socket < 0 ? std::nullopt : std::optional(client);
}
