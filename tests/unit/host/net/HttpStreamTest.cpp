#include "HttpServerFixture.h"

#include <HeldRequest.h>
#include <HttpStream.h>

#include <QElapsedTimer>

#include <thread>

namespace {

using namespace std::chrono_literals;
using support::RawClient;

constexpr qint64 promptMs = 1000;

class HttpStreams : public HttpServerFixture
{
protected:
    HttpStreams()
    {
        handler = [this](const Arrival &) {
            ResponseHeader header;
            header.setContentType(QStringLiteral("text/event-stream"));
            stream = server->holdRequest()->answerWithStream(header);
        };
    }

    static HttpServerOptions hurried()
    {
        HttpServerOptions options;
        options.idleTimeout = 1s;
        options.answerTimeout = 1s;
        return options;
    }

    /// Asks for a stream and waits until the head of its answer is there.
    void open(RawClient &client)
    {
        stream.reset();
        client.send("GET /events HTTP/1.1\r\nHost: localhost\r\n\r\n");
        ASSERT_TRUE(support::waitFor([&] { return client.received().contains("\r\n\r\n"); }));
        ASSERT_TRUE(stream);
    }

    static bool hasReceived(RawClient &client, const QByteArray &part)
    {
        return support::waitFor([&] { return client.received().contains(part); });
    }

    std::shared_ptr<HttpStream> stream;
};

} // namespace

TEST_F(HttpStreams, Bring_each_piece_when_it_is_written)
{
    start();
    RawClient client(server->port());
    open(client);
    EXPECT_TRUE(client.received().contains("text/event-stream"));
    stream->write("one;");
    EXPECT_TRUE(hasReceived(client, "one;"));
    stream->write("two;");
    EXPECT_TRUE(hasReceived(client, "\r\n\r\n4\r\none;\r\n4\r\ntwo;\r\n")); // each a chunk
}

TEST_F(HttpStreams, Go_on_after_an_empty_piece)
{
    start();
    RawClient client(server->port());
    open(client);
    stream->write(""); // as a chunk it would end the body
    stream->write("next;");
    EXPECT_TRUE(hasReceived(client, "\r\nnext;"));
    EXPECT_FALSE(client.received().contains("\r\n0\r\n"));
}

TEST_F(HttpStreams, End_when_their_writer_lets_go)
{
    start();
    RawClient client(server->port());
    open(client);
    stream->write("last");
    stream.reset();
    EXPECT_TRUE(hasReceived(client, "last\r\n0\r\n")); // the chunk that ends a body
}

TEST_F(HttpStreams, Outlast_every_deadline_while_nothing_is_written)
{
    start(hurried());
    RawClient client(server->port());
    open(client);
    std::this_thread::sleep_for(2200ms); // twice the deadlines above
    stream->write("still here");
    EXPECT_TRUE(hasReceived(client, "still here"));
}

TEST_F(HttpStreams, Serve_several_readers_at_once)
{
    start();
    RawClient first(server->port());
    open(first);
    const auto firstStream = stream;
    RawClient second(server->port());
    open(second);
    firstStream->write("for the first");
    stream->write("for the second");
    EXPECT_TRUE(hasReceived(first, "for the first"));
    EXPECT_TRUE(hasReceived(second, "for the second"));
}

TEST_F(HttpStreams, Make_room_for_a_new_client_only_if_nothing_else_can)
{
    HttpServerOptions options;
    options.maxConnections = 3;
    start(options);
    RawClient oldest(server->port());
    open(oldest);
    const auto first = stream;
    RawClient younger(server->port());
    open(younger);
    const auto second = stream;
    RawClient silent(server->port());
    RawClient third(server->port());
    open(third);
    const auto other = stream;
    EXPECT_TRUE(silent.waitForClose());
    EXPECT_TRUE(oldest.isConnected());

    RawClient fourth(server->port());
    open(fourth);
    EXPECT_TRUE(oldest.waitForClose());
    EXPECT_TRUE(younger.isConnected());
    EXPECT_TRUE(third.isConnected());
}

TEST_F(HttpStreams, Carry_pieces_larger_than_a_block_in_order)
{
    start();
    RawClient client(server->port());
    open(client);
    const QByteArray large(1'000'000, 'x');
    stream->write(large);
    stream->write("end");
    EXPECT_TRUE(hasReceived(client, "end"));
    EXPECT_EQ(client.received().count('x'), 1'000'000 + 1); // one in "text/event-stream"
}

TEST_F(HttpStreams, Notice_with_a_later_piece_that_their_reader_left)
{
    start();
    {
        RawClient client(server->port());
        open(client);
        client.abort();
    }
    EXPECT_TRUE(support::waitFor([&] {
        stream->write("anybody there?");
        return !stream->isOpen();
    }));
    handler = [this](const Arrival &) { answer(200); };
    EXPECT_TRUE(isServing());
}

TEST_F(HttpStreams, Cut_off_a_reader_that_lags_too_far_behind)
{
    start();
    RawClient client(server->port());
    open(client);
    const QByteArray piece(HttpStream::maxBacklogBytes / 4, 'x');
    for (int count = 0; count < 5 && stream->isOpen(); ++count)
        stream->write(piece); // the client reads nothing meanwhile
    EXPECT_FALSE(stream->isOpen());
}

TEST_F(HttpStreams, May_be_as_far_ahead_of_their_reader_as_the_limit)
{
    start();
    RawClient client(server->port());
    open(client);
    stream->write(QByteArray(HttpStream::maxBacklogBytes, 'x'));
    EXPECT_TRUE(stream->isOpen());

    RawClient other(server->port());
    open(other);
    stream->write(QByteArray(HttpStream::maxBacklogBytes + 1, 'x'));
    EXPECT_FALSE(stream->isOpen());
}

TEST_F(HttpStreams, Cut_off_a_reader_that_stops_reading)
{
    start(hurried());
    RawClient client(server->port());
    open(client);
    stream->write(QByteArray(HttpStream::maxBacklogBytes / 2, 'x'));
    // The test does not run the client's events: what the system cannot buffer stays unsent.
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while (stream->isOpen() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(20ms);
    EXPECT_FALSE(stream->isOpen());
}

TEST_F(HttpStreams, End_with_their_server_and_may_outlive_it)
{
    start();
    RawClient client(server->port());
    open(client);
    QElapsedTimer timer;
    timer.start();
    server.reset();
    EXPECT_LT(timer.elapsed(), promptMs);
    EXPECT_FALSE(stream->isOpen());
    stream->write("nobody reads this");
    EXPECT_TRUE(client.waitForClose());
}
