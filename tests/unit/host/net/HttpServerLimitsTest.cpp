#include "HttpServerFixture.h"

#include <support/PrintQt.h>

#include <gmock/gmock.h>

#include <memory>

namespace {

using namespace std::chrono_literals;
using support::RawClient;

constexpr qint64 limit = 1000;

HttpServerOptions smallBodies()
{
    HttpServerOptions options;
    options.maxBodyBytes = limit;
    return options;
}

QByteArray chunked(const QByteArray &body, int chunkSize)
{
    QByteArray request =
        "POST /chunked HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n";
    for (qsizetype at = 0; at < body.size(); at += chunkSize) {
        const auto chunk = body.mid(at, chunkSize);
        request += QByteArray::number(chunk.size(), 16) + "\r\n" + chunk + "\r\n";
    }
    return request + "0\r\n\r\n";
}

using HttpServerLimits = HttpServerFixture;

} // namespace

TEST_F(HttpServerLimits, Let_a_body_of_the_limit_pass)
{
    start(smallBodies());
    for (const auto &request :
         {RawClient::request("/", QByteArray(limit, 'x')), chunked(QByteArray(limit, 'x'), 300)}) {
        RawClient client(server->port());
        client.send(request);
        EXPECT_EQ(client.answer().status, 200);
    }
    EXPECT_EQ(arrivals.size(), 2);
}

TEST_F(HttpServerLimits, Refuse_a_larger_body_with_413)
{
    start(smallBodies());
    for (const auto &request :
         {RawClient::request("/", QByteArray(limit + 1, 'x')),
          chunked(QByteArray(limit + 1, 'x'), 300), chunked(QByteArray(100 * limit, 'x'), 4096)}) {
        SCOPED_TRACE(request.left(20).toStdString());
        RawClient client(server->port());
        client.send(request);
        EXPECT_EQ(client.answer().status, 413);
    }
    EXPECT_TRUE(arrivals.isEmpty());
    EXPECT_TRUE(isServing());
}

TEST_F(HttpServerLimits, Refuse_an_announced_body_before_it_comes)
{
    start(smallBodies());
    RawClient client(server->port());
    client.send("POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 1000000000\r\n\r\n");
    EXPECT_EQ(client.answer().status, 413);
    EXPECT_TRUE(arrivals.isEmpty());
}

TEST_F(HttpServerLimits, Refuse_an_absurd_length)
{
    start(smallBodies());
    RawClient client(server->port());
    client.send("POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 99999999999999999999999\r\n"
                "\r\n");
    EXPECT_GE(client.answer().status, 400);
    EXPECT_TRUE(arrivals.isEmpty());
    EXPECT_TRUE(isServing());
}

TEST_F(HttpServerLimits, Are_told_to_the_log_with_the_path)
{
    start(smallBodies());
    RawClient client(server->port());
    client.send(RawClient::request("/much", QByteArray(limit + 1, 'x')));
    EXPECT_EQ(client.answer().status, 413);
    const auto last = log.textsOf(QStringLiteral("httpserver")).last();
    EXPECT_THAT(last.toStdString(), testing::HasSubstr("/much"));
    EXPECT_THAT(last.toStdString(), testing::HasSubstr("1000"));
}

TEST_F(HttpServerLimits, Refuse_a_length_that_no_signed_number_can_hold)
{
    start();
    RawClient client(server->port());
    client.send(
        "POST / HTTP/1.1\r\nHost: localhost\r\nContent-Length: 18446744073709551614\r\n\r\n");
    EXPECT_EQ(client.answer().status, 413);
}

TEST_F(HttpServerLimits, Let_a_header_of_the_limit_pass_and_refuse_a_longer_one)
{
    start();
    const auto withHeaderOf = [](qsizetype size) {
        const QByteArray begin = "GET / HTTP/1.1\r\nHost: localhost\r\nX: ";
        return begin + QByteArray(size - begin.size() - 4, 'x') + "\r\n\r\n";
    };
    const qsizetype headerLimit = HttpServerOptions().maxHeaderBytes;
    for (const auto &[size, status] :
         {std::pair(headerLimit, 200), {headerLimit + 1, 431}, {4 * headerLimit, 431}}) {
        SCOPED_TRACE(size);
        RawClient client(server->port());
        client.send(withHeaderOf(size));
        EXPECT_EQ(client.answer().status, status);
    }
    EXPECT_EQ(arrivals.size(), 1);
}

