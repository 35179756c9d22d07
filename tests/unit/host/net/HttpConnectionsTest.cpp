#include "HttpServerFixture.h"
#include "LazyClient.h"

#include <HeldRequest.h>
#include <HttpStream.h>

#include <support/PrintQt.h>

#include <QElapsedTimer>
#include <QTcpSocket>

#include <memory>
#include <vector>

namespace {

using namespace std::chrono_literals;
using support::RawClient;

class HttpServerRoom : public HttpServerFixture
{
protected:
    void startWithRoomFor(int connections)
    {
        HttpServerOptions options;
        options.maxConnections = connections;
        options.answerTimeout = 1h; // no help to a client that waits
        start(options);
    }

    /// A client for whom there is no room.
    std::unique_ptr<RawClient> waiting()
    {
        auto client = std::make_unique<RawClient>(server->port());
        client->send(RawClient::request("/", "further"));
        EXPECT_FALSE(client->waitForClose(300ms)); // longer than until the next try
        return client;
    }

    std::unique_ptr<RawClient> halfway()
    {
        auto client = std::make_unique<RawClient>(server->port());
        client->send("POST / HTTP/1.1\r\nHost: loc");
        EXPECT_TRUE(isServing()); // so that it is accepted, and younger than the one before
        return client;
    }
};

} // namespace

TEST_F(HttpServerRoom, Is_made_for_a_new_client_by_the_request_that_is_incomplete_the_longest)
{
    startWithRoomFor(3);
    const auto oldest = halfway();
    const auto younger = halfway();
    RawClient third(server->port());
    third.send(RawClient::request("/", "third"));
    EXPECT_EQ(third.answer().status, 200);
    RawClient fourth(server->port());
    fourth.send(RawClient::request("/", "fourth"));
    EXPECT_EQ(fourth.answer().status, 200);

    EXPECT_TRUE(oldest->waitForClose());
    EXPECT_EQ(oldest->received(), QByteArray());
    EXPECT_TRUE(younger->isConnected());
    EXPECT_TRUE(third.isConnected());
}

TEST_F(HttpServerRoom, Is_made_by_the_request_that_began_first_though_its_body_began_last)
{
    startWithRoomFor(3);
    const auto oldest = halfway();
    const auto younger = halfway();
    oldest->send("alhost\r\nContent-Length: 10\r\n\r\nx");
    EXPECT_TRUE(isServing()); // by then the body has begun
    RawClient third(server->port());
    third.send(RawClient::request("/", "third"));
    EXPECT_EQ(third.answer().status, 200);
    RawClient fourth(server->port());
    fourth.send(RawClient::request("/", "fourth"));
    EXPECT_EQ(fourth.answer().status, 200);

    EXPECT_TRUE(oldest->waitForClose());
    EXPECT_TRUE(younger->isConnected());
}

TEST_F(HttpServerRoom, Is_not_made_by_a_stream_while_a_request_is_about_to_be_answered)
{
    startWithRoomFor(2);
    std::shared_ptr<HttpStream> stream;
    std::unique_ptr<RawClient> further;
    handler = [&](const Arrival &arrival) {
        if (arrival.body == "stream") {
            stream = server->holdRequest()->answerWithStream({});
            return;
        }
        if (arrival.body == "question")
            further = waiting();
        answer(200);
    };
    RawClient reader(server->port());
    reader.send(RawClient::request("/", "stream"));
    ASSERT_TRUE(support::waitFor([&] { return stream != nullptr; }));
    RawClient client(server->port());
    client.send(RawClient::request("/", "question"));
    EXPECT_EQ(client.answer().status, 200);
    EXPECT_EQ(further->answer().status, 200);
    EXPECT_TRUE(client.waitForClose());
    EXPECT_FALSE(reader.waitForClose(100ms));
}

TEST_F(HttpServerRoom, Is_not_made_by_a_request_that_waits_but_by_its_answer)
{
    startWithRoomFor(1);
    std::unique_ptr<RawClient> further;
    handler = [&](const Arrival &arrival) {
        if (arrival.body == "question")
            further = waiting();
        answer(200);
    };
    RawClient client(server->port());
    client.send(RawClient::request("/", "question"));
    EXPECT_EQ(client.answer().status, 200);
    EXPECT_EQ(further->answer().status, 200);
    EXPECT_TRUE(client.waitForClose());
    EXPECT_EQ(arrivals.size(), 2);
}

TEST_F(HttpServerRoom, Is_made_by_an_answer_that_is_not_taken)
{
    startWithRoomFor(1);
    QTcpSocket reader;
    reader.setReadBufferSize(1);
    reader.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(server->port()));
    handler = [&](const Arrival &arrival) {
        answer(200, arrival.body == "much" ? QByteArray(64'000'000, 'x') : QByteArray());
    };
    reader.write(RawClient::request("/", "much"));
    ASSERT_TRUE(support::waitFor([&] { return arrivals.size() == 1; }));
    EXPECT_TRUE(isServing());
}

TEST_F(HttpServerRoom, Is_not_made_by_an_answer_that_is_being_taken)
{
    constexpr qint64 answerSize = 16'000'000; // more than the system takes from the server at once
    constexpr qint64 promptMs = 150;
    startWithRoomFor(1);
    handler = [&](const Arrival &arrival) {
        answer(200, arrival.body == "question" ? QByteArray(answerSize, 'x') : QByteArray());
    };
    for (int attempt = 0; attempt < 50; ++attempt) {
        arrivals.clear();
        QElapsedTimer timer;
        timer.start();
        const LazyClient reader(server->port());
        ASSERT_TRUE(support::waitFor([&] { return !arrivals.isEmpty(); }));
        RawClient further(server->port());
        further.send(RawClient::request("/", "further"));
        support::letPass(20ms); // in which it would be taken
        const auto taken = reader.takeAll();
        EXPECT_EQ(further.answer().status, 200);
        if (timer.elapsed() < promptMs) {
            EXPECT_GE(taken, answerSize);
            return;
        }
    }
    GTEST_SKIP() << "the machine is too slow for a client that takes its answer promptly";
}

TEST_F(HttpServerRoom, Is_kept_by_clients_that_leave)
{
    startWithRoomFor(2);
    for (int i = 0; i < 20; ++i)
        EXPECT_TRUE(isServing());
    EXPECT_EQ(arrivals.size(), 20);
    EXPECT_EQ(log.textsOf(QStringLiteral("httpserver")).size(), 1); // only that it listens
}
