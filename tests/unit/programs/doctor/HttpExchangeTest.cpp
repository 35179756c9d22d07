#include "Complete.h"

#include <doctor/HttpExchange.h>

#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <HttpServer.h>

#include <QTcpSocket>

#include <list>

#include <netinet/in.h>
#include <sys/socket.h>

using namespace doctor;
using namespace std::chrono_literals;
using support::ScriptedAnswer;

namespace {

constexpr std::chrono::milliseconds shortTime = 300ms;

class HttpExchange : public testing::Test
{
protected:
    HttpAnswer get(std::chrono::milliseconds timeout = 5s) const
    {
        return checked(exchange({server.url(), timeout}));
    }

    /// Expects what people are told to be complete.
    static HttpAnswer checked(const HttpAnswer &answer)
    {
        expectComplete(reasonOf(answer));
        expectComplete(remedyOf(answer, {"Запустите.", "Start it."}));
        return answer;
    }

    support::ScriptedServer server;
};

} // namespace

TEST_F(HttpExchange, Tells_the_status_the_times_and_the_header)
{
    server.answer({.delay = 50ms,
                   .bytes = "HTTP/1.1 404 No\r\nDate: Sat, 21 Nov 2026 10:00:00 GMT\r\n"
                            "X-Any: a\r\nContent-Length: 4\r\n\r\nbody"});
    const auto answer = get();
    EXPECT_EQ(answer.outcome, Outcome::Answered);
    EXPECT_EQ(answer.status, 404);
    EXPECT_GT(answer.connectTime.count(), 0);
    EXPECT_GE(answer.firstByteTime, Milliseconds(50));
    EXPECT_EQ(answer.peer, "127.0.0.1");
    EXPECT_EQ(answer.fields.value("x-any"), "a");
    EXPECT_EQ(answer.date(), QDateTime(QDate(2026, 11, 21), QTime(10, 0), Qt::UTC));
    EXPECT_TRUE(answer.isCutOff) << "nothing of the body was asked for";
    EXPECT_EQ(server.requests().at(0).method, "GET");
}

TEST_F(HttpExchange, Posts_json_and_takes_the_body_up_to_its_limit)
{
    server.answer(ScriptedAnswer::ok("12345"));
    const auto whole = exchange({server.url(), 5s, QByteArray("{}"), 5});
    EXPECT_EQ(whole.body, "12345");
    EXPECT_FALSE(whole.isCutOff);
    EXPECT_FALSE(whole.date().isValid());
    const auto request = server.requests().at(0);
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.body, "{}");
    EXPECT_EQ(request.field("content-type"), "application/json");
    EXPECT_TRUE(exchange({server.url(), 5s, QByteArray("{}"), 4}).isCutOff);
    server.answer(ScriptedAnswer::endlessBody());
    const auto endless = exchange({server.url(), 5s, QByteArray("{}"), 100'000});
    EXPECT_EQ(endless.outcome, Outcome::Answered);
    EXPECT_TRUE(endless.isCutOff);
    EXPECT_LE(endless.body.size(), 100'000);
}

TEST_F(HttpExchange, Follows_a_redirect_of_a_post_only)
{
    server.answerBy([](const auto &request) {
        return request.path == "/" ? ScriptedAnswer::status(307) : ScriptedAnswer::ok("there");
    });
    EXPECT_EQ(get().status, 307);
    EXPECT_EQ(exchange({server.url(), 5s, QByteArray("{}"), 100}).body, "there");
}

TEST_F(HttpExchange, Tells_a_port_where_nobody_listens)
{
    server.goDown();
    EXPECT_EQ(get().outcome, Outcome::Refused);
    EXPECT_EQ(get().connectTime.count(), 0);
}

TEST_F(HttpExchange, Tells_an_unknown_name)
{
    const auto answer = checked(exchange({QUrl("http://name.invalid/"), 2s}));
    EXPECT_EQ(answer.outcome, Outcome::NameUnknown);
}

TEST_F(HttpExchange, Tells_a_machine_that_does_not_react)
{
    // The kernel drops what wants to connect to a queue that is full.
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in name{};
    name.sin_family = AF_INET;
    name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof name;
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr *>(&name), size), 0);
    ASSERT_EQ(listen(listener, 0), 0);
    ASSERT_EQ(getsockname(listener, reinterpret_cast<sockaddr *>(&name), &size), 0);
    std::list<QTcpSocket> others(3);
    for (auto &other : others)
        other.connectToHost("127.0.0.1", ntohs(name.sin_port));
    ASSERT_TRUE(support::waitFor(
        [&] { return others.front().state() == QAbstractSocket::ConnectedState; }));
    const auto url = QString("http://127.0.0.1:%1/").arg(ntohs(name.sin_port));
    EXPECT_EQ(checked(exchange({QUrl(url), shortTime})).outcome, Outcome::ConnectTimedOut);
    close(listener);
}

TEST_F(HttpExchange, Tells_a_program_that_does_not_answer)
{
    server.answer(ScriptedAnswer::blackHole());
    EXPECT_EQ(get(shortTime).outcome, Outcome::AnswerTimedOut);
    server.answer(ScriptedAnswer::endlessInterim(1ms));
    EXPECT_EQ(get(shortTime).outcome, Outcome::AnswerTimedOut);
}

TEST_F(HttpExchange, Tells_what_is_no_http_and_what_ends_early)
{
    server.answer(ScriptedAnswer::garbage());
    EXPECT_EQ(get().outcome, Outcome::NotHttp);
    server.answer({.bytes = "HTTP/x 500\r\nContent-Length: 0\r\n\r\n"});
    EXPECT_EQ(get().outcome, Outcome::NotHttp);
    server.answer(ScriptedAnswer::closed());
    EXPECT_EQ(get().outcome, Outcome::Closed);
    server.answer({.bytes = "HTTP/1.1 200 OK\r\n", .closes = true});
    EXPECT_EQ(get().outcome, Outcome::Closed);
    server.answer(ScriptedAnswer::truncated());
    const auto truncated = exchange({server.url(), 5s, QByteArray("{}"), 1000});
    EXPECT_EQ(checked(truncated).outcome, Outcome::Closed);
}

TEST_F(HttpExchange, Has_no_status_of_an_answer_that_breaks_off)
{
    server.answer({.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 1\r\nno field\r\nab"});
    EXPECT_EQ(get().status, 0);
}

TEST_F(HttpExchange, Takes_no_more_header_than_fits)
{
    server.answer(ScriptedAnswer::endlessHeader());
    EXPECT_EQ(get().outcome, Outcome::Other);
    EXPECT_LT(server.bytesSent(), 8'000'000);
}

TEST_F(HttpExchange, Tells_that_there_is_no_encryption)
{
    const HttpServer plain(0, HttpServerOptions());
    QUrl url("https://127.0.0.1/");
    url.setPort(plain.port());
    EXPECT_EQ(checked(exchange({url, 5s})).outcome, Outcome::TlsFailed);
}
