#include <display/PluginLink.h>

#include <support/LogCapture.h>
#include <support/PrintQt.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <QThread>

#include <gtest/gtest.h>

#include <chrono>

namespace {

using namespace std::chrono_literals;
using support::ScriptedAnswer;

class PluginLinkTest : public testing::Test
{
protected:
    void send(PluginLink &link, const QJsonObject &request)
    {
        link.send(request, [this](bool accepted) { outcomes.append(accepted); });
    }

    support::LogCapture log;
    support::ScriptedServer plugin;
    QList<bool> outcomes;
};

} // namespace

TEST_F(PluginLinkTest, Requests_arrive_in_their_order_as_JSON)
{
    PluginLink link(plugin.url());
    send(link, {{"n", 1}});
    send(link, {{"n", 2}});
    ASSERT_TRUE(support::waitFor([&] { return outcomes.size() == 2; }));
    EXPECT_EQ(outcomes, (QList{true, true}));
    const auto requests = plugin.requests();
    ASSERT_EQ(requests.size(), 2);
    EXPECT_EQ(requests[0].method, "POST");
    EXPECT_EQ(requests[0].field("content-type"), "application/json");
    EXPECT_EQ(requests[0].body, R"({"n":1})");
    EXPECT_EQ(requests[1].body, R"({"n":2})");
}

TEST_F(PluginLinkTest, A_request_that_is_not_accepted_is_told_and_not_made_again)
{
    plugin.answer(ScriptedAnswer::status(503));
    PluginLink link(plugin.url());
    send(link, {});
    ASSERT_TRUE(support::waitFor([&] { return !outcomes.isEmpty(); }));
    EXPECT_EQ(outcomes, QList{false});
    EXPECT_EQ(plugin.requestCount(), 1);
}

TEST_F(PluginLinkTest, The_outcome_is_told_on_the_thread_of_the_caller)
{
    PluginLink link(plugin.url());
    QThread *told = nullptr;
    link.send({}, [&](bool) { told = QThread::currentThread(); });
    ASSERT_TRUE(support::waitFor([&] { return told != nullptr; }));
    EXPECT_EQ(told, QThread::currentThread());
}

TEST_F(PluginLinkTest, Beyond_a_thousand_that_wait_the_next_is_given_up_at_once)
{
    plugin.answer(ScriptedAnswer::blackHole());
    PluginLink link(plugin.url());
    for (int i = 0; i < 1000; ++i)
        send(link, {});
    EXPECT_TRUE(outcomes.isEmpty());
    send(link, {});
    EXPECT_EQ(outcomes, QList{false});
}

TEST_F(PluginLinkTest, What_was_given_up_is_not_made_and_those_that_follow_the_thousand_are)
{
    PluginLink link(plugin.url());
    for (int i = 0; i < 1001; ++i)
        send(link, {});
    ASSERT_TRUE(support::waitFor([&] { return outcomes.size() >= 1001; }));
    EXPECT_EQ(plugin.requestCount(), 1000);
    send(link, {{"n", 1}});
    ASSERT_TRUE(support::waitFor([&] { return outcomes.size() > 1001; }));
    EXPECT_TRUE(outcomes.constLast());
    EXPECT_EQ(plugin.requests().constLast().body, R"({"n":1})");
}

TEST_F(PluginLinkTest, An_answer_within_two_seconds_is_waited_for_and_a_later_one_is_not)
{
    plugin.answerNext({ScriptedAnswer::slow(1500ms), ScriptedAnswer::slow(2500ms)});
    PluginLink link(plugin.url());
    send(link, {});
    send(link, {});
    ASSERT_TRUE(support::waitFor([&] { return outcomes.size() == 2; }));
    EXPECT_EQ(outcomes, (QList{true, false}));
}

TEST_F(PluginLinkTest, It_ends_after_the_post_under_way_although_many_wait)
{
    plugin.answer(ScriptedAnswer::blackHole());
    const auto start = std::chrono::steady_clock::now();
    {
        PluginLink link(plugin.url());
        for (int i = 0; i < 100; ++i)
            send(link, {});
        ASSERT_TRUE(support::waitFor([&] { return plugin.requestCount() == 1; }));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s); // and not 100 time-outs of 2 s
    EXPECT_TRUE(outcomes.isEmpty());
}

TEST_F(PluginLinkTest, The_log_says_once_that_the_plugin_is_away)
{
    plugin.goDown();
    PluginLink link(plugin.url());
    for (int i = 0; i < 5; ++i)
        send(link, {});
    ASSERT_TRUE(support::waitFor([&] { return outcomes.size() == 5; }));
    ASSERT_EQ(log.textsOf("display").size(), 1);
    EXPECT_TRUE(log.textsOf("display").constFirst().contains(plugin.url().toString()));
}
