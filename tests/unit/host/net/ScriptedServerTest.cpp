#include <support/ScriptedServer.h>

#include <support/PrintQt.h>
#include <support/RawClient.h>

#include <QElapsedTimer>

#include <gmock/gmock.h>

#include <chrono>

namespace {

using namespace std::chrono_literals;
using support::RawClient;
using support::ScriptedAnswer;
using support::ScriptedServer;
using testing::StartsWith;

const QByteArray question = RawClient::request("/configure", "question");

class ScriptedServers : public testing::Test
{
protected:
    /// Waits until that much has come, then takes what there is.
    static QByteArray bytes(RawClient &client, qsizetype count)
    {
        support::waitFor([&] { return client.received().size() >= count; });
        return client.received();
    }

    ScriptedServer server;
};

} // namespace

TEST_F(ScriptedServers, Answer_200_and_keep_the_connection_and_the_request)
{
    RawClient client(server.port());
    client.send(RawClient::request("/configure?x=1", "{\"чек\":1}", "X-Till: 5\r\n"));
    const auto before = std::chrono::steady_clock::now();
    const auto answer = client.answer();
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, QByteArray("{}"));
    EXPECT_TRUE(client.isConnected());

    ASSERT_EQ(server.requestCount(), 1);
    const auto request = server.requests().first();
    EXPECT_EQ(request.method, QByteArray("POST"));
    EXPECT_EQ(request.path, QByteArray("/configure?x=1"));
    EXPECT_EQ(request.field("x-till"), QByteArray("5"));
    EXPECT_TRUE(request.hasField("host"));
    EXPECT_FALSE(request.hasField("expect"));
    EXPECT_EQ(request.body, QByteArray("{\"чек\":1}"));
    EXPECT_EQ(request.connection, 0);
    EXPECT_LT(std::chrono::abs(request.arrival - before), 5s);
}

TEST_F(ScriptedServers, Read_requests_whole_however_they_are_cut_or_joined)
{
    RawClient client(server.port());
    client.send(question.left(10));
    QTest::qWait(5);
    client.send(question.mid(10) + question + question.left(question.size() - 1));
    EXPECT_EQ(client.answer().status, 200);
    EXPECT_EQ(client.answer().status, 200);
    EXPECT_EQ(server.requestCount(), 2);
    client.send(question.right(1));
    EXPECT_EQ(client.answer().status, 200);
    EXPECT_EQ(server.requestCount(), 3);
    EXPECT_EQ(server.connectionCount(), 1);
}

TEST_F(ScriptedServers, Number_their_connections)
{
    for (int i = 0; i < 3; ++i) {
        RawClient client(server.port());
        client.send(question);
        EXPECT_EQ(client.answer().status, 200);
        EXPECT_EQ(server.requests().last().connection, i);
    }
    EXPECT_EQ(server.connectionCount(), 3);
}

TEST_F(ScriptedServers, Give_the_queued_answers_first_and_the_standing_one_after_them)
{
    server.answer(ScriptedAnswer::status(404));
    server.answerNext({ScriptedAnswer::status(204), ScriptedAnswer::status(302)});
    RawClient client(server.port());
    for (const int status : {204, 302, 404, 404}) {
        client.send(question);
        const auto answer = client.answer();
        EXPECT_EQ(answer.status, status);
        EXPECT_EQ(answer.header.contains("Location: /redirected"), status == 302);
    }
    server.answer(ScriptedAnswer::ok());
    client.send(question);
    EXPECT_EQ(client.answer().status, 200);
}

TEST_F(ScriptedServers, Answer_late_but_completely)
{
    server.answer(ScriptedAnswer::slow(200ms));
    RawClient client(server.port());
    QElapsedTimer timer;
    timer.start();
    client.send(question);
    EXPECT_EQ(client.answer().status, 200);
    EXPECT_GE(timer.elapsed(), 190);
}

