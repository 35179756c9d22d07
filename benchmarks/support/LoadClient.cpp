#include <support/LoadClient.h>

#include <support/Loopback.h>

#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace bench {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds lost = 10s;
constexpr std::string_view success = "HTTP/1.1 200 ";
constexpr std::string_view endOfHeader = "\r\n\r\n";

int checked(int result, const char *what)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
    return result;
}

} // namespace

LoadClient::LoadClient(int port, int connections, std::string request)
    : m_request(std::move(request)), m_events(checked(::epoll_create1(EPOLL_CLOEXEC), "epoll"))
{
    const auto address = loopback(port);
    m_connections.reserve(static_cast<std::size_t>(connections));
    for (std::size_t i = 0; i < static_cast<std::size_t>(connections); ++i) {
        const int socket = checked(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket");
        m_connections.push_back({socket, {}});
        checked(::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address),
                "connect");
        const int on = 1;
        ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        epoll_event event{.events = EPOLLIN, .data = {.u64 = i}};
        checked(::epoll_ctl(m_events, EPOLL_CTL_ADD, socket, &event), "epoll_ctl");
    }
}

LoadClient::~LoadClient()
{
    for (const auto &each : m_connections)
        ::close(each.socket);
    ::close(m_events);
}

void LoadClient::run(int requests)
{
    int toSend = requests;
    int toCome = requests;
    for (const auto &each : m_connections) {
        send(each);
        --toSend;
    }
    std::array<epoll_event, 64> events{};
    while (toCome > 0) {
        const int count = ::epoll_wait(m_events, events.data(), static_cast<int>(events.size()),
                                       static_cast<int>(lost.count()));
        if (count <= 0)
            throw std::runtime_error("an answer does not come");
        for (int i = 0; i < count; ++i) {
            auto &connection = m_connections[events[static_cast<std::size_t>(i)].data.u64];
            if (!readAnswer(connection))
                continue;
            --toCome;
            if (toSend > 0) {
                send(connection);
                --toSend;
            }
        }
    }
}

/// So little always fits the socket's buffer.
void LoadClient::send(const Connection &connection) const
{
    const auto size = ::send(connection.socket, m_request.data(), m_request.size(), MSG_NOSIGNAL);
    if (size != static_cast<ssize_t>(m_request.size()))
        throw std::runtime_error("a request could not be sent");
}

/// Whether the answer is whole now.
bool LoadClient::readAnswer(Connection &connection)
{
    auto &[socket, unread] = connection;
    std::array<char, 4096> block{};
    const auto size = ::recv(socket, block.data(), block.size(), 0);
    if (size <= 0)
        throw std::runtime_error("the server has closed a connection");
    unread.append(block.data(), static_cast<std::size_t>(size));
    const auto end = unread.find(endOfHeader);
    if (end == std::string::npos)
        return false;
    if (!unread.starts_with(success) || end + endOfHeader.size() != unread.size())
        throw std::runtime_error("not an answer of 200 without a body: " + unread);
    unread.clear();
    return true;
}

std::string postOf(int port, const std::string &json)
{
    return "POST / HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) +
           "\r\nContent-Type: application/json\r\nContent-Length: " + std::to_string(json.size()) +
           "\r\n\r\n" + json;
}

} // namespace bench
