#include <record/ExchangeLine.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

class ExchangeLineTest : public testing::Test
{
protected:
    ExchangeLineTest()
    {
        exchange.startedAt = QDateTime({2026, 1, 2}, {3, 4, 5, 678}, Qt::UTC);
        exchange.durationMs = 1.23456;
        exchange.method = "POST";
        exchange.path = "/content";
        exchange.requestBody = R"({"b":"Хлеб","a":1})";
        exchange.status = 200;
    }

    QByteArray line(bool redacts = true) const { return exchangeLine(place, exchange, redacts); }
    QJsonObject object(bool redacts = true) const { return support::json(line(redacts)); }

    Exchange exchange;
    LinePlace place{7, 12.3456, true};
};

} // namespace

TEST_F(ExchangeLineTest, Has_its_keys_in_a_fixed_order)
{
    exchange.answerBody = "{\"x\":true}";
    exchange.error = "made up";
    EXPECT_EQ(line(), "{\"n\":7,\"time\":\"2026-01-02T03:04:05.678Z\",\"ms\":12.346,"
                      "\"to\":\"display\",\"method\":\"POST\",\"path\":\"/content\","
                      "\"type\":\"Content\",\"body\":{\"a\":1,\"b\":\"Хлеб\"},\"status\":200,"
                      "\"took\":1.235,\"answer\":{\"x\":true},\"error\":\"made up\"}\n");
}

TEST_F(ExchangeLineTest, Leaves_out_what_there_is_none_of)
{
    exchange.path = "/elsewhere";
    exchange.requestBody.clear();
    EXPECT_EQ(object().keys(),
              (QStringList{"method", "ms", "n", "path", "status", "time", "to", "took"}));
}

TEST_F(ExchangeLineTest, Names_the_type_of_messages_to_the_display_only)
{
    exchange.path = "/content?a=1";
    EXPECT_EQ(object()["type"], "Content");
    place.isToDisplay = false;
    EXPECT_EQ(object()["to"], "plug-in");
    EXPECT_FALSE(object().contains("type"));
}

TEST_F(ExchangeLineTest, Writes_of_a_body_that_is_no_JSON_the_shape_of_its_text)
{
    exchange.requestBody = "{\"a\": Иван, 12";
    exchange.answerBody = "null";
    EXPECT_EQ(object()["bodyText"], "{\"x\": xxxx, xx");
    EXPECT_EQ(object(false)["bodyText"], "{\"a\": Иван, 12");
    EXPECT_EQ(object()["answerText"], "xxxx");
    EXPECT_EQ(object(false)["answerText"], "null");
    EXPECT_FALSE(object().contains("body"));
}

TEST_F(ExchangeLineTest, Writes_a_body_that_is_no_text_as_its_size_or_whole)
{
    exchange.requestBody = QByteArray("\xff\0\x01", 3);
    EXPECT_EQ(object()["bodyBytes"], 3);
    EXPECT_FALSE(object().contains("bodyBase64"));
    EXPECT_EQ(object(false)["bodyBase64"], "/wAB");
    EXPECT_FALSE(object(false).contains("bodyBytes"));
}

TEST_F(ExchangeLineTest, Redacts_everything_that_came_from_outside)
{
    const QByteArray secret = "4111111111111111";
    exchange.path = "/content?card=" + secret;
    exchange.requestBody = "{\"a\":\"" + secret + "\"}";
    exchange.answerBody = "[\"" + secret + "\"]";
    exchange.error = "no " + secret;
    EXPECT_FALSE(line().contains("4111"));
    EXPECT_EQ(line(false).count(secret), 4);
}

TEST_F(ExchangeLineTest, Is_one_line_whatever_came)
{
    exchange.requestBody = "a\nb\r\n\"";
    exchange.error = "c\nd";
    for (const bool redacts : {true, false}) {
        EXPECT_EQ(line(redacts).count('\n'), 1);
        EXPECT_EQ(object(redacts)["bodyText"], redacts ? "x\nx\r\n\"" : "a\nb\r\n\"");
    }
}
