#include <log4qt/logmanager.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

#include <barrier>
#include <thread>
#include <vector>

using Log4Qt::LogManager;

TEST(LogManager, Gives_the_same_logger_for_the_same_name)
{
    auto *const logger = LogManager::logger(QStringLiteral("касса"));
    ASSERT_NE(logger, nullptr);
    EXPECT_EQ(LogManager::logger(QStringLiteral("касса")), logger);
    EXPECT_EQ(logger->name(), QStringLiteral("касса"));
}

TEST(LogManager, Gives_different_loggers_for_different_names)
{
    EXPECT_NE(LogManager::logger(QStringLiteral("a")), LogManager::logger(QStringLiteral("A")));
    EXPECT_NE(LogManager::logger(QString()), LogManager::logger(QStringLiteral("a")));
}

TEST(LogManager, Gives_threads_that_ask_first_the_same_loggers)
{
    constexpr int threadCount = 8;
    constexpr int nameCount = 5000;
    std::barrier start(threadCount);
    std::vector<std::vector<const Log4Qt::Logger *>> seen(threadCount);
    std::vector<std::thread> threads;
    for (auto &mine : seen)
        threads.emplace_back([&start, &mine] {
            start.arrive_and_wait();
            for (int i = 0; i < nameCount; ++i)
                mine.push_back(LogManager::logger(QStringLiteral("thread.%1").arg(i)));
        });
    for (auto &thread : threads)
        thread.join();

    for (const auto &loggers : seen)
        EXPECT_EQ(loggers, seen.front());
    for (std::size_t i = 0; i < nameCount; ++i)
        EXPECT_EQ(seen.front()[i]->name(), QStringLiteral("thread.%1").arg(i));
}
