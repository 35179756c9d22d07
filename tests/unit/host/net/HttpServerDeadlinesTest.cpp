#include "HttpServerFixture.h"
#include "LazyClient.h"

#include <support/ContextSwitches.h>
#include <support/PrintQt.h>

#include <gmock/gmock.h>

#include <chrono>
#include <ctime>

namespace {

using namespace std::chrono_literals;
using support::RawClient;

class HttpServerDeadlines : public HttpServerFixture
{
protected:
    /// Sends a byte again and again, so that the connection is never silent for long.
    void dripUntilClosed(RawClient &client)
    {
        EXPECT_TRUE(support::waitFor([&] {
            if (client.received().isEmpty()) // the answer ends the connection
                client.send("a");
            return !client.isConnected();
        }));
    }

    /// Of all threads.
    static std::chrono::duration<double> processorTime()
    {
        return std::chrono::duration<double>(static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
    }

    bool hasLogged(const QString &text) const
    {
        return !log.textsOf(QStringLiteral("httpserver")).filter(text).isEmpty();
    }
};

} // namespace

TEST_F(HttpServerDeadlines, Answer_408_to_a_header_that_drips)
{
    HttpServerOptions options;
    options.headerTimeout = 1s;
    start(options);
    RawClient client(server->port());
    client.send("POST / HTTP/1.1\r\nHost: localhost\r\nX: ");
    dripUntilClosed(client);
    EXPECT_EQ(client.answer(0ms).status, 408);
    EXPECT_TRUE(arrivals.isEmpty());
    EXPECT_TRUE(hasLogged(QStringLiteral("срок истёк")));
    EXPECT_TRUE(isServing());
}

TEST_F(HttpServerDeadlines, Hold_for_the_header_of_a_further_request_too)
{
    HttpServerOptions options;
    options.headerTimeout = 1s;
    options.idleTimeout = 3s; // longer than a busy machine keeps the client from dripping
    start(options);
    RawClient client(server->port());
    client.send(RawClient::request("/", "first"));
    EXPECT_EQ(client.answer().status, 200);
    client.send("POST / HTTP/1.1\r\nHost: localhost\r\nX: ");
    dripUntilClosed(client);
    EXPECT_EQ(client.answer(0ms).status, 408);
    EXPECT_EQ(arrivals.size(), 1);
}

TEST_F(HttpServerDeadlines, Answer_408_to_a_body_that_drips)
{
    HttpServerOptions options;
    options.bodyTimeout = 1s;
    start(options);
    for (const auto *framing : {"Content-Length: 100000", "Transfer-Encoding: chunked"}) {
        SCOPED_TRACE(framing);
        RawClient client(server->port());
        client.send(QByteArray("POST / HTTP/1.1\r\nHost: localhost\r\n") + framing +
                    "\r\n\r\nfffff\r\n");
        dripUntilClosed(client);
        EXPECT_EQ(client.answer(0ms).status, 408);
    }
    EXPECT_TRUE(arrivals.isEmpty());
    EXPECT_TRUE(isServing());
}

TEST_F(HttpServerDeadlines, End_an_answer_that_is_not_taken)
{
    constexpr qint64 answerSize = 64 * 1024 * 1024;
    HttpServerOptions options;
    options.answerTimeout = 1s;
    start(options);
    handler = [this](const Arrival &) { answer(200, QByteArray(answerSize, 'x')); };
    const LazyClient client(server->port());
    EXPECT_TRUE(support::waitFor([&] { return hasLogged(QStringLiteral("срок истёк")); }));
    EXPECT_LT(client.takeAll(), answerSize);
}

TEST_F(HttpServerDeadlines, Do_not_hold_while_the_servers_thread_is_at_work)
{
    HttpServerOptions options;
    options.headerTimeout = options.bodyTimeout = options.idleTimeout = 1s;
    start(options);
    handler = [this](const Arrival &) {
        QThread::msleep(1500);
        answer(200, "late");
    };
    RawClient client(server->port());
    client.send(RawClient::request("/", "question"));
    EXPECT_EQ(client.answer().body, QByteArray("late"));
}

TEST_F(HttpServerDeadlines, Keep_no_thread_awake_while_a_connection_is_silent)
{
    start();
    RawClient client(server->port());
    client.send(RawClient::request("/", "question"));
    EXPECT_EQ(client.answer().status, 200);
    const auto before = support::contextSwitchesOfOtherThreads().toWait;
    support::letPass(1s);
    // What the answer still took, and a margin.
    EXPECT_LE(support::contextSwitchesOfOtherThreads().toWait - before, 3);
    EXPECT_TRUE(client.isConnected());
}

TEST_F(HttpServerDeadlines, Keep_no_thread_awake_once_they_have_passed)
{
    HttpServerOptions options;
    options.headerTimeout = 1s;
    start(options);
    RawClient client(server->port());
    client.send("POST");
    EXPECT_TRUE(client.waitForClose());
    const auto before = processorTime();
    support::letPass(1s);
    EXPECT_LT(processorTime() - before, 100ms);
}
