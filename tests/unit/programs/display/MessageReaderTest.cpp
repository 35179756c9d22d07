#include <display/MessageReader.h>

#include <common/MessageTypes.h>

#include <support/Json.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

ReceivedMessage post(const QByteArray &content, const QString &path = "/content")
{
    return readMessage("POST", path, content);
}

void expectRefused(const ReceivedMessage &message, int status, const QString &reason)
{
    EXPECT_EQ(message.status, status);
    EXPECT_TRUE(message.refusal.startsWith(reason)) << message.refusal.toStdString();
    EXPECT_TRUE(message.body.isEmpty());
}

/// An object with `depth` levels of brackets, the object's own included.
QByteArray nested(int depth, char open = '[', char close = ']')
{
    const QByteArray before = open == '{' ? "{\"a\":" : "[";
    QByteArray content = "0";
    for (int i = 1; i < depth; ++i)
        content = before + content + close;
    return "{\"a\":" + content + '}';
}

} // namespace

TEST(MessageReader, Accepts_an_object_on_the_path_of_each_type)
{
    for (const auto &type : messageTypes) {
        SCOPED_TRACE(type.path);
        const auto message = post(R"({"n":1,"имя":"Хлеб"})", type.path);
        EXPECT_EQ(message.type, type.name);
        EXPECT_EQ(message.status, 200);
        EXPECT_EQ(message.refusal, "");
        EXPECT_EQ(message.body, (QJsonObject{{"n", 1}, {"имя", "Хлеб"}}));
    }
}

TEST(MessageReader, Accepts_an_empty_object)
{
    const auto message = post("{}", "/updateDocument");
    EXPECT_EQ(message.status, 200);
    EXPECT_TRUE(message.body.isEmpty());
}

TEST(MessageReader, Refuses_a_path_of_no_message_whatever_comes_with_it)
{
    for (const auto *path : {"/", "", "/configure/", "/Configure", "/image?x=1", "/nothing"}) {
        const auto message = post("{}", path);
        expectRefused(message, 404, "no message is posted to this path");
        EXPECT_EQ(message.type, "");
    }
    expectRefused(readMessage("GET", "/nothing", "rubbish"), 404, "no message is posted");
}

TEST(MessageReader, Refuses_every_method_but_POST)
{
    for (const auto *method : {"GET", "PUT", "HEAD", "DELETE", "OPTIONS", "post", ""}) {
        const auto message = readMessage(method, "/configure", "{}");
        expectRefused(message, 405, "a message is sent with POST");
        EXPECT_EQ(message.type, "Configure");
    }
}

TEST(MessageReader, Refuses_what_is_not_JSON_and_says_where)
{
    expectRefused(post(""), 400, "not JSON: ");
    expectRefused(post("rubbish"), 400, "not JSON: ");
    expectRefused(post("{\"a\":1"), 400, "not JSON: ");
    expectRefused(post("{'a':1}"), 400, "not JSON: ");
    expectRefused(post("{\"a\":\"\xff\xfe\"}"), 400, "not JSON: ");
    EXPECT_TRUE(post("{\"a\":x}").refusal.endsWith("at byte 5"))
        << post("{\"a\":x}").refusal.toStdString();
    EXPECT_TRUE(post("{} {}").refusal.contains("at byte 3")) << post("{} {}").refusal.toStdString();
}

TEST(MessageReader, Refuses_JSON_that_is_no_object)
{
    expectRefused(post("[]"), 400, "not a JSON object");
    expectRefused(post(R"([{"a":1}])"), 400, "not a JSON object");
    for (const auto *content : {"null", "1", "\"text\"", "true"})
        EXPECT_EQ(post(content).status, 400) << content;
}

TEST(MessageReader, Accepts_64_levels_and_refuses_65)
{
    for (const auto &[open, close] : {std::pair('[', ']'), std::pair('{', '}')}) {
        EXPECT_EQ(post(nested(64, open, close)).status, 200);
        EXPECT_FALSE(post(nested(64, open, close)).body.isEmpty());
        expectRefused(post(nested(65, open, close)), 400, "nested deeper than 64 levels");
    }
}

TEST(MessageReader, Refuses_nesting_that_would_exhaust_a_parser)
{
    expectRefused(post(QByteArray(1'000'000, '[')), 400, "nested deeper than 64 levels");
}

TEST(MessageReader, Counts_levels_not_brackets)
{
    EXPECT_EQ(post("{\"a\":[" + QByteArray("[[]],").repeated(200) + "[]]}").status, 200);
}

TEST(MessageReader, Does_not_count_brackets_in_texts)
{
    const QByteArray brackets = QByteArray("[{").repeated(100);
    const auto message = post("{\"a\":\"" + brackets + "\"}");
    EXPECT_EQ(message.status, 200);
    EXPECT_EQ(message.body["a"].toString(), QString::fromLatin1(brackets));
}

TEST(MessageReader, Knows_where_a_text_with_escapes_ends)
{
    const QByteArray brackets(100, '[');
    // An escaped quote does not end the text; a quote after an escaped backslash does.
    EXPECT_EQ(post("{\"a\":\"\\\"" + brackets + "\"}").status, 200);
    EXPECT_EQ(post("{\"a\":\"\\\\\\\"" + brackets + "\"}").status, 200);
    expectRefused(post("{\"a\":\"\\\\\",\"b\":" + brackets + QByteArray(100, ']') + '}'), 400,
                  "nested deeper than 64 levels");
}

TEST(MessageReader, Accepts_a_million_values_and_refuses_more)
{
    // The object, its one array, and what the commas between the items tell of.
    const auto withItems = [](int count) {
        return "{\"a\":[" + QByteArray("0,").repeated(count - 1) + "0]}";
    };
    EXPECT_EQ(post(withItems(999'999)).status, 200);
    expectRefused(post(withItems(1'000'000)), 400, "more than 1000000 values");
    EXPECT_EQ(post("{\"a\":\"" + QByteArray(1'100'000, ',') + "\"}").status, 200);
}
