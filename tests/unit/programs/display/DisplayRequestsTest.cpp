// What the display asks of the plug-in.

#include <display/Display.h>

#include <support/Json.h>
#include <support/KeepsToContract.h>
#include <support/LogCapture.h>
#include <support/OutputCapture.h>
#include <support/PrintQt.h>
#include <support/RawClient.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <QElapsedTimer>
#include <QJsonArray>

#include <gtest/gtest.h>

namespace {

class DisplayRequests : public testing::Test
{
protected:
    DisplayRequests()
    {
        options.port = 0;
        options.pluginUrl = plugin.url();
        display.emplace(options);
    }

    void post(const QByteArray &path, const QByteArray &body)
    {
        support::RawClient client(display->port());
        client.send(support::RawClient::request(path, body));
        EXPECT_EQ(client.answer().status, 200);
    }

    bool waitForRequests(qsizetype count) const
    {
        return support::waitFor([&] { return plugin.requestCount() >= count; });
    }

    support::LogCapture log;
    support::ScriptedServer plugin;
    DisplayOptions options;
    std::optional<Display> display;
};

const QByteArray receipt = R"({"number":1,"positions":[{"code":"100","barcode":"4600"}]})";

} // namespace

TEST_F(DisplayRequests, A_receipt_asks_for_the_pictures_of_its_goods_once)
{
    support::outputOf(stdout, [&] {
        post("/updateDocument", receipt);
        post("/updateDocument", receipt);
        ASSERT_TRUE(waitForRequests(1));
        support::letPass(std::chrono::milliseconds(100));
    });
    ASSERT_EQ(plugin.requestCount(), 1);
    const auto request = support::json(plugin.requests().constFirst().body);
    EXPECT_EQ(request["name"].toString(), "getImage");
    EXPECT_EQ(request["data"]["GoodsCode"]["value"].toString(), "100");
    support::expectKeepsToContract("getImage", request);
}

TEST_F(DisplayRequests, A_picture_is_asked_for_again_after_the_plugin_was_away)
{
    plugin.answerNext({support::ScriptedAnswer::status(503)});
    support::outputOf(stdout, [&] {
        post("/updateDocument", receipt);
        ASSERT_TRUE(waitForRequests(1));
        EXPECT_TRUE(support::waitFor([&] {
            post("/updateDocument", receipt);
            return plugin.requestCount() == 2;
        }));
    });
}

TEST_F(DisplayRequests, The_settings_of_the_register_turn_the_pictures_off)
{
    support::outputOf(stdout, [&] {
        post("/configure", R"({"View.Style:showImages":false})");
        post("/updateDocument", receipt);
        support::letPass(std::chrono::milliseconds(100));
    });
    EXPECT_EQ(plugin.requestCount(), 0);
}

TEST_F(DisplayRequests, An_advertisement_is_answered_with_its_result)
{
    support::outputOf(stdout, [&] {
        post("/showAD", R"({"id":"x","index":1,"url":"","time":1})");
        ASSERT_TRUE(waitForRequests(1));
    });
    const auto request = support::json(plugin.requests().constFirst().body);
    EXPECT_EQ(request, support::json(R"({"type":"result","name":"adResult","value":false})"));
    support::expectKeepsToContract("adResult", request);
}

TEST_F(DisplayRequests, A_result_leaves_the_plugin_time_to_hear_the_answer_to_the_advertisement)
{
    QElapsedTimer sinceAnswer;
    support::outputOf(stdout, [&] {
        post("/showAD", R"({"url":"","time":1})");
        sinceAnswer.start();
        ASSERT_TRUE(waitForRequests(1));
    });
    EXPECT_GE(sinceAnswer.elapsed(), 100) << "otherwise the next one goes with that answer";
}

TEST_F(DisplayRequests, The_summary_tells_how_they_fared)
{
    const QByteArray printed = support::outputOf(stdout, [&] {
        post("/updateDocument", receipt);
        post("/image", R"({"id":{},"uri":"data:"})");
        post("/image", R"({"id":{},"uri":""})");
        post("/showAD", R"({"url":"","time":1})");
        ASSERT_TRUE(waitForRequests(2));
        display->printSummary();
    });
    EXPECT_TRUE(printed.endsWith("Pictures: 1 asked for, 1 came, 1 said to be missing\n"
                                 "Advertisements: 0 shown, 1 failed, 0 pictures of streams\n"))
        << printed.toStdString();
}
