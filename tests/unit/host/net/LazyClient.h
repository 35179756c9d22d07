#pragma once

#include <support/RawClient.h>

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>

/// A client that asks and then takes nothing until it is told to.
class LazyClient
{
public:
    explicit LazyClient(int port) : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(::connect(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address),
                  0);
        const auto request = support::RawClient::request("/", "question");
        EXPECT_EQ(::write(m_socket, request.constData(), static_cast<std::size_t>(request.size())),
                  request.size());
    }
    ~LazyClient() { ::close(m_socket); }
    Q_DISABLE_COPY_MOVE(LazyClient)

    /// How many bytes there are until the connection ends.
    qint64 takeAll() const
    {
        std::array<char, 65'536> buffer{};
        qint64 all = 0;
        for (ssize_t got = 1; got > 0; all += std::max<ssize_t>(got, 0))
            got = ::read(m_socket, buffer.data(), buffer.size());
        return all;
    }

private:
    const int m_socket;
};
