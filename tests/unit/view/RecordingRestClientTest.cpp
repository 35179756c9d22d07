#include <support/RecordingRestClient.h>

#include <gtest/gtest.h>

#include <support/PrintQt.h>
#include <support/Wait.h>

#include <future>

namespace {

const QUrl url("http://127.0.0.1:1/path");

TEST(RecordingRestClient, It_gives_the_results_in_turn_and_keeps_the_last)
{
    support::RecordingRestClient client;
    EXPECT_EQ(client.post(url, {}, {}), 0);
    client.answer({7, 500});
    EXPECT_EQ(client.post(url, {}, {}), 7);
    EXPECT_EQ(client.result(), 7);
    EXPECT_EQ(client.post(url, {}, {}), 500);
    EXPECT_EQ(client.post(url, {}, {}), 500);
}

TEST(RecordingRestClient, It_remembers_posts_and_calls)
{
    support::RecordingRestClient client;
    client.setCompactLogs(true);
    client.post(url, "body", {{"a", "b"}});
    EXPECT_EQ(client.calls(), (QStringList{"setCompactLogs true", "post " + url.toString()}));
    ASSERT_EQ(client.postCount(), 1);
    EXPECT_EQ(client.posts().constFirst().body, QByteArray("body"));
    EXPECT_EQ(client.paths(), QStringList{"/path"});
}

TEST(RecordingRestClient, A_held_post_ends_when_it_is_released)
{
    support::RecordingRestClient client;
    client.hold();
    auto post = std::async(std::launch::async, [&] { return client.post(url, {}, {}); });
    ASSERT_TRUE(support::waitFor([&] { return client.postCount() == 1; }));
    EXPECT_EQ(post.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
    client.release();
    EXPECT_EQ(post.get(), 0);
}

TEST(RecordingRestClient, It_is_what_the_factory_gives_while_injected)
{
    {
        const support::InjectedRestClient injected;
        EXPECT_EQ(MockFactory<RestClient>::create(), injected.shared());
    }
    EXPECT_EQ(MockFactory<RestClient>::create().dynamicCast<support::RecordingRestClient>(),
              nullptr);
}

} // namespace
