#include <Locker.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

/// Tells whether it is held.
struct VisibleMutex
{
    void lock() { held = true; }
    void unlock() { held = false; }
    static inline bool held = false;
};

struct Probe
{
    bool isGuarded() const { return VisibleMutex::held; }
    int value = 0;
};

using VisibleLocker = Locker<Probe, VisibleMutex>;

} // namespace

TEST(Locker, Holds_the_mutex_for_one_call_through_the_arrow)
{
    VisibleLocker locker;
    EXPECT_TRUE(locker.lock()->isGuarded());
    EXPECT_FALSE(VisibleMutex::held);
}

TEST(Locker, Holds_the_mutex_as_long_as_the_access_lives)
{
    VisibleLocker locker;
    {
        const auto access = locker.lock();
        EXPECT_TRUE(VisibleMutex::held);
        access->value = 5;
        EXPECT_TRUE(VisibleMutex::held);
    }
    EXPECT_FALSE(VisibleMutex::held);
    EXPECT_EQ(locker.lock()->value, 5);
}

TEST(Locker, Keeps_the_mutex_when_the_access_is_handed_on)
{
    VisibleLocker locker;
    {
        auto access = locker.lock();
        const auto taken = std::move(access);
        EXPECT_TRUE(VisibleMutex::held);
    }
    EXPECT_FALSE(VisibleMutex::held);
}

TEST(Locker, Releases_the_mutex_on_an_exception)
{
    VisibleLocker locker;
    const auto failing = [&] {
        const auto access = locker.lock();
        throw std::runtime_error("in between");
    };
    EXPECT_THROW(failing(), std::runtime_error);
    EXPECT_FALSE(VisibleMutex::held);
}

TEST(Locker, Guards_a_constant_value_too_and_lets_it_only_be_read)
{
    const VisibleLocker locker;
    EXPECT_TRUE(locker.lock()->isGuarded());
    static_assert(std::is_same_v<decltype(*locker.lock()), const Probe &>);
    static_assert(std::is_same_v<decltype(*std::declval<VisibleLocker &>().lock()), Probe &>);
}

TEST(Locker, Lets_one_thread_at_a_time_reach_the_value)
{
    constexpr int threadCount = 4;
    constexpr int rounds = 20'000;
    Locker<std::pair<int, int>, std::mutex> pair; // both halves are always equal
    bool everUnequal = false;

    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                const auto access = pair.lock();
                everUnequal = everUnequal || access->first != access->second;
                ++access->first;
                ++access->second;
            }
        });
    for (auto &thread : threads)
        thread.join();

    EXPECT_FALSE(everUnequal);
    EXPECT_EQ(pair.lock()->first, threadCount * rounds);
    EXPECT_EQ(pair.lock()->second, threadCount * rounds);
}
