#include "RelayFixture.h"

#include <common/MonotonicClock.h>

namespace {

using namespace std::chrono_literals;

class RelayTest : public RelayFixture
{
protected:
    static ScriptedAnswer answerOf(const QByteArray &statusLine, const QByteArray &fields,
                                   const QByteArray &body)
    {
        return {.bytes = "HTTP/1.1 " + statusLine + "\r\n" + fields +
                         "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body};
    }
};

} // namespace

TEST_F(RelayTest, Sends_on_method_path_query_and_body_as_they_are)
{
    const QByteArray body("{\"a\": \"\xD1\x85\xD0\xBB\xD0\xB5\xD0\xB1\",\0\x01\xFF}", 20);
    EXPECT_EQ(post("/update%41Document/../x|?a=1&b=%20x%2Fy&c=\"#d", body).status, 200);
    ASSERT_EQ(target.requestCount(), 1);
    const auto arrived = target.requests().constFirst();
    EXPECT_EQ(arrived.method, "POST");
    EXPECT_EQ(arrived.path, "/update%41Document/../x|?a=1&b=%20x%2Fy&c=\"#d");
    EXPECT_EQ(arrived.body, body);
}

TEST_F(RelayTest, Sends_on_the_fields_that_are_meant_for_the_target)
{
    send(RawClient::request("/content", "{}",
                            "Content-Type: application/json; charset=utf-8\r\n"
                            "Accept: application/json\r\nX-Replay: 1\r\n"
                            "Connection: X-Of-This-Hop\r\nX-Of-This-Hop: 1\r\n"));
    ASSERT_EQ(target.requestCount(), 1);
    const auto arrived = target.requests().constFirst();
    EXPECT_EQ(arrived.field("content-type"), "application/json; charset=utf-8");
    EXPECT_EQ(arrived.field("accept"), "application/json");
    EXPECT_EQ(arrived.field("x-replay"), "1");
    EXPECT_FALSE(arrived.hasField("x-of-this-hop"));
    EXPECT_EQ(arrived.field("host"), "127.0.0.1:" + QByteArray::number(target.port()));
    EXPECT_EQ(arrived.field("content-length"), "2");
}

TEST_F(RelayTest, Adds_no_field)
{
    post("/content?a=1", "{}");
    send("GET / HTTP/1.1\r\nHost: localhost\r\n\r\n");
    const auto requests = target.requests();
    ASSERT_EQ(requests.size(), 2);
    EXPECT_EQ(requests[0].fields.size(), 2); // "Host" and "Content-Length"
    EXPECT_EQ(requests[1].fields.size(), 1); // "Host"
}

TEST_F(RelayTest, Gives_back_status_fields_and_body_of_the_answer)
{
    const QByteArray body("<\xD0\x90\0\xFF>", 6);
    target.answer(answerOf("201 Created", "Content-Type: text/odd\r\nX-Own: yes\r\n", body));
    const auto answer = post("/content", "{}");
    EXPECT_EQ(answer.status, 201);
    EXPECT_TRUE(answer.header.contains("\r\nContent-Type: text/odd\r\n"));
    EXPECT_TRUE(answer.header.contains("\r\nX-Own: yes"));
    EXPECT_EQ(answer.body, body);
}

TEST_F(RelayTest, Gives_back_every_status_and_follows_nothing)
{
    for (const int status : {200, 204, 302, 307, 400, 401, 404, 405, 413, 500, 503}) {
        target.answer(ScriptedAnswer::status(status));
        const auto before = target.requestCount();
        const auto answer = post("/configure", "{}");
        EXPECT_EQ(answer.status, status);
        EXPECT_EQ(answer.body, status == 204 ? "" : "{}") << status;
        EXPECT_EQ(answer.header.contains("\r\nLocation: /redirected"), status / 100 == 3) << status;
        EXPECT_EQ(target.requestCount(), before + 1) << status;
        EXPECT_EQ(exchanges.constLast().status, status);
        EXPECT_EQ(exchanges.constLast().error, "") << status;
    }
}

TEST_F(RelayTest, Leaves_packed_answers_packed)
{
    target.answer(answerOf("200 OK", "Content-Encoding: gzip\r\n", "not really packed"));
    const auto answer = post("/content", "{}");
    EXPECT_EQ(answer.body, "not really packed");
    EXPECT_TRUE(answer.header.contains("\r\nContent-Encoding: gzip"));
    EXPECT_FALSE(target.requests().constFirst().hasField("accept-encoding"));
}

TEST_F(RelayTest, Sends_on_requests_without_a_body)
{
    target.answer(ScriptedAnswer::ok("the answer"));
    EXPECT_EQ(send("GET /state?n=1 HTTP/1.1\r\nHost: localhost\r\n\r\n").body, "the answer");
    EXPECT_EQ(send("DELETE /state HTTP/1.1\r\nHost: localhost\r\n\r\n").status, 200);
    const auto requests = target.requests();
    ASSERT_EQ(requests.size(), 2);
    EXPECT_EQ(requests[0].method, "GET");
    EXPECT_EQ(requests[0].path, "/state?n=1");
    EXPECT_EQ(requests[0].body, "");
    EXPECT_EQ(requests[1].method, "DELETE");
}

TEST_F(RelayTest, Sends_on_HEAD)
{
    target.answer({.bytes = "HTTP/1.1 404 Not Found\r\nContent-Length: 1000\r\n\r\n"});
    RawClient client(relay->port());
    client.send("HEAD /state HTTP/1.1\r\nHost: localhost\r\n\r\n");
    ASSERT_TRUE(support::waitFor([&] { return client.received().endsWith("\r\n\r\n"); }));
    EXPECT_TRUE(client.received().startsWith("HTTP/1.1 404 "));
    ASSERT_EQ(target.requestCount(), 1);
    EXPECT_EQ(target.requests().constFirst().method, "HEAD");
    ASSERT_EQ(exchanges.size(), 1);
    EXPECT_EQ(exchanges[0].status, 404);
}

TEST_F(RelayTest, Sends_on_large_bodies_both_ways)
{
    const QByteArray large(1024 * 1024, 'x');
    const QByteArray larger(12 * 1024 * 1024, 'y');
    target.answer(ScriptedAnswer::ok(larger));
    EXPECT_EQ(post("/image", large).body, larger);
    ASSERT_EQ(target.requestCount(), 1);
    EXPECT_EQ(target.requests().constFirst().body, large);
}

TEST_F(RelayTest, Tells_each_exchange)
{
    const auto before = monotonicMs();
    target.answerNext({ScriptedAnswer::slow(50ms), ScriptedAnswer::status(500)});
    send(RawClient::request("/content?n=1", "{\"a\":1}", "Content-Type: application/json\r\n"));
    post("/other", "second");
    ASSERT_EQ(exchanges.size(), 2);
    const auto &first = exchanges[0];
    EXPECT_EQ(first.number, 1);
    EXPECT_EQ(first.startedAt.timeSpec(), Qt::UTC);
    EXPECT_LT(qAbs(first.startedAt.msecsTo(QDateTime::currentDateTimeUtc())), 10'000);
    EXPECT_GE(first.startedMs, before);
    EXPECT_GE(first.durationMs, 50);
    EXPECT_LE(first.startedMs + first.durationMs, monotonicMs());
    EXPECT_EQ(first.method, "POST");
    EXPECT_EQ(first.path, "/content?n=1");
    EXPECT_EQ(first.requestBody, "{\"a\":1}");
    EXPECT_EQ(first.requestContentType, "application/json");
    EXPECT_EQ(first.status, 200);
    EXPECT_EQ(first.answerBody, "{}");
    EXPECT_EQ(first.answerContentType, "application/json");
    EXPECT_EQ(first.error, "");
    EXPECT_EQ(exchanges[1].number, 2);
    EXPECT_EQ(exchanges[1].status, 500);
}

TEST_F(RelayTest, Tells_an_exchange_before_its_client_hears)
{
    RawClient client(relay->port());
    QByteArray received = "not told";
    QObject::connect(&*relay, &Relay::exchanged, &*relay,
                     [&](const Exchange &) { received = client.received(); });
    client.send(RawClient::request("/content", "{}"));
    EXPECT_EQ(client.answer().status, 200);
    EXPECT_EQ(received, "");
}

TEST_F(RelayTest, Lets_no_request_wait_for_another)
{
    target.answerBy([](const support::ScriptedRequest &request) {
        return request.path == "/stuck" ? ScriptedAnswer::blackHole() : ScriptedAnswer::ok("quick");
    });
    QList<std::shared_ptr<RawClient>> stuck;
    for (int i = 0; i < 8; ++i) {
        stuck.append(std::make_shared<RawClient>(relay->port()));
        stuck.constLast()->send(RawClient::request("/stuck", "{}"));
    }
    ASSERT_TRUE(support::waitFor([&] { return target.requestCount() == 8; }));
    EXPECT_EQ(post("/content", "{}").body, "quick");
    ASSERT_EQ(exchanges.size(), 1);
    EXPECT_EQ(exchanges[0].number, 9);
}

TEST_F(RelayTest, Serves_one_connection_again_and_again)
{
    RawClient client(relay->port());
    for (int i = 0; i < 20; ++i) {
        client.send(RawClient::request("/content", QByteArray::number(i)));
        ASSERT_EQ(client.answer().status, 200);
        ASSERT_EQ(target.requests().constLast().body, QByteArray::number(i));
    }
}

TEST_F(RelayTest, Says_why_a_port_cannot_be_used)
{
    const Relay second(relay->port(), target.url());
    EXPECT_FALSE(second.isListening());
    EXPECT_NE(second.errorString(), "");
    EXPECT_EQ(relay->errorString(), "");
}

TEST_F(RelayTest, Admits_only_those_who_ask_for_the_loopback_address)
{
    EXPECT_EQ(send("POST / HTTP/1.1\r\nHost: shop.example\r\nContent-Length: 0\r\n\r\n").status,
              403);
    EXPECT_EQ(target.requestCount(), 0);
    EXPECT_TRUE(exchanges.isEmpty());
    EXPECT_EQ(send("POST / HTTP/1.1\r\nHost: 127.0.0.1:1\r\nOrigin: http://page.example\r\n"
                   "Content-Length: 0\r\n\r\n")
                  .status,
              200);
    EXPECT_EQ(target.requests().constFirst().field("origin"), "http://page.example");
}
