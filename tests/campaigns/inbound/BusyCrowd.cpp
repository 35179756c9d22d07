#include "BusyCrowd.h"

#include <poll.h>

#include <chrono>
#include <system_error>

namespace inbound {

namespace {

using namespace std::chrono_literals;

const QByteArray requests = QByteArray("GET / HTTP/1.1\r\nHost: a\r\n\r\n").repeated(50);
constexpr std::chrono::milliseconds atMost = 100ms; // until it looks whether it is to end

Peer connected(int port)
{
    Peer peer;
    peer.connect(port);
    return peer;
}

} // namespace

BusyCrowd::BusyCrowd(int port, int count) : m_port(port)
{
    for (int i = 0; i < count; ++i)
        m_peers.push_back(connected(port));
    m_thread = std::jthread([this](const std::stop_token &stop) { run(stop); });
}

void BusyCrowd::run(const std::stop_token &stop)
{
    while (!stop.stop_requested()) {
        for (auto &peer : m_peers)
            ask(peer);
        waitForAnswers();
    }
}

void BusyCrowd::waitForAnswers() const
{
    std::vector<pollfd> watched;
    for (const auto &peer : m_peers)
        watched.push_back({peer.socket(), POLLIN, 0});
    ::poll(watched.data(), watched.size(), static_cast<int>(atMost.count()));
}

void BusyCrowd::ask(Peer &peer)
{
    QByteArray received;
    const bool isOpen = peer.sendSome(requests) >= 0 && peer.receive(received);
    m_bytesReceived += received.size();
    if (isOpen)
        return;
    try {
        peer = connected(m_port);
    } catch (const std::system_error &) {
        // There is no descriptor now; later there may be.
    }
}

} // namespace inbound
