#include "RestClientFixture.h"

#include <support/PrintQt.h>

#include <QLoggingCategory>

#include <gmock/gmock.h>

namespace {

using support::ScriptedAnswer;
using testing::AllOf;
using testing::EndsWith;
using testing::Eq;
using testing::HasSubstr;
using testing::StartsWith;

class RestClientLog : public RestClientFixture
{
protected:
    QStringList lines() const { return log.textsOf(QLatin1String(loggerName)); }
    std::string lastLine() const { return lines().value(lines().size() - 1).toStdString(); }
};

} // namespace

TEST_F(RestClientLog, Has_lines_only_when_the_server_goes_and_comes_back)
{
    for (int i = 0; i < 3; ++i)
        post();
    EXPECT_EQ(lines(), QStringList());

    server.goDown();
    for (int i = 0; i < 20; ++i)
        post();
    ASSERT_EQ(lines().size(), 1);
    EXPECT_EQ(log.lines().last().level, QtCriticalMsg);
    EXPECT_THAT(lastLine(), StartsWith("Дисплей: "));

    server.comeUp();
    for (int i = 0; i < 3; ++i)
        post();
    ASSERT_EQ(lines().size(), 2);
    EXPECT_EQ(log.lines().last().level, QtInfoMsg);
    EXPECT_THAT(lastLine(), AllOf(StartsWith("Дисплей: "), HasSubstr(": 20")));
}

TEST_F(RestClientLog, Names_the_reason)
{
    const struct
    {
        ScriptedAnswer answer;
        const char *reason;
    } rows[] = {
        {ScriptedAnswer::status(404), "404"},
        {ScriptedAnswer::blackHole(), "нет ответа за 1 с"},
        {ScriptedAnswer::endlessBody(), "слишком большой ответ"},
        {ScriptedAnswer::endlessHeader(), "слишком большой ответ"},
        {{.bytes =
              "HTTP/1.1 200 OK\r\nContent-Length: 1048577\r\n\r\n" + QByteArray(1'048'576, 'x'),
          .closes = true},
         "Transferred a partial file"}, // which is not too large yet
        {ScriptedAnswer::closed(), "соединение закрыто без ответа"},
        {ScriptedAnswer::garbage(), "ответ не по протоколу HTTP"},
        {{.bytes = "HTTP/x 500 Bad\r\n\r\n"}, "ответ не по протоколу HTTP"},
    };
    client.setRequestTimeout(1);
    for (const auto &row : rows) {
        SCOPED_TRACE(row.reason);
        server.answerNext({ScriptedAnswer::ok(), row.answer});
        EXPECT_EQ(post(), 0);
        EXPECT_NE(post(), 0);
        EXPECT_THAT(lastLine(), EndsWith(row.reason));
    }
}

TEST_F(RestClientLog, Tells_an_address_of_another_protocol_from_an_answer_of_another)
{
    EXPECT_NE(client.post(QUrl(QStringLiteral("ftp://127.0.0.1/")), {}, {}), 0);
    EXPECT_THAT(lastLine(), EndsWith("Unsupported protocol"));
}

TEST_F(RestClientLog, Has_a_line_for_each_post_when_asked)
{
    client.setCompactLogs(false);
    post("four");
    server.answer(ScriptedAnswer::status(404));
    post();
    client.setCompactLogs(true);
    post();

    QStringList debugLines;
    for (const auto &line : log.lines()) {
        if (line.level == QtDebugMsg)
            debugLines.append(line.text);
    }
    ASSERT_EQ(debugLines.size(), 2);
    const auto address = server.url(QStringLiteral("/configure")).toString().toStdString();
    EXPECT_THAT(debugLines.first().toStdString(), Eq("Дисплей: POST " + address + ", 4 байт: 200"));
    EXPECT_THAT(debugLines.last().toStdString(), EndsWith(", 2 байт: ответ HTTP 404"));
}

TEST_F(RestClientLog, Is_empty_without_a_logger)
{
    client.setLogger(nullptr);
    client.setCompactLogs(false);
    server.goDown();
    post();
    server.comeUp();
    post();
    EXPECT_EQ(lines(), QStringList());
}