TEST_F(HttpServerLimits, Let_a_header_of_the_limit_pass_that_is_made_of_usual_fields)
{
    start();
    QByteArray head = "GET / HTTP/1.1\r\nHost: localhost\r\n";
    const QByteArray field = "X-Field-Of-A-Browser: " + QByteArray(16, 'x') + "\r\n";
    while (head.size() + field.size() + 2 <= HttpServerOptions().maxHeaderBytes)
        head += field;
    RawClient client(server->port());
    client.send(head + "\r\n");
    EXPECT_EQ(client.answer().status, 200);
}

TEST_F(HttpServerLimits, Let_the_cookies_pass_that_a_browser_keeps_of_a_server)
{
    start();
    QByteArray cookies = "Cookie: none=0";
    for (int number = 0; number < 50; ++number) // RFC 6265, 6.1: as many at least
        cookies += "; name" + QByteArray::number(number) + '=' + QByteArray(400, 'x');
    RawClient client(server->port());
    client.send("GET / HTTP/1.1\r\nHost: localhost\r\n" + cookies + "\r\n\r\n");
    EXPECT_EQ(client.answer().status, 200);
}

TEST_F(HttpServerLimits, Let_250_arguments_of_a_query_pass_and_refuse_more_with_414)
{
    start();
    for (const auto &[arguments, status] : {std::pair(250, 200), {251, 414}}) {
        SCOPED_TRACE(arguments);
        RawClient client(server->port());
        client.send("GET /?a=b" + QByteArray("&a=b").repeated(arguments - 1) +
                    " HTTP/1.1\r\nHost: localhost\r\n\r\n");
        EXPECT_EQ(client.answer().status, status);
    }
}

TEST_F(HttpServerLimits, Of_the_header_of_a_request_leave_that_of_the_answer_its_room)
{
    HttpServerOptions options;
    options.maxHeaderBytes = 100;
    start(options);
    const QString value(4000, u'x');
    handler = [&](const Arrival &) {
        ResponseHeader header;
        header.setValue(QStringLiteral("X-Long"), value);
        server->sendResponse(header, {});
    };
    RawClient client(server->port());
    client.send("GET / HTTP/1.1\r\nHost: localhost\r\n\r\n");
    const auto answer = client.answer();
    EXPECT_EQ(answer.status, 200);
    EXPECT_TRUE(answer.header.contains("X-Long: " + value.toLatin1()));
}

TEST_F(HttpServerLimits, Refuse_a_target_that_is_too_long_with_414_and_fields_that_are_with_431)
{
    start();
    const qsizetype most = HttpServerOptions().maxHeaderBytes;
    const std::pair<qsizetype, int> rows[] = {
        {most, 431}, {most + 1, 414}, {33'000, 414}, {200'000, 414}};
    for (const auto &[size, status] : rows) {
        SCOPED_TRACE(size);
        RawClient client(server->port());
        client.send("GET /" + QByteArray(size - 1, 'x') + " HTTP/1.1\r\nHost: localhost\r\n\r\n");
        EXPECT_EQ(client.answer().status, status);
    }
    EXPECT_TRUE(arrivals.isEmpty());
}

TEST_F(HttpServerLimits, End_the_connection_with_a_refusal)
{
    start(smallBodies());
    for (const auto &request : {QByteArray("GET / HTTP/1.1\r\nHost: localhost\r\nX: \x01\r\n\r\n"),
                                chunked(QByteArray(limit + 1, 'x'), 300)}) {
        SCOPED_TRACE(request.left(20).toStdString());
        RawClient client(server->port());
        client.send(request);
        const auto answer = client.answer();
        EXPECT_GE(answer.status, 400);
        EXPECT_TRUE(answer.header.contains("Connection: close"));
        EXPECT_TRUE(client.waitForClose(5s));
    }
}

TEST_F(HttpServerLimits, Close_a_connection_that_stays_silent)
{
    HttpServerOptions options;
    options.idleTimeout = 1s;
    start(options);
    RawClient silent(server->port());
    RawClient halfway(server->port());
    halfway.send("POST / HTTP/1.1\r\nHost: loc");
    RawClient served(server->port());
    served.send(RawClient::request("/", "question"));
    EXPECT_EQ(served.answer().status, 200);

    EXPECT_TRUE(silent.waitForClose(6s));
    EXPECT_TRUE(halfway.waitForClose(6s));
    EXPECT_TRUE(served.waitForClose(6s));
    EXPECT_TRUE(isServing());
}
