#include <adservice/ThreadedHttpServer.h>

#include <support/LogCapture.h>
#include <support/PrintQt.h>
#include <support/RawClient.h>

#include <QTcpServer>

#include <gtest/gtest.h>

#include <latch>
#include <stdexcept>

using support::RawClient;

namespace {

using Request = ThreadedHttpServer::Request;

/// Answers with what the request was read as.
Answer echo(const Request &request)
{
    const auto text = request.method + ' ' + request.path.toUtf8() +
                      " key=" + request.query.queryItemValue("key", QUrl::FullyDecoded).toUtf8() +
                      ' ' + request.body;
    return {201, {{"X-Field", "value"}}, text, nullptr};
}

QByteArray get(const QByteArray &path)
{
    return "GET " + path + " HTTP/1.1\r\nHost: localhost\r\n\r\n";
}

RawClient::Answer ask(const ThreadedHttpServer &server, const QByteArray &request)
{
    RawClient client(server.port());
    client.send(request);
    return client.answer();
}

} // namespace

TEST(ThreadedHttpServer, Gives_the_handler_the_request_and_the_client_its_answer)
{
    const ThreadedHttpServer server(0, &echo);
    ASSERT_TRUE(server.isListening()) << server.errorString().toStdString();
    const auto answer = ask(server, RawClient::request("/a/b?key=k", "body"));
    EXPECT_EQ(answer.status, 201);
    EXPECT_EQ(answer.body, "POST /a/b key=k body");
    EXPECT_TRUE(answer.header.contains("\r\nX-Field: value\r\n")) << answer.header.toStdString();
}

TEST(ThreadedHttpServer, Decodes_path_and_query)
{
    const ThreadedHttpServer server(0, &echo);
    const std::pair<const char *, const char *> paths[] = {
        {"/", "GET / key= "},
        {"/?", "GET / key= "},
        {"/%D1%87%D0%B0%D0%B9%2f.", "GET /чай/. key= "},
        {"/a+b?key=a+b", "GET /a+b key=a+b "},
        {"/a?x=1&key=%26%3D%2B%25%20%D1%8F", "GET /a key=&=+% я "},
        {"/a?key=b?c", "GET /a key=b?c "},
    };
    for (const auto &[path, text] : paths)
        EXPECT_EQ(ask(server, get(path)).body, text);
}

TEST(ThreadedHttpServer, Serves_one_request_a_connection)
{
    const ThreadedHttpServer server(0, &echo);
    RawClient client(server.port());
    client.send(get("/"));
    EXPECT_EQ(client.answer().status, 201);
    EXPECT_TRUE(client.waitForClose());
}

TEST(ThreadedHttpServer, Sends_a_body_that_comes_in_pieces)
{
    const ThreadedHttpServer server(0, [](const Request &) {
        auto piece = std::make_shared<int>(0);
        return Answer{.body = "start", .more = [piece] {
                          return ++*piece > 2 ? QByteArray() : QByteArray(100'000, '.');
                      }};
    });
    RawClient client(server.port());
    client.send("GET / HTTP/1.0\r\n\r\n"); // without chunks
    EXPECT_TRUE(client.waitForClose());
    const auto received = client.received();
    EXPECT_EQ(received.mid(received.indexOf("\r\n\r\n") + 4), "start" + QByteArray(200'000, '.'));
}

TEST(ThreadedHttpServer, Closes_the_connection_without_an_answer_when_the_handler_has_none)
{
    const ThreadedHttpServer server(0, [](const Request &) { return std::nullopt; });
    RawClient client(server.port());
    client.send(get("/"));
    EXPECT_TRUE(client.waitForClose());
    EXPECT_EQ(client.received(), "");
}

TEST(ThreadedHttpServer, Takes_a_body_up_to_its_limit)
{
    const ThreadedHttpServer server(0, [](const Request &request) {
        return textAnswer(200, QByteArray::number(request.body.size()));
    });
    const auto limit = ThreadedHttpServer::maxBodyBytes;
    EXPECT_EQ(limit, 65'536);
    EXPECT_EQ(ask(server, RawClient::request("/", QByteArray(limit, 'x'))).body, "65536\n");
    EXPECT_EQ(ask(server, RawClient::request("/", QByteArray(limit + 1, 'x'))).status, 413);
    EXPECT_EQ(ask(server, RawClient::request("/", QByteArray(20 * limit, 'x'))).status, 413);
}

TEST(ThreadedHttpServer, Answers_500_and_logs_why_when_the_handler_throws)
{
    const support::LogCapture log;
    const ThreadedHttpServer server(0, [](const Request &) -> std::optional<Answer> {
        throw std::runtime_error("no randomness left");
    });
    const auto answer = ask(server, get("/"));
    EXPECT_EQ(answer.status, 500);
    EXPECT_EQ(answer.body, "the service failed\n");
    EXPECT_EQ(log.textsOf("adservice"), QStringList("/ failed: no randomness left"));
}

TEST(ThreadedHttpServer, Handles_requests_at_the_same_time)
{
    std::latch both(2);
    const ThreadedHttpServer server(0, [&](const Request &) {
        both.arrive_and_wait(); // for ever if the other one has to wait
        return textAnswer(200, "met");
    });
    RawClient first(server.port());
    RawClient second(server.port());
    first.send(get("/"));
    second.send(get("/"));
    EXPECT_EQ(first.answer().body, "met\n");
    EXPECT_EQ(second.answer().body, "met\n");
}

TEST(ThreadedHttpServer, Tells_why_it_does_not_listen)
{
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    const ThreadedHttpServer server(other.serverPort(), &echo);
    EXPECT_FALSE(server.isListening());
    EXPECT_EQ(server.port(), 0);
    EXPECT_EQ(server.errorString(), qt_error_string(EADDRINUSE));
}

TEST(ThreadedHttpServer, Listens_on_the_loopback_address_alone)
{
    const ThreadedHttpServer server(0, &echo);
    QTcpSocket socket;
    socket.connectToHost("127.0.0.2", static_cast<quint16>(server.port()));
    EXPECT_FALSE(socket.waitForConnected());
}
