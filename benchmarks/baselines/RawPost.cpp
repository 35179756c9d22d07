#include <baselines/RawPost.h>

#include <support/Loopback.h>

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace bench {

RawPost::RawPost(int port, const std::string &path, const QByteArray &body)
    : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    , m_request("POST " + path + " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(port) +
                "\r\nAccept: application/json\r\nContent-Type: application/json"
                "\r\nContent-Length: " +
                std::to_string(body.size()) + "\r\n\r\n" + body.toStdString())
{
    const auto address = loopback(port);
    if (::connect(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        throw std::system_error(errno, std::generic_category(), "connect");
}

RawPost::~RawPost()
{
    ::close(m_socket);
}

void RawPost::operator()() const
{
    for (std::size_t sent = 0; sent < m_request.size();) {
        const auto size =
            ::send(m_socket, m_request.data() + sent, m_request.size() - sent, MSG_NOSIGNAL);
        if (size <= 0)
            throw std::system_error(errno, std::generic_category(), "send");
        sent += static_cast<std::size_t>(size);
    }
    // The answer is so short that it comes whole.
    std::array<char, 1024> answer{};
    if (::recv(m_socket, answer.data(), answer.size(), 0) <= 0)
        throw std::system_error(errno, std::generic_category(), "recv");
}

} // namespace bench
