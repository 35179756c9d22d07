#include <display/Advertising.h>

#include <display/Journal.h>
#include <display/PluginLink.h>

#include <support/LogCapture.h>
#include <support/OutputCapture.h>
#include <support/PrintQt.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <gtest/gtest.h>

#include <chrono>

namespace {

using support::ScriptedAnswer;

const QString picture = "data:image/svg+xml,%3Csvg%20xmlns=%22http://www.w3.org/2000/svg%22/%3E";

class AdvertisingTest : public testing::Test
{
protected:
    bool waitForReports(qsizetype count) const
    {
        return support::waitFor([&] { return plugin.requestCount() >= count; });
    }

    support::LogCapture log;
    support::ScriptedServer plugin;
    Journal journal;
    PluginLink link{plugin.url(), journal};
    Advertising advertising{link};
};

} // namespace

TEST_F(AdvertisingTest, One_that_was_shown_is_reported)
{
    advertising.play({{"url", picture}, {"time", 1}});
    ASSERT_TRUE(waitForReports(1));
    EXPECT_EQ(plugin.requests().constFirst().body,
              R"({"name":"adResult","type":"result","value":true})");
    EXPECT_EQ(advertising.shown(), 1);
    EXPECT_EQ(advertising.failed(), 0);
}

TEST_F(AdvertisingTest, One_that_could_not_be_loaded_is_reported)
{
    advertising.play({{"url", "http://127.0.0.1:1/"}, {"time", 1}});
    ASSERT_TRUE(waitForReports(1));
    EXPECT_EQ(plugin.requests().constFirst().body,
              R"({"name":"adResult","type":"result","value":false})");
    EXPECT_EQ(advertising.shown(), 0);
    EXPECT_EQ(advertising.failed(), 1);
}

TEST_F(AdvertisingTest, A_report_that_is_not_accepted_is_made_again_every_second_until_it_is)
{
    plugin.answerNext({ScriptedAnswer::status(503), ScriptedAnswer::status(503)});
    const auto start = std::chrono::steady_clock::now();
    advertising.play({{"url", ""}, {"time", 1}});
    ASSERT_TRUE(waitForReports(3));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(6)); // two pauses
    support::letPass(std::chrono::milliseconds(1200));
    EXPECT_EQ(plugin.requestCount(), 3);
}

TEST_F(AdvertisingTest, A_report_is_given_up_when_another_advertisement_comes)
{
    plugin.answerNext({ScriptedAnswer::status(503)});
    advertising.play({{"url", ""}, {"time", 1}});
    ASSERT_TRUE(waitForReports(1));
    support::letPass(std::chrono::milliseconds(100));
    advertising.play({{"url", picture}, {"time", 60}});
    support::letPass(std::chrono::milliseconds(1300));
    EXPECT_EQ(plugin.requestCount(), 1);
}

TEST_F(AdvertisingTest, How_each_fared_is_printed_with_its_address)
{
    const auto outcomeOf = [&](const QString &url) {
        return QString::fromUtf8(support::outputOf(stdout, [&] {
            const auto before = plugin.requestCount();
            advertising.play({{"url", url}, {"time", 1}});
            waitForReports(before + 1);
        }));
    };
    EXPECT_TRUE(outcomeOf(picture).endsWith("shown: " + picture + '\n'));
    EXPECT_TRUE(outcomeOf("data:,text").endsWith("neither a picture nor a film: data:,text\n"));
}

TEST_F(AdvertisingTest, A_report_is_given_up_when_it_is_stopped)
{
    plugin.answerNext({ScriptedAnswer::status(503)});
    advertising.play({{"url", ""}, {"time", 1}});
    ASSERT_TRUE(waitForReports(1));
    advertising.stop();
    support::letPass(std::chrono::milliseconds(1300));
    EXPECT_EQ(plugin.requestCount(), 1);
}
