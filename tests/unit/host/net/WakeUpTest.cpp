#include <WakeUp.h>

#include <support/DescriptorLimit.h>

#include <gtest/gtest.h>

#include <unistd.h>

#include <array>
#include <thread>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

class WakeUpTest : public testing::Test
{
protected:
    WakeUpTest() { EXPECT_EQ(::pipe(pipe.data()), 0); }
    ~WakeUpTest() override
    {
        for (const int end : pipe)
            ::close(end);
    }

    Clock::duration waited(std::chrono::milliseconds atMost) const
    {
        const auto begin = Clock::now();
        wakeUp.waitFor(-1, pipe.front(), atMost);
        return Clock::now() - begin;
    }

    std::array<int, 2> pipe{};
    const WakeUp wakeUp;
};

} // namespace

TEST_F(WakeUpTest, Lasts_no_longer_than_asked)
{
    EXPECT_GE(waited(50ms), 49ms);
}

TEST_F(WakeUpTest, Ends_a_wait_from_another_thread)
{
    const std::jthread other([this] { wakeUp.wake(); });
    EXPECT_LT(waited(10s), 5s);
}

TEST_F(WakeUpTest, Before_the_wait_counts_once)
{
    wakeUp.wake();
    wakeUp.wake();
    EXPECT_LT(waited(10s), 5s);
    EXPECT_GE(waited(50ms), 49ms);
}

TEST_F(WakeUpTest, Is_not_needed_when_there_is_something_to_read)
{
    ASSERT_EQ(::write(pipe.back(), "x", 1), 1);
    EXPECT_LT(waited(10s), 5s);
}

TEST_F(WakeUpTest, Leaves_no_descriptor)
{
    const int before = support::lowestFreeDescriptor();
    {
        const WakeUp another;
        EXPECT_EQ(another.error(), 0);
        EXPECT_GT(support::lowestFreeDescriptor(), before);
    }
    EXPECT_EQ(support::lowestFreeDescriptor(), before);
}
