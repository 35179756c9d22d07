#include "HttpServerFixture.h"

#include <support/PrintQt.h>

#include <gmock/gmock.h>

namespace {

using support::RawClient;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

class HttpServerAnswers : public HttpServerFixture
{
protected:
    HttpServerAnswers() { start(); }

    RawClient::Answer post(const QByteArray &body = "question")
    {
        RawClient client(server->port());
        client.send(RawClient::request("/", body));
        return client.answer();
    }
};

} // namespace

TEST_F(HttpServerAnswers, Have_the_status_the_content_type_and_the_body_that_were_given)
{
    handler = [this](const Arrival &) {
        ResponseHeader header;
        header.setStatusLine(201, QStringLiteral("Created"), 1, 1);
        header.setContentType(QStringLiteral("application/json"));
        header.addValue(QStringLiteral("X-Till"), QStringLiteral("5"));
        server->sendResponse(header, "{\"чек\":1}");
    };
    const auto answer = post();
    EXPECT_EQ(answer.status, 201);
    EXPECT_THAT(answer.header.toStdString(), ContainsRegex("^HTTP/1\\.1 201 Created\r\n"));
    EXPECT_THAT(answer.header.toStdString(), HasSubstr("Content-Type: application/json"));
    EXPECT_THAT(answer.header.toStdString(), HasSubstr("X-Till: 5"));
    EXPECT_EQ(answer.body, QByteArray("{\"чек\":1}"));
}

TEST_F(HttpServerAnswers, Have_an_empty_body_where_none_was_given)
{
    const auto answer = post();
    EXPECT_EQ(answer.status, 200);
    EXPECT_THAT(answer.header.toStdString(), HasSubstr("Content-Length: 0"));
    EXPECT_THAT(answer.header.toStdString(), Not(HasSubstr("Content-Type")));
    EXPECT_EQ(answer.body, QByteArray());
}

TEST_F(HttpServerAnswers, Arrive_whole_when_they_are_large)
{
    const QByteArray large(5 * 1024 * 1024, 'x');
    handler = [&](const Arrival &) { answer(200, large); };
    EXPECT_TRUE(post().body == large);
}

TEST_F(HttpServerAnswers, Count_only_once)
{
    handler = [this](const Arrival &) {
        answer(200, "first");
        answer(500, "second");
    };
    RawClient client(server->port());
    client.send(RawClient::request("/", "a"));
    const auto answer = client.answer();
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, QByteArray("first"));
    client.send(RawClient::request("/", "b"));
    EXPECT_EQ(client.answer().body, QByteArray("first"));
    EXPECT_EQ(client.received(), QByteArray());
}

TEST_F(HttpServerAnswers, Are_503_where_nobody_gives_one)
{
    handler = [](const Arrival &) {};
    const auto answer = post();
    EXPECT_EQ(answer.status, 503);
    EXPECT_EQ(answer.body, QByteArray());
    EXPECT_EQ(arrivals.size(), 1);
}

TEST_F(HttpServerAnswers, Outside_of_a_delivery_are_harmless)
{
    answer(500);
    EXPECT_EQ(post().status, 200);
    answer(500);
    EXPECT_EQ(post().status, 200);
}

TEST_F(HttpServerAnswers, To_a_client_that_has_left_are_harmless)
{
    RawClient client(server->port());
    handler = [&](const Arrival &) {
        client.abort();
        answer(200, QByteArray(1024 * 1024, 'x'));
    };
    client.send(RawClient::request("/", "question"));
    ASSERT_TRUE(support::waitFor([&] { return arrivals.size() == 1; }));

    handler = [this](const Arrival &) { answer(200); };
    EXPECT_TRUE(isServing());
    EXPECT_EQ(arrivals.size(), 2);
}

TEST_F(HttpServerAnswers, Are_not_lost_when_a_client_leaves_in_the_middle_of_its_request)
{
    {
        RawClient client(server->port());
        client.send("POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 100\r\n\r\nonly this");
    }
    EXPECT_TRUE(isServing());
    EXPECT_EQ(arrivedBodies(), QList<QByteArray>{"still there?"});
}

TEST_F(HttpServerAnswers, Go_to_the_request_being_delivered_even_from_a_nested_event_loop)
{
    RawClient inner(server->port());
    handler = [&](const Arrival &outerArrival) {
        handler = [this](const Arrival &arrival) { answer(200, "re " + arrival.body); };
        inner.send(RawClient::request("/", "inner"));
        EXPECT_EQ(inner.answer().body, QByteArray("re inner"));
        answer(200, "re " + outerArrival.body);
    };
    EXPECT_EQ(post("outer").body, QByteArray("re outer"));
}
