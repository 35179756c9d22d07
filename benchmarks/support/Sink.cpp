#include <support/Sink.h>

#include <support/Loopback.h>

#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <ctime>
#include <string_view>
#include <system_error>
#include <vector>

namespace bench {

namespace {

constexpr std::string_view answer = "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n";
constexpr std::string_view endOfHeader = "\r\n\r\n";

void check(int result, const char *what)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
}

/// The value of the only field that matters here; 0 without it.
std::size_t contentLength(std::string_view header)
{
    constexpr std::string_view name = "content-length:";
    const auto field =
        std::search(header.begin(), header.end(), name.begin(), name.end(),
                    [](unsigned char a, unsigned char b) { return std::tolower(a) == b; });
    if (field == header.end())
        return 0;
    const auto *value = std::find_if(field + name.size(), header.end(),
                                     [](unsigned char each) { return std::isdigit(each) != 0; });
    std::size_t length = 0;
    std::from_chars(value, header.end(), length);
    return length;
}

} // namespace

Sink::Sink()
    : m_listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)), m_end(::eventfd(0, EFD_CLOEXEC))
{
    check(m_listener, "socket");
    auto address = loopback(0);
    socklen_t size = sizeof address;
    check(::bind(m_listener, reinterpret_cast<sockaddr *>(&address), size), "bind");
    check(::listen(m_listener, SOMAXCONN), "listen");
    check(::getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &size), "getsockname");
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { serve(); });
}

Sink::~Sink()
{
    ::eventfd_write(m_end, 1);
    m_thread.join();
    for (const auto &[socket, unread] : m_connections)
        ::close(socket);
    ::close(m_listener);
    ::close(m_end);
}

std::uint64_t Sink::arrivals() const
{
    const std::lock_guard guard(m_mutex);
    return m_arrivals;
}

bool Sink::waitForArrivals(std::uint64_t count, std::chrono::milliseconds atMost) const
{
    std::unique_lock guard(m_mutex);
    return m_arrived.wait_for(guard, atMost, [&] { return m_arrivals >= count; });
}

Sink::Clock::time_point Sink::lastArrival() const
{
    const std::lock_guard guard(m_mutex);
    return m_last;
}

std::uint64_t Sink::bytes() const
{
    const std::lock_guard guard(m_mutex);
    return m_bytes;
}

std::chrono::nanoseconds Sink::cpuTime() const
{
    clockid_t clock{};
    timespec time{};
    ::pthread_getcpuclockid(m_thread.native_handle(), &clock);
    ::clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

void Sink::serve()
{
    for (;;) {
        std::vector<pollfd> watched{{m_end, POLLIN, 0}, {m_listener, POLLIN, 0}};
        for (const auto &[socket, unread] : m_connections)
            watched.push_back({socket, POLLIN, 0});
        ::poll(watched.data(), watched.size(), -1);
        if (watched[0].revents != 0)
            return;
        if (watched[1].revents != 0)
            accept();
        for (std::size_t i = 2; i < watched.size(); ++i) {
            if (watched[i].revents != 0 && !read(watched[i].fd)) {
                ::close(watched[i].fd);
                m_connections.erase(watched[i].fd);
            }
        }
    }
}

void Sink::accept()
{
    const int socket = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0)
        return;
    const int on = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    m_connections.emplace(socket, std::string());
}

/// False at the end of the connection.
bool Sink::read(int socket)
{
    const auto size = ::recv(socket, m_block.data(), m_block.size(), 0);
    if (size <= 0)
        return false;
    {
        const std::lock_guard guard(m_mutex);
        m_bytes += static_cast<std::uint64_t>(size);
    }
    auto &unread = m_connections.at(socket);
    unread.append(m_block.data(), static_cast<std::size_t>(size));
    for (;;) {
        const auto header = unread.find(endOfHeader);
        if (header == std::string::npos)
            return true;
        const auto whole =
            header + endOfHeader.size() + contentLength(std::string_view(unread).substr(0, header));
        if (unread.size() < whole)
            return true;
        const auto now = Clock::now();
        unread.erase(0, whole);
        ::send(socket, answer.data(), answer.size(), MSG_NOSIGNAL);
        {
            const std::lock_guard guard(m_mutex);
            m_last = now;
            ++m_arrivals;
        }
        m_arrived.notify_all();
    }
}

} // namespace bench
