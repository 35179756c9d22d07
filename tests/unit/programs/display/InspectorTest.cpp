#include "DisplayFixture.h"

#include <support/OutputCapture.h>

namespace {

using namespace std::chrono_literals;

class InspectorTest : public DisplayFixture
{
protected:
    InspectorTest() { start(); }

    /// Posts a message of a register; what the display prints is not the test's.
    Answer tell(const QByteArray &path, const QByteArray &body)
    {
        Answer answer;
        support::outputOf(stdout, [&] { answer = post(path, body); });
        return answer;
    }

    QJsonObject switches() const
    {
        return firstEvent("/journal", "journal").value("switches").toObject();
    }

    void act(const QByteArray &name, int status = 204)
    {
        EXPECT_EQ(post("/actions", R"({"do":")" + name + R"("})").status, status);
    }

    /// What the plug-in is sent by an action.
    QJsonObject requestBy(const QByteArray &action)
    {
        const auto before = plugin.requestCount();
        act(action);
        EXPECT_TRUE(support::waitFor([&] { return plugin.requestCount() > before; }));
        return support::json(plugin.requests().constLast().body);
    }
};

} // namespace

TEST_F(InspectorTest, Is_a_page_with_the_files_that_it_needs)
{
    EXPECT_EQ(get("/inspector").status, 200);
    EXPECT_EQ(get("/inspector/index.html").status, 200);
}

TEST_F(InspectorTest, Is_told_every_message_and_what_became_of_it)
{
    tell("/content", R"({"data":"x"})");
    tell("/content", "[]");
    tell("/nothing", "{}");
    const auto messages = journal("message");
    ASSERT_EQ(messages.size(), 3);
    EXPECT_EQ(messages[0]["type"].toString(), "Content");
    EXPECT_EQ(messages[0]["body"].toObject(), (QJsonObject{{"data", "x"}}));
    EXPECT_EQ(messages[0]["status"].toInt(), 200);
    EXPECT_EQ(messages[0]["bytes"].toInt(), 12);
    EXPECT_FALSE(messages[0]["replay"].toBool(true));
    EXPECT_EQ(messages[1]["status"].toInt(), 400);
    EXPECT_EQ(messages[1]["reason"].toString(), "not a JSON object");
    EXPECT_TRUE(messages[1]["body"].isNull());
    EXPECT_EQ(messages[2]["type"].toString(), "");
    EXPECT_EQ(messages[2]["path"].toString(), "/nothing");
    EXPECT_EQ(messages[2]["status"].toInt(), 404);
}

TEST_F(InspectorTest, Is_told_each_entry_as_it_comes)
{
    support::RawClient page(display->port());
    page.send("GET /journal HTTP/1.1\r\nHost: localhost\r\n\r\n");
    ASSERT_TRUE(support::waitFor([&] { return page.received().contains("event: journal"); }));
    tell("/content", R"({"data":"x"})");
    EXPECT_TRUE(support::waitFor([&] {
        return page.received().contains("event: entry\ndata: {\"body\":{\"data\":\"x\"}");
    }));
}

TEST_F(InspectorTest, Knows_a_message_that_is_played_again)
{
    support::outputOf(
        stdout, [&] { send(support::RawClient::request("/content", "{}", "X-Replay: 1\r\n")); });
    EXPECT_TRUE(journal("message").first()["replay"].toBool());
}

TEST_F(InspectorTest, Is_told_by_the_register_what_was_asked_for)
{
    EXPECT_EQ(post("/asked", R"({"type":"Content","monotonicMs":12.5})").status, 204);
    const auto asked = journal("asked");
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked[0]["type"].toString(), "Content");
    EXPECT_EQ(asked[0]["ms"].toDouble(), 12.5);
    for (const auto *wrong : {"{}", "[]", "rubbish", R"({"type":"Nothing","monotonicMs":1})",
                              R"({"type":"Content","monotonicMs":"1"})"})
        EXPECT_EQ(post("/asked", wrong).status, 400) << wrong;
    EXPECT_EQ(journal("asked").size(), 1);
}

TEST_F(InspectorTest, Makes_the_display_close_connections_without_an_answer)
{
    EXPECT_EQ(post("/switches", R"({"down":true})").status, 204);
    support::RawClient client(display->port());
    client.send(support::RawClient::request("/content", R"({"data":"x"})"));
    EXPECT_TRUE(client.waitForClose());
    EXPECT_EQ(client.received(), "");
    EXPECT_EQ(journal("message").first()["status"].toInt(-1), 0);
    EXPECT_TRUE(keptMessages().isEmpty());

    EXPECT_EQ(post("/switches", R"({"down":false})").status, 204);
    EXPECT_EQ(tell("/content", "{}").status, 200);
}

TEST_F(InspectorTest, Makes_the_display_answer_500)
{
    post("/switches", R"({"error":true})");
    EXPECT_EQ(tell("/content", "{}").status, 500);
    EXPECT_EQ(journal("message").first()["status"].toInt(), 500);
    EXPECT_TRUE(keptMessages().isEmpty());
}

