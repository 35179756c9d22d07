#include "HttpServerFixture.h"

#include <support/PrintQt.h>

#include <memory>
#include <vector>

namespace {

using support::RawClient;

class HttpServerRequests : public HttpServerFixture
{
protected:
    HttpServerRequests() { start(); }

    void expectArrivals(qsizetype count)
    {
        ASSERT_TRUE(support::waitFor([&] { return arrivals.size() >= count; }));
        ASSERT_EQ(arrivals.size(), count);
    }
};

} // namespace

TEST_F(HttpServerRequests, Arrive_with_their_header_and_body_on_the_servers_thread)
{
    RawClient client(server->port());
    client.send(RawClient::request("/request/sub?type=1&q=a%20b", "{\"чек\":1}",
                                   "Content-Type: application/json\r\nX-Till: 5\r\n"));
    expectArrivals(1);
    const auto &[header, body, thread] = arrivals.first();
    EXPECT_EQ(header.method(), QStringLiteral("POST"));
    EXPECT_EQ(header.path(), QStringLiteral("/request/sub?type=1&q=a%20b"));
    EXPECT_EQ(header.contentType(), QStringLiteral("application/json"));
    EXPECT_EQ(header.value(QStringLiteral("x-till")), QStringLiteral("5"));
    EXPECT_EQ(header.value(QStringLiteral("Host")), QStringLiteral("localhost"));
    EXPECT_EQ(body, QByteArray("{\"чек\":1}"));
    EXPECT_EQ(thread, server->thread());
    EXPECT_EQ(client.answer().status, 200);
}

TEST_F(HttpServerRequests, May_have_any_method_and_no_body)
{
    const QByteArray methods[] = {"GET", "PUT", "DELETE", "OPTIONS"};
    for (const auto &method : methods) {
        SCOPED_TRACE(method.toStdString());
        arrivals.clear();
        RawClient client(server->port());
        client.send(method + " / HTTP/1.1\r\nHost: localhost\r\n\r\n");
        expectArrivals(1);
        EXPECT_EQ(arrivals.first().header.method(), QString::fromLatin1(method));
        EXPECT_EQ(arrivals.first().body, QByteArray());
        EXPECT_EQ(client.answer().status, 200);
    }
}

TEST_F(HttpServerRequests, Arrive_whole_however_they_are_cut)
{
    RawClient client(server->port());
    const auto request = RawClient::request("/", "ten bytes.");
    for (const char byte : request) {
        EXPECT_TRUE(arrivals.isEmpty());
        client.send(QByteArray(1, byte));
        QCoreApplication::processEvents();
    }
    expectArrivals(1);
    EXPECT_EQ(arrivals.first().body, QByteArray("ten bytes."));
}

TEST_F(HttpServerRequests, Arrive_byte_by_byte_as_they_came)
{
    QByteArray everyByte;
    for (int value = 0; value < 256 * 1024; ++value)
        everyByte.append(static_cast<char>(value));
    RawClient client(server->port());
    client.send(RawClient::request("/", everyByte));
    expectArrivals(1);
    EXPECT_TRUE(arrivals.first().body == everyByte);
}

TEST_F(HttpServerRequests, May_come_in_chunks)
{
    RawClient client(server->port());
    client.send("POST / HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n"
                "4\r\nfirs\r\n7\r\nt chunk\r\n0\r\n\r\n");
    expectArrivals(1);
    EXPECT_EQ(arrivals.first().body, QByteArray("first chunk"));
}

TEST_F(HttpServerRequests, May_ask_first_whether_to_send_the_body)
{
    RawClient client(server->port());
    client.send("POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 4\r\n"
                "Expect: 100-continue\r\n\r\n");
    EXPECT_EQ(client.answer().status, 100);
    EXPECT_TRUE(arrivals.isEmpty());
    client.send("body");
    expectArrivals(1);
    EXPECT_EQ(client.answer().status, 200);
}

TEST_F(HttpServerRequests, Of_one_connection_arrive_and_are_answered_in_their_order)
{
    handler = [this](const Arrival &arrival) { answer(200, "re " + arrival.body); };
    RawClient client(server->port());
    QByteArray pipelined;
    for (int i = 0; i < 5; ++i)
        pipelined += RawClient::request("/", QByteArray::number(i));
    client.send(pipelined);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(client.answer().body, "re " + QByteArray::number(i));
    EXPECT_EQ(arrivedBodies(), (QList<QByteArray>{"0", "1", "2", "3", "4"}));
    EXPECT_TRUE(client.isConnected());
}

TEST_F(HttpServerRequests, Of_several_connections_arrive_in_the_order_in_which_they_were_made)
{
    constexpr int clientCount = 8;
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < clientCount; ++i) {
        clients.push_back(std::make_unique<RawClient>(server->port()));
        clients.back()->send(RawClient::request("/", "hello"));
        EXPECT_EQ(clients.back()->answer().status, 200); // so the connection is accepted
    }
    arrivals.clear();
    handler = [this](const Arrival &arrival) { answer(200, "re " + arrival.body); };

    QList<QByteArray> sent;
    for (const int i : {3, 0, 7, 1, 5, 2, 6, 4}) {
        sent.append(QByteArray::number(i));
        clients[static_cast<std::size_t>(i)]->send(RawClient::request("/", sent.last()));
    }
    expectArrivals(clientCount);
    EXPECT_EQ(arrivedBodies(), sent);
    for (int i = 0; i < clientCount; ++i)
        EXPECT_EQ(clients[static_cast<std::size_t>(i)]->answer().body,
                  "re " + QByteArray::number(i));
}

TEST_F(HttpServerRequests, Are_delivered_one_at_a_time)
{
    int depth = 0;
    int deepest = 0;
    handler = [&](const Arrival &) {
        deepest = std::max(deepest, ++depth);
        answer(200);
        --depth;
    };
    RawClient first(server->port());
    RawClient second(server->port());
    first.send(RawClient::request("/", "1"));
    second.send(RawClient::request("/", "2"));
    EXPECT_EQ(first.answer().status, 200);
    EXPECT_EQ(second.answer().status, 200);
    EXPECT_EQ(deepest, 1);
}

TEST_F(HttpServerRequests, That_are_no_HTTP_do_not_arrive_and_do_no_harm)
{
    const QByteArray broken[] = {
        "\x16\x03\x01\x02 this is TLS\r\n\r\n",
        "POST\r\n\r\n",
        "POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: many\r\n\r\nbody",
        "POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: -5\r\n\r\nbody",
    };
    for (const auto &bytes : broken) {
        SCOPED_TRACE(bytes.toStdString());
        RawClient client(server->port());
        client.send(bytes);
        EXPECT_TRUE(client.waitForClose());
    }
    EXPECT_TRUE(arrivals.isEmpty());
    EXPECT_TRUE(isServing());
}
