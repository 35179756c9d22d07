#include <Config.h>
#include <MockFactory.h>
#include <RestClient.h>
#include <Singleton.h>

#include <log4qt/logmanager.h>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <set>
#include <thread>
#include <vector>

namespace {

constexpr int threadCount = 4;

void onAllThreads(const std::function<void(int)> &work)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back(work, i);
    for (auto &thread : threads)
        thread.join();
}

} // namespace

TEST(SharedServices, All_threads_get_the_same_singleton_when_they_create_it_at_once)
{
    Singleton<Config>::replace(nullptr);
    std::array<Config *, threadCount> seen{};
    onAllThreads(
        [&](int i) { seen[static_cast<std::size_t>(i)] = &Singleton<Config>::instance(); });

    EXPECT_EQ(std::set(seen.begin(), seen.end()).size(), 1U);
    Singleton<Config>::replace(nullptr);
}

TEST(SharedServices, Settings_can_be_read_while_they_are_written)
{
    Config config;
    const auto key = QStringLiteral("View.Logic:showQrCode");
    onAllThreads([&](int i) {
        for (int n = 0; n < 5000; ++n) {
            if (i == 0)
                config.setValue(key, n % 2 == 0);
            else
                config.boolValue(key, true);
            if (i == 1)
                config.groupKeys(QStringLiteral("View.Logic"), true);
        }
    });

    EXPECT_TRUE(config.value(key).isValid());
}

TEST(SharedServices, All_threads_get_the_same_logger_by_its_name)
{
    std::array<Log4Qt::Logger *, threadCount> seen{};
    onAllThreads([&](int i) {
        seen[static_cast<std::size_t>(i)] =
            Log4Qt::LogManager::logger(QStringLiteral("made-by-several-threads"));
    });

    EXPECT_EQ(std::set(seen.begin(), seen.end()).size(), 1U);
}

TEST(SharedServices, A_client_can_be_injected_while_another_thread_creates_one)
{
    const auto injected = QSharedPointer<RestClient>::create();
    onAllThreads([&](int i) {
        for (int n = 0; n < 200; ++n) {
            if (i == 0)
                MockFactory<RestClient>::inject(n % 2 == 0 ? injected : nullptr);
            else
                EXPECT_NE(MockFactory<RestClient>::create(), nullptr);
        }
    });
    MockFactory<RestClient>::inject({});
}
