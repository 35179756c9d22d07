#include <relay/HttpTransfer.h>

#include <support/PrintQt.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <gtest/gtest.h>

#include <thread>

namespace {

using namespace std::chrono_literals;
using support::ScriptedAnswer;

class HttpTransfer : public testing::Test
{
protected:
    HttpRequest request(const QByteArray &method, const QByteArray &path) const
    {
        const auto address = "http://127.0.0.1:" + QByteArray::number(server.port());
        return {address, method, path, {}, {}};
    }

    support::ScriptedServer server;
};

} // namespace

TEST_F(HttpTransfer, Brings_the_answer_with_its_fields)
{
    server.answer({.bytes =
                       "HTTP/1.1 100 Continue\r\nX-Interim: 1\r\n\r\n"
                       "HTTP/1.1 203 Odd\r\nX-A: 1\r\nX-Empty:\r\nContent-Length: 4\r\n\r\nbody"});
    const auto answer = transfer(request("PUT", "/a"), 5s, {});
    EXPECT_EQ(answer.status, 203);
    EXPECT_EQ(answer.body, "body");
    EXPECT_EQ(answer.header.value("x-a"), "1");
    EXPECT_EQ(answer.header.value("x-empty"), "");
    EXPECT_TRUE(answer.header.value("x-interim").isNull());
    EXPECT_EQ(answer.error, "");
    ASSERT_EQ(server.requestCount(), 1);
    EXPECT_EQ(server.requests().constFirst().method, "PUT");
}

TEST_F(HttpTransfer, Sends_fields_as_they_are)
{
    auto sent = request("POST", "/");
    sent.fields = {{"Accept", "a/b"}, {"X-Empty", ""}, {"X-Text", "Хлеб"}};
    transfer(sent, 5s, {});
    ASSERT_EQ(server.requestCount(), 1);
    const auto arrived = server.requests().constFirst();
    EXPECT_EQ(arrived.field("accept"), "a/b");
    EXPECT_TRUE(arrived.hasField("x-empty"));
    EXPECT_EQ(arrived.field("x-text"), "Хлеб");
}

TEST_F(HttpTransfer, Goes_to_its_server_whatever_the_path_looks_like)
{
    EXPECT_EQ(transfer(request("GET", "@other.example/"), 5s, {}).status, 200);
    ASSERT_EQ(server.requestCount(), 1);
    EXPECT_EQ(server.requests().constFirst().path, "@other.example/");
}

TEST_F(HttpTransfer, Ends_at_once_when_that_is_asked_for)
{
    server.answer(ScriptedAnswer::blackHole());
    HttpAnswer answer;
    const auto start = std::chrono::steady_clock::now();
    std::jthread thread(
        [&](const std::stop_token &stop) { answer = transfer(request("GET", "/"), 60s, stop); });
    ASSERT_TRUE(support::waitFor([&] { return server.requestCount() == 1; }));
    thread.request_stop();
    thread.join();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 900ms); // less than libcurl's own rhythm
    EXPECT_EQ(answer.status, 0);
    EXPECT_NE(answer.error, "");
}

TEST_F(HttpTransfer, Takes_no_answer_without_a_status)
{
    server.answer({.bytes = "HTTP/x 500\r\nContent-Length: 0\r\n\r\n"});
    const auto answer = transfer(request("GET", "/"), 5s, {});
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.error, "the answer is not HTTP");
}

TEST_F(HttpTransfer, Takes_no_answer_whose_head_broke_off)
{
    server.answer({.bytes = "HTTP/1.1 200 OK\r\n", .closes = true});
    const auto answer = transfer(request("GET", "/"), 5s, {});
    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.error, "the answer broke off");
}

TEST_F(HttpTransfer, Finds_the_server_in_an_address)
{
    EXPECT_EQ(serverOf(QUrl("http://user:pw@till:38080/path?a=1#b")), "http://till:38080");
    EXPECT_EQ(serverOf(QUrl("http://127.0.0.1")), "http://127.0.0.1");
}

TEST_F(HttpTransfer, Asks_no_proxy)
{
    qputenv("http_proxy", "http://127.0.0.1:1");
    const auto answer = transfer(request("GET", "/"), 5s, {});
    qunsetenv("http_proxy");
    EXPECT_EQ(answer.status, 200);
}
