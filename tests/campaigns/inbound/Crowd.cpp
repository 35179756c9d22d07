#include "Crowd.h"

#include <array>

namespace inbound {

namespace {

const QByteArray request = "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 2\r\n\r\n{}";

/// What a client of each kind says first.
const std::array<QByteArray, 5> &openings()
{
    static const std::array<QByteArray, 5> all{QByteArray(), request.left(20),
                                               request.left(request.size() - 1),
                                               request.left(26) + "X-Slow: ", request.repeated(20)};
    return all;
}

constexpr std::size_t slowWriter = 3;
constexpr int smallestBuffer = 1;

} // namespace

Crowd::Crowd(int port, int count)
{
    m_peers.reserve(static_cast<std::size_t>(count));
    while (size() < count) {
        const auto &peer = m_peers.emplace_back(smallestBuffer);
        peer.connect(port);
        using namespace std::chrono_literals;
        peer.sendAll(openings().at((m_peers.size() - 1) % openings().size()), 10s);
    }
}

void Crowd::drip() const
{
    for (auto at = slowWriter; at < m_peers.size(); at += openings().size())
        m_peers[at].sendSome("a");
}

} // namespace inbound
