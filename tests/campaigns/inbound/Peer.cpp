#include "Peer.h"

#include "Answers.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace inbound {

namespace {

using Clock = std::chrono::steady_clock;

bool waitFor(int socket, short events, Peer::milliseconds deadline)
{
    pollfd watched{socket, events, 0};
    return ::poll(&watched, 1, static_cast<int>(deadline.count())) > 0;
}

} // namespace

Peer::Peer(int receiveBuffer)
    : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
{
    if (m_socket < 0)
        throw std::system_error(errno, std::generic_category(), "socket");
    const int on = 1;
    ::setsockopt(m_socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (receiveBuffer > 0)
        ::setsockopt(m_socket, SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
}

Peer::~Peer()
{
    close();
}

Peer::Peer(Peer &&other) noexcept : m_socket(std::exchange(other.m_socket, -1)) {}

Peer &Peer::operator=(Peer &&other) noexcept
{
    if (this != &other) {
        close();
        m_socket = std::exchange(other.m_socket, -1);
    }
    return *this;
}

void Peer::close() const
{
    if (m_socket >= 0)
        ::close(m_socket);
}

bool Peer::connect(int port) const
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const auto *const to = reinterpret_cast<const sockaddr *>(&address);
    return ::connect(m_socket, to, sizeof address) == 0 || errno == EINPROGRESS;
}

qsizetype Peer::sendSome(const QByteArray &bytes) const
{
    const auto size = ::send(m_socket, bytes.data(), static_cast<std::size_t>(bytes.size()),
                             MSG_NOSIGNAL | MSG_DONTWAIT);
    if (size >= 0)
        return size;
    return errno == EAGAIN || errno == EINTR ? 0 : -1;
}

bool Peer::sendAll(const QByteArray &bytes, milliseconds deadline) const
{
    const auto end = Clock::now() + deadline;
    for (qsizetype sent = 0; sent < bytes.size();) {
        waitFor(m_socket, POLLOUT, deadline);
        const auto size = sendSome(bytes.mid(sent));
        if (size < 0 || Clock::now() > end)
            return false;
        sent += size;
    }
    return true;
}

bool Peer::receive(QByteArray &to) const
{
    std::array<char, 65'536> block;
    for (;;) {
        const auto size = ::recv(m_socket, block.data(), block.size(), MSG_DONTWAIT);
        if (size > 0)
            to.append(block.data(), size);
        else
            return size < 0 && (errno == EAGAIN || errno == EINTR || errno == ENOTCONN);
    }
}

int Peer::awaitAnswer(milliseconds deadline) const
{
    const auto end = Clock::now() + deadline;
    Answers answers;
    for (bool isOpen = true; isOpen && Clock::now() < end;) {
        waitForArrival(std::chrono::ceil<milliseconds>(end - Clock::now()));
        isOpen = receive(answers.arrived());
        if (const auto status = answers.next())
            return *status;
    }
    return 0;
}

bool Peer::waitForArrival(milliseconds deadline) const
{
    return waitFor(m_socket, POLLIN, deadline);
}

bool Peer::receiveExactly(QByteArray &to, qsizetype size, milliseconds deadline) const
{
    QByteArray block(size, '\0');
    while (size > 0) {
        if (!waitForArrival(deadline))
            return false;
        const auto got =
            ::recv(m_socket, block.data(), static_cast<std::size_t>(size), MSG_DONTWAIT);
        if (got == 0 || (got < 0 && errno != EAGAIN && errno != EINTR))
            return false;
        to.append(block.constData(), std::max<qsizetype>(got, 0));
        size -= std::max<qsizetype>(got, 0);
    }
    return true;
}

void Peer::finish() const
{
    ::shutdown(m_socket, SHUT_WR);
}

void Peer::beRough() const
{
    const linger reset{1, 0};
    ::setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
}

} // namespace inbound
