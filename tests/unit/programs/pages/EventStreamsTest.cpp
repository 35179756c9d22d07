#include "PageServerFixture.h"

#include <pages/EventStreams.h>

#include <memory>

namespace {

using namespace std::chrono_literals;
using support::RawClient;

class EventStreamsTest : public PageServerFixture
{
protected:
    EventStreamsTest()
    {
        routes.add("GET", "/events", [this](const PageRequest &request) {
            streams->open(request.server, EventStreams::event("state", {{"n", 0}}));
        });
    }

    /// Opens a stream and waits for its first event.
    void follow(RawClient &client)
    {
        client.send("GET /events HTTP/1.1\r\nHost: localhost\r\n\r\n");
        ASSERT_TRUE(hasReceived(client, "event: state\ndata: {\"n\":0}\n\n"));
    }

    static bool hasReceived(RawClient &client, const QByteArray &part,
                            std::chrono::milliseconds deadline = 10s)
    {
        return support::waitFor([&] { return client.received().contains(part); }, deadline);
    }

    std::unique_ptr<EventStreams> streams = std::make_unique<EventStreams>();
};

} // namespace

TEST_F(EventStreamsTest, Begin_with_their_first_event_and_bring_those_that_are_published)
{
    RawClient client(server.port());
    follow(client);
    EXPECT_TRUE(client.received().contains("Content-Type: text/event-stream"));
    streams->publish("message", {{"text", "чек\n1"}});
    EXPECT_TRUE(hasReceived(client, "event: message\ndata: {\"text\":\"чек\\n1\"}\n\n"));
}

TEST_F(EventStreamsTest, Bring_each_event_to_every_page)
{
    RawClient first(server.port());
    RawClient second(server.port());
    follow(first);
    follow(second);
    streams->publish("message", {{"n", 1}});
    EXPECT_TRUE(hasReceived(first, "{\"n\":1}"));
    EXPECT_TRUE(hasReceived(second, "{\"n\":1}"));
}

TEST_F(EventStreamsTest, Tell_the_browser_to_come_back_soon)
{
    RawClient client(server.port());
    follow(client);
    EXPECT_TRUE(client.received().contains("retry: 500\n\n"));
}

TEST_F(EventStreamsTest, Forget_a_page_that_has_gone)
{
    {
        RawClient client(server.port());
        follow(client);
        client.abort();
    }
    EXPECT_FALSE(streams->isEmpty());
    EXPECT_TRUE(support::waitFor([&] {
        streams->publish("message", {});
        return streams->isEmpty();
    }));
}

TEST_F(EventStreamsTest, Serve_a_page_that_is_loaded_over_and_over)
{
    for (int i = 0; i < 2 * HttpServerOptions{}.maxConnections; ++i) {
        RawClient client(server.port());
        follow(client);
        ASSERT_FALSE(HasFatalFailure()) << i;
    }
}

TEST_F(EventStreamsTest, Show_a_sign_of_life_while_nothing_happens)
{
    RawClient client(server.port());
    follow(client);
    EXPECT_TRUE(hasReceived(client, "\n:\n\n", 20s));
}

TEST_F(EventStreamsTest, End_with_their_owner)
{
    RawClient client(server.port());
    follow(client);
    streams.reset();
    EXPECT_TRUE(hasReceived(client, "\r\n0\r\n"));
}
