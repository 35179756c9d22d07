#include <display/ArrivalQueue.h>

#include <common/MonotonicClock.h>

#include <support/PrintQt.h>
#include <support/Wait.h>

#include <gtest/gtest.h>

namespace {

constexpr int longTime = 600'000; // ms

class ArrivalQueueTest : public testing::Test
{
protected:
    void add(int number, double ms = monotonicMs())
    {
        queue.add({number, ms, "POST", "/content", 2, false, {}, nullptr});
    }

    QList<int> answered;
    ArrivalQueue queue{[this](const Arrival &arrival) { answered.append(arrival.number); }, 0};
};

} // namespace

TEST_F(ArrivalQueueTest, Answers_at_once_without_a_delay)
{
    add(1);
    EXPECT_EQ(answered, QList<int>{1});
}

TEST_F(ArrivalQueueTest, Answers_each_after_the_delay)
{
    queue.setDelay(100);
    const auto start = monotonicMs();
    add(1);
    add(2);
    EXPECT_TRUE(answered.isEmpty());
    ASSERT_TRUE(support::waitFor([&] { return answered.size() == 2; }));
    EXPECT_GE(monotonicMs() - start, 100);
    EXPECT_EQ(answered, (QList<int>{1, 2}));
}

TEST_F(ArrivalQueueTest, Answers_all_in_their_order_when_the_delay_ends)
{
    queue.setDelay(longTime);
    add(1);
    add(2);
    queue.setDelay(0);
    EXPECT_EQ(answered, (QList<int>{1, 2}));
    add(3);
    EXPECT_EQ(answered, (QList<int>{1, 2, 3}));
}

TEST_F(ArrivalQueueTest, Lets_none_overtake_another)
{
    queue.setDelay(longTime);
    add(1);
    add(2, monotonicMs() - longTime); // due, but not before the first
    EXPECT_TRUE(answered.isEmpty());
    queue.setDelay(0);
    EXPECT_EQ(answered, (QList<int>{1, 2}));
}

TEST_F(ArrivalQueueTest, Answers_the_oldest_early_when_too_many_wait)
{
    queue.setDelay(longTime);
    for (int number = 1; number <= int(ArrivalQueue::maxWaiting) + 2; ++number)
        add(number);
    EXPECT_EQ(answered, (QList<int>{1, 2}));
}

TEST_F(ArrivalQueueTest, Gives_up_what_waits)
{
    queue.setDelay(longTime);
    add(1);
    add(2);
    EXPECT_EQ(queue.takeAll().size(), 2U);
    queue.setDelay(0);
    EXPECT_TRUE(answered.isEmpty());
}
