// Requests of the display.

#include "PluginFixture.h"

#include "HttpRequest.h"

namespace {

class DisplayRequests : public PluginFixture
{
protected:
    DisplayRequests() { connector->init(); }
};

TEST_F(DisplayRequests, Each_is_acknowledged_at_once_with_an_empty_JSON_answer)
{
    for (const QByteArray &content : {QByteArray("{}"), QByteArray("no JSON"), QByteArray(),
                                      QByteArray("{\"type\":\"unknown\",\"name\":\"x\"}")}) {
        const auto answer = post(connector->server->port(), content);
        EXPECT_EQ(answer.status, 200) << content.toStdString();
        EXPECT_EQ(answer.reason, "OK");
        EXPECT_EQ(answer.contentType, "application/json");
        EXPECT_EQ(answer.body, QByteArray());
    }
}

TEST_F(DisplayRequests, Each_is_logged_once)
{
    post(connector->server->port(), "{}");
    post(connector->server->port(), "{}");
    QList<support::LogCapture::Line> lines;
    for (const auto &line : log.lines()) {
        if (line.text == "Получено сообщение")
            lines.append(line);
    }
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines.constFirst().level, QtInfoMsg);
    EXPECT_EQ(lines.constFirst().logger, "viewconnector");
}

} // namespace
