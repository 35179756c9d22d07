#include "GoodClient.h"

#include "Peer.h"

#include <support/RawClient.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>

namespace inbound {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto pause = 10ms;
constexpr auto lost = 60s;

std::chrono::milliseconds since(Clock::time_point begin)
{
    return std::chrono::ceil<std::chrono::milliseconds>(Clock::now() - begin);
}

} // namespace

GoodClient::GoodClient(int port)
    : m_port(port), m_thread([this](const std::stop_token &stop) { run(stop); })
{
}

void GoodClient::end()
{
    m_thread.request_stop();
    if (m_thread.joinable())
        m_thread.join();
}

QByteArray GoodClient::request()
{
    const auto body =
        "{\"type\":\"request\",\"name\":\"getImage\",\"data\":{\"GoodsCode\":{\"type\":"
        "\"GoodsCode\",\"value\":\"" +
        goods() + "\"}}}";
    return support::RawClient::request("/", body);
}

int GoodClient::ask(int port, std::chrono::milliseconds deadline)
{
    const Peer peer;
    if (!peer.connect(port) || !peer.sendAll(request(), deadline))
        return 0;
    return peer.awaitAnswer(deadline);
}

void GoodClient::run(const std::stop_token &stop)
{
    std::mutex mutex;
    std::condition_variable_any paused;
    while (!stop.stop_requested()) {
        const auto begin = Clock::now();
        ++m_asked;
        if (ask(m_port, lost) != 200)
            ++m_missed;
        m_worst = std::max(m_worst, since(begin));
        std::unique_lock lock(mutex);
        paused.wait_for(lock, stop, pause, [] { return false; });
    }
}

} // namespace inbound
