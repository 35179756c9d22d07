#include <common/JsonPoster.h>

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

class JsonPosterTest : public testing::Test
{
protected:
    void send(JsonPoster &poster, const QJsonObject &request)
    {
        poster.send(request, [this](bool accepted) { outcomes.append(accepted); });
    }

    support::LogCapture log;
    support::ScriptedServer server;
    QList<bool> outcomes;
};

} // namespace

TEST_F(JsonPosterTest, Requests_arrive_in_their_order_as_JSON)
{
    JsonPoster poster(server.url(), QStringLiteral("poster"));
    send(poster, {{"n", 1}});
    send(poster, {{"n", 2}});
    ASSERT_TRUE(support::waitFor([&] { return outcomes.size() == 2; }));
    EXPECT_EQ(outcomes, (QList{true, true}));
    const auto requests = server.requests();
    ASSERT_EQ(requests.size(), 2);
    EXPECT_EQ(requests[0].method, "POST");
    EXPECT_EQ(requests[0].field("content-type"), "application/json");
    EXPECT_EQ(requests[0].body, R"({"n":1})");
    EXPECT_EQ(requests[1].body, R"({"n":2})");
}

TEST_F(JsonPosterTest, A_request_that_is_not_accepted_is_told_and_not_made_again)
{
    server.answer(ScriptedAnswer::status(503));
    JsonPoster poster(server.url(), QStringLiteral("poster"));
    send(poster, {});
    ASSERT_TRUE(support::waitFor([&] { return !outcomes.isEmpty(); }));
    EXPECT_EQ(outcomes, QList{false});
    EXPECT_EQ(server.requestCount(), 1);
}

TEST_F(JsonPosterTest, The_outcome_is_told_on_the_thread_of_the_caller)
{
    JsonPoster poster(server.url(), QStringLiteral("poster"));
    QThread *told = nullptr;
    poster.send({}, [&](bool) { told = QThread::currentThread(); });
    ASSERT_TRUE(support::waitFor([&] { return told != nullptr; }));
    EXPECT_EQ(told, QThread::currentThread());
}

TEST_F(JsonPosterTest, Beyond_a_thousand_that_wait_the_next_is_given_up_at_once)
{
    server.answer(ScriptedAnswer::blackHole());
    JsonPoster poster(server.url(), QStringLiteral("poster"));
    for (int i = 0; i < 1000; ++i)
        send(poster, {});
    EXPECT_TRUE(outcomes.isEmpty());
    send(poster, {});
    EXPECT_EQ(outcomes, QList{false});
}

TEST_F(JsonPosterTest, What_was_given_up_is_not_made_and_those_that_follow_the_thousand_are)
{
    JsonPoster poster(server.url(), QStringLiteral("poster"));
    for (int i = 0; i < 1001; ++i)
        send(poster, {});
    ASSERT_TRUE(support::waitFor([&] { return outcomes.size() >= 1001; }));
    EXPECT_EQ(server.requestCount(), 1000);
    send(poster, {{"n", 1}});
    ASSERT_TRUE(support::waitFor([&] { return outcomes.size() > 1001; }));
    EXPECT_TRUE(outcomes.constLast());
    EXPECT_EQ(server.requests().constLast().body, R"({"n":1})");
}

TEST_F(JsonPosterTest, An_answer_within_two_seconds_is_waited_for_and_a_later_one_is_not)
{
    server.answerNext({ScriptedAnswer::slow(1500ms), ScriptedAnswer::slow(2500ms)});
    JsonPoster poster(server.url(), QStringLiteral("poster"));
    send(poster, {});
    send(poster, {});
    ASSERT_TRUE(support::waitFor([&] { return outcomes.size() == 2; }));
    EXPECT_EQ(outcomes, (QList{true, false}));
}

TEST_F(JsonPosterTest, It_ends_after_the_post_under_way_although_many_wait)
{
    server.answer(ScriptedAnswer::blackHole());
    const auto start = std::chrono::steady_clock::now();
    {
        JsonPoster poster(server.url(), QStringLiteral("poster"));
        for (int i = 0; i < 100; ++i)
            send(poster, {});
        ASSERT_TRUE(support::waitFor([&] { return server.requestCount() == 1; }));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s); // and not 100 time-outs of 2 s
    EXPECT_TRUE(outcomes.isEmpty());
}

TEST_F(JsonPosterTest, The_log_says_once_that_the_other_side_is_away)
{
    server.goDown();
    JsonPoster poster(server.url(), QStringLiteral("poster"));
    for (int i = 0; i < 5; ++i)
        send(poster, {});
    ASSERT_TRUE(support::waitFor([&] { return outcomes.size() == 5; }));
    ASSERT_EQ(log.textsOf("poster").size(), 1);
    EXPECT_TRUE(log.textsOf("poster").constFirst().contains(server.url().toString()));
}
