#include "HttpServerFixture.h"

#include <support/PrintQt.h>

#include <QElapsedTimer>

#include <thread>

namespace {

using namespace std::chrono_literals;
using support::RawClient;

constexpr qint64 promptMs = 1000;

/// For the network thread to read what was sent and to wait for the answer. What is tested holds
/// whether or not that was long enough.
void letTheNetworkThreadWork()
{
    std::this_thread::sleep_for(30ms);
}

using HttpServerShutdown = HttpServerFixture;

} // namespace

TEST_F(HttpServerShutdown, Returns_promptly_and_delivers_nothing_more)
{
    start();
    RawClient waiting(server->port());
    RawClient halfway(server->port());
    RawClient silent(server->port());
    waiting.send(RawClient::request("/", "question"));
    halfway.send("POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 100\r\n\r\nonly this");
    letTheNetworkThreadWork();

    QElapsedTimer timer;
    timer.start();
    server.reset();
    EXPECT_LT(timer.elapsed(), promptMs);
    EXPECT_TRUE(waiting.waitForClose());
    EXPECT_TRUE(halfway.waitForClose());
    EXPECT_TRUE(silent.waitForClose());
    EXPECT_TRUE(arrivals.isEmpty());
}

TEST_F(HttpServerShutdown, Gives_what_waits_no_answer_or_503)
{
    start();
    RawClient waiting(server->port());
    waiting.send(RawClient::request("/", "question"));
    letTheNetworkThreadWork();
    server.reset();
    EXPECT_TRUE(waiting.waitForClose());
    const auto answer = waiting.answer(0ms);
    EXPECT_TRUE(answer.status == 503 || answer.status == 0) << answer.status;
}

TEST_F(HttpServerShutdown, Frees_the_port_at_once)
{
    start();
    const int port = server->port();
    for (int round = 0; round < 20; ++round) {
        SCOPED_TRACE(round);
        ASSERT_TRUE(server->isListening()) << server->errorString().toStdString();
        ASSERT_EQ(server->port(), port);
        RawClient served(port);
        served.send(RawClient::request("/", "question"));
        ASSERT_EQ(served.answer().status, 200);
        RawClient waiting(port);
        waiting.send(RawClient::request("/", "question"));

        server.reset();
        start({}, port);
    }
}

TEST_F(HttpServerShutdown, Bears_clients_that_have_left_while_their_requests_wait)
{
    start();
    for (int i = 0; i < 10; ++i) {
        RawClient client(server->port());
        client.send(RawClient::request("/", "question"));
        client.abort();
    }
    letTheNetworkThreadWork();
    QElapsedTimer timer;
    timer.start();
    server.reset();
    EXPECT_LT(timer.elapsed(), promptMs);
}

TEST_F(HttpServerShutdown, Bears_a_large_answer_that_nobody_takes)
{
    start();
    handler = [this](const Arrival &) { answer(200, QByteArray(64 * 1024 * 1024, 'x')); };
    RawClient client(server->port());
    client.send(RawClient::request("/", "question"));
    ASSERT_TRUE(support::waitFor([this] { return arrivals.size() == 1; }));
    letTheNetworkThreadWork();
    QElapsedTimer timer;
    timer.start();
    server.reset();
    EXPECT_LT(timer.elapsed(), promptMs);
}
