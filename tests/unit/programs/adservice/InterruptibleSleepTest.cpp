#include <adservice/InterruptibleSleep.h>

#include <gtest/gtest.h>

#include <future>

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

TEST(InterruptibleSleep, Lasts_until_its_time)
{
    const std::stop_source source;
    const auto time = Clock::now() + 30ms;
    EXPECT_TRUE(sleepUntil(source.get_token(), time));
    EXPECT_GE(Clock::now(), time);
}

TEST(InterruptibleSleep, Is_none_when_the_time_has_passed)
{
    const std::stop_source source;
    const auto before = Clock::now();
    EXPECT_TRUE(sleepUntil(source.get_token(), before - 1h));
    EXPECT_LT(Clock::now() - before, 10s);
}

TEST(InterruptibleSleep, Ends_when_a_stop_is_requested)
{
    std::stop_source source;
    auto sleep = std::async(std::launch::async, [&] {
        return sleepUntil(source.get_token(), Clock::time_point::max());
    });
    EXPECT_EQ(sleep.wait_for(20ms), std::future_status::timeout);
    source.request_stop();
    EXPECT_EQ(sleep.wait_for(10s), std::future_status::ready);
    EXPECT_FALSE(sleep.get());
}

TEST(InterruptibleSleep, Does_not_begin_after_a_stop)
{
    std::stop_source source;
    source.request_stop();
    EXPECT_FALSE(sleepUntil(source.get_token(), Clock::time_point::max()));
    EXPECT_FALSE(sleepUntil(source.get_token(), Clock::now() - 1h));
}
