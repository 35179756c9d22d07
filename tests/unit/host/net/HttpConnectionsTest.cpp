#include "HttpServerFixture.h"

#include <support/PrintQt.h>

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
        start(options);
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

TEST_F(HttpServerRoom, Is_not_made_by_a_request_that_waits_for_its_answer)
{
    startWithRoomFor(1);
    QByteArray refused;
    handler = [&](const Arrival &) {
        QTcpSocket further; // without events, so that nothing else is delivered
        further.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(server->port()));
        EXPECT_TRUE(further.waitForReadyRead(5000));
        refused = further.readAll();
        answer(200);
    };
    RawClient client(server->port());
    client.send(RawClient::request("/", "question"));
    EXPECT_EQ(client.answer().status, 200);
    EXPECT_TRUE(refused.startsWith("HTTP/1.1 503 ")) << refused.toStdString();
    EXPECT_EQ(arrivals.size(), 1);
}

TEST_F(HttpServerRoom, Is_kept_by_clients_that_leave)
{
    startWithRoomFor(2);
    for (int i = 0; i < 20; ++i)
        EXPECT_TRUE(isServing());
    EXPECT_EQ(arrivals.size(), 20);
    EXPECT_EQ(log.textsOf(QStringLiteral("httpserver")).size(), 1); // only that it listens
}
