#include <common/JsonLine.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <QJsonArray>

#include <gtest/gtest.h>

TEST(JsonLine, Keeps_the_keys_in_the_given_order)
{
    EXPECT_EQ(jsonLine({{"n", 1}, {"do", "event"}, {"ok", true}, {"a", QJsonValue()}}),
              "{\"n\":1,\"do\":\"event\",\"ok\":true,\"a\":null}\n");
}

TEST(JsonLine, Without_any_field_is_an_empty_object)
{
    EXPECT_EQ(jsonLine({}), "{}\n");
}

TEST(JsonLine, Escapes_what_would_end_a_text_or_the_line)
{
    EXPECT_EQ(jsonLine({{"a\"b", "quote \" backslash \\ line\nend\ttab\r\x01"}}),
              "{\"a\\\"b\":\"quote \\\" backslash \\\\ line\\nend\\ttab\\r\\u0001\"}\n");
}

TEST(JsonLine, Writes_text_as_UTF_8_without_escapes)
{
    EXPECT_EQ(jsonLine({{"ключ", "Хлеб — 64,90 ₽ 🍞"}}),
              "{\"ключ\":\"Хлеб — 64,90 ₽ 🍞\"}\n");
}

TEST(JsonLine, Writes_every_kind_of_value_on_one_line_that_reads_back_the_same)
{
    const QJsonObject body{{"list", QJsonArray{1, "two", QJsonObject{{"three", 3.5}}}},
                           {"none", QJsonValue()}};
    const QByteArray line = jsonLine({{"ms", 12.3},
                                      {"big", qint64(9007199254740993)},
                                      {"no", false},
                                      {"body", body},
                                      {"emptyObject", QJsonObject()},
                                      {"emptyList", QJsonArray()}});
    EXPECT_EQ(line.count('\n'), 1);
    EXPECT_TRUE(line.endsWith("}\n"));

    const auto read = support::json(line);
    EXPECT_EQ(read["ms"].toDouble(), 12.3);
    EXPECT_EQ(read["big"].toInteger(), 9007199254740993);
    EXPECT_TRUE(read["no"].isBool());
    EXPECT_EQ(read["body"].toObject(), body);
    EXPECT_TRUE(read["emptyObject"].isObject());
    EXPECT_TRUE(read["emptyList"].isArray());
}
