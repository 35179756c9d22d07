#include "ProgramFixture.h"

#include <support/RawClient.h>

#include <csignal>

namespace {

constexpr qsizetype maxBody = 32 * 1024 * 1024;

class DisplayRefusal : public ProgramFixture
{
protected:
    DisplayRefusal() : display(startDisplay()) {}

    support::RawClient::Answer send(const QByteArray &request) const
    {
        support::RawClient client(displayPort);
        client.send(request);
        return client.answer();
    }

    support::RawClient::Answer post(const QByteArray &path, const QByteArray &body) const
    {
        return send(support::RawClient::request(path, body));
    }

    /// The display must refuse, say so in its log, and take the next message.
    void expectRefusal(const support::RawClient::Answer &answer, int status,
                       const QByteArray &reason)
    {
        EXPECT_EQ(answer.status, status);
        EXPECT_TRUE(answer.body.startsWith(reason)) << answer.body.toStdString();
        EXPECT_TRUE(display->waitForErrors(": " + reason)) << display->errors().toStdString();
        EXPECT_EQ(post("/content", "{}").status, 200);
    }

    /// Such a body is refused before it is a message.
    void expectTooLarge(const support::RawClient::Answer &answer)
    {
        EXPECT_EQ(answer.status, 413);
        EXPECT_TRUE(display->waitForErrors(" WARN httpserver HTTP-сервер: запрос /image отклонён: "
                                           "тело больше 33554432 байт"))
            << display->errors().toStdString();
        EXPECT_EQ(post("/content", "{}").status, 200);
    }

    ProcessPtr display;
};

/// A body of exactly `size` bytes.
QByteArray bodyOf(qsizetype size)
{
    const QByteArray start = "{\"uri\":\"";
    return start + QByteArray(size - start.size() - 2, 'x') + "\"}";
}

} // namespace

TEST_F(DisplayRefusal, Of_an_unknown_path)
{
    expectRefusal(post("/nothing", "{}"), 404, "no message is posted to this path");
    EXPECT_TRUE(display->errors().contains(" WARN display refused POST /nothing: "));
}

TEST_F(DisplayRefusal, Of_another_method)
{
    expectRefusal(send("GET /configure HTTP/1.1\r\nHost: x\r\n\r\n"), 405,
                  "a message is sent with POST");
}

TEST_F(DisplayRefusal, Of_a_body_that_is_no_JSON_object)
{
    expectRefusal(post("/configure", "rubbish"), 400, "not JSON: ");
    expectRefusal(post("/configure", ""), 400, "not JSON: ");
    expectRefusal(post("/configure", "[{}]"), 400, "not a JSON object");
}

TEST_F(DisplayRefusal, Of_deep_nesting)
{
    expectRefusal(post("/configure", "{\"a\":" + QByteArray(100'000, '[')), 400,
                  "nested deeper than 64 levels");
}

TEST_F(DisplayRefusal, Of_a_body_that_is_announced_as_too_large)
{
    support::RawClient client(displayPort);
    client.send("POST /image HTTP/1.1\r\nHost: x\r\nContent-Length: " +
                QByteArray::number(maxBody + 1) + "\r\n\r\n");
    expectTooLarge(client.answer());
}

TEST_F(DisplayRefusal, Of_a_body_that_grows_too_large)
{
    support::RawClient client(displayPort);
    client.send("POST /image HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\n");
    const QByteArray mebibyte(1024 * 1024, 'x');
    for (int i = 0; i < 33; ++i)
        client.send("100000\r\n" + mebibyte + "\r\n");
    client.send("0\r\n\r\n");
    expectTooLarge(client.answer());
}

TEST_F(DisplayRefusal, Does_not_concern_a_body_that_is_just_not_too_large)
{
    EXPECT_EQ(post("/image", bodyOf(maxBody)).status, 200);
}

TEST_F(DisplayRefusal, Is_recorded_and_counted)
{
    post("/configure", "[1]");
    post("/nothing", "{}");
    post("/content", "{}");
    ASSERT_TRUE(waitForRecord(3));
    EXPECT_EQ(record()[0]["status"].toInt(), 400);
    EXPECT_EQ(record()[0]["path"].toString(), "/configure");
    EXPECT_TRUE(record()[0]["body"].isNull());
    EXPECT_EQ(record()[1]["status"].toInt(), 404);
    EXPECT_EQ(record()[2]["status"].toInt(), 200);
    display->signal(SIGINT);
    EXPECT_EQ(display->exitCode(), 0);
    EXPECT_TRUE(
        display->output().endsWith("Received: 3 messages, 2 refused\n  Content        1\n"));
}