TEST_F(InspectorTest, Makes_the_display_slow)
{
    post("/switches", R"({"slowMs":300})");
    EXPECT_EQ(tell("/content", "{}").status, 200);
    EXPECT_GE(journal("message").first()["tookMs"].toDouble(), 299);
    EXPECT_EQ(keptMessages().size(), 1);
}

TEST_F(InspectorTest, Has_what_waits_answered_in_its_order_when_the_display_is_no_longer_slow)
{
    post("/switches", R"({"slowMs":600000})");
    support::RawClient first(display->port());
    first.send(support::RawClient::request("/content", R"({"data":"old"})"));
    support::RawClient second(display->port());
    support::outputOf(stdout, [&] {
        ASSERT_TRUE(support::waitFor([&] { return display->waiting() == 1; }));
        second.send(support::RawClient::request("/content", R"({"data":"new"})"));
        ASSERT_TRUE(support::waitFor([&] { return display->waiting() == 2; }));
        post("/switches", R"({"slowMs":0})");
        EXPECT_EQ(first.answer().status, 200);
        EXPECT_EQ(second.answer().status, 200);
    });
    ASSERT_EQ(keptMessages().size(), 1);
    EXPECT_EQ(keptMessages().first()["body"]["data"].toString(), "new");
}

TEST_F(InspectorTest, Has_what_waits_cut_off_when_the_display_restarts_empty)
{
    post("/switches", R"({"slowMs":600000})");
    support::RawClient client(display->port());
    client.send(support::RawClient::request("/content", R"({"data":"old"})"));
    ASSERT_TRUE(support::waitFor([&] { return display->waiting() == 1; }));
    act("restart-empty");
    EXPECT_TRUE(client.waitForClose());
    EXPECT_EQ(journal("message").first()["status"].toInt(), 0);
    post("/switches", R"({"slowMs":0})");
    EXPECT_TRUE(keptMessages().isEmpty());
}

TEST_F(InspectorTest, Changes_only_the_switches_that_it_names_and_tells_all_pages)
{
    post("/switches", R"({"slowMs":300})");
    support::RawClient page(display->port());
    page.send("GET /journal HTTP/1.1\r\nHost: localhost\r\n\r\n");
    ASSERT_TRUE(support::waitFor([&] { return page.received().contains("event: journal"); }));
    post("/switches", R"({"error":true,"down":"rubbish"})");
    EXPECT_TRUE(support::waitFor([&] {
        return page.received().contains(
            "event: switches\ndata: {\"down\":false,\"error\":true,\"slowMs\":300}");
    }));
    EXPECT_EQ(switches(), (QJsonObject{{"down", false}, {"error", true}, {"slowMs", 300}}));
}

TEST_F(InspectorTest, Begins_with_the_switches_of_the_command_line)
{
    options.switches = {true, true, 5};
    start();
    EXPECT_EQ(switches(), (QJsonObject{{"down", true}, {"error", true}, {"slowMs", 5}}));
}

TEST_F(InspectorTest, Empties_the_display_as_if_it_were_new)
{
    tell("/configure", R"({"a":1})");
    act("restart-empty");
    EXPECT_TRUE(keptMessages().isEmpty());
    start();
    EXPECT_TRUE(keptMessages().isEmpty());
}

TEST_F(InspectorTest, Asks_for_a_picture_that_nobody_knows)
{
    const auto request = requestBy("ask-unknown-image");
    EXPECT_EQ(request["name"].toString(), "getImage");
    EXPECT_EQ(request["data"]["GoodsCode"]["value"].toString(), "unknown");
    ASSERT_TRUE(support::waitFor([&] { return journal("request").size() == 1; }));
    EXPECT_TRUE(journal("request").first()["accepted"].toBool());
}

TEST_F(InspectorTest, Sends_results_of_advertisements_that_nobody_awaits)
{
    act("duplicate-ad-result", 409);
    act("failed-ad-result", 409);
    tell("/showAD", R"({"url":"data:image/svg+xml,<svg/>","time":600})");
    EXPECT_TRUE(requestBy("duplicate-ad-result")["value"].toBool());
    EXPECT_FALSE(requestBy("failed-ad-result")["value"].toBool(true));
}

TEST_F(InspectorTest, Refuses_an_action_that_it_does_not_know_and_names_those_that_it_does)
{
    const auto answer = post("/actions", R"({"do":"explode"})");
    EXPECT_EQ(answer.status, 400);
    EXPECT_EQ(answer.body, "\"do\" must be one of: ask-unknown-image, duplicate-ad-result, "
                           "failed-ad-result, restart-empty\n");
}

TEST_F(InspectorTest, Is_not_switched_by_a_foreign_page)
{
    const auto answer = send(support::RawClient::request("/switches", R"({"down":true})",
                                                         "Origin: http://evil.example\r\n"));
    EXPECT_EQ(answer.status, 403);
    EXPECT_FALSE(switches()["down"].toBool(true));
}
