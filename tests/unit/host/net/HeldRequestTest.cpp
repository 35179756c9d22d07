#include "HttpServerFixture.h"

#include <HeldRequest.h>
#include <HttpStream.h>

namespace {

using namespace std::chrono_literals;
using support::RawClient;

class HeldRequests : public HttpServerFixture
{
protected:
    HeldRequests()
    {
        handler = [this](const Arrival &) { held = server->holdRequest(); };
        start();
    }

    /// Sends a request on the client's connection and waits until it is held.
    void hold(RawClient &client)
    {
        const auto before = arrivals.size();
        client.send(RawClient::request("/", "question"));
        ASSERT_TRUE(support::waitFor([&] { return arrivals.size() > before; }));
        ASSERT_TRUE(held);
    }

    static ResponseHeader ok()
    {
        ResponseHeader header;
        header.setContentType(QStringLiteral("text/plain"));
        return header;
    }

    std::shared_ptr<HeldRequest> held;
};

} // namespace

TEST_F(HeldRequests, Are_answered_when_their_holder_wants)
{
    RawClient client(server->port());
    hold(client);
    RawClient other(server->port());
    handler = [this](const Arrival &) { answer(200, "other"); };
    other.send(RawClient::request("/", "meanwhile"));
    EXPECT_EQ(other.answer().body, QByteArray("other"));
    EXPECT_EQ(client.received(), QByteArray());

    held->answer(ok(), "late");
    EXPECT_EQ(client.answer().body, QByteArray("late"));
}

TEST_F(HeldRequests, Count_their_first_answer_only)
{
    RawClient client(server->port());
    hold(client);
    held->answer(ok(), "first");
    held->answer(ok(), "second");
    held->drop();
    EXPECT_FALSE(held->answerWithStream(ok()));
    EXPECT_EQ(client.answer().body, QByteArray("first"));
    hold(client);
    held->answer(ok(), "of the next request");
    EXPECT_EQ(client.answer().body, QByteArray("of the next request"));
}

TEST_F(HeldRequests, Cannot_be_held_twice_or_once_answered)
{
    std::shared_ptr<HeldRequest> second;
    handler = [&](const Arrival &) {
        held = server->holdRequest();
        second = server->holdRequest();
        answer(500);
    };
    RawClient client(server->port());
    hold(client);
    EXPECT_FALSE(second);
    held->answer(ok(), "the holder's");
    EXPECT_EQ(client.answer().body, QByteArray("the holder's"));
    handler = [&](const Arrival &) {
        answer(200, "at once");
        second = server->holdRequest();
    };
    client.send(RawClient::request("/", "question"));
    EXPECT_EQ(client.answer().body, QByteArray("at once"));
    EXPECT_FALSE(second);
    EXPECT_FALSE(server->holdRequest());
}

TEST_F(HeldRequests, Are_answered_503_when_let_go)
{
    RawClient client(server->port());
    hold(client);
    held.reset();
    EXPECT_EQ(client.answer().status, 503);
}

TEST_F(HeldRequests, End_without_an_answer_when_dropped)
{
    RawClient client(server->port());
    hold(client);
    held->drop();
    EXPECT_TRUE(client.waitForClose(5s)); // long before any deadline
    EXPECT_EQ(client.received(), QByteArray());
    handler = [this](const Arrival &) { answer(200); };
    EXPECT_TRUE(isServing());
}

TEST_F(HeldRequests, Know_whether_their_client_still_waits)
{
    RawClient client(server->port());
    hold(client);
    EXPECT_TRUE(held->isAwaited());
    client.send(RawClient::request("/", "another before the answer"));
    EXPECT_TRUE(held->isAwaited());
    client.abort();
    EXPECT_TRUE(support::waitFor([&] { return !held->isAwaited(); }));
}

TEST_F(HeldRequests, Are_not_awaited_once_answered_or_without_their_server)
{
    RawClient client(server->port());
    hold(client);
    held->answer(ok(), "done");
    EXPECT_FALSE(held->isAwaited());
    EXPECT_EQ(client.answer().body, QByteArray("done"));
    hold(client);
    server.reset();
    EXPECT_FALSE(held->isAwaited());
}

TEST_F(HeldRequests, May_outlive_their_client)
{
    RawClient client(server->port());
    hold(client);
    client.abort();
    held->answer(ok(), "to nobody");
    handler = [this](const Arrival &) { answer(200); };
    EXPECT_TRUE(isServing());
}

TEST_F(HeldRequests, Are_answered_503_when_their_server_ends)
{
    RawClient client(server->port());
    hold(client);
    server.reset();
    EXPECT_EQ(client.answer().status, 503);
}

TEST_F(HeldRequests, May_outlive_their_server)
{
    RawClient client(server->port());
    hold(client);
    server.reset();
    held->answer(ok(), "from nobody");
    EXPECT_FALSE(held->answerWithStream(ok()));
    held->drop();
    EXPECT_TRUE(client.waitForClose());
}
