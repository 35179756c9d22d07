#include <SingletonDefinition.h>

#include <Config.h>
#include <Tr.h>
#include <support/FreshSingletons.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;

struct Counted
{
    Counted() { ++created; }
    ~Counted() { ++destroyed; }
    static inline int created = 0;
    static inline int destroyed = 0;
};

struct SlowToCreate
{
    SlowToCreate()
    {
        ++created;
        std::this_thread::sleep_for(20ms); // leaves the others time to come in between
    }
    static inline std::atomic<int> created = 0;
};

struct FailsTheFirstTime
{
    FailsTheFirstTime()
    {
        if (++tries == 1)
            throw std::runtime_error("not yet");
    }
    static inline int tries = 0;
};

} // namespace

TEST(Singleton, Is_created_on_first_use_and_only_then)
{
    Singleton<Counted>::replace(nullptr);
    const int before = Counted::created;

    Counted &first = Singleton<Counted>::instance();
    EXPECT_EQ(Counted::created, before + 1);
    EXPECT_EQ(&Singleton<Counted>::instance(), &first);
    EXPECT_EQ(Counted::created, before + 1);

    Singleton<Counted>::replace(nullptr);
}

TEST(Singleton, Is_one_for_threads_that_all_use_it_first)
{
    constexpr std::size_t threadCount = 8;
    SlowToCreate::created = 0;
    std::barrier start(threadCount);
    std::vector<SlowToCreate *> seen(threadCount);
    std::vector<std::thread> threads;
    for (auto &mine : seen)
        threads.emplace_back([&start, &mine] {
            start.arrive_and_wait();
            mine = &Singleton<SlowToCreate>::instance();
        });
    for (auto &thread : threads)
        thread.join();

    EXPECT_EQ(SlowToCreate::created, 1);
    EXPECT_EQ(seen, std::vector<SlowToCreate *>(threadCount, seen.front()));
    Singleton<SlowToCreate>::replace(nullptr);
}

TEST(Singleton, Replace_hands_the_old_instance_back_alive)
{
    auto mine = std::make_unique<Counted>();
    const auto *mineAddress = mine.get();
    Singleton<Counted>::replace(std::move(mine));
    EXPECT_EQ(&Singleton<Counted>::instance(), mineAddress);

    const int destroyed = Counted::destroyed;
    auto old = Singleton<Counted>::replace(std::make_unique<Counted>());
    EXPECT_EQ(old.get(), mineAddress);
    EXPECT_EQ(Counted::destroyed, destroyed);
    EXPECT_NE(&Singleton<Counted>::instance(), mineAddress);

    Singleton<Counted>::replace(nullptr);
    EXPECT_EQ(Counted::destroyed, destroyed + 1);
}

TEST(Singleton, Replace_by_null_gives_null_when_there_was_none)
{
    Singleton<Counted>::replace(nullptr);
    EXPECT_EQ(Singleton<Counted>::replace(nullptr), nullptr);
}

TEST(Singleton, Is_created_by_the_next_use_when_the_constructor_threw)
{
    FailsTheFirstTime::tries = 0;
    EXPECT_THROW(Singleton<FailsTheFirstTime>::instance(), std::runtime_error);
    EXPECT_NO_THROW(Singleton<FailsTheFirstTime>::instance());
    EXPECT_EQ(FailsTheFirstTime::tries, 2);
    Singleton<FailsTheFirstTime>::replace(nullptr);
}

TEST(Singleton, Is_the_same_instance_in_the_host_library)
{
    const support::FreshSingletons fresh;
    const tr::Tr text({{QStringLiteral("en"), QStringLiteral("milk")},
                       {QStringLiteral("ru"), QStringLiteral("молоко")}});
    ASSERT_EQ(text.ui(), QStringLiteral("молоко")); // the library has used it before this program

    Singleton<Config>::instance().setValue(QStringLiteral("Host:language"), QStringLiteral("en"));
    EXPECT_EQ(text.ui(), QStringLiteral("milk"));

    Singleton<Config>::replace(std::make_unique<Config>());
    EXPECT_EQ(text.ui(), QStringLiteral("молоко"));
}