TEST_F(ScriptedServers, Close_without_an_answer)
{
    server.answer(ScriptedAnswer::closed());
    RawClient client(server.port());
    client.send(question);
    EXPECT_TRUE(client.waitForClose());
    EXPECT_EQ(client.received(), QByteArray());
    EXPECT_EQ(server.requestCount(), 1);
}

TEST_F(ScriptedServers, Keep_the_connection_and_say_nothing_as_a_black_hole)
{
    server.answer(ScriptedAnswer::blackHole());
    RawClient client(server.port());
    client.send(question);
    EXPECT_TRUE(support::waitFor([this] { return server.requestCount() == 1; }));
    EXPECT_FALSE(client.waitForClose(100ms));
    EXPECT_EQ(client.received(), QByteArray());
}

TEST_F(ScriptedServers, Send_garbage_or_half_an_answer_and_close)
{
    server.answerNext({ScriptedAnswer::garbage(), ScriptedAnswer::truncated()});
    RawClient first(server.port());
    first.send(question);
    EXPECT_TRUE(first.waitForClose());
    EXPECT_FALSE(first.received().contains("HTTP/"));
    EXPECT_GT(first.received().size(), 0);

    RawClient second(server.port());
    second.send(question);
    EXPECT_TRUE(second.waitForClose());
    EXPECT_TRUE(second.received().endsWith("Content-Length: 1000\r\n\r\nonly this"));
}

TEST_F(ScriptedServers, Drip_and_flood_without_an_end)
{
    const struct
    {
        ScriptedAnswer answer;
        QByteArray begin;
        qsizetype count;
    } rows[] = {
        {ScriptedAnswer::dripping(1ms), "HTTP/1.1 200 OK\r\n", 80},
        {ScriptedAnswer::endlessBody(), "HTTP/1.1 200 OK\r\n\r\nxxx", 2'000'000},
        {ScriptedAnswer::endlessHeader(), "HTTP/1.1 200 OK\r\nX-Filler: x", 2'000'000},
        {ScriptedAnswer::endlessInterim(1ms), "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 100", 500},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.begin.toStdString());
        server.answer(row.answer);
        RawClient client(server.port());
        client.send(question);
        EXPECT_GE(bytes(client, row.count).size(), row.count);
        EXPECT_THAT(client.received().left(100).toStdString(), StartsWith(row.begin.toStdString()));
        EXPECT_TRUE(client.isConnected());
        EXPECT_GE(server.bytesSent(), row.count);
    }
}

TEST_F(ScriptedServers, Are_refused_while_down_and_reached_again_on_the_same_port)
{
    const int port = server.port();
    RawClient kept(port);
    kept.send(question);
    EXPECT_EQ(kept.answer().status, 200);
    for (int round = 0; round < 3; ++round) {
        server.goDown();
        EXPECT_FALSE(RawClient(port).isConnected());
        server.comeUp();
        EXPECT_EQ(server.port(), port);
        RawClient client(port);
        client.send(question);
        EXPECT_EQ(client.answer().status, 200);
    }
    EXPECT_TRUE(kept.waitForClose());
    EXPECT_EQ(server.requestCount(), 4);
}

TEST(ScriptedServer, Shuts_down_within_a_second_whatever_it_is_at)
{
    const ScriptedAnswer answers[] = {
        ScriptedAnswer::ok(),          ScriptedAnswer::slow(1min),
        ScriptedAnswer::blackHole(),   ScriptedAnswer::dripping(1min),
        ScriptedAnswer::endlessBody(), ScriptedAnswer::endlessHeader(),
        ScriptedAnswer::truncated(),   ScriptedAnswer::endlessInterim(1ms),
    };
    for (const auto &answer : answers) {
        auto server = std::make_unique<ScriptedServer>();
        server->answer(answer);
        const RawClient silent(server->port());
        RawClient halfway(server->port());
        halfway.send(question.left(30));
        RawClient client(server->port());
        client.send(question);
        ASSERT_TRUE(support::waitFor([&] { return server->requestCount() == 1; }));
        QElapsedTimer timer;
        timer.start();
        server.reset();
        EXPECT_LT(timer.elapsed(), 1000);
    }
}
