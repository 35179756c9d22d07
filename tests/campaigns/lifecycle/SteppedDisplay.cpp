#include "SteppedDisplay.h"

#include <support/ScriptedAnswer.h>
#include <support/ScriptedRequest.h>

#include <QFile>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace {

constexpr int patienceMs = 10'000;

void require(bool succeeded, const char *what)
{
    if (!succeeded)
        throw std::system_error(errno, std::generic_category(), what);
}

void closeSocket(int &socket)
{
    if (socket >= 0)
        ::close(std::exchange(socket, -1));
}

sockaddr_in loopback(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

} // namespace

SteppedDisplay::SteppedDisplay()
{
    m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    auto address = loopback(0);
    socklen_t size = sizeof address;
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    require(::bind(m_listener, generic, size) == 0, "bind");
    require(::getsockname(m_listener, generic, &size) == 0, "getsockname");
    m_port = ntohs(address.sin_port);
}

SteppedDisplay::~SteppedDisplay()
{
    leave();
}

std::string SteppedDisplay::url() const
{
    return "http://127.0.0.1:" + std::to_string(m_port);
}

void SteppedDisplay::listen()
{
    require(::listen(m_listener, SOMAXCONN) == 0, "listen");
}

/// A backlog of 0 has room for one connection. The system drops every further request for one.
void SteppedDisplay::listenWithoutRoom()
{
    require(::listen(m_listener, 0) == 0, "listen");
    m_peer = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const auto address = loopback(m_port);
    require(::connect(m_peer, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0,
            "connect");
}

bool SteppedDisplay::isBeingConnected() const
{
    QFile connections(QStringLiteral("/proc/self/net/tcp"));
    require(connections.open(QIODevice::ReadOnly), "/proc/self/net/tcp");
    const QByteArray portAndSynSent =
        ':' + QByteArray::number(m_port, 16).toUpper().rightJustified(4, '0') + " 02 ";
    return connections.readAll().contains(portAndSynSent);
}

void SteppedDisplay::accept()
{
    pollfd waiting{m_listener, POLLIN, 0};
    if (::poll(&waiting, 1, patienceMs) != 1)
        throw std::runtime_error("nobody connects to the display");
    m_connection = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
    require(m_connection >= 0, "accept4");
    const timeval patience{patienceMs / 1000, 0};
    require(::setsockopt(m_connection, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience) == 0,
            "setsockopt");
}

void SteppedDisplay::receive()
{
    if (m_connection < 0)
        accept();
    support::ScriptedRequest request;
    if (!support::readRequest(m_connection, m_received, request))
        throw std::runtime_error("no whole request reaches the display");
}

void SteppedDisplay::answer()
{
    const QByteArray bytes = support::ScriptedAnswer::ok().bytes;
    ::send(m_connection, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
}

void SteppedDisplay::leave()
{
    closeSocket(m_connection);
    closeSocket(m_peer);
    closeSocket(m_listener);
}
